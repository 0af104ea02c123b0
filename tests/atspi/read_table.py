#!/usr/bin/python3
# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# read_table.py PROGRAM [ARGUMENT...]: starts a program that shows a table in which rows arrive,
# and reads the table as a screen reader does, over the accessibility bus. Each line says what
# was checked; the exit code is 0 if all of it held.

import os
import subprocess
import sys
import time
import warnings

import gi

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of old functions
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

SECONDS = 30  # that a slow machine may take for anything
failures = 0


def check(what, holds, seen=""):
    global failures
    failures += not holds
    print("ok   " if holds else "FAIL ", what, "" if holds else f"({seen})", flush=True)


def until(answer, seconds=SECONDS):
    """What answer() gives once it is true, or last; events arrive meanwhile."""
    context = GLib.MainContext.default()
    end = time.monotonic() + seconds
    while True:
        try:
            found = answer()
        except GLib.Error:  # what was asked is gone by now
            found = None
        if found or time.monotonic() > end:
            return found
        context.iteration(False)
        time.sleep(0.01)


def children(accessible):
    for i in range(min(accessible.get_child_count(), 200)):
        child = accessible.get_child_at_index(i)
        if child is not None:
            yield child


def find(accessible, fits):
    """Walks as screen readers do: never into the cells of a table."""
    if fits(accessible):
        return accessible
    if accessible.get_role() == Atspi.Role.TABLE:
        return None
    for child in children(accessible):
        found = find(child, fits)
        if found is not None:
            return found
    return None


def application_of(pid):
    desktop = Atspi.get_desktop(0)
    return next((app for app in children(desktop) if app.get_process_id() == pid), None)


def has(accessible, state):
    return accessible.get_state_set().contains(state)


def row_texts(table, row, columns):
    return [Atspi.Table.get_accessible_at(table, row, column).get_name() for column in range(columns)]


def place_of(table, cell):
    """Row and column: as the cell says, or by its number where Qt's bridge has no such cells."""
    if "TableCell" in cell.get_interfaces():
        place = Atspi.TableCell.get_position(cell)
        return place[1], place[2]
    number = cell.get_index_in_parent()
    return (Atspi.Table.get_row_at_index(table, number),
            Atspi.Table.get_column_at_index(table, number))


def actions_of(accessible):
    return [Atspi.Action.get_action_name(accessible, i)
            for i in range(Atspi.Action.get_n_actions(accessible))]


def do(accessible, action):
    Atspi.Action.do_action(accessible, actions_of(accessible).index(action))


def read(table):
    columns = Atspi.Table.get_n_columns(table)
    rows = Atspi.Table.get_n_rows(table)
    titles = [Atspi.Table.get_column_description(table, column) for column in range(columns)]
    check("there are columns, and each has a title", columns > 1 and all(titles), titles)
    check("there are rows", rows > 1, rows)
    check("children are made on demand", has(table, Atspi.StateType.MANAGES_DESCENDANTS))
    check("it can have the focus", has(table, Atspi.StateType.FOCUSABLE))
    read_titles(table, titles)
    read_cell(table, columns)


def read_titles(table, titles):
    first = [table.get_child_at_index(column) for column in range(len(titles))]
    check("the first children are the titles", [title.get_name() for title in first] == titles)
    check("a title is one", first[0].get_role() == Atspi.Role.TABLE_COLUMN_HEADER,
          first[0].get_role_name())
    header = Atspi.Table.get_column_header(table, 1)
    check("a column has its title", header is not None and header.get_name() == titles[1])


def read_cell(table, columns):
    cell = Atspi.Table.get_accessible_at(table, 0, 1)
    check("a cell is one", cell.get_role() == Atspi.Role.TABLE_CELL, cell.get_role_name())
    check("its parent is the table", cell.get_parent() == table)
    texts = row_texts(table, 1, columns)
    check("a row can be read", sum(map(bool, texts)) > 1, texts)
    row, column = place_of(table, cell)
    check("a cell knows its place", row >= 0 and column == 1, (row, column))
    extents = Atspi.Component.get_extents(cell, Atspi.CoordType.SCREEN)
    check("a cell has a place on the screen", extents.width > 0 and extents.height > 0)
    check("a cell can be selected", "Select" in actions_of(cell), actions_of(cell))


def read_while_rows_arrive(table):
    rows = Atspi.Table.get_n_rows(table)
    columns = Atspi.Table.get_n_columns(table)
    read_rows = 0
    for _ in range(100):
        read_rows += sum(map(bool, row_texts(table, 0, columns))) > 1
    check("rows can be read while others arrive", read_rows == 100, read_rows)
    check("rows arrive", until(lambda: Atspi.Table.get_n_rows(table) > rows))
    last = Atspi.Table.get_n_rows(table) - 1
    check("the last row can be read", any(row_texts(table, last, columns)))


def follow_a_cell(table):
    """Rows arrive above it."""
    cell = Atspi.Table.get_accessible_at(table, 0, 0)
    text = cell.get_name()
    row = place_of(table, cell)[0]
    check("a cell is further down", until(lambda: place_of(table, cell)[0] > row + 2),
          place_of(table, cell))
    check("it keeps its text", cell.get_name() == text, cell.get_name())


def activate(app, pid):
    """There is no window manager to do so."""
    def is_active():
        window = next(children(app))
        if not has(window, Atspi.StateType.ACTIVE):
            found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)],
                                   capture_output=True, text=True, timeout=SECONDS)
            for number in found.stdout.split()[:1]:
                subprocess.run(["xdotool", "windowfocus", number], timeout=SECONDS)
        return has(window, Atspi.StateType.ACTIVE)
    check("the window is active", until(is_active))


def select_and_focus(table):
    focused = []

    def hear(event):
        if event.source.get_role() == Atspi.Role.TABLE_CELL and event.detail1:
            focused.append(event.source)

    listener = Atspi.EventListener.new(hear)
    listener.register("object:state-changed:focused")
    cell = Atspi.Table.get_accessible_at(table, 2, 1)
    do(cell, "SetFocus")
    check("a cell has the focus, and that is told", until(lambda: cell in focused), focused)
    check("it says so", until(lambda: has(cell, Atspi.StateType.FOCUSED)))
    other = Atspi.Table.get_accessible_at(table, 5, 1)
    do(other, "Select")
    check("a cell is selected", until(lambda: has(other, Atspi.StateType.SELECTED)))
    check("and so is its row",
          until(lambda: place_of(table, other)[0] in Atspi.Table.get_selected_rows(table)))
    listener.deregister("object:state-changed:focused")


def main():
    environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
    program = subprocess.Popen(sys.argv[1:], env=environment)
    try:
        Atspi.init()
        app = until(lambda: application_of(program.pid))
        check("the program is on the bus", app is not None)
        table = app and until(lambda: find(app, lambda a: a.get_role() == Atspi.Role.TABLE))
        check("it has a table", table is not None)
        if table is None:
            return
        until(lambda: Atspi.Table.get_n_rows(table) > 10)
        read(table)
        read_while_rows_arrive(table)
        follow_a_cell(table)
        activate(app, program.pid)
        select_and_focus(table)
        check("the program still runs", program.poll() is None, program.poll())
    finally:
        program.terminate()
        program.wait()


main()
sys.exit(failures != 0)
