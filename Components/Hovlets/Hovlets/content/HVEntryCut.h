// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace Hovlets {

/// What is left of a control file.
struct HVEntryCut
{
    enum State {
        Done,
        InDoubt, ///< only the parser can read the file
        TooLarge, ///< more would be left than allowed
        Ambiguous ///< a large file has several entries for the key
    };

    State state = InDoubt;
    QByteArray bytes; ///< the remaining document, when done
    qint64 offset = 0; ///< where reading stopped, otherwise
};

/*!
 * \brief Removes from a control file all entries for other keys, which a look-up does not need.
 *
 * A look-up in a large file would spend nearly all of its time on them. The remaining document
 * parses to the same objects as the whole file.
 *
 * That is true only of files that the parser reads to the end without an error. Therefore it reads
 * only the subset of XML that HVPlainXml checks; ordinary control files use no more. The time is
 * linear in the size of the file, and shorter if reading stops earlier.
 *
 * \param file starts like a plain file, see HVEntryScan
 * \param key the key to look up, which UTF-8 can represent
 * \param depth the most levels of nested elements
 * \param most bytes that may be left
 */
HVEntryCut withoutOtherEntries(const QByteArray &file, const QString &key, int depth, qint64 most);

/// The keys of all entries of \a file in document order, read in the same way, or no value if the
/// file is in doubt. Entries without the attribute have no key.
std::optional<QStringList> keysOfEntries(const QByteArray &file, int depth);

} // namespace Hovlets
