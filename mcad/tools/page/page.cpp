// The compressed model goes out in portions, so that its Base64 is never held as a whole.
#include "page/page.h"

#include <array>
#include <stdexcept>
#include <string>

#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/compressor.h"

namespace zeq::page {

namespace {

constexpr std::string_view marker = "<!-- model -->";

void writeElement(std::string_view id, std::string_view content, const Sink& sink) {
    std::string compressed;
    Compressor::compress(compressed, content.data(), content.size(), -1);
    sink("<script type=\"text/plain\" id=\"");
    sink(id);
    sink("\">");
    constexpr std::size_t portion = std::size_t{3} << 14; // whole groups of Base64
    std::array<char, Base64::encodedSize(portion)> text;  // NOLINT: only what is written is read
    for (std::string_view rest = compressed; !rest.empty();) {
        const std::string_view piece = rest.substr(0, portion);
        sink({text.data(), Base64::encodeImpl(text.data(), piece.data(), piece.size())});
        rest.remove_prefix(piece.size());
    }
    sink("</script>\n");
}

} // namespace

void write(std::string_view shell, std::string_view glb, std::string_view facts, const Sink& sink) {
    const std::size_t at = shell.find(marker);
    if (at == shell.npos || shell.find(marker, at + 1) != shell.npos)
        throw std::invalid_argument("the page has not one place for a model");
    sink(shell.substr(0, at));
    writeElement("model", glb, sink);
    writeElement("facts", facts, sink);
    sink(shell.substr(at + marker.size()));
}

} // namespace zeq::page
