// A product structure through the wrapper and its shared buffer, there and back, by number of references; and
// the same through the document model, for comparison with the direct way.
#include <memory>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>

#include "mp/shared_buffer.h"
#include "support/binary_form.h"
#include "workloads.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/zeq_api.h"

namespace {

void writeAndRead(benchmark::State& state) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(zeq::bench::structure(state.range(0)));
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
    const auto sent = zeq::bench::structure(state.range(0));
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
    wrapper.set(zeq::bench::structure(state.range(0)));
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
    const auto sent = zeq::bench::structure(state.range(0));
    for (auto _ : state) {
        const std::string bytes = zeq::test::binaryForm(*sent);
        zeq::ExcProductStructure received;
        zeq::test::readDirectly(received, bytes);
        benchmark::DoNotOptimize(received.blocks());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(encodeAndDecodeDirectly)->Arg(100000)->Unit(benchmark::kMillisecond);

void encodeAndDecodeThroughDocuments(benchmark::State& state) {
    const auto sent = zeq::bench::structure(state.range(0));
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
