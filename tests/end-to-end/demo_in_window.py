#!/usr/bin/python3
"""Starts the program on the demo in a virtual X server, delivers new workbooks, waits for the program's own timer, kills
the program and starts it again. What the window shows is compared with what lumivanectl draws of the same cells, and
with what the project stores.

usage: demo_in_window.py BIN DELIVER    (the folder of the programs, the script that delivers a version)"""
import contextlib
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

BIN, DELIVER = Path(sys.argv[1]), Path(sys.argv[2])
WIDTH, HEIGHT = 1366, 768
PATIENCE = 120      # seconds for what must appear, on a slow machine too
TICK = 60           # seconds between two passes of the program's timer

# Panels whose picture is shown uncut in its own size, with the cells that it must show in each version.
SHOWN = {
    'Liquidity reserve': ('Cash position.xlsx', 'Accounts', {1: 'A12:D16', 2: 'A13:D17', 3: 'A14:D18'}),
}
RANGES = {
    'Latest trading days': {1: '$A$19:$H$30`4:4`', 2: 'A24:H35`4:4`', 3: 'A29:H40`4:4`'},
    'Cash this week and next': {1: '$D$4:$G$12``A:A', 2: 'E4:H12``A:A', 3: 'F4:I12``A:A'},
    'Liquidity reserve': {1: '$A$12:$D$16``', 2: 'A13:D17``', 3: 'A14:D18``'},
    'Plan attainment': {1: '$A$4:$E$10``', 2: '$A$4:$E$10``', 3: '$A$4:$E$10``'},
    'Production, end of week': {1: '$F$10:$J$22`4:4`A:B', 2: '$F$10:$J$22`4:4`A:B', 3: '$F$10:$J$22`4:4`A:B'},
}


def pixels(*command):
    """The picture that a command of ImageMagick writes, as its size and rows of three bytes a pixel."""
    data = subprocess.run([*command, '-depth', '8', 'ppm:-'], check=True, capture_output=True).stdout
    magic, size, depth, body = data.split(b'\n', 3)
    width, height = map(int, size.split())
    assert (magic, depth) == (b'P6', b'255'), (magic, depth)
    return width, [body[i * width * 3:(i + 1) * width * 3] for i in range(height)]


def contains(screen, picture):
    """Whether the picture stands somewhere on the screen, pixel by pixel."""
    _, rows = screen
    _, wanted = picture
    key = max(range(len(wanted)), key=lambda i: len(set(wanted[i])))    # a row that is not plain
    for y in range(key, len(rows) - len(wanted) + key + 1):
        at = rows[y].find(wanted[key])
        while at >= 0:
            if at % 3 == 0 and all(rows[y - key + i][at:at + len(row)] == row for i, row in enumerate(wanted)):
                return True
            at = rows[y].find(wanted[key], at + 1)
    return False


class Demo:
    def __init__(self, folder):
        self.folder, self.program = folder, None
        subprocess.run([BIN / 'demo-project', folder], check=True)
        shutil.copy(BIN / 'lumivane', folder / 'lumivane')

    def ctl(self, *words):
        return subprocess.run([BIN / 'lumivanectl', *words], check=True, capture_output=True, text=True).stdout

    def sql(self, statement):
        return json.loads(self.ctl('sql', self.folder / 'lumivane.lvdu', statement))

    def stored(self):
        return self.sql('SELECT * FROM LvnSavedPanel ORDER BY ID')

    def expected(self, caption, version):
        book, sheet, cells = SHOWN[caption]
        target = self.folder / 'expected.png'
        self.ctl('render', self.folder / 'versions' / str(version) / book, sheet, cells[version], target)
        return pixels('convert', target)

    def start(self):
        self.program = subprocess.Popen([self.folder / 'lumivane'], cwd=self.folder, stderr=subprocess.PIPE)

    def kill(self):
        self.program.send_signal(signal.SIGKILL)
        self.program.wait()

    def deliver(self):
        subprocess.run([DELIVER, self.folder], check=True, stdout=subprocess.DEVNULL)

    def shows(self, version):
        assert self.program.poll() is None, f'the program ended: {self.program.stderr.read().decode()}'
        screen = pixels('import', '-window', 'root')
        return all(contains(screen, self.expected(caption, version)) for caption in SHOWN)

    def wait_until_shown(self, version, seconds, what):
        end = time.monotonic() + seconds
        while not self.shows(version):
            if time.monotonic() > end:
                subprocess.run(['import', '-window', 'root', 'failed.png'])
                raise AssertionError(f'{what}: not on the screen after {seconds} s; the screen: {os.getcwd()}/failed.png')
            time.sleep(1)
        print(f'{what}: seen')

    def check_ranges(self, version):
        ranges = {row['Caption']: row['PicRange'] for row in self.stored()}
        for caption, by_version in RANGES.items():
            assert ranges[caption] == by_version[version], (caption, ranges[caption], by_version[version])


@contextlib.contextmanager
def virtual_screen(home):
    read, write = os.pipe()
    server = subprocess.Popen(['Xvfb', '-displayfd', str(write), '-screen', '0', f'{WIDTH}x{HEIGHT}x24', '-nolisten', 'tcp'],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    number = os.read(read, 16).decode().strip()
    assert number, 'Xvfb did not start'
    os.environ.update(DISPLAY=f':{number}', HOME=str(home), XDG_RUNTIME_DIR=str(home), QT_QPA_PLATFORM='xcb',
                      LC_ALL='C.UTF-8')
    os.environ.pop('WAYLAND_DISPLAY', None)
    try:
        yield
    finally:
        server.terminate()
        server.wait()


def follow_deliveries(demo):
    demo.start()
    demo.wait_until_shown(1, PATIENCE, 'the first version')
    demo.check_ranges(1)

    demo.deliver()
    demo.wait_until_shown(2, TICK + PATIENCE, 'a version taken over by a tick of the timer')
    demo.check_ranges(2)

    before = demo.stored()
    demo.kill()
    demo.start()
    demo.wait_until_shown(2, PATIENCE, 'the same after a kill')
    assert demo.stored() == before, 'the kill changed the stored panels'

    # Killed while it takes over a version at its start, it goes on at the next start.
    demo.kill()
    demo.deliver()
    for moment in (0.05, 0.15, 0.3, 0.5):
        demo.start()
        time.sleep(moment)
        demo.kill()
    demo.start()
    demo.wait_until_shown(3, PATIENCE, 'the next version after kills in its middle')
    demo.check_ranges(3)


def main():
    with tempfile.TemporaryDirectory(prefix='lumivane-') as folder, virtual_screen(folder):
        demo = Demo(Path(folder) / 'demo')
        try:
            follow_deliveries(demo)
        finally:
            if demo.program and demo.program.poll() is None:
                demo.kill()


if __name__ == '__main__':
    main()
