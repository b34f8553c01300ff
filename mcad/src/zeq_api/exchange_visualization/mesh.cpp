// The JSON forms of tessellated geometry.
#include "zeq_api/exchange_visualization/mesh.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/exchange_visualization/bulk_rows.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullFaceOfMesh = "ExcVisuMesh: attempt to add null Visu Face object.";
constexpr const char* nullEdgeOfMesh = "ExcVisuMesh: attempt to add null Visu Edge object.";
constexpr const char* nullEdgeOfWire = "ExcVisuWire: attempt to add null Visu Edge object.";

/// The number of integers that flattened() gives.
std::size_t flatSize(const std::vector<ExcVisuFace::Polygon>& polygons) {
    std::size_t size = 2 * polygons.size();
    for (const ExcVisuFace::Polygon& polygon : polygons) size += polygon.indices.size();
    return size;
}

/// The type of a polygon, the number of its indices, the indices; then the next one.
std::vector<int> flattened(const std::vector<ExcVisuFace::Polygon>& polygons) {
    std::vector<int> stream;
    stream.reserve(flatSize(polygons));
    for (const ExcVisuFace::Polygon& polygon : polygons) {
        stream.push_back(polygon.type);
        stream.push_back(static_cast<int>(polygon.indices.size()));
        stream.insert(stream.end(), polygon.indices.begin(), polygon.indices.end());
    }
    return stream;
}

/// The polygons that are whole; a count that is negative or runs past the end is the last thing looked at.
std::vector<ExcVisuFace::Polygon> rebuilt(const std::vector<int>& stream) {
    std::vector<ExcVisuFace::Polygon> polygons;
    for (auto at = stream.begin(); stream.end() - at >= 2;) {
        const int type = at[0];
        const int count = at[1];
        at += 2;
        if (count < 0 || count > stream.end() - at) break;
        polygons.push_back({type, {at, at + count}});
        at += count;
    }
    return polygons;
}

/// Deep copies of children.
template <class T>
std::vector<std::shared_ptr<T>> clones(const std::vector<std::shared_ptr<T>>& children) {
    std::vector<std::shared_ptr<T>> copies;
    copies.reserve(children.size());
    for (const auto& child : children) copies.push_back(child->clone());
    return copies;
}

} // namespace

const EnumTable& enumTable(EVisuGeometryType) {
    using enum EVisuGeometryType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {part, L"part"},
                                          {construction, L"construction"},
                                          {fta_constructed, L"fta_constructed"}};
    static const EnumTable table{"EVisuGeometryType", names};
    return table;
}

const EnumTable& enumTable(ExcVisuEdge::ELineType) {
    using enum ExcVisuEdge::ELineType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {line_strip, L"line_strip"},
                                          {line_loop, L"line_loop"},
                                          {line_loop_filled, L"line_loop_filled"}};
    static const EnumTable table{"ExcVisuEdge::ELineType", names};
    return table;
}

struct ExcVisuFace::JsonForm {
    using This = ExcVisuFace;

    struct Polygons {
        static void take(const auto& view, This& face) {
            if (view.kind() == json::Kind::string) {
                std::vector<int> stream;
                detail::takeBase64(view, stream);
                face.m_polygons = rebuilt(stream);
            } else if (view.kind() == json::Kind::array) {
                face.m_polygons.clear();
                view.forEach([&face](const auto& element) {
                    takePolygon(element, face.m_polygons);
                    return true;
                });
            } else {
                ZEQ_LOG(Error) << "ExcVisuFace: unknown type of polygons data (not array, not base64 string)";
            }
        }
        static void takePolygon(const auto& view, std::vector<Polygon>& polygons) {
            if (view.kind() != json::Kind::object) {
                ZEQ_LOG(Warning) << "ExcVisuFace: polygons array item should be an object.";
                return;
            }
            Polygon& polygon = polygons.emplace_back();
            auto members = view.members();
            if (const auto type = members.find(L"type")) type->take(polygon.type);
            if (const auto indices = members.find(L"indices"))
                json::Codec<std::vector<int>>::take(*indices, polygon.indices);
        }
        static void give(auto& sink, const This& face) {
            std::vector<int> stream;
            detail::giveBase64(sink, flatSize(face.m_polygons) * sizeof(int), [&] {
                if (stream.empty()) stream = flattened(face.m_polygons);
                return stream.data();
            });
        }
        static json::Shape shape() {
            return json::bulkShape(
                {json::ObjectShape{{{L"type", json::Codec<int>::shape()},
                                    {L"indices", json::Codec<std::vector<int>>::shape()}}}});
        }
    };
    static constexpr auto ifAny = [](const This& face, const auto&) { return !face.m_polygons.empty(); };

