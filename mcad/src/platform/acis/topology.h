/// @file
/// The topology of a model: bodies of lumps of shells of faces bounded by loops of coedges, which lie along
/// edges between vertices. Lists (lumps, shells, faces, loops) are chained through next(); setters set one
/// pointer and leave the other side to the caller, except where they say so.
#pragma once

#include "platform/acis/entity.h"
#include "platform/acis/geometry.h"
#include <optional>
#include <string>

class BODY;
class COEDGE;
class EDGE;
class FACE;
class LOOP;
class LUMP;
class SHELL;
class VERTEX;
class WIRE;

/// Whether something is used in its own direction or against it.
enum REVBIT : int {
    FORWARD = 0,
    REVERSED = 1
};
/// Whether there is material on one side of a face, or the same on both.
enum SIDESBIT : int {
    SINGLE_SIDED = 0,
    DOUBLE_SIDED = 1
};
/// Whether that same is void or material.
enum CONTBIT : int {
    BOTH_OUTSIDE = 0,
    BOTH_INSIDE = 1
};

/// The placement of a body.
class TRANSFORM : public entity_of<TRANSFORM, ENTITY> {
public:
    static constexpr const char* external_name = "transform";
    explicit TRANSFORM(const SPAtransf& transform = {});

    const SPAtransf& transform() const { return m_transform; }
    void set_transform(const SPAtransf& transform) { m_transform = transform; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    SPAtransf m_transform;
};
inline logical is_TRANSFORM(const ENTITY* entity) { return is_entity<TRANSFORM>(entity); }

/// A whole: everything that is made and moved as one.
class BODY : public entity_of<BODY, ENTITY> {
public:
    static constexpr const char* external_name = "body";
    /// Owns the lump and those behind it, if any.
    explicit BODY(LUMP* lump = nullptr);

    LUMP* lump() const { return m_lump; }
    void set_lump(LUMP* lump) { m_lump = lump; }
    /// Edges that bound no face.
    WIRE* wire() const { return m_wire; }
    void set_wire(WIRE* wire) { m_wire = wire; }
    TRANSFORM* transform() const { return m_transform; }
    void set_transform(TRANSFORM* transform) { m_transform = transform; }
    /// Makes a lump the first of this body.
    void add_lump(LUMP* lump);
    /// Makes a wire the first of this body.
    void add_wire(WIRE* wire);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    LUMP* m_lump = nullptr;
    WIRE* m_wire = nullptr;
    TRANSFORM* m_transform = nullptr;
};
inline logical is_BODY(const ENTITY* entity) { return is_entity<BODY>(entity); }

/// A connected piece of space: an outer shell and those around its voids.
class LUMP : public entity_of<LUMP, ENTITY> {
public:
    static constexpr const char* external_name = "lump";
    explicit LUMP(SHELL* shell = nullptr, LUMP* next = nullptr);

    LUMP* next() const { return m_next; }
    void set_next(LUMP* next) { m_next = next; }
    SHELL* shell() const { return m_shell; }
    void set_shell(SHELL* shell) { m_shell = shell; }
    BODY* body() const { return m_body; }
    void set_body(BODY* body) { m_body = body; }
    /// Makes a shell the first of this lump.
    void add_shell(SHELL* shell);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    LUMP* m_next = nullptr;
    SHELL* m_shell = nullptr;
    BODY* m_body = nullptr;
};
inline logical is_LUMP(const ENTITY* entity) { return is_entity<LUMP>(entity); }

/// A connected set of faces.
class SHELL : public entity_of<SHELL, ENTITY> {
public:
    static constexpr const char* external_name = "shell";
    explicit SHELL(FACE* face = nullptr, SHELL* next = nullptr);

