#pragma once

#include <string>

#include "chess/notation.h"

/// The names of some squares, by file and rank: "a2 b3".
inline std::string SquaresText(Bitboard squares) {
    std::string names;
    for (int file = 0; file < 8; ++file) {
        for (int rank = 0; rank < 8; ++rank) {
            const Square s = 8 * rank + file;
            if (!Has(squares, s)) continue;
            if (!names.empty()) names += ' ';
            names += SquareToString(s);
        }
    }
    return names;
}
