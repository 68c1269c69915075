#include "search/tables/hash.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include "support/log_capture.h"
#include "support/row_name.h"

namespace {

constexpr Move move = MakeWord(e2, e4, pawn);
constexpr Move other_move = MakeWord(d2, d4, pawn);

/// What a node stores after a cut: a lower bound.
TranspositionEntry LowerBound(std::uint64_t key, int score, int distance, Move m = move) {
    TranspositionEntry entry = TranspositionEntry::Make(key, m, true, 1, NodeFlags::none);
    entry.lower_bound = static_cast<std::int16_t>(score);
    entry.lower_distance = static_cast<std::int16_t>(distance);
    return entry;
}

TranspositionEntry UpperBound(std::uint64_t key, int score, int distance, Move m = move) {
    TranspositionEntry entry = TranspositionEntry::Make(key, m, false, 1, NodeFlags::none);
    entry.upper_bound = static_cast<std::int16_t>(score);
    entry.upper_distance = static_cast<std::int16_t>(distance);
    return entry;
}

TranspositionAnswer Ask(TRANSPOSITION_TABLE& table, std::uint64_t key, Distance distance, Score beta,
                        std::uint32_t ply = 0) {
    TranspositionHit hit;
    return table.Probe(key, ply, distance, beta, hit);
}

// --- Sizes ---

struct SizeRow {
    std::string_view name;
    std::uint64_t bytes;
    std::uint64_t transposition_slots, pawn_slots, evaluation_slots;
};
std::ostream& operator<<(std::ostream& out, const SizeRow& row) { return out << row.bytes; }

class TableSizes : public testing::TestWithParam<SizeRow> {};

TEST_P(TableSizes, AreThePowerOfTwoBelow) {
    const SizeRow& row = GetParam();
    TRANSPOSITION_TABLE transpositions;
    PAWN_HASH_TABLE pawns;
    EVALUATION_HASH_TABLE evaluations;
    const std::array<ABSTRACT_HASH_TABLE*, 3> tables{&transpositions, &pawns, &evaluations};
    const std::array<std::uint64_t, 3> slots{row.transposition_slots, row.pawn_slots, row.evaluation_slots};
    const std::array<std::uint64_t, 3> entry_sizes{24, 112, 16};
    for (std::size_t i = 0; i < tables.size(); ++i) {
        ASSERT_TRUE(tables[i]->resize(row.bytes));
        EXPECT_EQ(tables[i]->totalSlots(), slots[i]);
        EXPECT_EQ(tables[i]->freeSlots(), slots[i]);
        EXPECT_EQ(tables[i]->entrySize(), entry_sizes[i]);
        EXPECT_EQ(tables[i]->totalBytes(), slots[i] * entry_sizes[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(HashTables, TableSizes,
                         testing::Values(SizeRow{"nothing", 0, 512, 2, 2}, SizeRow{"1000 bytes", 1000, 512, 8, 32},
                                         SizeRow{"one byte too few", 0x5FFF, 512, 128, 1024},
                                         SizeRow{"smallest", 0x3000, 512, 64, 512},
                                         SizeRow{"twice that", 0x6000, 1024, 128, 1024},
                                         SizeRow{"4 MiB", 4 << 20, 131072, 32768, 262144},
                                         SizeRow{"32 MiB", 32 << 20, 1048576, 262144, 2097152}),
                         RowName<SizeRow>);

TEST(HashTables, NewOnesAreSmallAndEmpty) {
    EXPECT_EQ(TRANSPOSITION_TABLE{}.totalSlots(), 512U);
    EXPECT_EQ(PAWN_HASH_TABLE{}.totalSlots(), 64U);
    EXPECT_EQ(EVALUATION_HASH_TABLE{}.totalSlots(), 512U);
    EXPECT_EQ(TRANSPOSITION_TABLE{}.freeSlots(), 512U);
}

TEST(HashTables, FailedResizeKeepsTheOldTable) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(7, 50, 64));
    EXPECT_FALSE(table.resize(UINT64_MAX));
    EXPECT_EQ(table.totalSlots(), 512U);
    EXPECT_EQ(Ask(table, 7, 64, 50), TranspositionAnswer::at_least_beta);

    PAWN_HASH_TABLE pawns;
    EXPECT_FALSE(pawns.resize(UINT64_MAX));
    EXPECT_EQ(pawns.totalSlots(), 64U);
    EVALUATION_HASH_TABLE evaluations;
    EXPECT_FALSE(evaluations.resize(UINT64_MAX));
    EXPECT_EQ(evaluations.totalSlots(), 512U);
}

TEST(HashTables, ResizeEmptiesTheTable) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(7, 50, 64));
    EXPECT_EQ(table.freeSlots(), 511U);
    ASSERT_TRUE(table.resize(0x3000));
    EXPECT_EQ(table.freeSlots(), 512U);
}

// --- Entries ---

TEST(TranspositionEntries, PackEveryField) {
    using enum NodeFlags;
    for (const NodeFlags flags : {none, single_reply, mate_threat, queen_attacked, queen_not_attacked, pin_threat,
                                  single_reply | mate_threat | queen_attacked | queen_not_attacked | pin_threat}) {
        for (const bool cut : {false, true}) {
            TranspositionEntry entry = TranspositionEntry::Make(5, move | 511U << 23, cut, 18, flags);
            entry.set_age(0x7FFFFF);
            EXPECT_EQ(entry.move(), move) << "without its sort score";
            EXPECT_EQ(entry.has_cut(), cut);
            EXPECT_EQ(entry.position_class(), 18);
            EXPECT_EQ(entry.flags(), flags);
            EXPECT_EQ(entry.age(), 0x7FFFFFU);
            EXPECT_EQ(entry.move_word >> 23 & 1U, 0U);
            EXPECT_EQ(entry.flags_word >> 3 & 0x3FU, 0U);
        }
    }
}

TEST(TranspositionEntries, LeaveOutThePerpetualThreat) {
    const auto entry = TranspositionEntry::Make(5, move, false, 0, NodeFlags::perpetual_threat | NodeFlags::pin_threat);
    EXPECT_EQ(entry.flags(), NodeFlags::pin_threat);
}

TEST(TranspositionEntries, HaveNoBoundAtFirst) {
    const auto entry = TranspositionEntry::Make(5, move, false, 0, NodeFlags::none);
    EXPECT_EQ(entry.lower_bound, -32767);
    EXPECT_EQ(entry.upper_bound, 32767);
    EXPECT_EQ(entry.depth(), -32767);
}

// --- Probing ---

struct ProbeRow {
    std::string_view name;
    bool cut;
    int lower, lower_distance, upper, upper_distance;
    Distance distance;
    Score beta;
    TranspositionAnswer answer;
};
std::ostream& operator<<(std::ostream& out, const ProbeRow& row) { return out << row.name; }

class Probes : public testing::TestWithParam<ProbeRow> {};

TEST_P(Probes, AnswerFromTheBounds) {
    const ProbeRow& row = GetParam();
    auto entry = TranspositionEntry::Make(9, move, row.cut, 4, NodeFlags::pin_threat);
    entry.lower_bound = static_cast<std::int16_t>(row.lower);
    entry.lower_distance = static_cast<std::int16_t>(row.lower_distance);
    entry.upper_bound = static_cast<std::int16_t>(row.upper);
    entry.upper_distance = static_cast<std::int16_t>(row.upper_distance);
    TRANSPOSITION_TABLE table;
    table.Store(entry);
    TranspositionHit hit;
    EXPECT_EQ(table.Probe(9, 3, row.distance, row.beta, hit), row.answer);
    EXPECT_EQ(hit.move, move);
    EXPECT_EQ(hit.position_class, 4);
    EXPECT_EQ(hit.flags, NodeFlags::pin_threat);
}

constexpr int none = -32767;
using enum TranspositionAnswer;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Transpositions, Probes, testing::Values(
    //                                    cut    lower  at    upper  at    distance  beta
    ProbeRow{"cut, beta on the bound",    true,     50, 128,  32767, none,      128,   50, at_least_beta},
    ProbeRow{"cut, beta above",           true,     50, 128,  32767, none,      128,   51, undecided},
    ProbeRow{"cut, too shallow",          true,     50, 128,  32767, none,      129,   50, undecided},
    ProbeRow{"cut, upper bound below",    true,     50, 128,     80,  128,      128,   81, below_beta},
    ProbeRow{"cut, beta on the upper",    true,     50, 128,     80,  128,      128,   80, undecided},
    ProbeRow{"cut, upper too shallow",    true,     50, 128,     80,  127,      128,   81, undecided},
    ProbeRow{"cut, lower too shallow",    true,     50,  64,     80,  128,      128,   50, at_least_beta},  // believed all the same
    ProbeRow{"no cut, beta above",        false, -32767, none,   50,  128,      128,   51, below_beta},
    ProbeRow{"no cut, beta on the bound", false, -32767, none,   50,  128,      128,   50, undecided},
    ProbeRow{"no cut, too shallow",       false, -32767, none,   50,  128,      129,   51, undecided},
    ProbeRow{"no cut, lower bound",       false,     20, 128,    50,  128,      128,   20, at_least_beta},
    ProbeRow{"no cut, above the lower",   false,     20, 128,    50,  128,      128,   21, undecided},
    ProbeRow{"no cut, lower too shallow", false,     20, 127,    50,  128,      128,   20, undecided},
    ProbeRow{"no cut, upper too shallow", false,     20, 128,    50,   64,      128,   51, below_beta},     // believed all the same
    // Stored at its node as a mate in so many plies from there; the node is at ply 3.
    ProbeRow{"own mate",                  true,  32760, 128,  32767, none,      128, 32757, at_least_beta},
    ProbeRow{"own mate, one better",      true,  32760, 128,  32767, none,      128, 32758, undecided},
    ProbeRow{"nearest own mate score",    true,  31767, 128,  32767, none,      128, 31764, at_least_beta},
    ProbeRow{"own mate score, too far",   true,  31767, 128,  32767, none,      128, 31765, undecided},
    ProbeRow{"just no mate score",        true,  31766, 128,  32767, none,      128, 31766, at_least_beta},
    ProbeRow{"enemy mate",                false, -32767, none, -32760, 128,     128, -32756, below_beta},
    ProbeRow{"enemy mate, on the bound",  false, -32767, none, -32760, 128,     128, -32757, undecided},
    ProbeRow{"just no enemy mate score",  false, -32767, none, -31766, 128,     128, -31765, below_beta}),
    RowName<ProbeRow>);
