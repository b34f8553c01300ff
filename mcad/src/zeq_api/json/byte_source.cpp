// The window, and the walk past what nobody wants.
#include "zeq_api/json/byte_source.h"

#include <utility>
#include <vector>

namespace zeq::json {

namespace {

constexpr std::size_t headSize = 1 + sizeof(std::uint64_t);

} // namespace

void ByteSource::fetch(std::size_t size) {
    if (!m_input || size > mostLeft()) throw NotInOnePass{};
    const std::size_t left = available();
    if (size > m_capacity) {
        m_capacity = std::max(size, 2 * m_capacity);
        std::unique_ptr<char[]> larger(new char[m_capacity]);
        std::memcpy(larger.get(), m_next, left);
        m_window = std::move(larger);
    } else {
        std::memmove(m_window.get(), m_next, left);
    }
    const std::size_t count = m_input(m_window.get() + left, m_capacity - left);
    m_next = m_window.get();
    m_end = m_next + left + count;
    m_endPosition += count;
    if (size > left + count) throw NotInOnePass{};
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
    m_next = m_end;
    while (m_input && m_input(m_window.get(), m_capacity) == m_capacity) {
    }
}

} // namespace zeq::json
