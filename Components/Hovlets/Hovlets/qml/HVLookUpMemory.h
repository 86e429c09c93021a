// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVComponentSearch.h"

#include <QtCore/QHash>
#include <QtCore/QString>

#include <functional>
#include <memory>

namespace Hovlets {

class HVXmlElement;

/*!
 * \brief The searches that a view has made since it began to read an entry.
 *
 * An entry has up to hundreds of texts, each of which may be translated, and may name thousands of
 * packages to search. While a scope exists, the folders of an entry are resolved once, and each
 * file is looked for once. Otherwise, each look-up accesses the disk. GUI thread only.
 */
class HVLookUpMemory
{
    struct State
    {
        int scopes = 0;
        const HVXmlElement *content = nullptr; // only compared
        bool isConfined = false;
        QHash<QString, std::shared_ptr<HVComponentSearch>> searches; // by the host's path
    };

public:
    /// While it exists, the memory keeps what it finds. The memory may be deleted meanwhile.
    class Scope
    {
        Q_DISABLE_COPY_MOVE(Scope)

    public:
        explicit Scope(const HVLookUpMemory &memory)
            : m_state(memory.m_state)
        {
            ++m_state->scopes;
        }

        ~Scope()
        {
            if (--m_state->scopes == 0)
                m_state->searches.clear();
        }

    private:
        std::shared_ptr<State> m_state;
    };

    /*!
     * The search for files of \a content. Calls \a make if there is none yet.
     * \param hostPath see HVComponentSearch::confine()
     */
    std::shared_ptr<HVComponentSearch> search(const HVXmlElement *content, bool isConfined,
                                              const QString &hostPath,
                                              const std::function<HVComponentSearch()> &make) const
    {
        if (m_state->scopes == 0)
            return std::make_shared<HVComponentSearch>(make());
        if (content != m_state->content || isConfined != m_state->isConfined)
            m_state->searches.clear();
        m_state->content = content;
        m_state->isConfined = isConfined;
        std::shared_ptr<HVComponentSearch> &search = m_state->searches[hostPath];
        if (!search)
            search = std::make_shared<HVComponentSearch>(make());
        return search;
    }

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace Hovlets
