// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

namespace Hovlets {

class AttachedHost;

/*!
 * \brief Keeps a JSON file with the controls on screen and the key of the popup up to date.
 *
 * Programs that move a real pointer read it. docs/attach.md describes the file. GUI thread only.
 */
class ScreenReport : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ScreenReport)

public:
    /// Writes \a file whenever what it says has changed. The host must outlive the object.
    ScreenReport(AttachedHost &host, const QString &file);

private:
    void writeIfChanged();

    AttachedHost &m_host;
    QString m_file;
    QByteArray m_written;
    QTimer m_timer;
};

} // namespace Hovlets
