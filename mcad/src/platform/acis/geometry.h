/// @file
/// The geometry of a model: points, curves, surfaces, and curves in the parameter planes of surfaces. Each
/// class says how it is parametrised. Geometry of unknown kind (what another kernel wrote) can be carried but
/// not evaluated: evaluable() is false and evaluating throws std::logic_error.
#pragma once

#include "platform/acis/entity.h"
#include "platform/acis/nurbs.h"
#include "platform/acis/position.h"
#include <memory>

/// Tokens of an image that are kept as they are; empty for what was made here.
class kept_tokens {
public:
    kept_tokens();
    kept_tokens(const kept_tokens& other);
    kept_tokens& operator=(const kept_tokens& other);
    ~kept_tokens();
    bool empty() const { return m_tokens == nullptr; }

private:
    friend struct entity_access;
    std::unique_ptr<unknown_tokens> m_tokens;
};

/// A point of a model.
class APOINT : public entity_of<APOINT, ENTITY> {
public:
    static constexpr const char* external_name = "point";
    explicit APOINT(const SPAposition& coords = {});

    const SPAposition& coords() const { return m_coords; }
    void set_coords(const SPAposition& coords) { m_coords = coords; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    SPAposition m_coords;
};
inline logical is_APOINT(const ENTITY* entity) { return is_entity<APOINT>(entity); }

/// A curve in space.
class CURVE : public entity_of<CURVE, ENTITY> {
public:
    static constexpr const char* external_name = "curve";
    CURVE();

    virtual logical evaluable() const { return false; }
    virtual void eval(double t, SPAposition& position, SPAvector* derivative = nullptr) const;
    SPAposition eval_position(double t) const;
    SPAvector eval_deriv(double t) const;
    /// The subset where one is set, else the natural range.
    virtual SPAinterval param_range() const { return m_subset; }
    /// 0 if the curve is not periodic.
    virtual double param_period() const { return 0; }
    /// Whether param() works.
    virtual logical invertible() const { return false; }
    /// The parameter of the point of the curve that is nearest to a point on or near it.
    virtual double param(const SPAposition& position) const;

    void set_subset(const SPAinterval& subset) { m_subset = subset; }

protected:
    SPAinterval m_subset;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
};
inline logical is_CURVE(const ENTITY* entity) { return is_entity<CURVE>(entity); }

/// A line: root + t * direction.
class STRAIGHT : public entity_of<STRAIGHT, CURVE> {
public:
    static constexpr const char* external_name = "straight";
    STRAIGHT() : STRAIGHT(SPAposition(), SPAvector(1, 0, 0)) {}
    /// The direction need not have length 1; it must not be null.
    STRAIGHT(const SPAposition& root, const SPAvector& direction);

    const SPAposition& root_point() const { return m_root; }
    const SPAvector& direction() const { return m_direction; }

    logical evaluable() const override { return true; }
    void eval(double t, SPAposition& position, SPAvector* derivative = nullptr) const override;
    logical invertible() const override { return true; }
    double param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAposition m_root;
    SPAvector m_direction;
};
inline logical is_STRAIGHT(const ENTITY* entity) { return is_entity<STRAIGHT>(entity); }

/// An ellipse or circle: centre + cos t * major + sin t * minor, where minor = ratio * (normal x major);
/// period 2 pi.
class ELLIPSE : public entity_of<ELLIPSE, CURVE> {
public:
    static constexpr const char* external_name = "ellipse";
    ELLIPSE() : ELLIPSE(SPAposition(), SPAunit_vector(0, 0, 1), SPAvector(1, 0, 0)) {}
    /// The major axis is as long as the major radius; ratio = minor radius / major radius, 1 for a circle.
    ELLIPSE(const SPAposition& centre, const SPAunit_vector& normal, const SPAvector& major_axis,
            double ratio = 1);

    const SPAposition& centre() const { return m_centre; }
    const SPAunit_vector& normal() const { return m_normal; }
    const SPAvector& major_axis() const { return m_majorAxis; }
    double radius_ratio() const { return m_ratio; }
    SPAvector minor_axis() const { return m_ratio * (m_normal * m_majorAxis); }

