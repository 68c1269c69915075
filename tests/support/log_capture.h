#pragma once

#include <string>

#include "frame/base/logfile.h"
#include "support/temporary_directory.h"

/// Lets the global log write into a file of its own for a scope, so that a test can compare the log's text apart from
/// standard output (for which see testing::internal::CaptureStdout). Puts echo, flush and file output back to "on".
class LogCapture {
  public:
    LogCapture() {
        vlog.Open(directory_.File("log"));
        header_size_ = TextOf(directory_.File("log")).size();
    }
    ~LogCapture() {
        vlog.Close();
        vlog.SetEcho(true);
        vlog.SetFlush(true);
        vlog.SetFileOutput(true);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// What was written since the start of the scope, without the line that heads every log.
    [[nodiscard]] std::string text() const { return WholeText().substr(header_size_); }
    [[nodiscard]] std::string header() const { return WholeText().substr(0, header_size_); }

  private:
    [[nodiscard]] std::string WholeText() const {
        vlog.Flush();
        return TextOf(directory_.File("log"));
    }

    TemporaryDirectory directory_;
    std::size_t header_size_ = 0;
};
