// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>

class QTableWidget;

namespace KODMS::UI {

struct DeskOperations;

/// The desk that a download works for.
struct DownloadDesk {
    QWidget *window;
    QTableWidget *table;
    const DeskOperations &its;
    QString &jobFileName;                            ///< the file last found to be a job's
    QString &lastPath;                               ///< the job folder last downloaded to
    std::function<void()> reload;                    ///< fills the table anew; may be empty
    std::function<void(const QString &)> gotWebItem; ///< a web job is there; may be empty
};

/// The download of the selected jobs: asks, fetches each job's archive, unpacks it
/// into the job's folder, hands it to the CAM side, and shows the last folder.
/// Made on the stack for one click. GUI thread.
///
/// Message boxes and long work run event loops. The rows' texts are therefore read
/// before the first of them is fetched, and when the desk is deleted meanwhile,
/// the download ends where it stands.
class JobDownload {
public:
    explicit JobDownload(const DownloadDesk &desk);

    void run() const;

private:
    /// What a selected row says of its job.
    struct Row {
        QString jobName;
        QString storedFile;
        QString fileType;
        QString flowGuid;
        bool isWeb;
        bool isTgz;
    };

    /// Where a job is fetched and unpacked to. Paths are joined plainly.
    struct Target {
        QString flowJob;
        QString folder;  ///< root + flow's job name
        QString archive; ///< root + flow's job name + "." + type
    };

    bool mayBegin() const;
    void finishInstead() const;
    bool isUnpaidWebJob() const;
    QVector<Row> selectedRows() const;
    Row rowAt(int row) const;

    void download(const Row &row) const;
    void fetch(const Row &row, const QString &flowJob) const;
    bool unpack(const Row &row, const Target &target) const;
    void handOver(const Row &row, const Target &target) const;
    void handOverTgz(const Target &target) const;
    void handOverLayers(const Row &row, const Target &target) const;

    const DownloadDesk m_desk;
    const QPointer<QWidget> m_window; // null: the desk is gone, and all that m_desk names
};

} // namespace KODMS::UI