    logical evaluable() const override { return true; }
    void eval(double t, SPAposition& position, SPAvector* derivative = nullptr) const override;
    SPAinterval param_range() const override;
    double param_period() const override;
    logical invertible() const override { return true; }
    /// In [-pi, pi]. Off the ellipse: the parameter in whose direction, seen from the centre in coordinates
    /// scaled by the radii, the point lies.
    double param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAposition m_centre;
    SPAunit_vector m_normal;
    SPAvector m_majorAxis;
    double m_ratio = 1;
};
inline logical is_ELLIPSE(const ENTITY* entity) { return is_entity<ELLIPSE>(entity); }

/// A B-spline curve. A reversed one has at t the point of its B-spline at -t.
class INTCURVE : public entity_of<INTCURVE, CURVE> {
public:
    static constexpr const char* external_name = "intcurve";
    INTCURVE();
    explicit INTCURVE(bs3_curve bspline, logical reversed = false, double fit_tolerance = 0);

    /// Null for a kind that this kernel does not know.
    const bs3_curve* cur() const { return m_exact ? &m_bspline : nullptr; }
    logical reversed() const { return m_reversed; }
    /// How far the B-spline may be from what it stands for; 0: it is exact.
    double fitol() const { return m_fitTolerance; }

    logical evaluable() const override { return m_exact; }
    void eval(double t, SPAposition& position, SPAvector* derivative = nullptr) const override;
    SPAinterval param_range() const override;
    double param_period() const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    logical m_reversed = false;
    bool m_exact = false;
    bs3_curve m_bspline;
    double m_fitTolerance = 0;
    kept_tokens m_rest;
};
inline logical is_INTCURVE(const ENTITY* entity) { return is_entity<INTCURVE>(entity); }

/// A curve in the parameter plane of a face's surface: its own B-spline, or that of an INTCURVE.
class PCURVE : public entity_of<PCURVE, ENTITY> {
public:
    static constexpr const char* external_name = "pcurve";
    PCURVE();
    explicit PCURVE(bs2_curve bspline, logical reversed = false, double fit_tolerance = 0);

    /// Null for a kind that this kernel does not know.
    const bs2_curve* cur() const { return m_exact ? &m_bspline : nullptr; }
    logical reversed() const { return m_reversed; }
    double fitol() const { return m_fitTolerance; }
    /// Added to every point.
    const SPApar_vec& offset() const { return m_offset; }
    /// 0: has its own B-spline; 1, 2, -1 or -2: the first or second one of ref_curve(), negated if reversed.
    long index() const { return m_index; }
    CURVE* ref_curve() const { return m_curve; }

    logical evaluable() const { return m_exact; }
    void eval(double t, SPApar_pos& position, SPApar_vec* derivative = nullptr) const;
    SPApar_pos eval_position(double t) const;
    SPApar_vec eval_deriv(double t) const;
    SPAinterval param_range() const;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    long m_index = 0;
    CURVE* m_curve = nullptr;
    logical m_reversed = false;
    bool m_exact = false;
    bs2_curve m_bspline;
    double m_fitTolerance = 0;
    kept_tokens m_rest;
    SPApar_vec m_offset;
};
inline logical is_PCURVE(const ENTITY* entity) { return is_entity<PCURVE>(entity); }

/// A surface.
class SURFACE : public entity_of<SURFACE, ENTITY> {
public:
    static constexpr const char* external_name = "surface";
    SURFACE();

    virtual logical evaluable() const { return false; }
    virtual void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
                      SPAvector* dv = nullptr) const;
    SPAposition eval_position(const SPApar_pos& uv) const;
    /// The normal of the surface; a null vector where it has none.
    SPAunit_vector eval_normal(const SPApar_pos& uv) const;
    /// Whether the normal is du x dv; else it is dv x du.
    virtual logical right_handed_uv() const { return true; }
    /// The subset where one is set, else the natural range.
    virtual SPAinterval param_range_u() const { return m_subsetU; }
    virtual SPAinterval param_range_v() const { return m_subsetV; }
    /// 0 if the surface is not periodic in that direction.
    virtual double param_period_u() const { return 0; }
    virtual double param_period_v() const { return 0; }
    /// Whether param() works.
    virtual logical invertible() const { return false; }
    /// The parameters of the point of the surface that is nearest to a point on or near it; angles in [-pi,
    /// pi].
    virtual SPApar_pos param(const SPAposition& position) const;

