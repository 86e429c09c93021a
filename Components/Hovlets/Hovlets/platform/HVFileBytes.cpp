// SPDX-License-Identifier: Apache-2.0
#include "HVFileBytes.h"

#include "HVRegularFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <limits>

#ifdef Q_OS_UNIX
#    include <cerrno>
#    include <sys/stat.h>
#    include <unistd.h>
#endif

namespace Hovlets {

namespace {

constexpr qint64 NsPerMs = 1000000;
constexpr qint64 LargestArray = std::numeric_limits<int>::max() / 2;

/// Whether a change at \a time (ns) is old enough to have a time stamp that no later one shares.
bool isLongAgo(qint64 time)
{
    // Some file systems keep times in steps of one or two seconds.
    const qint64 grain = time % (1000 * NsPerMs) == 0 ? 2100 : 100; // ms
    return QDateTime::currentMSecsSinceEpoch() - time / NsPerMs > grain;
}

/// The first bytes of a file of at most \a limit bytes.
HVFileBytes fromQt(const QString &path, qint64 size, qint64 limit)
{
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return { QFileInfo(path).isDir() ? HVFileBytes::Result::Unreadable
                                         : HVFileBytes::Result::NotRegular,
                 {},
                 {} };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    if (file.size() > limit)
        return { HVFileBytes::Result::TooLarge, {}, {} };
    const HVFileStatus status(path);
    return { HVFileBytes::Result::Read, file.read(size), status };
}

#ifdef Q_OS_UNIX

bool isResource(const QString &path)
{
    return path.startsWith(QLatin1Char(':'));
}

class Descriptor
{
    Q_DISABLE_COPY_MOVE(Descriptor)

public:
    explicit Descriptor(const QString &path)
        : m_number(openWithoutWaiting(path))
    {
    }

    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }

    int number() const { return m_number; }

private:
    int m_number;
};

/// Avoids QFile, which queries a file's status three times.
HVFileBytes fromSystem(const QString &path, qint64 size, qint64 limit)
{
    constexpr qint64 FirstRead = qint64 { 64 } * 1024;

    const Descriptor file(path);
    struct stat status = {};
    if (file.number() < 0)
        return { errno == ENXIO ? HVFileBytes::Result::NotRegular : HVFileBytes::Result::Unreadable,
                 {},
                 {} };
    if (::fstat(file.number(), &status) != 0 || S_ISDIR(status.st_mode))
        return {};
    if (!S_ISREG(status.st_mode))
        return { HVFileBytes::Result::NotRegular, {}, {} };
    if (status.st_size > limit)
        return { HVFileBytes::Result::TooLarge, {}, {} };

    // Some system files are larger than their status says, and others grow while they are read.
    QByteArray bytes;
    qint64 used = 0;
    ssize_t got = 0;
    const qint64 expected = std::max<qint64>(FirstRead, qint64 { status.st_size } + 1);
    do {
        if (used == bytes.size()) {
            const qint64 room = std::min(size, used == 0 ? expected : 2 * used);
            bytes.resize(static_cast<int>(room));
        }
        got = ::read(file.number(), bytes.data() + used, static_cast<size_t>(bytes.size() - used));
        used += std::max<ssize_t>(got, 0);
    } while ((got > 0 && used < size) || (got < 0 && errno == EINTR));
    bytes.truncate(static_cast<int>(used));
    return got < 0 ? HVFileBytes()
                   : HVFileBytes { HVFileBytes::Result::Read, bytes, HVFileStatus(status) };
}

HVFileBytes firstBytes(const QString &path, qint64 size, qint64 limit)
{
    return isResource(path) ? fromQt(path, size, limit) : fromSystem(path, size, limit);
}

#else

HVFileBytes firstBytes(const QString &path, qint64 size, qint64 limit)
{
    return fromQt(path, size, limit);
}

#endif

} // namespace

HVFileBytes HVFileBytes::all(const QString &path, qint64 limit)
{
    const qint64 most = std::clamp<qint64>(limit, 0, LargestArray);
    HVFileBytes file = firstBytes(path, most + 1, most);
    return file.bytes.size() > most ? HVFileBytes { Result::TooLarge, {}, {} } : file;
}

HVFileBytes HVFileBytes::head(const QString &path, int size, qint64 limit)
{
    return firstBytes(path, size, limit);
}

QString HVFileBytes::problem(qint64 limit) const
{
    switch (result) {
    case Result::NotRegular:
        return QStringLiteral("not a regular file");
    case Result::TooLarge:
        return QStringLiteral("larger than %1 bytes").arg(limit);
    default:
        return {};
    }
}

#ifdef Q_OS_UNIX

HVFileStatus::HVFileStatus(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        *this = HVFileStatus(status);
}

HVFileStatus::HVFileStatus(const struct ::stat &status)
{
#    ifdef Q_OS_DARWIN
    const timespec &modified = status.st_mtimespec;
    const timespec &changed = status.st_ctimespec;
#    else
    const timespec &modified = status.st_mtim;
    const timespec &changed = status.st_ctim;
#    endif
    m_exists = true;
    m_device = static_cast<quint64>(status.st_dev);
    m_file = static_cast<quint64>(status.st_ino);
    m_size = status.st_size;
    m_modified = modified.tv_sec * 1000 * NsPerMs + modified.tv_nsec;
    m_changed = changed.tv_sec * 1000 * NsPerMs + changed.tv_nsec;
    m_isSettled = isLongAgo(m_modified) && isLongAgo(m_changed);
}

#else

HVFileStatus::HVFileStatus(const QString &path)
{
    const QFileInfo info(path);
    m_exists = info.exists();
    m_size = info.size();
    m_modified = info.lastModified().toMSecsSinceEpoch() * NsPerMs;
    m_changed = info.metadataChangeTime().toMSecsSinceEpoch() * NsPerMs;
    m_isSettled = isLongAgo(m_modified) && isLongAgo(m_changed);
}

#endif

bool HVFileStatus::isSameAs(const HVFileStatus &later) const
{
    return m_isSettled && looksLike(later);
}

bool HVFileStatus::looksLike(const HVFileStatus &later) const
{
    return m_exists && later.m_exists && m_device == later.m_device && m_file == later.m_file
            && m_size == later.m_size && m_modified == later.m_modified
            && m_changed == later.m_changed;
}

} // namespace Hovlets
