// JSON text for tests: documents are read from it, and what they write is given without indentation.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

#include "mp/serializable.h"
#include "zeq_api/json/json_object.h"
#include "zeq_api/json/text_io.h"

namespace zeq::test {

inline JsonDocument parse(std::wistream& stream) {
    JsonDocument document;
    if (!JsonTextIO::read(stream, document)) throw std::logic_error("not one JSON document");
    return document;
}

inline std::wstring textOf(const JsonDocument& document) {
    std::wostringstream text;
    JsonTextIO::write(text, document, 0);
    return text.str();
}

inline std::wstring textOf(const JsonValue& value) {
    JsonDocument document;
    document.CopyFrom(value, document.GetAllocator());
    return textOf(document); // NOLINT: the document frees what it allocated
}

/// The same document without blanks.
inline std::wstring compact(const std::wstring& text) {
    std::wistringstream stream(text);
    return textOf(parse(stream));
}

inline void readFrom(IJsonObject& object, const std::wstring& text) {
    std::wistringstream stream(text);
    object.readObject(parse(stream));
}

inline void readFrom(mp::ISerializable& document, const std::wstring& text) {
    std::wistringstream stream(text);
    document.readObject(stream);
}

inline std::wstring writtenBy(const IJsonObject& object) {
    JsonDocument document;
    object.writeObject(document, document.GetAllocator());
    return textOf(document);
}

inline std::wstring writtenBy(const mp::ISerializable& document) {
    std::wstringstream indented;
    document.writeObject(indented);
    return textOf(parse(indented));
}

/// The text of the std::invalid_argument that `act` throws; empty when it throws none.
template <class Act>
std::string refusalOf(Act&& act) {
    try {
        act();
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

} // namespace zeq::test
