// The JSON form of dimensions.
#include "zeq_api/exchange_pmi/dimension.h"

#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/special_rows.h"

namespace zeq {

const EnumTable& enumTable(ExcPMIDimension::EMainType) {
    using enum ExcPMIDimension::EMainType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},     {basic, L"basic"},
                                          {reference, L"reference"}, {tolerance, L"tolerance"},
                                          {coord_dim, L"coord_dim"}, {hole_callout, L"hole_callout"}};
    static const EnumTable table{"ExcPMIDimension::EMainType", names};
    return table;
}

const EnumTable& enumTable(ExcPMIDimension::ESubType) {
    using enum ExcPMIDimension::ESubType;
    static constexpr EnumEntry names[] = {{distance, L"distance"},
                                          {distance_offset, L"distance_offset"},
                                          {length, L"length"},
                                          {length_or_distance, L"length_or_distance"},
                                          {length_curvilinear, L"length_curvilinear"},
                                          {angle, L"angle"},
                                          {radius, L"radius"},
                                          {radius_tangent, L"radius_tangent"},
                                          {radius_cylinder, L"radius_cylinder"},
                                          {radius_edge, L"radius_edge"},
                                          {diameter, L"diameter"},
                                          {diameter_tangent, L"diameter_tangent"},
                                          {diameter_cylinder, L"diameter_cylinder"},
                                          {diameter_edge, L"diameter_edge"},
                                          {diameter_cone, L"diameter_cone"},
                                          {chamfer, L"chamfer"},
                                          {slope, L"slope"},
                                          {dim_gdt, L"dim_gdt"},
                                          {dim_datum_feature, L"dim_datum_feature"},
                                          {dim_datum_target, L"dim_datum_target"},
                                          {dim_balloon, L"dim_balloon"},
                                          {no_dim, L"no_dim"},
                                          {angle_arc, L"angle_arc"},
                                          {length_circular, L"length_circular"},
                                          {fillet, L"fillet"},
                                          {coord_dimension_2d, L"coord_dimension_2d"},
                                          {coord_dimension_3d, L"coord_dimension_3d"}};
    static const EnumTable table{"ExcPMIDimension::ESubType", names};
    return table;
}

const EnumTable& enumTable(ExcPMIDimension::EDimUnit) {
    using enum ExcPMIDimension::EDimUnit;
    static constexpr EnumEntry names[] = {{none, L"none"},       {mm, L"mm"},           {inch, L"inch"},
                                          {meter, L"meter"},     {cm, L"cm"},           {km, L"km"},
                                          {foot, L"foot"},       {f_i_f64, L"f_i_f64"}, {f_i_f16, L"f_i_f16"},
                                          {f_i_dec, L"f_i_dec"}, {degree, L"degree"},   {minute, L"minute"},
                                          {second, L"second"},   {radian, L"radian"},   {grade, L"grade"}};
    static const EnumTable table{"ExcPMIDimension::EDimUnit", names};
    return table;
}

const EnumTable& enumTable(ExcPMIDimension::EArrowSymbol) {
    using enum ExcPMIDimension::EArrowSymbol;
    static constexpr EnumEntry names[] = {{not_used, L"not_used"},
                                          {cross, L"cross"},
                                          {plus, L"plus"},
                                          {concentric, L"concentric"},
                                          {coincident, L"coincident"},
                                          {full_circle, L"full_circle"},
                                          {full_square, L"full_square"},
                                          {full_star, L"full_star"},
                                          {dot, L"dot"},
                                          {small_dot, L"small_dot"},
                                          {misc1, L"misc1"},
                                          {misc2, L"misc2"},
                                          {full_circle2, L"full_circle2"},
                                          {full_square2, L"full_square2"},
                                          {open_arrow, L"open_arrow"},
                                          {unfilled_arrow, L"unfilled_arrow"},
                                          {blanked_arrow, L"blanked_arrow"},
                                          {filled_arrow, L"filled_arrow"},
                                          {unfilled_circle, L"unfilled_circle"},
                                          {blanked_circle, L"blanked_circle"},
                                          {filled_circle, L"filled_circle"},
                                          {crossed_circle, L"crossed_circle"},
                                          {blanked_square, L"blanked_square"},
                                          {filled_square, L"filled_square"},
                                          {blanked_triangle, L"blanked_triangle"},
                                          {filled_triangle, L"filled_triangle"},
                                          {manipulator_square, L"manipulator_square"},
                                          {manipulator_diamond, L"manipulator_diamond"},
                                          {manipulator_circle, L"manipulator_circle"},
                                          {manipulator_triangle, L"manipulator_triangle"},
                                          {double_open_arrow, L"double_open_arrow"},
                                          {wave, L"wave"}};
    static const EnumTable table{"ExcPMIDimension::EArrowSymbol", names};
    return table;
}

