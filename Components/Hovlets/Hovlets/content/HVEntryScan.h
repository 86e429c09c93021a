// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Tells from the bytes of a control file whether it can hold the entry for a key.
 *
 * A look-up meets many files and finds its key in one, and a parse costs some thirty times a
 * search. The answer "no" is certain: the parser would find no such entry either. "Maybe" leaves it
 * to the parser, and is the answer wherever the bytes are not plainly what the parser reads:
 * another encoding than UTF-8, a document type declaration, references in a key.
 */
class HVEntryScan
{
public:
    explicit HVEntryScan(const QString &key);

    /// False when no "hovlet" element of the file carries the key.
    bool mayHold(const QByteArray &file) const;

private:
    QByteArray m_key;
    bool m_plainKey;
};

} // namespace Hovlets
