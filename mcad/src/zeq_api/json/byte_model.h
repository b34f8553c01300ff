// The binary JSON byte stream as a sink and a view of forms: an object is written and read with no document
// model between.
#pragma once

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "zeq_api/json/binary_format.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::json {

/// Appends values to a byte buffer, integers in the narrowest kind that holds them; lengths of objects and
/// arrays are patched in when they end.
class ByteSink {
public:
    explicit ByteSink(std::string& out) : m_out(&out) {}

    void null() { tag(Tag::null); }
    void value(bool v) { tag(v ? Tag::boolTrue : Tag::boolFalse); }
    void value(int v) { number(Tag::int32, v); }
    void value(unsigned v) { value(static_cast<unsigned long long>(v)); }
    void value(long long v);
    void value(unsigned long long v);
    void value(double v) { number(Tag::real, v); }
    void value(std::wstring_view v);

    /// A string; `fill(bytes, first, count)` writes so many of its units, in order, as bytes.
    template <class Fill>
    void text(std::size_t units, Fill&& fill) {
        number(Tag::string, static_cast<unsigned long long>(units));
        char chunk[4096 * sizeof(wchar_t)]; // appended as it is made, so that nothing is cleared first
        constexpr std::size_t most = sizeof chunk / sizeof(wchar_t);
        for (std::size_t first = 0; first < units; first += most) {
            const std::size_t count = std::min(most, units - first);
            fill(chunk, first, count);
            m_out->append(chunk, count * sizeof(wchar_t));
        }
    }

    template <class Fill>
    void object(Fill&& fill) {
        const std::size_t body = open(Tag::object);
        fill(*this);
        close(body);
    }
    template <class Fill>
    void array(Fill&& fill) {
        const std::size_t body = open(Tag::array);
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

    /// Starts an object or an array, for a writer that cannot nest: its content follows, then close().
    /// @return where its body starts
    std::size_t open(Tag kind);
    /// Sets the length of the body that started there; the last time counts.
    void close(std::size_t body);
    /// Where the body of an object or array will start that is written next.
    std::size_t nextBody() const;

    /// Appends a value of the document model.
    void dom(const JsonValue& value);

private:
    void tag(Tag t) { m_out->push_back(static_cast<char>(t)); }
    template <class Number>
    void number(Tag t, Number v) {
        char bytes[1 + sizeof v];
        bytes[0] = static_cast<char>(t);
        std::memcpy(bytes + 1, &v, sizeof v);
        m_out->append(bytes, sizeof bytes);
    }

    std::string* m_out;
};

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
