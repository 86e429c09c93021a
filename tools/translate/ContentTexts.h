// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "EntryTexts.h"
#include "QmlTexts.h"

#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Hovlets {
class HVContentTree;
}

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
    /// Receives a control file, and why the texts of some of its entries are left out.
    using Report = std::function<void(const QString &controlFile, const QString &problem)>;

    /*!
     * Throws a ToolError for a path that is not a folder.
     * \param source the locale of the texts to translate, which is the host's fallback locale
     * \param keyData the key-data file of the host; empty for none
     * \param report called once for each control file and problem, while texts are looked up
     */
    ContentTexts(const std::vector<std::string> &paths, const QString &source,
                 const QString &keyData, Report report);
    ~ContentTexts();

    [[nodiscard]] QLocale source() const { return m_source; }

    /// The folders that hold translation files, or would hold them.
    [[nodiscard]] QStringList folders();

    /*!
     * The texts that readers in \a target would see in another language, by folder; a folder
     * without such texts is missing. Entries for that locale need no translation. Entries that name
     * a folder outside their package are left out, because content may come from strangers.
     */
    [[nodiscard]] QMap<QString, std::vector<TranslatableText>> textsFor(const QLocale &target);

    /// Whether entries had to be left out.
    [[nodiscard]] bool hasProblems() const { return !m_reported.isEmpty(); }

private:
    /// The first folder in which the library looks for translations of the entry, or a null string
    /// if it is outside the package.
    QString translationFolder(const Hovlets::HVContentTree &tree);

    QLocale m_source;
    Report m_report;
    QSet<QString> m_reported;
    std::unique_ptr<ContentIndex> m_content;
    QmlTexts m_qml;
};

} // namespace HovletsTool
