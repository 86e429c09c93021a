// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Patience.h"

#include <QtTest/QtTest>

// A busy machine may need longer than Qt Test's five seconds.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, Patience)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, Patience)

/*!
 * \brief Runs the test class on the offscreen platform with the software scene graph, unless the
 * environment selects others.
 */
int runTest(int argc, char **argv, QObject *(*create)());

/// Drops the offscreen platform's own messages in programs that create their application
/// themselves. Call it when the test has begun.
void filterTestLog();

#define HOVLETS_TEST_MAIN(TestClass) \
    int main(int argc, char **argv) \
    { \
        /* NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a class */ \
        return runTest(argc, argv, []() -> QObject * { return new TestClass; }); \
    }
