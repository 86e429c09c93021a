// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "HVLimits.h"
#include "MemoryPeak.h"
#include "OpenCounter.h"
#include "TestMain.h"
#include "Text.h"
#include "ThreadTime.h"

#include <QtCore/QTemporaryDir>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>

using namespace Hovlets;

namespace {

/// A local port that accepts any connection.
class ListeningPort
{
    Q_DISABLE_COPY_MOVE(ListeningPort)

public:
    ListeningPort()
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_address;
        auto *address = reinterpret_cast<sockaddr *>(&m_address);
        if (::bind(m_socket, address, size) != 0 || ::listen(m_socket, 8) != 0
            || ::getsockname(m_socket, address, &size) != 0)
            qFatal("cannot listen on a local port");
    }

    ~ListeningPort() { ::close(m_socket); }

    QByteArray url() const
    {
        return "http://127.0.0.1:" + QByteArray::number(ntohs(m_address.sin_port)) + "/x.png";
    }

    bool wasCalled() const
    {
        const int connection = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection >= 0)
            ::close(connection);
        return connection >= 0;
    }

private:
    int m_socket;
    sockaddr_in m_address = {};
};

QByteArray cdata(const QByteArray &text)
{
    return "<p><![CDATA[" + text + "]]></p>";
}

QByteArray repeated(const char *text, int times)
{
    return QByteArray(text).repeated(times);
}

} // namespace

