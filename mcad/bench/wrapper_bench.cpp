// A product structure through the wrapper and its shared buffer, there and back, by number of references; and
// the same through the document model, for comparison with the direct way.
#include <memory>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/zeq_api.h"

namespace {

std::shared_ptr<zeq::ExcProductStructure> product(long references) {
    auto made = std::make_shared<zeq::ExcProductStructure>();
    made->setProductName(L"benchmark");
    auto block = std::make_shared<zeq::ExcBlock>();
    block->setId(1);
    for (long i = 0; i < references; ++i) {
        auto reference = std::make_shared<zeq::ExcBlockReference>();
        const std::wstring number = std::to_wstring(i);
        reference->setGuid(L"1b4e28ba-2fa1-41d2-883f-" + std::wstring(12 - number.size(), L'0') + number);
        reference->setPersistentId(L"0:1:1:" + number);
        reference->setName(L"Bolt M8x40:" + number);
        reference->setBlockId(static_cast<unsigned>(i % 100) + 2);
        zeq::ExcTransformation placed;
        placed.translation().set(0.5 * static_cast<double>(i), 12.25 / static_cast<double>(i + 1), -3.0);
        reference->setTransformation(placed);
        reference->setColor({static_cast<std::uint16_t>(i % 256), 128, 64});
        block->addBlockReference(std::move(reference));
    }
    made->addBlock(std::move(block));
    return made;
}

void writeAndRead(benchmark::State& state) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(product(state.range(0)));
    for (auto _ : state) {
        std::wstringstream stream;
        wrapper.writeObject(stream);
        zeq::ExchangeObjectWrapper received;
        received.readObject(stream);
        benchmark::DoNotOptimize(received.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(writeAndRead)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

void write(benchmark::State& state) {
    zeq::ExchangeObjectWrapper wrapper;
    const auto sent = product(state.range(0));
    wrapper.set(sent);
    for (auto _ : state) {
        std::wstringstream stream;
        wrapper.writeObject(stream);
        state.PauseTiming();
        zeq::ExchangeObjectWrapper received;
        received.setDelayedLoading(true);
        received.readObject(stream);
        mp::removeObject(received.get()->source());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(write)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

void read(benchmark::State& state) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(product(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        std::wstringstream stream;
        wrapper.writeObject(stream);
        state.ResumeTiming();
        zeq::ExchangeObjectWrapper received;
        received.readObject(stream);
        benchmark::DoNotOptimize(received.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(read)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

void encodeAndDecodeDirectly(benchmark::State& state) {
    const auto sent = product(state.range(0));
    for (auto _ : state) {
        std::string bytes;
        zeq::json::ByteSink sink(bytes);
        zeq::json::writeNested(*sent, sink);
        zeq::ExcProductStructure received;
        if (zeq::json::ByteView::isExact(bytes.data(), bytes.size()))
            zeq::json::readNested(received, zeq::json::ByteView(bytes.data()));
        benchmark::DoNotOptimize(received.blocks());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(encodeAndDecodeDirectly)->Arg(100000)->Unit(benchmark::kMillisecond);

void encodeAndDecodeThroughDocuments(benchmark::State& state) {
    const auto sent = product(state.range(0));
    for (auto _ : state) {
        std::string bytes;
        {
            zeq::JsonDocument document;
            sent->writeObject(document, document.GetAllocator());
            zeq::JsonBinaryIO::encode(document, bytes);
        }
        zeq::JsonDocument document;
        zeq::JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
        zeq::ExcProductStructure received;
        received.readObject(document);
        benchmark::DoNotOptimize(received.blocks());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(encodeAndDecodeThroughDocuments)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
