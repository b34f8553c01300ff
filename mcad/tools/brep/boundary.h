// The boundary of a face in the parameter plane of its surface.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "brep/integral.h"
#include "brep/walk.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// The parameters of a curve between which it is smooth, from one end of a range to the other.
std::vector<double> smoothPieces(const CURVE& curve, const CurveRange& range);

/// One stretch of a boundary: the use of an edge, or a straight line where the surface degenerates to a
/// point.
class BoundaryPiece {
public:
    /// Follows the pcurve, or else the curve of the edge, in the direction of the loop. Both have to be
    /// evaluable.
    BoundaryPiece(const COEDGE& coedge, const SURFACE& surface);
    BoundaryPiece(const SPApar_pos& from, const SPApar_pos& to);

    /// The piece goes from the first to the last of these parameters, and is smooth in between.
    const std::vector<double>& breaks() const { return m_breaks; }
    SPApar_pos eval(double t, SPApar_vec* derivative = nullptr) const;
    /// Points from its beginning to its end.
    const std::vector<SPApar_pos>& polyline() const { return m_polyline; }

    SPApar_pos start() const { return eval(m_breaks.front()); }
    SPApar_pos end() const { return eval(m_breaks.back()); }
    /// Whether the surface degenerates to a point there.
    bool startsAtPoint() const { return m_startsAtPoint; }
    void move(const SPApar_vec& by);

private:
    SPApar_pos atParameter(double t) const;
    SPApar_pos inverted(double t, const SPApar_pos& near, SPApar_vec* derivative) const;

    const SURFACE* m_surface = nullptr;
    const CURVE* m_curve = nullptr;
    const PCURVE* m_pcurve = nullptr; ///< none: the curve is inverted; neither: a straight line
    SPApar_vec m_moved;
    std::vector<double> m_breaks;
    bool m_startsAtPoint = false;
    std::vector<SPApar_pos> m_polyline; ///< at parameters of equal distance
};

/// The loops of a face. u points to the right and v upwards; around a periodic surface parameters go on
/// counting, so that a loop has no jumps.
class Boundary {
public:
    /// Nothing if some geometry cannot be evaluated, or not be followed in the parameter plane.
    static std::optional<Boundary> of(const FACE& face);

    bool hasLoops() const { return !m_loops.empty(); }
    /// Whether the face lies to the left of its loops in this plane; else to the right.
    bool isOnLeft() const { return m_isOnLeft; }
    /// By how much the loops together miss to close: whole periods.
    SPApar_vec winding() const;
    /// Whether the loops run around the point to which the surface degenerates at the greatest u, and the
    /// face reaches up to it.
    bool reachesRightEnd() const;
    /// Whether a loop passes through a part of the plane, or one a whole period away may do so.
    bool passes(const SPAinterval& u, const SPAinterval& v) const;
    /// Whether the face contains that point of its surface.
    bool contains(const SPApar_pos& uv) const;
    /// The integral of function(u, v) dv along all loops. `breaksOf(piece)` gives the parameters of a piece
    /// between which that is smooth.
    template <class Function, class Breaks>
    double integrate(const Function& function, const Breaks& breaksOf) const {
        const auto along = [&](const BoundaryPiece& piece) {
            return Integrand{[&function, &piece](double t) {
                                 SPApar_vec derivative;
                                 const SPApar_pos uv = piece.eval(t, &derivative);
                                 return derivative.dv == 0 ? 0 : function(uv) * derivative.dv;
                             },
                             breaksOf(piece)};
        };
        std::vector<decltype(along(std::declval<const BoundaryPiece&>()))> integrands;
        for (const Loop& loop : m_loops)
            for (const BoundaryPiece& piece : loop.pieces) integrands.push_back(along(piece));
        return integral(integrands);
    }

private:
    struct Loop {
        std::vector<BoundaryPiece> pieces;
        SPApar_vec winding;
    };

    explicit Boundary(const FACE& face);
    void addLoop(const LOOP& loop);
    /// Calls `visit(from, to)` for every line between neighbouring points of the loops.
    template <class Visit>
    void forEachLine(const Visit& visit) const;
    /// Calls `visit(displacement)` with the whole periods by which a point may lie from the loops.
    template <class Visit>
    void forEachImage(const Visit& visit) const;
    /// Where the piece that comes after another has to begin; it begins there now but for whole periods.
    SPApar_pos junction(const BoundaryPiece& before, const BoundaryPiece& after) const;

    const SURFACE& m_surface;
    bool m_isOnLeft;
    std::vector<Loop> m_loops;
};

} // namespace zeq::brep
