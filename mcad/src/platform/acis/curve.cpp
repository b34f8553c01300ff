// Curves in space and in parameter planes, and the layouts of their records.
#include "platform/acis/fields.h"
#include "platform/acis/geometry.h"
#include "platform/acis/nurbs_check.h"
#include <numbers>
#include <stdexcept>

namespace {
constexpr SPAinterval full_circle{-std::numbers::pi, std::numbers::pi};

template <class Spline>
SPAinterval range_of(const Spline& spline, bool reversed) {
    SPAinterval range = spline.u.range();
    return reversed ? SPAinterval(-range.end_pt(), -range.start_pt()) : range;
}
[[noreturn]] void not_evaluable(const ENTITY& entity) {
    throw std::logic_error(std::string("A ") + entity.type_name() + " of unknown kind cannot be evaluated");
}
} // namespace

kept_tokens::kept_tokens() = default;
kept_tokens::kept_tokens(const kept_tokens& other)
    : m_tokens(other.m_tokens ? std::make_unique<unknown_tokens>(*other.m_tokens) : nullptr) {}
kept_tokens& kept_tokens::operator=(const kept_tokens& other) {
    m_tokens = other.m_tokens ? std::make_unique<unknown_tokens>(*other.m_tokens) : nullptr;
    return *this;
}
kept_tokens::~kept_tokens() = default;

CURVE::CURVE() = default;
void CURVE::eval(double, SPAposition&, SPAvector*) const { not_evaluable(*this); }
double CURVE::param(const SPAposition&) const { throw std::logic_error("This curve cannot be inverted"); }
SPAposition CURVE::eval_position(double t) const {
    SPAposition position;
    eval(t, position);
    return position;
}
SPAvector CURVE::eval_deriv(double t) const {
    SPAposition position;
    SPAvector derivative;
    eval(t, position, &derivative);
    return derivative;
}

template <class Visitor, class... Object>
void CURVE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
}
template class entity_of<CURVE, ENTITY>;

STRAIGHT::STRAIGHT(const SPAposition& root, const SPAvector& direction)
    : m_root(root), m_direction(direction) {}
void STRAIGHT::eval(double t, SPAposition& position, SPAvector* derivative) const {
    position = m_root + t * m_direction;
    if (derivative) *derivative = m_direction;
}
double STRAIGHT::param(const SPAposition& position) const {
    return (position - m_root) % m_direction / m_direction.len_sq();
}

template <class Visitor, class... Object>
void STRAIGHT::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_root...);
    visitor.data(object.m_direction...);
    visitor.data(object.m_subset...);
}
template class entity_of<STRAIGHT, CURVE>;

ELLIPSE::ELLIPSE(const SPAposition& centre, const SPAunit_vector& normal, const SPAvector& major_axis,
                 double ratio)
    : m_centre(centre), m_normal(normal), m_majorAxis(major_axis), m_ratio(ratio) {}
void ELLIPSE::eval(double t, SPAposition& position, SPAvector* derivative) const {
    double cosine = std::cos(t);
    double sine = std::sin(t);
    SPAvector minor = minor_axis();
    position = m_centre + cosine * m_majorAxis + sine * minor;
    if (derivative) *derivative = cosine * minor - sine * m_majorAxis;
}
SPAinterval ELLIPSE::param_range() const { return m_subset.finite() ? m_subset : full_circle; }
double ELLIPSE::param_period() const { return 2 * std::numbers::pi; }
double ELLIPSE::param(const SPAposition& position) const {
    SPAvector arm = position - m_centre;
    return std::atan2(arm % (m_normal * m_majorAxis) / m_ratio, arm % m_majorAxis);
}

template <class Visitor, class... Object>
void ELLIPSE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_centre...);
    visitor.data(object.m_normal...);
    visitor.data(object.m_majorAxis...);
    visitor.data(object.m_ratio...);
    visitor.data(object.m_subset...);
}
template class entity_of<ELLIPSE, CURVE>;

INTCURVE::INTCURVE() = default;
INTCURVE::INTCURVE(bs3_curve bspline, logical reversed, double fit_tolerance)
    : m_reversed(reversed), m_exact(true), m_bspline(acis_detail::checked(std::move(bspline))),
      m_fitTolerance(fit_tolerance) {}
void INTCURVE::eval(double t, SPAposition& position, SPAvector* derivative) const {
    if (!m_exact) not_evaluable(*this);
    m_bspline.eval(m_reversed ? -t : t, position, derivative);
    if (m_reversed && derivative) *derivative = -*derivative;
}
SPAinterval INTCURVE::param_range() const {
    return m_subset.finite() || !m_exact ? m_subset : range_of(m_bspline, m_reversed);
}
double INTCURVE::param_period() const {
    return m_exact && m_bspline.u.closure == bs_periodic ? m_bspline.u.range().length() : 0;
}

template <class Visitor, class... Object>
void INTCURVE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_reversed...);
    visitor.bspline("exactcur", object.m_exact..., object.m_bspline..., object.m_fitTolerance...,
                    object.m_rest...);
    visitor.data(object.m_subset...);
}
template class entity_of<INTCURVE, CURVE>;

PCURVE::PCURVE() = default;
PCURVE::PCURVE(bs2_curve bspline, logical reversed, double fit_tolerance)
    : m_reversed(reversed), m_exact(true), m_bspline(acis_detail::checked(std::move(bspline))),
      m_fitTolerance(fit_tolerance) {}
void PCURVE::eval(double t, SPApar_pos& position, SPApar_vec* derivative) const {
    if (!m_exact) not_evaluable(*this);
    m_bspline.eval(m_reversed ? -t : t, position, derivative);
    position = {position.u + m_offset.du, position.v + m_offset.dv};
    if (m_reversed && derivative) *derivative = {-derivative->du, -derivative->dv};
}
SPApar_pos PCURVE::eval_position(double t) const {
    SPApar_pos position;
    eval(t, position);
    return position;
}
SPApar_vec PCURVE::eval_deriv(double t) const {
    SPApar_pos position;
    SPApar_vec derivative;
    eval(t, position, &derivative);
    return derivative;
}
SPAinterval PCURVE::param_range() const { return m_exact ? range_of(m_bspline, m_reversed) : SPAinterval(); }

template <class Visitor, class... Object>
void PCURVE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.data(object.m_index...);
    if ((object.m_index || ...)) {
        visitor.down(object.m_curve...);
    } else {
        visitor.data(object.m_reversed...);
        visitor.bspline("exppc", object.m_exact..., object.m_bspline..., object.m_fitTolerance...,
                        object.m_rest...);
    }
    visitor.data(object.m_offset...);
}
template class entity_of<PCURVE, ENTITY>;
