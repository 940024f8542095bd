#!/usr/bin/python3
"""`lumivanectl refresh` over and over while versions arrive: killed at random moments, hindered by write protection, and
simply often. After each of these the project is whole and the pictures are those of the newest version.

usage: refresh_endures.py BIN [SEED]    (the folder of the programs)"""
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / 'end-to-end'))
from workbook import write_workbook  # noqa: E402

NOBODY = 65534
YESTERDAY = time.time() - 86400


class Project:
    """A panel that follows the last row of its workbook, and one that stays at the top of it."""

    def __init__(self, programs, home):
        self.ctl, self.home, self.version = programs / 'lumivanectl', home, 0
        self.file, self.working, self.incoming = home / 'lumivane.lvdu', home / 'working', home / 'incoming'
        self.working.mkdir()
        self.incoming.mkdir()
        self.call('new-project', self.file)
        self.deliver(self.working)
        self.sql("INSERT INTO LvnSavedWorkspace(Name, LastUpdated) VALUES ('Figures', #2026-01-01#)")
        self.sql('INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, NewestFile, LastUpdated, LastChecked, '
                 f"CheckEveryNMin, UpdateType, SourceFolder) VALUES ('{self.working}/Sales.xlsx', 'Sales.xlsx', "
                 f"'{self.working}/', 'Sales.xlsx', #2020-01-01#, #2020-01-01#, 0, 'folder', '{self.incoming}/')")
        for rule, place, match in ('bottom', '$A$6:$B$6', 'bottom=$B$6'), ('top', '$A$1:$B$3', ''):
            self.sql('INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, ContentType, SheetName, ViewType, Caption, PicRange, '
                     f"RelativeTo, ContentMatch, LastViewed, [Top], [Left], Height, Width) VALUES (1, 1, 'S', 'Data', 'A', "
                     f"'{rule}', '{place}``', '{rule}', '{match}', #2026-01-01#, 0, 0, 900, 900)")

    def call(self, *words):
        return subprocess.run([self.ctl, *words], check=True, capture_output=True, text=True).stdout

    def sql(self, statement):
        return json.loads(self.call('sql', self.file, statement))

    def deliver(self, folder=None):
        """The next version: a row more than the last one, and ten seconds later."""
        self.version += 1
        rows = [[f'Line {row}', row * self.version] for row in range(1, 6 + self.version)]
        # Outside the folders first, with its time: what arrives is whole.
        book = write_workbook(self.home / 'Sales.xlsx', {'Data': rows})
        moment = YESTERDAY + 10 * self.version
        os.utime(book, (moment, moment))
        book.replace((folder or self.incoming) / 'Sales.xlsx')

    def start(self):
        return subprocess.Popen([self.ctl, 'refresh', '--home', self.home, self.file], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True)

    def refresh(self, status=0):
        run = self.start()
        said = run.communicate(timeout=60)
        assert run.returncode == status, (run.returncode, said)
        return ''.join(said)

    def picture(self, panel):
        """The bitmap, and what the file says it belongs to."""
        content = (self.home / f'Panels/{panel}.bmp').read_bytes()
        end = int.from_bytes(content[2:6], 'little')
        return content[:end], json.loads(content[end:].split(b'\n', 2)[2])

    def check(self):
        """All shows the newest version, as a drawing from nothing does."""
        row = 5 + self.version
        found = [panel['PicRange'].replace('$', '') for panel in self.sql('SELECT PicRange FROM LvnSavedPanel ORDER BY ID')]
        assert found == [f'A{row}:B{row}``', 'A1:B3``'], (found, row)
        kept = [self.picture(panel) for panel in (1, 2)]
        current = (self.working / 'Sales.xlsx').stat()
        for picture, details in kept:
            version = details['version']
            assert (version['size'], version['modified']) == (str(current.st_size), str(current.st_mtime_ns)), details
        assert kept[0][1]['range'] == f'A{row}:B{row}', kept[0][1]
        for file in (self.home / 'Panels').glob('*.bmp'):
            file.unlink()
        self.refresh()
        for panel, (picture, details) in enumerate(kept, 1):
            assert self.picture(panel)[0] == picture, f'panel {panel} shows {details}'


def kills(project, seconds):
    project.deliver()
    began = time.monotonic()
    project.refresh()
    lasts = time.monotonic() - began
    end, count = time.monotonic() + seconds, 0
    while time.monotonic() < end:
        project.deliver()
        run = project.start()
        time.sleep(random.uniform(0, lasts))
        run.kill()
        run.communicate()
        project.refresh()
        project.check()
        count += 1
    left = [file.name for file in project.home.rglob('.lumivane-copy-*')]
    assert not left, left
    print(f'{count} kills: the project is whole and the pictures are right')


def soak(project, passes):
    for number in range(passes):
        if number % 5 == 0:
            project.deliver()
        said = project.refresh()
        assert said.count('drawn anew' if number % 5 == 0 else 'unchanged') == 2, (number, said)
    project.check()
    print(f'{passes} passes: each draws what is new and nothing else')


def hindrances(project):
    """What cannot be written or listed is said, and taken over as soon as it can."""
    panels = project.home / 'Panels'
    for what, hindered in ('pictures', panels), ('project', project.home), ('list', project.working):
        project.deliver()
        before = project.sql('SELECT LastChecked FROM LvnPanelSource')
        hindered.chmod(0o300 if what == 'list' else 0o500)
        said = project.refresh(1)
        hindered.chmod(0o700)
        assert said.count('failed: ') == 2, (what, said)
        assert project.sql('SELECT LastChecked FROM LvnPanelSource') == before, what
        project.refresh()
        project.check()
        print(f'hindered ({what}): taken back, said, and made up for')
    book = project.working / 'Sales.xlsx'
    (project.incoming / 'Sales.xlsx').unlink()
    book.rename(project.home / 'away')
    said = project.refresh(1)
    assert said.count(f'failed: The workbook [{book}] was not found.') == 2, said
    (project.home / 'away').rename(book)
    assert project.refresh().count('unchanged') == 2
    print('a vanished workbook is said')


def main():
    programs = pathlib.Path(sys.argv[1]).resolve()
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(10**6)
    print(f'seed {seed}')
    random.seed(seed)
    with tempfile.TemporaryDirectory() as folder:
        if os.geteuid() == 0:
            # Nothing is write-protected from the superuser.
            os.chown(folder, NOBODY, NOBODY)
            os.setgid(NOBODY)
            os.setuid(NOBODY)
        home = pathlib.Path(folder) / 'home'
        home.mkdir()
        project = Project(programs, home)
        project.refresh()
        hindrances(project)
        kills(project, 8)
        soak(project, 100)


if __name__ == '__main__':
    main()
