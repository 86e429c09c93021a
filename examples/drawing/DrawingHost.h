// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Hovlets/HVInterface.h>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class Canvas;
class HelpWindow;

/*!
 * \brief Answers the library's questions: keys, shortcuts, documentation, windows.
 *
 * The library itself watches the mouse (HVKeyTrackHover), so no events are forwarded.
 */
class DrawingHost : public Hovlets::HVInterface
{
    Q_OBJECT

public:
    /// \a help is not owned and must outlive this object.
    DrawingHost(HVContext &context, const QStringList &dataPaths, HelpWindow &help);

    /// Gives pinned popups a tool window of \a parent, or none if it is null.
    void setPinnedParent(QWidget *parent) { m_pinnedParent = parent; }

    /// Keeps popups off what was drawn last on \a canvas.
    void setCanvas(const Canvas *canvas);

    QWidget *createWindow(Hovlets::HVWindowType type) override;
    QString keyForObject(QObject *object) override;
    bool openExternalResource(Hovlets::HVExternalResourceType type,
                              const QString &resource) override;
    QString shortCutForObject(const QString &key, QObject *object,
                              const QString &shortcut) override;

Q_SIGNALS:
    /// Emitted when a link in a popup was clicked; \a what says what was opened or could not be.
    void opened(const QString &what);

private:
    void keepDrawingClear();

    HelpWindow &m_help;
    QPointer<const Canvas> m_canvas;
    QPointer<QWidget> m_pinnedParent;
};
