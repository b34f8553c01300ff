// The JSON forms of geometric tolerances.
#include "zeq_api/exchange_pmi/gdt.h"

#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/special_rows.h"

namespace zeq {

const EnumTable& enumTable(ExcPMIGDT::EToleranceType) {
    using enum ExcPMIGDT::EToleranceType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {form_straightness, L"form_straightness"},
                                          {form_flatness, L"form_flatness"},
                                          {form_circularity, L"form_circularity"},
                                          {form_cylindricity, L"form_cylindricity"},
                                          {form_profile_any_line, L"form_profile_any_line"},
                                          {form_profile_any_surface, L"form_profile_any_surface"},
                                          {orientation_parallelism, L"orientation_parallelism"},
                                          {orientation_perpendicularity, L"orientation_perpendicularity"},
                                          {orientation_angularity, L"orientation_angularity"},
                                          {location_true_position, L"location_true_position"},
                                          {location_concentricity, L"location_concentricity"},
                                          {location_coaxiality, L"location_coaxiality"},
                                          {location_symmetry, L"location_symmetry"},
                                          {location_position_of_any_line, L"location_position_of_any_line"},
                                          {Location_position_of_a_surface, L"Location_position_of_a_surface"},
                                          {run_out_circular, L"run_out_circular"},
                                          {run_out_total, L"run_out_total"}};
    static const EnumTable table{"ExcPMIGDT::EToleranceType", names};
    return table;
}

const EnumTable& enumTable(ExcPMIGDT::EToleranceValueType) {
    using enum ExcPMIGDT::EToleranceValueType;
    static constexpr EnumEntry names[] = {{none, L"none"},
                                          {diameter, L"diameter"},
                                          {radius, L"radius"},
                                          {spherical, L"spherical"},
                                          {square, L"square"}};
    static const EnumTable table{"ExcPMIGDT::EToleranceValueType", names};
    return table;
}

const EnumTable& enumTable(ExcPMIGDT::EToleranceModifier) {
    using enum ExcPMIGDT::EToleranceModifier;
    static constexpr EnumEntry names[] = {
        {no_modifier, L"no_modifier"},
        {material_condition_unsupported, L"material_condition_unsupported"},
        {material_condition_no_modifier, L"material_condition_no_modifier"},
        {material_condition_maximum, L"material_condition_maximum"},
        {material_condition_least, L"material_condition_least"},
        {material_condition_regardless_of_feature_size, L"material_condition_regardless_of_feature_size"},
        {tangent_plane_unsupported, L"tangent_plane_unsupported"},
        {tangent_plane_non_tangent, L"tangent_plane_non_tangent"},
        {tangent_plane_tangent, L"tangent_plane_tangent"},
        {free_state_unsupported, L"free_state_unsupported"},
        {free_state_free, L"free_state_free"},
        {free_state_not_free, L"free_state_not_free"},
        {statistical_symbol, L"statistical_symbol"},
        {common_zone, L"common_zone"},
        {unequally_disposed_zone, L"unequally_disposed_zone"},
        {projected_state_projected, L"projected_state_projected"},
        {projected_state_not_projected, L"projected_state_not_projected"},
        {circle_u, L"circle_u"},
        {maximum, L"maximum"},
        {minimax_feature, L"minimax_feature"},
        {derived_feature, L"derived_feature"},
        {dynamic_profile, L"dynamic_profile"},
        {least_square_feature, L"least_square_feature"},
        {maximum_inscribed_feature, L"maximum_inscribed_feature"},
        {minimum_circumscribed_feature, L"minimum_circumscribed_feature"},
        {separate_zone, L"separate_zone"},
        {offset_zone, L"offset_zone"},
        {variable_angle, L"variable_angle"},
        {orientation_constraint, L"orientation_constraint"},
        {minimax_association, L"minimax_association"},
        {minimax_association_with_external_constraint, L"minimax_association_with_external_constraint"},
        {minimax_association_with_internal_constraint, L"minimax_association_with_internal_constraint"},
        {least_square_association, L"least_square_association"},
        {least_square_association_with_external_constraint,
         L"least_square_association_with_external_constraint"},
        {least_square_association_with_internal_constraint,
         L"least_square_association_with_internal_constraint"},
        {minimum_circumscribed_association, L"minimum_circumscribed_association"},
        {maximum_inscribed_association, L"maximum_inscribed_association"},
        {total_range_of_deviations, L"total_range_of_deviations"},
        {peak_height, L"peak_height"},
        {valley_depth, L"valley_depth"},
        {standard_deviation, L"standard_deviation"}};
    static const EnumTable table{"ExcPMIGDT::EToleranceModifier", names};
    return table;
}

