// SPDX-License-Identifier: Apache-2.0
#include "HVControlFiles.h"
#include "HVLimits.h"
#include "PackageFolder.h"
#include "TestMain.h"

#include <sys/stat.h>

using namespace Hovlets;

namespace {

HVControlFiles::File file(const char *name, int depth = 2)
{
    return { QLatin1String(name), depth };
}

QStringList names(const HVControlFiles &files)
{
    QStringList names;
    const QList<HVControlFiles::File> all = files.files();
    for (const HVControlFiles::File &file : all)
        names += QStringLiteral("%1 %2").arg(file.path).arg(file.depth);
    return names;
}

} // namespace

class tst_HVControlFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldKeepEachFileOnce()
    {
        HVControlFiles files;
        QVERIFY(files.prepend(file("P")));
        QVERIFY(files.prepend(file("Q")));
        QVERIFY(files.append(file("R")));
        const QStringList expected { QStringLiteral("Q 2"), QStringLiteral("P 2"),
                                     QStringLiteral("R 2") };
        QCOMPARE(names(files), expected);

        for (const char *name : { "P", "Q", "R" }) {
            QVERIFY(!files.prepend(file(name)));
            QVERIFY(!files.append(file(name)));
        }
        QCOMPARE(names(files), expected);

        // A repeated path counts as known only with the same depth.
        QVERIFY(files.prepend(file("R", 1)));
        QVERIFY(files.append(file("Q", 3)));
        QVERIFY(files.append(file("p")));
        const QStringList behind { QStringLiteral("Q 3"), QStringLiteral("p 2") };
        QCOMPARE(names(files), QStringList(QStringLiteral("R 1")) + expected + behind);
    }

    void shouldRecogniseControlFilesByTheirFirstStartTag_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("isControlFile");

        QTest::newRow("root") << QByteArray("<hovlets></hovlets>") << true;
        QTest::newRow("closed root") << QByteArray("<hovlets/>") << true;
        QTest::newRow("attribute") << QByteArray("<hovlets locale=\"en_US\">\n</hovlets>") << true;
        QTest::newRow("spaces") << QByteArray("  <hovlets \t >") << true;
        QTest::newRow("after a declaration")
                << QByteArray("<?xml version=\"1.0\"?>\n<hovlets>") << true;
        QTest::newRow("after everything")
                << QByteArray("\xef\xbb\xbf<?xml version=\"1.0\"?>\r\n<!-- a comment -->\r\n"
                              "<!DOCTYPE hovlets>\r\n<?pi data?>\r\n\r\n<hovlets>")
                << true;
        QTest::newRow("on the declaration's line")
                << QByteArray("<?xml version=\"1.0\"?><!-- --><hovlets>") << true;
        QTest::newRow("after a lone sign") << QByteArray("<!-- 1 < 2 -->\n<hovlets>") << true;

        QTest::newRow("entry") << QByteArray("<hovlet key=\"a\"/>") << false;
        QTest::newRow("longer") << QByteArray("<hovletss>") << false;
        QTest::newRow("capital") << QByteArray("<Hovlets>") << false;
        QTest::newRow("prefix") << QByteArray("<x:hovlets>") << false;
        QTest::newRow("other root first") << QByteArray("<html>\n<hovlets>") << false;
        QTest::newRow("tag in a comment") << QByteArray("<!-- <b> -->\n<hovlets>") << false;
        QTest::newRow("letters of all scripts")
                << QByteArray("<!-- <\xc3\xa4> -->\n<hovlets>") << false;
        QTest::newRow("letter with an accent of its own")
                << QByteArray("<!-- <e\xcc\x81> -->\n<hovlets>") << false;
        QTest::newRow("line end after the name") << QByteArray("<hovlets\nlocale=\"\">") << false;
        QTest::newRow("space and line end") << QByteArray("<hovlets \r\nlocale=\"\">") << false;
        QTest::newRow("nothing after the name") << QByteArray("<hovlets") << false;
        QTest::newRow("no tag") << QByteArray("hovlets\n") << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("UTF-16") << QByteArray("\xff\xfe<\0h\0o\0v\0l\0e\0t\0s\0>\0", 20) << false;
        QTest::newRow("megabytes of nothing") << QByteArray(20LL * 1024 * 1024, 'x') << false;
        QTest::newRow("megabytes of invalid tags")
                << QByteArray("< ").repeated(5LL * 1024 * 1024) << false;

        QTest::newRow("after a long comment")
                << QByteArray("<!--" + QByteArray(10000, 'x') + "-->\n<hovlets>") << true;
        QTest::newRow("after many lines")
                << QByteArray(QByteArray("<!-- line -->\n").repeated(1000) + "<hovlets>") << true;
        QTest::newRow("across four kilobytes")
                << QByteArray(QByteArray(4090, '\n') + "<hovlets>") << true;

        // Lines are read in pieces of about 1,024 bytes.
        QTest::newRow("far in a long line")
                << QByteArray("<!--" + QByteArray(3000, 'x') + "--><hovlets>") << true;
        QTest::newRow("in the first piece")
                << QByteArray(QByteArray(1014, ' ') + "<hovlets>") << true;
        QTest::newRow("one byte too far")
                << QByteArray(QByteArray(1015, ' ') + "<hovlets>") << false;
        QTest::newRow("across two pieces")
                << QByteArray(QByteArray(1016, ' ') + "<hovlets>") << false;
        QTest::newRow("in the second piece")
                << QByteArray(QByteArray(1024, ' ') + "<hovlets>") << true;
    }

    void shouldRecogniseControlFilesByTheirFirstStartTag()
    {
        QFETCH(QByteArray, content);
        const PackageFolder folder;
        const QString path = folder.add(QStringLiteral("a.xml"), content);
        QTEST(HVControlFiles::isControlFile(path), "isControlFile");
    }

    void shouldSkipWhatItCannotRead()
    {
        const PackageFolder folder;
        folder.add(QStringLiteral("folder.xml/file"), "<hovlets>");
        const QString link = folder.path() + QStringLiteral("/link.xml");
        QVERIFY(QFile::link(folder.path() + QStringLiteral("/gone"), link));
        QVERIFY(!HVControlFiles::isControlFile(folder.path() + QStringLiteral("/folder.xml")));
        QVERIFY(!HVControlFiles::isControlFile(folder.path() + QStringLiteral("/no.xml")));
        QVERIFY(!HVControlFiles::isControlFile(link));
    }

    void shouldReportWhyAFileIsNotRead()
    {
        const PackageFolder folder;
        const QString large =
                folder.add(QStringLiteral("a.xml"), "<hovlets>" + QByteArray(99, ' '));
        QString problem;
        QVERIFY(HVControlFiles::findControlFile(large, problem));
        QCOMPARE(problem, QString());

        HVLimits limits;
        limits.controlFileSize = 100;
        HVLimits::setCurrent(limits);
        QVERIFY(!HVControlFiles::findControlFile(large, problem));
        HVLimits::setCurrent({});
        QCOMPARE(problem, QStringLiteral("larger than 100 bytes"));

        const QString pipe = folder.path() + QStringLiteral("/b.xml");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!HVControlFiles::findControlFile(pipe, problem));
        QCOMPARE(problem, QStringLiteral("not a regular file"));
        QVERIFY(!HVControlFiles::findControlFile(folder.path(), problem));
        QCOMPARE(problem, QString());
    }

    void shouldCountTheLevelsBelowAFolder_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("location");
        QTest::addColumn<int>("depth");
        const QString package = QStringLiteral("/Foo.hovlets");
        QTest::newRow("standard") << QStringLiteral("/Foo.hovlets/Control/a.xml") << package << 2;
        QTest::newRow("in the package") << QStringLiteral("/Foo.hovlets/a.xml") << package << 1;
        QTest::newRow("deeper") << QStringLiteral("/Foo.hovlets/Control/x/a.xml") << package << 3;
        QTest::newRow("ends in a separator")
                << QStringLiteral("/Foo.hovlets/Control/a.xml") << package + QLatin1Char('/') << 2;
        QTest::newRow("the same") << QStringLiteral("/Foo.hovlets/a.xml")
                                  << QStringLiteral("/Foo.hovlets/a.xml") << 0;
        QTest::newRow("through a link") << QStringLiteral("/Link.hovlets/Control/a.xml")
                                        << QStringLiteral("/Link.hovlets") << 2;
        QTest::newRow("by another name than the link")
                << QStringLiteral("/Link.hovlets/Control/a.xml") << package << -1;
        QTest::newRow("elsewhere") << QStringLiteral("/Bar.hovlets/a.xml") << package << -1;
        QTest::newRow("other case")
                << QStringLiteral("/Foo.hovlets/a.xml") << QStringLiteral("/foo.hovlets") << -1;
        QTest::newRow("prefix of the name")
                << QStringLiteral("/Foo.hovletsX/Control/a.xml") << package << -1;
        QTest::newRow("prefix without a folder")
                << QStringLiteral("/Foo.hovlets/a.xml") << QStringLiteral("/Foo.hov") << -1;
        QTest::newRow("up and away")
                << QStringLiteral("/Foo.hovlets/../Bar.hovlets/a.xml") << package << -1;
    }

    void shouldCountTheLevelsBelowAFolder()
    {
        QFETCH(QString, file);
        QFETCH(QString, location);
        const PackageFolder folder;
        for (const char *path :
             { "Foo.hovlets/a.xml", "Foo.hovlets/Control/a.xml", "Foo.hovlets/Control/x/a.xml",
               "Foo.hovletsX/Control/a.xml", "Bar.hovlets/a.xml" })
            folder.add(QLatin1String(path), "<hovlets/>");
        QVERIFY(QFile::link(folder.path() + QStringLiteral("/Foo.hovlets"),
                            folder.path() + QStringLiteral("/Link.hovlets")));
        HVControlFiles files;
        for (int again = 0; again < 2; ++again)
            QTEST(files.depthBelow(folder.path() + file, folder.path() + location), "depth");
    }

    void shouldDistinguishTheFilesOfDifferentFolders()
    {
        const PackageFolder folder;
        const QString package = folder.path() + QStringLiteral("/Foo.hovlets");
        const QString deep = folder.add(QStringLiteral("Foo.hovlets/Control/a.xml"), {});
        const QString high = folder.add(QStringLiteral("Foo.hovlets/a.xml"), {});
        HVControlFiles files;
        QCOMPARE(files.depthBelow(deep, package), 2);
        QCOMPARE(files.depthBelow(high, package), 1);
        QCOMPARE(files.depthBelow(deep, package), 2);
        QCOMPARE(files.depthBelow(deep, package + QStringLiteral("/Control")), 1);
        QCOMPARE(files.depthBelow(deep, folder.path()), 3);
    }

    void shouldFindAFolderThatComesLater()
    {
        const PackageFolder folder;
        const QString package = folder.path() + QStringLiteral("/Foo.hovlets");
        const QString path = package + QStringLiteral("/Control/a.xml");
        HVControlFiles files;
        QCOMPARE(files.depthBelow(path, package), -1);
        folder.add(QStringLiteral("Foo.hovlets/Control/a.xml"), {});
        QCOMPARE(files.depthBelow(path, package), 2);
    }
};

HOVLETS_TEST_MAIN(tst_HVControlFiles)
#include "tst_hvcontrolfiles.moc"
