// SPDX-License-Identifier: Apache-2.0
#include "PopupLook.h"

#include "HostPaths.h"

#include <HVInterface.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>

namespace HovletsTool {

using namespace Hovlets;

namespace {

QPalette paletteFor(bool dark)
{
    QPalette palette = QApplication::style()->standardPalette();
    if (!dark) {
        palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xdc));
        palette.setColor(QPalette::ToolTipText, Qt::black);
        return palette;
    }
    const QColor text(0xf0, 0xf0, 0xf0);
    palette = QPalette(QColor(0x40, 0x40, 0x40), QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    for (const QPalette::ColorRole role :
         { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText })
        palette.setColor(role, text);
    palette.setColor(QPalette::ToolTipBase, QColor(0x2b, 0x2b, 0x2b));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb4, 0xff));
    return palette;
}

} // namespace

void applyLook(const PopupLook &look)
{
    QApplication::setStyle(QStringLiteral("Fusion")); // available on every machine
    const QPalette palette = paletteFor(look.dark);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    if (look.fontSize > 0) {
        QFont font = QApplication::font();
        font.setPointSizeF(look.fontSize);
        QApplication::setFont(font);
    }
}

HVContext contextFor(const PopupLook &look)
{
    HVContext context;
    context.set(HVKeyHideDelay, 0);
    context.set(HVKeyMessageLevel, HVMessageDebug);
    context.set(HVKeyDocumentationEnabled, true); // shows links to topics
    context.set(HVKeySimpleMode, look.simple);
    const auto set = [&context](contextKey key, const std::string &value) {
        if (!value.empty())
            context.set(key, QString::fromLocal8Bit(value.c_str()));
    };
    set(HVKeyLocale, look.locale);
    set(HVKeyFallbackLocale, look.fallbackLocale);
    if (const QString file = keyDataFile(look.keyData); !file.isEmpty())
        context.set(HVKeyKeyDataFile, file);
    if (const QString folder = extraPath(look.extraPath); !folder.isEmpty())
        context.set(HVKeyExtraComponentPath, folder);
    return context;
}

} // namespace HovletsTool
