// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FORMWIDGET_H
#define FORMWIDGET_H

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/*!
 * \brief What Qt Designer, and programs that load forms, are told of one class.
 *
 * Properties need not be told: Designer groups them by the classes that declare them.
 */
class FormWidget : public QDesignerCustomWidgetInterface
{
public:
    //! A class and what is said of it.
    struct Description
    {
        QString className;                   //!< as in C++
        QString objectName;                  //!< of the first one in a form
        QString header;                      //!< that declares it
        QString icon;                        //!< without folder and suffix
        QString toolTip;                     //!< what it is
        QSize size;                          //!< in a form, at first
        QWidget *(*create)(QWidget *parent); //!< makes one
    };

    explicit FormWidget(const Description &description);

    bool isContainer() const override;
    //! Whether this runs in Designer: programs that load forms do not initialize.
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *editor) override;

    QIcon icon() const override;
    QString domXml() const override;
    QString group() const override;
    QString includeFile() const override;
    QString name() const override;
    QString toolTip() const override;
    QString whatsThis() const override;

    //! One of the class; it belongs to \a parent. A busy indicator turns in Designer, where it
    //! could not be seen otherwise.
    QWidget *createWidget(QWidget *parent) override;

private:
    Description m_description;
    bool m_initialized = false; //!< by Designer
};

#endif // FORMWIDGET_H
