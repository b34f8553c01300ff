// One document of the translator, as it arrived.
#pragma once

#include <sstream>
#include <string>

#include "zeq_api/json/json_value.h"

namespace zeq::host {

enum class EDocument {
    exchangeObject,
    convexorInfo,
    result,
    unknown,
};

class Document {
public:
    /// @throws Failure, with the reason alone, if the text is not one JSON object
    explicit Document(std::wstring text);

    const std::wstring& text() const { return m_text; }
    EDocument kind() const;
    /// The name of the kind of exchange object; empty when there is none.
    std::wstring objectName() const;
    /// The shared buffer that the document names; empty when it names none.
    std::wstring bufferName() const;

    /// Reads a class that reads itself from a stream.
    template <class Readable>
    void readInto(Readable& object) const;

private:
    std::wstring m_text;
    JsonDocument m_json;
};

template <class Readable>
void Document::readInto(Readable& object) const {
    std::wistringstream stream(m_text);
    object.readObject(stream);
}

} // namespace zeq::host
