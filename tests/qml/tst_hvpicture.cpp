// SPDX-License-Identifier: Apache-2.0
#include "HVFileBytes.h"
#include "HVLimits.h"
#include "HVPictureComponent.h"
#include "HVPictureFile.h"
#include "HVPictureHeader.h"
#include "OpenCounter.h"
#include "QmlPopup.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QBuffer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QtEndian>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

using namespace Hovlets;

namespace {

QByteArray encoded(const QSize &size, const QByteArray &format, const QColor &colour = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    if (!writer.write(image))
        qFatal("%s cannot be written", format.constData());
    return bytes;
}

HVPictureHeader headerOf(QByteArray file)
{
    QBuffer buffer(&file);
    if (!buffer.open(QIODevice::ReadOnly))
        qFatal("cannot open a buffer");
    return readPictureHeader(buffer);
}

/// A segment of a JPEG file.
QByteArray segment(int marker, const QByteArray &content)
{
    const auto length = content.size() + 2;
    return QByteArray("\xff") + char(marker) + char(length >> 8) + char(length & 0xff) + content;
}

/// The header of a JPEG file whose first scan has \a scanned of \a components.
QByteArray jpegHeader(int frame, int components, int scanned, int side)
{
    QByteArray size(4, '\0');
    qToBigEndian(quint16(side), size.data());
    qToBigEndian(quint16(side), size.data() + 2);
    return "\xff\xd8"
            + segment(frame,
                      char(8) + size + char(components)
                              + QByteArray(components * qsizetype(3), '\1'))
            + segment(0xda, char(scanned) + QByteArray(scanned * qsizetype(2) + 3, '\0'));
}

} // namespace

