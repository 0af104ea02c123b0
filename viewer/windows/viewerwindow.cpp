// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "viewerwindow.h"

#include "common.h"
#include "detailpane.h"
#include "filterbar.h"
#include "framestatistics.h"
#include "rowexportdialog.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "selectionsums.h"
#include "viewertable.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QInputDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int s_mostCopiedRows = 100000;
constexpr int s_context = 3;           // rows around a found one
constexpr int s_growDelay = 150;       // ms
constexpr int s_filterDelay = 100;     // ms
constexpr double s_partOfScreen = 0.9; // leaves room for a window's frame

} // namespace

ViewerWindow::ViewerWindow(FrameStatistics *statistics)
    : m_pages(new QStackedWidget(this))
    , m_table(new ViewerTable(statistics, m_pages))
    , m_find(new TableFilter(m_table))
    , m_filterBar(new FilterBar(m_pages))
    , m_message(new QLabel(m_pages))
{
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->setMargin(style()->pixelMetric(QStyle::PM_LayoutLeftMargin));
    auto *page = new QWidget(m_pages);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_filterBar);
    layout->addWidget(m_table);
    m_pages->addWidget(page);
    m_pages->addWidget(m_message);
    setCentralWidget(m_pages);
    createActions();
    createFindActions();
    createMenus();
    createFindPanel();
    createRowPane();
    createSums();

    m_pinTimer.setSingleShot(true);
    m_growTimer.setSingleShot(true);
    m_growTimer.setInterval(s_growDelay);
    connect(&m_pinTimer, &QTimer::timeout, this, &ViewerWindow::keepToEdge);
    connect(&m_growTimer, &QTimer::timeout, m_table, &ViewerTable::growColumns);
    const QScrollBar *bar = m_table->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &ViewerWindow::barMoved);
    connect(bar, &QScrollBar::rangeChanged, this, [this] {
        if (isFollowing())
            m_pinTimer.start(0);
    });
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QWidget::customContextMenuRequested, this, &ViewerWindow::showContextMenu);
    connect(m_table, &ViewerTable::typed, this, &ViewerWindow::openFindWith);
    connect(m_table, &ViewerTable::rowPressed, this, [this] { setFollowing(false); });
    connect(m_table, &ViewerTable::rowReached, this, &ViewerWindow::rowReached);
    const QSize usual(fontMetrics().horizontalAdvance(u'x') * 150, fontMetrics().height() * 40);
    resize(usual.boundedTo(screen()->availableSize() * s_partOfScreen));
}

void ViewerWindow::createActions()
{
    m_followAction = new QAction(tr("&Follow"), this);
    m_followAction->setCheckable(true);
    m_followAction->setChecked(true);
    m_followAction->setShortcut(Qt::Key_F5);
    m_followAction->setToolTip(tr("Keep to the newest rows (F5)"));
    connect(m_followAction, &QAction::triggered, this, &ViewerWindow::setFollowing);

    m_copyAction = new QAction(tr("&Copy"), this);
    m_copyAction->setShortcut(QKeySequence::Copy);
    connect(m_copyAction, &QAction::triggered, this, &ViewerWindow::copySelection);
}

void ViewerWindow::createFindActions()
{
    m_findAction = new QAction(tr("&Find…"), this);
    m_findAction->setShortcuts(QKeySequence::Find);
    connect(m_findAction, &QAction::triggered, this, &ViewerWindow::openFind);

    // The panel has the same keys while the focus is inside.
    m_nextAction = new QAction(tr("Find &Next"), this);
    m_nextAction->setShortcuts(QKeySequence::FindNext);
    addTableAction(m_nextAction);
    m_prevAction = new QAction(tr("Find &Previous"), this);
    m_prevAction->setShortcuts(QKeySequence::FindPrevious);
    addTableAction(m_prevAction);
    m_filterAction = new QAction(tr("Fi&lter Rows"), this);
    m_filterAction->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
    m_filterAction->setCheckable(true);
    m_goToAction = new QAction(tr("&Go to Line…"), this);
    m_goToAction->setShortcut(Qt::CTRL | Qt::Key_G);
    connect(m_goToAction, &QAction::triggered, this, &ViewerWindow::goToLine);
    m_closeAction = new QAction(this);
    m_closeAction->setShortcut(Qt::Key_Escape);
    m_closeAction->setEnabled(false);
    addTableAction(m_closeAction);
}

