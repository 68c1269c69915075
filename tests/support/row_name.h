#pragma once

#include <gtest/gtest.h>

#include <string>

/// Names a row of a table-driven test after its `name`, with its number in front so that no two are alike. CTest takes
/// letters, digits and underscores.
template <class Row>
std::string RowName(const testing::TestParamInfo<Row>& info) {
    std::string name = std::to_string(info.index) + "_";
    for (const char c : info.param.name) {
        const bool is_plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        name += is_plain ? c : '_';
    }
    return name;
}
