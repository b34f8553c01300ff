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
#include "zeq_api/json/block_output.h"
#include "zeq_api/json/byte_source.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::json {

/// Writes values front to back, once, integers in the narrowest kind that holds them. The length of an object or array
/// stands before its content: it is filled in when that is complete.
class ByteSink {
public:
    explicit ByteSink(BlockOutput& output) : m_output(&output) { m_output->pass(m_block); }

    void null() { tag(Tag::null); }
    void value(bool v) { tag(v ? Tag::boolTrue : Tag::boolFalse); }
    void value(int v) { number(Tag::int32, v); }
    void value(unsigned v) { value(static_cast<unsigned long long>(v)); }
    void value(long long v);
    void value(unsigned long long v);
    void value(double v) { number(Tag::real, v); }
    [[gnu::always_inline]] void value(std::wstring_view v) {
        const std::size_t size = v.size() * sizeof(wchar_t);
        if (size >= largePiece) return longText(v);
        char* const to = room(headSize + size);
        putHead(to, Tag::string, v.size());
        std::memcpy(to + headSize, v.data(), size);
    }

    /// A string of Base64; `fill(bytes, first, count)` writes so many of its units, in order, as bytes.
    template <class Fill>
    void text(std::size_t units, Fill&& fill) {
        number(Tag::string, static_cast<std::uint64_t>(units));
        mark(Mark::base64);
        constexpr std::size_t most = largePiece / sizeof(wchar_t);
        for (std::size_t first = 0; first < units; first += most) {
            const std::size_t count = std::min(most, units - first);
            fill(room(count * sizeof(wchar_t)), first, count);
        }
        mark(Mark::base64End);
    }

    template <class Fill>
    void object(Fill&& fill) {
        const Body body = open(Tag::object);
        fill(*this);
        closeUnlessLeftOpen(body);
    }
    template <class Fill>
    void array(Fill&& fill) {
        const Body body = open(Tag::array);
        fill(*this);
        close(body);
    }
    template <class Give>
    [[gnu::always_inline]] void member(std::wstring_view key, Give&& give) {
        name(key);
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
        std::uint64_t start;
    };
    /// Starts an object or an array, for a writer that cannot nest: its content follows, then close().
    Body open(Tag kind) {
        char* const to = room(headSize);
        putHead(to, kind, unknownLength);
        putMark(to, Mark::container);
        return {position()};
    }
    void close(const Body& body) {
        const std::uint64_t length = position() - body.start;
        const std::uint64_t at = body.start - sizeof length;
        if (at >= m_start)
            std::memcpy(m_block.begin + (at - m_start), &length, sizeof length);
        else
            m_output->setLength(at, length);
    }
    [[gnu::always_inline]] void name(std::wstring_view key) {
        mark(Mark::name);
        value(key);
    }
    /// For a row that goes on with the last member when all others are done: object() leaves the object that is
    /// written open, and whoever called that gets it from takeLeftOpen() and closes it.
    void leaveOpen() { m_isLeftOpen = true; }
    Body takeLeftOpen() { return m_leftOpen; }

    /// Writes a value of the document model.
    void dom(const JsonValue& value);

    /// To be called once, at the end.
    void finish() { m_output->finish(m_block); }

private:
    static constexpr std::size_t headSize = 1 + sizeof(std::uint64_t);
    // No more than this is asked of a block at once.
    static constexpr std::size_t largePiece = 1 << 14;

    static void putHead(char* to, Tag kind, std::uint64_t length) {
        *to = static_cast<char>(kind);
        std::memcpy(to + 1, &length, sizeof length);
    }
    void tag(Tag t) { *room(1) = static_cast<char>(t); }
    template <class Number>
    void number(Tag t, Number v) {
        char* const to = room(1 + sizeof v);
        *to = static_cast<char>(t);
        std::memcpy(to + 1, &v, sizeof v);
    }
    void longText(std::wstring_view v);

    /// Where so many bytes are to be written.
    char* room(std::size_t size) {
        if (size > static_cast<std::size_t>(m_block.end - m_block.next)) pass();
        return std::exchange(m_block.next, m_block.next + size);
    }
    void pass();
    void mark(Mark::Kind kind) { putMark(m_block.next, kind); }
    void putMark(const char* at, Mark::Kind kind) {
        *m_block.nextMark++ = {kind, static_cast<std::uint32_t>(at - m_block.begin)};
    }
    std::uint64_t position() const {
        return m_start + static_cast<std::uint64_t>(m_block.next - m_block.begin);
    }
    void closeUnlessLeftOpen(const Body& body) {
        if (std::exchange(m_isLeftOpen, false))
            m_leftOpen = body;
        else
            close(body);
    }

    BlockOutput* m_output;
    Block m_block;
    std::uint64_t m_start = 0; // of the block, in all that is written
    bool m_isLeftOpen = false;
    Body m_leftOpen{};
};

/// Appends to `out` what `write(sink)` gives.
template <class Write>
void encode(std::string& out, Write&& write) {
    const std::size_t start = out.size();
    PlainOutput output([&out, start](const char* bytes, std::size_t size, std::uint64_t at) {
        out.replace(std::min(out.size(), start + at), size, bytes, size);
    });
    ByteSink sink(output);
    write(sink);
    sink.finish();
}

/// Reads the next value of a byte source, once, from front to back. Whoever visits it may leave it unread.
class ByteView {
public:
    explicit ByteView(ByteSource& source)
        : m_source(&source), m_start(source.position()), m_tag(source.tag()) {}

