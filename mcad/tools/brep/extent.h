// How far bodies reach.
#pragma once

#include "brep/boundary.h"
#include "brep/work.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// Adds to a box the points where edges and faces reach farthest along the axes.
class Extent {
public:
    /// Of geometry that a transformation moves.
    Extent(const SPAtransf& transform, SPAbox& box, const Work& work)
        : m_transform(transform), m_box(box), m_work(work) {}

    void add(const EDGE& edge);
    /// The inside of a face; its edges are to be added by themselves.
    void add(const SURFACE& surface, const Boundary& boundary);

private:
    void add(const SPAposition& point) { m_box.add(point * m_transform); }
    /// If the face contains the point.
    void add(const SPAposition& point, const SURFACE& surface, const Boundary& boundary);
    void addSpline(const SPLINE& surface, const Boundary& boundary);
    /// The vector whose scalar product with a displacement tells how far that leads along an axis.
    SPAvector along(int axis) const {
        return m_transform.scaling() * SPAvector(m_transform.row(0).component(axis),
                                                 m_transform.row(1).component(axis),
                                                 m_transform.row(2).component(axis));
    }

    const SPAtransf m_transform;
    SPAbox& m_box;
    const Work& m_work;
};

} // namespace zeq::brep
