#include "shell/hkeyDBSM_Setup.h"
#include "database/DbEngine.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyGlobal.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Interface.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

bool gfbDBSM_Setup()
{
    const QString dataPath = gDataPath.DataPath();
    giFileCount = 3;
    gpDBSM_RegisterTables();
    if (!gfbDBSM_Connect())
        return false;
    const DbAction action; // a locked or damaged database is told once at start
    gpCommon_Register(0, dataPath, 0, QString());
    int store = 0;
    if (gfbDBSM_OpenTable(tblCommon, false)) {
        QString sql;
        if (!gfbDBSM_Record(tblCommon, opFirstPos, 0, false, false, sql))
            return false;
        const QVariant stored = gfvDBSM_Field(tblCommon, "StoreNumber");
        store = static_cast<int>(gCommonRecord.number("StoreNumber"));
        // The store number names the store's tables: one that is missing or
        // negative would open another store's data, or none.
        if (stored.isNull() || store < 0) {
            platform::MsgBox("The store number in the COMMON table is " +
                                 (stored.isNull() ? QString("empty") : stored.toString()) +
                                 ".\rSet the store number in the suite's configuration and start "
                                 "again.",
                             platform::vbCritical);
            return false;
        }
        gsStoreNumber = QString::number(store);
        const QString multi = gCommonRecord.text("MultiStore").toUpper();
        gbMultiStore = multi == "H" || multi == "Y" || store == 0;
    }
    gpInventory_Register(1, dataPath, store, QString());
    gpUpc_Register(2, dataPath, store, QString());
    return true;
}

namespace {

const char *const kOwnDatabase = "ZELDATA";

bool mpCommon_insert(int iStore, const QString &sName)
{
    gCommonRecord.clear();
    gCommonRecord.setText("DupID", "1");
    gCommonRecord.setText("Cname", sName);
    gCommonRecord.setText("MultiStore", "N");
    gCommonRecord.setNumber("StoreNumber", iStore);
    QString sql;
    return gfbDBSM_Record(tblCommon, opInsert, 0, false, false, sql);
}

// The tables and the store's row; the settings already name the file. The
// engine has said in its own box what failed, where something did.
OwnDatabase mpOwnTables(int iStore, const QString &sName, QString &sMessage)
{
    const QString file = QDir::toNativeSeparators(gfsDBSM_OwnFile());
    const QString unchanged = "\rNothing has been changed on this workstation.";
    gpDBSM_Disconnect();
    const bool stored = gfbDBSM_Setup();
    if (gTables.empty() || !gTables[tblCommon].bOpen) {
        sMessage = "The tables could not be made in the database " + file + '.' + unchanged;
        return OwnDatabase::Failed;
    }
    if (stored) {
        sMessage = "The data folder already holds a database, " + file + ", for store " +
                   gsStoreNumber + " (" + gCommonRecord.text("Cname").trimmed() +
                   ").\rThis workstation uses it as it is; the store number and name typed here "
                   "are not stored.";
    } else {
        if (gfbDBSM_HasRows(tblCommon)) {
            sMessage = "The database " + file + " holds a store that cannot be used." + unchanged;
            return OwnDatabase::Failed;
        }
        if (!mpCommon_insert(iStore, sName)) {
            sMessage = "The store could not be written into the database " + file + ":\r" +
                       gsInsertError + unchanged;
            return OwnDatabase::Failed;
        }
        gpDBSM_Disconnect(); // the store's tables are named after the number just stored
    }
    if ((stored || gfbDBSM_Setup()) && gfbDBSM_Open())
        return stored ? OwnDatabase::Existing : OwnDatabase::Created;
    sMessage = "The item tables could not be made in the database " + file + '.' + unchanged;
    return OwnDatabase::Failed;
}

} // namespace

QString gfsDBSM_OwnFile()
{
    return QDir(gDataPath.DataPath()).filePath(QString(kOwnDatabase) + ".db");
}

bool gfbDBSM_OwnUnfinished()
{
    const DBSM_Settings settings = gfDBSM_Settings();
    return settings.sEngine == embeddedDbEngine().setting && settings.sDBName == kOwnDatabase &&
           !gTables.empty() && gTables[tblCommon].bOpen && !gfbDBSM_HasRows(tblCommon);
}

OwnDatabase gfDBSM_CreateOwn(int iStore, const QString &sName, QString &sMessage)
{
    const QString file = gfsDBSM_OwnFile();
    const bool existed = QFileInfo(file).isFile();
    QString why;
    if (!existed && !SqliteEngine::create(file, &why)) {
        QFile::remove(file);
        sMessage = "The database file " + QDir::toNativeSeparators(file) +
                   " could not be made: " + why +
                   ".\rCheck that the data folder can be written, or choose the store's database "
                   "server.";
        return OwnDatabase::Failed;
    }
    const DBSM_Settings before = gfDBSM_Settings();
    gpDBSM_SaveSettings({embeddedDbEngine().setting, kOwnDatabase,
                         platform::ShellPort::get().computerName().toUpper() + "\\ZEL",
                         before.sUser, before.sPassword});
    const OwnDatabase result = mpOwnTables(iStore, sName, sMessage);
    gpDBSM_Disconnect();
    if (result == OwnDatabase::Failed) {
        gpDBSM_SaveSettings(before);
        if (!existed)
            QFile::remove(file);
    }
    return result;
}