/// An element without a modifier is not taken.
template <>
struct json::Codec<ExcPMIGDT::ZoneModifier> {
    using Entry = ExcPMIGDT::ZoneModifier;
    static constexpr auto modifier = field(L"zone_modifier_zone", &Entry::modifier);
    static constexpr auto magnitude =
        flagged(L"zone_modifier_magnitude", &Entry::magnitude, &Entry::hasMagnitude);

    static bool take(const auto& view, Entry& out) {
        if (view.kind() != Kind::object) return false;
        auto members = view.members();
        if (!modifier.read(out, members)) return false;
        magnitude.read(out, members);
        return true;
    }
    static void give(auto&& sink, const Entry& entry) {
        sink.object([&entry](auto& to) {
            modifier.write(entry, to);
            magnitude.write(entry, to);
        });
    }
    static Shape shape() {
        MemberShape required = modifier.describe();
        required.isRequired = true;
        return {ObjectShape{{std::move(required), magnitude.describe()}}};
    }
};

struct ExcPMIGDT::ModifiedDatum::JsonForm {
    using This = ExcPMIGDT::ModifiedDatum;
    static constexpr json::Form form{
        json::Head{"ExcPMIGDT::ModifiedDatum", area::exchangePmi},
        json::field(L"datum_id", &This::m_datumId),
        json::field(L"zone_modifiers", &This::m_zoneModifiers),
    };
};

ZEQ_JSON_OBJECT(ExcPMIGDT::ModifiedDatum)

struct ExcPMIGDT::DatumRef::JsonForm {
    using This = ExcPMIGDT::DatumRef;
    static constexpr json::Form form{
        json::Head{"ExcPMIGDT::DatumRef", area::exchangePmi},
        json::field(L"label", &This::m_label),
        json::field(L"pmi_gdt_datum_ref_text", &This::m_pmiGdtDatumRefText, json::whenSet),
        json::children(L"modified_datums", &This::m_modifiedDatums, json::matchingElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcPMIGDT::DatumRef)

struct ExcPMIGDT::Frame::JsonForm {
    using This = ExcPMIGDT::Frame;
    static constexpr json::Form form{
        json::Head{"ExcPMIGDT::Frame", area::exchangePmi},
        json::field(L"label", &This::m_label),
        json::children(L"datum_refs", &This::m_datumRefs, json::matchingElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcPMIGDT::Frame)

struct ExcPMIGDT::Row::JsonForm {
    using This = ExcPMIGDT::Row;
    static constexpr json::Form form{
        json::Head{"ExcPMIGDT::Row", area::exchangePmi,
                   json::logsError("ExcPMIGDT object should have a JSON object type.")}, // sic
        json::field(L"tolerance_value_type", &This::m_toleranceValueType),
        json::field(L"tolerance_value", &This::m_toleranceValue),
        json::field(L"refine_tolerance", &This::m_refineTolerance),
        json::pair<json::ZeroedElement>(L"rate_unit", &This::m_rateUnitFirst, &This::m_rateUnitSecond,
                                        "ExcPMIGDT::Row: invalid size of rate_unit array"),
        json::field(L"zone_modifiers", &This::m_zoneModifiers),
        json::field(L"ref_frame", &This::m_refFrame, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcPMIGDT::Row)

struct ExcPMIGDT::JsonForm {
    using This = ExcPMIGDT;
    static constexpr json::Form form{
        json::Head{"ExcPMIGDT", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::field(L"tolerance_type", &This::m_toleranceType),
        json::field(L"all_around", &This::m_allAround),
        json::field(L"pmi_gdt_note", &This::m_pmiGdtNote, json::whenSet),
        json::children(L"pmi_gdt_rows", &This::m_pmiGdtRows, json::matchingElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcPMIGDT)

} // namespace zeq
