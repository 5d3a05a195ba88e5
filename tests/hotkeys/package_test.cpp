#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage.h"
#include "hotkeys/hkeyVersions.h"
#include "hotkeys/hkeyZip.h"
#include "settings/clsDataPath.h"
#include "support/ItemTables.h"
#include <QDir>
#ifdef __linux__
#include "support/SetLines.h"
#include <sys/mount.h>
#endif

using namespace setpackage;
using testing_support::ItemTablesTest;

namespace {

using testing_support::keyLine;

// A set file whose first column holds `keys`.
QByteArray setFile(const QByteArray &title, const QByteArray &keys)
{
    QByteArray text = "[SET]" + title + "\r\n[GROUP]1[CAPTION]Drinks[COLOR]BLUE\r\n" + keys;
    for (int g = 2; g <= 4; ++g) text += "[GROUP]" + QByteArray::number(g) + "[CAPTION][COLOR]\r\n";
    return text;
}

// A package of the given entries, written straight through the archive layer.
void writeZip(const QString &path, const QList<std::pair<QString, QByteArray>> &entries)
{
    ziparchive::Writer zip;
    QString error;
    ASSERT_TRUE(zip.open(path, &error)) << error.toStdString();
    for (const auto &[name, bytes] : entries)
        ASSERT_TRUE(zip.addBytes(name, bytes, bytes.size() > 4096, &error));
    ASSERT_TRUE(zip.commit(&error)) << error.toStdString();
}

class PackageTest : public ItemTablesTest {
protected:
    void seed() override
    {
        openStore();
        QDir(dataPath()).mkpath("pictures/HotKeys");
        gsHotKeyPicturePath = dataPath() + "/pictures/HotKeys/";
        package = temp.filePath("package.zip");
    }
    void addUpc(const QString &sl, const QString &code)
    {
        gUpcRecord.clear();
        gUpcRecord.setText("SL", sl);
        gUpcRecord.setText("UPC", code);
        QString sql;
        ASSERT_TRUE(gfbDBSM_Record(2, opInsert, 0, false, false, sql));
    }
    Plan readOk()
    {
        QString error;
        const std::optional<Plan> plan = readPackage(package, &error);
        EXPECT_TRUE(plan) << error.toStdString();
        return plan.value_or(Plan{});
    }
    QString readFails()
    {
        QString error;
        EXPECT_FALSE(readPackage(package, &error));
        return error;
    }
    QString package;
};

} // namespace

