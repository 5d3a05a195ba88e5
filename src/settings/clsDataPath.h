#pragma once
#include "platform/SettingsStore.h"
#include <QString>

// Where the shared data folder lies, which station this is and whether the data
// is on a network, as the suite keeps it in the settings store. Every file path
// goes through DataPath(), which has no trailing separator once opened.
class clsDataPath {
public:
    clsDataPath();

    bool Network() const { return m_Network; }
    void setNetwork(bool v) { m_Network = v; }
    bool StationPathEnabled() const { return m_StationPathEnabled; }
    void setStationPathEnabled(bool v) { m_StationPathEnabled = v; }
    bool StationNumberEnabled() const { return m_StationNumberEnabled; }
    void setStationNumberEnabled(bool v) { m_StationNumberEnabled = v; }
    bool Valid() const { return m_Valid; }
    bool CreatePath() const { return m_CreatePath; }
    void setCreatePath(bool v) { m_CreatePath = v; }
    bool Cancelled() const { return m_Cancelled; }
    void setCancelled(bool v) { m_Cancelled = v; }
    qint16 MaxStations() const { return m_MaxStations; }
    void setMaxStations(qint16 v) { m_MaxStations = v; }
    QString AppLabel() const { return m_AppLabel; }
    void setAppLabel(const QString &v) { m_AppLabel = v; }
    QString Title() const { return m_Title; }
    void setTitle(const QString &v) { m_Title = v; }
    QString Station() const { return m_Station; }
    void setStation(const QString &v) { m_Station = v; }
    QString StationPath() const { return m_StationPath; }
    void setStationPath(const QString &v) { m_StationPath = v; }
    QString StationLabel() const { return m_StationLabel; }
    QString DataPath() const { return m_DataPath; }
    void setDataPath(const QString &v) { m_DataPath = v; }
    QString FieldKey() const { return m_FieldKey; }
    QString CheckFile() const { return m_CheckFile; }
    void setCheckFile(const QString &v) { m_CheckFile = v; }
    QString StationFile() const { return m_StationFile; }
    void setStationFile(const QString &v) { m_StationFile = v; }
    QString TestPath() const { return m_TestPath; }
    void setTestPath(const QString &v) { m_TestPath = v; }
    bool SupressFileCheck() const { return m_SupressFileCheck; }
    void setSupressFileCheck(bool v) { m_SupressFileCheck = v; }
    bool DefaultNetwork() const { return m_DefaultNetwork; }
    void setDefaultNetwork(bool v) { m_DefaultNetwork = v; }
    QString DefaultStation() const { return m_DefaultStation; }
    void setDefaultStation(const QString &v) { m_DefaultStation = v; }
    QString DefaultStationPath() const { return m_DefaultStationPath; }
    void setDefaultStationPath(const QString &v) { m_DefaultStationPath = v; }
    QString DefaultDataPath() const { return m_DefaultDataPath; }
    void setDefaultDataPath(const QString &v) { m_DefaultDataPath = v; }

    void Read(bool bSuppressDefaults = false, const QString &sAppLabel = QString());
    void Save();
    void Delete();
    void Validate(bool bQuiet);

private:
    void rebuildStationLabel();
    bool pathFound(const QString &path, const QString &label);

    bool m_Network = false;
    bool m_StationPathEnabled = false;
    bool m_StationNumberEnabled = false;
    bool m_Valid = false;
    bool m_CreatePath = false;
    bool m_Cancelled = false;
    qint16 m_MaxStations = 4;
    QString m_AppLabel;
    QString m_Title = "Station and Data Path";
    QString m_Station = "1";
    QString m_StationPath;
    QString m_StationLabel;
    QString m_DataPath;
    QString m_FieldKey;
    QString m_CheckFile;
    QString m_StationFile;
    QString m_TestPath;
    bool m_SupressFileCheck = false;
    bool m_DefaultNetwork = false;
    QString m_DefaultStation = "1";
    QString m_DefaultStationPath;
    QString m_DefaultDataPath;
};

extern clsDataPath gDataPath;
