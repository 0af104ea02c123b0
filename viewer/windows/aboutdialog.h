// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ABOUTDIALOG_H
#define ABOUTDIALOG_H

#include <QDialog>

//! What the program is, in which version, and by whose leave it uses what.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent);

private:
    QWidget *createHead();
    QWidget *createParts();
};

#endif // ABOUTDIALOG_H
