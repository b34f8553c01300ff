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

std::size_t numberSize(Tag tag) { return tag == Tag::int32 || tag == Tag::uint32 ? 4 : 8; }

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

bool ByteView::isExact(const char* data, std::size_t size) {
    struct Container {
        const char* end;
        bool isObject;
        bool nameNext; // the next value is a member's name
    };
    std::vector<Container> open;
    for (const char* at = data;;) {
        const char* const end = open.empty() ? data + size : open.back().end;
        if (at == end) return false;
        const std::size_t left = static_cast<std::size_t>(end - at) - 1;
        const Tag tag = static_cast<Tag>(*at);
        if (!open.empty() && open.back().nameNext && tag != Tag::string) return false;
        switch (tag) {
        case Tag::null:
        case Tag::boolFalse:
        case Tag::boolTrue:
            at += 1;
            break;
        case Tag::int32:
        case Tag::uint32:
        case Tag::int64:
        case Tag::uint64:
        case Tag::real:
            if (left < numberSize(tag)) return false;
            at += 1 + numberSize(tag);
            break;
        case Tag::object:
        case Tag::array:
        case Tag::string: {
            if (left < sizeof(Length)) return false;
            const Length length = ByteView(at).load<Length>();
            const Length room = left - sizeof(Length);
            at += headSize;
            if (tag == Tag::string) {
                if (length > room / sizeof(wchar_t)) return false;
                at += length * sizeof(wchar_t);
                break;
            }
            if (length > room) return false;
            if (length == 0) break;
            open.push_back({at + length, tag == Tag::object, tag == Tag::object});
            continue;
        }
        default:
            return false;
        }
        // A whole value ends here, and with the last child its container ends too.
        for (;; open.pop_back()) {
            if (open.empty()) return true;
            Container& container = open.back();
            if (container.nameNext && at == container.end) return false;
            if (at == container.end) continue;
            container.nameNext = container.isObject && !container.nameNext;
            break;
        }
    }
}

Kind ByteView::kind() const {
    switch (tag()) {
    case Tag::null:
        return Kind::null;
    case Tag::boolFalse:
    case Tag::boolTrue:
        return Kind::boolean;
    case Tag::object:
        return Kind::object;
    case Tag::array:
        return Kind::array;
    case Tag::string:
        return Kind::string;
    default:
        return Kind::number;
    }
}

bool ByteView::take(bool& out) const {
    if (tag() != Tag::boolFalse && tag() != Tag::boolTrue) return false;
    out = tag() == Tag::boolTrue;
    return true;
}

template <class Integer>
bool ByteView::takeInteger(Integer& out) const {
    const auto assign = [&out](auto number) {
        if (!std::in_range<Integer>(number)) return false;
        out = static_cast<Integer>(number);
        return true;
    };
    switch (tag()) {
    case Tag::int32:
        return assign(load<int>());
    case Tag::uint32:
        return assign(load<unsigned>());
    case Tag::int64:
        return assign(load<long long>());
    case Tag::uint64:
        return assign(load<unsigned long long>());
    default:
        return false;
    }
}

bool ByteView::take(int& out) const { return takeInteger(out); }
bool ByteView::take(unsigned& out) const { return takeInteger(out); }
bool ByteView::take(long long& out) const { return takeInteger(out); }
bool ByteView::take(unsigned long long& out) const { return takeInteger(out); }

bool ByteView::take(double& out) const {
    if (tag() != Tag::real) return false;
    out = load<double>();
    return true;
}

bool ByteView::take(std::wstring& out) const {
    if (tag() != Tag::string) return false;
    out.resize(load<Length>());
    if (!out.empty()) std::memcpy(out.data(), body(), out.size() * sizeof(wchar_t));
    return true;
}

std::size_t ByteView::size() const {
    std::size_t count = 0;
    forEach([&count](const ByteView&) { return ++count, true; });
    return count;
}

const char* ByteView::next() const {
    switch (tag()) {
    case Tag::null:
    case Tag::boolFalse:
    case Tag::boolTrue:
        return m_at + 1;
    case Tag::object:
    case Tag::array:
        return body() + load<Length>();
    case Tag::string:
        return body() + load<Length>() * sizeof(wchar_t);
    default:
        return m_at + 1 + numberSize(tag());
    }
}

std::optional<ByteView> ByteView::Members::find(std::wstring_view key) {
    for (const char* at = m_next; at != m_end;) {
        const ByteView name(at);
        const ByteView value(name.next());
        const char* const next = value.next();
        if (name.load<Length>() == key.size() &&
            std::memcmp(name.body(), key.data(), key.size() * sizeof(wchar_t)) == 0) {
            if (at == m_next) m_next = next;
            return value;
        }
        at = next;
    }
    return std::nullopt;
}

const JsonValue& ByteView::dom(JsonDocument& scratch) const {
    JsonBinaryIOImpl::decode(m_at, static_cast<std::size_t>(next() - m_at), scratch, scratch.GetAllocator());
    return scratch;
}

} // namespace zeq::json
