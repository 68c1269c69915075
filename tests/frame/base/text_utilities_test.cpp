#include "frame/base/text_utilities.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "support/slow_text_model.h"

namespace {

using namespace VorkaUtils;
using Words = std::vector<std::string>;

// --- tokenize ---

struct TokenizeCase {
    const char* name;
    std::string text;
    Words words;
    std::string opening = "\"'";
    std::string closing = "\"'";
    bool keep_quotes = false;
};

class Tokenize : public testing::TestWithParam<TokenizeCase> {};

TEST_P(Tokenize, GivesTheWords) {
    const TokenizeCase& row = GetParam();
    EXPECT_EQ(tokenize(row.text, white_space, row.opening, row.closing, row.keep_quotes), row.words);
}

const TokenizeCase tokenize_cases[] = {
    {"Empty", "", {}},
    {"OnlySeparators", " \t\r\n  ", {}},
    {"OneWord", "go", {"go"}},
    {"OneCharacter", "g", {"g"}},
    {"Plain", "level 40 5 0", {"level", "40", "5", "0"}},
    {"SeparatorsAround", "\t go \r\n", {"go"}},
    {"SeparatorsInARow", "a \t b", {"a", "b"}},
    {"QuotedIsOneWord", "setboard \"8/8 w - -\"", {"setboard", "8/8 w - -"}},
    {"QuoteAtTheStart", "\"a b\" c", {"a b", "c"}},
    {"QuoteInsideAWord", "a `b c`d e", {"a", "b cd", "e"}, "`", "`"},
    {"TextBeforeTheQuote", "x\"a b\" c", {"xa b", "c"}},
    {"TextOnBothSides", "x\"a b\"y z", {"xa by", "z"}},
    {"QuotesSideBySide", "\"a b\"'c d'e", {"a bc de"}},
    {"OtherQuoteInside", "\"it's\" 'say \"hi\"'", {"it's", "say \"hi\""}},
    {"EmptyQuotes", "name \"\"", {"name", ""}},
    {"EmptyQuotesWithinAWord", "a\"\"b", {"ab"}},
    {"SeparatorsInQuotes", "\" \t\r\n\"", {" \t\r\n"}},
    {"BracketsAsPair", "f(a b) c", {"fa b", "c"}, "(", ")"},
    {"BracketsDoNotNest", "(a (b) c)", {"a (b", "c)"}, "(", ")"},
    {"ClosingCharacterAlone", "a) b", {"a)", "b"}, "(", ")"},
    {"QuotesKept", "x\"a b\"y (c)", {"x\"a b\"y", "(c)"}, "\"(", "\")", true},
    {"QuotesKeptAroundNothing", "\"\"", {"\"\""}, "\"", "\"", true},
    {"NoQuotesKnown", "\"a b\"", {"\"a", "b\""}, "", ""},
    {"NulAndHighBytes", std::string("a\0b \xff", 5), {std::string("a\0b", 3), "\xff"}},
};

INSTANTIATE_TEST_SUITE_P(Cases, Tokenize, testing::ValuesIn(tokenize_cases),
                         [](const auto& row) { return row.param.name; });

TEST(TokenizeSeparators, AreTheCallersChoice) {
    EXPECT_EQ(tokenize("a;b c;;d", ";"), (Words{"a", "b c", "d"}));
    EXPECT_EQ(tokenize("a b", ""), (Words{"a b"}));
}

TEST(TokenizeFailure, IsAnOpeningQuoteWithoutPartner) {
    for (const std::string text : {"\"", "\"a b", "a b\"", "a\"b c", "\"a\" \"", "'\"'\"", "\"a'"}) {
        EXPECT_THROW((void)tokenize(text, white_space, "\"'", "\"'"), unterminated_embedded_string_exception) << text;
    }
    EXPECT_THROW((void)tokenize("(a", white_space, "(", ")"), tokenize_exception);
    EXPECT_THROW((void)tokenize("(a", white_space, "(", ")"), VorkaException);
}

TEST(TokenizeRandomText, GivesTheWordsOfTheSlowModel) {
    constexpr std::string_view alphabet = "ab \t\"'";
    std::mt19937 random(19520714);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (auto n = random() % 16; n > 0; --n) text += alphabet[random() % alphabet.size()];
        const bool keep_quotes = i % 2 == 1;
        const std::optional<Words> wanted = slow_model::Words(text, white_space, "\"'", keep_quotes);
        if (wanted) {
            ASSERT_EQ(tokenize(text, white_space, "\"'", "\"'", keep_quotes), *wanted) << text;
        } else {
            ASSERT_THROW((void)tokenize(text, white_space, "\"'", "\"'"), unterminated_embedded_string_exception)
                << text;
        }
    }
}

