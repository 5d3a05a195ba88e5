#include "hotkeys/hkeyZip.h"
#include <QFile>
#include <zip.h>

namespace ziparchive {

namespace {

QString errorText(int code)
{
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const QString text = QString::fromLocal8Bit(zip_error_strerror(&error));
    zip_error_fini(&error);
    return text;
}

QString archiveError(zip_t *archive)
{
    return QString::fromLocal8Bit(zip_strerror(archive));
}

} // namespace

struct Archive {
    zip_t *handle = nullptr;
    ~Archive()
    {
        if (handle)
            zip_discard(handle);
    }
};

Reader::Reader() = default;
Reader::~Reader() = default;

bool Reader::open(const QString &path, QString *error)
{
    int code = 0;
    zip_t *handle =
        zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &code);
    if (!handle) {
        *error = code == ZIP_ER_NOZIP || code == ZIP_ER_INCONS
                     ? QString("It is not a set package (not a zip archive).")
                     : errorText(code) + '.';
        return false;
    }
    m_archive = std::make_unique<Archive>();
    m_archive->handle = handle;
    m_entries.clear();
    const zip_int64_t count = zip_get_num_entries(handle, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_stat_index(handle, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS, &stat) != 0) {
            *error = QString("Entry %1 cannot be read: %2.").arg(i + 1).arg(archiveError(handle));
            return false;
        }
        m_entries << Entry{QString::fromUtf8(stat.name), static_cast<qint64>(stat.size)};
    }
    return true;
}

bool Reader::read(int index, qint64 limit, QByteArray &bytes, QString *error) const
{
    zip_file_t *file = zip_fopen_index(m_archive->handle, static_cast<zip_uint64_t>(index), 0);
    if (!file) {
        *error = archiveError(m_archive->handle) + '.';
        return false;
    }
    bytes.clear();
    // The declared size may lie; what counts is what comes out.
    char chunk[65536];
    zip_int64_t n = 0;
    while ((n = zip_fread(file, chunk, sizeof chunk)) > 0) {
        if (bytes.size() + n > limit) {
            zip_fclose(file);
            *error = QString("It is larger than %1 MB.").arg(limit / (1024 * 1024));
            return false;
        }
        bytes.append(chunk, static_cast<qsizetype>(n));
    }
    if (n < 0)
        *error = QString::fromLocal8Bit(zip_file_strerror(file)) + '.';
    zip_fclose(file);
    return n == 0;
}

Writer::Writer() = default;
Writer::~Writer() = default;

bool Writer::open(const QString &path, QString *error)
{
    int code = 0;
    zip_t *handle = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!handle) {
        *error = errorText(code) + '.';
        return false;
    }
    m_archive = std::make_unique<Archive>();
    m_archive->handle = handle;
    return true;
}

bool Writer::add(const QString &name, const QString &what, void *data, bool compress,
                 QString *error)
{
    zip_t *handle = m_archive->handle;
    auto *source = static_cast<zip_source_t *>(data);
    const zip_int64_t index =
        source ? zip_file_add(handle, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        if (source)
            zip_source_free(source);
        *error = what + ": " + archiveError(handle) + '.';
        return false;
    }
    if (!compress)
        zip_set_file_compression(handle, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
    return true;
}

bool Writer::addBytes(const QString &name, const QByteArray &bytes, bool compress, QString *error)
{
    m_kept << bytes;
    return add(name, name,
               zip_source_buffer(m_archive->handle, m_kept.last().constData(),
                                 static_cast<zip_uint64_t>(bytes.size()), 0),
               compress, error);
}

bool Writer::addFile(const QString &name, const QString &file, QString *error)
{
    // Pictures are compressed already.
    return add(name, file,
               zip_source_file(m_archive->handle, QFile::encodeName(file).constData(), 0, -1),
               false, error);
}

bool Writer::commit(QString *error)
{
    zip_t *handle = m_archive->handle;
    if (zip_close(handle) != 0) {
        *error = archiveError(handle) + '.';
        return false; // the archive is discarded with its temporary file
    }
    m_archive->handle = nullptr;
    m_kept.clear();
    return true;
}

} // namespace ziparchive
