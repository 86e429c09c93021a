// SPDX-License-Identifier: Apache-2.0
#include "KeyList.h"

#include "PreviewContent.h"

#include <QShortcut>

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

namespace HovletsTool {

namespace {

enum { KeyColumn, PackageColumn, FindingColumn };

} // namespace

KeyList::KeyList(QWidget *parent)
    : QWidget(parent)
    , m_search(new QLineEdit)
    , m_keys(new QTreeWidget)
{
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(QStringLiteral("Search keys and packages"));
    m_search->setAccessibleName(QStringLiteral("Search"));
    m_search->setClearButtonEnabled(true);
    m_keys->setObjectName(QStringLiteral("keys"));
    m_keys->setAccessibleName(QStringLiteral("Keys"));
    m_keys->setHeaderLabels(
            { QStringLiteral("Key"), QStringLiteral("Package"), QStringLiteral("Findings") });
    m_keys->setRootIsDecorated(false);
    m_keys->setUniformRowHeights(true);
    m_keys->setAllColumnsShowFocus(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_keys);

    connect(m_search, &QLineEdit::textChanged, this, &KeyList::filter);
    connect(new QShortcut(Qt::Key_Down, m_search, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { move(1); });
    connect(new QShortcut(Qt::Key_Up, m_search, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { move(-1); });
    connect(m_keys, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem *item) {
        if (item)
            Q_EMIT chosen(item->text(KeyColumn));
    });
}

void KeyList::setKeys(const PreviewContent &content, const QString &current)
{
    const QSignalBlocker quiet(m_keys);
    m_keys->clear();
    const QStringList keys = content.keys();
    for (const QString &key : keys) {
        const QString packages = content.packagesOf(key).join(QStringLiteral(", "));
        auto *item = new QTreeWidgetItem(m_keys, { key, packages });
        if (key == current)
            m_keys->setCurrentItem(item);
    }
    for (int column = 0; column < m_keys->columnCount(); ++column)
        m_keys->resizeColumnToContents(column);
    filter(m_search->text());
}

void KeyList::setFindings(const PreviewContent &content)
{
    for (int i = 0; i < m_keys->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_keys->topLevelItem(i);
        const auto count = content.findingsOf(item->text(KeyColumn)).size();
        item->setText(FindingColumn, count > 0 ? QString::number(count) : QString());
    }
}

bool KeyList::choose(const QString &key)
{
    const QList<QTreeWidgetItem *> found = m_keys->findItems(key, Qt::MatchExactly, KeyColumn);
    if (!found.isEmpty())
        m_keys->setCurrentItem(found.first());
    return !found.isEmpty();
}

void KeyList::focusSearch()
{
    m_search->setFocus();
    m_search->selectAll();
}

void KeyList::filter(const QString &text)
{
    for (int i = 0; i < m_keys->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_keys->topLevelItem(i);
        const bool isFound = item->text(KeyColumn).contains(text, Qt::CaseInsensitive)
                || item->text(PackageColumn).contains(text, Qt::CaseInsensitive);
        item->setHidden(!isFound);
    }
    const QTreeWidgetItem *current = m_keys->currentItem();
    if (!text.isEmpty() && (!current || current->isHidden()))
        move(1);
}

void KeyList::move(int steps)
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

} // namespace HovletsTool
