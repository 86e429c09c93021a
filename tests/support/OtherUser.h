// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <unistd.h>

/*!
 * \brief A user to whom permissions apply: the current one, or for root, another user.
 */
class OtherUser
{
public:
    OtherUser()
    {
        if (::geteuid() != 0)
            return;
        const QString program = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
        m_lack = program.isEmpty() ? QStringLiteral("setpriv is not installed") : QString();
        m_prefix = QStringList { program,
                                 QStringLiteral("--reuid"),
                                 QStringLiteral("65534"),
                                 QStringLiteral("--regid"),
                                 QStringLiteral("65534"),
                                 QStringLiteral("--clear-groups") };
    }

    /*!
     * Gives the user access to a folder of this test, and to the program. Copies the program into
     * the folder if the user cannot reach it where it was built.
     */
    void admitTo(const QString &folder)
    {
        const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        QFile::setPermissions(folder, mode);
        if (!m_lack.isEmpty() || can("-x", m_program))
            return;
        m_program = folder + QStringLiteral("/hovlets");
        QFile::copy(QStringLiteral(HOVLETS_PROGRAM), m_program);
        QFile::setPermissions(m_program, mode);
        if (!can("-x", m_program))
            m_lack = QStringLiteral("another user cannot reach %1").arg(folder);
    }

    /// The reason why nothing can run as that user; null if it can.
    QString lack() const { return m_lack; }

    /// The command that runs the program as that user.
    QStringList command() const { return m_prefix + QStringList { m_program }; }

private:
    bool can(const char *test, const QString &path) const
    {
        const QStringList command =
                m_prefix + QStringList { QStringLiteral("test"), QLatin1String(test), path };
        return QProcess::execute(command.first(), command.mid(1)) == 0;
    }

    QString m_lack;
    QStringList m_prefix;
    QString m_program = QStringLiteral(HOVLETS_PROGRAM);
};
