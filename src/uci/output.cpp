#include "uci/output.h"

#include <cstdio>
#include <string>

#include "frame/base/logfile.h"
#include "frame/base/standard_output.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

Output::Output() { SetDebug(false); }

Output::~Output() { vlog.SetListener(nullptr); }

void Output::Send(std::string_view line) {
    const std::string text = std::string(line) + '\n';
    (void)std::fwrite(text.data(), 1, text.size(), StandardOutput());
    (void)std::fflush(StandardOutput());
    sending_ = true;
    {
        const EchoScope file_only(vlog, Echo::off);
        vlog << uci_texts::sent << text;
    }
    sending_ = false;
}

void Output::Say(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (line.find_first_not_of(" \t\r") != std::string_view::npos)
            Send(std::string(uci_texts::info_string) + std::string(line));
        text.remove_prefix(line.size() == text.size() ? line.size() : line.size() + 1);
    }
}

void Output::SetDebug(bool on) {
    const auto listener = [this](std::string_view line) {
        if (!sending_) Say(line);
    };
    vlog.SetListener(listener, on);
}

}  // namespace VorkaUci
