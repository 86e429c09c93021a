// SPDX-License-Identifier: Apache-2.0
// Whether any bytes in place of the saved state of pinned popups harm the host that restores them.
#include "FuzzTarget.h"
#include "HVPinnedState.h"

#include <QtCore/QtEndian>

#include <cstdlib>

using namespace Hovlets;

namespace {

/// The checksum that the state ends with, as an attacker would make it: a fuzzer does not guess it.
QByteArray withChecksum(const QByteArray &bytes)
{
    quint32 sum = 2166136261U;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
    sum = qToBigEndian(sum);
    return bytes + QByteArray(reinterpret_cast<const char *>(&sum), sizeof(sum));
}

/// What is read can be written, byte for byte.
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
