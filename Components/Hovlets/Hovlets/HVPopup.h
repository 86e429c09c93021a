// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QString>

class QObject;
class QWidget;

namespace Hovlets {

class HVXmlElement;

/*!
 * \brief A look at one of the library's popups, among the widgets of the application.
 *
 * Popups are widgets that the library creates; hosts meet them in event filters, in lists of
 * windows and as the focus widget. A handle tells whether a widget is a popup and what it shows. It
 * does not own the popup: get it where you use it, and do not keep it while events are handled. To
 * show a popup, use HVInterface::show() instead. GUI thread only.
 */
class HOVLETS_EXPORT HVPopup
{
public:
    /// The popup \a object; null unless it is one.
    explicit HVPopup(const QObject *object);

    /// The popup that is on screen for the control under the mouse; null if there is none.
    [[nodiscard]] static HVPopup current();

    /// Whether the object is not a popup. Everything else then returns null, false or an empty
    /// string.
    [[nodiscard]] bool isNull() const;

    /// The popup's own widget: a window, or a part of the container that the host supplied.
    [[nodiscard]] QWidget *widget() const;

    /// Whether the user has pinned the popup, which then stays as a window.
    [[nodiscard]] bool isPinned() const;

    /// The entry that it shows, or null. The popup owns it and replaces it with the next one.
    [[nodiscard]] HVXmlElement *content() const;

    /*!
     * A text as the popup shows it: translated, and with its placeholders filled.
     * \param text the source text
     * \param context the context by which translations tell equal texts apart
     * \return the text; markup stays in it
     */
    [[nodiscard]] QString shownText(const QString &text, const QString &context) const;

private:
    QWidget *m_widget;
};

} // namespace Hovlets
