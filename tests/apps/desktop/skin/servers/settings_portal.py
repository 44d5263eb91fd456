"""The settings of a desktop as xdg-desktop-portal tells them, for tests. The number of the colour
scheme is the first argument. SIGUSR1 makes it 1 (dark), SIGUSR2 makes it 0, which is told to all.

  --text    answers with a text in place of a number
  --refuse  answers with an error
  --mute    does not answer
"""

import signal
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.portal.Settings"
GROUP = "org.freedesktop.appearance"
KEY = "color-scheme"


class NotFound(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.portal.Error.NotFound"


class Portal(dbus.service.Object):
    def __init__(self, bus, options):
        super().__init__(bus, "/org/freedesktop/portal/desktop")
        self.options = options
        self.value = dbus.UInt32(next((o for o in options if o.isdigit()), "0"))

    @dbus.service.method(NAME, in_signature="ss", out_signature="v",
                         async_callbacks=("answer", "fail"))
    def Read(self, group, key, answer, fail):
        print("read", group, key, flush=True)
        if "--mute" in self.options:
            return
        if "--refuse" in self.options or (group, key) != (GROUP, KEY):
            fail(NotFound("Requested setting not found"))
        elif "--text" in self.options:
            answer(dbus.String("dark", variant_level=2))
        else:
            answer(dbus.UInt32(self.value, variant_level=1))

    @dbus.service.signal(NAME, signature="ssv")
    def SettingChanged(self, group, key, value):
        pass

    def change(self, value):
        self.value = dbus.UInt32(value)
        self.SettingChanged(GROUP, KEY, self.value)
        # What is another's must not be mistaken for it.
        self.SettingChanged("org.gnome.desktop.interface", KEY, dbus.UInt32(1 - value))
        self.SettingChanged(GROUP, "accent-color", dbus.UInt32(1 - value))
        print("changed", value, flush=True)
        return True


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    portal = Portal(bus, sys.argv[1:])
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, portal.change, 1)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR2, portal.change, 0)
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus, do_not_queue=True)
    print("ready", flush=True)
    GLib.MainLoop().run()
    del name


main()
