<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>kestrel::style::Text</name>
    <message>
        <source>No items yet</source>
        <translation>Aucun élément pour le moment</translation>
    </message>
    <message>
        <source>Add apps, command files, or shell commands to your launcher.</source>
        <translation>Ajoutez des applications, des fichiers de commandes ou des commandes shell à votre lanceur.</translation>
    </message>
    <message>
        <source>Add First Item</source>
        <translation>Ajouter un premier élément</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Edit Item</source>
        <translation>Modifier l’élément</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Ajouter un élément</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>App</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Parcourir…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Éléments</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Déplacer vers le haut</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Déplacer vers le bas</translation>
    </message>
    <message>
        <source>Added %1</source>
        <translation>«&#xa0;%1&#xa0;» ajouté</translation>
    </message>
    <message>
        <source>Moved to %1 of %2</source>
        <translation>Déplacé en position %1 sur %2</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>«&#xa0;%1&#xa0;» supprimé</translation>
    </message>
    <message>
        <source>Open Settings to add items.</source>
        <translation>Ajoutez des éléments dans les réglages.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Choisir une application</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Applications</translation>
    </message>
    <message>
        <source>No applications found</source>
        <translation>Aucune application trouvée</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Autre…</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Choisir</translation>
    </message>
</context>
</TS>
