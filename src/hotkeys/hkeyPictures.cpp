#include "hotkeys/hkeyPictures.h"
#include <QFileInfo>
#include <QImageReader>

QString hotKeyPictureProblem(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return "is not in the pictures folder";
    QImageReader reader(path);
    // The size comes from the file's header: nothing is drawn to find it.
    const QSize size = reader.size();
    if (!reader.canRead() || !size.isValid())
        return "cannot be read as a picture";
    if (size.width() > kMaxPictureSide || size.height() > kMaxPictureSide)
        return QString("is %1 x %2 pixels, larger than the %3 x %3 a key can show")
            .arg(size.width())
            .arg(size.height())
            .arg(kMaxPictureSide);
    return QString();
}
