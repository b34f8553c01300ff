// Tessellates, and reads what that has left in faces and edges.
#include "convexor/display_mesh.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <utility>

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_Context.hxx>
#include <BRepMesh_DelabellaMeshAlgoFactory.hxx>
#include <BRepMesh_FaceDiscret.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepMesh_MeshAlgoFactory.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Poly_Polygon3D.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>

#include "convexor/in_time.h"

namespace zeq::convexor {

namespace {

constexpr int triangles = 4; ///< primitive: every three indices make one

/// What is beyond all numbers of that size becomes none.
void append(std::vector<float>& values, const gp_XYZ& triple) {
    using Limits = std::numeric_limits<float>;
    for (int i = 1; i <= 3; ++i) {
        const double value = triple.Coord(i);
        values.push_back(std::abs(value) <= Limits::max() ? static_cast<float>(value) : Limits::quiet_NaN());
    }
}

bool isFinite(const std::vector<float>& values) {
    return std::ranges::all_of(values, [](float value) { return std::isfinite(value); });
}

/// The surface of a face, which tells its normals.
class Normals {
public:
    explicit Normals(const TopoDS_Face& face) : m_isReversed(face.Orientation() == TopAbs_REVERSED) {
        TopLoc_Location location;
        if (BRep_Tool::Surface(face, location).IsNull()) return;
        m_surface.Initialize(face, false);
        // What is mirrored has its outside where it was, but its parameters run the other way.
        if (location.Transformation().IsNegative()) m_isReversed = !m_isReversed;
        m_isKnown = true;
    }

