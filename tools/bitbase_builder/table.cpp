#include "bitbase_builder/table.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "chess/bitboard_tables.h"

// A table is solved by passes over its positions. A pass looks at the positions that were marked and asks the rules of
// chess for their moves: a move into a loss of the enemy wins, and who has only moves into wins of the enemy loses. A
// position that is settled marks those that one move of one man would lead from. The first pass looks at all. When
// nothing is marked any more, what is not settled is a draw. A settled value never changes, so that several threads may
// work on one pass: whatever they read of each other is true.
//
// Left and right make no difference, so only half of the positions are kept: those with the white king on the files a
// to d, or with the blocked pair there. From its lowest bits on, an index holds six bits for each man that may stand
// anywhere, five or six for the white king, one for the side to move, and above that the number of a blocked pair.

namespace bitbase_builder {

namespace {

constexpr std::size_t blocked_squares = 20;  // a2 to d6

/// Numbers the squares of the files a to d.
int half_number(Square square) { return (square >> 3) * 4 + (square & 3); }
Square half_square(std::size_t number) { return static_cast<Square>(number / 4 * 8 + number % 4); }

Value answer_of(Value value_of_enemy) {
    return value_of_enemy == unknown ? unknown : value_of_enemy == win ? loss : win;
}

/// How good a value is for the side to move.
int rank_of(Value value) { return value == loss ? 0 : value == unknown ? 1 : 2; }

std::uint8_t load(const std::uint8_t& byte) {
    return std::atomic_ref(const_cast<std::uint8_t&>(byte)).load(std::memory_order_relaxed);
}
void store(std::uint8_t& byte, std::uint8_t value) { std::atomic_ref(byte).store(value, std::memory_order_relaxed); }

/// Men in the order that names a table: the stronger first, White's before Black's.
bool stands_before(const Man& a, const Man& b) { return a.colour != b.colour ? a.colour < b.colour : a.type > b.type; }

/// The white pawn that has a black one in front, -1 if there is none.
int blocked_pawn_of(const Position& position) {
    for (int man = 2; man < position.count; ++man) {
        if (position.men[static_cast<std::size_t>(man)] != Man{white, pawn}) continue;
        const int front = position.man_on(position.at[static_cast<std::size_t>(man)] + 8);
        if (front >= 2 && position.men[static_cast<std::size_t>(front)] == Man{black, pawn}) return man;
    }
    return -1;
}

/// One pass: the positions of `marked` in a part of the table.
class Pass {
  public:
    Pass(const Library& library, Table& table, std::vector<std::uint8_t>& marked, std::vector<std::uint8_t>& next)
        : library_(library), table_(table), marked_(marked), next_(next) {}

    /// Works on a part of the table; returns how many positions it settled.
    std::size_t Run(std::size_t begin, std::size_t end, bool is_first) {
        settled_ = 0;
        for (std::size_t index = begin; index < end; ++index) {
            if (load(marked_[index]) == 0) continue;
            store(marked_[index], 0);
            if (table_.value(index) != unknown) continue;
            const Position position = table_.position_of(index);
            if (!is_legal(position) || (is_first && !MayBeSettledAtOnce(position))) continue;
            const Value value = Evaluate(position);
            if (value != unknown) Settle(position, index, value);
        }
        return settled_;
    }

  private:
    Value Evaluate(const Position& position) const {
        bool has_moves = false;
        bool all_lose = true;
        const bool searched_all = for_each_move(position, [&](const Successor& successor) {
            has_moves = true;
            const Value value = library_.value_after(successor, &table_);
            if (value == loss) return false;
            if (value != win) all_lose = false;
            return true;
        });
        if (!searched_all) return win;
        if (has_moves) return all_lose ? loss : unknown;
        const Colour side = position.to_move;
        return is_attacked(position, position.at[side], Opponent(side)) ? loss : unknown;
    }

    /// Before anything in the table is settled only other tables and checkmates settle a position.
    bool MayBeSettledAtOnce(const Position& position) const {
        const Colour side = position.to_move;
        if (is_attacked(position, position.at[side], Opponent(side))) return true;
        const Bitboard occupied = position.occupied();
        Bitboard enemies = 0;
        Bitboard attacks = 0;
        for (int man = 0; man < position.count; ++man) {
            const auto m = static_cast<std::size_t>(man);
            if (position.men[m].colour != side) {
                enemies |= Bit(position.at[m]);
                continue;
            }
            attacks |= attacks_of(position.men[m], position.at[m], occupied);
            if (position.men[m].type != pawn) continue;
            const int rank = side == white ? RankOf(position.at[m]) : 7 - RankOf(position.at[m]);
            if (rank == 6 || rank == 1) return true;  // a promotion, or a double step into an en passant capture
        }
        return (attacks & enemies) != 0;
    }

