// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QString>

class QObject;
class QWidget;

namespace Hovlets {

class HVXmlElement;

/*!
 * \brief Identifies one of the library's popups among the widgets of the application.
 *
 * Hosts encounter popups in event filters, in lists of windows and as the focus widget. A handle
 * says whether a widget is a popup, and what it shows. It neither owns the popup nor notices its
 * deletion: create a handle where you use it, and do not keep it while events are handled. To show
 * a popup, use HVInterface::show() instead. GUI thread only.
 */
class HOVLETS_EXPORT HVPopup
{
public:
    /// A handle for \a object; a null handle if that is null or not a popup.
    explicit HVPopup(const QObject *object);

    /// The visible popup that is not pinned; a null handle if there is none.
    [[nodiscard]] static HVPopup current();

    /// Whether this is a null handle, whose other functions return null, false or an empty string.
    [[nodiscard]] bool isNull() const;

    /// The popup's widget: a window, or a child of the container that the host supplied.
    [[nodiscard]] QWidget *widget() const;

    /// Whether the user has pinned the popup, which then stays as a window.
    [[nodiscard]] bool isPinned() const;

    /// The entry that the popup shows, or null. The popup owns it, and deletes it when it shows
    /// another one.
    [[nodiscard]] HVXmlElement *content() const;

    /*!
     * A text as the popup shows it: translated, and with its placeholders filled. Asks the host for
     * the translation.
     * \param text the source text
     * \param context distinguishes equal texts in translations, such as the entry's key
     * \return the text including its markup; an empty string for a null handle
     */
    [[nodiscard]] QString shownText(const QString &text, const QString &context) const;

private:
    QWidget *m_widget;
};

} // namespace Hovlets
