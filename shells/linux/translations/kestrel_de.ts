<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>kestrel::style::Text</name>
    <message>
        <source>No items yet</source>
        <translation>Noch keine Einträge</translation>
    </message>
    <message>
        <source>Add apps, command files, or shell commands to your launcher.</source>
        <translation>Fügen Sie Ihrer Startliste Apps, Befehlsdateien oder Shell-Befehle hinzu.</translation>
    </message>
    <message>
        <source>Add First Item</source>
        <translation>Ersten Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Edit Item</source>
        <translation>Eintrag bearbeiten</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>App</source>
        <translation>App</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Durchsuchen&#xa0;…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben bewegen</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten bewegen</translation>
    </message>
    <message>
        <source>Added %1</source>
        <translation>„%1“ hinzugefügt</translation>
    </message>
    <message>
        <source>Moved to %1 of %2</source>
        <translation>Verschoben auf Platz %1 von %2</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>„%1“ gelöscht</translation>
    </message>
    <message>
        <source>Open Settings to add items.</source>
        <translation>Einträge in den Einstellungen hinzufügen.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Anwendung auswählen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Anwendungen</translation>
    </message>
    <message>
        <source>No applications found</source>
        <translation>Keine Anwendungen gefunden</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Andere&#xa0;…</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
</context>
</TS>
