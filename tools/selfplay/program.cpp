// Plays matches of the engine against itself, with other settings, in one process.

#include "selfplay/program.h"

#include <getopt.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/whole_file.h"
#include "selfplay/game_text.h"
#include "selfplay/match.h"
#include "selfplay/option_texts.h"
#include "selfplay/pair_scores.h"
#include "selfplay/pgn_file.h"
#include "selfplay/report.h"
#include "selfplay/rule_options.h"
#include "selfplay/state_file.h"

namespace {

std::atomic<bool> stop_match{false};

void StopMatch(int) { stop_match = true; }

struct Options {
    MatchPlan plan;
    std::string openings_file;
    std::uint32_t opening_plies = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t seed = 0;
    std::unique_ptr<Sprt> test;
    std::string pgn, state, report;
    std::uint64_t show_every = 20;  ///< games
    bool is_help = false;
};

int Usage(std::ostream& out, int status) {
    out << "usage: selfplay --openings FILE (--nodes N | --depth N | --time BASE+INCREMENT) [option]..\n"
           "Plays a match of the engine against itself with other settings, each opening twice with colours turned.\n\n"
           "  --first PLAYER, --second PLAYER\n"
           "                    what is changed in each, words with blanks between them: settings=FILE, a setting as "
           "NAME=VALUE,\n"
           "                    search=tournament (or classic), tournament=FILE with settings of that search,\n"
           "                    personality=NAME, contempt=CENTIPAWNS, nodes=N (its own bound), name=NAME;\n"
           "                    quotation marks keep the blanks of a path or a name\n"
           "  --games N         an even number (1000); --sprt may end the match before\n"
           "  --nodes N         search so many nodes for each move; --depth N so many iterations\n"
           "  --time B+I        seconds for the game, and more after each move: 10+0.1\n"
           "                    (of several bounds the first that is reached ends a search)\n"
           "  --openings FILE   EPD, FEN or PGN; of PGN games at most --opening-plies N half moves\n"
           "  --seed N          take the openings in the order of this number (0: as they stand)\n"
           "  --concurrency N   games at a time (one for each processor)\n"
           "  --hash MEGABYTES  of each player (8)\n"
           "  --resign MOVES:CENTIPAWNS      a game is lost when both have thought so for so many moves\n"
           "  --draw FROM:MOVES:CENTIPAWNS   from this move on a game is drawn after so many moves near 0\n"
           "  --sprt ELO0 ELO1  end as soon as one of the two leads can be ruled out, each at a risk of 5 %\n"
           "  --state FILE      keep the games here; the same command goes on after it was stopped or killed\n"
           "  --pgn FILE        the games with scores and depths, added to what stands there\n"
           "  --report FILE.svg a picture\n"
           "  --show-every N    games between two lines of results (20)\n\n"
           "At fixed nodes or depth the same options give the same games, whatever --concurrency is.\n";
    return status;
}

// --- The command line ---

constexpr option long_options[] = {
    {"first", required_argument, nullptr, '1'},    {"second", required_argument, nullptr, '2'},
    {"games", required_argument, nullptr, 'g'},    {"nodes", required_argument, nullptr, 'n'},
    {"depth", required_argument, nullptr, 'd'},    {"time", required_argument, nullptr, 't'},
    {"openings", required_argument, nullptr, 'o'}, {"opening-plies", required_argument, nullptr, 'O'},
    {"seed", required_argument, nullptr, 's'},     {"concurrency", required_argument, nullptr, 'c'},
    {"hash", required_argument, nullptr, 'h'},     {"resign", required_argument, nullptr, 'r'},
    {"draw", required_argument, nullptr, 'D'},     {"sprt", required_argument, nullptr, 'S'},
    {"state", required_argument, nullptr, 'k'},    {"pgn", required_argument, nullptr, 'p'},
    {"report", required_argument, nullptr, 'R'},   {"show-every", required_argument, nullptr, 'e'},
    {"help", no_argument, nullptr, 'H'},           {nullptr, 0, nullptr, 0}};

/// The second word of an option that takes two.
std::string_view SecondWord(int argc, char** argv) { return optind < argc ? argv[optind++] : ""; }

/// Takes one option. Throws std::runtime_error with what is wrong.
void TakeOption(int letter, int argc, char** argv, Options& options) {
    constexpr std::int64_t most = 1'000'000'000'000;
    MatchPlan& plan = options.plan;
    const std::string_view value = optarg != nullptr ? optarg : "";
    if (TakeRuleOption(letter, value, plan.rules)) return;
    switch (letter) {
        case '1':
            plan.players[0] = ReadPlayer(value);
            break;
        case '2':
            plan.players[1] = ReadPlayer(value);
            break;
        case 'g':
            plan.games = ReadNumber<std::uint64_t>("--games", value, 2, most);
            if (plan.games % 2 != 0) throw std::runtime_error("--games takes an even number");
            break;
        case 'o':
            options.openings_file = value;
            break;
        case 'O':
            options.opening_plies = ReadNumber<std::uint32_t>("--opening-plies", value, 0, 1000);
            break;
        case 's':
            options.seed = ReadNumber<std::uint64_t>("--seed", value, 0, most);
            break;
        case 'c':
            plan.concurrency = ReadNumber<unsigned>("--concurrency", value, 1, 1024);
            break;
        case 'S':
            options.test = std::make_unique<Sprt>();
            options.test->elo0 = ReadReal("--sprt", value, -1000, 1000);
            options.test->elo1 = ReadReal("--sprt", SecondWord(argc, argv), -1000, 1000);
            if (options.test->elo0 >= options.test->elo1) {
                throw std::runtime_error("--sprt takes two leads, the smaller one first");
            }
            break;
        case 'k':
            options.state = value;
            break;
        case 'p':
            options.pgn = value;
            break;
        case 'R':
            options.report = value;
            break;
        case 'e':
            options.show_every = ReadNumber<std::uint64_t>("--show-every", value, 1, most);
            break;
        default:
            options.is_help = true;
    }
}

/// Throws std::runtime_error for options that don't fit together.
void CheckOptions(const Options& options) {
    if (options.openings_file.empty()) throw std::runtime_error("--openings is missing");
    CheckRules(options.plan.rules);
}

/// Throws std::runtime_error.
void LoadOpenings(Options& options) {
    MatchPlan& plan = options.plan;
    plan.openings = OpeningsOfFile(options.openings_file, options.opening_plies);
    Shuffle(plan.openings, options.seed);
    const bool is_exact = plan.rules.base_time == 0;
    if (is_exact && plan.games / 2 > plan.openings.size()) {
        throw std::runtime_error("only " + std::to_string(plan.openings.size()) + " openings for " +
                                 std::to_string(plan.games / 2) +
                                 " pairs: without a clock the same games would come again");
    }
}

// --- The match ---

/// Throws std::runtime_error if nobody was told what was said.
void TestStandardOutput() {
    if (!std::cout.flush()) throw std::runtime_error("can't write to standard output");
}

void Say(const std::string& line) {
    std::cout << line << '\n';
    TestStandardOutput();
}

/// Counts games as they end, keeps them, and tells how it stands.
class Bookkeeper {
  public:
    explicit Bookkeeper(const Options& options) : options_(options), next_show_(options.show_every) {
        if (!options.state.empty()) state_ = std::make_unique<StateFile>(options.state, options.plan);
        if (state_) {
            for (const PlayedGame& game : state_->games()) {
                if (game.number >= options.plan.games) continue;
                known_.insert(game.number);
                Count(game);
            }
        }
        // What can't be written is told before the first game.
        if (!options.pgn.empty()) pgn_ = std::make_unique<PgnFile>(options.pgn, known_games_);
        WriteReport();
        if (!known_.empty()) Say("went on after " + std::to_string(known_.size()) + " games");
    }

