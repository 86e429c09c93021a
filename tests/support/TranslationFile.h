// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

/// One message of a translation file.
struct TranslationMessage
{
    QByteArray context;
    QByteArray text;
    QString translation;
};

/*!
 * \brief The bytes of a translation file (".qm"), as lrelease writes them.
 *
 * Made here, because distributions package lrelease apart from Qt.
 *
 * \param messages at least one
 * \param withContexts adds the table of contexts that "lrelease -compress" writes
 */
QByteArray translationFile(const QList<TranslationMessage> &messages, bool withContexts = false);

/// A translation file with one message.
QByteArray translationFile(const QByteArray &context, const QByteArray &text,
                           const QString &translation);
