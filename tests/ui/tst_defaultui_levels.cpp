// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiTest.h"
#include "TestMain.h"
#include "Text.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>

#include <algorithm>

using namespace Hovlets;

/// Tests how the default user interface shows the key for the next level of the popup.
class tst_DefaultUiLevels : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QApplication::setFont(m_font);
        DefaultUiTest::cleanup();
    }

    void shouldNameTheKeyIfThereIsMore_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isNamed");
        const auto row = [](const char *name, const QByteArray &children, const char *key,
                            bool isNamed) {
            QTest::newRow(name) << children << text(key) << isNamed;
        };
        row("another paragraph", "<p>One</p><p>Two</p>", "F1", true);
        row("a link", "<p>One</p><link href='http://a.example/'>More</link>", "F1", true);
        row("a heading", "<h2>One</h2>", "F1", true);
        row("nothing but a paragraph", "<p>One</p>", "F1", false);
        row("no text", "", "F1", false);
        row("an unknown topic", "<p>One</p><link href='Topic'>More</link>", "F1", false);
        row("no key", "<p>One</p><p>Two</p>", "", false);
    }

    void shouldNameTheKeyIfThereIsMore()
    {
        QFETCH(QByteArray, children);
        QFETCH(QString, key);
        QFETCH(bool, isNamed);
        showSimple("title=\"Save\"", children, key);
        QCOMPARE(bool(m_bench->item("hint")), isNamed);
        QCOMPARE(m_bench->root()->property("hasMore").toBool(), isNamed || key.isEmpty());
        if (!isNamed)
            return;
        QCOMPARE(m_bench->texts("key"), QStringList(text("F1")));
        const QRectF hint = m_bench->place(m_bench->item("hint"));
        QVERIFY(hint.top() > m_bench->place(m_bench->item("title")).bottom());
        if (const QQuickItem *paragraph = m_bench->item("paragraph"))
            QVERIFY(hint.top() >= m_bench->place(paragraph).bottom());
        QVERIFY(m_bench->place(m_bench->root()).contains(hint));
    }

    void shouldLetScreenReadersReadTheHint()
    {
        showSimple("title=\"Save\"", "<p>One</p><p>Two</p>", text("Ctrl+F1"));
        const auto description = [this] {
            return QAccessible::queryAccessibleInterface(m_bench->root())
                    ->text(QAccessible::Description);
        };
        QCOMPARE(description(), text("One\nCtrl+F1 for more"));
        m_bench->view()->expand();
        QTRY_COMPARE(description(), text("One\nTwo"));
    }

    void shouldPutTheKeyWhereTheLanguageHasIt_data()
    {
        QTest::addColumn<QString>("translation");
        QTest::addColumn<QString>("spoken");
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<int>("textsBefore");
        QTest::newRow("at the start")
                << text("%1 for more") << text("F1 for more") << Qt::LeftToRight << 0;
        QTest::newRow("in the middle")
                << text("Mit %1 mehr") << text("Mit F1 mehr") << Qt::LeftToRight << 1;
        QTest::newRow("at the end")
                << text("Plus avec %1") << text("Plus avec F1") << Qt::LeftToRight << 1;
        QTest::newRow("forgotten") << text("More") << text("More F1") << Qt::LeftToRight << 1;
        QTest::newRow("from right to left")
                << QString::fromUtf8("اضغط %1 للمزيد") << QString::fromUtf8("اضغط F1 للمزيد")
                << Qt::RightToLeft << 1;
    }

    void shouldPutTheKeyWhereTheLanguageHasIt()
    {
        QFETCH(QString, translation);
        QFETCH(QString, spoken);
        QFETCH(Qt::LayoutDirection, direction);
        QFETCH(int, textsBefore);
        QGuiApplication::setLayoutDirection(direction);
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"Save\"", "<p>One</p><p>Two</p>"));
        m_bench->host.translation = [&](const QString &source, const QString &context) {
            return context == text("HovletsUI") && source == text("%1 for more") ? translation
                                                                                 : source;
        };
        showBenchSimple(text("F1"));
        QCOMPARE(QAccessible::queryAccessibleInterface(m_bench->item("hint"))
                         ->text(QAccessible::Name),
                 spoken);
        const QRectF key = m_bench->place(m_bench->item("key"));
        int before = 0;
        const QList<QQuickItem *> items = textsOfHint();
        for (QQuickItem *item : items) {
            const QRectF place = m_bench->place(item);
            QVERIFY(!place.intersects(key));
            before += direction == Qt::LeftToRight ? place.right() <= key.left()
                                                   : place.left() >= key.right();
        }
        QCOMPARE(before, textsBefore);
    }

    void shouldFitAnyFontAndKey_data()
    {
        QTest::addColumn<int>("pixels");
        QTest::addColumn<QString>("key");
        for (const int pixels : { 6, 13, 40 }) {
            QTest::addRow("%d px, F1", pixels) << pixels << text("F1");
            QTest::addRow("%d px, many keys", pixels)
                    << pixels << text("Ctrl+Alt+Shift+Meta+PgDown");
        }
    }

    void shouldFitAnyFontAndKey()
    {
        QFETCH(int, pixels);
        QFETCH(QString, key);
        QFont font;
        font.setPixelSize(pixels);
        QApplication::setFont(font);
        showSimple("title=\"A\"", "<p>One</p><p>Two</p>", key);
        QVERIFY(m_bench->item("hint"));
        const QRectF popup = m_bench->place(m_bench->root());
        const QList<QQuickItem *> items = m_bench->textItems();
        for (QQuickItem *item : items) {
            if (item->property("text").toString().isEmpty())
                continue;
            const QRectF place = m_bench->place(item);
            QVERIFY2(popup.contains(place), qPrintable(item->property("text").toString()));
            QVERIFY(item->property("contentWidth").toReal() <= place.width() + 1);
        }
    }

    void shouldFadeInWhatIsNew_data()
    {
        QTest::addColumn<bool>("reducedMotion");
        QTest::newRow("motion") << false;
        QTest::newRow("reduced motion") << true;
    }

    void shouldFadeInWhatIsNew()
    {
        QFETCH(bool, reducedMotion);
        make("title=\"Save\" shortcut=\"Ctrl+S\"",
             "<h2>Heading</h2><p>One</p><p>Two, which is longer</p><link "
             "href='http://a.example/'>More</link>");
        m_bench->host.manager()->setGlobalProperty(text("reducedMotion"), reducedMotion);
        showBenchSimple(text("F1"));
        QStringList before;
        for (const char *name : { "title", "shortcut" })
            before += describe(m_bench->place(m_bench->item(name)).topLeft());
        m_bench->view()->expand();
        QStringList after;
        for (const char *name : { "title", "shortcut" })
            after += describe(m_bench->place(m_bench->item(name)).topLeft());
        QCOMPARE(after, before);
        const auto opacity = [](const QQuickItem *item) {
            qreal all = 1;
            for (; item; item = item->parentItem())
                all *= item->opacity();
            return all;
        };
        const QSize size = m_bench->view()->size();
        const QList<QQuickItem *> paragraphs = m_bench->items(text("paragraph"));
        QCOMPARE(paragraphs.size(), 2);
        QCOMPARE(opacity(paragraphs.first()), 1.0);
        const QList<QQuickItem *> added { m_bench->item("heading"), paragraphs.last(),
                                          m_bench->item("link"), m_bench->item("pin") };
        for (const QQuickItem *item : added)
            QCOMPARE(opacity(item) < 1, !reducedMotion);
        for (const QQuickItem *item : added)
            QTRY_COMPARE(opacity(item), 1.0);
        QCOMPARE(m_bench->view()->size(), size);
    }

    void shouldNotFadeInAFullPopup()
    {
        showEntry("title=\"Save\"", "<p>One</p>");
        QCOMPARE(m_bench->root()->property("newOpacity").toReal(), 1.0);
    }

    void shouldNameTheKeyOfThePinButton_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("name");
        QTest::newRow("none") << QString() << text("Keep open");
        QTest::newRow("F1") << text("F1") << text("Keep open (F1)");
    }

    void shouldNameTheKeyOfThePinButton()
    {
        QFETCH(QString, key);
        QFETCH(QString, name);
        make("title=\"Save\"", "<p>One</p>");
        m_bench->context().set(HVKeyExpandKey, key);
        QVERIFY(m_bench->show());
        QCOMPARE(QAccessible::queryAccessibleInterface(m_bench->item("pin"))
                         ->text(QAccessible::Name),
                 name);
    }

private:
    const QFont m_font = QApplication::font();

    void showSimple(const QByteArray &attributes, const QByteArray &children, const QString &key)
    {
        make(attributes, children);
        showBenchSimple(key);
    }

    void showBenchSimple(const QString &key)
    {
        m_bench->context().set(HVKeySimpleMode, true);
        m_bench->context().set(HVKeyExpandKey, key);
        QVERIFY(m_bench->show());
    }

    static QString describe(const QPointF &point)
    {
        return QStringLiteral("%1,%2").arg(point.x()).arg(point.y());
    }

    /// The words around the key.
    QList<QQuickItem *> textsOfHint()
    {
        QList<QQuickItem *> items = m_bench->item("hint")->childItems();
        const auto isOther = [](const QQuickItem *item) {
            return !item->isVisible() || item->property("text").toString().isEmpty();
        };
        items.erase(std::remove_if(items.begin(), items.end(), isOther), items.end());
        return items;
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiLevels)
#include "tst_defaultui_levels.moc"
