// Where a scene comes from.
#pragma once

#include "scene/documents.h"
#include "scene/scene.h"
#include "zeq/conversation.h"

namespace zeq::host {

/// The scene of the file: of a model that the translator imports, or of documents that were kept. What of it cannot be
/// shown is told as a warning.
/// @throws Failure if there is none
scene::Scene loadScene(const Host& host);

/// The scene of documents that have come. What of them cannot be shown is told as a warning.
scene::Scene buildScene(const Host& host, scene::Documents documents);

} // namespace zeq::host
