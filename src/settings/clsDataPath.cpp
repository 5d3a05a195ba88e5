#include "settings/clsDataPath.h"
#include "common/Conversions.h"
#include "common/sm_Files.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/SettingsStore.h"
#include "settings/clsINI_Services.h"

clsDataPath gDataPath;

namespace {

const char *const kSection = kDatabaseSection;

// A stored NETWORK value that is no boolean is taken as False, and the user is told.
bool networkValue(const QString &text)
{
    if (conv::Trim(text).isEmpty())
        return false;
    if (const std::optional<bool> b = conv::CBool(text))
        return *b;
    platform::MsgBox("The stored setting NETWORK is '" + text +
                         "', which is neither True nor False.\rIt is taken as False; accept "
                         "the data path dialog to store a valid value.",
                     platform::vbExclamation);
    return false;
}

} // namespace

clsDataPath::clsDataPath()
{
    rebuildStationLabel();
}

void clsDataPath::rebuildStationLabel()
{
    m_StationLabel = "Station " + m_Station + " of " + QString::number(m_MaxStations);
}

void clsDataPath::Read(bool bSuppressDefaults, const QString &sAppLabel)
{
    using platform::GetSetting;
    if (!sAppLabel.isEmpty())
        m_AppLabel = sAppLabel;
    if (bSuppressDefaults) {
        m_Network = networkValue(GetSetting(m_AppLabel, kSection, "NETWORK", ""));
        m_Station = GetSetting(m_AppLabel, kSection, "STATION", "");
        m_StationPath = GetSetting(m_AppLabel, kSection, "STATIONPATH", "");
        m_DataPath = conv::Trim(GetSetting(m_AppLabel, kSection, "DATAPATH", ""));
        m_TestPath = GetSetting(m_AppLabel, kSection, "TESTDATA", "");
    } else {
        m_Network = networkValue(
            GetSetting(m_AppLabel, kSection, "NETWORK", conv::BoolText(m_DefaultNetwork)));
        m_Station = GetSetting(m_AppLabel, kSection, "STATION", m_DefaultStation);
        m_StationPath = GetSetting(m_AppLabel, kSection, "STATIONPATH", m_DefaultStationPath);
        m_DataPath = conv::Trim(GetSetting(m_AppLabel, kSection, "DATAPATH", m_DefaultDataPath));
    }
    rebuildStationLabel();
}

void clsDataPath::Save()
{
    using platform::SaveSetting;
    SaveSetting(m_AppLabel, kSection, "NETWORK", conv::BoolText(m_Network));
    SaveSetting(m_AppLabel, kSection, "STATION", m_Station);
    SaveSetting(m_AppLabel, kSection, "STATIONPATH", m_StationPath);
    SaveSetting(m_AppLabel, kSection, "DATAPATH", m_DataPath);
    gIni.WriteData("MISCELLANEOUS", "Datapath", m_DataPath);
    SaveSetting(m_AppLabel, kSection, "TESTDATA", m_TestPath);
    rebuildStationLabel();
}

void clsDataPath::Delete()
{
    for (const char *key : {"NETWORK", "STATION", "STATIONPATH", "DATAPATH", "TESTDATA"})
        platform::DeleteSetting(m_AppLabel, kSection, key);
}

// True when the folder exists, or the user had it made.
bool clsDataPath::pathFound(const QString &path, const QString &label)
{
    if (gfbFolder_exists(path))
        return true;
    if (!m_CreatePath)
        return false;
    const int answer = platform::MsgBox(path + "\r" + label +
                                            " Path Does Not Exist\rDo you want "
                                            "to create it?",
                                        platform::vbYesNo + platform::vbQuestion,
                                        QString::fromLatin1(platform::kProductName));
    if (answer != platform::vbYes)
        return false;
    QString folder = path;
    if (folder.endsWith('\\') || folder.endsWith('/'))
        folder.chop(1);
    QString error;
    if (gfbFolder_make(folder, &error))
        return true;
    platform::MsgBox("Unable To Create Path\r" + error, platform::vbCritical,
                     QString::fromLatin1(platform::kProductName));
    return false;
}

void clsDataPath::Validate(bool bQuiet)
{
    const bool network = m_Network;
    const QString station = m_Station, stationPath = m_StationPath, dataPath = m_DataPath;
    m_Valid = true;

    struct Failure {
        QString key, message, second;
    };
    std::optional<Failure> failure;
    if (conv::Val(m_Station) > m_MaxStations) {
        m_FieldKey = "STATION";
        m_Station = "1";
    }
    const QString browse = "Use the Browse method to find a valid path.";
    if (m_StationPathEnabled && !pathFound(m_StationPath, "Station"))
        failure = Failure{"STATIONPATH", "Station Path Not Found.", browse};
    if (!failure && !pathFound(m_DataPath, "Data"))
        failure = Failure{"DATAPATH", "Data Path Not Found.", browse};
    if (!failure && m_StationPathEnabled && !m_SupressFileCheck &&
        !gfbFile_exists(gfsPath_join(m_StationPath, "STA" + m_Station + ".ZEL")))
        failure = Failure{"STATIONPATH", "Station " + m_Station + " not in Station Path.",
                          "Select another Station or change the Station Path."};
    if (!failure && !m_CheckFile.isEmpty() && !m_SupressFileCheck &&
        !gfbFile_exists(gfsPath_join(m_DataPath, m_CheckFile)))
        failure = Failure{"DATAPATH", "Primary Data File Not Found.",
                          "There is no '" + m_CheckFile + "' file in the specified data path."};
    if (!failure)
        return;

    m_FieldKey = failure->key;
    m_Valid = false;
    if (!bQuiet)
        platform::MsgBox(failure->message + "\r\r" + failure->second, platform::vbInformation,
                         "Validation");
    m_Network = network;
    m_Station = station;
    m_StationPath = stationPath;
    m_DataPath = dataPath;
}
