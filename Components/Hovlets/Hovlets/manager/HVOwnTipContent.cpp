// SPDX-License-Identifier: Apache-2.0
#include "HVOwnTipContent.h"

#include "HVOwnTip.h"
#include "HVTipText.h"
#include "HVXmlElement.h"

#include <QtCore/QHash>
#include <QtGui/QTextDocument>
#include <QtWidgets/QWidget>

#include <memory>

namespace Hovlets {

namespace {

QString keyOf(const QWidget *widget, const HVOwnTip &tip)
{
    QStringList parts { QStringLiteral("tooltip"),
                        QString::number(reinterpret_cast<quintptr>(widget), 16) };
    for (const quintptr part : tip.part)
        parts += QString::number(part, 16);
    for (const QString &text : { tip.toolTip, tip.statusTip, tip.whatsThis })
        parts += QString::number(qHash(text), 16);
    return parts.join(QLatin1Char(':'));
}

void addParagraphs(HVXmlElement &entry, const QString &text)
{
    const QStringList paragraphs = tipParagraphs(text, Qt::mightBeRichText(text));
    for (const QString &paragraph : paragraphs) {
        auto *element = new HVXmlElement(&entry);
        element->setTagName(QStringLiteral("p"));
        element->setContent(paragraph);
    }
}

} // namespace

HVFoundContent ownTipContent(const QWidget &widget, const QPoint &position)
{
    const QWidget *control = &widget; // compared only: the model may delete it
    const HVOwnTip tip = ownTipAt(widget, position);
    if (tip.isEmpty())
        return { HVContentTree(), QString() };

    auto root = std::make_unique<HVXmlElement>();
    root->setTagName(QStringLiteral("hovlets"));
    root->setAttribute(QStringLiteral("search"), QStringLiteral("Default"));
    auto *entry = new HVXmlElement(root.get());
    entry->setTagName(QStringLiteral("hovlet"));
    entry->setAttribute(QStringLiteral("key"), keyOf(control, tip));
    if (!tip.shortcut.isEmpty())
        entry->setAttribute(QStringLiteral("shortcut"), tip.shortcut);

    const bool isTitle = !Qt::mightBeRichText(tip.toolTip) && isTipTitle(tip.toolTip)
            && !tip.toolTip.contains(QLatin1String("%(")); // no placeholder of content
    if (isTitle)
        entry->setAttribute(QStringLiteral("title"), tip.toolTip.trimmed());
    else
        addParagraphs(*entry, tip.toolTip);
    if (tip.statusTip != tip.toolTip)
        addParagraphs(*entry, tip.statusTip);
    if (tip.whatsThis != tip.toolTip && tip.whatsThis != tip.statusTip)
        addParagraphs(*entry, tip.whatsThis);
    return { HVContentTree(entry, root.release()), QString() };
}

} // namespace Hovlets
