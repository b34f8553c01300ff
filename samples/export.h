// Writes a model as a STEP AP242 or an IGES file.
#pragma once

#include <filesystem>

#include "model.h"

namespace samples {

/// Both write the same bytes for the same model whenever they run.
/// @throws std::runtime_error when the file cannot be written
void writeStep(Model& model, const std::filesystem::path& path);
void writeIges(Model& model, const std::filesystem::path& path);

} // namespace samples
