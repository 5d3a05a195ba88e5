#include "common/Conversions.h"
#include "common/TextFile.h"
#include <gtest/gtest.h>
#include <optional>

using namespace conv;

TEST(Val, TakesTheLeadingNumberInDecimalHexOrOctalKeepingTheLow32Bits)
{
    const std::pair<const char *, double> rows[] = {
        {"1 2", 12},   {" \t7", 7},    {"12abc", 12},      {"3.5kg", 3.5}, {"-4", -4}, {".5", 0.5},
        {"1e3", 1000}, {"2e", 2},      {"abc", 0},         {"", 0},        {".", 0},   {"&H1F", 31},
        {"&hff", 255}, {"&HFFFF", -1}, {"&H10000", 65536}, {"&O17", 15},   {"&HZZ", 0}};
    const std::pair<const char *, double> longRows[] = {
        {"&HFFFFFFFF", -1},    {"&H80000000", -2147483648.0},     {"&H123456789", 0x23456789},
        {"&O37777777777", -1}, {"&HFFFFFFFFFFFFFFFF", -1},        {"&H8000000000000000", 0},
        {"&O400000000001", 1}, {"&H1000000000000000000000001", 1}};
    for (const auto &[text, value] : rows) EXPECT_EQ(Val(text), value) << text;
    for (const auto &[text, value] : longRows) EXPECT_EQ(Val(text), value) << text;
}

TEST(CInt, RoundsHalfToEvenAndRefusesValuesOutOfRange)
{
    const std::pair<double, std::optional<qint16>> rows[] = {
        {2.5, 2},         {3.5, 4},      {-2.5, -2},   {2.6, 3},           {32767, 32767},
        {-32768, -32768}, {32767.5, {}}, {-32769, {}}, {1e300 * 1e300, {}}};
    for (const auto &[value, rounded] : rows) EXPECT_EQ(CInt(value), rounded) << value;
}

TEST(Format, MasksOfTheSuiteAndHugeNumbersWhole)
{
    const std::tuple<double, const char *, const char *> rows[] = {
        {1, "#0#", "01"},          {10, "#0#", "10"},
        {123, "#0#", "123"},       {0.5, "#.00", ".50"},
        {0, "#.00", ".00"},        {2.675, "##.00", "2.68"},
        {-3.456, "#.00", "-3.46"}, {1234.5, "##.00", "1234.50"},
        {qInf(), "#.00", ""},      {qQNaN(), "#0#", ""}};
    for (const auto &[value, mask, shown] : rows) EXPECT_EQ(Format(value, mask), shown) << value;
    EXPECT_EQ(FormatText("75", "@@@"), " 75");
    EXPECT_EQ(FormatText("1000", "@@@"), "1000");
    const QString huge = Format(-1.5e308, "##.00");
    EXPECT_EQ(huge.size(), 1 + 309 + 3);
    EXPECT_TRUE(huge.startsWith("-1500000000000000") && huge.endsWith(".00")) << huge.toStdString();
    EXPECT_EQ(Format(1e300, "#0#").size(), 301);
}

TEST(Trim, RemovesBlanksOnlyAndAboveBlankComparesBinary)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_TRUE(AboveBlank("  x"));
    for (const char *blank : {"", " ", "\t"}) EXPECT_FALSE(AboveBlank(blank)) << blank;
}

TEST(TextFile, Cp1252RoundTripsEveryByteAndLinesSplitOnEveryKindOfEnd)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    const QString text = textfile::fromCp1252(all);
    EXPECT_EQ(text[0x80], QChar(0x20AC));
    EXPECT_EQ(text[0xE9], QChar(0xE9));
    EXPECT_EQ(textfile::toCp1252(text), all);
    EXPECT_EQ(textfile::toCp1252(QString::fromUtf8("€ \u4E2D")), QByteArray("\x80 ?"));

    EXPECT_EQ(textfile::splitLines("a\r\nb\nc\rd"), QStringList({"a", "b", "c", "d"}));
    EXPECT_EQ(textfile::splitLines("a\r\n\r\nb\r\n"), QStringList({"a", "", "b"}));
    EXPECT_EQ(textfile::splitLines("a\n\rb"), QStringList({"a", "", "b"}));
    EXPECT_TRUE(textfile::splitLines("").isEmpty());
}
