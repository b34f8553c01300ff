// A host whose own rapidjson differs from the library's. Neither may get hold of the other's functions; that
// shows in the growth of the host's pools, and in what the library does when memory runs out.
#include <fstream>
#include <iostream>
#include <new>
#include <sstream>

#include <malloc.h>
#include <sys/resource.h>
#include <zeq_api/zeq_api.h>

#include "own_json.h"

namespace {

/// A document with many values. The library has to build its model, although a command does not have its last
/// member.
std::wstring longText() {
    std::wstring text =
        L"{\"command\": \"ping\", \"unknown\": [\"a text too long to lie in the value itself\"";
    for (int i = 0; i < 200000; ++i) text += L",0";
    return text + L"]}";
}

void read(const std::wstring& text) {
    std::wistringstream stream(text);
    zeq::Command().readObject(stream);
}

/// Bytes of address space that the process has.
rlim_t addressSpace() {
    std::ifstream stat("/proc/self/statm");
    rlim_t pages = 0;
    stat >> pages;
    return pages * 4096;
}

/// Reads in more and more memory until it suffices. The library has to say each time that it does not.
int timesOutOfMemory(const std::wstring& text) {
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    const rlim_t before = limit.rlim_cur;
    const rlim_t start = addressSpace();
    for (int times = 0;; ++times) {
        limit.rlim_cur = start + rlim_t(times) * (100 << 10);
        setrlimit(RLIMIT_AS, &limit);
        bool enough = true;
        try {
            read(text);
        } catch (const std::bad_alloc&) {
            enough = false;
        }
        limit.rlim_cur = before;
        setrlimit(RLIMIT_AS, &limit);
        if (enough) return times;
    }
}

bool fails(bool failure, const char* what) {
    if (failure) std::cerr << what << '\n';
    return failure;
}

} // namespace

int main() {
    mallopt(M_MMAP_THRESHOLD, 128 << 10); // what is freed goes back to the system, now and later
    mallopt(M_TRIM_THRESHOLD, 0);
    if (fails(!ownDocumentWorks() || ownPoolGrowths() == 0, "the host's document does not work")) return 1;
    const int growths = ownPoolGrowths();
    const std::wstring text = longText();
    read(text);
    if (fails(ownPoolGrowths() != growths, "the library uses the host's functions")) return 1;
    if (fails(!ownDocumentWorks() || ownPoolGrowths() != 2 * growths,
              "the host uses the library's functions"))
        return 1;
    const int times = timesOutOfMemory(text);
    std::cout << "out of memory: " << times << " times\n";
    return fails(times < 10, "memory did not run out") ? 1 : 0;
}
