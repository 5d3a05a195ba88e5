// Seeds a demo data folder: a dozen hot key sets that link to each other, key
// pictures, the suite's ZEL.INI, an embedded database with the store's COMMON
// row and an inventory with bar codes, and the settings that point at all of it.
// hk_demo_seed DATA_FOLDER [--items N]   (N generated items, 3000 by default)
//   [--engine PostgreSQL --server HOST[:PORT] --user USER --password PASSWORD --database NAME]
//   puts the database on a PostgreSQL server instead (a new database, made there).
#include "common/zelFormats.h"
#include "database/DbEngine.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyServices.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QApplication>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QSqlDatabase>
#include <cmath>
#include <cstdio>

namespace {

struct Key {
    const char *caption;
    const char *item; // S/L display form, or Item ID when byId
    const char *link; // set number, plain form
    const char *icon;
    bool byId = false;
};

struct Column {
    const char *caption;
    const char *color;
    std::initializer_list<Key> keys;
};

struct Set {
    int number;
    const char *title;
    std::initializer_list<Column> columns;
};

const Set kSets[] = {
    {1,
     "Main Menu",
     {{"Drinks",
       "BLUE",
       {{"Hot Drinks", "", "2", "coffee.jpg"},
        {"Cold Drinks", "", "3", "soda.jpg"},
        {"Water 500ml", "0000101.0", "", "water.jpg"}}},
      {"Food",
       "DARK_RED",
       {{"Sandwiches", "", "4", "sandwich.jpg"},
        {"Salads", "", "5", ""},
        {"Bakery", "", "6", "bread.jpg"}}},
      {"Treats", "MAGENTA", {{"Ice Cream", "", "7", "icecream.jpg"}, {"Snacks", "", "8", ""}}},
      {"Store",
       "GREEN",
       {{"Specials", "", "9", ""},
        {"Grocery", "", "10", ""},
        {"Tobacco", "", "11", ""},
        {"Lottery", "", "12", ""}}}}},
    {2,
     "Hot Drinks",
     {{"Coffee",
       "DARK_BLUE",
       {{"Coffee Small", "0001234.5", "", "coffee.jpg"},
        {"Coffee Large", "0001234.6", "", ""},
        {"Espresso", "ESPRESSO", "", "", true},
        {"Back to Menu", "", "1", ""}}},
      {"Tea",
       "DARK_GREEN",
       {{"Green Tea", "0001301.0", "", ""}, {"Chai Latte", "CHAI-12", "", "", true}}},
      {"", "", {}},
      {"Extras",
       "YELLOW",
       {{"Extra Shot", "0001299.0", "", ""}, {"Oat Milk", "OAT-1", "", "", true}}}}},
    {3,
     "Cold Drinks",
     {{"Soda",
       "CYAN",
       {{"Cola 330ml", "0002001.0", "", "soda.jpg"}, {"Lemonade", "0002002.0", "", ""}}},
      {"Juice",
       "DARK_YELLOW",
       {{"Orange Juice", "0002101.0", "", ""}, {"Apple Juice", "0002102.0", "", ""}}},
      {"Water",
       "BLUE",
       {{"Water 500ml", "0000101.0", "", "water.jpg"}, {"Sparkling", "0000102.0", "", ""}}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}, {"Hot Drinks", "", "2", "coffee.jpg"}}}}},
    {4,
     "Sandwiches",
     {{"Classics",
       "DARK_RED",
       {{"Ham & Cheese", "0003001.0", "", "sandwich.jpg"}, {"BLT", "0003002.0", "", ""}}},
      {"Veggie", "DARK_GREEN", {{"Hummus Wrap", "HUMWRAP", "", "", true}}},
      {"Sides", "", {{"Chips", "0008001.0", "", ""}, {"Snacks", "", "8", ""}}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {5,
     "Salads",
     {{"Salads", "GREEN", {{"Garden Salad", "0003101.0", "", ""}, {"Caesar", "0003102.0", "", ""}}},
      {"", "", {}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {6,
     "Bakery",
     {{"Bread",
       "DARK_YELLOW",
       {{"Baguette", "0004001.0", "", "bread.jpg"}, {"Rye Loaf", "0004002.0", "", ""}}},
      {"Pastry", "MAGENTA", {{"Croissant", "0004101.0", "", ""}, {"Muffin", "0004102.0", "", ""}}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {7,
     "Ice Cream",
     {{"Cones",
       "CYAN",
       {{"Vanilla Cone", "0005001.0", "", "icecream.jpg"}, {"Choc Cone", "0005002.0", "", ""}}},
      {"", "", {}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {8,
     "Snacks",
     {{"Chips", "RED", {{"Salted Chips", "0008001.0", "", ""}, {"BBQ Chips", "0008002.0", "", ""}}},
      {"Candy", "MAGENTA", {{"Chocolate Bar", "0008101.0", "", ""}}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {9,
     "Weekly Specials",
     {{"This Week", "RED", {{"Coffee + Muffin", "COMBO-1", "", "coffee.jpg", true}}},
      {"", "", {}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {10,
     "Grocery",
     {{"Dairy", "BLUE", {{"Milk 1L", "0006001.0", "", ""}, {"Butter", "0006002.0", "", ""}}},
      {"Pantry", "DARK_CYAN", {{"Rice 1kg", "0006101.0", "", ""}, {"Pasta", "0006102.0", "", ""}}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {11,
     "Tobacco",
     {{"Cigarettes", "DARK_MAGENTA", {{"Brand A", "0007001.0", "", ""}}},
      {"", "", {}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
    {12,
     "Lottery",
     {{"Tickets",
       "YELLOW",
       {{"Scratch $2", "LOTTO-2", "", "", true}, {"Scratch $5", "LOTTO-5", "", "", true}}},
      {"", "", {}},
      {"", "", {}},
      {"Menu", "", {{"Back to Menu", "", "1", ""}}}}},
};

void picture(const QString &folder, const QString &name, QColor color, const QString &letter)
{
    QImage image(96, 96, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(color);
    p.setPen(Qt::NoPen);
    p.drawEllipse(8, 8, 80, 80);
    p.setPen(Qt::white);
    QFont f = p.font();
    f.setPixelSize(44);
    f.setBold(true);
    p.setFont(f);
    p.drawText(image.rect(), Qt::AlignCenter, letter);
    p.end();
    image.save(folder + '/' + name, "JPG");
}

const char *const kProducts[][2] = {
    {"APPLES", "GALA"},       {"BANANAS", "BUNCH"},      {"ORANGES", "NAVEL"},
    {"TOMATOES", "VINE"},     {"POTATOES", "RUSSET"},    {"ONIONS", "YELLOW"},
    {"CARROTS", "BAG"},       {"LETTUCE", "ICEBERG"},    {"MILK", "WHOLE"},
    {"MILK", "SKIM"},         {"YOGURT", "PLAIN"},       {"YOGURT", "STRAWBERRY"},
    {"CHEESE", "CHEDDAR"},    {"CHEESE", "SWISS"},       {"BUTTER", "SALTED"},
    {"EGGS", "LARGE DOZEN"},  {"BREAD", "WHITE"},        {"BREAD", "WHOLE WHEAT"},
    {"BAGELS", "PLAIN"},      {"CEREAL", "CORN FLAKES"}, {"CEREAL", "OAT RINGS"},
    {"RICE", "LONG GRAIN"},   {"PASTA", "SPAGHETTI"},    {"PASTA", "PENNE"},
    {"SAUCE", "MARINARA"},    {"SOUP", "TOMATO"},        {"SOUP", "CHICKEN NOODLE"},
    {"BEANS", "BLACK"},       {"TUNA", "CHUNK LIGHT"},   {"COFFEE", "GROUND"},
    {"TEA", "BLACK"},         {"COLA", "CAN"},           {"LEMONADE", "BOTTLE"},
    {"WATER", "SPRING"},      {"JUICE", "ORANGE"},       {"CHIPS", "SALTED"},
    {"CHIPS", "BBQ"},         {"PRETZELS", "TWISTS"},    {"COOKIES", "CHOC CHIP"},
    {"CRACKERS", "SALTINE"},  {"NUTS", "PEANUTS"},       {"CANDY", "MINTS"},
    {"SOAP", "BAR"},          {"SHAMPOO", "DAILY"},      {"TOOTHPASTE", "MINT"},
    {"PAPER TOWELS", "ROLL"}, {"TISSUE", "BOX"},         {"DETERGENT", "LIQUID"},
    {"BATTERIES", "AA"},      {"BATTERIES", "AAA"},      {"LIGHT BULB", "LED"},
    {"TAPE", "CLEAR"},        {"GLUE", "STICK"},         {"PENS", "BLUE"},
};
const char *const kBrands[] = {"HOMESTYLE", "VALLEY", "SUNNY", "PRIME",   "CORNER",
                               "FRESHWAY",  "GOLDEN", "NORTH", "BAYSIDE", "ACME"};
const char *const kSizes[] = {"SMALL", "MEDIUM", "LARGE", "FAMILY", "2 PACK", "6 PACK"};

int gRecordNum = 0;

void addItem(const QString &sl, const QString &itemId, const QString &description,
             const QString &sub, double price, const QString &vendor, const QString &dept)
{
    gpInventory_Clear();
    gInventoryRecord.setText("SL", sl);
    gInventoryRecord.setText("ItemID", itemId);
    gInventoryRecord.setText("Description", description);
    gInventoryRecord.setText("SubDescription", sub);
    gInventoryRecord.setText("VendorCode", vendor);
    gInventoryRecord.setText("DeptCode", dept);
    gInventoryRecord.setNumber("Price", price);
    gInventoryRecord.setNumber("Cost", std::round(price * 62) / 100);
    gInventoryRecord.setNumber("QtyOnHand", 5 + gRecordNum % 40);
    gInventoryRecord.setNumber("RecordNum", ++gRecordNum);
    QString sql;
    gfbDBSM_Record(tblInventory, opInsert, 0, false, false, sql);
    gUpcRecord.clear();
    gUpcRecord.setText("SL", sl);
    gUpcRecord.setText("UPC",
                       QString("0%1").arg(70000000000LL + gRecordNum * 7, 11, 10, QChar('0')));
    gUpcRecord.setText("LABEL", description);
    gUpcRecord.setNumber("InvUID", gRecordNum);
    sql.clear();
    gfbDBSM_Record(tblUpc, opInsert, 0, false, false, sql);
}

// The items the demo sets' keys sell, by S/L or by Item ID, under the keys' labels.
void addKeyItems()
{
    for (const Set &set : kSets) {
        for (const Column &column : set.columns) {
            for (const Key &key : column.keys) {
                if (!*key.item)
                    continue;
                const QString stored = gfsSL_toStored(gfsSL_normalize(key.item));
                if (key.byId)
                    addItem(QString("9%1").arg(gRecordNum + 1, 7, 10, QChar('0')), key.item,
                            QString(key.caption).toUpper(), column.caption, 2.49 + gRecordNum % 5,
                            "HOUSE", "DELI");
                else if (glInventory_BySL(stored, false) == 0)
                    addItem(stored, QString("DEMO-%1").arg(gRecordNum + 1),
                            QString(key.caption).toUpper(), column.caption, 1.99 + gRecordNum % 7,
                            "HOUSE", "DELI");
            }
        }
    }
}

void addGeneratedItems(int count)
{
    for (int n = 0; n < count; ++n) {
        const auto &product = kProducts[n % std::size(kProducts)];
        const char *brand = kBrands[(n / std::size(kProducts)) % std::size(kBrands)];
        const char *size =
            kSizes[(n / (std::size(kProducts) * std::size(kBrands))) % std::size(kSizes)];
        const QString description = QString("%1 %2 %3").arg(brand, product[0], product[1]).left(30);
        addItem(QString("%1").arg(10000000 + n, 8, 10, QChar('0')), QString::number(400000 + n),
                description, QString("%1 #%2").arg(size).arg(n / 3300 + 1),
                0.79 + (n * 37 % 1500) / 100.0, QString(brand).left(8),
                QString(product[0]).left(11));
    }
}

const QString kStoreName = "Corner Grocery & Hardware";

// A new database on the server, with the store's COMMON row, and the settings that name it.
bool makeServerDatabase(const DBSM_Settings &server)
{
    QString error;
    if (!PostgresEngine::create(server.sServer, server.sUser, server.sPassword, server.sDBName,
                                &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    gpDBSM_SaveSettings(server);
    gfbDBSM_Setup(); // makes COMMON, which has no row yet
    gCommonRecord.clear();
    gCommonRecord.setText("Cname", kStoreName);
    gCommonRecord.setText("DupID", "1");
    gCommonRecord.setNumber("StoreNumber", 1);
    gCommonRecord.setText("MultiStore", "N");
    QString sql;
    const bool stored = gfbDBSM_Record(tblCommon, opInsert, 0, false, false, sql);
    gpDBSM_Disconnect();
    if (!stored)
        std::fprintf(stderr, "%s\n", qPrintable(gsInsertError));
    return stored;
}

bool seedDatabase(int items, const DBSM_Settings &server)
{
    if (!server.sEngine.isEmpty()) {
        if (!makeServerDatabase(server))
            return false;
    } else {
        QFile::remove(gfsDBSM_OwnFile());
        QString message;
        if (gfDBSM_CreateOwn(1, kStoreName, message) == OwnDatabase::Failed) {
            std::fprintf(stderr, "%s\n", qPrintable(message));
            return false;
        }
    }
    if (!gfbDBSM_Setup() || !gfbDBSM_OpenTable(tblInventory, false) ||
        !gfbDBSM_OpenTable(tblUpc, false))
        return false;
    QSqlDatabase &db = gpDBSM_Engine()->db();
    db.transaction();
    addKeyItems();
    addGeneratedItems(items);
    db.commit();
    gpDBSM_Disconnect();
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    auto option = [&args](const QString &name, const QString &otherwise = QString()) {
        const qsizetype i = args.indexOf(name);
        return i > 0 && i + 1 < args.size() ? args[i + 1] : otherwise;
    };
    DBSM_Settings server;
    if (!option("--engine").isEmpty()) {
        server = {option("--engine"), option("--database", "ZELDEMO"), option("--server"),
                  option("--user", "qx"), option("--password")};
        if (server.sEngine.compare("PostgreSQL", Qt::CaseInsensitive) || server.sServer.isEmpty()) {
            std::fprintf(stderr, "only --engine PostgreSQL with --server HOST[:PORT] is known\n");
            return 2;
        }
        server.sEngine = "PostgreSQL";
    }
    if (argc < 2) {
        std::fprintf(stderr, "usage: hk_demo_seed DATA_FOLDER [--items N] [--engine PostgreSQL "
                             "--server HOST[:PORT] --user USER --password PASSWORD --database "
                             "NAME]\n");
        return 2;
    }
    const QString data = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const QString pictures = data + "/pictures/HotKeys";
    QDir().mkpath(pictures);
    gDataPath.setDataPath(data);

    for (const Set &set : kSets) {
        gpHotKeySet_clear();
        int g = 1;
        for (const Column &column : set.columns) {
            gHotKeyGroups[g].Caption = column.caption;
            if (*column.color)
                gHotKeyGroups[g].Color = glHotKeyColor_value(column.color);
            int k = 1;
            for (const Key &key : column.keys) {
                HotKeyButton &b = gHotKeyGroups[g].Buttons[k++];
                b.Caption = key.caption;
                b.Item = key.item;
                b.LinkSet = key.link;
                b.Icon = key.icon;
                b.IdSelect = key.byId ? "Yes" : "No";
            }
            ++g;
        }
        gpHotKeySet_write(QString("%1").arg(set.number, 2, 10, QChar('0')), set.title);
    }
    picture(pictures, "coffee.jpg", QColor(111, 78, 55), "C");
    picture(pictures, "soda.jpg", QColor(200, 30, 30), "S");
    picture(pictures, "water.jpg", QColor(40, 120, 220), "W");
    picture(pictures, "sandwich.jpg", QColor(210, 150, 40), "H");
    picture(pictures, "bread.jpg", QColor(180, 120, 60), "B");
    picture(pictures, "icecream.jpg", QColor(230, 120, 180), "I");

    for (const auto &[name, body] :
         {std::pair{"SPECIAL.BDF", QByteArray("[BUTTON]1[CAPTION]Void Line[KEY]*\r\n"
                                              "[BUTTON]3[CAPTION]Weigh[KEY]W\r\n")},
          {"COUPON.BDF", QByteArray("[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]1.00\r\n"
                                    "[BUTTON]2[CAPTION]Fifty Cents[KEY]~SCOUPN[VALUE].50\r\n")}}) {
        QFile f(data + '/' + name);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            f.write(body);
    }

    QFile ini(data + "/ZEL.INI");
    if (ini.open(QIODevice::WriteOnly | QIODevice::Truncate))
        ini.write("[Primary Search Fields]\r\nSearch for Inventory by:=Description\r\n"
                  "Search for Name by:=Last Name\r\n[MISCELLANEOUS]\r\nDatapath=" +
                  data.toLocal8Bit() + "\r\n");
    for (const auto &[key, value] : {std::pair{"NETWORK", QString("False")},
                                     {"STATION", QString("1")},
                                     {"STATIONPATH", data},
                                     {"DATAPATH", data},
                                     {"TESTDATA", QString()}})
        platform::SaveSetting("ZEL Settings", "DATABASE", key, value);
    const int items = option("--items", "3000").toInt();
    if (!seedDatabase(items, server)) {
        std::fprintf(stderr, "The demo database could not be made.\n");
        return 1;
    }
    std::printf("Demo data folder: %s (%d inventory items)\n", qPrintable(data), gRecordNum);
    return 0;
}
