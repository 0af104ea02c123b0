// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "viewerwindow.h"

#include "aboutdialog.h"
#include "basics/icons.h"
#include "basics/keys.h"
#include "basics/recentfiles.h"
#include "colorrulesdialog.h"
#include "columnmenu.h"
#include "columnsort.h"
#include "common.h"
#include "detailpane.h"
#include "filterbar.h"
#include "framestatistics.h"
#include "overview/faultguide.h"
#include "overview/gototime.h"
#include "overview/histogram.h"
#include "overview/marksmenu.h"
#include "overview/overview.h"
#include "overview/overviewstrip.h"
#include "rowexportdialog.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "selectionsums.h"
#include "statisticsdialog.h"
#include "viewertable.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

constexpr int s_mostCopiedRows = 100000;
constexpr int s_context = 3;           // rows around a found one
constexpr int s_noteTime = 5000;       // ms
constexpr int s_growDelay = 150;       // ms
constexpr int s_filterDelay = 100;     // ms
constexpr double s_partOfScreen = 0.9; // leaves room for a window's frame

void colorAllTables(const QList<ColorRule> &rules)
{
    ColorRules::save(rules);
    const ColorRules colors(rules);
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *table = qobject_cast<ViewerTable *>(widget))
            table->setColorRules(colors);
    }
}

} // namespace

ViewerWindow::ViewerWindow(FrameStatistics *statistics)
    : m_statistics(statistics)
    , m_pages(new QStackedWidget(this))
    , m_table(new ViewerTable(statistics, m_pages))
    , m_follower(new RowFollower(m_table))
    , m_find(new TableFilter(m_table))
    , m_sort(new ColumnSort(m_find, m_table))
    , m_filterBar(new FilterBar(m_pages))
    , m_message(new QLabel(m_pages))
    , m_tableRow(new QHBoxLayout)
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
    layout->addLayout(m_tableRow);
    m_tableRow->addWidget(m_table);
    m_pages->addWidget(page);
    m_pages->addWidget(m_message);
    setCentralWidget(m_pages);
    setFocusProxy(m_table);
    createActions();
    createFindActions();
    createMenus();
    createFindPanel();
    createRowPane();
    createSums();
    createMarks();

    m_table->setColorRules(ColorRules(ColorRules::load()));
    m_growTimer.setSingleShot(true);
    m_growTimer.setInterval(s_growDelay);
    connect(&m_growTimer, &QTimer::timeout, m_table, &ViewerTable::growColumns);
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &ViewerWindow::growColumnsSoon);
    connect(m_follower, &RowFollower::followingChanged, m_followAction, &QAction::setChecked);
    connect(m_follower, &RowFollower::rowsChanged, this, &ViewerWindow::rowsChanged);
    setAcceptDrops(true);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QWidget::customContextMenuRequested, this, &ViewerWindow::showContextMenu);
    connect(m_table, &ViewerTable::typed, this, &ViewerWindow::openFindWith);
    const QSize usual(fontMetrics().horizontalAdvance(u'x') * 150, fontMetrics().height() * 40);
    resize(usual.boundedTo(screen()->availableSize() * s_partOfScreen));
}

void ViewerWindow::createActions()
{
    m_followAction = new QAction(tr("&Follow"), this);
    m_followAction->setIcon(Icons::action(QStringLiteral("go-bottom"), QStringLiteral("follow")));
    m_followAction->setCheckable(true);
    m_followAction->setChecked(true);
    m_followAction->setShortcut(Qt::Key_F6);
    m_followAction->setToolTip(tr("Keep to the newest rows (F6)"));
    connect(m_followAction, &QAction::triggered, this, &ViewerWindow::setFollowing);

    m_copyAction = new QAction(tr("&Copy"), this);
    m_copyAction->setShortcut(QKeySequence::Copy);
    connect(m_copyAction, &QAction::triggered, this, &ViewerWindow::copySelection);
}

