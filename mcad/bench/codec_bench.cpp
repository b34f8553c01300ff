// Speed of the codecs on what they mostly carry: numbers as Base64 text, in 32-bit units, within documents.
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/json/text_io.h"

namespace {

using namespace zeq;

void setBytes(benchmark::State& state, std::size_t size) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

/// Coordinates of points on a curved surface, as a mesh has them.
std::vector<float> coordinates() {
    std::vector<float> values;
    for (int i = 0; i < 1'000'000; ++i) values.push_back(100 * std::sin(0.001F * static_cast<float>(i)));
    return values;
}

std::wstring coordinatesText() {
    std::wstring text;
    Base64::encode(coordinates(), text);
    return text;
}

/// Many small objects, as an assembly has them, and a block of Base64 text.
const JsonDocument& document() {
    static const JsonDocument made = [] {
        JsonDocument result;
        JsonAllocator& alloc = result.GetAllocator();
        JsonValue references(rapidjson::kArrayType);
        for (std::uint64_t id = 0; id < 100'000; ++id) {
            JsonValue reference(rapidjson::kObjectType);
            reference.AddMember(L"block_id", JsonValue(id), alloc);
            reference.AddMember(L"name", JsonValue(L"Hexagon head screw M8 x 40", alloc), alloc);
            reference.AddMember(L"hidden", JsonValue(false), alloc);
            JsonValue placement(rapidjson::kArrayType);
            for (int i = 0; i < 12; ++i) placement.PushBack(0.1 * i + static_cast<double>(id), alloc);
            reference.AddMember(L"transformation", placement, alloc);
            references.PushBack(reference, alloc);
        }
        const std::wstring text = coordinatesText();
        result.SetObject().AddMember(L"references", references, alloc);
        result.AddMember(L"points",
                         JsonValue(text.data(), static_cast<rapidjson::SizeType>(text.size()), alloc), alloc);
        return result;
    }();
    return made;
}

std::string documentBytes() {
    std::string bytes;
    JsonBinaryIO::encode(document(), bytes);
    return bytes;
}

void Base64Encode(benchmark::State& state) {
    const std::vector<float> values = coordinates();
    std::wstring text;
    for (auto _ : state) Base64::encode(values, text);
    setBytes(state, values.size() * sizeof(float));
}
BENCHMARK(Base64Encode);

void Base64Decode(benchmark::State& state) {
    const std::wstring text = coordinatesText();
    std::vector<float> values;
    for (auto _ : state) Base64::decode(text, values);
    setBytes(state, values.size() * sizeof(float));
}
BENCHMARK(Base64Decode);

void BinaryEncode(benchmark::State& state) {
    std::size_t size = 0;
    for (auto _ : state) size = documentBytes().size();
    setBytes(state, size);
}
BENCHMARK(BinaryEncode);

void BinaryDecode(benchmark::State& state) {
    const std::string bytes = documentBytes();
    for (auto _ : state) {
        JsonDocument back;
        JsonBinaryIO::decode(bytes.data(), bytes.size(), back, back.GetAllocator());
    }
    setBytes(state, bytes.size());
}
BENCHMARK(BinaryDecode);

/// The argument is the level.
void Compress(benchmark::State& state) {
    const std::string bytes = documentBytes();
    std::vector<char> packed;
    for (auto _ : state)
        Compressor::compress(packed, bytes.data(), bytes.size(), static_cast<int>(state.range(0)));
    setBytes(state, bytes.size());
    state.counters["ratio"] = static_cast<double>(bytes.size()) / static_cast<double>(packed.size());
}
BENCHMARK(Compress)->Arg(-1)->Arg(1)->Arg(6)->Unit(benchmark::kMillisecond);

void Decompress(benchmark::State& state) {
    const std::string bytes = documentBytes();
    std::vector<char> packed, unpacked;
    Compressor::compress(packed, bytes.data(), bytes.size(), -1);
    for (auto _ : state) Compressor::decompress(unpacked, packed.data(), packed.size());
    setBytes(state, bytes.size());
}
BENCHMARK(Decompress)->Unit(benchmark::kMillisecond);

void TextWrite(benchmark::State& state) {
    std::size_t size = 0;
    for (auto _ : state) {
        std::wostringstream stream;
        JsonTextIO::write(stream, document(), 0);
        size = static_cast<std::size_t>(stream.tellp()) * sizeof(wchar_t);
    }
    setBytes(state, size);
}
BENCHMARK(TextWrite)->Unit(benchmark::kMillisecond);

void TextRead(benchmark::State& state) {
    std::wstringstream stream;
    JsonTextIO::write(stream, document(), 0);
    const std::size_t size = static_cast<std::size_t>(stream.tellp()) * sizeof(wchar_t);
    for (auto _ : state) {
        stream.clear();
        stream.seekg(0);
        JsonDocument back;
        if (!JsonTextIO::read(stream, back)) state.SkipWithError("not read");
    }
    setBytes(state, size);
}
BENCHMARK(TextRead)->Unit(benchmark::kMillisecond);

} // namespace