    /// The unit normal at some parameters.
    /// @param around the sum of the triangles' normals, each as long as it is large, which decides where the
    /// surface has no normal, or one that is plainly wrong
    gp_XYZ at(const Poly_Triangulation& mesh, int node, const gp_XYZ& around) const {
        gp_XYZ normal;
        if (m_isKnown && mesh.HasUVNodes()) {
            gp_Pnt point;
            gp_Vec u, v;
            const gp_Pnt2d at = mesh.UVNode(node);
            m_surface.D1(at.X(), at.Y(), point, u, v);
            normal = u.Crossed(v).XYZ();
            if (m_isReversed) normal.Reverse();
            constexpr double smallest = 1e-8; // sine of the angle between the derivatives
            const double length = normal.Modulus();
            if (length > smallest * u.Magnitude() * v.Magnitude() && length > gp::Resolution() &&
                normal.Dot(around) >= 0)
                return normal / length;
        }
        for (const gp_XYZ& each : {around, normal})
            if (const double length = each.Modulus(); length > gp::Resolution() && std::isfinite(length))
                return each / length;
        return {0, 0, 1};
    }

private:
    BRepAdaptor_Surface m_surface;
    bool m_isReversed;
    bool m_isKnown = false;
};

/// The points of an edge in the shape's coordinates.
std::vector<gp_Pnt> pointsOf(const TopoDS_Edge& edge, const Fineness& fineness) {
    std::vector<gp_Pnt> points;
    TopLoc_Location location;
    Handle(Poly_PolygonOnTriangulation) onMesh;
    Handle(Poly_Triangulation) mesh;
    BRep_Tool::PolygonOnTriangulation(edge, onMesh, mesh, location);
    if (!onMesh.IsNull() && !mesh.IsNull() && mesh->HasGeometry()) {
        for (int i = 1; i <= onMesh->NbNodes(); ++i) points.push_back(mesh->Node(onMesh->Node(i)));
    } else if (const Handle(Poly_Polygon3D) polygon = BRep_Tool::Polygon3D(edge, location);
               !polygon.IsNull()) {
        points.assign(polygon->Nodes().begin(), polygon->Nodes().end());
    } else {
        double first = 0, last = 0;
        if (BRep_Tool::Curve(edge, first, last).IsNull()) return {};
        const GCPnts_TangentialDeflection pieces(BRepAdaptor_Curve(edge), fineness.angle, fineness.chord);
        for (int i = 1; i <= pieces.NbPoints(); ++i) points.push_back(pieces.Value(i));
        return points;
    }
    if (!location.IsIdentity())
        for (gp_Pnt& point : points) point.Transform(location.Transformation());
    return points;
}

/// The diagonal of a box around it; 0 if there is none. The kernel's box can be a thousand times too large, as it holds
/// all poles of a spline, so the points of edges have a say.
double extentOf(const TopoDS_Shape& part) {
    Bnd_Box whole, ofEdges;
    BRepBndLib::Add(part, whole, false);
    if (whole.IsVoid() || whole.IsOpen()) return 0;
    for (TopExp_Explorer vertex(part, TopAbs_VERTEX); vertex.More(); vertex.Next())
        ofEdges.Add(BRep_Tool::Pnt(TopoDS::Vertex(vertex.Current())));
    for (TopExp_Explorer each(part, TopAbs_EDGE); each.More(); each.Next()) {
        double first = 0, last = 0;
        if (BRep_Tool::Curve(TopoDS::Edge(each.Current()), first, last).IsNull()) continue;
        const BRepAdaptor_Curve curve(TopoDS::Edge(each.Current()));
        for (const double share : {0.25, 0.5, 0.75}) ofEdges.Add(curve.Value(first + share * (last - first)));
    }
    constexpr double usual = 4; // of a surface beyond its edges, such as a cap
    const double extent = std::sqrt(whole.SquareExtent());
    return ofEdges.IsVoid() ? extent : std::min(extent, usual * std::sqrt(ofEdges.SquareExtent()));
}

/// Delabella's algorithm for planes, where it takes a fraction of the time, and the kernel's usual ones for other
/// surfaces, which they fill better.
class FastAlgorithms : public IMeshTools_MeshAlgoFactory {
public:
    Handle(IMeshTools_MeshAlgo)
        GetAlgo(const GeomAbs_SurfaceType surface, const IMeshTools_Parameters& parameters) const override {
        return surface == GeomAbs_Plane ? m_forPlanes.GetAlgo(surface, parameters)
                                        : m_forOthers.GetAlgo(surface, parameters);
    }

private:
    const BRepMesh_DelabellaMeshAlgoFactory m_forPlanes;
    const BRepMesh_MeshAlgoFactory m_forOthers;
};

} // namespace

Fineness finenessFor(const TopoDS_Shape& part, double chord) {
    constexpr double usual = 1e-3;    // of the diagonal
    constexpr double finest = 1e-6;   // of the diagonal
    constexpr double smallest = 1e-6; // in millimetres
    constexpr double largest = 1e12;  // in millimetres
    constexpr double angle = 20 * std::numbers::pi / 180;
    const double extent = extentOf(part);
    const double diagonal = extent < largest ? extent : 0; // 0 where it says nothing
    const double wanted = chord > 0 ? chord : usual * (diagonal > 0 ? diagonal : 1);
    return {std::max({wanted, finest * diagonal, smallest}), angle};
}

void tessellate(const TopoDS_Shape& part, const Fineness& fineness) {
    const auto mesh = [](const TopoDS_Shape& shape, double chord, double angle,
                         const Handle(IMeshTools_MeshAlgoFactory) & algorithms) {
        BRepMesh_IncrementalMesh mesher;
        mesher.ChangeParameters().Deflection = chord;
        mesher.ChangeParameters().Angle = angle;
        mesher.ChangeParameters().InParallel = true;
        mesher.ChangeParameters().AllowQualityDecrease = true;
        mesher.SetShape(shape);
        const Handle(BRepMesh_Context) context = new BRepMesh_Context;
        context->SetFaceDiscret(new BRepMesh_FaceDiscret(algorithms));
        mesher.Perform(context);
    };
    mesh(part, fineness.chord, fineness.angle, new FastAlgorithms);

    // Where the points of a boundary come to lie decides whether the kernel can fill it, so others may do.
    // The edges keep theirs, which they share with other faces.
    constexpr std::pair<double, double> others[]{{1, 1}, {3, 1}, {0.3, 1}, {1, 2}}; // chord, angle
    TopLoc_Location location;
    for (TopExp_Explorer each(part, TopAbs_FACE); each.More(); each.Next()) {
        const TopoDS_Face face = TopoDS::Face(each.Current());
        for (const auto& [chord, angle] : others) {
            if (!BRep_Tool::Triangulation(face, location).IsNull()) break;
            const TopoDS_Face copy = TopoDS::Face(BRepBuilderAPI_Copy(face, false).Shape());
            mesh(copy, chord * fineness.chord, angle * fineness.angle, new BRepMesh_MeshAlgoFactory);
            BRep_Builder().UpdateFace(face, BRep_Tool::Triangulation(copy, location));
        }
    }
}

bool tessellateInTime(const TopoDS_Shape& part, const Fineness& fineness) {
    auto done = inTime(timeFor(part), [part, fineness] { tessellate(part, fineness); });
    if (!done.valid()) return false;
    done.get();
    return true;
}

ExcVisuFacePtr displayFace(const TopoDS_Face& face, double scale) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull() || !mesh->HasGeometry()) return nullptr;
    const gp_Trsf placement = location.Transformation();
    const bool isTurned = (face.Orientation() == TopAbs_REVERSED) != placement.IsNegative();

    const auto count = static_cast<std::size_t>(mesh->NbNodes());
    std::vector<gp_XYZ> nodes;
    nodes.reserve(count);
    for (int i = 1; i <= mesh->NbNodes(); ++i) nodes.push_back(mesh->Node(i).Transformed(placement).XYZ());

    ExcVisuFace::Polygon polygon{triangles, {}};
    polygon.indices.reserve(3 * static_cast<std::size_t>(mesh->NbTriangles()));
    std::vector<gp_XYZ> around(count, gp_XYZ());
    for (int i = 1; i <= mesh->NbTriangles(); ++i) {
        int corners[3];
        mesh->Triangle(i).Get(corners[0], corners[1], corners[2]);
        if (isTurned) std::swap(corners[1], corners[2]);
        for (int& corner : corners) polygon.indices.push_back(--corner);
        const auto at = [&](int corner) { return nodes[static_cast<std::size_t>(corners[corner])]; };
        const gp_XYZ normal = (at(1) - at(0)).Crossed(at(2) - at(0));
        for (const int corner : corners) around[static_cast<std::size_t>(corner)] += normal;
    }

    std::vector<float> vertices, normals;
    vertices.reserve(3 * count);
    normals.reserve(3 * count);
    const Normals ofSurface(face);
    for (std::size_t i = 0; i < count; ++i) {
        append(vertices, nodes[i] * scale);
        append(normals, ofSurface.at(*mesh, static_cast<int>(i) + 1, around[i]));
    }
    if (!isFinite(vertices)) return nullptr;

    auto result = std::make_shared<ExcVisuFace>();
    result->setVertices(std::move(vertices));
    result->setNormals(std::move(normals));
    std::vector<ExcVisuFace::Polygon> polygons;
    polygons.push_back(std::move(polygon));
    result->setPolygons(std::move(polygons));
    return result;
}

ExcVisuEdgePtr displayEdge(const TopoDS_Edge& edge, double scale, const Fineness& fineness) {
    if (BRep_Tool::Degenerated(edge)) return nullptr;
    std::vector<float> coordinates;
    try {
        for (const gp_Pnt& point : pointsOf(edge, fineness)) append(coordinates, point.XYZ() * scale);
    } catch (const Standard_Failure&) {
        return nullptr;
    }
    if (coordinates.size() < 2 * 3 || !isFinite(coordinates)) return nullptr;
    auto result = std::make_shared<ExcVisuEdge>();
    result->setLineIndices(countUp(coordinates.size() / 3));
    result->setPoints(std::move(coordinates));
    result->setLineType(ExcVisuEdge::ELineType::line_strip);
    return result;
}

void appendPoint(std::vector<float>& points, const TopoDS_Vertex& vertex, double scale) {
    append(points, BRep_Tool::Pnt(vertex).XYZ() * scale);
    if (!isFinite({points.end() - 3, points.end()})) points.resize(points.size() - 3);
}

std::vector<int> countUp(std::size_t count) {
    std::vector<int> indices(count);
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

} // namespace zeq::convexor