TEST(TokenizeLongText, OfOneMebibyteIsSplit) {
    std::string text;
    while (text.size() < (1U << 20)) text += "ab ";
    EXPECT_EQ(tokenize(text, white_space, "\"'", "\"'").size(), text.size() / 3);
    EXPECT_EQ(tokenize(std::string(1U << 20, 'x'), white_space, "\"'", "\"'").size(), 1U);
    EXPECT_EQ(tokenize(std::string(1U << 20, '\''), white_space, "\"'", "\"'"), Words{""});
}

// --- Trimmed ---

TEST(Trimmed, LosesTheWhiteSpaceAroundIt) {
    struct Row {
        std::string text, trimmed;
    };
    const Row rows[] = {
        {"", ""},
        {" ", ""},
        {" \t\r\n", ""},
        {"a", "a"},
        {" a", "a"},
        {"a\r\n", "a"},
        {"\t a b \t c\n ", "a b \t c"},
        {std::string(" \0 ", 3), std::string("\0", 1)},
        {"\va\f", "\va\f"},
        {"\xa0", "\xa0"},
    };
    for (const Row& row : rows) EXPECT_EQ(Trimmed(row.text), row.trimmed) << '"' << row.text << '"';
    EXPECT_EQ(Trimmed({}), "");
}

TEST(Trimmed, PointsIntoItsText) {
    const std::string text = "  word ";
    EXPECT_EQ(Trimmed(text).data(), text.data() + 2);
}

// --- Numbers ---

/// What a reader makes of a text: the number, or nothing where it throws.
template <class Reader>
auto Read(Reader reader, const std::string& text) -> std::optional<decltype(reader(text))> {
    try {
        return reader(text);
    } catch (const string_conversion_error&) {
        return std::nullopt;
    }
}

template <class Number>
struct NumberCase {
    std::string text;
    std::optional<Number> number;
};

template <class Number, class Reader, std::size_t n>
void ExpectNumbers(Reader reader, const NumberCase<Number> (&rows)[n]) {
    for (const NumberCase<Number>& row : rows) EXPECT_EQ(Read(reader, row.text), row.number) << '"' << row.text << '"';
}

constexpr auto refused = std::nullopt;

TEST(ToInteger, ReadsWholeNumbersOf32Bits) {
    ExpectNumbers<std::int32_t>(ToInteger, {{"0", 0},
                                            {"-5", -5},
                                            {"007", 7},
                                            {"-007", -7},
                                            {"000", 0},
                                            {"-0", 0},
                                            {"42", 42},
                                            {"2147483647", 2147483647},
                                            {"-2147483647", -2147483647},
                                            {"0000000000000000000000012", 12}});
}

TEST(ToInteger, RefusesEverythingElse) {
    ExpectNumbers<std::int32_t>(ToInteger, {{"", refused},
                                            {"-", refused},
                                            {"--5", refused},
                                            {"---5", refused},
                                            {"-5-", refused},
                                            {"5-", refused},
                                            {"-0-5", refused},
                                            {"+5", refused},
                                            {"-+5", refused},
                                            {"12x", refused},
                                            {"x12", refused},
                                            {"1.5", refused},
                                            {"1e3", refused},
                                            {"0x10", refused},
                                            {" 5", refused},
                                            {"5 ", refused},
                                            {"1 2", refused},
                                            {"2147483648", refused},
                                            {"-2147483648", refused},
                                            {"99999999999999999999", refused},
                                            {std::string("5\0", 2), refused},
                                            {"\xb2", refused}});
}

TEST(ToUnsigned64, ReadsDigitsUpToTheLargest) {
    ExpectNumbers<std::uint64_t>(ToUnsigned64, {{"0", 0U},
                                                {"00", 0U},
                                                {"0017", 17U},
                                                {"18446744073709551615", 18446744073709551615U},
                                                {"00018446744073709551615", 18446744073709551615U},
                                                {"18446744073709551616", refused},
                                                {"18446744073709551620", refused},
                                                {"99999999999999999999", refused},
                                                {"184467440737095516150", refused},
                                                {"", refused},
                                                {"-1", refused},
                                                {"-0", refused},
                                                {"+1", refused},
                                                {"1 ", refused},
                                                {" 1", refused},
                                                {"0x1", refused},
                                                {"1.0", refused}});
}

