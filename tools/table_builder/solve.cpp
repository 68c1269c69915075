#include "table_builder/solve.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chess/bitboard_tables.h"
#include "table_builder/parallel.h"

// Positions are settled in the order of their distance, one pass for each number of plies, from checkmate on.
//
// A pass of an odd number settles wins: whoever can move into a loss that the pass before has settled wins. So the
// moves are taken back that lead to those losses. A pass of an even number settles losses: whoever can move nowhere but
// into wins of the enemy loses, and the last of them to be settled tells how long it takes. So the moves that lead to
// the wins of the pass before are taken back as well, and what is found is looked at: do all of its moves lose?
//
// Each pass has two phases, and all threads end the first before one begins the second. The first reads values and
// changes none: what it finds it marks, one bit for each position. The second settles what is marked; a thread changes
// the values of its own part alone, but reads those of others.
//
// Captures and promotions lead to other tables, which are known. What they are worth is found once, before the first
// pass: the shortest win, or that one of them draws, or the longest loss. The pass of that number then takes it up.
//
// En passant rights are in no table. A double step beside an enemy pawn is not taken back. The positions that have such
// a move are few; they are kept in a list, and each pass looks at all of their moves, en passant captures included.
//
// Example, king and rook against king: pass 0 has the checkmates. Pass 1 takes back one white move from them, for the
// mates in one. Pass 2 takes back black moves and asks where all others lose too: mated in one. No capture wins, but
// where Black can take the rook, that is a draw from the start, and no pass calls it a loss.

namespace table_builder {

namespace {

using bitbase_builder::attacks_of;
using bitbase_builder::en_passant_captures;
using bitbase_builder::EnPassantCaptures;
using bitbase_builder::for_each_conversion;
using bitbase_builder::for_each_move;
using bitbase_builder::has_move;
using bitbase_builder::is_attacked;
using bitbase_builder::is_legal;
using bitbase_builder::Successor;
using namespace VorkaTablebases;

/// Positions that a thread takes at a time.
constexpr std::uint64_t part = 1 << 14;

constexpr std::string_view too_long = "a mate is too long for a byte";

/// The value before a move, for its mover, by the value after it, for the other side.
TableValue Before(TableValue after) {
    if (after == table_draw) return table_draw;
    const int plies = PliesOf(after) + 1;
    if (plies > most_plies) throw std::overflow_error(std::string(too_long));
    return ValueOf(plies);
}

/// Draws are worth more than losses, and less than wins; short wins and long losses are worth more than others.
int WorthOf(TableValue value) { return ScoreOf(value); }

TableValue Load(const TableValue& value) {
    return std::atomic_ref(const_cast<TableValue&>(value)).load(std::memory_order_relaxed);
}
void Store(TableValue& value, TableValue to) { std::atomic_ref(value).store(to, std::memory_order_relaxed); }

/// Calls `visit(number)` for the places of a byte among `values[begin .. end)`, which nobody may change meanwhile.
template <class Visit>
void ForEachPlace(const std::vector<TableValue>& values, TableValue byte, std::uint64_t begin, std::uint64_t end,
                  Visit visit) {
    const TableValue* const first = values.data() + begin;
    const TableValue* const last = values.data() + end;
    for (const TableValue* at = first; at < last; ++at) {
        at = static_cast<const TableValue*>(std::memchr(at, byte, static_cast<std::size_t>(last - at)));
        if (at == nullptr) return;
        visit(static_cast<std::uint64_t>(at - values.data()));
    }
}

class Solver {
  public:
    Solver(const Material& material, const SolvedTables& known, int threads, const SolveReport& report)
        : known_(known), threads_(threads), report_(report), table_(std::make_unique<SolvedTable>(material)) {
        const auto size = static_cast<std::size_t>(table_->index().size());
        table_->values.resize(size);
        by_conversion_.resize(size);
        marks_.resize(size / 64 + 1);
    }

