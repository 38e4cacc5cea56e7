// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/filestore/support/StoreUnderTest.h"
#include "tests/support/MongoServer.h"
#include "tests/support/TestMain.h"

/// As KODMS_TEST_MAIN, for tests that run on either kind of store: skipped when the store
/// needs a server and there is none.
#define KODMS_STORE_TEST_MAIN(TestClass)                                                           \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        KODMS::Tests::prepareEnvironment();                                                        \
        const QCoreApplication app(argc, argv);                                                    \
        if (KODMS::Tests::StoreUnderTest::isGridFs() &&                                            \
            KODMS::Tests::MongoServer::uri().isEmpty())                                            \
            return KODMS::Tests::MongoServer::skip();                                              \
        TestClass test;                                                                            \
        return KODMS::Tests::runTests(&test, QCoreApplication::arguments());                       \
    }
