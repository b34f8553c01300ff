// Arithmetic of vectors and colours.
#pragma once

#include <cmath>

#include "picture/drawing.h"

namespace zeq::picture {

inline Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vector operator*(Vector a, float factor) { return {a.x * factor, a.y * factor, a.z * factor}; }
inline float dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vector cross(Vector a, Vector b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float length(Vector a) { return std::sqrt(dot(a, a)); }
inline bool isFinite(Vector a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }
/// Zero stays zero.
inline Vector unit(Vector a) {
    const float size = length(a);
    return size > 0 ? a * (1 / size) : a;
}

inline Color operator+(Color a, Color b) {
    return {a.red + b.red, a.green + b.green, a.blue + b.blue, a.alpha + b.alpha};
}
inline Color operator*(Color a, float factor) {
    return {a.red * factor, a.green * factor, a.blue * factor, a.alpha * factor};
}
/// Multiplied by its alpha, and by how much of the sample it covers.
inline Color weighted(Color color, float cover = 1) {
    const float alpha = color.alpha * cover;
    return {color.red * alpha, color.green * alpha, color.blue * alpha, alpha};
}
/// Both weighted: the front one before the back one.
inline Color over(Color front, Color back) { return front + back * (1 - front.alpha); }

} // namespace zeq::picture
