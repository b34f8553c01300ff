// Builds axes as ISO 10303-42 says: the second direction is made perpendicular to the first.
#include "step/placement.h"

#include <array>
#include <cmath>

namespace zeq::step {

namespace {

constexpr double degenerate = 1e-12;

std::optional<Vec> unit(const Vec& vector) {
    const double size = length(vector);
    return size > degenerate ? std::optional((1 / size) * vector) : std::nullopt;
}

} // namespace

double length(const Vec& vector) { return std::sqrt(dot(vector, vector)); }

Vec Placement::into(const Vec& point) const {
    const Vec from = point - origin;
    return {dot(from, x), dot(from, y), dot(from, z)};
}

Placement Placement::operator*(const Placement& inner) const {
    const auto turn = [this](const Vec& direction) { return (*this)(direction)-origin; };
    return {(*this)(inner.origin), turn(inner.x), turn(inner.y), turn(inner.z)};
}

std::optional<Vec> readVector(const Instance& instance) {
    const std::string_view type = instance.is("DIRECTION") ? "DIRECTION" : "CARTESIAN_POINT";
    if (!instance.is(type) && !instance.is("APLL_POINT") && !instance.is("APLL_POINT_WITH_SURFACE"))
        return std::nullopt;
    std::array<double, 3> coordinates{};
    std::size_t count = 0;
    for (const Value& value : attribute(instance, type, 1, 0).items()) {
        const std::optional<double> number = value.number();
        if (!number || count == coordinates.size()) return std::nullopt;
        coordinates[count++] = *number;
    }
    if (count < 2) return std::nullopt;
    return Vec{coordinates[0], coordinates[1], coordinates[2]};
}

std::optional<Placement> readPlacement(const StepFile& file, const Instance& instance) {
    if (!instance.is("AXIS2_PLACEMENT_3D")) { // an elementary surface has its placement behind its name
        const Instance position = file.at(instance.parameters()[1]);
        return position.is("AXIS2_PLACEMENT_3D") ? readPlacement(file, position) : std::nullopt;
    }
    Placement placement;
    const auto read = [&](std::size_t index) {
        const Instance at = file.at(attribute(instance, "AXIS2_PLACEMENT_3D", 2, index));
        return readVector(at);
    };
    const std::optional<Vec> origin = readVector(file.at(attribute(instance, "PLACEMENT", 1, 0)));
    if (!origin) return std::nullopt;
    placement.origin = *origin;
    if (const auto axis = read(0))
        if (const auto z = unit(*axis)) placement.z = *z;
    const auto across = [&placement](const Vec& direction) {
        return unit(direction - dot(direction, placement.z) * placement.z);
    };
    std::optional<Vec> x;
    if (const auto reference = read(1)) x = across(*reference);
    if (!x) x = across({1, 0, 0});
    placement.x = x ? *x : *across({0, 1, 0});
    placement.y = cross(placement.z, placement.x);
    return placement;
}

} // namespace zeq::step
