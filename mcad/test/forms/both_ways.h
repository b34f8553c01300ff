// Reads bytes into an object on both of its ways, directly and through the document model, and compares them.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

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

enum class Agreement {
    full,
    onlyDocument, // the bytes are not read in one pass, whatever the window
    none
};

/// Whether the direct way, through a window of any size, and that through the document model agree on the bytes.
inline Agreement agreementOn(const json::FormInfo& form, std::string_view bytes) {
    std::optional<std::string> direct[3];
    constexpr std::size_t windowSizes[3] = {0, 1, 50};
    int refused = 0;
    for (int i = 0; i < 3; ++i) {
        bool isRead = false;
        direct[i] = outcomeOf(form, [&](IJsonObject& o) { isRead = readDirectly(o, bytes, windowSizes[i]); });
        refused += !isRead;
    }
    if (refused == 3) return Agreement::onlyDocument;
    const auto throughDocument = outcomeOf(form, [&](IJsonObject& o) {
        JsonDocument document;
        JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
        o.readObject(document);
    });
    const bool agree = refused == 0 && direct[0] && direct[0] == throughDocument && direct[1] == direct[0] &&
                       direct[2] == direct[0];
    return agree ? Agreement::full : Agreement::none;
}

} // namespace zeq::test
