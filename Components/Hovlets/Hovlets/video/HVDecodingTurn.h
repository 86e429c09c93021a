// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>

namespace Hovlets {

/*!
 * \brief Lets clips with large frames be decoded one at a time.
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
     * Takes the turn if this clip does not have it. Waits while another clip has it, but not longer
     * than 3 s or than until \a interrupted returns true. After that, two clips are decoded at a
     * time.
     */
    void take(const std::function<bool()> &interrupted);

private:
    bool m_isTaken = false;
};

} // namespace Hovlets
