// SPDX-License-Identifier: Apache-2.0
#include "DisplayPicture.h"
#include "HVContext.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>

using namespace Hovlets;

namespace {

const QColor PopupColor(255, 0, 0);
const QColor WindowColor(0, 128, 0);
constexpr QSize PopupSize(200, 100);

constexpr auto UserInterface = R"(import QtQuick 2.15
Rectangle { width: 200; height: 100; color: "#ff0000" })";

/// Counts the messages of the platform about what it cannot do, which the other tests drop.
class PlatformComplaints
{
public:
    PlatformComplaints() { s_next = qInstallMessageHandler(&PlatformComplaints::handle); }
    ~PlatformComplaints() { qInstallMessageHandler(s_next); }

    static int count;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        count += text.startsWith(QLatin1String("This plugin does not support"));
        s_next(type, context, text);
    }

    static QtMessageHandler s_next;
};

int PlatformComplaints::count = 0;
QtMessageHandler PlatformComplaints::s_next = nullptr;

/// Runs code of a host at the next event of a type that a widget gets.
class AtNext : public QObject
{
public:
    AtNext(QEvent::Type type, QWidget &widget, std::function<void()> code)
        : m_type(type)
        , m_code(std::move(code))
    {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == m_type && m_code)
            std::exchange(m_code, nullptr)();
        return false;
    }

private:
    QEvent::Type m_type;
    std::function<void()> m_code;
};

bool fillsAnOutput(const QWidget &window)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [&](const QScreen *screen) { return screen->size() == window.size(); });
}

bool isOnAnOutput(const QRect &place)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [&](const QScreen *screen) { return screen->geometry().contains(place); });
}

} // namespace

/// Tests where popups are on a Wayland display. It has two outputs, the second of which is larger.
class tst_HVWidgetWayland : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("wayland"));
        QVERIFY2(QGuiApplication::screens().size() == 2,
                 "run it with support/with-wayland --size 640x480 --second 1280x800");
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        Pointer::agree();
        m_ui = m_folder.add(QStringLiteral("Popup.qml"), UserInterface);
    }

    void init()
    {
        HVContext settings;
        settings.set(HVKeyHideDelay, 0);
        m_host = std::make_unique<RecordingHost>(settings, QStringList());
        m_roots = std::make_unique<QObject>();
        m_popup = std::make_unique<HVWidget>(m_host->manager(), nullptr, nullptr);
        m_popup->setView(new HVView(m_host->manager(), m_popup.get()));
    }

    void cleanup()
    {
        m_popup.reset();
        m_window.reset();
        m_roots.reset();
        m_host.reset();
    }

    void shouldFollowTheControl_data()
    {
        QTest::addColumn<int>("output");
        QTest::newRow("first output") << 0;
        QTest::newRow("second output") << 1; // beyond the size of the first
    }

    void shouldFollowTheControl()
    {
        QFETCH(int, output);
        showWindow(output);
        const QPoint origin = m_window->mapToGlobal(QPoint());
        for (const QPoint &position : { QPoint(10, 10), QPoint(180, 250), QPoint(190, 30) }) {
            const QPoint place = position * (output + 1);
            show(origin + place);
            QVERIFY(appearsAt(place));
        }
        m_popup->placeFor(m_window.get(), origin + QPoint(50, 60));
        QVERIFY(appearsAt({ 50, 60 }));
        QVERIFY(m_popup->isVisible());
    }

    void shouldStayOnTheScreenWhenItGrows()
    {
        showWindow(1);
        m_window->setWindowState(Qt::WindowFullScreen);
        QTRY_VERIFY(fillsAnOutput(*m_window));
        const QSize output = m_window->size();
        show(m_window->mapToGlobal(QPoint(output.width() - 250, output.height() - 150)));
        QVERIFY(appearsWithSize(PopupSize));
        m_popup->view()->rootObject()->setSize({ 400, 300 });
        QVERIFY(appearsWithSize({ 400, 300 }));
    }

    void shouldStayHiddenIfTheHostHidesItWhileItMoves_data()
    {
        QTest::addColumn<QEvent::Type>("event");
        QTest::addColumn<bool>("fades");
        QTest::newRow("at once") << QEvent::Hide << false;
        QTest::newRow("with a fade") << QEvent::Hide << true;
        QTest::newRow("when it reappears") << QEvent::Show << false;
        QTest::newRow("when it reappears, with a fade") << QEvent::Show << true;
    }

    void shouldStayHiddenIfTheHostHidesItWhileItMoves()
    {
        QFETCH(QEvent::Type, event);
        QFETCH(bool, fades);
        m_host->manager()->context().set(HVKeyHideDelay, 60000);
        const auto hide = [&] { fades ? m_popup->hideAnimated() : m_popup->hide(); };
        showWindow(0);
        const QPoint origin = m_window->mapToGlobal(QPoint());
        const auto place = [&] { m_popup->placeFor(m_window.get(), origin + QPoint(50, 60)); };
        const auto grow = [&] { m_popup->view()->rootObject()->setSize(QSizeF(300, 150)); };
        const auto showAgain = [&] { show(origin + QPoint(90, 60)); };
        for (const auto &move :
             std::initializer_list<std::function<void()>> { place, grow, showAgain }) {
            show(origin + QPoint(10, 10));
            m_popup->view()->rootObject()->setSize(PopupSize);
            QVERIFY(appearsAt({ 10, 10 }));
            m_popup->setTimer();
            const AtNext next(event, *m_popup, hide);
            move();
            QTRY_VERIFY(!m_popup->isVisible());
            QVERIFY(colorAppears(PopupColor, [](const QRect &place) { return place.isNull(); }));
            QVERIFY(!m_popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly)
                             ->isActive());
        }
    }

    void shouldAppearWhereTheHostShowsItWhileItMoves()
    {
        showWindow(0);
        const QPoint origin = m_window->mapToGlobal(QPoint());
        show(origin + QPoint(10, 10));
        QVERIFY(appearsAt({ 10, 10 }));
        const AtNext next(QEvent::Hide, *m_popup, [&] { show(origin + QPoint(120, 90)); });
        m_popup->placeFor(m_window.get(), origin + QPoint(50, 60));
        QVERIFY(appearsAt({ 120, 90 }));
    }

    void shouldNotFade()
    {
        const PlatformComplaints complaints;
        m_host->manager()->context().set(HVKeyShowFadeDuration, 300);
        showWindow(0);
        show(m_window->mapToGlobal(QPoint(100, 100)));
        QVERIFY(appearsAt({ 100, 100 }));
        m_popup->hideAnimated();
        QVERIFY(!m_popup->isVisible());
        QCOMPARE(PlatformComplaints::count, 0);
    }

