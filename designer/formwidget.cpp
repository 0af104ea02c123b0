// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "formwidget.h"

#include <qprogressindicator.h>

#include <QIcon>

FormWidget::FormWidget(const Description &description)
    : m_description(description)
{
}

bool FormWidget::isContainer() const
{
    return false;
}

bool FormWidget::isInitialized() const
{
    return m_initialized;
}

void FormWidget::initialize(QDesignerFormEditorInterface *editor)
{
    m_initialized = editor != nullptr;
}

QIcon FormWidget::icon() const
{
    return QIcon(QStringLiteral(":/vantixdesigner/%1.png").arg(m_description.icon));
}

QString FormWidget::domXml() const
{
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y>"
                          "<width>%3</width><height>%4</height></rect></property></widget></ui>")
        .arg(m_description.className, m_description.objectName)
        .arg(m_description.size.width())
        .arg(m_description.size.height());
}

QString FormWidget::group() const
{
    return QStringLiteral("Vantix");
}

QString FormWidget::includeFile() const
{
    return m_description.header;
}

QString FormWidget::name() const
{
    return m_description.className;
}

QString FormWidget::toolTip() const
{
    return m_description.toolTip;
}

QString FormWidget::whatsThis() const
{
    return m_description.toolTip;
}

QWidget *FormWidget::createWidget(QWidget *parent)
{
    QWidget *widget = m_description.create(parent);
    auto *indicator = qobject_cast<QProgressIndicator *>(widget);
    if (m_initialized && indicator != nullptr)
        indicator->startAnimation();
    return widget;
}
