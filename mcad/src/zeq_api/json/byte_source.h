// The bytes of binary JSON from front to back: in memory, or through a window into something larger.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>

#include "zeq_api/json/binary_format.h"

namespace zeq::json {

/// Thrown when bytes cannot be read in one pass: they are not those of one whole value in which every length is exact
/// and every member name a string, or not in the order in which a form asks for them. The document model takes them,
/// or says what is wrong. No std::exception: nobody but the maker of a ByteSource is to catch it.
struct NotInOnePass {};

class ByteSource {
public:
    /// Fills `out` with the next bytes and says how many there were: fewer than `size` only at the end. The last
    /// `historySize` bytes that it gave before, or as many as there were, stand right before `out`.
    using Input = std::function<std::size_t(char* out, std::size_t size)>;
    static constexpr std::size_t historySize = 1 << 15;

    /// Bytes that lie in memory and stay there.
    ByteSource(const char* data, std::size_t size)
        : m_next(data), m_end(data + size), m_endPosition(size), m_most(size) {}
    /// At most `most` bytes of the input, which nothing larger is believed to hold.
    ByteSource(Input input, std::uint64_t most, std::size_t windowSize)
        : m_input(std::move(input)), m_most(most), m_capacity(windowSize),
          m_window(new char[historySize + windowSize]) {
        m_next = m_end = m_window.get();
    }

    std::uint64_t position() const { return m_endPosition - available(); }
    std::size_t available() const { return static_cast<std::size_t>(m_end - m_next); }
    /// How many bytes there can still be.
    std::uint64_t mostLeft() const { return m_most - std::min(m_most, position()); }

    /// The next `size` bytes, in one piece until anything else is asked for.
    const char* need(std::size_t size) {
        if (size > available()) fetch(size);
        return m_next;
    }
    /// Goes on by bytes that need() has given.
    void skip(std::size_t size) { m_next += size; }
    void pass(std::uint64_t size);

    Tag tag() {
        const auto byte = static_cast<unsigned char>(*need(1));
        if (byte >= tagCount) throw NotInOnePass{};
        return static_cast<Tag>(byte);
    }
    /// The number behind the next tag.
    std::uint64_t number() {
        std::uint64_t behind;
        std::memcpy(&behind, need(1 + sizeof behind) + 1, sizeof behind);
        return behind;
    }
    /// The same, if so many things of that size can follow.
    std::uint64_t length(std::size_t unit = 1) {
        const std::uint64_t things = number();
        if (things > mostLeft() / unit) throw NotInOnePass{};
        return things;
    }
    /// What the next value takes, as far as it says.
    std::uint64_t valueSize();
    /// Goes past the next value, whose every length is checked.
    void passValue();
    void passName();

    /// Visits so many units in pieces as they lie in the window, whole groups of four up to the last piece.
    template <class Visit>
    void units(std::uint64_t count, Visit&& visit) {
        constexpr std::size_t group = 4, groupSize = group * sizeof(wchar_t);
        while (count != 0) {
            if (available() < groupSize) need(std::min<std::uint64_t>(count, group) * sizeof(wchar_t));
            const std::uint64_t piece =
                std::min<std::uint64_t>(count, std::max<std::size_t>(1, available() / groupSize) * group);
            visit(m_next, static_cast<std::size_t>(piece));
            skip(piece * sizeof(wchar_t));
            count -= piece;
        }
    }

    /// Goes on to the end of the input, whatever comes.
    void drain();

private:
    void fetch(std::size_t size);
    bool fill(std::size_t capacity);

    const char* m_next = nullptr;
    const char* m_end = nullptr;
    std::uint64_t m_endPosition = 0;
    Input m_input;
    std::uint64_t m_most;
    std::size_t m_capacity = 0; // besides history
    std::unique_ptr<char[]> m_window;
};

} // namespace zeq::json
