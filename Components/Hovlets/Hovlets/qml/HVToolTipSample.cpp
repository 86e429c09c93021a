// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipSample.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

QTipLabel::QTipLabel(const QPalette &palette)
{
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setPalette(palette);
}

namespace Hovlets {

namespace {

QColor active(const QPalette &palette, QPalette::ColorRole role)
{
    return palette.color(QPalette::Active, role);
}

} // namespace

HVToolTipSample toolTipSample()
{
    HVToolTipSample sample { QToolTip::palette(), QApplication::font() };
    if (!qApp->styleSheet().contains(QLatin1String("QToolTip")))
        return sample;
    QTipLabel styled(sample.palette);
    const QFont unstyled = QApplication::font(&styled);
    styled.ensurePolished();
    for (const QPalette::ColorRole role : { QPalette::ToolTipBase, QPalette::ToolTipText }) {
        const QColor color = active(styled.palette(), role);
        if (color == active(sample.palette, role))
            continue;
        sample.palette.setColor(role, color);
        sample.hasStyledColors = true;
    }
    if (styled.font() != unstyled)
        sample.font = styled.font();
    return sample;
}

} // namespace Hovlets
