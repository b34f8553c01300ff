// Compression against zlib itself: what either writes the other reads, and damage is reported in zlib's
// words. Built twice: with and without the fast codec. Compressed bytes are never compared.
#include "zeq_api/codec/compressor.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <zlib.h>

#include "codec/by_zlib.h"
#include "support/log_capture.h"

namespace zeq {
namespace {

using test::zlibDeflate;

constexpr int zlibFormat = 15;
constexpr int gzipFormat = 31;

std::string compressed(const std::string& data, int level = -1) {
    std::string out = "old";
    Compressor::compress(out, data.data(), data.size(), level);
    return out;
}

/// What decompression gives, errors included.
std::string decompressed(const std::string& data) {
    try {
        std::string out = "old";
        Compressor::decompress(out, data.data(), data.size());
        return out;
    } catch (const std::runtime_error& error) {
        return std::string("error: ") + error.what();
    }
}

std::string zlibInflate(const std::string& data) { return test::zlibInflate(data.data(), data.size()); }

std::string noise(std::size_t size) {
    std::mt19937 random(size);
    std::string data(size, '\0');
    for (char& c : data) c = static_cast<char>(random());
    return data;
}

std::vector<std::string> samples() {
    std::string wide;
    for (const char c : noise(300'000)) wide.append({static_cast<char>('A' + (c & 31)), 0, 0, 0});
    return {"",
            "a",
            "abcabcabcabc",
            noise(1000),
            noise(1 << 18),
            std::string((1 << 18) + 1, 'x'),
            std::string(3'000'000, '\0'),
            wide};
}

TEST(Compressor, ZlibReadsWhatAnyLevelWrites) {
    for (const std::string& data : samples()) {
        for (int level = -1; level <= 9; ++level) {
            const std::string packed = compressed(data, level);
            EXPECT_TRUE(Compressor::isCompressed(packed.data(), packed.size()));
            EXPECT_EQ(packed.substr(0, 2), "\x1F\x8B");
            EXPECT_TRUE(zlibInflate(packed) == data) << "level " << level << ", " << data.size() << " bytes";
            EXPECT_TRUE(decompressed(packed) == data) << "level " << level << ", " << data.size() << " bytes";
        }
    }
}

TEST(Compressor, ReadsWhatZlibWritesInBothFormats) {
    for (const std::string& data : samples()) {
        for (const int format : {zlibFormat, gzipFormat}) {
            for (const int level : {0, 1, 6, 9})
                EXPECT_TRUE(decompressed(zlibDeflate(data, level, format)) == data);
        }
    }
    gz_header header{};
    header.extra = reinterpret_cast<Bytef*>(const_cast<char*>("extra"));
    header.extra_len = 5;
    header.name = reinterpret_cast<Bytef*>(const_cast<char*>("name"));
    header.comment = reinterpret_cast<Bytef*>(const_cast<char*>("comment"));
    header.hcrc = 1;
    EXPECT_EQ(decompressed(zlibDeflate("with a full header", 6, gzipFormat, Z_DEFAULT_STRATEGY, &header)),
              "with a full header");
    EXPECT_EQ(decompressed(zlibDeflate("a small window", 6, 9)), "a small window");
}

TEST(Compressor, BothContainersGetTheSame) {
    const std::string data = noise(5000) + std::string(5000, 'y');
    std::vector<char> packed{'o', 'l', 'd'};
    std::vector<char> unpacked{'o', 'l', 'd'};
    Compressor::compress(packed, data.data(), data.size(), -1);
    Compressor::decompress(unpacked, packed.data(), packed.size());
    EXPECT_EQ(std::string(packed.begin(), packed.end()), compressed(data));
    EXPECT_EQ(std::string(unpacked.begin(), unpacked.end()), data);

    Compressor::makePlain(packed);
    const char* const place = packed.data();
    Compressor::makePlain(packed); // which are plain by now
    EXPECT_EQ(packed, unpacked);
    EXPECT_EQ(packed.data(), place) << "plain bytes are not copied";
}

TEST(Compressor, AnUnknownLevelIsRefused) {
    for (const int level : {-2, 10, 1000}) {
        try {
            compressed("data", level);
            ADD_FAILURE() << level;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "deflate init failed");
        }
    }
}

TEST(Compressor, WhatFollowsTheFirstStreamIsIgnored) {
    const std::string one = compressed("one");
    EXPECT_EQ(decompressed(one + compressed("two")), "one");
    EXPECT_EQ(decompressed(one + "garbage"), "one");
    EXPECT_EQ(decompressed(zlibDeflate("one", 6, zlibFormat) + "garbage"), "one");
}

TEST(Compressor, TruncatedDataGivesWhatWasDecoded) {
    EXPECT_EQ(decompressed(""), "");
    std::vector<char> out{'o', 'l', 'd'};
    Compressor::decompress(out, nullptr, 0);
    EXPECT_TRUE(out.empty());

    const std::string data = noise(2000) + std::string(3000, 'z') + noise(100);
    for (const std::string& packed :
         {compressed(data), zlibDeflate(data, 6, gzipFormat), zlibDeflate(data, 0, zlibFormat)}) {
        for (std::size_t size = 0; size < packed.size(); ++size) {
            const std::string unpacked = decompressed(packed.substr(0, size));
            ASSERT_EQ(unpacked, zlibInflate(packed.substr(0, size))) << size;
            ASSERT_EQ(unpacked, data.substr(0, unpacked.size())) << size;
        }
    }
}

TEST(Compressor, DamageIsReportedAsZlibReportsIt) {
    const std::string data = "some text, some text, some other text " + noise(100);
    std::string dictionaryNeeded = zlibDeflate(data, 6, zlibFormat);
    dictionaryNeeded[1] = '\xBB';
    EXPECT_EQ(decompressed(dictionaryNeeded), "error: inflate failed");
    EXPECT_EQ(decompressed("no compressed data"), "error: incorrect header check");

    const std::string packed[] = {compressed(data), zlibDeflate(data, 6, gzipFormat),
                                  zlibDeflate(data, 6, zlibFormat), zlibDeflate(data, 0, gzipFormat)};
    for (std::string damaged : packed) {
        for (char& byte : damaged) {
            for (int bit = 0; bit < 8; ++bit) {
                byte = static_cast<char>(byte ^ 1 << bit);
                ASSERT_EQ(decompressed(damaged), zlibInflate(damaged))
                    << &byte - damaged.data() << ", bit " << bit;
                byte = static_cast<char>(byte ^ 1 << bit);
            }
        }
    }
}

TEST(Compressor, AFalseSizeInTheTrailerIsOnlyAnError) {
    std::string packed = compressed("short");
    packed.replace(packed.size() - 4, 4, "\xFF\xFF\xFF\xFF");
    std::string out;
    EXPECT_THROW(Compressor::decompress(out, packed.data(), packed.size()), std::runtime_error);
    EXPECT_LT(out.capacity(), 1u << 20) << "the size was believed";
    EXPECT_EQ(decompressed(packed), "error: incorrect length check");
}

TEST(Compressor, MoreThanFourGibibytesAreCompressed) {
    // Untouched pages are read as zeros and take no memory; what was written is counted, not kept.
    constexpr std::size_t size = (std::size_t{1} << 32) + 12345;
    void* const zeros = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(zeros, MAP_FAILED);
    std::string packed;
    Compressor::compress(packed, static_cast<const char*>(zeros), size, -1);
    munmap(zeros, size);

    z_stream stream{};
    ASSERT_EQ(inflateInit2(&stream, gzipFormat), Z_OK);
    std::vector<Bytef> chunk(1 << 20);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    int result;
    do {
        stream.next_out = chunk.data();
        stream.avail_out = static_cast<uInt>(chunk.size());
        result = inflate(&stream, Z_NO_FLUSH);
    } while (result == Z_OK);
    EXPECT_EQ(result, Z_STREAM_END);
    EXPECT_EQ(stream.total_out, size);
    inflateEnd(&stream);
}

TEST(Compressor, KnowsCompressedDataByTheirFirstBytes) {
    const struct {
        std::string data;
        bool expected;
    } cases[] = {
        {"\x1F\x8B\x08", true}, {"\x78\x01 ", true},  {"\x78\x5E ", true},  {"\x78\x9C ", true},
        {"\x78\xDA ", true},    {"\x78\x02 ", false}, {"\x1F\x8C ", false}, {"\x79\x9C ", false},
        {"\x1F\x8B", false},    {"", false},
    };
    for (const auto& [data, expected] : cases)
        EXPECT_EQ(Compressor::isCompressed(data.data(), data.size()), expected)
            << testing::PrintToString(data);
    EXPECT_FALSE(Compressor::isCompressed(nullptr, 3));
}

TEST(Compressor, EachCallIsTraced) {
    const std::string packed = compressed("data");
    std::vector<char> bytes;
    std::string text;
    test::LogCapture log(6);
    Compressor::compress(bytes, "data", 4, 1);
    Compressor::compress(text, "data", 4, 1);
    Compressor::decompress(bytes, packed.data(), packed.size());
    Compressor::decompress(text, packed.data(), packed.size());
    const char* const expected[] = {
        "static void zeq::Compressor::compress(std::vector<byte> &, const byte *, std::size_t, int)",
        "static void zeq::Compressor::compress(std::string &, const byte *, std::size_t, int)",
        "static void zeq::Compressor::decompress(std::vector<byte> &, const byte *, std::size_t)",
        "static void zeq::Compressor::decompress(std::string &, const byte *, std::size_t)",
    };
    const std::vector<test::LogLine> lines = log.take();
    ASSERT_EQ(lines.size(), std::size(expected));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].level, 6);
        EXPECT_TRUE(lines[i].text.starts_with("mcad/src/zeq_api/zeq_api_exchange_object(")) << lines[i].text;
        EXPECT_TRUE(lines[i].text.ends_with(std::string("): ") + expected[i])) << lines[i].text;
    }
}

} // namespace
} // namespace zeq
