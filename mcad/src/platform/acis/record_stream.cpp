// Reading tokens: lengths, and messages that say where and what.
#include "platform/acis/record_stream.h"

#include "platform/acis/unknown_tokens.h"
#include <charconv>

namespace acis_detail {
namespace {
struct tag_fact {
    const char* name;
    int bytes; ///< behind the tag; -1: an integer, 0 and below otherwise: a text with a length of -bytes - 1
               ///< bytes
};

/// By tag number.
constexpr tag_fact facts[] = {
    {nullptr, 0},
    {nullptr, 0},
    {"a character", 1},
    {"a short integer", 2},
    {"an integer", -1},
    {"a single real", 4},
    {"a real", 8},
    {"a string", -2},
    {"a string", -3},
    {"a string", -5},
    {"a logical", 0},
    {"a logical", 0},
    {"a pointer", -1},
    {"a name", -2},
    {"a name", -2},
    {"a subtype", 0},
    {"the end of a subtype", 0},
    {"the end of the record", 0},
    {"a literal", -5},
    {"a position", 24},
    {"a direction", 24},
    {"an enumeration", -1},
    {"a parameter pair", 16},
    {"a wide integer", 8},
};

const tag_fact* fact_of(tag kind) {
    auto number = std::size_t(kind);
    return number < std::size(facts) && facts[number].name ? &facts[number] : nullptr;
}
} // namespace

const char* name_of(tag kind) {
    const tag_fact* fact = fact_of(kind);
    return fact ? fact->name : "no token";
}

std::string text_of(double value) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof(text), value).ptr};
}

token_writer::place token_writer::grown(record_writer& records, std::size_t used, std::size_t length) {
    byte_block& bytes = records.m_bytes;
    bytes.grow(std::max(2 * bytes.size(), used + length + 4096));
    return {bytes.data() + used, bytes.data() + bytes.size()};
}

std::size_t record_reader::skip() {
    tag kind = peek();
    const tag_fact* fact = fact_of(kind);
    if (!fact) fail_expected("a token");
    ++m_at;
    const char* start = m_at;
    if (fact->bytes == -1)
        plain_integer();
    else if (fact->bytes == -2)
        text(plain<std::uint8_t>());
    else if (fact->bytes == -3)
        text(plain<std::uint16_t>());
    else if (fact->bytes == -5)
        text(plain<std::uint32_t>());
    else
        text(std::size_t(fact->bytes));
    return std::size_t(m_at - start);
}

std::size_t record_reader::count(std::size_t bytesEach) {
    const char* start = m_at;
    long value = integer();
    if (value >= 0 && std::size_t(value) <= left() / bytesEach) return std::size_t(value);
    m_at = start;
    fail("expected a count that the bytes left can hold, found " + std::to_string(value));
}

void record_reader::fail_expected(const char* what) const {
    std::string found = m_at == m_end         ? "the end of the image"
                        : fact_of(tag(*m_at)) ? name_of(tag(*m_at))
                                              : "byte " + std::to_string(static_cast<unsigned char>(*m_at));
    fail(std::string("expected ") + what + ", found " + found);
}

void record_reader::fail(const std::string& message) const {
    std::string where = m_record < 0 ? "header" : "record " + std::to_string(m_record);
    throw failure(where + ", byte " + std::to_string(offset()) + ": " + message);
}
} // namespace acis_detail

using acis_detail::tag;

void unknown_tokens::take(acis_detail::record_reader& reader, tag last) {
    for (long depth = 0;;) {
        tag kind = reader.peek();
        if (kind == last && depth == 0) return;
        if (kind == tag::end) reader.fail_expected("the end of a subtype");
        if (kind == tag::close && --depth < 0) reader.fail_expected("the end of the record");
        if (kind == tag::open) ++depth;
        const char* start = reader.at();
        std::size_t length = reader.skip();
        bool isPointer = kind == tag::pointer;
        if (isPointer || kind == tag::integer || kind == tag::enumeration) {
            reader.go_to(start + 1);
            long value = reader.plain_integer();
            if (isPointer) {
                reader.note_pointer(value);
                ++value; // index_as_pointer
                m_pointers.push_back(m_bytes.size() + 1);
            }
            m_bytes.push_back(char(kind));
            m_bytes.insert(m_bytes.end(), reinterpret_cast<char*>(&value),
                           reinterpret_cast<char*>(&value) + sizeof(value));
        } else {
            m_bytes.insert(m_bytes.end(), start, start + 1 + length);
        }
    }
}

void unknown_tokens::write(acis_detail::token_writer& writer, ENTITY_LIST& list) const {
    acis_detail::record_reader reader(m_bytes.data(), m_bytes.size());
    reader.set_integers(acis_detail::width::wide);
    std::size_t pointer = 0;
    while (reader.left() > 0) {
        tag kind = reader.peek();
        const char* start = reader.at();
        std::size_t length = reader.skip();
        if (pointer < m_pointers.size() && start + 1 == m_bytes.data() + m_pointers[pointer]) {
            std::uintptr_t slot;
            std::memcpy(&slot, start + 1, sizeof(slot));
            writer.integer(list.add(std::bit_cast<ENTITY*>(slot)), tag::pointer);
            ++pointer;
        } else if (kind == tag::integer || kind == tag::enumeration) {
            long value;
            std::memcpy(&value, start + 1, sizeof(value));
            writer.integer(value, kind);
        } else {
            writer.raw(start, 1 + length);
        }
    }
}
