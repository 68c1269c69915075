#include "bitbases/checksum_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "bitbases/sha256.h"
#include "support/row_name.h"
#include "support/temporary_directory.h"

namespace {

using VorkaBitbases::Checksum;

std::vector<std::uint8_t> BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

// --- The published examples (FIPS 180-4, and the vectors of its validation) ---

struct HashRow {
    std::string name;
    std::string text;
    std::string checksum;
};

class Sha256Of : public testing::TestWithParam<HashRow> {};

TEST_P(Sha256Of, IsAsPublished) { EXPECT_EQ(Sha256(BytesOf(GetParam().text)), GetParam().checksum); }

INSTANTIATE_TEST_SUITE_P(
    Texts, Sha256Of,
    testing::Values(HashRow{"Nothing", "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
                    HashRow{"OneByte", "\xbd", "68325720aabd7c82f30f554b313d0570c95accbb7dc4b5aae11204c08ffe732b"},
                    HashRow{"Abc", "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
                    HashRow{"LengthJustFits", std::string(55, '\0'),
                            "02779466cdec163811d078815c633f21901413081449002f24aa3e80f0b88ef7"},
                    HashRow{"LengthNeedsABlock", std::string(56, '\0'),
                            "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb"},
                    HashRow{"TwoBlocks", "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
                            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
                    HashRow{"WholeBlock", std::string(64, '\0'),
                            "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b"},
                    HashRow{"AMillion", std::string(1000000, 'a'),
                            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}),
    RowName<HashRow>);

// --- The file ---

constexpr const char* sum_of_abc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

TEST(ChecksumFile, IsALineOfSha256sum) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("x.vbb");
    EXPECT_EQ(VorkaBitbases::TestChecksum(path, BytesOf("abc")), Checksum::missing);
    ASSERT_TRUE(VorkaBitbases::WriteChecksum(path, BytesOf("abc")));
    EXPECT_EQ(TextOf(path + ".sha256"), std::string(sum_of_abc).append("  x.vbb\n"));
    EXPECT_EQ(VorkaBitbases::TestChecksum(path, BytesOf("abc")), Checksum::fits);
    EXPECT_EQ(VorkaBitbases::TestChecksum(path, BytesOf("abd")), Checksum::does_not_fit);
    VorkaBitbases::RemoveChecksum(path);
    EXPECT_EQ(VorkaBitbases::TestChecksum(path, BytesOf("abc")), Checksum::missing);
}

TEST(ChecksumFile, OfAnotherFormOrFileDoesNotFit) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("x.vbb");
    const auto test = [&](const std::string& text) {
        std::ofstream(path + ".sha256") << text;
        return VorkaBitbases::TestChecksum(path, BytesOf("abc"));
    };
    const std::string sum = sum_of_abc;
    EXPECT_EQ(test(sum + "  x.vbb"), Checksum::fits);
    EXPECT_EQ(test(sum + " *x.vbb\n"), Checksum::fits);
    EXPECT_EQ(test(sum + "  x.vbb\r\n"), Checksum::fits);
    for (const std::string& text :
         {std::string(), sum, sum + "  y.vbb\n", sum + "  x.vbbb\n", sum.substr(1) + "  x.vbb\n", "  x.vbb " + sum,
          std::string(1000, '*'), std::string(1000, ' ')}) {
        EXPECT_EQ(test(text), Checksum::does_not_fit) << text;
    }
}

TEST(ChecksumFile, ThatCantBeWrittenIsMissing) {
    const TemporaryDirectory directory;
    EXPECT_FALSE(VorkaBitbases::WriteChecksum(directory.File("none/x.vbb"), BytesOf("abc")));
}

}  // namespace
