// Dimensions: measured or prescribed sizes. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>

#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq {

/// A dimension with its tolerances, its line and its arrows.
class ExcPMIDimension : public ExcPMIAnnotation {
public:
    enum class EMainType {
        unknown,
        basic,
        reference,
        tolerance,
        coord_dim,
        hole_callout
    };

    /// There is no value for unknown: 0 is a real kind.
    enum class ESubType {
        distance,
        distance_offset,
        length,
        length_or_distance,
        length_curvilinear,
        angle,
        radius,
        radius_tangent,
        radius_cylinder,
        radius_edge,
        diameter,
        diameter_tangent,
        diameter_cylinder,
        diameter_edge,
        diameter_cone,
        chamfer,
        slope,
        dim_gdt,
        dim_datum_feature,
        dim_datum_target,
        dim_balloon,
        no_dim,
        angle_arc,
        length_circular,
        fillet,
        coord_dimension_2d,
        coord_dimension_3d
    };

    /// What a dimension says about a hole.
    enum class ECalloutFeatureAnnotationType {
        unknown,
        hole_unknown,
        hole_callout_fit,
        hole_callout_depth,
        hole_callout_diameter,
        hole_callout_screw_size,
        hole_callout_counter_bore_depth,
        hole_callout_counter_bore_diameter,
        hole_callout_pattern_count,
        hole_callout_pitch,
        hole_callout_angle,
        hole_callout_pat_taper_angle,
        hole_callout_counter_sink_diameter,
        hole_callout_counter_sink_angle,
        hole_callout_thread_depth,
        hole_callout_thread_size,
        hole_callout_thread_minor_dia,
        hole_callout_thread_major_dia,
        hole_callout_tap_drill_dia
    };

    enum class EDimUnit {
        none,
        mm,
        inch,
        meter,
        cm,
        km,
        foot,
        f_i_f64,
        f_i_f16,
        f_i_dec,
        degree,
        minute,
        second,
        radian,
        grade
    };

    enum class EArrowSymbol {
        not_used,
        cross,
        plus,
        concentric,
        coincident,
        full_circle,
        full_square,
        full_star,
        dot,
        small_dot,
        misc1,
        misc2,
        full_circle2,
        full_square2,
        open_arrow,
        unfilled_arrow,
        blanked_arrow,
        filled_arrow,
        unfilled_circle,
        blanked_circle,
        filled_circle,
        crossed_circle,
        blanked_square,
        filled_square,
        blanked_triangle,
        filled_triangle,
        manipulator_square,
        manipulator_diamond,
        manipulator_circle,
        manipulator_triangle,
        double_open_arrow,
        wave
    };

    /// A fake value that the document does not have has its flag cleared.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EPMIAnnotationType type() const override { return EPMIAnnotationType::dimension; }

    EMainType mainType() const { return m_mainType; }
    void setMainType(EMainType type) { m_mainType = type; }

    ESubType subType() const { return m_subType; }
    void setSubType(ESubType type) { m_subType = type; }

    ECalloutFeatureAnnotationType calloutFeatureAnnotationType() const {
        return m_calloutFeatureAnnotationType;
    }
    void setCalloutFeatureAnnotationType(ECalloutFeatureAnnotationType type) {
        m_calloutFeatureAnnotationType = type;
    }

    const ExcVector3d& coord() const { return m_coord; }
    void setCoord(const ExcVector3d& coord) { m_coord = coord; }

    double value() const { return m_value; }
    void setValue(double value) { m_value = value; }

    EDimUnit unit() const { return m_unit; }
    void setUnit(EDimUnit unit) { m_unit = unit; }

    double valuePrecision() const { return m_valuePrecision; }
    void setValuePrecision(double precision) { m_valuePrecision = precision; }

    double tolerancePrecisionValue() const { return m_tolerancePrecisionValue; }
    void setTolerancePrecisionValue(double precision) { m_tolerancePrecisionValue = precision; }

    /// Documents have the lower bound first, here and in the tolerance as text.
    double numericalToleranceUpper() const { return m_numericalToleranceUpper; }
    void setNumericalToleranceUpper(double upper) { m_numericalToleranceUpper = upper; }

    double numericalToleranceLower() const { return m_numericalToleranceLower; }
    void setNumericalToleranceLower(double lower) { m_numericalToleranceLower = lower; }

    const std::wstring& alphanumericalToleranceUpper() const { return m_alphanumericalToleranceUpper; }
    void setAlphanumericalToleranceUpper(const std::wstring& upper) {
        m_alphanumericalToleranceUpper = upper;
    }

