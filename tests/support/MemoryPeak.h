// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>

/// The most memory that this process held since construction, in bytes beyond what it held then.
class MemoryPeak
{
public:
    MemoryPeak()
    {
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        if (!reset.open(QIODevice::WriteOnly) || reset.write("5") != 1)
            qFatal("cannot reset the peak of the memory");
        reset.close();
        m_start = read("VmRSS:");
    }

    [[nodiscard]] qint64 bytes() const { return read("VmHWM:") - m_start; }

private:
    static qint64 read(const char *field)
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            qFatal("cannot read the memory of the process");
        const QByteArray all = status.readAll();
        const auto start = all.indexOf(field) + qstrlen(field);
        return 1024 * all.mid(int(start), 20).simplified().split(' ').value(0).toLongLong();
    }

    qint64 m_start;
};
