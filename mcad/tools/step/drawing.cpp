// Draws item by item from a list of what is still to be drawn, so that no nesting exhausts the stack.
#include "step/drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zeq::step {

namespace {

constexpr std::size_t mostItems = 100000; // of one drawing; a damaged file may refer in circles
constexpr double fullTurn = 2 * std::numbers::pi;

bool isTriangulated(const Instance& item) {
    return item.is("TRIANGULATED_FACE") || item.is("COMPLEX_TRIANGULATED_FACE") ||
           item.is("TRIANGULATED_SURFACE_SET") || item.is("COMPLEX_TRIANGULATED_SURFACE_SET");
}

/// A point as three numbers in a list.
std::optional<Vec> point(const Value& value) {
    std::array<double, 3> coordinates{};
    std::size_t count = 0;
    for (const Value& each : value.items()) {
        const auto number = each.number();
        if (!number || count == coordinates.size()) return std::nullopt;
        coordinates[count++] = *number;
    }
    return count == 3 ? std::optional(Vec{coordinates[0], coordinates[1], coordinates[2]}) : std::nullopt;
}

std::vector<Vec> coordinates(const Instance& list, const Placement& placement) {
    std::vector<Vec> points;
    for (const Value& value : attribute(list, "COORDINATES_LIST", 1, 1).items())
        points.push_back(placement(point(value).value_or(Vec())));
    return points;
}

/// An index that counts from 1, as one that counts from 0; nothing beyond `count`.
std::optional<std::size_t> index(const Value& value, std::size_t count) {
    const auto number = value.number();
    if (!number || *number < 1 || *number > static_cast<double>(count)) return std::nullopt;
    return static_cast<std::size_t>(*number) - 1;
}

/// What a complex triangulated item declares, and where in a simple one it stands.
struct TriangleAttributes {
    std::string_view set;      ///< declares coordinates, pnmax and normals
    std::string_view leaf;     ///< declares pnindex and the triangles
    std::size_t beforeIndexes; ///< attributes in front of pnindex
    bool isComplex;            ///< strips and fans in place of triangles
};

TriangleAttributes attributesOf(const Instance& item) {
    if (item.is("TRIANGULATED_FACE")) return {"TESSELLATED_FACE", "TRIANGULATED_FACE", 5, false};
    if (item.is("COMPLEX_TRIANGULATED_FACE"))
        return {"TESSELLATED_FACE", "COMPLEX_TRIANGULATED_FACE", 5, true};
    if (item.is("TRIANGULATED_SURFACE_SET"))
        return {"TESSELLATED_SURFACE_SET", "TRIANGULATED_SURFACE_SET", 4, false};
    return {"TESSELLATED_SURFACE_SET", "COMPLEX_TRIANGULATED_SURFACE_SET", 4, true};
}

class Drawer {
public:
    explicit Drawer(const StepFile& file) : m_file(file) {}

    Drawing draw(const Instance& item) {
        reach(item, {});
        for (std::size_t i = 0; i < m_pending.size() && i < mostItems; ++i) {
            const Pending pending = m_pending[i];
            drawOne(pending.item, pending.placement);
        }
        return std::move(m_drawing);
    }

private:
    struct Pending {
        Instance item;
        Placement placement;
    };

    void reach(const Instance& item, const Placement& placement) {
        if (item) m_pending.push_back({item, placement});
    }

    void reachAll(const Value& list, const Placement& placement) {
        for (const Value& value : list.items()) reach(m_file.at(value), placement);
    }

    void drawOne(const Instance& item, const Placement& around) {
        Placement placement = around;
        if (item.is("REPOSITIONED_TESSELLATED_ITEM")) {
            const Instance location = m_file.at(attribute(item, "REPOSITIONED_TESSELLATED_ITEM", 1, 0));
            if (const auto inner = readPlacement(m_file, location)) placement = around * *inner;
        }
        if (item.is("TESSELLATED_GEOMETRIC_SET"))
            reachAll(attribute(item, "TESSELLATED_GEOMETRIC_SET", 1, 0), placement);
        else if (item.is("GEOMETRIC_CURVE_SET") || item.is("GEOMETRIC_SET"))
            reachAll(attribute(item, "GEOMETRIC_SET", 1, 0), placement);
        else if (item.is("TESSELLATED_CURVE_SET"))
            drawCurveSet(item, placement);
        else if (isTriangulated(item))
            readTriangles(m_file, item, placement, m_drawing.triangles);
        else if (item.is("ANNOTATION_FILL_AREA"))
            drawArea(item, placement);
        else if (!isMark(item))
            drawCurve(item, placement, m_drawing.strokes);
    }

