// SPDX-License-Identifier: Apache-2.0
#include "FileWatch.h"

#include <QtCore/QDirIterator>
#include <QtCore/QSet>

namespace HovletsTool {

namespace {

constexpr int Rest = 150; // ms, as editors save a file in several steps

} // namespace

FileWatch::FileWatch(QObject *parent)
    : QObject(parent)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(Rest);
    const auto begin = qOverload<>(&QTimer::start);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_rest, begin);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_rest, begin);
    connect(&m_rest, &QTimer::timeout, this, &FileWatch::compare);
}

FileWatch::States FileWatch::statesBelow(const QStringList &folders)
{
    States states;
    const auto add = [&states](const QFileInfo &file) {
        states.insert(file.filePath(), { file.lastModified(), file.isDir() ? 0 : file.size() });
    };
    for (const QString &folder : folders) {
        if (!QFileInfo(folder).isDir())
            continue;
        add(QFileInfo(folder));
        QDirIterator below(folder, QDir::AllEntries | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (below.hasNext()) {
            below.next();
            add(below.fileInfo());
        }
    }
    return states;
}

void FileWatch::watch(const QStringList &folders)
{
    m_folders = folders;
    m_states = statesBelow(folders);
    const QStringList watchedPaths = m_watcher.files() + m_watcher.directories();
    const QSet<QString> watched(watchedPaths.begin(), watchedPaths.end());
    const QStringList paths = m_states.keys();
    QSet<QString> wanted(paths.begin(), paths.end());
    for (const QString &folder : folders) {
        const QString above = QFileInfo(folder).path();
        if (QFileInfo(above).isDir())
            wanted += above;
    }
    const QStringList gone = (watched - wanted).values();
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    const QStringList added = (wanted - watched).values();
    if (!added.isEmpty())
        m_watcher.addPaths(added);
}

void FileWatch::compare()
{
    if (statesBelow(m_folders) == m_states)
        return;
    watch(m_folders);
    Q_EMIT changed();
}

} // namespace HovletsTool
