// SPDX-License-Identifier: Apache-2.0
#include "HVLimits.h"
#include "TestMain.h"

#include <type_traits>

using namespace Hovlets;

// Hosts compile the struct into their own code, so a new field takes the place of a reserved one.
static_assert(std::is_standard_layout_v<HVLimits>);
static_assert(sizeof(HVLimits) == 160);

class tst_HVLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { HVLimits::setCurrent({}); }

    void shouldStartWithTheDefaults()
    {
        const HVLimits limits = HVLimits::current();
        QCOMPARE(limits.nestingDepth, 512);
        QCOMPARE(limits.controlFileSize, qint64(64) << 20);
        QCOMPARE(limits.clipMemory, qint64(512) << 20);
        QCOMPARE(limits.clipDecoderMemory, qint64(104) << 20);
    }

    void shouldApplyWhatTheHostSets()
    {
        HVLimits limits;
        limits.clipMemory = 1;
        limits.nestingDepth = 3;
        HVLimits::setCurrent(limits);
        QCOMPARE(HVLimits::current().clipMemory, qint64(1));
        QCOMPARE(HVLimits::current().nestingDepth, 3);
        QCOMPARE(HVLimits::current().parsedCharacters, HVLimits().parsedCharacters);
    }
};

HOVLETS_TEST_MAIN(tst_HVLimits)
#include "tst_hvlimits.moc"
