#!/usr/bin/env python3
"""A text editor of one window, an application like any other.

    text_editor_app.py TITLE [APPLICATION-ID]

It prints "shown", and the whole text, as a JSON string, whenever that has changed. With an
application id there is one instance, which comes forward when it is started again.
"""
import json
import sys

import gi
gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gio, Gtk  # noqa: E402 (after the choice of the version)

SIZE = 600, 400


class TextEditor(Gtk.Application):
    """The application; its window shows one text."""

    def __init__(self, title, application_id):
        super().__init__(application_id=application_id,
                         flags=Gio.ApplicationFlags.FLAGS_NONE if application_id
                         else Gio.ApplicationFlags.NON_UNIQUE)
        self.title, self.window = title, None

    def do_activate(self):
        if self.window is None:
            self.window = Gtk.ApplicationWindow(application=self, title=self.title)
            self.window.set_default_size(*SIZE)
            view = Gtk.TextView()
            view.get_buffer().connect("changed", self.say_text)
            self.window.add(view)
            self.window.show_all()
            print("shown", flush=True)
        self.window.present()

    @staticmethod
    def say_text(buffer):
        print(json.dumps(buffer.get_text(*buffer.get_bounds(), True)), flush=True)


TextEditor(*(sys.argv[1:] + [None])[:2]).run()
