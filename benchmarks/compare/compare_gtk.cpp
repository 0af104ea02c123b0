// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// GTK 4's ColumnView under the same feed: compare_gtk ColumnView SCENARIO ROWS RATE SECONDS.
// GSK_RENDERER in the environment chooses how it paints.

#include "driver.h"

#include <gtk/gtk.h>

#include <array>
#include <unordered_map>

// A row. The list asks for those in view only, so they are made when it asks. Its signal
// "changed::3" tells of another text in column 3.
struct CompareRow
{
    GObject parent;
    int number;
};
struct CompareRowClass
{
    GObjectClass parent;
};
G_DEFINE_TYPE(CompareRow, compare_row, G_TYPE_OBJECT)

// The rows as a list model. It knows the rows that exist, so as to tell of their changes.
struct CompareModel
{
    GObject parent;
    const Contents *contents;
    int count;
};
struct CompareModelClass
{
    GObjectClass parent;
};
static void compare_model_list_init(GListModelInterface *iface);
G_DEFINE_TYPE_WITH_CODE(CompareModel, compare_model, G_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(G_TYPE_LIST_MODEL, compare_model_list_init))

// A window that knows when a frame of it is drawn.
struct CompareWindow
{
    GtkWindow parent;
    Driver *driver;
};
struct CompareWindowClass
{
    GtkWindowClass parent;
};
G_DEFINE_TYPE(CompareWindow, compare_window, GTK_TYPE_WINDOW)

namespace {

guint changedSignal = 0;
std::array<GQuark, Contents::columns> columnNames {};
std::unordered_map<int, CompareRow *> liveRows; //!< by number; not owned
std::array<int, Contents::columns> columnNumbers {};

void finalizeRow(GObject *object)
{
    liveRows.erase(reinterpret_cast<CompareRow *>(object)->number);
    G_OBJECT_CLASS(compare_row_parent_class)->finalize(object);
}

GType typeOfItem(GListModel *)
{
    return compare_row_get_type();
}

guint countOfItems(GListModel *model)
{
    return guint(reinterpret_cast<CompareModel *>(model)->count);
}

gpointer itemAt(GListModel *list, guint position)
{
    const auto *model = reinterpret_cast<CompareModel *>(list);
    if (int(position) >= model->count)
        return nullptr;
    const int number = model->contents->numberAt(int(position));
    const auto live = liveRows.find(number);
    if (live != liveRows.end())
        return g_object_ref(live->second);
    auto *row = static_cast<CompareRow *>(g_object_new(compare_row_get_type(), nullptr));
    row->number = number;
    liveRows[number] = row;
    return row;
}

void drawWindow(GtkWidget *widget, GtkSnapshot *snapshot)
{
    GTK_WIDGET_CLASS(compare_window_parent_class)->snapshot(widget, snapshot);
    reinterpret_cast<CompareWindow *>(widget)->driver->framePresented();
}

} // namespace

static void compare_row_init(CompareRow *)
{
}

static void compare_row_class_init(CompareRowClass *type)
{
    G_OBJECT_CLASS(type)->finalize = finalizeRow;
    changedSignal = g_signal_new("changed", G_TYPE_FROM_CLASS(type),
                                 GSignalFlags(G_SIGNAL_RUN_FIRST | G_SIGNAL_DETAILED), 0, nullptr,
                                 nullptr, nullptr, G_TYPE_NONE, 0);
    for (int column = 0; column < Contents::columns; ++column)
        columnNames[std::size_t(column)] = g_quark_from_string(std::to_string(column).c_str());
}

static void compare_model_init(CompareModel *)
{
}

static void compare_model_class_init(CompareModelClass *)
{
}

static void compare_model_list_init(GListModelInterface *iface)
{
    iface->get_item_type = typeOfItem;
    iface->get_n_items = countOfItems;
    iface->get_item = itemAt;
}

static void compare_window_init(CompareWindow *)
{
}

static void compare_window_class_init(CompareWindowClass *type)
{
    GTK_WIDGET_CLASS(type)->snapshot = drawWindow;
}

