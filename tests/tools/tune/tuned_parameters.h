#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tune/parameters.h"

/// The parameters of a text in the form of a file.
inline std::vector<Parameter> ParametersIn(const std::string& text) {
    std::istringstream file(text);
    return ReadParameters(file);
}
