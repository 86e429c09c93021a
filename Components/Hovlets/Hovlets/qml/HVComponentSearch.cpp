// SPDX-License-Identifier: Apache-2.0
#include "HVComponentSearch.h"

#include "HVSearchFolders.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace Hovlets {

namespace {

/// Whether \a path is \a folder or is inside it. Both must be canonical.
bool isWithin(const QString &path, const QString &folder)
{
    const QLatin1Char slash('/');
    return path == folder || path.startsWith(folder.endsWith(slash) ? folder : folder + slash);
}

/// Whether the path stays inside the folder to which it is relative. Ignores symbolic links.
bool staysBelow(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    return !QDir::isAbsolutePath(clean) && clean != QLatin1String("..")
            && !clean.startsWith(QLatin1String("../"));
}

} // namespace

HVComponentSearch::HVComponentSearch(const HVIndex &index, const HVXmlElement *entry)
    : m_folders(searchFolders(index, entry))
{
}

void HVComponentSearch::confine(const QString &hostPath)
{
    m_isConfined = true;
    QStringList admitted = m_folders;
    if (!hostPath.isEmpty() && !staysBelow(hostPath)) {
        m_hostPath = hostPath;
        for (const QString &folder : std::as_const(m_folders))
            admitted += QDir(folder).absoluteFilePath(hostPath);
    }
    for (const QString &folder : std::as_const(admitted)) {
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        if (!canonical.isEmpty())
            m_admitted += canonical;
    }
}

QString HVComponentSearch::find(const QString &category, const QString &relativePath)
{
    const QPair<QString, QString> question(category, relativePath);
    const auto known = m_found.constFind(question);
    if (known != m_found.constEnd())
        return *known;
    return *m_found.insert(question, search(category, relativePath));
}

QString HVComponentSearch::search(const QString &category, const QString &relativePath)
{
    for (const QString &folder : std::as_const(m_folders)) {
        const QString candidate = QDir(folder).absoluteFilePath(category);
        const QFileInfo file(relativePath.isEmpty()
                                     ? candidate
                                     : QDir(candidate).absoluteFilePath(relativePath));
        if (file.exists() && admits(file.filePath()))
            return file.absoluteFilePath();
    }
    // A category path would be opened relative to the host's working directory.
    const bool isSafe = !m_isConfined || category == m_hostPath
            || (QFileInfo(category).isFile() ? admits(category) : staysBelow(category));
    return isSafe ? category : QString();
}

bool HVComponentSearch::leadsOut(const QString &category, const QString &packageRoot)
{
    if (!staysBelow(category))
        return true;
    const QString folder = QFileInfo(QDir(packageRoot).filePath(category)).canonicalFilePath();
    return !folder.isEmpty() && !isWithin(folder, QFileInfo(packageRoot).canonicalFilePath());
}

bool HVComponentSearch::admits(const QString &path)
{
    if (!m_isConfined)
        return true;
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const bool isInside =
            std::any_of(m_admitted.cbegin(), m_admitted.cend(),
                        [&](const QString &folder) { return isWithin(canonical, folder); });
    if (!isInside && !m_refused.contains(path))
        m_refused += path;
    return isInside;
}

} // namespace Hovlets
