// SPDX-License-Identifier: Apache-2.0
#include "QmlPopup.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

using namespace Hovlets;

void QmlPopup::trackHover()
{
    settings.set(HVKeyTrackHover, true);
    settings.set(HVKeyHideDelay, 0);
    host = std::make_unique<RecordingHost>(settings, QStringList { folder.path() });
}

void QmlPopup::show(const QByteArray &body, int width, int height)
{
    folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
               "import QtQuick 2.15\nimport com.zandor.hovlets.qml 1.0\n"
               "Rectangle { color: 'white'\nwidth: "
                       + QByteArray::number(width) + "; height: " + QByteArray::number(height)
                       + "\n" + body + "\n}\n");
    if (!HoverBench::show() || !QTest::qWaitForWindowExposed(popup()))
        qFatal("the popup did not show");
    if (!view()->rootObject())
        qFatal("the user interface is wrong:\n%s", body.constData());
}

double QmlPopup::shareOfGreys(const QQuickItem &item, const QSizeF &size)
{
    const QImage all = picture();
    const double ratio = all.devicePixelRatio();
    const QRectF area = item.mapRectToScene(QRectF(QPointF(), size));
    const QRect pixels = QRectF(area.topLeft() * ratio, area.size() * ratio)
                                 .toRect()
                                 .adjusted(2, 2, -2, -2); // edges may be partly covered
    qsizetype greys = 0;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            const int grey = qGray(all.pixel(x, y));
            greys += grey > 5 && grey < 250 ? 1 : 0;
        }
    }
    return double(greys) / (double(pixels.width()) * pixels.height());
}

QString QmlPopup::columns()
{
    const QString column = QStringLiteral("255*mod(X\\,2)");
    return QStringLiteral(
                   "color=black:size=64x48:rate=25:duration=0.2,format=gbrp,geq=r=%1:g=%1:b=%1")
            .arg(column);
}

void QmlPopup::makeClip(const QString &name, const QString &pictures) const
{
    const QString path = folder.path() + QStringLiteral("/Pack.hovlets/Resources/") + name;
    QDir().mkpath(QFileInfo(path).path());
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::MergedChannels);
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 { QStringLiteral("-nostdin"), QStringLiteral("-loglevel"), QStringLiteral("error"),
                   QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), pictures,
                   QStringLiteral("-c:v"), QStringLiteral("ffv1"), QStringLiteral("-pix_fmt"),
                   QStringLiteral("bgr0"), path });
    if (!ffmpeg.waitForFinished(60000) || ffmpeg.exitCode() != 0)
        qFatal("ffmpeg did not make %s: %s", qPrintable(name), ffmpeg.readAll().constData());
}