    std::unique_ptr<SolvedTable> Run() {
        const std::uint64_t size = table_->index().size();
        InParallel(threads_, size, part, [&](int thread, std::uint64_t begin, std::uint64_t end) {
            Prepare(begin, end);
            Report(thread, 0, static_cast<double>(end) / static_cast<double>(size));
        });
        int idle_passes = 0;
        for (int plies = 1; NeedsPass(plies, idle_passes, longest_conversion_); ++plies) {
            const std::uint64_t settled_before = settled_;
            if (plies % 2 != 0) {
                SettleWins(plies);
            } else {
                SettleLosses(plies);
            }
            idle_passes = settled_ == settled_before ? idle_passes + 1 : 0;
            if (plies > most_plies && idle_passes == 0) throw std::overflow_error(std::string(too_long));
        }
        return std::move(table_);
    }

  private:
    // --- Before the first pass ---

    /// Finds illegal positions, checkmates, and what captures and promotions are worth.
    void Prepare(std::uint64_t begin, std::uint64_t end) {
        int longest = 0;
        std::uint64_t open = 0;
        std::vector<std::uint64_t> with_en_passant;
        for (std::uint64_t number = begin; number < end; ++number) {
            const Position position = table_->PositionOf(number);
            TableValue& value = table_->values[number];
            if (!is_legal(position)) {
                value = table_illegal;
                continue;
            }
            const bool in_check = is_attacked(position, position.at[position.to_move], Opponent(position.to_move));
            if (in_check && !has_move(position)) {
                value = table_checkmate;
                continue;
            }
            ++open;
            const TableValue best = BestConversion(position);
            by_conversion_[number] = best;
            if (best != no_conversion && best != table_draw_by_conversion) longest = std::max(longest, PliesOf(best));
            if (MayBeTakenEnPassant(position, longest)) with_en_passant.push_back(number);
        }
        open_ += open;
        const std::scoped_lock lock(lock_);
        longest_conversion_ = std::max(longest_conversion_, longest);
        with_en_passant_.insert(with_en_passant_.end(), with_en_passant.begin(), with_en_passant.end());
    }

    /// Codes of `by_conversion_` beside wins and losses.
    static constexpr TableValue no_conversion = 0;
    static constexpr TableValue table_draw_by_conversion = 255;

    TableValue BestConversion(const Position& position) const {
        bool any = false;
        TableValue best = table_draw;
        for_each_conversion(position, [&](const Successor& successor) {
            const TableValue value = Before(known_.ValueOf(successor.position));
            if (!any || WorthOf(value) > WorthOf(best)) best = value;
            any = true;
            return true;
        });
        return !any ? no_conversion : best == table_draw ? table_draw_by_conversion : best;
    }

    /// Whether there is a double step beside an enemy pawn. `longest` becomes at least as long as what a capture en
    /// passant leads to.
    bool MayBeTakenEnPassant(const Position& position, int& longest) const {
        if (!table_->material().both_have_pawns()) return false;
        bool found = false;
        for_each_move(position, [&](const Successor& successor) {
            if (successor.is_conversion || successor.en_passant < 0) return true;
            found = true;
            const EnPassantCaptures captures = en_passant_captures(successor.position, successor.en_passant);
            for (int i = 0; i < captures.count; ++i) {
                const TableValue value = known_.ValueOf(captures.positions[static_cast<std::size_t>(i)]);
                if (value != table_draw) longest = std::max(longest, PliesOf(value) + 1);
            }
            return true;
        });
        return found;
    }

    // --- Passes ---

    void SettleWins(int plies) {
        Settle(
            plies, [](std::uint64_t) { return true; }, [](std::uint64_t) { return true; });
    }

    void SettleLosses(int plies) {
        Settle(
            plies,
            [this](std::uint64_t number) {
                const TableValue conversion = by_conversion_[number];
                return conversion != table_draw_by_conversion && !IsWin(conversion);
            },
            [this, plies](std::uint64_t number) { return AllMovesLose(number, plies); });
    }

