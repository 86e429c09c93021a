// SPDX-License-Identifier: Apache-2.0
#include "LinguistProgram.h"

#include "ToolError.h"

#include <HVQtCompat.h>

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

namespace HovletsTool {

namespace {

constexpr int MillisecondsPerMinute = 60 * 1000;
constexpr int LongestRun = 5 * MillisecondsPerMinute; // even large content takes seconds
constexpr char FolderVariable[] = "HOVLETS_LINGUIST_PATH";
constexpr const char *DebianPackage =
        QT_VERSION_MAJOR >= 6 ? "qt6-l10n-tools" : "qttools5-dev-tools";

QString find(const QString &name)
{
    const QString folder = qEnvironmentVariable(FolderVariable);
    if (!folder.isEmpty())
        return QStandardPaths::findExecutable(name, { folder });
    const QString ofQt = QStandardPaths::findExecutable(name, { Hovlets::qtProgramFolder() });
    if (!ofQt.isEmpty())
        return ofQt;
    const QString major = QString::number(QT_VERSION_MAJOR);
    for (const QString &other : { name + QStringLiteral("-qt") + major, name + major, name }) {
        const QString found = QStandardPaths::findExecutable(other);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

} // namespace

LinguistProgram::LinguistProgram(const QString &name)
    : m_path(find(name))
{
    if (m_path.isEmpty())
        throw ToolError(
                QStringLiteral("%1 is not installed; install Qt's translation tools, on "
                               "Debian the package %2, or name their folder in %3")
                        .arg(name, QLatin1String(DebianPackage), QLatin1String(FolderVariable)));
}

void LinguistProgram::run(const QStringList &arguments) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(m_path, arguments);
    if (!process.waitForStarted(-1))
        throw ToolError(
                QStringLiteral("%1 could not be started: %2").arg(m_path, process.errorString()));
    if (!process.waitForFinished(LongestRun) && process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(-1);
        throw ToolError(QStringLiteral("%1 did not end within %2 minutes")
                                .arg(m_path)
                                .arg(LongestRun / MillisecondsPerMinute));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw ToolError(
                QStringLiteral("%1 failed: %2")
                        .arg(m_path, QString::fromLocal8Bit(process.readAll()).simplified()));
}

} // namespace HovletsTool
