// The binary form of objects, made directly, with no document model between.
#pragma once

#include <string>

#include "zeq_api/json/codecs.h"

namespace zeq::test {

/// What a sink makes of what `write(sink)` gives it.
template <class Write>
std::string bytesOf(Write&& write) {
    std::string bytes;
    json::encode([&bytes](const char* data, std::size_t size) { bytes.append(data, size); }, write);
    return bytes;
}

inline std::string binaryForm(const IJsonObject& object) {
    return bytesOf([&object](json::ByteSink& sink) { json::writeNested(object, sink); });
}

} // namespace zeq::test
