// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

class DrawingHost;
class QWidget;

/*!
 * \brief Keeps a list of the visible controls in a file, for tests that move the mouse to them.
 *
 * Each control has a line "key x y" with the position of its centre on the screen. The whole file
 * is replaced when windows or controls have moved.
 */
class ControlsFile : public QObject
{
    Q_OBJECT

public:
    /// \a host and \a window must outlive this object.
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
