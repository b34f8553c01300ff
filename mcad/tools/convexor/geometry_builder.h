// Turns the exact geometry of a part into entities of the modelling kernel.
#pragma once

#include <string>
#include <vector>

#include <TopoDS_Shape.hxx>

#include "convexor/numbering.h"
#include "platform/acis/acis.h"

namespace zeq::convexor {

/// What the host should know of the way of a part.
struct BuildNotes {
    struct LostFace {
        int number;
        std::string reason;
    };
    int faces = 0;                     ///< of the body
    int wires = 0;                     ///< of the body, single vertices among them
    int lost = 0;                      ///< faces and wires that the body lacks
    std::vector<LostFace> lostFaces;   ///< the faces among these
    std::vector<std::string> errors;   ///< a sentence for each of these
    std::vector<std::string> warnings; ///< what was mended, and what is farther off than the original says
};

/// Makes a body of the shape: a lump for each solid, and one for each shell and face outside of solids;
/// wires, edges and vertices that bound no face become wires of the body.
///
/// Planes, cylinders, cones, spheres, tori, lines, circles and ellipses stay what they are; everything else
/// becomes B-splines. Every face and edge carries an ATTRIB_CONVEXOR_ID with its number.
/// Edges and vertices whose tolerance is above the kernel's resolution are tolerant ones. A face that cannot
/// be expressed is healed on a copy, or else left out; the solid that lacks it becomes double-sided faces.
/// @param numbering of the shape
/// @param scale what all lengths are multiplied by
/// @param notes what happened is added to it, if given
/// @return the body, which the caller deletes; null if nothing of the shape can be expressed
BODY* buildBody(const TopoDS_Shape& shape, const Numbering& numbering, double scale,
                BuildNotes* notes = nullptr);

} // namespace zeq::convexor
