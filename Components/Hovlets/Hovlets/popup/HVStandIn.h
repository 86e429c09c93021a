// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

class QScreen;
class QWindow;

namespace Hovlets {

class HVScene;

/*!
 * \brief A widget that is never shown, and has the place of a control that is not a widget, or that
 * of the window around such controls.
 *
 * Popups describe it as they describe any widget. GUI thread only.
 */
class HVStandIn : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVStandIn)

public:
    /// For \a control in \a scene, which outlives the widget. For the window, both \a parent and
    /// \a control are null.
    HVStandIn(const HVScene &scene, QWidget *parent, QObject *control);

    /// The control; null for the window.
    [[nodiscard]] QObject *control() const;

    /// The content key that the scene knows, or an empty string.
    [[nodiscard]] QString key() const;

    /// The shortcut that the scene knows, or an empty string.
    [[nodiscard]] QString shortcut() const;

    [[nodiscard]] QWindow *sceneWindow() const;

    /// The stand-in at the global \a position in the scene of \a window. Null outside of the
    /// window, and for a window without a scene.
    static HVStandIn *at(const QWindow *window, const QPoint &position);

private:
    const HVScene &m_scene;
    QPointer<QObject> m_control;
};

/// The native window that shows \a widget; null before it exists.
QWindow *windowShowing(const QWidget &widget);

/// The screen of the window that shows \a widget; null if it is unknown.
QScreen *screenShowing(const QWidget &widget);

/// Whether the window that shows \a widget is maximised or fills the screen.
bool isInScreenFillingWindow(const QWidget &widget);

/// As QApplication::widgetAt(), but also finds controls that are not widgets.
QWidget *controlAt(const QPoint &position);

/// \a receiver if it is a widget; for the window of a scene, the stand-in at \a position. Otherwise
/// null.
QWidget *controlReceiving(QObject *receiver, const QPoint &position);

} // namespace Hovlets