namespace {

const Contents *shownContents = nullptr;

int columnOf(GtkWidget *label)
{
    return *static_cast<int *>(g_object_get_data(G_OBJECT(label), "column"));
}

void showText(CompareRow *row, GtkWidget *label)
{
    gtk_label_set_text(GTK_LABEL(label), shownContents->text(row->number, columnOf(label)).c_str());
}

void setUpCell(GtkSignalListItemFactory *, GtkListItem *item, gpointer column)
{
    GtkWidget *label = gtk_label_new(nullptr);
    const int number = *static_cast<int *>(column);
    g_object_set_data(G_OBJECT(label), "column", column);
    gtk_label_set_xalign(GTK_LABEL(label), Contents::isRightAligned(number) ? 1 : 0);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_label_set_single_line_mode(GTK_LABEL(label), TRUE);
    if (Contents::isGreen(number))
        gtk_widget_add_css_class(label, "green");
    gtk_list_item_set_child(item, label);
}

void bindCell(GtkSignalListItemFactory *, GtkListItem *item, gpointer column)
{
    auto *row = static_cast<CompareRow *>(gtk_list_item_get_item(item));
    GtkWidget *label = gtk_list_item_get_child(item);
    showText(row, label);
    const GQuark name = columnNames[std::size_t(*static_cast<int *>(column))];
    g_signal_connect_closure_by_id(row, changedSignal, name,
                                   g_cclosure_new(G_CALLBACK(showText), label, nullptr), FALSE);
}

void unbindCell(GtkSignalListItemFactory *, GtkListItem *item, gpointer)
{
    g_signal_handlers_disconnect_by_data(gtk_list_item_get_item(item),
                                         gtk_list_item_get_child(item));
}

class GtkTable : public Table
{
public:
    GtkTable(GtkWidget *view, GtkWidget *scrolled, CompareModel *model)
        : m_view(view)
        , m_bar(gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scrolled)))
        , m_model(model)
    {
        // Where the new end is is known after the next layout, in which the list does not move.
        g_signal_connect_swapped(m_bar, "changed", G_CALLBACK(followEndSoon), this);
    }

    void rowsAppended(int count) override { tellInserted(m_model->count, count); }
    void rowsInsertedAbove(int count) override { tellInserted(0, count); }
    void cellChanged(int position, int column) override
    {
        const auto row = liveRows.find(m_model->contents->numberAt(position));
        if (row != liveRows.end())
            g_signal_emit(row->second, changedSignal, columnNames[std::size_t(column)]);
    }
    // A far jump of the adjustment leaves the list of GTK 4.8 without rows until it is moved again.
    void showRow(int position) override
    {
        m_shown = position;
        gtk_widget_activate_action(gtk_widget_get_last_child(m_view), "list.scroll-to-item", "u",
                                   guint(position));
    }
    void showEnd() override
    {
        m_isAtEnd = true;
        showRow(m_model->count - 1);
    }
    void scrollRows(int count) override { showRow(m_shown + count); }
    void scrollPages(int count) override
    {
        scrollRows(count * int(gtk_adjustment_get_page_size(m_bar) / heightOfRow()));
    }
    int firstInView() override { return numberAt(heightOfHeader() + heightOfRow() / 2); }
    int lastInView() override
    {
        return numberAt(heightOfHeader() + gtk_adjustment_get_page_size(m_bar) - heightOfRow() / 2);
    }

private:
    static void followEndSoon(GtkTable *self)
    {
        if (self->m_isAtEnd && self->m_idle == 0)
            self->m_idle = g_idle_add(followEnd, self);
    }
    static gboolean followEnd(void *table)
    {
        auto *self = static_cast<GtkTable *>(table);
        self->m_idle = 0;
        self->showEnd();
        return G_SOURCE_REMOVE;
    }
    void tellInserted(int position, int count)
    {
        m_model->count += count;
        g_list_model_items_changed(G_LIST_MODEL(m_model), guint(position), 0, guint(count));
    }
    double heightOfRow() const { return gtk_adjustment_get_upper(m_bar) / m_model->count; }
    double heightOfHeader() const
    {
        return gtk_widget_get_height(m_view) - gtk_adjustment_get_page_size(m_bar);
    }
    //! Of the row whose cell is drawn there.
    int numberAt(double y) const
    {
        GtkWidget *widget = gtk_widget_pick(m_view, 5, y, GTK_PICK_DEFAULT);
        while (widget && !GTK_IS_LABEL(widget))
            widget = gtk_widget_get_first_child(widget);
        return widget ? Contents::numberOf(gtk_label_get_text(GTK_LABEL(widget))) : -1;
    }

    GtkWidget *m_view;
    GtkAdjustment *m_bar;
    CompareModel *m_model;
    int m_shown = 0; //!< the position that was last asked to be in view
    bool m_isAtEnd = false;
    guint m_idle = 0;
};

