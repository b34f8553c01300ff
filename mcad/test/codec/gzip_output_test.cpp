// What is compressed while it is written is what is written plainly, for zlib and for the library.
#include "zeq_api/codec/gzip_output.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "codec/by_zlib.h"
#include "codec/made_document.h"
#include "zeq_api/codec/compressor.h"

namespace zeq {
namespace {

template <class Output, class Write, class... Sizes>
std::string writtenTo(Write&& write, Sizes... sizes) {
    std::string out;
    Output output(
        [&out](const char* bytes, std::size_t size, std::uint64_t at) {
            EXPECT_LE(at, out.size()) << "a hole is left";
            out.replace(at, size, bytes, size);
        },
        sizes...);
    json::ByteSink sink(output);
    write(sink);
    sink.finish();
    return out;
}

/// The compressed size.
template <class Write>
std::size_t expectSame(Write&& write, detail::GzipSizes sizes = {}) {
    const std::string plain = writtenTo<json::PlainOutput>(write);
    const std::string packed = writtenTo<detail::GzipOutput>(write, sizes);
    EXPECT_TRUE(test::zlibInflate(packed.data(), packed.size()) == plain) << "zlib reads " << plain.size();
    std::string unpacked;
    Compressor::decompress(unpacked, packed.data(), packed.size());
    EXPECT_TRUE(unpacked == plain) << "the library reads " << plain.size();
    return packed.size();
}

TEST(GzipOutput, AnyDocumentComesBack) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        const std::size_t size = std::size_t{1} << (6 + seed % 16);
        expectSame(
            [=](json::ByteSink& sink) {
                std::mt19937 random(seed);
                test::writeMadeDocument(
                    sink, [&random](std::size_t below) { return random() % below; }, size);
            },
            seed % 3 == 0 ? detail::GzipSizes{} : detail::GzipSizes{1 << 15, 1 << 14});
    }
}

TEST(GzipOutput, NestingIsNoLimit) {
    constexpr std::size_t levels = 30'000; // each has a length that is known only at the end
    const std::size_t size = expectSame([](json::ByteSink& sink) {
        std::vector<json::ByteSink::Body> open;
        for (std::size_t level = 0; level < levels; ++level) {
            open.push_back(sink.open(json::Tag::object));
            sink.name(L"level");
            sink.value(static_cast<int>(level));
            sink.name(L"children");
            open.push_back(sink.open(json::Tag::array));
        }
        for (; !open.empty(); open.pop_back()) sink.close(open.back());
    });
    EXPECT_LT(size, levels * 60);
}

TEST(GzipOutput, LengthsThatArePatchedAreNotCopied) {
    // Bytes like those of a length that is not known, behind lengths that were not.
    expectSame([](json::ByteSink& sink) {
        sink.array([](json::ByteSink& outer) {
            for (int i = 0; i < 100; ++i)
                outer.element([i](json::ByteSink& element) {
                    element.array([i](json::ByteSink& inner) {
                        for (int k = 0; k < (i == 99 ? 30'000 : 50); ++k) {
                            inner.value(-1);
                            inner.value(-1LL - (1LL << 40) * (k % 2));
                            inner.value(std::wstring_view(L"\xFFFF\xFFFF"));
                        }
                    });
                });
        });
    });
}

TEST(GzipOutput, WhatRepeatsIsSmall) {
    struct Case {
        const char* name;
        double most; ///< of the plain size
        std::function<void(json::ByteSink&)> write;
    };
    const auto base64 = [](const std::vector<int>& values) {
        return [values](json::ByteSink& sink) {
            const std::size_t size = values.size() * sizeof(int);
            sink.text(Base64::encodedSize(size), [&](char* to, std::size_t first, std::size_t count) {
                const std::size_t from = first / 4 * 3;
                Base64::encodeUnits(to, reinterpret_cast<const char*>(values.data()) + from,
                                    std::min(count / 4 * 3, size - from));
            });
        };
    };
    std::vector<int> noise, triangles;
    std::mt19937 random(1);
    for (int i = 0; i < 200'000; ++i) noise.push_back(static_cast<int>(random()));
    for (int i = 0; i < 40'000; ++i)
        for (const int value : {4, 3, i, i + 1, i + 100}) triangles.push_back(value);
    const Case cases[] = {
        {"records", 0.05,
         [](json::ByteSink& sink) {
             sink.array([](json::ByteSink& array) {
                 for (int i = 0; i < 10'000; ++i)
                     array.object([i](json::ByteSink& object) {
                         for (const std::wstring_view name : {L"identifier", L"block", L"unit of length"})
                             object.member(name, [i](json::ByteSink& to) { to.value(i % 100); });
                         object.member(L"label", [i](json::ByteSink& to) {
                             to.value(std::wstring_view(L"part " + std::to_wstring(i)));
                         });
                     });
             });
         }},
        {"noise", 0.32, base64(noise)},
        {"triangles", 0.22, base64(triangles)},
        {"zeros", 0.02, base64(std::vector<int>(200'000))},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const auto plain = static_cast<double>(writtenTo<json::PlainOutput>(one.write).size());
        EXPECT_LT(static_cast<double>(expectSame(one.write)) / plain, one.most);
    }
}

} // namespace
} // namespace zeq