    SHELL* next() const { return m_next; }
    void set_next(SHELL* next) { m_next = next; }
    /// Subshells are not bundled: an entity of unknown class.
    ENTITY* subshell() const { return m_subshell; }
    /// Edges that belong to the shell without bounding one of its faces.
    WIRE* wire() const { return m_wire; }
    FACE* face() const { return m_face; }
    void set_face(FACE* face) { m_face = face; }
    LUMP* lump() const { return m_lump; }
    void set_lump(LUMP* lump) { m_lump = lump; }
    /// Makes a face the first of this shell.
    void add_face(FACE* face);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    SHELL* m_next = nullptr;
    ENTITY* m_subshell = nullptr;
    FACE* m_face = nullptr;
    WIRE* m_wire = nullptr;
    LUMP* m_lump = nullptr;
};
inline logical is_SHELL(const ENTITY* entity) { return is_entity<SHELL>(entity); }

/// A bounded piece of a surface.
class FACE : public entity_of<FACE, ENTITY> {
public:
    static constexpr const char* external_name = "face";
    explicit FACE(SURFACE* geometry = nullptr, REVBIT sense = FORWARD, LOOP* loop = nullptr,
                  FACE* next = nullptr);

    FACE* next() const { return m_next; }
    void set_next(FACE* next) { m_next = next; }
    LOOP* loop() const { return m_loop; }
    void set_loop(LOOP* loop) { m_loop = loop; }
    SHELL* shell() const { return m_shell; }
    void set_shell(SHELL* shell) { m_shell = shell; }
    ENTITY* subshell() const { return m_subshell; }
    SURFACE* geometry() const { return m_geometry; }
    void set_geometry(SURFACE* geometry) { m_geometry = geometry; }
    /// Whether the normal of the face, which points out of the material, is that of its surface.
    REVBIT sense() const { return m_sense ? REVERSED : FORWARD; }
    void set_sense(REVBIT sense) { m_sense = sense; }
    SIDESBIT sides() const { return m_sides ? DOUBLE_SIDED : SINGLE_SIDED; }
    void set_sides(SIDESBIT sides) { m_sides = sides; }
    /// Of a double-sided face.
    CONTBIT cont() const { return m_cont ? BOTH_INSIDE : BOTH_OUTSIDE; }
    void set_cont(CONTBIT cont) { m_cont = cont; }
    /// Makes a loop the first of this face.
    void add_loop(LOOP* loop);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    FACE* m_next = nullptr;
    LOOP* m_loop = nullptr;
    SHELL* m_shell = nullptr;
    ENTITY* m_subshell = nullptr;
    SURFACE* m_geometry = nullptr;
    logical m_sense = FORWARD;
    logical m_sides = SINGLE_SIDED;
    logical m_cont = BOTH_OUTSIDE;
};
inline logical is_FACE(const ENTITY* entity) { return is_entity<FACE>(entity); }

/// One closed boundary of a face, with the face on its left seen against the face's normal.
class LOOP : public entity_of<LOOP, ENTITY> {
public:
    static constexpr const char* external_name = "loop";
    /// Owns the coedge and the ring that it is part of.
    explicit LOOP(COEDGE* start = nullptr, LOOP* next = nullptr);

    LOOP* next() const { return m_next; }
    void set_next(LOOP* next) { m_next = next; }
    COEDGE* start() const { return m_start; }
    void set_start(COEDGE* start) { m_start = start; }
    FACE* face() const { return m_face; }
    void set_face(FACE* face) { m_face = face; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    LOOP* m_next = nullptr;
    COEDGE* m_start = nullptr;
    FACE* m_face = nullptr;
};
inline logical is_LOOP(const ENTITY* entity) { return is_entity<LOOP>(entity); }

/// Edges that hang together and bound no face. A coedge for each of them; where the wire ends, next() or
/// previous() of its last coedge is that coedge itself. An edge without a curve is a single vertex.
class WIRE : public entity_of<WIRE, ENTITY> {
public:
    static constexpr const char* external_name = "wire";
    /// Owns the coedge and those that next() leads to.
    explicit WIRE(COEDGE* coedge = nullptr, WIRE* next = nullptr);

