// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <iterator>

/// scripts/check_exports on headers that export what they may, and what they must not.
class TestPublicExports : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void allowsWhatNobodyOutsideMeets();
    void findsWhatTheStandardLibraryOwns_data();
    void findsWhatTheStandardLibraryOwns();
    void findsNothingElse();
    void noExportedClassIsAnError();
    void headersThatDoNotCompileAreAnError();

private:
    static int check(const QByteArray &header, QString *output);

    QString m_findings;
};

namespace {

constexpr char Includes[] = R"(#pragma once
#include "desks/common/DesksExport.h"
#include <QObject>
#include <QVector>
#include <functional>
#include <memory>
#include <string>
#include <vector>
)";

constexpr char Allowed[] = R"(
namespace KODMS::UI {
inline int one() { return 1; }
class KODMS_DESKS_API Allowed : public QObject {
    Q_OBJECT
public:
    Allowed();
    QString text(const QVector<QString> &parts);
    int two() { return one() + one(); }
    static int s_count;
private:
    std::vector<int> forItself(std::string text);
    struct Inside;
    Inside *m_inside;
    std::vector<int> *m_list;
    QVector<QVector<QString>> m_rows;
};
template <typename T> class Template {
public:
    std::string text();
};
template <typename T> std::string Template<T>::text() { return {}; }
}
)";

constexpr char Faulty[] = R"(
namespace KODMS::UI {
using List = std::vector<int>;
using Text = std::string;
struct Value { std::vector<int> inValue; };
struct Derived : std::vector<int> {};
class KODMS_DESKS_API HoldsList { std::vector<int> m_list; };
class KODMS_DESKS_API HoldsText { std::string m_text; };
class KODMS_DESKS_API HoldsOtherName { List m_list; };
class KODMS_DESKS_API HoldsValue { Value m_value; };
class KODMS_DESKS_API HoldsTexts { QVector<std::string> m_texts; };
class KODMS_DESKS_API HoldsDerived { Derived m_derived; };
class KODMS_DESKS_API IsDerived : public Derived {};
struct KODMS_DESKS_API HoldsOwner { std::unique_ptr<int> m_owner; };
class KODMS_DESKS_API Passes : public QObject {
    Q_OBJECT
public:
    std::string givesText();
    Text givesOtherName();
    void takesList(const std::vector<int> &list);
    void fillsList(std::vector<int> *list);
    void takesTexts(const QVector<std::string> &texts);
    void takesRows(QVector<QVector<std::string>> rows);
    void takesFunction(std::function<void()> then);
    void takesPlace(std::vector<int>::iterator place);
    static std::string s_text;
protected:
    std::string givesHeirs();
private Q_SLOTS:
    void isSlot(std::string text);
Q_SIGNALS:
    void isSignal(std::string text);
};
KODMS_DESKS_API std::string isFree();
int isNotExported();
class NotExported { void isMember(); };
extern int isNoValue;
}
)";

struct Finding {
    const char *what;
    const char *text;
};

constexpr Finding Findings[] = {
    {"a list", "HoldsList holds something of the standard library"},
    {"a text", "HoldsText holds something"},
    {"a list by another name", "HoldsOtherName holds something"},
    {"a list in a value", "HoldsValue holds something"},
    {"a list of Qt of texts", "HoldsTexts holds something"},
    {"a value derived from a list", "HoldsDerived holds something"},
    {"a class derived from a list", "IsDerived holds something"},
    {"a pointer that owns", "HoldsOwner holds something"},
    {"a text given", "passes something of the standard library: std::string givesText();"},
    {"a text given by another name", "passes something of the standard library: Text givesOther"},
    {"a list taken", "passes something of the standard library: void takesList"},
    {"a list filled", "passes something of the standard library: void fillsList"},
    {"texts in a list of Qt", "passes something of the standard library: void takesTexts"},
    {"texts in a list in a list of Qt", "passes something of the standard library: void takesRows"},
    {"a function", "passes something of the standard library: void takesFunction"},
    {"a place in a list", "passes something of the standard library: void takesPlace"},
    {"for those who derive", "passes something of the standard library: std::string givesHeirs"},
    {"a slot, though private", "passes something of the standard library: void isSlot"},
    {"a signal", "passes something of the standard library: void isSignal"},
    {"a function beside", "passes something of the standard library: KODMS_DESKS_API std::string"},
    {"one for all", "exports something of the standard library: static std::string s_text"},
    {"a function that is not exported", "neither exported nor written in a header: int isNotExp"},
    {"a class that is not exported", "neither exported nor written in a header: class NotExported"},
    {"a value that is not exported", "neither exported nor defined in a header: extern int isNoV"},
};

} // namespace

int TestPublicExports::check(const QByteArray &header, QString *output)
{
    const QTemporaryDir folder;
    const QString macros = QStringLiteral("desks/common/DesksExport.h");
    QDir(folder.path()).mkpath(QStringLiteral("desks/common"));
    QFile::copy(QStringLiteral(KODMS_SOURCE_DIR "/") + macros, folder.filePath(macros));
    QFile file(folder.filePath(QStringLiteral("desks/common/A.h")));
    if (!file.open(QIODevice::WriteOnly) || file.write(header) != header.size())
        return -1;
    file.close();
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/check_exports"), {folder.path()});
    script.waitForFinished(100'000);
    *output = QString::fromUtf8(script.readAll());
    return script.exitStatus() == QProcess::NormalExit ? script.exitCode() : -1;
}

void TestPublicExports::initTestCase()
{
    const int code = check(QByteArray(Includes) + Faulty, &m_findings);
    if (code == 77)
        QSKIP(qPrintable(m_findings));
    QVERIFY2(code == 1, qPrintable(m_findings));
}

void TestPublicExports::allowsWhatNobodyOutsideMeets()
{
    QString output;
    const int code = check(QByteArray(Includes) + Allowed, &output);
    QCOMPARE(output, QString());
    QCOMPARE(code, 0);
}

void TestPublicExports::findsWhatTheStandardLibraryOwns_data()
{
    QTest::addColumn<QString>("text");
    for (const Finding &finding : Findings)
        QTest::newRow(finding.what) << QString::fromLatin1(finding.text);
}

void TestPublicExports::findsWhatTheStandardLibraryOwns()
{
    QFETCH(QString, text);
    QVERIFY2(m_findings.contains(text), qPrintable(m_findings));
}

void TestPublicExports::findsNothingElse()
{
    const QStringList lines = m_findings.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const auto fits = [&line](const Finding &finding) {
            return line.contains(QLatin1String(finding.text));
        };
        QVERIFY2(std::any_of(std::begin(Findings), std::end(Findings), fits), qPrintable(line));
    }
}

void TestPublicExports::noExportedClassIsAnError()
{
    QString output;
    QCOMPARE(check("#pragma once\nclass A {};\n", &output), 1);
    QVERIFY2(output.contains(QLatin1String("no class")), qPrintable(output));
}

void TestPublicExports::headersThatDoNotCompileAreAnError()
{
    QString output;
    QCOMPARE(check("#pragma once\n#include \"desks/common/DesksExport.h\"\n"
                   "class KODMS_DESKS_API A {};\n",
                   &output),
             1); // not where our classes are
    QVERIFY2(output.contains(QLatin1String("do not compile")), qPrintable(output));
}

KODMS_TEST_MAIN(TestPublicExports, QCoreApplication)
#include "TestPublicExports.moc"
