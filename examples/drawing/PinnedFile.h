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
    /// Restores the popups in the file. They belong to \a window, which must be visible. \a host
    /// and \a window must outlive this object.
    PinnedFile(DrawingHost &host, QWidget &window, const QString &path);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    DrawingHost &m_host;
    QString m_path;
};
