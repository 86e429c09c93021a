// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Leaves out of a control file what a look-up does not need: all entries for other keys.
 *
 * A look-up in a large file would spend nearly all of its time on them. What remains parses to the
 * same objects as the whole file.
 *
 * That holds only for files that the parser reads to their end without an error. So every byte is
 * checked against a part of XML that leaves no doubt: UTF-8, no document type declaration, names in
 * ASCII without prefixes, references to characters and to the five predefined entities. Ordinary
 * control files are like this. The time is linear in the size of the file.
 *
 * \param key the key to look up, which UTF-8 can represent
 * \param depth the most levels of nested elements
 * \return the remaining document, or a null array if the file is in doubt
 */
QByteArray withoutOtherEntries(const QByteArray &file, const QString &key, int depth);

} // namespace Hovlets