/// Tests how much an entry may cost the host, whatever its content.
class tst_DefaultUiLimits : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        if (m_bench)
            m_bench->host.forgetMessages();
        DefaultUiTest::cleanup();
        HVLimits::setCurrent({});
    }

    void shouldShowAnyEntryQuickly_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<QString>("limit");
        const auto row = [](const char *name, const QByteArray &children, const char *limit) {
            QTest::newRow(name) << children << text(limit);
        };
        row("nested lists", cdata(repeated("<ul><li>", 280)), "300 elements");
        row("nested lists with text", cdata(repeated("<ul><li>x", 5000)), "300 elements");
        row("links without an end", cdata(repeated("<a href=\"x\">", 2000)), "300 elements");
        row("links to files without an end", cdata(repeated("<a href=\"x/y\">z", 2000)),
            "300 elements");
        row("tags without an end", cdata(repeated("<b", 30000)), "20000 characters");
        row("a word", "<p>" + repeated("w", 100000) + "</p>", "20000 characters");
        row("a word in markup", cdata("<tt>" + repeated("w", 100000)), "20000 characters");
        row("the words of a page", cdata("<tt>" + repeated("word ", 20000)), "20000 characters");
        row("a page of markup", cdata(repeated("<tt>x</tt> <b>y</b>", 6000)), "300 elements");
        row("placeholders", "<p>" + repeated("%(application)s", 40000) + "</p>",
            "20000 characters");
        row("placeholders in markup", cdata("<tt>" + repeated("%(application)s", 40000)),
            "20000 characters");
        row("paragraphs", repeated("<p>x</p>", 5000), "300 elements");
        row("rich paragraphs", cdata("<tt>x</tt>").repeated(5000), "300 elements");
        row("elements in elements",
            repeated("<x>y", 250) + repeated("<p>z</p>", 40) + repeated("</x>", 250), "");
        row("elements in elements, each with more",
            repeated(("<x>" + repeated("<p>z</p>", 40)).constData(), 250) + repeated("</x>", 250),
            "300 elements");
        row("accents", "<p>" + repeated("\xcc\x81", 50000) + "</p>", "20000 characters");
        row("emoji", "<p>" + repeated("\xf0\x9f\x98\x80", 50000) + "</p>", "20000 characters");
        row("right to left", "<p>" + repeated("\xd8\xb4\xd9\x88\xd9\x85 a ", 10000) + "</p>",
            "20000 characters");
        row("lines", cdata(repeated("<br>x", 20000)), "300 elements");
        row("missing pictures", repeated("<img src=\"x.png\" alt=\"y\"/>", 5000), "300 elements");
    }

    void shouldShowAnyEntryQuickly()
    {
        QFETCH(QByteArray, children);
        QFETCH(QString, limit);
        make("title=\"T\"", children);
        m_bench->host.manager()->setGlobalProperty(text("application"), text("An application"));
        const MemoryPeak memory;
        const ThreadTime time;
        QVERIFY(m_bench->show());
        m_bench->settle();
        // About 100 ms, and several times that with the sanitizers.
        QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
        if (!isSanitized())
            QVERIFY2(memory.bytes() < 256 << 20, qPrintable(QString::number(memory.bytes())));

        const QStringList warnings = m_bench->host.messagesOf(HVMessageWarning);
        QCOMPARE(int(warnings.size()), limit.isEmpty() ? 0 : 1);
        if (!limit.isEmpty()) {
            QVERIFY(warnings.first().endsWith(QLatin1String("more than ") + limit));
            QVERIFY(warnings.first().contains(QLatin1String("content.xml")));
            QVERIFY(m_bench->texts("paragraph").constLast().contains(QChar(0x2026)));
        }
        // Only once, even for the next show.
        m_bench->host.popup()->hide();
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->host.messagesOf(HVMessageWarning), warnings);
    }

    void shouldOpenNoFileAndNoConnection_data()
    {
        QTest::addColumn<QByteArray>("markup"); // "@" marks an address
        const auto row = [](const char *markup) { QTest::newRow(markup) << QByteArray(markup); };
        row("<p style=\"background-image:url(@)\">x</p>");
        row("<span style='background-image:url(@)'>x</span>");
        row("<ul style='list-style-image:url(@)'><li style='background:url(@)'>x</li></ul>");
        row("<font style=\"background: red url(@)\">x</font>");
        row("<p style=\"background-image:url('@')\"><img src=\"@\">x</p>");
        row("<b>x</b> <img src='@'>");
        row("<tt>x</tt> <img src='@'><body background='@'><table background='@'><tr><td>y");
        row("<style>p { background-image: url(@); }</style><p>x</p>");
        row("<link rel='stylesheet' href='@'><tt>x</tt>");
        row("<object data='@'></object><iframe src='@'></iframe><tt>x</tt>");
        row("<a href='@'>x</a> <tt>y</tt>");
    }

    /// Opens nothing over the network or in the file system, however the content is shown.
    void shouldOpenNoFileAndNoConnection()
    {
        QFETCH(QByteArray, markup);
        const ListeningPort port;
        const QTemporaryDir folder;
        const QByteArray canary = QFile::encodeName(folder.filePath(text("canary.png")));
        QVERIFY(QImage(4, 4, QImage::Format_RGB32).save(QFile::decodeName(canary)));
        const QByteArray fifo = QFile::encodeName(folder.filePath(text("fifo.png")));
        QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
        QByteArray children;
        for (const QByteArray &address : { port.url(), canary, "file://" + canary, fifo }) {
            const QByteArray text = QByteArray(markup).replace("@", address);
            children += cdata(text) + cdata("<tt>x</tt>" + text) + "<link href=\"a/b\"><![CDATA["
                    + text + "]]></link>";
        }
        make("title=\"" + port.url() + "\"", children);
        OpenCounter opened(QFile::decodeName(canary));
        QVERIFY(m_bench->show());
        m_bench->settle();
        QTest::qWait(50); // gives other threads time to act
        m_bench->settle();
        QVERIFY(!port.wasCalled());
        QCOMPARE(opened.take(), 0);
    }

    void shouldShowPicturesInRegularFilesOnly_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : { "fifo", "folder", "device", "dangling link", "link to a fifo" })
            QTest::newRow(what) << text(what);
    }

    void shouldShowPicturesInRegularFilesOnly()
    {
        QFETCH(QString, what);
        make("", "<img src=\"x.png\" alt=\"A picture\"/>");
        const QByteArray path = resourcePath(text("x.png"));
        const auto link = [&](const QByteArray &target) {
            return ::symlink(target.constData(), path.constData()) == 0;
        };
        if (what == QLatin1String("fifo"))
            QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        else if (what == QLatin1String("folder"))
            QVERIFY(QDir().mkpath(QFile::decodeName(path)));
        else if (what == QLatin1String("device"))
            QVERIFY(link("/dev/zero"));
        else if (what == QLatin1String("dangling link"))
            QVERIFY(link("nowhere"));
        else
            QVERIFY(::mkfifo((path + ".fifo").constData(), 0600) == 0 && link(path + ".fifo"));
        QVERIFY(m_bench->show());
        QCOMPARE(m_bench->texts("paragraph"), QStringList({ text("A picture") }));
        QVERIFY(!m_bench->item("image"));
    }

    void shouldDecodeLargePicturesWithinItsMemory_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("references");
        QTest::addColumn<int>("pictures");
        QTest::newRow("too large") << QSize(20000, 20000) << 1 << 0;
        QTest::newRow("just fits") << QSize(5700, 5700) << 1 << 1;
        QTest::newRow("thirty times") << QSize(5700, 5700) << 30 << 20;
    }

    void shouldDecodeLargePicturesWithinItsMemory()
    {
        QFETCH(QSize, size);
        QFETCH(int, references);
        QFETCH(int, pictures);
        make("", repeated("<img src=\"x.png\" alt=\"A picture\"/>", references));
        {
            QImage image(size, QImage::Format_Mono);
            image.fill(1);
            QVERIFY(image.save(QFile::decodeName(resourcePath(text("x.png")))));
        }
        const MemoryPeak memory;
        const ThreadTime time;
        QVERIFY(m_bench->show());
        const QList<QQuickItem *> images = m_bench->items(text("image"));
        QCOMPARE(int(images.size()), pictures);
        m_bench->settle();
        for (const QQuickItem *image : images)
            QTRY_VERIFY_WITH_TIMEOUT(!image->property("loading").toBool(), 30000);
        if (pictures > 0)
            QCOMPARE(m_bench->grab().pixelColor(m_bench->place(images.first()).center().toPoint()),
                     QColor(Qt::white));
        QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
        if (!isSanitized())
            QVERIFY2(memory.bytes() < 256 << 20, qPrintable(QString::number(memory.bytes())));
    }

private:
    static bool isSanitized()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        return true;
#else
        return false;
#endif
    }

    QByteArray resourcePath(const QString &name) const
    {
        const QString other = m_bench->folder.add(text("Test.hovlets/Resources/other"), {});
        return QFile::encodeName(QFileInfo(other).dir().filePath(name));
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiLimits)

#include "tst_defaultui_limits.moc"
