// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

/// A text in a translation file.
struct TranslationMessage
{
    QByteArray context;
    QByteArray text;
    QString translation;
};

/*!
 * \brief The bytes of a translation file (".qm"), as lrelease writes them.
 *
 * So that the tests need no tool of Qt's that distributions package apart from it.
 *
 * \param messages at least one
 * \param withContexts adds the table of contexts that "lrelease -compress" writes
 */
QByteArray translationFile(const QList<TranslationMessage> &messages, bool withContexts = false);

/// One with one text.
QByteArray translationFile(const QByteArray &context, const QByteArray &text,
                           const QString &translation);
