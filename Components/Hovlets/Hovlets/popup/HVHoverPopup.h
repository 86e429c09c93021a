// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>

class QPoint;
class QWidget;

namespace Hovlets {

class HVManager;
class HVView;
class HVWidget;
class HVXmlElement;

/*!
 * \brief The one popup that comes and goes with the mouse.
 *
 * There is none before the first prepare(). The popup is owned and deleted later, until release()
 * gives it up to the user.
 */
class HVHoverPopup
{
    Q_DISABLE_COPY_MOVE(HVHoverPopup)

public:
    HVHoverPopup() = default;
    ~HVHoverPopup();

    /// Makes the popup if there is none; otherwise gives it \a parent.
    void prepare(HVManager *manager, QWidget *parent);

    /*!
     * Prepares a popup whose content can be replaced.
     *
     * While QML of the popup runs, which is waiting for the host, that is another popup: the old
     * one goes from the screen, and is deleted when its QML has ended.
     */
    void prepareForContent(HVManager *manager);

    /// Forgets the popup, which lives on by itself.
    void release();

    /// Null before the first prepare().
    HVWidget *widget() const;
    HVView *view() const;
    HVXmlElement *content() const;

    bool isVisible() const;

    /// Whether it is on screen with the content for \a key.
    bool isShowing(const QString &key) const;

    /// Keeps a visible popup on screen, even if it is fading out. Always returns true.
    bool keep();

    /*!
     * Keeps or hides the popup when there is no content for \a hovered, the widget at \a position.
     *
     * Returns true if the popup stays: the mouse is near it, and the widget has no ordinary tooltip
     * to show.
     */
    bool keepOrHide(const QPoint &position, const QWidget *hovered);

    /// Hides or activates the popup after a click on \a widget, unless the click was inside it.
    void widgetWasClicked(const QWidget *widget);

private:
    QPointer<HVWidget> m_widget;
};

} // namespace Hovlets
