<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>kestrel::style::Text</name>
    <message>
        <source>No items yet</source>
        <translation>Aún no hay elementos</translation>
    </message>
    <message>
        <source>Add apps, command files, or shell commands to your launcher.</source>
        <translation>Añada aplicaciones, archivos de comandos o comandos de shell a su lanzador.</translation>
    </message>
    <message>
        <source>Add First Item</source>
        <translation>Añadir el primer elemento</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Editar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Edit Item</source>
        <translation>Editar elemento</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Añadir elemento</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>App</source>
        <translation>Aplicación</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Examinar…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Guardar</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Elementos</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Acciones</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Mover hacia arriba</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Mover hacia abajo</translation>
    </message>
    <message>
        <source>Added %1</source>
        <translation>«%1» añadido</translation>
    </message>
    <message>
        <source>Moved to %1 of %2</source>
        <translation>Movido a la posición %1 de %2</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>«%1» eliminado</translation>
    </message>
    <message>
        <source>Open Settings to add items.</source>
        <translation>Abra Ajustes para añadir elementos.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Elegir una aplicación</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Aplicaciones</translation>
    </message>
    <message>
        <source>No applications found</source>
        <translation>No se encontró ninguna aplicación</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Otra…</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Elegir</translation>
    </message>
</context>
</TS>
