#pragma once

#include <functional>
#include <memory>

#include "bitbases/tablebases.h"

/// Tables whose answers a test makes up.
class FakeTables : public VorkaTablebases::TableSource {
  public:
    using Answer = std::function<VorkaTablebases::ProbeResult(const BOARD& board, int& score)>;
    explicit FakeTables(Answer answer, std::int32_t smallest_cache = 0)
        : answer_(std::move(answer)), smallest_cache_(smallest_cache) {}

    VorkaTablebases::ProbeResult Probe(const BOARD& board, int& score) noexcept override {
        return answer_(board, score);
    }
    VorkaTablebases::SourceFailure last_failure() const noexcept override { return failure; }
    bool UseCache(std::int32_t bytes) noexcept override { return bytes >= smallest_cache_; }
    bool LacksMemory() const noexcept override { return lacks_memory; }
    bool KnowsNoDistances() const noexcept override { return knows_no_distances; }

    VorkaTablebases::SourceFailure failure = VorkaTablebases::SourceFailure::none;
    bool knows_no_distances = false;
    bool lacks_memory = false;

  private:
    Answer answer_;
    std::int32_t smallest_cache_;
};

/// Tablebases with such tables.
inline VorkaTablebases::Tablebases TablebasesOf(
    FakeTables::Answer answer, VorkaTablebases::SourceFailure failure = VorkaTablebases::SourceFailure::none) {
    auto tables = std::make_unique<FakeTables>(std::move(answer));
    tables->failure = failure;
    VorkaTablebases::Tablebases tablebases;
    tablebases.Use(std::move(tables));
    return tablebases;
}

/// Tablebases with tables that tell who wins, and not how soon.
inline VorkaTablebases::Tablebases TablebasesWithoutDistances(FakeTables::Answer answer) {
    auto tables = std::make_unique<FakeTables>(std::move(answer));
    tables->knows_no_distances = true;
    VorkaTablebases::Tablebases tablebases;
    tablebases.Use(std::move(tables));
    return tablebases;
}

/// Tables that know one score for everything, or have one answer.
inline FakeTables::Answer Always(VorkaTablebases::ProbeResult result, int score = 0) {
    return [=](const BOARD& /*board*/, int& out) {
        out = score;
        return result;
    };
}
