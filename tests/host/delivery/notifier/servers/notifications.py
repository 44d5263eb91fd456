"""A notification service for tests. What is asked of it goes to stdout, one line each:
"capabilities", "notify {json}", "close ID".

  --capabilities a,b   what it says it can do
  --act KEY            after each notification the user clicks its action KEY
  --close-others       before it answers, it tells that the earlier notifications are closed
  --refuse             answers each notification with an error
  --garble             answers each notification with a text in place of its number
  --mute               answers no notification
"""

import argparse
import json

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.Notifications"


class Refusal(dbus.DBusException):
    _dbus_error_name = "org.example.Refusal"


class Service(dbus.service.Object):
    def __init__(self, bus, options):
        super().__init__(bus, "/org/freedesktop/Notifications")
        self.options = options
        self.number = 0

    @dbus.service.method(NAME, in_signature="", out_signature="as")
    def GetCapabilities(self):
        print("capabilities", flush=True)
        return [c for c in self.options.capabilities.split(",") if c]

    def notify(self, app, replaces, icon, summary, body, actions, hints, expire):
        print("notify", json.dumps({
            "app": app, "replaces": int(replaces), "icon": icon, "summary": summary, "body": body,
            "actions": list(actions), "urgency": int(hints.get("urgency", -1)),
            "expire": int(expire)}), flush=True)
        if self.options.refuse:
            raise Refusal("keine\nLust")
        if self.options.close_others:
            for number in range(1, self.number + 1):
                self.NotificationClosed(number, 2)
        self.number = int(replaces) or self.number + 1
        if self.options.act:
            GLib.idle_add(self.ActionInvoked, self.number, self.options.act)
        return self.number

    @dbus.service.signal(NAME, signature="us")
    def ActionInvoked(self, number, key):
        pass

    @dbus.service.signal(NAME, signature="uu")
    def NotificationClosed(self, number, reason):
        pass

    @dbus.service.method(NAME, in_signature="u", out_signature="")
    def CloseNotification(self, number):
        print("close", int(number), flush=True)


class GoodService(Service):
    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, app, replaces, icon, summary, body, actions, hints, expire):
        return self.notify(app, replaces, icon, summary, body, actions, hints, expire)


class GarblingService(Service):
    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="s")
    def Notify(self, app, replaces, icon, summary, body, actions, hints, expire):
        return str(self.notify(app, replaces, icon, summary, body, actions, hints, expire))


class MuteService(Service):
    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="u",
                         async_callbacks=("answer", "fail"))
    def Notify(self, app, replaces, icon, summary, body, actions, hints, expire, answer, fail):
        self.notify(app, replaces, icon, summary, body, actions, hints, expire)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--capabilities", default="actions,body,body-markup")
    parser.add_argument("--act")
    parser.add_argument("--close-others", action="store_true")
    parser.add_argument("--refuse", action="store_true")
    parser.add_argument("--garble", action="store_true")
    parser.add_argument("--mute", action="store_true")
    options = parser.parse_args()
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    kind = GarblingService if options.garble else MuteService if options.mute else GoodService
    service = kind(bus, options)
    name = dbus.service.BusName(NAME, bus, do_not_queue=True)
    print("ready", flush=True)
    GLib.MainLoop().run()
    del service, name


main()