    WIRE* next() const { return m_next; }
    void set_next(WIRE* next) { m_next = next; }
    COEDGE* coedge() const { return m_coedge; }
    void set_coedge(COEDGE* coedge) { m_coedge = coedge; }
    /// A BODY or a SHELL.
    ENTITY* owner() const { return m_owner; }
    void set_owner(ENTITY* owner) { m_owner = owner; }
    ENTITY* subshell() const { return m_subshell; }
    /// Whether it lies in material.
    CONTBIT cont() const { return m_cont ? BOTH_INSIDE : BOTH_OUTSIDE; }
    void set_cont(CONTBIT cont) { m_cont = cont; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    WIRE* m_next = nullptr;
    COEDGE* m_coedge = nullptr;
    ENTITY* m_owner = nullptr;
    ENTITY* m_subshell = nullptr;
    logical m_cont = BOTH_OUTSIDE;
};
inline logical is_WIRE(const ENTITY* entity) { return is_entity<WIRE>(entity); }

/// The use of an edge by a loop or a wire.
class COEDGE : public entity_of<COEDGE, ENTITY> {
public:
    static constexpr const char* external_name = "coedge";
    /// The edge takes this for its coedge if it has none.
    explicit COEDGE(EDGE* edge = nullptr, REVBIT sense = FORWARD, COEDGE* previous = nullptr,
                    COEDGE* next = nullptr);

    /// The ring of the loop.
    COEDGE* next() const { return m_next; }
    void set_next(COEDGE* next) { m_next = next; }
    COEDGE* previous() const { return m_previous; }
    void set_previous(COEDGE* previous) { m_previous = previous; }
    /// The ring of coedges of the same edge; null if there is no other.
    COEDGE* partner() const { return m_partner; }
    void set_partner(COEDGE* partner) { m_partner = partner; }
    EDGE* edge() const { return m_edge; }
    void set_edge(EDGE* edge) { m_edge = edge; }
    /// Whether the loop runs along the edge or against it.
    REVBIT sense() const { return m_sense ? REVERSED : FORWARD; }
    void set_sense(REVBIT sense) { m_sense = sense; }
    /// A LOOP or a WIRE.
    ENTITY* owner() const { return m_owner; }
    void set_owner(ENTITY* owner) { m_owner = owner; }
    /// Null if the owner is no loop.
    LOOP* loop() const { return is_LOOP(m_owner) ? static_cast<LOOP*>(m_owner) : nullptr; }
    /// The curve in the parameter plane of the face's surface, with the parameters of the edge, or null.
    PCURVE* geometry() const { return m_geometry; }
    void set_geometry(PCURVE* geometry) { m_geometry = geometry; }
    /// Where the loop enters and leaves this coedge.
    VERTEX* start() const;
    VERTEX* end() const;

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    COEDGE* m_next = nullptr;
    COEDGE* m_previous = nullptr;
    COEDGE* m_partner = nullptr;
    EDGE* m_edge = nullptr;
    logical m_sense = FORWARD;
    ENTITY* m_owner = nullptr;
    std::optional<long> m_later;
    PCURVE* m_geometry = nullptr;
};
inline logical is_COEDGE(const ENTITY* entity) { return is_entity<COEDGE>(entity); }

/// A bounded piece of a curve. Without a curve it is a point where a face's surface degenerates.
class EDGE : public entity_of<EDGE, ENTITY> {
public:
    static constexpr const char* external_name = "edge";
    /// The vertices take this for their edge if they have none.
    explicit EDGE(VERTEX* start = nullptr, VERTEX* end = nullptr, CURVE* geometry = nullptr,
                  REVBIT sense = FORWARD, const SPAinterval& range = {0, 0});

