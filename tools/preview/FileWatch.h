// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QHash>
#include <QtCore/QTimer>

namespace HovletsTool {

/*!
 * \brief Watches folders and everything below them.
 *
 * changed() is emitted once for a series of changes, as soon as no more follow.
 */
class FileWatch : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject *parent = nullptr);

    /// Watches these folders in place of the previous ones. A folder may be missing, and be created
    /// later.
    void watch(const QStringList &folders);

Q_SIGNALS:
    void changed();

private:
    /// Two states of a file or folder are equal as long as nothing in it has changed.
    struct State
    {
        QDateTime changed;
        qint64 size = 0;

        [[nodiscard]] bool operator==(const State &other) const
        {
            return changed == other.changed && size == other.size;
        }
    };
    using States = QHash<QString, State>;

    static States statesBelow(const QStringList &folders);
    void compare();

    QStringList m_folders;
    States m_states;
    QFileSystemWatcher m_watcher;
    QTimer m_rest;
};

} // namespace HovletsTool
