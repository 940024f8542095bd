#!/usr/bin/python3
"""Builds a dashboard from nothing, by mouse and keyboard: starts on an empty project, opens a workbook, pastes ranges of
every kind, is refused what cannot be pasted, changes the panels' views and sizes, saves, and comes back after a kill.

usage: build_dashboard.py BIN    (the folder of the programs)"""
import re
import sys

from desk import click, desk, drag, key, seen, wait_for, wait_until
from pictures import part
from windows import (TWIPS, cells_of, check_view, drag_corner, main_window, name_box, open_workbook, panels, paste_panel,
                     save_as, scroll_bars, select, start_empty, stored_dashboards, stored_panels, wait_panels)
from workbook import write_workbook

TABLE = [['Region', *(f'M{month}' for month in range(1, 9))],
         *([f'Region {row}', *(row * month for month in range(1, 9))] for row in range(1, 61))]


def first_start(program):
    main = start_empty(program)
    assert not panels(main)
    assert not main.find('menu item', 'Panel').has('enabled'), 'there is no panel yet'
    seen('an empty dashboard')
    key('ctrl+v')
    program.answer('Unable to paste.  No Excel instance loaded to paste data from.', 'OK')
    assert not panels(main) and not stored_dashboards(program)


def paste_by_mouse(program, book):
    """Drags over cells, and pastes with the right button on the ground of the main window. Gives the cells."""
    window = open_workbook(program, book)
    cells = cells_of(window).children[0].place
    drag((cells[0] + 60, cells[1] + 30), (cells[0] + 200, cells[1] + 150))
    selected = wait_until(lambda: ':' in name_box(window).text and name_box(window).text, 'a selection')

    main = program.activate('Lumivane - Untitled')
    left, top, _, _ = main.find('layered pane').place
    click((left + 40, top + 30), button=3)
    click(program.find('menu item', 'Paste', main.find('menu item', 'Dashboard')))
    first, = wait_panels(main, 1)
    assert first.place[:2] == (left + 40, top + 30), (first.place, left, top)
    assert main.find('menu item', 'Panel').has('enabled')
    seen(f'a panel of {selected} where the mouse was')
    return selected


def refuse_pasting(program, book):
    refusals = {
        'B1:C1': 'No range of cells selected in the spreadsheet.  Please select a range and paste again.',
        'C5:C6,E5:E6': 'Unable to paste.  Several areas are selected.  Please select a single range and paste again.',
    }
    for cells, reason in refusals.items():
        select(program, book, cells)
        main = program.activate('Lumivane - Untitled')
        before = len(panels(main))
        key('ctrl+v')
        program.answer(reason, 'OK')
        assert len(panels(main)) == before, 'a refused paste left a panel'


def paste_scrolled(program, book):
    """What is scrolled out of the window does not come along. Gives the panel."""
    window = select(program, book, 'B2:D20', 'Plain')
    bars = [thing for thing in cells_of(window).everything() if thing.role == 'scroll bar']
    before = [bar.value for bar in bars]
    click(cells_of(window), button=5, count=2)  # the wheel
    wait_until(lambda: [bar.value for bar in bars] != before, 'the sheet to scroll')
    return paste_panel(program, 'Untitled', 800)


def check_stored(program, by_mouse):
    rows = stored_panels(program, 'Caption, SheetName, PicRange, RelativeTo, ContentMatch, ContentType, ViewType')
    ranges = [row[2] for row in rows]
    assert ranges[0].replace('$', '') == by_mouse + '``', ranges
    assert ranges[1:3] == ['$C$5:$E$9``', '$D$10:$F$14`1:1`A:A'], ranges
    assert re.fullmatch(r'\$B\$([3-9]|1\d):\$D\$20``', ranges[3]), ranges
    assert {row[:2] + row[3:] for row in rows} == {
        ('Sales report', sheet, 'bottom', 'bottom=$I$61', 'S', 'C') for sheet in ('Plain', 'Frozen')}, rows
    seen('the panels in the project')


def change_views(program, main, panel):
    """From its own size to a smaller one that scrolls, fits or springs back."""
    left, top, width, height = panel.place
    drag_corner(panel, -50, -90)
    wait_for(lambda: panel.place, (left, top, width - 50, height - 90), 'a smaller panel')
    wait_for(lambda: len(scroll_bars(panel)), 2, 'its scroll bars')
    check_view(main, 'Crop')
    program.menu(main, 'Panel', 'Zoom to Fit')
    wait_for(lambda: len(scroll_bars(panel)), 0, 'a picture that fits, without scroll bars')
    assert panel.place == (left, top, width - 50, height - 90)
    check_view(main, 'Zoom to Fit')
    key('ctrl+1')
    wait_for(lambda: panel.place, (left, top, width, height), 'a panel as large as its picture')
    check_view(main, 'Autosize')
    drag_corner(panel, 70, 40)
    wait_for(lambda: panel.place, (left, top, width, height), 'a panel that springs back')
    key('ctrl+2')
    drag_corner(panel, 70, 40)
    wait_for(lambda: panel.place, (left, top, width + 70, height + 40), 'a larger panel')
    check_view(main, 'Zoom to Fit')
    seen('crop, zoom, autosize and sizes by mouse')


def check_return(program, main, zoomed):
    """The stored places, and the same pictures after a kill. A stretched one may be drawn sharper then."""
    def pictures():
        return {panel.place: part(panel.children[0].place) for panel in panels(main) if panel.place != zoomed}

    ground = main.find('layered pane').place
    places = sorted(panel.place for panel in panels(main))
    stored = [tuple(pixels // TWIPS for pixels in row) for row in stored_panels(program, '[Left], [Top], Width, Height')]
    assert sorted((left + ground[0], top + ground[1], *size) for left, top, *size in stored) == places, (stored, places)
    before = pictures()
    program.kill()
    program.start()
    main = main_window(program, 'Sales')
    wait_for(lambda: sorted(panel.place for panel in panels(main)), places, 'the panels where they were')
    wait_until(lambda: pictures() == before, 'the pictures as they were')
    seen('the same dashboard after a kill')


def test(a_desk):
    book = write_workbook(a_desk.folder / 'Sales report.xlsx', {'Plain': TABLE, 'Frozen': (TABLE, (1, 1))})
    program = a_desk.program()
    first_start(program)
    by_mouse = paste_by_mouse(program, book)
    select(program, book, 'C5:E9')
    paste_panel(program, 'Untitled', 220)
    select(program, book, 'D10:F14', 'Frozen')
    paste_panel(program, 'Untitled', 450)
    refuse_pasting(program, book)
    last = paste_scrolled(program, book)
    main = save_as(program, 'Sales')
    check_stored(program, by_mouse)

    change_views(program, main, last)
    key('ctrl+s')
    wait_for(lambda: stored_panels(program, 'ViewType')[-1], ('Z',), 'the view in the project')
    check_return(program, main, last.place)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        test(the_desk)
