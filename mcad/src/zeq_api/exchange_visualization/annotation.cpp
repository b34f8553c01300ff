// The JSON forms of texts, drawn annotations and markers.
#include "zeq_api/exchange_visualization/annotation.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/exchange_visualization/bulk_rows.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullEdge = "ExcVisuPMI: attempt to add null Visu Edge object.";
constexpr const char* nullText = "ExcVisuPMI: attempt to add null Visu Text object.";
constexpr const char* nullElement = "ExcVisuPMI: attempt to add null Linked Element object.";
constexpr const char* nullPoints = "ExcVisuPointSet: attempt to add null Visu Points object.";

} // namespace

const EnumTable& enumTable(EVisuMarkerStyle) {
    using enum EVisuMarkerStyle;
    static constexpr EnumEntry names[] = {
        {NOTUSED, L"NOTUSED"},
        {CROSS, L"CROSS"},
        {PLUS, L"PLUS"},
        {CONCENTRIC, L"CONCENTRIC"},
        {COINCIDENT, L"COINCIDENT"},
        {FULLCIRCLE, L"FULLCIRCLE"},
        {FULLSQUARE, L"FULLSQUARE"},
        {STAR, L"STAR"},
        {DOT, L"DOT"},
        {SMALLDOT, L"SMALLDOT"},
        {MISC1, L"MISC1"},
        {MISC2, L"MISC2"},
        {FULLCIRCLE2, L"FULLCIRCLE2"},
        {FULLSQUARE2, L"FULLSQUARE2"},
        {OPEN_ARROW, L"OPEN_ARROW"},
        {UNFILLED_ARROW, L"UNFILLED_ARROW"},
        {BLANKED_ARROW, L"BLANKED_ARROW"},
        {FILLED_ARROW, L"FILLED_ARROW"},
        {UNFILLED_CIRCLE, L"UNFILLED_CIRCLE"},
        {BLANKED_CIRCLE, L"BLANKED_CIRCLE"},
        {FILLED_CIRCLE, L"FILLED_CIRCLE"},
        {CROSSED_CIRCLE, L"CROSSED_CIRCLE"},
        {BLANKED_SQUARE, L"BLANKED_SQUARE"},
        {FILLED_SQUARE, L"FILLED_SQUARE"},
        {BLANKED_TRIANGLE, L"BLANKED_TRIANGLE"},
        {FILLED_TRIANGLE, L"FILLED_TRIANGLE"},
        {MANIPULATOR_SQUARE, L"MANIPULATOR_SQUARE"},
        {MANIPULATOR_DIAMOND, L"MANIPULATOR_DIAMOND"},
        {MANIPULATOR_CIRCLE, L"MANIPULATOR_CIRCLE"},
        {MANIPULATOR_TRIANGLE, L"MANIPULATOR_TRIANGLE"},
        {DOUBLE_OPEN_ARROW, L"DOUBLE_OPEN_ARROW"},
        {WAVE, L"WAVE"},
        {DOUBLE_FILLED_ARROW, L"DOUBLE_FILLED_ARROW"},
        {FULLDOUBLEROTATEARROWBLACKBORDER, L"FULLDOUBLEROTATEARROWBLACKBORDER"},
        {FULLSQUAREBLACKBORDER, L"FULLSQUAREBLACKBORDER"},
        {FULLDIAMONDBLACKBORDER, L"FULLDIAMONDBLACKBORDER"},
        {FULLCIRCLEBLACKBORDER, L"FULLCIRCLEBLACKBORDER"},
        {DOUBLE_UNFILLED_ARROW, L"DOUBLE_UNFILLED_ARROW"},
        {DOUBLE_BLANKED_ARROW, L"DOUBLE_BLANKED_ARROW"},
        {FORE_SLASH, L"FORE_SLASH"},
        {BACK_SLASH, L"BACK_SLASH"},
        {INTEGRAL, L"INTEGRAL"},
        {UNFILLED_DOT, L"UNFILLED_DOT"},
        {FILLED_DOT, L"FILLED_DOT"},
        {UNFILLED_SQUARE, L"UNFILLED_SQUARE"},
        {TOP_OPEN_ARROW, L"TOP_OPEN_ARROW"},
        {BOTTOM_OPEN_ARROW, L"BOTTOM_OPEN_ARROW"},
        {TOP_FILLED_ARROW, L"TOP_FILLED_ARROW"},
        {BOTTOM_FILLED_ARROW, L"BOTTOM_FILLED_ARROW"},
        {UNFILLED_TRIANGLE, L"UNFILLED_TRIANGLE"}};
    static const EnumTable table{"EVisuMarkerStyle", names};
    return table;
}