    /// What places an annotation and is not drawn.
    static bool isMark(const Instance& item) {
        return item.is("AXIS2_PLACEMENT_3D") || item.is("CARTESIAN_POINT") || item.is("PLANAR_BOX");
    }

    void drawCurveSet(const Instance& item, const Placement& placement) {
        const std::vector<Vec> points =
            coordinates(m_file.at(attribute(item, "TESSELLATED_CURVE_SET", 1, 0)), placement);
        for (const Value& strip : attribute(item, "TESSELLATED_CURVE_SET", 1, 1).items()) {
            std::vector<Vec> stroke;
            for (const Value& value : strip.items())
                if (const auto at = index(value, points.size())) stroke.push_back(points[*at]);
            if (stroke.size() > 1) m_drawing.strokes.push_back(std::move(stroke));
        }
    }

    void drawArea(const Instance& item, const Placement& placement) {
        for (const Value& boundary : attribute(item, "ANNOTATION_FILL_AREA", 1, 0).items())
            drawCurve(m_file.at(boundary), placement, m_drawing.outlines);
    }

    void drawCurve(const Instance& curve, const Placement& placement, std::vector<std::vector<Vec>>& out) {
        std::vector<Vec> points;
        if (curve.is("COMPOSITE_CURVE")) {
            for (const Value& value : attribute(curve, "COMPOSITE_CURVE", 1, 0).items()) {
                const Instance segment = m_file.at(value);
                std::vector<Vec> part = simpleCurve(m_file.at(segment.parameters()[2]));
                if (!segment.parameters()[1].isTrue()) std::ranges::reverse(part);
                points.insert(points.end(), part.begin(), part.end());
            }
        } else {
            points = simpleCurve(curve);
        }
        if (points.size() < 2) return tellUnknown(curve);
        for (Vec& each : points) each = placement(each);
        out.push_back(std::move(points));
    }

    std::vector<Vec> simpleCurve(const Instance& curve) const {
        std::vector<Vec> points;
        if (curve.is("POLYLINE")) {
            for (const Value& value : attribute(curve, "POLYLINE", 1, 0).items())
                if (const auto each = readVector(m_file.at(value))) points.push_back(*each);
        } else if (curve.is("TRIMMED_CURVE")) {
            return trimmed(curve);
        } else {
            return arc(curve, 0, fullTurn);
        }
        return points;
    }

