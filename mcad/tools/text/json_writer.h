// JSON text, written from front to back.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace zeq::text {

/// Puts the commas. Texts are UTF-8; numbers are finite.
class JsonWriter {
public:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(double number);
    JsonWriter& value(double number,
                      int digits);   ///< with so many significant digits; null if it is not finite
    JsonWriter& value(float number); ///< with the digits that give it back
    template <std::unsigned_integral T>
    JsonWriter& value(T number) {
        return integer(number);
    }
    template <class T>
    JsonWriter& member(std::string_view name, const T& content) {
        return key(name).value(content);
    }
    /// What another writer wrote.
    JsonWriter& raw(std::string_view json);

    const std::string& text() const { return m_text; }
    bool isEmpty() const { return m_text.empty(); }

private:
    JsonWriter& integer(std::uint64_t number);
    void separate();

    std::string m_text;
};

/// The elements of an array, which is written as they come up.
struct JsonList {
    JsonWriter elements;
    std::uint32_t count = 0;

    /// Counts an element; `elements` is to be given it.
    std::uint32_t next() { return count++; }
};

} // namespace zeq::text
