// SPDX-License-Identifier: Apache-2.0
#include "HVDisabledReason.h"
#include "TestMain.h"

#include <QtCore/QObject>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

using namespace Hovlets;

namespace {

constexpr auto Property = "hovletDisabledReason";
const QString Reason = QStringLiteral("Save first.");

} // namespace

class tst_HVDisabledReason : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldSayWhyAControlIsDisabled()
    {
        QPushButton button;
        button.setProperty(Property, Reason);
        HVDisabledReason reason(nullptr);
        QCOMPARE(reason.text(), QString());
        reason.watch(&button, {});
        QCOMPARE(reason.text(), QString());
        QSignalSpy changed(&reason, &HVDisabledReason::changed);
        button.setEnabled(false);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(reason.text(), Reason);
        button.setProperty(Property, QStringLiteral("Really."));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(reason.text(), QStringLiteral("Really."));
        button.setEnabled(true);
        QCOMPARE(reason.text(), QString());
    }

    void shouldTakeTheReasonOfAWidgetAroundTheControl()
    {
        QWidget window;
        QGroupBox box(&window);
        QPushButton button(&box);
        box.setProperty(Property, Reason);
        button.setProperty(Property, QStringLiteral("inner"));
        HVDisabledReason reason(nullptr);
        reason.watch(&button, {});
        box.setEnabled(false);
        QCOMPARE(reason.text(), QStringLiteral("inner"));
        button.setProperty(Property, QVariant());
        QCOMPARE(reason.text(), Reason);
    }

    void shouldTakeTheReasonOfTheActionOfAButton()
    {
        QToolButton button;
        QAction action;
        button.setDefaultAction(&action);
        action.setProperty(Property, Reason);
        HVDisabledReason reason(nullptr);
        reason.watch(&button, {});
        QSignalSpy changed(&reason, &HVDisabledReason::changed);
        action.setEnabled(false);
        QVERIFY(changed.count() > 0);
        QCOMPARE(reason.text(), Reason);
    }

    void shouldTakeTheReasonOfTheEntryOfAMenu()
    {
        QMenu menu;
        QAction *first = menu.addAction(QStringLiteral("First"));
        QAction *second = menu.addAction(QStringLiteral("Second"));
        first->setEnabled(false);
        second->setEnabled(false);
        second->setProperty(Property, Reason);
        menu.popup({ 10, 10 });
        HVDisabledReason reason(nullptr);
        reason.watch(&menu, menu.mapToGlobal(menu.actionGeometry(second).center()));
        QCOMPARE(reason.text(), Reason);
        reason.watch(&menu, menu.mapToGlobal(menu.actionGeometry(first).center()));
        QCOMPARE(reason.text(), QString());
    }

    void shouldForgetTheControl()
    {
        auto button = std::make_unique<QPushButton>();
        button->setEnabled(false);
        button->setProperty(Property, Reason);
        HVDisabledReason reason(nullptr);
        reason.watch(button.get(), {});
        reason.watch(nullptr, {});
        QSignalSpy changed(&reason, &HVDisabledReason::changed);
        button->setEnabled(true);
        button->setEnabled(false);
        QCOMPARE(changed.count(), 0);
        QCOMPARE(reason.text(), QString());

        reason.watch(button.get(), {});
        button.reset();
        QCOMPARE(reason.text(), QString());
    }
};

HOVLETS_TEST_MAIN(tst_HVDisabledReason)
#include "tst_hvdisabledreason.moc"