    /// A part of a circle or an ellipse between two angles in radians; nothing for other curves.
    std::vector<Vec> arc(const Instance& conic, double from, double to) const {
        std::vector<Vec> points;
        const std::optional<Vec> size = radii(conic);
        const auto placement = readPlacement(m_file, m_file.at(attribute(conic, "CONIC", 1, 0)));
        if (!size || !placement) return points;
        const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (fullTurn / 72))));
        for (int i = 0; i <= steps; ++i) {
            const double angle = from + (to - from) * i / steps;
            points.push_back((*placement)({size->x * std::cos(angle), size->y * std::sin(angle), 0}));
        }
        return points;
    }

    std::optional<Vec> radii(const Instance& conic) const {
        const bool isCircle = conic.is("CIRCLE");
        if (!isCircle && !conic.is("ELLIPSE")) return std::nullopt;
        const std::string_view type = isCircle ? "CIRCLE" : "ELLIPSE";
        const auto first = attribute(conic, type, 2, 0).number();
        const auto second = isCircle ? first : attribute(conic, type, 2, 1).number();
        return first && second ? std::optional(Vec{*first, *second, 0}) : std::nullopt;
    }

    /// Between its ends, which are given as points, as parameters or both.
    std::vector<Vec> trimmed(const Instance& curve) const {
        const Instance basis = m_file.at(attribute(curve, "TRIMMED_CURVE", 1, 0));
        const auto start = end(attribute(curve, "TRIMMED_CURVE", 1, 1), basis);
        const auto stop = end(attribute(curve, "TRIMMED_CURVE", 1, 2), basis);
        const bool isForward = attribute(curve, "TRIMMED_CURVE", 1, 3).isTrue();
        if (!start || !stop) return {};
        if (basis.is("LINE")) return {start->point, stop->point};
        double from = start->angle, to = stop->angle;
        if (isForward && to <= from) to += fullTurn;
        if (!isForward && to >= from) to -= fullTurn;
        return arc(basis, from, to);
    }

    struct End {
        Vec point;
        double angle;
    };

    std::optional<End> end(const Value& select, const Instance& basis) const {
        std::optional<Vec> at;
        std::optional<double> parameter;
        for (const Value& value : select.items()) {
            if (const auto each = readVector(m_file.at(value))) at = each;
            if (const auto number = value.number()) parameter = number;
        }
        const auto placement = readPlacement(m_file, m_file.at(attribute(basis, "CONIC", 1, 0)));
        const auto size = radii(basis);
        if (at && size && placement) {
            const Vec flat = placement->into(*at);
            return End{*at, std::atan2(flat.y / size->y, flat.x / size->x)};
        }
        if (at) return End{*at, 0};
        if (!parameter) return std::nullopt;
        // In radians, as nearly all files have angles.
        if (size) return End{{}, *parameter};
        const auto origin = readVector(m_file.at(attribute(basis, "LINE", 1, 0)));
        const Instance vector = m_file.at(attribute(basis, "LINE", 1, 1));
        const auto direction = readVector(m_file.at(vector.parameters()[1]));
        const auto magnitude = vector.parameters()[2].number();
        if (!origin || !direction || !magnitude) return std::nullopt;
        return End{*origin + (*parameter * *magnitude) * *direction, 0};
    }

    void tellUnknown(const Instance& item) {
        const std::string type(item.type());
        if (std::ranges::find(m_drawing.unknown, type) == m_drawing.unknown.end())
            m_drawing.unknown.push_back(type);
    }

    const StepFile& m_file;
    std::vector<Pending> m_pending;
    Drawing m_drawing;
};

/// One for all vertices, one each, or none.
void addNormals(const Value& list, const Placement& placement, const std::vector<std::size_t>& pointOf,
                std::size_t count, Triangles& out) {
    std::vector<Vec> normals;
    for (const Value& value : list.items())
        normals.push_back(placement(point(value).value_or(Vec())) - placement.origin);
    const std::size_t first = out.vertices.size() - count;
    out.normals.resize(first);
    out.normals.resize(first + count, normals.size() == 1 ? normals[0] : Vec());
    const std::size_t vertices = pointOf.empty() ? count : pointOf.size();
    if (normals.size() != vertices || vertices == 1) return;
    for (std::size_t i = 0; i < vertices; ++i) {
        const std::size_t at = pointOf.empty() ? i : pointOf[i];
        if (at < count) out.normals[first + at] = normals[i];
    }
}

} // namespace

