#include "chess/move_generator.h"

#include <algorithm>

#include "chess/special_moves.h"
#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

// The generator is strictly legal: it finds pins, checkers and discovering pieces once, and then writes only moves that
// leave the own king safe, each marked with the checks it gives. The steps stand in the order of their moves in the
// list. A mode without "all" narrows the squares that each piece may go to before a move is written: a capture comes
// with mode_captures, a checking move with the bit of its check, capture or not.
//
// Worked example: White Kg1, Re1, Ne4, Black Ke8. The knight stands alone between rook and king, so it is a discoverer,
// and all its moves carry the discovered-check bit; those to d6 and f6 carry both. mode_direct_checks gives these two,
// mode_discovered_checks all eight.

namespace {

constexpr Bitboard a_file = 0x0101010101010101;
constexpr Bitboard h_file = a_file << 7;
constexpr Bitboard first_rank = 0xFF;

constexpr Bitboard RankSet(int rank) { return first_rank << (8 * rank); }

/// The set moved by `step` squares; the caller keeps it from running over the edge.
template <int step>
constexpr Bitboard Shifted(Bitboard set) {
    return step > 0 ? set << step : set >> -step;
}

constexpr unsigned modes_with_pushes = mode_direct_checks | mode_discovered_checks | mode_double_checks |
                                       mode_queen_promotions | mode_underpromotions | mode_all;
constexpr unsigned modes_with_pawn_captures =
    mode_captures | mode_direct_checks | mode_discovered_checks | mode_double_checks | mode_queen_promotions | mode_all;
constexpr unsigned modes_that_keep_promotion_rank = modes_with_pushes & ~unsigned{mode_all};
constexpr unsigned modes_with_all_promotions = mode_underpromotions | mode_all;

/// Whether a mode asks for a pawn's capture that gives this check: exactly one bit stands for each check type, and for
/// no check none. (Pieces differ: there the bit of a direct check brings double checks too. docs/oddities.md, double
/// checks.)
constexpr bool AsksForCheckType(unsigned mode, CheckKind type) {
    return type != CheckKind::none && (mode & (1U << static_cast<unsigned>(type))) != 0;
}
static_assert(AsksForCheckType(mode_direct_checks, CheckKind::direct) &&
              AsksForCheckType(mode_discovered_checks, CheckKind::discovered) &&
              AsksForCheckType(mode_double_checks, CheckKind::both) && !AsksForCheckType(mode_legal, CheckKind::none));

/// With `Every` the mode is mode_legal and known to the compiler, which leaves out what a selection of the moves needs.
template <Colour Us, bool Every>
class Generator {
  public:
    Generator(Move* buffer, const BOARD& board, unsigned mode) noexcept : end_(buffer), board_(board), mode_(mode) {}

    Move* Run() noexcept {
        if (!in_check_) Castling();
        FindTargets();
        FindLines();
        if (!in_double_check_) {
            Knights();
            Sliders<bishop>(own_.bishops);
            Sliders<rook>(own_.rooks);
            Sliders<queen>(own_.queens);
            if ((mode() & modes_with_pushes) != 0) PawnPushes();
            if ((mode() & modes_with_pawn_captures) != 0) PawnCaptures();
            EnPassant();
        }
        KingMoves();
        return end_;
    }

  private:
    static constexpr Colour Them = Opponent(Us);
    static constexpr int forward = Forward(Us);

    [[nodiscard]] unsigned mode() const noexcept { return Every ? unsigned{mode_legal} : mode_; }

    // Towards the a-file and towards the h-file, as White sees the board.
    static constexpr int capture_westwards = forward - 1;
    static constexpr int capture_eastwards = forward + 1;
    static constexpr Bitboard last_rank = RankSet(RankOf(Seen<Us>(a8)));
    static constexpr Bitboard third_rank = RankSet(RankOf(Seen<Us>(a3)));

    void Castling() noexcept {
        constexpr Bitboard short_gap = Bit(Seen<Us>(f1)) | Bit(Seen<Us>(g1));
        constexpr Bitboard long_gap = Bit(Seen<Us>(b1)) | Bit(Seen<Us>(c1)) | Bit(Seen<Us>(d1));
        const unsigned rights = board_.frame().castling & castling_rights_of[Us];
        if (rights == 0 || (mode() & (mode_castling | mode_direct_checks)) == 0) return;
        if ((rights & (white_short | black_short)) != 0 && (board_.occupied & short_gap) == 0)
            CastleThrough(Seen<Us>(f1), Seen<Us>(g1), castling_word[Us][0]);
        if ((rights & (white_long | black_long)) != 0 && (board_.occupied & long_gap) == 0)
            CastleThrough(Seen<Us>(d1), Seen<Us>(c1), castling_word[Us][1]);
    }

