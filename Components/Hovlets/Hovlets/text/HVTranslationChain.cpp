// SPDX-License-Identifier: Apache-2.0
#include "HVTranslationChain.h"

#include <utility>

namespace Hovlets {

HVTranslationChain::HVTranslationChain(QObject *owner, Warn warn)
    : m_owner(owner)
    , m_warn(std::move(warn))
{
}

void HVTranslationChain::contentShown()
{
    for (const auto &translator : m_translators)
        translator->contentShown();
}

QString HVTranslationChain::translate(const QStringList &files, const QString &text,
                                      const QString &context)
{
    std::optional<QString> result;
    std::size_t position = 0;
    for (const QString &file : files) {
        const auto found = translator(position++).find(file, text, context);
        if (found)
            result = found;
        if (found && !found->isEmpty())
            break;
    }
    return result.value_or(text);
}

HVContentTranslator &HVTranslationChain::translator(std::size_t position)
{
    while (m_translators.size() <= position)
        m_translators.push_back(std::make_unique<HVContentTranslator>(m_owner, m_warn));
    return *m_translators[position];
}

} // namespace Hovlets
