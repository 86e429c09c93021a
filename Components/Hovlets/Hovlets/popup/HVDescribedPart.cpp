// SPDX-License-Identifier: Apache-2.0
#include "HVDescribedPart.h"

#include "HVPopupServices.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVDescribedPart::HVDescribedPart(const QWidget &popup)
    : m_popup(popup)
{
}

void HVDescribedPart::set(const QString &key, const QWidget &control, const QPoint &position)
{
    m_described = Described { key, controlPartAt(control, position).id, {}, false };
}

void HVDescribedPart::reset()
{
    m_described.reset();
}

bool HVDescribedPart::contains(QWidget &control, const QPoint &position, HVPopupServices *services)
{
    if (!m_described || !services)
        return true;
    const HVControlPart::Id part = controlPartAt(control, position).id;
    if (part == m_described->part)
        return true;
    if (m_described->askedPart != part) {
        const QPointer<const QWidget> popup(&m_popup);
        m_described->askedPart = part; // first: the host may run an event loop
        m_described->isSame = false;
        const QString key = services->keyFor(&control);
        if (!popup || !m_described)
            return false;
        if (m_described->askedPart == part)
            m_described->isSame = key == m_described->key;
    }
    return m_described->isSame;
}

} // namespace Hovlets
