// The shapes of single characters.
#pragma once

#include "strokes/figure.h"

namespace zeq::strokes {

/// Capital letters are so high; the base line is at y = 0.
inline constexpr float capHeight = 21;

/// A letter of the Hershey fonts, one put together from those, or a symbol. A box for what is unknown.
Figure glyph(wchar_t character);

/// Whether it has a shape of its own, be it a blank.
bool hasGlyph(wchar_t character);

} // namespace zeq::strokes