    void CastleThrough(Square passed, Square target, Move word) noexcept {
        if (IsAttacked<Them>(passed, board_) || IsAttacked<Them>(target, board_)) return;
        if (CastlingGivesCheck(board_, Seen<Us>(e1), target, enemy_king_))
            *end_++ = word | direct_check_bit;
        else if ((mode() & mode_castling) != 0)
            *end_++ = word;
    }

    /// The squares that every piece but the king may go to; checks that the mode asks for add to them piece by piece.
    void FindTargets() noexcept {
        if (in_check_) return FindEvasions();
        if ((mode() & mode_all) != 0)
            targets_ = ~own_.all;
        else if ((mode() & mode_captures) != 0)
            targets_ = enemy_.all;
        if ((mode() & mode_all) == 0) {
            added_direct_ = (mode() & mode_direct_checks) != 0 ? ~own_.all : 0;
            added_discovered_ = (mode() & mode_discovered_checks) != 0 ? ~own_.all : 0;
            added_double_ = (mode() & mode_double_checks) != 0 ? ~own_.all : 0;
        }
    }

    void FindEvasions() noexcept {
        checkers_ = AttackersOf(king_, board_) & enemy_.all;
        in_double_check_ = HasSeveral(checkers_);
        const Bitboard sliders = enemy_.bishops | enemy_.rooks | enemy_.queens;
        for (Bitboard rest = checkers_; rest != 0;) {
            const Square checker = TakeNextBit(rest);
            targets_ |= Bit(checker);
            if (!Has(sliders, checker)) continue;
            targets_ |= t_.between[checker][king_];
            // The line goes on through the square that the king leaves.
            checked_directions_ |= 1U << t_.direction[checker][king_];
        }
    }

    void FindLines() noexcept {
        rook_lines_ = board_.RookAttacks(enemy_king_);
        bishop_lines_ = board_.BishopAttacks(enemy_king_);
        discoverers_ = FindPins(enemy_king_, board_, own_.all, own_);
        pinned_ = FindPins(king_, board_, own_.all, enemy_);
    }

    /// Where a piece goes, given what it attacks and which squares give direct and discovered check.
    [[nodiscard]] Bitboard Wanted(Bitboard attacks, Bitboard direct, Bitboard discovered) const noexcept {
        if (Every) return attacks & targets_;
        return attacks & (targets_ | (added_direct_ & direct) | (added_discovered_ & discovered) |
                          (added_double_ & direct & discovered));
    }

    [[nodiscard]] Move CapturedField(Square to) const noexcept {
        return static_cast<Move>(Us == white ? -board_.squares[to] : board_.squares[to]) << 15;
    }

    [[nodiscard]] static Move CheckField(Square to, Bitboard direct, Bitboard discovered) noexcept {
        return static_cast<Move>((direct >> to) & 1U) << 21 | static_cast<Move>((discovered >> to) & 1U) << 22;
    }

    void Emit(Square from, int piece, Bitboard targets, Bitboard direct, Bitboard discovered) noexcept {
        const Move word = MakeWord(from, 0, piece);
        if ((targets & (direct | discovered)) == 0) return EmitWithoutChecks(word, targets);
        while (targets != 0) {
            const Square to = TakeNextBit(targets);
            *end_++ = word | static_cast<Move>(to) << 6 | CapturedField(to) | CheckField(to, direct, discovered);
        }
    }

    /// Nearly all moves give no check.
    void EmitWithoutChecks(Move word, Bitboard targets) noexcept {
        while (targets != 0) {
            const Square to = TakeNextBit(targets);
            *end_++ = word | static_cast<Move>(to) << 6 | CapturedField(to);
        }
    }

    void Knights() noexcept {
        const Bitboard direct = t_.knight_attacks[enemy_king_];
        for (Bitboard knights = own_.knights & ~pinned_; knights != 0;) {
            const Square from = TakeNextBit(knights);
            const Bitboard discovered = Has(discoverers_, from) ? ~Bitboard{0} : 0;
            Emit(from, knight, Wanted(t_.knight_attacks[from], direct, discovered), direct, discovered);
        }
    }

    template <PieceType Piece>
    void Sliders(Bitboard pieces) noexcept {
        const Bitboard direct = Piece == bishop ? bishop_lines_
                                : Piece == rook ? rook_lines_
                                                : bishop_lines_ | rook_lines_;
        while (pieces != 0) {
            const Square from = TakeNextBit(pieces);
            Bitboard attacks = Piece == bishop ? board_.BishopAttacks(from)
                               : Piece == rook ? board_.RookAttacks(from)
                                               : board_.QueenAttacks(from);
            if (Has(pinned_, from)) attacks &= LineThrough(king_, t_.direction[king_][from]);
            const Bitboard discovered = Has(discoverers_, from) ? OffLineToEnemyKing(from) : 0;
            Emit(from, Piece, Wanted(attacks, direct, discovered), direct, discovered);
        }
    }

