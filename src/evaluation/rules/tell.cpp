#include "evaluation/rules/tell.h"

#include <cstddef>

namespace {

void add(WingCounters& counters, const WingCounters& others, int sign) {
    for (std::size_t wing = 0; wing < counters.size(); ++wing) add_points(counters[wing], sign * others[wing]);
}

}  // namespace

COUNTER_POINTS TRACED_CONTEXT::Counters() const {
    COUNTER_POINTS points;
    for (const Colour side : {white, black}) {
        points.pressure[side] = pressure[side];
        points.cover[side] = cover[side];
        add(points.pressure[side], pawn_pressure[side], 1);
        add(points.cover[side], pawn_cover[side], 1);
    }
    points.activity = activity;
    return points;
}

COUNTER_POINTS TRACED_CONTEXT::PointsSinceLast() {
    COUNTER_POINTS points = Counters();
    for (const Colour side : {white, black}) {
        add(points.pressure[side], counters_.pressure[side], -1);
        add(points.cover[side], counters_.cover[side], -1);
    }
    add_points(points.activity, -counters_.activity);
    ForgetPoints();
    return points;
}
