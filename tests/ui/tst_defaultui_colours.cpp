// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiLooksTest.h"
#include "TestMain.h"

using namespace Hovlets;

/// Tests colours of the default user interface.
class tst_DefaultUiColours : public DefaultUiLooksTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldBeReadableInTheColoursOfToolTips_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(0xf7f7f7) << QColor(0x232629);
        QTest::newRow("dark") << QColor(0x2a2e32) << QColor(0xfcfcfc);
        QTest::newRow("yellow") << QColor(0xffffdc) << QColor(Qt::black);
        QTest::newRow("low contrast") << QColor(0xffffff) << QColor(0x707070);
        QTest::newRow("high contrast") << QColor(Qt::black) << QColor(Qt::white);
        QTest::newRow("high contrast, yellow") << QColor(Qt::black) << QColor(Qt::yellow);
        QTest::newRow("high contrast, light") << QColor(Qt::white) << QColor(Qt::black);
    }

    void shouldShowMarksInTheColoursOfToolTips_data()
    {
        shouldBeReadableInTheColoursOfToolTips_data();
    }

    /// The handle of the scroll bar, on a background of any brightness.
    void shouldShowMarksInTheColoursOfToolTips()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        setColours(base, text, Qt::blue);
        make("title=\"A\"", "<p>" + QByteArray("word ").repeated(2000) + "</p>");
        m_bench->context().set(HVKeyExactToolTipColors, true);
        QVERIFY(m_bench->show());
        const QColor handle = strongestOn(m_bench->item("scrollHandle"), base);
        QVERIFY(DefaultUiBench::contrast(handle, base) >= 3);
    }

    void shouldBeReadableInTheColoursOfToolTips()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        setColours(base, text, Qt::blue);
        // Only large letters have pixels in the full colour.
        setPixelSize(40);
        make("title=\"HHH\" shortcut=\"HHH\"", "<p>HHH</p><img alt=\"HHH\" src=\"-\"/>");
        m_bench->context().set(HVKeyExactToolTipColors, true);
        QVERIFY(m_bench->show());
        const QImage image = m_bench->grab();
        QCOMPARE(image.pixelColor(image.width() / 2, 3), base);

        const QRectF badge = m_bench->place(m_bench->item("badge"));
        const QColor face = image.pixelColor(qRound(badge.left()) + 12, qRound(badge.top()) + 4);
        QVERIFY(face != base || DefaultUiBench::contrast(text, base) < 5);
        QVERIFY(readable(m_bench->item("shortcut"), face));
        QVERIFY(readable(m_bench->item("title"), base));
        const QList<QQuickItem *> paragraphs = m_bench->items(QStringLiteral("paragraph"));
        QCOMPARE(paragraphs.size(), 2);
        QVERIFY(readable(paragraphs.at(0), base));
        QVERIFY(readable(paragraphs.at(1), base));
        QVERIFY(readable(m_bench->item("pin"), base));
    }

    void shouldReplacePaleYellowUnlessTheHostWantsIt_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("windowBase");
        QTest::addColumn<QColor>("windowText");
        QTest::addColumn<bool>("exact");
        QTest::addColumn<QColor>("shown");
        const QColor yellow(0xffffdc);
        const QColor other(0xd0e8ff);
        const QColor dark(0x232323);
        const QColor pale(0xf0f0f0);
        QTest::newRow("light") << yellow << QColor(Qt::white) << QColor(Qt::black) << false
                               << QColor(Qt::white);
        QTest::newRow("dark") << yellow << dark << pale << false << dark;
        QTest::newRow("exact") << yellow << QColor(Qt::white) << QColor(Qt::black) << true
                               << yellow;
        QTest::newRow("unreadable") << yellow << pale << QColor(Qt::white) << false << yellow;
        QTest::newRow("chosen colour")
                << other << QColor(Qt::white) << QColor(Qt::black) << false << other;
    }

    void shouldReplacePaleYellowUnlessTheHostWantsIt()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, windowBase);
        QFETCH(QColor, windowText);
        QFETCH(bool, exact);
        setColours(base, Qt::black, Qt::blue);
        const QPalette before = QApplication::palette();
        QPalette application = before;
        application.setColor(QPalette::Base, windowBase);
        application.setColor(QPalette::Text, windowText);
        QApplication::setPalette(application);
        setPixelSize(40);
        make("title=\"HHH\"", "<link href=\"a/b\">HHH</link>");
        m_bench->context().set(HVKeyExactToolTipColors, exact);
        QVERIFY(m_bench->show());
        const QImage image = m_bench->grab();
        const QColor shown = image.pixelColor(image.width() / 2, 3);
        const bool isReadable =
                readable(m_bench->item("title"), shown) && readable(m_bench->item("link"), shown);
        QApplication::setPalette(before);
        QTEST(shown, "shown");
        QVERIFY(isReadable);
    }

    void shouldHaveOneLineAlongEachEdgeOfThePopup_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(0x2a2e32) << QColor(Qt::white);
    }

    void shouldHaveOneLineAlongEachEdgeOfThePopup()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        setColours(base, text, Qt::blue);
        showEntry("title=\"A\"", "<p>Text</p>");
        m_bench->settle();
        QWidget &popup = *m_bench->host.popup();
        const QImage image = popup.grab().toImage();
        QCOMPARE(image.size(), m_bench->view()->size() + QSize(1, 1));
        const QColor line = m_bench->view()->rimColor().rgb();
        QVERIFY(line != base);
        const int right = image.width() - 1;
        const int bottom = image.height() - 1;
        for (int x = 0; x <= right; ++x) {
            for (int y = 0; y <= bottom; ++y) {
                const int distance = qMin(qMin(x, y), qMin(right - x, bottom - y));
                if (distance == 0)
                    QCOMPARE(image.pixelColor(x, y), line);
                else if (distance == 1)
                    QCOMPARE(image.pixelColor(x, y), base);
            }
        }
    }

    void shouldMarkNotesAndWarningsInDifferentColours_data()
    {
        shouldBeReadableInTheColoursOfToolTips_data();
    }

    void shouldMarkNotesAndWarningsInDifferentColours()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        setColours(base, text, QColor(0x6cb4ff));
        setPixelSize(40); // only large letters have pixels in the full colour
        make("title=\"A\"", "<note>HHH</note><warning>HHH</warning>");
        m_bench->context().set(HVKeyExactToolTipColors, true);
        QVERIFY(m_bench->show());
        QList<QColor> marks;
        for (const char *kind : { "note", "warning" }) {
            const QQuickItem *box = m_bench->item(kind);
            const auto surface = box->property("color").value<QColor>();
            QVERIFY(readable(box, surface) || DefaultUiBench::contrast(text, base) < 5);
            const QQuickItem *mark = DefaultUiBench::itemsOf(const_cast<QQuickItem *>(box),
                                                             QStringLiteral("noteMark"))
                                             .value(0);
            QVERIFY(mark);
            marks += strongestOn(mark, surface);
            QVERIFY(DefaultUiBench::contrast(marks.last(), surface) >= 3);
        }
        QVERIFY(marks.at(0) != marks.at(1));
    }

    void shouldShowReadableLinksInNotesAndWarnings_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("link");
        const auto row = [](const char *name, const QColor &base, const QColor &text,
                            const QColor &link) { QTest::newRow(name) << base << text << link; };
        row("light", QColor(0xf7f7f7), QColor(0x232629), QColor(0x2980b9));
        row("light, barely readable", QColor(Qt::white), QColor(0x101010), QColor(0x0078d4));
        row("dark", QColor(0x2a2e32), QColor(0xfcfcfc), QColor(0x6cb4ff));
        row("dark, barely readable", QColor(0x2a2e32), QColor(0xfcfcfc), QColor(0x4090d8));
        row("high contrast", QColor(Qt::black), QColor(Qt::white), QColor(0x8080ff));
        row("high contrast, yellow", QColor(Qt::black), QColor(Qt::yellow), QColor(0x00a0a0));
        row("high contrast, light", QColor(Qt::white), QColor(Qt::black), QColor(0x767676));
    }

    void shouldShowReadableLinksInNotesAndWarnings()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        QFETCH(QColor, link);
        setColours(base, text, link);
        setPixelSize(40); // only large letters have pixels in the full colour
        for (const QByteArray &source :
             { QByteArray("<a href='a/b'>HHH</a>"), QByteArray("<tt></tt><a href='a/b'>HHH</a>"),
               QByteArray("<a href='a/b'><code>HHH</code></a>") }) {
            for (const char *kind : { "note", "warning" }) {
                const QByteArray name(kind);
                make("title=\"A\"", '<' + name + "><![CDATA[" + source + "]]></" + name + '>');
                m_bench->context().set(HVKeyExactToolTipColors, true);
                QVERIFY(m_bench->show());
                const QQuickItem *ground = m_bench->item("codeGround");
                if (!ground)
                    ground = m_bench->item(kind);
                QVERIFY(readable(m_bench->item("noteText"),
                                 ground->property("color").value<QColor>()));
            }
        }
    }

    void shouldFollowAChangeOfTheColours()
    {
        setColours(Qt::white, Qt::black, Qt::blue);
        showEntry("title=\"A\"");
        setColours(Qt::black, Qt::white, Qt::blue);
        m_bench->view()->refreshTheme();
        const QImage image = m_bench->grab();
        QCOMPARE(image.pixelColor(image.width() / 2, 3), QColor(Qt::black));
    }

    void shouldUseTheColourOfLinksIfItIsReadable_data()
    {
        QTest::addColumn<QColor>("link");
        QTest::addColumn<QColor>("shown");
        QTest::newRow("readable") << QColor(0x0000ff) << QColor(0x0000ff);
        QTest::newRow("too pale") << QColor(0x7fa0ff) << QColor(0x101010);
        QTest::newRow("invisible") << QColor(Qt::white) << QColor(0x101010);
    }

    void shouldUseTheColourOfLinksIfItIsReadable()
    {
        QFETCH(QColor, link);
        QFETCH(QColor, shown);
        setColours(Qt::white, QColor(0x101010), link);
        showEntry("",
                  "<link href=\"a/b\">HHH</link><p><![CDATA[<a href='a/b'>HHH</a>]]></p>"
                  "<p><![CDATA[<tt></tt><a href='a/b'>HHH</a>]]></p>");
        setPixelSize(40);
        m_bench->view()->refreshTheme();
        m_bench->settle();
        const QQuickItem *line = m_bench->item("link");
        QCOMPARE(strongestOn(line, Qt::white), shown);
        const auto isUnderlined = [&] { return line->property("font").value<QFont>().underline(); };
        QCOMPARE(isUnderlined(), shown != link); // where the colour does not show that it is a link
        QTest::mouseMove(m_bench->view(), m_bench->place(line).center().toPoint());
        QTRY_VERIFY(isUnderlined());
        const QList<QQuickItem *> paragraphs = m_bench->items(QStringLiteral("paragraph"));
        QCOMPARE(paragraphs.size(), 2);
        for (const QQuickItem *paragraph : paragraphs)
            QCOMPARE(strongestOn(paragraph, Qt::white), shown);
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiColours)

#include "tst_defaultui_colours.moc"
