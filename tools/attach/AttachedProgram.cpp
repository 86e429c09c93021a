// SPDX-License-Identifier: Apache-2.0
#include "AttachedProgram.h"

#include "ToolError.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

namespace HovletsTool {

namespace {

constexpr int StatusOfSignals = 128; // as shells do

QString find(const QString &name)
{
    const bool isPath = name.contains(QLatin1Char('/'));
    const QFileInfo info(isPath ? name : QStandardPaths::findExecutable(name));
    if (!info.isFile())
        throw ToolError(QStringLiteral("the program %1 was not found").arg(name));
    if (!info.isExecutable())
        throw ToolError(QStringLiteral("%1 cannot be executed").arg(name));
    return info.absoluteFilePath();
}

/// The Qt that the file names among the libraries that it needs; 0 if there is none, as in scripts.
int qtMajorOf(const QString &program)
{
    QFile file(program);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const uchar *data = file.map(0, file.size());
    if (!data)
        return 0;
    const QByteArray bytes =
            QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(file.size()));
    for (const int major : { 6, 5 }) {
        const QByteArray library = "libQt" + QByteArray::number(major);
        for (const char *module : { "Widgets", "Core" }) {
            if (bytes.contains(library + module + ".so."))
                return major;
        }
    }
    return 0;
}

/// The folder of plug-ins for a Qt, beside this program.
QString pluginsFor(int qtMajor)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(folder.absoluteFilePath(
            QStringLiteral(HOVLETS_LIBRARY_FOLDER "/qt%1/plugins").arg(qtMajor)));
}

bool hasPlugin(const QString &folder)
{
    return QFileInfo(folder + QStringLiteral("/generic/libhovlets.so")).isFile();
}

} // namespace

AttachedProgram::AttachedProgram(const QString &name, int qtMajor)
    : m_program(find(name))
{
    const int found = qtMajorOf(m_program);
    if (qtMajor != 0 && found != 0 && qtMajor != found)
        throw ToolError(
                QStringLiteral("%1 uses Qt %2, not Qt %3").arg(m_program).arg(found).arg(qtMajor));
    int major = qtMajor != 0 ? qtMajor : found;
    if (major == 0)
        throw ToolError(
                QStringLiteral("%1 names no Qt; use --qt 5 or --qt 6 if it is a script that "
                               "starts a Qt program")
                        .arg(m_program));
    m_plugins = pluginsFor(major);
    if (!hasPlugin(m_plugins))
        throw ToolError(
                QStringLiteral("%1 uses Qt %2, and %3 has no plug-in for it; install Hovlets "
                               "for Qt %2")
                        .arg(m_program, QString::number(major), m_plugins));
}

int AttachedProgram::run(const QStringList &arguments, const QJsonObject &plan) const
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        throw ToolError(
                QStringLiteral("no temporary folder can be created: %1").arg(folder.errorString()));
    const QString planFile = folder.filePath(QStringLiteral("attach.json"));
    QFile target(planFile);
    const QByteArray bytes = QJsonDocument(plan).toJson();
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size())
        throw ToolError(
                QStringLiteral("%1 cannot be written: %2").arg(planFile, target.errorString()));
    target.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto prepend = [&](const char *name, const QString &value, QChar separator) {
        const QString old = environment.value(QLatin1String(name));
        environment.insert(QLatin1String(name), old.isEmpty() ? value : value + separator + old);
    };
    prepend("QT_QPA_GENERIC_PLUGINS", QStringLiteral("hovlets"), QLatin1Char(','));
    prepend("QT_PLUGIN_PATH", m_plugins, QDir::listSeparator());
    environment.insert(QStringLiteral("HOVLETS_ATTACH"), planFile);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.start(m_program, arguments);
    if (!process.waitForStarted(-1))
        throw ToolError(QStringLiteral("%1 could not be started: %2")
                                .arg(m_program, process.errorString()));
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit)
        return StatusOfSignals + process.exitCode();
    return process.exitCode();
}

QString defaultPackages()
{
    return QDir(QCoreApplication::applicationDirPath())
            .absoluteFilePath(QStringLiteral(HOVLETS_DEFAULT_PACKAGES));
}

} // namespace HovletsTool
