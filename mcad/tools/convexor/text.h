// Conversion of the kernel's and the system's texts to the wide text of the documents.
#pragma once

#include <string>
#include <string_view>

#include <TCollection_ExtendedString.hxx>

namespace zeq::convexor {

/// UTF-8 to wide; bytes that are no UTF-8 are taken as Latin-1, so that no text is ever refused.
std::wstring wideText(std::string_view bytes);
/// UTF-16 to wide, one unit a character.
std::wstring fromUtf16(const TCollection_ExtendedString& text);
/// A number as the shortest text that reads back as the same number.
std::wstring numberText(double value);

} // namespace zeq::convexor
