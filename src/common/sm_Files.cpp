#include "common/sm_Files.h"
#include "common/Conversions.h"
#include "platform/Paths.h"
#include <QFileInfo>
#include <filesystem>

bool gfbFile_exists(const QString &sPath)
{
    const QFileInfo info(sPath);
    return !sPath.isEmpty() && info.exists() && !info.isDir();
}

bool gfbFolder_exists(const QString &sPath)
{
    return !sPath.isEmpty() && QFileInfo(sPath).isDir();
}

QString gfsFile_name(const QString &sPath)
{
    for (int i = sPath.size() - 1; i > 0; --i) {
        const QChar c = sPath[i];
        if (c == '\\' || c == '/' || c == ':')
            return sPath.mid(i + 1);
    }
    return sPath;
}

bool gfbText_outerBlanks(const QString &sText)
{
    return sText.size() != conv::Trim(sText).size();
}

bool gfbFolder_make(const QString &sPath, QString *error)
{
    std::error_code ec;
    const bool made = std::filesystem::create_directory(sPath.toStdU16String(), ec);
    if (made)
        return true;
    if (error)
        *error =
            ec ? QString::fromLocal8Bit(ec.message()) : QStringLiteral("The path exists already.");
    return false;
}

QString gfsPath_join(const QString &sFolder, const QString &sName)
{
    return platform::endsWithSeparator(sFolder) ? sFolder + sName : sFolder + '/' + sName;
}
