// What the pipelines carry: three large documents like those that translations make.
#pragma once

#include <memory>

#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq::bench {

/// A product structure of one block with so many placed, named and coloured references.
std::shared_ptr<IExchangeObject> structure(long references);
/// A scene of meshes of 10,000 triangles each, with normals; one polygon a triangle.
std::shared_ptr<IExchangeObject> scene(int meshes);
/// Mechanical data with so many annotations in one view: dimensions, tolerance frames, notes and datums by turns.
std::shared_ptr<IExchangeObject> annotations(int count);

} // namespace zeq::bench
