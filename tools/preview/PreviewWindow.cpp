// SPDX-License-Identifier: Apache-2.0
#include "PreviewWindow.h"

#include "FileWatch.h"
#include "PreviewPopup.h"

#include <QAction>
#include <QShortcut>

#include <QtCore/QDir>
#include <QtCore/QTime>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace HovletsTool {

namespace {

enum Column { KeyColumn, PackageColumn, FindingColumn };

QTreeWidget *makeList(const QString &name, const QStringList &header)
{
    auto *list = new QTreeWidget;
    list->setObjectName(name);
    list->setHeaderLabels(header);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    return list;
}

/// Makes rows as high as their text needs; lists by themselves leave out what does not fit.
class WholeText : public QStyledItemDelegate
{
public:
    explicit WholeText(QTreeWidget *list)
        : QStyledItemDelegate(list)
        , m_list(list)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        constexpr int Margin = 4; // pixels at each side, as the style has it
        const QSize usual = QStyledItemDelegate::sizeHint(option, index);
        const QRect space(0, 0, m_list->columnWidth(index.column()) - 2 * Margin, 10000);
        const int height =
                option.fontMetrics.boundingRect(space, Qt::TextWordWrap, index.data().toString())
                        .height();
        return { usual.width(), std::max(usual.height(), height + Margin) };
    }

private:
    QTreeWidget *m_list;
};

QTreeWidget *makeFindingList(const QString &name)
{
    QTreeWidget *list = makeList(
            name, { QStringLiteral("Code"), QStringLiteral("Where"), QStringLiteral("What") });
    list->setUniformRowHeights(false);
    list->setWordWrap(true);
    list->setItemDelegateForColumn(2, new WholeText(list));
    QObject::connect(list->header(), &QHeaderView::sectionResized, list,
                     &QTreeWidget::doItemsLayout, Qt::QueuedConnection);
    list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    QObject::connect(list, &QTreeWidget::itemActivated, list, [](const QTreeWidgetItem *item) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(item->data(0, Qt::UserRole).toString()));
    });
    return list;
}

void fitHeader(QTreeWidget *list)
{
    for (int column = 0; column < list->columnCount(); ++column)
        list->resizeColumnToContents(column);
}

} // namespace

PreviewWindow::PreviewWindow(const PreviewOptions &options)
    : m_options(options)
    , m_watch(new FileWatch(this))
{
    const QString path = QString::fromLocal8Bit(options.check.paths.front().c_str());
    setWindowTitle(QStringLiteral("%1 – hovlets preview")
                           .arg(QDir(QFileInfo(path).absoluteFilePath()).dirName()));
    makeToolBar();
    auto *split = new QSplitter;
    split->addWidget(makeKeys());
    split->addWidget(makeEntry());
    split->setStretchFactor(1, 1);
    split->setSizes({ 360, 640 });
    setCentralWidget(split);
    resize(1000, 700);

    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    connect(new QShortcut(QKeySequence::Quit, this), &QShortcut::activated, this, &QWidget::close);
    QStringList folders;
    for (const std::string &each : options.check.paths)
        folders += QFileInfo(QString::fromLocal8Bit(each.c_str())).absoluteFilePath();
    m_watch->watch(folders); // before they are read
    connect(m_watch, &FileWatch::changed, this, &PreviewWindow::reload);
    reload();
    m_search->setFocus();
}

PreviewWindow::~PreviewWindow()
{
    delete m_popup; // its content goes with the members
}

void PreviewWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(QStringLiteral("Look"));
    bar->setMovable(false);
    const auto add = [bar](const QString &text, QWidget *widget) {
        auto *label = new QLabel(text);
        label->setBuddy(widget);
        label->setMargin(4);
        bar->addWidget(label);
        bar->addWidget(widget);
    };
    m_locale = new QComboBox;
    m_locale->setObjectName(QStringLiteral("locale"));
    m_locale->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    add(QStringLiteral("&Locale:"), m_locale);
    m_palette = new QComboBox;
    m_palette->setObjectName(QStringLiteral("palette"));
    m_palette->addItems({ QStringLiteral("Light"), QStringLiteral("Dark") });
    m_palette->setCurrentIndex(m_options.look.dark ? 1 : 0);
    add(QStringLiteral("&Palette:"), m_palette);
    m_simple = new QCheckBox(QStringLiteral("&Simple popup"));
    m_simple->setObjectName(QStringLiteral("simple"));
    m_simple->setChecked(m_options.look.simple);
    bar->addWidget(m_simple);
    auto *spacer = new QWidget;
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(spacer);
    QAction *again = bar->addAction(QStringLiteral("&Reload"));
    again->setShortcut(QKeySequence::Refresh);
    again->setToolTip(QStringLiteral("Read all files again; done by itself when one changes (%1)")
                              .arg(again->shortcut().toString(QKeySequence::NativeText)));
    connect(again, &QAction::triggered, this, &PreviewWindow::reload);
    connect(m_locale, qOverload<int>(&QComboBox::activated), this, &PreviewWindow::changeLook);
    connect(m_palette, qOverload<int>(&QComboBox::activated), this, &PreviewWindow::changeLook);
    connect(m_simple, &QCheckBox::clicked, this, &PreviewWindow::changeLook);
}

