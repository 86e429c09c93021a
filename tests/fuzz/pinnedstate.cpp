// SPDX-License-Identifier: Apache-2.0
// Checks that no bytes in place of the saved state of pinned popups can harm the host.
#include "FuzzTarget.h"
#include "HVPinnedState.h"

#include <QtCore/QtEndian>

#include <cstdlib>

using namespace Hovlets;

namespace {

/// Appends the checksum of the state, as an attacker would. A fuzzer could not guess it.
QByteArray withChecksum(const QByteArray &bytes)
{
    quint32 sum = 2166136261U;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
    sum = qToBigEndian(sum);
    return bytes + QByteArray(reinterpret_cast<const char *>(&sum), sizeof(sum));
}

/// State that was read can be written again, byte for byte.
void decodeAndEncode(const QByteArray &bytes)
{
    const auto popups = decodePinnedStates(bytes);
    if (popups && encodePinnedStates(*popups) != bytes)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    decodeAndEncode(bytes);
    decodeAndEncode(withChecksum(bytes));
    return 0;
}
