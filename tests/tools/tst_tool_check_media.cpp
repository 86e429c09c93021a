// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtTest/QtTest>

/// Tests the findings about pictures, clips and captions.
class tst_ToolCheckMedia : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindMediaBeyondTheLimits();
    void shouldFindClipsThatCannotBeOpened();
    void shouldCheckVariantsOfPictures();
    void shouldCheckCaptions_data();
    void shouldCheckCaptions();
    void shouldFindCaptionsBeyondTheLimits_data();
    void shouldFindCaptionsBeyondTheLimits();
    void shouldCheckVariantsOfClips();
};

void tst_ToolCheckMedia::shouldFindMediaBeyondTheLimits()
{
    ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 2 -c:v mpeg4"));
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
    QCOMPARE(found({}, folder.path()), QStringList());
    QCOMPARE(found({ QStringLiteral("--max-seconds"), QStringLiteral("0.3") }, folder.path()),
             QStringList { QStringLiteral("HV304 A.xml:2") });
    QCOMPARE(found({ QStringLiteral("--max-megabytes"), QStringLiteral("0.001") }, folder.path()),
             QStringList { QStringLiteral("HV305 A.xml:2") });
}

void tst_ToolCheckMedia::shouldFindClipsThatCannotBeOpened()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), "no clip");
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV303 A.xml:2") });
}

void tst_ToolCheckMedia::shouldCheckVariantsOfPictures()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a'><img src='a.png'/></hovlet>"));
    const auto add = [&](const char *name, int width) {
        QImage image(width, 10 * width, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer file;
        image.save(&file, "PNG");
        folder.add(QStringLiteral("P.hovlets/Resources/") + QLatin1String(name), file.data());
    };
    add("a.png", 4);
    add("a@2x.png", 8);
    add("a-dark.png", 4);
    add("a-dark@2x.png", 8);
    QCOMPARE(found({}, folder.path()), QStringList());
    add("a@2x.png", 7);
    add("a-dark.png", 8);
    folder.add(QStringLiteral("P.hovlets/Resources/a-dark@2x.png"), "no picture");
    QCOMPARE(found({}, folder.path()),
             (QStringList { QStringLiteral("HV302 A.xml:2"), QStringLiteral("HV311 A.xml:2"),
                            QStringLiteral("HV311 A.xml:2"), QStringLiteral("HV311 A.xml:2") }));
}

void tst_ToolCheckMedia::shouldCheckCaptions_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QString>("name");
    QTest::newRow("beside the clip") << QByteArray() << QStringLiteral("a.vtt");
    QTest::newRow("named") << QByteArray("captions='b.vtt'") << QStringLiteral("b.vtt");
}

void tst_ToolCheckMedia::shouldCheckCaptions()
{
    QFETCH(QByteArray, attribute);
    QFETCH(QString, name);
    const ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 0.2 -pix_fmt yuv420p"));
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4' " + attribute + "/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
    const QString captions = QStringLiteral("P.hovlets/Resources/") + name;
    folder.add(captions, "WEBVTT\n\n00:00.000 --> 00:01.000\nA\n");
    QCOMPARE(found({}, folder.path()), QStringList());
    const QStringList unreadable { QStringLiteral("HV310 A.xml:2") };
    for (const QByteArray &content :
         { QByteArray("WEBVTT"), QByteArray("1\n"), QByteArray("WEBVTT\n\n0 --> 1\nA"),
           QByteArray("WEBVTT\n\n1\n2\n") }) {
        folder.add(captions, content);
        QCOMPARE(found({}, folder.path()), unreadable);
    }
}

void tst_ToolCheckMedia::shouldFindCaptionsBeyondTheLimits_data()
{
    QTest::addColumn<QByteArray>("captions");
    QTest::addColumn<QStringList>("findings");
    const QByteArray times = "00:00.000 --> 00:01.000\n";
    const QStringList tooMany { QStringLiteral("HV312 A.xml:2") };
    QTest::newRow("200") << (times + "A\n\n").repeated(200) + "NOTE The end" << QStringList();
    QTest::newRow("201") << (times + "A\n\n").repeated(201) << tooMany;
    QTest::newRow("large file") << QByteArray(70000, '\n') << tooMany;
    QTest::newRow("long texts") << (times + QByteArray(250, 'x') + "\n\n").repeated(100)
                                << QStringList { QStringLiteral("HV403 A.xml:2") };
}

void tst_ToolCheckMedia::shouldFindCaptionsBeyondTheLimits()
{
    QFETCH(QByteArray, captions);
    QFETCH(QStringList, findings);
    const ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 0.2 -pix_fmt yuv420p"));
    for (const QByteArray &attribute : { QByteArray(), QByteArray(" captions='a.vtt'") }) {
        PackageFolder folder;
        folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                              control("<hovlet key='a' clip='a.mp4'" + attribute + "/>"));
        folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
        folder.add(QStringLiteral("P.hovlets/Resources/a.vtt"), "WEBVTT\n\n" + captions);
        QCOMPARE(found({}, folder.path()), findings);
    }
}

void tst_ToolCheckMedia::shouldCheckVariantsOfClips()
{
    const ClipFolder clips;
    const auto clip = [&](const char *name, const char *size) {
        return ClipFolder::read(clips.clip(QLatin1String(name), QLatin1String(size),
                                           QStringLiteral("-t 0.2 -pix_fmt yuv420p")));
    };
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    const QString dense = QStringLiteral("P.hovlets/Resources/a@2x.mp4");
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), clip("a.mp4", "64x48"));
    folder.add(dense, clip("double.mp4", "128x96"));
    QCOMPARE(found({}, folder.path()), QStringList());
    folder.add(dense, clip("wrong.mp4", "128x80"));
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV311 A.xml:2") });
    folder.add(dense, clip("double.mp4", "128x96") + QByteArray(2000000, '\0'));
    QCOMPARE(found({ QStringLiteral("--max-megabytes"), QStringLiteral("1") }, folder.path()),
             QStringList { QStringLiteral("HV305 A.xml:2") });
}

HOVLETS_TEST_MAIN(tst_ToolCheckMedia)
#include "tst_tool_check_media.moc"
