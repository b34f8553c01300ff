// The sample part with product and manufacturing information.
#pragma once

#include <filesystem>

namespace samples {

/// Writes an angle bracket as STEP AP242: sizes, tolerances, datums and a note, as data and drawn, two saved views (one a
/// section), a material, layers and colours of faces.
void writeBracket(const std::filesystem::path& path);

} // namespace samples
