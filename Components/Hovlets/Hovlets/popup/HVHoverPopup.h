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
 * \brief The one popup that shows and hides as the mouse moves.
 *
 * It does not exist before the first prepare(). This class owns the popup and deletes it later,
 * unless release() leaves it to the user.
 */
class HVHoverPopup
{
    Q_DISABLE_COPY_MOVE(HVHoverPopup)

public:
    HVHoverPopup() = default;
    ~HVHoverPopup();

    /// Creates the popup if there is none; otherwise changes its parent to \a parent.
    void prepare(HVManager *manager, QWidget *parent);

    /*!
     * Prepares a popup whose content can be replaced.
     *
     * While the popup's QML is waiting for the host, this creates another popup. The old one is
     * hidden, and deleted when its QML has ended.
     */
    void prepareForContent(HVManager *manager);

    /// Gives up the popup, which continues to exist independently.
    void release();

    /// Null before the first prepare().
    [[nodiscard]] HVWidget *widget() const;
    [[nodiscard]] HVView *view() const;
    [[nodiscard]] HVXmlElement *content() const;

    [[nodiscard]] bool isVisible() const;

    /// Whether the popup is visible with the content for \a key.
    [[nodiscard]] bool isShowing(const QString &key) const;

    /// Keeps a visible popup on screen, even if it is fading out. Always returns true.
    bool keep();

    /*!
     * Keeps or hides the popup if there is no content for \a hovered, the widget at \a position.
     *
     * Returns true if the popup stays because the mouse is near it and the widget has no ordinary
     * tooltip to show.
     */
    bool keepOrHide(const QPoint &position, const QPointer<QWidget> &hovered);

    /// Hides or activates the popup after a click on \a widget, unless the click was inside it.
    void widgetWasClicked(const QWidget *widget);

private:
    QPointer<HVWidget> m_widget;
};

} // namespace Hovlets
