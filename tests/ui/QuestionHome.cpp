// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/QuestionHome.h"

#include "services/ui/questions/QuestionFiling.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"

namespace KODMS::Tests {

using namespace Services;

QuestionHome::QuestionHome()
{
    house.actAsAdmin();
    const QString sent = file(QStringLiteral("sent.zip"), rawZip({{"a", "G04"}}));
    for (IntakeReceipt *receipt : {&job, &other}) {
        IntakeRequest request;
        request.path = sent;
        request.customerCode = QStringLiteral("A1B");
        const auto taken = Intake::take(request);
        if (!taken)
            qFatal("%s", qPrintable(taken.text()));
        *receipt = taken.value;
    }
    user = house.actAs(QStringLiteral("executor"), {});
    assignTo(user);
}

void QuestionHome::assignTo(int userId)
{
    for (const IntakeReceipt &receipt : {job, other})
        house.database()
            .prepare(
                QStringLiteral("INSERT INTO orig_file_assign (flow_id, executor_id, "
                               "assign_user_id, assign_time) VALUES (:flow, :user, :by, "
                               "'2026-01-01T00:00:00.000Z') ON CONFLICT (flow_id) DO UPDATE SET "
                               "executor_id = excluded.executor_id"))
            .bind(":flow", receipt.flowId)
            .bind(":user", userId)
            .bind(":by", userId)
            .exec();
}

QImage QuestionHome::picture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

QString QuestionHome::file(const QString &name) const
{
    const QString path = house.path(name);
    if (!picture().save(path))
        qFatal("cannot write the picture");
    return path;
}

QString QuestionHome::file(const QString &name, const QByteArray &bytes) const
{
    const QString path = house.path(name);
    if (!writeFile(path, bytes))
        qFatal("cannot write");
    return path;
}

int QuestionHome::raise(const QString &title, int pictures, const QString &description)
{
    QVector<PictureFile> files;
    for (int i = 0; i < pictures; ++i)
        files << PictureFile::fromImage(picture(), QStringLiteral("p%1.png").arg(i)).value;
    NoProgress progress;
    QuestionFiling filing(house.runtime(), job.flowId, title,
                          description.isEmpty() ? QStringLiteral("about ") + title : description);
    if (!filing.store(files, progress))
        qFatal("not stored");
    const auto id = filing.record();
    if (!id)
        qFatal("%s", qPrintable(id.text()));
    return id.value;
}

QString QuestionHome::stock()
{
    return QStringLiteral("%1 questions, %2 pictures, %3 files, %4 in staging")
        .arg(house.value(QStringLiteral("SELECT count(*) FROM questions")).toString(),
             house.value(QStringLiteral("SELECT count(*) FROM question_pictures")).toString())
        .arg(house.store().list().value.size())
        .arg(TestInstallation::entries(house.staging()).size());
}

} // namespace KODMS::Tests
