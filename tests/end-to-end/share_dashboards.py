#!/usr/bin/python3
"""Marks cells by limits, exports a dashboard with an alternate path for its folder, and imports it into another project
on a machine that has that folder elsewhere.

usage: share_dashboards.py BIN    (the folder of the programs)"""
import json
import sys

from desk import click, desk, enter, key, seen, wait_for, wait_until, write, xdotool
from pictures import colors
from windows import (choose_dashboard, first_dashboard, main_window, panels, save_as, start_empty, stored_dashboards,
                     stored_panels, wait_panels)
from workbook import write_workbook

TABLE = [['Region', 'Sold'], *([f'Region {row}', row * 10] for row in range(1, 12))]
HIGH, LOW = bytes((128, 180, 180)), bytes((180, 128, 180))


class Sharing:
    def __init__(self, a_desk):
        self.desk, self.folder = a_desk, a_desk.folder
        self.reports, self.elsewhere = self.folder / 'reports', self.folder / 'elsewhere'
        self.shared = self.folder / 'Dashboards of Ann.lvds'
        self.reports.mkdir()
        self.book = write_workbook(self.reports / 'Regions.xlsx', {'Regions': TABLE})

    def shared_rows(self, statement):
        return json.loads(self.desk.ctl('sql', self.shared, statement))


def build(program, book):
    """Two dashboards of one panel each, of one workbook."""
    first_dashboard(program, book, 'A1:B4', 100, 'North')
    return save_as(program, 'South', 'ctrl+shift+s')


# Thresholds.

def add_rule(program, dialog, cell, row):
    """For the cell with that text; leaves the keyboard in the limit of the rule's row."""
    click(program.find('cell', cell, dialog))
    program.press('Add Rule', dialog)
    wait_for(lambda: len([thing for thing in dialog.find('table', 'Rules').children if thing.role == 'cell']),
             4 * (row + 1), 'a row for the rule')


def mark_cells(program, main):
    panel, = wait_panels(main, 1)
    assert not {HIGH, LOW} & colors(panel.place)
    program.menu(main, 'Panel', 'Thresholds...')
    dialog = program.wait_window('Thresholds of Regions')
    add_rule(program, dialog, '30', 0)
    write('much')
    key('Return')
    program.answer('The limit of cell B4 cannot be used: the formula [= 1>much] is not understood at [much]: a number is '
                   'expected. Enter a number, as 1000 or -2.5.', 'OK')
    program.wait_window('Thresholds of Regions')
    key('ctrl+a')
    write('25')
    add_rule(program, dialog, '10', 1)
    write('15.5')
    key('shift+Tab', 'Down', 'Down')    # back to the comparison, past ">=" to "<"
    key('Tab', 'Tab', 'Down')           # over the limit to the mark, to the low one
    program.press('OK', dialog)
    program.wait_gone(dialog)
    wait_until(lambda: {HIGH, LOW} <= colors(panels(main)[0].place), 'the marks in the picture')
    seen('both marks in the picture')
    rules = program.sql('SELECT * FROM LvnpanelThresholds ORDER BY rowOffset')
    found = [(rule['rowOffset'], rule['colOffset'], rule['lowExp'], rule['highExp']) for rule in rules]
    assert found == [(2, 2, '<15.5', ''), (4, 2, '', '>25')], rules


# Alternate paths.

def path_rows(dialog):
    return [thing.name for thing in dialog.find('table').children if thing.role == 'cell']


def add_path(program, dialog, base, alternate):
    program.press('Add...', dialog)
    adding = program.wait_window('Add Alternate Path')
    program.choose(adding.find('combo box'), base)
    enter(program.find('text', within=adding), alternate)
    key('Return')
    program.wait_gone(adding)


def define_paths(program, export, sharing):
    program.press('Alt Paths...', export)
    dialog = program.wait_window('Alternate Paths')
    program.press('Add...', dialog)
    adding = program.wait_window('Add Alternate Path')
    key('Return')
    program.answer('Must select a base path.', 'OK')
    base = f'{sharing.reports}/'
    program.choose(adding.find('combo box'), base)
    program.press('OK', adding)
    program.answer('Must define an alternate path.', 'OK')
    program.wait_window('Add Alternate Path')
    key('Escape')
    program.wait_gone(adding)
    add_path(program, dialog, base, '/nowhere/')
    wait_for(lambda: path_rows(dialog), [base, '/nowhere/'], 'the path in the list')
    program.press('Delete', dialog)
    wait_for(lambda: path_rows(dialog), [], 'the path gone from the list')
    add_path(program, dialog, base, str(sharing.elsewhere))
    wait_for(lambda: path_rows(dialog), [base, f'{sharing.elsewhere}/'], 'a path that ends as its base does')
    program.press('Close', dialog)
    program.wait_gone(dialog)
    assert program.sql('SELECT * FROM LvnAltPaths') == [{'AltPath': f'{sharing.elsewhere}/', 'BasePath': base}]
    seen('the alternate path in the project')


