// What the elements of a page hold.
#pragma once

#include <string>
#include <string_view>

#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/compressor.h"

namespace zeq::test {

/// The content of an element that the page holds once; "none" otherwise.
inline std::string elementOf(std::string_view page, const std::string& id) {
    const std::string begin = "<script type=\"text/plain\" id=\"" + id + "\">";
    const std::size_t at = page.find(begin);
    if (at == page.npos || page.find(begin, at + 1) != page.npos) return "none";
    page.remove_prefix(at + begin.size());
    const std::string_view text = page.substr(0, page.find('<'));
    page.remove_prefix(text.size());
    std::string bytes(Base64::decodedSize(text.size()) + 2, '\0');
    const auto [size, read] = Base64::decodeImpl(bytes.data(), text.data(), text.size());
    if (!page.starts_with("</script>") || text.find_first_not_of('=', read) != text.npos) return "none";
    std::string content;
    Compressor::decompress(content, bytes.data(), size);
    return content;
}

} // namespace zeq::test
