// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

namespace Hovlets {

class HVLookUpMemory;
class HVViewServices;
class HVXmlElement;

/*!
 * \brief Finds the files that belong to an entry: its user interface, resources and translations.
 *
 * Create a finder where it is needed: it refers to the entry and the services, and each call
 * accesses the disk unless the memory has the answer. Without services it finds nothing, and
 * returns the names that it was asked for. GUI thread only.
 */
class HVComponentFinder
{
public:
    /// \a services and \a content may be null; all must outlive the finder.
    HVComponentFinder(HVViewServices *services, const HVXmlElement *content,
                      const HVLookUpMemory &memory) noexcept;

    /*!
     * The folder or file for components of a kind: the attribute of the content, else that of its
     * parent element, else the setting \a key with its default \a fallback.
     */
    [[nodiscard]] QString category(const QString &attribute, contextKey key,
                                   const QString &fallback) const;

    /*!
     * The first existing file \a relativePath (or category, if the path is empty) in the content's
     * search folders; the category if there is none.
     *
     * With HVKeyConfineContent, a file outside these folders counts as missing, and the host gets
     * one warning, during which it may delete the view. A category that leads out of the folders
     * becomes an empty string.
     */
    [[nodiscard]] QString find(const QString &attribute, contextKey key, const QString &fallback,
                               const QString &relativePath) const;

    /// The QML file to run: simple or rich depending on the settings, or always \a rich.
    [[nodiscard]] QString userInterface(bool rich = false) const;

    /// The name of the resource folder in the content; not resolved. With HVKeyConfineContent, the
    /// name in the settings if the content's leads out of \a packageRoot.
    [[nodiscard]] QString resourceFolder(const QString &packageRoot) const;

    /// A file of the resources.
    [[nodiscard]] QString resource(const QString &relativePath) const;

    /// The files of translations: one for each name that translationFileNames() returns.
    [[nodiscard]] QStringList translations() const;

private:
    [[nodiscard]] QVariant setting(contextKey key) const;
    [[nodiscard]] QString categoryOfContent(const QString &attribute) const;
    void warnOfRefused(const QStringList &files) const;

    HVViewServices *m_services;
    const HVXmlElement *m_content;
    const HVLookUpMemory &m_memory;
};

} // namespace Hovlets
