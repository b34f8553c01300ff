// What stands beside the geometry in a scene: texts, the display form of annotations, markers. Objects are used by
// one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/exchange_visualization/attributes.h"
#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq {

/// The symbol that marks a point.
enum class EVisuMarkerStyle {
    NOTUSED,
    CROSS,
    PLUS,
    CONCENTRIC,
    COINCIDENT,
    FULLCIRCLE,
    FULLSQUARE,
    STAR,
    DOT,
    SMALLDOT,
    MISC1,
    MISC2,
    FULLCIRCLE2,
    FULLSQUARE2,
    OPEN_ARROW,
    UNFILLED_ARROW,
    BLANKED_ARROW,
    FILLED_ARROW,
    UNFILLED_CIRCLE,
    BLANKED_CIRCLE,
    FILLED_CIRCLE,
    CROSSED_CIRCLE,
    BLANKED_SQUARE,
    FILLED_SQUARE,
    BLANKED_TRIANGLE,
    FILLED_TRIANGLE,
    MANIPULATOR_SQUARE,
    MANIPULATOR_DIAMOND,
    MANIPULATOR_CIRCLE,
    MANIPULATOR_TRIANGLE,
    DOUBLE_OPEN_ARROW,
    WAVE,
    DOUBLE_FILLED_ARROW,
    FULLDOUBLEROTATEARROWBLACKBORDER,
    FULLSQUAREBLACKBORDER,
    FULLDIAMONDBLACKBORDER,
    FULLCIRCLEBLACKBORDER,
    DOUBLE_UNFILLED_ARROW = 2001,
    DOUBLE_BLANKED_ARROW,
    FORE_SLASH,
    BACK_SLASH,
    INTEGRAL,
    UNFILLED_DOT,
    FILLED_DOT,
    UNFILLED_SQUARE,
    TOP_OPEN_ARROW,
    BOTTOM_OPEN_ARROW,
    TOP_FILLED_ARROW,
    BOTTOM_FILLED_ARROW,
    UNFILLED_TRIANGLE
};
const EnumTable& enumTable(EVisuMarkerStyle);

/// A line of text in space.
class ExcVisuText : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& text() const { return m_text; }
    void setText(const std::wstring& text) { m_text = text; }

    const ExcVector3d& anchorPoint() const { return m_anchorPoint; }
    void setAnchorPoint(const ExcVector3d& point) { m_anchorPoint = point; }

    /// Along the base line.
    const ExcVector3d& direction() const { return m_direction; }
    void setDirection(const ExcVector3d& direction) { m_direction = direction; }

    /// Of the plane that the text lies in.
    const ExcVector3d& normal() const { return m_normal; }
    void setNormal(const ExcVector3d& normal) { m_normal = normal; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    const ExcVisuFont& font() const { return m_font; }
    void setFont(const ExcVisuFont& font) { m_font = font; }

private:
    struct JsonForm;

    std::wstring m_text;
    ExcVector3d m_anchorPoint;
    ExcVector3d m_direction;
    ExcVector3d m_normal;
    ExcColor m_color;
    ExcVisuFont m_font;
};
using ExcVisuTextPtr = std::shared_ptr<ExcVisuText>;

/// How an annotation is drawn.
///
/// The linked elements are read and never written: those of the semantic annotation are the ones that travel. // sic
class ExcVisuPMI : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    /// Names the semantic annotation.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    const std::vector<ExcVisuEdgePtr>& edges() const { return m_edges; }
    /// Appends an edge; null is refused with a warning.
    void addEdge(const ExcVisuEdgePtr& edge);
    void addEdges(const std::vector<ExcVisuEdgePtr>& edges);
    void setEdges(const std::vector<ExcVisuEdgePtr>& edges);

    const std::vector<ExcVisuTextPtr>& texts() const { return m_texts; }
    /// Appends a text; null is refused with a warning.
    void addText(const ExcVisuTextPtr& text);
    void addTexts(const std::vector<ExcVisuTextPtr>& texts);
    void setTexts(const std::vector<ExcVisuTextPtr>& texts);

    const std::vector<std::shared_ptr<ExcEntity>>& linkedElements() const { return m_linkedElements; }
    /// Appends an element; null is refused with a warning.
    void addLinkedElement(const std::shared_ptr<ExcEntity>& element);
    void addLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements);
    void setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements);

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    std::vector<ExcVisuEdgePtr> m_edges;
    std::vector<ExcVisuTextPtr> m_texts;
    std::vector<std::shared_ptr<ExcEntity>> m_linkedElements;
};
using ExcVisuPMIPtr = std::shared_ptr<ExcVisuPMI>;

/// Markers of one kind.
class ExcVisuPoints : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Flat coordinates, as the vertices of faces.
    const std::vector<float>& points() const { return m_points; }
    void setPoint(const std::vector<float>& points) { m_points = points; }       // sic
    void setPoint(std::vector<float>&& points) { m_points = std::move(points); } // sic

    const std::vector<int>& pointIndices() const { return m_pointIndices; }
    void setPointIndices(const std::vector<int>& indices) { m_pointIndices = indices; }
    void setPointIndices(std::vector<int>&& indices) { m_pointIndices = std::move(indices); }

    EVisuMarkerStyle markerStyle() const { return m_markerStyle; }
    void setMarkerStyle(EVisuMarkerStyle style) { m_markerStyle = style; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

private:
    struct JsonForm;

    std::vector<float> m_points;
    std::vector<int> m_pointIndices;
    EVisuMarkerStyle m_markerStyle = EVisuMarkerStyle::NOTUSED;
    ExcColor m_color;
};
using ExcVisuPointsPtr = std::shared_ptr<ExcVisuPoints>;

/// Markers that belong together.
class ExcVisuPointSet : public IJsonObject {
public:
    /// Appends to the points.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    EVisuGeometryType geometryType() const { return m_geometryType; }
    void setGeometryType(EVisuGeometryType type) { m_geometryType = type; }

    const std::vector<ExcVisuPointsPtr>& points() const { return m_points; }
    /// Appends markers; null is refused with a warning.
    void addPoints(const ExcVisuPointsPtr& points);
    void addPoints(const std::vector<ExcVisuPointsPtr>& points);
    void setPoints(const std::vector<ExcVisuPointsPtr>& points);

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    EVisuGeometryType m_geometryType = EVisuGeometryType::unknown;
    std::vector<ExcVisuPointsPtr> m_points;
};
using ExcVisuPointSetPtr = std::shared_ptr<ExcVisuPointSet>;

} // namespace zeq
