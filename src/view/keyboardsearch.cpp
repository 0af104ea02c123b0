// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "keyboardsearch_p.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QItemSelectionModel>
#include <QTimerEvent>

namespace {

constexpr qint64 sliceLength = 40; // ms

const char *const endingSignals[] = {
    SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)),
    SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)),
    SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
    SIGNAL(columnsAboutToBeInserted(QModelIndex, int, int)),
    SIGNAL(columnsAboutToBeRemoved(QModelIndex, int, int)),
    SIGNAL(columnsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
    SIGNAL(
        layoutAboutToBeChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
    SIGNAL(modelAboutToBeReset()),
    SIGNAL(destroyed()),
};

//! Whether a text is one character again and again, for which the current row does not
//! count.
bool isOneKey(const QString &text)
{
    return text.size() > 1 && text.count(text.back()) == text.size();
}

} // namespace

KeyboardSearch::KeyboardSearch(QAbstractItemView *view)
    : m_view(view)
{
}

void KeyboardSearch::type(const QString &text)
{
    const bool isNew = appendTyped(text);
    const QModelIndex current = m_view->currentIndex();
    begin(isOneKey(m_typed) || (isNew && current.isValid()));
    runSlice();
}

//! Returns whether \a text is the first of a new word.
bool KeyboardSearch::appendTyped(const QString &text)
{
    const bool continues = !text.isEmpty() && m_sinceTyped.isValid()
        && m_sinceTyped.elapsed() <= QApplication::keyboardInputInterval();
    m_sinceTyped.start();
    m_typed = continues ? m_typed + text : text;
    return !continues;
}

void KeyboardSearch::begin(bool skipsCurrent)
{
    m_model = m_view->model();
    const int rows = m_model ? m_model->rowCount() : 0;
    if (rows == 0 || m_model->columnCount() == 0)
        return;
    const QModelIndex current = m_view->currentIndex();
    const int row = current.isValid() ? current.row() : 0;
    m_row = skipsCurrent ? (row + 1) % rows : row;
    m_column = current.isValid() ? current.column() : 0;
    m_left = rows;
    ++m_serial;
    m_timer.start(0, this);
    listen(true);
}

void KeyboardSearch::end()
{
    if (!m_timer.isActive())
        return;
    m_timer.stop();
    listen(false);
}

void KeyboardSearch::listen(bool on)
{
    QItemSelectionModel *selection = m_view->selectionModel();
    if (selection) {
        disconnect(selection, SIGNAL(currentChanged(QModelIndex, QModelIndex)), this, SLOT(end()));
        if (on)
            connect(selection, SIGNAL(currentChanged(QModelIndex, QModelIndex)), SLOT(end()));
    }
    for (const char *signal : endingSignals) {
        if (m_model)
            disconnect(m_model, signal, this, SLOT(end()));
        if (m_model && on)
            connect(m_model, signal, SLOT(end()));
    }
}

void KeyboardSearch::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer.timerId())
        runSlice();
    else
        QObject::timerEvent(event);
}

//! Looks at rows until one is found, none is left or the time is up.
void KeyboardSearch::runSlice()
{
    QElapsedTimer timer;
    timer.start();
    const QPointer<KeyboardSearch> self(this);
    const quint64 serial = m_serial; // the model may begin another search
    while (self && isRunning() && m_serial == serial) {
        if (m_left == 0) {
            end();
            return;
        }
        const QModelIndex found = takeNext();
        if (found.isValid()) {
            end();
            m_view->setCurrentIndex(found);
            return;
        }
        if (timer.elapsed() >= sliceLength)
            return;
    }
}

//! The next row, if it is a match. The model may do anything when it is asked for it.
QModelIndex KeyboardSearch::takeNext()
{
    const QModelIndex index = m_model->index(m_row, m_column);
    m_row = m_row + 1 < m_model->rowCount() ? m_row + 1 : 0;
    --m_left;
    const QPointer<KeyboardSearch> self(this);
    const QString text = index.data(Qt::DisplayRole).toString();
    if (!self || !isRunning() || !text.startsWith(m_typed, Qt::CaseInsensitive)
        || !(index.flags() & Qt::ItemIsEnabled) || !self || !isRunning())
        return {};
    return index;
}
