// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTest>

/// What the built desk library exports, beside the list in exported_symbols.txt.
class TestExportedSymbols : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyListedMemberIsThere();
    void nothingElseIsExported();

private:
    bool belongsToListedClass(const QString &symbol) const;

    QSet<QString> m_exported;
    QStringList m_classes;
    QStringList m_members;
};

/// Names the linker and the C++ runtime put into every library.
static bool isForeign(const QString &symbol)
{
    static const QStringList runtime{QStringLiteral("__bss_start"), QStringLiteral("_edata"),
                                     QStringLiteral("_end"), QStringLiteral("_init"),
                                     QStringLiteral("_fini")};
    return runtime.contains(symbol);
}

void TestExportedSymbols::initTestCase()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), {QStringLiteral("-DC"), QStringLiteral("--defined-only"),
                                    QStringLiteral(KODMS_DESKS_LIBRARY)});
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    const QStringList lines = QString::fromUtf8(nm.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        // Address, kind, name. Weak ones are instances of other people's templates, unless
        // they are ours by name.
        const QString kind = line.section(QLatin1Char(' '), 1, 1);
        const QString name = line.section(QLatin1Char(' '), 2);
        const bool weak = kind == QLatin1String("W") || kind == QLatin1String("u");
        if (!name.isEmpty() && (!weak || name.startsWith(QLatin1String("KODMS::"))))
            m_exported << name;
    }
    QFile list(QStringLiteral(KODMS_SOURCE_DIR "/tests/package/exported_symbols.txt"));
    QVERIFY(list.open(QIODevice::ReadOnly));
    const QStringList wanted = QString::fromUtf8(list.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : wanted) {
        if (line.startsWith(QLatin1String("class ")))
            m_classes << line.mid(6);
        else if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')))
            m_members << line;
    }
    QVERIFY(!m_classes.isEmpty());
}

void TestExportedSymbols::everyListedMemberIsThere()
{
    for (const QString &member : qAsConst(m_members))
        QVERIFY2(m_exported.contains(member), qPrintable(member));
}

bool TestExportedSymbols::belongsToListedClass(const QString &symbol) const
{
    for (const QString &name : m_classes) {
        if (symbol.startsWith(name + QStringLiteral("::")) ||
            symbol.endsWith(QStringLiteral(" for ") + name) ||
            symbol.startsWith(QStringLiteral("non-virtual thunk to ") + name +
                              QStringLiteral("::")))
            return true;
    }
    return false;
}

void TestExportedSymbols::nothingElseIsExported()
{
    if (qstrlen(KODMS_SANITIZE) > 0)
        QSKIP("the sanitizers export marks of their own, which no package carries");
    QStringList others;
    for (const QString &symbol : qAsConst(m_exported)) {
        if (!isForeign(symbol) && !belongsToListedClass(symbol))
            others << symbol;
    }
    QVERIFY2(others.isEmpty(), qPrintable(others.join(QLatin1Char('\n'))));
}

KODMS_TEST_MAIN(TestExportedSymbols, QCoreApplication)
#include "TestExportedSymbols.moc"
