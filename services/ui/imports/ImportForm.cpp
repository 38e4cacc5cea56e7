// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/imports/ImportForm.h"

#include "services/ui/imports/ImportDropArea.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMap>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace KODMS::Services {

namespace {

QLabel *plainLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

/// "SIGNAL 4, DRILL 1": how many rows there are of each type.
QString typesText(const OdbJob &job)
{
    QMap<QString, int> counts;
    for (const OdbLayer &layer : job.layers)
        ++counts[layer.type];
    QStringList texts;
    for (auto type = counts.cbegin(); type != counts.cend(); ++type)
        texts << QStringLiteral("%1 %2").arg(type.key()).arg(type.value());
    return texts.join(QStringLiteral("，"));
}

} // namespace

ImportForm::ImportForm(ImportKind kind, QWidget *parent)
    : QWidget(parent), m_kind(kind), m_target(plainLabel(QStringLiteral("importTarget"), this)),
      m_drop(new ImportDropArea(this)), m_scroll(new QScrollArea(this)),
      m_message(plainLabel(QStringLiteral("importMessage"), this))
{
    buildLayout();
    setAcceptDrops(true);
    connect(m_drop, &ImportDropArea::chosen, this, &ImportForm::pathChosen);
    connect(m_drop, &ImportDropArea::refused, this,
            [this](const QString &why) { showMessage(why, true); });
    showNothing();
}

void ImportForm::buildLayout()
{
    m_scroll->setObjectName(QStringLiteral("importDetails"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    QFont heading = font();
    heading.setBold(true);
    m_target->setFont(heading);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_target);
    column->setSpacing(10);
    column->addWidget(m_drop);
    column->addWidget(m_scroll);
    column->addWidget(m_message);
    column->addWidget(buildButtons());
    setFocusProxy(m_drop);
}

QWidget *ImportForm::buildButtons()
{
    auto *buttons = new QWidget(this);
    m_import = new QPushButton(tr("导入(&I)"), buttons);
    m_import->setObjectName(QStringLiteral("importJob"));
    m_close = new QPushButton(tr("关闭(&C)"), buttons);
    m_close->setObjectName(QStringLiteral("closeImport"));
    auto *row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    row->addWidget(m_import);
    row->addWidget(m_close);
    connect(m_import, &QPushButton::clicked, this, &ImportForm::importRequested);
    connect(m_close, &QPushButton::clicked, this, &ImportForm::closeRequested);
    return buttons;
}

void ImportForm::showTarget(const UI::Import_Info &info)
{
    const QString what = m_kind == ImportKind::RobotResult ? tr("导入机器人结果") : tr("导入料号");
    m_target->setText(info.origJobName.isEmpty()
                          ? tr("%1：%2").arg(what, info.jobName)
                          : tr("%1：%2（原始料名 %3）").arg(what, info.jobName, info.origJobName));
}

/// The rows become the content of the scrolled part, in place of what was there.
void ImportForm::showDetails(const QVector<Detail> &details)
{
    auto *page = new QWidget;
    auto *rows = new QFormLayout(page);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setHorizontalSpacing(20);
    rows->setVerticalSpacing(8);
    for (const Detail &detail : details) {
        QLabel *value = plainLabel(QLatin1String(detail.name), page);
        value->setText(detail.text);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        value->setAccessibleName(detail.title);
        value->setAlignment(Qt::AlignTop);
        auto *title = new QLabel(detail.title, page);
        title->setObjectName(QStringLiteral("importDetailTitle"));
        title->setAlignment(Qt::AlignTop);
        title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        rows->addRow(title, value);
    }
    m_scroll->setWidget(page); // deletes the one before
    page->show();
    m_scroll->setVisible(!details.isEmpty());
    m_drop->setCompact(!details.isEmpty());
}

void ImportForm::showNothing()
{
    showDetails({});
    m_drop->showPath(QString());
    m_hasJob = false;
    m_import->setEnabled(false);
    showMessage(QString(), false);
}

void ImportForm::showJob(const ReadJob &read)
{
    const QLocale locale;
    const OdbJob &job = read.job;
    m_drop->showPath(read.path);
    showDetails(
        {{tr("料名"), job.name, "importJobName"},
         {tr("步骤"), job.steps.join(QStringLiteral("，")), "importSteps"},
         {tr("层数"), tr("%1（矩阵 %2 行）").arg(job.layerCount()).arg(job.layers.size()),
          "importLayers"},
         {tr("各类型层"), typesText(job), "importLayerTypes"},
         {tr("特征数"), locale.toString(job.featureCount), "importFeatures"},
         {tr("大小"), tr("%1，%2 个文件").arg(locale.formattedDataSize(read.size)).arg(job.files),
          "importSize"}});
    m_hasJob = true;
    m_import->setEnabled(true);
    showMessage(QString(), false);
}

void ImportForm::showRefusal(const QString &path, const QString &why)
{
    showNothing();
    m_drop->showPath(path);
    showMessage(why, true);
}

void ImportForm::showMessage(const QString &text, bool isError)
{
    say(text, isError);
}

void ImportForm::showAbandoned(const QString &text)
{
    say(text, {});
}

/// A host's sheet may paint a success and an error in colours of their own; a text that
/// is neither has no such property.
void ImportForm::say(const QString &text, const QVariant &isError)
{
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
    m_message->setProperty("isError", isError);
    QFont font = m_message->font();
    font.setBold(isError.toBool());
    m_message->setFont(font);
    style()->unpolish(m_message);
    style()->polish(m_message);
}

void ImportForm::dragEnterEvent(QDragEnterEvent *event)
{
    m_drop->dragEnterEvent(event);
}

void ImportForm::dragLeaveEvent(QDragLeaveEvent *event)
{
    m_drop->dragLeaveEvent(event);
}

void ImportForm::dropEvent(QDropEvent *event)
{
    m_drop->dropEvent(event);
}

void ImportForm::setWorking(bool isWorking)
{
    m_drop->setEnabled(!isWorking);
    m_import->setEnabled(!isWorking && m_hasJob);
    m_close->setEnabled(!isWorking);
}

} // namespace KODMS::Services
