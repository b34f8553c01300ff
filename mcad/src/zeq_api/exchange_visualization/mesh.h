// Tessellated geometry: faces and edges, and the meshes and wires that group them. Objects are used by one thread
// at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// Where tessellated geometry comes from.
enum class EVisuGeometryType {
    unknown,
    part,
    construction,
    fta_constructed
};
const EnumTable& enumTable(EVisuGeometryType);

/// A triangulated face. Coordinates are flat (x0, y0, z0, x1, ...), in the length unit of the scene.
class ExcVisuFace : public IJsonObject {
public:
    /// A primitive. What its type means is the producer's; it need not be a triangle.
    struct Polygon {
        int type = 0;
        std::vector<int> indices; ///< of vertices, not of coordinates
        bool operator==(const Polygon&) const = default;
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// A deep copy.
    std::shared_ptr<ExcVisuFace> clone() const;

    const std::vector<float>& vertices() const { return m_vertices; }
    void setVertices(const std::vector<float>& vertices) { m_vertices = vertices; }
    void setVertices(std::vector<float>&& vertices) { m_vertices = std::move(vertices); }

    /// Three components for each normal.
    const std::vector<float>& normals() const { return m_normals; }
    void setNormals(const std::vector<float>& normals) { m_normals = normals; }
    void setNormals(std::vector<float>&& normals) { m_normals = std::move(normals); }

    const std::vector<Polygon>& polygons() const { return m_polygons; }
    void setPolygons(const std::vector<Polygon>& polygons) { m_polygons = polygons; }
    void setPolygons(std::vector<Polygon>&& polygons) { m_polygons = std::move(polygons); }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    /// Names the face of the exact geometry.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

private:
    struct JsonForm;

    std::vector<float> m_vertices;
    std::vector<float> m_normals;
    std::vector<Polygon> m_polygons;
    ExcColor m_color;
    std::wstring m_mechanicalId;
    std::wstring m_id;
};
using ExcVisuFacePtr = std::shared_ptr<ExcVisuFace>;

/// A polyline, or several.
class ExcVisuEdge : public IJsonObject {
public:
    enum class ELineType {
        unknown,
        line_strip,
        line_loop,
        line_loop_filled
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// A deep copy.
    std::shared_ptr<ExcVisuEdge> clone() const;

    /// Flat coordinates, as the vertices of faces.
    const std::vector<float>& points() const { return m_points; }
    void setPoints(const std::vector<float>& points) { m_points = points; }
    void setPoints(std::vector<float>&& points) { m_points = std::move(points); }

    const std::vector<int>& lineIndices() const { return m_lineIndices; }
    void setLineIndices(const std::vector<int>& indices) { m_lineIndices = indices; }
    void setLineIndices(std::vector<int>&& indices) { m_lineIndices = std::move(indices); }

    ELineType lineType() const { return m_lineType; }
    void setLineType(ELineType type) { m_lineType = type; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    /// Names the edge of the exact geometry.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

private:
    struct JsonForm;

    std::vector<float> m_points;
    std::vector<int> m_lineIndices;
    ELineType m_lineType = ELineType::unknown;
    ExcColor m_color;
    std::wstring m_mechanicalId;
};
const EnumTable& enumTable(ExcVisuEdge::ELineType);
using ExcVisuEdgePtr = std::shared_ptr<ExcVisuEdge>;

/// The faces and edges of one body.
class ExcVisuMesh : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// A deep copy.
    std::shared_ptr<ExcVisuMesh> clone() const;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    /// Names the body of the exact geometry.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    EVisuGeometryType geometryType() const { return m_geometryType; }
    void setGeometryType(EVisuGeometryType type) { m_geometryType = type; }

    const std::vector<ExcVisuFacePtr>& faces() const { return m_faces; }
    /// Appends a face; null is refused with a warning.
    void addFace(const ExcVisuFacePtr& face);
    void addFaces(const std::vector<ExcVisuFacePtr>& faces);
    void setFaces(const std::vector<ExcVisuFacePtr>& faces);

    const std::vector<ExcVisuEdgePtr>& edges() const { return m_edges; }
    /// Appends an edge; null is refused with a warning.
    void addEdge(const ExcVisuEdgePtr& edge);
    void addEdges(const std::vector<ExcVisuEdgePtr>& edges);
    void setEdges(const std::vector<ExcVisuEdgePtr>& edges);

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    EVisuGeometryType m_geometryType = EVisuGeometryType::unknown;
    std::vector<ExcVisuFacePtr> m_faces;
    std::vector<ExcVisuEdgePtr> m_edges;
};
using ExcVisuMeshPtr = std::shared_ptr<ExcVisuMesh>;

/// Lines that bound no face.
class ExcVisuWire : public IJsonObject {
public:
    /// Appends to the edges.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// A deep copy.
    std::shared_ptr<ExcVisuWire> clone() const;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    /// Names the body of the exact geometry.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    EVisuGeometryType geometryType() const { return m_geometryType; }
    void setGeometryType(EVisuGeometryType type) { m_geometryType = type; }

    const std::vector<ExcVisuEdgePtr>& edges() const { return m_edges; }
    /// Appends an edge; null is refused with a warning.
    void addEdge(const ExcVisuEdgePtr& edge);
    void addEdges(const std::vector<ExcVisuEdgePtr>& edges);
    void setEdges(const std::vector<ExcVisuEdgePtr>& edges);

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    EVisuGeometryType m_geometryType = EVisuGeometryType::unknown;
    std::vector<ExcVisuEdgePtr> m_edges;
};
using ExcVisuWirePtr = std::shared_ptr<ExcVisuWire>;

} // namespace zeq
