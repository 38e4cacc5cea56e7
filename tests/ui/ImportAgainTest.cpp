// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"
#include "services/ui/imports/ImportForm.h"
#include "tests/archive/SampleArchives.h"
#include "tests/imports/support/ImportHome.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::Import_Info;

/// Bytes that were imported before, for the same job or for another: the person is asked.
class ImportAgainTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aSecondImportIsAskedAbout();
    void anImportForAnotherJobIsAskedAbout();
    void theLastOfSeveralIsNamed();
    void otherBytesAreNotAskedAbout();

private:
    void open();
    IntakeReceipt secondJob();

    void import(const QString &path)
    {
        Q_EMIT m_window->findChild<ImportForm *>()->pathChosen(path);
        QTest::mouseClick(button(), Qt::LeftButton);
    }

    QPushButton *button() const
    {
        return m_window->findChild<QPushButton *>(QStringLiteral("importJob"));
    }

    QLabel *message() const
    {
        return m_window->findChild<QLabel *>(QStringLiteral("importMessage"));
    }

    std::unique_ptr<ImportHome> m_home;
    std::unique_ptr<DMS_Import_Widget> m_window;
};

void ImportAgainTest::init()
{
    m_home = std::make_unique<ImportHome>();
}

void ImportAgainTest::cleanup()
{
    m_window.reset();
    m_home.reset();
}

/// For the job of the house, by its executor.
void ImportAgainTest::open()
{
    m_home->actAsExecutor();
    Import_Info info;
    info.jobName = m_home->job.jobName;
    info.flowGuid = m_home->job.flowGuid;
    m_window = std::make_unique<DMS_Import_Widget>();
    m_window->resize(600, 400);
    m_window->show();
    m_window->setFlowGuid(info);
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

IntakeReceipt ImportAgainTest::secondJob()
{
    const QString sent = m_home->house.path(QStringLiteral("second.tgz"));
    IntakeRequest request;
    request.path = sent;
    request.customerCode = QStringLiteral("B2C");
    if (!writeFile(sent, tgzOf({{QStringLiteral("bottom.gbr"), "G04 second"}})))
        qFatal("cannot write");
    const auto receipt = Intake::take(request);
    if (!receipt)
        qFatal("%s", qPrintable(receipt.text()));
    return receipt.value;
}

void ImportAgainTest::aSecondImportIsAskedAbout()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->boardArchive();
    import(path);
    QVERIFY(boxes.texts.isEmpty());
    const QString before = m_home->stock();
    boxes.answer(QMessageBox::No);
    import(path);
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY2(boxes.texts[0].contains(QStringLiteral("EXECUTOR")), qPrintable(boxes.texts[0]));
    QVERIFY(!boxes.texts[0].contains(m_home->job.jobName));
    QCOMPARE(m_home->stock(), before);
    QVERIFY(button()->isEnabled());
    QCOMPARE(message()->text(), QStringLiteral("未导入"));
    // Neither the colour of a success nor that of an error.
    QVERIFY(!message()->property("isError").isValid());
    boxes.answer(QMessageBox::Yes);
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(boxes.texts.size(), 2);
    QVERIFY(m_home->stock() != before);
    QCOMPARE(message()->property("isError"), QVariant(false));
}

void ImportAgainTest::anImportForAnotherJobIsAskedAbout()
{
    const IntakeReceipt first = m_home->job;
    const IntakeReceipt second = secondJob();
    const QString path = m_home->boardArchive();
    m_home->job = second;
    open();
    import(path);
    m_home->job = first;
    open();
    const QString before = m_home->stock();
    BoxAnswers boxes;
    boxes.answer(QMessageBox::No);
    import(path);
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY2(boxes.texts[0].contains(second.jobName), qPrintable(boxes.texts[0]));
    QVERIFY2(boxes.texts[0].contains(first.jobName), qPrintable(boxes.texts[0]));
    QCOMPARE(m_home->stock(), before);
    boxes.answer(QMessageBox::Yes);
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(m_home->stock() != before);
    // From now on it is this job's own import that counts.
    import(path);
    QCOMPARE(boxes.texts.size(), 3);
    QVERIFY2(!boxes.texts[2].contains(second.jobName), qPrintable(boxes.texts[2]));
}

void ImportAgainTest::theLastOfSeveralIsNamed()
{
    open();
    const QString path = m_home->boardArchive();
    import(path);
    m_home->house.database().run(QStringLiteral(
        "INSERT INTO import_contents (sha256, flow_id, user_id, import_time) SELECT c.sha256, "
        "c.flow_id, u.id, c.import_time FROM import_contents c, users u "
        "WHERE u.login_name = 'admin'"));
    BoxAnswers boxes;
    boxes.answer(QMessageBox::No);
    import(path);
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY2(boxes.texts[0].contains(QStringLiteral("管理员")), qPrintable(boxes.texts[0]));
}

void ImportAgainTest::otherBytesAreNotAskedAbout()
{
    open();
    BoxAnswers boxes;
    import(m_home->boardArchive());
    import(m_home->boardArchive(QStringLiteral("other")));
    QVERIFY(boxes.texts.isEmpty());
}

KODMS_TEST_MAIN(ImportAgainTest, QApplication)
#include "ImportAgainTest.moc"
