// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "EntryTexts.h"

#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <memory>
#include <string>
#include <vector>

namespace HovletsTool {

class ContentIndex;

/*!
 * \brief The texts of packages that need a translation, by the folder of their translation files.
 *
 * The library itself looks up the entries, so the texts are those of the popups that users see.
 */
class ContentTexts
{
    Q_DISABLE_COPY_MOVE(ContentTexts)

public:
    /*!
     * Throws a ToolError for a path that is not a folder.
     * \param source the locale of the texts to translate, which is the host's fallback locale
     * \param keyData the key-data file of the host; empty for none
     */
    ContentTexts(const std::vector<std::string> &paths, const QString &source,
                 const QString &keyData);
    ~ContentTexts();

    [[nodiscard]] QLocale source() const { return m_source; }

    /// The folders that hold translation files, or would hold them.
    [[nodiscard]] QStringList folders() const;

    /// The texts that readers in \a target would see in another language. Entries for that locale
    /// need no translation. By folder; a folder without such texts is missing. Throws a ToolError
    /// if content names a folder outside its package.
    [[nodiscard]] QMap<QString, std::vector<TranslatableText>>
    textsFor(const QLocale &target) const;

private:
    QLocale m_source;
    std::unique_ptr<ContentIndex> m_content;
};

} // namespace HovletsTool
