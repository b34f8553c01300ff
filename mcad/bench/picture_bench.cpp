// Pictures of 1600 x 1200 pixels with four samples each: a rippled sheet of 100,000 and of 1,000,000 triangles, and as
// many again as glass, with processor time of all threads; and the PNG of one.
#include <cmath>
#include <cstdint>
#include <vector>

#include <benchmark/benchmark.h>

#include "picture/picture.h"

namespace {

using namespace zeq::picture;

struct Sheet {
    explicit Sheet(std::int64_t triangles) {
        const auto side = static_cast<std::uint32_t>(std::sqrt(static_cast<double>(triangles) / 2));
        for (std::uint32_t j = 0; j <= side; ++j)
            for (std::uint32_t i = 0; i <= side; ++i) {
                const float x = static_cast<float>(i) / static_cast<float>(side) * 20;
                const float y = static_cast<float>(j) / static_cast<float>(side) * 20;
                positions.insert(positions.end(), {x, y, std::sin(x) * std::cos(y)});
                normals.insert(normals.end(), {-std::cos(x) * std::cos(y), std::sin(x) * std::sin(y), 1});
            }
        for (std::uint32_t j = 0; j < side; ++j)
            for (std::uint32_t i = 0; i < side; ++i) {
                const std::uint32_t a = j * (side + 1) + i, b = a + side + 1;
                indices.insert(indices.end(), {a, a + 1, b, b, a + 1, b + 1});
            }
    }
    Drawing drawing(float alpha) const {
        Triangles batch;
        batch.positions = positions;
        batch.normals = normals;
        batch.indices = indices;
        batch.color = {0.5F, 0.6F, 0.7F, alpha};
        Drawing result;
        result.triangles.push_back(batch);
        result.camera = fittedCamera(result, {-1, 1.3F, -0.85F}, {0, 0, 1});
        return result;
    }

    std::vector<float> positions, normals;
    std::vector<std::uint32_t> indices;
};

void pictureOf(benchmark::State& state, float alpha) {
    const Sheet sheet(state.range(0));
    const Drawing drawing = sheet.drawing(alpha);
    for (auto _ : state) benchmark::DoNotOptimize(render(drawing).pixels.data());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(pictureOf, solid, 1.0F)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pictureOf, glass, 0.4F)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

void pictureToPng(benchmark::State& state) {
    const Sheet sheet(100'000);
    const Image image = render(sheet.drawing(1));
    for (auto _ : state) benchmark::DoNotOptimize(encodePng(image).data());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(image.pixels.size()));
}
BENCHMARK(pictureToPng)->Unit(benchmark::kMillisecond);

} // namespace
