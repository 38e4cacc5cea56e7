// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/TempDatabase.h"
#include "tests/search/support/RandomChanges.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace KODMS;

/// Changes the database at the first argument as often as the second one says.
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        Services::Database database(Tests::TestDatabase::settingsAt(arguments.value(1)));
        Tests::RandomChanges changes(database, 11);
        const int steps = arguments.value(2).toInt();
        for (int i = 0; i < steps; ++i)
            changes.step();
    } catch (const Services::SqlError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.logText()));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
