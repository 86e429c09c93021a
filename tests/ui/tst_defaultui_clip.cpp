// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "DebugLog.h"
#include "DefaultUiTest.h"
#include "HVClip.h"
#include "HVClipComponent.h"
#include "HVClipOpening.h"
#include "HVVideoComponent.h"
#include "TestMain.h"

#include <QtCore/QDir>
#include <QtCore/QPointer>
#include <QtGui/QPaintEvent>
#include <QtGui/QRegion>
#include <QtQuick/QQuickWindow>

using namespace Hovlets;

namespace {

/// What happens to a popup.
class PopupEvents : public QObject
{
public:
    explicit PopupEvents(QWidget *popup)
        : QObject(popup)
    {
        popup->installEventFilter(this);
    }

    QRegion painted;
    int changes = 0; // which its shadow would follow

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Paint:
            painted += static_cast<QPaintEvent *>(event)->region();
            break;
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
            ++changes;
            break;
        default:
            break;
        }
        return false;
    }
};

} // namespace

/// Tests an entry's clip in the default user interface.
class tst_DefaultUiClip : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldGrowByTheClip()
    {
        showClip(LongClip);
        QTRY_VERIFY(picture());
        QTRY_COMPARE(picture()->size(), QSizeF(160, 90)); // a busy machine may need longer
        QVERIFY(QRectF(QPointF(), m_bench->root()->size()).contains(m_bench->place(picture())));
        QTRY_COMPARE(m_bench->view()->size(), m_bench->root()->size().toSize());
    }

    void shouldHaveItsSizeWhenItShows()
    {
        showClip("-s 320x240 -t 0.4 -r 25");
        const QSize shown = m_bench->host.popup()->size();
        QVERIFY(picture());
        QVERIFY(shown.height() > 240);
        QTRY_COMPARE(video()->progress(), 1.0);
        QCOMPARE(m_bench->host.popup()->size(), shown);
    }

    void shouldShowAFrameAtOnce()
    {
        // The decoder has a limited time for it, which a busy machine may use for something else.
        bool isShown = false;
        for (int attempt = 0; attempt < 20 && !isShown; ++attempt) {
            showClip("-s 160x90 -t 0.4 -r 25");
            isShown = video() && video()->hasFrame();
            const QImage shown = grabPicture();
            isShown = isShown && shown.pixel(10, 10) != shown.pixel(150, 10);
        }
        QVERIFY(isShown);
    }

    void shouldNotBeWhiteBeforeTheFirstFrame()
    {
        showClip(LongClip);
        QVERIFY(video());
        video()->setSource(QString()); // as when the file is slow to open
        QVERIFY(!video()->hasFrame());
        const QColor surface = m_bench->root()
                                       ->property("theme")
                                       .value<QObject *>()
                                       ->property("surface")
                                       .value<QColor>();
        const QImage shown = grabPicture();
        QCOMPARE(shown.pixel(0, 0), surface.rgb());
        QCOMPARE(shown.pixel(80, 45), surface.rgb());
    }

    void shouldShowControlsOnlyWhileTheyAreUsed()
    {
        showClip("-s 320x180 -t 3.6 -r 25");
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QTRY_VERIFY(video()->position() > 3);
        leave();
        QTRY_VERIFY(!m_bench->item("clipControls"));
        hover();
        QTRY_VERIFY(m_bench->item("clipControls"));
        QVERIFY(m_bench->place(picture()).contains(m_bench->place(m_bench->item("clipControls"))));
        leave();
        QTRY_VERIFY(!m_bench->item("clipControls"));

        m_bench->click(picture());
        activate();
        leave();
        QTRY_VERIFY(m_bench->item("clipControls")); // it has the focus
    }

    void shouldShowTheTime()
    {
        showClip("-s 320x180 -t 63.6 -r 5");
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        hover();
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const auto time = [&] { return m_bench->item("clipTime")->property("text").toString(); };
        video()->setPosition(7);
        QTRY_COMPARE(time(), QStringLiteral("0:01 / 1:04"));
        video()->setPosition(310);
        QTRY_COMPARE(time(), QStringLiteral("1:02 / 1:04"));
        QCOMPARE(video()->duration(), 63.6);
        QCOMPARE(video()->time(), 62.0);
        const QRectF place = m_bench->place(m_bench->item("clipTime"));
        QVERIFY(!place.intersects(m_bench->place(m_bench->item("progressBar"))));
        QVERIFY(m_bench->place(m_bench->item("clipControls")).contains(place));
    }

    void shouldFitAClipIntoTheSpaceThatWasKeptForIt()
    {
        showClip("-s 320x100 -t 0.2");
        QVERIFY(picture());
        QQuickItem *clip = video()->parentItem();
        clip->setProperty("fitted", true); // as when the file is slow to open
        QCOMPARE(picture()->size(), QSizeF(200, 63));
        QCOMPARE(m_bench->place(picture()).center().y() - m_bench->place(clip).top(), 75.5);
        Q_EMIT video()->opening().failed();
        QCOMPARE(clip->implicitHeight(), 0.0);
        QVERIFY(!picture());
    }

    void shouldShowAWhiteClipWhiteToItsEdges_data()
    {
        QTest::addColumn<QString>("size");
        QTest::newRow("own size") << QStringLiteral("160x90");
        QTest::newRow("odd size") << QStringLiteral("161x91");
        QTest::newRow("scaled down") << QStringLiteral("1200x300");
    }

    void shouldShowAWhiteClipWhiteToItsEdges()
    {
        QFETCH(QString, size);
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"Clip\" clip=\"clip.avi\"", "<p>Text</p>"));
        m_bench->host.manager()->setGlobalProperty(QStringLiteral("reducedMotion"), true);
        const QString made = m_clips.make(
                QStringLiteral("white%1.avi").arg(size),
                QStringLiteral("-f lavfi -i color=white -s %1 -t 0.2 -c:v mpeg4 -q:v 1").arg(size));
        m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/clip.avi"),
                            ClipFolder::read(made));
        QVERIFY(m_bench->show());
        QTRY_VERIFY(video() && video()->loadProgress() == 1.0);
        m_bench->settle();
        QCOMPARE(darkPixelsAtTheEdges(m_bench->grab().copy(m_bench->place(picture()).toRect())), 0);
    }

    void shouldHaveExamplesWithoutAFrame_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(QStringLiteral(
                HOVLETS_PACKAGES "/../../../examples/drawing/packages/Tools.hovlets/Resources"));
        const QFileInfoList clips = folder.entryInfoList({ QStringLiteral("*.mp4") });
        for (const QFileInfo &clip : clips)
            QTest::newRow(qPrintable(clip.fileName())) << clip.filePath();
    }

    void shouldHaveExamplesWithoutAFrame()
    {
        QFETCH(QString, path);
        HVClip clip([] { return false; });
        QCOMPARE(clip.open(path), nullptr);
        QCOMPARE(darkPixelsAtTheEdges(clip.nextFrame()), 0);
    }

    void shouldScaleAWideClipDownToThePopup()
    {
        showClip("-s 1200x300 -t 0.2");
        QTRY_VERIFY(picture());
        QVERIFY(picture()->width() < 1000);
        QVERIFY(qAbs(picture()->width() / picture()->height() - 4.0) < 0.05);
        QVERIFY(QRectF(QPointF(), m_bench->root()->size()).contains(m_bench->place(picture())));
    }

    void shouldPlayAutomaticallyToItsEndAndThenOfferToPlayAgain()
    {
        showClip(ShortClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        QTRY_COMPARE(video()->progress(), 1.0);
        QTRY_COMPARE(video()->state(), HVVideoComponent::pausedState);
        leave();
        QTRY_VERIFY(!m_bench->item("playMark")); // nothing covers the result
        hover();
        QTRY_VERIFY(m_bench->item("playMark"));

        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        QVERIFY(video()->progress() < 1.0);
        QTRY_VERIFY(!m_bench->item("playMark"));
        QTRY_COMPARE(video()->progress(), 1.0);
    }

    void shouldPauseAndResumeByAClick()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 3);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        QTRY_VERIFY(m_bench->item("playMark"));
        const qlonglong paused = video()->position();

        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        QTRY_VERIFY(video()->position() > paused + 3);
    }

    void shouldContinuePlayingWhenTheDecoderEndsAfterAClick()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        m_bench->click(picture());
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
        video()->setState(HVVideoComponent::resetState); // happens at the end of the stream
        QCOMPARE(video()->state(), HVVideoComponent::playingState);

        m_bench->click(picture()); // a clip that the user paused stays paused
        video()->setState(HVVideoComponent::resetState);
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
    }

    void shouldStayOnTheLastPictureWithReducedMotion_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("still");
        QTest::newRow("true") << QVariant(true) << true;
        QTest::newRow("1") << QVariant(1) << true;
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("0") << QVariant(0) << false;
    }

    void shouldStayOnTheLastPictureWithReducedMotion()
    {
        QFETCH(QVariant, value);
        QFETCH(bool, still);
        showClip(LongClip, { QStringLiteral("reducedMotion"), value });
        QTRY_VERIFY(video());
        if (!still) {
            QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
            return;
        }
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QTRY_VERIFY(video()->progress() > 0.98);
        leave();
        QTRY_VERIFY(!m_bench->item("playMark")); // nothing covers the result
        hover();
        QTRY_VERIFY(m_bench->item("playMark"));
        Q_EMIT video()->loadProgressChanged();
        m_bench->settle();
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        m_bench->click(picture());
        QTRY_VERIFY(video()->position() > 3);
        QVERIFY(video()->progress() < 0.9); // from the beginning
    }

    void shouldPlayAgainAndAgainIfTheEntryAsksForIt()
    {
        showClip(QString::fromLatin1(ShortClip), {}, "loop=\"true\"");
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QVector<double> turns; // where it jumped back
        connect(video(), &HVVideoComponent::progressChanged, this, [&, last = 0.0]() mutable {
            if (video()->progress() < last)
                turns.append(last);
            last = video()->progress();
        });
        QTRY_VERIFY(turns.size() >= 2);
        QCOMPARE(turns.constLast(), 1.0);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
    }

    void shouldOnlyPaintItsFramesWhileItPlays()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        leave();
        QTRY_VERIFY(video()->position() > 3);
        QTRY_VERIFY(!m_bench->item("clipControls"));
        m_bench->settle();

        PopupEvents events(m_bench->host.popup());
        const QSignalSpy rendered(m_bench->view()->quickWindow(), &QQuickWindow::afterRendering);
        const QSignalSpy ended(video(), SIGNAL(endedChanged()));
        QVERIFY(ended.isValid());
        const qlonglong first = video()->position();
        QTRY_VERIFY(video()->position() >= first + 10);
        const qlonglong passed = video()->position() - first;
        QVERIFY(rendered.count() > 0);
        QVERIFY2(rendered.count() <= passed + 1, qPrintable(QString::number(rendered.count())));
        const QRect frame = m_bench->place(picture()).toAlignedRect().adjusted(-2, -2, 2, 2);
        QVERIFY(frame.contains(events.painted.boundingRect()));
        QCOMPARE(events.changes, 0);
        QCOMPARE(ended.count(), 0);
    }

    void shouldStepThroughTheFramesByKeys()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 3);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const qlonglong paused = video()->position();
        activate(); // as when the popup is pinned and the user clicks it
        QTest::keyClick(m_bench->view(), Qt::Key_Right);
        QTRY_COMPARE(video()->position(), paused + 1);
        QTest::keyClick(m_bench->view(), Qt::Key_Left);
        QTest::keyClick(m_bench->view(), Qt::Key_Left);
        QTRY_COMPARE(video()->position(), paused - 1);
        QTest::keyClick(m_bench->view(), Qt::Key_Space);
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
    }

    void shouldShowMovingPictures()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        hover();
        QTRY_VERIFY(m_bench->item("progressValue"));
        m_bench->settle();
        const QImage first = grabPicture();
        QTRY_VERIFY(video()->position() > 20);
        m_bench->settle();
        QVERIFY(grabPicture() != first);
        QVERIFY(m_bench->item("progressValue")->width() > 0);
    }

    void shouldFollowADragOfTheBar()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->loadProgress(), 1.0);
        QTRY_VERIFY(video()->position() > 2);
        hover();
        QTRY_VERIFY(m_bench->item("progressBar"));
        const QRectF bar = m_bench->place(m_bench->item("progressBar"));
        const auto at = [&](double part) {
            return QPointF(bar.left() + bar.width() * part, bar.center().y()).toPoint();
        };
        QTest::mousePress(m_bench->view(), Qt::LeftButton, {}, at(0.5));
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        QVERIFY(video()->scrubbing());
        QVERIFY(qAbs(video()->progress() - 0.5) < 0.05);
        drag(at(0.8));
        QTRY_VERIFY(qAbs(video()->progress() - 0.8) < 0.05);
        // There is no frame past the end.
        drag(at(1.5));
        QTRY_VERIFY(video()->progress() > 0.9);
        QVERIFY(video()->progress() < 1.0);
        drag(at(0.1));
        QTRY_VERIFY(qAbs(video()->progress() - 0.1) < 0.05);
        QTest::mouseRelease(m_bench->view(), Qt::LeftButton, {}, at(0.1));
        QVERIFY(!video()->scrubbing());
        QCOMPARE(video()->state(), HVVideoComponent::playingState);
    }

    void shouldLeaveNoHoleWithoutAPlayableClip_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("missing.mp4");
        QTest::newRow("not a clip") << QStringLiteral("text.mp4");
    }

    void shouldLeaveNoHoleWithoutAPlayableClip()
    {
        QFETCH(QString, name);
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"T\" clip=\"" + name.toUtf8() + '"', "<p>Text</p>")
                + DefaultUiBench::entry("title=\"T\"", "<p>Text</p>", "plain"));
        const QString text = m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/text.mp4"),
                                                 "This is no clip.");
        QVERIFY(m_bench->show(QStringLiteral("plain")));
        const QSizeF plain = m_bench->root()->size();

        const DebugLog log;
        QVERIFY(m_bench->show());
        if (name == QLatin1String("text.mp4"))
            QTRY_COMPARE(log.lines(),
                         QStringList(QStringLiteral("Could not open media at: ") + text));
        m_bench->settle();
        QCOMPARE(m_bench->root()->size(), plain);
        QVERIFY(!picture());
    }

    void shouldPauseWhileThePopupIsHidden()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        QWidget *popup = m_bench->view()->window();
        const QPointer<HVVideoComponent> clip = video();
        popup->hide();
        QVERIFY(clip);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
        const qlonglong paused = clip->position();

        popup->show();
        QCOMPARE(clip->state(), HVVideoComponent::playingState);
        QTRY_VERIFY(clip->position() > paused + 2);
    }

    void shouldStayPausedWhenThePopupComesBack()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_VERIFY(video()->position() > 2);
        m_bench->click(picture());
        QCOMPARE(video()->state(), HVVideoComponent::pausedState);
        const QPointer<HVVideoComponent> clip = video();
        m_bench->view()->window()->hide();
        m_bench->view()->window()->show();
        QVERIFY(clip);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
    }

    void shouldNotStartWhileThePopupIsHidden()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        const QPointer<HVVideoComponent> clip = video();
        m_bench->view()->window()->hide();
        QTRY_COMPARE(clip->loadProgress(), 1.0);
        QCOMPARE(clip->state(), HVVideoComponent::pausedState);
        m_bench->view()->window()->show();
        QTRY_COMPARE(clip->state(), HVVideoComponent::playingState);
    }

    void shouldStopPlayingWithThePopup()
    {
        showClip(LongClip);
        QTRY_VERIFY(video());
        QTRY_COMPARE(video()->state(), HVVideoComponent::playingState);
        const QPointer<HVVideoComponent> playing = video();
        m_bench->host.popup()->setView(nullptr);
        QTRY_VERIFY(!playing);
        m_bench.reset();
    }

