// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "DefaultUiTest.h"
#include "TestMain.h"
#include "Text.h"

#include <QtGui/QAccessible>

using namespace Hovlets;

/// Tests what the default user interface reports to screen readers.
class tst_DefaultUiAccessibility : public DefaultUiTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldDescribeThePopup()
    {
        showEntry("title=\"Save\" shortcut=\"Ctrl+S\"",
                  "<p>First &lt; <![CDATA[second]]></p><p><![CDATA[<b>Bold</b> &amp; "
                  "more<br>lines]]></p>"
                  "<link href=\"http://a.example/\">More</link>");
        const QAccessibleInterface *popup = interfaceOf(m_bench->root());
        QVERIFY(popup);
        QCOMPARE(popup->role(), QAccessible::ToolTip);
        QCOMPARE(popup->text(QAccessible::Name), text("Save"));
        QCOMPARE(popup->text(QAccessible::Description),
                 text("Ctrl+S\nFirst < second\nBold & more lines\nMore"));
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        QVERIFY(!popup->state().invisible);
#endif
    }

    void shouldDescribeTheSimplePopup()
    {
        m_bench = std::make_unique<DefaultUiBench>(
                DefaultUiBench::entry("title=\"Save\"", "<p>One</p><p>Two</p>"));
        m_bench->context().set(HVKeySimpleMode, true);
        QVERIFY(m_bench->show());
        const QAccessibleInterface *popup = interfaceOf(m_bench->root());
        QCOMPARE(popup->role(), QAccessible::ToolTip);
        QCOMPARE(popup->text(QAccessible::Name), text("Save"));
        QCOMPARE(popup->text(QAccessible::Description), text("One"));
    }

    void shouldSayWhyTheControlIsDisabled()
    {
        QWidget window;
        window.setGeometry(100, 100, 200, 100);
        window.setEnabled(false);
        window.setProperty("hovletDisabledReason", text("Open a document first."));
        make("title=\"Save\"", "<p>One</p>");
        QVERIFY(m_bench->host.manager()->show(text("key"), { 110, 110 }, &window));
        const int height = m_bench->view()->height();
        QCOMPARE(m_bench->texts("disabledReason"), QStringList(text("Open a document first.")));
        QVERIFY(m_bench->place(m_bench->item("disabledReason")).bottom()
                < m_bench->place(m_bench->item("paragraph")).top());
        const QAccessibleInterface *popup = interfaceOf(m_bench->root());
        QCOMPARE(popup->text(QAccessible::Description), text("Open a document first.\nOne"));

        window.setEnabled(true);
        QCOMPARE(m_bench->texts("disabledReason"), QStringList());
        QTRY_VERIFY(m_bench->view()->height() < height);
        QCOMPARE(popup->text(QAccessible::Description), text("One"));
    }

    void shouldShowWhichLinkHasTheFocus()
    {
        showEntry("title=\"Save\"", "<link href=\"http://a.example/\">More</link>");
        QVERIFY(!m_bench->item("focusRing"));
        QQuickItem *line = m_bench->item("link")->parentItem();
        QVERIFY(line->activeFocusOnTab());
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        line->forceActiveFocus();
        QTRY_VERIFY(line->hasActiveFocus());
        QVERIFY(m_bench->item("focusRing"));
        QTest::keyClick(m_bench->view(), Qt::Key_Return);
        QCOMPARE(m_bench->host.opened.size(), 1);
        QVERIFY(interfaceOf(m_bench->item("link"))->state().focusable);
    }

    void shouldReportTheFocusOfAClip()
    {
        make("title=\"Save\" clip=\"clip.mp4\"");
        const ClipFolder clips;
        const QString clip =
                clips.clip(text("clip.mp4"), text("160x90"), text("-t 0.4 -r 25 -pix_fmt yuv420p"));
        QVERIFY(!clip.isEmpty());
        m_bench->folder.add(text("Test.hovlets/Resources/clip.mp4"), ClipFolder::read(clip));
        QVERIFY(m_bench->show());
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        QTRY_VERIFY(m_bench->item("clipPicture"));
        const QAccessibleInterface *button = interfaceOf(m_bench->item("clipPicture"));
        QVERIFY(button);
        QCOMPARE(button->role(), QAccessible::Button);
        QVERIFY(button->state().focusable);
        QVERIFY(!button->state().focused);
        QTest::keyClick(m_bench->view(), Qt::Key_Tab);
        QTRY_VERIFY(button->state().focused);
    }

    void shouldBeReachedFromTheWindow()
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        QSKIP("Qt 5 hides the items in a widget from screen readers");
#endif
        showEntry("title=\"Save\"", "<p>One</p>");
        QVERIFY(findBelow(QAccessible::queryAccessibleInterface(m_bench->view()->window()),
                          interfaceOf(m_bench->root())));
    }

    void shouldAnnounceEachPart_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::newRow("title") << text("title") << int(QAccessible::StaticText) << text("Save");
        QTest::newRow("text") << text("paragraph") << int(QAccessible::StaticText)
                              << QString::fromUtf8("Bold\u00a0 \u20ac &x;");
        QTest::newRow("link") << text("link") << int(QAccessible::Link) << text("More");
        QTest::newRow("pin") << text("pin") << int(QAccessible::Button) << text("Keep open");
    }

    void shouldAnnounceEachPart()
    {
        QFETCH(QString, item);
        QFETCH(int, role);
        QFETCH(QString, name);
        showEntry("title=\"Save\"",
                  "<p><![CDATA[<b>Bold</b>&nbsp; &#x20ac; &x;]]></p>"
                  "<link href=\"http://a.example/\">More</link>");
        const QAccessibleInterface *part = interfaceOf(m_bench->item(qPrintable(item)));
        QVERIFY(part);
        QCOMPARE(int(part->role()), role);
        QCOMPARE(part->text(QAccessible::Name), name);
    }

    void shouldDescribeTheScrollBar()
    {
        showEntry("title=\"Save\"", QByteArray("<p>Line</p>").repeated(200));
        const QAccessibleInterface *bar = interfaceOf(m_bench->item("scrollBar"));
        QVERIFY(bar);
        QCOMPARE(bar->role(), QAccessible::ScrollBar);
        QCOMPARE(bar->text(QAccessible::Name), text("Scroll"));
    }

    void shouldFollowALinkWhenAsked()
    {
        showEntry("title=\"Save\"", "<link href=\"http://a.example/\">More</link>");
        QAccessibleInterface *link = interfaceOf(m_bench->item("link"));
        QVERIFY(link->actionInterface());
        QVERIFY(link->actionInterface()->actionNames().contains(
                QAccessibleActionInterface::pressAction()));
        link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(m_bench->host.opened.size(), 1);
        QCOMPARE(m_bench->host.opened.first().second, text("http://a.example/"));
    }

    void shouldPinAndCloseWhenAsked()
    {
        showEntry("title=\"Save\"", "");
        const QPointer<HVWidget> popup = m_bench->host.popup(); // the host loses it by pinning
        interfaceOf(m_bench->item("pin"))
                ->actionInterface()
                ->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(popup->view()->reserved());
        QQuickItem *close =
                DefaultUiBench::itemsOf(popup->view()->rootObject(), text("close")).value(0);
        QVERIFY(close);
        interfaceOf(close)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(popup.isNull());
    }

    void shouldSpeakTheLanguageOfTheHost()
    {
        m_bench = std::make_unique<DefaultUiBench>(DefaultUiBench::entry("title=\"Save\""));
        m_bench->host.translation = [](const QString &source, const QString &context) {
            return context == text("HovletsUI") ? source.toUpper() : QString();
        };
        QVERIFY(m_bench->show());
        QCOMPARE(interfaceOf(m_bench->item("pin"))->text(QAccessible::Name), text("KEEP OPEN"));
    }

private:
    static QAccessibleInterface *interfaceOf(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }

    static bool findBelow(const QAccessibleInterface *above, const QAccessibleInterface *wanted)
    {
        if (!above || above == wanted)
            return above;
        for (int i = 0; i < above->childCount(); ++i) {
            if (findBelow(above->child(i), wanted))
                return true;
        }
        return false;
    }
};

HOVLETS_TEST_MAIN(tst_DefaultUiAccessibility)
#include "tst_defaultui_accessibility.moc"