// clang-format on

TEST(Transpositions, AreCountedAsProbesAndHits) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(9, 0, 0));
    TranspositionHit hit{.move = other_move, .position_class = 3, .flags = NodeFlags::mate_threat};
    EXPECT_EQ(table.Probe(10, 0, 0, 0, hit), not_found);
    EXPECT_EQ(hit.move, other_move) << "a miss touches nothing";
    EXPECT_EQ(hit.position_class, 3);
    EXPECT_EQ(Ask(table, 9, 0, 0), at_least_beta);
    EXPECT_EQ(table.probes(), 2U);
    EXPECT_EQ(table.hits(), 1U);
    Move known;
    Distance distance;
    EXPECT_TRUE(table.ProbeMove(9, known, distance));
    EXPECT_EQ(table.Look(9, 0, 0, 0, hit), at_least_beta);
    EXPECT_EQ(table.Look(10, 0, 0, 0, hit), not_found);
    EXPECT_EQ(table.probes(), 2U) << "the looks of those who show a line count nothing";
    EXPECT_EQ(table.hits(), 1U);
    table.newSearch();
    EXPECT_EQ(table.probes(), 0U);
    EXPECT_EQ(table.hits(), 0U);
}

TEST(Transpositions, ProbeMoveGivesTheMoveAndTheLargerDistance) {
    TRANSPOSITION_TABLE table;
    auto entry = LowerBound(9, 20, 64);
    entry.upper_bound = 40;
    entry.upper_distance = 192;
    table.Store(entry);
    Move known = INVALID;
    Distance distance = 0;
    ASSERT_TRUE(table.ProbeMove(9, known, distance));
    EXPECT_EQ(known, move);
    EXPECT_EQ(distance, 192);
    EXPECT_FALSE(table.ProbeMove(8, known, distance));
}

