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
                             "[Other]\r\nkey = \"quoted value\" \r\nempty=\r\n"
                             "\t[\v Spaced\xa0]\f\r\n"
                             " \xa0Search for Inventory by:\t=\f\vDescription\xa0 \t\r\n"
                             "Ellipsis=Wait\x85\r\n"
                             "Inner=a \t b\r\n");
    EXPECT_EQ(ini.GetValue("PRIMARY SEARCH FIELDS", "search for inventory by:"), "Description");
    EXPECT_EQ(ini.GetValue("Primary Search Fields", "Search for Name by:", "dflt"), "dflt");
    EXPECT_EQ(ini.GetValue("other", "KEY"), "quoted value");
    EXPECT_EQ(ini.GetValue("Other", "empty", "dflt"), "") << "an empty value is no default";
    EXPECT_EQ(ini.GetValue("Missing", "key", "dflt"), "dflt");
    EXPECT_EQ(ini.GetValue("Spaced", "Search for Inventory by:"), "Description");
    EXPECT_EQ(ini.GetValue("Spaced", "Ellipsis"), QString::fromUtf8("Wait…"))
        << "0x85 is a character of the code page, not white space";
    EXPECT_EQ(ini.GetValue("Spaced", "Inner"), "a \t b");
}

TEST_F(IniTest, WritingOneValueLeavesEverythingElseAsItWasAndLongValuesAreCut)
{
    EXPECT_TRUE(ini.WriteData("S", "short", QString(254, 'a')));
    EXPECT_TRUE(ini.WriteData("S", "long", QString(300, 'b')));
    EXPECT_EQ(ini.GetValue("S", "short"), QString(254, 'a'));
    EXPECT_EQ(ini.GetValue("S", "long"), QString(254, 'b'));

    writeDataFile("ZEL.INI", "; comment\r\n[MISCELLANEOUS]\nDatapath=C:\\OLD\n"
                             "Other=\xe9t\xe9\r\n\r\n[Second]\r\nA=1");
    EXPECT_TRUE(ini.WriteData("miscellaneous", "DATAPATH", "C:\\QR"));
    EXPECT_TRUE(ini.WriteData("Second", "B", "2"));
    EXPECT_TRUE(ini.WriteData("Third", "C", QString::fromUtf8("3é")));
    EXPECT_EQ(readDataFile("ZEL.INI"), QByteArray("; comment\r\n[MISCELLANEOUS]\nDATAPATH=C:\\QR\n"
                                                  "Other=\xe9t\xe9\r\n\r\n[Second]\r\nA=1\r\n"
                                                  "B=2\r\n[Third]\r\nC=3\xe9\r\n"));
    EXPECT_EQ(ini.GetValue("MISCELLANEOUS", "Other"), QString::fromUtf8("été"));
}

TEST_F(IniTest, AFileThatCannotBeUsedIsNoError)
{
    EXPECT_TRUE(ini.FileOpen());
    QFile::remove(dataPath() + "/ZEL.INI");
    for (const QString &file : {dataPath() + "/ZEL.INI", dataPath() + "/no such folder/ZEL.INI"}) {
        ini.setFile_Name(file);
        EXPECT_FALSE(ini.FileOpen()) << "a missing file cannot be used";
        EXPECT_EQ(ini.File(), "");
        EXPECT_FALSE(ini.WriteData("S", "K", "V"));
        EXPECT_EQ(ini.GetValue("S", "K", "dflt"), "dflt");
    }
    EXPECT_TRUE(QDir(dataPath()).isEmpty()) << "neither the check nor a write creates a file";
}
