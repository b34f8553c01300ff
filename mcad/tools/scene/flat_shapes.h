// Figures and filled areas in a plane, as annotations have them.
#pragma once

#include <span>

#include "scene/scene.h"
#include "strokes/figure.h"

namespace zeq::scene {

/// Adds the strokes and the filled triangles of a figure.
/// @param plane x runs along the base line, y upwards, z towards the reader; its axes have length one
void addFigure(const strokes::Figure& figure, const Placement& plane, const Look& look, Shape& shape);

/// Fills the area that a closed flat polyline bounds, be it convex or not; nothing if it has no area.
/// @param outline coordinates, the last point being the first one again
void addFilling(std::span<const float> outline, const Look& look, bool isHidden, Shape& shape);

} // namespace zeq::scene