TEST(Transpositions, FindGivesTheEntryAsItIsStored) {
    TRANSPOSITION_TABLE table;
    EXPECT_EQ(table.Find(9), nullptr);
    auto entry = LowerBound(9, 20, 64);
    entry.upper_bound = 40;
    entry.upper_distance = 192;
    table.Store(entry);
    const TranspositionEntry* const found = table.Find(9);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->key, 9U);
    EXPECT_EQ(found->move(), move);
    EXPECT_EQ(found->lower_bound, 20);
    EXPECT_EQ(found->lower_distance, 64);
    EXPECT_EQ(found->upper_bound, 40);
    EXPECT_EQ(found->upper_distance, 192);
    EXPECT_EQ(table.Find(8), nullptr);
    EXPECT_EQ(table.Find(9 + table.totalSlots() / 2), nullptr) << "another key of the same bucket";
    EXPECT_EQ(table.probes(), 4U);
    EXPECT_EQ(table.hits(), 1U);
}

TEST(Transpositions, FindLooksIntoBothPlacesOfTheBucket) {
    TRANSPOSITION_TABLE table;
    const std::uint64_t other = 9 + table.totalSlots() / 2;
    table.Store(LowerBound(9, 20, 128));
    table.Store(LowerBound(other, 30, 64));
    ASSERT_NE(table.Find(9), nullptr);
    ASSERT_NE(table.Find(other), nullptr);
    EXPECT_EQ(table.Find(9)->lower_bound, 20);
    EXPECT_EQ(table.Find(other)->lower_bound, 30);
}

