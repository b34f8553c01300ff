// Text of others on its way to the user's terminal or into a document of ours.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zeq::text {

/// UTF-8 that is safe on a terminal: characters that control it, or the direction of its text, and units that
/// are no characters are written as escapes.
std::string printable(std::wstring_view text);
/// The same for narrow text; bytes that are not UTF-8 are escaped too.
std::string printable(std::string_view text);

/// Valid UTF-8: units that are no characters become U+FFFD.
std::string validUtf8(std::wstring_view text);
/// A JSON string in its quotation marks.
std::string jsonString(std::wstring_view text);
/// The same for narrow text; what is not UTF-8 is made printable() first.
std::string jsonString(std::string_view text);

/// The name nearest to `word`, for "did you mean"; empty when none is near.
std::string nearest(const std::string& word, const std::vector<std::string>& names);

/// "1 block", "2 blocks".
std::string counted(std::uint64_t count, const std::string& singular, const std::string& plural);
/// The shortest text that reads back as the same number; JSON if it is finite, else null.
std::string number(double value);
/// "12.4 KiB".
std::string byteSize(std::uint64_t bytes);

} // namespace zeq::text
