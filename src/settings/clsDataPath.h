#pragma once
#include <QString>

// Where the shared data folder lies. Every file path goes through DataPath(),
// which has no trailing separator once the folder is settled.
class clsDataPath {
public:
    QString DataPath() const { return m_DataPath; }
    void setDataPath(const QString &v) { m_DataPath = v; }

private:
    QString m_DataPath;
};

extern clsDataPath gDataPath;
