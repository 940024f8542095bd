"""What the tests do with the main window and the workbook window, and what they look up in the project."""
from desk import click, drag, enter, key, wait_for, wait_until

TWIPS = 15  # to a pixel


def close_tip(program):
    """The tip that a program shows which starts without a dashboard."""
    tip = program.wait_window('Startup Tip')
    program.press('Close', tip)
    program.wait_gone(tip)


def start_empty(program):
    """Starts it on a project without dashboards; gives its main window."""
    program.start()
    close_tip(program)
    return main_window(program, 'Untitled')


def first_dashboard(program, book, cells, across, name):
    """Starts it on an empty project and stores a dashboard of one panel; gives its main window."""
    start_empty(program)
    open_workbook(program, book)
    select(program, book, cells)
    paste_panel(program, 'Untitled', across)
    return save_as(program, name)


def save_as(program, name, keys='ctrl+s'):
    """Saves a dashboard that has no name yet, or a copy of one; gives its main window."""
    key(keys)
    name_dashboard(program, 'Save dashboard As', name)
    return main_window(program, name)


def main_window(program, dashboard):
    return program.wait_window(f'Lumivane - {dashboard}')


def panels(main):
    """The panel windows, in no order."""
    ground = main.find('layered pane', 'Panels of the dashboard')
    return [thing for thing in ground.children if thing.role == 'frame' and thing.has('showing')]


def paste_panel(program, dashboard, across):
    """Pastes what is selected and moves the new panel to the right by its title; gives the panel."""
    main = program.activate(f'Lumivane - {dashboard}')
    before = panels(main)
    key('ctrl+v')
    panel = next(panel for panel in wait_panels(main, len(before) + 1) if panel not in before)
    left, top, width, height = panel.place
    drag((left + 20, top + 10), (left + 20 + across, top + 10))
    wait_for(lambda: panel.place, (left + across, top, width, height), 'a panel moved by its title')
    return panel


def wait_panels(main, count):
    wait_for(lambda: len(panels(main)), count, f'{count} panels')
    return panels(main)


def scroll_bars(panel):
    return [thing for thing in panel.everything() if thing.role == 'scroll bar' and thing.has('showing')]


def drag_corner(panel, across, down):
    """Resizes the panel by its lower right corner."""
    left, top, width, height = panel.place
    corner = left + width - 2, top + height - 2
    drag(corner, (corner[0] + across, corner[1] + down))


def dashboard_list(main):
    return main.find('tool bar').find('combo box')


def choose_dashboard(program, main, name):
    """Picks it from the list on the toolbar."""
    program.choose(dashboard_list(main), name)


def check_view(main, view):
    """The mark in the panel menu."""
    def marked():
        entries = {entry.name: entry.has('checked') for entry in main.find('menu item', 'Panel').everything()}
        return [name for name in ('Autosize', 'Zoom to Fit', 'Crop') if entries[name]]

    wait_for(marked, [view], 'the view of the panel')


def open_workbook(program, path):
    key('ctrl+shift+o')
    program.choose_file('Open workbook', path)
    return program.wait_window(f'{path.name} - Lumivane')


def name_box(window):
    return window.find('tool bar').find('combo box').find('text')


def cells_of(window):
    return next(thing for thing in window.everything() if thing.name.startswith('Cells of '))


def select(program, path, cells, sheet=None):
    """Goes to cells of an open workbook by its name box."""
    window = program.activate(f'{path.name} - Lumivane')
    if sheet:
        click(program.find('page tab', sheet, window))
        wait_for(lambda: cells_of(window).name, f'Cells of {sheet}', 'the sheet')
    key('ctrl+g')
    enter(name_box(window), cells)
    key('Return')
    wait_until(lambda: cells_of(window).has('focused'), 'the keyboard for the cells')
    wait_for(lambda: name_box(window).text, cells, 'the selected cells')
    return window


def name_dashboard(program, title, name):
    """Answers the dialog for a dashboard's name."""
    dialog = program.wait_window(title)
    enter(program.find('text', 'Name of the dashboard', dialog), name)
    key('Return')


def stored_dashboards(program):
    return [row['Name'].rstrip() for row in program.sql('SELECT Name FROM LvnSavedWorkspace ORDER BY ID')]


def stored_panels(program, columns, dashboard=None):
    """A tuple for each panel of a dashboard, or of all of them."""
    where = f" WHERE WorkspaceID IN (SELECT ID FROM LvnSavedWorkspace WHERE Name LIKE '{dashboard}*')" if dashboard else ''
    rows = program.sql(f'SELECT {columns} FROM LvnSavedPanel{where} ORDER BY ID')
    return [tuple(row[column.strip(' []')] for column in columns.split(',')) for row in rows]