    void Settle(const Position& position, std::size_t index, Value value) {
        table_.set(index, value);
        ++settled_;
        ForEachPositionBefore(position, [&](const Position& before, bool is_certain) {
            const std::size_t index_before = table_.index_of(before);
            if (table_.value(index_before) != unknown) return;
            if (value == win || !is_certain) {
                store(next_[index_before], 1);
                return;
            }
            // A move into a loss of the enemy wins, whatever else there is.
            if (!is_legal(before)) return;
            table_.set(index_before, win);
            ++settled_;
            ForEachPositionBefore(before,
                                  [&](const Position& earlier, bool) { store(next_[table_.index_of(earlier)], 1); });
        });
    }

    /// Calls `visit(before, is_certain)` for the positions, legal or not, in which the side that is not to move may
    /// have made a move without a capture. A double step is not certain: it may be answered en passant.
    template <class Visit>
    void ForEachPositionBefore(const Position& position, Visit visit) const {
        const Colour mover = Opponent(position.to_move);
        const Bitboard occupied = position.occupied();
        for (int man = 0; man < position.count; ++man) {
            const auto m = static_cast<std::size_t>(man);
            if (position.men[m].colour != mover) continue;
            for (Bitboard origins = OriginsOf(position, man, occupied); origins != 0;) {
                const Square origin = TakeNextBit(origins);
                const int distance = origin - position.at[m];
                Position before = position;
                before.at[m] = origin;
                before.to_move = mover;
                visit(before, position.men[m].type != pawn || (distance != 16 && distance != -16));
            }
        }
    }

    Bitboard OriginsOf(const Position& position, int man, Bitboard occupied) const {
        const auto m = static_cast<std::size_t>(man);
        const Square s = position.at[m];
        if (position.men[m].type != pawn) return attacks_of(position.men[m], s, occupied) & ~occupied;
        if (table_.has_blocked_pair() && man < 4) return 0;
        const int back = position.men[m].colour == white ? -8 : 8;
        const int rank = position.men[m].colour == white ? RankOf(s) : 7 - RankOf(s);
        if (rank < 2 || Has(occupied, s + back)) return 0;
        const bool two = rank == 3 && !Has(occupied, s + 2 * back);
        return Bit(s + back) | (two ? Bit(s + 2 * back) : 0);
    }

