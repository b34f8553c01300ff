// Geometric tolerances: feature control frames row by row. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq {

/// A geometric tolerance (GD&T): a stack of rows under one symbol.
class ExcPMIGDT : public ExcPMIAnnotation {
public:
    /// The characteristic that is toleranced.
    enum class EToleranceType {
        unknown,
        form_straightness,
        form_flatness,
        form_circularity,
        form_cylindricity,
        form_profile_any_line,
        form_profile_any_surface,
        orientation_parallelism,
        orientation_perpendicularity,
        orientation_angularity,
        location_true_position,
        location_concentricity,
        location_coaxiality,
        location_symmetry,
        location_position_of_any_line,
        Location_position_of_a_surface,
        run_out_circular,
        run_out_total
    };

    /// The shape of the zone: the symbol in front of the value.
    enum class EToleranceValueType {
        none,
        diameter,
        radius,
        spherical,
        square
    };

    /// What is said of a zone or of a datum behind its value.
    enum class EToleranceModifier {
        no_modifier,
        material_condition_unsupported,
        material_condition_no_modifier,
        material_condition_maximum,
        material_condition_least,
        material_condition_regardless_of_feature_size,
        tangent_plane_unsupported,
        tangent_plane_non_tangent,
        tangent_plane_tangent,
        free_state_unsupported,
        free_state_free,
        free_state_not_free,
        statistical_symbol,
        common_zone,
        unequally_disposed_zone,
        projected_state_projected,
        projected_state_not_projected,
        circle_u,
        maximum,
        minimax_feature,
        derived_feature,
        dynamic_profile,
        least_square_feature,
        maximum_inscribed_feature,
        minimum_circumscribed_feature,
        separate_zone,
        offset_zone,
        variable_angle,
        orientation_constraint,
        minimax_association,
        minimax_association_with_external_constraint,
        minimax_association_with_internal_constraint,
        least_square_association,
        least_square_association_with_external_constraint,
        least_square_association_with_internal_constraint,
        minimum_circumscribed_association,
        maximum_inscribed_association,
        total_range_of_deviations,
        peak_height,
        valley_depth,
        standard_deviation
    };

    struct ZoneModifier {
        EToleranceModifier modifier = EToleranceModifier::no_modifier;
        double magnitude = 0;
        bool hasMagnitude = false; ///< whether the magnitude travels
    };

    /// A datum in a compartment, with what modifies it there.
    class ModifiedDatum : public IJsonObject {
    public:
        /// Appends to the zone modifiers.
        void readObject(const JsonValue& object) override;
        void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

        /// The identifier of an ExcPMIDatum.
        const std::wstring& datumId() const { return m_datumId; }
        void setDatumId(const std::wstring& id) { m_datumId = id; }

        const std::vector<ZoneModifier>& zoneModifiers() const { return m_zoneModifiers; }
        void addZoneModifier(EToleranceModifier modifier) { m_zoneModifiers.push_back({modifier}); }
        void addZoneModifier(EToleranceModifier modifier, double magnitude) {
            m_zoneModifiers.push_back({modifier, magnitude, true});
        }

    private:
        struct JsonForm;

        std::wstring m_datumId;
        std::vector<ZoneModifier> m_zoneModifiers;
    };

    /// One compartment of a datum reference frame.
    class DatumRef : public IJsonObject {
    public:
        /// Appends to the modified datums.
        void readObject(const JsonValue& object) override;
        void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

        const std::wstring& label() const { return m_label; }
        void setLabel(const std::wstring& label) { m_label = label; }

        const std::vector<ModifiedDatum>& modifiedDatums() const { return m_modifiedDatums; }
        void addModifiedDatum(const ModifiedDatum& datum) { m_modifiedDatums.push_back(datum); }
        void addModifiedDatum(ModifiedDatum&& datum) { m_modifiedDatums.push_back(std::move(datum)); }

        /// May be null.
        const ExcPMITextPtr& text() const { return m_pmiGdtDatumRefText; }
        void setText(const ExcPMITextPtr& text) { m_pmiGdtDatumRefText = text; }

    private:
        struct JsonForm;

        std::wstring m_label;
        std::vector<ModifiedDatum> m_modifiedDatums;
        ExcPMITextPtr m_pmiGdtDatumRefText;
    };

