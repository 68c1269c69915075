#include "search/tournament/tournament_state.h"

#include <cmath>
#include <new>

namespace tournament {

TournamentState::TournamentState() : pages_(sizeof(Tables)) {
    if (pages_.data() == nullptr) throw std::bad_alloc();
    Prepare(settings);
}

void TournamentState::Prepare(const TournamentSettings& new_settings) {
    settings = new_settings;
    for (std::size_t plies = 1; plies < 64; ++plies) {
        for (std::size_t moves = 1; moves < 64; ++moves) {
            const double growth = std::log(static_cast<double>(plies)) * std::log(static_cast<double>(moves));
            reductions_[plies][moves] = static_cast<std::int16_t>(
                std::lround(settings.late_move_reduction_base + settings.late_move_reduction_factor * growth));
        }
    }
}

}  // namespace tournament
