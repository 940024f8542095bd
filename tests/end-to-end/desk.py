"""A desk to try the program on as a user does: a virtual screen with a window manager, the real program in a folder of
its own, mouse and keyboard. Where things are on the screen and what they say is learnt from the accessibility
interface, so that nothing depends on places, fonts or speed: every step waits for what it needs, patiently."""
import contextlib
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from accessible import AccessibilityBus
from message_bus import BusError

PATIENCE = 120  # seconds for anything that should come at once, on a slow machine too

BUS_CONFIGURATION = '''<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>'''

# Windows that come up get the keyboard, and no key is the window manager's.
WINDOW_MANAGER_CONFIGURATION = '''<openbox_config xmlns="http://openbox.org/3.4/rc">
<focus><focusNew>yes</focusNew><focusLast>yes</focusLast></focus>
<desktops><number>1</number></desktops>
<mouse><context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/>
</mousebind></context></mouse></openbox_config>'''


def seen(what):
    print(f'{what}: seen', flush=True)


def wait_until(condition, what, patience=None):
    """What the condition gives once it is true. A window that goes while it is looked at is no failure."""
    patience = patience or PATIENCE
    end, last = time.monotonic() + patience, None
    while True:
        try:
            last = condition()
            if last:
                return last
        except BusError as error:
            last = error
        if time.monotonic() > end:
            raise AssertionError(f'{what}: not within {patience} s; at last {last!r}')
        time.sleep(0.05)


def wait_for(value, expected, what):
    """Until the function gives the value expected."""
    found = []

    def is_there():
        found[:] = [value()]
        return found[0] == expected

    try:
        wait_until(is_there, what)
    except AssertionError:
        raise AssertionError(f'{what}: expected {expected!r}, found {found}') from None


def xdotool(*words):
    subprocess.run(['xdotool', *map(str, words)], check=True, stdout=subprocess.DEVNULL)


def key(*keys):
    """Keys such as 'ctrl+s', one after the other, to the window that has the keyboard."""
    xdotool('key', '--delay', 20, *keys)


def click(target, button=1, count=1):
    """On a thing, or on a place of the screen."""
    x, y = target if isinstance(target, tuple) else target.center
    xdotool('mousemove', x, y, 'click', '--repeat', count, '--delay', 60, button)


def drag(begin, end):
    (x1, y1), (x2, y2) = begin, end
    xdotool('mousemove', x1, y1, 'mousedown', 1)
    for part in (0.2, 0.5, 0.8, 1):
        xdotool('mousemove', round(x1 + (x2 - x1) * part), round(y1 + (y2 - y1) * part))
    xdotool('mouseup', 1)


def write(text):
    """Types to whatever has the keyboard."""
    xdotool('type', '--delay', 12, text)


def enter(field, text):
    """Puts the text into an entry field in place of what it holds."""
    click(field)
    wait_until(lambda: field.has('focused'), f'the keyboard for the field of "{text}"')
    key('ctrl+a')
    if text:
        write(text)
    else:
        key('Delete')
    wait_for(lambda: field.text, text, 'what was typed')


def screenshot(name):
    """A picture of the whole screen beside where the test runs; gives its path."""
    path = Path.cwd() / f'{name}.png'
    subprocess.run(['import', '-window', 'root', path], check=True)
    return path


