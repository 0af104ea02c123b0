// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filterlineedit.h"

#include "edits/translatedtexts_p.h"

#include <QIcon>

namespace {

QIcon clearIcon(Qt::LayoutDirection direction)
{
    // Deliberate: the names are the directions' opposites.
    const QString name = direction == Qt::LeftToRight
        ? QStringLiteral("edit-clear-locationbar-rtl")
        : QStringLiteral("edit-clear-locationbar-ltr");
    const QIcon own(QStringLiteral(":/icons/drovik/16x16/editclear.png"));
    return QIcon::fromTheme(name, QIcon::fromTheme(QStringLiteral("edit-clear"), own));
}

} // namespace

FilterLineEdit::FilterLineEdit(QWidget *parent)
    : FancyLineEdit(parent)
    , m_lastFilterText(text())
{
    Q_INIT_RESOURCE(vantix); // with a static library
    setButtonPixmap(Right, clearIcon(layoutDirection()).pixmap(QSize(16, 16)));
    setButtonVisible(Right, true);
    TranslatedTexts::show(this, "placeholderText", staticMetaObject, QT_TR_NOOP("Find"));
    TranslatedTexts::show(this, "accessibleName", staticMetaObject, QT_TR_NOOP("Find"));
    auto *clearButton = findChildren<IconButton *>(Qt::FindDirectChildrenOnly).at(Right);
    TranslatedTexts::show(clearButton, "toolTip", staticMetaObject, QT_TR_NOOP("Clear"));
    setAutoHideButton(Right, true);
    connect(this, SIGNAL(rightButtonClicked()), this, SLOT(clear()));
    connect(this, SIGNAL(textChanged(QString)), this, SLOT(slotTextChanged()));
}

FilterLineEdit::~FilterLineEdit() = default;

void FilterLineEdit::slotTextChanged()
{
    const QString now = text();
    if (now == m_lastFilterText)
        return;
    m_lastFilterText = now;
    Q_EMIT filterChanged(now); // a slot may change the text again, or destroy the field
}
