// Axis and angle of a rotation matrix, and number formats for people.
#include "zeq/placement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace zeq::host {

namespace {

/// Of directions and lengths; files carry few digits.
constexpr double tolerance = 1e-6;

using Row = std::array<double, 3>;
using Matrix = std::array<Row, 3>;

/// Rounding leaves values near zero that mean zero.
double rounded(double value) { return std::abs(value) < tolerance ? 0.0 : value; }

template <class... Values>
std::string format(const char* pattern, Values... values) {
    char text[128];
    std::snprintf(text, sizeof text, pattern, rounded(values)...);
    return text;
}

std::string tuple(const Row& row) { return format("(%.6g, %.6g, %.6g)", row[0], row[1], row[2]); }

Row toRow(const ExcVector3d& vector) { return {vector.x(), vector.y(), vector.z()}; }

double dot(const Row& a, const Row& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Row cross(const Row& a, const Row& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Rows of length one, at right angles, right-handed.
bool isRotation(const Matrix& m) {
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j <= i; ++j)
            if (!(std::abs(dot(m[i], m[j]) - (i == j ? 1 : 0)) < tolerance)) return false;
    return dot(cross(m[0], m[1]), m[2]) > 0;
}

std::string describeRotation(const Matrix& m) {
    if (!isRotation(m)) return "matrix " + tuple(m[0]) + tuple(m[1]) + tuple(m[2]);
    Row axis{(m[2][1] - m[1][2]) / 2, (m[0][2] - m[2][0]) / 2, (m[1][0] - m[0][1]) / 2};
    const double sine = std::sqrt(dot(axis, axis));
    const double cosine = (m[0][0] + m[1][1] + m[2][2] - 1) / 2;
    if (sine < tolerance && cosine > 0) return {};
    double length = sine;
    if (sine < tolerance) {
        // Half a turn: the matrix is 2 a a' - 1, so each of its rows plus the unit row lies along the axis.
        std::size_t longest = 0;
        for (std::size_t i = 1; i < 3; ++i)
            if (m[i][i] > m[longest][longest]) longest = i;
        axis = m[longest];
        axis[longest] += 1;
        length = std::sqrt(dot(axis, axis));
    }
    for (double& component : axis) component /= length;
    const double degrees = std::atan2(sine, cosine) * 180 / std::numbers::pi;
    return format("rotated %.6g° about (%.6g, %.6g, %.6g)", degrees, axis[0], axis[1], axis[2]);
}

} // namespace

std::string describe(const ExcTransformation& placement) {
    const Row translation = toRow(placement.translation());
    const ExcMatrix3d& affine = placement.affine();
    const std::string rotation = describeRotation({toRow(affine[0]), toRow(affine[1]), toRow(affine[2])});
    std::string text;
    if (dot(translation, translation) > tolerance * tolerance) text.append("at ").append(tuple(translation));
    if (!text.empty() && !rotation.empty()) text += "  ";
    return text + rotation;
}

ShownColor::ShownColor(const ExcColor& color) {
    using enum ExcColor::EChannel;
    unsigned largest = 0;
    for (const ExcColor::EChannel channel : {red, green, blue, alpha})
        largest = std::max<unsigned>(largest, color[channel]);
    const bool narrow = largest <= 0xFF;
    if (color.hasRGB()) {
        name = "#";
        for (const ExcColor::EChannel channel : {red, green, blue}) {
            const unsigned value = color[channel];
            char digits[8];
            std::snprintf(digits, sizeof digits, narrow ? "%02x" : "%04x", value);
            name += digits;
            terminal += ';';
            terminal += std::to_string(narrow ? value : value >> 8);
        }
    }
    const double full = narrow ? 0xFF : 0xFFFF;
    if (color.hasAlpha() && color[alpha] < full) {
        opacity = format("opacity %.0f %%", color[alpha] / full * 100);
    }
}

} // namespace zeq::host
