#include "frame/base/logfile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "frame/base/standard_output.h"
#include "frame/base/vocabulary.h"
#include "frame/base/wall_clock.h"

/// Passes every chunk to the file and to standard output. It has no buffer of its own, since both have one, and it
/// never reports a failure: a full disk must not silence standard output, nor a closed pipe the log.
class Logfile::Tee : public std::streambuf {
  public:
    struct Closer {
        void operator()(std::FILE* stream) const { (void)std::fclose(stream); }
    };
    std::unique_ptr<std::FILE, Closer> file;
    bool echo_to_console = true;
    bool flush_always = true;
    bool file_output = true;
    Listener listener;
    bool hears_all = false;
    std::string open_line;  ///< what the listener will be told once its line is whole

    /// Only while there is one.
    void WriteToFile(std::string_view text) { (void)std::fwrite(text.data(), 1, text.size(), file.get()); }

  protected:
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        if (length == 0) return 0;  // an empty text may have no address
        const std::string_view chunk(text, static_cast<std::size_t>(length));
        if (file && file_output) WriteToFile(chunk);
        if (listener) {
            if (echo_to_console || hears_all) Tell(chunk);
        } else if (echo_to_console) {
            (void)std::fwrite(chunk.data(), 1, chunk.size(), StandardOutput());
        }
        return length;
    }

    int_type overflow(int_type character) override {
        if (!traits_type::eq_int_type(character, traits_type::eof())) {
            const char text = traits_type::to_char_type(character);
            xsputn(&text, 1);
        }
        return traits_type::not_eof(character);
    }

    int sync() override {
        (void)std::fflush(StandardOutput());
        if (file && flush_always) (void)std::fflush(file.get());
        return 0;
    }

  private:
    void Tell(std::string_view chunk) {
        for (std::size_t end = 0; (end = chunk.find('\n')) != std::string_view::npos; chunk.remove_prefix(end + 1)) {
            open_line += chunk.substr(0, end);
            // The listener may write to the log itself, which must find no line half told.
            listener(std::exchange(open_line, {}));
        }
        open_line += chunk;
    }
};

Logfile vlog;

Logfile::Logfile() : std::ostream(nullptr), tee_(std::make_unique<Tee>()) { rdbuf(tee_.get()); }

Logfile::~Logfile() { Close(); }

bool Logfile::Open(const std::string& name) { return OpenWith(name, O_CREAT, Sharing::refused); }

Logfile::Creation Logfile::Create(const std::string& name) {
    if (OpenWith(name, O_CREAT | O_EXCL | O_NOFOLLOW, Sharing::allowed)) return Creation::created;
    return errno == EEXIST ? Creation::exists : Creation::failed;
}

bool Logfile::Overwrite(const std::string& name) { return OpenWith(name, O_CREAT | O_NOFOLLOW, Sharing::allowed); }

bool Logfile::OpenWith(const std::string& name, int flags, Sharing sharing) {
    Close();
    was_in_use_ = false;
    file_name_ = name;
    const int descriptor = open(name.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags, 0666);
    if (descriptor < 0) return false;
    struct stat status {};
    const bool is_regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    // The lock goes with the file. Where there are none, nobody is kept out.
    const bool is_in_use = is_regular && flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    was_in_use_ = is_in_use && sharing == Sharing::refused;
    // Emptied only now: what is no log is left as it is.
    if (!is_regular || was_in_use_ || ftruncate(descriptor, 0) != 0) {
        close(descriptor);
        return false;
    }
    tee_->file.reset(fdopen(descriptor, "w"));
    if (!tee_->file) {
        close(descriptor);
        return false;
    }
    tee_->WriteToFile(vocabulary::logfile_created_at);
    tee_->WriteToFile(LocalTimeText());
    return std::fflush(tee_->file.get()) == 0;
}

void Logfile::Close() { tee_->file.reset(); }

void Logfile::Flush() { flush(); }

bool Logfile::SetEcho(bool on) { return std::exchange(tee_->echo_to_console, on); }
bool Logfile::SetFlush(bool always) { return std::exchange(tee_->flush_always, always); }
void Logfile::SetListener(Listener listener, bool hears_all) {
    tee_->listener = std::move(listener);
    tee_->hears_all = hears_all;
    tee_->open_line.clear();
}

bool Logfile::SetFileOutput(bool on) { return std::exchange(tee_->file_output, on); }

void LogOnly(std::string_view message) {
    const EchoScope file_only(vlog, Echo::off);
    vlog << message << " (" << vocabulary::not_sent_to_xboard << ")\n";
    vlog.Flush();
}
