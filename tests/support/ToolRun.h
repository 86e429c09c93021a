// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

/*!
 * \brief Runs the program for authors without a display until it exits.
 */
class ToolRun
{
public:
    /// \param command the program, after the words of the command that starts it, if any
    /// \param folder the working directory; empty for that of the test
    explicit ToolRun(const QStringList &arguments, const QMap<QString, QString> &variables = {},
                     const QStringList &command = { QStringLiteral(HOVLETS_PROGRAM) },
                     const QString &folder = {})
    {
        QProcess process;
        process.setWorkingDirectory(folder);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name :
             { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_QUICK_BACKEND" })
            environment.remove(QLatin1String(name));
        for (auto each = variables.begin(); each != variables.end(); ++each)
            environment.insert(each.key(), each.value());
        process.setProcessEnvironment(environment);
        process.start(command.first(), command.mid(1) + arguments);
        if (!process.waitForFinished(LongestRun) || process.exitStatus() != QProcess::NormalExit) {
            error = process.errorString().toUtf8() + process.readAllStandardError();
            process.kill();
            process.waitForFinished();
            return;
        }
        status = process.exitCode();
        output = process.readAllStandardOutput();
        error = process.readAllStandardError();
    }

    /// The output as a JSON object; empty if it is not one.
    QJsonObject json() const { return QJsonDocument::fromJson(output).object(); }

    /// For programs that never end, in ms. Tests that bound the time of a program bound its CPU
    /// time, because a busy machine makes it wait.
    static constexpr int LongestRun = 240000;

    int status = -1; // the exit status, or -1 if the program did not exit by itself
    QByteArray output;
    QByteArray error;
};
