// Strokes and triangles of the geometry that a STEP file draws annotations with, or gives in place of exact geometry.
#pragma once

#include <string>
#include <vector>

#include "step/placement.h"
#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq::step {

/// Triangles that share vertices, in the unit of the file.
struct Triangles {
    std::vector<Vec> vertices;
    std::vector<Vec> normals; ///< one a vertex, (0, 0, 0) where the file has none
    std::vector<int> corners; ///< three a triangle
};

/// What an item draws, in the unit of the file.
struct Drawing {
    std::vector<std::vector<Vec>> strokes;
    std::vector<std::vector<Vec>> outlines; ///< closed, of filled areas
    Triangles triangles;
    std::vector<std::string> unknown; ///< the types of what cannot be drawn, each once

    bool isEmpty() const { return strokes.empty() && outlines.empty() && triangles.corners.empty(); }
};

/// Draws tessellated and geometric sets with all that is in them, polylines, circles, ellipses, trimmed and composite
/// curves, and the outlines of filled areas. Curves become polylines within 5 degrees of turn.
Drawing draw(const StepFile& file, const Instance& item);

/// The triangles of a TRIANGULATED_FACE, a TRIANGULATED_SURFACE_SET or one of their complex kinds. Indices that lead
/// nowhere leave out their triangle.
/// @return whether it is one of these, with anything in it
bool readTriangles(const StepFile& file, const Instance& item, const Placement& placement, Triangles& out);

/// A display face of triangles, in the unit that travels. Normals that are missing come from the triangles around.
/// @param scale from the file's unit to that
ExcVisuFacePtr makeFace(const Triangles& triangles, double scale);
/// A display edge of points, likewise.
ExcVisuEdgePtr makeEdge(const std::vector<Vec>& points, double scale, bool isFilled);

} // namespace zeq::step
