// Where a scene comes from.
#pragma once

#include "scene/scene.h"
#include "zeq/conversation.h"

namespace zeq::host {

/// The scene of the file: of a model that the translator imports, or of documents that were kept. What of it cannot be
/// shown is told as a warning.
/// @throws Failure if there is none
scene::Scene loadScene(const Host& host);

} // namespace zeq::host
