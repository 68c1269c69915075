#include "frame/shell/engine_shell.h"

#include <iostream>
#include <utility>

#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/keyword_table.h"
#include "interfaces/commands/translation.h"
#include "interfaces/protocols/console_protocol.h"
#include "interfaces/protocols/error_command.h"
#include "interfaces/protocols/input_line.h"

using VorkaInterfaces::BasicProtocol;
using VorkaInterfaces::ConnectedGame;
using VorkaInterfaces::ErrorCommand;
using VorkaInterfaces::findKeyword;
using VorkaInterfaces::IgnorableErrorCommand;
using VorkaInterfaces::Keyword;
using VorkaInterfaces::StartUp;

EngineShell::EngineShell(Engine& engine, const std::vector<std::string>& arguments)
    : game_(std::make_unique<ConnectedGame>(engine, std::make_unique<VorkaInterfaces::ConsoleProtocol>())) {
    game_->protocol().start(game_->playerDefaults().opponentName);
    carryOutOptions(arguments);
}

// --- The command line ---

void EngineShell::carryOutOptions(const std::vector<std::string>& arguments) {
    std::size_t next = 0;
    while (next < arguments.size() && !exit_status_) {
        try {
            carryOut(TakeStartupOption(arguments, next));
        } catch (const could_not_parse_exception& failure) {
            stopAt(failure.argument());
        } catch (const IgnorableErrorCommand& failure) {
            LogOnly(std::string(vocabulary::startup_command_failed_safely) + failure.text());
            game_->protocol().tellUser(std::string(vocabulary::warning_startup_command_failed) + failure.text());
        } catch (const ErrorCommand& failure) {
            stopAt(failure.text());
        } catch (search_request_received_exception& wish) {
            requested_ = std::move(wish.request);
        } catch (const quit_command_received_exception&) {
            exit_status_ = 0;
        }
    }
}

void EngineShell::carryOut(const StartupOption& option) {
    if (!option.has_dash) {
        std::cerr << vocabulary::expecting_dash_before_option << option.argument << vocabulary::continuing_without_dash;
    }
    const Keyword* const keyword = findKeyword(option.name);
    if (keyword == nullptr || keyword->start_up == StartUp::prompt_only) {
        stopAt(option.name);
        return;
    }
    if (keyword->start_up == StartUp::at_start_in_force_mode) executeAtOnce(std::string(vocabulary::force));
    LogOnly(std::string(vocabulary::executing_startup_command) + option.line());
    if (option.name == vocabulary::help) {
        game_->protocol().showHelp(VorkaInterfaces::helpOfStartupCommands());
    } else {
        executeAtOnce(option.line());
    }
    if (keyword->start_up == StartUp::at_start_then_exit) exit_status_ = 0;
}

void EngineShell::executeAtOnce(const std::string& line) {
    VorkaInterfaces::translate(game_->protocol(), line)->Execute(*game_);
}

void EngineShell::stopAt(const std::string& word) {
    std::string text(vocabulary::error_while_parsing_startup_commands);
    text += " (";
    text += vocabulary::stopped_at;
    game_->protocol().tellUser(text + " \"" + word + "\")");
    exit_status_ = 1;
}

// --- The main loop ---

int EngineShell::run() {
    while (!exit_status_) {
        try {
            if (requested_) startSearch(*std::exchange(requested_, std::nullopt));
            while (!requested_) {
                readStep();
                translateStep();
                executeStep();
            }
        } catch (const ErrorCommand& error) {
            game_->protocol().sendError(error.text());
        } catch (search_request_received_exception& wish) {
            requested_ = std::move(wish.request);
        } catch (const quit_command_received_exception&) {
            exit_status_ = 0;
        }
    }
    return *exit_status_;
}

void EngineShell::readStep() {
    if (!input_.empty() || !commands_.empty()) return;
    game_->protocol().sendPrompt(game_->record());
    hearLine();
}

void EngineShell::hearLine() {
    try {
        input_.push_back(VorkaInterfaces::readInputLine());
    } catch (const ErrorCommand& error) {
        game_->protocol().sendError(error.text());
    }
}

void EngineShell::translateStep() {
    if (!commands_.empty() || input_.empty()) return;
    const std::string line = std::move(input_.front());
    input_.pop_front();
    try {
        commands_.push_back(VorkaInterfaces::translate(game_->protocol(), line));
    } catch (const ErrorCommand& error) {
        game_->protocol().sendError(error.text());
    }
}

void EngineShell::executeStep() {
    if (commands_.empty()) return;
    if (commands_.front()->finished) {
        commands_.pop_front();
        return;
    }
    try {
        commands_.front()->Execute(*game_);
    } catch (const ErrorCommand& error) {
        game_->protocol().sendError(error.text());
        commands_.pop_front();
    }
}

void EngineShell::pollInput() {
    for (;;) {
        while (!input_.empty() || !commands_.empty()) {
            translateStep();
            executeStep();
        }
        if (!IsInputAvailable()) return;
        hearLine();
    }
}

// --- Searches ---

void EngineShell::startSearch(const SearchRequest& request) {
    if (game_->IsGameOver() && request.limits.kind == SearchKind::analyze) {
        LogOnly(vocabulary::entering_analyze_compatibility_mode);
        game_->waitInAnalysis(*this);
        return;
    }
    writeSearchHeader(request);
    game_->runSearch(request, *this);
}

void EngineShell::writeSearchHeader(const SearchRequest& request) const {
    const EchoScope file_only(vlog, Echo::off);
    const SearchLimits& limits = request.limits;
    vlog << vocabulary::starting_search << " (" << vocabulary::not_sent_to_xboard << ")\n";
    request.position.Print(false);
    vlog << vocabulary::search_header_fen << ": " << request.position.GetFen() << '\n'
         << vocabulary::search_settings << ":\n"
         << vocabulary::search_setting_type << '=' << BasicProtocol::nameOfSearchKind(limits.kind) << '\n'
         << vocabulary::search_setting_max_depth << '=' << limits.max_depth << '\n'
         << vocabulary::search_setting_max_time_limit << '=' << limits.max_time_limit << '\n'
         << vocabulary::search_setting_variable_time_limit << '=' << limits.variable_time_limit << "\n("
         << vocabulary::not_sent_to_xboard << ")\n";
    vlog.Flush();
}
