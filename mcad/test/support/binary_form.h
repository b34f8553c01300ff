// The binary form of objects, made and read directly, with no document model between.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "zeq_api/json/codecs.h"

namespace zeq::test {

/// What a sink makes of what `write(sink)` gives it.
template <class Write>
std::string bytesOf(Write&& write) {
    std::string bytes;
    json::encode(bytes, write);
    return bytes;
}

inline std::string binaryForm(const IJsonObject& object) {
    return bytesOf([&object](json::ByteSink& sink) { json::writeNested(object, sink); });
}

/// Bytes as they come through a window of that size; without one, as they lie in memory.
inline json::ByteSource sourceOf(std::string_view bytes, std::size_t windowSize = 0) {
    if (windowSize == 0) return {bytes.data(), bytes.size()};
    const auto input = [bytes](char* out, std::size_t size) mutable {
        const std::size_t count = bytes.copy(out, size);
        bytes.remove_prefix(count);
        return count;
    };
    return {input, bytes.size(), windowSize};
}

/// Reads the object directly. Whether that was possible; if not, it is half read.
inline bool readDirectly(IJsonObject& object, std::string_view bytes, std::size_t windowSize = 0) {
    try {
        json::ByteSource source = sourceOf(bytes, windowSize);
        const json::ByteView::Visited value(source);
        json::readNested(object, value.view);
        value.leave();
        return true;
    } catch (const json::NotInOnePass&) {
        return false;
    }
}

} // namespace zeq::test