    const Library& library_;
    Table& table_;
    std::vector<std::uint8_t>& marked_;
    std::vector<std::uint8_t>& next_;
    std::size_t settled_ = 0;
};

}  // namespace

// --- Table ---

Table::Table(std::vector<Man> extras) : extras_(std::move(extras)) {
    const std::size_t positions = std::size_t{64} * 64 * 2 / 2;  // of the kings, for both sides to move, left half
    const std::size_t free_extras = has_blocked_pair() ? 1 : extras_.size();
    values_.resize((positions << 6 * free_extras) * (has_blocked_pair() ? 2 * blocked_squares : 1));
}

Position Table::position_of(std::size_t index) const noexcept {
    Position position;
    position.count = 2 + static_cast<int>(extras_.size());
    for (std::size_t i = 0; i < extras_.size(); ++i) position.men[2 + i] = extras_[i];
    const auto take = [&](int bits) {
        const std::size_t number = index & ((std::size_t{1} << bits) - 1);
        index >>= bits;
        return number;
    };
    for (std::size_t i = has_blocked_pair() ? 2 : 0; i < extras_.size(); ++i) {
        position.at[2 + i] = static_cast<Square>(take(6));
    }
    position.at[1] = static_cast<Square>(take(6));
    position.at[0] = has_blocked_pair() ? static_cast<Square>(take(6)) : half_square(take(5));
    position.to_move = static_cast<Colour>(take(1));
    if (has_blocked_pair()) {
        position.at[2] = half_square(index) + 8;
        position.at[3] = position.at[2] + 8;
    }
    return position;
}

std::size_t Table::index_of(const Position& position) const noexcept {
    const int mirror = FileOf(position.at[has_blocked_pair() ? 2 : 0]) > 3 ? 7 : 0;
    const auto square_of = [&](std::size_t man) { return position.at[man] ^ mirror; };
    std::size_t index = 0;
    const auto put = [&](int bits, int number) { index = index << bits | static_cast<std::size_t>(number); };
    if (has_blocked_pair()) put(5, half_number(square_of(2) - 8));
    put(1, static_cast<int>(position.to_move));
    if (has_blocked_pair())
        put(6, square_of(0));
    else
        put(5, half_number(square_of(0)));
    put(6, square_of(1));
    for (std::size_t i = extras_.size(); i > (has_blocked_pair() ? 2U : 0U); --i) put(6, square_of(1 + i));
    return index;
}

Value Table::value(std::size_t index) const noexcept { return static_cast<Value>(load(values_[index])); }
void Table::set(std::size_t index, Value value) noexcept { store(values_[index], value); }

std::string name_of(const std::vector<Man>& extras) {
    constexpr std::string_view letters = " PNBRQK";
    std::string of_white = "K";
    std::string of_black = "K";
    for (const Man& man : extras) {
        (man.colour == white ? of_white : of_black) += letters[static_cast<std::size_t>(man.type)];
    }
    return of_white + of_black;
}

// --- Library ---

/// Brings a position into the form of the table that has its men: the side with the blocked pawn, with more or with
/// stronger men is White.
const Table* Library::find(const Position& position, Position& arranged) const {
    for (const bool turn : {false, true}) {
        arranged = turn ? position.turned() : position;
        const int extras = arranged.count - 2;
        if (extras == 3) {
            const int blocked = blocked_pawn_of(arranged);
            if (blocked < 0) continue;
            const int front = arranged.man_on(arranged.at[static_cast<std::size_t>(blocked)] + 8);
            const int other = 2 + 3 + 4 - blocked - front;
            const Position old = arranged;
            for (const auto& [to, from] : {std::pair{2, blocked}, std::pair{3, front}, std::pair{4, other}}) {
                arranged.men[static_cast<std::size_t>(to)] = old.men[static_cast<std::size_t>(from)];
                arranged.at[static_cast<std::size_t>(to)] = old.at[static_cast<std::size_t>(from)];
            }
        } else if (extras == 2 && stands_before(arranged.men[3], arranged.men[2])) {
            std::swap(arranged.men[2], arranged.men[3]);
            std::swap(arranged.at[2], arranged.at[3]);
        }
        for (const auto& table : tables_) {
            if (table->extras().size() != static_cast<std::size_t>(extras)) continue;
            if (std::equal(table->extras().begin(), table->extras().end(), arranged.men.begin() + 2))
                return table.get();
        }
    }
    return nullptr;
}

Value Library::value(const Position& position) const {
    if (position.count == 2) return unknown;
    Position arranged;
    const Table* const table = find(position, arranged);
    if (table == nullptr) throw std::logic_error("bitbase_builder: men of no table");
    return table->value(table->index_of(arranged));
}

Value Library::value_after(const Successor& successor, const Table* solving) const {
    const Position& position = successor.position;
    const Value plain =
        solving != nullptr && !successor.is_conversion ? solving->value(solving->index_of(position)) : value(position);
    if (successor.en_passant < 0) return plain;
    const EnPassantCaptures captures = en_passant_captures(position, successor.en_passant);
    if (captures.count == 0) return plain;
    Value best = loss;
    for (int i = 0; i < captures.count; ++i) {
        const Value value_of_capture = answer_of(value(captures.positions[static_cast<std::size_t>(i)]));
        if (rank_of(value_of_capture) > rank_of(best)) best = value_of_capture;
    }
    if (!has_move(position)) return best;  // the capture is the only move: without it this were the end
    return rank_of(plain) > rank_of(best) ? plain : best;
}

const Table& Library::add(std::vector<Man> extras, int threads, const std::function<void(std::size_t)>& progress) {
    auto table = std::make_unique<Table>(std::move(extras));
    std::vector<std::uint8_t> marked(table->size(), 1);
    std::vector<std::uint8_t> next(table->size(), 0);
    for (bool is_first = true;; is_first = false) {
        std::atomic<std::size_t> settled = 0;
        std::atomic<std::size_t> part = 0;
        constexpr std::size_t part_size = std::size_t{1} << 16;
        const auto work = [&] {
            Pass pass(*this, *table, marked, next);
            for (;;) {
                const std::size_t begin = part.fetch_add(part_size);
                if (begin >= table->size()) return;
                settled += pass.Run(begin, std::min(begin + part_size, table->size()), is_first);
            }
        };
        std::vector<std::thread> helpers;
        for (int i = 1; i < threads; ++i) helpers.emplace_back(work);
        work();
        for (std::thread& helper : helpers) helper.join();
        if (progress) progress(settled);
        if (settled == 0) break;
        marked.swap(next);
    }
    tables_.push_back(std::move(table));
    return *tables_.back();
}

}  // namespace bitbase_builder