void ViewerWindow::addTableAction(QAction *action)
{
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_pages->addAction(action);
}

void ViewerWindow::createFindPanel()
{
    m_findPanel = new FindPanel(m_find, this);
    m_findPanel->setWindowTitle(tr("Find"));
    m_findPanel->hide();
    addToolBar(Qt::BottomToolBarArea, m_findPanel);
    connect(m_nextAction, &QAction::triggered, this, [this] { findAgain(true); });
    connect(m_prevAction, &QAction::triggered, this, [this] { findAgain(false); });
    // A key that repeats would begin a search within the events of the one before.
    connect(m_findPanel, &FindPanel::readyChanged, m_nextAction, &QAction::setEnabled);
    connect(m_findPanel, &FindPanel::readyChanged, m_prevAction, &QAction::setEnabled);
    connect(m_closeAction, &QAction::triggered, m_findPanel, &FindPanel::close);
    connect(m_findPanel, &FindPanel::hasFilterChanged, m_filterAction, &QAction::setChecked);
    connect(m_findPanel, &FindPanel::problemChanged, this,
            [this](const QString &problem) { statusBar()->showMessage(problem); });
    connect(m_findPanel, &FindPanel::soughtChanged, this, &ViewerWindow::markMatches);
    connect(m_filterAction, &QAction::triggered, this, &ViewerWindow::toggleFilter);
    connect(m_filterBar, &FilterBar::removed, m_findPanel, &FindPanel::removeFilter);
    connect(m_find, &TableFilter::filtering, this, [this](double part) {
        m_filtering = part;
        updateFilterBar();
    });
    m_filterTimer.setSingleShot(true);
    m_filterTimer.setInterval(s_filterDelay);
    connect(&m_filterTimer, &QTimer::timeout, this, &ViewerWindow::updateFilterBar);
    connect(m_findPanel, &FindPanel::rowFound, this, &ViewerWindow::keepFoundRow);
    connect(m_findPanel, &QToolBar::visibilityChanged, this, &ViewerWindow::findPanelShown);
    connect(m_find, &TableFilter::modelAboutToBeShown, this, &ViewerWindow::modelAboutToBeShown);
    connect(m_find, &TableFilter::modelShown, this, &ViewerWindow::modelShown);
}

void ViewerWindow::createRowPane()
{
    m_rowPane = new DetailPane(m_table, this);
    addDockWidget(Qt::BottomDockWidgetArea, m_rowPane);
    connect(m_find, &TableFilter::modelShown, m_rowPane, &DetailPane::followTable);
    m_viewMenu->addSeparator();
    m_viewMenu->addAction(m_rowPane->toggleViewAction());
}

void ViewerWindow::createSums()
{
    m_sums = new SelectionSums(m_table, this);
    auto *label = new QLabel(this);
    label->setObjectName(QStringLiteral("sumsLabel"));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(1); // long sums make no wide window
    label->hide();
    statusBar()->addPermanentWidget(label);
    connect(m_sums, &SelectionSums::textChanged, label, [label](const QString &text) {
        label->setText(text);
        label->setToolTip(text);
        label->setVisible(!text.isEmpty());
    });
    connect(m_find, &TableFilter::modelShown, m_sums, &SelectionSums::followTable);
}

void ViewerWindow::openFind()
{
    m_findPanel->openFind();
    m_findPanel->field()->selectAll();
}

void ViewerWindow::openFindWith(const QString &text)
{
    openFind();
    m_findPanel->field()->insert(text);
}

//! Shows the panel: it says that nothing was found, and stops a search.
void ViewerWindow::findAgain(bool forward)
{
    if (m_findPanel->field()->text().isEmpty()) {
        openFind();
        return;
    }
    if (!m_findPanel->isVisible()) {
        m_findPanel->openFind();
        m_table->setFocus();
        layout()->activate(); // the row that is found is above the panel, not behind it
    }
    if (forward)
        m_findPanel->findNext();
    else
        m_findPanel->findPrev();
}

