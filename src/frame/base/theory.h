#pragma once

/// Whether the assertions of the theory are compiled in: what must hold at the entries of the board, the node, the
/// evaluation and the tables if the program is right. They cost more than the work that they watch, so they are for
/// debug builds (and those with sanitizers) only; a release build holds none of them. Where there are many they have a
/// file of their own, named `.._theory`; a few stand above what they watch. All are called inside
/// `if constexpr (theory_is_checked)`.
#ifdef NDEBUG
inline constexpr bool theory_is_checked = false;
#else
inline constexpr bool theory_is_checked = true;
#endif
