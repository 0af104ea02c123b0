// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "plugin.h"

#include <filterlineedit.h>
#include <itemviewfindtoolbar.h>
#include <qprogressindicator.h>
#include <qtablefastview.h>

namespace {

template<typename Widget> QWidget *create(QWidget *parent)
{
    return new Widget(parent);
}

std::vector<FormWidget::Description> descriptions()
{
    return {
        {QStringLiteral("QTableFastView"), QStringLiteral("tableView"),
         QStringLiteral("qtablefastview.h"), QStringLiteral("view"),
         QStringLiteral("A table for flat models of any size whose rows change all the time"),
         QSize(256, 192), create<QTableFastView>},
        {QStringLiteral("FancyLineEdit"), QStringLiteral("lineEdit"),
         QStringLiteral("fancylineedit.h"), QStringLiteral("edit"),
         QStringLiteral("A line edit that may have a button inside its frame at either end"),
         QSize(128, 24), create<FancyLineEdit>},
        {QStringLiteral("FilterLineEdit"), QStringLiteral("filterEdit"),
         QStringLiteral("filterlineedit.h"), QStringLiteral("filter"),
         QStringLiteral("A search field with a clear button that appears with the text"),
         QSize(128, 24), create<FilterLineEdit>},
        {QStringLiteral("ItemViewFindToolBar"), QStringLiteral("findToolBar"),
         QStringLiteral("itemviewfindtoolbar.h"), QStringLiteral("bar"),
         QStringLiteral("A panel to find and filter rows of an item view"), QSize(480, 32),
         create<ItemViewFindToolBar>},
        {QStringLiteral("QProgressIndicator"), QStringLiteral("busyIndicator"),
         QStringLiteral("qprogressindicator.h"), QStringLiteral("busy"),
         QStringLiteral("A turning ring that tells that something is going on"), QSize(20, 20),
         create<QProgressIndicator>},
    };
}

} // namespace

VantixDesignerPlugin::VantixDesignerPlugin(QObject *parent)
    : QObject(parent)
{
    for (const FormWidget::Description &description : descriptions())
        m_widgets.push_back(std::make_unique<FormWidget>(description));
}

QList<QDesignerCustomWidgetInterface *> VantixDesignerPlugin::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface *> widgets;
    for (const auto &widget : m_widgets)
        widgets.append(widget.get());
    return widgets;
}
