// SPDX-License-Identifier: Apache-2.0
#include "ContentTexts.h"

#include "ContentIndex.h"
#include "ToolError.h"

#include <HVContentTree.h>
#include <HVXmlElement.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

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

/// Whether \a path is in \a folder once links are followed. The last parts of the path may not
/// exist.
bool isInside(const QString &path, const QString &folder)
{
    QFileInfo info(path);
    while (!info.exists() && !info.isSymLink() && !info.isRoot())
        info = QFileInfo(info.path());
    const QString actual = info.canonicalFilePath(); // empty for a broken link
    const QString wanted = QFileInfo(folder).canonicalFilePath();
    return actual == wanted || actual.startsWith(wanted + QLatin1Char('/'));
}

/// Throws a ToolError unless \a folder is in \a package, because content may come from strangers.
void refuseOutside(const QString &folder, const QString &package, const QString &controlFile)
{
    if (!isInside(folder, package))
        throw ToolError(QStringLiteral("%1: translations belong into the package, but the folder "
                                       "%2 is outside of it")
                                .arg(controlFile, folder));
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
    const QString folder =
            QDir::cleanPath(index.componentPathsForElement(tree.entry(), name).value(0));
    refuseOutside(folder, index.componentPathsForElement(tree.entry(), {}).value(0),
                  tree.entry()->attribute(QStringLiteral("HVLocation")));
    return folder;
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
    for (const QFileInfo &package : packages) {
        const QString folder = package.canonicalFilePath() + QStringLiteral("/l10n");
        if (isInside(folder, package.filePath()))
            folders += folder;
    }
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
