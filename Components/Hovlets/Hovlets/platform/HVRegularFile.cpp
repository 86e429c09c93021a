// SPDX-License-Identifier: Apache-2.0
#include "HVRegularFile.h"

#include <QtCore/QFile>

#ifdef Q_OS_UNIX
#    include <fcntl.h>
#    include <sys/stat.h>
#    include <unistd.h>
#else
#    include <QtCore/QFileInfo>
#endif

namespace Hovlets {

#ifdef Q_OS_UNIX

int openWithoutWaiting(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(),
                  O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

bool openRegularFile(QFile &file, const QString &path)
{
    const int descriptor = openWithoutWaiting(path);
    if (descriptor < 0)
        return false;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle)) {
        return true;
    }
    ::close(descriptor);
    return false;
}

#else

bool openRegularFile(QFile &file, const QString &path)
{
    file.setFileName(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

#endif

} // namespace Hovlets
