// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

class DrawingHost;
class QWidget;

/*!
 * \brief Keeps a list of the visible controls in a file, so that a test can move the mouse there.
 *
 * One line "key x y" for each, with its centre on the screen. The file is replaced as a whole when
 * windows or controls have moved.
 */
class ControlsFile : public QObject
{
    Q_OBJECT

public:
    /// Both, \a host and \a window, outlive this object.
    ControlsFile(DrawingHost &host, QWidget &window, const QString &path);

private:
    QByteArray list() const;
    void update();

    DrawingHost &m_host;
    QWidget &m_window;
    QString m_path;
    QByteArray m_written;
    QTimer m_timer;
};
