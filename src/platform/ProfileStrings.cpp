#include "platform/ProfileStrings.h"
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace platform {

namespace {

// Profile files are read and written in the Latin-1 range byte for byte.
struct Line {
    QString text;
    QByteArray end; // "\r\n", "\n", "\r" or empty on a last line without one
};

QList<Line> readFile(const QString &file, bool *ok)
{
    QList<Line> lines;
    QFile f(file);
    *ok = f.open(QIODevice::ReadOnly);
    if (!*ok)
        return lines;
    const QByteArray bytes = f.readAll();
    int start = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n')
            continue;
        Line line{QString::fromLatin1(bytes.mid(start, i - start)), bytes.mid(i, 1)};
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n')
            line.end = "\r\n", ++i;
        lines << line;
        start = i + 1;
    }
    if (start < bytes.size())
        lines << Line{QString::fromLatin1(bytes.mid(start)), QByteArray()};
    return lines;
}

bool writeFile(const QString &file, const QList<Line> &lines)
{
    QByteArray bytes;
    for (const Line &l : lines) bytes += l.text.toLatin1() + l.end;
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size() &&
           f.flush();
}

// White space of the 8-bit code page: tab to carriage return, blank, and the
// no-break blank. Byte 0x85 is a character there (an ellipsis), not a line end.
bool isSpace(QChar c)
{
    return (c >= '\t' && c <= '\r') || c == ' ' || c == QChar(0xA0);
}

QString trimmed(const QString &text)
{
    qsizetype first = 0, last = text.size();
    while (first < last && isSpace(text[first])) ++first;
    while (last > first && isSpace(text[last - 1])) --last;
    return text.mid(first, last - first);
}

// "[name]" with white space allowed around the name; false when not a section line.
bool sectionName(const QString &text, QString *name)
{
    const QString t = trimmed(text);
    if (!t.startsWith('['))
        return false;
    const int close = t.indexOf(']');
    *name = trimmed(close < 0 ? t.mid(1) : t.mid(1, close - 1));
    return true;
}

bool keyOf(const QString &text, QString *key, QString *value)
{
    const QString t = trimmed(text);
    if (t.isEmpty() || t.startsWith(';'))
        return false;
    const int eq = t.indexOf('=');
    *key = trimmed(eq < 0 ? t : t.left(eq));
    *value = eq < 0 ? QString() : trimmed(t.mid(eq + 1));
    return true;
}

// The line range [first, last) of a section's body; first = -1 when absent.
std::pair<int, int> findSection(const QList<Line> &lines, const QString &section)
{
    QString name;
    for (int i = 0; i < lines.size(); ++i) {
        if (!sectionName(lines[i].text, &name) || name.compare(section, Qt::CaseInsensitive))
            continue;
        int end = i + 1;
        while (end < lines.size() && !sectionName(lines[end].text, &name)) ++end;
        return {i + 1, end};
    }
    return {-1, -1};
}

int findKey(const QList<Line> &lines, std::pair<int, int> body, const QString &key, QString *value)
{
    QString k;
    for (int i = body.first; i < body.second; ++i) {
        if (keyOf(lines[i].text, &k, value) && !k.compare(key, Qt::CaseInsensitive))
            return i;
    }
    return -1;
}

QString unquoted(const QString &v)
{
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        return v.mid(1, v.size() - 2);
    return v;
}

// Lines added to a file end as its other lines do; a last line without an end gets one.
void append(QList<Line> &lines, int at, const QString &text)
{
    QByteArray end = "\r\n";
    for (const Line &l : lines) {
        if (!l.end.isEmpty()) {
            end = l.end;
            break;
        }
    }
    if (at > 0 && lines[at - 1].end.isEmpty())
        lines[at - 1].end = end;
    lines.insert(at, Line{text, end});
}

bool fileUsable(const QString &file)
{
    const QFileInfo info(file);
    if (info.exists())
        return info.isFile() && info.isReadable() && info.isWritable();
    const QFileInfo folder(info.absolutePath());
    return folder.isDir() && folder.isWritable();
}

} // namespace

int GetPrivateProfileStringA(const QString &section, const QString &key,
                             const QString &defaultValue, QString &buffer, int size,
                             const QString &file)
{
    bool ok = false;
    const QList<Line> lines = readFile(file, &ok);
    QString value = defaultValue;
    while (value.endsWith(' ')) value.chop(1);
    QString found;
    if (ok && findKey(lines, findSection(lines, section), key, &found) >= 0)
        value = unquoted(found);
    buffer = value.left(std::max(0, size - 1));
    return static_cast<int>(buffer.size());
}

int WritePrivateProfileStringA(const QString &section, const QString &key, const QString &value,
                               const QString &file)
{
    if (!fileUsable(file))
        return 0;
    bool exists = false;
    QList<Line> lines = readFile(file, &exists);
    // Nothing to delete in a file that is not there: the test of a missing file fails too.
    if (key.isNull() && !exists)
        return 0;
    const std::pair<int, int> body = findSection(lines, section);
    QString old;
    const int at = body.first < 0 ? -1 : findKey(lines, body, key, &old);

    if (key.isNull()) { // delete the section, or only test the file
        if (body.first < 0)
            return 1;
        lines.erase(lines.begin() + body.first - 1, lines.begin() + body.second);
    } else if (value.isNull()) {
        if (at < 0)
            return 1;
        lines.removeAt(at);
    } else if (at >= 0) {
        lines[at].text = key + '=' + value;
    } else if (body.first >= 0) {
        int insertAt = body.second;
        while (insertAt > body.first && trimmed(lines[insertAt - 1].text).isEmpty()) --insertAt;
        append(lines, insertAt, key + '=' + value);
    } else {
        append(lines, static_cast<int>(lines.size()), '[' + section + ']');
        append(lines, static_cast<int>(lines.size()), key + '=' + value);
    }
    return writeFile(file, lines) ? 1 : 0;
}

} // namespace platform
