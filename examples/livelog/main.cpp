// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A log that is written while it is read. At its end, the view stays at the newest line; scroll up,
// and the lines that are looked at stay where they are, however many arrive. "At the top" lets new
// lines arrive above: the same holds there.

#include "itemdelegate.h"
#include "qtablefastview.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>

#include <deque>

namespace {

struct Line
{
    QTime time;
    int level; // 0 to 2
    int request;
};

class LogModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    //! All that came since the last frame in one go: a view works once a change, not once a line.
    void add(int count, bool isAtTop)
    {
        const int row = isAtTop ? 0 : int(m_lines.size());
        beginInsertRows({}, row, row + count - 1);
        for (int i = 0; i < count; ++i) {
            const Line line {QTime::currentTime(),
                             m_random.bounded(40) / 38 + m_random.bounded(60) / 59,
                             m_random.bounded(100'000)};
            if (isAtTop)
                m_lines.push_front(line);
            else
                m_lines.push_back(line);
        }
        endInsertRows();
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_lines.size());
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 3;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const QStringList titles {"Time", "Level", "Message"};
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section)
                                                                        : QVariant();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const Line &line = m_lines[std::size_t(index.row())];
        if (role == Qt::ForegroundRole && line.level > 0)
            return QColor(line.level == 1 ? Qt::darkYellow : Qt::red);
        if (role != Qt::DisplayRole)
            return {};
        static const QStringList levels {"info", "warning", "error"};
        if (index.column() == 0)
            return line.time.toString("HH:mm:ss.zzz");
        return index.column() == 1 ? levels.at(line.level)
                                   : QStringLiteral("request %1 answered").arg(line.request);
    }

private:
    std::deque<Line> m_lines; // grows at either end without moving
    QRandomGenerator m_random {1};
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    LogModel model;
    model.add(1000, false);

    QWidget window;
    auto *view = new QTableFastView;
    view->setItemDelegate(new Vantix::ItemDelegate(view));
    view->setPaintBufferEnabled(true);
    view->setModel(&model);
    view->header()->resizeSection(2, 260);
    view->setCurrentLast(); // and the current row goes along with those that arrive there
    auto *atTop = new QCheckBox("At the top");
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(view);
    layout->addWidget(atTop);

    QTimer feed;
    QObject::connect(&feed, &QTimer::timeout, view, [&] { model.add(100, atTop->isChecked()); });
    QObject::connect(atTop, &QCheckBox::toggled, view, [view](bool isAtTop) {
        isAtTop ? view->setCurrentFirst() : view->setCurrentLast();
    });
    feed.start(16);
    window.setWindowTitle("Live log");
    window.resize(640, 420);
    window.show();
    return QApplication::exec();
}