/// Mates count from the position in the table, and from the root for who finds them at a ply.
TEST(TranspositionEntries, GiveTheirBoundsAsSeenFromTheRoot) {
    struct Row {
        Score stored, at_the_root, at_ply_five;
    };
    constexpr Row rows[] = {
        {0, 0, 0},
        {300, 300, 300},
        {mate_score_limit - 1, mate_score_limit - 1, mate_score_limit - 1},
        {mate_score_limit, mate_score_limit, mate_score_limit - 5},
        {infinity_bound - 3, infinity_bound - 3, infinity_bound - 8},
        {-mate_score_limit + 1, -mate_score_limit + 1, -mate_score_limit + 1},
        {-mate_score_limit, -mate_score_limit, -mate_score_limit + 5},
        {-infinity_bound, -infinity_bound, -infinity_bound + 5},
    };
    for (const Row& row : rows) {
        auto entry = LowerBound(9, row.stored, 64);
        entry.lower_bound = entry.upper_bound = static_cast<std::int16_t>(row.stored);
        EXPECT_EQ(entry.LowerBoundAt(0), row.at_the_root);
        EXPECT_EQ(entry.LowerBoundAt(5), row.at_ply_five);
        EXPECT_EQ(entry.UpperBoundAt(0), row.at_the_root);
        EXPECT_EQ(entry.UpperBoundAt(5), row.at_ply_five);
    }
}

TEST(Transpositions, CountInAThousandWhatTheRunningSearchHasStored) {
    TRANSPOSITION_TABLE table;
    ASSERT_TRUE(table.resize(std::uint64_t{1} << 20));
    table.newSearch();
    EXPECT_EQ(table.PermilleInUse(), 0);
    for (std::uint64_t key = 1; key <= 250; ++key) table.Store(LowerBound(key, 10, 64));
    EXPECT_EQ(table.PermilleInUse(), 250) << "a bucket has room for two";
    table.newSearch();
    EXPECT_EQ(table.PermilleInUse(), 0) << "old entries are free to go";
}

TEST(Transpositions, AgeWrapsToOne) {
    TRANSPOSITION_TABLE table;
    for (std::uint32_t age = table.age() + 1; age < 0x800000; ++age) {
        table.newSearch();
        ASSERT_EQ(table.age(), age);
    }
    table.newSearch();
    EXPECT_EQ(table.age(), 1U);
}

TEST(Transpositions, ClearKeepsTheAge) {
    TRANSPOSITION_TABLE table;
    table.newSearch();
    table.newSearch();
    const auto age = table.age();
    table.Store(LowerBound(9, 0, 0));
    table.clear();
    EXPECT_EQ(table.freeSlots(), table.totalSlots());
    EXPECT_EQ(table.age(), age);
}