    /// A datum reference frame: the compartments behind the tolerance.
    class Frame : public IJsonObject {
    public:
        /// Appends to the datum references.
        void readObject(const JsonValue& object) override;
        void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

        const std::wstring& label() const { return m_label; }
        void setLabel(const std::wstring& label) { m_label = label; }

        const std::vector<DatumRef>& datumRefs() const { return m_datumRefs; }
        void addDatumRef(const DatumRef& reference) { m_datumRefs.push_back(reference); }
        void addDatumRef(DatumRef&& reference) { m_datumRefs.push_back(std::move(reference)); }

    private:
        struct JsonForm;

        std::wstring m_label;
        std::vector<DatumRef> m_datumRefs;
    };

    /// One line of the feature control frame.
    class Row : public IJsonObject {
    public:
        /// Appends to the zone modifiers.
        void readObject(const JsonValue& object) override;
        void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

        EToleranceValueType toleranceValueType() const { return m_toleranceValueType; }
        void setToleranceValueType(EToleranceValueType type) { m_toleranceValueType = type; }

        double toleranceValue() const { return m_toleranceValue; }
        void setToleranceValue(double value) { m_toleranceValue = value; }

        double refineTolerance() const { return m_refineTolerance; }
        void setRefineTolerance(double value) { m_refineTolerance = value; }

        /// The sizes of the unit that the tolerance holds on.
        void rateUnits(double& first, double& second) const {
            first = m_rateUnitFirst;
            second = m_rateUnitSecond;
        }
        void setRateUnit(double first, double second) {
            m_rateUnitFirst = first;
            m_rateUnitSecond = second;
        }

        const std::vector<ZoneModifier>& zoneModifiers() const { return m_zoneModifiers; }
        void addZoneModifier(EToleranceModifier modifier) { m_zoneModifiers.push_back({modifier}); }
        void addZoneModifier(EToleranceModifier modifier, double magnitude) {
            m_zoneModifiers.push_back({modifier, magnitude, true});
        }

        /// May be null.
        const std::shared_ptr<Frame>& referenceFrame() const { return m_refFrame; }
        void setReferenceFrame(const std::shared_ptr<Frame>& frame) { m_refFrame = frame; }

    private:
        struct JsonForm;

        EToleranceValueType m_toleranceValueType = EToleranceValueType::none;
        double m_toleranceValue = 0;
        double m_refineTolerance = 0;
        double m_rateUnitFirst = 0;
        double m_rateUnitSecond = 0;
        std::vector<ZoneModifier> m_zoneModifiers;
        std::shared_ptr<Frame> m_refFrame;
    };
    using RowPtr = std::shared_ptr<Row>;

    /// Appends to the rows.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EPMIAnnotationType type() const override { return EPMIAnnotationType::GDT; }

    EToleranceType toleranceType() const { return m_toleranceType; }
    void setToleranceType(EToleranceType type) { m_toleranceType = type; }

    /// Whether the symbol has the circle that means all around: a flag that travels as a number. // sic
    double allAround() const { return m_allAround; }
    void setAllAround(double allAround) { m_allAround = allAround; }

    /// May be null.
    const ExcPMITextPtr& note() const { return m_pmiGdtNote; }
    void setNote(const ExcPMITextPtr& note) { m_pmiGdtNote = note; }

    const std::vector<RowPtr>& gdtRows() const { return m_pmiGdtRows; }
    /// @param row must not be null, which nothing checks
    void addGdtRow(const RowPtr& row) { m_pmiGdtRows.push_back(row); }
    void addGdtRow(RowPtr&& row) { m_pmiGdtRows.push_back(std::move(row)); }

private:
    struct JsonForm;

    EToleranceType m_toleranceType = EToleranceType::unknown;
    double m_allAround = 0;
    ExcPMITextPtr m_pmiGdtNote;
    std::vector<RowPtr> m_pmiGdtRows;
};
const EnumTable& enumTable(ExcPMIGDT::EToleranceType);
const EnumTable& enumTable(ExcPMIGDT::EToleranceValueType);
const EnumTable& enumTable(ExcPMIGDT::EToleranceModifier);
using ExcPMIGDTPtr = std::shared_ptr<ExcPMIGDT>;

} // namespace zeq
