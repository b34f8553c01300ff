// Evaluation of B-splines: the basis functions of one span, and the sums over the control points that they
// reach.
#include "platform/acis/nurbs.h"

#include "platform/acis/nurbs_check.h"
#include <algorithm>

namespace {
/// The degree + 1 basis functions that are not zero at a parameter, and their derivatives.
struct basis {
    int first = 0; ///< index of the control point that the first one belongs to
    double value[acis_detail::max_degree + 1];
    double slope[acis_detail::max_degree + 1];
};

int span_of(const bs_knots& u, double t) {
    const std::vector<double>& knots = u.knots;
    int low = u.degree;
    int high = u.controls() - 1;
    int span = static_cast<int>(std::upper_bound(knots.begin() + low + 1, knots.begin() + high + 1, t) -
                                knots.begin()) -
               1;
    while (span > low && !(knots[span] < knots[span + 1])) --span;
    while (span < high && !(knots[span] < knots[span + 1])) ++span;
    return span;
}

void eval_basis(const bs_knots& u, double t, basis& b) {
    if (u.closure == bs_periodic) {
        SPAinterval range = u.range();
        if (t < range.start_pt() || t > range.end_pt())
            t -= range.length() * std::floor((t - range.start_pt()) / range.length());
    }
    int span = span_of(u, t);
    const double* knots = u.knots.data();
    b.first = span - u.degree;
    b.value[0] = 1;
    b.slope[0] = 0;
    for (int degree = 1; degree <= u.degree; ++degree) {
        // Each function of the lower degree gives to its two neighbours of this degree.
        double value = 0;
        double slope = 0;
        for (int i = 0; i < degree; ++i) {
            double left = knots[span + 1 - degree + i];
            double right = knots[span + 1 + i];
            double share = b.value[i] / (right - left);
            b.value[i] = value + (right - t) * share;
            value = (t - left) * share;
            b.slope[i] = degree * (slope - share); // of the last degree only does it count
            slope = share;
        }
        b.value[degree] = value;
        b.slope[degree] = degree * slope;
    }
}

SPAvector as_vector(const SPAposition& p) { return p - SPAposition(); }
SPAvector as_vector(const SPApar_pos& p) { return {p.u, p.v, 0}; }

template <class Control>
void eval_curve(const bs_knots& u, const std::vector<Control>& controls, const std::vector<double>& weights,
                double t, SPAvector& position, SPAvector* derivative) {
    basis b;
    eval_basis(u, t, b);
    SPAvector point, slope;
    double weight = 0, weightSlope = 0;
    for (int i = 0; i <= u.degree; ++i) {
        double w = weights.empty() ? 1 : weights[b.first + i];
        SPAvector control = as_vector(controls[b.first + i]);
        point = point + b.value[i] * w * control;
        slope = slope + b.slope[i] * w * control;
        weight += b.value[i] * w;
        weightSlope += b.slope[i] * w;
    }
    if (weights.empty()) {
        position = point;
        if (derivative) *derivative = slope;
        return;
    }
    position = point / weight;
    if (derivative) *derivative = (slope - weightSlope * position) / weight;
}
} // namespace

void bs3_curve::eval(double t, SPAposition& position, SPAvector* derivative) const {
    SPAvector point;
    eval_curve(u, controls, weights, t, point, derivative);
    position = SPAposition() + point;
}

void bs2_curve::eval(double t, SPApar_pos& position, SPApar_vec* derivative) const {
    SPAvector point, slope;
    eval_curve(u, controls, weights, t, point, &slope);
    position = {point.x(), point.y()};
    if (derivative) *derivative = {slope.x(), slope.y()};
}

void bs3_surface::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    basis bu, bv;
    eval_basis(u, uv.u, bu);
    eval_basis(v, uv.v, bv);
    SPAvector point, slopeU, slopeV;
    double weight = 0, weightU = 0, weightV = 0;
    int columns = u.controls();
    for (int j = 0; j <= v.degree; ++j) {
        SPAvector rowPoint, rowSlope;
        double rowWeight = 0, rowWeightU = 0;
        for (int i = 0; i <= u.degree; ++i) {
            std::size_t at = std::size_t(bv.first + j) * columns + bu.first + i;
            double w = weights.empty() ? 1 : weights[at];
            SPAvector control = as_vector(controls[at]);
            rowPoint = rowPoint + bu.value[i] * w * control;
            rowSlope = rowSlope + bu.slope[i] * w * control;
            rowWeight += bu.value[i] * w;
            rowWeightU += bu.slope[i] * w;
        }
        point = point + bv.value[j] * rowPoint;
        slopeU = slopeU + bv.value[j] * rowSlope;
        slopeV = slopeV + bv.slope[j] * rowPoint;
        weight += bv.value[j] * rowWeight;
        weightU += bv.value[j] * rowWeightU;
        weightV += bv.slope[j] * rowWeight;
    }
    if (weights.empty()) {
        weight = 1;
        weightU = weightV = 0;
    }
    SPAvector at = point / weight;
    position = SPAposition() + at;
    if (du) *du = (slopeU - weightU * at) / weight;
    if (dv) *dv = (slopeV - weightV * at) / weight;
}

namespace acis_detail {
const char* problem_of(const bs_knots& u) {
    if (u.degree < 1 || u.degree > max_degree) return "a degree from 1 to 63";
    if (u.knots.size() > std::size_t(std::numeric_limits<int>::max())) return "fewer knots";
    if (u.controls() <= u.degree) return "knots for at least degree + 1 control points";
    for (std::size_t i = 0; i < u.knots.size(); ++i) {
        if (!std::isfinite(u.knots[i])) return "finite knots";
        if (i > 0 && u.knots[i] < u.knots[i - 1]) return "knots in ascending order";
    }
    if (!(u.range().length() > 0)) return "a range of parameters that is not empty";
    return nullptr;
}

const char* problem_of_controls(std::size_t needed, std::size_t controls, std::size_t weights) {
    if (controls != needed) return "as many control points as the knots ask for";
    if (weights != 0 && weights != controls) return "a weight for each control point";
    return nullptr;
}
} // namespace acis_detail