// --- Merging and replacing ---

TEST(Transpositions, ShallowerStoreOfTheSamePositionChangesNoBound) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(9, 50, 192));
    table.Store(LowerBound(9, 80, 128));
    EXPECT_EQ(Ask(table, 9, 64, 50), at_least_beta);
    EXPECT_EQ(Ask(table, 9, 64, 51), undecided);
}

TEST(Transpositions, TwoBoundsOfOnePositionMerge) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(9, 50, 128));
    table.Store(UpperBound(9, 80, 128, other_move));
    EXPECT_EQ(table.freeSlots(), table.totalSlots() - 1);
    EXPECT_EQ(Ask(table, 9, 128, 81), below_beta);
    EXPECT_EQ(Ask(table, 9, 128, 50), at_least_beta);
    Move known;
    Distance distance;
    ASSERT_TRUE(table.ProbeMove(9, known, distance));
    EXPECT_EQ(known, other_move) << "the newer one";
}

TEST(Transpositions, ABoundThatContradictsTheOtherIsNotMerged) {
    TRANSPOSITION_TABLE table;
    table.Store(LowerBound(9, 90, 128));
    table.Store(UpperBound(9, 80, 128));
    EXPECT_EQ(Ask(table, 9, 128, 81), below_beta);
    EXPECT_EQ(Ask(table, 9, 128, 80), undecided) << "the lower bound of 90 is gone";
}

TEST(Transpositions, DeeperEntryKeepsItsPlaceAndTheOtherIsReplaced) {
    TRANSPOSITION_TABLE table;
    constexpr std::uint64_t bucket = 512;  // keys of one bucket differ by a multiple of it
    table.Store(LowerBound(1, 0, 640));
    table.Store(LowerBound(1 + bucket, 0, 64));
    table.Store(LowerBound(1 + 2 * bucket, 0, 64));
    EXPECT_EQ(Ask(table, 1, 640, 0), at_least_beta);
    EXPECT_EQ(Ask(table, 1 + bucket, 64, 0), not_found);
    EXPECT_EQ(Ask(table, 1 + 2 * bucket, 64, 0), at_least_beta);
    table.Store(LowerBound(1 + 3 * bucket, 0, 640));
    EXPECT_EQ(Ask(table, 1, 640, 0), at_least_beta) << "an equally deep entry pushes it to the other slot";
    table.newSearch();
    table.Store(LowerBound(1 + 4 * bucket, 0, -64));
    EXPECT_EQ(Ask(table, 1, 640, 0), not_found);
    EXPECT_EQ(Ask(table, 1 + 3 * bucket, 640, 0), at_least_beta) << "an old entry goes to the other slot";
    table.Store(LowerBound(1 + 5 * bucket, 0, -128));
    EXPECT_EQ(Ask(table, 1 + 3 * bucket, 640, 0), not_found);
    EXPECT_EQ(Ask(table, 1 + 4 * bucket, -64, 0), at_least_beta);
}

/// The rules of storing as a list of steps, on buckets that a map holds.
class SlowTranspositionTable {
  public:
    void NewSearch() { ++age_; }

    void Store(TranspositionEntry added) {
        auto& entries = buckets_[added.key % bucket_count];
        int s = -1;
        if (entries[0].key == added.key)
            s = 0;
        else if (entries[1].key == added.key)
            s = 1;
        const auto current = [&](const TranspositionEntry& e) { return e.age() == age_; };
        if (s >= 0 && added.depth() < entries[static_cast<std::size_t>(s)].depth()) {
            auto& found = entries[static_cast<std::size_t>(s)];
            Merge(found, added);
            found.set_age(age_);
            if (s == 0) return;
            if (current(entries[0]) && entries[0].depth() >= entries[1].depth()) return;
            if (!current(entries[0])) entries[0].set_age(0);
            const auto kept = entries[0];
            entries[0] = entries[1];
            entries[1] = kept;
            return;
        }
        int slot = s >= 0 ? s : 1;
        int bottom = 0;
        if (!current(entries[1]) && slot == 0) {
            bottom = 0;
        } else if (!current(entries[0])) {
            entries[0].set_age(0);
            slot = 0;
        } else if (slot == 1) {
            if (entries[0].depth() > added.depth())
                bottom = 1;
            else
                slot = 0;
        }
        int top = 1;
        if (s >= 0) {
            Merge(added, entries[static_cast<std::size_t>(s)]);
            top = s;
        }
        for (int i = top - 1; i >= bottom; --i) {
            entries[static_cast<std::size_t>(i + 1)] = entries[static_cast<std::size_t>(i)];
        }
        added.set_age(age_);
        entries[static_cast<std::size_t>(slot)] = added;
    }

