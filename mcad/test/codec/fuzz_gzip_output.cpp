// Makes a document by the choices that the input takes, and compares what zlib reads of it with what is written plainly.
#include "zeq_api/codec/gzip_output.h"

#include <cstdint>
#include <cstdlib>

#include "codec/by_zlib.h"
#include "codec/made_document.h"

namespace {

template <class Output, class... Sizes>
std::string written(const std::uint8_t* data, std::size_t size, Sizes... sizes) {
    std::string out;
    Output output(
        [&out](const char* bytes, std::size_t count, std::uint64_t at) {
            if (at > out.size()) std::abort();
            out.replace(at, count, bytes, count);
        },
        sizes...);
    zeq::json::ByteSink sink(output);
    // Two bytes a choice; those that are missing follow from the ones before.
    std::size_t next = 0;
    std::uint32_t state = 1;
    const auto choose = [&](std::size_t below) {
        const std::uint32_t given = next + 2 <= size ? data[next] | data[next + 1] << 8 : 0;
        next += 2;
        state = (state + given) * 1'664'525 + 1'013'904'223;
        return (state >> 4) % below;
    };
    zeq::test::writeMadeDocument(sink, choose, size == 0 ? 0 : std::size_t{1} << (data[0] % 18));
    sink.finish();
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string plain = written<zeq::json::PlainOutput>(data, size);
    // Small blocks, whose edges small documents reach.
    const zeq::detail::GzipSizes sizes{1 << 15, 1 << 14};
    const std::string packed = written<zeq::detail::GzipOutput>(data, size, sizes);
    if (zeq::test::zlibInflate(packed.data(), packed.size()) != plain) std::abort();
    return 0;
}
