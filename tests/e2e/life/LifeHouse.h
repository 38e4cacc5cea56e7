// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desk/CamRelay.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/HostSession.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "tests/e2e/RobotAtWork.h"
#include "tests/e2e/SampleHouse.h"

#include <QObject>
#include <QUrl>

namespace KODMS::Tests {

/// An installation with its people, the robot, and one host at which they work in turn.
/// A failure to build it, or to sign somebody in, ends the process.
class LifeHouse : public QObject {
    Q_OBJECT

public:
    LifeHouse();
    ~LifeHouse() override;

    /// The host's window of this user, after a sign-in by keys if somebody else was there.
    Host::MainWindow &enter(const Services::NewUser &person);

    /// What the folder browser was last asked to show.
    QUrl openedFolder() const { return m_opened; }

    const SampleHouse &sample() const { return m_sample; }

    const RecordProbe &records() const { return m_sample.records(); }

    /// As the robot's account is called.
    QString robotName() const;

    quint16 robotPort() const { return m_robot.port(); }

    /// What went wrong since it was last asked: warnings and errors for people.
    QStringList takeNotices();

    /// What the CAM side got in this session: "kind job path", the newest first.
    QStringList handOvers() const;

public Q_SLOTS:
    void openUrl(const QUrl &url);

private:
    void leave();
    void signIn(const Services::NewUser &person);

    SampleHouse m_sample;
    RobotAtWork m_robot;
    QUrl m_opened;
    QStringList m_complaints;
    std::unique_ptr<Host::Preferences> m_preferences;
    Host::NoticeLog m_notices;
    Host::HandOverLog m_handOvers;
    Host::CamRelay m_relay{m_notices, m_handOvers};
    std::unique_ptr<Host::HostSession> m_session;
};

} // namespace KODMS::Tests
