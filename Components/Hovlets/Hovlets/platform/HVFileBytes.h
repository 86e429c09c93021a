// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

struct stat;

namespace Hovlets {

/*!
 * \brief The status of a file, for a cheap test whether it has changed.
 */
class HVFileStatus
{
public:
    HVFileStatus() = default;
    explicit HVFileStatus(const QString &path);
    explicit HVFileStatus(const struct ::stat &status);

    /*!
     * Whether nobody replaced or wrote the file between this status and a later one of the same
     * path. Also false if the time stamps cannot prove it: they are too coarse to distinguish
     * changes within a tenth of a second.
     */
    [[nodiscard]] bool isSameAs(const HVFileStatus &later) const;

    /// Whether both have the same time stamps and the same size. The file may have changed all the
    /// same, see isSameAs().
    [[nodiscard]] bool looksLike(const HVFileStatus &later) const;

    /// Whether any later change would be visible in a later status.
    [[nodiscard]] bool isSettled() const { return m_isSettled; }

private:
    bool m_exists = false;
    quint64 m_device = 0;
    quint64 m_file = 0; // number on the device
    qint64 m_size = 0;
    qint64 m_modified = 0; // ns
    qint64 m_changed = 0; // ns; nobody can set it back
    bool m_isSettled = false; // the last change was well before the status was taken
};

/*!
 * \brief Reads untrusted files.
 *
 * Only regular files are read. A path that names a pipe or a device when it is opened is rejected
 * immediately, without waiting for a writer. Start-up and look-ups read every control file, so this
 * costs little more than the system calls. Paths in Qt's resources work too.
 */
struct HVFileBytes
{
    enum class Result {
        Read,
        Unreadable, ///< missing, not permitted, a folder, or a read error
        NotRegular, ///< a pipe, a socket or a device
        TooLarge
    };

    Result result = Result::Unreadable;
    QByteArray bytes; ///< empty unless the file was read
    HVFileStatus status; ///< taken before the bytes were read

    /// The whole content of a file of at most \a limit bytes.
    static HVFileBytes all(const QString &path, qint64 limit);

    /// The first \a size bytes of a file of at most \a limit bytes, or the whole content if
    /// shorter.
    static HVFileBytes head(const QString &path, int size, qint64 limit);

    /// The reason why an existing file was not read with a \a limit, or a null string.
    [[nodiscard]] QString problem(qint64 limit) const;
};

} // namespace Hovlets