    [[nodiscard]] bool Wants(std::uint64_t game) const { return !known_.contains(game); }
    void Take(const PlayedGame& game) {
        if (state_) state_->Add(game);
        Count(game);
        if (scores_.pairs_counted() * 2 >= next_show_) Show();
    }
    [[nodiscard]] bool IsDecided() const { return verdict_ != SprtVerdict::undecided; }

    void Finish() {
        if (scores_.games() != shown_ || scores_.pairs_counted() == 0) Show();
        if (IsDecided()) {
            const bool is_better = verdict_ == SprtVerdict::better;
            std::ostringstream text;
            text << "decided: the lead is " << (is_better ? "not " : "") << options_.test->elo0 << ", it is "
                 << (is_better ? "" : "not ") << options_.test->elo1 << " Elo";
            Say(text.str());
        }
    }

  private:
    void Count(const PlayedGame& game) {
        if (!options_.pgn.empty()) texts_[game.number] = PgnOf(options_.plan, game);
        scores_.Take(game.number, game.result);
        while (!IsDecided() && scores_.CountNext()) {
            history_.push_back({scores_.pairs_counted() * 2, StrengthOf(scores_.pairs()).elo});
            WriteNextPair();
            if (options_.test) verdict_ = options_.test->Judge(scores_.pairs());
        }
        if (IsDecided()) stop_match = true;
    }

