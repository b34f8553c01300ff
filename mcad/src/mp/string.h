// Wide text, as every document holds it, and its conversion to and from the narrow text of the current
// locale. Any thread may call these functions.
#pragma once

#include <string>

namespace mp {

/// Names, paths, identifiers and UUID texts.
using String = std::wstring;

/// Converts through the C library and the current locale (UTF-8 only in a UTF-8 locale). The result is cut at
/// 2 x length + 1 bytes; text that the locale cannot represent gives an empty string.
std::string toUtf8String(const wchar_t* text);
inline std::string toUtf8String(const std::wstring& text) { return toUtf8String(text.c_str()); }

/// Converts through the C library and the current locale; malformed text gives an empty string.
std::wstring toWideString(const char* text);
inline std::wstring toWideString(const std::string& text) { return toWideString(text.c_str()); }

} // namespace mp
