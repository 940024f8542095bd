"""A connection to a D-Bus message bus, as much of it as accessibility needs: calls with a reply, and names under which
calls of others are answered."""
import itertools
import os
import socket
import struct
import threading

CALL, REPLY, ERROR = 1, 2, 3
PATH, INTERFACE, MEMBER, ERROR_NAME, REPLY_TO, DESTINATION, SENDER, SIGNATURE = 1, 2, 3, 4, 5, 6, 7, 8
FIELD_TYPES = {PATH: 'o', REPLY_TO: 'u', SIGNATURE: 'g'}
NUMBERS = {'y': '<B', 'b': '<I', 'n': '<h', 'q': '<H', 'i': '<i', 'u': '<I', 'x': '<q', 't': '<Q', 'd': '<d'}
ALIGNMENTS = {'s': 4, 'o': 4, 'a': 4, 'g': 1, 'v': 1, '(': 8, '{': 8}


class BusError(Exception):
    pass


def types_of(signature):
    """The complete types that a signature consists of: 'sa(so)' gives 's' and 'a(so)'."""
    types, begin, depth = [], 0, 0
    for end, letter in enumerate(signature, 1):
        depth += (letter in '({') - (letter in ')}')
        if letter != 'a' and depth == 0:
            types.append(signature[begin:end])
            begin = end
    return types


def alignment(kind):
    return struct.calcsize(NUMBERS[kind]) if kind in NUMBERS else ALIGNMENTS[kind[0]]


class Writer:
    def __init__(self):
        self.data = bytearray()

    def align(self, size):
        self.data.extend(bytes(-len(self.data) % size))

    def write(self, kind, value):
        self.align(alignment(kind))
        if kind in NUMBERS:
            self.data += struct.pack(NUMBERS[kind], value)
        elif kind in 'so':
            text = value.encode()
            self.data += struct.pack('<I', len(text)) + text + b'\0'
        elif kind == 'g':
            self.data += bytes([len(value)]) + value.encode() + b'\0'
        elif kind == 'v':
            inner, content = value
            self.write('g', inner)
            self.write(inner, content)
        elif kind[0] == 'a':
            self.write_array(kind[1:], value)
        else:
            for inner, part in zip(types_of(kind[1:-1]), value):
                self.write(inner, part)

    def write_array(self, kind, values):
        at = len(self.data)
        self.data += bytes(4)
        self.align(alignment(kind))
        begin = len(self.data)
        for value in values:
            self.write(kind, value)
        self.data[at:at + 4] = struct.pack('<I', len(self.data) - begin)


class Reader:
    def __init__(self, data):
        self.data, self.at = data, 0

    def number(self, kind):
        size = struct.calcsize(NUMBERS[kind])
        self.at += size
        return struct.unpack(NUMBERS[kind], self.data[self.at - size:self.at])[0]

    def read(self, kind):
        self.at += -self.at % alignment(kind)
        if kind in NUMBERS:
            return self.number(kind)
        if kind in 'sog':
            begin = self.number('y' if kind == 'g' else 'u')
            begin, self.at = self.at, self.at + begin + 1
            return self.data[begin:self.at - 1].decode()
        if kind == 'v':
            return self.read(self.read('g'))
        if kind[0] == 'a':
            size = self.number('u')
            self.at += -self.at % alignment(kind[1:])
            end, values = self.at + size, []
            while self.at < end:
                values.append(self.read(kind[1:]))
            return values
        return tuple(self.read(inner) for inner in types_of(kind[1:-1]))


class MessageBus:
    """Calls may come from one thread; answers to others are given by a thread of its own, so that nobody waits for
    this program while it waits for them."""

    def __init__(self, address, answers):
        """answers: by member's name, what is called with the message's arguments and gives (signature, values)."""
        self.answers, self.replies, self.serials = answers, {}, itertools.count(1)
        self.arrived, self.sending = threading.Condition(), threading.Lock()
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(address.split('path=')[1].split(',')[0])
        self.socket.sendall(b'\0AUTH EXTERNAL ' + str(os.getuid()).encode().hex().encode() + b'\r\n')
        self.stream = self.socket.makefile('rb')
        greeting = self.stream.readline()
        assert greeting.startswith(b'OK'), greeting
        self.socket.sendall(b'BEGIN\r\n')
        threading.Thread(target=self.receive, daemon=True).start()
        self.name, = self.call_bus('Hello')

    def close(self):
        self.socket.shutdown(socket.SHUT_RDWR)

    def own(self, name):
        self.call_bus('RequestName', 'su', name, 0)

    def call_bus(self, member, signature='', *values):
        return self.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', member, signature, *values)

    def call(self, destination, path, interface, member, signature='', *values, patience=120):
        """The values of the reply."""
        serial = self.send(CALL, {PATH: path, INTERFACE: interface, MEMBER: member, DESTINATION: destination},
                           signature, values)
        with self.arrived:
            if not self.arrived.wait_for(lambda: serial in self.replies, patience):
                raise BusError(f'{member} of {path} was not answered within {patience} s')
            kind, fields, body = self.replies.pop(serial)
        if kind == ERROR:
            raise BusError(f'{fields.get(ERROR_NAME)} for {member} of {path}: {body}')
        return body

    def send(self, kind, fields, signature='', values=()):
        body = Writer()
        for inner, value in zip(types_of(signature), values):
            body.write(inner, value)
        if signature:
            fields[SIGNATURE] = signature
        head = Writer()
        with self.sending:
            serial = next(self.serials)
            for inner, value in zip('yyyyuu', (ord('l'), kind, 0, 1, len(body.data), serial)):
                head.write(inner, value)
            head.write('a(yv)', [(code, (FIELD_TYPES.get(code, 's'), value)) for code, value in fields.items()])
            head.align(8)
            self.socket.sendall(head.data + body.data)
        return serial

    def receive(self):
        while start := self.stream.read(16):
            _, kind, _, _, body_size, serial, fields_size = struct.unpack('<BBBBIII', start)
            rest = self.stream.read(fields_size + -fields_size % 8)
            head = Reader(start + rest)
            head.at = 12    # the length of the fields, seen already
            fields = dict(head.read('a(yv)'))
            reader = Reader(self.stream.read(body_size))
            body = [reader.read(inner) for inner in types_of(fields.get(SIGNATURE, ''))]
            if kind == CALL:
                self.answer(serial, fields, body)
            elif kind in (REPLY, ERROR):
                with self.arrived:
                    self.replies[fields[REPLY_TO]] = kind, fields, body
                    self.arrived.notify_all()

    def answer(self, serial, fields, body):
        reply = {REPLY_TO: serial, DESTINATION: fields[SENDER]}
        answer = self.answers.get(fields[MEMBER])
        if answer:
            signature, values = answer(fields[SENDER], *body)
            self.send(REPLY, reply, signature, values)
        else:
            self.send(ERROR, {ERROR_NAME: 'org.freedesktop.DBus.Error.UnknownMethod', **reply})
