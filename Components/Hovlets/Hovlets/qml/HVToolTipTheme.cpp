// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipTheme.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <tuple>

namespace Hovlets {

HVToolTipTheme::HVToolTipTheme(QObject *parent)
    : QObject(parent)
{
    refresh();
}

void HVToolTipTheme::refresh()
{
    const QPalette palette = QToolTip::palette();
    const auto before = std::make_tuple(m_base, m_text, m_link, m_font);
    m_base = palette.color(QPalette::Active, QPalette::ToolTipBase);
    m_text = palette.color(QPalette::Active, QPalette::ToolTipText);
    m_link = palette.color(QPalette::Active, QPalette::Link);
    m_font = QApplication::font();
    if (before != std::make_tuple(m_base, m_text, m_link, m_font))
        Q_EMIT changed();
}

} // namespace Hovlets
