// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "DefaultUiBench.h"
#include "HVVideoComponent.h"
#include "HVVideoSource.h"
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <functional>

using namespace Hovlets;

namespace {

QImage onScreen(const QRect &area)
{
    return QGuiApplication::primaryScreen()
            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
}

QImage onScreen(const QWidget &window)
{
    return onScreen(QRect(window.mapToGlobal(QPoint()), window.size()));
}

/// The picture that \a window paints.
QImage picture(QWidget &window)
{
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// How many pixels of the outermost columns and rows are as requested.
template <typename Condition> int countAtTheEdges(const QImage &image, Condition isCounted)
{
    const QRect inner = image.rect().adjusted(1, 1, -1, -1);
    int count = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            count += !inner.contains(x, y) && isCounted(image.pixel(x, y)) ? 1 : 0;
    }
    return count;
}

int otherPixelsAtTheEdges(const QRect &area, QRgb expected)
{
    return countAtTheEdges(onScreen(area), [=](QRgb pixel) { return pixel != expected; });
}

/// The last row of a scaled clip may be mixed with the popup's light background.
int darkPixelsAtTheEdges(const QRect &area)
{
    return countAtTheEdges(onScreen(area), [](QRgb pixel) { return qGray(pixel) < 245; });
}

} // namespace

/// Tests the pixels of the default user interface and of the host's window on the screen, with a
/// real pointer.
class tst_EndToEndDrawing : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setCursorFlashTime(0); } // a constant picture of the field

    void shouldDrawOneLineAlongEachEdgeOfThePopup()
    {
        showClip("-f lavfi -i color=white -s 160x90 -t 0.2 -c:v mpeg4 -q:v 1");
        QVERIFY(hover("a"));
        const QRect shown = popup()->geometry();
        const QRgb line = m_host->view()->rimColor().rgb();
        QTRY_COMPARE(otherPixelsAtTheEdges(shown, line), 0);
        const QRgb base = pixelOnScreen(shown.topLeft() + QPoint(1, 1)).rgb();
        QVERIFY(base != line);
        QCOMPARE(otherPixelsAtTheEdges(shown.adjusted(1, 1, -1, -1), base), 0);
    }

    void shouldDrawAWhiteClipWhiteToItsEdges_data()
    {
        QTest::addColumn<QString>("size");
        QTest::newRow("own size") << QStringLiteral("160x90");
        QTest::newRow("odd size") << QStringLiteral("161x91");
        QTest::newRow("scaled down") << QStringLiteral("1200x300");
    }

    void shouldDrawAWhiteClipWhiteToItsEdges()
    {
        QFETCH(QString, size);
        showClip(
                QStringLiteral("-f lavfi -i color=white -s %1 -t 0.2 -c:v mpeg4 -q:v 1").arg(size));
        QVERIFY(hover("a"));
        QTRY_VERIFY(video() && video()->loadProgress() == 1.0);
        const QQuickItem *picture = item("clipPicture");
        QVERIFY(picture);
        const QRectF place = picture->mapRectToScene(picture->boundingRect());
        const QRect area = place.toRect().translated(m_host->view()->mapToGlobal(QPoint()));
        QTRY_COMPARE(darkPixelsAtTheEdges(area), 0);
    }

    void shouldContinueTheClipOfAPopupThatIsPinned()
    {
        showClip("-f lavfi -i testsrc2 -s 64x48 -t 6 -r 25 -pix_fmt yuv420p");
        QVERIFY(hover("a"));
        QTRY_VERIFY(video());
        const auto *source = video()->findChild<HVVideoSource *>();
        QTRY_COMPARE(int(source->loadedFrameCount()), 150); // progress is relative to these
        QTRY_VERIFY(video()->progress() > 0.05);
        const QPointer<HVVideoComponent> playing(video());
        const std::unique_ptr<HVWidget> pinned(popup());
        const QQuickItem *pin = item("pin");
        QVERIFY(pin);
        double least = playing->progress();
        connect(playing, &HVVideoComponent::progressChanged, this,
                [&] { least = qMin(least, playing->progress()); });
        const double before = least;
        Pointer::moveTo(m_host->view()->mapToGlobal(
                pin->mapToScene(pin->boundingRect().center()).toPoint()));
        Pointer::click();
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        QVERIFY(QTest::qWaitForWindowExposed(pinned.get()));
        QVERIFY(playing);
        const double pinnedAt = playing->progress();
        QTRY_VERIFY(!playing || playing->progress() > pinnedAt);
        QVERIFY(playing);
        QCOMPARE(playing->state(), HVVideoComponent::playingState);
        QVERIFY2(least >= before, qPrintable(QString::number(least)));
    }

    void shouldRepaintWhatLaterPopupsCovered_data()
    {
        QTest::addColumn<bool>("closes"); // before the next popup shows
        QTest::newRow("pinned") << false;
        QTest::newRow("pinned and closed") << true;
    }

    void shouldRepaintWhatLaterPopupsCovered()
    {
        QFETCH(bool, closes);
        QTRY_COMPARE(onScreen(*m_window), picture(*m_window));
        coverTheWindow();
        QTRY_COMPARE(onScreen(*m_window), picture(*m_window));

        QVERIFY(hover("a"));
        const QPointer<HVWidget> pinned(popup());
        Pointer::moveTo(pinned->pos() + QPoint(150, 50));
        Pointer::click();
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        if (closes)
            pinned->close();
        else
            pinned->move(0, 0); // off the window
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        for (int i = 0; i < 2; ++i) {
            coverTheWindow();
            QTRY_COMPARE(onScreen(*m_window), picture(*m_window));
        }
        delete pinned;
    }

    void shouldExpandInOneFrame()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/SimpleTooltip.qml"),
                     "import QtQuick 2.15\nRectangle { width: 150; height: 40; color: 'red' }");
        HVContext &settings = m_host->manager()->context();
        settings.set(HVKeySimpleMode, true);
        settings.set(HVKeyExpandDelay, 1500); // ample to see the simple popup first
        settings.set(HVKeyCursorOffset, QSize(35, 200)); // on the screen's constant background
        QVERIFY(hover("a"));
        const QRect area(popup()->pos(), QSize(201, 101));
        QVERIFY(!m_window->frameGeometry().intersects(area));
        QTRY_COMPARE(pixelOnScreen(popup()->geometry().center()), QColor(Qt::red));
        QVector<QImage> frames { onScreen(area) };
        const auto look = [&] { frames.append(onScreen(area)); };
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                look); // the next event changes the screen at the earliest
        m_beforePainting = look;
        qApp->installEventFilter(this);
        QEventLoop loop; // unlike the waits of Qt Test, it blocks
        QTimer poll;
        connect(&poll, &QTimer::timeout, &loop, [&] {
            if (pixelOnScreen(popup()->geometry().center()) == QColor("steelblue"))
                QTimer::singleShot(50, &loop, &QEventLoop::quit); // nothing changes any more
        });
        poll.start(10);
        QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
        loop.exec();
        QAbstractEventDispatcher::instance()->disconnect(this);
        qApp->removeEventFilter(this);
        QCOMPARE(popup()->geometry(), area);
        const QImage simple = frames.constFirst();
        const QImage full = onScreen(area);
        QVERIFY(simple != full);
        const auto others = std::count_if(frames.begin(), frames.end(), [&](const QImage &frame) {
            return frame != simple && frame != full;
        });
        QVERIFY(frames.contains(full)); // it was visible while the loop ran
        QCOMPARE(int(others), 0);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest && object == popup())
            m_beforePainting();
        return HoverTest::eventFilter(object, event);
    }

