#pragma once

#include <string>
#include <vector>

#include "tune/tuning_state.h"

/// A picture with a small diagram for each parameter: its value over the pairs, from its least value to its most.
[[nodiscard]] std::string PlotSvg(const Spsa& spsa, const std::vector<TuningPoint>& way);
