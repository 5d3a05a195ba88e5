#include "settings/clsINI_Services.h"
#include "support/HkTest.h"
#include <QDir>

using testing_support::HkTest;

namespace {

class IniTest : public HkTest {
protected:
    void SetUp() override
    {
        HkTest::SetUp();
        writeDataFile("ZEL.INI", "");
        ini.setFile_Name(dataPath() + "/ZEL.INI");
    }
    clsINI_Services ini;
};

} // namespace

TEST_F(IniTest, SectionsAndKeysIgnoreCaseTheFirstDuplicateCountsAndWhiteSpaceIsNoPartOfThem)
{
    writeDataFile("ZEL.INI", "[Primary Search Fields]\r\n"
                             "Search for Inventory by:=Description\r\n"
                             "[primary search fields]\r\n"
                             "Search for Name by:=Business\r\n"
                             "[Other]\r\nkey = \"quoted value\" \r\nempty=\r\n");
    EXPECT_TRUE(ini.FileOpen());
    EXPECT_EQ(ini.GetValue("PRIMARY SEARCH FIELDS", "search for inventory by:"), "Description");
    EXPECT_EQ(ini.GetValue("Primary Search Fields", "Search for Name by:", "dflt"), "dflt");
    EXPECT_EQ(ini.GetValue("other", "KEY"), "quoted value");
    EXPECT_EQ(ini.GetValue("Other", "empty", "dflt"), "") << "an empty value is no default";
    EXPECT_EQ(ini.GetValue("Missing", "key", "dflt"), "dflt");
    EXPECT_EQ(ini.GetValue("Missing", "key"), "");

    writeDataFile("ZEL.INI", "\t[\v Primary Search Fields\xa0]\f\r\n"
                             " \xa0Search for Inventory by:\t=\f\vDescription\xa0 \t\r\n"
                             "Ellipsis=Wait\x85\r\n"
                             "Inner=a \t b\r\n");
    EXPECT_EQ(ini.GetValue("Primary Search Fields", "Search for Inventory by:"), "Description");
    EXPECT_EQ(ini.GetValue("Primary Search Fields", "Ellipsis"), QString::fromUtf8("Wait…"))
        << "0x85 is a character of the code page, not white space";
    EXPECT_EQ(ini.GetValue("Primary Search Fields", "Inner"), "a \t b");
}

TEST_F(IniTest, WritingOneValueLeavesEverythingElseAsItWasAndLongValuesAreCut)
{
    const QString v254(254, 'a'), v300(300, 'b');
    ASSERT_TRUE(ini.WriteData("S", "short", v254));
    ASSERT_TRUE(ini.WriteData("S", "long", v300));
    EXPECT_EQ(ini.GetValue("S", "short"), v254);
    EXPECT_EQ(ini.GetValue("S", "long"), QString(254, 'b'));

    const QByteArray before = "; comment\r\n[MISCELLANEOUS]\nDatapath=C:\\OLD\n"
                              "Other=\xe9t\xe9\r\n\r\n[Second]\r\nA=1";
    writeDataFile("ZEL.INI", before);
    ASSERT_TRUE(ini.WriteData("miscellaneous", "DATAPATH", "C:\\QR"));
    ASSERT_TRUE(ini.WriteData("Second", "B", "2"));
    ASSERT_TRUE(ini.WriteData("Third", "C", QString::fromUtf8("3é")));
    EXPECT_EQ(readDataFile("ZEL.INI"), QByteArray("; comment\r\n[MISCELLANEOUS]\nDATAPATH=C:\\QR\n"
                                                  "Other=\xe9t\xe9\r\n\r\n[Second]\r\nA=1\r\n"
                                                  "B=2\r\n[Third]\r\nC=3\xe9\r\n"));
    EXPECT_EQ(ini.GetValue("MISCELLANEOUS", "Other"), QString::fromUtf8("été"));
}

TEST_F(IniTest, AFileThatCannotBeUsedIsNoError)
{
    clsINI_Services none;
    EXPECT_FALSE(none.WriteData("S", "K", "V"));
    QFile::remove(dataPath() + "/ZEL.INI");
    for (const QString &file : {dataPath() + "/ZEL.INI", dataPath() + "/no such folder/ZEL.INI"}) {
        none.setFile_Name(file);
        EXPECT_FALSE(none.FileOpen()) << "a missing file cannot be used";
        EXPECT_EQ(none.File(), "");
        EXPECT_FALSE(none.WriteData("S", "K", "V"));
        EXPECT_EQ(none.GetValue("S", "K", "dflt"), "dflt");
    }
    EXPECT_TRUE(QDir(dataPath()).isEmpty()) << "neither the check nor a write creates a file";
    EXPECT_EQ(ini.File(), dataPath() + "/ZEL.INI");
}
