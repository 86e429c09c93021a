// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLookUp.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QString>

class QWidget;

namespace Hovlets {

class HVHoverPopup;
class HVManager;

/*!
 * \brief Decides what a hover shows: a popup with its content, the popup on screen, or none.
 *
 * Messages and questions to the host run the host's code, which may delete the control, close the
 * popup or show another one. Therefore guarded pointers refer to everything that it may delete. GUI
 * thread only.
 */
class HVHoverShow
{
public:
    HVHoverShow(HVManager &manager, HVHoverPopup &popup);

    /// Whether the current settings allow a popup.
    [[nodiscard]] bool isAllowed() const;

    /// Looks up whether there is content for \a key, for \a widget with the mouse at the global
    /// \a position, or for the fallback key.
    [[nodiscard]] bool hasContent(const QString &key, QWidget &widget,
                                  const QPoint &position) const;

    /// Does what HVManager::show() does once popups are allowed and the popup exists.
    bool show(const QString &key, const QPoint &position, QObject *object);

private:
    struct Hover
    {
        QString key;
        QPoint position; // global, in pixels
        QPointer<QObject> control;
        QPointer<QWidget> widget; // the control, if it is one
        QString partKey = key; // differs between parts of the control with different content
    };

    bool stay(const Hover &hover);
    [[nodiscard]] HVFoundContent find(const QString &key) const;
    [[nodiscard]] HVFoundContent findOwnTip(QWidget *widget, const QPoint &position) const;
    [[nodiscard]] HVFoundContent findFallback(const QString &fallbackKey) const;
    bool present(const Hover &hover, HVXmlElement *entry, HVFoundContent found);
    void fillInShortcut(const Hover &hover, HVXmlElement &entry) const;

    HVManager &m_manager;
    HVHoverPopup &m_popup;
};

} // namespace Hovlets
