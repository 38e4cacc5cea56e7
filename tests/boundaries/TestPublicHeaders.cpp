// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// scripts/check_headers on headers that other compilers do not take.
class TestPublicHeaders : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void takesWhatIsStandard();
    void findsWhatOneCompilerKnows_data();
    void findsWhatOneCompilerKnows();
    void findsWhatFailsOnWindows_data();
    void findsWhatFailsOnWindows();
    void noHeadersAreAnError();

private:
    static int check(const QTemporaryDir &folder, QString *output);

    QString m_elsewhere; ///< what was said of the headers of one compiler
    QString m_windows;   ///< what was said of those that fail on Windows
};

namespace {

struct Planted {
    const char *what;
    const char *file;
    const char *text;
};

constexpr Planted Standard[] = {
    {"nothing", "Nothing.h", ""},
    {"a function", "Function.h", "inline int g(bool a) { return a ? 1 : 2; }"},
    {"the standard library", "Memory.h",
     "#include <memory>\ninline std::unique_ptr<int> f() { return nullptr; }"},
    {"an exported class of values", "Values.h",
     "#include \"foundation/common/ServicesExport.h\"\n#include <vector>\n"
     "class KODMS_SERVICES_API Values { std::vector<int> m; };"},
    {"a class of Qt", "Object.h",
     "#include <QObject>\nclass Object : public QObject { Q_OBJECT };"},
};

constexpr Planted OneCompilers[] = {
    {"a block as a value", "Block.h", "inline int f() { return ({ int a = 1; a; }); }"},
    {"an array of any length", "Vla.h", "inline void f(int n) { int a[n]; a[0] = 1; }"},
    {"an array of nothing", "Zero.h", "struct Zero { int a; char b[0]; };"},
    {"an array without an end", "Open.h", "struct Open { int a; char b[]; };"},
    {"the type of a value", "Typeof.h", "inline int f(int a) { typeof(a) b = a; return b; }"},
    {"members by name", "Designated.h",
     "struct Designated { int a; };\ninline Designated f() { return {.a = 1}; }"},
    {"cases from to", "Range.h",
     "inline bool f(int a) { switch (a) { case 1 ... 3: return true; } return false; }"},
    {"a choice without its middle", "Middle.h", "inline int f(int a) { return a ?: 2; }"},
    {"a struct without a name", "Nameless.h", "struct Outer { struct { int a; }; };"},
    {"a word for a sign", "Word.h", "inline bool f(bool a, bool b) { return a and b; }"},
    {"an enumeration without a type", "Enum.h", "enum Forward;"},
    {"a later standard", "Later.h", "template <typename T> concept Later = true;"},
    {"a header that needs another before", "Needs.h", "inline std::string f() { return {}; }"},
    {"a header that is not there", "Missing.h", "#include \"desks/common/Private.h\""},
};

// Every member of an exported class is written there, its copies too.
constexpr Planted OtherSystems[] = {
    {"long as large as a pointer", "Long.h", "static_assert(sizeof(long) == sizeof(void *));"},
    {"a wide character of 32 bits", "Wide.h", "static_assert(sizeof(L' ') == 4);"},
    {"an exported class that cannot be copied", "Copied.h",
     "#include \"foundation/common/ServicesExport.h\"\n#include <memory>\n#include <vector>\n"
     "struct KODMS_SERVICES_API Copied { std::vector<std::unique_ptr<int>> m; };"},
    {"an imported member that is defined", "Defined.h",
     "#include \"foundation/common/ServicesExport.h\"\n"
     "struct KODMS_SERVICES_API Defined { static int a; };\ninline int Defined::a = 1;"},
};

template <std::size_t Count> void plant(const QTemporaryDir &folder, const Planted (&all)[Count])
{
    const QString macros = QStringLiteral("foundation/common/ServicesExport.h");
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("foundation/common")));
    QVERIFY(QFile::copy(QStringLiteral(KODMS_SOURCE_DIR "/") + macros, folder.filePath(macros)));
    for (const Planted &planted : all) {
        QFile header(folder.filePath(QString::fromLatin1(planted.file)));
        QVERIFY(header.open(QIODevice::WriteOnly));
        header.write("#pragma once\n" + QByteArray(planted.text) + "\n");
    }
}

template <std::size_t Count> void addRows(const Planted (&all)[Count])
{
    QTest::addColumn<QString>("file");
    for (const Planted &planted : all)
        QTest::newRow(planted.what) << QString::fromLatin1(planted.file);
}

} // namespace

int TestPublicHeaders::check(const QTemporaryDir &folder, QString *output)
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/check_headers"), {folder.path()});
    script.waitForFinished(100'000);
    *output = QString::fromUtf8(script.readAll());
    return script.exitStatus() == QProcess::NormalExit ? script.exitCode() : -1;
}

void TestPublicHeaders::initTestCase()
{
    const QTemporaryDir elsewhere;
    plant(elsewhere, OneCompilers);
    const int code = check(elsewhere, &m_elsewhere);
    if (code == 77)
        QSKIP(qPrintable(m_elsewhere));
    QVERIFY2(code == 1, qPrintable(m_elsewhere));

    const QTemporaryDir windows;
    plant(windows, OtherSystems);
    QVERIFY2(check(windows, &m_windows) >= 0, qPrintable(m_windows));
}

void TestPublicHeaders::takesWhatIsStandard()
{
    const QTemporaryDir folder;
    plant(folder, Standard);
    QString output;
    const int code = check(folder, &output);
    QVERIFY2(code == 0, qPrintable(output));
    QVERIFY2(output.contains(QLatin1String("6 headers")), qPrintable(output));
}

void TestPublicHeaders::findsWhatOneCompilerKnows_data()
{
    addRows(OneCompilers);
}

void TestPublicHeaders::findsWhatOneCompilerKnows()
{
    QFETCH(QString, file);
    const QStringList lines = m_elsewhere.split(QLatin1Char('\n'));
    QVERIFY2(!lines.filter(file + QLatin1Char(':')).filter(QStringLiteral("error:")).isEmpty(),
             qPrintable(m_elsewhere));
}

void TestPublicHeaders::findsWhatFailsOnWindows_data()
{
    addRows(OtherSystems);
}

void TestPublicHeaders::findsWhatFailsOnWindows()
{
    QFETCH(QString, file);
    if (m_windows.contains(QLatin1String("not for Windows")))
        QSKIP(qPrintable(m_windows));
    QVERIFY2(m_windows.contains(file + QLatin1Char(':')), qPrintable(m_windows));
}

void TestPublicHeaders::noHeadersAreAnError()
{
    QTemporaryDir folder;
    QString output;
    QCOMPARE(check(folder, &output), 2);
    QVERIFY(folder.remove());
    QCOMPARE(check(folder, &output), 2);
}

KODMS_TEST_MAIN(TestPublicHeaders, QCoreApplication)
#include "TestPublicHeaders.moc"
