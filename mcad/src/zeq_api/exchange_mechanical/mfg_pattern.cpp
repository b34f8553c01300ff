// The JSON forms of patterns, and the factory that knows them all.
#include "zeq_api/exchange_mechanical/mfg_pattern.h"

#include "mv_cvx/logger.h"
#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/exchange_mechanical/pattern_varieties.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcMfgPattern::EType) {
    using enum ExcMfgPattern::EType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {none, L"none"},
                                          {rectangular, L"rectangular"},
                                          {circular, L"circular"},
                                          {user_defined, L"user_defined"}};
    static const EnumTable table{"ExcMfgPattern::EType", names};
    return table;
}

struct ExcMfgPattern::JsonForm {
    using This = ExcMfgPattern;

    /// What the factory looks at, and cannot do without.
    struct Type : json::Computed<This, EType> {
        json::MemberShape describe() const { return {key, json::Codec<EType>::shape(), true, true, true}; }
    };

    static constexpr json::Form form{
        json::Head{"ExcMfgPattern", area::exchangeMechanical},
        Type{L"type", &This::type},
    };
};

ZEQ_JSON_OBJECT(ExcMfgPattern)

const json::Varieties<ExcMfgPattern>& detail::patternVarieties() {
    static constexpr json::Variety<ExcMfgPattern> kinds[] = {
        {L"none", nullptr, nullptr},
        json::variety<ExcMfgPatternRectangular, ExcMfgPattern>(L"rectangular"),
        json::variety<ExcMfgPatternCircular, ExcMfgPattern>(L"circular"),
        json::variety<ExcMfgPatternUserDefined, ExcMfgPattern>(L"user_defined"),
    };
    static constexpr json::Varieties<ExcMfgPattern> varieties{kinds, "ExcMfgPattern should have a type.",
                                                              "ExcMfgPattern: unknown type."};
    return varieties;
}

ExcMfgPatternPtr ExcMfgPattern::readPattern(const JsonValue& object) {
    const json::DomView view(object);
    if (view.kind() == json::Kind::object) return json::readVariety(view, detail::patternVarieties());
    json::reportMismatch(JsonForm::form.head);
    return nullptr;
}

struct ExcMfgPattern::Instance::JsonForm {
    using This = ExcMfgPattern::Instance;
    static constexpr json::Form form{
        json::Head{"ExcMfgPattern::Instance", area::exchangeMechanical},
        json::field(L"is_base", &This::m_isBase),
        json::children(L"limiting", &This::m_limiting, &This::addLimiting),
        json::children(L"defining", &This::m_defining, &This::addDefining),
    };
};

ZEQ_JSON_OBJECT(ExcMfgPattern::Instance)

void ExcMfgPattern::Instance::addLimiting(ExcEntityPtr entity) {
    detail::appendChild(m_limiting, std::move(entity),
                        "ExcMfgPattern::Instance: attempt to add null Limiting Entity object.");
}

void ExcMfgPattern::Instance::addDefining(ExcEntityPtr entity) {
    detail::appendChild(m_defining, std::move(entity),
                        "ExcMfgPattern::Instance: attempt to add null Defining Entity object.");
}

struct ExcMfgPatternRectangular::JsonForm {
    using This = ExcMfgPatternRectangular;
    static constexpr json::Form form{
        json::Head{"ExcMfgPatternRectangular", area::exchangeMechanical},
        json::base<ExcMfgPattern>,
        json::field(L"anchor_point", &This::m_anchorPoint),
        json::field(L"align_primary_dir", &This::m_alignmentPrimaryDirection),
        json::field(L"align_secondary_dir", &This::m_alignmentSecondaryDirection),
        json::field(L"primary_inst_count", &This::m_primaryInstanceCount),
        json::field(L"secondary_inst_count", &This::m_secondaryInstanceCount),
        json::field(L"primary_spacing", &This::m_primarySpacing),
        json::field(L"secondary_spacing", &This::m_secondarySpacing),
        json::field(L"base_instance", &This::m_baseInstance, json::whenSet),
        json::field(L"simplified", &This::m_simplified),
        json::pairs(L"visible_instances", &This::m_visibleInstances,
                    "ExcMfgPatternRectangular: invalid size of visible_instances array item (pair)."),
        json::pairs(L"deactivated_instances", &This::m_deactivatedInstances,
                    "ExcMfgPatternRectangular: invalid size of deactivated instances array item "
                    "(pair)."), // sic
    };
};

ZEQ_JSON_OBJECT(ExcMfgPatternRectangular)

struct ExcMfgPatternCircular::JsonForm {
    using This = ExcMfgPatternCircular;
    static constexpr json::Form form{
        json::Head{"ExcMfgPatternCircular", area::exchangeMechanical},
        json::base<ExcMfgPattern>,
        json::field(L"anchor_point", &This::m_anchorPoint),
        json::field(L"center_of_rotation", &This::m_centerOfRotation),
        json::field(L"axis_of_rotation", &This::m_axisOfRotation),
        json::field(L"axial_inst_count", &This::m_axialInstanceCount),
        json::field(L"radial_inst_count", &This::m_radialInstanceCount),
        json::field(L"axial_dist_degrees", &This::m_axialDistanceDegrees),
        json::field(L"radial_dist", &This::m_radialDistance),
        json::field(L"fixed_rot_orient", &This::m_fixedRotationOrientation),
        json::field(L"base_instance", &This::m_baseInstance, json::whenSet),
        json::field(L"simplified", &This::m_simplified),
        json::pairs(L"visible_instances", &This::m_visibleInstances,
                    "ExcMfgPatternCircular: invalid size of visible_instances array item (pair)."),
        json::pairs(L"deactivated_instances", &This::m_deactivatedInstances,
                    "ExcMfgPatternCircular: invalid size of deactivated_instances array item (pair)."),
    };
};

ZEQ_JSON_OBJECT(ExcMfgPatternCircular)

struct ExcMfgPatternUserDefined::JsonForm {
    using This = ExcMfgPatternUserDefined;
    static constexpr json::Form form{
        json::Head{"ExcMfgPatternUserDefined", area::exchangeMechanical},
        json::base<ExcMfgPattern>,
        json::field(L"anchor_point", &This::m_anchorPoint),
        json::field(L"base_instance", &This::m_baseInstance, json::whenSet),
        json::children(L"instance_positions", &This::m_instancePositions),
        json::children(L"deactivated_positions", &This::m_deactivatedPositions),
    };
};

ZEQ_JSON_OBJECT(ExcMfgPatternUserDefined)

} // namespace zeq
