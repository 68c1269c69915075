#pragma once

#include <array>
#include <cstdint>

/// King and pawn against king, computed when the engine is built (single_pawn_solver.h tells the layout).
extern const std::array<std::uint64_t, 8192> single_pawn_bitbase;