def export(program, main, sharing):
    program.menu(main, 'Tools', 'Export Dashboards...')
    dialog = program.wait_window('Export Dashboards')
    entries = {entry.title: entry for entry in dialog.find('list', 'Dashboards').children}
    assert [name for name, entry in entries.items() if entry.has('selected')] == ['South'], 'the dashboard on screen'
    define_paths(program, dialog, sharing)

    program.wait_window('Export Dashboards')
    xdotool('keydown', 'ctrl')
    click(entries['South'])
    xdotool('keyup', 'ctrl')
    wait_until(lambda: not entries['South'].has('selected'), 'a list with nothing selected')
    program.press('OK', dialog)
    program.answer('Must select at least 1 dashboard to export.', 'OK')
    click(entries['South'])
    wait_until(lambda: entries['South'].has('selected'), 'a selection')
    key('Return')
    program.wait_window('Enter export file name')
    key('Escape')
    program.answer('No export file name defined.', 'OK')
    program.wait_window('Export Dashboards')
    program.press('OK', dialog)
    program.choose_file('Enter export file name', sharing.shared.with_suffix(''))
    program.wait_gone(dialog)

    assert [row['Name'].rstrip() for row in sharing.shared_rows('SELECT * FROM LvnSavedWorkspace')] == ['South']
    assert len(sharing.shared_rows('SELECT * FROM LvnSavedPanel')) == 1
    assert [row['FullPath'] for row in sharing.shared_rows('SELECT * FROM LvnPanelSource')] == [str(sharing.book)]
    assert sharing.shared_rows('SELECT * FROM LvnAltPaths') == program.sql('SELECT * FROM LvnAltPaths')
    assert stored_dashboards(program) == ['North', 'South'], 'the project itself has changed'
    seen('one dashboard in the shared file')


def start_import(program, main, sharing):
    program.menu(main, 'Tools', 'Import Dashboards...')
    program.choose_file('Select file to import from', sharing.shared)


def preview(program, dialog):
    """Confirms the import, and gives the window with its folders and what it says of each."""
    program.press('OK', dialog)
    window = program.wait_window('Folders of the Import')
    return window, [thing.name for thing in window.find('table', 'Folders').children if thing.role == 'cell']


def check_imported(program, sharing):
    assert stored_dashboards(program) == ['South']
    source, = program.sql('SELECT * FROM LvnPanelSource')
    assert source['DestFolder'] == f'{sharing.elsewhere}/', source
    assert source['FullPath'] == str(sharing.elsewhere / 'Regions.xlsx'), source
    assert stored_panels(program, 'SourceID, PicRange, SheetName, Caption', 'South') == [
        (source['ID'], '$A$1:$B$4``', 'Regions', 'Regions')]
    assert len(program.sql('SELECT * FROM LvnpanelThresholds')) == 2, 'limits come along'
    seen('the dashboard in the other project')


def check_shown(program, main, sharing):
    choose_dashboard(program, main, 'South')
    program.answer('Save changes to Untitled?', 'No')
    window = main_window(program, 'South')
    wait_panels(window, 1)
    wait_until(lambda: {HIGH, LOW} <= colors(panels(window)[0].place), 'the picture from the other folder, marked')
    seen('its picture from the other folder')


def import_elsewhere(program, sharing):
    main = start_empty(program)
    start_import(program, main, sharing)
    dialog = program.wait_window('Import Dashboards')
    entry, = dialog.find('list', 'Dashboards').children
    assert entry.title == 'South', entry.title
    program.press('OK', dialog)
    program.answer('Must select at least 1 panel to import.', 'OK')
    click(entry)
    folders, cells = preview(program, dialog)
    assert cells[2] == 'does not exist' and cells[0].startswith(str(sharing.reports)), cells
    program.press('Cancel', folders)
    program.wait_window('Import Dashboards')
    assert not stored_dashboards(program) and not program.sql('SELECT * FROM LvnPanelSource')
    key('Escape')
    program.wait_gone(dialog)
    seen('a folder that does not exist, and nothing written')

    sharing.elsewhere.mkdir()
    write_workbook(sharing.elsewhere / 'Regions.xlsx', {'Regions': TABLE})
    start_import(program, main, sharing)
    dialog = program.wait_window('Import Dashboards')
    click(dialog.find('list', 'Dashboards').children[0])
    folders, cells = preview(program, dialog)
    assert cells[2] == 'exists' and cells[0].startswith(str(sharing.elsewhere)), cells
    program.press('Import', folders)
    program.answer('Selected dashboard(s) were imported successfully.', 'OK')
    program.wait_gone(dialog)
    check_imported(program, sharing)
    start_import(program, main, sharing)
    program.answer('There are no dashboards to import from.', 'OK')
    check_shown(program, main_window(program, 'Untitled'), sharing)


def test(a_desk):
    sharing = Sharing(a_desk)
    sender = a_desk.program('sender')
    main = build(sender, sharing.book)
    mark_cells(sender, main)
    export(sender, main, sharing)
    key('ctrl+q')
    sender.wait_end()
    sharing.reports.rename(sharing.folder / 'away')
    import_elsewhere(a_desk.program('receiver'), sharing)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        test(the_desk)
