// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"

#include "desks/common/CamRobotRequest.h"
#include "desks/common/MessageBoxes.h"
#include "desks/modifyfile/ImportMode.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/common/Common.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>

#include <utility>

namespace KODMS::UI {

namespace {

using DataLib::BLL::Odbpp_JobFlowBll;

constexpr char DoneTitle[] = "修改文件";
constexpr char Done[] = "修改文件成功!";

constexpr int NoState = 0;
constexpr int PreProcessed = 1; // with this check flag: passed
constexpr int Passed = 2;

const QLatin1String Kos("kos");

/// Exactly these: the dialog also offers tar, and no letter may be a capital.
bool isTaken(const QString &suffix)
{
    return QStringList{QStringLiteral("zip"), QStringLiteral("rar"), QStringLiteral("tgz"), Kos}
        .contains(suffix);
}

KODMS_Config config()
{
    return Common::commonInterface()->getConfig();
}

/// Puts a copy of the archive into the file store; returns the name that it has there.
std::string storeArchive(const QString &path, const QString &suffix)
{
    const std::string storedName =
        Common::commonInterface()->getGUID() + '.' + suffix.toStdString();
    const std::string copy = config().stagingDir + storedName;
    QFile::copy(path, QString::fromStdString(copy));
    Common::MongodbPut(config().fileStoreDb, config().fileStoreBucket, copy, storedName);
    return storedName;
}

/// Returns the name that the packed folder has in the file store.
std::string storeFolder(const QString &folder)
{
    std::string packed;
    Common::FoldersCompressSave2MongoDb(folder.toStdString() + '/', config().stagingDir, packed);
    return packed + ".zip";
}

/// A job and its row, kept while the file is stored: that can take long, and the
/// window may be deleted or pointed at another row meanwhile.
struct Target {
    int rowId;
    std::string customerCode;
    std::string flowGuid;
};

/// What is recorded of a stored file.
struct NewFile {
    std::string baseName;
    std::string storedName;
    std::string type;
};

/// Records the file and points the flow at it; returns the file's GUID.
std::string makeOrigFile(const NewFile &file, const Target &target, int userId)
{
    const std::string guid = Common::commonInterface()->getGUID();
    DataLib::BLL::Odbpp_OrigFilesBll().inputOrigFile(
        guid, file.baseName, file.storedName, file.type, target.customerCode, NoState, userId);
    Odbpp_JobFlowBll().UpdateOrigFileGuid(guid, target.flowGuid);
    return guid;
}

/// A finished job of the CAM product: nothing of it needs an import or a review.
void markImportedAndPassed(const std::string &fileGuid, const Target &target, int userId)
{
    Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid(fileGuid, target.flowGuid);
    Odbpp_JobFlowBll().UpdateState(userId, PreProcessed, Passed, target.flowGuid);
}

void updateRow(const Target &target, const std::string &storedName, int userId, const QString &name)
{
    DataLib::BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(target.rowId, storedName, userId,
                                                                name.toStdString());
}

int currentUserId()
{
    return DMS_StdCommon::interface()->getCurrentUser().id;
}

} // namespace

void DMS_ModifyFile_Widget::on_m_pSingleImportPB_clicked()
{
    if (m_pPathLE->text().isEmpty())
        return;
    const QPointer<DMS_ModifyFile_Widget> stillThere(this);
    if (m_Mode == ImportMode::Folder)
        l2FoldersSingleImport(QString(), m_pNameLE->text(), m_ChosenPath);
    else if (m_Mode == ImportMode::File)
        l2rartgzzipSingleImport(m_pNameLE->text(), m_ChosenPath);
    else
        return;
    if (stillThere)
        inform(this, QString::fromUtf8(DoneTitle), QString::fromUtf8(Done));
}

void DMS_ModifyFile_Widget::l2rartgzzipSingleImport(QString name, QString path)
{
    const QFileInfo archive(path);
    const QString suffix = archive.suffix();
    if (!isTaken(suffix))
        return;
    const QPointer<DMS_ModifyFile_Widget> stillThere(this);
    const Target target{m_Id.toInt(), m_CustomerCode.toStdString(), m_FlowGuid.toStdString()};
    const NewFile file{archive.completeBaseName().toStdString(), storeArchive(path, suffix),
                       suffix.toStdString()};
    const int userId = currentUserId();
    const std::string fileGuid = makeOrigFile(file, target, userId);
    if (suffix == Kos) {
        markImportedAndPassed(fileGuid, target, userId);
        if (stillThere)
            execCAMRobot();
    }
    updateRow(target, file.storedName, userId, name);
}

void DMS_ModifyFile_Widget::l2FoldersSingleImport(QString, QString name, QString folder)
{
    const Target target{m_Id.toInt(), m_CustomerCode.toStdString(), m_FlowGuid.toStdString()};
    const NewFile file{name.toStdString(), storeFolder(folder), std::string()};
    const int userId = currentUserId();
    makeOrigFile(file, target, userId);
    updateRow(target, file.storedName, userId, name);
}

/// The job is named as the job-flow desk shows it.
void DMS_ModifyFile_Widget::execCAMRobot()
{
    CamRobotRequest(m_CustomerCode + m_SerialNumber, false).send();
}

} // namespace KODMS::UI
