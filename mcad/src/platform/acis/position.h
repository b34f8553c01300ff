/// @file
/// Points, vectors, parameters, ranges, boxes and transformations. Lengths are in millimetres.
#pragma once

#include <array>
#include <cmath>
#include <limits>

/// Points that are nearer to each other are one point.
inline constexpr double SPAresabs = 1e-6;

/// A displacement.
class SPAvector {
public:
    constexpr SPAvector() = default;
    constexpr SPAvector(double x, double y, double z) : m_xyz{x, y, z} {}
    constexpr double x() const { return m_xyz[0]; }
    constexpr double y() const { return m_xyz[1]; }
    constexpr double z() const { return m_xyz[2]; }
    constexpr double component(int i) const { return m_xyz[i]; }
    constexpr double& component(int i) { return m_xyz[i]; }
    constexpr double len_sq() const { return x() * x() + y() * y() + z() * z(); }
    double len() const { return std::hypot(x(), y(), z()); }
    friend constexpr bool operator==(const SPAvector&, const SPAvector&) = default;

private:
    double m_xyz[3] = {0, 0, 0};
};

constexpr SPAvector operator+(const SPAvector& a, const SPAvector& b) {
    return {a.x() + b.x(), a.y() + b.y(), a.z() + b.z()};
}
constexpr SPAvector operator-(const SPAvector& a, const SPAvector& b) {
    return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
}
constexpr SPAvector operator-(const SPAvector& a) { return {-a.x(), -a.y(), -a.z()}; }
constexpr SPAvector operator*(double s, const SPAvector& a) { return {s * a.x(), s * a.y(), s * a.z()}; }
constexpr SPAvector operator*(const SPAvector& a, double s) { return s * a; }
constexpr SPAvector operator/(const SPAvector& a, double s) { return {a.x() / s, a.y() / s, a.z() / s}; }
/// Scalar product.
constexpr double operator%(const SPAvector& a, const SPAvector& b) {
    return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
}
/// Vector product.
constexpr SPAvector operator*(const SPAvector& a, const SPAvector& b) {
    return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x()};
}

/// A direction. Components given one by one are taken as they are; normalise() makes one of a vector.
class SPAunit_vector : public SPAvector {
public:
    constexpr SPAunit_vector() : SPAvector(0, 0, 1) {}
    constexpr SPAunit_vector(double x, double y, double z) : SPAvector(x, y, z) {}
};

constexpr SPAunit_vector operator-(const SPAunit_vector& a) { return {-a.x(), -a.y(), -a.z()}; }

/// The direction of a vector; the null vector has none and gives itself.
inline SPAunit_vector normalise(const SPAvector& v) {
    double length = v.len();
    if (length == 0) return {0, 0, 0};
    return {v.x() / length, v.y() / length, v.z() / length};
}

/// A point.
class SPAposition {
public:
    constexpr SPAposition() = default;
    constexpr SPAposition(double x, double y, double z) : m_xyz{x, y, z} {}
    constexpr double x() const { return m_xyz[0]; }
    constexpr double y() const { return m_xyz[1]; }
    constexpr double z() const { return m_xyz[2]; }
    constexpr double coordinate(int i) const { return m_xyz[i]; }
    constexpr double& coordinate(int i) { return m_xyz[i]; }
    friend constexpr bool operator==(const SPAposition&, const SPAposition&) = default;

private:
    double m_xyz[3] = {0, 0, 0};
};

constexpr SPAvector operator-(const SPAposition& a, const SPAposition& b) {
    return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
}
constexpr SPAposition operator+(const SPAposition& p, const SPAvector& v) {
    return {p.x() + v.x(), p.y() + v.y(), p.z() + v.z()};
}
constexpr SPAposition operator-(const SPAposition& p, const SPAvector& v) { return p + -v; }

/// A point in the parameter plane of a surface.
struct SPApar_pos {
    double u = 0;
    double v = 0;
    friend constexpr bool operator==(const SPApar_pos&, const SPApar_pos&) = default;
};

