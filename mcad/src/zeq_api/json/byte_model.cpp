// The strict rules of dom_model.cpp on encoded bytes, and the check that makes it safe to read them in place.
#include "zeq_api/json/byte_model.h"

#include <limits>
#include <utility>
#include <vector>

#include "zeq_api/json/binary_dom.h"

namespace zeq::json {

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

void ByteSink::dom(const JsonValue& value) { JsonBinaryIOImpl::write(value, *this); }

void ByteSink::longText(std::wstring_view v) {
    number(Tag::string, static_cast<std::uint64_t>(v.size()));
    while (!v.empty()) {
        const std::wstring_view piece = v.substr(0, largePiece / sizeof(wchar_t));
        const std::size_t size = piece.size() * sizeof(wchar_t);
        std::memcpy(room(size), piece.data(), size);
        v.remove_prefix(piece.size());
    }
}

void ByteSink::pass() {
    const std::uint64_t end = position();
    m_output->pass(m_block);
    m_start = end - static_cast<std::uint64_t>(m_block.next - m_block.begin);
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