    /// The file has the games that count, in their order.
    void WriteNextPair() {
        if (options_.pgn.empty()) return;
        for (const std::uint64_t game : {scores_.pairs_counted() * 2 - 2, scores_.pairs_counted() * 2 - 1}) {
            if (pgn_) {
                pgn_->Add(texts_.at(game));
            } else {
                known_games_ += texts_.at(game);
            }
            texts_.erase(game);
        }
    }

    void Show() {
        shown_ = scores_.games();
        next_show_ = scores_.pairs_counted() * 2 + options_.show_every;
        Say(ScoreLine(scores_, options_.test.get()));
        WriteReport();
    }

    void WriteReport() const {
        if (options_.report.empty()) return;
        const auto& players = options_.plan.players;
        const std::string svg = ReportSvg(players[0].name, players[1].name, scores_, history_);
        if (ReplaceFile(options_.report, svg) != FileOutcome::written) {
            throw std::runtime_error("can't write " + options_.report);
        }
    }

    const Options& options_;
    std::unique_ptr<StateFile> state_;
    std::unique_ptr<PgnFile> pgn_;
    std::string known_games_;  ///< in PGN, of the state file; for a PGN file that is still to be opened
    std::map<std::uint64_t, std::string> texts_;  ///< of games that wait for others
    std::set<std::uint64_t> known_;               ///< games of the state file
    PairScores scores_;
    std::vector<ScorePoint> history_;
    SprtVerdict verdict_ = SprtVerdict::undecided;
    GameCounts shown_;
    std::uint64_t next_show_;  ///< games
};

void Play(Options& options) {
    LoadOpenings(options);
    Bookkeeper bookkeeper(options);
    std::signal(SIGINT, StopMatch);
    std::signal(SIGTERM, StopMatch);
    if (!bookkeeper.IsDecided()) {
        PlayMatch(
            options.plan, [&](std::uint64_t game) { return bookkeeper.Wants(game); },
            [&](const PlayedGame& game) { bookkeeper.Take(game); }, stop_match);
    }
    bookkeeper.Finish();
}

}  // namespace

int RunSelfplay(int argc, char** argv) {
    // Searches of other settings than the usual ones say odd things to the log.
    const EchoScope silent(vlog, Echo::off);
    Options options;
    options.plan.games = 1000;
    options.plan.concurrency = std::max(std::thread::hardware_concurrency(), 1U);
    try {
        options.plan.players = {ReadPlayer(""), ReadPlayer("")};
        for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
            if (letter == '?') return Usage(std::cerr, EXIT_FAILURE);
            TakeOption(letter, argc, argv, options);
        }
        if (optind != argc) return Usage(std::cerr, EXIT_FAILURE);
        if (options.is_help) {
            Usage(std::cout, EXIT_SUCCESS);
            TestStandardOutput();
            return EXIT_SUCCESS;
        }
        CheckOptions(options);
        Play(options);
    } catch (const std::exception& error) {
        std::cerr << "selfplay: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
