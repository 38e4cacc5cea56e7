// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// scripts/check_portable on trees in which one line is planted.
class TestPortable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsWhatOthersDoNotCompile_data();
    void findsWhatOthersDoNotCompile();
    void findsWhatPublicHeadersMustNotHave_data();
    void findsWhatPublicHeadersMustNotHave();
    void leavesTheRestAlone_data();
    void leavesTheRestAlone();
    void namesFileLineAndReason();
    void refusesAFolderWithoutSources();
    void theRepositoryItselfIsClean();

private:
    static void plant(const QTemporaryDir &tree, const QString &file, const QByteArray &text);
    static int check(const QString &folder, QString *output);
    static int checkOne(const char *file, const QByteArray &text, QString *output);
};

void TestPortable::plant(const QTemporaryDir &tree, const QString &file, const QByteArray &text)
{
    const QString path = tree.filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile source(path);
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("#include <QString>\n" + text + "\n");
}

int TestPortable::check(const QString &folder, QString *output)
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/check_portable"), {folder});
    script.waitForFinished();
    *output = QString::fromUtf8(script.readAll());
    return script.exitStatus() == QProcess::NormalExit ? script.exitCode() : -1;
}

int TestPortable::checkOne(const char *file, const QByteArray &text, QString *output)
{
    const QTemporaryDir tree;
    plant(tree, QString::fromLatin1(file), text);
    return check(tree.path(), output);
}

void TestPortable::findsWhatOthersDoNotCompile_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QByteArray(text);
    };
    row("long", "long size = 0;");
    row("unsigned long", "unsigned long size();");
    row("long int", "std::vector<long int> sizes;");
    row("long double", "long double share = 0;");
    row("a cast to long", "f(static_cast<long>(size));");
    row("long after long long", "long long a = 0; long b = 0;");
    row("ulong", "ulong size = 0;");
    row("a number that is long", "auto most = 1UL << 40;");
    row("a format of long", "std::printf(\"%ld\", size);");
    row("a format of long with its width", "std::printf(\"%-10lu\", size);");
    row("what measures in long", "const auto end = std::ftell(file);");
    row("what reads long", "const auto id = text.toLong();");
    row("a word for a sign", "if (a and b) {}");
    row("a word for a sign behind another", "if (!a || not b) {}");
    row("an attribute of one compiler", "int f() __attribute__((pure));");
    row("such an attribute in brackets", "[[gnu::always_inline]] int f();");
    row("the type of a value", "__typeof__(a) b = a;");
    row("a function of one compiler", "int n = __builtin_popcount(a);");
    row("the name of a function", "qDebug() << __PRETTY_FUNCTION__;");
    row("128 bits", "__int128 product = 0;");
    row("a comma that goes", "#define F(x, ...) f(x, ## __VA_ARGS__)");
    row("a pragma of one compiler", "#pragma GCC diagnostic push");
    row("a header of the other systems", "#include <unistd.h>");
    row("a folder of the other systems", "# include <sys/stat.h>");
    row("a type of the other systems", "ssize_t got = 0;");
    row("a function of the other systems", "localtime_r(&now, &parts);");
    row("pi", "double turn = 2 * M_PI;");
    row("a wide character", "wchar_t first = 0;");
    row("behind a comment", "/* so */ long size = 0; // yes");
    row("behind a text", "f(\"/*\"); long size = 0;");
    row("behind a raw text", "f(R\"(\"/*)\"); long size = 0;");
    row("behind a character", "f('\"'); long size = 0;");
    row("behind a number in groups", "f(1'000'000); long size = 0;");
    row("on Windows only", "#ifdef _WIN32\nlong size = 0;\n#endif");
    row("behind another system", "#ifdef Q_OS_UNIX\n#endif\nlong size = 0;");
    row("other than another system", "#ifndef Q_OS_WIN\n#else\nlong size = 0;\n#endif");
}

void TestPortable::findsWhatOthersDoNotCompile()
{
    QFETCH(QByteArray, text);
    for (const char *file : {"foundation/bll/A.h", "desks/export/A.cpp", "services/disk/A.cpp",
                             "apps/desk/A.h", "examples/host/A.cpp"}) {
        QString output;
        QCOMPARE(checkOne(file, text, &output), 1);
        QCOMPARE(output.count(QLatin1Char('\n')), 1);
        QVERIFY2(output.startsWith(QString::fromLatin1(file)), qPrintable(output));
    }
}

