// Points, directions and placements of a STEP file.
#pragma once

#include <optional>

#include "step/step_file.h"
#include "zeq_api/exchange_common/geometry.h"

namespace zeq::step {

struct Vec {
    double x = 0, y = 0, z = 0;
    friend Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec operator*(double factor, const Vec& a) { return {factor * a.x, factor * a.y, factor * a.z}; }
    friend double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
    friend Vec cross(const Vec& a, const Vec& b) {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }
    ExcVector3d document() const { return {x, y, z}; }
};

double length(const Vec& vector);

/// A right-handed coordinate system of unit vectors.
struct Placement {
    Vec origin;
    Vec x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    /// A point of the system, in that around it.
    Vec operator()(const Vec& point) const { return origin + point.x * x + point.y * y + point.z * z; }
    /// Into it, as inverse of the above.
    Vec into(const Vec& point) const;
    /// A system that is placed in this one.
    Placement operator*(const Placement& inner) const;
};

/// Of a CARTESIAN_POINT, a DIRECTION or an APLL_POINT, two coordinates or three; nothing for anything else.
std::optional<Vec> readVector(const Instance& instance);
/// Of an AXIS2_PLACEMENT_3D, or of a PLANE or another surface that has one (ISO 10303-42, build_axes); lengths as in
/// the file. Nothing when there is none.
std::optional<Placement> readPlacement(const StepFile& file, const Instance& instance);

} // namespace zeq::step
