// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief What is wrong with the bytes of a translation file (".qm"), or a null string.
 *
 * QTranslator follows the lengths and offsets in a file without a look at where they lead: a
 * damaged one makes it read anywhere, or divide by zero. It also loads the files that a translation
 * file names. Only bytes without a problem may be handed to it. Time and memory are linear in the
 * size of the file.
 */
QString translationProblem(const QByteArray &file);

/*!
 * The bytes of a translation file, as QTranslator can read them.
 *
 * "lrelease -compress" may leave out the byte that ends its list of contexts; QTranslator then
 * reads on in what follows. The result has a second such list with its end, which replaces the
 * first.
 */
QByteArray completedTranslation(const QByteArray &file);

} // namespace Hovlets
