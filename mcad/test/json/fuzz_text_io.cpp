// Reads any text as JSON. What is a document at all keeps its text from its first writing on.
#include "zeq_api/json/text_io.h"

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>

namespace {

/// ASCII as it stands; the other bytes stand for units that a reader may stumble over.
std::wstring textFrom(const std::uint8_t* data, std::size_t size) {
    static const std::int32_t units[] = {0x80,   0xA0,   0x2028,   0xD800,   0xDBFF,     0xDC00,
                                         0xDFFF, 0xFEFF, 0x10FFFF, 0x110000, 0x7FFFFFFF, -1};
    std::wstring text;
    for (const std::uint8_t* byte = data; byte != data + size; ++byte)
        text += static_cast<wchar_t>(*byte < 0x80 ? *byte : units[*byte % std::size(units)]);
    return text;
}

bool read(const std::wstring& text, zeq::JsonDocument& document) {
    std::wistringstream stream(text);
    return zeq::JsonTextIO::read(stream, document);
}

std::wstring written(const zeq::JsonDocument& document) {
    std::wostringstream stream;
    zeq::JsonTextIO::write(stream, document, 0);
    return stream.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zeq::JsonDocument document;
    if (!read(textFrom(data, size), document)) return 0;
    const std::wstring once = written(document);
    zeq::JsonDocument again;
    if (!read(once, again) || written(again) != once) std::abort();
    return 0;
}
