// The strings of an exchange structure.
#pragma once

#include <string>
#include <string_view>

namespace zeq::part21 {

/// The text between the apostrophes of a string: doubled apostrophes and backslashes, \S\ in the code page that
/// \PA\ to \PI\ choose (ISO 8859-1 to 9), \X\, \X2\ and \X4\ (ISO 10303-21:2016, 6.4.3) are resolved, line ends
/// left out. Other bytes are UTF-8 or, where they are not, as in many files, Windows-1252. A directive that is
/// damaged stays as it is; half of a character of UTF-16 becomes U+FFFD.
std::wstring decodeString(std::string_view text);

} // namespace zeq::part21
