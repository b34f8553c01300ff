// A thread with little stack, on which anything that recurses along its input crashes.
#pragma once

#include <functional>
#include <stdexcept>

#include <pthread.h>

namespace zeq::test {

/// Runs `body` to its end on a thread with a stack of 1 MiB.
inline void onSmallStack(std::function<void()> body) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 1 << 20);
    const auto run = [](void* function) -> void* {
        (*static_cast<std::function<void()>*>(function))();
        return nullptr;
    };
    pthread_t thread;
    const int error = pthread_create(&thread, &attributes, run, &body);
    pthread_attr_destroy(&attributes);
    if (error != 0) throw std::runtime_error("Cannot start a thread with a small stack");
    pthread_join(thread, nullptr);
}

} // namespace zeq::test
