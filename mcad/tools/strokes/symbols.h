// Symbols that the fonts of letters have not.
#pragma once

#include <optional>

#include "strokes/figure.h"

namespace zeq::strokes {

/// In the units of glyph(). Nothing if there is none.
std::optional<Figure> symbol(wchar_t character);

} // namespace zeq::strokes
