// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The search panel over two views of Qt's, a tree and a table of the same moons. Press
// Ctrl+F in either, type "an" and go through the matches with Enter, or with F3 and
// Shift+F3 from the view as well. "Filter" leaves the rows with the text. "Match case" is
// for both. Esc brings all rows back.

#include "abstractitemviewfind.h"
#include "itemviewfindtoolbar.h"
#include "sortfilterproxymodel.h"
#include "translations.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

//! Calls \a slot of \a panel for \a keys while \a view has the focus. Inside the panel
//! the keys work without this. Keys of the whole window would get in their way.
void bind(QAbstractItemView *view, QKeySequence::StandardKey keys, QWidget *panel, const char *slot)
{
    auto *action = new QAction(view);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    QObject::connect(action, SIGNAL(triggered()), panel, slot);
}

//! \a view with a panel below it. \a header has the view's columns: those that it shows
//! are searched, in its order.
QWidget *withPanel(QAbstractItemView *view, QHeaderView *header)
{
    // Searches what the view shows: numbers and dates as its delegate writes them.
    auto *find = new AbstractItemViewFind(view);
    find->setView(view);
    find->setHeader(header);

    auto *panel = new ItemViewFindToolBar;
    panel->setViewFind(find);
    panel->setCaseSwitchVisible(true);
    panel->hide(); // until Ctrl+F

    bind(view, QKeySequence::Find, panel, SLOT(openFind()));
    bind(view, QKeySequence::FindNext, panel, SLOT(findNext()));
    bind(view, QKeySequence::FindPrevious, panel, SLOT(findPrev()));

    // Whoever closes the panel goes on in the view.
    QObject::connect(panel, &QToolBar::visibilityChanged, view, [view](bool isVisible) {
        if (!isVisible)
            view->setFocus();
    });

    auto *both = new QWidget;
    auto *layout = new QVBoxLayout(both);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    layout->addWidget(panel);
    return both;
}

struct Moon
{
    const char *planet;
    const char *name;
    int radius; // km
};

constexpr Moon moons[] = {
    {"Earth", "Moon", 1737},       {"Jupiter", "Io", 1822},       {"Jupiter", "Europa", 1561},
    {"Jupiter", "Ganymede", 2634}, {"Jupiter", "Callisto", 2410}, {"Saturn", "Mimas", 198},
    {"Saturn", "Enceladus", 252},  {"Saturn", "Tethys", 531},     {"Saturn", "Dione", 561},
    {"Saturn", "Rhea", 763},       {"Saturn", "Titan", 2575},     {"Saturn", "Iapetus", 734},
    {"Uranus", "Miranda", 236},    {"Uranus", "Ariel", 579},      {"Uranus", "Umbriel", 585},
    {"Uranus", "Titania", 788},    {"Uranus", "Oberon", 761},     {"Neptune", "Triton", 1353},
};

QStandardItem *item(const QVariant &value)
{
    auto *item = new QStandardItem;
    item->setData(value, Qt::DisplayRole);
    item->setEditable(false);
    return item;
}

//! Moons below their planets.
void fillTree(QStandardItemModel *model)
{
    model->setHorizontalHeaderLabels({"Name", "Radius, km"});
    QStandardItem *planet = nullptr;
    for (const Moon &moon : moons) {
        if (!planet || planet->text() != moon.planet) {
            planet = item(moon.planet);
            model->appendRow({planet, item({})});
        }
        planet->appendRow({item(moon.name), item(moon.radius)});
    }
}

void fillTable(QStandardItemModel *model)
{
    for (const Moon &moon : moons)
        model->appendRow({item(moon.name), item(moon.planet), item(moon.radius)});
    model->setHorizontalHeaderLabels({"Moon", "Planet", "Radius, km"});
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    vantixInstallTranslations(); // the panel's texts

    // "Filter" has an effect where this proxy stands between model and view.
    QStandardItemModel treeModel;
    fillTree(&treeModel);
    SortFilterProxyModel treeProxy;
    treeProxy.setRecursiveFilteringEnabled(true); // planets stay for their moons
    treeProxy.setSourceModel(&treeModel);

    QStandardItemModel tableModel;
    fillTable(&tableModel);
    SortFilterProxyModel tableProxy;
    tableProxy.setSourceModel(&tableModel);

    QSplitter window;
    auto *tree = new QTreeView;
    tree->setModel(&treeProxy); // closed branches are searched, too
    tree->header()->resizeSection(0, 200);
    window.addWidget(withPanel(tree, tree->header()));
    auto *table = new QTableView;
    table->setModel(&tableProxy);
    table->setSortingEnabled(true);
    table->sortByColumn(0, Qt::AscendingOrder);
    window.addWidget(withPanel(table, table->horizontalHeader()));
    window.setWindowTitle("Find");
    window.resize(1000, 500);
    window.show();
    return QApplication::exec();
}
