"""The windows and controls of a program as a screen reader sees them: names, roles, states, texts and places."""
import os

from message_bus import MessageBus

SCALE = int(os.environ.get('QT_SCALE_FACTOR', 1))     # programs tell places in their own pixels
ROOT = '/org/a11y/atspi/accessible/root'
STATES = {'active': 1, 'checked': 4, 'enabled': 8, 'focused': 12, 'modal': 16, 'selected': 23, 'showing': 25}


class Thing:
    """A window or control. What has gone since it was found answers with a BusError."""

    def __init__(self, bus, owner, path):
        self.bus, self.owner, self.path = bus, owner, path

    def __eq__(self, other):
        return isinstance(other, Thing) and (self.owner, self.path) == (other.owner, other.path)

    def call(self, interface, member, signature='', *values):
        body = self.bus.call(self.owner, self.path, 'org.a11y.atspi.' + interface, member, signature, *values)
        return body[0] if body else None

    def look_up(self, interface, name):
        (_, value), = self.bus.call(self.owner, self.path, 'org.freedesktop.DBus.Properties', 'Get', 'ss',
                               'org.a11y.atspi.' + interface, name)
        return value

    @property
    def name(self):
        return self.look_up('Accessible', 'Name')

    @property
    def title(self):
        """Its name without the blanks that a dashboard's name gets with each save."""
        return self.name.rstrip()

    @property
    def role(self):
        return self.call('Accessible', 'GetRoleName')

    @property
    def text(self):
        """What is entered in it."""
        return self.call('Text', 'GetText', 'ii', 0, -1)

    @property
    def value(self):
        """Of a scroll bar and the like."""
        return self.look_up('Value', 'CurrentValue')

    @property
    def children(self):
        return [Thing(self.bus, owner, path) for owner, path in self.call('Accessible', 'GetChildren')
                if not path.endswith('/null')]

    def states(self):
        low, high = self.call('Accessible', 'GetState')
        bits = low | high << 32
        return {state for state, bit in STATES.items() if bits >> bit & 1}

    def has(self, state):
        return state in self.states()

    @property
    def place(self):
        """On the screen: left, top, width, height."""
        return tuple(SCALE * length for length in self.call('Component', 'GetExtents', 'u', 0))

    @property
    def center(self):
        left, top, width, height = self.place
        assert width and height, f'"{self.name}" is nowhere on the screen'
        return left + width // 2, top + height // 2

    def everything(self):
        """All that is in it, from outside to inside."""
        for child in self.children:
            yield child
            yield from child.everything()

    def find(self, role, name=None):
        """The first thing of that role, and of that name if one is given; None where there is none."""
        return next((thing for thing in self.everything() if thing.is_a(role, name)), None)

    def is_a(self, role, name=None):
        return self.role == role and name in (None, self.title)

    def outline(self, indent=''):
        """What there is to be seen, a line for each thing."""
        states = self.states()
        if 'showing' not in states:
            return []
        lines = [f'{indent}{self.role} "{self.name}" {self.place} {" ".join(sorted(states - {"showing"}))}']
        for child in self.children:
            lines += child.outline(indent + '  ')
        return lines


class AccessibilityBus:
    """The place where programs show their windows to others. It stands by itself: no desktop's services are used."""

    def __init__(self, address):
        self.address, self.roots = address, []
        self.bus = MessageBus(address, {'GetAddress': lambda sender: ('s', (address,)),
                                        'Get': lambda sender, interface, name: ('v', (('b', True),)),
                                        'Embed': self.embed})
        self.bus.own('org.a11y.atspi.Registry')
        self.bus.own('org.a11y.Bus')

    def embed(self, sender, program):
        self.roots.append(Thing(self.bus, *program))
        return '(so)', ((self.bus.name, ROOT),)

    def close(self):
        self.bus.close()
