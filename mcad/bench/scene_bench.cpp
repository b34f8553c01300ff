// A scene of 100 meshes of 10,000 triangles through the wrapper and its shared buffer, there and back; the same
// through the document model; and copying the arrays, for scale.
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "support/binary_form.h"
#include "workloads.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/zeq_api.h"

namespace {

const std::shared_ptr<zeq::ExcBlockVisualization>& scene() {
    static const auto made = std::dynamic_pointer_cast<zeq::ExcBlockVisualization>(zeq::bench::scene(100));
    return made;
}

template <class Visit>
void forEachFace(const zeq::ExcBlockVisualization& object, Visit visit) {
    for (const auto& node : object.visualizationData()->sceneRootNodes().front()->childNodes())
        visit(*node->mesh()->faces().front());
}

std::int64_t arrayBytes() {
    std::size_t size = 0;
    forEachFace(*scene(), [&size](const zeq::ExcVisuFace& face) {
        size += 4 * (face.vertices().size() + face.normals().size());
        for (const auto& polygon : face.polygons()) size += 4 * (2 + polygon.indices.size());
    });
    return static_cast<std::int64_t>(size);
}

/// Copies every array into new memory once.
void sceneCopied(benchmark::State& state) {
    for (auto _ : state) {
        forEachFace(*scene(), [](const zeq::ExcVisuFace& face) {
            for (const auto* array : {&face.vertices(), &face.normals()}) {
                std::vector<float> copy(array->size());
                std::memcpy(copy.data(), array->data(), 4 * copy.size());
                benchmark::DoNotOptimize(copy.data());
            }
            std::vector<int> indices(5 * face.polygons().size());
            std::size_t at = 0;
            for (const auto& polygon : face.polygons()) {
                std::memcpy(&indices[at], polygon.indices.data(), 4 * polygon.indices.size());
                at += 5;
            }
            benchmark::DoNotOptimize(indices.data());
        });
    }
    state.SetBytesProcessed(state.iterations() * arrayBytes());
}
BENCHMARK(sceneCopied)->Unit(benchmark::kMillisecond);

void sceneThroughTheWrapper(benchmark::State& state) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(scene());
    for (auto _ : state) {
        std::wstringstream stream;
        wrapper.writeObject(stream);
        zeq::ExchangeObjectWrapper received;
        received.readObject(stream);
        benchmark::DoNotOptimize(received.get());
    }
    state.SetBytesProcessed(state.iterations() * arrayBytes());
}
BENCHMARK(sceneThroughTheWrapper)->Unit(benchmark::kMillisecond);

/// What the wrapper does, with a document model on either side.
void sceneThroughDocuments(benchmark::State& state) {
    for (auto _ : state) {
        std::string compressed;
        {
            zeq::JsonDocument document;
            scene()->writeObject(document, document.GetAllocator());
            std::string bytes;
            zeq::JsonBinaryIO::encode(document, bytes);
            zeq::Compressor::compress(compressed, bytes.data(), bytes.size(), -1);
        }
        std::string bytes;
        zeq::Compressor::decompress(bytes, compressed.data(), compressed.size());
        zeq::JsonDocument document;
        zeq::JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
        zeq::ExcBlockVisualization received;
        received.readObject(document);
        benchmark::DoNotOptimize(received.visualizationData());
    }
    state.SetBytesProcessed(state.iterations() * arrayBytes());
}
BENCHMARK(sceneThroughDocuments)->Unit(benchmark::kMillisecond);

/// Without compression and buffer: what the forms and Base64 take.
void sceneToBytesAndBack(benchmark::State& state) {
    for (auto _ : state) {
        const std::string bytes = zeq::test::binaryForm(*scene());
        zeq::ExcBlockVisualization received;
        zeq::test::readDirectly(received, bytes);
        benchmark::DoNotOptimize(received.visualizationData());
    }
    state.SetBytesProcessed(state.iterations() * arrayBytes());
}
BENCHMARK(sceneToBytesAndBack)->Unit(benchmark::kMillisecond);

} // namespace
