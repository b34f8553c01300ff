// Rows of forms for large arrays of numbers, which travel as Base64 text of their bytes. They go straight between
// the vector and the text. Internal.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <vector>

#include "mv_cvx/logger.h"
#include "zeq_api/codec/base64.h"
#include "zeq_api/json/rows.h"

namespace zeq::detail {

static_assert(std::endian::native == std::endian::little, "bulk arrays travel with the low byte first");

template <class T>
concept BulkElement = sizeof(T) == 4 && (std::same_as<T, float> || std::same_as<T, int>);

/// Replaces the values by those of a JSON array; an element of another type gives 0.
template <BulkElement T, class View>
void takeNumbers(const View& array, std::vector<T>& out) {
    out.clear();
    array.forEach([&out](const auto& element) {
        std::conditional_t<std::is_same_v<T, float>, double, int> number = 0;
        element.take(number);
        out.push_back(static_cast<T>(number));
        return true;
    });
}

template <BulkElement T>
json::Shape numberShape() {
    return json::Codec<std::conditional_t<std::is_same_v<T, float>, double, int>>::shape();
}

/// Replaces the values by those that the text encodes; a last, incomplete one is dropped.
template <BulkElement T, class View>
void takeBase64(const View& string, std::vector<T>& out) {
    out.resize((Base64::decodedSize(string.textSize()) + 2) / sizeof(T) + 1);
    std::size_t size = 0;
    bool goesOn = true; // until there is a foreign character
    string.forEachPiece([&](const json::Units& text) {
        if (!goesOn) return;
        const auto [bytes, units] =
            Base64::decodeUnits(reinterpret_cast<char*>(out.data()) + size, text.bytes, text.count);
        size += bytes;
        goesOn = units == text.count;
    });
    out.resize(size / sizeof(T));
}

/// Writes `size` bytes; where they are, `source()` says when they are wanted.
template <class Sink, class Source>
void giveBase64(Sink& sink, std::size_t size, Source&& source) {
    sink.text(Base64::encodedSize(size), [&](char* to, std::size_t first, std::size_t count) {
        const std::size_t from = first / 4 * 3; // a part begins with a whole group
        Base64::encodeUnits(to, reinterpret_cast<const char*>(source()) + from,
                            std::min(count / 4 * 3, size - from));
    });
}

template <class This, BulkElement T>
struct Bulk {
    using Owner = This;
    std::wstring_view key;
    std::vector<T> This::*member;
    const char* whenMistyped;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (!value) return;
        if (value->kind() == json::Kind::array)
            takeNumbers(*value, object.*member);
        else if (value->kind() == json::Kind::string)
            takeBase64(*value, object.*member);
        else
            ZEQ_LOG(Error) << whenMistyped;
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        const std::vector<T>& values = object.*member;
        if (values.empty()) return;
        sink.member(key, [&values](auto&& to) {
            giveBase64(to, values.size() * sizeof(T), [&values] { return values.data(); });
        });
    }
    json::MemberShape describe() const { return {key, json::bulkShape(numberShape<T>()), false}; }
};

/// Written as Base64, read from that or from an array; anything else logs the error.
template <class This, class T>
consteval auto bulk(std::wstring_view key, std::vector<T> This::*member, const char* whenMistyped) {
    return Bulk<This, T>{key, member, whenMistyped};
}

template <class This, BulkElement T>
struct Numbers {
    using Owner = This;
    std::wstring_view key;
    std::vector<T> This::*member;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (!value || value->kind() != json::Kind::array || value->isEmpty()) return;
        takeNumbers(*value, object.*member);
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        const std::vector<T>& values = object.*member;
        if (values.empty()) return;
        sink.member(key, [&values](auto&& to) {
            to.array([&values](auto& array) {
                for (const T value : values)
                    array.element([value](auto&& element) {
                        element.value(
                            static_cast<std::conditional_t<std::is_same_v<T, float>, double, int>>(value));
                    });
            });
        });
    }
    json::MemberShape describe() const { return {key, json::arrayShape(numberShape<T>()), false}; }
};

/// A plain array, replaced by one that is not empty.
template <class This, class T>
consteval auto numbers(std::wstring_view key, std::vector<T> This::*member) {
    return Numbers<This, T>{key, member};
}

} // namespace zeq::detail