class Program:
    """The program in a folder of its own, where its project, settings and log lie beside it."""

    def __init__(self, desk, folder):
        self.desk, self.folder, self.process, self.root, self.without_keyboard = desk, Path(folder), None, None, None
        self.folder.mkdir(exist_ok=True)
        shutil.copy(desk.bin / 'lumivane', self.folder / 'lumivane')
        self.project = self.folder / 'lumivane.lvdu'
        if not self.project.exists():
            desk.ctl('new-project', self.project)

    def sql(self, statement):
        return json.loads(self.desk.ctl('sql', self.project, statement))

    def launch(self):
        with open(self.folder / 'stderr', 'ab') as errors:
            self.process = subprocess.Popen([self.folder / 'lumivane'], cwd=self.folder, stderr=errors)

    def start(self):
        """Launches it and waits until its windows can be seen."""
        known = len(self.desk.accessibility.roots)
        self.launch()
        wait_until(lambda: self.check_running() and len(self.desk.accessibility.roots) > known, 'the program')
        self.root = self.desk.accessibility.roots[-1]

    def check_running(self):
        assert self.process.poll() is None, f'the program ended: {(self.folder / "stderr").read_text()}'
        return True

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def wait_end(self):
        wait_until(lambda: self.process.poll() is not None, 'the end of the program')
        assert self.process.returncode == 0, f'the program ended with {self.process.returncode}'

    # Windows.

    def windows(self):
        self.check_running()
        return [window for window in self.root.children if window.has('showing')]

    def wait_window(self, title):
        """The window of that title, once it has the keyboard."""
        def active():
            windows = self.windows()
            self.keep_keyboard(windows)
            return next((window for window in windows if window.title == title and window.has('active')), None)
        return wait_until(active, f'the window "{title}"')

    def wait_gone(self, window):
        """Closed, and another window has the keyboard; or the program ended with it."""
        def gone():
            if self.process.poll() is not None:
                return True
            windows = self.windows()
            return window not in windows and self.keep_keyboard(windows)
        wait_until(gone, 'a window that closes')

    def keep_keyboard(self, windows):
        """Whether one of the windows has the keyboard. Where two close at once, the window manager may leave it with
        none; then it is given to a window, as by a click on the desktop's list, once that has lasted a while."""
        now = time.monotonic()
        if any(window.has('active') for window in windows):
            self.without_keyboard = None
            return True
        self.without_keyboard = self.without_keyboard or now
        if windows and now - self.without_keyboard > 3:
            modal = [window for window in windows if window.has('modal')]
            self.give_keyboard((modal or windows[:1])[-1].title)
            self.without_keyboard = None
        return False

    def give_keyboard(self, title):
        pattern = '^' + ''.join(letter if letter.isalnum() else '.' for letter in title) + ' *$'
        subprocess.run(['xdotool', 'search', '--onlyvisible', '--name', pattern, 'windowactivate'], capture_output=True)

    def activate(self, title):
        """As by a click on the desktop's list of windows."""
        def active():
            for window in self.windows():
                if window.title == title and window.has('active'):
                    return window
            self.give_keyboard(title)
            return None
        return wait_until(active, f'the window "{title}" in front')

    def describe(self):
        """What can be seen of it, for whoever has to find out why a test failed."""
        if not self.process or self.process.poll() is not None:
            return [f'{self.folder.name} does not run']
        with contextlib.suppress(BusError):
            return self.root.outline()
        return [f'{self.folder.name} does not answer']

    def find(self, role, name=None, within=None):
        def visible():
            for thing in (within or self.root).everything():
                if thing.is_a(role, name) and thing.has('showing'):
                    return thing
            return None
        return wait_until(visible, f'{role} "{name or ""}"')

    def press(self, button, within):
        click(self.find('push button', button, within))

    def choose(self, choices, entry):
        """Picks an entry of a list that opens. By keys: the list takes no click right after the one that opens it."""
        click(choices)
        entries = self.find('list', within=choices)
        names = [child.title for child in entries.children]
        key('Home', *['Down'] * names.index(entry))
        wait_until(lambda: entries.children[names.index(entry)].has('focused'), f'the entry "{entry}"')
        key('Return')

    # Menus and boxes.

    def menu(self, window, *path):
        """Chooses an entry of a window's menus with the mouse: the menu's name, those of its submenus, the entry."""
        place = window
        for name in path:
            place = self.find('menu item', name, place)
            click(place)

    def box(self, text, title='Lumivane'):
        """The message box with that text; it fails on any other."""
        window = self.wait_window(title)
        # Names of dashboards end in blanks once they are saved again.
        found = [re.sub(" +('?[?])", r'\1', label.name) for label in window.children if label.role == 'label' and label.name]
        assert found == [text], f'the box says {found}, not "{text}"'
        seen('box "' + text.replace('\n', ' ') + '"')
        return window

    def answer(self, text, button, title='Lumivane'):
        box = self.box(text, title)
        self.press(button, box)
        self.wait_gone(box)

    def choose_file(self, title, path):
        """Names a file in the dialog for files."""
        dialog = self.wait_window(title)
        enter(self.find('text', within=dialog), str(path))
        key('Return')
        self.wait_gone(dialog)


