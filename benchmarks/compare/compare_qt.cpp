// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The fast view, QTableView and QTreeView under the same feed: compare_qt VIEW SCENARIO ROWS RATE
// SECONDS, where VIEW is vantix, vantix-plain (no pictures are kept, Qt's delegate), QTableView or
// QTreeView.

#include "driver.h"
#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QAbstractEventDispatcher>
#include <QAbstractTableModel>
#include <QApplication>
#include <QBrush>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTreeView>

#include <memory>

namespace {

class FeedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit FeedModel(Contents *contents)
        : m_contents(contents)
        , m_rows(contents->rows())
    {
    }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_rows;
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : Contents::columns;
    }
    QVariant data(const QModelIndex &index, int role) const override;

    void tellAppended(int count) { tellInserted(m_rows, count); }
    void tellInserted(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        m_rows += count;
        endInsertRows();
    }
    void tellChanged(int row, int column)
    {
        Q_EMIT dataChanged(index(row, column), index(row, column), {Qt::DisplayRole});
    }

private:
    const Contents *m_contents;
    int m_rows;
};

QVariant FeedModel::data(const QModelIndex &index, int role) const
{
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole: {
        const std::string text = m_contents->text(m_contents->numberAt(index.row()), column);
        return QString::fromLatin1(text.data(), qsizetype(text.size()));
    }
    case Qt::TextAlignmentRole:
        return Contents::isRightAligned(column) ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                : QVariant();
    case Qt::ForegroundRole:
        return Contents::isGreen(column) ? QVariant(QBrush(QColor(0, 96, 0))) : QVariant();
    default:
        return {};
    }
}

//! Qt's delegate with rows as high as everywhere else: the tree asks it for the height.
class HighDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {Contents::columnWidth, Contents::rowHeight};
    }
};

//! As README.md shows it, or as it is made.
std::unique_ptr<QAbstractItemView> makeFastView(bool keepsPictures)
{
    auto view = std::make_unique<QTableFastView>();
    view->setPaintBufferEnabled(keepsPictures);
    if (keepsPictures)
        view->setItemDelegate(new Vantix::ItemDelegate(view.get()));
    view->setRowHeight(Contents::rowHeight);
    return view;
}

std::unique_ptr<QAbstractItemView> makeTable()
{
    auto view = std::make_unique<QTableView>();
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setMinimumSectionSize(1);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(Contents::rowHeight);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    return view;
}

std::unique_ptr<QAbstractItemView> makeTree()
{
    auto view = std::make_unique<QTreeView>();
    view->setUniformRowHeights(true);
    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view->setItemDelegate(new HighDelegate(view.get()));
    return view;
}

QHeaderView *headerOf(QAbstractItemView *view)
{
    if (auto *fast = qobject_cast<QTableFastView *>(view))
        return fast->header();
    if (auto *table = qobject_cast<QTableView *>(view))
        return table->horizontalHeader();
    return static_cast<QTreeView *>(view)->header();
}

class QtTable : public Table
{
public:
    QtTable(QAbstractItemView *view, FeedModel *model)
        : m_view(view)
        , m_model(model)
        , m_isPeer(!qobject_cast<QTableFastView *>(view))
    {
    }

    void rowsAppended(int count) override { m_model->tellAppended(count); }
    void rowsInsertedAbove(int count) override { m_model->tellInserted(0, count); }
    void cellChanged(int position, int column) override { m_model->tellChanged(position, column); }
    void showRow(int position) override { bar()->setValue(position); }
    void showEnd() override { m_view->scrollToBottom(); }
    void scrollRows(int count) override { bar()->setValue(bar()->value() + count); }
    void scrollPages(int count) override { scrollRows(count * bar()->pageStep()); }
    void keepEnd() override
    {
        if (m_isPeer)
            m_view->scrollToBottom();
    }
    void keepRows(int count) override
    {
        if (m_isPeer)
            bar()->setValue(bar()->value() + count);
    }
    int firstInView() override { return numberAt(0); }
    int lastInView() override
    {
        const int whole = m_view->viewport()->height() / Contents::rowHeight;
        const int last = numberAt(whole * Contents::rowHeight - 1);
        return last >= 0 ? last : numberAt((whole - 1) * Contents::rowHeight - 1);
    }

private:
    QScrollBar *bar() const { return m_view->verticalScrollBar(); }
    int numberAt(int y) const
    {
        const QModelIndex index = m_view->indexAt(QPoint(5, y));
        return index.isValid() ? index.siblingAtColumn(0).data().toInt() : -1;
    }

    QAbstractItemView *m_view;
    FeedModel *m_model;
    const bool m_isPeer;
};

//! Ticks for the driver, and counts for it the rounds of the event loop in which any part of the
//! window was painted.
class Loop : public QObject
{
    Q_OBJECT

public:
    Loop(QWidget *window, Driver *driver)
        : m_driver(driver)
    {
        const QList<QWidget *> parts = window->findChildren<QWidget *>();
        for (QWidget *part : parts)
            part->installEventFilter(this);
        QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, SIGNAL(awake()), this, SLOT(endRound()));
        connect(dispatcher, SIGNAL(aboutToBlock()), this, SLOT(endRound()));
        startTimer(Driver::interval, Qt::PreciseTimer);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_isPainted = m_isPainted || event->type() == QEvent::Paint;
        return false;
    }

protected:
    void timerEvent(QTimerEvent *) override
    {
        if (!m_driver->tick())
            QCoreApplication::exit(m_driver->status());
    }

private Q_SLOTS:
    void endRound()
    {
        if (m_isPainted)
            m_driver->framePresented();
        m_isPainted = false;
    }

private:
    Driver *const m_driver;
    bool m_isPainted = false;
};

std::unique_ptr<QAbstractItemView> makeView(const std::string &name)
{
    if (name == "vantix" || name == "vantix-plain")
        return makeFastView(name == "vantix");
    if (name == "QTableView")
        return makeTable();
    if (name == "QTreeView")
        return makeTree();
    qFatal("There is no view %s.", name.c_str());
}

void setUp(QAbstractItemView *view, FeedModel *model)
{
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->setFocusPolicy(Qt::NoFocus); // no current index that would follow insertions
    view->setModel(model);
    for (int column = 0; column < Contents::columns; ++column)
        headerOf(view)->resizeSection(column, Contents::columnWidth);
    view->resize(1280, 800);
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    const Request request(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    Contents contents(request.rows);
    FeedModel model(&contents);
    const std::unique_ptr<QAbstractItemView> view = makeView(request.view);
    setUp(view.get(), &model);
    QtTable table(view.get(), &model);
    Driver driver(request, &contents);
    driver.setTable(&table);
    const Loop loop(view.get(), &driver);
    view->show();
    return QApplication::exec();
}

#include "compare_qt.moc"
