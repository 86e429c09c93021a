// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What dragging on the canvas does.
enum class Tool { Pen, Line, Rectangle, Ellipse, Fill, Eraser };
