// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"

#include "HVXmlElement.h"
#include "ImpatientStyle.h"

#include <QtQuick/QQuickItem>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

using namespace Hovlets;

namespace {

constexpr auto UserInterface = R"(import QtQuick 2.15
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

} // namespace

HostWindow::HostWindow()
{
    resize(400, 200);
    field.move(10, 150);
    for (const char *name : { "a", "b", "disabled", "unknown", "silent" }) {
        auto *button = new QPushButton(QString::fromUtf8(name), this);
        button->setObjectName(QString::fromUtf8(name));
        button->setGeometry(10 + 75 * int(m_buttons.size()), 10, 70, 30);
        m_buttons.insert(button->objectName(), button);
    }
    button("disabled").setEnabled(false);
    button("unknown").setToolTip(QStringLiteral("Its own"));
    qApp->installEventFilter(this);
}

QPushButton &HostWindow::button(const char *name) const
{
    return *m_buttons.value(QString::fromUtf8(name));
}

QPoint HostWindow::centerOf(const char *name) const
{
    return button(name).mapToGlobal(button(name).rect().center());
}

bool HostWindow::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        asked += object->objectName();
    return false;
}

HoverTest::HoverTest()
{
    QApplication::setStyle(new ImpatientStyle);
    m_folder.addPackage(QStringLiteral("Pack"),
                        { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("disabled") });
    m_german.addControlFile(QStringLiteral("German"), QStringLiteral("content"),
                            "<hovlets locale='de_DE'>"
                            "<hovlet key='a'><title>Deutsch</title></hovlet>"
                            "<hovlet key='unknown'><title>Auch das</title></hovlet>"
                            "</hovlets>");
    m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), UserInterface);
    m_german.add(QStringLiteral("German.hovlets/ui/HovletsUI.qml"), UserInterface);
}

void HoverTest::init()
{
    ImpatientStyle::delay = ImpatientStyle::DefaultDelay;
    Pointer::moveAway();
    HVContext settings;
    settings.set(HVKeyTrackHover, true);
    settings.set(HVKeyHideFadeDuration, 0);
    settings.set(HVKeyHideDelay, 60000);
    // The package that is indexed last is searched first.
    m_host = std::make_unique<RecordingHost>(settings,
                                             QStringList { m_folder.path(), m_german.path() });
    showWindow(QPoint(400, 300));
}

void HoverTest::cleanup()
{
    Pointer::moveAway();
    m_host.reset();
    m_window.reset();
    QToolTip::hideText();
}

QTimer *HoverTest::timer() const
{
    return popup()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
}

QString HoverTest::title() const
{
    return m_host->view()->rootObject()->property("title").toString();
}

bool HoverTest::isShowing(const char *key) const
{
    const HVXmlElement *content = m_host->view() ? m_host->view()->content() : nullptr;
    return content && popup()->isVisible()
            && content->attribute(QStringLiteral("key")) == QString::fromUtf8(key);
}

bool HoverTest::isToolTipShown(const QString &text)
{
    return QToolTip::isVisible() && QToolTip::text() == text;
}

bool HoverTest::hover(const char *name)
{
    return restAt([&] { return m_window->centerOf(name); }, [&] { return isShowing(name); });
}

bool HoverTest::restOn(const char *name, const QPoint &offset)
{
    return rest(m_window->centerOf(name) + offset,
                [&] { return m_window->asked.contains(QString::fromUtf8(name)); });
}

void HoverTest::stopAskingForTooltips()
{
    askForTooltipsAfter(600000);
}

void HoverTest::askForTooltipsAfter(int delay)
{
    ImpatientStyle::delay = delay;
}

void HoverTest::showWindow(const QPoint &position)
{
    m_window = std::make_unique<HostWindow>();
    if (QGuiApplication::platformName() == QLatin1String("wayland")) {
        // Only a window that fills the output has the coordinates of the display. Sway gives a
        // floating window that opens full-screen its own size again if it draws at that size once.
        m_window->show();
        QTRY_VERIFY(m_window->isActiveWindow());
        m_window->setWindowState(Qt::WindowFullScreen);
        QTRY_COMPARE(m_window->size(), m_window->screen()->size());
        Pointer::agree();
        return;
    }
    m_window->move(position);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTRY_COMPARE(m_window->pos(), position);
}
