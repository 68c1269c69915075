#include "interfaces/commands/keyword_table.h"

#include <array>
#include <utility>

#include "evaluation/personality.h"
#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/commands_clock.h"
#include "interfaces/commands/commands_databases.h"
#include "interfaces/commands/commands_display.h"
#include "interfaces/commands/commands_files.h"
#include "interfaces/commands/commands_game.h"
#include "interfaces/commands/commands_protocol.h"
#include "interfaces/commands/commands_settings.h"
#include "interfaces/commands/commands_setup.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

namespace {

// --- How many words: the keyword itself is the first ---

constexpr std::uint32_t every_number = ~0U;

[[nodiscard]] consteval std::uint32_t From(unsigned n) { return every_number << n; }

constexpr WordCount alone{1U << 1, vocabulary::too_many_parameters};
constexpr WordCount any{every_number, {}};
constexpr WordCount one_or_two{1U << 1 | 1U << 2, vocabulary::wrong_number_of_arguments};
constexpr WordCount one_or_three{1U << 1 | 1U << 3, vocabulary::wrong_number_of_arguments};
constexpr WordCount one_or_at_least_four{1U << 1 | From(4), vocabulary::missing_parameters};
constexpr WordCount at_most_two{1U << 1 | 1U << 2, vocabulary::too_many_parameters};
constexpr WordCount at_least_two{From(2), vocabulary::missing_parameters};
[[nodiscard]] consteval WordCount exactly(unsigned n) { return {1U << n, vocabulary::wrong_number_of_arguments}; }

// --- What a command is given: each reads from one place of the line on ---

struct Word {
    static const std::string& Read(const TokenizedLine& input, std::size_t place) { return input.tokens[place]; }
};

/// All words to the end of the line.
struct Rest {
    static std::string Read(const TokenizedLine& input, std::size_t place) {
        return joinTokens(input.tokens, place, input.tokens.size());
    }
};

struct Integer {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ToInteger(input.tokens[place]);
    }
};

struct ClockTime {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ParseClockTime(input.tokens[place]);
    }
};

struct Increment {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ParseIncrement(input.tokens[place]);
    }
};

/// A number of moves: one if nothing is said.
struct MoveCount {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        if (place >= input.tokens.size()) return 1;
        return input.tokens[place] == vocabulary::all ? all_moves : Integer::Read(input, place);
    }
};

struct Personality {
    static int Read(const TokenizedLine& input, std::size_t place) {
        int value = 0;
        if (!parse_personality(input.tokens[place], value)) {
            throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::could_not_parse_personality, input.line);
        }
        return value;
    }
};

// --- Makers ---

/// A command that is given its line and these arguments, one behind the other.
template <class C, class... Arguments>
std::unique_ptr<Command> Make(BasicProtocol&, const TokenizedLine& input) {
    return [&]<std::size_t... Place>(std::index_sequence<Place...>)->std::unique_ptr<Command> {
        return std::make_unique<C>(input.line, Arguments::Read(input, Place + 1)...);
    }
    (std::index_sequence_for<Arguments...>{});
}

/// A command of an interface that can't be ignored.
std::unique_ptr<Command> Refuse(BasicProtocol&, const TokenizedLine& input) {
    throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::command_is_not_supported, input.line);
}

/// A command of an interface that does no harm.
std::unique_ptr<Command> Ignore(BasicProtocol& protocol, const TokenizedLine& input) {
    protocol.sendCommandIgnored(vocabulary::command_is_not_supported);
    return std::make_unique<Command_DoNothing>(input.line);
}

/// The word alone shows something; with parameters behind it, it changes that.
template <class Display, class Change, class... Arguments>
std::unique_ptr<Command> MakeDisplayOrChange(BasicProtocol& protocol, const TokenizedLine& input) {
    return input.tokens.size() == 1 ? Make<Display>(protocol, input) : Make<Change, Arguments...>(protocol, input);
}
constexpr auto MakeHash = MakeDisplayOrChange<Command_DisplayHashtableStatus, Command_ResizeHashtable, Word, Word>;
constexpr auto MakePersonality = MakeDisplayOrChange<Command_DisplayPersonality, Command_SetPersonality, Personality>;
constexpr auto MakeTb = MakeDisplayOrChange<Command_DisplayTablebasesStatus, Command_InitTablebases, Word, Word, Rest>;

std::unique_ptr<Command> MakeProtover(BasicProtocol&, const TokenizedLine& input) {
    const std::int32_t version = Integer::Read(input, 1);
    if (version < 2) {
        LogOnly(vocabulary::unexpected_protocol_version);
        return std::make_unique<Command_Xboard>(input.line);
    }
    if (version > 2) LogOnly(vocabulary::future_protocol_version);
    return std::make_unique<Command_Protover2>(input.line);
}

std::unique_ptr<Command> MakeBareMove(BasicProtocol&, const TokenizedLine& input) {
    return std::make_unique<Command_UsermoveOldStyle>(input.line, input.tokens.front());
}

