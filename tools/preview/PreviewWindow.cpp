// SPDX-License-Identifier: Apache-2.0
#include "PreviewWindow.h"

#include "FileWatch.h"
#include "FindingView.h"
#include "KeyList.h"
#include "LookBar.h"
#include "PreviewPopup.h"

#include <QShortcut>

#include <QtCore/QDir>
#include <QtCore/QTime>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

namespace HovletsTool {

PreviewWindow::PreviewWindow(const PreviewOptions &options)
    : m_options(options)
    , m_watch(new FileWatch(this))
    , m_look(new LookBar(options.look))
    , m_keys(new KeyList)
{
    const QString path = QString::fromLocal8Bit(options.check.paths.front().c_str());
    setWindowTitle(QStringLiteral("%1 – hovlets preview")
                           .arg(QDir(QFileInfo(path).absoluteFilePath()).dirName()));
    addToolBar(m_look);
    connect(m_look, &LookBar::changed, this, &PreviewWindow::changeLook);
    connect(m_look, &LookBar::reloadRequested, this, &PreviewWindow::reload);
    connect(m_keys, &KeyList::chosen, this, &PreviewWindow::showKey);
    auto *split = new QSplitter;
    split->addWidget(m_keys);
    split->addWidget(makeEntry());
    split->setStretchFactor(1, 1);
    split->setSizes({ 360, 640 });
    setCentralWidget(split);
    resize(1000, 700);
    makeShortcuts();
    watchFiles(); // before they are read
    reload();
    m_keys->focusSearch();
}

PreviewWindow::~PreviewWindow()
{
    delete m_popup; // it uses m_content, which is destroyed before the child widgets
}

QWidget *PreviewWindow::makeEntry()
{
    m_source = new QLabel;
    m_source->setObjectName(QStringLiteral("source"));
    m_source->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_source->setMargin(4);
    m_source->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_popup = new PreviewPopup;
    m_popup->setObjectName(QStringLiteral("popup"));
    m_ofEntry = new FindingView(QStringLiteral("ofEntry"));
    m_all = new FindingView(QStringLiteral("all"));
    m_tabs = new QTabWidget;
    m_tabs->addTab(m_ofEntry, {});
    m_tabs->addTab(m_all, {});
    auto *top = new QWidget;
    auto *layout = new QVBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_source);
    layout->addWidget(m_popup);
    auto *split = new QSplitter(Qt::Vertical);
    split->addWidget(top);
    split->addWidget(m_tabs);
    split->setStretchFactor(0, 1);
    split->setSizes({ 500, 200 });
    return split;
}

void PreviewWindow::makeShortcuts()
{
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_keys,
            &KeyList::focusSearch);
    connect(new QShortcut(QKeySequence::Quit, this), &QShortcut::activated, this, &QWidget::close);
}

void PreviewWindow::watchFiles()
{
    QStringList folders;
    for (const std::string &path : m_options.check.paths)
        folders += QFileInfo(QString::fromLocal8Bit(path.c_str())).absoluteFilePath();
    m_watch->watch(folders);
    connect(m_watch, &FileWatch::changed, this, &PreviewWindow::reload);
}

void PreviewWindow::reload()
{
    loadContent();
    m_look->setLocales(m_content.locales(), m_options.look);
    const QStringList keys = m_content.keys();
    if (m_key.isEmpty() && !keys.isEmpty())
        m_key = keys.first();
    m_keys->setKeys(m_content, m_key);
    showPopup();
    // The popup comes first: the check opens every clip, which takes longer.
    QMetaObject::invokeMethod(this, &PreviewWindow::checkContent, Qt::QueuedConnection);
}

void PreviewWindow::loadContent()
{
    m_popup->showText({}); // the popup uses the content that load() replaces
    applyLook(m_options.look);
    m_content.load(m_options.check, m_options.look);
    if (!m_content.manager())
        return;
    for (const auto &[name, value] : m_options.properties)
        m_content.manager()->setGlobalProperty(name, value);
}

void PreviewWindow::checkContent()
{
    m_content.check(m_options.check);
    listFindings();
    const auto count = m_content.keys().size();
    statusBar()->showMessage(
            QStringLiteral("%1 keys, %2 findings, loaded at %3")
                    .arg(QString::number(count), QString::number(m_content.findings().size()),
                         QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));
}

void PreviewWindow::changeLook()
{
    m_look->applyTo(m_options.look);
    loadContent();
    showPopup();
    listFindings();
}

void PreviewWindow::chooseKey(const QString &key)
{
    if (!m_keys->choose(key))
        showKey(key);
}

void PreviewWindow::showKey(const QString &key)
{
    m_key = key;
    showPopup();
    listFindings();
}

void PreviewWindow::showPopup()
{
    m_source->clear();
    m_source->setToolTip({});
    m_content.clearComplaints();
    m_errors.clear();
    if (!m_content.error().isEmpty())
        return m_popup->showText(m_content.error());
    if (m_content.entries().empty())
        return m_popup->showText(
                QStringLiteral("There are no entries yet. Add a control file to the folder Control "
                               "of a package, or see below why an existing one is not read."));
    const QString file = m_popup->showEntry(*m_content.manager(), m_key);
    if (file.isEmpty())
        return m_popup->showText(
                QStringLiteral("There is no entry for \"%1\" in %2. See below why.")
                        .arg(m_key, m_look->locale()));
    m_errors = m_popup->errors();
    if (!m_errors.isEmpty())
        m_popup->showText(QStringLiteral("The user interface cannot be shown. See below why."));
    showSource(file);
}

void PreviewWindow::showSource(const QString &file)
{
    for (const Entry &entry : m_content.entries()) {
        if (entry.key != m_key || entry.file != file)
            continue;
        const auto inPackage = file.lastIndexOf(entry.package + QStringLiteral(".hovlets/"));
        m_source->setText(
                QStringLiteral("%1:%2").arg(file.mid(inPackage), QString::number(entry.line)));
    }
    m_source->setToolTip(file);
}

void PreviewWindow::listFindings()
{
    m_ofEntry->clear();
    m_all->clear();
    m_ofEntry->addErrors(m_errors);
    m_ofEntry->addComplaints(m_content.complaints());
    m_ofEntry->addFindings(m_content.findingsOf(m_key));
    m_all->addFindings(m_content.findings());
    const int count = m_ofEntry->topLevelItemCount();
    m_tabs->setTabText(0, QStringLiteral("%1 (%2)").arg(m_key, QString::number(count)));
    m_tabs->setTabText(1, QStringLiteral("All findings (%1)").arg(m_all->topLevelItemCount()));
    m_keys->setFindings(m_content);
}

} // namespace HovletsTool
