// SPDX-License-Identifier: Apache-2.0
#include "CoverageReport.h"
#include "CoverageScene.h"
#include "TestMain.h"

#include <QtTest/QtTest>

using namespace Hovlets;

namespace {

HVCoverageSettings withOverlay()
{
    HVCoverageSettings settings;
    settings.overlay = true;
    return settings;
}

QWidget *overlayOf(const QWidget &window)
{
    return window.findChild<QWidget *>(text("qt_hovlets_coverage_overlay"));
}

} // namespace

/// Tests the outlines around covered and missing controls.
class tst_HVCoverageOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldOutlineControlsInTheOverlay()
    {
        CoverageScene scene;
        scene.window.show();
        scene.coverage->walk();
        QVERIFY(!overlayOf(scene.window)); // off by default
        scene.coverage->setOverlayVisible(true);
        const QColor green = scene.cornerOf(scene.covered), red = scene.cornerOf(scene.missing);
        QVERIFY2(green.green() > green.red() + 50, qPrintable(green.name()));
        QVERIFY2(red.red() > red.green() + 50, qPrintable(red.name()));
        scene.coverage->setOverlayVisible(false);
        QVERIFY(!overlayOf(scene.window));
    }

    void shouldLetTheMouseThroughTheOverlay()
    {
        CoverageScene scene(withOverlay());
        scene.window.show();
        QTRY_VERIFY(overlayOf(scene.window));
        QVERIFY(overlayOf(scene.window)->geometry().contains(scene.covered->geometry()));
        QCOMPARE(scene.window.childAt(scene.covered->geometry().center()), scene.covered);
        QSignalSpy clicks(scene.covered, &QPushButton::clicked);
        QTest::mouseClick(scene.window.windowHandle(), Qt::LeftButton, {},
                          scene.covered->geometry().center());
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(total(scene.report(), "controls"), 2); // the overlay itself does not count
    }

    void shouldMoveTheOutlinesWithTheControls()
    {
        CoverageScene scene(withOverlay());
        scene.window.show();
        QTRY_VERIFY(overlayOf(scene.window));
        scene.window.resize(400, 500);
        QTRY_COMPARE(overlayOf(scene.window)->size(), QSize(400, 500));
        QTRY_VERIFY(scene.cornerOf(scene.covered).green()
                    > scene.cornerOf(scene.covered).red() + 50);
    }
};

HOVLETS_TEST_MAIN(tst_HVCoverageOverlay)
#include "tst_hvcoverage_overlay.moc"
