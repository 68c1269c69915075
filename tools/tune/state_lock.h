#pragma once

#include <memory>
#include <string>

#include "frame/base/open_file.h"

/// Keeps the state of a run to one process. The state itself is replaced after each batch, and a lock on it would go
/// with the old file: a file beside it, STATE.lock, is locked instead, and is gone at the end. What a kill leaves of it
/// is in nobody's way.
class StateLock {
  public:
    /// Throws std::runtime_error if another process has it. Where no file can be made there is no lock: then the state
    /// can't be replaced either, which is told when it is written.
    explicit StateLock(const std::string& state);
    ~StateLock();
    StateLock(const StateLock&) = delete;
    StateLock& operator=(const StateLock&) = delete;

  private:
    std::string path_;
    std::unique_ptr<OpenFile> file_;
};
