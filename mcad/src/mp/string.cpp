// Text conversion through the C library.
#include "mp/string.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace mp {

namespace {

constexpr auto failed = static_cast<std::size_t>(-1);

} // namespace

std::string toUtf8String(const wchar_t* text) {
    std::string narrow(2 * std::wcslen(text) + 1, '\0');
    // A conversion that fills the buffer writes no terminator: only the count tells the length.
    const std::size_t count = std::wcstombs(narrow.data(), text, narrow.size());
    narrow.resize(count == failed ? 0 : count);
    return narrow;
}

std::wstring toWideString(const char* text) {
    std::wstring wide(std::strlen(text), L'\0');
    const std::size_t count = std::mbstowcs(wide.data(), text, wide.size());
    wide.resize(count == failed ? 0 : count);
    return wide;
}

} // namespace mp
