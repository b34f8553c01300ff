// Shapes that a STEP file gives as triangles alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "step/step_file.h"
#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq::step {

struct TessellatedShapes {
    std::map<std::uint64_t, ExcVisuMeshPtr> meshes; ///< by the numbers of the PRODUCT_DEFINITIONs
    std::size_t facesInFile = 0;                    ///< without those that only repeat exact geometry
    std::size_t faces = 0;                          ///< in the meshes
};

/// The triangulated faces of all parts that have no exact geometry behind them, in the unit that travels, each with
/// its colour and its number for mechanical id. What is left out is added to the losses.
TessellatedShapes readTessellatedShapes(StepFile& file);

} // namespace zeq::step
