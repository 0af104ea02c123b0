// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// vantix-movingpicture FOLDER: writes the frames of docs/feed.gif, QTableFastView and QTableView
// beside each other on one model in which rows arrive. See the script moving.

#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QTableView>
#include <QTime>

#include <cstdio>

namespace {

constexpr int s_framesOfAPart = 26;
constexpr int s_framesOfRest = 5; //!< before rows arrive, to see where one is
constexpr int s_rowHeight = 20;

//! Trades, computed from their number. They keep it while others arrive above.
class TradeModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_rows;
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : 4;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::TextAlignmentRole && index.column() > 1)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return role == Qt::DisplayRole ? text(index.row() - m_above, index.column()) : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const char *const titles[] = {"Time", "Symbol", "Price", "Quantity"};
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return QAbstractTableModel::headerData(section, orientation, role);
        return QString::fromLatin1(titles[section]);
    }

    void insertAbove(int count)
    {
        beginInsertRows({}, 0, count - 1);
        m_rows += count;
        m_above += count;
        endInsertRows();
    }
    void append(int count)
    {
        beginInsertRows({}, m_rows, m_rows + count - 1);
        m_rows += count;
        endInsertRows();
    }

private:
    static QString text(int number, int column)
    {
        static const char *const symbols[] = {"ALFA", "BETA", "ECHO", "GOLF", "LIMA"};
        const int shuffled = (number * 7919 % 10007 + 10007) % 10007;
        switch (column) {
        case 0:
            return QTime(9, 0).addMSecs(number * 37).toString(QStringLiteral("hh:mm:ss.zzz"));
        case 1:
            return QString::fromLatin1(symbols[shuffled % 5]);
        case 2:
            return QString::number(100 + shuffled % 5 * 50 + double(shuffled % 97) / 100, 'f', 2);
        default:
            return QString::number(1 + shuffled % 900);
        }
    }

    int m_rows = 100000;
    int m_above = 0;
};

QTableFastView *makeFastView(QWidget *parent)
{
    auto *view = new QTableFastView(parent);
    view->setItemDelegate(new Vantix::ItemDelegate(view));
    view->setPaintBufferEnabled(true);
    view->setRowHeight(s_rowHeight);
    return view;
}

QTableView *makeTableView(QWidget *parent)
{
    auto *view = new QTableView(parent);
    view->setShowGrid(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setMinimumSectionSize(s_rowHeight);
    view->verticalHeader()->setDefaultSectionSize(s_rowHeight);
    view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view->horizontalHeader()->setHighlightSections(false);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    return view;
}

//! Both views with their names, and what happens to them.
class Scene : public QWidget
{
    Q_OBJECT

public:
    Scene();

    //! Scrolls both to \a row in the middle, which is the one that is read.
    void read(int row, const QString &caption);
    //! Scrolls both to their end.
    void readEnd(const QString &caption);
    void insertAbove(int count) { m_model.insertAbove(count); }
    void append(int count) { m_model.append(count); }
    //! Writes the next frame once both have painted.
    void take(const QDir &folder);

private:
    void setUp(QAbstractItemView *view, QHeaderView *header);

    TradeModel m_model;
    QTableFastView *m_fast = makeFastView(this);
    QTableView *m_table = makeTableView(this);
    QLabel *m_caption = new QLabel(this);
    int m_frames = 0;
};

Scene::Scene()
{
    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("<b>QTableFastView</b>")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("<b>QTableView</b>")), 0, 1);
    grid->addWidget(m_fast, 1, 0);
    grid->addWidget(m_table, 1, 1);
    grid->addWidget(m_caption, 2, 0, 1, 2);
    setUp(m_fast, m_fast->header());
    setUp(m_table, m_table->horizontalHeader());
}

void Scene::setUp(QAbstractItemView *view, QHeaderView *header)
{
    view->setModel(&m_model);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    header->resizeSection(0, 105);
    header->resizeSection(1, 75);
    header->resizeSection(2, 80);
    header->resizeSection(3, 80);
}

void Scene::read(int row, const QString &caption)
{
    m_caption->setText(caption);
    for (QAbstractItemView *view :
         {static_cast<QAbstractItemView *>(m_fast), static_cast<QAbstractItemView *>(m_table)}) {
        const QModelIndex index = m_model.index(row, 0);
        view->setCurrentIndex(index);
        view->scrollTo(index, QAbstractItemView::PositionAtCenter);
    }
}

void Scene::readEnd(const QString &caption)
{
    read(0, caption);
    m_fast->scrollToBottom();
    m_table->scrollToBottom();
}

void Scene::take(const QDir &folder)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    const QString path =
        folder.filePath(QStringLiteral("%1.png").arg(m_frames++, 3, 10, QLatin1Char('0')));
    if (!grab().save(path))
        qFatal("%s cannot be written.", qUtf8Printable(path));
}

void takeRest(Scene &scene, const QDir &folder)
{
    for (int frame = 0; frame < s_framesOfRest; ++frame)
        scene.take(folder);
}

void takeAbove(Scene &scene, const QDir &folder)
{
    scene.read(50000,
               QStringLiteral("Twenty rows a second arrive <b>above</b> the row that is read"));
    takeRest(scene, folder);
    for (int frame = 0; frame < s_framesOfAPart; ++frame) {
        scene.insertAbove(2);
        scene.take(folder);
    }
}

void takeEnd(Scene &scene, const QDir &folder)
{
    scene.readEnd(QStringLiteral("Twenty rows a second arrive <b>at the end</b>, where both are"));
    takeRest(scene, folder);
    for (int frame = 0; frame < s_framesOfAPart; ++frame) {
        scene.append(2);
        scene.take(folder);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: vantix-movingpicture FOLDER\n");
        return 1;
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    QLocale::setDefault(QLocale::C);
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    Scene scene;
    scene.resize(760, 342);
    scene.show();
    takeAbove(scene, folder);
    takeEnd(scene, folder);
    return 0;
}

#include "movingpicture.moc"
