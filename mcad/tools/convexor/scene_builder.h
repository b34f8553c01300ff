// Turns a part into the scene that the host shows of it.
#pragma once

#include <string>
#include <vector>

#include <TopoDS_Shape.hxx>

#include "convexor/appearance.h"
#include "convexor/display_mesh.h"
#include "convexor/length_unit.h"
#include "convexor/numbering.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::convexor {

/// How a scene is to be made.
struct SceneStyle {
    LengthUnit unit;
    bool withHidden = true; ///< what is hidden travels too, marked as such
};

/// Makes the scene of a part that has been tessellated. Under its root are
///
/// - MESHES: a mesh with the faces and the edges that bound them,
/// - WIRES: a wire with the edges that bound no face,
/// - POINTS: a set of the vertices that bound no edge,
///
/// each as far as there are any, and what is hidden in a node of its own beside the other. Faces and edges have their
/// number for mechanical id, and their own colours; the colour of the part is the root's.
/// @param losses a sentence is added for each face that has no triangles
/// @return null if there is nothing to show
ExcVisualizationDataPtr buildScene(const TopoDS_Shape& part, const Numbering& numbering,
                                   const Appearance& appearance, const Fineness& fineness,
                                   const SceneStyle& style, std::vector<std::string>& losses);

} // namespace zeq::convexor
