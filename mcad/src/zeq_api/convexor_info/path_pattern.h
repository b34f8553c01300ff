// Matches paths against the patterns of a format. Internal.
#pragma once

#include <string>

namespace zeq::detail {

/// Whether `pattern`, a regular expression of the default grammar, matches the whole of `text`.
///
/// A pattern of nothing but literals, `\.` and `.*` takes time and memory as a search does. For others the
/// length of the text is bounded only where the pattern refers back to a group.
/// @throws std::regex_error for an invalid pattern, for one of over 4096 units that is not of the simple kind
///         (error_space), and for a back-reference together with a text of over 4096 units (error_stack)
bool matchesWhole(const std::wstring& pattern, const std::wstring& text);

} // namespace zeq::detail
