#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>

// Zip archives through libzip: the set packages carried from store to store.
namespace ziparchive {

struct Archive; // an open archive of libzip

struct Entry {
    QString name;
    qint64 size = 0; // as the archive declares it, uncompressed
};

class Reader {
public:
    Reader();
    ~Reader();
    // False with `error` set when the file cannot be read or is no zip archive.
    bool open(const QString &path, QString *error);
    const QList<Entry> &entries() const { return m_entries; }
    // The bytes of entry `index`; false when it cannot be read or holds more than
    // `limit` bytes, whatever its declared size says.
    bool read(int index, qint64 limit, QByteArray &bytes, QString *error) const;

private:
    std::unique_ptr<Archive> m_archive;
    QList<Entry> m_entries;
};

// libzip builds the archive in a temporary file beside `path` and puts it in
// place on commit(), so a package is there whole or not at all.
class Writer {
public:
    Writer();
    ~Writer();
    bool open(const QString &path, QString *error);
    // `bytes` is kept until commit().
    bool addBytes(const QString &name, const QByteArray &bytes, bool compress, QString *error);
    // Read from `file` on commit().
    bool addFile(const QString &name, const QString &file, QString *error);
    bool commit(QString *error);

private:
    // Adds the entry; false, with `error` naming `what`, when it cannot.
    bool add(const QString &name, const QString &what, void *source, bool compress, QString *error);
    std::unique_ptr<Archive> m_archive;
    QList<QByteArray> m_kept;
};

} // namespace ziparchive