void ViewerWindow::createFindActions()
{
    m_findAction = new QAction(tr("&Find…"), this);
    m_findAction->setIconText(tr("Find"));
    m_findAction->setIcon(Icons::action(QStringLiteral("edit-find"), QStringLiteral("find")));
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
    m_filterAction->setIcon(Icons::action(QStringLiteral("view-filter"), QStringLiteral("filter")));
    m_filterAction->setCheckable(true);
    m_goToAction = new QAction(tr("&Go to Line…"), this);
    m_goToAction->setShortcut(Qt::CTRL | Qt::Key_G);
    connect(m_goToAction, &QAction::triggered, this, &ViewerWindow::goToLine);
    leaveKey(m_nextAction, m_goToAction->shortcut());
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
    connect(m_closeAction, &QAction::triggered, this, &ViewerWindow::undoByEsc);
    connect(m_findPanel, &FindPanel::hasFilterChanged, m_filterAction, &QAction::setChecked);
    connect(m_findPanel, &FindPanel::problemChanged, this,
            [this](const QString &problem) { statusBar()->showMessage(problem); });
    connect(m_findPanel, &FindPanel::soughtChanged, this, &ViewerWindow::markMatches);
    connect(m_filterAction, &QAction::triggered, this, &ViewerWindow::toggleFilter);
    connect(m_filterBar, &FilterBar::removed, m_findPanel, &FindPanel::removeFilter);
    connect(m_filterBar, &FilterBar::spanRemoved, this, [this] { m_find->setSpan({}); });
    connect(m_find, &TableFilter::filtering, this, [this](double part) {
        m_filtering = part;
        updateFilterBar();
    });
    m_filterTimer.setSingleShot(true);
    m_filterTimer.setInterval(s_filterDelay);
    connect(&m_filterTimer, &QTimer::timeout, this, &ViewerWindow::updateFilterBar);
    leaveKey(m_findPanel->nextAction(), m_goToAction->shortcut());
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
    statusBar()->addPermanentWidget(m_sort->label());
    connect(m_sort, &ColumnSort::sorted, this, &ViewerWindow::sortingChanged);
}

//! Where rows are sorted, the newest ones are anywhere.
void ViewerWindow::sortingChanged(bool isSorted)
{
    setFollowing(isFollowing() && !isSorted);
}

void ViewerWindow::createMarks()
{
    m_marks = new MarksMenu(m_find, m_table, this);
    menuBar()->insertMenu(menuBar()->actions().constLast(), m_marks);
    connect(m_marks->marks(), &MarkedRows::changed, this, [this] {
        const auto isMarked = [this](int row) { return m_marks->isMarked(row); };
        m_table->setRowMarks(m_marks->marks()->isEmpty() ? nullptr
                                                         : std::function<bool(int)>(isMarked));
    });
    connect(m_marks, &MarksMenu::rowChosen, this, &ViewerWindow::showRow);
    connect(m_marks, &MarksMenu::said, this, &ViewerWindow::say);
}

void ViewerWindow::createOverview()
{
    m_overview = new Overview(m_find, m_table, m_marks->marks(), this);
    m_tableRow->addWidget(m_overview->strip());
    auto *column = qobject_cast<QVBoxLayout *>(m_table->parentWidget()->layout());
    column->insertWidget(column->indexOf(m_tableRow), m_overview->histogram());
    statusBar()->addPermanentWidget(m_overview->label());
    m_viewMenu->addActions({m_overview->stripAction(), m_overview->histogramAction()});
    m_editMenu->addAction(m_overview->goToTime()->action());
    connect(m_overview, &Overview::rowChosen, this, &ViewerWindow::showRow);
    connect(m_overview->goToTime(), &GoToTime::said, this, &ViewerWindow::say);
    createFaults();
}

void ViewerWindow::createFaults()
{
    m_faults = new FaultGuide(m_find, m_table, this);
    m_editMenu->addActions({m_faults->nextAction(), m_faults->previousAction()});
    statusBar()->addPermanentWidget(m_faults->button());
    m_table->setRowWarnings([this](int row) { return m_faults->isFaulty(row); });
    connect(m_faults, &FaultGuide::rowChosen, this, &ViewerWindow::showRow);
    connect(m_faults, &FaultGuide::said, this, &ViewerWindow::say);
}

void ViewerWindow::showRow(int row)
{
    showLine(row + 1);
}

