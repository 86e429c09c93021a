// SPDX-License-Identifier: Apache-2.0
#include "AttachedHost.h"
#include "Explanation.h"
#include "KeysHost.h"
#include "PackageFolder.h"
#include "Recorder.h"
#include "TestMain.h"

#include <QtGui/QCursor>

#include <memory>

using namespace Hovlets;

namespace {

constexpr auto Content = R"(<hovlets locale='de_DE' search='Default'>
<hovlet key='spin' title='Drehfeld'><p>Deutsch</p></hovlet>
</hovlets>)";

constexpr auto Fallback = R"(<hovlets locale='en_US' search='Default'>
<hovlet key='combo' title='Mode'/>

<hovlet key='group' title='Group'/>
</hovlets>)";

} // namespace

/// Tests the window in which authors write entries for the control under the mouse.
class tst_Recorder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QCursor::setPos(790, 790);
        m_folder = std::make_unique<PackageFolder>();
        m_mine = std::make_unique<PackageFolder>();
        m_german = m_folder->addControlFile(text("Pack"), text("de"), Content);
        m_english = m_folder->addControlFile(text("Pack"), text("en"), Fallback);
        m_own = Recorder::fileIn(m_mine->path() + text("/Mine.hovlets"), text("de_DE"));
        QCOMPARE(m_own.create(text("de_DE")), QString());
        HVContext settings;
        settings.set(HVKeyLocale, text("de_DE"));
        const QStringList paths { m_folder->path(), m_mine->path() };
        m_host = std::make_unique<AttachedHost>(settings, paths, QString());
        m_window = std::make_unique<KeysWindow>();
        m_window->show();
        m_recorder = std::make_unique<Recorder>(*m_host, m_own);
        m_recorder->move(720, 0);
        m_recorder->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_recorder.get()));
    }

    void cleanup()
    {
        m_recorder.reset();
        m_window.reset();
        m_host.reset();
    }

    void shouldWriteAnEntryForTheControlUnderTheMouse()
    {
        pointAt(m_window->unnamedButton);
        QTRY_COMPARE(key(), text("group/Apply all"));
        QVERIFY(label("hovletsPath").endsWith(text("QPushButton[0]")));
        field()->setText(text("Apply"));
        writing()->setPlainText(text("One\nline.\n\n<b>Two</b>"));
        button("hovletsSave")->click();
        QVERIFY(!button("hovletsSave")->isEnabled());
        const QString written =
                m_host->hovletAttribute(text("group/Apply all"), text("title"), QString());
        QCOMPARE(written, text("Apply"));

        pointAt(m_window->spin);
        QTRY_COMPARE(key(), text("spin"));
        pointAt(m_window->unnamedButton);
        QTRY_COMPARE(key(), text("group/Apply all"));
        QCOMPARE(field()->text(), text("Apply"));
        QCOMPARE(writing()->toPlainText(), text("One line.\n\n<b>Two</b>"));
        QVERIFY(label("hovletsReason").contains(text("Recorded_de_DE.xml:4")));
    }

    void shouldEditAnEntryOfAnotherPackage()
    {
        QVERIFY(m_host->show(text("spin"), QPoint(720, 500), m_window->spin));
        pointAt(m_window->spin);
        QTRY_COMPARE(key(), text("spin"));
        QCOMPARE(field()->text(), text("Drehfeld"));
        field()->setText(text("Feld"));
        button("hovletsSave")->click();
        QCOMPARE(label("hovletsStatus"), text("Saved in ") + m_own.path());
        QCOMPARE(RecordedFile(m_german).find(text("spin"))->entry.title, text("Drehfeld"));

        // The popup of before is still the latest one.
        pointAt(m_window->unnamedButton);
        QTRY_COMPARE(key(), text("group/Apply all"));
        pointAt(m_window->spin);
        QTRY_COMPARE(key(), text("spin"));
        QCOMPARE(field()->text(), text("Feld"));
        QVERIFY2(label("hovletsReason").contains(m_own.path()), qPrintable(label("hovletsReason")));
    }

    void shouldStayWithAControlWhileTextIsNotSaved()
    {
        pointAt(m_window->spin);
        QTRY_COMPARE(key(), text("spin"));
        field()->setText(text("Changed"));
        QSignalSpy rests(m_recorder->findChild<PointerRest *>(), &PointerRest::rested);
        pointAt(m_window->unnamedButton);
        QTRY_VERIFY(!rests.isEmpty());
        QCOMPARE(key(), text("spin"));
        button("hovletsDiscard")->click();
        QCOMPARE(field()->text(), text("Drehfeld"));
    }

    void shouldExplainWhatShows()
    {
        QCOMPARE(reason(m_window->spin),
                 text("Shows the entry \"spin\" for de_DE, the preferred locale, in %1:2.")
                         .arg(m_german));
        QCOMPARE(reason(m_window->combo),
                 text("Shows the entry \"combo\" for en_US, the fallback locale, in %1:2.")
                         .arg(m_english));
        QCOMPARE(reason(m_window->unnamedButton),
                 text("It has no entry. That of a parent shows: the entry \"group\" for en_US, the "
                      "fallback locale, in %1:4.")
                         .arg(m_english));
        m_window->unnamedButton->setToolTip(text("Its own"));
        QCOMPARE(reason(m_window->unnamedButton),
                 text("It has no entry. The program's tooltip shows: \"Its own\"."));
        QVERIFY(reason(m_window.get()).startsWith(text("It has no key.")));
    }

    void shouldTakeInputDuringAModalDialog()
    {
        QDialog dialog(m_window.get());
        dialog.setModal(true);
        dialog.show();
        QTRY_COMPARE(m_recorder->windowHandle()->transientParent(), dialog.windowHandle());
        dialog.hide();
        QTRY_VERIFY(!m_recorder->windowHandle()->transientParent());
    }

    void shouldNotBelongToADialogOfItsOwn()
    {
        QDialog dialog(m_recorder.get()); // as a program makes it over its active window
        dialog.setModal(true);
        dialog.show();
        QTRY_COMPARE(dialog.windowHandle()->transientParent(), m_recorder->windowHandle());
        QSignalSpy looks(m_recorder->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly),
                         &QTimer::timeout);
        QTRY_VERIFY(!looks.isEmpty());
        QVERIFY(!m_recorder->windowHandle()->transientParent());
    }

private:
    static void pointAt(const QWidget *widget)
    {
        QCursor::setPos(widget->mapToGlobal(widget->rect().center()));
    }

    QString reason(QWidget *widget)
    {
        return explain(*m_host, m_own, widget, widget->mapToGlobal(widget->rect().center())).reason;
    }

    QString key() const { return m_recorder->findChild<QComboBox *>()->currentText(); }
    QLineEdit *field() const { return m_recorder->findChild<QLineEdit *>(text("hovletsTitle")); }
    QPlainTextEdit *writing() const { return m_recorder->findChild<QPlainTextEdit *>(); }

    QString label(const char *name) const
    {
        return m_recorder->findChild<QLabel *>(text(name))->text();
    }

    QPushButton *button(const char *name) const
    {
        return m_recorder->findChild<QPushButton *>(text(name));
    }

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<PackageFolder> m_mine; // of the author
    QString m_german;
    QString m_english;
    RecordedFile m_own { QString() };
    std::unique_ptr<AttachedHost> m_host;
    std::unique_ptr<KeysWindow> m_window;
    std::unique_ptr<Recorder> m_recorder;
};

HOVLETS_TEST_MAIN(tst_Recorder)
#include "tst_recorder.moc"
