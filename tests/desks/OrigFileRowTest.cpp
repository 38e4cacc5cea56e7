// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/OrigFileRow.h"
#include "desks/common/OrigFileColumns.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

using namespace KODMS::UI;
using KODMS::DataLib::Model::Odbpp_OrigFile_View;

class OrigFileRowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyColumnHasItsHeader();
    void everyColumnShowsItsField();
    void anEmptyRecord();
    void webFilesBearTheirStoredName_data();
    void webFilesBearTheirStoredName();
    void serialNumbersArePadded_data();
    void serialNumbersArePadded();
    void aFileWithoutATypeIsAFile_data();
    void aFileWithoutATypeIsAFile();
};

void OrigFileRowTest::everyColumnHasItsHeader()
{
    QCOMPARE(origFileHeaders().join(QLatin1Char('/')),
             QStringLiteral("原料号名/客户简称/客户代号/文件类型/流水号/UUID/ID/文件描述/来源备注/"
                            "FlowGUID/客户二级/客户三级/更新时间/创建时间/前处理人/前处理人ID"));
    QCOMPARE(int(OrigFileColumn::Count), 16);
    QCOMPARE(origFileHeaders().at(OrigFileColumn::ExecutorId), QStringLiteral("前处理人ID"));
    QCOMPARE(origFileHeaders().at(OrigFileColumn::FlowGuid), QStringLiteral("FlowGUID"));
}

void OrigFileRowTest::everyColumnShowsItsField()
{
    Odbpp_OrigFile_View file;
    file.origName = "主板";
    file.koName = "华强";
    file.koCode = "A1B";
    file.fileType = "zip";
    file.jobSerialNumber = 23456;
    file.uuid = "abc.zip";
    file.id = 7;
    file.fileDescription = "双面";
    file.fileTips = "急单";
    file.flowGuid = "f00d";
    file.superiorCo1 = "二级";
    file.superiorCo2 = "三级";
    file.updateTime = "2026-01-02 08:00:00";
    file.createTime = "2026-01-01 08:00:00";
    file.preUserRealName = "王芳";
    file.preUserId = 77;
    QCOMPARE(QStringList(origFileRow(file)).join(QLatin1Char('\n')),
             QStringLiteral("主板\n华强\nA1B\nzip\n023456\nabc.zip\n7\n双面\n急单\nf00d\n"
                            "二级\n三级\n2026-01-02 08:00:00\n2026-01-01 08:00:00\n王芳\n77"));
}

void OrigFileRowTest::anEmptyRecord()
{
    QCOMPARE(QStringList(origFileRow(Odbpp_OrigFile_View())).join(QLatin1Char(',')),
             QStringLiteral(",,,file,000000,,0,,,,,,,,,0"));
}

void OrigFileRowTest::webFilesBearTheirStoredName_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("uuid");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a web file") << "web"
                                << "a1b2c3.tgz"
                                << "a1b2c3";
    QTest::newRow("any four characters are cut off") << "web"
                                                     << "a1b2c3"
                                                     << "a1";
    QTest::newRow("exactly four") << "web"
                                  << ".zip"
                                  << "";
    QTest::newRow("fewer than four") << "web"
                                     << "kos"
                                     << "";
    QTest::newRow("no stored name") << "web"
                                    << ""
                                    << "";
    QTest::newRow("characters, not bytes")
        << "web" << QStringLiteral("主板二三四五") << QStringLiteral("主板");
    QTest::newRow("another customer") << "A1B"
                                      << "a1b2c3.tgz"
                                      << "board";
    QTest::newRow("capital letters are another customer") << "WEB"
                                                          << "a1b2c3.tgz"
                                                          << "board";
    QTest::newRow("a longer code") << "web1"
                                   << "a1b2c3.tgz"
                                   << "board";
    QTest::newRow("a blank more") << "web "
                                  << "a1b2c3.tgz"
                                  << "board";
    QTest::newRow("no code") << ""
                             << "a1b2c3.tgz"
                             << "board";
}

void OrigFileRowTest::webFilesBearTheirStoredName()
{
    QFETCH(QString, code);
    QFETCH(QString, uuid);
    Odbpp_OrigFile_View file;
    file.origName = "board";
    file.koCode = code.toStdString();
    file.uuid = uuid.toStdString();
    QTEST(origFileRow(file).at(OrigFileColumn::OrigName), "shown");
    QCOMPARE(origFileRow(file).at(OrigFileColumn::Uuid), uuid);
}

void OrigFileRowTest::serialNumbersArePadded_data()
{
    QTest::addColumn<int>("serial");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << 0 << "000000";
    QTest::newRow("two digits") << 12 << "000012";
    QTest::newRow("six digits") << 123456 << "123456";
    QTest::newRow("seven digits") << 1234567 << "1234567";
    QTest::newRow("the largest") << 2147483647 << "2147483647";
}

void OrigFileRowTest::serialNumbersArePadded()
{
    QFETCH(int, serial);
    Odbpp_OrigFile_View file;
    file.jobSerialNumber = serial;
    QTEST(origFileRow(file).at(OrigFileColumn::SerialNumber), "shown");
}

void OrigFileRowTest::aFileWithoutATypeIsAFile_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no type") << ""
                             << "file";
    QTest::newRow("a blank is a type") << " "
                                       << " ";
    QTest::newRow("an archive") << "kos"
                                << "kos";
}

void OrigFileRowTest::aFileWithoutATypeIsAFile()
{
    QFETCH(QString, type);
    Odbpp_OrigFile_View file;
    file.fileType = type.toStdString();
    QTEST(origFileRow(file).at(OrigFileColumn::FileType), "shown");
}

KODMS_TEST_MAIN(OrigFileRowTest, QCoreApplication)
#include "OrigFileRowTest.moc"
