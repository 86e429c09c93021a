// SPDX-License-Identifier: Apache-2.0
#include "HVFileBytes.h"
#include "PackageFolder.h"
#include "TestMain.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Hovlets;

namespace {

constexpr qint64 large = 100LL * 1024 * 1024;

} // namespace

class tst_HVFileBytes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadFiles_data()
    {
        QTest::addColumn<int>("size");
        for (int size : { 0, 1, 4095, 65535, 65536, 65537, 200000 })
            QTest::addRow("%d", size) << size;
    }

    void shouldReadFiles()
    {
        QFETCH(int, size);
        const PackageFolder folder;
        QByteArray content;
        while (content.size() < size)
            content += QByteArray::number(content.size()) + ' ';
        content.truncate(size);
        const QString path = folder.add(QStringLiteral("\u00e4"), content);
        const HVFileBytes all = HVFileBytes::all(path, size);
        QCOMPARE(all.result, HVFileBytes::Result::Read);
        QCOMPARE(all.bytes, content);
        QCOMPARE(HVFileBytes::head(path, 1000, large).bytes, content.left(1000));
        QCOMPARE(HVFileBytes::head(path, 70000, large).bytes, content.left(70000));
        if (size > 0) {
            QCOMPARE(HVFileBytes::all(path, size - 1).result, HVFileBytes::Result::TooLarge);
            QCOMPARE(HVFileBytes::head(path, 1, size - 1).result, HVFileBytes::Result::TooLarge);
            QCOMPARE(HVFileBytes::head(path, 1, size).result, HVFileBytes::Result::Read);
        }
    }

    void shouldReadResources()
    {
        QDirIterator files(QStringLiteral(":/"), QDir::Files, QDirIterator::Subdirectories);
        QVERIFY(files.hasNext()); // in Qt's own resources
        const QString path = files.next();
        QCOMPARE(HVFileBytes::all(path, large).bytes.size(), QFileInfo(path).size());
        QCOMPARE(HVFileBytes::all(path, 10).result, HVFileBytes::Result::TooLarge);
        QCOMPARE(HVFileBytes::head(path, 10, large).bytes.size(), 10);
    }

    void shouldRefuseIrregularFiles()
    {
        const PackageFolder folder;
        const QString pipe = folder.path() + QStringLiteral("/pipe");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QString link = folder.path() + QStringLiteral("/link");
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), link));
        const QString socketPath = folder.path() + QStringLiteral("/socket");
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, QFile::encodeName(socketPath).constData(),
                 sizeof address.sun_path);
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);

        for (const QString &path : { pipe, link, socketPath, QStringLiteral("/dev/zero") }) {
            QCOMPARE(HVFileBytes::all(path, 100).result, HVFileBytes::Result::NotRegular);
            QCOMPARE(HVFileBytes::head(path, 100, large).result, HVFileBytes::Result::NotRegular);
            QCOMPARE(HVFileBytes::head(path, 100, large).bytes, QByteArray());
        }
        close(socket);
    }

    void shouldRefuseFilesThatCannotBeRead()
    {
        const PackageFolder folder;
        const QString link = folder.path() + QStringLiteral("/link");
        QVERIFY(QFile::link(folder.path() + QStringLiteral("/gone"), link));
        for (const QString &path :
             { folder.path(), link, folder.path() + QStringLiteral("/none"), QString() }) {
            QCOMPARE(HVFileBytes::all(path, 100).result, HVFileBytes::Result::Unreadable);
            QCOMPARE(HVFileBytes::head(path, 100, large).result, HVFileBytes::Result::Unreadable);
        }
    }

    void shouldNotReadAFileOfTheSystemWithoutEnd()
    {
        // The file system reports a size of 0 for a file that has content.
        const QString path = QStringLiteral("/proc/self/maps");
        if (!QFile::exists(path))
            QSKIP("only Linux has files whose size is reported as 0");
        QVERIFY(HVFileBytes::all(path, large).bytes.size() > 100);
        QCOMPARE(HVFileBytes::all(path, 100).result, HVFileBytes::Result::TooLarge);
        QCOMPARE(HVFileBytes::head(path, 100, large).bytes.size(), 100);
    }

    void shouldProveThatAFileIsUnchanged()
    {
        const PackageFolder folder;
        const QString path = folder.add(QStringLiteral("file"), "1");
        // Right after a change, time stamps prove nothing.
        QVERIFY(!HVFileStatus(path).isSameAs(HVFileStatus(path)));
        QTRY_VERIFY(HVFileStatus(path).isSameAs(HVFileStatus(path)));

        HVFileStatus before(path);
        folder.add(QStringLiteral("file"), "2");
        QVERIFY(!before.isSameAs(HVFileStatus(path)));

        // Nor does a time stamp that was set back, nor another file with the same name.
        QTRY_VERIFY(HVFileStatus(path).isSameAs(HVFileStatus(path)));
        before = HVFileStatus(path);
        {
            QFile file(path);
            const QDateTime modified = QFileInfo(path).lastModified();
            QVERIFY(file.open(QIODevice::ReadWrite) && file.write("3") == 1 && file.flush());
            QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
        }
        QVERIFY(!before.isSameAs(HVFileStatus(path)));
    }

    void shouldProveNothingWithoutAFile()
    {
        const QString path = QStringLiteral("/no/such/file");
        QVERIFY(!HVFileStatus(path).isSameAs(HVFileStatus(path)));
        QVERIFY(!HVFileStatus().isSameAs(HVFileStatus()));
    }
};

HOVLETS_TEST_MAIN(tst_HVFileBytes)
#include "tst_hvfilebytes.moc"
