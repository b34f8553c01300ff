// The translator's channel to its host: what it leaves behind when the host does not take what it sends.
#include "convexor/channel.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace {

using namespace zeq;

/// A product that can be told from all others by its name.
std::shared_ptr<ExcProductStructure> markedProduct() {
    auto product = std::make_shared<ExcProductStructure>();
    product->setProductName(IExchangeObject::generateUUID());
    return product;
}

/// The name of the shared buffer that holds the product; empty when there is none.
std::string bufferOf(const ExcProductStructure& product) {
    const std::wstring& name = product.productName();
    const std::string mark(reinterpret_cast<const char*>(name.data()), name.size() * sizeof(wchar_t));
    for (const auto& entry : std::filesystem::directory_iterator(mp::sharedDirectory())) {
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        if (!Compressor::isCompressed(bytes.data(), bytes.size())) continue;
        std::string content;
        try {
            Compressor::decompress(content, bytes.data(), bytes.size());
        } catch (const std::exception&) {
            continue; // somebody else's, half written
        }
        if (content.find(mark) != content.npos) return entry.path().filename().string();
    }
    return {};
}

struct Pipe {
    Pipe() {
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) std::abort();
    }
    std::array<int, 2> ends;
};

TEST(Channel, LeavesABufferForAHostThatReadsOfIt) {
    const auto product = markedProduct();
    const Pipe pipe;
    convexor::Channel(pipe.ends[1]).send(product);
    const std::string buffer = bufferOf(*product);
    EXPECT_NE(buffer, "");
    mp::SharedMemoryObject::remove(mp::toWideString(buffer));
}

TEST(ChannelDeathTest, EndsQuietlyWithoutABufferWhenTheHostIsGone) {
    const auto product = markedProduct();
    EXPECT_EXIT(
        {
            std::signal(SIGPIPE, SIG_IGN);
            const Pipe pipe;
            ::close(pipe.ends[0]);
            convexor::Channel(pipe.ends[1]).send(product);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(bufferOf(*product), "");
}

TEST(ChannelDeathTest, EndsWithoutABufferWhenTheHostHasStoppedReading) {
    const auto product = markedProduct();
    EXPECT_EXIT(
        {
            const Pipe pipe;
            ::fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK);
            while (::write(pipe.ends[1], "x", 1) == 1) {
            }
            ::fcntl(pipe.ends[1], F_SETFL, 0);
            convexor::Channel channel(pipe.ends[1]);
            std::thread([&channel, product] { channel.send(product); }).detach();
            while (bufferOf(*product).empty()) std::this_thread::yield();
            channel.endProcess();
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(bufferOf(*product), "");
}

} // namespace