    const TranspositionEntry* Find(std::uint64_t key) {
        for (const auto& entry : buckets_[key % bucket_count]) {
            if (entry.key == key) return &entry;
        }
        return nullptr;
    }

  private:
    static constexpr std::uint64_t bucket_count = 256;

    struct EmptyBucket : std::array<TranspositionEntry, 2> {
        EmptyBucket() {
            for (auto& entry : *this) {
                entry.lower_bound = entry.upper_bound = entry.lower_distance = entry.upper_distance = 0;
            }
        }
    };

    static void Merge(TranspositionEntry& destination, const TranspositionEntry& source) {
        if (source.lower_bound > destination.lower_bound && source.lower_distance >= destination.lower_distance &&
            !(source.lower_bound > destination.upper_bound)) {
            destination.lower_bound = source.lower_bound;
            destination.lower_distance = source.lower_distance;
        }
        if (source.upper_bound < destination.upper_bound && source.upper_distance >= destination.upper_distance &&
            !(source.upper_bound < destination.lower_bound)) {
            destination.upper_bound = source.upper_bound;
            destination.upper_distance = source.upper_distance;
        }
    }

    std::map<std::uint64_t, EmptyBucket> buckets_;
    std::uint32_t age_ = 1;
};

TEST(Transpositions, AgreeWithTheSlowModel) {
    constexpr std::uint32_t seed = 20240229;
    std::mt19937 random(seed);
    const auto upto = [&](std::uint32_t n) { return static_cast<int>(random() % n); };
    TRANSPOSITION_TABLE table;
    SlowTranspositionTable slow;
    for (int step = 0; step < 200000; ++step) {
        const std::uint64_t key = 1 + static_cast<std::uint64_t>(upto(4)) + 256U * static_cast<std::uint64_t>(upto(5));
        if (upto(500) == 0) {
            table.newSearch();
            slow.NewSearch();
        }
        const Move word = MakeWord(upto(64), upto(64), knight);
        const auto entry = upto(2) == 0 ? LowerBound(key, upto(100) - 50, upto(10) * 64 - 128, word)
                                        : UpperBound(key, upto(100) - 50, upto(10) * 64 - 128, word);
        table.Store(entry);
        slow.Store(entry);
        const std::uint64_t asked =
            1 + static_cast<std::uint64_t>(upto(4)) + 256U * static_cast<std::uint64_t>(upto(5));
        const TranspositionEntry* expected = slow.Find(asked);
        Move known = INVALID;
        Distance depth = 0;
        ASSERT_EQ(table.ProbeMove(asked, known, depth), expected != nullptr) << "seed " << seed << ", step " << step;
        if (expected == nullptr) continue;
        ASSERT_EQ(known, expected->move()) << "seed " << seed << ", step " << step;
        ASSERT_EQ(depth, expected->depth()) << "seed " << seed << ", step " << step;
        // With no distance to fulfil, the bounds themselves answer.
        const Score beta = upto(110) - 55;
        const auto answer = Ask(table, asked, none, beta);
        if (beta <= expected->lower_bound && beta <= expected->upper_bound) {
            ASSERT_EQ(answer, at_least_beta) << "seed " << seed << ", step " << step;
        } else if (beta > expected->upper_bound) {
            ASSERT_EQ(answer, below_beta) << "seed " << seed << ", step " << step;
        } else {
            ASSERT_EQ(answer, undecided) << "seed " << seed << ", step " << step;
        }
    }
}

// --- Pawn and evaluation tables ---

