// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"

#include "desks/modifyfile/ImportMode.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>

namespace KODMS::UI {

namespace {

constexpr char Archives[] = "(*.tgz *.tar *.zip *.rar *.kos)";

/// The last component of a path, without what follows its last dot; all of it when
/// it has no dot.
QString baseName(const QString &path)
{
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    return name.left(name.lastIndexOf(QLatin1Char('.')));
}

QString folderName(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

/// The dialog is made on the heap: it is a child of this window, which may be
/// deleted while the dialog waits.
void DMS_ModifyFile_Widget::on_m_pOpenFilePB_clicked()
{
    const QPointer<QFileDialog> dialog =
        new QFileDialog(this, tr("Import"), QStringLiteral("./"),
                        tr("ODB++") + QLatin1String(Archives)); // no blank between
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setViewMode(QFileDialog::Detail);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    if (isAccepted) {
        const QString path = dialog->selectedFiles().first();
        setChosen(ImportMode::File, path, baseName(path));
    }
    delete dialog;
}

void DMS_ModifyFile_Widget::on_m_pOpenDirPB_clicked()
{
    const QPointer<DMS_ModifyFile_Widget> stillThere(this);
    const QString folder = QFileDialog::getExistingDirectory(nullptr, tr("Open Dir"), tr("c:/"),
                                                             QFileDialog::ShowDirsOnly);
    if (stillThere && !folder.isEmpty())
        setChosen(ImportMode::Folder, folder, folderName(folder));
}

void DMS_ModifyFile_Widget::setChosen(int mode, const QString &path, const QString &name)
{
    m_Mode = mode;
    m_ChosenPath = path;
    m_pPathLE->setText(path);
    m_pNameLE->setText(name);
}

} // namespace KODMS::UI
