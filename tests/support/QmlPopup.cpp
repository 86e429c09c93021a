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
