// Shapes of every kind of geometry, made with Open CASCADE.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <TopoDS_Shape.hxx>

namespace zeq::test {

struct NamedShape {
    std::string name;
    std::function<TopoDS_Shape()> make;
    std::string consistsOf; ///< as brep::Count tells it, or its beginning
};

const std::vector<NamedShape>& shapes();

} // namespace zeq::test
