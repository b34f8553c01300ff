// Reads bytes into an object on both of its ways, directly and through the document model, and compares them.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "support/binary_form.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"

namespace zeq::test {

/// What becomes of a document that is read and written back: bytes, or the text of a refusal; nothing when the
/// two ways of writing differ.
template <class Read>
std::optional<std::string> outcomeOf(const json::FormInfo& form, Read read) {
    const auto object = std::get<0>(form.make());
    try {
        read(*object);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    const std::string direct = binaryForm(*object);
    JsonDocument document;
    object->writeObject(document, document.GetAllocator());
    std::string throughDocument;
    JsonBinaryIO::encode(document, throughDocument);
    return direct == throughDocument ? std::optional(direct) : std::nullopt;
}

/// Whether both ways agree on the bytes; bytes that are not exact take only one of them, as in the library.
inline bool agreeOn(const json::FormInfo& form, const char* data, std::size_t size) {
    if (!json::ByteView::isExact(data, size)) return true;
    const auto direct = outcomeOf(form, [&](IJsonObject& o) { json::readNested(o, json::ByteView(data)); });
    const auto throughDocument = outcomeOf(form, [&](IJsonObject& o) {
        JsonDocument document;
        JsonBinaryIO::decode(data, size, document, document.GetAllocator());
        o.readObject(document);
    });
    return direct && direct == throughDocument;
}

} // namespace zeq::test
