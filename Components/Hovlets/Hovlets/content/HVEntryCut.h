// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Removes from a control file all entries for other keys, which a look-up does not need.
 *
 * A look-up in a large file would spend nearly all of its time on them. The remaining document
 * parses to the same objects as the whole file.
 *
 * That is true only of files that the parser reads to the end without an error. Therefore every
 * byte is checked against an unambiguous subset of XML: UTF-8, no document type declaration, names
 * in ASCII without prefixes, references to characters of up to four digits and to the five
 * predefined entities. Ordinary control files use only this subset. The time is linear in the size
 * of the file.
 *
 * \param key the key to look up, which UTF-8 can represent
 * \param depth the most levels of nested elements
 * \return the remaining document, or a null array if the file is in doubt
 */
QByteArray withoutOtherEntries(const QByteArray &file, const QString &key, int depth);

} // namespace Hovlets
