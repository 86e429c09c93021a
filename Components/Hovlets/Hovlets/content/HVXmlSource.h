// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QXmlInputSource>

namespace Hovlets {

class HVXmlBudget;

/*!
 * \brief Delivers a document to Qt's XML reader, character by character.
 *
 * The document ends where the budget is used up. References to characters beyond U+FFFF are
 * replaced with the characters, because the reader of Qt 5 truncates their numbers to 16 bits.
 */
class HVXmlSource : public QXmlInputSource
{
    Q_DISABLE_COPY_MOVE(HVXmlSource)

public:
    /// Owns neither.
    HVXmlSource(QXmlInputSource &document, HVXmlBudget &budget);

    QChar next() override;

private:
    /// Parts of a document. Only in Text does "&" begin a reference.
    enum class Section { Text, Comment, CData, Instruction };

    void trackSection(QChar c);
    QChar readReference();

    QXmlInputSource &m_document;
    HVXmlBudget &m_budget;
    Section m_section = Section::Text;
    quint64 m_recent = 0; // the last four characters
    QString m_ahead; // characters that were read, but not delivered yet
    int m_next = 0; // in m_ahead
    bool m_ended = false;
};

} // namespace Hovlets
