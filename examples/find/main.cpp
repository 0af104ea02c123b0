// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The search panel over a tree of Qt's. Press Ctrl+F, type "an" and go through the matches with
// Enter, or with F3 and Shift+F3 from the tree as well. "Filter" leaves the rows with the text.
// Esc brings all rows back.

#include "abstractitemviewfind.h"
#include "itemviewfindtoolbar.h"
#include "sortfilterproxymodel.h"
#include "translations.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include <memory>

namespace {

//! Calls \a slot of \a panel for \a keys while \a view has the focus, as the panel itself does.
void bind(QAbstractItemView *view, QKeySequence::StandardKey keys, QWidget *panel, const char *slot)
{
    auto *action = new QAction(view);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    QObject::connect(action, SIGNAL(triggered()), panel, slot);
}

//! \a view with a panel below it. The columns that \a header shows are searched, in its order.
QWidget *withPanel(QAbstractItemView *view, QHeaderView *header)
{
    // Searches what the view shows: numbers and dates as its delegate writes them.
    auto *find = new AbstractItemViewFind(view);
    find->setView(view);
    find->setHeader(header);

    auto *panel = new ItemViewFindToolBar;
    panel->setViewFind(find);
    panel->setCaseSwitchVisible(true);

    bind(view, QKeySequence::Find, panel, SLOT(openFind()));
    bind(view, QKeySequence::FindNext, panel, SLOT(findNext()));
    bind(view, QKeySequence::FindPrevious, panel, SLOT(findPrev()));

    QObject::connect(panel, &QToolBar::visibilityChanged, view, [view](bool isVisible) {
        if (!isVisible) // whoever closes the panel goes on in the view
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
    {"Uranus", "Miranda", 236},    {"Uranus", "Titania", 788},    {"Neptune", "Triton", 1353},
};

//! Moons below their planets.
void fill(QStandardItemModel *model)
{
    model->setHorizontalHeaderLabels({"Name", "Radius, km"});
    QStandardItem *planet = nullptr;
    for (const Moon &moon : moons) {
        if (!planet || planet->text() != moon.planet) {
            planet = new QStandardItem(moon.planet);
            model->appendRow(planet);
        }
        planet->appendRow(
            {new QStandardItem(moon.name), new QStandardItem(QString::number(moon.radius))});
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    vantixInstallTranslations(); // the panel's texts

    // "Filter" has an effect where this proxy stands between model and view.
    QStandardItemModel model;
    fill(&model);
    SortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true); // planets stay for their moons
    proxy.setSourceModel(&model);

    auto *tree = new QTreeView;
    tree->setModel(&proxy); // closed branches are searched, too
    tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree->expandAll();
    tree->header()->resizeSection(0, 200);
    const std::unique_ptr<QWidget> window(withPanel(tree, tree->header()));
    window->setWindowTitle("Find");
    window->resize(600, 420);
    window->show();
    return QApplication::exec();
}
