#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// A target reports by ending the program, so the name of the seed comes first.
TEST(Seeds, PassTheFuzzTarget) {
    std::set<std::filesystem::path> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(VORKA_TEST_DIRECTORY "/fuzz/seeds/" FUZZ_TARGET)) {
        seeds.insert(entry.path());
    }
    EXPECT_FALSE(seeds.empty());
    for (const std::filesystem::path& seed : seeds) {
        std::cout << seed.filename().string() << std::endl;
        std::ifstream file(seed, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        ASSERT_TRUE(file.good() || file.eof());
        EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), 0);
    }
}

}  // namespace
