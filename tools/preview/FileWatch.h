// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QHash>
#include <QtCore/QTimer>

namespace HovletsTool {

/*!
 * \brief Tells when something in folders has changed: once, when the writing has come to rest.
 */
class FileWatch : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject *parent = nullptr);

    /// Watches these folders, with all that is below them now, in place of what was watched. A
    /// folder may be missing, and come later.
    void watch(const QStringList &folders);

Q_SIGNALS:
    void changed();

private:
    /// What tells a file from how it was; nothing is said of neighbours that come and go.
    struct State
    {
        QDateTime changed;
        qint64 size = 0;

        bool operator==(const State &other) const
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