const EnumTable& enumTable(ExcPMIDimension::ECalloutFeatureAnnotationType) {
    using enum ExcPMIDimension::ECalloutFeatureAnnotationType;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"},
        {hole_unknown, L"hole_unknown"},
        {hole_callout_fit, L"hole_callout_fit"},
        {hole_callout_depth, L"hole_callout_depth"},
        {hole_callout_diameter, L"hole_callout_diameter"},
        {hole_callout_screw_size, L"hole_callout_screw_size"},
        {hole_callout_counter_bore_depth, L"hole_callout_counter_bore_depth"},
        {hole_callout_counter_bore_diameter, L"hole_callout_counter_bore_diameter"},
        {hole_callout_pattern_count, L"hole_callout_pattern_count"},
        {hole_callout_pitch, L"hole_callout_pitch"},
        {hole_callout_angle, L"hole_callout_angle"},
        {hole_callout_pat_taper_angle, L"hole_callout_pat_taper_angle"},
        {hole_callout_counter_sink_diameter, L"hole_callout_counter_sink_diameter"},
        {hole_callout_counter_sink_angle, L"hole_callout_counter_sink_angle"},
        {hole_callout_thread_depth, L"hole_callout_thread_depth"},
        {hole_callout_thread_size, L"hole_callout_thread_size"},
        {hole_callout_thread_minor_dia, L"hole_callout_thread_minor_dia"},
        {hole_callout_thread_major_dia, L"hole_callout_thread_major_dia"},
        {hole_callout_tap_drill_dia, L"hole_callout_tap_drill_dia"}};
    static const EnumTable table{"ExcPMIDimension::ECalloutFeatureAnnotationType", names};
    return table;
}

struct ExcPMIDimension::JsonForm {
    using This = ExcPMIDimension;
    static constexpr json::Form form{
        json::Head{"ExcPMIDimension", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::field(L"main_type", &This::m_mainType),
        json::field(L"sub_type", &This::m_subType),
        json::field(L"callout_feature_annotation_type", &This::m_calloutFeatureAnnotationType),
        json::field(L"coord", &This::m_coord),
        json::field(L"value", &This::m_value),
        json::field(L"unit", &This::m_unit),
        json::field(L"value_precision", &This::m_valuePrecision),
        json::field(L"tolerance_precision_value", &This::m_tolerancePrecisionValue),
        json::pair(L"numerical_tolerance", &This::m_numericalToleranceLower, &This::m_numericalToleranceUpper,
                   "ExcPMIDimension: invalid size of numerical_tolerance array."),
        json::pair(L"alphanumerical_tolerance", &This::m_alphanumericalToleranceLower,
                   &This::m_alphanumericalToleranceUpper,
                   "ExcPMIDimension: invalid size of alphanumerical_tolerance array."),
        json::field(L"pmi_dimension_note", &This::m_pmiDimensionNote, json::whenSet),
        json::field(L"text_callout", &This::m_textCallout),
        json::flagged(L"fake_numerical_value", &This::m_fakeNumericalValue, &This::m_hasFakeNumericalValue),
        json::flagged(L"fake_alphanumerical_value", &This::m_fakeAlphanumericalValue,
                      &This::m_hasFakeAlphanumericalValue),
        json::field(L"is_driving", &This::m_isDriving),
        json::pair<json::NestedElement>(L"line", &This::m_lineStart, &This::m_lineEnd,
                                        "ExcPMIDimension: invalid size of line array."),
        json::pair(L"arrows", &This::m_arrowSymbolStart, &This::m_arrowSymbolEnd,
                   "ExcPMIDimension: invalid size of arrows array."),
        json::field(L"is_symbol_outside", &This::m_isSymbolOutside),
    };
};

ZEQ_JSON_OBJECT(ExcPMIDimension)

} // namespace zeq
