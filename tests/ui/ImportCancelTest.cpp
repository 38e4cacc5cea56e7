// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/disk/FsPath.h"
#include "services/notices/NoticeHub.h"
#include "services/ui/imports/ImportForm.h"
#include "tests/imports/support/ImportHome.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::DMS_UICommon;
using KODMS::UI::Import_Info;

/// An import that takes its time, and is cancelled.
class ImportCancelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cancelledReadingChoosesNothing();
    void cancelledStoringLeavesTheChoice();

private:
    QString largeFolder();

    ImportForm *form() const { return m_window->findChild<ImportForm *>(); }

    QString text(const char *label) const
    {
        return m_window->findChild<QLabel *>(QLatin1String(label))->text();
    }

    QPushButton *button(const char *name) const
    {
        return m_window->findChild<QPushButton *>(QLatin1String(name));
    }

    std::unique_ptr<ImportHome> m_home;
    std::unique_ptr<DMS_Import_Widget> m_window;
};

namespace {

constexpr int Layers = 20;

/// Presses cancel as soon as there is a dialog to press it in.
class Canceller {
public:
    Canceller()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (!taskDialog())
                return;
            m_timer.stop();
            pressCancel();
            wasPressed = true;
        });
        m_timer.start(20);
    }

    bool wasPressed = false;

private:
    QTimer m_timer;
};

void saysOnlyThatItWasCancelled(const QSignalSpy &notices)
{
    QCOMPARE(notices.size(), 1);
    QCOMPARE(notices.first().first().toInt(), static_cast<int>(NoticeLevel::Information));
}

} // namespace

void ImportCancelTest::init()
{
    m_home = std::make_unique<ImportHome>();
    m_home->actAsExecutor();
    m_window = std::make_unique<DMS_Import_Widget>();
    m_window->resize(600, 400);
    m_window->show();
    Import_Info info;
    info.jobName = m_home->job.jobName;
    info.flowGuid = m_home->job.flowGuid;
    m_window->setFlowGuid(info);
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void ImportCancelTest::cleanup()
{
    m_window.reset();
    m_home.reset();
}

/// 400 MB to read, 20 on the disk: each layer is the same file.
QString ImportCancelTest::largeFolder()
{
    QByteArray matrix = "STEP {\nCOL=1\nNAME=pcb\n}\n";
    for (int layer = 0; layer < Layers; ++layer)
        matrix += "LAYER {\nROW=" + QByteArray::number(layer + 1) + "\nTYPE=SIGNAL\nNAME=l" +
                  QByteArray::number(layer) + "\n}\n";
    QByteArray features;
    features.reserve(20'000'100);
    for (qint64 line = 0; features.size() < 20'000'000; ++line)
        features += "P " + QByteArray::number(line * 7919 % 100003) + " 1 0 P 0 0\n";
    const QString parent = m_home->house.path(QStringLiteral("large"));
    writeJob(parent, {{QStringLiteral("job/matrix/matrix"), matrix},
                      {QStringLiteral("job/steps/pcb/layers/l0/features"), features}});
    const QString layers = parent + QStringLiteral("/job/steps/pcb/layers/l");
    const std::filesystem::path first = fsPath(layers + QStringLiteral("0/features"));
    for (int layer = 1; layer < Layers; ++layer) {
        const QString folder = layers + QString::number(layer);
        if (!QDir().mkpath(folder))
            qFatal("cannot write");
        std::filesystem::create_hard_link(first, fsPath(folder + QStringLiteral("/features")));
    }
    return parent + QStringLiteral("/job");
}

void ImportCancelTest::cancelledReadingChoosesNothing()
{
    const QString before = m_home->stock();
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    const Canceller canceller;
    Q_EMIT form()->pathChosen(largeFolder());
    QVERIFY(canceller.wasPressed);
    QVERIFY(text("importPath").contains(QLatin1String("job")));
    QVERIFY(!text("importMessage").isEmpty());
    QVERIFY(!button("importJob")->isEnabled());
    QVERIFY(button("chooseImportFile")->isEnabled());
    saysOnlyThatItWasCancelled(notices);
    QCOMPARE(m_home->stock(), before);
}

void ImportCancelTest::cancelledStoringLeavesTheChoice()
{
    const QString before = m_home->stock();
    Q_EMIT form()->pathChosen(largeFolder());
    QVERIFY2(button("importJob")->isEnabled(), qPrintable(text("importMessage")));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    const Canceller canceller;
    button("importJob")->click();
    QVERIFY(canceller.wasPressed);
    QVERIFY(!text("importMessage").isEmpty());
    QCOMPARE(text("importJobName"), QStringLiteral("job"));
    QVERIFY(button("importJob")->isEnabled());
    saysOnlyThatItWasCancelled(notices);
    QCOMPARE(m_home->stock(), before);
}

KODMS_TEST_MAIN(ImportCancelTest, QApplication)
#include "ImportCancelTest.moc"
