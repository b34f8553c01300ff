// Texts, frames and leaders as drawings have them.
#pragma once

#include <span>
#include <string_view>

#include "strokes/figure.h"

namespace zeq::strokes {

/// Lines of text, one below the other at each line feed. The first one's base line begins at the origin.
/// @param height of capital letters
Figure layout(std::wstring_view text, float height);

/// The same, but "⌖ | ⌀0.2 Ⓜ | A" becomes a feature control frame, whose rows touch one another, and "[25]" a text in a
/// box. An all-around sign stands before the frame.
Figure layoutAnnotation(std::wstring_view text, float height);

/// What a leader ends with.
enum class LeaderEnd {
    arrow,
    dot,     ///< inside of a surface
    triangle ///< of a datum feature
};

/// A line through the points, with its end at the first one. Less than two points make nothing.
/// @param height of the text that it belongs to
Figure leader(std::span<const Point> points, LeaderEnd end, float height);

/// How wide strokes are drawn with letters of this height (ISO 3098, type B).
inline float strokeWidth(float height) { return height / 10; }

} // namespace zeq::strokes