bool readTriangles(const StepFile& file, const Instance& item, const Placement& placement, Triangles& out) {
    if (!isTriangulated(item)) return false;
    const TriangleAttributes where = attributesOf(item);
    const std::vector<Vec> points = coordinates(file.at(attribute(item, where.set, 1, 0)), placement);
    std::vector<std::size_t> pointOf; // of each vertex, where there are fewer vertices than points
    for (const Value& value : attribute(item, where.leaf, where.beforeIndexes, 0).items())
        pointOf.push_back(index(value, points.size()).value_or(points.size()));
    const auto first = static_cast<int>(out.vertices.size());
    const std::size_t before = out.corners.size();
    const auto corner = [&](const Value& value) -> int {
        const auto vertex = index(value, pointOf.empty() ? points.size() : pointOf.size());
        const std::size_t at = !vertex ? points.size() : pointOf.empty() ? *vertex : pointOf[*vertex];
        return at < points.size() ? first + static_cast<int>(at) : -1;
    };
    const auto add = [&out](int a, int b, int c) {
        if (a >= 0 && b >= 0 && c >= 0 && a != b && b != c && c != a)
            out.corners.insert(out.corners.end(), {a, b, c});
    };
    const auto lists = [&](std::size_t at) {
        return attribute(item, where.leaf, where.beforeIndexes, at).items();
    };
    const auto corners = [&](const Value& list) {
        std::vector<int> result;
        for (const Value& value : list.items()) result.push_back(corner(value));
        return result;
    };
    for (const Value& list : lists(1)) {
        const std::vector<int> strip = corners(list);
        if (!where.isComplex && strip.size() != 3) continue;
        for (std::size_t i = 2; i < strip.size(); ++i) // every second triangle of a strip is turned round
            i % 2 == 0 ? add(strip[i - 2], strip[i - 1], strip[i])
                       : add(strip[i - 1], strip[i - 2], strip[i]);
    }
    if (where.isComplex)
        for (const Value& list : lists(2)) {
            const std::vector<int> fan = corners(list);
            for (std::size_t i = 2; i < fan.size(); ++i) add(fan[0], fan[i - 1], fan[i]);
        }
    out.vertices.insert(out.vertices.end(), points.begin(), points.end());
    addNormals(attribute(item, where.set, 1, 2), placement, pointOf, points.size(), out);
    return out.corners.size() > before;
}

Drawing draw(const StepFile& file, const Instance& item) { return Drawer(file).draw(item); }

ExcVisuFacePtr makeFace(const Triangles& triangles, double scale) {
    std::vector<Vec> normals = triangles.normals;
    normals.resize(triangles.vertices.size());
    std::vector<bool> isGiven(normals.size());
    for (std::size_t i = 0; i < normals.size(); ++i) isGiven[i] = length(normals[i]) > 0;
    const auto& corners = triangles.corners;
    const auto at = [&](std::size_t corner) { return static_cast<std::size_t>(corners[corner]); };
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
        const Vec& a = triangles.vertices[at(i)];
        const Vec normal = cross(triangles.vertices[at(i + 1)] - a, triangles.vertices[at(i + 2)] - a);
        for (std::size_t k = i; k < i + 3; ++k)
            if (!isGiven[at(k)]) normals[at(k)] = normals[at(k)] + normal;
    }
    const auto flat = [](const std::vector<Vec>& vectors, const auto& change) {
        std::vector<float> numbers;
        numbers.reserve(3 * vectors.size());
        for (const Vec& vector : vectors) {
            const Vec changed = change(vector);
            for (const double each : {changed.x, changed.y, changed.z})
                numbers.push_back(static_cast<float>(each));
        }
        return numbers;
    };
    auto face = std::make_shared<ExcVisuFace>();
    face->setVertices(flat(triangles.vertices, [scale](const Vec& each) { return scale * each; }));
    face->setNormals(flat(normals, [](const Vec& each) {
        const double size = length(each);
        return size > 0 ? (1 / size) * each : Vec{0, 0, 1};
    }));
    constexpr int listOfTriangles = 4;
    face->setPolygons({{listOfTriangles, corners}});
    return face;
}

ExcVisuEdgePtr makeEdge(const std::vector<Vec>& points, double scale, bool isFilled) {
    std::vector<float> numbers;
    std::vector<int> indexes;
    numbers.reserve(3 * points.size());
    for (const Vec& each : points) {
        indexes.push_back(static_cast<int>(indexes.size()));
        for (const double part : {each.x, each.y, each.z})
            numbers.push_back(static_cast<float>(scale * part));
    }
    auto edge = std::make_shared<ExcVisuEdge>();
    edge->setPoints(std::move(numbers));
    edge->setLineIndices(std::move(indexes));
    edge->setLineType(isFilled ? ExcVisuEdge::ELineType::line_loop_filled
                               : ExcVisuEdge::ELineType::line_strip);
    return edge;
}

} // namespace zeq::step
