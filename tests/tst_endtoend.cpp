// SPDX-License-Identifier: Apache-2.0
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <QtCore/QHash>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QHelpEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolTip>

#include <cstring>

using namespace Hovlets;

namespace {

constexpr auto OtherApplication = "--other-application";

/// Has the toolkit ask for tooltips sooner; when it asks is no concern of these tests.
class ImpatientStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        if (hint == SH_ToolTip_WakeUpDelay || hint == SH_ToolTip_FallAsleepDelay)
            return 150;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
};

/// A window of a host with controls, and what the toolkit asked tooltips for.
class HostWindow : public QWidget
{
public:
    HostWindow()
    {
        resize(400, 200);
        field.move(10, 150);
        for (const char *name : { "a", "b", "disabled", "unknown", "silent" }) {
            auto *button = new QPushButton(QString::fromUtf8(name), this);
            button->setObjectName(QString::fromUtf8(name));
            button->setGeometry(10 + 75 * buttons.size(), 10, 70, 30);
            buttons.insert(button->objectName(), button);
        }
        button("disabled").setEnabled(false);
        button("unknown").setToolTip(QStringLiteral("Its own"));
        qApp->installEventFilter(this);
    }

    QPushButton &button(const char *name) const { return *buttons.value(QString::fromUtf8(name)); }

    QPoint centerOf(const char *name) const
    {
        return button(name).mapToGlobal(button(name).rect().center());
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::ToolTip)
            asked += object->objectName();
        return false;
    }

    QLineEdit field { this };
    QHash<QString, QPushButton *> buttons;
    QStringList asked;
};

/// A host that watches the mouse by itself and tells the library.
class ForwardingHost : public HVInterface
{
public:
    ForwardingHost(HVContext &settings, const QStringList &paths)
        : HVInterface(settings, paths)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseMove:
            return mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
            return mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::ToolTip:
            return show(keyForObject(object), static_cast<QHelpEvent *>(event)->globalPos(),
                        object);
        default:
            return false;
        }
    }
};

bool isToolTipShown(const QString &text)
{
    return QToolTip::isVisible() && QToolTip::text() == text;
}

} // namespace

class tst_EndToEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_folder.addPackage(
                QStringLiteral("Pack"),
                { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("disabled") });
        // Indexed later, so it is asked first.
        m_german.addControlFile(QStringLiteral("German"), QStringLiteral("content"),
                                "<hovlets locale='de_DE'>"
                                "<hovlet key='a'><title>Deutsch</title></hovlet>"
                                "<hovlet key='unknown'><title>Auch das</title></hovlet>"
                                "</hovlets>");
        const QByteArray ui = R"(import QtQuick 2.15
