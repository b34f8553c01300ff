// Documents of any content, made by choices that somebody else takes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "zeq_api/codec/base64.h"
#include "zeq_api/json/byte_model.h"

namespace zeq::test {

// `choose` gives a number below another.

/// Bytes that repeat themselves or do not.
template <class Choices>
std::string madeBytes(Choices& choose, std::size_t size) {
    const std::size_t period = 1 + choose(80), kind = choose(4);
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        if (kind == 1 || (kind > 1 && i < period)) bytes[i] = static_cast<char>(choose(256));
        if (kind > 1 && i >= period) bytes[i] = bytes[i - period];
        if (kind == 3 && choose(20) == 0) bytes[i] = static_cast<char>(choose(256));
    }
    return bytes;
}

/// Of a text, in units.
template <class Choices>
std::size_t madeSize(Choices& choose, std::size_t room) {
    constexpr std::size_t limits[] = {4, 40, 300, 5'000, 150'000};
    const std::size_t first = choose(6), second = choose(6);
    return choose(std::min(limits[std::min(first, second) % 5], 4 + room / 4));
}

/// Gives the sink one value, of about as many bytes as `room` says at most.
template <class Choices>
void writeMadeValue(json::ByteSink& sink, Choices& choose, std::size_t& room, int depth = 0) {
    const auto used = [&room](std::size_t size) { room -= std::min(room, size + 9); };
    switch (choose(depth < 60 ? 10 : 6)) {
    case 0:
        used(0);
        return choose(2) ? sink.null() : sink.value(choose(2) == 0);
    case 1:
        used(8);
        return sink.value(-static_cast<long long>(choose(1u << 31)) * static_cast<long long>(choose(9)));
    case 2:
        used(8);
        return sink.value(static_cast<double>(choose(1000)) / 7);
    case 3:
    case 4: {
        std::wstring text(madeSize(choose, room), L'\0');
        const std::size_t highest = choose(5) == 0 ? 0x110000 : 1 + choose(300);
        for (wchar_t& unit : text) unit = static_cast<wchar_t>(choose(highest));
        used(4 * text.size());
        return sink.value(std::wstring_view(text));
    }
    case 5: {
        const std::string bytes = madeBytes(choose, madeSize(choose, room));
        std::wstring text(Base64::encodedSize(bytes.size()), L'\0');
        Base64::encodeWide(text.data(), bytes.data(), bytes.size());
        if (choose(4) == 0 && !text.empty()) text[choose(text.size())] = static_cast<wchar_t>(choose(70'000));
        used(4 * text.size());
        return sink.text(text.size(), [&text](char* to, std::size_t first, std::size_t count) {
            std::copy_n(reinterpret_cast<const char*>(text.data() + first), 4 * count, to);
        });
    }
    case 6:
        return sink.array([&](json::ByteSink& array) {
            for (used(0); room > 0 && choose(5) != 0;)
                array.element([&](json::ByteSink& to) { writeMadeValue(to, choose, room, depth + 1); });
        });
    default:
        return sink.object([&](json::ByteSink& object) {
            constexpr std::wstring_view names[] = {L"",
                                                   L"id",
                                                   L"name",
                                                   L"transformation",
                                                   L"transformations",
                                                   L"a much longer name than all of the others"};
            for (used(0); room > 0 && choose(40) != 0;)
                object.member(names[choose(std::size(names))],
                              [&](json::ByteSink& to) { writeMadeValue(to, choose, room, depth + 1); });
        });
    }
}

/// An array of such values.
template <class Choices>
void writeMadeDocument(json::ByteSink& sink, Choices&& choose, std::size_t size) {
    sink.array([&](json::ByteSink& array) {
        while (size > 0) array.element([&](json::ByteSink& to) { writeMadeValue(to, choose, size); });
    });
}

} // namespace zeq::test
