// SPDX-License-Identifier: Apache-2.0
#include "Theme.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QToolTip>

namespace {

void setColors(QPalette &palette, QPalette::ColorRole role, const QColor &color,
               const QColor &disabled)
{
    palette.setColor(role, color);
    palette.setColor(QPalette::Disabled, role, disabled);
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xef, 0xf0, 0xf1));
    setColors(palette, QPalette::Highlight, QColor(0x3d, 0xae, 0xe9), QColor(0xc4, 0xc8, 0xcc));
    palette.setColor(QPalette::Link, QColor(0x1d, 0x63, 0xa8));
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::ToolTipText, QColor(0x23, 0x26, 0x29));
    return palette;
}

QPalette darkPalette()
{
    const QColor text(0xee, 0xee, 0xec);
    const QColor dimmed(0x85, 0x88, 0x8c);
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    setColors(palette, QPalette::WindowText, text, dimmed);
    setColors(palette, QPalette::Text, text, dimmed);
    setColors(palette, QPalette::ButtonText, text, dimmed);
    palette.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::AlternateBase, QColor(0x2b, 0x2f, 0x33));
    setColors(palette, QPalette::Highlight, QColor(0x2a, 0x82, 0xda), QColor(0x50, 0x56, 0x5c));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x66, 0xb8, 0xf0));
    palette.setColor(QPalette::ToolTipBase, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::ToolTipText, text);
    return palette;
}

} // namespace

void applyTheme(bool dark)
{
    const QPalette palette = dark ? darkPalette() : lightPalette();
    // The only style of Qt that uses the palette for everything.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
