#include "selfplay/game.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <new>

#include "search/driver/silent_host.h"

namespace {

/// Of each of the two tables of the evaluation.
constexpr std::uint64_t evaluation_bytes = mebibyte;

/// Notes at which depth the search last came to a move, and ends it when the match is stopped.
class MoveListener : public SilentHost {
  public:
    explicit MoveListener(const std::atomic<bool>& stop) : stop_(stop) {}

    void pollInput() override {
        if (stop_) throw search_aborted_exception{.discard = true};
    }
    void sendDepthStarted(int depth) override { iteration_ = depth; }
    void sendThinking(const SearchInfo&) override { depth_ = iteration_; }
    void sendNewPvMove(const std::string&) override { depth_ = iteration_; }

    [[nodiscard]] int depth() const { return depth_; }

  private:
    const std::atomic<bool>& stop_;
    int iteration_ = 0;
    int depth_ = 0;
};

/// What is left to both sides, milliseconds.
class Clocks {
  public:
    explicit Clocks(const GameRules& rules) : rules_(rules), left_{rules.base_time, rules.base_time} {}

    /// A thirtieth of what is left and most of the increment, which the search may stretch, and a limit that leaves
    /// something for the moves to come: a search looks at its clock a few times in a second only.
    void Bound(Colour side, SearchLimits& limits) const {
        if (rules_.base_time == 0) return;
        const std::int64_t left = left_[side];
        const std::int64_t usual = left / 30 + rules_.increment * 3 / 4;
        limits.variable_time_limit = Milliseconds(std::min(usual, left / 3));
        limits.max_time_limit = Milliseconds(std::min(4 * usual, left / 2));
    }
    /// Takes off a move's time. False if there was too little left for it.
    [[nodiscard]] bool Spend(Colour side, std::chrono::steady_clock::time_point start) {
        if (rules_.base_time == 0) return true;
        const auto spent = std::chrono::steady_clock::now() - start;
        left_[side] -= std::chrono::duration_cast<std::chrono::milliseconds>(spent).count();
        if (left_[side] < 0) return false;
        left_[side] += rules_.increment;
        return true;
    }

  private:
    static std::int32_t Milliseconds(std::int64_t time) {
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(time, 1, 1'000'000'000));
    }

    const GameRules& rules_;
    std::array<std::int64_t, 2> left_;
};

SearchLimits LimitsOf(const GameRules& rules, const PlayerSetup& player) {
    return {.max_depth = rules.depth, .max_nodes = player.nodes != 0 ? player.nodes : rules.nodes};
}

}  // namespace

Player::Player(const PlayerSetup& setup, std::uint64_t hash_megabytes)
    : setup_(setup), engine_(std::make_unique<Engine>()) {
    Configure(*engine_, setup);
    if (!engine_->tables.Resize(hash_megabytes * mebibyte, evaluation_bytes)) throw std::bad_alloc();
}

void Player::StartGame() {
    engine_->tables.Clear();
    controller_ = std::make_unique<SearchController>(*engine_);
    controller_->SetContempt(setup_.contempt);
    controller_->SetPersonality(setup_.personality);
}

std::optional<PlayedMove> Player::Think(const UserBoard& game, const SearchLimits& limits,
                                        const std::atomic<bool>& stop) {
    MoveListener listener(stop);
    controller_->Run(limits, game, listener);
    if (stop) return std::nullopt;
    return PlayedMove{
        .move = controller_->best_move() & move_bits, .score = controller_->score(), .depth = listener.depth()};
}

std::uint64_t SignatureOfEngine() {
    constexpr std::int32_t depth = 4;
    constexpr const char* middle_game = "r2q1rk1/pb1nbppp/1p2pn2/2p5/2BP4/P1N1PN2/1P2QPPP/R1B2RK1 w - - 0 12";
    Engine engine;
    SearchController controller(engine);
    SilentHost silence;
    UserBoard game;
    game.SetBoardFromFen(middle_game);
    controller.Run({.max_depth = depth}, game, silence);
    return controller.info().nodes;
}

std::optional<PlayedGame> PlayGame(Player& white_player, Player& black_player, const Opening& opening,
                                   const GameRules& rules, const std::atomic<bool>& stop) {
    const std::array<Player*, 2> players{&white_player, &black_player};
    for (Player* const player : players) player->StartGame();
    Clocks clocks(rules);
    Adjudicator adjudicator(rules.adjudication);
    UserBoard game = opening.position;
    PlayedGame played;
    while (!game.IsGameOver()) {
        const Colour mover = game.side_to_move();
        SearchLimits limits = LimitsOf(rules, players[mover]->setup());
        clocks.Bound(mover, limits);
        const auto start = std::chrono::steady_clock::now();
        const std::optional<PlayedMove> move = players[mover]->Think(game, limits, stop);
        if (!move) return std::nullopt;
        if (!clocks.Spend(mover, start)) {
            game.EndGame(mover == white ? GameResult::black_wins : GameResult::white_wins, GameEndReason::flag_fell);
            break;
        }
        const auto number = static_cast<std::int32_t>(game.made_moves().size() / 2 + 1);
        game.MakeMove(move->move);
        played.moves.push_back(*move);
        if (game.IsGameOver()) break;
        if (const auto result = adjudicator.Take(mover, move->score, number)) {
            game.EndGame(*result,
                         *result == GameResult::draw ? GameEndReason::agreed_draw : GameEndReason::resignation);
        }
    }
    played.result = game.result();
    played.reason = game.reason();
    return played;
}
