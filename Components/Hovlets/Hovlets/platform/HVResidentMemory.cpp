// SPDX-License-Identifier: Apache-2.0
#include "HVResidentMemory.h"

#ifdef Q_OS_LINUX
#    include <fcntl.h>
#    include <unistd.h>

#    include <cstdlib>
#endif

namespace Hovlets {

#ifdef Q_OS_LINUX

qint64 residentMemory()
{
    const int file = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    char text[128] = {};
    const ssize_t size = ::read(file, text, sizeof(text) - 1);
    ::close(file);
    if (size <= 0)
        return 0;
    char *next = nullptr;
    std::strtoll(text, &next, 10); // the size of the address space
    return std::strtoll(next, nullptr, 10) * static_cast<qint64>(::sysconf(_SC_PAGESIZE));
}

#else

qint64 residentMemory()
{
    return 0;
}

#endif

} // namespace Hovlets
