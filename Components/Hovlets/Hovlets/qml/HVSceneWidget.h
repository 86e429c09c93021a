// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtQuickWidgets/QQuickWidget>

namespace Hovlets {

/*!
 * \brief A widget that brings its QML to the screen without delay.
 *
 * The base class takes a new size in the next turn of the event loop and renders some milliseconds
 * after a change. A popup would show its old content until then, or have its old size. GUI thread
 * only.
 */
class HVSceneWidget : public QQuickWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVSceneWidget)

public:
    explicit HVSceneWidget(QWidget *parent);

    /// Renders a hidden scene, to have its shaders and fonts loaded when it is shown. The native
    /// window must exist.
    void renderUnseen();

Q_SIGNALS:
    /// Emitted when the colours or the shape of the scene may have changed without new content or a
    /// new file.
    void lookChanged();

protected:
    /// Runs a file, which may be in Qt's resources, unless it is already running.
    void runFile(const QString &path);

    /// Takes the size of the QML's root item and, if visible, renders it.
    void settle();

    void showEvent(QShowEvent *event) override;

private:
    void noticeNewFiles(const QString &folder);
    void render();

    QHash<QString, QDateTime> m_folders; // of files that have run, and when they had changed last
};

} // namespace Hovlets
