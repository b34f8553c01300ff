/// @file
/// B-spline curves and surfaces: plain data and its evaluation.
#pragma once

#include "platform/acis/position.h"
#include <utility>
#include <vector>

/// How a B-spline ends: anyhow, where it begins, or smoothly where it begins.
enum bs_closure {
    bs_open = 0,
    bs_closed = 1,
    bs_periodic = 2
};

/// The knots of one direction: every knot as often as its multiplicity, `controls + degree + 1` of them in
/// ascending order. The parameter range goes from knots[degree] to knots[controls].
struct bs_knots {
    int degree = 1;
    std::vector<double> knots;
    bs_closure closure = bs_open;

    bs_knots() = default;
    bs_knots(int theDegree, std::vector<double> theKnots, bs_closure theClosure = bs_open)
        : degree(theDegree), knots(std::move(theKnots)), closure(theClosure) {}

    int controls() const { return static_cast<int>(knots.size()) - degree - 1; }
    SPAinterval range() const { return {knots[degree], knots[controls()]}; }
    friend bool operator==(const bs_knots&, const bs_knots&) = default;
};

/// A B-spline curve in space. Parameters outside the range are taken back into a periodic curve, and extend
/// the outermost piece of any other.
struct bs3_curve {
    bs_knots u;
    std::vector<SPAposition> controls;
    std::vector<double> weights; ///< one a control point, or none at all: not rational

    bool rational() const { return !weights.empty(); }
    void eval(double t, SPAposition& position, SPAvector* derivative = nullptr) const;
    friend bool operator==(const bs3_curve&, const bs3_curve&) = default;
};

/// A B-spline curve in the parameter plane of a surface.
struct bs2_curve {
    bs_knots u;
    std::vector<SPApar_pos> controls;
    std::vector<double> weights;

    bool rational() const { return !weights.empty(); }
    void eval(double t, SPApar_pos& position, SPApar_vec* derivative = nullptr) const;
    friend bool operator==(const bs2_curve&, const bs2_curve&) = default;
};

/// Where a B-spline surface degenerates to a point.
enum bs_singularity {
    bs_not_singular = 0,
    bs_singular_low = 1,
    bs_singular_high = 2,
    bs_singular_both = 3
};

/// A B-spline surface. The control point of column i in u and row j in v is controls[j * u.controls() + i].
struct bs3_surface {
    bs_knots u;
    bs_knots v;
    std::vector<SPAposition> controls;
    std::vector<double> weights;
    bs_singularity singular_u = bs_not_singular;
    bs_singularity singular_v = bs_not_singular;

    bool rational() const { return !weights.empty(); }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const;
    friend bool operator==(const bs3_surface&, const bs3_surface&) = default;
};
