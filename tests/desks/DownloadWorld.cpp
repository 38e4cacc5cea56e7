// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadWorld.h"

#include "desks/common/ProgramStart.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace KODMS::Tests {

using Fakes::Call;

namespace {

constexpr char Fetch[] = "DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName";
constexpr char Unpack[] = "DMS_Function::ExtractorFileFromcompressFile";

void writeFile(const QString &path, const QString &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace

DownloadWorld::DownloadWorld()
{
    QDir().mkpath(root());
    FakeServices::instance().reset();
    FakeServices::instance().config.downloadDir = root().toStdString();
    answerAsServices();
    UI::setProgramStarter([](const UI::CommandLine &line) {
        FakeServices::instance().record("started", line.program, line.arguments);
        return true;
    });
    qApp->installEventFilter(this);
}

DownloadWorld::~DownloadWorld()
{
    qApp->removeEventFilter(this);
    UI::setProgramStarter({});
    FakeServices::instance().reset();
}

void DownloadWorld::answerAsServices()
{
    auto &services = FakeServices::instance();
    services.jobFlows.compute([this](const Call &call) {
        act(call.name);
        DataLib::Model::Odbpp_JobFlow flow;
        flow.id = 1;
        flow.jobName = call.arguments.first()
                           .toMap()
                           .value(QStringLiteral("FlowGUID"))
                           .toString()
                           .replace(QStringLiteral("guid"), QStringLiteral("flow"))
                           .toStdString();
        return Fakes::Rows<DataLib::Model::Odbpp_JobFlow>{{flow}, true};
    });
    DataLib::Model::Odbpp_Orders paid;
    paid.payment = 1;
    services.orders.compute([this, paid](const Call &call) {
        act(call.name);
        return paid;
    });
    services.result(Fetch).compute([this](const Call &call) { return fetch(call); });
    services.result(Unpack).compute([this](const Call &call) { return unpack(call); });
    services.robotParameters.compute([this](const Call &call) {
        act(call.name);
        return std::string();
    });
    for (const char *handOver : {"DMS_UICommon::importNewJob", "DMS_UICommon::inputNewJob"})
        services.result(handOver).compute([this](const Call &call) {
            act(call.name);
            return 1;
        });
}

int DownloadWorld::fetch(const Call &call)
{
    act(call.name);
    const QString job = call.arguments.at(0).toString();
    if (!m_missing.contains(job))
        writeFile(root() + job + QLatin1Char('.') + call.arguments.at(2).toString(),
                  call.arguments.at(1).toString());
    return 1;
}

int DownloadWorld::unpack(const Call &call)
{
    act(call.name);
    const QString target = call.arguments.at(2).toString();
    const auto failing = m_failing.find(QFileInfo(QDir::cleanPath(target)).fileName());
    if (failing != m_failing.end())
        return failing->second;
    if (!QFileInfo::exists(call.arguments.at(0).toString()))
        return -1;
    for (const QString &path : qAsConst(m_archived)) {
        if (path.endsWith(QLatin1Char('/')))
            QDir().mkpath(target + path);
        else
            writeFile(target + path, path);
    }
    return qMax(1, m_archived.size());
}

bool DownloadWorld::exists(const QString &path) const
{
    return QFileInfo::exists(root() + path);
}

QString DownloadWorld::content(const QString &path) const
{
    QFile file(root() + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void DownloadWorld::write(const QString &path, const QString &content) const
{
    writeFile(root() + path, content);
}

void DownloadWorld::during(const QString &operation, std::function<void()> action)
{
    m_actions[operation] = std::move(action);
}

void DownloadWorld::whileOpen(const QString &boxText, std::function<void()> action)
{
    m_actions[boxText] = std::move(action);
}

void DownloadWorld::act(const QString &occasion)
{
    const auto action = m_actions.find(occasion);
    if (action != m_actions.end())
        action->second();
}

void DownloadWorld::listenTo(UI::DMS_Download_Widget *desk)
{
    connect(desk, &UI::DMS_Download_Widget::newWebItemNameGetted, this, [this](const QString &job) {
        FakeServices::instance().record("newWebItem", job);
        act(QStringLiteral("newWebItem"));
    });
}

/// A box comes up: noted, and its action put before the click that answers it.
bool DownloadWorld::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (box) {
        FakeServices::instance().record("box", box->text());
        QTimer::singleShot(0, this, [this, text = box->text()] { act(text); });
    }
    return false;
}

QStringList DownloadWorld::story() const
{
    QString windowsRoot = root();
    windowsRoot.replace(QLatin1Char('/'), QLatin1Char('\\'));
    QStringList lines = FakeServices::instance().operationLines();
    lines.replaceInStrings(root(), QStringLiteral("ROOT/"));
    lines.replaceInStrings(windowsRoot, QStringLiteral("ROOT\\"));
    return lines;
}

QStringList DownloadWorld::story(const QString &start) const
{
    QStringList lines;
    const QStringList all = story();
    for (const QString &line : all)
        if (line.startsWith(start))
            lines << line;
    return lines;
}

} // namespace KODMS::Tests