    /// The squares that do not stay on the line between the enemy king and a discovering piece.
    [[nodiscard]] Bitboard OffLineToEnemyKing(Square from) const noexcept {
        return ~LineThrough(enemy_king_, t_.direction[enemy_king_][from]);
    }

    void PawnPushes() noexcept {
        const Bitboard empty = ~board_.occupied;
        const Bitboard king_file = t_.ray_north[king_] | t_.ray_south[king_];
        const Bitboard enemy_king_file = t_.ray_north[enemy_king_] | t_.ray_south[enemy_king_];
        const Bitboard direct = t_.pawn_attacks(Them)[enemy_king_];

        const Bitboard pushers = own_.pawns & (~pinned_ | king_file);
        const Bitboard single = Shifted<forward>(pushers) & empty;
        const Bitboard twice = Shifted<forward>(single & third_rank) & empty;
        const Bitboard discovered_single = Shifted<forward>(pushers & discoverers_ & ~enemy_king_file) & single;
        const Bitboard discovered_twice = Shifted<forward>(discovered_single & third_rank);

        Bitboard wanted = Wanted(single, direct, discovered_single);
        if (!in_check_ && (mode() & modes_that_keep_promotion_rank) != 0) wanted |= single & last_rank;
        while (wanted != 0) {
            const Square to = TakeNextBit(wanted);
            const Move word = MakeWord(to - forward, to, pawn) | CheckField(to, direct, discovered_single);
            if (Has(last_rank, to))
                Promotions(word, mode());
            else
                *end_++ = word;
        }
        wanted = Wanted(twice, direct, discovered_twice);
        while (wanted != 0) {
            const Square to = TakeNextBit(wanted);
            *end_++ = MakeWord(to - 2 * forward, to, pawn) | CheckField(to, direct, discovered_twice);
        }
    }

    void PawnCaptures() noexcept {
        PawnCapturesBy<capture_westwards>(own_.pawns & ~a_file);
        PawnCapturesBy<capture_eastwards>(own_.pawns & ~h_file);
    }

    template <int Step>
    void PawnCapturesBy(Bitboard pawns) noexcept {
        const Bitboard direct = t_.pawn_attacks(Them)[enemy_king_];
        pawns &= ~pinned_ | CaptureDiagonal<Step>(king_);
        Bitboard targets = Shifted<Step>(pawns) & enemy_.all;
        if (in_check_) targets &= targets_;
        if (targets == 0) return;
        const Bitboard discovered = Shifted<Step>(pawns & discoverers_ & ~CaptureDiagonal<Step>(enemy_king_));
        const bool every_capture = (mode() & (mode_captures | mode_all)) != 0;
        while (targets != 0) {
            const Square to = TakeNextBit(targets);
            const Move word = MakeWord(to - Step, to, pawn) | CapturedField(to) | CheckField(to, direct, discovered);
            if (Has(last_rank, to))
                Promotions(word, mode() | mode_queen_promotions);
            else if (every_capture || AsksForCheckType(mode(), CheckType(word)))
                *end_++ = word;
        }
    }

    /// The diagonal through `s` along which a capture with this step moves.
    template <int Step>
    [[nodiscard]] Bitboard CaptureDiagonal(Square s) const noexcept {
        return LineThrough(s, Step == 9 || Step == -9 ? north_east : north_west);
    }

    /// Writes the promotions of a pawn move that reaches the last rank; `word` is the move without promotion piece.
    void Promotions(Move word, unsigned mode) noexcept {
        const Square from = FromSquare(word), to = ToSquare(word);
        bool straight = Has(rook_lines_, to), diagonal = Has(bishop_lines_, to);
        if (!straight && !diagonal && t_.direction[enemy_king_][from] == t_.direction[from][to]) {
            // The new piece looks through the square that the pawn left.
            straight = Has(rook_lines_, from);
            diagonal = Has(bishop_lines_, from);
        }
        const bool on_line = straight || diagonal;
        const bool all = (mode & modes_with_all_promotions) != 0;
        const bool direct_checks =
            (mode & mode_direct_checks) != 0 || ((mode & mode_double_checks) != 0 && GivesDiscoveredCheck(word));

        const auto emit = [&](int piece, bool checks, bool wanted) {
            if (all || wanted || (checks && direct_checks))
                *end_++ = word | static_cast<Move>(piece) << 18 | (checks ? direct_check_bit : 0);
        };
        emit(queen, on_line, (mode & mode_queen_promotions) != 0);
        emit(rook, straight, false);
        emit(bishop, diagonal, false);
        emit(knight, !on_line && Has(t_.knight_attacks[enemy_king_], to), false);
    }

