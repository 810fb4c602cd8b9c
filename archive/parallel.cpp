#include "archive/parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace tonvale {

namespace {

// For fewer things than this a thread is not worth its start.
constexpr std::size_t kWorthAThread = 32;
constexpr std::size_t kMaxThreads = 16;

std::size_t HelpersFor(std::size_t count) {
    const std::size_t cores =
        std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMaxThreads);
    return std::min(cores - 1, count / kWorthAThread);
}

}  // namespace

bool ForEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work,
                       const std::function<bool(std::size_t done)>& goes_on) {
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> done = 0;
    std::atomic<bool> stopped = false;
    const auto work_on = [&](const auto& look_up) {
        while (!stopped) {
            const std::size_t i = next++;
            if (i >= count) return;
            work(i);
            ++done;
            look_up();
        }
    };
    std::vector<std::thread> helpers;
    try {
        while (helpers.size() < HelpersFor(count)) {
            helpers.emplace_back([&] { work_on([] {}); });
        }
    } catch (const std::system_error&) {  // the system has no more threads: fewer do as well
    }
    work_on([&] { stopped = stopped || !goes_on(done); });
    for (std::thread& helper : helpers) helper.join();
    return done == count;
}

}  // namespace tonvale
