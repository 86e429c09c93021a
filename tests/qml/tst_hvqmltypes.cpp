// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVInterface.h"
#include "TestMain.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <memory>

using namespace Hovlets;

namespace {

/// QML's errors for a document that uses each type; empty if there are none.
QString complaint()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\n"
                      "import com.zandor.hovlets.qml 1.0\n"
                      "Item {\n"
                      "    property HVXmlElement entry: HVXmlElement {}\n"
                      "    HVVideoComponent {}\n"
                      "    HVStyledRectangle {}\n"
                      "    HVScrollBar {}\n"
                      "}",
                      QUrl());
    if (!component.isReady())
        return component.errorString();
    const std::unique_ptr<QObject> object(component.create());
    return component.errorString();
}

} // namespace

class tst_HVQmlTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldExistOnceAnInterfaceWasCreated()
    {
        QVERIFY(!complaint().isEmpty());
        HVContext settings;
        const HVInterface host(settings, {});
        QCOMPARE(complaint(), QString());
    }

    void shouldStayRegisteredAfterTheInterfaceAndOnlyOnce()
    {
        const int id = qmlTypeId("com.zandor.hovlets.qml", 1, 0, "HVScrollBar");
        QVERIFY(id >= 0);
        HVContext settings;
        const HVInterface host(settings, {});
        QCOMPARE(qmlTypeId("com.zandor.hovlets.qml", 1, 0, "HVScrollBar"), id);
        QCOMPARE(complaint(), QString());
    }

    /// Hosts that unload plug-ins with QML types clear them.
    void shouldBeRegisteredAgainAfterTheHostClearedAllTypes()
    {
        qmlClearTypeRegistrations();
        QVERIFY(!complaint().isEmpty());
        HVContext settings;
        const HVInterface host(settings, {});
        QCOMPARE(complaint(), QString());
    }
};

HOVLETS_TEST_MAIN(tst_HVQmlTypes)
#include "tst_hvqmltypes.moc"
