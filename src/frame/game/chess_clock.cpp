#include "frame/game/chess_clock.h"

#include <utility>

#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

ChessClock::ChessClock(TimeSource now) : now_(now) {
    for (Side& side : sides_) restart(side);
}

void ChessClock::startClock() {
    if (running_) return;
    start_time_ = now_();
    running_ = true;
}

void ChessClock::stopClock() {
    sides_[active_].milliseconds -= elapsed(now_());
    running_ = false;
}

void ChessClock::switchClock() {
    const Timestamp now = now_();
    Side& side = sides_[active_];
    side.milliseconds += side.controls[side.index].increment - elapsed(now);
    if (side.moves_left != -1 && --side.moves_left == 0) {
        if (side.next == 0 && side.index + 1 < side.controls.size()) ++side.index;
        const TimeControl& control = side.controls[side.index];
        side.milliseconds += control.base;
        side.moves_left = control.moves;
        side.next = control.next;
    }
    active_ = Opponent(active_);
    start_time_ = now;
}

void ChessClock::resetClock(Colour active) {
    running_ = false;
    active_ = active;
    for (Side& side : sides_) restart(side);
}

void ChessClock::setControls(Colour side, std::vector<TimeControl> controls) {
    CHECKED_ASSERT(!controls.empty(), vocabulary::no_error_description);
    sides_[side].controls = std::move(controls);
    restart(sides_[side]);
    countFromNow(side);
}

void ChessClock::setMilliseconds(Colour side, std::int64_t milliseconds) {
    sides_[side].milliseconds = milliseconds;
    countFromNow(side);
}

void ChessClock::countFromNow(Colour side) {
    if (running_ && side == active_) start_time_ = now_();
}

void ChessClock::restart(Side& side) {
    const TimeControl& first = side.controls.front();
    side.index = 0;
    side.moves_left = first.moves;
    side.milliseconds = first.base;
    side.next = first.next;
}

std::int64_t ChessClock::elapsed(const Timestamp& now) const {
    return running_ ? ElapsedMilliseconds(start_time_, now) : 0;
}
