#pragma once

#include <string>
#include <vector>

#include "tune/spsa.h"

/// Where the parameters stood after some pairs.
struct TuningPoint {
    std::uint64_t pairs = 0;
    std::vector<double> values;
};

/// A run of tuning as text: what it is, where it stands, and the way there.
///
///     tune 1
///     parameter futility_pruning_margin 300 0 600 20 0.002
///     ..
///     rules ..                             (the head: whatever else the run depends on)
///
///     at 160 301.38729374982 ..            (pairs, and the value of each parameter in full)
///     way 0 300.00 ..
///     way 16 300.21 ..

/// The lines of the head for the parameters and the plan; `more` are further lines, each with its end.
[[nodiscard]] std::string TuningHead(const Spsa& spsa, const std::string& more);

[[nodiscard]] std::string TuningText(const std::string& head, const Spsa& spsa, const std::vector<TuningPoint>& way);

/// Takes a kept run: `spsa` goes to where it stood. Gives the way there. Throws std::runtime_error if the head is
/// another one (the first line that differs is told), or with the line of what can't be read.
[[nodiscard]] std::vector<TuningPoint> ReadTuning(const std::string& text, const std::string& head, Spsa& spsa);
