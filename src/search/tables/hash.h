#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#include "chess/bitboard_tables.h"
#include "chess/move.h"
#include "frame/base/zeroed_pages.h"
#include "search/tables/node_flags.h"
#include "search/tables/score.h"

/// What the three tables of an engine have in common: a power of two of slots that are found by masking a key. An
/// entry with a zero key is empty. Sizes are in bytes.
class ABSTRACT_HASH_TABLE {
  public:
    ABSTRACT_HASH_TABLE(const ABSTRACT_HASH_TABLE&) = delete;
    ABSTRACT_HASH_TABLE& operator=(const ABSTRACT_HASH_TABLE&) = delete;
    virtual ~ABSTRACT_HASH_TABLE() = default;

    /// Takes the largest power of two of slots that fits in `bytes`, at least two, all empty. False, with the old table
    /// left as it is, if there is no memory for it.
    virtual bool resize(std::uint64_t bytes) = 0;
    virtual void clear() noexcept = 0;
    /// Takes the memory of the table from the system, which otherwise happens entry by entry inside the search. False
    /// if the deadline came before its end.
    virtual bool touch(Deadline deadline) noexcept = 0;
    [[nodiscard]] virtual std::uint64_t totalSlots() const noexcept = 0;
    /// Counts the empty entries: walks the whole table.
    [[nodiscard]] virtual std::uint64_t freeSlots() const noexcept = 0;
    [[nodiscard]] virtual std::uint64_t entrySize() const noexcept = 0;
    [[nodiscard]] virtual std::uint64_t totalBytes() const noexcept { return totalSlots() * entrySize(); }
    /// Zeroes the statistics, for a new search.
    virtual void newSearch() noexcept { probes_ = hits_ = 0; }

    [[nodiscard]] std::uint64_t probes() const noexcept { return probes_; }
    [[nodiscard]] std::uint64_t hits() const noexcept { return hits_; }

  protected:
    ABSTRACT_HASH_TABLE() = default;

    std::uint64_t probes_ = 0;
    std::uint64_t hits_ = 0;
};

/// The memory of one table. `Slot` is a plain record that is empty when all its bytes are zero.
template <class Slot>
class HashSlots {
  public:
    /// Throws std::bad_alloc.
    HashSlots() {
        if (!Resize(first_size)) throw std::bad_alloc();
    }

    /// False, with nothing changed, if there is no memory.
    bool Resize(std::uint64_t bytes) noexcept;
    void Clear() noexcept { pages_.Clear(); }
    bool Touch(Deadline deadline) noexcept { return pages_.Touch(deadline); }
    [[nodiscard]] std::uint64_t count() const noexcept { return mask_ + 1; }
    [[nodiscard]] Slot& at(std::uint64_t key) noexcept { return static_cast<Slot*>(pages_.data())[key & mask_]; }
    [[nodiscard]] const Slot& at(std::uint64_t key) const noexcept { return begin()[key & mask_]; }
    [[nodiscard]] const Slot* begin() const noexcept { return static_cast<const Slot*>(pages_.data()); }
    [[nodiscard]] const Slot* end() const noexcept { return begin() + count(); }

    static constexpr std::uint64_t first_size = 0x3000;  // bytes
    static constexpr std::uint64_t fewest_slots = 2;

  private:
    ZeroedPages pages_;
    std::uint64_t mask_ = 0;  ///< number of slots - 1
};

template <class Slot>
bool HashSlots<Slot>::Resize(std::uint64_t bytes) noexcept {
    const std::uint64_t count = std::bit_floor(std::max(bytes / sizeof(Slot), fewest_slots));
    if (count > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(Slot)) return false;
    ZeroedPages fresh(static_cast<std::size_t>(count * sizeof(Slot)));
    if (fresh.data() == nullptr) return false;
    pages_ = std::move(fresh);
    mask_ = count - 1;
    return true;
}

