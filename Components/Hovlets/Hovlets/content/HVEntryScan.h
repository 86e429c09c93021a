// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Searches the bytes of a control file for the entry for a key, without parsing them.
 *
 * A look-up reads many files and finds its key in one, and parsing takes about thirty times as long
 * as searching. "No" is certain: the parser would not find such an entry either. "Maybe" leaves the
 * decision to the parser. It is the answer wherever the bytes differ from what the parser reads: an
 * encoding other than UTF-8, a document type declaration, references in a key.
 */
class HVEntryScan
{
public:
    explicit HVEntryScan(const QString &key);

    /// False if no "hovlet" element of the file has the key.
    bool mayHold(const QByteArray &file) const;

private:
    QByteArray m_key;
    bool m_plainKey;
};

} // namespace Hovlets
