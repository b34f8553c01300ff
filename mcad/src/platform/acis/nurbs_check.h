// What is wrong with the data of a B-spline, if anything: evaluation trusts it.
#pragma once

#include "platform/acis/nurbs.h"
#include <stdexcept>
#include <string>

namespace acis_detail {
inline constexpr int max_degree = 63;

/// What would have been right, or null.
const char* problem_of(const bs_knots& knots);
const char* problem_of_controls(std::size_t needed, std::size_t controls, std::size_t weights);

template <class Curve>
const char* problem_of(const Curve& curve) {
    if (const char* problem = problem_of(curve.u)) return problem;
    return problem_of_controls(curve.u.controls(), curve.controls.size(), curve.weights.size());
}
inline const char* problem_of(const bs3_surface& surface) {
    if (const char* problem = problem_of(surface.u)) return problem;
    if (const char* problem = problem_of(surface.v)) return problem;
    return problem_of_controls(std::size_t(surface.u.controls()) * surface.v.controls(),
                               surface.controls.size(), surface.weights.size());
}

/// The B-spline itself, if nothing is wrong with it; else throws std::invalid_argument.
template <class Spline>
Spline checked(Spline spline) {
    if (const char* problem = problem_of(spline))
        throw std::invalid_argument(std::string("A B-spline needs ") + problem);
    return spline;
}
} // namespace acis_detail