private:
    /// Counts what is not white in the outermost columns and rows.
    static int darkPixelsAtTheEdges(const QImage &image)
    {
        int count = image.isNull() ? 1 : 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const bool isAtEdge =
                        x < 2 || y < 2 || x >= image.width() - 2 || y >= image.height() - 2;
                count += isAtEdge && qGray(image.pixel(x, y)) < 245 ? 1 : 0;
            }
        }
        return count;
    }

    static constexpr auto LongClip = "-s 160x90 -t 6 -r 25";
    static constexpr auto ShortClip = "-s 160x90 -t 0.4 -r 25";

    using Property = QPair<QString, QVariant>; // a property of the host

    void showClip(const QString &options, const Property &property = {},
                  const QByteArray &attributes = {})
    {
        m_bench = std::make_unique<DefaultUiBench>(DefaultUiBench::entry(
                "title=\"Clip\" clip=\"clip.mp4\" " + attributes, "<p>Text</p>"));
        const QString made = m_clips.make(
                QStringLiteral("%1.mp4").arg(qHash(options)),
                QStringLiteral("-f lavfi -i testsrc2 -pix_fmt yuv420p %1").arg(options));
        QVERIFY(!made.isEmpty());
        m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/clip.mp4"),
                            ClipFolder::read(made));
        if (!property.first.isEmpty())
            m_bench->host.manager()->setGlobalProperty(property.first, property.second);
        QVERIFY(m_bench->show());
    }

    void showClip(const char *options, const Property &property = {})
    {
        showClip(QString::fromLatin1(options), property);
    }

    /// Qt 5 ignores a move to where the mouse is.
    void hover()
    {
        leave();
        QTest::mouseMove(m_bench->view(), m_bench->place(picture()).center().toPoint());
    }

    void leave() { QTest::mouseMove(m_bench->view(), QPoint(2, 2)); }

    /// Makes the popup the active window, with the keyboard.
    void activate()
    {
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        QTRY_VERIFY(m_bench->view()->hasFocus());
    }

    HVClipComponent *video() { return qobject_cast<HVClipComponent *>(m_bench->item("video")); }

    /// Moves the mouse with its button pressed. QTest does so with only one of the Qt versions.
    void drag(const QPoint &to)
    {
        QMouseEvent move(QEvent::MouseMove, to, m_bench->view()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_bench->view(), &move);
    }

    QQuickItem *picture() { return m_bench->item("clipPicture"); }

    QImage grabPicture() { return m_bench->grab().copy(m_bench->place(picture()).toRect()); }

    ClipFolder m_clips;
};

HOVLETS_TEST_MAIN(tst_DefaultUiClip)
#include "tst_defaultui_clip.moc"