// clang-format off
constexpr std::array keywords{
    Keyword{".",                alone,                Make<Command_SendSearchStatus>},
    Keyword{"protover",         exactly(2),           MakeProtover},
    Keyword{"bk",               any,                  Refuse},
    Keyword{"ics",              any,                  Refuse},
    Keyword{"pause",            any,                  Refuse},
    Keyword{"resume",           any,                  Refuse},
    Keyword{"variant",          any,                  Refuse},
    Keyword{"random",           any,                  Ignore},
    Keyword{"accepted",         any,                  Ignore},
    Keyword{"rejected",         any,                  Ignore},
    Keyword{"?",                alone,                Make<Command_MoveNow>},
    Keyword{"analyze",          alone,                Make<Command_Analyze>},
    Keyword{"black",            alone,                Make<Command_Black>},
    Keyword{"computer",         alone,                Make<Command_Computer>},
    Keyword{"console",          alone,                Make<Command_Console>},
    Keyword{"contempt",         exactly(2),           Make<Command_Contempt, Integer>},
    Keyword{"display",          alone,                Make<Command_Display>},
    Keyword{"display_settings", any,                  Make<Command_DisplaySettingVariables, Rest>},
    Keyword{"draw",             alone,                Make<Command_Draw>},
    Keyword{"easy",             alone,                Make<Command_Easy>},
    Keyword{"edit",             alone,                Make<Command_Edit>},
    Keyword{"eval",             alone,                Make<Command_Eval>},
    Keyword{"exit",             alone,                Make<Command_Exit>},
    Keyword{"force",            alone,                Make<Command_Force>},
    Keyword{"fritz",            alone,                Make<Command_Fritz>},
    Keyword{"generate",         any,                  Make<Command_Generate, Rest>},
    Keyword{"go",               alone,                Make<Command_Go>},
    Keyword{"hard",             alone,                Make<Command_Hard>},
    Keyword{"hash",             one_or_three,         MakeHash},
    Keyword{"help",             alone,                Make<Command_Help>},
    Keyword{"hint",             alone,                Make<Command_Hint>},
    Keyword{"id",               any,                  Make<Command_Id, Rest>},
    Keyword{"level",            exactly(4),           Make<Command_Level, Integer, ClockTime, Increment>},
    Keyword{"modify_settings",  at_least_two,         Make<Command_ModifySettingVariables, Rest>},
    Keyword{"name",             at_least_two,         Make<Command_Name, Rest>},
    Keyword{"new",              alone,                Make<Command_New>},
    Keyword{"next",             at_most_two,          Make<Command_Next, MoveCount>},
    Keyword{"nopost",           alone,                Make<Command_Nopost>},
    Keyword{"optimize_piece",   any,                  Make<Command_OptimizePiece>},
    Keyword{"otim",             exactly(2),           Make<Command_Otim, Integer>},
    Keyword{"personality",      one_or_two,           MakePersonality},
    Keyword{"ping",             exactly(2),           Make<Command_Ping, Word>},
    Keyword{"probe",            at_least_two,         Make<Command_Probe, Rest>},
    Keyword{"playother",        alone,                Make<Command_Playother>},
    Keyword{"post",             alone,                Make<Command_Post>},
    Keyword{"read_fen",         exactly(2),           Make<Command_ReadFEN, Word>},
    Keyword{"read_pgn",         exactly(2),           Make<Command_ReadPGN, Word>},
    Keyword{"read_settings",    exactly(2),           Make<Command_ReadSearchSettings, Word>},
    Keyword{"quit",             alone,                Make<Command_Quit>},
    Keyword{"rating",           exactly(3),           Make<Command_Rating, Integer, Integer>},   // engine, opponent
    Keyword{"remove",           alone,                Make<Command_Remove>},
    Keyword{"result",           at_least_two,         Make<Command_Result, Word, Rest>},
    Keyword{"sd",               exactly(2),           Make<Command_sd, Integer>},                // plies
    Keyword{"setboard",         at_least_two,         Make<Command_Setboard, Rest>},
    Keyword{"st",               exactly(2),           Make<Command_st, Integer>},                // seconds
    Keyword{"tb",               one_or_at_least_four, MakeTb},
    Keyword{"tc",               any,                  Make<Command_Tc, Rest>},
    Keyword{"time",             exactly(2),           Make<Command_Time, Integer>},              // centiseconds
    Keyword{"undo",             at_most_two,          Make<Command_Undo, MoveCount>},
    Keyword{"verify",           any,                  Make<Command_Verify, Rest>},
    Keyword{"version",          alone,                Make<Command_Version>},
    Keyword{"white",            alone,                Make<Command_White>},
    Keyword{"write_fen",        exactly(2),           Make<Command_WriteFEN, Word>},
    Keyword{"write_pgn",        exactly(2),           Make<Command_WritePGN, Word>},
    Keyword{"write_settings",   exactly(2),           Make<Command_WriteSearchSettings, Word>},
    Keyword{"xboard",           alone,                Make<Command_Xboard>},
    Keyword{"usermove",         exactly(2),           Make<Command_UsermoveNewStyle, Word>},
};
// clang-format on

/// Any other word is taken as a move; only the reader of moves finds out that it is none.
constexpr Keyword bare_move{{}, {1U << 1, vocabulary::unrecognized_command}, MakeBareMove};

}  // namespace

std::span<const Keyword> KeywordTable() { return keywords; }

std::unique_ptr<Command> parseCommand(BasicProtocol& protocol, const TokenizedLine& input) {
    const auto refuse = [&](std::string_view reason) {
        return ErrorCommand(ErrorCommand::Kind::error, reason, input.line);
    };
    const auto found = std::ranges::find(keywords, input.tokens.front(), &Keyword::word);
    const Keyword& row = found != keywords.end() ? *found : bare_move;
    if (!row.words.Fits(input.tokens.size())) throw refuse(row.words.error);
    try {
        return row.make(protocol, input);
    } catch (const string_conversion_error&) {
        throw refuse(vocabulary::integer_argument_expected);
    }
}

}  // namespace VorkaInterfaces