/// Tests pictures in content: how much of their files is read, and the item that shows them.
class tst_HVPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { HVLimits::setCurrent({}); }

    void shouldReadTheHeader_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QSize>("size");
        const auto row = [](const char *name, const QByteArray &file, const char *format,
                            const QSize &size) {
            QTest::newRow(name) << file << QByteArray(format) << size;
        };
        const QSize size(300, 7);
        row("PNG", encoded(size, "png"), "png", size);
        row("JPEG", encoded(size, "jpeg"), "jpeg", size);
        row("BMP", encoded(size, "bmp"), "bmp", size);
        row("GIF", QByteArray::fromHex("474946383961 2c01 0700 00"), "gif", size);
        row("WebP, lossy", QByteArray("RIFF....WEBPVP8 ....\0\0\0\x9d\x01\x2a\x2c\x01\x07\0", 30),
            "webp", size);
        row("WebP, lossless", QByteArray("RIFF....WEBPVP8L....\x2f\x2b\x81\x01\x00", 25), "webp",
            size);
        row("WebP, extended", QByteArray("RIFF....WEBPVP8X....\0\0\0\0\x2b\x01\0\x06\0\0", 30),
            "webp", size);
        row("BMP, old", QByteArray("BM............\x0c\0\0\0\x2c\x01\x07\0", 22), "bmp", size);
        row("BMP, from its top",
            QByteArray("BM............\x28\0\0\0\x2c\x01\0\0\xf9\xff\xff\xff", 26), "bmp", size);
        row("SVG", "<?xml version='1.0'?>\n<svg width='300px' height=\"7\"/>", "svg", size);
        row("SVG with a view box", "<svg viewBox='0,0 300 7'><g/></svg>", "svg", size);
        row("SVG with entities", "<!DOCTYPE svg [<!ENTITY a 'b'>]><svg width='300' height='7'/>",
            "", QSize());
        row("SVG of its container's size", "<svg width='100%' height='100%'/>", "svg", QSize());
        row("PNG, torn", encoded(size, "png").left(18), "png", QSize(0, 0));
        row("JPEG, torn", encoded(size, "jpeg").left(60), "jpeg", QSize());
        row("a size past all bounds",
            QByteArray("\x89PNG\r\n\x1a\n....IHDR\xff\xff\xff\xff\x80\0\0\0", 24), "png",
            QSize(-1, std::numeric_limits<int>::min()));
        // The decoder skips what the markers without a length contain in a different way.
        const QByteArray large = encoded({ 3000, 3000 }, "jpeg");
        const QByteArray hidden =
                QByteArray(65500, '\0') + QByteArray::fromHex("ffc0 0011 08 0007 0009 03");
        for (const int marker : { 0x01, 0xd0, 0xd7, 0xd8 }) {
            QTest::addRow("JPEG with the marker %x", marker)
                    << QByteArray("\xff\xd8\xff" + QByteArray(1, char(marker))
                                  + segment(0xe0, hidden.leftJustified(65531, '\0')) + large.mid(2))
                    << QByteArray("jpeg") << QSize();
        }
        row("JPEG with two frames",
            large.left(2) + segment(0xc0, QByteArray::fromHex("08 0007 0009 01 011100"))
                    + large.mid(2),
            "jpeg", QSize());
        row("JPEG with a camera's data",
            large.left(2) + segment(0xe1, QByteArray(65000, 'x')).repeated(9) + large.mid(2),
            "jpeg", QSize(3000, 3000));
        row("SVG after a long comment", "<!--" + QByteArray(9000, ' ') + "--><svg width='9'/>", "",
            QSize());
        row("SVG with many attributes",
            "<svg width='9' height='9'" + QByteArray(" a=''").repeated(200) + "/>", "", QSize());
        row("text", "no picture", "", QSize());
        row("nothing", {}, "", QSize());
    }

    void shouldReadTheHeader()
    {
        QFETCH(QByteArray, file);
        const HVPictureHeader header = headerOf(file);
        QTEST(header.format, "format");
        QTEST(header.size, "size");
    }

    void shouldSurviveAnyHeader()
    {
        QRandomGenerator random(1);
        const QByteArrayList files { encoded({ 9, 9 }, "png"),    encoded({ 9, 9 }, "jpeg"),
                                     encoded({ 9, 9 }, "bmp"),    "GIF89a....",
                                     "RIFF....WEBPVP8L.........", "<svg viewBox='0 0 1 1'/>" };
        for (int i = 0; i < 20000; ++i) {
            QByteArray file = files.at(random.bounded(int(files.size())));
            for (int changes = random.bounded(6); changes > 0; --changes)
                file[random.bounded(int(file.size()))] = char(random.bounded(256));
            headerOf(file.left(random.bounded(int(file.size()) + 1)));
        }
    }

    void shouldCountTheMemoryOfTheDecoder_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<qint64>("bytesPerPixel");
        QTest::newRow("JPEG") << jpegHeader(0xc0, 3, 3, 640) << qint64 { 4 };
        QTest::newRow("JPEG, one scan for each component")
                << jpegHeader(0xc0, 3, 1, 640) << qint64 { 10 };
        QTest::newRow("JPEG, progressive") << jpegHeader(0xc2, 3, 3, 640) << qint64 { 10 };
        QTest::newRow("JPEG, progressive CMYK") << jpegHeader(0xc2, 4, 4, 640) << qint64 { 12 };
        QByteArray png = encoded({ 640, 640 }, "png");
        QTest::newRow("PNG") << png << qint64 { 4 };
        png[24] = 16;
        QTest::newRow("PNG, 16 bits") << png << qint64 { 8 };
    }

    void shouldCountTheMemoryOfTheDecoder()
    {
        QFETCH(QByteArray, file);
        QFETCH(qint64, bytesPerPixel);
        QCOMPARE(headerOf(file).size, QSize(640, 640));
        QCOMPARE(headerOf(file).memory, bytesPerPixel * 640 * 640);
        QmlPopup popup;
        const HVPictureFile picture(popup.folder.add(text("a"), file));
        HVLimits limits;
        limits.pictureMemory = bytesPerPixel * 640 * 640;
        HVLimits::setCurrent(limits);
        QCOMPARE(picture.size(), QSize(640, 640));
        limits.pictureMemory -= 1;
        HVLimits::setCurrent(limits);
        QCOMPARE(picture.size(), QSize());
    }

    void shouldReadTheHeaderOfAFileOnce()
    {
        QmlPopup popup;
        const QString path = popup.folder.add(text("a.png"), encoded({ 9, 9 }, "png"));
        QTRY_VERIFY(HVFileStatus(path).isSettled());
        OpenCounter opened(path);
        for (int i = 0; i < 5; ++i)
            QCOMPARE(HVPictureFile(path).size(), QSize(9, 9));
        QCOMPARE(opened.take(), 1);
        popup.folder.add(text("a.png"), encoded({ 9, 8 }, "png"));
        QCOMPARE(HVPictureFile(path).size(), QSize(9, 8));
    }

    void shouldNotDecompressTheTextsOfPngFiles()
    {
        QImage image(9, 7, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.setText(text("Note"), QString(100000, QLatin1Char('x')));
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QVERIFY(image.save(&buffer, "png"));
        QVERIFY(bytes.contains("zTXt"));
        QmlPopup popup;
        const QImage decoded =
                HVPictureFile(popup.folder.add(text("a.png"), bytes)).decode({ 9, 7 });
        QCOMPARE(decoded.size(), QSize(9, 7));
        QCOMPARE(decoded.pixelColor(8, 6), QColor(Qt::red));
        QCOMPARE(decoded.textKeys(), QStringList());
    }

    void shouldRefusePicturesThatTakeLongToDecode()
    {
        QmlPopup popup;
        const QByteArray jpeg = encoded({ 9, 9 }, "jpeg");
        const QString path =
                popup.folder.add(text("a.jpg"), jpeg + QByteArray("\xff\xda").repeated(100));
        QVERIFY(HVPictureFile(path).decode({ 9, 9 }).isNull());
        popup.folder.add(text("a.jpg"), jpeg);
        QCOMPARE(HVPictureFile(path).decode({ 9, 9 }).size(), QSize(9, 9));
    }

    void shouldKeepToTheLimits_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("shown");
        QTest::newRow("within") << QSize(100, 10) << true;
        QTest::newRow("past") << QSize(100, 11) << false;
    }

    void shouldKeepToTheLimits()
    {
        QFETCH(QSize, size);
        QFETCH(bool, shown);
        HVLimits limits;
        limits.pictureMemory = 4000;
        HVLimits::setCurrent(limits);
        QmlPopup popup;
        const HVPictureFile file(popup.folder.add(text("a.png"), encoded(size, "png")));
        QCOMPARE(!file.size().isEmpty(), shown);
        QCOMPARE(!file.decode(size).isNull(), shown);
    }

    void shouldHaveThePicturesSizeImmediatelyAndThePictureLater()
    {
        QmlPopup popup;
        popup.folder.add(text("Pack.hovlets/a.png"), encoded({ 60, 40 }, "png"));
        popup.show("HVPicture { objectName: 'p'; x: 10; y: 10; source: dataLocation + '/a.png'\n"
                   "width: implicitWidth; height: implicitHeight }");
        const auto *item = popup.item<HVPictureComponent>("p");
        QCOMPARE(QSizeF(item->implicitWidth(), item->implicitHeight()), QSizeF(60, 40));
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::red));
        QVERIFY(!item->isLoading());
        QCOMPARE(popup.pixel(69, 49), QColor(Qt::red));
        QCOMPARE(popup.pixel(70, 49), QColor(Qt::white));
        QCOMPARE(popup.pixel(9, 11), QColor(Qt::white));
    }

    void shouldDecodeAtTheSizeOnTheScreen()
    {
        // Stripes one pixel wide. Scaling the decoded picture down blends them into grey; skipping
        // pixels would lose them.
        QImage stripes(400, 400, QImage::Format_RGB32);
        for (int y = 0; y < 400; ++y)
            for (int x = 0; x < 400; ++x)
                stripes.setPixelColor(x, y, y % 2 ? Qt::black : Qt::white);
        QmlPopup popup;
        QVERIFY(stripes.save(popup.folder.add(text("Pack.hovlets/a.png"), {})));
        popup.show("HVPicture { objectName: 'p'; source: dataLocation + '/a.png'; width: 40; "
                   "height: 40 }");
        auto *item = popup.item<HVPictureComponent>("p");
        const auto isGrey = [&](int x, int y) {
            const QColor colour = popup.pixel(x, y);
            return qAbs(colour.red() - 127) < 40 && colour.red() == colour.blue();
        };
        QTRY_VERIFY(isGrey(20, 20));
        // Another size decodes the picture again.
        item->setSize({ 20, 20 });
        QTRY_COMPARE(popup.pixel(30, 30), QColor(Qt::white));
        QTRY_VERIFY(isGrey(10, 10));
    }

    void shouldClearThePictureOfAMissingFile()
    {
        QmlPopup popup;
        popup.folder.add(text("Pack.hovlets/a.png"), encoded({ 60, 40 }, "png"));
        popup.show("HVPicture { objectName: 'p'; source: dataLocation + '/a.png'; width: 60; "
                   "height: 40 }");
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::red));
        auto *item = popup.item<HVPictureComponent>("p");
        item->setSource(text("/nowhere"));
        QCOMPARE(item->implicitWidth(), 0.0);
        QVERIFY(!item->isLoading());
        QVERIFY(item->hasFailed());
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::white));
    }

    void shouldReportADamagedPicture()
    {
        QmlPopup popup;
        const QByteArray whole = encoded({ 60, 40 }, "png");
        popup.folder.add(text("Pack.hovlets/a.png"), whole.left(whole.size() / 2));
        popup.show(
                "HVPicture { objectName: 'p'; source: dataLocation + '/a.png'; width: 60; "
                "height: 40; property int failures: 0; property bool wasSound: false; "
                "onFailedChanged: ++failures; onLoadingChanged: if (loading) wasSound = !failed }");
        auto *item = popup.item<HVPictureComponent>("p");
        QTRY_VERIFY(item->hasFailed());
        QVERIFY(!item->isLoading());
        QCOMPARE(item->property("failures").toInt(), 1);
        QVERIFY(item->property("wasSound").toBool()); // the header is

        item->setSource(popup.folder.add(text("Pack.hovlets/b.png"), whole));
        QVERIFY(!item->hasFailed());
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::red));
        QVERIFY(!item->hasFailed());
    }

    void shouldReloadAFileThatChanged()
    {
        QmlPopup popup;
        const QString path =
                popup.folder.add(text("Pack.hovlets/a.png"), encoded({ 60, 40 }, "png"));
        popup.show("HVPicture { objectName: 'p'; source: dataLocation + '/a.png'; width: 60; "
                   "height: 40 }");
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::red));
        popup.folder.add(text("Pack.hovlets/a.png"), encoded({ 60, 41 }, "png", Qt::blue));
        popup.item<HVPictureComponent>("p")->setSource(path);
        QTRY_COMPARE(popup.pixel(11, 11), QColor(Qt::blue));
    }

    void shouldEndWhileItsFramesAreDecoded()
    {
        QmlPopup popup;
        popup.folder.add(text("Pack.hovlets/a.png"), encoded({ 3000, 3000 }, "png"));
        popup.show("Repeater { model: 5\nHVPicture { source: dataLocation + '/a.png'; width: 100 + "
                   "index; height: 100 } }");
        popup.picture();
        popup.host.reset();
    }
};

HOVLETS_TEST_MAIN(tst_HVPicture)

#include "tst_hvpicture.moc"
