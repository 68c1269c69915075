#pragma once

#include <concepts>
#include <cstdint>

/// What a node expects of itself. The first move tried passes the negated type to its child, every later one `cut`.
/// The mate threat test hands over any number in its place; what is none of the three is treated as no special kind.
enum class NodeType : std::int32_t { all = -1, principal = 0, cut = 1 };
[[nodiscard]] constexpr NodeType operator-(NodeType type) { return static_cast<NodeType>(-static_cast<int>(type)); }

/// What a node has found out about its position. The low five bits are kept in the hash entry.
enum class NodeFlags : std::uint32_t {
    none = 0,
    single_reply = 0x01,        ///< exactly one legal move, in check or not
    mate_threat = 0x02,         ///< found by the mate threat test
    queen_attacked = 0x04,      ///< a queen of the side on move, by a lesser piece
    queen_not_attacked = 0x08,  ///< the queen test was made, and found nothing
    pin_threat = 0x10,
    perpetual_threat = 0x20,
};

/// What a node is told to leave out. The low byte acts at the node itself; the bits of NextPly act at its children.
enum class ChildFlags : std::uint32_t {
    none = 0,
    no_null_move = 0x001,
    no_ettc = 0x002,
    no_recapture_extension = 0x004,  ///< after a double check, or inside a null-move search
    no_limited_razoring = 0x008,
    no_extended_futility = 0x010,
    no_perpetual_test = 0x020,
    untested = 0x040,  ///< set by several callers, tested by nobody: docs/oddities.md, flag without a reader
    no_late_move_reduction = 0x080,
};

/// Why the moves of a node were extended. The check bits are cleared for each move; the others stay set for all later
/// moves of the node, so that one recapture keeps the rest of them from being reduced: docs/oddities.md, extension
/// causes.
enum class ExtensionCauses : std::uint32_t {
    none = 0,
    simple_check = 0x001,
    discovered_check = 0x002,
    double_check = 0x004,
    single_reply = 0x008,
    recapture = 0x010,
    passed_pawn_6th = 0x020,
    passed_pawn_7th = 0x040,
    rook_on_7th = 0x080,
    queen_attacked = 0x100,
    perpetual_threat = 0x200,
    pin_threat = 0x400,
    mate_threat = 0x800,
};

template <class T>
concept FlagWord = std::same_as<T, NodeFlags> || std::same_as<T, ChildFlags> || std::same_as<T, ExtensionCauses>;

template <FlagWord T>
[[nodiscard]] constexpr std::uint32_t Word(T flags) {
    return static_cast<std::uint32_t>(flags);
}
template <FlagWord T>
[[nodiscard]] constexpr T operator|(T a, T b) {
    return static_cast<T>(Word(a) | Word(b));
}
template <FlagWord T>
constexpr T& operator|=(T& a, T b) {
    return a = a | b;
}
template <FlagWord T>
[[nodiscard]] constexpr T Without(T flags, T bits) {
    return static_cast<T>(Word(flags) & ~Word(bits));
}
template <FlagWord T>
[[nodiscard]] constexpr bool HasAny(T flags, T bits) {
    return (Word(flags) & Word(bits)) != 0;
}

/// A position with one of these is no place for selective techniques.
inline constexpr NodeFlags threats = NodeFlags::single_reply | NodeFlags::mate_threat | NodeFlags::queen_attacked |
                                     NodeFlags::pin_threat | NodeFlags::perpetual_threat;
static_assert(Word(threats) == 0x37);

/// The same orders for one ply later.
[[nodiscard]] constexpr ChildFlags NextPly(ChildFlags flags) { return static_cast<ChildFlags>(Word(flags) << 5); }
/// What a node hands on: the bits that NextPly has set for its children.
[[nodiscard]] constexpr ChildFlags Inherited(ChildFlags flags) {
    return static_cast<ChildFlags>((Word(flags) & 0x1F00) >> 5);
}

inline constexpr ChildFlags root_child =
    ChildFlags::no_perpetual_test | ChildFlags::untested | NextPly(ChildFlags::no_perpetual_test);
inline constexpr ChildFlags root_child_without_null_move = root_child | ChildFlags::no_null_move;
static_assert(Word(root_child) == 0x460);
static_assert(Word(root_child_without_null_move) == 0x461);
