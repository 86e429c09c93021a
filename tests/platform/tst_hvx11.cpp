// SPDX-License-Identifier: Apache-2.0
#include "HVWindowSystem.h"
#include "HVX11.h"
#include "SilentMoves.h"
#include "TestMain.h"

#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

using namespace Hovlets;

class tst_HVX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindWindowsThatQtAssumesElsewhere()
    {
        QWidget window(nullptr, Qt::ToolTip);
        window.setGeometry(0, 0, 100, 50);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QWindow *handle = window.windowHandle();
        SilentMoves::move(window, { 310, 220 });
        QCOMPARE(handle->position(), QPoint());
        QCOMPARE(x11Position(handle->winId()), std::optional<QPoint>({ 310, 220 }));
        QCOMPARE(positionOf(*handle), QPoint(310, 220));
    }

    void shouldFindTheContentOfWindowsWithFrames()
    {
        QWidget window;
        window.setGeometry(150, 140, 200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_VERIFY(window.frameGeometry() != window.geometry());
        QTRY_COMPARE(x11Position(window.winId()),
                     std::optional<QPoint>(window.geometry().topLeft()));
        QCOMPARE(positionOf(*window.windowHandle()), window.geometry().topLeft());
    }

    void shouldNotFindWindowsThatDoNotExist()
    {
        QVERIFY(!x11Position(0));
        QVERIFY(!passX11InputThrough(0));
        QVERIFY(!keepX11PictureInPlace(0));
    }

    /// Qt uses the last one, too.
    void shouldAskTheLastDisplayOfTheCommandLine()
    {
        const QString display = qEnvironmentVariable("DISPLAY");
        QProcess test;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":none"));
        test.setProcessEnvironment(environment);
        test.setProcessChannelMode(QProcess::MergedChannels);
        test.start(QCoreApplication::applicationFilePath(),
                   { QStringLiteral("shouldFindTheContentOfWindowsWithFrames"),
                     QStringLiteral("-display"), QStringLiteral(":none"),
                     QStringLiteral("-display"), display });
        QVERIFY(test.waitForFinished());
        QVERIFY2(test.exitCode() == 0, test.readAll().constData());
    }
};

HOVLETS_TEST_MAIN(tst_HVX11)
#include "tst_hvx11.moc"
