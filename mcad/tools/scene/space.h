// Points, directions and placements in double precision.
#pragma once

#include <array>
#include <cmath>

#include "zeq_api/exchange_common/geometry.h"

namespace zeq::scene {

struct Vec {
    double x = 0, y = 0, z = 0;
    friend Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec operator*(double factor, const Vec& a) { return {factor * a.x, factor * a.y, factor * a.z}; }
    friend double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
    friend Vec cross(const Vec& a, const Vec& b) {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }
    friend double length(const Vec& a) { return std::sqrt(dot(a, a)); }
    /// The zero vector if there is no direction.
    friend Vec unit(const Vec& a) {
        const double size = length(a);
        return size > 0 && std::isfinite(size) ? 1 / size * a : Vec();
    }
    bool isFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
};

inline Vec toVec(const ExcVector3d& vector) { return {vector.x(), vector.y(), vector.z()}; }

/// A linear map, given by the images of the axes, and a translation; the identity by default.
struct Placement {
    Vec x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    Vec origin;

    static Placement scaling(double factor) { return {{factor, 0, 0}, {0, factor, 0}, {0, 0, factor}, {}}; }
    static Placement of(const ExcTransformation& transformation) {
        const Vec a = toVec(transformation.affine()[0]), b = toVec(transformation.affine()[1]),
                  c = toVec(transformation.affine()[2]);
        return {{a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z}, toVec(transformation.translation())};
    }

    Vec direction(const Vec& v) const { return v.x * x + v.y * y + v.z * z; }
    /// What stands upright on a surface, upright on its image; not of length one.
    Vec normal(const Vec& v) const {
        return (determinant() < 0 ? -1.0 : 1.0) * (v.x * cross(y, z) + v.y * cross(z, x) + v.z * cross(x, y));
    }
    Vec operator()(const Vec& point) const { return origin + direction(point); }
    /// First the inner one, then this one.
    Placement operator*(const Placement& inner) const {
        return {direction(inner.x), direction(inner.y), direction(inner.z), (*this)(inner.origin)};
    }
    double determinant() const { return dot(cross(x, y), z); }
    bool isFinite() const { return x.isFinite() && y.isFinite() && z.isFinite() && origin.isFinite(); }
    /// Whether it keeps some volume, so that something is to be seen of what it places.
    bool isUsable() const { return isFinite() && std::isnormal(determinant()); }
};

} // namespace zeq::scene
