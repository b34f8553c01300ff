// Restores any bytes.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "acis/restore_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string fault =
        zeq::test::faultOfRestoring(std::string(reinterpret_cast<const char*>(data), size));
    if (fault.empty()) return 0;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}
