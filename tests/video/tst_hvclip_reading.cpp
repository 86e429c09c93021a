// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "ClipPictures.h"
#include "TestMain.h"

#include <QtCore/QtEndian>

#include <climits>

using namespace ClipPictures;
using namespace Hovlets;

/// Tests interrupting, ending and seeking while a clip is read.
class tst_HVClipReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }

    void shouldStopDecodingWhenInterrupted();
    void shouldEndWhenMemoryRunsOut_data();
    void shouldEndWhenMemoryRunsOut();
    void shouldEndAStreamWithoutFrames();
    void shouldContinueDecodingAfterASeek_data();
    void shouldContinueDecodingAfterASeek();
    void shouldDecodeAgainWhenItSeeksAtTheEnd();

private:
    ClipFolder m_clips;
};

void tst_HVClipReading::shouldStopDecodingWhenInterrupted()
{
    bool isInterrupted = false;
    HVClip clip([&isInterrupted] { return isInterrupted; });
    QCOMPARE(clip.open(m_clips.clip(QStringLiteral("stop.avi"), QStringLiteral("64x48"),
                                    QStringLiteral("-c:v mjpeg"))),
             nullptr);
    QVERIFY(!clip.nextFrame().isNull());
    isInterrupted = true;
    QVERIFY(clip.nextFrame().isNull());
    isInterrupted = false;
    QVERIFY(!clip.nextFrame().isNull());
}

void tst_HVClipReading::shouldEndWhenMemoryRunsOut_data()
{
    QTest::addColumn<int>("most"); // bytes
    QTest::newRow("for a picture") << 250000; // decoded: 230400, copied: 307200
    QTest::newRow("to decode") << 100000;
}

void tst_HVClipReading::shouldEndWhenMemoryRunsOut()
{
    QFETCH(int, most);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(QStringLiteral("memory.mov"), QStringLiteral("320x240"),
                                     QStringLiteral("-c:v qtrle -g 1 -pix_fmt rgb24"))),
             nullptr);
    av_max_alloc(size_t(most));
    const QImage picture = clip->nextFrame();
    av_max_alloc(INT_MAX);
    QVERIFY(picture.isNull());
    // Reading stopped there.
    int left = 0;
    while (!clip->nextFrame().isNull())
        ++left;
    QVERIFY2(left >= 4, qPrintable(QString::number(left)));
}

void tst_HVClipReading::shouldEndAStreamWithoutFrames()
{
    QByteArray bytes = ClipFolder::read(
            m_clips.clip(QStringLiteral("never.ivf"), QStringLiteral("64x48"),
                         QStringLiteral("-c:v libvpx -deadline realtime -cpu-used 8")));
    constexpr int Header = 32; // bytes; each packet then follows 12 bytes that begin with its size
    int packets = 0;
    for (int at = Header; at + 12 < bytes.size(); ++packets) {
        const auto size = qFromLittleEndian<quint32>(bytes.constData() + at);
        bytes.replace(at + 12, int(size), QByteArray(int(size), '\x55'));
        at += 12 + int(size);
    }
    QCOMPARE(packets, 10);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.write(QStringLiteral("nothing.ivf"), bytes)), nullptr);
    QVERIFY(clip->nextFrame().isNull());
}

void tst_HVClipReading::shouldContinueDecodingAfterASeek_data()
{
    QTest::addColumn<int>("before"); // frames
    QTest::addColumn<double>("seconds");
    QTest::addColumn<bool>("backward");
    QTest::addColumn<int>("first");
    QTest::newRow("from the end to the start") << 20 << 0.0 << true << 0;
    QTest::newRow("from the end back") << 20 << 0.2 << true << 5;
    QTest::newRow("from the start on") << 1 << 0.28 << false << 7;
    QTest::newRow("in the middle back") << 6 << 0.08 << true << 2;
}

void tst_HVClipReading::shouldContinueDecodingAfterASeek()
{
    QFETCH(int, before);
    QFETCH(double, seconds);
    QFETCH(bool, backward);
    QFETCH(int, first);
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    const QByteArray pictures = opaque(ClipFolder::pictures(path));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    for (int i = 0; i < before; ++i)
        clip->nextFrame();

    clip->seek(seconds, backward);
    constexpr qint64 Size = 64LL * 48 * 4;
    for (int i = first; i < 10; ++i) {
        const QString wrong = difference(packed(clip->nextFrame()), pictures.mid(i * Size, Size));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
    QVERIFY(clip->nextFrame().isNull());
}

void tst_HVClipReading::shouldDecodeAgainWhenItSeeksAtTheEnd()
{
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    const QByteArray pictures = opaque(ClipFolder::pictures(path));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    for (int i = 0; i < 10; ++i)
        QVERIFY(!clip->nextFrame().isNull());

    clip->seekTo(0, 0); // the decoder does not know yet that this was the last
    constexpr qint64 Size = 64LL * 48 * 4;
    for (int i = 0; i < 10; ++i) {
        const QString wrong = difference(packed(clip->nextFrame()), pictures.mid(i * Size, Size));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
    QVERIFY(clip->nextFrame().isNull());
}

HOVLETS_TEST_MAIN(tst_HVClipReading)

#include "tst_hvclip_reading.moc"