    /// One pass. `is_possible(number)` says of a position that was not settled so far whether it deserves a closer look
    /// in the second phase, `holds(number)` takes that look. A pass of more plies than a byte holds only counts what it
    /// would settle.
    template <class IsPossible, class Holds>
    void Settle(int plies, IsPossible is_possible, Holds holds) {
        std::vector<TableValue>& values = table_->values;
        const auto mark = [&](std::uint64_t number) {
            if (values[number] == table_draw && is_possible(number)) Mark(number);
        };
        ForAllParts(plies, [&](std::uint64_t begin, std::uint64_t end) {
            if (plies <= most_plies) ForEachPlace(by_conversion_, ValueOf(plies), begin, end, mark);
            ForEachPlace(values, ValueOf(plies - 1), begin, end, [&](std::uint64_t number) {
                ForEachPositionBefore(table_->PositionOf(number), [&](const Position& before) {
                    const auto [first, second] = table_->IndicesOf(before);
                    mark(first);
                    if (second != first) mark(second);
                });
            });
        });
        ForAllParts(plies, [&](std::uint64_t begin, std::uint64_t end) {
            std::uint64_t settled = 0;
            for (std::uint64_t word = begin / 64; word * 64 < end; ++word) {
                for (std::uint64_t& marks = marks_[word]; marks != 0; marks &= marks - 1) {
                    const std::uint64_t number = word * 64 + static_cast<std::uint64_t>(std::countr_zero(marks));
                    if (!holds(number)) continue;
                    if (plies <= most_plies) Store(values[number], ValueOf(plies));
                    ++settled;
                }
            }
            settled_ += settled;
        });
        LookAtThoseWithEnPassant(plies);
    }

    template <class Work>
    void ForAllParts(int plies, Work work) {
        InParallel(threads_, table_->values.size(), part, [&](int thread, std::uint64_t begin, std::uint64_t end) {
            work(begin, end);
            Report(thread, plies, open_ == 0 ? 1 : static_cast<double>(settled_) / static_cast<double>(open_));
        });
    }

    void Mark(std::uint64_t number) {
        const std::uint64_t bit = std::uint64_t{1} << number % 64;
        const std::atomic_ref word(marks_[number / 64]);
        if ((word.load(std::memory_order_relaxed) & bit) == 0) word.fetch_or(bit, std::memory_order_relaxed);
    }

    /// Only the thread that called tells how far the work is.
    void Report(int thread, int plies, double share) const {
        if (thread == 0 && report_) report_({.plies = plies, .share = share});
    }

    /// Whether every move leads to a win of the enemy of fewer plies. Captures and promotions were seen before.
    bool AllMovesLose(std::uint64_t number, int plies) const {
        const TableValue conversion = by_conversion_[number];
        if (conversion != no_conversion && (!IsLoss(conversion) || PliesOf(conversion) > plies)) return false;
        return for_each_move(table_->PositionOf(number), [&](const Successor& successor) {
            if (successor.is_conversion) return true;
            // No pass has settled a longer win so far.
            return IsWin(Load(table_->values[table_->IndicesOf(successor.position).first]));
        });
    }

    /// Calls `visit(before)` for the positions, legal or not, in which the side that is not to move may have made a
    /// move without a capture that can't be answered en passant.
    template <class Visit>
    void ForEachPositionBefore(const Position& position, Visit visit) const {
        const Colour mover = Opponent(position.to_move);
        const Bitboard occupied = position.occupied();
        Position before = position;
        before.to_move = mover;
        for (std::size_t m = 0; m < static_cast<std::size_t>(position.count); ++m) {
            if (position.men[m].colour != mover) continue;
            for (Bitboard origins = OriginsOf(position, m, occupied); origins != 0;) {
                before.at[m] = TakeNextBit(origins);
                // Kings beside each other have no number.
                if (m < 2 && Has(bitboard_tables.king_attacks[position.at[1 - m]], before.at[m])) continue;
                visit(before);
            }
            before.at[m] = position.at[m];
        }
    }

    static Bitboard OriginsOf(const Position& position, std::size_t man, Bitboard occupied) {
        const Man& moved = position.men[man];
        const Square s = position.at[man];
        if (moved.type != pawn) return attacks_of(moved, s, occupied) & ~occupied;
        const int back = moved.colour == white ? -8 : 8;
        const int rank = moved.colour == white ? RankOf(s) : 7 - RankOf(s);
        if (rank < 2 || Has(occupied, s + back)) return 0;
        const bool two = rank == 3 && !Has(occupied, s + 2 * back) &&
                         !bitbase_builder::detail::is_beside_enemy_pawn(position, s, moved.colour);
        return Bit(s + back) | (two ? Bit(s + 2 * back) : 0);
    }

    // --- En passant ---

