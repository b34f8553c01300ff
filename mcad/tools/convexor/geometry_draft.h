// A part whose geometry has been converted, before it is put together.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <TopoDS_Shape.hxx>

#include "convexor/face_boundary.h"
#include "convexor/geometry_conversion.h"
#include "convexor/numbering.h"
#include "platform/acis/acis.h"

namespace zeq::convexor {

/// Edges and vertices refer to each other by their indexes, and are used by whatever bounds a face or is a
/// wire.
struct Draft {
    struct Vertex {
        SPAposition point;
        double stated;        ///< tolerance, as the original says
        double gap = 0;       ///< measured: how far an edge ends from it at most
        int farthestEdge = 0; ///< the number of that edge
    };
    struct Edge {
        int number;
        Piece piece; ///< its curve is null where a surface degenerates to a point
        std::size_t start;
        std::size_t end;
        double stated;
        double length = 0;    ///< roughly
        double gap = 0;       ///< how far it is from the surface of a face at most
        int farthestFace = 0; ///< the number of that face
    };
    struct Use {
        std::size_t edge;
        REVBIT sense;
        PCURVE* pcurve;
        double gap;
    };
    using Chain = std::vector<Use>;
    struct Face {
        int number;
        SURFACE* surface;
        REVBIT sense;
        std::vector<Chain> loops;
    };
    struct Lump {
        bool isSolid;
        std::vector<std::vector<Face>> shells;
    };
    struct Wire {
        Chain chain;
        bool isClosed;
    };
    /// A face, or an edge of a wire, that could not be converted.
    struct Loss {
        TopoDS_Shape shape;
        int number;
        std::string reason;
    };

    std::vector<Vertex> vertices;
    std::vector<Edge> edges;
    std::vector<Lump> lumps;
    std::vector<Wire> wires;
    std::vector<Loss> losses;
    int openSolids = 0; ///< solids whose shells the original leaves open
};

/// @param tolerance for what cannot be expressed exactly
Draft draft(const TopoDS_Shape& part, const Numbering& numbering, double tolerance, Rigour rigour);

/// Deletes the geometry of a face or of a whole draft.
void discard(Draft::Face& face);
void discard(Draft& draft);

} // namespace zeq::convexor
