// SPDX-License-Identifier: Apache-2.0
#include "ContentTexts.h"

#include "ContentIndex.h"

#include <HVComponentSearch.h>
#include <HVContentTree.h>
#include <HVXmlElement.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <utility>

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

/// The attribute of the entry, or else of the root; the setting if it is empty.
QString valueOf(const HVContentTree &tree, const char *name, contextKey setting)
{
    const QString attribute = QLatin1String(name);
    QString value = tree.entry()->attribute(attribute);
    if (!tree.entry()->hasAttribute(attribute) && tree.root())
        value = tree.root()->attribute(attribute);
    return value.isEmpty() ? HVContext().get(setting).toString() : value;
}

/// The packages with the user interfaces of the entry. Those elsewhere are the host's.
QStringList userInterfacePackages(const HVIndex &index, const HVContentTree &tree)
{
    HVComponentSearch search(index, tree.entry());
    search.confine({});
    const QStringList packages = index.componentPathsForElement(tree.entry(), {});
    QStringList found;
    for (const QString &name :
         { valueOf(tree, "ui", HVKeyRichUiFile), valueOf(tree, "simple", HVKeySimpleUiFile) }) {
        const QString file = search.find(name, {});
        if (!QDir::isAbsolutePath(file)) // missing
            continue;
        for (const QString &package : packages) {
            if (isInside(file, package) && !found.contains(package))
                found += package;
        }
    }
    return found;
}

/// Finds files in the resources of the entry. Those outside of packages are the host's.
FindResource resourcesOf(const HVIndex &index, const HVContentTree &tree)
{
    auto search = std::make_shared<HVComponentSearch>(index, tree.entry());
    search->confine({});
    const QString folder = valueOf(tree, "resources", HVKeyResourceFolder);
    return [search, folder](const QString &name) {
        const QString file = search->find(folder, name);
        const bool isFound = QDir::isAbsolutePath(file) && QFileInfo(file).isFile();
        return isFound ? file : QString();
    };
}

void append(std::vector<TranslatableText> &texts, const std::vector<TranslatableText> &more)
{
    texts.insert(texts.end(), more.begin(), more.end());
}

} // namespace

ContentTexts::ContentTexts(const std::vector<std::string> &paths, const QString &source,
                           const QString &keyData, Report report)
    : m_source(source)
    , m_report(std::move(report))
    , m_content(std::make_unique<ContentIndex>(paths, contextOf(source, keyData)))
{
}

ContentTexts::~ContentTexts() = default;

QStringList ContentTexts::folders()
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

QString ContentTexts::translationFolder(const HVContentTree &tree)
{
    const HVIndex &index = *m_content->manager().index();
    const QString package = index.componentPathsForElement(tree.entry(), {}).value(0);
    const QString name = valueOf(tree, "l10n_name", HVKeyTranslationFolder);
    const QString folder =
            QDir::cleanPath(index.componentPathsForElement(tree.entry(), name).value(0));
    if (isInside(folder, package))
        return folder;
    const QString file = tree.entry()->attribute(QStringLiteral("HVLocation"));
    const QString mark = file + QLatin1Char('\n') + folder;
    if (!m_reported.contains(mark)) {
        m_reported += mark;
        m_report(
                file,
                QStringLiteral("translations belong into the package, but the folder %1 is outside "
                               "of it; the entries that name it are left out")
                        .arg(folder));
    }
    return {};
}

QMap<QString, std::vector<TranslatableText>> ContentTexts::textsFor(const QLocale &target)
{
    HVIndex &index = *m_content->manager().index();
    QStringList keys = m_content->manager().keys();
    keys.removeDuplicates();
    QMap<QString, std::vector<TranslatableText>> found;
    QMap<QString, QStringList> userInterfaces; // packages by folder
    for (const QString &key : keys) {
        HVContentTree tree = retrieve(index, key, target);
        if (!tree.entry())
            tree = retrieve(index, key, m_source);
        if (!tree.entry() || !tree.root())
            continue;
        const QString locale = tree.root()->attribute(QStringLiteral("locale"));
        if (!locale.isEmpty() && QLocale(locale) == target)
            continue;
        const QString folder = translationFolder(tree);
        if (folder.isNull())
            continue;
        append(found[folder], textsOf(*tree.entry(), resourcesOf(index, tree)));
        userInterfaces[folder] += userInterfacePackages(index, tree);
        userInterfaces[folder].removeDuplicates();
    }
    for (auto each = found.begin(); each != found.end(); ++each) {
        append(*each, userInterfaceTexts());
        for (const QString &package : std::as_const(userInterfaces[each.key()]))
            append(*each, m_qml.in(package));
    }
    return found;
}

} // namespace HovletsTool