QWidget *PreviewWindow::makeKeys()
{
    m_search = new QLineEdit;
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(QStringLiteral("Search keys and packages"));
    m_search->setAccessibleName(QStringLiteral("Search"));
    m_search->setClearButtonEnabled(true);
    m_keys = makeList(
            QStringLiteral("keys"),
            { QStringLiteral("Key"), QStringLiteral("Package"), QStringLiteral("Findings") });
    m_keys->setAccessibleName(QStringLiteral("Keys"));
    connect(m_search, &QLineEdit::textChanged, this, &PreviewWindow::filterKeys);
    connect(new QShortcut(Qt::Key_Down, m_search, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { moveInKeys(1); });
    connect(new QShortcut(Qt::Key_Up, m_search, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { moveInKeys(-1); });
    connect(m_keys, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem *item) {
        if (item)
            showKey(item->text(KeyColumn));
    });
    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->addWidget(m_search);
    layout->addWidget(m_keys);
    return side;
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
    m_ofEntry = makeFindingList(QStringLiteral("ofEntry"));
    m_all = makeFindingList(QStringLiteral("all"));
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

void PreviewWindow::reload()
{
    loadContent();
    listLocales();
    listKeys();
    showPopup();
    // The popup first: opening all the clips takes longer.
    QMetaObject::invokeMethod(this, &PreviewWindow::checkContent, Qt::QueuedConnection);
}

void PreviewWindow::loadContent()
{
    m_popup->showText({}); // it uses the content
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
            QStringLiteral("%1 keys, %2 findings, read at %3")
                    .arg(QString::number(count), QString::number(m_content.findings().size()),
                         QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));
}

void PreviewWindow::changeLook()
{
    m_options.look.locale = m_locale->currentText().toStdString();
    m_options.look.dark = m_palette->currentIndex() == 1;
    m_options.look.simple = m_simple->isChecked();
    loadContent();
    showPopup();
    listFindings();
}

void PreviewWindow::listLocales()
{
    const std::string &chosen = m_options.look.locale;
    const QString current =
            chosen.empty() ? QStringLiteral("en_US") : QString::fromStdString(chosen);
    QStringList locales = m_content.locales();
    for (const QString &always : { QStringLiteral("en_US"), current }) {
        if (!locales.contains(always))
            locales += always;
    }
    locales.sort();
    m_locale->clear();
    m_locale->addItems(locales);
    m_locale->setCurrentText(current);
}

void PreviewWindow::listKeys()
{
    const QSignalBlocker quiet(m_keys); // the choice stays
    m_keys->clear();
    const QStringList keys = m_content.keys();
    if (m_key.isEmpty() && !keys.isEmpty())
        m_key = keys.first();
    for (const QString &key : keys) {
        const QString packages = m_content.packagesOf(key).join(QStringLiteral(", "));
        auto *item = new QTreeWidgetItem(m_keys, { key, packages });
        if (key == m_key)
            m_keys->setCurrentItem(item);
    }
    fitHeader(m_keys);
    filterKeys(m_search->text());
}

void PreviewWindow::filterKeys(const QString &text)
{
    for (int i = 0; i < m_keys->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_keys->topLevelItem(i);
        const bool isFound = item->text(KeyColumn).contains(text, Qt::CaseInsensitive)
                || item->text(PackageColumn).contains(text, Qt::CaseInsensitive);
        item->setHidden(!isFound);
    }
    const QTreeWidgetItem *current = m_keys->currentItem();
    if (!text.isEmpty() && (!current || current->isHidden()))
        moveInKeys(1);
}

void PreviewWindow::moveInKeys(int steps)
{
    QTreeWidgetItem *item = m_keys->currentItem();
    const auto next = [&](QTreeWidgetItem *from) {
        return steps > 0 ? m_keys->itemBelow(from) : m_keys->itemAbove(from);
    };
    // A hidden item has no neighbours.
    item = item && !item->isHidden() ? next(item) : m_keys->itemAt(0, 0);
    if (item)
        m_keys->setCurrentItem(item);
}

void PreviewWindow::chooseKey(const QString &key)
{
    const QList<QTreeWidgetItem *> found = m_keys->findItems(key, Qt::MatchExactly, KeyColumn);
    if (found.isEmpty())
        showKey(key);
    else
        m_keys->setCurrentItem(found.first());
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
    m_content.clearComplaints();
    m_errors.clear();
    if (!m_content.error().isEmpty())
        return m_popup->showText(m_content.error());
    if (m_content.entries().empty())
        return m_popup->showText(
                QStringLiteral("There are no entries here yet. Put a control file into the folder "
                               "Control of a package, or see below why one is not read."));
    const QString file = m_popup->showEntry(*m_content.manager(), m_key);
    if (file.isEmpty())
        return m_popup->showText(QStringLiteral("There is no entry for \"%1\" in %2 at present; "
                                                "see below why.")
                                         .arg(m_key, m_locale->currentText()));
    m_errors = m_popup->errors();
    if (!m_errors.isEmpty())
        m_popup->showText(QStringLiteral("The user interface cannot be shown; see below why."));
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
    const QStringList complaints = m_content.complaints();
    for (const QQmlError &error : std::as_const(m_errors)) {
        const QString where = QStringLiteral("%1:%2:%3")
                                      .arg(error.url().fileName(), QString::number(error.line()),
                                           QString::number(error.column()));
        auto *item = new QTreeWidgetItem(m_ofEntry,
                                         { QStringLiteral("popup"), where, error.description() });
        item->setData(0, Qt::UserRole, error.url().toLocalFile());
    }
    for (const QString &complaint : complaints)
        new QTreeWidgetItem(m_ofEntry, { QStringLiteral("popup"), {}, complaint });
    addFindings(m_ofEntry, m_content.findingsOf(m_key));
    addFindings(m_all, m_content.findings());
    m_tabs->setTabText(
            0,
            QStringLiteral("%1 (%2)").arg(m_key, QString::number(m_ofEntry->topLevelItemCount())));
    m_tabs->setTabText(1, QStringLiteral("All findings (%1)").arg(m_all->topLevelItemCount()));
    countFindings();
}

void PreviewWindow::addFindings(QTreeWidget *list, const QList<Finding> &findings)
{
    for (const Finding &finding : findings) {
        const QString where = QStringLiteral("%1:%2:%3")
                                      .arg(QFileInfo(finding.file).fileName(),
                                           QString::number(finding.position.line),
                                           QString::number(finding.position.column));
        auto *item = new QTreeWidgetItem(list, { finding.code, where, finding.text() });
        item->setData(0, Qt::UserRole, finding.file);
        item->setToolTip(2, finding.text());
        item->setToolTip(1, finding.file);
    }
}

void PreviewWindow::countFindings()
{
    for (int i = 0; i < m_keys->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_keys->topLevelItem(i);
        const auto count = m_content.findingsOf(item->text(KeyColumn)).size();
        item->setText(FindingColumn, count > 0 ? QString::number(count) : QString());
    }
}

} // namespace HovletsTool
