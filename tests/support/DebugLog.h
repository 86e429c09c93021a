// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <mutex>

/*!
 * \brief Captures the debug output during its lifetime. Warnings and errors pass through.
 *
 * Only one may exist at a time. Any thread may write.
 */
class DebugLog
{
    Q_DISABLE_COPY_MOVE(DebugLog)

public:
    DebugLog()
    {
        s_log = this;
        s_previous = qInstallMessageHandler(&DebugLog::take);
    }

    ~DebugLog()
    {
        qInstallMessageHandler(s_previous);
        s_log = nullptr;
    }

    QStringList lines() const
    {
        const std::lock_guard<std::mutex> lock(s_mutex);
        return m_lines;
    }

    /// The logging categories of the lines.
    QStringList categories() const
    {
        const std::lock_guard<std::mutex> lock(s_mutex);
        return m_categories;
    }

    /// The number of documents that the parser gave up on.
    int fatalErrors() const
    {
        return int(lines().filter(QStringLiteral("Fatal error at ")).size());
    }

private:
    static void take(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (type != QtDebugMsg) {
            s_previous(type, context, message);
            return;
        }
        const std::lock_guard<std::mutex> lock(s_mutex);
        s_log->m_lines.append(message);
        s_log->m_categories.append(QString::fromLatin1(context.category));
    }

    static inline std::mutex s_mutex;
    static inline DebugLog *s_log = nullptr;
    static inline QtMessageHandler s_previous = nullptr;

    QStringList m_lines;
    QStringList m_categories;
};
