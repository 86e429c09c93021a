// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QRandomGenerator>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*!
 * \brief Generates small control files that are hard to read correctly. A seed determines them.
 *
 * About half of them are well-formed. Entries share a few keys, in many spellings, which makes
 * enough look-ups succeed.
 */
class ControlFileGenerator
{
public:
    explicit ControlFileGenerator(quint32 seed);

    /// Keys to look up, including odd ones.
    static QStringList keys();

    QByteArray controlFile();

private:
    using Choices = QList<QByteArray>;

    int below(int bound) { return int(m_random.bounded(bound)); }
    bool oneIn(int number) { return below(number) == 0; }
    QByteArray pick(const Choices &choices) { return choices.at(below(int(choices.size()))); }

    QByteArray declaration();
    QByteArray prolog();
    QByteArray documentType();
    QByteArray space();
    QByteArray value();
    QByteArray attribute();
    QByteArray element(int depth);
    QByteArray content(int depth);
    QByteArray damaged(QByteArray file);
    QByteArray encoded(const QByteArray &file);

    QRandomGenerator m_random;
    QByteArray m_key; // most entries of the file have it
};
