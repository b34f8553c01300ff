// Surfaces, and the layouts of their records.
#include "platform/acis/fields.h"
#include "platform/acis/geometry.h"
#include "platform/acis/nurbs_check.h"
#include <numbers>
#include <stdexcept>

namespace {
constexpr double pi = std::numbers::pi;
constexpr SPAinterval full_circle{-pi, pi};

SPAinterval subset_or(const SPAinterval& subset, const SPAinterval& natural) {
    return subset.finite() ? subset : natural;
}
void give(SPAvector* where, const SPAvector& value) {
    if (where) *where = value;
}
/// The direction in which v grows where it starts, of a surface of revolution.
SPAvector around(const SPAunit_vector& axis, const SPAunit_vector& origin, bool reversed) {
    SPAvector direction = axis * origin;
    return reversed ? -direction : direction;
}
} // namespace

SURFACE::SURFACE() = default;
void SURFACE::eval(const SPApar_pos&, SPAposition&, SPAvector*, SPAvector*) const {
    throw std::logic_error(std::string("A ") + type_name() + " surface of unknown kind cannot be evaluated");
}
SPApar_pos SURFACE::param(const SPAposition&) const {
    throw std::logic_error("This surface cannot be inverted");
}
SPAposition SURFACE::eval_position(const SPApar_pos& uv) const {
    SPAposition position;
    eval(uv, position);
    return position;
}
SPAunit_vector SURFACE::eval_normal(const SPApar_pos& uv) const {
    SPAposition position;
    SPAvector du, dv;
    eval(uv, position, &du, &dv);
    return normalise(right_handed_uv() ? du * dv : dv * du);
}

template <class Visitor, class... Object>
void SURFACE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
}
template class entity_of<SURFACE, ENTITY>;

PLANE::PLANE(const SPAposition& root, const SPAunit_vector& normal, const SPAvector& u_deriv,
             logical reverse_v)
    : m_root(root), m_normal(normal), m_uDeriv(u_deriv), m_reverseV(reverse_v) {}
SPAvector PLANE::v_deriv() const { return m_reverseV ? m_uDeriv * m_normal : m_normal * m_uDeriv; }
void PLANE::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    SPAvector v = v_deriv();
    position = m_root + uv.u * m_uDeriv + uv.v * v;
    give(du, m_uDeriv);
    give(dv, v);
}
SPApar_pos PLANE::param(const SPAposition& position) const {
    SPAvector arm = position - m_root;
    double length = m_uDeriv.len_sq();
    return {arm % m_uDeriv / length, arm % v_deriv() / length};
}

template <class Visitor, class... Object>
void PLANE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_root...);
    visitor.data(object.m_normal...);
    visitor.data(object.m_uDeriv...);
    visitor.data(object.m_reverseV...);
    visitor.data(object.m_subsetU...);
    visitor.data(object.m_subsetV...);
}
template class entity_of<PLANE, SURFACE>;

CONE::CONE(const SPAposition& centre, const SPAunit_vector& axis, const SPAvector& major_axis, double ratio,
           double sine_angle, double cosine_angle)
    : m_centre(centre), m_axis(axis), m_majorAxis(major_axis), m_ratio(ratio), m_sine(sine_angle),
      m_cosine(cosine_angle), m_uScale(major_axis.len()) {}
void CONE::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    double scale = m_reverseU ? -m_uScale : m_uScale;
    double widening = m_sine / m_majorAxis.len();
    double size = 1 + uv.u * scale * widening;
    double cosine = std::cos(uv.v);
    double sine = std::sin(uv.v);
    SPAvector minor = m_ratio * (m_axis * m_majorAxis);
    SPAvector base = cosine * m_majorAxis + sine * minor;
    position = m_centre + size * base + uv.u * scale * m_cosine * m_axis;
    give(du, scale * (widening * base + m_cosine * m_axis));
    give(dv, size * (cosine * minor - sine * m_majorAxis));
}
SPAinterval CONE::param_range_u() const {
    if (m_subsetU.finite() || m_sine == 0) return m_subsetU;
    double apex = -m_majorAxis.len() / (m_sine * (m_reverseU ? -m_uScale : m_uScale));
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return apex < 0 ? SPAinterval(apex, infinity) : SPAinterval(-infinity, apex);
}
SPAinterval CONE::param_range_v() const { return subset_or(m_subsetV, full_circle); }
double CONE::param_period_v() const { return 2 * pi; }
SPApar_pos CONE::param(const SPAposition& position) const {
    SPAvector arm = position - m_centre;
    double radius = m_majorAxis.len();
    double x = arm % m_majorAxis / radius;
    double y = arm % (m_axis * m_majorAxis) / radius;
    double v = std::atan2(y / m_ratio, x);
    // The generator at v is base(v) + s * slope; the foot of the point on it.
    double cosine = std::cos(v);
    double sine = std::sin(v);
    double baseX = radius * cosine, baseY = radius * m_ratio * sine;
    double slopeX = m_sine * cosine, slopeY = m_sine * m_ratio * sine;
    double s = ((x - baseX) * slopeX + (y - baseY) * slopeY + arm % m_axis * m_cosine) /
               (slopeX * slopeX + slopeY * slopeY + m_cosine * m_cosine);
    return {s / (m_reverseU ? -m_uScale : m_uScale), v};
}

template <class Visitor, class... Object>
void CONE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_centre...);
    visitor.data(object.m_axis...);
    visitor.data(object.m_majorAxis...);
    visitor.data(object.m_ratio...);
    visitor.data(object.m_baseRange...);
    visitor.data(object.m_sine...);
    visitor.data(object.m_cosine...);
    visitor.data(object.m_uScale...);
    visitor.data(object.m_reverseU...);
    visitor.data(object.m_subsetU...);
    visitor.data(object.m_subsetV...);
}
template class entity_of<CONE, SURFACE>;

