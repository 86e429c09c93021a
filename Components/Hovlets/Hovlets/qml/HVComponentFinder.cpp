// SPDX-License-Identifier: Apache-2.0
#include "HVComponentFinder.h"

#include "HVContentTranslator.h"
#include "HVIndex.h"
#include "HVSettings.h"
#include "HVViewServices.h"
#include "HVXmlElement.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace Hovlets {

HVComponentFinder::HVComponentFinder(const HVViewServices *services,
                                     const HVXmlElement *content) noexcept
    : m_services(services)
    , m_content(content)
{
}

QString HVComponentFinder::category(const QString &attribute, contextKey key,
                                    const QString &fallback) const
{
    QString path;
    if (m_content) {
        const auto *parent = qobject_cast<const HVXmlElement *>(m_content->parent());
        if (m_content->hasAttribute(attribute))
            path = m_content->attribute(attribute);
        else if (parent && parent->hasAttribute(attribute))
            path = parent->attribute(attribute);
    }
    if (!path.isEmpty())
        return path;
    return m_services ? m_services->settings().get(key, fallback).toString() : fallback;
}

QString HVComponentFinder::find(const QString &attribute, contextKey key, const QString &fallback,
                                const QString &relativePath) const
{
    const QString name = category(attribute, key, fallback);
    if (!m_services || !m_content)
        return name;
    const QStringList candidates =
            m_services->contentIndex().componentPathsForElement(m_content, name);
    for (const QString &candidate : candidates) {
        const QFileInfo file(relativePath.isEmpty()
                                     ? candidate
                                     : QDir(candidate).absoluteFilePath(relativePath));
        if (file.exists())
            return file.absoluteFilePath();
    }
    return name;
}

QString HVComponentFinder::userInterface() const
{
    const bool simple = setting(HVKeySimpleMode).toBool();
    const contextKey key = simple ? HVKeySimpleUiFile : HVKeyRichUiFile;
    const QString attribute = simple ? QStringLiteral("simple") : QStringLiteral("ui");
    return find(attribute, key, defaultOf(key).toString(), QString());
}

// The names of the attributes differ by a letter. Content relies on both.
QString HVComponentFinder::resourceFolder() const
{
    return category(QStringLiteral("resource"), HVKeyResourceFolder,
                    defaultOf(HVKeyResourceFolder).toString());
}

QString HVComponentFinder::resource(const QString &relativePath) const
{
    return find(QStringLiteral("resources"), HVKeyResourceFolder,
                defaultOf(HVKeyResourceFolder).toString(), relativePath);
}

QString HVComponentFinder::translations() const
{
    if (!m_services)
        return {};
    return find(QStringLiteral("l10n_name"), HVKeyTranslationFolder,
                defaultOf(HVKeyTranslationFolder).toString(),
                translationFileName(m_services->settings()));
}

QVariant HVComponentFinder::setting(contextKey key) const
{
    return m_services ? m_services->settings().get(key) : defaultOf(key);
}

} // namespace Hovlets