    void LookAtThoseWithEnPassant(int plies) {
        InParallel(threads_, with_en_passant_.size(), 64, [&](int, std::uint64_t begin, std::uint64_t end) {
            for (std::uint64_t i = begin; i < end; ++i) {
                TableValue& value = table_->values[with_en_passant_[i]];
                if (Load(value) != table_draw) continue;
                const Position position = table_->PositionOf(with_en_passant_[i]);
                if (plies % 2 != 0 ? AnyMoveWins(position, plies) : AllMovesLoseWithEnPassant(position, plies)) {
                    if (plies <= most_plies) Store(value, ValueOf(plies));
                    ++settled_;
                }
            }
        });
    }

    bool AnyMoveWins(const Position& position, int plies) const {
        return !for_each_move(position, [&](const Successor& successor) {
            const TableValue value = ValueAfter(successor, plies - 1);
            return !IsLoss(value) || PliesOf(value) >= plies;
        });
    }

    bool AllMovesLoseWithEnPassant(const Position& position, int plies) const {
        return for_each_move(position, [&](const Successor& successor) {
            const TableValue value = ValueAfter(successor, plies - 1);
            return IsWin(value) && PliesOf(value) < plies;
        });
    }

    /// The value after a move, for the side that answers it; a draw is what has not been settled so far.
    TableValue ValueAfter(const Successor& successor, int plies) const {
        const Position& position = successor.position;
        if (successor.is_conversion) return known_.ValueOf(position);
        const TableValue plain = Load(table_->values[table_->IndicesOf(position).first]);
        if (successor.en_passant < 0) return plain;
        const EnPassantCaptures captures = en_passant_captures(position, successor.en_passant);
        if (captures.count == 0) return plain;
        TableValue best = Before(known_.ValueOf(captures.positions[0]));
        if (captures.count == 2) {
            const TableValue other = Before(known_.ValueOf(captures.positions[1]));
            if (WorthOf(other) > WorthOf(best)) best = other;
        }
        if (!has_move(position)) return best;  // the capture must be made
        // A win that is too long for now may yet be beaten by a shorter one.
        if (IsWin(best) && PliesOf(best) > plies) best = table_draw;
        return WorthOf(plain) > WorthOf(best) ? plain : best;
    }

    const SolvedTables& known_;
    const int threads_;
    const SolveReport& report_;
    std::unique_ptr<SolvedTable> table_;  ///< table_draw is also what has not been settled
    std::vector<TableValue> by_conversion_;
    std::vector<std::uint64_t> marks_;  ///< a bit for each position
    std::vector<std::uint64_t> with_en_passant_;
    int longest_conversion_ = 0;
    std::atomic<std::uint64_t> open_ = 0;     ///< positions that were not settled before the first pass
    std::atomic<std::uint64_t> settled_ = 0;  ///< of them so far
    std::mutex lock_;
};

}  // namespace

std::unique_ptr<SolvedTable> Solve(const Material& material, const SolvedTables& known, int threads,
                                   const SolveReport& report) {
    return Solver(material, known, threads, report).Run();
}

std::uint64_t MemoryToSolve(const Material& material, int threads) {
    // Measured, rounded up: the program without any table, and a thread with what it packs by.
    constexpr std::uint64_t program_bytes = std::uint64_t{6} << 20;
    constexpr std::uint64_t thread_bytes = std::uint64_t{1} << 20;
    std::uint64_t bytes = 0;
    for (const Material& next : material.Successors()) bytes += MateTableIndex(next).size();
    const std::uint64_t size = MateTableIndex(material).size();
    // The list of positions with a double step that may be answered en passant: two pawns of 48 * 48 places stand like
    // that on 14. It grows by doubling, and what it is copied from is there too.
    const auto pawns = [&](Colour side) {
        return static_cast<std::uint64_t>(std::ranges::count(material.of(side), pawn));
    };
    const std::uint64_t listed = size * 14 / (48 * 48) * pawns(white) * pawns(black);
    // Values, conversions, marks, and the packed blocks of the file twice, of which there are few.
    return program_bytes + static_cast<std::uint64_t>(threads) * thread_bytes + bytes + 2 * size + size / 8 + size / 2 +
           3 * listed * sizeof(std::uint64_t);
}

}  // namespace table_builder