    const std::wstring& alphanumericalToleranceLower() const { return m_alphanumericalToleranceLower; }
    void setAlphanumericalToleranceLower(const std::wstring& lower) {
        m_alphanumericalToleranceLower = lower;
    }

    /// May be null.
    const ExcPMITextPtr& note() const { return m_pmiDimensionNote; }
    void setNote(const ExcPMITextPtr& note) { m_pmiDimensionNote = note; }

    const std::wstring& calloutText() const { return m_textCallout; }
    void setCalloutText(const std::wstring& text) { m_textCallout = text; }

    /// Whether a number is shown in place of the value. Setting the number does not set this.
    bool hasFakeNumericalValue() const { return m_hasFakeNumericalValue; }
    void setHasFakeNumericalValue(bool has) { m_hasFakeNumericalValue = has; }

    double fakeNumericalValue() const { return m_fakeNumericalValue; }
    void setFakeNumericalValue(double value) { m_fakeNumericalValue = value; }

    /// Whether a text is shown in place of the value. Setting the text does not set this.
    bool hasFakeAlphanumericalValue() const { return m_hasFakeAlphanumericalValue; }
    void setHasFakeAlphanumericalValue(bool has) { m_hasFakeAlphanumericalValue = has; }

    const std::wstring& fakeAlphanumericalValue() const { return m_fakeAlphanumericalValue; }
    void setFakeAlphanumericalValue(const std::wstring& value) { m_fakeAlphanumericalValue = value; }

    /// Whether the dimension drives the geometry, and not the other way round.
    bool isDriving() const { return m_isDriving; }
    void setDriving(bool isDriving) { m_isDriving = isDriving; }

    /// The dimension line, in the plane of the annotation view.
    const ExcVector2d& lineStart() const { return m_lineStart; }
    void setLineStart(const ExcVector2d& start) { m_lineStart = start; }

    EArrowSymbol arrowSymbolStart() const { return m_arrowSymbolStart; }
    void setArrowSymbolStart(EArrowSymbol symbol) { m_arrowSymbolStart = symbol; }

    const ExcVector2d& lineEnd() const { return m_lineEnd; }
    void setLineEnd(const ExcVector2d& end) { m_lineEnd = end; }

    EArrowSymbol arrowSymbolEnd() const { return m_arrowSymbolEnd; }
    void setArrowSymbolEnd(EArrowSymbol symbol) { m_arrowSymbolEnd = symbol; }

    bool isSymbolOutside() const { return m_isSymbolOutside; }
    void setSymbolOutside(bool isOutside) { m_isSymbolOutside = isOutside; }

private:
    struct JsonForm;

    EMainType m_mainType = EMainType::unknown;
    ESubType m_subType = ESubType::distance;
    ECalloutFeatureAnnotationType m_calloutFeatureAnnotationType = ECalloutFeatureAnnotationType::unknown;
    ExcVector3d m_coord;
    double m_value = 0;
    EDimUnit m_unit = EDimUnit::none;
    double m_valuePrecision = 0;
    double m_tolerancePrecisionValue = 0;
    double m_numericalToleranceUpper = 0;
    double m_numericalToleranceLower = 0;
    std::wstring m_alphanumericalToleranceUpper;
    std::wstring m_alphanumericalToleranceLower;
    ExcPMITextPtr m_pmiDimensionNote;
    std::wstring m_textCallout;
    bool m_hasFakeNumericalValue = false;
    double m_fakeNumericalValue = 0;
    bool m_hasFakeAlphanumericalValue = false;
    std::wstring m_fakeAlphanumericalValue;
    bool m_isDriving = false;
    ExcVector2d m_lineStart;
    ExcVector2d m_lineEnd;
    EArrowSymbol m_arrowSymbolStart = EArrowSymbol::not_used;
    EArrowSymbol m_arrowSymbolEnd = EArrowSymbol::not_used;
    bool m_isSymbolOutside = false;
};
const EnumTable& enumTable(ExcPMIDimension::EMainType);
const EnumTable& enumTable(ExcPMIDimension::ESubType);
const EnumTable& enumTable(ExcPMIDimension::ECalloutFeatureAnnotationType);
const EnumTable& enumTable(ExcPMIDimension::EDimUnit);
const EnumTable& enumTable(ExcPMIDimension::EArrowSymbol);
using ExcPMIDimensionPtr = std::shared_ptr<ExcPMIDimension>;

} // namespace zeq
