// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "detailpane.h"

#include "ansitext.h"
#include "basics/contrast.h"
#include "basics/textfont.h"
#include "rowdetails.h"

#include <QAbstractItemView>
#include <QAction>
#include <QEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCharFormat>
#include <QTextCursor>

#include <utility>

namespace {

constexpr qsizetype s_longLine = 10000; // characters; of longer ones words take too long to find

constexpr qsizetype s_mostRuns = 5000; // of other looks; the rest is shown without

QTextCharFormat formatOf(const AnsiText::Look &look, const QPalette &palette)
{
    const QColor paper = palette.color(QPalette::Base);
    QColor text = look.text.isValid() ? look.text : palette.color(QPalette::Text);
    QColor background = look.background.isValid() ? look.background : paper;
    if (look.isInverse)
        std::swap(text, background);
    QTextCharFormat format;
    format.setForeground(readable(text, background));
    if (background != paper)
        format.setBackground(background);
    format.setFontWeight(look.isBold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(look.isItalic);
    format.setFontUnderline(look.isUnderlined);
    format.setFontStrikeOut(look.isStruckOut);
    return format;
}

bool hasLongLine(const QString &text)
{
    qsizetype begin = 0;
    while (text.size() - begin > s_longLine) {
        const qsizetype end = text.indexOf(u'\n', begin);
        if (end < 0 || end - begin > s_longLine)
            return true;
        begin = end + 1;
    }
    return false;
}

//! Has its own keys to copy and to select all, though the window has them, too.
class RowText : public QPlainTextEdit
{
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ShortcutOverride) {
            const auto *key = static_cast<QKeyEvent *>(event);
            if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
                event->accept();
                return true;
            }
        }
        return QPlainTextEdit::event(event);
    }
};

} // namespace

DetailPane::DetailPane(QAbstractItemView *table, QWidget *parent)
    : QDockWidget(parent)
    , m_table(table)
    , m_text(new RowText(this))
{
    setObjectName(QStringLiteral("detailPane"));
    setWindowTitle(tr("Row"));
    toggleViewAction()->setText(tr("&Row"));
    toggleViewAction()->setShortcut(Qt::CTRL | Qt::Key_D);
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setUndoRedoEnabled(false);
    useTextFont();
    setWidget(m_text);
    hide();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &DetailPane::showRow);
    followTable();
}

void DetailPane::useTextFont()
{
    m_text->setFont(TextFont::font());
}

void DetailPane::followTable()
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    if (m_choice)
        disconnect(m_choice, nullptr, this, nullptr);
    m_model = m_table->model();
    m_choice = m_table->selectionModel();
    if (m_choice)
        connect(m_choice, SIGNAL(currentChanged(QModelIndex, QModelIndex)), this, SLOT(schedule()));
    if (m_model) {
        connect(m_model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)), this,
                SLOT(dataChanged(QModelIndex, QModelIndex)));
        for (const char *signal :
             {SIGNAL(modelReset()), SIGNAL(layoutChanged()),
              SIGNAL(rowsRemoved(QModelIndex, int, int)),
              SIGNAL(columnsInserted(QModelIndex, int, int)),
              SIGNAL(columnsRemoved(QModelIndex, int, int)),
              SIGNAL(headerDataChanged(Qt::Orientation, int, int)), SIGNAL(destroyed())})
            connect(m_model, signal, this, SLOT(schedule()));
    }
    schedule();
}

void DetailPane::schedule()
{
    if (isVisible() && !m_timer.isActive())
        m_timer.start(0);
}

void DetailPane::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    const int row = m_table->currentIndex().row();
    if (row >= topLeft.row() && row <= bottomRight.row())
        schedule();
}

//! What was selected and where it was scrolled to stays while the row does.
void DetailPane::showRow()
{
    if (!isVisible())
        return;
    const QModelIndex current = m_table->currentIndex();
    const bool isSameRow = current.isValid() && m_shown.isValid()
        && m_shown.model() == current.model() && m_shown.row() == current.row();
    m_shown = current;
    const RowDetails details = current.isValid() ? rowDetails(current) : RowDetails();
    m_text->setPlaceholderText(current.isValid() ? QString() : tr("No row is chosen."));
    if (details.text == m_content)
        return;
    m_content = details.text;
    QScrollBar *bar = m_text->verticalScrollBar();
    const int scrolled = isSameRow ? bar->value() : 0;
    m_text->setLineWrapMode(details.isDump ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    m_text->setWordWrapMode(hasLongLine(details.text) ? QTextOption::WrapAnywhere
                                                      : QTextOption::WrapAtWordBoundaryOrAnywhere);
    showText(details.text);
    bar->setValue(scrolled);
}

//! As a terminal would, in colours that can be read here.
void DetailPane::showText(const QString &text)
{
    const AnsiText ansi(text);
    m_text->setPlainText(ansi.plain());
    QTextCursor cursor(m_text->document());
    for (const AnsiText::Run &run : ansi.runs().first(qMin(ansi.runs().size(), s_mostRuns))) {
        cursor.setPosition(int(run.begin));
        cursor.setPosition(int(run.end), QTextCursor::KeepAnchor);
        cursor.setCharFormat(formatOf(run.look, m_text->palette()));
    }
}

void DetailPane::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    schedule();
}

void DetailPane::changeEvent(QEvent *event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange)
        useTextFont();
    if (event->type() == QEvent::PaletteChange) {
        m_content.clear();
        schedule();
    }
}
