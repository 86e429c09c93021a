// SPDX-License-Identifier: Apache-2.0
#include "ContentTexts.h"

#include "ContentIndex.h"

#include <HVContentTree.h>
#include <HVXmlElement.h>

#include <QtCore/QDir>

namespace HovletsTool {

using namespace Hovlets;

namespace {

HVContext contextOf(const QString &source, const QString &keyData)
{
    HVContext context;
    context.set(HVKeyFallbackLocale, source);
    if (!keyData.isEmpty())
        context.set(HVKeyKeyDataFile, keyData);
    return context;
}

HVContentTree retrieve(HVIndex &index, const QString &key, const QLocale &locale)
{
    QString path;
    int depth = 0;
    HVXmlElement *root = nullptr;
    HVXmlElement *entry = index.retrieve(key, locale, path, depth, root);
    return HVContentTree(entry, root);
}

/// The first folder in which the library looks for translations of the entry.
QString translationFolder(const HVIndex &index, const HVContentTree &tree)
{
    const QString attribute = QStringLiteral("l10n_name");
    QString name = tree.entry()->attribute(attribute);
    if (!tree.entry()->hasAttribute(attribute) && tree.root())
        name = tree.root()->attribute(attribute);
    if (name.isEmpty())
        name = QStringLiteral("l10n");
    return QDir::cleanPath(index.componentPathsForElement(tree.entry(), name).value(0));
}

} // namespace

ContentTexts::ContentTexts(const std::vector<std::string> &paths, const QString &source,
                           const QString &keyData)
    : m_source(source)
    , m_content(std::make_unique<ContentIndex>(paths, contextOf(source, keyData)))
{
}

ContentTexts::~ContentTexts() = default;

QStringList ContentTexts::folders() const
{
    QStringList folders;
    const QList<QFileInfo> packages = m_content->packages();
    for (const QFileInfo &package : packages)
        folders += package.canonicalFilePath() + QStringLiteral("/l10n");
    folders += textsFor(QLocale::c()).keys();
    folders.removeDuplicates();
    return folders;
}

QMap<QString, std::vector<TranslatableText>> ContentTexts::textsFor(const QLocale &target) const
{
    HVIndex &index = *m_content->manager().index();
    QStringList keys = m_content->manager().keys();
    keys.removeDuplicates();
    QMap<QString, std::vector<TranslatableText>> found;
    for (const QString &key : keys) {
        HVContentTree tree = retrieve(index, key, target);
        if (!tree.entry())
            tree = retrieve(index, key, m_source);
        if (!tree.entry() || !tree.root())
            continue;
        const QString locale = tree.root()->attribute(QStringLiteral("locale"));
        if (!locale.isEmpty() && QLocale(locale) == target)
            continue;
        std::vector<TranslatableText> &texts = found[translationFolder(index, tree)];
        const std::vector<TranslatableText> more = textsOf(*tree.entry());
        texts.insert(texts.end(), more.begin(), more.end());
    }
    for (std::vector<TranslatableText> &texts : found) {
        const std::vector<TranslatableText> &more = userInterfaceTexts();
        texts.insert(texts.end(), more.begin(), more.end());
    }
    return found;
}

} // namespace HovletsTool
