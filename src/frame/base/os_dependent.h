#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "frame/base/vorka_exception.h"

/// Every call to the operating system, except the clock (wall_clock.h) and the file mappings.

/// A line that is longer than anything anybody means; nothing of it counts.
class input_line_too_long : public VorkaException {
  public:
    explicit input_line_too_long(std::string beginning) : beginning_(std::move(beginning)) {}
    /// Some words of it, to be recognised by.
    [[nodiscard]] const std::string& beginning() const noexcept { return beginning_; }

  private:
    std::string beginning_;
};
/// Bytes of the longest line that is taken, without its end.
inline constexpr std::size_t longest_input_line = std::size_t{1} << 20U;

/// Lines from a descriptor, which it doesn't own, with a buffer of their own.
class DescriptorReader {
  public:
    explicit DescriptorReader(int descriptor) : descriptor_(descriptor) {}

    /// Whether ReadLine has something to read: buffered characters (even part of a line), a descriptor that is ready,
    /// or the end of the input. Never blocks.
    [[nodiscard]] bool IsInputAvailable() const;
    /// The next line without its end, with any bytes; the last one may lack its end. Nothing once the input has ended
    /// or failed, or the terminal has hung up. Blocks until there is one or the other. Throws input_line_too_long for a
    /// line of more than `longest_input_line` bytes, which is read to its end.
    [[nodiscard]] std::optional<std::string> ReadLine();

  private:
    bool ReadMore();
    [[noreturn]] void SkipLine();

    int descriptor_;
    std::string buffer_;
    std::size_t next_ = 0;  ///< first character of `buffer_` that no line has taken
};

/// Takes standard input out of the terminal's line mode and off its buffer, once; logs that it did.
void SetStdinRawMode();
/// Whether ReadLine has something to read: buffered characters, or a descriptor that is ready. Never blocks.
[[nodiscard]] bool IsInputAvailable();
/// The next line of standard input without its end, written to the log; nothing once the input has ended or failed, or
/// the terminal has hung up. Blocks until there is one or the other. Throws input_line_too_long.
[[nodiscard]] std::optional<std::string> ReadLineOrEnd();
/// The same, with "quit" for the end of the input.
[[nodiscard]] std::string ReadLine();

struct TerminalSize {
    int rows;
    int columns;
};
/// The size of the terminal that standard input and standard output share; nothing if either is no terminal, or the
/// terminal does not know its size.
[[nodiscard]] std::optional<TerminalSize> SizeOfTerminal();

/// Bytes of memory that the machine has, whoever uses them; 0 if the system does not say.
[[nodiscard]] std::uint64_t PhysicalMemory();

/// SIGINT and SIGTERM have no effect from here on: an interface sends them, and `quit` ends the program.
void IgnoreTerminationSignals();
/// A closed standard output, or a log that has grown as long as a file may be, must not kill the program: the write
/// fails, and the program ends in the usual way at the end of its input.
void IgnoreFailedWrites();
/// Opens the null device in place of each standard stream that the program was started without; otherwise the log file
/// would become the standard output. To be called before any file is opened.
void ReserveStandardDescriptors();

/// While one lives, what anybody writes to standard error is lost: for a library that complains there of what is in
/// order.
class SilentStandardError {
  public:
    SilentStandardError();
    ~SilentStandardError();
    SilentStandardError(const SilentStandardError&) = delete;
    SilentStandardError& operator=(const SilentStandardError&) = delete;

  private:
    int kept_;  ///< standard error as it was; -1 if it could not be kept, and is not silent
};

/// What stands before the last "/" of `argv0`, or "." if there is none.
[[nodiscard]] std::string DirectoryOfProgram(std::string_view argv0);
/// What ExecutableDirectory is to be told: `argv0`, unless that names no folder or a link. A program that was found
/// through PATH has the path that the system knows, if that leads out of the working directory; a link stands for its
/// target.
[[nodiscard]] std::string PathOfProgram(const std::string& argv0);
/// The directory of the running program: the first call stores what stands before the last "/" of `argv0`, or ".";
/// later calls return it whatever they are given.
const std::string& ExecutableDirectory(const std::string& argv0 = {});
/// Whether the path can be opened for reading. Never waits, whatever stands there.
[[nodiscard]] bool FileExists(const std::string& path);

/// 0..32767 from a generator seeded by the clock, for greetings and the like. Calls are counted, and the eleventh puts
/// a remark into the log.
[[nodiscard]] int NonDeterministicRand_16bit();
