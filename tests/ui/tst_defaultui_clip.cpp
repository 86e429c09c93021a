// SPDX-License-Identifier: Apache-2.0
#include "ClipTest.h"
#include "DebugLog.h"
#include "HVClip.h"
#include "HVClipOpening.h"
#include "TestMain.h"

#include <QtCore/QDir>
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

/// Tests how an entry's clip looks in the default user interface.
class tst_DefaultUiClip : public ClipTest
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
};

HOVLETS_TEST_MAIN(tst_DefaultUiClip)

#include "tst_defaultui_clip.moc"
