#pragma once
#include <QString>

// Section-and-key access to one INI file; no handle stays open between calls.
class clsINI_Services {
public:
    // Sets the file after testing that it can be used; an unusable one leaves File() empty.
    void setFile_Name(const QString &sName);
    QString File() const { return m_File; }
    bool FileOpen() const { return m_FileOpen; }

    bool WriteData(const QString &sectionName, const QString &KeyName, const QString &keyValue);
    QString GetValue(const QString &sectionName, const QString &KeyName,
                     const QString &sDefaultVal = QString());

private:
    QString m_File;
    bool m_FileOpen = false;
};

extern clsINI_Services gIni;
