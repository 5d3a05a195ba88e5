#include "common/TextFile.h"
#include "platform/FileReplace.h"
#include <QFile>
#include <QHash>

namespace textfile {

namespace {

// 0x80 to 0x9F; the five bytes the code page leaves undefined map to themselves.
const char16_t kHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

const QHash<char16_t, char> &reverseHigh()
{
    static const QHash<char16_t, char> table = [] {
        QHash<char16_t, char> t;
        for (int i = 0; i < 32; ++i) t.insert(kHigh[i], static_cast<char>(0x80 + i));
        return t;
    }();
    return table;
}

} // namespace

QString fromCp1252(const QByteArray &bytes)
{
    QString s = QString::fromLatin1(bytes);
    char16_t *data = reinterpret_cast<char16_t *>(s.data());
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (data[i] >= 0x80 && data[i] < 0xA0)
            data[i] = kHigh[data[i] - 0x80];
    }
    return s;
}

QByteArray toCp1252(const QString &text)
{
    QByteArray out(text.size(), Qt::Uninitialized);
    for (int i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c < 0x80 || (c >= 0xA0 && c < 0x100))
            out[i] = static_cast<char>(c);
        else
            out[i] = reverseHigh().value(c, '?');
    }
    return out;
}

QList<QStringView> splitLineViews(const QString &text)
{
    QList<QStringView> lines;
    const QStringView all(text);
    qsizetype start = 0;
    for (qsizetype i = 0; i < all.size(); ++i) {
        const QChar c = all[i];
        if (c != '\r' && c != '\n')
            continue;
        lines << all.mid(start, i - start);
        if (c == '\r' && i + 1 < all.size() && all[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < all.size())
        lines << all.mid(start);
    return lines;
}

QStringList splitLines(const QString &text)
{
    QStringList lines;
    for (QStringView line : splitLineViews(text)) lines << line.toString();
    return lines;
}

bool readBytes(const QString &path, QByteArray &bytes, QString *error)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        if (error)
            *error = f.errorString();
        return false;
    }
    bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) {
        if (error)
            *error = f.errorString();
        return false;
    }
    return true;
}

bool readText(const QString &path, QString &text, QString *error)
{
    QByteArray bytes;
    if (!readBytes(path, bytes, error))
        return false;
    text = fromCp1252(bytes);
    return true;
}

bool readLines(const QString &path, QStringList &lines, QString *error)
{
    QString text;
    if (!readText(path, text, error))
        return false;
    lines = splitLines(text);
    return true;
}

QByteArray linesBytes(const QStringList &lines)
{
    QByteArray bytes;
    for (const QString &line : lines) {
        QByteArray one = toCp1252(line);
        one.replace('\r', ' ').replace('\n', ' ');
        bytes += one + "\r\n";
    }
    return bytes;
}

bool writeLines(const QString &path, const QStringList &lines, QString *error)
{
    return platform::replaceFile(path, linesBytes(lines), error);
}

} // namespace textfile
