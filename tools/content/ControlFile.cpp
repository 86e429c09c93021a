// SPDX-License-Identifier: Apache-2.0
#include "ControlFile.h"

namespace HovletsTool {

ControlFile::ControlFile(const QString &path, const QString &package)
    : m_path(path)
    , m_package(package)
    , m_document(path)
{
    if (root())
        m_locale = root()->value(QStringLiteral("locale"));
    for (const Element &element : m_document.elements()) {
        if (element.level == 1 && element.name == QLatin1String("hovlet")) {
            m_entries.push_back({ element.value(QStringLiteral("key")), &element, {} });
            ++m_uses[m_entries.back().key];
        } else if (element.level > 1 && !m_entries.empty() && m_entries.back().element < &element) {
            m_entries.back().below.push_back(&element);
        }
    }
}

const ControlFile::Element *ControlFile::root() const
{
    return m_document.elements().empty() ? nullptr : &m_document.elements().front();
}

bool ControlFile::isFor(const QLocale &locale) const
{
    return isForAllLocales() || QLocale(m_locale) == locale;
}

bool ControlFile::serves(const QString &key) const
{
    return m_document.isWellFormed() && !m_document.tooDeep() && m_uses.value(key) == 1;
}

Position ControlFile::position(const Entry &entry) const
{
    return m_document.position(*entry.element, QStringLiteral("key"));
}

} // namespace HovletsTool
