// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datawindow.h"

#include "datastate.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>

#include <initializer_list>
#include <utility>

namespace {

constexpr int s_fitDelay = 150;    // ms
constexpr int s_longestValue = 24; // characters in a menu

QString shortened(QString value)
{
    value = value.simplified();
    if (value.size() > s_longestValue)
        value = value.left(s_longestValue) + QChar(0x2026);
    return value.replace(u'&', QLatin1String("&&"));
}

QLabel *createLabel(QWidget *parent, const char *name)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(1); // long texts make no wide window
    return label;
}

} // namespace

DataWindow::DataWindow(const DataSource &source, FrameStatistics *statistics)
    : ViewerWindow(statistics)
{
    if (source.engine == DataEngine::Sqlite)
        setWindowFilePath(source.database);
    setWindowTitle(source.name());
    createTableBox();
    createWherePanel();
    createStatusBar();
    table()->useTextFont();
    setModel(&m_model, Edge::End);
    setFollowing(false);
    m_lookTimer.setSingleShot(true);
    connect(&m_lookTimer, &QTimer::timeout, this, &DataWindow::look);
    m_fitTimer.setSingleShot(true);
    m_fitTimer.setInterval(s_fitDelay);
    connect(&m_fitTimer, &QTimer::timeout, table(), &ViewerTable::growColumns);
    const QScrollBar *bar = table()->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &DataWindow::lookSoon);
    connect(bar, &QScrollBar::rangeChanged, this, &DataWindow::lookSoon);
    connect(&m_model, &DataModel::dataChanged, this, [this] { m_fitTimer.start(); });
    connect(&m_model, &DataModel::statusChanged, this, &DataWindow::showStatus);
    connect(&m_model, &DataModel::tableOpened, this, &DataWindow::tableOpened);
    connect(&m_model, &DataModel::summed, this, &DataWindow::showSums);
    connect(&m_model, &DataModel::filterRefused, this, &DataWindow::showRefusal);
    connect(&m_model, &DataModel::passwordNeeded, this, &DataWindow::askPassword);
    m_model.open(source);
}

DataWindow::~DataWindow()
{
    disconnect(&m_model, nullptr, this, nullptr);
    m_model.cancel();
    removeModel();
}

bool DataWindow::isSettled() const
{
    return m_isSettled;
}

bool DataWindow::hasFailed() const
{
    return m_model.state() == DataModel::State::Failed;
}

PageState DataWindow::state() const
{
    if (m_awaited)
        return *m_awaited;
    PageState state = ViewerWindow::state();
    state.path = m_model.source().text();
    state.own =
        DataState::of(m_model.source(), m_model.table(), m_model.filter(), m_model.order()).text();
    return state;
}

void DataWindow::restore(const PageState &state)
{
    m_awaited = state;
    m_model.open(DataState::fromText(state.own).chosen(m_model.source()));
}

//! The order and the filter are the engine's: without a table there is nobody to tell.
void DataWindow::restoreRows()
{
    if (!m_awaited)
        return;
    PageState state = *std::exchange(m_awaited, {});
    const DataState rows = DataState::fromText(state.own);
    state.sortColumn = rows.orderFor(m_model.table());
    m_model.setFilter(rows.filterFor(m_model.table()));
    m_where->setText(rows.where);
    ViewerWindow::restore(state);
}

void DataWindow::createTableBox()
{
    m_tableBox = new QComboBox(this);
    m_tableBox->setObjectName(QStringLiteral("tableBox"));
    m_tableBox->setToolTip(tr("Tables and views of the database"));
    m_tableBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    toolBar()->addSeparator();
    toolBar()->addWidget(m_tableBox);
    connect(m_tableBox, &QComboBox::textActivated, this, &DataWindow::showTableNamed);
}