SPHERE::SPHERE(const SPAposition& centre, double radius, const SPAunit_vector& uv_oridir,
               const SPAunit_vector& pole_dir, logical reverse_v)
    : m_centre(centre), m_radius(radius), m_uvOridir(uv_oridir), m_pole(pole_dir), m_reverseV(reverse_v) {}
void SPHERE::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    double radius = std::abs(m_radius);
    SPAvector side = around(m_pole, m_uvOridir, m_reverseV);
    SPAvector out = std::cos(uv.v) * m_uvOridir + std::sin(uv.v) * side;
    double cosine = radius * std::cos(uv.u);
    double sine = radius * std::sin(uv.u);
    position = m_centre + cosine * out + sine * m_pole;
    give(du, cosine * m_pole - sine * out);
    give(dv, cosine * (std::cos(uv.v) * side - std::sin(uv.v) * m_uvOridir));
}
SPAinterval SPHERE::param_range_u() const { return subset_or(m_subsetU, {-pi / 2, pi / 2}); }
SPAinterval SPHERE::param_range_v() const { return subset_or(m_subsetV, full_circle); }
double SPHERE::param_period_v() const { return 2 * pi; }
SPApar_pos SPHERE::param(const SPAposition& position) const {
    SPAvector arm = position - m_centre;
    double x = arm % m_uvOridir;
    double y = arm % around(m_pole, m_uvOridir, m_reverseV);
    return {std::atan2(arm % m_pole, std::hypot(x, y)), std::atan2(y, x)};
}

template <class Visitor, class... Object>
void SPHERE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_centre...);
    visitor.data(object.m_radius...);
    visitor.data(object.m_uvOridir...);
    visitor.data(object.m_pole...);
    visitor.data(object.m_reverseV...);
    visitor.data(object.m_subsetU...);
    visitor.data(object.m_subsetV...);
}
template class entity_of<SPHERE, SURFACE>;

TORUS::TORUS(const SPAposition& centre, const SPAunit_vector& normal, double major_radius,
             double minor_radius, const SPAunit_vector& uv_oridir, logical reverse_v)
    : m_centre(centre), m_normal(normal), m_major(major_radius), m_minor(minor_radius), m_uvOridir(uv_oridir),
      m_reverseV(reverse_v) {}
void TORUS::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    double minor = std::abs(m_minor);
    SPAvector side = around(m_normal, m_uvOridir, m_reverseV);
    SPAvector out = std::cos(uv.v) * m_uvOridir + std::sin(uv.v) * side;
    double cosine = minor * std::cos(uv.u);
    double sine = minor * std::sin(uv.u);
    position = m_centre + (m_major + cosine) * out + sine * m_normal;
    give(du, cosine * m_normal - sine * out);
    give(dv, (m_major + cosine) * (std::cos(uv.v) * side - std::sin(uv.v) * m_uvOridir));
}
SPAinterval TORUS::param_range_u() const {
    double minor = std::abs(m_minor);
    // Where the tube reaches the axis, u ends there.
    double end = std::abs(m_major) < minor ? std::acos(-m_major / minor) : pi;
    return subset_or(m_subsetU, {-end, end});
}
SPAinterval TORUS::param_range_v() const { return subset_or(m_subsetV, full_circle); }
double TORUS::param_period_u() const { return std::abs(m_major) < std::abs(m_minor) ? 0 : 2 * pi; }
double TORUS::param_period_v() const { return 2 * pi; }
SPApar_pos TORUS::param(const SPAposition& position) const {
    SPAvector arm = position - m_centre;
    double x = arm % m_uvOridir;
    double y = arm % around(m_normal, m_uvOridir, m_reverseV);
    return {std::atan2(arm % m_normal, std::hypot(x, y) - m_major), std::atan2(y, x)};
}

template <class Visitor, class... Object>
void TORUS::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_centre...);
    visitor.data(object.m_normal...);
    visitor.data(object.m_major...);
    visitor.data(object.m_minor...);
    visitor.data(object.m_uvOridir...);
    visitor.data(object.m_reverseV...);
    visitor.data(object.m_subsetU...);
    visitor.data(object.m_subsetV...);
}
template class entity_of<TORUS, SURFACE>;

SPLINE::SPLINE() = default;
SPLINE::SPLINE(bs3_surface bspline, logical reversed, double fit_tolerance)
    : m_reversed(reversed), m_exact(true), m_bspline(acis_detail::checked(std::move(bspline))),
      m_fitTolerance(fit_tolerance) {}
void SPLINE::eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du, SPAvector* dv) const {
    if (!m_exact) SURFACE::eval(uv, position, du, dv);
    m_bspline.eval(uv, position, du, dv);
}
SPAinterval SPLINE::param_range_u() const {
    return m_exact ? subset_or(m_subsetU, m_bspline.u.range()) : m_subsetU;
}
SPAinterval SPLINE::param_range_v() const {
    return m_exact ? subset_or(m_subsetV, m_bspline.v.range()) : m_subsetV;
}
double SPLINE::param_period_u() const {
    return m_exact && m_bspline.u.closure == bs_periodic ? m_bspline.u.range().length() : 0;
}
double SPLINE::param_period_v() const {
    return m_exact && m_bspline.v.closure == bs_periodic ? m_bspline.v.range().length() : 0;
}

template <class Visitor, class... Object>
void SPLINE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_reversed...);
    visitor.bspline("exactsur", object.m_exact..., object.m_bspline..., object.m_fitTolerance...,
                    object.m_rest...);
    visitor.data(object.m_subsetU...);
    visitor.data(object.m_subsetV...);
}
template class entity_of<SPLINE, SURFACE>;
