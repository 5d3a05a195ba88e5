#pragma once
#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>

// What the fuzz targets share: a throwaway data folder and boxes that never block.
namespace fuzzing {

// The data folder, made on first use; gDataPath points at it.
QString dataFolder();
// Replaces `name` in the data folder with `bytes` and returns its path.
QString writeDataFile(const QString &name, const QByteArray &bytes);
QByteArray readDataFile(const QString &name);
// Boxes shown since the last call.
int takeBoxes();
// Ends the run so that libFuzzer keeps the input that got here.
[[noreturn]] void fail(const char *what, const QString &detail = QString());

inline QByteArray bytesOf(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

} // namespace fuzzing