void DataWindow::createWherePanel()
{
    m_wherePanel = new QToolBar(tr("Condition"), this);
    m_wherePanel->setObjectName(QStringLiteral("wherePanel"));
    m_wherePanel->setMovable(false);
    m_where = new QLineEdit(m_wherePanel);
    m_where->setObjectName(QStringLiteral("whereField"));
    m_where->setFont(table()->font());
    m_where->setClearButtonEnabled(true);
    m_where->setPlaceholderText(tr("A condition in the language of the database, such as: "
                                   "price > 100 AND symbol LIKE 'A%'"));
    m_refusal = createLabel(m_wherePanel, "refusalLabel");
    m_refusal->setWordWrap(true);
    auto *page = new QWidget(m_wherePanel);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *line = new QHBoxLayout;
    line->addWidget(new QLabel(QStringLiteral("WHERE"), page));
    line->addWidget(m_where);
    layout->addLayout(line);
    layout->addWidget(m_refusal);
    m_refusal->hide();
    m_wherePanel->addWidget(page);
    m_wherePanel->hide();
    addToolBar(Qt::BottomToolBarArea, m_wherePanel);
    connect(m_where, &QLineEdit::returnPressed, this, [this] { filterWhere(m_where->text()); });
    auto *action = new QAction(tr("Con&dition…"), this);
    action->setObjectName(QStringLiteral("whereAction"));
    action->setIconText(tr("Condition"));
    action->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_W);
    action->setToolTip(tr("Show only the rows that meet a condition (Ctrl+Shift+W)"));
    connect(action, &QAction::triggered, this, [this] {
        m_wherePanel->show();
        m_where->setFocus();
        m_where->selectAll();
    });
    viewMenu()->addAction(action);
    toolBar()->addAction(action);
}

void DataWindow::createStatusBar()
{
    m_activityLabel = createLabel(this, "activityLabel");
    m_columnSums = createLabel(this, "columnSumsLabel");
    m_rowsLabel = createLabel(this, "rowsLabel");
    m_memoryLabel = createLabel(this, "memoryLabel");
    m_memoryLabel->setToolTip(tr("Memory that the rows take that are kept"));
    m_columnSums->hide();
    statusBar()->addWidget(m_activityLabel, 1);
    for (QLabel *label : {m_columnSums, m_rowsLabel, m_memoryLabel})
        statusBar()->addPermanentWidget(label);
}

void DataWindow::showTableNamed(const QString &name)
{
    DataSource source = m_model.source();
    source.table = name;
    source.sql.clear();
    source.key.clear();
    m_isSettled = false;
    m_awaited.reset();
    m_columnSums->hide();
    m_model.open(source);
    updateFilterBar();
}

void DataWindow::filterWhere(const QString &where)
{
    m_refusal->hide();
    m_where->setText(where);
    DataFilter filter = m_model.filter();
    filter.where = where.trimmed();
    m_model.setFilter(filter);
    table()->scrollToTop();
    updateFilterBar();
}

void DataWindow::filterMore(const DataCondition &condition)
{
    DataFilter filter = m_model.filter();
    filter.conditions.removeAll(condition);
    filter.conditions.append(condition);
    m_model.setFilter(filter);
    table()->scrollToTop();
    updateFilterBar();
}

void DataWindow::sumColumn(int column)
{
    m_columnSums->setText(tr("Adding up…"));
    m_columnSums->show();
    m_model.sum(column);
}

void DataWindow::addCellActions(QMenu *menu, const QModelIndex &index)
{
    const int column = index.column();
    addConditions(menu->addMenu(tr("Only Rows &Where")), index);
    const DataColumn &kind = m_model.table().columns.at(column);
    if (kind.isNumeric)
        menu->addAction(tr("&Add Up “%1”").arg(shortened(kind.name)), this,
                        [this, column] { sumColumn(column); });
}

void DataWindow::addConditions(QMenu *menu, const QModelIndex &index)
{
    using Is = DataCondition::Is;
    const DataCell cell = m_model.cell(index.row(), index.column());
    const QString name = shortened(m_model.table().columns.at(index.column()).name);
    const bool isNumber = cell.kind() == DataCell::Kind::Number;
    const auto add = [&](const QString &text, Is is) {
        const DataCondition condition {index.column(), is, cell.text(), isNumber};
        menu->addAction(text, this, [this, condition] { filterMore(condition); });
    };
    if (isNumber || cell.kind() == DataCell::Kind::Text) {
        const QString value = shortened(cell.text());
        add(name + QLatin1String(" = ") + value, Is::Equal);
        add(name + QStringLiteral(" ≠ ") + value, Is::NotEqual);
        add(name + QStringLiteral(" ≥ ") + value, Is::AtLeast);
        add(name + QStringLiteral(" ≤ ") + value, Is::AtMost);
        menu->addSeparator();
    }
    const DataCondition isNull {index.column(), Is::Null, {}, false};
    const DataCondition notNull {index.column(), Is::NotNull, {}, false};
    menu->addAction(name + QLatin1String(" = NULL"), this, [this, isNull] { filterMore(isNull); });
    menu->addAction(name + QStringLiteral(" ≠ NULL"), this,
                    [this, notNull] { filterMore(notNull); });
}