/// A stored mate score counts from its node; this one counts from the root.
[[nodiscard]] constexpr Score FromRoot(Score stored, std::uint32_t ply) noexcept {
    if (stored >= mate_score_limit) return stored - static_cast<Score>(ply);
    if (stored <= -mate_score_limit) return stored + static_cast<Score>(ply);
    return stored;
}

/// Two bounds of one position, since every question of the search is asked with a null window. Mate scores count from
/// the node, not from the root.
struct TranspositionEntry {
    std::uint64_t key = 0;
    std::int16_t lower_bound = -infinity_bound;
    std::int16_t upper_bound = infinity_bound;
    std::int16_t lower_distance = no_distance;
    std::int16_t upper_distance = no_distance;
    std::uint32_t move_word = 0;   ///< bits 0-22 the move, 24 the cut bit, 25-29 the class, 30-31 NodeFlags bits 0-1
    std::uint32_t flags_word = 0;  ///< bits 0-2 NodeFlags bits 2-4, 9-31 the age

    /// `key`'s entry with a move, its class and flags; it has no bound yet.
    [[nodiscard]] static TranspositionEntry Make(std::uint64_t key, Move move, bool cut, int position_class,
                                                 NodeFlags flags) noexcept;

    [[nodiscard]] Move move() const noexcept { return move_word & move_bits; }
    [[nodiscard]] bool has_cut() const noexcept { return (move_word & cut_bit) != 0; }
    [[nodiscard]] int position_class() const noexcept { return static_cast<int>((move_word >> 25) & 31U); }
    [[nodiscard]] NodeFlags flags() const noexcept {
        return static_cast<NodeFlags>(move_word >> 30 | (flags_word & 7U) << 2);
    }
    [[nodiscard]] std::uint32_t age() const noexcept { return flags_word >> 9; }
    void set_age(std::uint32_t age) noexcept { flags_word = (flags_word & 0x1FFU) | age << 9; }
    /// The larger of the two distances.
    [[nodiscard]] Distance depth() const noexcept {
        return lower_distance > upper_distance ? lower_distance : upper_distance;
    }

    /// The bounds as seen from the root, if the entry was found at `ply`.
    [[nodiscard]] Score LowerBoundAt(std::uint32_t ply) const noexcept { return FromRoot(lower_bound, ply); }
    [[nodiscard]] Score UpperBoundAt(std::uint32_t ply) const noexcept { return FromRoot(upper_bound, ply); }

    static constexpr std::uint32_t cut_bit = 1U << 24;
};
static_assert(sizeof(TranspositionEntry) == 24);

/// What TRANSPOSITION_TABLE::Probe can say about a question.
enum class TranspositionAnswer {
    not_found = 0,
    below_beta = 1,     ///< the upper bound is below beta
    at_least_beta = 2,  ///< the lower bound is at least beta
    undecided = 3,      ///< an entry that does not settle it
};

/// What an entry gives besides its answer; untouched if there is no entry.
struct TranspositionHit {
    Move move = INVALID;
    int position_class = 0;
    NodeFlags flags = NodeFlags::none;
};

/// Merges the bounds of one position instead of overwriting them. Two entries share a bucket: the first holds the
/// deeper or the fresher one, the second is always replaced.
class TRANSPOSITION_TABLE final : public ABSTRACT_HASH_TABLE {
  public:
    /// Requests below 12 KiB get 256 buckets.
    bool resize(std::uint64_t bytes) override {
        return buckets_.Resize(std::max(bytes, HashSlots<Bucket>::first_size));
    }
    /// Keeps the age.
    void clear() noexcept override { buckets_.Clear(); }
    bool touch(Deadline deadline) noexcept override { return buckets_.Touch(deadline); }
    [[nodiscard]] std::uint64_t totalSlots() const noexcept override { return buckets_.count() * 2; }
    [[nodiscard]] std::uint64_t freeSlots() const noexcept override;
    [[nodiscard]] std::uint64_t entrySize() const noexcept override { return sizeof(TranspositionEntry); }
    /// Also begins a new age.
    void newSearch() noexcept override;

