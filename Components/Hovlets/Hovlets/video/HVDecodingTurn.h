// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>

namespace Hovlets {

/*!
 * \brief The turn of a clip with large frames to be decoded.
 *
 * A decoder of such frames takes over a hundred megabytes, and that of the previous popup may still
 * be ending when the next popup shows. Therefore only one such decoder works at a time. Any thread.
 */
class HVDecodingTurn
{
    Q_DISABLE_COPY_MOVE(HVDecodingTurn)

public:
    HVDecodingTurn() = default;

    /// Ends the turn.
    ~HVDecodingTurn();

    /*!
     * Takes the turn if this clip does not have it. Waits for that of another clip, up to 3 s or
     * until \a interrupted returns true; then two clips are decoded at a time.
     */
    void take(const std::function<bool()> &interrupted);

private:
    bool m_isTaken = false;
};

} // namespace Hovlets
