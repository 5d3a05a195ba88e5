#include "common/Conversions.h"
#include "common/TextFile.h"
#include <gtest/gtest.h>

using namespace conv;

TEST(Val, TakesTheLeadingNumberIgnoringBlanksInside)
{
    EXPECT_EQ(Val("1 2"), 12);
    EXPECT_EQ(Val(" \t7"), 7);
    EXPECT_EQ(Val("12abc"), 12);
    EXPECT_EQ(Val("3.5kg"), 3.5);
    EXPECT_EQ(Val("-4"), -4);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("1e3"), 1000);
    EXPECT_EQ(Val("2e"), 2);
    EXPECT_EQ(Val("abc"), 0);
    EXPECT_EQ(Val(""), 0);
    EXPECT_EQ(Val("."), 0);
}

TEST(Val, ReadsHexadecimalAndOctalWithTheirSign)
{
    EXPECT_EQ(Val("&H1F"), 31);
    EXPECT_EQ(Val("&hff"), 255);
    EXPECT_EQ(Val("&HFFFF"), -1);
    EXPECT_EQ(Val("&H10000"), 65536);
    EXPECT_EQ(Val("&O17"), 15);
    EXPECT_EQ(Val("&HZZ"), 0);
}

TEST(Val, KeepsTheLow32BitsOfALongLiteral)
{
    EXPECT_EQ(Val("&HFFFFFFFF"), -1);
    EXPECT_EQ(Val("&H80000000"), -2147483648.0);
    EXPECT_EQ(Val("&H123456789"), 0x23456789);
    EXPECT_EQ(Val("&HFFFFFFFFFFFFFFFF"), -1);
    EXPECT_EQ(Val("&H8000000000000000"), 0);
    EXPECT_EQ(Val("&H1000000000000000000000001"), 1);
    EXPECT_EQ(Val("&O37777777777"), -1);
    EXPECT_EQ(Val("&O400000000001"), 1);
}

TEST(CInt, RoundsHalfToEvenAndRefusesValuesOutOfRange)
{
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(2.6), 3);
    EXPECT_EQ(CInt(32767), 32767);
    EXPECT_EQ(CInt(-32768), -32768);
    EXPECT_FALSE(CInt(32767.5));
    EXPECT_FALSE(CInt(-32769));
    EXPECT_FALSE(CInt(1e300 * 1e300));
}

TEST(Format, MasksOfTheSuite)
{
    EXPECT_EQ(Format(1, "#0#"), "01");
    EXPECT_EQ(Format(9, "#0#"), "09");
    EXPECT_EQ(Format(10, "#0#"), "10");
    EXPECT_EQ(Format(123, "#0#"), "123");
    EXPECT_EQ(Format(0.5, "#.00"), ".50");
    EXPECT_EQ(Format(0, "#.00"), ".00");
    EXPECT_EQ(Format(12.345, "#.00"), "12.35");
    EXPECT_EQ(Format(2.675, "##.00"), "2.68");
    EXPECT_EQ(Format(-3.456, "#.00"), "-3.46");
    EXPECT_EQ(Format(1234.5, "##.00"), "1234.50");
    EXPECT_EQ(FormatText("75", "@@@"), " 75");
    EXPECT_EQ(FormatText("1000", "@@@"), "1000");
    EXPECT_EQ(BoolText(true), "True");
    EXPECT_EQ(BoolText(false), "False");
}

TEST(Format, ShowsEveryDigitOfAHugeNumberAndNothingOfInfinity)
{
    const QString huge = Format(-1.5e308, "##.00");
    EXPECT_EQ(huge.size(), 1 + 309 + 3);
    EXPECT_TRUE(huge.startsWith("-1500000000000000") && huge.endsWith(".00")) << huge.toStdString();
    EXPECT_EQ(Format(1e300, "#0#").size(), 301);
    EXPECT_EQ(Format(qInf(), "#.00"), "");
    EXPECT_EQ(Format(qQNaN(), "#0#"), "");
}

TEST(Trim, RemovesBlanksOnlyAndAboveBlankComparesBinary)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(LTrim("  a "), "a ");
    EXPECT_EQ(RTrim("  a "), "  a");
    EXPECT_FALSE(AboveBlank(""));
    EXPECT_FALSE(AboveBlank(" "));
    EXPECT_TRUE(AboveBlank("  x"));
    EXPECT_FALSE(AboveBlank("\t"));
}

TEST(TextFile, Cp1252RoundTripsEveryByte)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    const QString text = textfile::fromCp1252(all);
    EXPECT_EQ(text[0x80], QChar(0x20AC));
    EXPECT_EQ(text[0xE9], QChar(0xE9));
    EXPECT_EQ(textfile::toCp1252(text), all);
    EXPECT_EQ(textfile::toCp1252(QString::fromUtf8("€ \u4E2D")), QByteArray("\x80 ?"));
}

TEST(TextFile, SplitsOnEveryKindOfLineEnd)
{
    EXPECT_EQ(textfile::splitLines("a\r\nb\nc\rd"), QStringList({"a", "b", "c", "d"}));
    EXPECT_EQ(textfile::splitLines("a\r\n\r\nb\r\n"), QStringList({"a", "", "b"}));
    EXPECT_EQ(textfile::splitLines("a\n\rb"), QStringList({"a", "", "b"}));
    EXPECT_TRUE(textfile::splitLines("").isEmpty());
}
