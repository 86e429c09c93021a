// SPDX-License-Identifier: Apache-2.0
#include "HVComponentFinder.h"

#include "HVComponentSearch.h"
#include "HVContentTranslator.h"
#include "HVIndex.h"
#include "HVLookUpMemory.h"
#include "HVSettings.h"
#include "HVViewServices.h"
#include "HVXmlElement.h"

#include <QtCore/QPointer>

namespace Hovlets {

HVComponentFinder::HVComponentFinder(HVViewServices *services, const HVXmlElement *content,
                                     const HVLookUpMemory &memory) noexcept
    : m_services(services)
    , m_content(content)
    , m_memory(memory)
{
}

QString HVComponentFinder::category(const QString &attribute, contextKey key,
                                    const QString &fallback) const
{
    const QString path = categoryOfContent(attribute);
    if (!path.isEmpty())
        return path;
    return m_services ? m_services->settings().get(key, fallback).toString() : fallback;
}

/// The attribute of the entry, else that of the element above it.
QString HVComponentFinder::categoryOfContent(const QString &attribute) const
{
    if (!m_content)
        return {};
    const auto *parent = qobject_cast<const HVXmlElement *>(m_content->parent());
    return !m_content->hasAttribute(attribute) && parent ? parent->attribute(attribute)
                                                         : m_content->attribute(attribute);
}

QString HVComponentFinder::find(const QString &attribute, contextKey key, const QString &fallback,
                                const QString &relativePath) const
{
    const QString name = category(attribute, key, fallback);
    if (!m_services || !m_content)
        return name;
    const bool isConfined = setting(HVKeyConfineContent).toBool();
    const bool isOfHost = isConfined && categoryOfContent(attribute).isEmpty();
    const QString hostPath = isOfHost ? name : QString();
    const auto search = m_memory.search(m_content, isConfined, hostPath, [&] {
        HVComponentSearch made(m_services->contentIndex(), m_content);
        if (isConfined)
            made.confine(hostPath);
        return made;
    });
    const QString found = search->find(name, relativePath);
    warnOfRefused(search->refused());
    return found;
}

void HVComponentFinder::warnOfRefused(const QStringList &files) const
{
    if (files.isEmpty())
        return;
    const QPointer<HVViewServices> services = m_services; // the host may delete them
    const QString controlFile = m_content->attribute(QStringLiteral("HVLocation"));
    for (const QString &file : files) {
        const QString warning =
                QStringLiteral("%1 is refused: it is outside of the packages that %2 may use")
                        .arg(file, controlFile);
        if (services)
            services->warnOnce(warning);
    }
}

QString HVComponentFinder::userInterface(bool rich) const
{
    const bool simple = !rich && setting(HVKeySimpleMode).toBool();
    const contextKey key = simple ? HVKeySimpleUiFile : HVKeyRichUiFile;
    const QString attribute = simple ? QStringLiteral("simple") : QStringLiteral("ui");
    return find(attribute, key, defaultOf(key).toString(), QString());
}

// The names of the attributes differ by a letter. Content relies on both.
QString HVComponentFinder::resourceFolder(const QString &packageRoot) const
{
    const QString attribute = QStringLiteral("resource");
    if (setting(HVKeyConfineContent).toBool()
        && HVComponentSearch::leadsOut(categoryOfContent(attribute), packageRoot))
        return setting(HVKeyResourceFolder).toString();
    return category(attribute, HVKeyResourceFolder, defaultOf(HVKeyResourceFolder).toString());
}

QString HVComponentFinder::resource(const QString &relativePath) const
{
    return find(QStringLiteral("resources"), HVKeyResourceFolder,
                defaultOf(HVKeyResourceFolder).toString(), relativePath);
}

QStringList HVComponentFinder::translations() const
{
    if (!m_services)
        return {};
    const QPointer<HVViewServices> services = m_services; // the host, if warned, may delete them
    const auto *root =
            m_content ? qobject_cast<const HVXmlElement *>(m_content->parent()) : nullptr;
    const QString written = root ? root->attribute(QStringLiteral("locale")) : QString();
    QStringList files = translationFileNames(services->settings(), written);
    for (QString &file : files) {
        if (!services)
            return {};
        file = find(QStringLiteral("l10n_name"), HVKeyTranslationFolder,
                    defaultOf(HVKeyTranslationFolder).toString(), file);
    }
    return files;
}

QVariant HVComponentFinder::setting(contextKey key) const
{
    return m_services ? m_services->settings().get(key) : defaultOf(key);
}

} // namespace Hovlets