// Store A sells coffee, tea and cake, and a key for an item it no longer has;
// store B has coffee under the same S/L, tea under another S/L but the same Item
// ID, cake only by its bar code, and already sets 01 and 03.
TEST_F(PackageTest, ARoundTripMatchesEachItemByItsCodeRenumbersLinksAndKeepsEveryPicture)
{
    addItem("00012345", "COF-1", "COFFEE");
    addItem("00030000", "TEA-1%", "GREEN TEA");
    addItem("00020010", "CAKE-1", "CAKE");
    addUpc("00020010", "0700000000017");
    addUpc("00020010", "D12"); // a department link, no product code
    writeDataFile("HKSET01.SDF",
                  setFile("Drinks", keyLine(1, "Coffee", "0001234.5", "No", "", "coffee.jpg") +
                                        keyLine(2, "Tea", "TEA-1%", "Yes", "", "tea.jpg") +
                                        keyLine(3, "Cakes", "", "", "2") +
                                        keyLine(4, "Far Away", "", "", "40") +
                                        keyLine(5, "Gone", "GONE'1", "Yes")));
    writeDataFile("HKSET02.SDF", setFile("Cakes", keyLine(1, "Cake", "0002001.0", "No") +
                                                      keyLine(2, "Back", "", "", "1")));
    writeDataFile("SPECIAL.BDF", "[BUTTON]1[CAPTION]Void[KEY]*\r\n");
    writeDataFile("pictures/HotKeys/coffee.jpg", "A coffee");
    writeDataFile("pictures/HotKeys/tea.jpg", "A tea");
    EXPECT_EQ(linkedSets({"1"}), QStringList{"02"}) << "set 40 has no file";
    const ExportResult out = exportSets(package, {{"01", "02"}, true, false});
    ASSERT_TRUE(out.ok) << out.error.toStdString();
    EXPECT_EQ(std::tuple(out.sets, out.pictures, out.itemKeys), std::tuple(2, 2, 4));

    // Another store in the same place: its own inventory, sets and pictures.
    glDBSM_Execute("DELETE FROM " + gTables[1].sTableName);
    glDBSM_Execute("DELETE FROM " + gTables[2].sTableName);
    for (const QString &name : QDir(dataPath()).entryList({"HKSET*"}))
        QFile::remove(dataPath() + '/' + name);
    addItem("00012345", "COF-B", "COFFEE B");
    addItem("00099999", "TEA-1%", "TEA B");
    addItem("00088888", "CAKE-B", "CAKE B");
    addUpc("00088888", "0700000000017");
    writeDataFile("HKSET01.SDF", setFile("B Main", keyLine(1, "Coffee", "0001234.5", "No")));
    writeDataFile("HKSET03.SDF", setFile("B Other", ""));
    writeDataFile("SPECIAL.BDF", "[BUTTON]2[CAPTION]Weigh[KEY]W\r\n");
    writeDataFile("pictures/HotKeys/coffee.jpg", "B coffee");
    writeDataFile("pictures/HotKeys/tea.jpg", "A tea");
    const auto before = testing_support::filesUnder(dataPath());

    Plan plan = readOk();
    EXPECT_EQ(testing_support::filesUnder(dataPath()), before) << "reading writes nothing";
    EXPECT_EQ(plan.storeName, "Corner Grocery");
    ASSERT_EQ(plan.sets.size(), 2);
    EXPECT_EQ(QStringList({plan.sets[0].target, plan.sets[1].target}), QStringList({"02", "04"}));
    QStringList matches;
    for (const ItemKey &k : plan.items)
        matches << k.caption + " " + matchText(k.match) + " " + k.newItem;
    EXPECT_EQ(matches, QStringList({"Coffee S/L 0001234.5", "Tea Item ID TEA-1%",
                                    "Gone not found GONE'1", "Cake UPC 0008888.8"}));
    EXPECT_EQ(plan.pictures[0].target, "coffee-2.jpg");
    EXPECT_EQ(plan.pictures[1].state, Picture::Same);
    EXPECT_TRUE(reportText(plan).contains("opens set 40, which is not in the package"));

    plan.sets[1].target = "03"; // the user chooses to replace store B's set 03
    QString error;
    ASSERT_TRUE(writePlan(plan, &error)) << error.toStdString();
    EXPECT_TRUE(readDataFile("HKSET02.SDF")
                    .contains(keyLine(1, "Coffee", "0001234.5", "No", "", "coffee-2.jpg") +
                              keyLine(2, "Tea", "TEA-1%", "Yes", "", "tea.jpg") +
                              keyLine(3, "Cakes", "", "", "3") +
                              keyLine(4, "Far Away", "", "", "40") +
                              keyLine(5, "Gone", "GONE'1", "Yes")));
    EXPECT_EQ(readDataFile("HKSET02.SDF").count("\r\n"), 37) << "37 lines, each ended";
    const QByteArray three = readDataFile("HKSET03.SDF");
    EXPECT_TRUE(
        three.startsWith("[SET]Cakes\r\n") &&
        three.contains(keyLine(1, "Cake", "0008888.8", "No") + keyLine(2, "Back", "", "", "2")));
    EXPECT_EQ(readDataFile("HKSET01.SDF"), before["HKSET01.SDF"]);
    EXPECT_EQ(readDataFile("SPECIAL.BDF"), "[BUTTON]1[CAPTION]Void[KEY]*\r\n");
    EXPECT_EQ(readDataFile("pictures/HotKeys/coffee.jpg"), "B coffee");
    EXPECT_EQ(readDataFile("pictures/HotKeys/coffee-2.jpg"), "A coffee");
    EXPECT_EQ(versions::keptFiles(), QStringList({"HKSET03.SDF", "SPECIAL.BDF"}));
    for (const QString &name : versions::keptFiles())
        EXPECT_EQ(versions::bytesOf(versions::list(name).first()), before[name]);
    EXPECT_EQ(QDir(dataPath()).entryList({"~hk-*"}), QStringList());
}

