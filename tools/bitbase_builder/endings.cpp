#include "bitbase_builder/endings.h"

#include <array>

#include "bitbases/bitbases.h"

namespace bitbase_builder {

namespace {

constexpr std::array pieces{queen, rook, bishop, knight};

/// Every pair of pieces, the stronger or an equal one first.
void add_pieces(std::vector<Men>& tables, Colour second) {
    for (const int a : pieces) {
        for (const int b : pieces) {
            if (a >= b) tables.push_back({{white, a}, {second, b}});
        }
    }
}
void add_pieces_with_pawn(std::vector<Men>& tables, Colour owner) {
    for (const int piece : pieces) tables.push_back({{white, piece}, {owner, pawn}});
}

/// Values of a table whose side to move is White, as the file stores them; for Black's move the view is turned.
int stored(const Library& library, const Position& position) {
    const Value value = library.value(position);
    if (value == unknown) return VorkaBitbases::stored_draw;
    const bool white_wins = (value == win) == (position.to_move == white);
    return white_wins ? VorkaBitbases::stored_win : VorkaBitbases::stored_loss;
}

void write(std::vector<std::uint8_t>& file, const VorkaBitbases::Cell& cell, int value) {
    file[cell.offset] = static_cast<std::uint8_t>(file[cell.offset] | value << cell.shift);
}

template <class Visit>
void for_both_kings(Position& position, Visit visit) {
    for (position.at[0] = a1; position.at[0] <= h8; ++position.at[0]) {
        for (position.at[1] = a1; position.at[1] <= h8; ++position.at[1]) visit();
    }
}

template <class Visit>
void for_left_half(int first_rank, int last_rank, Visit visit) {
    for (int rank = first_rank; rank <= last_rank; ++rank) {
        for (int file = 0; file < 4; ++file) visit(rank * 8 + file);
    }
}

}  // namespace

std::vector<Men> tables_of_two_pawns() {
    std::vector<Men> tables;
    for (const int piece : pieces) tables.push_back({{white, piece}});
    tables.push_back({{white, pawn}});
    add_pieces(tables, black);
    add_pieces_with_pawn(tables, black);
    tables.push_back({{white, pawn}, {black, pawn}});
    return tables;
}

std::vector<Men> tables_of_rammed_pawns() {
    std::vector<Men> tables;
    add_pieces(tables, white);
    add_pieces_with_pawn(tables, white);
    tables.push_back({{white, pawn}, {white, pawn}});
    for (const int piece : pieces) tables.push_back({{white, pawn}, {black, pawn}, {white, piece}});
    tables.push_back({{white, pawn}, {black, pawn}, {white, pawn}});
    return tables;
}

double work_of(const Men& men) noexcept {
    // By piece type: roughly the moves that it has. A blocked pair is one man more, with fewer squares.
    constexpr std::array<double, 7> work = {0, 4, 2, 4, 7, 12, 0};
    constexpr double one_man_less = 1.0 / 64;
    double sum = 0;
    for (const Man& man : men) sum += work[static_cast<std::size_t>(man.type)];
    return men.size() == 1 ? sum * one_man_less : sum;
}

void solve(Library& library, const std::vector<Men>& tables, int threads, const TableBegun& begun) {
    for (const Men& men : tables) {
        if (begun) begun(men);
        library.add(men, threads);
    }
}

std::vector<std::uint8_t> two_pawns_file(const Library& library) {
    std::vector<std::uint8_t> file(VorkaBitbases::two_pawns_size);
    Position position;
    position.count = 4;
    position.men[2] = {white, pawn};
    position.men[3] = {black, pawn};
    for_left_half(1, 6, [&](Square own_pawn) {
        position.at[2] = own_pawn;
        for (position.at[3] = a2; position.at[3] <= h7; ++position.at[3]) {
            for_both_kings(position, [&] {
                if (!is_legal(position)) return;
                write(file, VorkaBitbases::TwoPawnsCell(own_pawn, position.at[3], position.at[0], position.at[1]),
                      stored(library, position));
            });
        }
    });
    return file;
}

std::vector<std::uint8_t> rammed_pawn_file(const Library& library) {
    std::vector<std::uint8_t> file(VorkaBitbases::rammed_pawn_size);
    Position position;
    position.count = 5;
    position.men[2] = {white, pawn};
    position.men[3] = {black, pawn};
    position.men[4] = {white, pawn};
    for_left_half(1, 5, [&](Square blocked) {
        position.at[2] = blocked;
        position.at[3] = blocked + 8;
        for (position.at[4] = a2; position.at[4] <= h7; ++position.at[4]) {
            for_both_kings(position, [&] {
                for (const Colour to_move : {white, black}) {
                    position.to_move = to_move;
                    if (!is_legal(position)) continue;
                    write(file,
                          VorkaBitbases::RammedPawnsCell(blocked, position.at[4], position.at[0], position.at[1],
                                                         to_move == white ? 0 : 1),
                          stored(library, position));
                }
            });
        }
    });
    return file;
}

}  // namespace bitbase_builder
