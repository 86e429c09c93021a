// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVDisplayBudget.h"
#include "HVMarkup.h"
#include "HVShownText.h"
#include "HVXmlElement.h"

#include <QtCore/QString>

namespace Hovlets {

class HVEntryServices;

/*!
 * \brief Translates and converts the texts of one entry, within its budget.
 */
class HVEntryTexts
{
    Q_DISABLE_COPY_MOVE(HVEntryTexts)

public:
    /// \a key is that of the entry. \a services must outlive the object. \a topics says whether
    /// links to documentation topics can be followed.
    HVEntryTexts(QString key, HVEntryServices &services, bool topics, const HVLimits &limits);

    HVDisplayBudget &budget() { return m_budget; }

    /// Calls \a visit for the direct children until the budget is spent.
    template <typename Visit> void forEachChild(const HVXmlElement &element, Visit visit)
    {
        const QObjectList &children = element.children();
        for (const QObject *child : children) {
            const auto *childElement = qobject_cast<const HVXmlElement *>(child);
            if (!childElement)
                continue;
            if (!m_budget.takeElement())
                return;
            visit(*childElement);
        }
    }

    /// With white space simplified.
    [[nodiscard]] QString simplified(const QString &text) const
    {
        return simplifiedText(text, m_longest);
    }

    /// The text of an element and its descendants, with white space simplified.
    QString allText(const HVXmlElement &element);
    void appendAllText(QString &text, const HVXmlElement &element);

    /// Appends \a more, with white space simplified.
    void append(QString &text, const QString &more) const;

    /// The translation as plain text.
    HVShownText plain(const QString &text);

    /// The translation of simplified text, which may be markup.
    HVShownText formatted(const QString &source);

    /// Lines of code, without the indentation that they have in common. Each counts as an element.
    /// Not translated.
    HVShownText code(const QString &text);

private:
    QString taken(const QString &source);

    const QString m_key;
    HVEntryServices &m_services;
    const int m_longest; // characters
    HVMarkupRules m_rules;
    HVDisplayBudget m_budget;
};

} // namespace Hovlets