private:
    /// Whether the popup appears at \a position in its window.
    bool appearsAt(const QPoint &position) const
    {
        const QRect expected(m_place + position, PopupSize);
        return colorAppears(PopupColor, [&](const QRect &place) { return place == expected; });
    }

    static bool appearsWithSize(const QSize &size)
    {
        return colorAppears(PopupColor, [&](const QRect &place) {
            return place.size() == size && isOnAnOutput(place);
        });
    }

    /// Shows a window somewhere on an output that has almost its size.
    void showWindow(int output)
    {
        const QRect screen = QGuiApplication::screens().at(output)->geometry();
        Pointer::moveTo(screen.center()); // new windows are on the output with the pointer
        m_window = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
        m_window->resize(screen.size() - QSize(100, 100));
        m_window->setPalette(QPalette(WindowColor));
        m_window->show();
        QVERIFY(colorAppears(WindowColor, [&](const QRect &place) {
            m_place = place.topLeft();
            return place.size() == m_window->size();
        }));
        QVERIFY(screen.contains(m_place));
    }

    void show(const QPoint &position)
    {
        auto *root = new HVXmlElement(m_roots.get());
        root->setTagName(QStringLiteral("hovlets"));
        auto *entry = new HVXmlElement(root);
        entry->setTagName(QStringLiteral("hovlet"));
        entry->setAttribute(QStringLiteral("ui"), m_ui);
        m_popup->showWithContent(m_window.get(), position, entry, m_folder.path());
    }

    PackageFolder m_folder;
    QString m_ui;
    std::unique_ptr<QObject> m_roots; // outlive the popup
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<QWidget> m_window; // also the control
    QPoint m_place; // of the window on the display
    std::unique_ptr<HVWidget> m_popup;
};

HOVLETS_TEST_MAIN(tst_HVWidgetWayland)
#include "tst_hvwidget_wayland.moc"
