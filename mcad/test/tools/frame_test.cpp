// Frames on pipes: what survives, and what is refused.
#include "transport/frame.h"

#include <limits>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "support/child_process.h"
#include "transport/descriptor.h"
#include "transport/utf8.h"

namespace {

using namespace zeq::transport;
using namespace std::string_literals;

struct Pipe {
    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
        readEnd = Descriptor(ends[0]);
        writeEnd = Descriptor(ends[1]);
    }
    Descriptor readEnd;
    Descriptor writeEnd;
};

/// The frame of these bytes, whether or not they are UTF-8.
std::string frameOf(const std::string& body) {
    std::string frame(4, '\0');
    for (std::size_t i = 0; i < 4; ++i) frame[i] = static_cast<char>(body.size() >> 8 * i);
    return frame + body;
}

TEST(Utf8, EveryUnitHasOneEncoding) {
    const std::vector<std::pair<wchar_t, std::string>> rows{
        {0, "\0"s},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xD800, "\xED\xA0\x80"}, // a lone surrogate
        {0xDFFF, "\xED\xBF\xBF"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
        {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
        {0x200000, "\xF8\x88\x80\x80\x80"},
        {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
        {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
        {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"},
    };
    for (const auto& [unit, bytes] : rows) {
        const std::wstring text(1, unit);
        EXPECT_EQ(toUtf8(text), bytes) << std::hex << static_cast<unsigned>(unit);
        EXPECT_EQ(fromUtf8(bytes), text) << std::hex << static_cast<unsigned>(unit);
    }
    EXPECT_THROW(toUtf8(std::wstring(1, std::numeric_limits<wchar_t>::min())), EncodingError);
}

TEST(Utf8, WhatNoUnitEncodesToIsRefused) {
    const std::vector<std::string> rows{
        "\x80",                     // continuation without a start
        "a\xBF",                    //
        "\xC2",                     // cut
        "\xE2\x82",                 //
        "\xFD\xBF\xBF\xBF\xBF",     //
        "\xC2\x41",                 // something else inside
        "\xE2\x82\xC2",             //
        "\xC0\x80",                 // overlong
        "\xC1\xBF",                 //
        "\xE0\x9F\xBF",             //
        "\xF0\x8F\xBF\xBF",         //
        "\xF8\x87\xBF\xBF\xBF",     //
        "\xFC\x83\xBF\xBF\xBF\xBF", //
        "\xFE",                     // no lead byte
        "\xFF",                     //
    };
    for (const std::string& bytes : rows)
        EXPECT_THROW(fromUtf8(bytes), EncodingError) << testing::PrintToString(bytes);
}

TEST(Frame, TextsArriveWhateverThePortions) {
    const std::vector<std::wstring> texts{L"", L"{\"a\":1}", L"\x7FFFFFFF\xD800ä", std::wstring(70'000, L'x'),
                                          L"end"};
    std::string bytes;
    for (const std::wstring& text : texts) bytes += encodeFrame(text);
    for (std::size_t portion : {std::size_t{1}, std::size_t{3}, std::size_t{4096}, bytes.size()}) {
        FrameDecoder decoder;
        std::vector<std::wstring> arrived;
        for (std::size_t at = 0; at < bytes.size(); at += portion) {
            decoder.feed(std::string_view(bytes).substr(at, portion));
            for (std::wstring text; decoder.next(text);) arrived.push_back(text);
        }
        EXPECT_EQ(arrived, texts) << portion;
        EXPECT_FALSE(decoder.isWithinFrame()) << portion;
    }
}

TEST(Frame, AStreamMayEndOnlyBetweenFrames) {
    const std::string bytes = encodeFrame(L"first") + encodeFrame(L"zw\x00F6lf");
    const std::size_t firstEnd = encodeFrame(L"first").size();
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        Pipe pipe;
        ASSERT_EQ(::write(pipe.writeEnd.get(), bytes.data(), length), static_cast<ssize_t>(length));
        pipe.writeEnd.reset();
        FrameReader reader(pipe.readEnd.get());
        std::size_t frames = 0;
        std::wstring text;
        const auto readAll = [&] {
            while (reader.next(text)) ++frames;
        };
        if (length == 0 || length == firstEnd || length == bytes.size())
            EXPECT_NO_THROW(readAll()) << length;
        else
            EXPECT_THROW(readAll(), ProtocolError) << length;
        EXPECT_EQ(frames, (length >= firstEnd) + (length == bytes.size())) << length;
    }
}

TEST(Frame, WhatAFrameCannotBeIsRefused) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"\xFF\xFF\xFF\xFF"s, "a frame claims 4294967295 bytes"},
        {"\x01\x00\x00\x40"s, "a frame claims 1073741825 bytes"},
        {"Loading\nmodules"s, "text instead of a frame: 'Loading'"},
        {"\r\n\033[1mhi"s, "text instead of a frame: '\033[1mhi'"},
        {"~~~~"s, "text instead of a frame: '~~~~'"},
        {frameOf("\xC0\x80"), "malformed UTF-8: overlong sequence"},
        {frameOf("ok\xE2\x82"), "malformed UTF-8: cut sequence"},
    };
    for (const auto& [bytes, message] : rows) {
        FrameDecoder decoder;
        decoder.feed(bytes);
        std::wstring text;
        try {
            decoder.next(text);
            ADD_FAILURE() << message;
        } catch (const ProtocolError& error) {
            EXPECT_EQ(error.what(), message);
        }
    }
    // The largest length is believed, but nothing is reserved for it; and one that could be text, before a
    // document.
    for (const std::string& bytes : {"\x00\x00\x00\x40"s, "   \n"s, "   \n{"s}) {
        FrameDecoder decoder;
        decoder.feed(bytes);
        std::wstring text;
        EXPECT_FALSE(decoder.next(text)) << bytes;
    }
    EXPECT_THROW(encodeFrame(std::wstring(1, std::numeric_limits<wchar_t>::min())), ProtocolError);
}

TEST(Frame, FramesLargerThanThePipePassBetweenProcesses) {
    Pipe pipe;
    const std::wstring large(1'000'000, L'\x20AC');
    const pid_t child = zeq::test::startChild([&] {
        FrameWriter writer(pipe.writeEnd.get());
        writer.write(large);
        writer.write(L"last");
    });
    pipe.writeEnd.reset();
    FrameReader reader(pipe.readEnd.get());
    std::wstring text;
    ASSERT_TRUE(reader.next(text));
    EXPECT_TRUE(text == large);
    ASSERT_TRUE(reader.next(text));
    EXPECT_EQ(text, L"last");
    EXPECT_FALSE(reader.next(text));
    EXPECT_EQ(zeq::test::waitForChild(child), 0);
}

TEST(Frame, AWordIsNoFrameThatWasCut) {
    Pipe pipe;
    ASSERT_EQ(::write(pipe.writeEnd.get(), "hi\n", 3), 3);
    pipe.writeEnd.reset();
    std::wstring text;
    try {
        FrameReader(pipe.readEnd.get()).next(text);
        ADD_FAILURE();
    } catch (const ProtocolError& error) {
        EXPECT_STREQ(error.what(), "text instead of a frame: 'hi'");
    }
}

} // namespace
