// Conversion between wide text and UTF-8, unit by unit and independent of the locale.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace zeq::transport {

/// Text or bytes that have no counterpart in the other form.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Encodes each unit on its own in 1 to 6 bytes, lone surrogates included.
/// @throws EncodingError for a unit above 0x7FFFFFFF
std::string toUtf8(std::wstring_view text);

/// The exact reverse of toUtf8().
/// @throws EncodingError for bytes that toUtf8() never gives: stray, missing or overlong sequences
std::wstring fromUtf8(std::string_view bytes);

} // namespace zeq::transport
