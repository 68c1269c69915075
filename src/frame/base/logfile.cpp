#include "frame/base/logfile.h"

#include <cstdio>
#include <fstream>
#include <utility>

#include "frame/base/vocabulary.h"
#include "frame/base/wall_clock.h"

/// Passes every chunk to the file and to standard output. It has no buffer of its own, since both have one, and it
/// never reports a failure: a full disk must not silence standard output, nor a closed pipe the log.
class Logfile::Tee : public std::streambuf {
  public:
    std::unique_ptr<std::ofstream> file;
    bool echo_to_console = true;
    bool flush_always = true;
    bool file_output = true;
    Listener listener;
    bool hears_all = false;
    std::string open_line;  ///< what the listener will be told once its line is whole

  protected:
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        if (length == 0) return 0;  // an empty text may have no address
        if (file && file_output) file->write(text, length);
        const std::string_view chunk(text, static_cast<std::size_t>(length));
        if (listener) {
            if (echo_to_console || hears_all) Tell(chunk);
        } else if (echo_to_console) {
            (void)std::fwrite(chunk.data(), 1, chunk.size(), stdout);
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
        (void)std::fflush(stdout);
        if (file && flush_always) file->flush();
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

bool Logfile::Open(const std::string& name) {
    Close();
    file_name_ = name;
    tee_->file = std::make_unique<std::ofstream>(name, std::ios::binary | std::ios::trunc);
    *tee_->file << vocabulary::logfile_created_at << LocalTimeText() << std::flush;
    return tee_->file->good();
}

void Logfile::Close() {
    if (!tee_->file) return;
    tee_->file->flush();
    tee_->file.reset();
}

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
