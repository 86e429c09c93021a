// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtTest/QtTest>

/*!
 * \brief Runs the test class on the offscreen platform with the software scene graph, unless the
 * environment names others.
 */
int runTest(int argc, char **argv, QObject *(*create)());

#define HOVLETS_TEST_MAIN(TestClass) \
    int main(int argc, char **argv) \
    { \
        return runTest(argc, argv, []() -> QObject * { return new TestClass; }); \
    }