struct ExcVisuText::JsonForm {
    using This = ExcVisuText;
    static constexpr json::Form form{
        json::Head{"ExcVisuText", area::exchangeVisualization},
        json::field(L"text", &This::m_text),
        json::field(L"anchor_point", &This::m_anchorPoint),
        json::field(L"direction", &This::m_direction),
        json::field(L"normal", &This::m_normal),
        json::field(L"color", &This::m_color),
        json::field(L"font", &This::m_font),
    };
};

ZEQ_JSON_OBJECT(ExcVisuText)

struct ExcVisuPMI::JsonForm {
    using This = ExcVisuPMI;
    static constexpr json::Form form{
        json::Head{"ExcVisuPMI", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::children(L"edges", &This::m_edges),
        json::children(L"texts", &This::m_texts),
        json::children(L"linked_elements", &This::m_linkedElements, json::matchingElements, json::never),
    };
};

ZEQ_JSON_OBJECT(ExcVisuPMI)

void ExcVisuPMI::addEdge(const ExcVisuEdgePtr& edge) { detail::appendChild(m_edges, edge, nullEdge); }
void ExcVisuPMI::addEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::appendEach(m_edges, edges, nullEdge);
}
void ExcVisuPMI::setEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::setChildren(m_edges, edges, nullEdge);
}

void ExcVisuPMI::addText(const ExcVisuTextPtr& text) { detail::appendChild(m_texts, text, nullText); }
void ExcVisuPMI::addTexts(const std::vector<ExcVisuTextPtr>& texts) {
    detail::appendEach(m_texts, texts, nullText);
}
void ExcVisuPMI::setTexts(const std::vector<ExcVisuTextPtr>& texts) {
    detail::setChildren(m_texts, texts, nullText);
}

void ExcVisuPMI::addLinkedElement(const std::shared_ptr<ExcEntity>& element) {
    detail::appendChild(m_linkedElements, element, nullElement);
}
void ExcVisuPMI::addLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements) {
    detail::appendEach(m_linkedElements, elements, nullElement);
}
void ExcVisuPMI::setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements) {
    detail::setChildren(m_linkedElements, elements, nullElement);
}

struct ExcVisuPoints::JsonForm {
    using This = ExcVisuPoints;
    static constexpr json::Form form{
        json::Head{"ExcVisuPoints", area::exchangeVisualization},
        detail::numbers(L"points", &This::m_points),
        detail::numbers(L"point_indices", &This::m_pointIndices),
        json::field(L"marker_style", &This::m_markerStyle),
        json::field(L"color", &This::m_color),
    };
};

ZEQ_JSON_OBJECT(ExcVisuPoints)

struct ExcVisuPointSet::JsonForm {
    using This = ExcVisuPointSet;
    static constexpr json::Form form{
        json::Head{"ExcVisuPointSet", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"geometry_type", &This::m_geometryType),
        json::children(L"points", &This::m_points),
    };
};

ZEQ_JSON_OBJECT(ExcVisuPointSet)

void ExcVisuPointSet::addPoints(const ExcVisuPointsPtr& points) {
    detail::appendChild(m_points, points, nullPoints);
}
void ExcVisuPointSet::addPoints(const std::vector<ExcVisuPointsPtr>& points) {
    detail::appendEach(m_points, points, nullPoints);
}
void ExcVisuPointSet::setPoints(const std::vector<ExcVisuPointsPtr>& points) {
    detail::setChildren(m_points, points, nullPoints);
}

} // namespace zeq
