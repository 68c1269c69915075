#pragma once

#include <cstdint>
#include <vector>

#include "chess/bits.h"
#include "frame/base/wall_clock.h"

/// One entry of a time control.
struct TimeControl {
    std::int32_t moves = 40;     ///< moves to make, -1 for the rest of the game
    std::int32_t base = 300000;  ///< milliseconds
    std::int32_t increment = 0;  ///< milliseconds
    std::int32_t next = -1;      ///< -1 repeat this entry, 0 go on to the next of the list

    bool operator==(const TimeControl&) const = default;
};

/// Both sides' clocks. Only the active side's time runs, and only while the clock is running; it is taken off when the
/// clock stops or changes sides. The clock never calls time: what is left may become negative.
class ChessClock {
  public:
    using TimeSource = Timestamp (*)();
    explicit ChessClock(TimeSource now = &Timestamp::Now);

    /// Lets the active side's time run; a running clock goes on undisturbed.
    void startClock();
    /// Takes the elapsed time off the active side. A stopped clock is left as it is.
    void stopClock();
    /// The active side has moved: its increment comes in, its time goes off, its move is counted, and at the last move
    /// of an entry the next one (or the same again) adds its time. A running clock runs on for the other side.
    void switchClock();
    /// Stops the clock without taking time off; both sides go back to the first entry of their list.
    void resetClock(Colour active);

    /// A new control list for a side (at least one entry); its clock restarts from the first entry at once.
    void setControls(Colour side, std::vector<TimeControl> controls);
    void setMilliseconds(Colour side, std::int64_t milliseconds);

    [[nodiscard]] Colour active() const { return active_; }
    [[nodiscard]] bool running() const { return running_; }
    /// What is left, not counting the time that runs since the clock was started.
    [[nodiscard]] std::int64_t milliseconds(Colour side) const { return sides_[side].milliseconds; }
    /// Moves to the time control, -1 for the rest of the game.
    [[nodiscard]] std::int32_t movesLeft(Colour side) const { return sides_[side].moves_left; }

  private:
    struct Side {
        std::vector<TimeControl> controls{TimeControl{}};
        std::int32_t moves_left = 40;
        std::int64_t milliseconds = 300000;
        std::size_t index = 0;
        std::int32_t next = -1;
    };
    static void restart(Side& side);
    /// Time set while a side's clock runs is what is left from that moment on.
    void countFromNow(Colour side);
    /// Milliseconds since the clock was started or changed sides; 0 for a stopped one.
    [[nodiscard]] std::int64_t elapsed(const Timestamp& now) const;

    TimeSource now_;
    bool running_ = false;
    Timestamp start_time_;
    Side sides_[2];
    Colour active_ = white;
};
