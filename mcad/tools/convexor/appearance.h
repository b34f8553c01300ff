// How the shapes of a part are to be drawn.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>

#include "zeq_api/exchange_common/color.h"

namespace zeq::convexor {

/// How something is drawn, as far as the file says so.
struct Look {
    ExcColor color;
    bool isHidden = false;
};

/// The looks of a part and of what in it has one of its own.
struct Appearance {
    /// Of a face, an edge or a vertex.
    const Look& of(const TopoDS_Shape& shape) const {
        static const Look none;
        const Look* const own = shapes.Seek(shape);
        return own ? *own : none;
    }

    Look part;
    NCollection_DataMap<TopoDS_Shape, Look, TopTools_ShapeMapHasher> shapes;
};

} // namespace zeq::convexor
