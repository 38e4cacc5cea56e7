// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/AccessibleNames.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QTableView>
#include <QWidget>

namespace KODMS::Host {

namespace {

const char *nameFor(const QString &objectName)
{
    static const QHash<QString, const char *> names{
        {QStringLiteral("m_pJobFilterLE"), QT_TRANSLATE_NOOP("AccessibleNames", "按料号名称筛选")},
        {QStringLiteral("m_pLayerFilterLE"), QT_TRANSLATE_NOOP("AccessibleNames", "按板层筛选")},
        {QStringLiteral("m_pFeatureFilterLE"),
         QT_TRANSLATE_NOOP("AccessibleNames", "按 feature 数筛选")},
        {QStringLiteral("m_pPrerFilterLE"), QT_TRANSLATE_NOOP("AccessibleNames", "按前处理人筛选")},
        {QStringLiteral("m_pCheckerFilterLE"), QT_TRANSLATE_NOOP("AccessibleNames", "按批号筛选")},
        {QStringLiteral("m_pStatusFilterCMB"), QT_TRANSLATE_NOOP("AccessibleNames", "按状态筛选")},
        {QStringLiteral("m_pFilterLE"), QT_TRANSLATE_NOOP("AccessibleNames", "搜索内容")},
        {QStringLiteral("m_pFilterCMB"), QT_TRANSLATE_NOOP("AccessibleNames", "搜索哪一项")},
        {QStringLiteral("m_pAssignerCMB"), QT_TRANSLATE_NOOP("AccessibleNames", "指派给")},
        {QStringLiteral("m_pJobTableWidget"), QT_TRANSLATE_NOOP("AccessibleNames", "料号列表")},
        {QStringLiteral("m_pQuestionTableWidget"),
         QT_TRANSLATE_NOOP("AccessibleNames", "所选料号的问题")},
        {QStringLiteral("m_pGotoPageLE"), QT_TRANSLATE_NOOP("AccessibleNames", "页码")},
        {QStringLiteral("m_pPathLE"), QT_TRANSLATE_NOOP("AccessibleNames", "文件或文件夹的路径")},
        {QStringLiteral("m_pNameLE"), QT_TRANSLATE_NOOP("AccessibleNames", "名称")}};
    return names.value(objectName, nullptr);
}

QString spoken(const char *text)
{
    return QCoreApplication::translate("AccessibleNames", text);
}

bool isCorner(const QWidget &widget)
{
    return qobject_cast<const QAbstractButton *>(&widget) &&
           qobject_cast<const QTableView *>(widget.parent());
}

} // namespace

AccessibleNames::AccessibleNames(QObject *parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

void AccessibleNames::apply(QWidget &widget)
{
    if (!widget.accessibleName().isEmpty())
        return;
    if (const char *name = nameFor(widget.objectName()))
        widget.setAccessibleName(spoken(name));
    else if (isCorner(widget))
        widget.setAccessibleName(spoken(QT_TRANSLATE_NOOP("AccessibleNames", "全选")));
}

bool AccessibleNames::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Polish && watched->isWidgetType())
        apply(*static_cast<QWidget *>(watched));
    return QObject::eventFilter(watched, event);
}

} // namespace KODMS::Host