    Kind kind() const {
        constexpr Kind kinds[tagCount] = {Kind::null,   Kind::boolean, Kind::boolean, Kind::object,
                                          Kind::array,  Kind::string,  Kind::number,  Kind::number,
                                          Kind::number, Kind::number,  Kind::number};
        return kinds[static_cast<unsigned char>(m_tag)];
    }
    bool take(bool& out) const;
    bool take(int& out) const;
    bool take(unsigned& out) const;
    bool take(long long& out) const;
    bool take(unsigned long long& out) const;
    bool take(double& out) const {
        if (m_tag != Tag::real) return false;
        take<double>(out);
        return true;
    }
    bool take(std::wstring& out) const;
    bool take(Units& out) const;

    /// The number of units of a string.
    std::size_t textSize() const { return at().length(sizeof(wchar_t)); }
    template <class Visit>
    void forEachPiece(Visit&& visit) const {
        const std::uint64_t count = textSize();
        m_source->skip(headSize);
        m_source->units(count, [&visit](const char* bytes, std::size_t n) { visit(Units{bytes, n}); });
    }

    /// Of a small array, which is not read by this.
    std::size_t size() const;
    bool isEmpty() const { return at().length() == 0; }
    /// A string member of a small object, which is not read by this.
    bool takeMember(std::wstring_view key, std::wstring& out) const;

    template <class Visit>
    void forEach(Visit&& visit) const;
    template <class Visit>
    void forEachMember(Visit&& visit) const;

    class Members;
    Members members() const;
    struct Visited;

    /// Enters an object or array whose content is read by other means, and says where it ends.
    std::uint64_t enter() const {
        const std::uint64_t size = at().length();
        m_source->skip(headSize);
        return m_source->position() + size;
    }
    ByteSource& source() const { return *m_source; }

    /// Builds the value of the document model.
    const JsonValue& dom(JsonDocument& scratch) const;

private:
    static constexpr std::size_t headSize = 1 + sizeof(std::uint64_t);

    ByteSource& at() const {
        if (m_source->position() != m_start) throw NotInOnePass{};
        return *m_source;
    }
    template <class Number>
    void take(Number& out) const {
        std::memcpy(&out, at().need(1 + sizeof out) + 1, sizeof out);
        m_source->skip(1 + sizeof out);
    }
    template <class Integer>
    bool takeInteger(Integer& out) const;
    /// All of the body of a small object or array.
    ByteSource body() const;

    ByteSource* m_source;
    std::uint64_t m_start;
    Tag m_tag;
};

/// A value, and a way past it however much of it was read.
struct ByteView::Visited {
    explicit Visited(ByteSource& source)
        : view(source), end(view.m_tag == Tag::object ? view.m_start + headSize + source.length() : 0) {}
    void leave() const {
        const std::uint64_t position = view.m_source->position();
        if (position == view.m_start)
            view.m_source->passValue();
        else if (end != 0 && position != end) // there are members that nobody asked for
            throw NotInOnePass{};
    }

    ByteView view;
    std::uint64_t end; ///< only of an object, which may be left half read
};

template <class Visit>
void ByteView::forEach(Visit&& visit) const {
    const std::uint64_t end = enter();
    for (bool goesOn = true; m_source->position() < end;) {
        const Visited element(*m_source);
        if (goesOn) goesOn = visit(element.view);
        element.leave();
    }
    if (m_source->position() != end) throw NotInOnePass{};
}

template <class Visit>
void ByteView::forEachMember(Visit&& visit) const {
    const std::uint64_t end = enter();
    while (m_source->position() < end) {
        std::wstring key;
        if (!ByteView(*m_source).take(key)) throw NotInOnePass{};
        const Visited value(*m_source);
        visit(std::move(key), value.view);
        value.leave();
    }
    if (m_source->position() != end) throw NotInOnePass{};
}

/// Looks members up in the order of the document. A name that does not come next counts as missing: if it is there
/// after all, something is left over at the end, and finish() throws.
class ByteView::Members {
public:
    Members(ByteSource& source, std::uint64_t end) : m_source(&source), m_end(end) {}

    /// @return null without one; valid until the next is looked up
    [[gnu::always_inline]] const ByteView* find(std::wstring_view key) {
        settle();
        if (m_source->position() == m_end) return nullptr;
        if (m_source->tag() != Tag::string) throw NotInOnePass{};
        if (m_source->number() != key.size()) return nullptr;
        const std::size_t size = key.size() * sizeof(wchar_t);
        if (std::memcmp(m_source->need(headSize + size) + headSize, key.data(), size) != 0) return nullptr;
        m_source->skip(headSize + size);
        m_last.emplace(*m_source);
        return &m_last->view;
    }
    /// To be called when all members were asked for.
    void finish() {
        if (m_isLeftOpen) return;
        settle();
        if (m_source->position() != m_end) throw NotInOnePass{};
    }
    /// For a row that goes on with the last member when all others are done: where the object then ends.
    std::uint64_t leaveOpen() {
        m_isLeftOpen = true;
        return m_end;
    }

private:
    void settle() {
        if (m_last) m_last->leave();
        m_last.reset();
    }

    ByteSource* m_source;
    std::uint64_t m_end;
    std::optional<Visited> m_last;
    bool m_isLeftOpen = false;
};

inline ByteView::Members ByteView::members() const { return {*m_source, enter()}; }

} // namespace zeq::json
