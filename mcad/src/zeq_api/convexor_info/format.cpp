// File formats: which paths belong to one.
#include "zeq_api/convexor_info/format.h"

#include <algorithm>
#include <locale>

#include "zeq_api/convexor_info/area.h"
#include "zeq_api/convexor_info/path_pattern.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

std::wstring lowerCase(std::wstring text) {
    const std::locale locale;
    std::use_facet<std::ctype<wchar_t>>(locale).tolower(text.data(), text.data() + text.size());
    return text;
}

/// The parts between separators, of which adjacent ones count as one. One at either end parts off an empty
/// text.
std::vector<std::wstring> split(const std::wstring& text, wchar_t separator) {
    std::vector<std::wstring> parts;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find(separator, begin)) != text.npos;) {
        parts.push_back(text.substr(begin, end - begin));
        begin = std::min(text.find_first_not_of(separator, end), text.size());
    }
    parts.push_back(text.substr(begin));
    return parts;
}

/// The regular expression for paths with this extension, in which "*" stands for any text.
std::wstring extensionRegex(const std::wstring& extension) {
    std::wstring regex = L".*\\.";
    for (const wchar_t unit : extension) {
        if (unit == L'.') {
            regex += L"\\.";
        } else if (unit == L'*') {
            regex += L".*";
        } else {
            regex += unit;
        }
    }
    return regex;
}

} // namespace

std::vector<std::wstring> Format::getFilters() const {
    std::vector<std::wstring> filters;
    for (const std::wstring& pattern : m_filterExtensions) filters.push_back(m_description + L'|' + pattern);
    return filters;
}

bool Format::is(const std::wstring& path) const {
    const std::wstring lowered = lowerCase(path);
    const auto matches = [&](const std::wstring& pattern) { return detail::matchesWhole(pattern, lowered); };
    const auto hasExtension = [&](const std::wstring& part) { return matches(extensionRegex(part)); };
    return std::ranges::any_of(m_regex, matches) ||
           std::ranges::any_of(m_extensions, [&](const std::wstring& entry) {
               return std::ranges::any_of(split(lowerCase(entry), L';'), hasExtension);
           });
}

struct Format::JsonForm {
    using This = Format;
    static constexpr json::Form form{
        json::Head{"Format", area::convexorInfo,
                   json::throwsInvalid("Format::readFrom > !jsonObject.IsObject()")},
        json::field(L"description", &This::m_description),
        json::field(L"extensions", &This::m_extensions),
        json::field(L"filters", &This::m_filterExtensions),
    };
};

ZEQ_JSON_OBJECT(Format)

} // namespace zeq