    VERTEX* start() const { return m_start; }
    void set_start(VERTEX* start) { m_start = start; }
    VERTEX* end() const { return m_end; }
    void set_end(VERTEX* end) { m_end = end; }
    /// Parameters of the ends in the direction of the edge: of a reversed edge, those of its curve negated.
    double start_param() const { return m_startParam; }
    double end_param() const { return m_endParam; }
    void set_param_range(const SPAinterval& range);
    /// One of its coedges.
    COEDGE* coedge() const { return m_coedge; }
    void set_coedge(COEDGE* coedge) { m_coedge = coedge; }
    CURVE* geometry() const { return m_geometry; }
    void set_geometry(CURVE* geometry) { m_geometry = geometry; }
    /// Whether the edge runs along its curve or against it.
    REVBIT sense() const { return m_sense ? REVERSED : FORWARD; }
    void set_sense(REVBIT sense) { m_sense = sense; }
    /// "unknown", or what another kernel found.
    const std::string& convexity() const { return m_convexity; }
    /// How far its curve may lie from the surfaces of its faces: SPAresabs, unless it is a TEDGE.
    virtual double get_tolerance() const { return SPAresabs; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    VERTEX* m_start = nullptr;
    double m_startParam = 0;
    VERTEX* m_end = nullptr;
    double m_endParam = 0;
    COEDGE* m_coedge = nullptr;
    CURVE* m_geometry = nullptr;
    logical m_sense = FORWARD;
    std::string m_convexity = "unknown";
};
inline logical is_EDGE(const ENTITY* entity) { return is_entity<EDGE>(entity); }

/// An end of edges.
class VERTEX : public entity_of<VERTEX, ENTITY> {
public:
    static constexpr const char* external_name = "vertex";
    explicit VERTEX(APOINT* geometry = nullptr, EDGE* edge = nullptr);

    /// One of its edges.
    EDGE* edge() const { return m_edge; }
    void set_edge(EDGE* edge) { m_edge = edge; }
    APOINT* geometry() const { return m_geometry; }
    void set_geometry(APOINT* geometry) { m_geometry = geometry; }
    /// How far the curves of its edges may end from it: SPAresabs, unless it is a TVERTEX.
    virtual double get_tolerance() const { return SPAresabs; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ENTITY* m_pattern = nullptr;
    EDGE* m_edge = nullptr;
    std::optional<long> m_later;
    APOINT* m_geometry = nullptr;
};
inline logical is_VERTEX(const ENTITY* entity) { return is_entity<VERTEX>(entity); }

/// A tolerant edge: its curve lies near the surfaces of its faces. Its coedges are TCOEDGEs.
class TEDGE : public entity_of<TEDGE, EDGE> {
public:
    static constexpr const char* external_name = "tedge";
    explicit TEDGE(VERTEX* start = nullptr, VERTEX* end = nullptr, CURVE* geometry = nullptr,
                   REVBIT sense = FORWARD, const SPAinterval& range = {0, 0}, double tolerance = SPAresabs);

    double get_tolerance() const override { return m_tolerance; }
    void set_tolerance(double tolerance) { m_tolerance = tolerance; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    double m_tolerance = SPAresabs;
};
inline logical is_TEDGE(const ENTITY* entity) { return is_entity<TEDGE>(entity); }

/// The use of a tolerant edge. Where it runs on the surface of its face is told by its pcurve.
class TCOEDGE : public entity_of<TCOEDGE, COEDGE> {
public:
    static constexpr const char* external_name = "tcoedge";
    /// The range is that of the edge.
    explicit TCOEDGE(EDGE* edge = nullptr, REVBIT sense = FORWARD, COEDGE* previous = nullptr,
                     COEDGE* next = nullptr);

    /// Parameters of its ends in the direction of the coedge: where it runs against its edge's curve, those
    /// of its pcurve negated.
    SPAinterval param_range() const { return {m_startParam, m_endParam}; }
    void set_param_range(const SPAinterval& range);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    double m_startParam = 0;
    double m_endParam = 0;
};
inline logical is_TCOEDGE(const ENTITY* entity) { return is_entity<TCOEDGE>(entity); }

/// A tolerant vertex: a ball in which its edges end.
class TVERTEX : public entity_of<TVERTEX, VERTEX> {
public:
    static constexpr const char* external_name = "tvertex";
    explicit TVERTEX(APOINT* geometry = nullptr, double tolerance = SPAresabs);

    double get_tolerance() const override { return m_tolerance; }
    void set_tolerance(double tolerance) { m_tolerance = tolerance; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    double m_tolerance = SPAresabs;
};
inline logical is_TVERTEX(const ENTITY* entity) { return is_entity<TVERTEX>(entity); }