//! Without a text to filter by it asks for one.
void ViewerWindow::toggleFilter()
{
    if (m_findPanel->field()->text().isEmpty())
        openFind();
    else
        m_findPanel->toggleFilter();
    m_filterAction->setChecked(m_findPanel->hasFilter());
}

void ViewerWindow::updateFilterBar()
{
    if (m_filtering < 1)
        m_filterBar->showProgress(m_filtering);
    else if (m_find->isFiltered())
        m_filterBar->showFilter(m_find->shownMatcher().text(), rows(),
                                m_find->source()->rowCount());
    else
        m_filterBar->hide();
}

//! New rows would push it out of the window. If it is the newest, it is followed on. Rows
//! around it tell what it is about.
void ViewerWindow::keepFoundRow()
{
    const QModelIndex found = m_table->currentIndex();
    if (isFollowing() && isNewest(found))
        return;
    setFollowing(false);
    showAmongOthers(found);
}

//! Where the panel is seen, so is what it would find.
void ViewerWindow::markMatches()
{
    const bool isSought = m_findPanel->isVisible();
    m_table->setMarked(isSought ? m_find->matcherFor(m_findPanel->field()->text()) : TextMatcher(),
                       m_find->columns());
}

//! By a key: the newest row is where the user follows it again.
void ViewerWindow::rowReached()
{
    setFollowing(isNewest(m_table->currentIndex()) && isAtEdge());
}

void ViewerWindow::findPanelShown(bool isShown)
{
    if (!isShown)
        statusBar()->clearMessage();
    m_closeAction->setEnabled(isShown);
    if (!isShown)
        m_table->setFocus();
}

void ViewerWindow::createMenus()
{
    m_fileMenu = menuBar()->addMenu(tr("&File"));
    QAction *open = m_fileMenu->addAction(tr("&Open…"), this, &ViewerWindow::chooseFile);
    open->setShortcut(QKeySequence::Open);
    m_fileMenu
        ->addAction(tr("Save &Rows As…"), this,
                    [this] { RowExportDialog::saveRowsAs(m_table, this); })
        ->setShortcut(QKeySequence::SaveAs);
    QAction *close = m_fileMenu->addAction(tr("&Close"), this, &QWidget::close);
    close->setShortcut(QKeySequence::Close);
    QAction *quit = m_fileMenu->addAction(tr("&Quit"), qApp, &QApplication::closeAllWindows);
    quit->setShortcut(QKeySequence::Quit);

    QMenu *editMenu = menuBar()->addMenu(tr("&Edit"));
    editMenu->addAction(m_copyAction);
    editMenu->addSeparator();
    editMenu->addActions({m_findAction, m_nextAction, m_prevAction, m_filterAction});
    editMenu->addSeparator();
    editMenu->addAction(m_goToAction);

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->addAction(m_followAction);
    m_viewMenu->addSeparator();
    QAction *larger = m_viewMenu->addAction(tr("&Larger Text"), m_table, &ViewerTable::zoomIn);
    larger->setShortcuts({QKeySequence(QKeySequence::ZoomIn), Qt::CTRL | Qt::Key_Equal});
    m_viewMenu->addAction(tr("&Smaller Text"), m_table, &ViewerTable::zoomOut)
        ->setShortcut(QKeySequence::ZoomOut);
    m_viewMenu->addAction(tr("&Usual Text Size"), m_table, &ViewerTable::resetZoom)
        ->setShortcut(Qt::CTRL | Qt::Key_0);

    QMenu *helpMenu = menuBar()->addMenu(tr("&Help"));
    helpMenu->addAction(tr("&About"), this, &ViewerWindow::showAbout);

    m_toolBar = addToolBar(tr("Main Tool Bar"));
    m_toolBar->setMovable(false);
    m_toolBar->addAction(m_followAction);
}

void ViewerWindow::chooseFile()
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Open Files"));
    for (const QString &path : paths)
        Q_EMIT openRequested(path);
}

void ViewerWindow::showAbout()
{
    QMessageBox::about(
        this, tr("About %1").arg(QApplication::applicationName()),
        tr("%1 %2 opens and follows text of any size.")
            .arg(QApplication::applicationName(), QApplication::applicationVersion()));
}

void ViewerWindow::setModel(QAbstractItemModel *model, Edge edge)
{
    m_find->setSource(model);
    setEdge(edge);
}

