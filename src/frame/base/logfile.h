#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// The one stream for all output: what is written to it goes to the log file, if one is open, and to
/// standard output while the echo is on. Text that an interface must not see is written with the echo off.
///
///     vlog << "move e2e4\n";
///     const EchoScope file_only(vlog, Echo::off);
///     vlog << "only in the log\n";
///
/// A log file that can't be opened or written stops nothing: standard output still gets the text.
enum class Echo : bool { off, on };

class Logfile : public std::ostream {
  public:
    Logfile();
    ~Logfile() override;
    Logfile(const Logfile&) = delete;
    Logfile& operator=(const Logfile&) = delete;

    /// What became of a new log.
    enum class Creation { created, exists, failed };

    /// Closes an open file and creates `name`, headed by the local time, or empties it; a link is followed, since who
    /// names the file knows where it leads. False if that can't be done, or it is no regular file; writing to the file
    /// then has no effect. False too if another log writes to it, of this program or another.
    bool Open(const std::string& name);
    /// Whether that is why the last one failed.
    [[nodiscard]] bool was_in_use() const { return was_in_use_; }
    /// The same for a file that did not exist; a link leads nowhere. So two programs never write one log.
    Creation Create(const std::string& name);
    /// The same as Open, but through no link, and whoever else writes to it.
    bool Overwrite(const std::string& name);
    void Close();
    /// Flushes standard output, and the file if `flush_always` is set.
    void Flush();

    /// Each returns the old value. Prefer EchoScope and FileScope: a command may throw through the caller.
    bool SetEcho(bool on);
    bool SetFlush(bool always);
    /// Who is told each whole line of the echo, instead of standard output, which then has a form of its own. With
    /// `hears_all` it is told the lines of the log alone as well. Empty: the echo goes to standard output.
    using Listener = std::function<void(std::string_view line)>;
    void SetListener(Listener listener, bool hears_all = false);
    /// Whether the text reaches the file; off only for what is meant for the screen alone (a carriage return).
    bool SetFileOutput(bool on);

    [[nodiscard]] const std::string& file_name() const { return file_name_; }

  private:
    /// Whether somebody else's log may be emptied.
    enum class Sharing { refused, allowed };
    /// Opens with `flags` beside those that always hold; errno tells why if it can't.
    bool OpenWith(const std::string& name, int flags, Sharing sharing);

    class Tee;
    std::unique_ptr<Tee> tee_;
    std::string file_name_;
    bool was_in_use_ = false;
};

/// The global log.
extern Logfile vlog;

/// Sets the echo for a scope and puts it back at its end, also when a command throws through it.
class EchoScope {
  public:
    EchoScope(Logfile& log, Echo echo) : log_(log), before_(log.SetEcho(echo == Echo::on)) {}
    ~EchoScope() { log_.SetEcho(before_); }
    EchoScope(const EchoScope&) = delete;
    EchoScope& operator=(const EchoScope&) = delete;

  private:
    Logfile& log_;
    bool before_;
};

/// Keeps the text of a scope out of the file.
class ScreenOnlyScope {
  public:
    explicit ScreenOnlyScope(Logfile& log) : log_(log), before_(log.SetFileOutput(false)) {}
    ~ScreenOnlyScope() { log_.SetFileOutput(before_); }
    ScreenOnlyScope(const ScreenOnlyScope&) = delete;
    ScreenOnlyScope& operator=(const ScreenOnlyScope&) = delete;

  private:
    Logfile& log_;
    bool before_;
};

/// Writes `message` and the mark " (not sent to xboard)" as one line to the log alone, and flushes.
void LogOnly(std::string_view message);