GtkWidget *makeView(CompareModel *model)
{
    GtkSelectionModel *rows = GTK_SELECTION_MODEL(gtk_no_selection_new(G_LIST_MODEL(model)));
    GtkWidget *view = gtk_column_view_new(rows);
    for (int column = 0; column < Contents::columns; ++column) {
        int *number = &columnNumbers[std::size_t(column)];
        *number = column;
        GtkListItemFactory *factory = gtk_signal_list_item_factory_new();
        g_signal_connect(factory, "setup", G_CALLBACK(setUpCell), number);
        g_signal_connect(factory, "bind", G_CALLBACK(bindCell), number);
        g_signal_connect(factory, "unbind", G_CALLBACK(unbindCell), number);
        GtkColumnViewColumn *added =
            gtk_column_view_column_new(std::to_string(column + 1).c_str(), factory);
        gtk_column_view_column_set_fixed_width(added, Contents::columnWidth);
        gtk_column_view_append_column(GTK_COLUMN_VIEW(view), added);
        g_object_unref(added);
    }
    return view;
}

//! Rows and font as everywhere else.
void setStyle()
{
    const std::string style = "* { font: 12px \"DejaVu Sans\"; }"
                              "columnview listview row, columnview listview row cell, "
                              "columnview listview row cell label {"
                              " padding: 0; margin: 0; border: none; min-height: 0; }"
                              "columnview listview row cell { padding: 0 3px; min-height: "
        + std::to_string(Contents::rowHeight) + "px; } label.green { color: #006000; }";
    GtkCssProvider *provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, style.c_str(), gssize(style.size()));
    gtk_style_context_add_provider_for_display(gdk_display_get_default(),
                                               GTK_STYLE_PROVIDER(provider),
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

GtkWidget *makeScrolled(GtkWidget *view)
{
    GtkWidget *scrolled = gtk_scrolled_window_new();
    gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(scrolled), FALSE);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_ALWAYS,
                                   GTK_POLICY_ALWAYS);
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled), view);
    return scrolled;
}

struct Loop
{
    Driver *driver;
    GMainLoop *loop;
};

gboolean tick(gpointer data)
{
    const auto *loop = static_cast<Loop *>(data);
    if (loop->driver->tick())
        return G_SOURCE_CONTINUE;
    g_main_loop_quit(loop->loop);
    return G_SOURCE_REMOVE;
}

//! "GskCairoRenderer" is "cairo", "GskGLRenderer" is "gl".
std::string rendererOf(GtkWidget *window)
{
    std::string name = G_OBJECT_TYPE_NAME(gtk_native_get_renderer(GTK_NATIVE(window)));
    name = name.substr(3, name.size() - 11);
    for (char &letter : name)
        letter = g_ascii_tolower(letter);
    return name;
}

} // namespace

int main(int argc, char *argv[])
{
    const Request request(argc, argv);
    if (!gtk_init_check())
        g_error("There is no display.");
    g_object_set(gtk_settings_get_default(), "gtk-enable-animations", FALSE, nullptr);
    setStyle();

    Contents contents(request.rows);
    shownContents = &contents;
    auto *model = static_cast<CompareModel *>(g_object_new(compare_model_get_type(), nullptr));
    model->contents = &contents;
    model->count = request.rows;
    GtkWidget *view = makeView(model);
    GtkWidget *scrolled = makeScrolled(view);
    GtkTable table(view, scrolled, model);
    Driver driver(request, &contents);
    driver.setTable(&table);

    auto *window = static_cast<CompareWindow *>(g_object_new(compare_window_get_type(), nullptr));
    window->driver = &driver;
    gtk_window_set_default_size(GTK_WINDOW(window), 1280, 800);
    gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
    gtk_window_set_child(GTK_WINDOW(window), scrolled);
    gtk_window_present(GTK_WINDOW(window));
    driver.setRenderer(rendererOf(GTK_WIDGET(window)));

    Loop loop {&driver, g_main_loop_new(nullptr, FALSE)};
    g_timeout_add(Driver::interval, tick, &loop);
    g_main_loop_run(loop.loop);
    g_main_loop_unref(loop.loop);
    return driver.status();
}
