// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtGui/QWheelEvent>

using namespace Hovlets;

/// Tests the settings from 1100 on with a real pointer.
class tst_EndToEndSettings : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHideOnAKeyThatTheFieldStillGets_data()
    {
        QTest::addColumn<int>("setting");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("goes");
        QTest::newRow("unset") << 0 << QStringLiteral("Escape") << false;
        QTest::newRow("Escape") << int(HVDismissOnEscape) << QStringLiteral("Escape") << true;
        QTest::newRow("another") << int(HVDismissOnEscape) << QStringLiteral("x") << false;
        QTest::newRow("any") << int(HVDismissOnAnyKey) << QStringLiteral("x") << true;
        QTest::newRow("modifier") << int(HVDismissOnAnyKey) << QStringLiteral("shift") << false;
    }

    void shouldHideOnAKeyThatTheFieldStillGets()
    {
        QFETCH(int, setting);
        QFETCH(QString, key);
        QFETCH(bool, goes);
        settings().set(HVKeyDismissOnKey, setting);
        m_window->field.setFocus();
        KeyCounter counter;
        m_window->field.installEventFilter(&counter);
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::press(key);
        Pointer::release(key);
        QTRY_COMPARE(counter.presses, 1);
        QCOMPARE(popup()->isVisible(), !goes);
    }

    void shouldHideOnTheWheelOverTheControl()
    {
        settings().set(HVKeyDismissOnKey, int(HVDismissOnWheel));
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::turnWheel();
        QTRY_VERIFY(!popup()->isVisible());
    }

private:
    class KeyCounter : public QObject
    {
    public:
        int presses = 0;

    protected:
        bool eventFilter(QObject *, QEvent *event) override
        {
            presses += event->type() == QEvent::KeyPress ? 1 : 0;
            return false;
        }
    };

    HVContext &settings() { return m_host->manager()->context(); }
};

HOVLETS_TEST_MAIN(tst_EndToEndSettings)
#include "tst_endtoend_settings.moc"
