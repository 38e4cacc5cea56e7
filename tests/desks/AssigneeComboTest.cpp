// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/AssigneeCombo.h"

#include "tests/fakes/FakeServices.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QTest>

using namespace KODMS::UI;
using KODMS::Fakes::FakeServices;

class AssigneeComboTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void onlyUsersOfTheGroupAreOffered_data();
    void onlyUsersOfTheGroupAreOffered();
    void entriesBearNeitherIconNorData();
    void everyUserIsAskedFor();
    void aFilledComboIsAppendedTo();
    void noUserLeavesTheComboEmpty();
};

void AssigneeComboTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().users.always({{{4, "张伟", 3, 10},
                                            {9, "Anna", 2, 6},
                                            {2, "李娜", 3, 10},
                                            {5, "half", 3, 6},
                                            {6, "other half", 2, 10},
                                            {1, "张伟", 2, 6},
                                            {8, "swapped", 10, 3}}});
}

void AssigneeComboTest::onlyUsersOfTheGroupAreOffered_data()
{
    QTest::addColumn<int>("department");
    QTest::addColumn<int>("post");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QVector<int>>("ids");
    QTest::newRow("pre-checkers") << PreCheckers.department << PreCheckers.post
                                  << QStringList({QStringLiteral("张伟"), QStringLiteral("李娜")})
                                  << QVector<int>({4, 2});
    QTest::newRow("executors") << Executors.department << Executors.post
                               << QStringList({QStringLiteral("Anna"), QStringLiteral("张伟")})
                               << QVector<int>({9, 1});
}

void AssigneeComboTest::onlyUsersOfTheGroupAreOffered()
{
    QFETCH(int, department);
    QFETCH(int, post);
    QComboBox combo;
    QVector<int> ids;
    fillAssignees(&combo, ids, {department, post});
    QStringList names;
    for (int index = 0; index < combo.count(); ++index)
        names << combo.itemText(index);
    QTEST(names, "names");
    QTEST(ids, "ids");
}

void AssigneeComboTest::entriesBearNeitherIconNorData()
{
    QComboBox combo;
    QVector<int> ids;
    fillAssignees(&combo, ids, PreCheckers);
    QVERIFY(combo.itemIcon(0).isNull());
    QVERIFY(!combo.itemData(0).isValid());
}

void AssigneeComboTest::everyUserIsAskedFor()
{
    QComboBox combo;
    QVector<int> ids;
    fillAssignees(&combo, ids, PreCheckers);
    QCOMPARE(FakeServices::instance().operationLines(),
             QStringList({QStringLiteral("User_ViewBll::select({}, {})")}));
}

void AssigneeComboTest::aFilledComboIsAppendedTo()
{
    QComboBox combo;
    QVector<int> ids;
    fillAssignees(&combo, ids, PreCheckers);
    fillAssignees(&combo, ids, Executors);
    QCOMPARE(combo.count(), 4);
    QCOMPARE(combo.itemText(0), QStringLiteral("张伟"));
    QCOMPARE(ids, QVector<int>({4, 2, 9, 1}));
}

void AssigneeComboTest::noUserLeavesTheComboEmpty()
{
    FakeServices::instance().users.always({{}, false});
    QComboBox combo;
    QVector<int> ids;
    fillAssignees(&combo, ids, PreCheckers);
    QCOMPARE(combo.count(), 0);
    QVERIFY(ids.isEmpty());
}

KODMS_TEST_MAIN(AssigneeComboTest, QApplication)
#include "AssigneeComboTest.moc"
