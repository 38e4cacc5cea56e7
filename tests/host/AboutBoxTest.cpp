// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/AboutBox.h"
#include "apps/desk/ElidedLabel.h"
#include "services/api/SampleData.h"
#include "services/api/SearchIndex.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS;
using KODMS::Tests::SampleInstallation;

/// What the host says of itself and of its installation.
class AboutBoxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itTellsOfTheSearchIndex();
};

void AboutBoxTest::itTellsOfTheSearchIndex()
{
    const SampleInstallation installation;
    QVERIFY2(installation.problem().isEmpty(), qPrintable(installation.problem()));
    Services::SignIn::actAsOperator();
    Services::NoProgress progress;
    const Services::Outcome made = Services::SampleData::generate({30, 7, 0}, progress);
    QVERIFY2(made.ok, qPrintable(made.text));
    const QString name = QStringLiteral("搜索索引: ");
    QVERIFY2(Host::AboutBox::plainText().contains(name + QStringLiteral("未启用")),
             qPrintable(Host::AboutBox::plainText()));
    const Services::SearchIndexState state = Services::SearchIndex::load();
    QVERIFY(state.isReady);
    QCOMPARE(state.flows, 30);
    QVERIFY(state.origFiles > 0);
    const QString counts = QStringLiteral("30 个流程，%1 个原始文件，").arg(state.origFiles);
    QVERIFY2(Host::AboutBox::plainText().contains(name + counts),
             qPrintable(Host::AboutBox::plainText()));
    const Host::AboutBox box;
    QStringList shown;
    for (const Host::ElidedLabel *label : box.findChildren<Host::ElidedLabel *>())
        shown << label->fullText();
    QCOMPARE(shown.filter(counts).size(), 1);
}

KODMS_TEST_MAIN(AboutBoxTest, QApplication)
#include "AboutBoxTest.moc"
