// Models as pictures.
#pragma once

#include <string>

#include "scene/documents.h"
#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Writes a PNG of the file, or one for each of its views to the directory that is set for them.
/// @throws Failure if that cannot be
void writePicture(const Host& host, Output& output);

/// Writes a PNG of what an import has brought.
/// @throws Failure if that cannot be
void writePictureOf(const Host& host, scene::Documents documents, const std::string& path);

} // namespace zeq::host
