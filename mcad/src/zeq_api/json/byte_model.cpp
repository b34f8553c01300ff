// The strict rules of dom_model.cpp on encoded bytes, and the check that makes it safe to read them in place.
#include "zeq_api/json/byte_model.h"

#include <limits>
#include <utility>
#include <vector>

#include "zeq_api/json/binary_dom.h"

namespace zeq::json {

namespace {

using Length = unsigned long long;
constexpr std::size_t headSize = 1 + sizeof(Length);

} // namespace

void ByteSink::value(long long v) {
    if (v >= 0) return value(static_cast<unsigned long long>(v));
    if (v >= std::numeric_limits<int>::min()) return value(static_cast<int>(v));
    number(Tag::int64, v);
}

void ByteSink::value(unsigned long long v) {
    if (v <= std::numeric_limits<int>::max()) return number(Tag::int32, static_cast<int>(v));
    if (v <= std::numeric_limits<unsigned>::max()) return number(Tag::uint32, static_cast<unsigned>(v));
    if (v <= std::numeric_limits<long long>::max()) return number(Tag::int64, static_cast<long long>(v));
    number(Tag::uint64, v);
}

ByteSink::ByteSink(const ByteLayout& layout, Output output)
    : m_layout(&layout), m_output(std::move(output)), m_block(new char[blockSize]), m_next(m_block.get()),
      m_end(m_next + blockSize) {}

void ByteSink::dom(const JsonValue& value) { JsonBinaryIOImpl::write(value, *this); }

void ByteSink::keep(const JsonValue& value) {
    JsonBinaryIOImpl::encode(value, m_counted->foreign.emplace_back());
}

void ByteSink::writeKept() {
    const std::string& kept = m_counted ? m_counted->foreign.back() : m_layout->foreign.at(m_nextForeign++);
    bytes(kept.data(), kept.size());
}

ByteSink::Body ByteSink::open(Tag kind) {
    if (m_counted) {
        const Body body = nextBody();
        m_counted->lengths.push_back(0);
        m_counted->size = body.start;
        return body;
    }
    number(kind, m_layout->lengths.at(m_nextLength++));
    return {};
}

ByteSink::Body ByteSink::nextBody() const { return {m_layout->lengths.size(), m_layout->size + headSize}; }

void ByteSink::piecewise(const char* from, std::size_t size) {
    while (size != 0) {
        if (m_next == m_end) flush();
        const std::size_t piece = std::min(size, static_cast<std::size_t>(m_end - m_next));
        std::memcpy(m_next, from, piece);
        m_next += piece;
        from += piece;
        size -= piece;
    }
}

void ByteSink::flush() {
    m_output(m_block.get(), static_cast<std::size_t>(m_next - m_block.get()));
    m_next = m_block.get();
}

bool ByteView::take(bool& out) const {
    if (m_tag != Tag::boolFalse && m_tag != Tag::boolTrue) return false;
    at().skip(1);
    out = m_tag == Tag::boolTrue;
    return true;
}

template <class Integer>
bool ByteView::takeInteger(Integer& out) const {
    const auto assign = [&]<class Number>(Number number) {
        std::memcpy(&number, at().need(1 + sizeof number) + 1, sizeof number);
        if (!std::in_range<Integer>(number)) return false;
        m_source->skip(1 + sizeof number);
        out = static_cast<Integer>(number);
        return true;
    };
    switch (m_tag) {
    case Tag::int32:
        return assign(std::int32_t{});
    case Tag::uint32:
        return assign(std::uint32_t{});
    case Tag::int64:
        return assign(std::int64_t{});
    case Tag::uint64:
        return assign(std::uint64_t{});
    default:
        return false;
    }
}

bool ByteView::take(int& out) const { return takeInteger(out); }
bool ByteView::take(unsigned& out) const { return takeInteger(out); }
bool ByteView::take(long long& out) const { return takeInteger(out); }
bool ByteView::take(unsigned long long& out) const { return takeInteger(out); }

bool ByteView::take(std::wstring& out) const {
    if (m_tag != Tag::string) return false;
    out.resize(textSize());
    char* to = reinterpret_cast<char*>(out.data());
    forEachPiece([&to](const Units& piece) {
        std::memcpy(to, piece.bytes, piece.count * sizeof(wchar_t));
        to += piece.count * sizeof(wchar_t);
    });
    return true;
}

bool ByteView::take(Units& out) const {
    if (m_tag != Tag::string) return false;
    const std::size_t count = textSize();
    const std::size_t size = headSize + count * sizeof(wchar_t);
    out = {m_source->need(size) + headSize, count};
    m_source->skip(size);
    return true;
}

ByteSource ByteView::body() const {
    constexpr std::uint64_t small = 1 << 16;
    const std::uint64_t size = at().length();
    if (size > small) throw NotInOnePass{};
    return {m_source->need(headSize + size) + headSize, static_cast<std::size_t>(size)};
}

std::size_t ByteView::size() const {
    std::size_t count = 0;
    for (ByteSource elements = body(); elements.available() != 0; ++count) elements.passValue();
    return count;
}

bool ByteView::takeMember(std::wstring_view key, std::wstring& out) const {
    for (ByteSource all = body(); all.available() != 0; all.passValue()) {
        std::wstring name;
        if (!ByteView(all).take(name)) throw NotInOnePass{};
        if (name == key) return ByteView(all).take(out);
    }
    return false;
}

const JsonValue& ByteView::dom(JsonDocument& scratch) const {
    const auto size = static_cast<std::size_t>(at().valueSize());
    const char* const bytes = m_source->need(size);
    ByteSource value(bytes, size);
    value.passValue(); // nothing but exact values gets past
    JsonBinaryIOImpl::decode(bytes, size, scratch, scratch.GetAllocator());
    m_source->skip(size);
    return scratch;
}

} // namespace zeq::json