void ViewerWindow::removeModel()
{
    m_find->setSource(nullptr);
}

//! Tells a current row that somebody chose from one that keeps to the newest rows.
void ViewerWindow::modelAboutToBeShown()
{
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid() || !m_find->isFiltered())
        m_hasChosenRow = current.isValid() && !(isFollowing() && isNewest(current));
    beginChange();
}

//! The row that was chosen stays in sight when a filter goes, rather than the newest.
void ViewerWindow::modelShown(QAbstractItemModel *model)
{
    if (!model)
        return;
    const bool isUnfiltered = model == m_find->source();
    if (isUnfiltered && m_hasChosenRow && isFollowing() && !isAtEdge())
        setFollowing(false);
    followModel(model);
    endChange();
    keepToEdge();
    fitNewColumns();
    updateFilterBar();
    filterChanged();
}

//! The view was connected before: what the model announces has reached it when these
//! slots run at the end of a change.
void ViewerWindow::followModel(QAbstractItemModel *model)
{
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &ViewerWindow::beginChange,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, &ViewerWindow::beginChange,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::rowsInserted, this, &ViewerWindow::endChange,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::modelReset, this, &ViewerWindow::endChange,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::rowsInserted, this, &ViewerWindow::fitNewColumns,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::modelReset, this, &ViewerWindow::fitNewColumns,
            Qt::UniqueConnection);
    connect(model, &QAbstractItemModel::rowsRemoved, &m_filterTimer, qOverload<>(&QTimer::start),
            Qt::UniqueConnection);
}

void ViewerWindow::endChange()
{
    keepHeldRows();
    m_modelChanges = false;
    if (isFollowing())
        m_pinTimer.start(0);
    if (m_find->isFiltered() && !m_filterTimer.isActive())
        m_filterTimer.start();
}

//! Takes column widths when the first rows of new columns have come.
void ViewerWindow::fitNewColumns()
{
    const bool isOnScreen = rows() > 0 && m_table->isVisible();
    const int columns = isOnScreen ? m_table->model()->columnCount() : 0;
    if (columns > 0 && columns != m_columnsFitted) {
        m_columnsFitted = columns;
        m_table->fitColumns();
    }
    if (!m_growTimer.isActive())
        m_growTimer.start();
}

int ViewerWindow::rows() const
{
    const QAbstractItemModel *model = m_table->model();
    return model ? model->rowCount() : 0;
}

QString ViewerWindow::rowsText() const
{
    if (!m_find->isFiltered())
        return rows() == 1 ? tr("1 row") : tr("%L1 rows").arg(rows());
    return tr("%L1 of %L2 rows").arg(rows()).arg(m_find->source()->rowCount());
}

void ViewerWindow::showMessage(const QString &text)
{
    m_message->setText(text);
    m_pages->setCurrentWidget(m_message);
}

void ViewerWindow::setEdge(Edge edge)
{
    m_edge = edge;
    setFollowing(isFollowing());
}

bool ViewerWindow::isFollowing() const
{
    return m_followAction->isChecked();
}

void ViewerWindow::setFollowing(bool on)
{
    m_followAction->setChecked(on);
    // Decides where the view keeps a table that is shorter than the window.
    const bool keepTop = on == (m_edge == Edge::Top);
    m_table->header()->setSortIndicator(-1, keepTop ? Qt::AscendingOrder : Qt::DescendingOrder);
    if (on)
        keepToEdge();
}

bool ViewerWindow::isAtEdge() const
{
    const QScrollBar *bar = m_table->verticalScrollBar();
    return bar->value() == (m_edge == Edge::Top ? bar->minimum() : bar->maximum());
}

bool ViewerWindow::isNewest(const QModelIndex &index) const
{
    return index.isValid() && index.row() == (m_edge == Edge::Top ? 0 : rows() - 1);
}

void ViewerWindow::keepToEdge()
{
    QScrollBar *bar = m_table->verticalScrollBar();
    if (isFollowing())
        bar->setValue(m_edge == Edge::Top ? bar->minimum() : bar->maximum());
}

//! A view at its edge stays there by itself. If that is not wanted, what is seen now is seen
//! after the change as well.
void ViewerWindow::beginChange()
{
    m_modelChanges = true;
    const bool isHeld = !isFollowing() && isAtEdge() && rows() > 0;
    m_held = isHeld ? m_table->model()->index(qMax(m_table->firstSeenRow(), 0), 0) : QModelIndex();
}

