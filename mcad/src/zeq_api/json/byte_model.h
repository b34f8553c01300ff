// The binary JSON byte stream as a sink and a view of forms: an object is written and read with no document
// model between.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zeq_api/json/binary_format.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::json {

/// What a ByteSink has to know before it writes: found by a ByteSink that only counts.
struct ByteLayout {
    std::uint64_t size = 0;
    std::vector<std::uint64_t>
        lengths; ///< of the bodies of objects and arrays, in the order in which they open
    std::vector<std::string> foreign; ///< values of the document model, encoded, in their order
};

/// Writes values front to back, integers in the narrowest kind that holds them. Lengths stand before what they
/// count, so everything is given twice: to a sink that counts, then to one that writes. encode() does both.
class ByteSink {
public:
    using Output = std::function<void(const char* bytes, std::size_t size)>;

    /// Counts, and writes nothing.
    explicit ByteSink(ByteLayout& counted) : m_layout(&counted), m_counted(&counted) {}
    /// Hands what it writes to `output` in pieces; the last one with flush().
    ByteSink(const ByteLayout& layout, Output output);

    /// Whether this is the time to log what is written.
    bool logs() const { return !m_counted; }

    void null() { tag(Tag::null); }
    void value(bool v) { tag(v ? Tag::boolTrue : Tag::boolFalse); }
    void value(int v) { number(Tag::int32, v); }
    void value(unsigned v) { value(static_cast<unsigned long long>(v)); }
    void value(long long v);
    void value(unsigned long long v);
    void value(double v) { number(Tag::real, v); }
    void value(std::wstring_view v) {
        number(Tag::string, static_cast<unsigned long long>(v.size()));
        bytes(reinterpret_cast<const char*>(v.data()), v.size() * sizeof(wchar_t));
    }

    /// A string; `fill(bytes, first, count)` writes so many of its units, in order, as bytes.
    template <class Fill>
    void text(std::size_t units, Fill&& fill) {
        number(Tag::string, static_cast<unsigned long long>(units));
        if (m_counted) {
            m_counted->size += units * sizeof(wchar_t);
            return;
        }
        constexpr std::size_t most = 4096;
        for (std::size_t first = 0; first < units; first += most) {
            const std::size_t count = std::min(most, units - first);
            fill(room(count * sizeof(wchar_t)), first, count);
        }
    }

    template <class Fill>
    void object(Fill&& fill) {
        const Body body = open(Tag::object);
        fill(*this);
        close(body);
    }
    template <class Fill>
    void array(Fill&& fill) {
        const Body body = open(Tag::array);
        fill(*this);
        close(body);
    }
    template <class Give>
    void member(std::wstring_view key, Give&& give) {
        value(key);
        give(*this);
    }
    /// The same: bytes always have a copy of the name.
    template <class Give>
    void ownedMember(std::wstring_view key, Give&& give) {
        member(key, give);
    }
    template <class Give>
    void element(Give&& give) {
        give(*this);
    }

    /// The body of an object or array that is being written.
    struct Body {
        std::size_t index;
        std::uint64_t start;
    };
    /// Starts an object or an array, for a writer that cannot nest: its content follows, then close().
    Body open(Tag kind);
    /// Ends the body here; the last time counts.
    void close(const Body& body) {
        if (m_counted) m_counted->lengths[body.index] = m_counted->size - body.start;
    }
    /// The body of the object or array that is written next.
    Body nextBody() const;

    /// Writes a value of the document model.
    void dom(const JsonValue& value);
    /// Writes a value of the document model that `make(document)` makes: once, even if it is counted first.
    template <class Make>
    void foreign(Make&& make) {
        if (m_counted) {
            JsonDocument document;
            make(document);
            keep(document);
        }
        writeKept();
    }

    void flush();

private:
    static constexpr std::size_t blockSize = 1 << 17;

    void tag(Tag t) {
        const char byte = static_cast<char>(t);
        bytes(&byte, 1);
    }
    template <class Number>
    void number(Tag t, Number v) {
        if (m_counted) {
            m_counted->size += 1 + sizeof v;
            return;
        }
        char* const to = room(1 + sizeof v);
        *to = static_cast<char>(t);
        std::memcpy(to + 1, &v, sizeof v);
    }
    void bytes(const char* from, std::size_t size) {
        if (m_counted)
            m_counted->size += size;
        else if (size <= static_cast<std::size_t>(m_end - m_next))
            std::memcpy(std::exchange(m_next, m_next + size), from, size);
        else
            piecewise(from, size);
    }
    /// Where so many bytes are to be written, no more than a block.
    char* room(std::size_t size) {
        if (size > static_cast<std::size_t>(m_end - m_next)) flush();
        return std::exchange(m_next, m_next + size);
    }
    void piecewise(const char* from, std::size_t size);
    void keep(const JsonValue& value);
    void writeKept();

    const ByteLayout* m_layout;
    ByteLayout* m_counted = nullptr; // the same while counting
    std::size_t m_nextLength = 0;
    std::size_t m_nextForeign = 0;
    Output m_output;
    std::unique_ptr<char[]> m_block;
    char* m_next = nullptr;
    char* m_end = nullptr;
};

/// Counts and then writes what `write(sink)` gives.
template <class Write>
void encode(const ByteSink::Output& output, Write&& write) {
    ByteLayout layout;
    ByteSink counting(layout);
    write(counting);
    ByteSink writing(layout, output);
    write(writing);
    writing.flush();
}

/// Reads one value of a byte stream that isExact() has accepted.
class ByteView {
public:
    explicit ByteView(const char* at) : m_at(at) {}

    /// Whether the bytes begin with one whole value in which every length is exact and every member name a
    /// string. Whatever else the binary form tolerates goes through the document model.
    static bool isExact(const char* data, std::size_t size);

    Kind kind() const;
    bool take(bool& out) const;
    bool take(int& out) const;
    bool take(unsigned& out) const;
    bool take(long long& out) const;
    bool take(unsigned long long& out) const;
    bool take(double& out) const;
    bool take(std::wstring& out) const;

    std::size_t size() const;
    Units units() const { return {body(), static_cast<std::size_t>(load<unsigned long long>())}; }

    template <class Visit>
    void forEach(Visit&& visit) const {
        const char* const end = next();
        for (const char* at = body(); at != end;) {
            const ByteView element(at);
            if (!visit(element)) return;
            at = element.next();
        }
    }

    /// The same look-up as DomMembers.
    class Members {
    public:
        Members(const char* begin, const char* end) : m_next(begin), m_end(end) {}
        std::optional<ByteView> find(std::wstring_view key);

    private:
        const char* m_next;
        const char* m_end;
    };
    Members members() const { return {body(), next()}; }

    template <class Visit>
    void forEachMember(Visit&& visit) const {
        const char* const end = next();
        for (const char* at = body(); at != end;) {
            const ByteView name(at);
            const ByteView value(name.next());
            std::wstring key;
            name.take(key);
            visit(std::move(key), value);
            at = value.next();
        }
    }

    /// Builds the value of the document model.
    const JsonValue& dom(JsonDocument& scratch) const;

private:
    Tag tag() const { return static_cast<Tag>(*m_at); }
    template <class T>
    T load(std::size_t offset = 1) const {
        T v;
        std::memcpy(&v, m_at + offset, sizeof v);
        return v;
    }
    template <class Integer>
    bool takeInteger(Integer& out) const;
    const char* body() const { return m_at + 9; }
    /// The byte after this value.
    const char* next() const;

    const char* m_at;
};

} // namespace zeq::json