    /// Whether the position at `ply`, searched to `distance`, is worth at least `beta`.
    [[nodiscard]] TranspositionAnswer Probe(std::uint64_t key, std::uint32_t ply, Distance distance, Score beta,
                                            TranspositionHit& hit) noexcept;
    /// The same for those who are no part of the search: counts nothing.
    [[nodiscard]] TranspositionAnswer Look(std::uint64_t key, std::uint32_t ply, Distance distance, Score beta,
                                           TranspositionHit& hit) const noexcept;
    /// Asks the memory for a bucket that will be probed soon. Half the buckets reach into a second line of the cache.
    void Prefetch(std::uint64_t key) const noexcept {
        const Bucket& bucket = buckets_.at(key);
        __builtin_prefetch(&bucket);
        __builtin_prefetch(&bucket[1].flags_word);
    }
    /// Whether there is an entry, with its move and the larger of its distances. Counts nothing.
    [[nodiscard]] bool ProbeMove(std::uint64_t key, Move& move, Distance& max_distance) noexcept;
    /// The entry of a position as it is stored, or null; until the next Store. Counts nothing but the probe.
    [[nodiscard]] const TranspositionEntry* Find(std::uint64_t key) noexcept;
    /// The table sets the age of `entry`.
    void Store(TranspositionEntry entry) noexcept;

    [[nodiscard]] std::uint32_t age() const noexcept { return age_; }
    /// How many of a thousand entries the running search has written or used, from a sample.
    [[nodiscard]] int PermilleInUse() const noexcept;

  private:
    using Bucket = std::array<TranspositionEntry, 2>;
    static_assert(sizeof(Bucket) == 48);

    [[nodiscard]] bool IsCurrent(const TranspositionEntry& entry) const noexcept { return entry.age() == age_; }
    void StoreShallower(Bucket& bucket, std::size_t found, const TranspositionEntry& entry) noexcept;

    HashSlots<Bucket> buckets_;
    std::uint32_t age_ = 1;  // 0 marks an entry of no search
};

/// What is cached about the pawns of a position, for one position type. The evaluator packs its facts and scores; sets
/// of pawns hold both colours.
struct PAWN_HASH_ENTRY {
    std::uint64_t pawn_key = 0;
    std::uint8_t position_type = 0;
    std::uint32_t packed = 0;  ///< majorities and openness
    std::uint64_t passed = 0;
    std::uint64_t isolated = 0;
    std::uint64_t backward = 0;
    std::uint64_t backward_stuck = 0;
    std::uint64_t covered = 0;
    std::array<std::uint64_t, 2> advance_squares{};  ///< by Colour
    std::array<std::uint64_t, 2> centre_gaps{};      ///< by Colour
    std::int16_t positional = 0;                     ///< opening and middle game only, as `reckless` and `counters`
    std::int16_t reckless = 0;
    std::int16_t ending = 0;
    std::array<std::uint32_t, 4> counters{};  ///< White's pressure and cover, Black's; three wings in a word
};
static_assert(sizeof(PAWN_HASH_ENTRY) == 112);

class PAWN_HASH_TABLE final : public ABSTRACT_HASH_TABLE {
  public:
    bool resize(std::uint64_t bytes) override { return slots_.Resize(bytes); }
    void clear() noexcept override { slots_.Clear(); }
    bool touch(Deadline deadline) noexcept override { return slots_.Touch(deadline); }
    [[nodiscard]] std::uint64_t totalSlots() const noexcept override { return slots_.count(); }
    [[nodiscard]] std::uint64_t freeSlots() const noexcept override;
    [[nodiscard]] std::uint64_t entrySize() const noexcept override { return sizeof(PAWN_HASH_ENTRY); }

