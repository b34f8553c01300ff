// The kernel's binary record format, token by token: tagged values in a growing buffer, and checked reading
// of them from contiguous memory.
#pragma once

#include "platform/acis/byte_block.h"
#include "platform/acis/entity.h"
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace acis_detail {

/// A kernel operation that cannot go on; the api_* functions turn it into their outcome.
class failure : public std::runtime_error {
    using runtime_error::runtime_error;
};

enum class tag : std::uint8_t {
    character = 2,
    short_integer = 3,
    integer = 4,
    single = 5,
    real = 6,
    string8 = 7,
    string16 = 8,
    string32 = 9,
    logical_true = 10,
    logical_false = 11,
    pointer = 12,
    ident = 13,
    subident = 14,
    open = 15,
    close = 16,
    end = 17,
    literal = 18,
    position = 19,
    vector = 20,
    enumeration = 21,
    par_pos = 22,
    wide_integer = 23
};
/// For messages.
const char* name_of(tag kind);
/// The shortest text that reads back as the same number.
std::string text_of(double value);

/// Integers and pointers take 4 bytes, or 8 in the wide variant.
enum class width : int {
    narrow = 4,
    wide = 8
};

/// A record index in the shape of a pointer, and back; index -1 is the null pointer.
template <class T>
T* index_as_pointer(long index) {
    return std::bit_cast<T*>(std::intptr_t(index + 1));
}
inline long pointer_as_index(const void* pointer) { return reinterpret_cast<std::intptr_t>(pointer) - 1; }

/// The bytes of an image while it grows. token_writer puts them there.
class record_writer {
public:
    explicit record_writer(width integers) : m_width(integers) {}

    /// Of the header only: no tag.
    void patch_plain_integer(std::size_t offset, long value) {
        std::memcpy(m_bytes.data() + offset, &value, std::size_t(m_width));
    }
    width integers() const { return m_width; }
    /// Whether an integer came that the narrow variant cannot hold.
    bool overflowed() const { return m_overflowed; }
    const char* data() const { return m_bytes.data(); }
    std::size_t size() const { return m_size; }

private:
    friend class token_writer;

    byte_block m_bytes;
    std::size_t m_size = 0;
    width m_width;
    bool m_overflowed = false;
};

/// Appends tokens to a record_writer, which has them when this object ends; there is one at a time. A local
/// object that nobody else knows of stays in registers, while every byte written may change what lies in
/// memory, as far as the compiler knows.
class token_writer {
public:
    explicit token_writer(record_writer& records)
        : m_records(records), m_at(records.m_bytes.data() + records.m_size),
          m_end(records.m_bytes.data() + records.m_bytes.size()), m_width(records.m_width) {}
    token_writer(const token_writer&) = delete;
    ~token_writer() { pause(); }
    /// Hands over what has been written, so that another one can write until resume().
    void pause() {
        m_records.m_size = std::size_t(m_at - m_records.m_bytes.data());
        if (m_overflowed) m_records.m_overflowed = true;
    }
    record_writer& records() { return m_records; }
    void resume() {
        m_at = m_records.m_bytes.data() + m_records.m_size;
        m_end = m_records.m_bytes.data() + m_records.m_bytes.size();
    }

    void name(std::string_view text, bool last) {
        if (text.size() > 255)
            throw failure("the external name " + std::string(text) + " is longer than 255 bytes");
        counted(last ? tag::ident : tag::subident, text.size(), 1, text);
    }
    void integer(long value, tag kind = tag::integer) {
        make_room(9);
        *m_at++ = char(kind);
        put_integer(value);
    }
    void real(double value) { reals(tag::real, &value, 1); }
    void logical_value(bool value) { single(value ? tag::logical_true : tag::logical_false); }
    void string(std::string_view text) {
        if (text.size() <= 0xff) return counted(tag::string8, text.size(), 1, text);
        if (text.size() <= 0xffff) return counted(tag::string16, text.size(), 2, text);
        long_string(tag::string32, text);
    }
    void literal(std::string_view text) { long_string(tag::literal, text); }
    void position(const SPAposition& p) {
        double xyz[] = {p.x(), p.y(), p.z()};
        reals(tag::position, xyz, 3);
    }
    void vector(const SPAvector& v) {
        double xyz[] = {v.x(), v.y(), v.z()};
        reals(tag::vector, xyz, 3);
    }
    void par_vec(const SPApar_vec& v) {
        real(v.du);
        real(v.dv);
    }
    void single(tag kind) {
        make_room(1);
        *m_at++ = char(kind);
    }
    void raw(const void* data, std::size_t length) {
        if (length == 0) return;
        make_room(length);
        std::memcpy(m_at, data, length);
        m_at += length;
    }
    /// Of the header only: no tag.
    void plain_integer(long value) {
        make_room(8);
        put_integer(value);
    }

private:
    struct place {
        char* at;
        char* end;
    };
    /// Grows the bytes, with so many of them in use. Static, so that no object has to lie in memory for it.
    static place grown(record_writer& records, std::size_t used, std::size_t length);

    void make_room(std::size_t length) {
        if (m_at && std::size_t(m_end - m_at) >= length) return;
        place more = grown(m_records, std::size_t(m_at - m_records.m_bytes.data()), length);
        m_at = more.at;
        m_end = more.end;
    }
    /// Room for 8 bytes has to be there.
    void put_integer(long value) {
        if (m_width == width::narrow && value != static_cast<std::int32_t>(value)) m_overflowed = true;
        std::memcpy(m_at, &value, sizeof(value)); // little-endian: the low bytes come first
        m_at += std::size_t(m_width);
    }
    void reals(tag kind, const double* values, std::size_t count) {
        make_room(1 + count * sizeof(double));
        *m_at++ = char(kind);
        std::memcpy(m_at, values, count * sizeof(double));
        m_at += count * sizeof(double);
    }
    void counted(tag kind, std::uint64_t length, std::size_t lengthBytes, std::string_view text) {
        make_room(1 + sizeof(length) + text.size());
        *m_at++ = char(kind);
        std::memcpy(m_at, &length, sizeof(length));
        m_at += lengthBytes;
        if (!text.empty()) std::memcpy(m_at, text.data(), text.size());
        m_at += text.size();
    }
    void long_string(tag kind, std::string_view text) {
        if (text.size() > 0xffffffff) throw failure("a string is longer than 4 GiB");
        counted(kind, text.size(), 4, text);
    }

    record_writer& m_records;
    char* m_at;
    char* m_end;
    width m_width;
    bool m_overflowed = false;
};

/// Reads tokens; whatever is not as expected throws a failure that says where.
class record_reader {
public:
    record_reader(const char* begin, std::size_t length)
        : m_begin(begin), m_at(begin), m_end(begin + length) {}

    void set_integers(width integers) { m_width = integers; }
    width integers() const { return m_width; }
    std::size_t offset() const { return std::size_t(m_at - m_begin); }
    std::size_t left() const { return std::size_t(m_end - m_at); }
    const char* at() const { return m_at; }
    void go_to(const char* at) { m_at = at; }
    void go_to_offset(std::size_t offset) { m_at = m_begin + offset; }
    /// The number of the record at hand, for messages; -1 in the header.
    void set_record(long record) { m_record = record; }
    long record() const { return m_record; }

    bool next_is(tag kind) const { return m_at < m_end && *m_at == char(kind); }
    tag peek() const {
        if (m_at == m_end) fail_expected("more");
        return tag(*m_at);
    }
    void expect(tag kind) {
        if (!next_is(kind)) fail_expected(name_of(kind));
        ++m_at;
    }
    long integer(tag kind = tag::integer) {
        expect(kind);
        return plain_integer();
    }
    double real() {
        expect(tag::real);
        return plain<double>();
    }
    logical logical_value() {
        if (next_is(tag::logical_true)) return ++m_at, true;
        if (next_is(tag::logical_false)) return ++m_at, false;
        fail_expected("a logical");
    }
    std::string_view string() {
        if (next_is(tag::string8)) return ++m_at, text(plain<std::uint8_t>());
        if (next_is(tag::string16)) return ++m_at, text(plain<std::uint16_t>());
        expect_string32();
        return text(plain<std::uint32_t>());
    }
    std::string_view literal() {
        expect(tag::literal);
        return text(plain<std::uint32_t>());
    }
    /// A name of the kind at hand.
    std::string_view name(tag kind) {
        expect(kind);
        return text(plain<std::uint8_t>());
    }
    SPAposition position() {
        expect(tag::position);
        auto [x, y, z] = plain<triple>();
        return {x, y, z};
    }
    SPAvector vector() {
        expect(tag::vector);
        auto [x, y, z] = plain<triple>();
        return {x, y, z};
    }
    /// Two reals, or one token with both.
    SPApar_vec par_vec() {
        if (next_is(tag::par_pos)) return ++m_at, plain<SPApar_vec>();
        double du = real();
        return {du, real()};
    }
    /// A count of things that take at least so many bytes each: no more than can be left.
    std::size_t count(std::size_t bytesEach);
    long plain_integer() {
        if (m_width == width::narrow) return plain<std::int32_t>();
        return plain<std::int64_t>();
    }
    /// A record index.
    long pointer() {
        expect(tag::pointer);
        long index = plain_integer();
        note_pointer(index);
        return index;
    }
    void note_pointer(long index) {
        if (index < -1 || index > std::numeric_limits<std::int32_t>::max())
            fail("expected a record index, found " + std::to_string(index));
        if (std::size_t(index) < m_named.size()) m_named[std::size_t(index)] = true;
    }
    /// Of how many records to note whether a pointer names them.
    void note_named(std::size_t records) { m_named.assign(records, false); }
    /// Whether a pointer read so far is known to name a record.
    bool named(std::size_t record) const { return record < m_named.size() && m_named[record]; }

    /// Passes over a token of any kind and says how long it was without its tag.
    std::size_t skip();
    /// Passes over the rest of the record and calls with each record index in it.
    template <class Function>
    void skip_record(Function&& with_pointer) {
        for (tag kind = peek(); kind != tag::end; kind = peek()) {
            const char* start = m_at + 1;
            skip();
            if (kind != tag::pointer) continue;
            m_at = start;
            with_pointer(plain_integer());
        }
        ++m_at;
    }

    /// `what` is what should be at the current place.
    [[noreturn]] void fail_expected(const char* what) const;
    [[noreturn]] void fail(const std::string& message) const;

private:
    struct triple {
        double x, y, z;
    };
    template <class T>
    T plain() {
        if (left() < sizeof(T)) fail("the image ends within a token");
        T value;
        std::memcpy(&value, m_at, sizeof(T));
        m_at += sizeof(T);
        return value;
    }
    std::string_view text(std::size_t length) {
        if (left() < length) fail("the image ends within a token");
        std::string_view result(m_at, length);
        m_at += length;
        return result;
    }
    void expect_string32() {
        if (!next_is(tag::string32)) fail_expected("a string");
        ++m_at;
    }

    const char* m_begin;
    const char* m_at;
    const char* m_end;
    width m_width = width::narrow;
    long m_record = -1;
    std::vector<char> m_named;
};
} // namespace acis_detail
