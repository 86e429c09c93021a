// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Decides whether Qt may read an untrusted SVG file.
 *
 * Qt's SVG reader opens the files that a picture names, follows references without an end, and
 * ignores namespaces. This class admits only UTF-8 with the elements that it knows to be harmless,
 * without processing instructions, declarations, and references to other files. It reads the file
 * with QXmlStreamReader, as Qt's SVG reader does, so both see the same elements.
 */
class HVSvgCheck
{
public:
    /// Checks a whole file. Takes time linear in its size.
    explicit HVSvgCheck(const QByteArray &file);

    /// The reason for a refusal, in English; empty if Qt may read the file.
    [[nodiscard]] QString problem() const { return m_problem; }

    /// The number of elements. Drawing takes time proportional to it.
    [[nodiscard]] int elements() const { return m_elements; }

    /*!
     * Whether reading the start of a file with QXmlStreamReader takes time linear in its size. The
     * reader compares each attribute of an element with all others, and each name with all
     * namespaces.
     */
    [[nodiscard]] static bool isQuicklyRead(const QByteArray &start);

private:
    class Reading;

    QString m_problem;
    int m_elements = 0;
};

} // namespace Hovlets
