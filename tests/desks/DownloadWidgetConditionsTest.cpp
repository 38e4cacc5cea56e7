// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

using namespace KODMS::Tests;
using KODMS::Fakes::ConditionList;

Q_DECLARE_METATYPE(QVector<KODMS::Tests::Expected>)

/// The exact condition list that reaches the original-file view, field by field.
class DownloadWidgetConditionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void anEmptyTextListsEverything_data();
    void anEmptyTextListsEverything();
    void everyComboItemAsksItsFields_data();
    void everyComboItemAsksItsFields();
    void ordinaryUsersAreKeptToTheirFiles_data();
    void ordinaryUsersAreKeptToTheirFiles();
    void textsGoAsTheyAreTyped_data();
    void textsGoAsTheyAreTyped();
    void serialNumbersAreReadAsIntegers_data();
    void serialNumbersAreReadAsIntegers();
    void everythingReadsASerialNumberToo_data();
    void everythingReadsASerialNumberToo();
    void aComboWithoutAChoiceAddsNoText_data();
    void aComboWithoutAChoiceAddsNoText();
    void theTextOfTheSignalIsSearchedNotTheEdits();
    void companyNamesAreAskedForAfresh();
};

namespace {

using Rights = QVector<Right>;
using List = QVector<Expected>;

Expected like(const char *field, const char *text = "abc")
{
    return Expected(field, text).fuzzy();
}

Expected orLike(const char *field, const char *text = "abc")
{
    return like(field, text).orJoin();
}

Expected serial(const char *number)
{
    return Expected("JobSerialNumber", number).number();
}

Expected ownFiles()
{
    return Expected("PreUser_id", "42");
}

/// What the count asks for: the last condition once more, with the order.
QStringList countLines(List list)
{
    list << Expected(list.last()).sorted("FlowTable_CreateTime");
    return allFields(ConditionList(list.cbegin(), list.cend()));
}

/// What the rows are asked for: the same with the first page's window.
QStringList pageLines(List list)
{
    list << Expected(list.last()).sorted("FlowTable_CreateTime").page("0");
    return allFields(ConditionList(list.cbegin(), list.cend()));
}

/// Chooses a combo item on a quiet desk, then types `text` at once.
void searchFor(const KODMS::UI::DMS_Download_Widget &desk, int item, const QString &text)
{
    control<QComboBox>(desk, "m_pFilterCMB")->setCurrentIndex(item);
    auto *edit = control<QLineEdit>(desk, "m_pFilterLE");
    edit->setText(text);
    QVERIFY(QMetaObject::invokeMethod(edit, "textEdited", Q_ARG(QString, text)));
}

/// The rights of users who get the original files and search them.
const QVector<Rights> &fileRights()
{
    static const QVector<Rights> rights = [] {
        auto all = combinations({Right::ShowCompanyName, Right::Admin, Right::TestAdmin});
        all.removeFirst();
        return all;
    }();
    return rights;
}

bool seesCustomers(const Rights &rights)
{
    return rights.contains(Right::ShowCompanyName) || rights.contains(Right::Admin);
}

const List EverythingWithCustomers = {
    like("OrigName"),      orLike("KoName"),      orLike("KoCode"),           orLike("FileTips"),
    orLike("SuperiorCo1"), orLike("SuperiorCo2"), orLike("PreUser_RealName"), serial("0").orJoin()};

const List EverythingWithoutCustomers = {like("OrigName"), orLike("KoCode"), orLike("FileTips"),
                                         orLike("PreUser_RealName"), serial("0").orJoin()};

} // namespace

void DownloadWidgetConditionsTest::anEmptyTextListsEverything_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<int>("item");
    for (const Rights &rights : fileRights())
        for (int item = 0; item < 9; ++item)
            QTest::newRow(qPrintable(rightNames(rights) + QStringLiteral(", item %1").arg(item)))
                << rights << item;
}

void DownloadWidgetConditionsTest::anEmptyTextListsEverything()
{
    QFETCH(Rights, rights);
    QFETCH(int, item);
    const auto desk = makeDownloadDesk(rights);
    searchFor(*desk, item, QString());
    QCOMPARE(allFields(fileConditions()), pageLines({like("OrigName", "")}));
    QCOMPARE(allFields(fileCountConditions()), countLines({like("OrigName", "")}));
}

