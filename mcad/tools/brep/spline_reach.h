// How far a face of a B-spline surface reaches.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "brep/boundary.h"
#include "brep/work.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// Finds where a face reaches farther in a direction than its edges do.
///
/// In Bezier form a piece of the surface reaches no farther than its control points (with positive weights).
/// So pieces are halved that may reach beyond what is known, the most promising one first, until none is
/// left. A piece on which the reach only grows in one of the directions of the surface has its farthest point
/// on its rim, and so in a neighbour or on an edge.
class SplineReach {
public:
    SplineReach(const SPLINE& surface, const Boundary& boundary, const Work& work);

    /// The point of the face that is farthest in a direction, if it lies beyond `known` by more than the
    /// precision.
    std::optional<SPAposition> beyond(const SPAvector& direction, double known, double precision) const;

private:
    struct Piece {
        double bound; ///< how far it may reach
        SPAinterval u, v;
        std::vector<double> reaches; ///< of the control points, row by row, times their weights
        std::vector<double> weights; ///< none: not rational
        friend bool operator<(const Piece& a, const Piece& b) { return a.bound < b.bound; }
    };
    struct Search;

    void addPiece(Search& search, int spanU, int spanV) const;
    void addHalves(Search& search, const Piece& piece) const;
    void add(Search& search, Piece piece) const;
    /// Whether the reach only grows or only falls along u or along v.
    bool isMonotonous(const Piece& piece) const;
    bool grows(const Piece& piece, double reach, int step, int sign) const;
    double boundOf(const Piece& piece) const;
    /// Takes the point for the farthest one if it is.
    void tryPoint(Search& search, const SPApar_pos& uv) const;
    SPApar_pos climb(const SPAvector& direction, SPApar_pos uv) const;

    const SPLINE& m_surface;
    const bs3_surface& m_bspline;
    const Boundary& m_boundary;
    const Work& m_work;
    const int m_columns; ///< control points of a piece along u
    const int m_rows;
    const bool m_isSmooth; ///< there are no creases, and what the surface has of a rim is in the boundary
};

} // namespace zeq::brep
