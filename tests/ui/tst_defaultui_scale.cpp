// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "DisplayPicture.h"
#include "TestMain.h"
#include "Text.h"

using namespace Hovlets;

/// Tests that the display shows the default user interface pixel by pixel where some lengths are
/// not a whole number of pixels. Runs with 1.25 pixels per unit of length.
class tst_DefaultUiScale : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowEveryLine_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QByteArray>("children");
        const QByteArray title("title=\"Redo\"");
        const QByteArray shortcut = title + " shortcut=\"Ctrl+Shift+Z\"";
        const QByteArray paragraph("<p>E E E H H H T T T</p>");
        const QByteArray words("About this step ");
        QTest::newRow("title") << title << QByteArray();
        QTest::newRow("shortcut") << shortcut << QByteArray();
        for (int count = 1; count <= 4; ++count)
            QTest::addRow("paragraphs: %d", count) << shortcut << paragraph.repeated(count);
        for (int count = 1; count <= 3; ++count) {
            const QByteArray items = QByteArray("<li>E E H H T T</li>").repeated(count);
            QTest::addRow("list of %d", count) << shortcut << "<ul>" + items + "</ul>";
        }
        QTest::newRow("wrapped") << title << "<p>" + words.repeated(30) + "</p>";
        QTest::newRow("scrolling") << title << "<p>" + words.repeated(900) + "</p>";
    }

    void shouldShowEveryLine()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QByteArray, children);
        showEntry(attributes, children);
        QVERIFY(m_bench->view()->devicePixelRatioF() == 1.25);
        constexpr QPoint Place(16, 16); // which is a pixel
        m_bench->view()->window()->move(Place);
        m_bench->settle();
        const QImage drawn = m_bench->grab().convertToFormat(QImage::Format_RGB32);
        const QDeadlineTimer deadline(Patience);
        QList<int> wrong;
        do {
            QTest::qWait(20);
            wrong = wrongLines(drawn, Place * 1.25);
        } while (!wrong.isEmpty() && !deadline.hasExpired());
        QCOMPARE(wrong, QList<int>());
    }

private:
    /// The lines of \a drawn, from 0, that differ from those on the display at \a corner.
    static QList<int> wrongLines(const QImage &drawn, const QPoint &corner)
    {
        const QImage shown = pictureOfDisplay()
                                     .copy(QRect(corner, drawn.size()))
                                     .convertToFormat(QImage::Format_RGB32);
        QList<int> lines;
        for (int y = 0; y < drawn.height(); ++y) {
            const QRect line(0, y, drawn.width(), 1);
            if (shown.copy(line) != drawn.copy(line))
                lines.append(y);
        }
        return lines;
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiScale)

#include "tst_defaultui_scale.moc"
