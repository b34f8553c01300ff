// Models as binary glTF.
#pragma once

#include <string>

#include "gltf/glb.h"
#include "scene/scene.h"
#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// @throws Failure if the file would be too large
gltf::Glb makeGlb(const Host& host, const scene::Scene& scene, const gltf::Options& options);
/// How much is in it.
std::string summaryOf(const gltf::Glb& glb);

/// Writes what is to be seen of the file.
/// @throws Failure if that cannot be
void writeGltf(const Host& host, Output& output);

} // namespace zeq::host
