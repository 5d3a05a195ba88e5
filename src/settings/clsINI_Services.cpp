#include "settings/clsINI_Services.h"
#include "common/TextFile.h"
#include "platform/Dialogs.h"
#include "platform/ProfileStrings.h"
#include <new>
#include <stdexcept>

clsINI_Services gIni;

namespace {

void mpReportError(int number, const QString &description, const QString &label)
{
    QString text = "Error Number: " + QString::number(number) + "\r\n" + description;
    if (!label.isEmpty())
        text += "\r\n\r\n" + label;
    platform::MsgBox(text, platform::vbCritical, "INI Class");
}

// Every operation traps its own errors, reports them and ends with what it has so far.
template <class F> void trapped(const QString &label, F body)
{
    try {
        body();
    } catch (const std::bad_alloc &) {
        mpReportError(7, "Out of memory", label);
    } catch (const std::exception &e) {
        mpReportError(51, QString::fromLocal8Bit(e.what()), label);
    }
}

// The profile services work on the file's bytes; values are the suite's code page.
QString toBytes(const QString &text)
{
    return QString::fromLatin1(textfile::toCp1252(text));
}
QString fromBytes(const QString &bytes)
{
    return textfile::fromCp1252(bytes.toLatin1());
}

} // namespace

void clsINI_Services::setFile_Name(const QString &sName)
{
    m_FileOpen = true;
    QString result = sName;
    trapped("Checkexist", [&] {
        if (platform::WritePrivateProfileStringA("", QString(), QString(), sName) == 0) {
            result.clear();
            m_FileOpen = false;
        }
    });
    m_File = result;
}

bool clsINI_Services::WriteData(const QString &sectionName, const QString &KeyName,
                                const QString &keyValue)
{
    if (!m_FileOpen)
        return false;
    bool written = false;
    trapped("Write Date Class INI", [&] {
        written = platform::WritePrivateProfileStringA(toBytes(sectionName), toBytes(KeyName),
                                                       toBytes(keyValue), m_File) != 0;
    });
    return written;
}

QString clsINI_Services::GetValue(const QString &sectionName, const QString &KeyName,
                                  const QString &sDefaultVal)
{
    QString result;
    trapped("Get Value Class ini", [&] {
        QString buffer(255, QChar(0));
        const int copied = platform::GetPrivateProfileStringA(
            toBytes(sectionName), toBytes(KeyName), toBytes(sDefaultVal), buffer, 255, m_File);
        if (copied != 0)
            result = fromBytes(buffer.left(
                buffer.indexOf(QChar(0)) < 0 ? buffer.size() : buffer.indexOf(QChar(0))));
    });
    return result;
}
