// SPDX-License-Identifier: Apache-2.0
#include "FindingView.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyledItemDelegate>

#include <algorithm>

namespace HovletsTool {

namespace {

enum { CodeColumn, PlaceColumn, TextColumn };

constexpr int FileRole = Qt::UserRole;

QString placeOf(const QString &file, int line, int column)
{
    return QStringLiteral("%1:%2:%3").arg(file, QString::number(line), QString::number(column));
}

/// Makes each row high enough for its whole text, which item views cut off by default.
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
        constexpr int Margin = 4; // pixels on each side, as in the style
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

} // namespace

FindingView::FindingView(const QString &name, QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName(name);
    setHeaderLabels({ QStringLiteral("Code"), QStringLiteral("Where"), QStringLiteral("What") });
    setRootIsDecorated(false);
    setAllColumnsShowFocus(true);
    setWordWrap(true);
    setItemDelegateForColumn(TextColumn, new WholeText(this));
    connect(header(), &QHeaderView::sectionResized, this, &QTreeWidget::doItemsLayout,
            Qt::QueuedConnection);
    header()->setSectionResizeMode(CodeColumn, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(PlaceColumn, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemActivated, this, [](const QTreeWidgetItem *item) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(item->data(0, FileRole).toString()));
    });
}

void FindingView::addFindings(const QList<Finding> &findings)
{
    for (const Finding &finding : findings) {
        const QString place = placeOf(QFileInfo(finding.file).fileName(), finding.position.line,
                                      finding.position.column);
        QTreeWidgetItem *item = addRow(finding.code, place, finding.text(), finding.file);
        item->setToolTip(TextColumn, finding.text());
        item->setToolTip(PlaceColumn, finding.file);
    }
}

void FindingView::addErrors(const QList<QQmlError> &errors)
{
    for (const QQmlError &error : errors)
        addRow(QStringLiteral("popup"),
               placeOf(error.url().fileName(), error.line(), error.column()), error.description(),
               error.url().toLocalFile());
}

void FindingView::addComplaints(const QStringList &complaints)
{
    for (const QString &complaint : complaints)
        addRow(QStringLiteral("popup"), {}, complaint, {});
}

QTreeWidgetItem *FindingView::addRow(const QString &code, const QString &place, const QString &text,
                                     const QString &file)
{
    auto *item = new QTreeWidgetItem(this, { code, place, text });
    item->setData(0, FileRole, file);
    return item;
}

} // namespace HovletsTool
