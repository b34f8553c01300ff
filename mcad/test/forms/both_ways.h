// Reads bytes into an object on both of its ways, directly and through the document model, and compares them.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"

namespace zeq::test {

/// What reading and writing back made of a document: bytes, or the text of a refusal.
struct Outcome {
    std::string bytes;
    std::string refusal;
    bool operator==(const Outcome&) const = default;
};

template <class Read>
Outcome outcomeOf(const json::FormInfo& form, Read read) {
    const auto object = std::get<0>(form.make());
    try {
        read(*object);
    } catch (const std::invalid_argument& error) {
        return {{}, error.what()};
    }
    Outcome outcome;
    json::ByteSink sink(outcome.bytes);
    json::writeNested(*object, sink);
    JsonDocument document;
    object->writeObject(document, document.GetAllocator());
    std::string other;
    JsonBinaryIO::encode(document, other);
    if (outcome.bytes != other) outcome.refusal = "the two ways of writing differ";
    return outcome;
}

/// Whether both ways agree on the bytes; bytes that are not exact take only one of them, as in the library.
inline bool agreeOn(const json::FormInfo& form, const char* data, std::size_t size) {
    if (!json::ByteView::isExact(data, size)) return true;
    const Outcome direct =
        outcomeOf(form, [&](IJsonObject& o) { json::readNested(o, json::ByteView(data)); });
    const Outcome throughDocument = outcomeOf(form, [&](IJsonObject& o) {
        JsonDocument document;
        JsonBinaryIO::decode(data, size, document, document.GetAllocator());
        o.readObject(document);
    });
    return direct == throughDocument && direct.refusal.find("differ") == std::string::npos;
}

} // namespace zeq::test
