// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QVector>
#include <QXmlStreamReader>

#include <algorithm>

/// The English texts: all there, all English, and fit for their places.
class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyTextIsFinished();
    void noChineseIsLeft();
    void placesAreKept();
    void menuKeysAreUnique();
    void theLibraryCarriesThem();
    void theSourcesHoldNothingNew();

private:
    struct Entry {
        QString context;
        QString source;
        QString translation;
        QString state;
        int count = -1; ///< for which this form is; -1: the text counts nothing
    };

    static QStringList readForms(QXmlStreamReader &xml);
    void readMessage(QXmlStreamReader &xml, const QString &context);

    QVector<Entry> m_entries;
};

/// One for one and one for several where the text counts something, else the text alone.
QStringList TranslationsTest::readForms(QXmlStreamReader &xml)
{
    QString text;
    QStringList forms;
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isStartElement())
            forms << xml.readElementText();
        else
            text += xml.text();
    }
    return forms.isEmpty() ? QStringList{text} : forms;
}

/// An entry for each form.
void TranslationsTest::readMessage(QXmlStreamReader &xml, const QString &context)
{
    Entry entry;
    entry.context = context;
    QStringList forms;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            entry.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            entry.state = xml.attributes().value(QLatin1String("type")).toString();
            forms = readForms(xml);
        } else {
            xml.skipCurrentElement();
        }
    }
    for (const QString &form : qAsConst(forms)) {
        entry.translation = form;
        if (forms.size() > 1)
            entry.count = entry.count < 0 ? 1 : entry.count + 1;
        m_entries << entry;
    }
}

void TranslationsTest::initTestCase()
{
    QFile file(QStringLiteral(KODMS_SOURCE_DIR "/translations/kodms_en.ts"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("message"))
            readMessage(xml, context);
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY(m_entries.size() > 100);
}

void TranslationsTest::everyTextIsFinished()
{
    for (const Entry &entry : qAsConst(m_entries))
        QVERIFY2(entry.state.isEmpty() && !entry.translation.trimmed().isEmpty(),
                 qPrintable(entry.context + QStringLiteral(": ") + entry.source));
}

void TranslationsTest::noChineseIsLeft()
{
    const QRegularExpression chinese(
        QStringLiteral("[\\x{2e80}-\\x{9fff}\\x{f900}-\\x{faff}\\x{fe30}-\\x{fe4f}"
                       "\\x{ff00}-\\x{ffef}\\x{3000}-\\x{303f}]"));
    for (const Entry &entry : qAsConst(m_entries))
        QVERIFY2(!chinese.match(entry.translation).hasMatch(), qPrintable(entry.translation));
}

void TranslationsTest::placesAreKept()
{
    const QRegularExpression place(QStringLiteral("%(?:L?[0-9]{1,2}|n)"));
    const auto places = [&place](const QString &text) {
        QStringList found;
        auto matches = place.globalMatch(text);
        while (matches.hasNext())
            found << matches.next().captured();
        found.sort();
        return found;
    };
    for (const Entry &entry : qAsConst(m_entries))
        QVERIFY2(places(entry.source) == places(entry.translation), qPrintable(entry.translation));
}

void TranslationsTest::menuKeysAreUnique()
{
    const QRegularExpression key(QStringLiteral("&([A-Za-z])"));
    // What stands in one menu or one form, by the texts' own keys.
    const QVector<QStringList> groups{
        {QStringLiteral("文件(&F)"), QStringLiteral("视图(&V)"), QStringLiteral("帮助(&H)")},
        {QStringLiteral("接收客户文件(&N)…"), QStringLiteral("切换用户(&U)…"),
         QStringLiteral("退出(&Q)")},
        {QStringLiteral("刷新(&R)"), QStringLiteral("通知列表(&T)"),
         QStringLiteral("高对比度状态列(&H)"), QStringLiteral("语言(&L)")},
        {QStringLiteral("客户代码(&C)"), QStringLiteral("客户名称(&N)"),
         QStringLiteral("原始料名(&O)"), QStringLiteral("文件说明(&D)"),
         QStringLiteral("来源备注(&R)")}};
    for (const QStringList &group : groups) {
        QStringList keys;
        for (const Entry &entry : qAsConst(m_entries)) {
            if (group.contains(entry.source))
                keys << key.match(entry.translation).captured(1).toUpper();
        }
        QCOMPARE(keys.size(), group.size());
        QVERIFY2(!keys.contains(QString()), qPrintable(group.join(QLatin1Char(' '))));
        QCOMPARE(keys.removeDuplicates(), 0);
    }
}

void TranslationsTest::theLibraryCarriesThem()
{
    KODMS::UI::DMS_UICommon::interface(); // the library that carries the texts is loaded
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(":/i18n/kodms_en.qm")));
    for (const Entry &entry : qAsConst(m_entries)) {
        const QByteArray context = entry.context.toUtf8();
        const QByteArray source = entry.source.toUtf8();
        if (entry.source != QStringLiteral("、")) // has a comment, which belongs to its key
            QCOMPARE(
                english.translate(context.constData(), source.constData(), nullptr, entry.count),
                entry.translation);
    }
}

void TranslationsTest::theSourcesHoldNothingNew()
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/update-translations"),
                 {QStringLiteral("--check")});
    QVERIFY2(script.waitForFinished(60000), qPrintable(script.errorString()));
    QVERIFY2(script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0,
             script.readAll().constData());
}

KODMS_TEST_MAIN(TranslationsTest, QCoreApplication)
#include "TranslationsTest.moc"
