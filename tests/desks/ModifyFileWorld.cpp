// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ModifyFileWorld.h"

#include "tests/desks/FileDialogProbe.h"
#include "tests/desks/RobotPeer.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>

namespace KODMS::Tests {

namespace {

constexpr int Acting = 42;

} // namespace

ModifyFileWorld::ModifyFileWorld()
{
    QDir(m_dir.path()).mkpath(QStringLiteral("staging"));
    auto &services = FakeServices::instance();
    services.reset();
    services.setUser(Acting);
    services.config.fileStoreDb = "database";
    services.config.fileStoreBucket = "bucket";
    services.config.stagingDir = staged(QString()).toStdString();
    services.guids.once("g1");
    services.guids.once("g2");
    services.packedNames.always("packed");
    window = std::make_unique<UI::DMS_ModifyFile_Widget>(nullptr);
    window->setData(QStringLiteral("board"), QStringLiteral("rar"), QStringLiteral("old.rar"),
                    QStringLiteral("7"), QStringLiteral("A1B"), QStringLiteral("flow7"),
                    QStringLiteral("000123"));
}

void ModifyFileWorld::choose(const QString &path) const
{
    FileDialogProbe probe;
    probe.choose(path);
    const char *button = QFileInfo(path).isDir() ? "m_pOpenDirPB" : "m_pOpenFilePB";
    control<QPushButton>(*window, button)->click();
    QCOMPARE(control<QLineEdit>(*window, "m_pPathLE")->text(), path);
}

void ModifyFileWorld::import() const
{
    control<QPushButton>(*window, "m_pSingleImportPB")->click();
}

QString ModifyFileWorld::made(const QString &name) const
{
    const QString path = QDir(m_dir.path()).canonicalPath() + QLatin1Char('/') + name;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(name.toUtf8()) > 0 ? path : QString();
}

QString ModifyFileWorld::madeFolder(const char *name) const
{
    const QDir dir(QDir(m_dir.path()).canonicalPath());
    return dir.mkpath(QLatin1String(name)) ? dir.filePath(QLatin1String(name)) : QString();
}

void listenAs(const RobotPeer &robot)
{
    FakeServices::instance().config.robotHost = "127.0.0.1";
    FakeServices::instance().config.robotPort = robot.port();
}

QStringList callNames()
{
    QStringList names;
    const auto calls = FakeServices::instance().operations();
    for (const Fakes::Call &call : calls)
        names << call.name.section(QStringLiteral("::"), -1);
    return names;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

} // namespace KODMS::Tests
