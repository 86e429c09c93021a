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
 * \brief Decides what a hover leads to: a popup for its content, the one on screen, or none.
 *
 * Messages and questions to the host run the host's code, which may delete the control, close the
 * popup or show another: whatever such code may delete is held by a guarded pointer. GUI thread
 * only.
 */
class HVHoverShow
{
public:
    HVHoverShow(HVManager &manager, HVHoverPopup &popup);

    /// Whether the settings allow a popup right now.
    [[nodiscard]] bool isAllowed() const;

    /// As HVManager::show(), once that is so and the popup exists.
    bool show(const QString &key, const QPoint &position, QObject *object);

private:
    struct Hover
    {
        QString key;
        QPoint position; // global, in pixels
        QPointer<QObject> control;
        QPointer<QWidget> widget; // the control, if it is one
    };

    HVFoundContent find(const QString &key) const;
    HVFoundContent findFallback(const QString &fallbackKey) const;
    bool present(const Hover &hover, HVXmlElement *entry, HVFoundContent found);
    void fillInShortcut(const Hover &hover, HVXmlElement &entry) const;

    HVManager &m_manager;
    HVHoverPopup &m_popup;
};

} // namespace Hovlets