void ViewerWindow::keepHeldRows()
{
    if (!m_held.isValid() || m_held.model() != m_table->model())
        return;
    m_table->verticalScrollBar()->setValue(m_held.row());
    m_held = QModelIndex();
}

void ViewerWindow::barMoved()
{
    if (!m_growTimer.isActive())
        m_growTimer.start();
    const bool isMovedByUser = !m_modelChanges && !m_table->isFitting();
    if (isMovedByUser && isFollowing() != isAtEdge())
        setFollowing(isAtEdge());
}

QString ViewerWindow::selectedText(RowFormat format, bool *isCut) const
{
    const RowTexts texts(m_table->model(), getVisibleColumns(m_table->header()), format);
    return texts.rows(m_table->selectionModel()->selection(), s_mostCopiedRows, isCut);
}

void ViewerWindow::copySelection()
{
    copyRows(RowFormat::Tabs);
}

void ViewerWindow::copyRows(RowFormat format)
{
    if (!m_table->selectionModel() || !m_table->selectionModel()->hasSelection())
        return;
    bool isCut = false;
    QGuiApplication::clipboard()->setText(selectedText(format, &isCut));
    if (isCut)
        statusBar()->showMessage(tr("Only the first %L1 rows were copied.").arg(s_mostCopiedRows),
                                 5000);
}

void ViewerWindow::goToLine()
{
    const QAbstractItemModel *source = m_find->source();
    const int count = source ? source->rowCount() : 0;
    if (count == 0)
        return;
    bool isChosen = false;
    const QModelIndex current = m_find->toSource(m_table->currentIndex());
    const int line = QInputDialog::getInt(this, tr("Go to Line"), tr("Line:"), current.row() + 1, 1,
                                          count, 1, &isChosen);
    if (isChosen)
        showLine(line);
}

void ViewerWindow::showLine(int line)
{
    const int row = m_find->rowNear(line - 1);
    if (row < 0)
        return;
    setFollowing(false);
    const QModelIndex index = m_table->model()->index(row, 0);
    m_table->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    showAmongOthers(index);
}

void ViewerWindow::showAmongOthers(const QModelIndex &index)
{
    for (const int row : {index.row() - s_context, index.row() + s_context})
        m_table->scrollTo(index.sibling(qBound(0, row, rows() - 1), index.column()));
    m_table->scrollTo(index);
}

void ViewerWindow::showContextMenu(QPoint place)
{
    const QPersistentModelIndex cell = m_table->indexAt(place);
    QMenu menu;
    menu.addAction(m_copyAction);
    menu.addAction(tr("Copy as C&SV"), this, [this] { copyRows(RowFormat::Csv); })
        ->setEnabled(m_copyAction->isEnabled());
    if (cell.isValid()) {
        const QString text = cell.data().toString();
        menu.addAction(tr("Copy C&ell"), this,
                       [text] { QGuiApplication::clipboard()->setText(text); });
        menu.addSeparator();
        QString shown = fontMetrics().elidedText(text.simplified(), Qt::ElideRight,
                                                 fontMetrics().averageCharWidth() * 30);
        QAction *only = menu.addAction(
            tr("Show Only &Rows with “%1”").arg(shown.replace(u'&', QLatin1String("&&"))), this,
            [this, text] { filterBy(text); });
        only->setEnabled(!text.isEmpty() && m_find->columns().contains(cell.column()));
    }
    menu.addSeparator();
    menu.addActions({m_findAction, m_filterAction, m_goToAction});
    menu.exec(m_table->viewport()->mapToGlobal(place));
}

void ViewerWindow::filterBy(const QString &text)
{
    openFind();
    m_findPanel->setPlainText(text);
    m_findPanel->filter();
}

bool ViewerWindow::isPainted() const
{
    return rows() == 0 || !m_table->isVisible() || m_table->hasPaintedRows();
}

void ViewerWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    QTimer::singleShot(0, this, &ViewerWindow::fitNewColumns);
}

void ViewerWindow::closeEvent(QCloseEvent *event)
{
    m_find->cancel();
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        Q_EMIT closed();
}