TEST(PawnHash, FindsAnEntryByKeyAndType) {
    PAWN_HASH_TABLE table;
    PAWN_HASH_ENTRY entry{.pawn_key = 0x1234567890ABCDEF, .position_type = 2};
    entry.counters[3] = 99;
    table.Store(entry);
    ASSERT_NE(table.Probe(entry.pawn_key, 2), nullptr);
    EXPECT_EQ(table.Probe(entry.pawn_key, 2)->counters[3], 99);
    EXPECT_EQ(table.Probe(entry.pawn_key, 1), nullptr);
    EXPECT_EQ(table.Probe(entry.pawn_key ^ 1U << 31, 2), nullptr);
    EXPECT_EQ(table.Probe(entry.pawn_key ^ std::uint64_t{1} << 63, 2), nullptr);
    EXPECT_EQ(table.probes(), 5U);
    EXPECT_EQ(table.hits(), 2U);
    EXPECT_EQ(table.freeSlots(), 63U);
    table.newSearch();
    EXPECT_EQ(table.probes(), 0U);
    table.clear();
    EXPECT_EQ(table.freeSlots(), 64U);
}

TEST(PawnHash, StoreOverwritesItsSlot) {
    PAWN_HASH_TABLE table;
    table.Store({.pawn_key = 0x100000001, .position_type = 2});
    table.Store({.pawn_key = 0x200000001, .position_type = 2});  // one slot: the low words are equal
    EXPECT_EQ(table.Probe(0x100000001, 2), nullptr);
    EXPECT_NE(table.Probe(0x200000001, 2), nullptr);
}

TEST(PawnHash, TypesOfOnePawnStructureLiveSideBySide) {
    PAWN_HASH_TABLE table;
    ASSERT_TRUE(table.resize(4 << 20));
    for (int type = 0; type < 16; ++type) {
        table.Store({.pawn_key = 77, .position_type = static_cast<std::uint8_t>(type)});
    }
    for (int type = 0; type < 16; ++type) EXPECT_NE(table.Probe(77, type), nullptr) << type;
}

TEST(PawnHash, AnEntryOfAPositionWithoutPawnsIsReported) {
    PAWN_HASH_TABLE table;
    table.Store({.pawn_key = 5, .position_type = 16});
    LogCapture log;
    testing::internal::CaptureStdout();
    EXPECT_NE(table.Probe(5, 16), nullptr);
    testing::internal::GetCapturedStdout();
    EXPECT_NE(log.text().find("pawnhashtable collision detected"), std::string::npos) << log.text();
    EXPECT_NE(log.text().find("file: hash, "), std::string::npos) << log.text();
}

TEST(EvaluationHash, ComparesTheStoredScore) {
    EVALUATION_HASH_TABLE table;
    table.Store({.key = 0x1234567890ABCDEF, .score = -35});
    EXPECT_EQ(table.Probe(0x1234567890ABCDEF, -35), EvaluationAnswer::at_least_threshold);
    EXPECT_EQ(table.Probe(0x1234567890ABCDEF, -34), EvaluationAnswer::below_threshold);
    EXPECT_EQ(table.Probe(0x0234567890ABCDEF, -35), EvaluationAnswer::not_found);
    EXPECT_EQ(table.probes(), 3U);
    EXPECT_EQ(table.hits(), 2U);
    table.Store({.key = 0x0234567890ABCDEF, .score = 7});
    EXPECT_EQ(table.Probe(0x1234567890ABCDEF, -35), EvaluationAnswer::not_found) << "one slot, overwritten";
    EXPECT_EQ(table.freeSlots(), 511U);
}

TEST(EvaluationHash, GivesTheStoredScoreItself) {
    EVALUATION_HASH_TABLE table;
    EXPECT_EQ(table.ScoreOf(0x1234567890ABCDEF), std::nullopt);
    for (const std::int16_t score : {std::int16_t{0}, std::int16_t{-35}, std::int16_t{32767}, std::int16_t{-32768}}) {
        table.Store({.key = 0x1234567890ABCDEF, .score = score});
        EXPECT_EQ(table.ScoreOf(0x1234567890ABCDEF), score);
        EXPECT_EQ(table.ScoreOf(0x0234567890ABCDEF), std::nullopt) << "another key of the same slot";
    }
    EXPECT_EQ(table.probes(), 9U);
    EXPECT_EQ(table.hits(), 4U);
}

}  // namespace