Rectangle {
    id: root
    width: 200; height: 100; color: "steelblue"
    property int clicks: 0
    property string title: hovlet.childElement("title").content
    MouseArea { width: 100; height: 100; onClicked: ++clicks }
    MouseArea { id: pin; x: 100; width: 100; height: 100; onClicked: hovletView.reserved = true }
    Component.onCompleted: {
        hovletView.setItemCursor(root, "IBeamCursor", "")
        hovletView.setItemCursor(pin, "PointingHandCursor", "")
    }
})";
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), ui);
        m_german.add(QStringLiteral("German.hovlets/ui/HovletsUI.qml"), ui);
    }

    void init()
    {
        Pointer::moveAway();
        HVContext settings;
        settings.set(HVKeyTrackHover, true);
        settings.set(HVKeyHideFadeDuration, 0);
        settings.set(HVKeyHideDelay, 60000);
        m_host = std::make_unique<RecordingHost>(settings,
                                                 QStringList { m_folder.path(), m_german.path() });
        showWindow(QPoint(400, 300));
    }

    void cleanup()
    {
        Pointer::moveAway();
        m_host.reset();
        m_window.reset();
        QToolTip::hideText();
    }

    void shouldShowBesideThePointer()
    {
        m_window->field.setFocus();
        QVERIFY(hover("a"));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
        QCOMPARE(popup()->windowOpacity(), 1.0);
        QTRY_COMPARE(pixelOnScreen(popup()->pos() + QPoint(50, 50)), QColor("steelblue"));
        // The keys go where they went.
        QVERIFY(m_window->isActiveWindow());
        QVERIFY(m_window->field.hasFocus());
        QCOMPARE(popup()->windowHandle()->transientParent(), m_window->windowHandle());
        QVERIFY(!QToolTip::isVisible());
    }

    void shouldShowTheNextControl()
    {
        QVERIFY(hover("a"));
        QVERIFY(hover("b"));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
        QCOMPARE(title(), QStringLiteral("Title of b"));
    }

    void shouldLeaveAnUnknownControlToItsOwnTooltip()
    {
        QVERIFY(hover("a"));
        QVERIFY(rest(m_window->centerOf("unknown"),
                     [&] { return isToolTipShown(QStringLiteral("Its own")); }));
        QVERIFY(!popup()->isVisible());
    }

    void shouldStayOverAnUnknownControlWithoutATooltipNearIt()
    {
        m_host->manager()->context().set(HVKeySafeMargin, QSize(500, 500));
        QVERIFY(hover("a"));
        m_window->asked.clear();
        QVERIFY(restOn("silent"));
        QVERIFY(isShowing("a"));
    }

    void shouldHideOverAnUnknownControlAwayFromIt()
    {
        QVERIFY(hover("a"));
        QVERIFY(rest(m_window->centerOf("silent"), [&] { return !popup()->isVisible(); }));
        QVERIFY(m_window->asked.contains(QStringLiteral("silent")));
    }

    void shouldHideSomeTimeAfterThePointerHasLeft()
    {
        QVERIFY(hover("a"));
        QVERIFY(!timer()->isActive());
        m_host->manager()->context().set(HVKeyHideDelay, 100);
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldStayWhenThePointerComesBack_data()
    {
        QTest::addColumn<bool>("toThePopup");
        QTest::newRow("to the control") << false;
        QTest::newRow("to the popup") << true;
    }

    void shouldStayWhenThePointerComesBack()
    {
        QFETCH(bool, toThePopup);
        QVERIFY(hover("a"));
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(timer()->isActive());
        Pointer::moveTo(toThePopup ? popup()->geometry().center() : m_window->centerOf("a"));
        QTRY_VERIFY(!timer()->isActive());
        QVERIFY(isShowing("a"));
    }

    void shouldHideOnAClickOutside()
    {
        QSignalSpy clicked(&m_window->button("a"), &QPushButton::clicked);
        QVERIFY(hover("a"));
        Pointer::click();
        QTRY_VERIFY(!popup()->isVisible());
        QTRY_COMPARE(clicked.count(), 1); // which goes where it was meant to
    }

    void shouldActivateRatherThanHideWhenItMustStayOpen()
    {
        QVERIFY(hover("a"));
        m_host->view()->setStayOpen(true);
        QSignalSpy clicked(&m_window->button("a"), &QPushButton::clicked);
        Pointer::click();
        QTRY_COMPARE(clicked.count(), 1);
        QVERIFY(isShowing("a"));
    }

    void shouldTakeAClickInside()
    {
        QVERIFY(hover("a"));
        Pointer::moveTo(popup()->pos() + QPoint(50, 50));
        Pointer::click();
        QTRY_COMPARE(m_host->view()->rootObject()->property("clicks").toInt(), 1);
        QVERIFY(isShowing("a"));
        // Its edge outside the view is a part of it, too.
        m_clicksOnPopup = 0;
        popup()->installEventFilter(this);
        Pointer::moveTo(popup()->geometry().bottomRight());
        Pointer::click();
        QTRY_COMPARE(m_clicksOnPopup, 1);
        QVERIFY(isShowing("a"));
    }

    void shouldHideWhenTheApplicationIsDeactivated()
    {
        QVERIFY(hover("a"));
        QProcess other;
        other.setProcessChannelMode(QProcess::ForwardedChannels);
        other.start(QCoreApplication::applicationFilePath(),
                    { QString::fromUtf8(OtherApplication) });
        QVERIFY(other.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(!popup()->isVisible(), 20000);
        QVERIFY(QGuiApplication::applicationState() != Qt::ApplicationActive);
        other.kill();
        other.waitForFinished();
    }

    void shouldStayWhereItIsForTheSameControl()
    {
        QVERIFY(hover("a"));
        const QPoint position = popup()->pos();
        m_window->asked.clear();
        QVERIFY(restOn("a", QPoint(20, 8)));
        QCOMPARE(popup()->pos(), position);
        QVERIFY(isShowing("a"));
    }

    void shouldStayOnTheScreen_data()
    {
        QTest::addColumn<QPoint>("corner");
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<Qt::Alignment>("atEdge"); // of the screen, where the popup ends
        const int far = 5000;
        QTest::newRow("top left") << QPoint(0, 0) << QByteArray("a") << Qt::Alignment();
        QTest::newRow("top right")
                << QPoint(far, 0) << QByteArray("disabled") << Qt::Alignment(Qt::AlignRight);
        QTest::newRow("bottom left")
                << QPoint(0, far) << QByteArray("a") << Qt::Alignment(Qt::AlignBottom);
        QTest::newRow("bottom right") << QPoint(far, far) << QByteArray("disabled")
                                      << Qt::Alignment(Qt::AlignRight | Qt::AlignBottom);
    }

    void shouldStayOnTheScreen()
    {
        QFETCH(QPoint, corner);
        QFETCH(QByteArray, control);
        QFETCH(Qt::Alignment, atEdge);
        const QRect area = m_window->screen()->availableGeometry();
        const QRect frame = m_window->frameGeometry();
        const QPoint last = area.bottomRight() + QPoint(1, 151) // the controls stay in view
                - QPoint(frame.width(), frame.height());
        showWindow({ qMin(corner.x(), last.x()), qMin(corner.y(), last.y()) });
        QVERIFY(hover(control.constData()));
        const QRect shown = popup()->geometry();
        QVERIFY(area.contains(shown));
        QCOMPARE(shown.right() == area.right(), atEdge.testFlag(Qt::AlignRight));
        QCOMPARE(shown.bottom() == area.bottom(), atEdge.testFlag(Qt::AlignBottom));
    }

    void shouldPinByAClick()
    {
        QVERIFY(hover("a"));
        QPointer<HVWidget> pinned = popup();
        const QPoint position = pinned->pos();
        Pointer::moveTo(position + QPoint(150, 50));
        Pointer::click();
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        QCOMPARE(pinned->windowTitle(), QStringLiteral("Title of a"));
        QVERIFY(pinned->testAttribute(Qt::WA_DeleteOnClose));

        QVERIFY(hover("b"));
        QVERIFY(pinned && pinned->isVisible());
        QVERIFY(popup() != pinned);
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 190)));
        Pointer::click();
        QTRY_VERIFY(!popup()->isVisible());
        QVERIFY(pinned->isVisible());

        m_host.reset(); // it lives on by itself
        QVERIFY(pinned->isVisible());
        pinned->close();
        QTRY_VERIFY(!pinned);
    }

    void shouldShowTheCursorBelowOnceAnItemHasNone()
    {
        QVERIFY(hover("a"));
        const QQuickItem *root = m_host->view()->rootObject();
        const QPoint left = popup()->pos() + QPoint(50, 50);
        Pointer::moveTo(left);
        QTRY_VERIFY(m_host->view()->underMouse());
        Pointer::moveTo(left + QPoint(100, 0));
        QTRY_COMPARE(popup()->windowHandle()->cursor().shape(), Qt::PointingHandCursor);
        m_host->view()->setItemCursor(root->childItems().at(1), QString(), QString());
        Pointer::moveTo(left + QPoint(90, 0));
        QTRY_COMPARE(popup()->windowHandle()->cursor().shape(), Qt::IBeamCursor);
    }

    void shouldShowWhileExactlyTheRequiredKeysAreHeld()
    {
        const QString shift = QStringLiteral("shift");
        const QString control = QStringLiteral("ctrl");
        m_host->manager()->context().set(HVKeyRequiredModifiers, int(Qt::ShiftModifier));
        QVERIFY(restOn("a"));
        QVERIFY(!popup() || !popup()->isVisible());

        Pointer::press(shift);
        Pointer::press(control);
        const bool asked = restOn("b");
        const bool withBoth = popup() && popup()->isVisible();
        Pointer::release(control);
        const bool shown = hover("a");
        Pointer::release(shift);
        QVERIFY(asked);
        QVERIFY(!withBoth);
        QVERIFY(shown);
    }

    void shouldLeaveAllToTooltipsWhileSuspended()
    {
        m_host->manager()->context().set(HVKeySuspended, true);
        m_window->button("a").setToolTip(QStringLiteral("Plain"));
        QVERIFY(rest(m_window->centerOf("a"),
                     [&] { return isToolTipShown(QStringLiteral("Plain")); }));
        QVERIFY(!popup() || !popup()->isVisible());
    }

    void shouldSpeakTheLanguageOfTheUser()
    {
        m_host->manager()->context().set(HVKeyLocale, QStringLiteral("de_DE"));
        QVERIFY(hover("a"));
        QCOMPARE(title(), QStringLiteral("Deutsch"));
        QVERIFY(hover("b"));
        QCOMPARE(title(), QStringLiteral("Title of b"));
    }

    void shouldFallBackToAnotherLanguage()
    {
        m_host->manager()->context().set(HVKeyFallbackLocale, QStringLiteral("de_DE"));
        QVERIFY(hover("a"));
        QCOMPARE(title(), QStringLiteral("Title of a"));
        QVERIFY(hover("unknown"));
        QCOMPARE(title(), QStringLiteral("Auch das"));
    }

    void shouldShowTheFallbackForAnUnknownControl()
    {
        m_host->manager()->context().set(HVKeyFallbackKey, QStringLiteral("b"));
        QVERIFY(rest(m_window->centerOf("unknown"), [&] { return isShowing("b"); }));
        QVERIFY(!QToolTip::isVisible());
    }

    void shouldShowForADisabledControl() { QVERIFY(hover("disabled")); }

    void shouldServeAHostThatForwardsItsEvents()
    {
        m_host.reset();
        HVContext settings;
        settings.set(HVKeyHideFadeDuration, 0);
        const ForwardingHost host(settings, { m_folder.path() });
        HVWidget *popup = nullptr;
        QVERIFY(rest(m_window->centerOf("a"), [&] {
            popup = anyPopup();
            return popup && popup->isVisible();
        }));
        const auto *hideTimer = popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(hideTimer->isActive());
        Pointer::moveTo(m_window->centerOf("a"));
        QTRY_VERIFY(!hideTimer->isActive());
        QVERIFY(popup->isVisible());
        Pointer::click();
        QTRY_VERIFY(!popup->isVisible());
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        m_clicksOnPopup += event->type() == QEvent::MouseButtonRelease;
        return QObject::eventFilter(object, event);
    }