    void set_subset(const SPAinterval& u, const SPAinterval& v) {
        m_subsetU = u;
        m_subsetV = v;
    }

protected:
    SPAinterval m_subsetU;
    SPAinterval m_subsetV;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
};
inline logical is_SURFACE(const ENTITY* entity) { return is_entity<SURFACE>(entity); }

/// A plane: root + u * U + v * V, where V = normal x U, or its opposite with reverse_v. The normal is always
/// that of the constructor.
class PLANE : public entity_of<PLANE, SURFACE> {
public:
    static constexpr const char* external_name = "plane";
    PLANE() : PLANE(SPAposition(), SPAunit_vector(0, 0, 1), SPAvector(1, 0, 0)) {}
    PLANE(const SPAposition& root, const SPAunit_vector& normal, const SPAvector& u_deriv,
          logical reverse_v = false);

    const SPAposition& root_point() const { return m_root; }
    const SPAunit_vector& normal() const { return m_normal; }
    const SPAvector& u_deriv() const { return m_uDeriv; }
    logical reverse_v() const { return m_reverseV; }

    logical evaluable() const override { return true; }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const override;
    logical right_handed_uv() const override { return !m_reverseV; }
    logical invertible() const override { return true; }
    SPApar_pos param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAvector v_deriv() const;

    SPAposition m_root;
    SPAunit_vector m_normal;
    SPAvector m_uDeriv;
    logical m_reverseV = false;
};
inline logical is_PLANE(const ENTITY* entity) { return is_entity<PLANE>(entity); }

/// A cylinder or cone over a base ellipse with centre C, axis A and major radius R. With s = u *
/// u_param_scale and k = 1 + s * sine / R it is C + k * (cos v * major + sin v * minor) + s * cosine * A,
/// where minor = ratio * (A x major): u runs along the generators (u = 0 on the base), v around, with period
/// 2 pi; reverse_u negates u. Seen from the axis the normal points outwards where cosine > 0, and inwards
/// where cosine < 0.
class CONE : public entity_of<CONE, SURFACE> {
public:
    static constexpr const char* external_name = "cone";
    CONE() : CONE(SPAposition(), SPAunit_vector(0, 0, 1), SPAvector(1, 0, 0)) {}
    /// A cylinder unless sine is not 0. The scale of u is the major radius.
    CONE(const SPAposition& centre, const SPAunit_vector& axis, const SPAvector& major_axis, double ratio = 1,
         double sine_angle = 0, double cosine_angle = 1);

    const SPAposition& centre() const { return m_centre; }
    const SPAunit_vector& axis() const { return m_axis; }
    const SPAvector& major_axis() const { return m_majorAxis; }
    double radius_ratio() const { return m_ratio; }
    double sine_angle() const { return m_sine; }
    double cosine_angle() const { return m_cosine; }
    double u_param_scale() const { return m_uScale; }
    logical reverse_u() const { return m_reverseU; }
    logical cylinder() const { return m_sine == 0; }
    void set_u_param_scale(double scale) { m_uScale = scale; }
    void set_reverse_u(logical reverse) { m_reverseU = reverse; }

    logical evaluable() const override { return true; }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const override;
    logical right_handed_uv() const override { return m_reverseU; }
    /// Of a cone, only the part up to the apex that holds the base.
    SPAinterval param_range_u() const override;
    SPAinterval param_range_v() const override;
    double param_period_v() const override;
    logical invertible() const override { return true; }
    SPApar_pos param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAposition m_centre;
    SPAunit_vector m_axis;
    SPAvector m_majorAxis;
    double m_ratio = 1;
    SPAinterval m_baseRange;
    double m_sine = 0;
    double m_cosine = 1;
    double m_uScale = 1;
    logical m_reverseU = false;
};
inline logical is_CONE(const ENTITY* entity) { return is_entity<CONE>(entity); }

/// A sphere: centre + |radius| * (cos u * (cos v * U + sin v * V) + sin u * pole), where U = uv_oridir and
/// V = pole x U, or its opposite with reverse_v. u is the latitude in [-pi/2, pi/2], v the longitude with
/// period 2 pi. The normal points outwards, or inwards where the radius is negative.
class SPHERE : public entity_of<SPHERE, SURFACE> {
public:
    static constexpr const char* external_name = "sphere";
    SPHERE() : SPHERE(SPAposition(), 1) {}
    SPHERE(const SPAposition& centre, double radius, const SPAunit_vector& uv_oridir = {1, 0, 0},
           const SPAunit_vector& pole_dir = {0, 0, 1}, logical reverse_v = false);

