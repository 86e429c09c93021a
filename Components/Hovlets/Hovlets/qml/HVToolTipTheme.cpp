// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipTheme.h"

#include "HVToolTipSample.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <tuple>

namespace Hovlets {

namespace {

/// Desktops without such a font answer with their general one.
QFont desktopFixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.family() == QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()) {
        font.setFamily(QStringLiteral("monospace"));
        font.setStyleHint(QFont::TypeWriter); // where no font has that name
    }
    return font;
}

} // namespace

HVToolTipTheme::HVToolTipTheme(QObject *parent)
    : QObject(parent)
{
    refresh();
}

void HVToolTipTheme::setSurface(bool isRounded, bool isFramed)
{
    if (isRounded == m_isRounded && isFramed == m_isFramed)
        return;
    m_isRounded = isRounded;
    m_isFramed = isFramed;
    Q_EMIT surfaceChanged();
}

void HVToolTipTheme::refresh(bool isExact)
{
    const QPalette application = QApplication::palette();
    const HVToolTipSample sample = toolTipSample();
    Values values;
    values.base = sample.palette.color(QPalette::Active, QPalette::ToolTipBase);
    values.text = sample.palette.color(QPalette::Active, QPalette::ToolTipText);
    values.link = sample.palette.color(QPalette::Active, QPalette::Link);
    values.font = sample.font;
    values.fixedFont = desktopFixedFont();
    values.windowBase = application.color(QPalette::Active, QPalette::Base);
    values.windowText = application.color(QPalette::Active, QPalette::Text);
    values.accent = application.color(QPalette::Active, QPalette::Highlight);
    values.isExact = isExact || sample.hasStyledColors;
    const auto all = [](const Values &v) {
        return std::tie(v.base, v.text, v.link, v.font, v.fixedFont, v.windowBase, v.windowText,
                        v.accent, v.isExact);
    };
    if (all(values) == all(m_values))
        return;
    m_values = values;
    Q_EMIT changed();
}

} // namespace Hovlets
