// Shapes of every kind of geometry, made with Open CASCADE.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <TopoDS_Shape.hxx>

#include "convexor/geometry_builder.h"

namespace zeq::test {

struct NamedShape {
    std::string name;
    std::function<TopoDS_Shape()> make;
    std::string consistsOf; ///< as brep::Count tells it, or its beginning
};

const std::vector<NamedShape>& shapes();
/// The one of that name.
TopoDS_Shape shapeNamed(const std::string& name);

/// The body of a shape whose faces and edges have no numbers but their own.
inline BODY* bodyOf(const TopoDS_Shape& shape, double scale, convexor::BuildNotes* notes = nullptr) {
    return convexor::buildBody(shape, convexor::Numbering(shape), scale, notes);
}

} // namespace zeq::test
