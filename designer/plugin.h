// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PLUGIN_H
#define PLUGIN_H

#include "formwidget.h"

#include <memory>
#include <vector>

//! The plugin: all widgets of the library that stand in forms.
class VantixDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit VantixDesignerPlugin(QObject *parent = nullptr);

    //! They belong to the plugin.
    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    std::vector<std::unique_ptr<FormWidget>> m_widgets;
};

#endif // PLUGIN_H
