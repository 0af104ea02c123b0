// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FILTERLINEEDIT_H
#define FILTERLINEEDIT_H

#include "fancylineedit.h"

/*!
 * \brief A search field: a line edit with a clear button that appears with the text.
 *
 * The clear button is the button of Right, and takes its picture from the icon theme,
 * or from the library where the theme has none. Its texts follow the language, unless a
 * program has set others. GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT FilterLineEdit : public FancyLineEdit
{
    Q_OBJECT

public:
    //! An empty field; \a parent as in QWidget.
    explicit FilterLineEdit(QWidget *parent = nullptr);
    ~FilterLineEdit() override;

Q_SIGNALS:
    //! The text is no longer what it was when this was last sent; upper and lower case
    //! differ.
    void filterChanged(const QString &text);

private Q_SLOTS:
    void slotTextChanged();

private:
    QString m_lastFilterText; //!< as last announced
};

#endif // FILTERLINEEDIT_H
