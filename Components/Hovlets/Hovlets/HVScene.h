// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <memory>

class QPoint;
class QWidget;
class QWindow;

namespace Hovlets {

class HVStandIn;

/*!
 * \brief A window whose controls are not widgets, and which popups can describe nevertheless.
 *
 * The QML module Hovlets derives from it for windows of Qt Quick. Derive from it for a window that
 * draws its controls in another way. Do not use it for widgets: the library finds them by itself.
 *
 * While the mouse rests, the scene sends QEvent::ToolTip as Qt does for widgets, with the same
 * delays: to a widget that is never shown and has the control's place, then to those of the
 * controls around it, and to that of the window. The library responds if it watches the mouse
 * (HVKeyTrackHover), and the control is then treated like a widget. HVInterface::keyForObject() and
 * shortCutForObject() receive the control itself.
 *
 * Needs a QApplication; without one it does nothing. Points are global, in pixels. GUI thread only.
 */
class HOVLETS_EXPORT HVScene : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVScene)

public:
    /// A scene in \a window, which must not be null, becomes its parent and owns it.
    explicit HVScene(QWindow *window);
    ~HVScene() override;

    /// The scene in \a window, or null.
    [[nodiscard]] static HVScene *of(const QWindow *window);

    /// The window that the scene is in.
    [[nodiscard]] QWindow *window() const;

    /// The control for which \a widget receives events; null if that is not a widget of a scene, or
    /// is that of the window.
    [[nodiscard]] static QObject *controlOf(const QWidget *widget);

    /// The widget of the control that has the keyboard focus, else that of the window. Its object
    /// name is the key that the scene knows. Null without a QApplication.
    [[nodiscard]] QWidget *focusWidget();

    /// Call when \a control is no longer visible: a popup that describes it hides. A control that
    /// is destroyed needs no call.
    void controlHidden(const QObject *control);

protected:
    /// The control at \a position, then the controls around it, outwards. Called at each move of
    /// the mouse while a popup is visible, and when the mouse rests: answer within milliseconds.
    [[nodiscard]] virtual QList<QObject *> controlsAt(const QPoint &position) const = 0;

    /// The visible part of a control that controlsAt() returned.
    [[nodiscard]] virtual QRect geometryOf(const QObject *control) const = 0;

    /// The content key of a control. By default an empty string, and the host is asked for it.
    [[nodiscard]] virtual QString keyOf(const QObject *control) const;

    /// The current shortcut of a control, in place of that in the content; by default an empty
    /// string. The host can replace it as well.
    [[nodiscard]] virtual QString shortcutOf(const QObject *control) const;

    /// The control that has the keyboard focus, then the controls around it, outwards. By default
    /// empty.
    [[nodiscard]] virtual QList<QObject *> focusedControls() const;

    /// Watches the window for moves of the mouse and of itself. Consumes no event; an override must
    /// call it.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    friend class HVStandIn;

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
