// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPlacement.h"

#include <QtCore/QString>

#include <random>

// Distances of a popup, in pixels.
constexpr int Gap = 6; // from the control
constexpr int EdgeDistance = 8; // from the edges of the screen

/// \a area without the distance that popups keep from its edges.
QRect inset(const QRect &area);

/// Whether there is room beside the control; tries every pixel.
bool hasRoomBeside(const Hovlets::HVPlacementRequest &request);

/// The rule that \a place breaks; null if none.
const char *brokenRule(const Hovlets::HVPlacementRequest &request, const Hovlets::HVPlace &place);

/// Both, for the message of a failure.
QString described(const Hovlets::HVPlacementRequest &request, const Hovlets::HVPlace &place);

/// Random requests of all kinds, determined by a seed.
class RandomRequests
{
public:
    explicit RandomRequests(unsigned seed)
        : m_random(seed)
    {
    }

    Hovlets::HVPlacementRequest next();

private:
    int between(int low, int high);
    QPoint pointIn(const QRect &area);

    std::mt19937 m_random;
};
