// Where a scene comes from, and where what is made of it goes.
#pragma once

#include <string>

#include "scene/documents.h"
#include "scene/scene.h"
#include "zeq/conversation.h"
#include "zeq/receiver.h"

namespace zeq::host {

/// What is made of a scene is no JSON document.
/// @param command "gltf"
/// @throws Failure if the user asks for one
void refuseJson(const Settings& settings, const std::string& command);
/// Nor is it for people to read: it goes into a file or a pipe.
/// @param result "a picture"
/// @throws Failure if it would go to the terminal
void refuseTerminal(const Settings& settings, const std::string& result);

/// The scene of the file: of a model that the translator imports, or of documents that were kept. What of it cannot be
/// shown is told as a warning.
/// @param import takes what else is told of the model
/// @throws Failure if there is none
scene::Scene loadScene(const Host& host, Import& import);
scene::Scene loadScene(const Host& host);

/// The scene of documents that have come. What of them cannot be shown is told as a warning.
scene::Scene buildScene(const Host& host, scene::Documents documents);

} // namespace zeq::host
