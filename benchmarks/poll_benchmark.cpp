// What a look for waiting input costs, in the states that a running search meets. An idle pipe is the usual one: the
// interface says nothing while the engine thinks. That figure has to stay below 2 microseconds.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "frame/base/os_dependent.h"
#include "frame/base/wall_clock.h"

namespace {

class Pipe {
  public:
    Pipe() {
        if (pipe(ends_) != 0) std::abort();
    }
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int reading_end() const { return ends_[0]; }
    void Write(std::string_view text) const {
        if (write(ends_[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) std::abort();
    }

  private:
    int ends_[2];
};

void PollIdlePipe(benchmark::State& state) {
    const Pipe pipe;
    const DescriptorReader reader(pipe.reading_end());
    for (auto _ : state) benchmark::DoNotOptimize(reader.IsInputAvailable());
}
BENCHMARK(PollIdlePipe);

void PollPipeWithUnreadLine(benchmark::State& state) {
    const Pipe pipe;
    pipe.Write("ping 1\n");
    const DescriptorReader reader(pipe.reading_end());
    for (auto _ : state) benchmark::DoNotOptimize(reader.IsInputAvailable());
}
BENCHMARK(PollPipeWithUnreadLine);

void PollBufferedLine(benchmark::State& state) {
    const Pipe pipe;
    pipe.Write("ping 1\nping 2\n");
    DescriptorReader reader(pipe.reading_end());
    if (!reader.ReadLine()) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(reader.IsInputAvailable());
}
BENCHMARK(PollBufferedLine);

void ReadClock(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Timestamp::Now());
}
BENCHMARK(ReadClock);

}  // namespace
