// SPDX-License-Identifier: Apache-2.0
#include "HVFileBytes.h"

#include <QtCore/QFile>

#ifdef Q_OS_UNIX
#    include <fcntl.h>
#    include <unistd.h>
#endif

namespace Hovlets {

namespace {

#ifdef Q_OS_UNIX

/// Without the three times that QFile asks for a file's status. False leaves the file to QFile.
bool readPlainly(const QString &path, int limit, QByteArray &bytes)
{
    constexpr int FirstRead = 64 * 1024;
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    int used = 0;
    ssize_t got = 0;
    do {
        if (used == bytes.size())
            bytes.resize(qMin(limit, qMax(FirstRead, used > limit / 2 ? limit : 2 * used)));
        got = ::read(file, bytes.data() + used, static_cast<size_t>(bytes.size() - used));
        used += static_cast<int>(qMax<ssize_t>(got, 0));
    } while (got > 0 && used < limit);
    ::close(file);
    bytes.truncate(used);
    return got >= 0;
}

#else

bool readPlainly(const QString &, int, QByteArray &)
{
    return false;
}

#endif

} // namespace

QByteArray fileBytes(const QString &path, int limit)
{
    QByteArray bytes;
    if (readPlainly(path, limit, bytes))
        return bytes;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    return file.readAll().left(limit);
}

} // namespace Hovlets