void DataWindow::lookSoon()
{
    if (!m_lookTimer.isActive())
        m_lookTimer.start(0);
}

//! The rows on screen are wanted.
void DataWindow::look()
{
    const int first = qMax(0, table()->firstSeenRow());
    const int shown = table()->viewport()->height() / qMax(1, table()->rowHeight()) + 1;
    m_model.setVisible(first, first + shown);
}

void DataWindow::resizeEvent(QResizeEvent *event)
{
    ViewerWindow::resizeEvent(event);
    lookSoon();
}

void DataWindow::showEvent(QShowEvent *event)
{
    ViewerWindow::showEvent(event);
    lookSoon();
}

void DataWindow::filterChanged()
{
    lookSoon();
}

void DataWindow::tableOpened()
{
    const DataSource &source = m_model.source();
    const QSignalBlocker quiet(m_tableBox);
    m_tableBox->clear();
    m_tableBox->addItems(m_model.tables());
    if (source.sql.isEmpty()) {
        m_tableBox->setCurrentText(source.table);
    } else {
        m_tableBox->insertItem(0, m_model.table().name);
        m_tableBox->setCurrentIndex(0);
    }
    const QString name = source.sql.isEmpty() ? source.table : m_model.table().name;
    setWindowTitle(tr("%1 — %2").arg(name, source.name()));
    m_where->clear();
    restoreRows();
    updateFilterBar();
    lookSoon();
}

void DataWindow::showStatus()
{
    const bool isEmpty = m_model.columnCount() == 0;
    if (isEmpty)
        showProblem();
    else
        showTable();
    m_rowsLabel->setText(isEmpty ? QString() : m_model.rowsText());
    m_memoryLabel->setText(isEmpty ? QString() : QLocale().formattedDataSize(m_model.memory()));
    m_activityLabel->setText(activityText());
    m_activityLabel->setToolTip(m_activityLabel->text());
    if (m_model.isFiltered())
        updateFilterBar();
    const bool isThere = m_model.state() == DataModel::State::Failed
        || m_model.state() == DataModel::State::Waiting || m_model.isIdle();
    if (isThere && !std::exchange(m_isSettled, true))
        Q_EMIT settled();
}

//! In place of a table of which nothing is known.
void DataWindow::showProblem()
{
    const DataProblem &problem = m_model.problem();
    showMessage(problem ? tr("%1 cannot be shown.\n\n%2").arg(m_model.source().name(), problem.text)
                        : tr("Opening…"));
}

QString DataWindow::activityText() const
{
    const DataProblem &problem = m_model.problem();
    if (m_model.state() == DataModel::State::Waiting)
        return tr("Not connected, tried again: %1").arg(problem.text.simplified());
    if (problem)
        return problem.text.simplified();
    if (m_model.isCopying())
        return tr("Without a key: is read into a temporary file…");
    if (m_model.isCopy())
        return tr("Without a key: shows a temporary copy");
    return m_model.isCounted() ? QString() : tr("Counting…");
}

void DataWindow::showSums(const DataReads::Sums &sums)
{
    const QString name = shortened(m_model.table().columns.value(sums.column).name);
    QString text;
    if (sums.problem)
        text = sums.problem.text.simplified();
    else if (sums.numbers == 0)
        text = tr("There are no numbers in “%1”.").arg(name);
    else
        text = tr("%1: Count %L2   Sum %3   Min %4   Max %5")
                   .arg(name)
                   .arg(sums.numbers)
                   .arg(sums.isExact ? sums.sum : tr("too long"), sums.minimum, sums.maximum);
    m_columnSums->setVisible(sums.problem.kind != DataProblem::Kind::Cancelled);
    m_columnSums->setText(text);
    m_columnSums->setToolTip(text);
}

void DataWindow::showRefusal(const QString &reason)
{
    m_wherePanel->show();
    m_refusal->setText(reason);
    m_refusal->show();
    updateFilterBar();
}

void DataWindow::askPassword()
{
    auto *dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Password"));
    dialog->setLabelText(tr("Password for %1:").arg(m_model.source().name()));
    dialog->setTextEchoMode(QLineEdit::Password);
    connect(dialog, &QInputDialog::textValueSelected, this, [this](const QString &password) {
        DataSource source = m_model.source();
        source.password = password;
        m_model.open(source);
    });
    dialog->open();
}
