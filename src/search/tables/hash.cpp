#include "search/tables/hash.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "chess/bitboard_tables.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"

namespace {

/// A position without pawns has no pawn entry: its type in a matching entry is a sign of a broken table.
constexpr std::uint8_t type_without_pawns = 16;

}  // namespace

// --- Transposition table ---

namespace {

/// Takes over each bound of `source` that says more, from at least as deep a search, and does not contradict the bound
/// on the other side.
void Merge(TranspositionEntry& destination, const TranspositionEntry& source) noexcept {
    if (source.lower_bound > destination.lower_bound && source.lower_distance >= destination.lower_distance &&
        source.lower_bound <= destination.upper_bound) {
        destination.lower_bound = source.lower_bound;
        destination.lower_distance = source.lower_distance;
    }
    if (source.upper_bound < destination.upper_bound && source.upper_distance >= destination.upper_distance &&
        source.upper_bound >= destination.lower_bound) {
        destination.upper_bound = source.upper_bound;
        destination.upper_distance = source.upper_distance;
    }
}

constexpr std::size_t no_slot = 2;

template <class Bucket>
std::size_t FindSlot(const Bucket& bucket, std::uint64_t key) noexcept {
    if (bucket[0].key == key) return 0;
    if (bucket[1].key == key) return 1;
    return no_slot;
}

}  // namespace

TranspositionEntry TranspositionEntry::Make(std::uint64_t key, Move move, bool cut, int position_class,
                                            NodeFlags flags) noexcept {
    TranspositionEntry entry;
    entry.key = key;
    entry.move_word = (move & move_bits) | (cut ? cut_bit : 0U) | static_cast<std::uint32_t>(position_class) << 25 |
                      (Word(flags) & 3U) << 30;
    entry.flags_word = (Word(flags) >> 2) & 7U;
    return entry;
}

std::uint64_t TRANSPOSITION_TABLE::freeSlots() const noexcept {
    std::uint64_t empty = 0;
    for (const Bucket& bucket : buckets_) {
        for (const TranspositionEntry& entry : bucket) empty += entry.key == 0;
    }
    return empty;
}

int TRANSPOSITION_TABLE::PermilleInUse() const noexcept {
    // The first buckets are as good as any others: keys are spread evenly.
    constexpr std::uint64_t sample_size = 500;
    const auto size = static_cast<std::ptrdiff_t>(std::min(buckets_.count(), sample_size));
    std::ptrdiff_t in_use = 0;
    std::for_each(buckets_.begin(), buckets_.begin() + size, [&](const Bucket& bucket) {
        in_use += std::count_if(bucket.begin(), bucket.end(),
                                [this](const TranspositionEntry& entry) { return entry.key != 0 && IsCurrent(entry); });
    });
    return static_cast<int>(in_use * 1000 / (2 * size));
}

void TRANSPOSITION_TABLE::newSearch() noexcept {
    ABSTRACT_HASH_TABLE::newSearch();
    constexpr std::uint32_t age_limit = 0x800000;  // an entry has 23 bits for it
    if (++age_ == age_limit) age_ = 1;
}

TranspositionAnswer TRANSPOSITION_TABLE::Probe(std::uint64_t key, std::uint32_t ply, Distance distance, Score beta,
                                               TranspositionHit& hit) noexcept {
    ++probes_;
    const TranspositionAnswer answer = Look(key, ply, distance, beta, hit);
    if (answer != TranspositionAnswer::not_found) ++hits_;
    return answer;
}

TranspositionAnswer TRANSPOSITION_TABLE::Look(std::uint64_t key, std::uint32_t ply, Distance distance, Score beta,
                                              TranspositionHit& hit) const noexcept {
    using enum TranspositionAnswer;
    const Bucket& bucket = buckets_.at(key);
    const std::size_t slot = FindSlot(bucket, key);
    if (slot == no_slot) return not_found;
    const TranspositionEntry& entry = bucket[slot];
    hit = {.move = entry.move(), .position_class = entry.position_class(), .flags = entry.flags()};

    if (distance > entry.depth()) return undecided;
    const Score lower = entry.LowerBoundAt(ply);
    const Score upper = entry.UpperBoundAt(ply);
    // Once the deeper bound reaches far enough, the bound on the entry's own side is believed without a look at its
    // distance: docs/oddities.md, own bound of an entry.
    if (entry.has_cut()) {
        if (beta <= lower) return at_least_beta;
        return beta <= upper || entry.upper_distance < distance ? undecided : below_beta;
    }
    if (beta > upper) return below_beta;
    return beta > lower || entry.lower_distance < distance ? undecided : at_least_beta;
}

bool TRANSPOSITION_TABLE::ProbeMove(std::uint64_t key, Move& move, Distance& max_distance) noexcept {
    const Bucket& bucket = buckets_.at(key);
    const std::size_t slot = FindSlot(bucket, key);
    if (slot == no_slot) return false;
    move = bucket[slot].move();
    max_distance = bucket[slot].depth();
    return true;
}

