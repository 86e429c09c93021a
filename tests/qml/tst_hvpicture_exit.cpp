// SPDX-License-Identifier: Apache-2.0
#define QT_STATICPLUGIN // the plug-in below is part of this program

#include "HVPictureLoader.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QSemaphore>
#include <QtCore/QtPlugin>
#include <QtGui/QGuiApplication>
#include <QtGui/QImageIOHandler>
#include <QtTest/QtTest>

using namespace Hovlets;

namespace {

// Never freed, because a thread uses them when the process ends.
auto *const begun = new QSemaphore;
auto *const never = new QSemaphore;

class StuckHandler : public QImageIOHandler
{
public:
    bool canRead() const override { return true; }
    bool supportsOption(ImageOption option) const override { return option == Size; }
    QVariant option(ImageOption) const override { return QSize(300, 7); }

    bool read(QImage *) override
    {
        begun->release();
        never->acquire();
        return false;
    }
};

} // namespace

/// Replaces Qt's plug-in for WebP, which is not on every machine, with a decoder that never ends.
class StuckPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "tst_hvpicture_exit.json")

public:
    Capabilities capabilities(QIODevice *, const QByteArray &format) const override
    {
        return format == "webp" ? CanRead : Capabilities();
    }

    QImageIOHandler *create(QIODevice *device, const QByteArray &format) const override
    {
        auto *handler = new StuckHandler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

/// Tests that the application ends although a picture is still being decoded.
class tst_HVPictureExit : public QObject
{
    Q_OBJECT

public:
    tst_HVPictureExit(int &argc, char **argv)
        : m_application(std::make_unique<QGuiApplication>(argc, argv))
    {
        QCoreApplication::setLibraryPaths({});
    }

private Q_SLOTS:
    /// Without a bound on the wait, the test ends by its time-out.
    void shouldEndWhileAPictureNeverEnds()
    {
        filterTestLog();
        const PackageFolder folder;
        const QString path =
                folder.add(text("a.webp"),
                           QByteArray("RIFF\x12\0\0\0WEBPVP8L\5\0\0\0\x2f\x2b\x81\x01\0\0", 26));
        QObject receiver;
        const HVPictureRequest request(path, { 9, 9 }, &receiver, [](const HVSharedPicture &) {
            QFAIL("the picture cannot be decoded");
        });
        const HVPictureRequest next(path, { 8, 8 }, &receiver, [](const HVSharedPicture &) {
            QFAIL("no picture is decoded at the end");
        });
        QVERIFY(begun->tryAcquire(1, 30000));
        m_application.reset();
        QVERIFY(!begun->tryAcquire());
    }

private:
    std::unique_ptr<QGuiApplication> m_application;
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    tst_HVPictureExit test(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

Q_IMPORT_PLUGIN(StuckPlugin)

#include "tst_hvpicture_exit.moc"
