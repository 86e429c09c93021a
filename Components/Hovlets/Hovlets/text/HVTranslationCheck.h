// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Describes the problem with the bytes of a translation file (".qm"); a null string if none.
 *
 * QTranslator follows the lengths and offsets in a file without checking them. A damaged file makes
 * it read out of bounds, or divide by zero. It also loads other files that a translation file
 * names. Therefore pass it only bytes without a problem.
 *
 * Time and memory are linear in the size of the file. In a file without a problem, QTranslator
 * finds or misses a text quickly: it compares at most 1,000 contexts, and 20,000 parts of messages.
 */
QString translationProblem(const QByteArray &file);

/*!
 * Makes the bytes of a translation file readable for QTranslator.
 *
 * "lrelease -compress" may omit the byte that ends its list of contexts, and QTranslator then
 * continues reading in the next section. The result contains a second, terminated list, which
 * replaces the first.
 */
QByteArray completedTranslation(const QByteArray &file);

} // namespace Hovlets
