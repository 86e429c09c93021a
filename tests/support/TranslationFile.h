// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/*!
 * \brief The bytes of a translation file (".qm") with one text, as lrelease writes them.
 *
 * So that the tests need no tool of Qt's that distributions package apart from it.
 */
QByteArray translationFile(const QByteArray &context, const QByteArray &text,
                           const QString &translation);
