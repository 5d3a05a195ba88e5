#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>

// The suite's text files: 8-bit Windows-1252, CR LF at every line end.
namespace textfile {

QString fromCp1252(const QByteArray &bytes);
// Characters the code page lacks become "?".
QByteArray toCp1252(const QString &text);

// Lines ended by CR LF, a lone LF or a lone CR; a last line without an end counts.
QStringList splitLines(const QString &text);
// The same lines as views into `text`, which must outlive them.
QList<QStringView> splitLineViews(const QString &text);

// The whole file as it is on the disk; false with `error` set when it cannot be read.
bool readBytes(const QString &path, QByteArray &bytes, QString *error = nullptr);
// The whole file as text; false with `error` set when it cannot be read.
bool readText(const QString &path, QString &text, QString *error = nullptr);

// False when the file cannot be opened or read; `error` says why.
bool readLines(const QString &path, QStringList &lines, QString *error = nullptr);
// The lines as the file holds them: each ended by CR LF, a line break inside a line
// made a blank.
QByteArray linesBytes(const QStringList &lines);
// Replaces the file whole with the lines, each ended by CR LF, through a temporary
// file renamed over it: a reader sees the old file or the new one, never a part.
// A line break inside a line becomes a blank, so the file holds exactly these
// lines. False with `error` saying why in the user's words; the old file is then
// as it was.
bool writeLines(const QString &path, const QStringList &lines, QString *error = nullptr);

} // namespace textfile
