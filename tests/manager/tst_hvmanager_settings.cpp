// SPDX-License-Identifier: Apache-2.0
#include "HVSettings.h"
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDebug>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtGui/QRegion>
#include <QtTest/QtTest>

#include <limits>

using namespace Hovlets;

namespace {

/// \a value as the type that the reference of settings names, converted by Qt.
QVariant converted(const QVariant &value, const QString &type)
{
    if (type.startsWith(text("float")))
        return value.toFloat();
    if (type.startsWith(text("bool")))
        return value.isValid() ? QVariant(value.toBool()) : value;
    if (type.startsWith(text("string")))
        return value.isValid() ? QVariant(value.toString()) : value;
    if (type.startsWith(text("int")))
        return value.toInt();
    if (type.startsWith(text("QSize")))
        return value.toSize();
    if (type.startsWith(text("QRegion")))
        return QVariant::fromValue(value.value<QRegion>());
    qFatal("settings of the type \"%s\" are not tested", qPrintable(type));
    return {};
}

/// Sets what must be on for the library to read the setting.
void makeRead(HVContext &context, contextKey key)
{
    if (key == HVKeySafePathDwell)
        context.set(HVKeySafePath, true);
    else if (key == HVKeyExpandDelay)
        context.set(HVKeySimpleMode, true);
    else if (key == HVKeyKeepClear)
        context.set(HVKeyPlacement, int(HVPlaceBesideControl));
}

/// What a user can see of a hover, and what its content can ask for.
QStringList outcome(contextKey key, const QVariant &value)
{
    HoverScene scene;
    makeRead(scene.context(), key);
    scene.context().set(key, value);
    QStringList seen;
    seen += QString::number(HoverScene::rest(*scene.control));
    seen += QString::number(scene.show(text("a")));
    seen += QString::number(scene.isShowing());
    const bool isDueAtOnce = key == HVKeySafePathDwell || key == HVKeyExpandDelay;
    if (!scene.isShowing() || (isDueAtOnce && value.toInt() == 1)) // perhaps it already happened
        return seen;
    HVWidget *popup = scene.popup();
    const QRect shown = popup->geometry();
    seen += scene.shownKey();
    for (const int number : { shown.x(), shown.y(), shown.width(), shown.height(),
                              int(popup->windowFlags()), int(popup->windowOpacity() * 100) })
        seen += QString::number(number);
    const QPoint onTheWay(280, 260);
    for (const QPoint &point :
         { shown.topLeft() - QPoint(15, 15), shown.center(), onTheWay, QPoint(1, 790) })
        seen += QString::number(popup->isSafe(point));
    const QList<QTimer *> timers = popup->findChildren<QTimer *>();
    for (const QTimer *timer : timers) // some intervals are what remains of a delay
        seen += QString::number(timer->isActive()) + QString::number(timer->interval() / 1000);
    HVView *view = scene.view();
    seen += view->findResource(text("none.png"));
    seen += view->translate(text("Text"), text("Context"));
    seen += view->resourceDirectoryPath();
    seen += QString::number(view->openExternalResource(text("topic")));
    seen += QString::number(view->openExternalResource(text("https://example.org")));
    for (const Qt::Key pressed : { Qt::Key_Escape, Qt::Key_A }) {
        QTest::keyClick(&scene.window, pressed);
        seen += QString::number(scene.isShowing());
    }
    Control other(text("b"), &scene.window);
    other.show();
    seen += QString::number(HoverScene::rest(other));
    seen += scene.shownKey();
    scene.popup()->hideAnimated();
    seen += QString::number(scene.isShowing());
    return seen;
}

} // namespace

/// Tests settings of the wrong type, as configuration files and scripts of hosts set them.
class tst_HVManagerSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadAnyValueAsQtConvertsIt_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("invalid") << QVariant();
        QTest::newRow("word") << QVariant(text("nonsense"));
        QTest::newRow("empty") << QVariant(QString());
        QTest::newRow("number as text") << QVariant(text("1"));
        QTest::newRow("list") << QVariant(QVariantList { 1, text("x") });
        QTest::newRow("bytes") << QVariant(QByteArray("\xff\xfe<"));
        QTest::newRow("negative") << QVariant(-5);
        QTest::newRow("huge") << QVariant(std::numeric_limits<int>::max());
        QTest::newRow("huger") << QVariant(1e300);
        QTest::newRow("sizes") << QVariant(QSize(1 << 30, -(1 << 30)));
    }

    void shouldReadAnyValueAsQtConvertsIt()
    {
        QFETCH(QVariant, value);
        for (const HVSetting &setting : allSettings()) {
            const QVariant expected = converted(value, setting.type);
            if (setting.key == HVKeyRichUiFile && expected.toString().isEmpty())
                ignoreFolderWarning();
            QVERIFY2(outcome(setting.key, value) == expectedOutcome(setting.key, expected),
                     qPrintable(setting.name));
        }
    }

private:
    /// An empty name is that of the package's folder.
    static void ignoreFolderWarning()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(text("file to open is a directory")));
    }

    /// Many values convert to the same one.
    const QStringList &expectedOutcome(contextKey key, const QVariant &value)
    {
        QString name;
        QDebug(&name) << int(key) << value;
        const auto known = m_expected.constFind(name);
        if (known != m_expected.cend())
            return *known;
        if (key == HVKeyRichUiFile && value.toString().isEmpty())
            ignoreFolderWarning();
        return *m_expected.insert(name, outcome(key, value));
    }

    QMap<QString, QStringList> m_expected;
};

HOVLETS_TEST_MAIN(tst_HVManagerSettings)
#include "tst_hvmanager_settings.moc"