TEST(ToSigned64, ReadsAnOptionalMinus) {
    ExpectNumbers<std::int64_t>(ToSigned64, {{"0", 0},
                                             {"-0", 0},
                                             {"-12", -12},
                                             {"0012", 12},
                                             {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
                                             {"9223372036854775808", refused},
                                             {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
                                             {"-9223372036854775809", refused},
                                             {"", refused},
                                             {"-", refused},
                                             {"--1", refused},
                                             {"+1", refused},
                                             {"1a", refused}});
}

TEST(ToString, IsReadBackAsTheSame) {
    EXPECT_EQ(ToString(std::int32_t{0}), "0");
    EXPECT_EQ(ToString(std::int32_t{-1}), "-1");
    EXPECT_EQ(ToString(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(ToString(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(ToString(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");

    std::mt19937_64 random(20240607);
    for (int i = 0; i < 2000; ++i) {
        const std::uint64_t bits = random() >> (random() % 64);
        EXPECT_EQ(ToUnsigned64(ToString(bits)), bits);
        const auto wide = static_cast<std::int64_t>(bits * (i % 2 == 0 ? 1 : ~std::uint64_t{0}));
        EXPECT_EQ(ToSigned64(ToString(wide)), wide);
        const auto narrow = static_cast<std::int32_t>(wide % 2147483648);
        EXPECT_EQ(ToInteger(ToString(narrow)), narrow);
    }
}

// --- Sizes ---

TEST(ParseSize, KnowsTheUnits) {
    ExpectNumbers<std::uint64_t>(ParseSize, {{"0", 0U},
                                             {"1024", 1024U},
                                             {"1K", 1024U},
                                             {"1k", 1024U},
                                             {"64M", 67108864U},
                                             {"64m", 67108864U},
                                             {"3G", 3221225472U},
                                             {"3g", 3221225472U},
                                             {"2T", 2199023255552U},
                                             {"2t", 2199023255552U},
                                             {"064M", 67108864U},
                                             {"0T", 0U},
                                             {"18446744073709551615", 18446744073709551615U},
                                             {"16777215T", 18446742974197923840U},
                                             {"18014398509481983K", 18446744073709550592U}});
}

TEST(ParseSize, RefusesEverythingElse) {
    ExpectNumbers<std::uint64_t>(ParseSize, {{"", refused},
                                             {"K", refused},
                                             {"M", refused},
                                             {"1KB", refused},
                                             {"1KK", refused},
                                             {"K1", refused},
                                             {"1B", refused},
                                             {"1P", refused},
                                             {"1 M", refused},
                                             {"1.5M", refused},
                                             {"-1M", refused},
                                             {"16777216T", refused},
                                             {"18014398509481984K", refused},
                                             {"18446744073709551616", refused}});
}

struct SizeCase {
    std::uint64_t bytes;
    const char* text;
};

TEST(SizeToString, TakesTheLargestUnitThatFits) {
    constexpr SizeCase rows[] = {
        {0, "0 byte"},
        {1, "1 byte"},
        {1023, "1023 byte"},
        {1024, "1.0 kilobyte"},
        {1034, "1.0 kilobyte"},         // 0.97 hundredths are cut off
        {1035, "1.1 kilobyte"},         // 1.07 hundredths: one, without a leading zero
        {1536, "1.50 kilobyte"},        //
        {0x3000, "12.0 kilobyte"},      //
        {1048575, "1023.99 kilobyte"},  //
        {1048576, "1.0 megabyte"},      //
        {0x1800000, "24.0 megabyte"},
        {0x1900000 + 52429, "25.5 megabyte"},  // 25.05
        {0x3FFFFFFF, "1023.99 megabyte"},
        {0x40000000, "1.0 gigabyte"},
        {0x60000000, "1.50 gigabyte"},
        {2199023255552, "2048.0 gigabyte"},
        {18446744073709551615U, "17179869183.99 gigabyte"},
    };
    for (const SizeCase& row : rows) EXPECT_EQ(SizeToString(row.bytes), row.text) << row.bytes;
}

// --- Times ---

TEST(ParseClockTime, ReadsMinutesAndMinutesWithSeconds) {
    ExpectNumbers<std::int32_t>(ParseClockTime, {{"0", 0},
                                                 {"5", 300000},
                                                 {"05", 300000},
                                                 {"-5", -300000},
                                                 {"0:30", 30000},
                                                 {"1:05", 65000},
                                                 {"1:5", 65000},
                                                 {"0:00", 0},
                                                 {"2:59", 179000},
                                                 {"0:30.5", 30500},
                                                 {"0:00.25", 250},
                                                 {"0:59.9999", 59999},
                                                 {"-1:30", -90000},
                                                 {"35791", 2147460000},
                                                 {"-35791", -2147460000},
                                                 {"35791:23.647", 2147483647}});
}

TEST(ParseClockTime, RefusesEverythingElse) {
    ExpectNumbers<std::int32_t>(ParseClockTime, {{"", refused},
                                                 {"-", refused},
                                                 {"--5", refused},
                                                 {"+5", refused},
                                                 {"x", refused},
                                                 {"5x", refused},
                                                 {"1.5", refused},
                                                 {":", refused},
                                                 {":30", refused},
                                                 {"1:", refused},
                                                 {"1:-5", refused},
                                                 {"1:60", refused},
                                                 {"1:99", refused},
                                                 {"1:2:3", refused},
                                                 {"0:.5", refused},
                                                 {"0:1.", refused},
                                                 {"0:1.5x", refused},
                                                 {"0:1.5.5", refused},
                                                 {"0: 5", refused},
                                                 {"0:1,5", refused},
                                                 {"35792", refused},
                                                 {"-35792", refused},
                                                 {"2147483647", refused},
                                                 {"2147483648", refused},
                                                 {"35791:23.648", refused},
                                                 {"0:99999999999", refused}});
}

TEST(ParseIncrement, ReadsSecondsWithAFraction) {
    ExpectNumbers<std::int32_t>(ParseIncrement, {{"0", 0},
                                                 {"12", 12000},
                                                 {"012", 12000},
                                                 {"-1", -1000},
                                                 {"0.1", 100},
                                                 {"0.10", 100},
                                                 {"0.05", 50},
                                                 {"0.001", 1},
                                                 {"0.0009", 0},
                                                 {"1.2345", 1234},
                                                 {"-0.5", -500},
                                                 {"2147483", 2147483000},
                                                 {"2147483.647", 2147483647}});
}

TEST(ParseIncrement, RefusesEverythingElse) {
    ExpectNumbers<std::int32_t>(ParseIncrement, {{"", refused},
                                                 {"-", refused},
                                                 {"--1", refused},
                                                 {"+1", refused},
                                                 {".5", refused},
                                                 {"1.", refused},
                                                 {".", refused},
                                                 {"1.-5", refused},
                                                 {"1.5.5", refused},
                                                 {"0:10", refused},
                                                 {"1e3", refused},
                                                 {"1,5", refused},
                                                 {"2147484", refused},
                                                 {"2147483.648", refused},
                                                 {"99999999999999999999", refused}});
}

// --- The rest ---

TEST(ReplaceAll, ReplacesEveryOccurrence) {
    EXPECT_EQ(ReplaceAll("a_b__c", '_', ' '), "a b  c");
    EXPECT_EQ(ReplaceAll("abc", '_', ' '), "abc");
    EXPECT_EQ(ReplaceAll("", '_', ' '), "");
}

TEST(StartsWith, ComparesThePrefix) {
    EXPECT_TRUE(StartsWith("Chess 1.0", "Chess"));
    EXPECT_TRUE(StartsWith("a", ""));
    EXPECT_TRUE(StartsWith("", ""));
    EXPECT_FALSE(StartsWith("Ches", "Chess"));
    EXPECT_FALSE(StartsWith("chess", "Chess"));
}

TEST(ToLower, ChangesTheLettersOfASCIIOnly) {
    EXPECT_EQ(ToLower("AbcXYZ@[`{019 \xc4"), "abcxyz@[`{019 \xc4");
    EXPECT_EQ(ToLower(""), "");
}

TEST(RoundToInteger, GoesAwayFromZeroAtTheHalf) {
    EXPECT_EQ(RoundToInteger(0.0), 0);
    EXPECT_EQ(RoundToInteger(0.49), 0);
    EXPECT_EQ(RoundToInteger(0.5), 1);
    EXPECT_EQ(RoundToInteger(-0.49), 0);
    EXPECT_EQ(RoundToInteger(-0.5), -1);
    EXPECT_EQ(RoundToInteger(2.5), 3);
    EXPECT_EQ(RoundToInteger(-2.5), -3);
}

}  // namespace
