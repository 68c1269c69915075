#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "search/driver/search_host.h"

/// A world for a search: notes what it is told, and does what the test wants when it is polled.
struct FakeSearchHost : SearchHost {
    std::function<void()> on_poll = [] {};
    std::function<void()> on_candidate = [] {};
    std::function<void()> on_instability = [] {};
    std::function<void(bool discard)> on_finished = [](bool) {};

    std::vector<std::string> events;       ///< one short text for each call, polls left out
    std::vector<SearchInfo> thinking;      ///< as of each sendThinking
    std::optional<SearchInfo> statistics;  ///< as of the last sendSearchStatistics
    std::optional<bool> finished;          ///< with the value of the last onSearchFinished
    int polls = 0;

    void pollInput() override {
        ++polls;
        on_poll();
    }
    void sendThinking(const SearchInfo& info) override {
        thinking.push_back(info);
        std::string line = "thinking " + std::to_string(info.score);
        for (const auto& [move, text] : info.principal_variation) line += ' ' + text;
        events.push_back(line);
    }
    void sendDepthStarted(int depth) override { events.push_back("depth " + std::to_string(depth)); }
    void sendNewPvMove(const std::string& move) override {
        events.push_back("candidate " + move);
        on_candidate();
    }
    void sendSearchInstability() override {
        events.push_back("instability");
        on_instability();
    }
    void sendSearchStatistics(const SearchInfo& info) override {
        statistics = info;
        events.push_back("statistics");
    }
    void onSearchFinished(bool discard) override {
        finished = discard;
        events.push_back(discard ? "discarded" : "finished");
        on_finished(discard);
    }
};
