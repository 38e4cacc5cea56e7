// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "tests/support/InformationShown.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::NoticeLog;

namespace {

/// Would look like a line of the log of its own.
const QString forged = QStringLiteral("a.zip\nkodms.access: verdict [A1B000001] \u001b[2Jdone");
const char *const shown = "a.zip?kodms.access: verdict [A1B000001] ?[2Jdone";

} // namespace

/// What customers and users type into names cannot end the line that it is logged in.
class LogLinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void textsOfOneLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *title, const QString &text, const QString &line) {
            QTest::newRow(title) << text << line;
        };
        row("nothing", QString(), QString());
        row("plain", QStringLiteral("a b_c"), QStringLiteral("a b_c"));
        row("Chinese and emoji", QStringLiteral("华虹🚀"), QStringLiteral("华虹🚀"));
        row("marks of direction", QStringLiteral("a\u200fb\u200e"),
            QStringLiteral("a\u200fb\u200e"));
        row("joined emoji", QStringLiteral("👩\u200d🔧"), QStringLiteral("👩\u200d🔧"));
        row("line break", QStringLiteral("a\nb"), QStringLiteral("a?b"));
        row("return and tab", QStringLiteral("a\r\tb"), QStringLiteral("a??b"));
        row("NUL", QStringLiteral("a") + QChar(0), QStringLiteral("a?"));
        row("escape and delete", QStringLiteral("\u001b[1m\u007f"), QStringLiteral("?[1m?"));
        row("next line", QStringLiteral("a\u0085b"), QStringLiteral("a?b"));
        row("a forced direction", QStringLiteral("a\u202egpj.exe"), QStringLiteral("a?gpj.exe"));
        row("separators of lines", QStringLiteral("a\u2028b\u2029"), QStringLiteral("a?b?"));
    }

    void textsOfOneLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, line);
        QCOMPARE(oneLine(text), line);
        QCOMPARE(isOneLine(text), text == line);
        QVERIFY(isOneLine(line));
    }

    void aFailureIsOneLine()
    {
        const QByteArray expected = QByteArray("put [") + shown + "] " + shown;
        QTest::ignoreMessage(QtWarningMsg, expected.constData());
        const NoticeLog log;
        reportFailure(lcRecords(), "put", forged, forged, forged);
        QCOMPARE(log.notices.size(), 1);
        QCOMPARE(log.notices[0].text, QString::fromLatin1(shown));
    }

    void aRefusalIsOneLine()
    {
        const KODMS::Tests::InformationShown shownToo;
        const QByteArray expected = QByteArray("intake.take [") + shown + "] " + shown;
        QTest::ignoreMessage(QtInfoMsg, expected.constData());
        const NoticeLog log;
        reportRefusal("intake.take", forged, forged, forged);
        QCOMPARE(log.notices.size(), 1);
        QCOMPARE(log.notices[0].text, QString::fromLatin1(shown));
    }
};

KODMS_TEST_MAIN(LogLinesTest, QCoreApplication)
#include "LogLinesTest.moc"
