// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QObject>

namespace KODMS::Tests {

/// Runs the tests of `testObject` and fails when a warning was printed that no
/// QTest::ignoreMessage() announced. Returns the process's exit code.
int runTests(QObject *testObject, const QStringList &arguments);

/// Offscreen unless the caller chose a platform; UTC-independent defaults. Ends the
/// program as a skipped test when the engine that it should run on is not to be had.
void prepareEnvironment();

} // namespace KODMS::Tests

/// The main function of a test executable: TestClass is a QObject with private
/// slots, AppClass is QCoreApplication (services) or QApplication (widgets).
#define KODMS_TEST_MAIN(TestClass, AppClass)                                                       \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        KODMS::Tests::prepareEnvironment();                                                        \
        AppClass app(argc, argv);                                                                  \
        TestClass test;                                                                            \
        return KODMS::Tests::runTests(&test, QCoreApplication::arguments());                       \
    }
