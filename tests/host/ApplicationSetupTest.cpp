// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ApplicationSetup.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QTextCodec>

using KODMS::Host::ApplicationSetup;

class ApplicationSetupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLocalEncodingKnowsChinese();
    void noOpenGlIsLoaded();
    void theUsersOwnWishHolds();
};

namespace {

constexpr auto variable = "QT_XCB_GL_INTEGRATION";

} // namespace

void ApplicationSetupTest::theLocalEncodingKnowsChinese()
{
    const QString status = QStringLiteral("机器人通过");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    QVERIFY(QString::fromLocal8Bit(status.toLocal8Bit()) != status);
    ApplicationSetup::writeChinese();
    QCOMPARE(QString::fromLocal8Bit(status.toLocal8Bit()), status);
}

void ApplicationSetupTest::noOpenGlIsLoaded()
{
    qunsetenv(variable);
    ApplicationSetup::paintWithoutOpenGl();
    QCOMPARE(qgetenv(variable), QByteArray("none"));
}

void ApplicationSetupTest::theUsersOwnWishHolds()
{
    qputenv(variable, "xcb_egl");
    ApplicationSetup::paintWithoutOpenGl();
    QCOMPARE(qgetenv(variable), QByteArray("xcb_egl"));
}

KODMS_TEST_MAIN(ApplicationSetupTest, QCoreApplication)

#include "ApplicationSetupTest.moc"
