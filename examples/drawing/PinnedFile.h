// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class DrawingHost;
class QWidget;

/// Keeps the pinned popups in a file from one run to the next. It saves them when the window
/// closes, while they are still open.
class PinnedFile : public QObject
{
    Q_OBJECT

public:
    /// Restores what the file has. \a host and \a window must outlive this object, and \a window is
    /// visible: the popups belong to it.
    PinnedFile(DrawingHost &host, QWidget &window, const QString &path);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    DrawingHost &m_host;
    QString m_path;
};