class Desk:
    def __init__(self, bin, folder, width, height):
        self.bin, self.folder, self.size, self.programs = Path(bin), Path(folder), (width, height), []

    def ctl(self, *words):
        return subprocess.run([self.bin / 'lumivanectl', *words], check=True, capture_output=True, text=True).stdout

    def program(self, name='program'):
        self.programs.append(Program(self, self.folder / name))
        return self.programs[-1]

    def set_up(self, ending):
        """Screen, message bus and window manager; they end with the desk."""
        def run(*command, **arguments):
            process = subprocess.Popen(command, stderr=subprocess.DEVNULL, **arguments)
            ending.callback(process.wait)
            ending.callback(process.terminate)  # so that it takes its lock file along
            return process

        width, height = self.size
        read, write = os.pipe()
        # Without a reset the server does not start anew, refusing clients meanwhile, whenever its only client leaves.
        run('Xvfb', '-displayfd', str(write), '-screen', '0', f'{width}x{height}x24', '-nolisten', 'tcp', '-noreset',
            pass_fds=[write])
        os.close(write)
        with open(read) as answer:
            number = answer.readline().strip()  # the server ends if its line is not read whole
        assert number, 'Xvfb did not start'
        os.environ.update(DISPLAY=f':{number}', HOME=str(self.folder), XDG_RUNTIME_DIR=str(self.folder),
                          XDG_CONFIG_HOME=str(self.folder), QT_QPA_PLATFORM='xcb', QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1',
                          LC_ALL='C.UTF-8')
        for name in ('WAYLAND_DISPLAY', 'AT_SPI_BUS_ADDRESS', 'QT_QPA_PLATFORMTHEME'):
            os.environ.pop(name, None)

        (self.folder / 'bus.conf').write_text(BUS_CONFIGURATION)
        bus = run('dbus-daemon', f'--config-file={self.folder}/bus.conf', '--nofork', '--print-address=1', stdout=subprocess.PIPE)
        address = bus.stdout.readline().decode().strip()
        os.environ['DBUS_SESSION_BUS_ADDRESS'] = address
        self.accessibility = AccessibilityBus(address)
        ending.callback(self.accessibility.close)

        (self.folder / 'openbox.xml').write_text(WINDOW_MANAGER_CONFIGURATION)
        run('openbox', '--config-file', f'{self.folder}/openbox.xml', stdout=subprocess.DEVNULL)
        wait_until(lambda: subprocess.run(['xdotool', 'get_desktop'], capture_output=True).returncode == 0, 'the window manager')


@contextlib.contextmanager
def desk(bin, width=1366, height=768):
    """A desk that is cleared at the end. Where what is done on it fails, the screen is kept as a picture."""
    with tempfile.TemporaryDirectory(prefix='lumivane-') as folder, contextlib.ExitStack() as ending:
        a_desk = Desk(bin, folder, width, height)
        a_desk.set_up(ending)
        try:
            yield a_desk
        except BaseException:
            for program in a_desk.programs:
                print(*program.describe(), sep='\n')
            print('The screen at that time:', screenshot(f'failed-{Path(sys.argv[0]).stem}'), flush=True)
            raise
        finally:
            for program in a_desk.programs:
                if program.process and program.process.poll() is None:
                    program.kill()
