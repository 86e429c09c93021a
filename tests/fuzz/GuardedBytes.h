// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

/// A copy of bytes with inaccessible memory after them: reading past the end crashes.
class GuardedBytes
{
    Q_DISABLE_COPY_MOVE(GuardedBytes)

public:
    explicit GuardedBytes(const QByteArray &bytes)
    {
        const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        const auto size = static_cast<size_t>(bytes.size());
        const size_t used = (size + page - 1) / page * page;
        m_size = used + page;
        m_memory =
                mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_memory == MAP_FAILED)
            qFatal("no memory for the bytes");
        auto *memory = static_cast<uchar *>(m_memory);
        mprotect(memory + used, page, PROT_NONE);
        m_data = memory + used - size;
        std::memcpy(m_data, bytes.constData(), size);
    }

    ~GuardedBytes() { munmap(m_memory, m_size); }

    const uchar *data() const { return m_data; }

private:
    void *m_memory = nullptr;
    size_t m_size = 0;
    uchar *m_data = nullptr;
};
