// The pipelines on the three documents: how much less CPU each takes than the straightforward one, how much memory
// writing takes, and how time grows with the document. docs/performance.md explains what is printed.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mp/shared_buffer.h"
#include "pipelines.h"
#include "workloads.h"
#include "zeq_api/exchange_object/exchange_object.h"

namespace {

using namespace zeq;

/// Seconds of CPU time, the system's included.
double cpu() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

struct Times {
    double write = std::numeric_limits<double>::infinity();
    double read = write;
    double both() const { return write + read; }
};

/// The least of what was seen: everything else is the machine's.
void measure(bench::Pipeline& pipeline, const IExchangeObject& object, Times& times) {
    const double begin = cpu();
    const std::wstring written = pipeline.write(object);
    const double middle = cpu();
    const auto received = pipeline.read(written, object);
    times.write = std::min(times.write, middle - begin);
    times.read = std::min(times.read, cpu() - middle);
}

/// A field of /proc/self/status, in bytes.
long statusField(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":"))
            return 1024 * std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
    return 0;
}

/// How much memory the process held at most while writing, beyond what it held before. In a process of its own.
long peakOfWriting(bench::Pipeline& pipeline, const IExchangeObject& object) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        long peak = -1;
        malloc_trim(0); // nothing that was freed may be used again unseen
        const long before = statusField("VmRSS");
        if (std::ofstream("/proc/self/clear_refs") << 5 << std::flush) { // the peak starts anew
            const std::wstring written = pipeline.write(object);
            peak = statusField("VmHWM") - before;
            pipeline.read(written, object);
        }
        _exit(write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    close(ends[1]);
    long peak = -1;
    if (read(ends[0], &peak, sizeof peak) != sizeof peak) peak = -1;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return peak;
}

double megabytes(double bytes) { return bytes / (1 << 20); }

void compare(const char* title, const IExchangeObject& object, int rounds) {
    std::vector<std::unique_ptr<bench::Pipeline>> pipelines;
    pipelines.push_back(bench::copying(object));
    pipelines.push_back(bench::straightforward());
    pipelines.push_back(bench::library());
    constexpr std::size_t reference = 1;
    std::vector<long> peaks;
    for (const auto& pipeline : pipelines) peaks.push_back(peakOfWriting(*pipeline, object));
    std::vector<Times> times(pipelines.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < pipelines.size(); ++i)
            if (i != reference || round < 2) measure(*pipelines[i], object, times[i]);

    const auto image = static_cast<double>(bench::imageSize(object));
    std::printf("%s, %.1f MB\n", title, megabytes(image));
    std::printf("  %-16s %9s %9s %9s %9s %12s\n", "", "write ms", "read ms", "times", "peak MB",
                "of the image");
    for (std::size_t i = 0; i < pipelines.size(); ++i) {
        const auto peak = static_cast<double>(peaks[i]);
        std::printf("  %-16s %9.1f %9.1f %9.1f %9.1f %12.3f\n", pipelines[i]->name(), 1e3 * times[i].write,
                    1e3 * times[i].read, times[reference].both() / times[i].both(), megabytes(peak),
                    peak / image);
    }
    std::fflush(stdout);
}

void showGrowth() {
    std::printf("growth of the library with the references\n");
    const auto pipeline = bench::library();
    double first = 0;
    for (const long references : {10'000L, 100'000L, 1'000'000L}) {
        const auto object = bench::structure(references);
        Times times;
        for (long round = 0; round < std::max(3L, 300'000 / references); ++round)
            measure(*pipeline, *object, times);
        const double each = times.both() / static_cast<double>(references);
        if (first == 0) first = each;
        std::printf("  %9ld %9.1f ms, a reference %5.2f us, %.2f times the first\n", references,
                    1e3 * times.both(), 1e6 * each, each / first);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    compare("W1: structure of 100,000 references", *bench::structure(100'000), rounds);
    compare("W2: scene of 2,000,000 triangles", *bench::scene(200), rounds);
    compare("W3: 50,000 annotations", *bench::annotations(50'000), rounds);
    showGrowth();
}