void TestPortable::findsWhatPublicHeadersMustNotHave_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a macro of others") << QByteArray("int n = std::min(a, b);");
    QTest::newRow("a macro of others as a limit")
        << QByteArray("int n = std::numeric_limits<int>::max();");
    QTest::newRow("a narrow text") << QByteArray("const char *word = \"未知\";");
}

void TestPortable::findsWhatPublicHeadersMustNotHave()
{
    QFETCH(QByteArray, text);
    for (const char *file :
         {"foundation/bll/A.h", "services/api/A.h", "services/notices/Outcome.h",
          "desks/export/DMS_A_Widget.h", "desks/common/NamedControl.h", "tests/fakes/A.h"}) {
        QString output;
        QVERIFY2(checkOne(file, text, &output) == 1, file);
    }
    for (const char *file : {"services/disk/A.h", "services/api/A.cpp", "services/api/internal/A.h",
                             "desks/common/A.h"}) {
        QString output;
        QVERIFY2(checkOne(file, text, &output) == 0, qPrintable(output));
    }
}

void TestPortable::leavesTheRestAlone_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QByteArray(text);
    };
    row("a comment", "// as long as it likes, and __attribute__");
    row("a comment of some lines", "/* how\n long\n */");
    row("a text", "f(\"too long, and \\\" not\");");
    row("a raw text", "f(R\"x(\nlong)\"\n)x\");");
    row("long long", "unsigned long long a = 0; long long b = f(static_cast<long long>(a));");
    row("a number that is long long", "auto most = 1ULL << 40; auto mask = 0xFULL;");
    row("a format of long long", "std::printf(\"%lld %llu %zu\", a, b, c);");
    row("part of a word", "bool longest = belongs(android);");
    row("one pragma", "#pragma once");
    row("another system", "#ifdef Q_OS_UNIX\n#include <unistd.h>\nlong a;\n#endif");
    row("the rest of Windows", "#if defined(_WIN32)\nint a;\n#else\nlong a;\n#endif");
    row("not Windows", "#ifndef Q_OS_WIN\n#if A\n#else\nlong a;\n#endif\n#endif");
    row("another compiler", "#if defined(__GNUC__)\nint a = __builtin_ctz(b);\n#endif");
    row("in parentheses", "int n = (std::min)(a, (std::numeric_limits<int>::max)());");
    row("a wide text", "auto a = QStringLiteral(\"未知\"); auto b = u\"未\"; auto c = u8\"知\";");
    row("a wide text of two lines", "auto a = QStringLiteral(\n    \"未\"\n    \"知\");");
}

void TestPortable::leavesTheRestAlone()
{
    QFETCH(QByteArray, text);
    QString output;
    const int code = checkOne("foundation/bll/A.h", text, &output);
    QCOMPARE(output, QString());
    QCOMPARE(code, 0);
}

void TestPortable::namesFileLineAndReason()
{
    QString output;
    checkOne("services/disk/A.cpp", "\n#include <unistd.h>", &output);
    QCOMPARE(output, QStringLiteral("services/disk/A.cpp:3: <unistd.h>: "
                                    "not on Windows; only in a file *_posix.cpp\n"));
    QCOMPARE(checkOne("services/disk/B.cpp", "int a;", &output), 0);
    QCOMPARE(checkOne("services/disk/A_posix.cpp", "#include <unistd.h>", &output), 2);
}

void TestPortable::refusesAFolderWithoutSources()
{
    const QTemporaryDir empty;
    QString output;
    QCOMPARE(check(empty.path(), &output), 2);
}

void TestPortable::theRepositoryItselfIsClean()
{
    QString output;
    const int code = check(QStringLiteral(KODMS_SOURCE_DIR), &output);
    QCOMPARE(output, QString());
    QCOMPARE(code, 0);
}

KODMS_TEST_MAIN(TestPortable, QCoreApplication)
#include "TestPortable.moc"
