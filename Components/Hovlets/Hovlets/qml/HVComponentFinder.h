// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

class HVViewServices;
class HVXmlElement;

/*!
 * \brief Finds the files that an entry is shown with: its user interface, its resources and its
 * translations.
 *
 * Make one where it is needed: it refers to the entry and to the services, and each question goes
 * to the disk. Without services nothing is found, and the answers are the names that were looked
 * for. GUI thread only.
 */
class HVComponentFinder
{
public:
    /// \a services and \a content may be null; both must outlive the finder.
    HVComponentFinder(const HVViewServices *services, const HVXmlElement *content) noexcept;

    /*!
     * The folder or file for components of a kind: the attribute of the content, else of its parent
     * element, else the setting \a key with its default \a fallback.
     */
    [[nodiscard]] QString category(const QString &attribute, contextKey key,
                                   const QString &fallback) const;

    /*!
     * The first existing file \a relativePath (or category, when that is empty) in the content's
     * search folders; the category when there is none.
     */
    [[nodiscard]] QString find(const QString &attribute, contextKey key, const QString &fallback,
                               const QString &relativePath) const;

    /// The QML file to run, simple or rich as the settings say.
    [[nodiscard]] QString userInterface() const;

    /// The folder of the resources as the content names it, which is not looked up.
    [[nodiscard]] QString resourceFolder() const;

    /// A file of the resources.
    [[nodiscard]] QString resource(const QString &relativePath) const;

    /// The file of translations into the locale of the settings.
    [[nodiscard]] QString translations() const;

private:
    [[nodiscard]] QVariant setting(contextKey key) const;

    const HVViewServices *m_services;
    const HVXmlElement *m_content;
};

} // namespace Hovlets
