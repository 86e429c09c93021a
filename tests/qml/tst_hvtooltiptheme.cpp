// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipTheme.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtCore/QTemporaryFile>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

using namespace Hovlets;

class tst_HVToolTipTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_toolTips = QToolTip::palette();
        m_application = QApplication::palette();
        m_font = QApplication::font();
    }

    void cleanup()
    {
        qApp->setStyleSheet(QString());
        QToolTip::setPalette(m_toolTips);
        QApplication::setPalette(m_application);
        QApplication::setFont(m_font);
    }

    void shouldProvideTheColoursOfToolTipsAndTheFontOfTheApplication()
    {
        QToolTip::setPalette(palette());
        const HVToolTipTheme theme(nullptr);
        QCOMPARE(theme.base(), QColor(Qt::darkBlue));
        QCOMPARE(theme.text(), QColor(Qt::yellow));
        QCOMPARE(theme.link(), QColor(Qt::cyan));
        QCOMPARE(theme.font(), QApplication::font());
    }

    void shouldHaveAFontForCodeWhoseLettersHaveOneWidth()
    {
        const QFontInfo general(QApplication::font());
        const QFontInfo fixed(HVToolTipTheme(nullptr).fixedFont());
        QVERIFY(fixed.fixedPitch());
        QVERIFY(fixed.family() != general.family());
    }

    void shouldAnnounceAChangeOnce()
    {
        HVToolTipTheme theme(nullptr);
        QSignalSpy changed(&theme, &HVToolTipTheme::changed);
        theme.refresh();
        QCOMPARE(changed.count(), 0);
        QToolTip::setPalette(palette());
        QCOMPARE(changed.count(), 0);
        theme.refresh();
        theme.refresh();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(theme.base(), QColor(Qt::darkBlue));
    }

    void shouldAnnounceEachValue_data()
    {
        QTest::addColumn<int>("role");
        QTest::newRow("base") << int(QPalette::ToolTipBase);
        QTest::newRow("text") << int(QPalette::ToolTipText);
        QTest::newRow("link") << int(QPalette::Link);
    }

    void shouldAnnounceEachValue()
    {
        QFETCH(int, role);
        HVToolTipTheme theme(nullptr);
        QSignalSpy changed(&theme, &HVToolTipTheme::changed);
        QPalette changedPalette = QToolTip::palette();
        changedPalette.setColor(QPalette::ColorRole(role), QColor(1, 2, 3));
        QToolTip::setPalette(changedPalette);
        theme.refresh();
        QCOMPARE(changed.count(), 1);
    }

    void shouldTakeColoursFromAFileWithTheStyleSheet()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("QToolTip { background-color: #202428; color: #f0f1f2; }");
        file.close();
        qApp->setStyleSheet(QStringLiteral("file:///") + file.fileName());
        HVToolTipTheme theme(nullptr);
        QCOMPARE(theme.base(), QColor(0x202428));
        QCOMPARE(theme.text(), QColor(0xf0f1f2));
        QVERIFY(theme.isExact());
    }

    void shouldFollowTheStyleSheetOfTheApplication()
    {
        QToolTip::setPalette(palette());
        HVToolTipTheme theme(nullptr);
        QVERIFY(!theme.isExact());
        qApp->setStyleSheet(QStringLiteral("QToolTip { background-color: #202428; color: #f0f1f2; "
                                           "font-size: 21px; border-radius: 6px; }"));
        theme.refresh();
        QCOMPARE(theme.base(), QColor(0x202428));
        QCOMPARE(theme.text(), QColor(0xf0f1f2));
        QCOMPARE(theme.link(), QColor(Qt::cyan));
        QCOMPARE(theme.font().pixelSize(), 21);
        QVERIFY(theme.isExact());

        qApp->setStyleSheet(QStringLiteral("QLabel { color: red; } QToolTip { padding: 2px; }"));
        theme.refresh();
        QCOMPARE(theme.base(), QColor(Qt::darkBlue));
        QCOMPARE(theme.font(), QApplication::font());
        QVERIFY(!theme.isExact());
    }

    void shouldReachQml()
    {
        PopupBench bench;
        const QString ui = bench.ui("Themed.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100; color: hovletTheme.base
    property color text: hovletTheme.text
    property color link: hovletTheme.link
    property int size: hovletTheme.font.pointSize
})");
        bench.popup->showWithContent(&bench.control, QPoint(),
                                     bench.content(QStringLiteral("a"), ui), QString());
        const QObject *root = bench.view->rootObject();
        QVERIFY(root);
        QCOMPARE(root->property("color").value<QColor>(),
                 QToolTip::palette().toolTipBase().color());
        QCOMPARE(root->property("size").toInt(), QApplication::font().pointSize());

        // No event announces a new palette of tooltips; the next show reads it.
        QToolTip::setPalette(palette());
        bench.popup->showWithContent(&bench.control, QPoint(),
                                     bench.content(QStringLiteral("b"), ui), QString());
        QCOMPARE(root->property("color").value<QColor>(), QColor(Qt::darkBlue));
        QCOMPARE(root->property("text").value<QColor>(), QColor(Qt::yellow));
        QCOMPARE(root->property("link").value<QColor>(), QColor(Qt::cyan));
    }

    void shouldFollowTheApplicationWhileThePopupIsShown()
    {
        PopupBench bench;
        const QString ui = bench.ui("Themed.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100; color: hovletTheme.base
    property int size: hovletTheme.font.pointSize
})");
        bench.popup->showWithContent(&bench.control, QPoint(),
                                     bench.content(QStringLiteral("a"), ui), QString());
        const QObject *root = bench.view->rootObject();
        QFont font = QApplication::font();
        font.setPointSize(font.pointSize() + 5);
        QApplication::setFont(font);
        QTRY_COMPARE(root->property("size").toInt(), font.pointSize());

        QToolTip::setPalette(palette());
        QPalette dark = QApplication::palette();
        dark.setColor(QPalette::Window, Qt::black);
        QApplication::setPalette(dark);
        QTRY_COMPARE(root->property("color").value<QColor>(), QColor(Qt::darkBlue));
    }

private:
    static QPalette palette()
    {
        QPalette palette = QToolTip::palette();
        palette.setColor(QPalette::ToolTipBase, Qt::darkBlue);
        palette.setColor(QPalette::ToolTipText, Qt::yellow);
        palette.setColor(QPalette::Link, Qt::cyan);
        return palette;
    }

    QPalette m_toolTips;
    QPalette m_application;
    QFont m_font;
};

HOVLETS_TEST_MAIN(tst_HVToolTipTheme)
#include "tst_hvtooltiptheme.moc"
