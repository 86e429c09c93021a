// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How long to wait for what must happen, in ms. Only a failing test waits this long.
constexpr int Patience = 60000;
