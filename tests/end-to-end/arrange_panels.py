#!/usr/bin/python3
"""Lines panels up in layout mode, copies and moves them to dashboards, deletes one; then sets options, and works with
another project for a while.

usage: arrange_panels.py BIN    (the folder of the programs)"""
import sys

from desk import click, desk, enter, key, seen, wait_for, wait_until
from windows import (TWIPS, close_tip, first_dashboard, main_window, panels, paste_panel, save_as, select,
                     stored_dashboards, stored_panels, wait_panels)
from workbook import write_workbook

TABLE = [['Region', 'Sold', 'Left'], *([f'Region {row}', row * 10, row * 3] for row in range(1, 30))]


def build(program, book):
    """South with one panel, North with three of different sizes; gives these."""
    first_dashboard(program, book, 'A1:C4', 500, 'South')
    key('ctrl+n')
    main_window(program, 'Untitled')
    pasted = []
    for number, cells in enumerate(('A1:C4', 'A1:B8', 'A2:A3')):
        select(program, book, cells)
        pasted.append(paste_panel(program, 'Untitled', 300 * number + 10))
    main = save_as(program, 'North')
    assert stored_dashboards(program) == ['South', 'North']
    return main, pasted


def marks(pasted):
    return ['*' * panel.name.count('*') for panel in pasted]


def picture(panel):
    """A place on the panel's picture."""
    left, top, width, height = panel.children[0].place
    return left + width // 2, top + height // 2


def line_up(program, main, pasted):
    base, second, third = pasted
    left, top, width, height = base.place
    click((left + 30, top + 10))    # its title
    key('ctrl+l')
    wait_for(lambda: marks(pasted), ['*', '', ''], 'the base of the layout')
    click(picture(third))
    click(picture(second))
    click(picture(base))    # it keeps its mark
    wait_for(lambda: marks(pasted), ['*', '**', '**'], 'the marked panels')
    click(picture(third))
    wait_for(lambda: marks(pasted), ['*', '**', ''], 'a mark taken away')

    unmarked = third.place
    program.menu(main, 'Panel', 'Make Same Size', 'Both')
    wait_for(lambda: second.place[2:], (width, height), 'the size of the base')
    program.menu(main, 'Panel', 'Align', 'Rights')
    wait_for(lambda: second.place, (left, top, width, height), 'the right edge of the base')
    assert third.place == unmarked and base.place == (left, top, width, height)
    click((unmarked[0] + unmarked[2] // 2, unmarked[1] + unmarked[3] // 2))
    wait_for(lambda: marks(pasted), ['*', '**', '**'], 'the third panel marked')
    program.menu(main, 'Panel', 'Align', 'Bottoms')
    wait_for(lambda: third.place[1] + third.place[3], top + height, 'the bottom edge of the base')
    seen('panels lined up with the base')
    key('ctrl+l')
    wait_for(lambda: marks(pasted), ['', '', ''], 'the end of layout mode')
    key('ctrl+s')
    ground = main.find('layered pane').place
    places = [(x - ground[0], y - ground[1], *size) for x, y, *size in (panel.place for panel in pasted)]
    wait_for(lambda: [tuple(twips // TWIPS for twips in row) for row in
                      stored_panels(program, '[Left], [Top], Width, Height', 'North')], places, 'the places in the project')
    seen('the places in the project')


def choose_target(program, main, command, dashboard):
    program.menu(main, 'Panel', f'{command}...')
    dialog = program.wait_window(f'{command} to dashboard')
    choices = dialog.find('combo box')
    names = [child.title for child in choices.find('list').children]
    program.choose(choices, dashboard)
    program.press('OK', dialog)
    program.wait_gone(dialog)
    return names


def copy_and_move(program, main):
    assert choose_target(program, main, 'Copy', 'South') == ['North', 'South']
    wait_for(lambda: len(stored_panels(program, 'ID', 'South')), 2, 'a copy on the other dashboard')
    assert len(stored_panels(program, 'ID', 'North')) == 3 and len(panels(main)) == 3
    choose_target(program, main, 'Copy', 'North')
    wait_panels(main, 4)
    assert len(stored_panels(program, 'ID', 'North')) == 3, 'a copy here is stored with the dashboard'
    key('ctrl+s')
    wait_for(lambda: len(stored_panels(program, 'ID', 'North')), 4, 'the copy in the project')
    seen('copies here and there')
    assert choose_target(program, main, 'Move', 'South') == ['South']
    wait_panels(main, 3)
    assert (len(stored_panels(program, 'ID', 'North')), len(stored_panels(program, 'ID', 'South'))) == (3, 3)
    seen('a panel moved')


def delete(program, main):
    question = ('You are about to delete the active panel.  You will not be able to undelete.\n'
                'Do you want to continue?')
    program.menu(main, 'Panel', 'Delete')
    program.answer(question, 'No', 'Confirm Action')
    assert len(panels(main)) == 3
    program.menu(main, 'Panel', 'Delete')
    program.answer(question, 'Yes', 'Confirm Action')
    wait_panels(main, 2)
    assert len(stored_panels(program, 'ID', 'North')) == 2, 'a panel is deleted at once'
    key('ctrl+s')
    seen('a panel deleted')


def set_options(program, main):
    program.menu(main, 'Tools', 'Options')
    dialog = program.wait_window('Options')
    stamp = program.find('check box', 'show latest date/time as part of panel caption', dialog)
    assert stamp.has('checked')
    click(stamp)
    wait_until(lambda: not stamp.has('checked'), 'captions without the time')
    program.choose(dialog.find('combo box'), 'Left')
    enter(program.find('text', 'Minutes between checks for new files', dialog), '7')
    program.press('OK', dialog)
    program.wait_gone(dialog)
    wait_for(lambda: {panel.name for panel in panels(main)}, {'Regions'}, 'captions without the time and to the left')
    settings = (program.folder / 'lumivane.INI').read_text().splitlines()
    for line in ('Caption Alignment=Left', 'Panel Time Stamp=0', 'Refresh Frequency=7'):
        assert line in settings, (line, settings)
    seen('the options in the settings')


def choose_project(program, path):
    dialog = program.wait_window('Welcome to Lumivane')
    enter(program.find('text', 'Project file', dialog), str(path))
    program.press('OK', dialog)
    program.wait_gone(dialog)


def switch_project(a_desk, program, main):
    other = a_desk.folder / 'Other project.lvdu'
    a_desk.ctl('new-project', other)
    program.menu(main, 'Dashboard', 'Switch Project...')
    choose_project(program, other)
    close_tip(program)
    main = main_window(program, 'Untitled')
    wait_panels(main, 0)
    main = save_as(program, 'Elsewhere')
    assert 'Elsewhere' in a_desk.ctl('sql', other, 'SELECT Name FROM LvnSavedWorkspace')
    assert stored_dashboards(program) == ['South', 'North'], 'the project that was left has changed'
    seen('a dashboard in another project')
    program.menu(main, 'Dashboard', 'Switch Project...')
    choose_project(program, program.project)
    wait_panels(main_window(program, 'North'), 2)
    key('ctrl+q')
    program.wait_end()


def test(a_desk):
    book = write_workbook(a_desk.folder / 'Regions.xlsx', {'Regions': TABLE})
    program = a_desk.program()
    main, pasted = build(program, book)
    line_up(program, main, pasted)
    copy_and_move(program, main)
    delete(program, main)
    set_options(program, main)
    switch_project(a_desk, program, main)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        test(the_desk)