const TranspositionEntry* TRANSPOSITION_TABLE::Find(std::uint64_t key) noexcept {
    ++probes_;
    const Bucket& bucket = buckets_.at(key);
    const std::size_t slot = FindSlot(bucket, key);
    if (slot == no_slot) return nullptr;
    ++hits_;
    return &bucket[slot];
}

void TRANSPOSITION_TABLE::Store(TranspositionEntry entry) noexcept {
    if constexpr (theory_is_checked) {
        CHECKED_ASSERT(entry.lower_bound <= entry.upper_bound, vocabulary::no_error_description);
        CHECKED_ASSERT(entry.key != 0 || entry.move() == INVALID, vocabulary::no_error_description);
    }
    Bucket& bucket = buckets_.at(entry.key);
    const std::size_t found = FindSlot(bucket, entry.key);
    if (found != no_slot && entry.depth() < bucket[found].depth()) {
        StoreShallower(bucket, found, entry);
        return;
    }
    if (found != no_slot) Merge(entry, bucket[found]);
    entry.set_age(age_);

    const bool takes_first = found == 0 || !IsCurrent(bucket[0]) || bucket[0].depth() <= entry.depth();
    if (!takes_first) {
        bucket[1] = entry;
        return;
    }
    if (found != 0) {
        if (!IsCurrent(bucket[0])) bucket[0].set_age(0);
        bucket[1] = bucket[0];
    }
    bucket[0] = entry;
}

/// The position is known from a deeper search: its entry stays, takes what the new one adds, and may move up.
void TRANSPOSITION_TABLE::StoreShallower(Bucket& bucket, std::size_t found, const TranspositionEntry& entry) noexcept {
    Merge(bucket[found], entry);
    bucket[found].set_age(age_);
    if (found == 0) return;
    if (IsCurrent(bucket[0])) {
        if (bucket[0].depth() >= bucket[1].depth()) return;
    } else {
        bucket[0].set_age(0);
    }
    std::swap(bucket[0], bucket[1]);
}

// --- Pawn hash table ---

std::uint64_t PAWN_HASH_TABLE::freeSlots() const noexcept {
    return static_cast<std::uint64_t>(
        std::count_if(slots_.begin(), slots_.end(), [](const PAWN_HASH_ENTRY& entry) { return entry.pawn_key == 0; }));
}

PAWN_HASH_ENTRY& PAWN_HASH_TABLE::SlotOf(std::uint64_t pawn_key, std::uint8_t position_type) noexcept {
    return slots_.at(SlotKey(pawn_key, position_type));
}

const PAWN_HASH_ENTRY* PAWN_HASH_TABLE::Probe(std::uint64_t pawn_key, int position_type) noexcept {
    ++probes_;
    const PAWN_HASH_ENTRY& entry = SlotOf(pawn_key, static_cast<std::uint8_t>(position_type));
    if (entry.pawn_key != pawn_key || entry.position_type != position_type) return nullptr;
    ++hits_;
    if (entry.position_type == type_without_pawns) {
        ReportFailedAssertion(vocabulary::pawn_hash_type_condition, "hash", __LINE__,
                              vocabulary::pawn_hash_collision_detected);
    }
    return &entry;
}

void PAWN_HASH_TABLE::Store(const PAWN_HASH_ENTRY& entry) noexcept {
    SlotOf(entry.pawn_key, entry.position_type) = entry;
}

// --- Evaluation hash table ---

std::uint64_t EVALUATION_HASH_TABLE::freeSlots() const noexcept {
    return static_cast<std::uint64_t>(
        std::count_if(slots_.begin(), slots_.end(), [](const EvaluationEntry& entry) { return entry.key == 0; }));
}

EvaluationAnswer EVALUATION_HASH_TABLE::Probe(std::uint64_t key, Score threshold) noexcept {
    ++probes_;
    const EvaluationEntry& entry = slots_.at(key);
    if (entry.key != key) return EvaluationAnswer::not_found;
    ++hits_;
    return threshold > entry.score ? EvaluationAnswer::below_threshold : EvaluationAnswer::at_least_threshold;
}

std::optional<std::int16_t> EVALUATION_HASH_TABLE::ScoreOf(std::uint64_t key) noexcept {
    ++probes_;
    const EvaluationEntry& entry = slots_.at(key);
    if (entry.key != key) return std::nullopt;
    ++hits_;
    return entry.score;
}

// --- All three ---

bool HashTables::Resize(std::uint64_t transposition_bytes, std::uint64_t evaluation_bytes) {
    const bool has_transposition = transposition.resize(transposition_bytes);
    const bool has_pawn = pawn.resize(evaluation_bytes);
    const bool has_evaluation = evaluation.resize(evaluation_bytes);
    return has_transposition && has_pawn && has_evaluation;
}

void HashTables::Clear() noexcept {
    ClearScores();
    pawn.clear();
}

bool HashTables::Touch(Deadline deadline) noexcept {
    return pawn.touch(deadline) && evaluation.touch(deadline) && transposition.touch(deadline);
}

void HashTables::ClearScores() noexcept {
    transposition.clear();
    evaluation.clear();
}

void HashTables::NewSearch() noexcept {
    transposition.newSearch();
    pawn.newSearch();
    evaluation.newSearch();
}