private:
    /// Shows a popup over the window, and hides it.
    void coverTheWindow()
    {
        QVERIFY(hover("b"));
        QVERIFY(m_window->frameGeometry().contains(popup()->geometry()));
        QTRY_COMPARE(pixelOnScreen(popup()->pos() + QPoint(50, 50)), QColor("steelblue"));
        stopAskingForTooltips();
        Pointer::moveAway();
        popup()->hide();
        askForTooltipsAfter(150);
    }

    /// Starts a host whose control "a" has a clip that the ffmpeg program makes by \a arguments.
    void showClip(const QString &arguments)
    {
        const QString name = QStringLiteral("%1.avi").arg(qHash(arguments));
        m_clipPackages = std::make_unique<PackageFolder>();
        m_clipPackages->addControlFile(QStringLiteral("Clip"), QStringLiteral("content"),
                                       "<hovlets search='Default'>"
                                       "<hovlet key='a' title='A' clip='clip.avi'/></hovlets>");
        m_clipPackages->add(QStringLiteral("Clip.hovlets/Resources/clip.avi"),
                            ClipFolder::read(m_clips.make(name, arguments)));
        HVContext settings = m_host->manager()->context();
        m_host.reset();
        m_host = std::make_unique<RecordingHost>(
                settings, QStringList { m_clipPackages->path(), QStringLiteral(HOVLETS_PACKAGES) });
    }

    void showClip(const char *arguments) { showClip(QString::fromLatin1(arguments)); }

    QQuickItem *item(const char *name) const
    {
        return DefaultUiBench::itemsOf(m_host->view()->rootObject(), QString::fromLatin1(name))
                .value(0);
    }

    HVVideoComponent *video() const { return qobject_cast<HVVideoComponent *>(item("video")); }

    std::function<void()> m_beforePainting;
    ClipFolder m_clips;
    std::unique_ptr<PackageFolder> m_clipPackages;
};

HOVLETS_TEST_MAIN(tst_EndToEndDrawing)
#include "tst_endtoend_drawing.moc"