/// A displacement in the parameter plane of a surface.
struct SPApar_vec {
    double du = 0;
    double dv = 0;
    friend constexpr bool operator==(const SPApar_vec&, const SPApar_vec&) = default;
};

/// A range of parameters, either end of which may be open to infinity. Default: everything.
class SPAinterval {
public:
    constexpr SPAinterval() = default;
    constexpr SPAinterval(double start, double end) : m_start(start), m_end(end) {}
    constexpr double start_pt() const { return m_start; }
    constexpr double end_pt() const { return m_end; }
    constexpr double length() const { return m_end - m_start; }
    constexpr bool bounded_below() const { return m_start > -infinity; }
    constexpr bool bounded_above() const { return m_end < infinity; }
    constexpr bool finite() const { return bounded_below() && bounded_above(); }
    constexpr bool infinite() const { return !bounded_below() && !bounded_above(); }
    friend constexpr bool operator==(const SPAinterval&, const SPAinterval&) = default;

private:
    static constexpr double infinity = std::numeric_limits<double>::infinity();
    double m_start = -infinity;
    double m_end = infinity;
};

/// An axis-parallel box; empty until something is added.
class SPAbox {
public:
    constexpr bool empty() const { return m_low.x() > m_high.x(); }
    constexpr const SPAposition& low() const { return m_low; }
    constexpr const SPAposition& high() const { return m_high; }
    constexpr void add(const SPAposition& p) {
        for (int i = 0; i < 3; ++i) {
            if (p.coordinate(i) < m_low.coordinate(i)) m_low.coordinate(i) = p.coordinate(i);
            if (p.coordinate(i) > m_high.coordinate(i)) m_high.coordinate(i) = p.coordinate(i);
        }
    }

private:
    static constexpr double infinity = std::numeric_limits<double>::infinity();
    SPAposition m_low{infinity, infinity, infinity};
    SPAposition m_high{-infinity, -infinity, -infinity};
};

/// An affine transformation p -> scale * p * M + t, where p is a row, the rows of M are the images of the
/// axes, and the determinant of M is 1 or -1 unless it shears. The three flags tell what M does.
class SPAtransf {
public:
    SPAtransf() = default;
    SPAtransf(const std::array<SPAvector, 3>& rows, const SPAvector& translation, double scale = 1)
        : m_rows(rows), m_translation(translation), m_scale(scale) {}

    const SPAvector& row(int i) const { return m_rows[i]; }
    SPAvector& row(int i) { return m_rows[i]; }
    const SPAvector& translation() const { return m_translation; }
    void set_translation(const SPAvector& translation) { m_translation = translation; }
    double scaling() const { return m_scale; }
    void set_scaling(double scale) { m_scale = scale; }

    /// Whether M turns, mirrors or shears, judged by its numbers.
    bool rotate() const { return !(m_rows == SPAtransf().m_rows); }
    bool reflect() const { return (m_rows[0] * m_rows[1]) % m_rows[2] < 0; }
    bool shear() const {
        auto far = [](double value, double from) { return std::abs(value - from) > 1e-10; };
        return far(m_rows[0] % m_rows[1], 0) || far(m_rows[1] % m_rows[2], 0) ||
               far(m_rows[2] % m_rows[0], 0) || far(m_rows[0].len_sq(), 1) || far(m_rows[1].len_sq(), 1) ||
               far(m_rows[2].len_sq(), 1);
    }
    friend bool operator==(const SPAtransf&, const SPAtransf&) = default;

private:
    std::array<SPAvector, 3> m_rows{SPAvector{1, 0, 0}, SPAvector{0, 1, 0}, SPAvector{0, 0, 1}};
    SPAvector m_translation;
    double m_scale = 1;
};

inline SPAvector operator*(const SPAvector& v, const SPAtransf& t) {
    return t.scaling() * (v.x() * t.row(0) + v.y() * t.row(1) + v.z() * t.row(2));
}
inline SPAposition operator*(const SPAposition& p, const SPAtransf& t) {
    return SPAposition() + (p - SPAposition()) * t + t.translation();
}
