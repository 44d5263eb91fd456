"""A keyring on the session bus (freedesktop Secret Service API 0.2, algorithm "plain" alone).

Options: --locked (the default collection and its items), --prompts (storing and deleting want a
prompt, which never ends), --refuses (storing fails), --no-default (there is no default collection),
--silent (it hears and never answers), --item SECTION KEY VALUE (one that is there at the start). It
tells on stdout what is done to it.
"""
import argparse

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ROOT = "/org/freedesktop/secrets"
SERVICE = "org.freedesktop.Secret.Service"
COLLECTION = "org.freedesktop.Secret.Collection"
ITEM = "org.freedesktop.Secret.Item"
SESSION = "org.freedesktop.Secret.Session"
PROMPT = "org.freedesktop.Secret.Prompt"
PROPERTIES = "org.freedesktop.DBus.Properties"
NOTHING = dbus.ObjectPath("/")


class NotSupported(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.DBus.Error.NotSupported"


class IsLocked(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.Secret.Error.IsLocked"


class NoSuchObject(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.Secret.Error.NoSuchObject"


class Failed(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.DBus.Error.Failed"


class Part(dbus.service.Object):
    """An object with properties."""

    def properties(self):
        return {}

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, _interface, name):
        return self.properties()[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return dbus.Dictionary(self.properties(), signature="sv")


class Session(Part):
    @dbus.service.method(SESSION)
    def Close(self):
        pass


class Prompt(Part):
    @dbus.service.method(PROMPT, in_signature="s")
    def Prompt(self, _window):
        print("prompted", flush=True)

    @dbus.service.method(PROMPT)
    def Dismiss(self):
        pass


class Item(Part):
    def __init__(self, service, path, label, attributes, value):
        super().__init__(service.bus, path)
        self.service, self.path, self.label = service, dbus.ObjectPath(path), label
        self.attributes, self.value = attributes, value

    def properties(self):
        return {
            "Locked": dbus.Boolean(self.service.options.locked),
            "Attributes": dbus.Dictionary(self.attributes, signature="ss"),
            "Label": self.label,
            "Created": dbus.UInt64(1),
            "Modified": dbus.UInt64(1),
        }

    @dbus.service.method(ITEM, out_signature="o")
    def Delete(self):
        if self.service.options.prompts:
            return self.service.prompt()
        print("deleted", self.attributes["section"], self.attributes["key"], flush=True)
        del self.service.items[self.path]
        self.remove_from_connection()
        return NOTHING


class Collection(Part):
    def __init__(self, service, path):
        super().__init__(service.bus, path)
        self.service = service

    def properties(self):
        return {
            "Items": dbus.Array(list(self.service.items), signature="o"),
            "Label": "Login",
            "Locked": dbus.Boolean(self.service.options.locked),
            "Created": dbus.UInt64(1),
            "Modified": dbus.UInt64(1),
        }

    @dbus.service.method(COLLECTION, in_signature="a{sv}(oayays)b", out_signature="oo")
    def CreateItem(self, properties, secret, replace):
        options = self.service.options
        if options.no_default:
            raise NoSuchObject("no default collection")
        if options.locked:
            raise IsLocked("locked")
        if options.refuses:
            raise Failed("The keyring is full")
        if options.prompts:
            return NOTHING, self.service.prompt()
        attributes = {str(k): str(v) for k, v in properties[ITEM + ".Attributes"].items()}
        value = bytes(secret[2])
        print("stored", attributes["application"], attributes["section"], attributes["key"],
              value.decode(), "as", properties[ITEM + ".Label"], flush=True)
        for item in self.service.items.values():
            if replace and item.attributes == attributes:
                item.value = value
                return item.path, NOTHING
        return self.service.add(str(properties[ITEM + ".Label"]), attributes, value), NOTHING


class Service(Part):
    def __init__(self, bus, options):
        super().__init__(bus, ROOT)
        self.bus, self.options = bus, options
        self.items = {}
        self.count = 0
        self.default = Collection(self, ROOT + "/aliases/default")
        for section, key, value in options.item or []:
            self.add("Kaufkobolde: " + key, {
                "xdg:schema": "kaufkobolde.Secret", "application": "kaufkobolde",
                "section": section, "key": key}, value.encode())

    def add(self, label, attributes, value):
        self.count += 1
        item = Item(self, f"{ROOT}/collection/login/{self.count}", label, attributes, value)
        self.items[item.path] = item
        return item.path

    def prompt(self):
        self.count += 1
        path = dbus.ObjectPath(f"{ROOT}/prompt/p{self.count}")
        Prompt(self.bus, path)
        return path

    def properties(self):
        return {"Collections": dbus.Array([], signature="o")}

    @dbus.service.method(SERVICE, in_signature="sv", out_signature="vo",
                         async_callbacks=("answer", "refuse"))
    def OpenSession(self, algorithm, _input, answer, refuse):
        if self.options.silent:
            print("asked", flush=True)
            return
        if algorithm != "plain":
            refuse(NotSupported("only plain"))
            return
        self.count += 1
        path = dbus.ObjectPath(f"{ROOT}/session/s{self.count}")
        Session(self.bus, path)
        answer(dbus.String(""), path)

    @dbus.service.method(SERVICE, in_signature="a{ss}", out_signature="aoao")
    def SearchItems(self, attributes):
        found = [item.path for item in self.items.values()
                 if all(item.attributes.get(k) == v for k, v in attributes.items())]
        return ([], found) if self.options.locked else (found, [])

    @dbus.service.method(SERVICE, in_signature="ao", out_signature="aoo")
    def Unlock(self, _objects):
        return [], self.prompt()

    @dbus.service.method(SERVICE, in_signature="a{sv}s", out_signature="oo")
    def CreateCollection(self, _properties, _alias):
        return NOTHING, self.prompt()

    @dbus.service.method(SERVICE, in_signature="aoo", out_signature="a{o(oayays)}")
    def GetSecrets(self, paths, session):
        secrets = {}
        for path in paths:
            if self.options.locked:
                continue
            value = self.items[path].value
            secrets[path] = dbus.Struct((session, dbus.ByteArray(b""), dbus.ByteArray(value),
                                         "text/plain"), signature="oayays")
        return dbus.Dictionary(secrets, signature="o(oayays)")


def main():
    parser = argparse.ArgumentParser()
    for option in ("--locked", "--prompts", "--refuses", "--no-default", "--silent"):
        parser.add_argument(option, action="store_true")
    parser.add_argument("--item", nargs=3, action="append")
    options = parser.parse_args()
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    service = Service(bus, options)
    name = dbus.service.BusName("org.freedesktop.secrets", bus)
    print("ready", flush=True)
    GLib.MainLoop().run()
    del service, name


main()
