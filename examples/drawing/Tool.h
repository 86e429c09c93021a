// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The effect of dragging on the canvas.
enum class Tool { Pen, Line, Rectangle, Ellipse, Fill, Eraser };