void DownloadWidgetConditionsTest::everyComboItemAsksItsFields_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<int>("item");
    QTest::addColumn<List>("expected");
    for (const Rights &rights : fileRights()) {
        const List items[] = {seesCustomers(rights) ? EverythingWithCustomers
                                                    : EverythingWithoutCustomers,
                              {like("OrigName")},
                              {like("KoCode")},
                              {serial("0")},
                              {like("FileTips")},
                              {like("PreUser_RealName")},
                              {like("KoName")},
                              {like("SuperiorCo1")},
                              {like("SuperiorCo2")}};
        int item = 0;
        for (const List &expected : items) {
            QTest::newRow(qPrintable(rightNames(rights) + QStringLiteral(", item %1").arg(item)))
                << rights << item << expected;
            ++item;
        }
    }
}

void DownloadWidgetConditionsTest::everyComboItemAsksItsFields()
{
    QFETCH(Rights, rights);
    QFETCH(int, item);
    QFETCH(List, expected);
    const auto desk = makeDownloadDesk(rights);
    searchFor(*desk, item, QStringLiteral("abc"));
    QCOMPARE(allFields(fileConditions()), pageLines(expected));
    QCOMPARE(allFields(fileCountConditions()), countLines(expected));
}

/// The rights that do not show customers' names do not matter here.
void DownloadWidgetConditionsTest::ordinaryUsersAreKeptToTheirFiles_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("text");
    QTest::addColumn<List>("expected");
    const auto all = combinations({Right::OrigFileUpdate, Right::CheckAuthority,
                                   Right::OrigFileAssign, Right::PreCheckAssign});
    for (const Rights &rights : all) {
        const QString name = rightNames(rights);
        List everything = EverythingWithoutCustomers;
        everything.prepend(ownFiles());
        QTest::newRow(qPrintable(name + QStringLiteral(", no text")))
            << rights << 0 << QString() << List({ownFiles(), like("OrigName", "")});
        QTest::newRow(qPrintable(name + QStringLiteral(", no text, job name")))
            << rights << 1 << QString() << List({ownFiles(), like("OrigName", "")});
        QTest::newRow(qPrintable(name + QStringLiteral(", everything")))
            << rights << 0 << QStringLiteral("abc") << everything;
        QTest::newRow(qPrintable(name + QStringLiteral(", job name")))
            << rights << 1 << QStringLiteral("abc") << List({ownFiles(), like("OrigName")});
    }
}

/// Behind the user's own files the OR-join starts after the original name, too.
void DownloadWidgetConditionsTest::ordinaryUsersAreKeptToTheirFiles()
{
    QFETCH(Rights, rights);
    QFETCH(int, item);
    QFETCH(QString, text);
    QFETCH(List, expected);
    const auto desk = makeDownloadDesk(rights);
    searchFor(*desk, item, text);
    QCOMPARE(allFields(fileConditions()), pageLines(expected));
    QCOMPARE(allFields(fileCountConditions()), countLines(expected));
}

void DownloadWidgetConditionsTest::textsGoAsTheyAreTyped_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("blanks around") << QByteArray(" abc ");
    QTest::newRow("only a blank") << QByteArray(" ");
    QTest::newRow("Chinese") << QByteArray("主板");
    QTest::newRow("beyond the first plane") << QByteArray("\xF0\xA0\xAE\xB7");
    QTest::newRow("wild cards and quotes") << QByteArray("100%_'\"\\");
    QTest::newRow("a bar") << QByteArray("a|r");
}

void DownloadWidgetConditionsTest::textsGoAsTheyAreTyped()
{
    QFETCH(QByteArray, text);
    const auto desk = makeDownloadDesk({Right::Admin});
    searchFor(*desk, 4, QString::fromUtf8(text));
    QCOMPARE(allFields(fileConditions()), pageLines({like("FileTips", text.constData())}));
}