private:
    HVWidget *popup() const { return m_host->popup(); }
    QTimer *timer() const
    {
        return popup()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QString title() const { return m_host->view()->rootObject()->property("title").toString(); }

    bool isShowing(const char *key) const
    {
        const HVXmlElement *content = m_host->view() ? m_host->view()->content() : nullptr;
        return content && popup()->isVisible()
                && content->attribute(QStringLiteral("key")) == QString::fromUtf8(key);
    }

    /*!
     * Rests the pointer at \a position until \a happened. As a hand does, it moves a bit now and
     * then: the toolkit asks for no tooltip when a window comes up after the last move.
     */
    template <typename Condition> static bool rest(const QPoint &position, Condition happened)
    {
        for (int i = 0; i < 10; ++i) {
            Pointer::moveTo(position + QPoint(i % 2, 0));
            if (QTest::qWaitFor(happened, 1000))
                return true;
        }
        return false;
    }

    bool hover(const char *name)
    {
        return rest(m_window->centerOf(name), [&] { return isShowing(name); });
    }

    /// Rests the pointer until the toolkit has asked for a tooltip.
    bool restOn(const char *name, const QPoint &offset = {})
    {
        return rest(m_window->centerOf(name) + offset,
                    [&] { return m_window->asked.contains(QString::fromUtf8(name)); });
    }

    static HVWidget *anyPopup()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *popup = qobject_cast<HVWidget *>(window))
                return popup;
        }
        return nullptr;
    }

    void showWindow(const QPoint &position)
    {
        m_window = std::make_unique<HostWindow>();
        m_window->move(position);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_COMPARE(m_window->pos(), position);
    }

    PackageFolder m_folder;
    PackageFolder m_german;
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<RecordingHost> m_host;
    int m_clicksOnPopup = 0;
};

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], OtherApplication) == 0) {
        QApplication application(argc, argv);
        QWidget window;
        window.resize(50, 50);
        window.show();
        return QApplication::exec();
    }
    QApplication::setStyle(new ImpatientStyle);
    return runTest(argc, argv, []() -> QObject * { return new tst_EndToEnd; });
}

#include "tst_endtoend.moc"
