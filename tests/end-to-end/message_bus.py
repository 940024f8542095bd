"""A connection to a message bus, as accessibility needs it: calls with a reply, and names under which calls of others
are answered."""
import queue
import threading

from jeepney import DBusAddress, HeaderFields, MatchRule, MessageType, new_error, new_method_call, new_method_return
from jeepney.bus_messages import message_bus
from jeepney.io.threading import DBusRouter, open_dbus_connection


class BusError(Exception):
    pass


class MessageBus:
    """Answers to others are given by a thread of its own, so that nobody waits for this program while it waits for
    them."""

    def __init__(self, address, answers):
        """answers: by member's name, what is called with the message's arguments and gives (signature, values)."""
        self.answers, self.calls = answers, queue.Queue()
        self.connection = open_dbus_connection(address, auth_timeout=60)
        self.router = DBusRouter(self.connection)
        self.router.filter(MatchRule(type='method_call'), queue=self.calls)
        threading.Thread(target=self.answer_calls, daemon=True).start()
        self.name = self.connection.unique_name

    def close(self):
        self.router.close()
        self.connection.close()

    def own(self, name):
        self.reply_to(message_bus.RequestName(name))

    def call(self, destination, path, interface, member, signature='', *values):
        """The values of the reply; a variant is a pair of its type and its value."""
        address = DBusAddress(path, destination, interface)
        return self.reply_to(new_method_call(address, member, signature or None, values))

    def reply_to(self, message, patience=120):
        what = f'{message.header.fields[HeaderFields.member]} of {message.header.fields[HeaderFields.path]}'
        try:
            reply = self.router.send_and_get_reply(message, timeout=patience)
        except TimeoutError:
            raise BusError(f'{what} was not answered within {patience} s') from None
        if reply.header.message_type == MessageType.error:
            raise BusError(f'{reply.header.fields[HeaderFields.error_name]} for {what}: {reply.body}')
        return reply.body

    def answer_calls(self):
        while True:
            call = self.calls.get()
            answer = self.answers.get(call.header.fields[HeaderFields.member])
            if answer:
                signature, values = answer(call.header.fields[HeaderFields.sender], *call.body)
                self.router.send(new_method_return(call, signature, values))
            else:
                self.router.send(new_error(call, 'org.freedesktop.DBus.Error.UnknownMethod'))
