// Simple patterns are matched here, because the regular expressions of the standard library recurse for each
// unit of the text; the others go through them, on the engine that does not recurse where there is one.
#include "zeq_api/convexor_info/path_pattern.h"

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized" // a false alarm about <regex> under AddressSanitizer
#endif

#include <optional>
#include <regex>
#include <string_view>

namespace zeq::detail {

namespace {

// Far above what file systems take and far below what the recursion of std::regex survives.
constexpr std::size_t longest = 4096;

constexpr wchar_t star = L'*';
constexpr std::wstring_view lineEnds = L"\n\r"; // what "." does not match

/// The pattern as literals and stars; nothing if it holds anything else.
std::optional<std::wstring> asGlob(std::wstring_view pattern) {
    if (pattern.find_first_of(lineEnds) != pattern.npos) return std::nullopt;
    std::wstring glob;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::wstring_view two = pattern.substr(i, 2);
        if (two == L".*") {
            glob += star;
            ++i;
        } else if (two == L"\\.") {
            glob += L'.';
            ++i;
        } else if (std::wstring_view(L"^$\\.*+?()[]{}|").find(pattern[i]) == std::wstring_view::npos) {
            glob += pattern[i];
        } else {
            return std::nullopt;
        }
        // A quantifier of what was just taken is left for the next round, which refuses it.
    }
    return glob;
}

/// Only the last star ever has to give way: what stands before it has matched as early as it can.
bool matchesGlob(std::wstring_view glob, std::wstring_view text) {
    if (text.find_first_of(lineEnds) != text.npos) return false;
    std::size_t g = 0;
    std::size_t t = 0;
    std::size_t afterStar = glob.npos;
    std::size_t starEnd = 0; // where in the text the last star ends
    while (t < text.size()) {
        if (g < glob.size() && glob[g] == star) {
            afterStar = ++g;
            starEnd = t;
        } else if (g < glob.size() && glob[g] == text[t]) {
            ++g;
            ++t;
        } else if (afterStar != glob.npos) {
            g = afterStar;
            t = ++starEnd;
        } else {
            return false;
        }
    }
    return glob.find_first_not_of(star, g) == glob.npos;
}

bool matchesRegex(const std::wstring& pattern, const std::wstring& text) {
    if (pattern.size() > longest) throw std::regex_error(std::regex_constants::error_space);
#ifdef __GLIBCXX__
    try {
        return std::regex_match(text, std::wregex(pattern, std::regex_constants::ECMAScript |
                                                               std::regex_constants::__polynomial));
    } catch (const std::regex_error& error) {
        if (error.code() != std::regex_constants::error_complexity) throw; // a back-reference
    }
#endif
    const std::wregex regex(pattern);
    if (text.size() > longest) throw std::regex_error(std::regex_constants::error_stack);
    return std::regex_match(text, regex);
}

} // namespace

bool matchesWhole(const std::wstring& pattern, const std::wstring& text) {
    const std::optional<std::wstring> glob = asGlob(pattern);
    return glob ? matchesGlob(*glob, text) : matchesRegex(pattern, text);
}

} // namespace zeq::detail