    static constexpr json::Form form{
        json::Head{"ExcVisuFace", area::exchangeVisualization},
        detail::bulk(L"vertices", &This::m_vertices,
                     "ExcVisuFace: unknown type of vertices data (not array, not base64 string)"),
        detail::bulk(L"normals", &This::m_normals,
                     "ExcVisuFace: unknown type of normals data (not array, not base64 string)"),
        json::custom(L"polygons", Polygons{}, ifAny),
        json::field(L"color", &This::m_color),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"id", &This::m_id),
    };
};

ZEQ_JSON_OBJECT(ExcVisuFace)

ExcVisuFacePtr ExcVisuFace::clone() const { return std::make_shared<ExcVisuFace>(*this); }

struct ExcVisuEdge::JsonForm {
    using This = ExcVisuEdge;
    static constexpr json::Form form{
        json::Head{"ExcVisuEdge", area::exchangeVisualization},
        detail::bulk(L"points", &This::m_points,
                     "ExcVisuEdge: unknown type of points data (not array, not base64 string)"),
        detail::bulk(L"line_indices", &This::m_lineIndices,
                     "ExcVisuEdge: unknown type of line indices data (not array, not base64 string)"),
        json::field(L"line_type", &This::m_lineType),
        json::field(L"color", &This::m_color),
        json::field(L"mechanical_id", &This::m_mechanicalId),
    };
};

ZEQ_JSON_OBJECT(ExcVisuEdge)

ExcVisuEdgePtr ExcVisuEdge::clone() const { return std::make_shared<ExcVisuEdge>(*this); }

struct ExcVisuMesh::JsonForm {
    using This = ExcVisuMesh;
    static constexpr json::Form form{
        json::Head{"ExcVisuMesh", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"geometry_type", &This::m_geometryType),
        json::children(L"faces", &This::m_faces),
        json::children(L"edges", &This::m_edges),
    };
};

ZEQ_JSON_OBJECT(ExcVisuMesh)

ExcVisuMeshPtr ExcVisuMesh::clone() const {
    auto copy = std::make_shared<ExcVisuMesh>(*this);
    copy->m_faces = clones(m_faces);
    copy->m_edges = clones(m_edges);
    return copy;
}

void ExcVisuMesh::addFace(const ExcVisuFacePtr& face) { detail::appendChild(m_faces, face, nullFaceOfMesh); }
void ExcVisuMesh::addFaces(const std::vector<ExcVisuFacePtr>& faces) {
    detail::appendEach(m_faces, faces, nullFaceOfMesh);
}
void ExcVisuMesh::setFaces(const std::vector<ExcVisuFacePtr>& faces) {
    detail::setChildren(m_faces, faces, nullFaceOfMesh);
}

void ExcVisuMesh::addEdge(const ExcVisuEdgePtr& edge) { detail::appendChild(m_edges, edge, nullEdgeOfMesh); }
void ExcVisuMesh::addEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::appendEach(m_edges, edges, nullEdgeOfMesh);
}
void ExcVisuMesh::setEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::setChildren(m_edges, edges, nullEdgeOfMesh);
}

struct ExcVisuWire::JsonForm {
    using This = ExcVisuWire;
    static constexpr json::Form form{
        json::Head{"ExcVisuWire", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"geometry_type", &This::m_geometryType),
        json::children(L"edges", &This::m_edges),
    };
};

ZEQ_JSON_OBJECT(ExcVisuWire)

ExcVisuWirePtr ExcVisuWire::clone() const {
    auto copy = std::make_shared<ExcVisuWire>(*this);
    copy->m_edges = clones(m_edges);
    return copy;
}

void ExcVisuWire::addEdge(const ExcVisuEdgePtr& edge) { detail::appendChild(m_edges, edge, nullEdgeOfWire); }
void ExcVisuWire::addEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::appendEach(m_edges, edges, nullEdgeOfWire);
}
void ExcVisuWire::setEdges(const std::vector<ExcVisuEdgePtr>& edges) {
    detail::setChildren(m_edges, edges, nullEdgeOfWire);
}

} // namespace zeq