    void EnPassant() noexcept {
        const Square to = board_.frame().en_passant_square;
        if (to == 0) return;
        const bool every_capture = (mode() & (mode_captures | mode_all)) != 0;
        if (in_check_ && !Has(checkers_, Behind<Us>(to)) && !Has(targets_, to)) return;
        for (Bitboard capturers = t_.pawn_attacks(Them)[to] & own_.pawns; capturers != 0;) {
            const EnPassantCapture<Us> capture{board_, TakeNextBit(capturers)};
            if (capture.ExposesOwnKing()) continue;
            const Move word = MakeWord(capture.from, to, pawn, pawn) | capture.CheckBits();
            if (every_capture || AsksForCheckType(mode(), CheckType(word))) *end_++ = word;
        }
    }

    void KingMoves() noexcept {
        const Bitboard discovered = Has(discoverers_, king_) ? OffLineToEnemyKing(king_) : 0;
        const Bitboard allowed = in_check_ ? ~own_.all : targets_ | (added_discovered_ & discovered);
        const Move word = MakeWord(king_, 0, king);
        Bitboard targets = t_.king_attacks[king_] & ~t_.king_attacks[enemy_king_] & ~own_.all & allowed;
        while (targets != 0) {
            const Square to = TakeNextBit(targets);
            if ((checked_directions_ >> t_.direction[king_][to] & 1U) != 0) continue;
            if (IsAttacked<Them>(to, board_)) continue;
            *end_++ = word | static_cast<Move>(to) << 6 | CapturedField(to) | CheckField(to, 0, discovered);
        }
    }

    Move* end_;
    const BOARD& board_;
    const unsigned mode_;  ///< of a selection
    const BITBOARD_TABLES& t_ = bitboard_tables;
    const SIDE_PIECES& own_ = board_.sides[Us];
    const SIDE_PIECES& enemy_ = board_.sides[Them];
    const Square king_ = own_.king_square;
    const Square enemy_king_ = enemy_.king_square;
    const bool in_check_ = board_.in_check();
    bool in_double_check_ = false;
    unsigned checked_directions_ = 0;  ///< bit d: a slider checks along direction d
    Bitboard checkers_ = 0;
    Bitboard targets_ = 0;
    /// Own squares removed from everything; empty unless the mode asks for that check and not for all moves.
    Bitboard added_direct_ = 0, added_discovered_ = 0, added_double_ = 0;
    Bitboard rook_lines_ = 0, bishop_lines_ = 0;  ///< seen from the enemy king
    Bitboard discoverers_ = 0, pinned_ = 0;
};

template <Colour Us>
Move* GenerateFor(Move* buffer, const BOARD& board, unsigned mode) noexcept {
    // In check the kinds don't matter: every way out is wanted.
    if (mode == mode_legal || board.in_check()) return Generator<Us, true>(buffer, board, mode_legal).Run();
    return Generator<Us, false>(buffer, board, mode).Run();
}

}  // namespace

Move* GenerateMoves(Move* buffer, const BOARD& board, unsigned mode) noexcept {
    return board.side_to_move == white ? GenerateFor<white>(buffer, board, mode)
                                       : GenerateFor<black>(buffer, board, mode);
}

bool VerifyMove(Move move, const BOARD& board) noexcept {
    Move buffer[move_list_room];
    const Move* const end = GenerateMoves(buffer, board, mode_legal);
    return std::find<const Move*>(buffer, end, move) != end;
}

bool FitsMoveLists(const BOARD& board) noexcept {
    constexpr int most_officers = 16;
    constexpr std::ptrdiff_t most_moves = 218;
    for (const SIDE_PIECES& side : board.sides) {
        if (PopCount(side.all & ~side.pawns) > most_officers) return false;
    }
    Move buffer[move_list_room];
    if (GenerateMoves(buffer, board, mode_legal) - buffer > most_moves) return false;
    BOARD other_side = board;
    other_side.MakeNullMove();
    return GenerateMoves(buffer, other_side, mode_legal) - buffer <= most_moves;
}

void GenerateLegalMoves(const BOARD& board, std::vector<Move>& list) {
    // There is room beyond MAX_MOVES: a list that runs over has to be reported, not to overwrite the stack.
    Move buffer[move_list_room];
    buffer[MAX_MOVES] = INVALID;
    const std::ptrdiff_t NUM_MOVES = GenerateMoves(buffer, board, mode_legal) - buffer;
    CHECKED_ASSERT(NUM_MOVES <= MAX_MOVES && buffer[MAX_MOVES] == INVALID, vocabulary::too_many_moves);
    list.resize(static_cast<std::size_t>(NUM_MOVES));
    std::copy(buffer, buffer + NUM_MOVES, list.begin());
}
