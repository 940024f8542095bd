#!/usr/bin/python3
"""Saves, copies, renames, opens and deletes dashboards, and goes through every branch of the question whether changes
are to be saved.

usage: keep_dashboards.py BIN    (the folder of the programs)"""
import sys

from desk import click, desk, key, seen, wait_for, wait_until, write
from windows import (check_view, choose_dashboard, dashboard_list, main_window, name_dashboard, open_workbook, paste_panel,
                     select, start_empty, stored_dashboards, stored_panels, wait_panels)
from workbook import write_workbook

TABLE = [['Region', 'Sold'], *([f'Region {row}', row * 10] for row in range(1, 12))]
VIEWS = {'C': 'Crop', 'Z': 'Zoom to Fit'}
KEYS = {'C': 'ctrl+3', 'Z': 'ctrl+2'}


def first_save(program):
    key('ctrl+s')
    dialog = program.wait_window('Save dashboard As')
    key('Return')
    program.answer('Name must not be blank!', 'OK')
    name = program.find('text', 'Name of the dashboard', dialog)
    click(name)
    wait_until(lambda: name.has('focused'), 'the keyboard')
    write('"No\'rt*h+')
    wait_for(lambda: name.text, 'North', 'a name without signs that must not stand in it')
    key('Return')
    main = main_window(program, 'North')
    assert stored_dashboards(program) == ['North']
    assert stored_panels(program, 'PicRange', 'North') == [('$A$1:$B$4``',)]
    seen('the first dashboard in the project')
    return main


def open_the_only_one(program, main):
    """It is not preselected: whoever opens it must pick it."""
    program.menu(main, 'Dashboard', 'Open...')
    dialog = program.wait_window('Open a dashboard')
    key('Return')
    program.answer('No dashboard selected.', 'OK')
    program.wait_window('Open a dashboard')
    key('Escape')
    program.wait_gone(dialog)
    main_window(program, 'North')


def copy_and_rename(program, main):
    key('ctrl+shift+s')
    name_dashboard(program, 'Save dashboard As', 'NORTH')
    program.answer('A dashboard with the same name already exists.  Please modify the name.', 'OK')
    name_dashboard(program, 'Save dashboard As', 'West')
    main = main_window(program, 'West')
    assert stored_dashboards(program) == ['North', 'West']
    assert stored_panels(program, 'SourceID, PicRange', 'West') == stored_panels(program, 'SourceID, PicRange', 'North')
    seen('a copy')
    key('F2')
    name_dashboard(program, 'Rename dashboard', 'South')
    main = main_window(program, 'South')
    assert stored_dashboards(program) == ['North', 'South']
    assert len(stored_panels(program, 'ID')) == 2
    wait_for(lambda: dashboard_list(main).title, 'South', 'the new name in the list')
    seen('another name')
    return main


# Ways to leave the dashboard North, in two steps: what asks for it, and what follows once that is answered; then North is
# back.

def by_new(program):
    key('ctrl+n')
    yield
    main = main_window(program, 'Untitled')
    wait_panels(main, 0)
    choose_dashboard(program, main, 'North')
    program.answer('Save changes to Untitled?', 'No')


def by_open(program):
    key('ctrl+o')
    yield
    dialog = program.wait_window('Open a dashboard')
    program.choose(dialog.find('combo box'), 'South')
    program.press('OK', dialog)
    choose_dashboard(program, main_window(program, 'South'), 'North')


def by_list(program):
    choose_dashboard(program, main_window(program, 'North'), 'South')
    yield
    choose_dashboard(program, main_window(program, 'South'), 'North')


def by_refresh(program):
    key('F5')
    yield


def by_end(program):
    key('ctrl+q')
    yield
    program.wait_end()
    program.start()
    main = wait_until(lambda: next((window for window in program.windows()
                                    if window.title.startswith('Lumivane - ') and window.has('active')), None),
                      'the main window')
    if main.title != 'Lumivane - North':
        choose_dashboard(program, main, 'North')


def go_through(departure, program):
    """Each answer, with the view of North's only panel as the change that is saved or not."""
    def stored_view():
        (view,), = stored_panels(program, 'ViewType', 'North')
        return view

    for button in ('Cancel', 'No', 'Yes'):
        main = main_window(program, 'North')
        wait_panels(main, 1)
        before = stored_view()
        check_view(main, VIEWS[before])
        changed = 'CZ'.replace(before, '')
        key(KEYS[changed])
        check_view(main, VIEWS[changed])
        way = departure(program)
        next(way)
        program.answer('Save changes to North?', button)
        if button == 'Cancel':
            main = main_window(program, 'North')
            check_view(main, VIEWS[changed])
            wait_for(lambda: dashboard_list(main).title, 'North', 'the list on the dashboard that stays')
            key(KEYS[before])
            check_view(main, VIEWS[before])
        else:
            next(way, None)
            main_window(program, 'North')
        wait_for(stored_view, changed if button == 'Yes' else before, 'the view in the project')
        seen(f'{button}, {departure.__name__}')


def give_no_name(program):
    """Yes, and then no name: the dashboard is not saved, and stays. It can still be given up."""
    key('ctrl+n')
    main = main_window(program, 'Untitled')
    choose_dashboard(program, main, 'South')
    program.answer('Save changes to Untitled?', 'Yes')
    dialog = program.wait_window('Save dashboard As')
    key('Escape')
    program.wait_gone(dialog)
    main = main_window(program, 'Untitled')
    wait_for(lambda: dashboard_list(main).title, 'Untitled', 'the list on the dashboard that stays')
    choose_dashboard(program, main, 'South')
    program.answer('Save changes to Untitled?', 'No')
    main_window(program, 'South')
    assert stored_dashboards(program) == ['North', 'South']


def delete(program):
    main = main_window(program, 'South')
    program.menu(main, 'Dashboard', 'Delete')
    program.answer("Are you sure you want to delete 'South'?", 'No', 'Confirm Action')
    assert stored_dashboards(program) == ['North', 'South']
    program.menu(main_window(program, 'South'), 'Dashboard', 'Delete')
    program.answer("Are you sure you want to delete 'South'?", 'Yes', 'Confirm Action')
    main = main_window(program, 'North')
    wait_panels(main, 1)
    assert stored_dashboards(program) == ['North'] and len(stored_panels(program, 'ID')) == 1
    program.menu(main, 'Dashboard', 'Delete')
    program.answer("Are you sure you want to delete 'North'?", 'Yes', 'Confirm Action')
    main = main_window(program, 'Untitled')
    wait_panels(main, 0)
    assert not main.find('menu item', 'Dashboard').find('menu item', 'Delete').has('enabled')
    assert stored_dashboards(program) == [] and stored_panels(program, 'ID') == []
    assert len(program.sql('SELECT * FROM LvnPanelSource')) == 1, 'sources outlive their panels'
    key('ctrl+q')
    program.answer('Save changes to Untitled?', 'No')
    program.wait_end()
    seen('the last dashboard deleted')


def test(a_desk):
    book = write_workbook(a_desk.folder / 'Regions.xlsx', {'Regions': TABLE})
    program = a_desk.program()
    start_empty(program)
    open_workbook(program, book)
    select(program, book, 'A1:B4')
    paste_panel(program, 'Untitled', 200)
    main = first_save(program)
    open_the_only_one(program, main)
    main = copy_and_rename(program, main)
    choose_dashboard(program, main, 'North')
    for departure in by_new, by_open, by_list, by_refresh, by_end:
        go_through(departure, program)
    give_no_name(program)
    delete(program)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        test(the_desk)