void DownloadWidgetConditionsTest::serialNumbersAreReadAsIntegers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("number");
    QTest::newRow("a number") << "12" << QByteArray("12");
    QTest::newRow("as it is shown") << "000012" << QByteArray("12");
    QTest::newRow("blanks around") << " 12 " << QByteArray("12");
    QTest::newRow("negative") << "-3" << QByteArray("-3");
    QTest::newRow("letters") << "abc" << QByteArray("0");
    QTest::newRow("a number and letters") << "12a" << QByteArray("0");
    QTest::newRow("a fraction") << "1.5" << QByteArray("0");
    QTest::newRow("hexadecimal") << "0x1f" << QByteArray("0");
    QTest::newRow("the largest") << "2147483647" << QByteArray("2147483647");
    QTest::newRow("one more") << "2147483648" << QByteArray("0");
}

void DownloadWidgetConditionsTest::serialNumbersAreReadAsIntegers()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, number);
    const auto desk = makeDownloadDesk({Right::TestAdmin});
    searchFor(*desk, 3, text);
    QCOMPARE(allFields(fileConditions()), pageLines({serial(number.constData())}));
    QCOMPARE(allFields(fileCountConditions()), countLines({serial(number.constData())}));
}

void DownloadWidgetConditionsTest::everythingReadsASerialNumberToo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("number");
    QTest::newRow("a number") << QByteArray("23456") << QByteArray("23456");
    QTest::newRow("leading zeros") << QByteArray("0012") << QByteArray("12");
    QTest::newRow("a code with digits") << QByteArray("A1B023456") << QByteArray("0");
}

void DownloadWidgetConditionsTest::everythingReadsASerialNumberToo()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, number);
    const auto desk = makeDownloadDesk({Right::TestAdmin});
    searchFor(*desk, 0, QString::fromUtf8(text));
    const char *const typed = text.constData();
    QCOMPARE(allFields(fileConditions()),
             pageLines({like("OrigName", typed), orLike("KoCode", typed), orLike("FileTips", typed),
                        orLike("PreUser_RealName", typed), serial(number.constData()).orJoin()}));
}

void DownloadWidgetConditionsTest::aComboWithoutAChoiceAddsNoText_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<bool>("emptied");
    QTest::newRow("ordinary, nothing chosen") << Rights() << false;
    QTest::newRow("ordinary, no items") << Rights() << true;
    QTest::newRow("administrator, nothing chosen") << Rights({Right::Admin}) << false;
    QTest::newRow("administrator, no items") << Rights({Right::Admin}) << true;
}

/// The page window still has a condition to stand on: the user's own files, or
/// a name that contains nothing.
void DownloadWidgetConditionsTest::aComboWithoutAChoiceAddsNoText()
{
    QFETCH(Rights, rights);
    QFETCH(bool, emptied);
    const auto desk = makeDownloadDesk(rights);
    if (emptied)
        control<QComboBox>(*desk, "m_pFilterCMB")->clear();
    searchFor(*desk, -1, QStringLiteral("abc"));
    Expected only = rights.isEmpty() ? ownFiles() : like("OrigName", "");
    QCOMPARE(allFields(fileCountConditions()), allFields({only}));
    QCOMPARE(allFields(fileConditions()), allFields({only.page("0")}));
}

void DownloadWidgetConditionsTest::theTextOfTheSignalIsSearchedNotTheEdits()
{
    const auto desk = makeDownloadDesk({Right::Admin});
    control<QLineEdit>(*desk, "m_pFilterLE")->setText(QStringLiteral("typed"));
    control<QComboBox>(*desk, "m_pFilterCMB")->setCurrentIndex(1);
    QCOMPARE(allFields(fileConditions()), pageLines({like("OrigName", "typed")}));
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pFilterLE_textEdited",
                                      Q_ARG(QString, QStringLiteral("told"))));
    QCOMPARE(allFields(fileConditions()), pageLines({like("OrigName", "told")}));
}

/// Rights are asked for at each search; the user's id is the one that the desk
/// was built for.
void DownloadWidgetConditionsTest::companyNamesAreAskedForAfresh()
{
    const auto desk = makeDownloadDesk();
    FakeServices::instance().grant(Right::ShowCompanyName);
    FakeServices::instance().setUser(77);
    searchFor(*desk, 0, QStringLiteral("abc"));
    List expected = EverythingWithCustomers;
    expected.prepend(ownFiles());
    QCOMPARE(allFields(fileConditions()), pageLines(expected));
}

KODMS_TEST_MAIN(DownloadWidgetConditionsTest, QApplication)
#include "DownloadWidgetConditionsTest.moc"
