// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVDisplayBudget.h"
#include "HVMarkup.h"
#include "HVMarkupTags.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Whether all tags are known, properly nested and closed.
inline bool isBalanced(const QString &markup)
{
    QStringList open;
    for (auto start = markup.indexOf(QLatin1Char('<')); start >= 0;
         start = markup.indexOf(QLatin1Char('<'), start + 1)) {
        const auto end = markup.indexOf(QLatin1Char('>'), start);
        const bool isEnd = markup.mid(start + 1, 1) == QLatin1String("/");
        const auto nameStart = start + (isEnd ? 2 : 1);
        auto nameEnd = nameStart;
        while (nameEnd < end && markup.at(nameEnd).isLower())
            ++nameEnd;
        const QString name = markup.mid(nameStart, nameEnd - nameStart);
        if (end < 0 || !Hovlets::markupTagNamed(name))
            return false;
        if (name == QLatin1String("br"))
            continue;
        if (!isEnd)
            open += name;
        else if (open.isEmpty() || open.takeLast() != name)
            return false;
    }
    return open.isEmpty();
}

inline Hovlets::HVShownText shown(const QString &text, const Hovlets::HVMarkupRules &rules = {},
                                  const Hovlets::HVLimits &limits = {})
{
    Hovlets::HVDisplayBudget budget(limits);
    return shownMarkup(text, rules, budget);
}

inline Hovlets::HVMarkupRules withTopics()
{
    Hovlets::HVMarkupRules rules;
    rules.topics = true;
    return rules;
}