    const SPAposition& centre() const { return m_centre; }
    double radius() const { return m_radius; }
    const SPAunit_vector& uv_oridir() const { return m_uvOridir; }
    const SPAunit_vector& pole_dir() const { return m_pole; }
    logical reverse_v() const { return m_reverseV; }

    logical evaluable() const override { return true; }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const override;
    logical right_handed_uv() const override { return (m_radius < 0) != bool(m_reverseV); }
    SPAinterval param_range_u() const override;
    SPAinterval param_range_v() const override;
    double param_period_v() const override;
    logical invertible() const override { return true; }
    SPApar_pos param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAposition m_centre;
    double m_radius = 1;
    SPAunit_vector m_uvOridir;
    SPAunit_vector m_pole;
    logical m_reverseV = false;
};
inline logical is_SPHERE(const ENTITY* entity) { return is_entity<SPHERE>(entity); }

/// A torus: centre + (major + |minor| * cos u) * (cos v * U + sin v * V) + |minor| * sin u * normal, where
/// U = uv_oridir and V = normal x U, or its opposite with reverse_v. u runs around the tube, v around the
/// axis, both with period 2 pi; where the tube reaches the axis (major < |minor|), u is bounded by it and not
/// periodic. The normal points out of the tube, or inwards where the minor radius is negative.
class TORUS : public entity_of<TORUS, SURFACE> {
public:
    static constexpr const char* external_name = "torus";
    TORUS() : TORUS(SPAposition(), SPAunit_vector(0, 0, 1), 2, 1) {}
    TORUS(const SPAposition& centre, const SPAunit_vector& normal, double major_radius, double minor_radius,
          const SPAunit_vector& uv_oridir = {1, 0, 0}, logical reverse_v = false);

    const SPAposition& centre() const { return m_centre; }
    const SPAunit_vector& normal() const { return m_normal; }
    double major_radius() const { return m_major; }
    double minor_radius() const { return m_minor; }
    const SPAunit_vector& uv_oridir() const { return m_uvOridir; }
    logical reverse_v() const { return m_reverseV; }

    logical evaluable() const override { return true; }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const override;
    logical right_handed_uv() const override { return (m_minor < 0) != bool(m_reverseV); }
    SPAinterval param_range_u() const override;
    SPAinterval param_range_v() const override;
    double param_period_u() const override;
    double param_period_v() const override;
    logical invertible() const override { return true; }
    SPApar_pos param(const SPAposition& position) const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAposition m_centre;
    SPAunit_vector m_normal;
    double m_major = 2;
    double m_minor = 1;
    SPAunit_vector m_uvOridir;
    logical m_reverseV = false;
};
inline logical is_TORUS(const ENTITY* entity) { return is_entity<TORUS>(entity); }

/// A B-spline surface. A reversed one has the same parameters and the opposite normal.
class SPLINE : public entity_of<SPLINE, SURFACE> {
public:
    static constexpr const char* external_name = "spline";
    SPLINE();
    explicit SPLINE(bs3_surface bspline, logical reversed = false, double fit_tolerance = 0);

    /// Null for a kind that this kernel does not know.
    const bs3_surface* sur() const { return m_exact ? &m_bspline : nullptr; }
    logical reversed() const { return m_reversed; }
    double fitol() const { return m_fitTolerance; }

    logical evaluable() const override { return m_exact; }
    void eval(const SPApar_pos& uv, SPAposition& position, SPAvector* du = nullptr,
              SPAvector* dv = nullptr) const override;
    logical right_handed_uv() const override { return !m_reversed; }
    SPAinterval param_range_u() const override;
    SPAinterval param_range_v() const override;
    double param_period_u() const override;
    double param_period_v() const override;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    logical m_reversed = false;
    bool m_exact = false;
    bs3_surface m_bspline;
    double m_fitTolerance = 0;
    kept_tokens m_rest;
};
inline logical is_SPLINE(const ENTITY* entity) { return is_entity<SPLINE>(entity); }
