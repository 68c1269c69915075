#pragma once

#include <string>

#include "search/driver/search_host.h"

/// A search that nobody listens to. Who wants to hear something overrides it.
class SilentHost : public SearchHost {
  public:
    void pollInput() override {}
    void sendThinking(const SearchInfo&) override {}
    void sendDepthStarted(int) override {}
    void sendNewPvMove(const std::string&) override {}
    void sendSearchInstability() override {}
    void sendSearchStatistics(const SearchInfo&) override {}
    void onSearchFinished(bool) override {}
};
