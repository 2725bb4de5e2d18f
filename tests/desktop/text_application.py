"""An application with a window to type into: text_application.py TITLE FILE

It writes its text to FILE at each change. Started again, it brings the window that it has to the
front, as applications do.
"""
import os
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402


def main(title, path):
    def save(buffer):
        with open(path + ".new", "w", encoding="utf-8") as file:
            file.write(buffer.get_text(*buffer.get_bounds(), True))
        os.rename(path + ".new", path)

    def activate(application):
        if not application.get_windows():
            view = Gtk.TextView(cursor_visible=False)
            view.get_buffer().connect("changed", save)
            save(view.get_buffer())
            window = Gtk.ApplicationWindow(application=application, title=title, child=view)
            window.set_default_size(300, 200)
            window.show_all()
        application.get_windows()[0].present()

    application = Gtk.Application(application_id=f"org.example.{title}")
    application.connect("activate", activate)
    application.run()


if __name__ == "__main__":
    main(*sys.argv[1:])
