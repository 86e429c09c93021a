// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

namespace Hovlets {

struct HVPictureHeader;

/*!
 * \brief Decides whether Qt may decode an untrusted picture.
 *
 * Of each format, it admits what it knows to take no more memory than the header says, time in
 * proportion to the pixels, and no other file. Takes time linear in the size of the file, so call
 * it on a background thread.
 */
class HVPictureCheck
{
public:
    /// Checks the whole \a file with that \a header, for decoding at \a size.
    HVPictureCheck(const HVPictureHeader &header, QByteArray file, const QSize &size);

    /// The reason for a refusal, in English; empty if Qt may decode bytes().
    [[nodiscard]] QString problem() const { return m_problem; }

    /// The file without the texts and colour profiles of a PNG file. They are compressed, and Qt
    /// decompresses them whole.
    [[nodiscard]] QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    QString m_problem;
};

} // namespace Hovlets
