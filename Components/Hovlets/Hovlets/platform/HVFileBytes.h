// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Reads files whose content nobody vouches for.
 *
 * Only regular files are read: a path that names a pipe or a device by the time it is opened is
 * refused at once, without waiting for a writer. A look-up and a start read every control file that
 * there is; this costs little more than what the system needs for it. Paths of Qt's resources work
 * too.
 */
struct HVFileBytes
{
    enum Result {
        Read,
        Unreadable, ///< missing, forbidden, a folder, or an error on the way
        NotRegular, ///< a pipe, a socket or a device
        TooLarge
    };

    Result result = Unreadable;
    QByteArray bytes; ///< empty unless the file was read

    /// All of a file of at most \a limit bytes.
    static HVFileBytes all(const QString &path, qint64 limit);

    /// The first \a size bytes of a file of at most \a limit bytes, or all of a shorter one.
    static HVFileBytes head(const QString &path, int size, qint64 limit);

    /// Why a file that exists was not read with a \a limit, or a null string.
    QString problem(qint64 limit) const;
};

/*!
 * \brief What the system tells about a file, for a cheap look at whether it has changed.
 */
class HVFileStatus
{
public:
    HVFileStatus() = default;
    explicit HVFileStatus(const QString &path);

    /*!
     * Whether nobody replaced the file or wrote to it between this status and a later one of the
     * same path. Also false where the time stamps cannot prove it: they are too coarse for what
     * happens within a tenth of a second of the last change.
     */
    bool isSameAs(const HVFileStatus &later) const;

private:
    bool m_exists = false;
    quint64 m_device = 0;
    quint64 m_file = 0; // number on the device
    qint64 m_size = 0;
    qint64 m_modified = 0; // ns
    qint64 m_changed = 0; // ns; nobody can set it back
    bool m_isSettled = false; // the last change was well before the status was taken
};

} // namespace Hovlets
