#include "common/sm_DateTime.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include <gtest/gtest.h>

TEST(SLForms, NormalFormRowForRowAndTheStoredAndShownForms)
{
    const std::pair<const char *, const char *> rows[] = {{"   ", ""},
                                                          {"123", "    123. "},
                                                          {"123.45", "    123.4"},
                                                          {"12.50", "     12.5"},
                                                          {"1234567.8", "1234567.8"},
                                                          {"12345678", "1234567.8"},
                                                          {"0123", "   0123. "},
                                                          {"0123.5", "   0123.5"},
                                                          {"012.", "    012. "},
                                                          {"ABC", "ABC    . "},
                                                          {"AB.5", "AB     . "},
                                                          {"AB CD", "AB     . "},
                                                          {"A 2", "A      . "},
                                                          {"abc", "abc    . "},
                                                          {"ABCDEFGHIJ", "ABCDEFG. "},
                                                          {"1 2", "     12. "},
                                                          {"-12", "-12    . "}};
    for (const auto &[typed, normal] : rows) {
        EXPECT_EQ(gfsSL_normalize(typed), QString(normal)) << "typed: '" << typed << "'";
        EXPECT_EQ(gfsSL_normalize(normal), QString(normal)) << "normal form of '" << typed << "'";
    }
    EXPECT_EQ(gfsSL_toStored("1234567.8"), "12345678");
    EXPECT_EQ(gfsSL_toStored("    123. "), "    123 ");
    EXPECT_EQ(gfsSL_toDisplay("12345678"), "1234567.8");
    EXPECT_EQ(gfsSL_toDisplay(" ~SPECIAL"), " ~SPECIAL");
    EXPECT_EQ(gfsSL_toDisplay(gfsSL_toStored("   0123.5")), "   0123.5");
}

TEST(ItemIDKey, NumbersRightTextLeft)
{
    EXPECT_EQ(gfsItemID_key("123", false), QString(22, ' ') + "123");
    EXPECT_EQ(gfsItemID_key("123", true), "123" + QString(22, ' '));
    EXPECT_EQ(gfsItemID_key("12A", false), "12A" + QString(22, ' '));
    EXPECT_EQ(gfsItemID_key("  CAKE-1", false), "CAKE-1" + QString(19, ' '));
    EXPECT_EQ(gfsItemID_key(QString(30, 'X'), false), QString(25, 'X'));
}

TEST(TextHelpers, KeepDigitsPadAndRound)
{
    EXPECT_EQ(gfsText_keep("a1b2c3", "abc"), "abc");
    EXPECT_EQ(gfsText_digits("HKSET07.SDF"), "07");
    EXPECT_EQ(gfsText_pad(1, 2, "7", "0"), "07");
    EXPECT_EQ(gfsText_pad(1, 2, "123", "0"), "123");
    EXPECT_EQ(gfsText_pad(2, 4, "ab", "*"), "ab**");
    EXPECT_EQ(gfsText_pad(3, 6, "ab", " "), "  ab  ");
    EXPECT_EQ(gfsText_pad(9, 6, "ab", " "), "ab");
    EXPECT_EQ(gfdNumber_round(2.5, 0), 3);
    EXPECT_EQ(gfdNumber_round(-2.5, 0), -3);
    EXPECT_DOUBLE_EQ(gfdNumber_round(0.125, 2), 0.13);
    EXPECT_DOUBLE_EQ(gfdNumber_round(1.23456, 4), 1.2346);
}

TEST(DateDisplay, UsAndEuropeanOrder)
{
    EXPECT_EQ(gfsDate_display("20261118", "U"), "11/18/2026");
    EXPECT_EQ(gfsDate_display("20261118", "E"), "18/11/2026");
    EXPECT_EQ(gfsDate_display("        ", "E"), "          ");
}
