// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"

#include <QtCore/QPointer>

#include <utility>

namespace Hovlets {

/*!
 * \brief Owns the result of a look-up: the entry, and the root above it.
 *
 * The two are deleted separately, because an index supplied by the host may return an entry that is
 * not a child of the root. Either may be null, or may have been deleted elsewhere.
 */
class HVContentTree
{
    Q_DISABLE_COPY(HVContentTree)

public:
    explicit HVContentTree(HVXmlElement *entry = nullptr, HVXmlElement *root = nullptr)
        : m_entry(entry)
        , m_root(root)
    {
    }

    HVContentTree(HVContentTree &&other) noexcept { swap(other); }

    HVContentTree &operator=(HVContentTree &&other) noexcept
    {
        swap(other);
        return *this;
    }

    ~HVContentTree()
    {
        delete m_entry.data();
        delete m_root.data();
    }

    [[nodiscard]] HVXmlElement *entry() const { return m_entry; }
    [[nodiscard]] HVXmlElement *root() const { return m_root; }

    /// Gives up ownership.
    void release()
    {
        m_entry.clear();
        m_root.clear();
    }

private:
    void swap(HVContentTree &other) noexcept
    {
        std::swap(m_entry, other.m_entry);
        std::swap(m_root, other.m_root);
    }

    QPointer<HVXmlElement> m_entry;
    QPointer<HVXmlElement> m_root;
};

} // namespace Hovlets
