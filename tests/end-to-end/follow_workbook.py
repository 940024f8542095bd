#!/usr/bin/python3
"""Says how a panel's range is to be found and where new versions come from, delivers one, and sees the panel follow it.
Then the panel gets another caption, opens its workbook, and shows a picture instead.

usage: follow_workbook.py BIN    (the folder of the programs)"""
import os
import subprocess
import sys
import time

from desk import click, desk, enter, key, seen, wait_for, wait_until
from pictures import colors, contains, pixels, screen
from windows import first_dashboard, panels, stored_panels, wait_panels
from workbook import write_workbook

RED = bytes((200, 30, 30))


def table(regions):
    """Ends with a total, which lies below all regions."""
    sold = [row * 10 for row in range(1, regions + 1)]
    return [['Region', 'Sold'], *([f'Region {row}', count] for row, count in enumerate(sold, 1)), ['Total', sum(sold)]]


def build(program, book):
    main = first_dashboard(program, book, 'A12:B12', 100, 'Totals')
    assert stored_panels(program, 'RelativeTo, ContentMatch') == [('bottom', 'bottom=$B$12')]
    return main


def find_by_value(program, main):
    program.menu(main, 'Panel', 'Range Location...')
    dialog = program.wait_window('Range Location')
    program.choose(dialog.find('combo box'), 'The block of cells containing the value I will specify below')
    program.find('radio button', "Search for a cell with this value in column 'A'", dialog)
    anchors = [thing for thing in dialog.everything() if thing.role == 'combo box'][1]
    program.choose(anchors, 'Total')
    program.press('OK', dialog)
    program.wait_gone(dialog)
    key('ctrl+s')
    wait_for(lambda: stored_panels(program, 'RelativeTo, ContentMatch'),
             [('contents', 'bottom=$B$12`anchor=$A12`content=Total')], 'the rule in the project')
    seen('a range found by the value "Total"')


def follow_folder(program, main, incoming):
    program.menu(main, 'Panel', 'File Updates...')
    dialog = program.wait_window('File Updates')
    program.choose(dialog.find('combo box'), 'folder')
    mask = program.find('text', 'Filename mask', dialog)
    minutes = program.find('text', 'Minutes between new files', dialog)
    wait_until(lambda: minutes.has('enabled'), 'minutes that can be entered')
    enter(program.find('text', 'Source folder', dialog), str(incoming))
    for field, bad, refusal, good in (
            (mask, '', 'No file mask defined.', 'Regions*.xlsx'),
            (minutes, 'often', 'Frequency must be numeric.', '1'),
            (minutes, '0', 'Frequency must be greater than 0.', '1'),
            (minutes, '32001', 'Refresh frequency cannot be greater than 32,000.', '1')):
        enter(field, bad)
        program.press('OK', dialog)
        program.answer(refusal, 'OK')
        program.wait_window('File Updates')
        enter(field, good)
    program.press('OK', dialog)
    program.wait_gone(dialog)
    source, = program.sql('SELECT * FROM LvnPanelSource')
    found = source['UpdateType'], source['SourceFolder'], source['Mask'], source['CheckEveryNMin']
    assert found == ('folder', f'{incoming}/', 'Regions*.xlsx', 1), found
    seen('the folder of new versions in the project')
    key('ctrl+s')


def deliver(program, a_desk, incoming):
    delivered = write_workbook(incoming / 'Regions of May.xlsx', {'Regions': table(17)})
    key('F5')
    wait_for(lambda: [cells.replace('$', '') for cells, in stored_panels(program, 'PicRange')], ['A19:B19``'],
             'the range in the new version')
    target = a_desk.folder / 'expected.png'
    a_desk.ctl('render', delivered, 'Regions', 'A19:B19', target)
    picture = pixels('convert', target)
    wait_until(lambda: contains(screen(), picture), 'the picture of the new version')
    source, = program.sql('SELECT * FROM LvnPanelSource')
    assert source['NewestFile'] == 'Regions of May.xlsx', source
    seen('the new version in the panel')


def name_and_open(program, main):
    program.menu(main, 'Panel', 'Caption...')
    dialog = program.wait_window('Caption')
    enter(program.find('text', within=dialog), 'All regions')
    key('Return')
    program.wait_gone(dialog)
    panel, = wait_panels(main, 1)
    wait_until(lambda: panel.name.strip().startswith('All regions'), 'the new caption')
    click(panel, count=2)
    window = program.wait_window('Regions of May.xlsx - Lumivane')
    program.find('page tab', 'Regions', window)
    seen('the workbook by a double click')
    key('ctrl+w')
    program.wait_gone(window)
    program.activate('Lumivane - Totals')
    key('ctrl+s')
    wait_for(lambda: stored_panels(program, 'Caption'), [('All regions',)], 'the caption in the project')


def show_picture(program, main, a_desk):
    picture = a_desk.folder / 'Red.png'
    subprocess.run(['convert', '-size', '90x60', 'xc:rgb(200,30,30)', picture], check=True)
    program.menu(main, 'Panel', 'Load Picture')
    program.choose_file('Select Picture', picture)
    wait_until(lambda: RED in colors(panels(main)[0].place), 'the picture')
    key('ctrl+s')
    wait_for(lambda: stored_panels(program, 'ContentType, ViewType, Caption'), [('P', 'A', 'Red.png')],
             'the picture in the project')
    seen('a panel with a picture of its own')


def test(a_desk):
    incoming = a_desk.folder / 'incoming'
    incoming.mkdir()
    book = write_workbook(a_desk.folder / 'Regions.xlsx', {'Regions': table(10)})
    an_hour_ago = time.time() - 3600
    os.utime(book, (an_hour_ago, an_hour_ago))  # what is delivered is newer
    program = a_desk.program()
    main = build(program, book)
    find_by_value(program, main)
    follow_folder(program, main, incoming)
    deliver(program, a_desk, incoming)
    name_and_open(program, main)
    show_picture(program, main, a_desk)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        test(the_desk)
