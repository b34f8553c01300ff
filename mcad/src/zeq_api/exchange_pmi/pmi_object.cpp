// The JSON forms of what all annotations have in common.
#include "zeq_api/exchange_pmi/pmi_object.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullElement = "ExcPMIAnnotation: attempt to add null linked element";
constexpr const char* nullLeader = "ExcPMIAnnotation: attempt to add null PMI leader.";

} // namespace

const EnumTable& enumTable(EPMIAnnotationType) {
    using enum EPMIAnnotationType;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"},     {datum, L"datum"}, {datum_target, L"datum_target"}, {note, L"note"},
        {flag_note, L"flag_note"}, {NOA, L"NOA"},     {roughness, L"roughness"},       {GDT, L"GDT"},
        {dimension, L"dimension"}};
    static const EnumTable table{"EPMIAnnotationType", names};
    return table;
}

const EnumTable& enumTable(EPMIOrientation) {
    using enum EPMIOrientation;
    static constexpr EnumEntry names[] = {{horizontal, L"horizontal"},
                                          {vertical, L"vertical"},
                                          {parallel, L"parallel"},
                                          {perpendicular, L"perpendicular"},
                                          {dim_angle, L"dim_angle"}};
    static const EnumTable table{"EPMIOrientation", names};
    return table;
}

struct ExcPMIObject::JsonForm {
    using This = ExcPMIObject;
    static constexpr json::Form form{
        json::Head{"ExcPMIObject", area::exchangePmi},
        json::field(L"name", &This::m_name),
        json::field(L"id", &This::m_id),
        json::field(L"hidden", &This::m_hidden),
    };
};

ZEQ_JSON_OBJECT(ExcPMIObject)

struct ExcPMILeader::JsonForm {
    using This = ExcPMILeader;
    static constexpr json::Form form{
        json::Head{"ExcPMILeader", area::exchangePmi},
        json::children(L"points", &This::m_points, json::anyElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcPMILeader)

struct ExcPMIText::JsonForm {
    using This = ExcPMIText;
    // clang-format off
    static constexpr json::Form form{
        json::Head{"ExcPMIText", area::exchangePmi},
        json::field(L"text_after", &This::m_textAfter),
        json::field(L"text_before", &This::m_textBefore),
        json::field(L"text_below", &This::m_textBelow),
        json::field(L"text_lower", &This::m_textLower),
        json::field(L"text_prefix", &This::m_textPrefix),
        json::field(L"text_suffix", &This::m_textSuffix),
        json::field(L"text_upper", &This::m_textUpper),
    };
    // clang-format on
};

ZEQ_JSON_OBJECT(ExcPMIText)

struct ExcPMIAnnotation::JsonForm {
    using This = ExcPMIAnnotation;
    static constexpr json::Form form{
        json::Head{"ExcPMIAnnotation", area::exchangePmi},
        json::base<ExcPMIObject>,
        json::computed(L"type", &This::type),
        json::field(L"orientation", &This::m_orientation),
        json::field(L"angle", &This::m_angle, json::when(&This::isAtAngle)),
        json::field(L"z_depth", &This::m_zDepth),
        json::field(L"position", &This::m_position),
        json::children(L"linked_elements", &This::m_linkedElements, json::matchingElements, json::always),
        json::children(L"leaders", &This::m_leaders, json::matchingElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcPMIAnnotation)

void ExcPMIAnnotation::addLinkedElement(const std::shared_ptr<ExcEntity>& element) {
    detail::appendChild(m_linkedElements, element, nullElement);
}

void ExcPMIAnnotation::addLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements) {
    detail::appendEach(m_linkedElements, elements, nullElement);
}

void ExcPMIAnnotation::setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements) {
    detail::setChildren(m_linkedElements, elements, nullElement);
}

void ExcPMIAnnotation::addLeader(const ExcPMILeaderPtr& leader) {
    detail::appendChild(m_leaders, leader, nullLeader);
}

void ExcPMIAnnotation::addLeaders(const std::vector<ExcPMILeaderPtr>& leaders) {
    detail::appendEach(m_leaders, leaders, nullLeader);
}

void ExcPMIAnnotation::setLeaders(const std::vector<ExcPMILeaderPtr>& leaders) {
    detail::setChildren(m_leaders, leaders, nullLeader);
}

} // namespace zeq