TEST_F(PackageTest, ABadPackageNamesWhatIsWrongAndWritesNothing)
{
    const QByteArray set = setFile("Drinks", keyLine(1, "Coffee", "0001234.5", "No"));
    // A good manifest and a good set entry.
    const std::pair<QString, QByteArray> ok{"manifest.json", "{\"format\": 1}"},
        set01{"sets/HKSET01.SDF", set};
    QList<std::pair<QString, QByteArray>> many{ok};
    for (int i = 0; i < 10000; ++i) many.append({QString("pictures/p%1.jpg").arg(i), "x"});
    const struct {
        QList<std::pair<QString, QByteArray>> entries;
        QString said;
    } cases[] = {
        {{set01}, "The package has no manifest"},
        {{{"manifest.json", "{\"format\": 2}"}, set01},
         "made by a newer version of this program (package format 2"},
        {{{"manifest.json", "{format"}, set01}, "\"manifest.json\" of the package cannot be read"},
        {{ok, {"sets/HKSET01.SDF", set + "[GROUP]9[CAPTION]X\r\n"}},
         "\"sets/HKSET01.SDF\" of the package is not a set file the program can read: line 7 "
         "names column \"9\""},
        {{ok, {"sets/HKSET01.SDF", "[GROUP]1[CAPTION]X\r\n"}},
         "\"sets/HKSET01.SDF\" of the package is not a set file"},
        {{{"pictures/../../evil.jpg", "x"}},
         "\"pictures/../../evil.jpg\" of the package leads out of its folder"},
        {{{"/etc/evil", "x"}}, "\"/etc/evil\" of the package leads out"},
        {{{"C:/evil.jpg", "x"}}, "\"C:/evil.jpg\" of the package leads out"},
        {{{"pictures\\..\\evil.jpg", "x"}}, "leads out of its folder"},
        {{ok, set01, {"pictures/big.jpg", QByteArray(kMaxPicture + 1, 'x')}},
         "\"pictures/big.jpg\" of the package cannot be taken: It is larger than 20 MB."},
        {many, "The package holds 10001 entries; a set package holds at most 5000."},
        {{{"pictures/Coffee.jpg", "a"}, {"pictures/coffee.jpg", "b"}},
         "\"pictures/coffee.jpg\" of the package has the same name as \"pictures/Coffee.jpg\" but "
         "for upper and lower case."},
        {{ok, {"sets/HKSET001.SDF", set}},
         "\"sets/HKSET001.SDF\" of the package is not part of a set package"},
        {{ok, {"run.exe", "x"}}, "\"run.exe\""},
        {{ok}, "The package holds no set."},
    };
    writeDataFile("HKSET01.SDF", set);
    const auto before = testing_support::filesUnder(temp.path());
    for (const auto &c : cases) {
        QFile::remove(package);
        writeZip(package, c.entries);
        const QString error = readFails();
        EXPECT_TRUE(error.contains(c.said)) << error.toStdString();
    }
    QFile::remove(package);
    QFile garbage(package);
    garbage.open(QIODevice::WriteOnly);
    garbage.write("PK\x03\x04 but no archive");
    garbage.close();
    EXPECT_EQ(readFails(), QDir::toNativeSeparators(package) +
                               "\r\rIt is not a set package (not a zip archive).\rNothing was "
                               "imported.");
    QFile::remove(package);
    EXPECT_EQ(testing_support::filesUnder(temp.path()), before);
}

#ifdef __linux__
// A disk that fills halfway through the import: the sets fit, the picture does not.
TEST_F(PackageTest, ADiskThatFillsDuringTheImportLeavesTheDataFolderAsItWas)
{
    writeDataFile("HKSET01.SDF",
                  setFile("Drinks", keyLine(1, "Coffee", "0001234.5", "No", "", "big.jpg")));
    writeDataFile("pictures/HotKeys/big.jpg", QByteArray(300 * 1024, 'p'));
    ASSERT_TRUE(exportSets(package, {{"01"}}).ok);

    const QString disk = temp.filePath("disk");
    QDir().mkpath(disk);
    if (::mount("tmpfs", QFile::encodeName(disk).constData(), "tmpfs", 0, "size=128k") != 0)
        GTEST_SKIP() << "no tmpfs can be mounted here";
    gDataPath.setDataPath(disk);
    gsHotKeyPicturePath = disk + "/pictures/HotKeys/";
    QDir().mkpath(gsHotKeyPicturePath);
    writeDataFile("HKSET01.SDF", setFile("Mine", ""));
    const auto before = testing_support::filesUnder(disk);
    Plan plan = readOk();
    plan.sets[0].target = "01"; // replaces this store's set 01
    QString error;
    EXPECT_FALSE(writePlan(plan, &error));
    EXPECT_TRUE(error.contains("Disk full") &&
                error.endsWith("Nothing was imported; the data folder is as it was."))
        << error.toStdString();
    EXPECT_EQ(testing_support::filesUnder(disk), before);
    ::umount2(QFile::encodeName(disk).constData(), MNT_DETACH);
}
#endif
