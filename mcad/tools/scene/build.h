// From documents to a scene.
#pragma once

#include <cstddef>

#include "scene/documents.h"
#include "scene/scene.h"

namespace zeq::scene {

/// How many instances a scene has at most. A structure can describe more in a few lines.
inline constexpr std::size_t mostInstances = 1'000'000;

/// Makes the scene that the documents describe together.
///
/// Each block becomes a part, with its display data and its mechanical data, and each occurrence of it in the structure
/// an instance; the scene of the assembly and the mechanical data of the root or of no block belong to the product.
/// Suppressed instances count as hidden. Without a structure every block is placed once. Where a block contains itself,
/// the inner occurrence is left out, as everything else that cannot be drawn; the warnings of the scene name it.
///
/// Display data is given free as it is converted. Primitives of faces are those that are common elsewhere: 4 is a list
/// of triangles, 5 a strip and 6 a fan of them, 9 a convex polygon.
Scene build(Documents documents);

} // namespace zeq::scene
