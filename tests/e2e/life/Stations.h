// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>

namespace KODMS::Tests {

class LifeOfAJob;

/// The stations of a job's life, worked by clicks and keys at the host. Each compares the
/// records, the store and the desks with what has to be there afterwards, and notes in the
/// job what its history has to tell. With QtTest's macros: the caller looks whether the
/// test failed.
namespace Stations {

/// What a customer sent, and what is typed in for it.
struct Parcel {
    QString path;
    QString customerCode;
    QString customerName; ///< typed when the customer is new
    QString origName;     ///< as the dialog proposes it
    bool isPaid = false;
};

void takeIn(LifeOfAJob &job, const Parcel &parcel);
void assign(LifeOfAJob &job);

/// The executor's download, which brings these files into the job's folder.
void download(LifeOfAJob &job, const QMap<QString, QByteArray> &files);

/// The executor's import of an archive with a job of this name.
void import(LifeOfAJob &job, const QString &archive, const QString &jobName);

void raiseQuestion(LifeOfAJob &job);
void answerQuestion(LifeOfAJob &job);
void resolveQuestion(LifeOfAJob &job);

/// The reviewer's verdict on what was imported, or on the robot's result.
void fail(LifeOfAJob &job);
void pass(LifeOfAJob &job);

/// The reviewer sends the job, and the robot brings a result.
void sendToRobot(LifeOfAJob &job);
/// The same, after something else has asked the robot: what the desk called the job's
/// status then.
void awaitRobot(LifeOfAJob &job, const QString &statusBefore);

/// To the CAM side, and with the whole list into a file.
void exportJob(LifeOfAJob &job);

/// By the executor, in the history on the original-file desk.
void finish(LifeOfAJob &job);

/// In which the history has to tell what was done: people who work at the same time are told
/// in the order in which they came.
enum class Order { OfAll, OfEachPerson };

/// What the history panel tells, entry by entry, is what was done.
void readHistory(LifeOfAJob &job, Order order = Order::OfAll);

/// What `kodms-admin check` looks at is clean.
void checkStore(LifeOfAJob &job);

} // namespace Stations

} // namespace KODMS::Tests