void ViewerWindow::say(const QString &text)
{
    statusBar()->showMessage(text, s_noteTime);
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
    const QPointer<ViewerWindow> self(this);
    if (m_findPanel->field()->text().isEmpty())
        openFind();
    else
        m_findPanel->toggleFilter();
    if (self) // it may have been closed while rows were looked at
        m_filterAction->setChecked(m_findPanel->hasFilter());
}

void ViewerWindow::updateFilterBar()
{
    m_closeAction->setEnabled(m_findPanel->isVisible() || m_find->span());
    if (m_filtering < 1)
        m_filterBar->showProgress(m_filtering);
    else if (m_find->isFiltered())
        m_filterBar->showFilter(*m_find);
    else
        m_filterBar->hide();
}

//! New rows would push it out of the window. If it is the newest, it is followed on. Rows
//! around it tell what it is about.
void ViewerWindow::keepFoundRow()
{
    const QModelIndex found = m_table->currentIndex();
    if (isFollowing() && m_follower->isNewest(found))
        return;
    setFollowing(false);
    showAmongOthers(found);
}

//! Where the panel is seen, so is what it would find.
void ViewerWindow::markMatches()
{
    const bool isSought = m_findPanel->isVisible();
    const TextMatcher sought =
        isSought ? m_find->matcherFor(m_findPanel->field()->text()) : TextMatcher();
    m_table->setMarked(sought, m_find->columns());
    if (m_overview)
        m_overview->survey()->setSought(sought, m_find->columns());
}

void ViewerWindow::findPanelShown(bool isShown)
{
    if (!isShown)
        statusBar()->clearMessage();
    m_closeAction->setEnabled(isShown || m_find->span());
    if (!isShown)
        m_table->setFocus();
}

//! The panel, with its text, goes before the span, unless somebody waits for that alone.
void ViewerWindow::undoByEsc()
{
    const bool isSpanAwaited = m_find->isFiltering() && !m_find->isTextFiltering();
    if (m_findPanel->isVisible() && !isSpanAwaited)
        m_findPanel->close();
    else
        m_find->setSpan({});
}

void ViewerWindow::createMenus()
{
    m_fileMenu = menuBar()->addMenu(tr("&File"));
    QAction *open = m_fileMenu->addAction(tr("&Open…"), this, &ViewerWindow::chooseFile);
    open->setShortcut(QKeySequence::Open);
    open->setIconText(tr("Open"));
    open->setIcon(Icons::action(QStringLiteral("document-open"), QStringLiteral("open")));
    QMenu *recent = m_fileMenu->addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { fillRecentMenu(recent); });
    m_saveAction = m_fileMenu->addAction(tr("Save Rows &As…"), this,
                                         [this] { RowExportDialog::saveRowsAs(m_table, this); });
    m_saveAction->setShortcut(QKeySequence::SaveAs);
    QAction *close = m_fileMenu->addAction(tr("&Close"), this, &QWidget::close);
    close->setShortcut(QKeySequence::Close);
    QAction *quit = m_fileMenu->addAction(tr("&Quit"), this, &ViewerWindow::quitRequested);
    quit->setShortcut(QKeySequence::Quit);

    m_editMenu = menuBar()->addMenu(tr("&Edit"));
    m_editMenu->addAction(m_copyAction);
    m_editMenu->addSeparator();
    m_editMenu->addActions({m_findAction, m_nextAction, m_prevAction, m_filterAction});
    m_editMenu->addSeparator();
    m_editMenu->addAction(m_goToAction);

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->addAction(m_followAction);
    m_viewMenu->addSeparator();
    QAction *larger = m_viewMenu->addAction(tr("&Larger Text"), m_table, &ViewerTable::zoomIn);
    larger->setShortcuts({QKeySequence(QKeySequence::ZoomIn), Qt::CTRL | Qt::Key_Equal});
    m_viewMenu->addAction(tr("&Smaller Text"), m_table, &ViewerTable::zoomOut)
        ->setShortcut(QKeySequence::ZoomOut);
    m_viewMenu->addAction(tr("&Usual Text Size"), m_table, &ViewerTable::resetZoom)
        ->setShortcut(Qt::CTRL | Qt::Key_0);

    m_viewMenu->addMenu(new ColumnMenu(m_table, m_sort, this));
    m_viewMenu->addAction(tr("Colours of Ro&ws…"), this, &ViewerWindow::editColorRules);

    QMenu *helpMenu = menuBar()->addMenu(tr("&Help"));
    helpMenu->addAction(tr("&Statistics"), this, &ViewerWindow::showStatistics);
    helpMenu->addAction(Icons::program(), tr("&About"), this, &ViewerWindow::showAbout);

    m_toolBar = addToolBar(tr("Main Tool Bar"));
    m_toolBar->setMovable(false);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolBar->addAction(open);
    m_toolBar->addSeparator();
    m_toolBar->addActions({m_followAction, m_findAction, m_filterAction});
}

