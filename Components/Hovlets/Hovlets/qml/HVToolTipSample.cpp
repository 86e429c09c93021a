// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipSample.h"

#include <QtCore/QFile>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

namespace Hovlets {

namespace {

/// The application's style sheet, of which Qt may know only the file.
QByteArray styleSheet()
{
    const QString sheet = qApp->styleSheet();
    const QLatin1String scheme("file:///");
    if (!sheet.startsWith(scheme))
        return sheet.toUtf8();
    QFile file(sheet.mid(scheme.size()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

HVToolTipSample toolTipSample()
{
    HVToolTipSample sample { QToolTip::palette(), QApplication::font() };
    if (!styleSheet().contains("QToolTip"))
        return sample;
    QTipLabel styled;
    const QFont unstyled = QApplication::font(&styled);
    styled.ensurePolished();
    // Style sheets do not override colours that a widget sets itself, so this one sets none.
    const QPalette colors = styled.palette();
    const auto apply = [&](QPalette::ColorRole from, QPalette::ColorRole to) {
        if (!colors.isBrushSet(QPalette::Active, from))
            return;
        sample.palette.setColor(to, colors.color(QPalette::Active, from));
        sample.hasStyledColors = true;
    };
    apply(styled.backgroundRole(), QPalette::ToolTipBase);
    apply(styled.foregroundRole(), QPalette::ToolTipText);
    if (styled.font() != unstyled)
        sample.font = styled.font();
    return sample;
}

} // namespace Hovlets
