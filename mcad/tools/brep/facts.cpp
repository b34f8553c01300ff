// The geometry itself tells most; only areas and lengths have to be computed.
#include "brep/facts.h"

#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include "brep/area.h"
#include "brep/boundary.h"
#include "brep/measure.h"
#include "brep/parts.h"

namespace zeq::brep {

namespace {

constexpr double degrees = 180 / std::numbers::pi;

bool isRound(double ratio) { return std::abs(ratio - 1) < 1e-12; }

/// Where a body is, and how it takes what its geometry has.
class Place {
public:
    explicit Place(const BODY& body)
        : m_transform(body.transform() ? body.transform()->transform() : SPAtransf()) {}

    bool shears() const { return m_transform.shear(); }
    double scale() const { return std::abs(m_transform.scaling()); }
    SPAposition moved(const SPAposition& point) const { return point * m_transform; }
    Fact::Direction moved(const char* name, const SPAvector& direction) const {
        return {name, normalise(direction * m_transform)};
    }
    /// The radius of a circle, or both of an ellipse.
    std::vector<Fact::Figure> radii(double major, double ratio) const {
        const double radius = scale() * major;
        if (isRound(ratio)) return {{"radius", radius}};
        return {{"major", radius}, {"minor", ratio * radius}};
    }

private:
    const SPAtransf m_transform;
};

const char* kindOf(const SURFACE* surface) {
    if (!surface) return "other";
    if (is_CONE(surface)) return static_cast<const CONE*>(surface)->cylinder() ? "cylinder" : "cone";
    return is_PLANE(surface)    ? "plane"
           : is_SPHERE(surface) ? "sphere"
           : is_TORUS(surface)  ? "torus"
           : is_SPLINE(surface) ? "spline"
                                : "other";
}

const char* kindOf(const CURVE* curve) {
    if (!curve) return "point";
    if (is_ELLIPSE(curve))
        return isRound(static_cast<const ELLIPSE*>(curve)->radius_ratio()) ? "circle" : "ellipse";
    return is_STRAIGHT(curve) ? "line" : is_INTCURVE(curve) ? "spline" : "other";
}

void describe(const FACE& face, const Place& place, Fact& fact) {
    const SURFACE* const surface = face.geometry();
    if (is_PLANE(surface)) {
        const SPAvector normal = static_cast<const PLANE*>(surface)->normal();
        fact.direction = place.moved("normal", face.sense() == FORWARD ? normal : -normal);
    } else if (is_CONE(surface)) {
        const auto& cone = static_cast<const CONE&>(*surface);
        if (cone.cylinder())
            fact.figures = place.radii(cone.major_axis().len(), cone.radius_ratio());
        else if (isRound(cone.radius_ratio()))
            fact.figures = {
                {"angle", degrees * std::atan2(std::abs(cone.sine_angle()), std::abs(cone.cosine_angle()))}};
        fact.direction = place.moved("axis", cone.axis());
        fact.center = place.moved(cone.centre());
    } else if (is_SPHERE(surface)) {
        const auto& sphere = static_cast<const SPHERE&>(*surface);
        fact.figures = {{"radius", place.scale() * std::abs(sphere.radius())}};
        fact.center = place.moved(sphere.centre());
    } else if (is_TORUS(surface)) {
        const auto& torus = static_cast<const TORUS&>(*surface);
        fact.figures = {{"major", place.scale() * torus.major_radius()},
                        {"minor", place.scale() * std::abs(torus.minor_radius())}};
        fact.direction = place.moved("axis", torus.normal());
        fact.center = place.moved(torus.centre());
    }
}

void describe(const EDGE& edge, const Place& place, Fact& fact) {
    const CURVE* const curve = edge.geometry();
    if (is_STRAIGHT(curve)) {
        fact.direction = place.moved("direction", static_cast<const STRAIGHT*>(curve)->direction());
    } else if (is_ELLIPSE(curve)) {
        const auto& ellipse = static_cast<const ELLIPSE&>(*curve);
        fact.figures = place.radii(ellipse.major_axis().len(), ellipse.radius_ratio());
        fact.direction = place.moved("axis", ellipse.normal());
        fact.center = place.moved(ellipse.centre());
    }
}

std::optional<double> sizeOf(const FACE& face, double scale, const Work& work) {
    const auto boundary = Boundary::of(face);
    const auto area = boundary ? areaOf(*face.geometry(), *boundary, work) : std::nullopt;
    return area ? std::optional(scale * scale * std::abs(*area)) : std::nullopt;
}

std::optional<double> sizeOf(const EDGE& edge, double scale, const Work&) {
    const auto length = lengthOf(edge);
    return length ? std::optional(scale * *length) : std::nullopt;
}

template <class Part>
Fact factOf(const Part& part, long id, const BODY& body, const Work& work) {
    Fact fact;
    fact.id = id;
    fact.kind = kindOf(part.geometry());
    const Place place(body);
    if (place.shears()) return fact;
    fact.size = sizeOf(part, place.scale(), work);
    describe(part, place, fact);
    return fact;
}

/// What is nothing but the inexactness of computing becomes zero.
void writeVector(text::JsonWriter& json, const char* name, const std::array<double, 3>& vector) {
    constexpr double smallest = 1e-12;
    json.key(name).open('[');
    for (const double each : vector) json.value(std::abs(each) < smallest ? 0 : each, 12);
    json.close(']');
}

void writeList(text::JsonWriter& json, const char* name, const char* size, const std::vector<Fact>& facts) {
    json.key(name).open('[');
    for (const Fact& fact : facts) {
        json.open('{').member("id", std::to_string(fact.id)).member("kind", std::string_view(fact.kind));
        if (fact.size) json.key(size).value(*fact.size, 12);
        for (const Fact::Figure& figure : fact.figures) json.key(figure.name).value(figure.value, 12);
        if (fact.direction) {
            const SPAvector& value = fact.direction->value;
            writeVector(json, fact.direction->name, {value.x(), value.y(), value.z()});
        }
        if (fact.center) writeVector(json, "center", {fact.center->x(), fact.center->y(), fact.center->z()});
        json.close('}');
    }
    json.close(']');
}

} // namespace

void Facts::write(text::JsonWriter& json) const {
    writeList(json, "faces", "area", faces);
    writeList(json, "edges", "length", edges);
}

Facts factsOf(const ENTITY_LIST& entities, Supervisor* supervisor) {
    const Parts parts(entities);
    Facts facts;
    facts.faces.resize(parts.faces());
    facts.edges.resize(parts.edges());
    Work work(supervisor);
    work.forEach(parts.edges(), [&](std::size_t i) {
        facts.edges[i] = factOf(parts.edge(i), parts.number(parts.edge(i)), parts.bodyOfEdge(i), work);
    });
    work.forEach(parts.faces(), [&](std::size_t i) {
        facts.faces[i] = factOf(parts.face(i), parts.number(parts.face(i)), parts.bodyOfFace(i), work);
    });
    return facts;
}

} // namespace zeq::brep
