// The JSON form of surface roughness symbols.
#include "zeq_api/exchange_pmi/roughness.h"

#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcPMIRoughness::EObtentionType) {
    using enum ExcPMIRoughness::EObtentionType;
    static constexpr EnumEntry names[] = {{unsupported, L"unsupported"},
                                          {not_defined, L"not_defined"},
                                          {matching_mandatory, L"matching_mandatory"},
                                          {matching_forbidden, L"matching_forbidden"}};
    static const EnumTable table{"ExcPMIRoughness::EObtentionType", names};
    return table;
}

const EnumTable& enumTable(ExcPMIRoughness::EApplicabilityType) {
    using enum ExcPMIRoughness::EApplicabilityType;
    static constexpr EnumEntry names[] = {{unsupported, L"unsupported"},
                                          {specified_surface_only, L"specified_surface_only"},
                                          {all_part_surfaces, L"all_part_surfaces"},
                                          {basic_surface, L"basic_surface"}};
    static const EnumTable table{"ExcPMIRoughness::EApplicabilityType", names};
    return table;
}

struct ExcPMIRoughness::JsonForm {
    using This = ExcPMIRoughness;
    static constexpr json::Form form{
        json::Head{"ExcPMIRoughness", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::field(L"obtention_type", &This::m_obtentionType),
        json::field(L"applicability_type", &This::m_applicabilityType),
        json::field(L"fields", &This::m_fields),
    };
};

ZEQ_JSON_OBJECT(ExcPMIRoughness)

} // namespace zeq