void ViewerWindow::chooseFile()
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Open Files"));
    for (const QString &path : paths)
        Q_EMIT openRequested(path);
}

void ViewerWindow::fillRecentMenu(QMenu *menu)
{
    menu->clear();
    const QStringList paths = RecentFiles::paths();
    for (const QString &path : paths) {
        QString name = QDir::toNativeSeparators(path);
        menu->addAction(name.replace(u'&', QLatin1String("&&")), this,
                        [this, path] { Q_EMIT openRequested(path); });
    }
    menu->addSeparator();
    menu->addAction(tr("&Clear"), this, &RecentFiles::clear)->setEnabled(!paths.isEmpty());
}

void ViewerWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); }))
        event->acceptProposedAction();
}

void ViewerWindow::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            Q_EMIT openRequested(url.toLocalFile());
    }
}

//! They hold for all windows.
void ViewerWindow::editColorRules()
{
    auto *dialog = new ColorRulesDialog(ColorRules::load(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, dialog, [dialog] { colorAllTables(dialog->rules()); });
    dialog->open();
}

void ViewerWindow::showAbout()
{
    auto *dialog = new AboutDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ViewerWindow::showStatistics()
{
    auto *dialog = findChild<StatisticsDialog *>();
    if (!dialog)
        dialog = new StatisticsDialog(m_table, m_statistics, this);
    dialog->show();
    dialog->raise();
}

void ViewerWindow::keepMarks()
{
    m_marks->marks()->keepForNextModel();
}

void ViewerWindow::setModel(QAbstractItemModel *model, Edge edge)
{
    const bool wasFiltered = m_findPanel->hasFilter();
    const auto span = m_find->span();
    m_find->setSource(model);
    setEdge(edge);
    if (span)
        m_find->setSpan(span);
    if (wasFiltered)
        m_findPanel->filter(m_findPanel->field()->text());
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
        m_hasChosenRow = current.isValid() && !(isFollowing() && m_follower->isNewest(current));
    m_follower->beginChange();
}

//! The row that was chosen stays in sight when a filter goes, rather than the newest.
void ViewerWindow::modelShown(QAbstractItemModel *model)
{
    if (!model)
        return;
    const bool isUnfiltered = model == m_find->source();
    if (isUnfiltered && m_hasChosenRow && isFollowing() && !m_follower->isAtEdge())
        setFollowing(false);
    m_follower->follow(model);
    updateFilterBar();
    filterChanged();
}

void ViewerWindow::rowsChanged()
{
    fitNewColumns();
    if (m_awaitedLine > 0 && m_find->source()->rowCount() >= m_awaitedLine)
        showAwaitedLine();
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
        const bool isAsBefore = m_restored.columnCount == columns;
        for (int column = 0; column < columns; ++column)
            m_table->setDigitGroups(column, isAsBefore && m_restored.grouped.contains(column));
        m_table->fitColumns();
        if (isAsBefore)
            m_table->header()->restoreState(m_restored.columns);
        // Not here, where others are still told of this model.
        if (m_sort->column() >= columns)
            QMetaObject::invokeMethod(m_sort, &ColumnSort::leaveLostColumn, Qt::QueuedConnection);
        // What the header was sorted by is not restored, and following needs its own order there.
        m_sort->showInHeader();
        m_follower->setFollowing(isFollowing());
        m_restored = {};
    }
    growColumnsSoon();
}

void ViewerWindow::growColumnsSoon()
{
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

void ViewerWindow::showPage(QWidget *page)
{
    m_pages->setCurrentIndex(m_pages->addWidget(page));
}

void ViewerWindow::leaveOutRows()
{
    m_saveAction->setEnabled(false);
    for (QMenu *menu : std::initializer_list<QMenu *> {m_editMenu, m_viewMenu, m_marks}) {
        menu->menuAction()->setVisible(false);
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions)
            action->setEnabled(false); // their keys, too
    }
}

void ViewerWindow::showTable()
{
    m_pages->setCurrentIndex(0);
}

//! What is still to be restored is as it was.
PageState ViewerWindow::state() const
{
    PageState state = m_restored;
    state.path = windowFilePath();
    state.isFollowing = isFollowing();
    state.line = shownLine();
    if (m_columnsFitted > 0) {
        state.columnCount = m_columnsFitted;
        state.columns = m_table->header()->saveState();
        state.grouped = m_table->groupedColumns();
    }
    state.sortColumn = m_sort->column();
    state.sortOrder = m_sort->order();
    state.filter = m_findPanel->hasFilter() ? m_findPanel->field()->text() : QString();
    state.filterRules = m_findPanel->rules();
    return state;
}

//! The current one, or that at the top, from 1 on; 0 without rows.
int ViewerWindow::shownLine() const
{
    QModelIndex row = m_table->currentIndex();
    if (!row.isValid() && m_awaitedLine > 0)
        return m_awaitedLine;
    if (!row.isValid() && rows() > 0)
        row = m_table->model()->index(m_table->rowAt(0), 0);
    return m_find->toSource(row).row() + 1;
}

void ViewerWindow::restore(const PageState &state)
{
    m_restored = state;
    m_columnsFitted = 0;
    m_sort->sortBy(state.sortColumn, state.sortOrder);
    m_findPanel->restoreFilter(state.filter, state.filterRules);
    setFollowing(state.isFollowing && state.sortColumn < 0);
    awaitLine(state.isFollowing ? 0 : state.line);
}

void ViewerWindow::awaitLine(int line)
{
    m_awaitedLine = line;
    if (m_find->source())
        rowsChanged();
}

//! Somebody who has chosen a row meanwhile, or follows, stays there.
void ViewerWindow::showAwaitedLine()
{
    if (rows() == 0) // a filter takes its rows a moment later
        return;
    const int line = std::exchange(m_awaitedLine, 0);
    if (line > 0 && !isFollowing() && !m_table->currentIndex().isValid())
        showLine(line);
}

void ViewerWindow::setEdge(Edge edge)
{
    m_follower->setEdge(edge);
}

bool ViewerWindow::isFollowing() const
{
    return m_follower->isFollowing();
}

void ViewerWindow::setFollowing(bool on)
{
    m_follower->setFollowing(on);
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
                                 s_noteTime);
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
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(m_copyAction);
    menu->addAction(tr("Copy as C&SV"), this, [this] { copyRows(RowFormat::Csv); })
        ->setEnabled(m_copyAction->isEnabled());
    if (cell.isValid()) {
        const QString text = cell.data().toString();
        menu->addAction(tr("Copy C&ell"), this,
                        [text] { QGuiApplication::clipboard()->setText(text); });
        menu->addSeparator();
        QString shown = fontMetrics().elidedText(text.simplified(), Qt::ElideRight,
                                                 fontMetrics().averageCharWidth() * 30);
        QAction *only = menu->addAction(
            tr("Show Only &Rows with “%1”").arg(shown.replace(u'&', QLatin1String("&&"))), this,
            [this, text] { filterBy(text); });
        only->setEnabled(!text.isEmpty() && m_find->columns().contains(cell.column()));
        addCellActions(menu, cell);
    }
    menu->addSeparator();
    menu->addActions({m_findAction, m_filterAction, m_goToAction, m_marks->markAction()});
    menu->popup(m_table->viewport()->mapToGlobal(place));
}

void ViewerWindow::addCellActions(QMenu * /*menu*/, const QModelIndex & /*index*/)
{
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
