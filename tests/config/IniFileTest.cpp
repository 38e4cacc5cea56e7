// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/IniFile.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;

class IniFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsSectionsKeysAndComments();
    void takesValuesLiterally_data();
    void takesValuesLiterally();
    void refuses_data();
    void refuses();
    void refusesAFolderInPlaceOfTheFile();
    void refusesAMissingFile();
    void refusesAFileTooLarge();
    void refusesWhatIsNoPlainFile();
    void saysWhenReadingFails();

private:
    QString write(const QByteArray &text)
    {
        const QString path = m_dir.filePath(QStringLiteral("test.ini"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test file");
        return path;
    }

    QTemporaryDir m_dir;
};

void IniFileTest::readsSectionsKeysAndComments()
{
    const auto ini = IniFile::read(write("; first\n# second\n[a]\r\nx = 1\r\n\n[b]\nx=2\n"));
    QVERIFY2(ini, qPrintable(ini.text()));
    QCOMPARE(ini.value.entries().size(), 2);
    QCOMPARE(*ini.value.value(QStringLiteral("a"), QStringLiteral("x")), QStringLiteral("1"));
    QCOMPARE(*ini.value.value(QStringLiteral("b"), QStringLiteral("x")), QStringLiteral("2"));
    QVERIFY(!ini.value.value(QStringLiteral("b"), QStringLiteral("y")));
    QCOMPARE(ini.value.entries()[1].line, 7);
}

void IniFileTest::takesValuesLiterally_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("value");
    QTest::newRow("backslashes of a Windows path")
        << QByteArray("D:\\jobs\\new\\") << QStringLiteral("D:\\jobs\\new\\");
    QTest::newRow("comma") << QByteArray("a, b") << QStringLiteral("a, b");
    QTest::newRow("equals sign") << QByteArray("a=b") << QStringLiteral("a=b");
    QTest::newRow("Chinese") << QByteArray("数据") << QStringLiteral("数据");
    QTest::newRow("quotes keep blanks") << QByteArray("\" a \"") << QStringLiteral(" a ");
    QTest::newRow("one quote is a character") << QByteArray("\"") << QStringLiteral("\"");
    QTest::newRow("semicolon inside a value") << QByteArray("a;b") << QStringLiteral("a;b");
    QTest::newRow("nothing") << QByteArray("") << QString();
}

void IniFileTest::takesValuesLiterally()
{
    QFETCH(QByteArray, written);
    const auto ini = IniFile::read(write("[s]\nkey = " + written + "\n"));
    QVERIFY2(ini, qPrintable(ini.text()));
    QTEST(*ini.value.value(QStringLiteral("s"), QStringLiteral("key")), "value");
}

void IniFileTest::refuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("named");
    QTest::newRow("line without equals sign") << QByteArray("[s]\nx=1\nrubbish\n") << "3";
    QTest::newRow("key before any section") << QByteArray("x=1\n") << "1";
    QTest::newRow("empty key") << QByteArray("[s]\n=1\n") << "2";
    QTest::newRow("key given twice") << QByteArray("[s]\nx=1\nx=2\n") << "x";
    QTest::newRow("invalid UTF-8") << QByteArray("[s]\nx=\xff\xfe\n") << "UTF-8";
    QTest::newRow("cut UTF-8") << QByteArray("[s]\nx=\xe6\x95") << "UTF-8";
    QTest::newRow("NUL") << QByteArray("[s]\nx=a\0b\n", 10) << "UTF-8";
    QTest::newRow("a binary file") << QByteArray("SQLite format 3\0\x10\x00", 18) << "UTF-8";
}

void IniFileTest::refuses()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, named);
    const QString path = write(text);
    const auto ini = IniFile::read(path);
    QVERIFY(!ini);
    QVERIFY2(ini.text().contains(path), qPrintable(ini.text()));
    QVERIFY2(ini.text().contains(named), qPrintable(ini.text()));
}

void IniFileTest::refusesAFolderInPlaceOfTheFile()
{
    const auto ini = IniFile::read(m_dir.path());
    QVERIFY(!ini);
    QVERIFY(ini.text().contains(QStringLiteral("文件夹")));
}

void IniFileTest::refusesAMissingFile()
{
    const auto ini = IniFile::read(m_dir.filePath(QStringLiteral("none.ini")));
    QVERIFY(!ini);
    QVERIFY(ini.text().contains(QStringLiteral("none.ini")));
}

void IniFileTest::refusesAFileTooLarge()
{
    const auto ini = IniFile::read(write(QByteArray(1024 * 1024 + 1, '\n')));
    QVERIFY(!ini);
    QVERIFY(ini.text().contains(QStringLiteral("1 MiB")));
}

void IniFileTest::refusesWhatIsNoPlainFile()
{
#if defined(Q_OS_UNIX)
    const auto ini = IniFile::read(QStringLiteral("/dev/zero")); // never ends
    QVERIFY(!ini);
    QVERIFY(ini.text().contains(QStringLiteral("普通文件")));
#else
    QSKIP("no such files on this system");
#endif
}

void IniFileTest::saysWhenReadingFails()
{
#if defined(Q_OS_LINUX)
    const QString unreadable = QStringLiteral("/proc/self/mem"); // opens, but every read fails
    const auto ini = IniFile::read(unreadable);
    QVERIFY(!ini);
    QVERIFY(ini.text().contains(unreadable));
#else
    QSKIP("no such file on this system");
#endif
}

KODMS_TEST_MAIN(IniFileTest, QCoreApplication)

#include "IniFileTest.moc"
