// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QSet>
#include <QtCore/QStringList>

namespace HovletsTool {

class FindingList;

/*!
 * \brief Checks entries of one file against the format that the default user interface shows.
 *
 * Not for entries with another user interface, which may define elements and attributes of its own.
 */
class FormatCheck
{
public:
    /// \param hostAttributes attributes that the host reads, although they resemble others
    FormatCheck(const QString &path, const XmlDocument &document, const QStringList &hostAttributes,
                FindingList &findings);

    void check(const XmlDocument::Branch &entry);

private:
    void checkName(const XmlDocument::Element &element);
    void checkAttributes(const XmlDocument::Element &element);
    void reportMarkup(const XmlDocument::Element &element);
    void checkTags(const XmlDocument::Element &element);
    void add(const char *code, const XmlDocument::Element &element, const QString &attribute,
             const QString &message);

    const QString &m_path;
    const XmlDocument &m_document;
    const QStringList &m_hostAttributes;
    FindingList &m_findings;
    QSet<QString> m_reported; // one place for each mistake in a file
};

} // namespace HovletsTool