    /// The entry of these pawns under this position type, or null. It stays valid until the next Store or resize.
    [[nodiscard]] const PAWN_HASH_ENTRY* Probe(std::uint64_t pawn_key, int position_type) noexcept;
    /// Overwrites whatever is in its slot.
    void Store(const PAWN_HASH_ENTRY& entry) noexcept;
    /// Asks the memory for the head of a slot that will be probed soon.
    void Prefetch(std::uint64_t pawn_key, int position_type) const noexcept {
        __builtin_prefetch(&slots_.at(SlotKey(pawn_key, static_cast<std::uint8_t>(position_type))));
    }

  private:
    [[nodiscard]] static std::uint64_t SlotKey(std::uint64_t pawn_key, std::uint8_t position_type) noexcept {
        // The same pawns under two types are two entries, which must not fight for one slot.
        return static_cast<std::uint32_t>(pawn_key ^ bitboard_tables.zobrist_piece[position_type][0]);
    }
    [[nodiscard]] PAWN_HASH_ENTRY& SlotOf(std::uint64_t pawn_key, std::uint8_t position_type) noexcept;
    HashSlots<PAWN_HASH_ENTRY> slots_;
};

struct EvaluationEntry {
    std::uint64_t key = 0;
    std::int16_t score = 0;  ///< centipawns for the side on move
};
static_assert(sizeof(EvaluationEntry) == 16);

/// What EVALUATION_HASH_TABLE::Probe can say.
enum class EvaluationAnswer { not_found = 0, below_threshold = 1, at_least_threshold = 2 };

class EVALUATION_HASH_TABLE final : public ABSTRACT_HASH_TABLE {
  public:
    bool resize(std::uint64_t bytes) override { return slots_.Resize(bytes); }
    void clear() noexcept override { slots_.Clear(); }
    bool touch(Deadline deadline) noexcept override { return slots_.Touch(deadline); }
    [[nodiscard]] std::uint64_t totalSlots() const noexcept override { return slots_.count(); }
    [[nodiscard]] std::uint64_t freeSlots() const noexcept override;
    [[nodiscard]] std::uint64_t entrySize() const noexcept override { return sizeof(EvaluationEntry); }

    [[nodiscard]] EvaluationAnswer Probe(std::uint64_t key, Score threshold) noexcept;
    /// The score itself, if it is known. Counts as a probe.
    [[nodiscard]] std::optional<std::int16_t> ScoreOf(std::uint64_t key) noexcept;
    void Store(const EvaluationEntry& entry) noexcept { slots_.at(entry.key) = entry; }
    /// Asks the memory for a slot that will be probed soon.
    void Prefetch(std::uint64_t key) const noexcept { __builtin_prefetch(&slots_.at(key)); }

  private:
    HashSlots<EvaluationEntry> slots_;
};

/// The tables of one engine, at their smallest until somebody sizes them.
struct HashTables {
    TRANSPOSITION_TABLE transposition;
    PAWN_HASH_TABLE pawn;
    EVALUATION_HASH_TABLE evaluation;

    /// Sizes all three, in bytes; the two of the evaluation alike. False if there is no memory for one of them, which
    /// stays as it is then.
    bool Resize(std::uint64_t transposition_bytes, std::uint64_t evaluation_bytes);
    void Clear() noexcept;
    /// Takes the memory of all of them from the system, so that no search has to wait for it. False if the deadline
    /// came before the end: what is left comes as it is used, or with the next call.
    bool Touch(Deadline deadline) noexcept;
    /// Forgets all scores, since they have lost their meaning: everything but the facts about pawns.
    void ClearScores() noexcept;
    void NewSearch() noexcept;
    /// Asks the memory for what is known about a position that will be looked up soon.
    void Prefetch(std::uint64_t key) const noexcept {
        transposition.Prefetch(key);
        evaluation.Prefetch(key);
    }
};
