#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace table_builder {

/// Calls `work(thread, begin, end)` for parts of 0 .. `end`, by so many threads; parts begin at multiples of 64 and of
/// `part`. Throws what the work has thrown.
template <class Work>
void InParallel(int threads, std::uint64_t end, std::uint64_t part, Work work) {
    std::atomic<std::uint64_t> next = 0;
    std::exception_ptr failure;
    std::mutex failure_lock;
    const auto run = [&](int thread) {
        try {
            for (;;) {
                const std::uint64_t begin = next.fetch_add(part);
                if (begin >= end) return;
                work(thread, begin, std::min(begin + part, end));
            }
        } catch (...) {
            const std::scoped_lock lock(failure_lock);
            failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> helpers;
        for (int i = 1; i < threads; ++i) helpers.emplace_back(run, i);
        run(0);
    }
    if (failure) std::rethrow_exception(failure);
}

}  // namespace table_builder
