// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTranslator.h"

#include <QtCore/QStringList>

#include <memory>
#include <vector>

namespace Hovlets {

/*!
 * \brief Translates texts of content with the first of several translation files that has the text.
 *
 * Opens a file only when those before it lack a text. GUI thread only.
 */
class HVTranslationChain
{
    Q_DISABLE_COPY_MOVE(HVTranslationChain)

public:
    using Warn = std::function<void(const QString &)>;

    /// As for HVContentTranslator.
    HVTranslationChain(QObject *owner, Warn warn);

    /// Call when content is shown: the next translation checks whether its files have changed.
    void contentShown();

    /// The translation of \a text in \a context. As HVContentTranslator::translate(), returns \a
    /// text itself if no file is usable, and an empty string if they lack the text.
    QString translate(const QStringList &files, const QString &text, const QString &context);

private:
    HVContentTranslator &translator(std::size_t position);

    QObject *m_owner;
    Warn m_warn;
    std::vector<std::unique_ptr<HVContentTranslator>> m_translators; // by position in the list
};

} // namespace Hovlets
