#!/usr/bin/python3
"""Starts the program on the demo, delivers new workbooks, waits for the program's own timer, kills the program and starts
it again. What the window shows is compared with what lumivanectl draws of the same cells, and with what the project
stores.

usage: demo_in_window.py BIN DELIVER    (the folder of the programs, the script that delivers a version)"""
import subprocess
import sys
import time

from desk import PATIENCE, desk, seen, wait_until
from pictures import contains, pixels, screen

TICK = 60           # seconds between two passes of the program's timer

# The cells of the panel whose picture is shown uncut in its own size, in each version.
SHOWN = {1: 'A12:D16', 2: 'A13:D17', 3: 'A14:D18'}
RANGES = {
    'Latest trading days': {1: '$A$19:$H$30`4:4`', 2: 'A24:H35`4:4`', 3: 'A29:H40`4:4`'},
    'Cash this week and next': {1: '$D$4:$G$12``A:A', 2: 'E4:H12``A:A', 3: 'F4:I12``A:A'},
    'Liquidity reserve': {1: '$A$12:$D$16``', 2: 'A13:D17``', 3: 'A14:D18``'},
    'Plan attainment': {1: '$A$4:$E$10``', 2: '$A$4:$E$10``', 3: '$A$4:$E$10``'},
    'Production, end of week': {1: '$F$10:$J$22`4:4`A:B', 2: '$F$10:$J$22`4:4`A:B', 3: '$F$10:$J$22`4:4`A:B'},
}


class Demo:
    def __init__(self, a_desk, deliver):
        self.desk, self.deliver_script = a_desk, deliver
        self.folder = a_desk.folder / 'demo'
        subprocess.run([a_desk.bin / 'demo-project', self.folder], check=True)
        self.program = a_desk.program('demo')

    def stored(self):
        return self.program.sql('SELECT * FROM LvnSavedPanel ORDER BY ID')

    def deliver(self):
        subprocess.run([self.deliver_script, self.folder], check=True, stdout=subprocess.DEVNULL)

    def wait_until_shown(self, version, what, patience=None):
        target = self.folder / 'expected.png'
        book = self.folder / 'versions' / str(version) / 'Cash position.xlsx'
        self.desk.ctl('render', book, 'Accounts', SHOWN[version], target)
        picture = pixels('convert', target)

        def shown():
            self.program.check_running()
            return contains(screen(), picture)

        wait_until(shown, what, patience)
        seen(what)

    def check_ranges(self, version):
        def moved():
            ranges = {row['Caption']: row['PicRange'] for row in self.stored()}
            return all(ranges[caption] == by_version[version] for caption, by_version in RANGES.items())

        # A pass looks twice at each file, so the last panels follow some seconds after the first.
        wait_until(moved, f'the ranges of version {version}')


def follow_deliveries(demo):
    program = demo.program
    program.start()
    demo.wait_until_shown(1, 'the first version')
    demo.check_ranges(1)

    demo.deliver()
    demo.wait_until_shown(2, 'a version taken over by a tick of the timer', TICK + PATIENCE)
    demo.check_ranges(2)

    before = demo.stored()
    program.kill()
    program.start()
    demo.wait_until_shown(2, 'the same after a kill')
    assert demo.stored() == before, 'the kill changed the stored panels'

    # Killed while it takes over a version at its start, it goes on at the next start.
    program.kill()
    demo.deliver()
    for moment in (0.05, 0.15, 0.3, 0.5):
        program.launch()
        time.sleep(moment)
        program.kill()
    # The panel at whose load it was killed is left out once, which the program says; the next start has it again.
    program.start()
    wait_until(lambda: any(window.title == 'Lumivane - Management' for window in program.windows()), 'a load to its end')
    program.kill()
    program.start()
    demo.wait_until_shown(3, 'the next version after kills in its middle')
    demo.check_ranges(3)


if __name__ == '__main__':
    with desk(sys.argv[1]) as the_desk:
        follow_deliveries(Demo(the_desk, sys.argv[2]))
