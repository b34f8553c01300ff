// The window, and the walk past what nobody wants.
#include "zeq_api/json/byte_source.h"

#include <utility>
#include <vector>

namespace zeq::json {

namespace {

constexpr std::size_t headSize = 1 + sizeof(std::uint64_t);

} // namespace

/// Moves what is left, and the history before it, to the front of a window of that capacity. Whether more could be
/// filled.
bool ByteSource::fill(std::size_t capacity) {
    const std::size_t left = available();
    const std::size_t kept =
        std::min(static_cast<std::size_t>(m_end - m_window.get()), std::max(left, historySize));
    std::unique_ptr<char[]> larger;
    if (capacity > m_capacity) larger.reset(new char[historySize + capacity]);
    char* const window = larger ? larger.get() : m_window.get();
    std::memmove(window, m_end - kept, kept);
    if (larger) m_window = std::move(larger);
    m_capacity = capacity;

    const std::size_t room = historySize + capacity - kept;
    const std::size_t count = m_input(window + kept, room);
    m_end = window + kept + count;
    m_next = m_end - count - left;
    m_endPosition += count;
    return count == room;
}

void ByteSource::fetch(std::size_t size) {
    if (!m_input || size > mostLeft()) throw NotInOnePass{};
    fill(size > m_capacity ? std::max(size, 2 * m_capacity) : m_capacity);
    if (size > available()) throw NotInOnePass{};
}

void ByteSource::pass(std::uint64_t size) {
    while (size > available()) {
        size -= available();
        m_next = m_end;
        need(1);
    }
    skip(size);
}

void ByteSource::passName() {
    if (tag() != Tag::string) throw NotInOnePass{};
    pass(valueSize());
}

std::uint64_t ByteSource::valueSize() {
    switch (tag()) {
    case Tag::null:
    case Tag::boolFalse:
    case Tag::boolTrue:
        return 1;
    case Tag::int32:
    case Tag::uint32:
        return 1 + 4;
    case Tag::int64:
    case Tag::uint64:
    case Tag::real:
        return 1 + 8;
    case Tag::string:
        return headSize + length(sizeof(wchar_t)) * sizeof(wchar_t);
    default:
        return headSize + length();
    }
}

void ByteSource::passValue() {
    struct Container {
        std::uint64_t end;
        bool isObject;
    };
    std::vector<Container> open;
    for (;;) {
        const Tag next = tag();
        const std::uint64_t size = valueSize();
        if (next == Tag::object || next == Tag::array) {
            open.push_back({position() + size, next == Tag::object});
            pass(headSize);
        } else {
            pass(size);
        }
        while (!open.empty() && position() == open.back().end) open.pop_back();
        if (open.empty()) return;
        if (position() > open.back().end) throw NotInOnePass{};
        if (open.back().isObject) passName();
    }
}

void ByteSource::drain() {
    if (!m_input) return;
    do m_next = m_end;
    while (fill(m_capacity));
    m_next = m_end;
}

} // namespace zeq::json
