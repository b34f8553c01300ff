// The decoder against zlib: what either takes the other takes, in whatever pieces it is asked for.
#include "zeq_api/codec/inflater.h"

#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "codec/inflater_check.h"
#include "codec/random_deflate.h"
#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/compressor.h"

namespace zeq {
namespace {

using test::agreesWithZlib;
using test::Inflated;
using test::inflated;
using test::RandomDeflate;
using test::Reading;
using test::zlibDeflate;
using Lengths = RandomDeflate::Lengths;

/// The number that an environment variable has.
std::uint64_t setting(const char* name, std::uint64_t otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

std::string unitsOf(std::string_view text) {
    std::string units;
    for (const char c : text) units.append({c, 0, 0, 0});
    return units;
}

/// Bytes, text, and units of Base64, more than a window of each.
std::vector<std::string> samples() {
    std::mt19937 random(7);
    std::string noise(40'000, '\0'), text, distant;
    for (char& c : noise) c = static_cast<char>(random());
    while (text.size() < 70'000)
        text += "#" + std::to_string(random() % 9000) + "=CARTESIAN_POINT('',(" + std::to_string(random()) +
                "));\n";
    std::string base64(Base64::encodedSize(noise.size()), '\0');
    Base64::encodeImpl(base64.data(), noise.data(), noise.size());
    distant = noise.substr(0, 32768) + noise.substr(0, 300) + std::string(32768 - 300, 'x') +
              noise.substr(0, 32768);
    return {"", "a", noise, text, unitsOf(text), unitsOf(base64), std::string(300'000, '\0'), distant};
}

/// Any way of asking.
Reading randomReading(RandomDeflate& random) {
    Reading reading;
    reading.blockSize = detail::Inflater::inputSlack + 1 + random.below(random.chance(4) ? 60'000 : 1000);
    reading.withVectors &= !random.chance(3);
    const unsigned most = random.chance(4) ? 7 : random.chance(2) ? 900 : 1 << 16;
    reading.size = [most, &random]() -> std::size_t { return 1 + random.below(most); };
    return reading;
}

TEST(Inflater, ReadsWhatZlibWrites) {
    RandomDeflate random(1);
    for (const std::string& data : samples()) {
        for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED}) {
            for (const int level : {0, 1, 9}) {
                for (const int windowBits : {15, 31}) {
                    const std::string packed = zlibDeflate(data, level, windowBits, strategy);
                    const Inflated expected{data, true};
                    const auto what = testing::Message() << data.size() << " bytes, strategy " << strategy
                                                         << ", level " << level << ", format " << windowBits;
                    for (const bool withVectors : {false, detail::hasVectors()})
                        ASSERT_TRUE(inflated(packed, {.withVectors = withVectors}) == expected) << what;
                    ASSERT_TRUE(inflated(packed, randomReading(random)) == expected) << what;
                }
            }
        }
    }
}

TEST(Inflater, ReadsWhatTheLibraryWrites) {
    RandomDeflate random(2);
    for (const std::string& data : samples()) {
        for (const int level : {-1, 3}) {
            std::string packed;
            Compressor::compress(packed, data.data(), data.size(), level);
            for (const bool withVectors : {false, detail::hasVectors()})
                EXPECT_TRUE(inflated(packed, {.withVectors = withVectors}) == (Inflated{data, true}));
            EXPECT_TRUE(inflated(packed + "and more", randomReading(random)) == (Inflated{data, true}));
        }
    }
}

TEST(Inflater, EveryCutAndEveryDamageIsSeen) {
    for (const std::string& data : {std::string("some text, some text, some other text"),
                                    unitsOf("VW5pdHMgb2YgQmFzZTY0VW5pdHMgb2YgQmFzZTY0")}) {
        for (const int windowBits : {15, 31}) {
            for (const int strategy : {Z_DEFAULT_STRATEGY, Z_HUFFMAN_ONLY, Z_FIXED}) {
                std::string packed = zlibDeflate(data, strategy == Z_FIXED ? 0 : 9, windowBits, strategy);
                for (std::size_t size = 0; size < packed.size(); ++size)
                    ASSERT_FALSE(inflated(packed.substr(0, size)).isWhole) << size;
                for (std::size_t i = windowBits == 31 ? 4 : 2; i < packed.size(); ++i) {
                    for (int bit = 0; bit < 8; ++bit) {
                        packed[i] = static_cast<char>(packed[i] ^ 1 << bit);
                        ASSERT_TRUE(agreesWithZlib(packed)) << "byte " << i << ", bit " << bit;
                        packed[i] = static_cast<char>(packed[i] ^ 1 << bit);
                    }
                }
            }
        }
    }
}

TEST(Inflater, OnlyPlainHeadersAreTaken) {
    const std::string packed = zlibDeflate("data", 6, 31);
    for (std::size_t i = 0; i < 4; ++i) {
        std::string other = packed;
        other[i] = static_cast<char>(other[i] ^ 1);
        EXPECT_FALSE(inflated(other).isWhole) << i;
    }
    EXPECT_FALSE(inflated(zlibDeflate("data", 6, 9)).isWhole) << "a small window";
    EXPECT_EQ(inflated("").bytes, "");
}

/// So many lengths, those that are named and zeros.
Lengths lengthsOf(std::size_t count, std::initializer_list<std::pair<std::size_t, int>> named) {
    Lengths lengths(count);
    for (const auto& [symbol, length] : named) lengths[symbol] = static_cast<std::uint8_t>(length);
    return lengths;
}

TEST(Inflater, CodeSetsAreRefusedAsZlibRefusesThem) {
    const Lengths literals = lengthsOf(257, {{'a', 1}, {256, 1}}), distances = lengthsOf(2, {{0, 1}, {1, 1}});
    const Lengths some = lengthsOf(258, {{'a', 1}, {256, 2}, {257, 2}});
    const Lengths farther =
        lengthsOf(6, {{4, 1}, {5, 1}}); // with a bit behind the code, which is that of 'a'
    using Symbols = std::vector<unsigned>;
    const struct {
        const char* name;
        Lengths literals, distances;
        Symbols symbols; // distances count from 1000 on
        bool isWhole;
    } cases[] = {
        {"complete", literals, distances, {'a', 256}, true},
        {"only the end", lengthsOf(257, {{256, 1}}), distances, {256}, true},
        {"only the end, of two bits", lengthsOf(257, {{256, 2}}), distances, {256}, false},
        {"a literal missing", lengthsOf(257, {{'a', 1}, {256, 2}}), distances, {'a', 256}, false},
        {"a long literal missing", lengthsOf(257, {{'a', 1}, {256, 15}}), distances, {'a', 256}, false},
        {"a literal too many", lengthsOf(257, {{'a', 1}, {'b', 1}, {256, 1}}), distances, {'a'}, false},
        {"no end", lengthsOf(257, {{'a', 1}, {'b', 1}}), distances, {'a'}, false},
        {"no distances", some, lengthsOf(1, {}), {'a', 256}, true},
        {"no distances, but a copy", some, lengthsOf(1, {}), {'a', 257, 256}, false},
        {"one distance", some, lengthsOf(1, {{0, 1}}), {'a', 257, 1000, 256}, true},
        {"one distance of two bits", some, lengthsOf(1, {{0, 2}}), {'a', 257, 1000, 256}, false},
        {"a distance missing", some, lengthsOf(2, {{0, 2}, {1, 1}}), {'a', 257, 1000, 256}, false},
        {"a distance too many", some, lengthsOf(3, {{0, 1}, {1, 1}, {2, 1}}), {'a', 257, 1000, 256}, false},
        {"286 literals", lengthsOf(286, {{256, 1}, {285, 1}}), distances, {256}, true},
        {"287 literals", lengthsOf(287, {{256, 1}, {286, 1}}), distances, {256}, false},
        {"30 distances", literals, lengthsOf(30, {{0, 1}, {29, 1}}), {256}, true},
        {"31 distances", literals, lengthsOf(31, {{0, 1}, {30, 1}}), {256}, false},
        {"the whole copied", some, farther, {'a', 'a', 'a', 'a', 'a', 257, 1004, 'a', 256}, true},
        {"more than the whole", some, farther, {'a', 'a', 'a', 'a', 257, 1004, 'a', 256}, false},
        {"a copy of nothing", some, distances, {257, 1000, 256}, false},
        {"a copy from before", some, distances, {'a', 257, 1001, 256}, false},
    };
    for (const auto& [name, literalLengths, distanceLengths, symbols, isWhole] : cases) {
        const std::string data =
            test::gzipOf(RandomDeflate(1).block(literalLengths, distanceLengths, symbols));
        EXPECT_EQ(test::inflatedByZlib(data).isWhole, isWhole) << name << ": the case is wrong";
        EXPECT_EQ(inflated(data).isWhole, isWhole) << name;
        EXPECT_TRUE(agreesWithZlib(data)) << name;
    }
}

// More runs, and others, can be asked for.
TEST(Inflater, RandomBlocksAreReadAsZlibReadsThem) {
    const std::uint64_t first = setting("ZEQ_INFLATER_SEED", 1), runs = setting("ZEQ_INFLATER_RUNS", 5000);
    std::uint64_t whole = 0;
    for (std::uint64_t seed = first; seed != first + runs; ++seed) {
        RandomDeflate random(seed);
        std::string data = test::gzipOf(random.blocks());
        if (random.chance(8)) { // a plain header it stays
            char& byte = data[4 + random.below(static_cast<unsigned>(data.size() - 4))];
            byte = static_cast<char>(byte ^ 1 << random.below(8));
        }
        if (random.chance(10)) data.resize(random.below(static_cast<unsigned>(data.size())));
        if (random.chance(20)) data.append(random.below(2000), 'x');
        const Inflated expected = test::inflatedByZlib(data);
        const Inflated seen = inflated(data, randomReading(random));
        ASSERT_EQ(seen.isWhole, expected.isWhole) << "seed " << seed;
        ASSERT_TRUE(!seen.isWhole || seen.bytes == expected.bytes) << "seed " << seed;
        whole += seen.isWhole;
    }
    EXPECT_GT(whole, runs / 3) << "of most of them nothing is seen";
    EXPECT_LT(whole, runs);
}

} // namespace
} // namespace zeq
