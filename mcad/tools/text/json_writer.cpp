// The last character tells whether a comma is due.
#include "text/json_writer.h"

#include <array>
#include <charconv>
#include <cmath>

#include "text/text.h"

namespace zeq::text {

namespace {

template <class Number, class... Format>
void append(std::string& text, Number number, Format... format) {
    std::array<char, 32> digits; // NOLINT: only what is written is read
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, format...).ptr;
    text.append(digits.data(), end);
}

} // namespace

void JsonWriter::separate() {
    if (m_text.empty()) return;
    const char last = m_text.back();
    if (last != '{' && last != '[' && last != ':') m_text += ',';
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    m_text += bracket;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    m_text += bracket;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    m_text.append("\"").append(name).append("\":");
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) { return raw(jsonString(text)); }

JsonWriter& JsonWriter::value(double number) {
    separate();
    append(m_text, number + 0.0); // no negative zero
    return *this;
}

JsonWriter& JsonWriter::value(double number, int digits) {
    if (!std::isfinite(number)) return raw("null");
    separate();
    append(m_text, number + 0.0, std::chars_format::general, digits);
    return *this;
}

JsonWriter& JsonWriter::value(float number) {
    separate();
    append(m_text, number + 0.0F);
    return *this;
}

JsonWriter& JsonWriter::integer(std::uint64_t number) {
    separate();
    append(m_text, number);
    return *this;
}

JsonWriter& JsonWriter::raw(std::string_view json) {
    separate();
    m_text += json;
    return *this;
}

} // namespace zeq::text
