<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AbstractFindToolBar</name>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation>Vorheriges suchen</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Nächstes suchen</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>Filter strings by value</source>
        <translation>Zeilen nach Wert filtern</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Close search panel</source>
        <translation>Suchleiste schließen</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Groß-/Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Tell upper and lower case apart</source>
        <translation>Groß- und Kleinbuchstaben unterscheiden</translation>
    </message>
    <message>
        <source>Search panel</source>
        <translation>Suchleiste</translation>
    </message>
    <message>
        <source>Search is running</source>
        <translation>Suche läuft</translation>
    </message>
</context>
<context>
    <name>FilterLineEdit</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1st week</source>
        <translation>%1. Woche</translation>
    </message>
    <message>
        <source>%1nd week</source>
        <translation>%1. Woche</translation>
    </message>
    <message>
        <source>%1rd week</source>
        <translation>%1. Woche</translation>
    </message>
    <message>
        <source>%1th week</source>
        <translation>%1. Woche</translation>
    </message>
</context>
<context>
    <name>QProgressIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
    </message>
</context>
<context>
    <name>QTableFastView</name>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>StyledItemDelegate</name>
    <message>
        <source>нулябрь</source>
        <translation>Nullember</translation>
    </message>
    <message>
        <source>январь</source>
        <translation>Januar</translation>
    </message>
    <message>
        <source>февраль</source>
        <translation>Februar</translation>
    </message>
    <message>
        <source>март</source>
        <translation>März</translation>
    </message>
    <message>
        <source>апрель</source>
        <translation>April</translation>
    </message>
    <message>
        <source>май</source>
        <translation>Mai</translation>
    </message>
    <message>
        <source>июнь</source>
        <translation>Juni</translation>
    </message>
    <message>
        <source>июль</source>
        <translation>Juli</translation>
    </message>
    <message>
        <source>август</source>
        <translation>August</translation>
    </message>
    <message>
        <source>сентябрь</source>
        <translation>September</translation>
    </message>
    <message>
        <source>октябрь</source>
        <translation>Oktober</translation>
    </message>
    <message>
        <source>ноябрь</source>
        <translation>November</translation>
    </message>
    <message>
        <source>декабрь</source>
        <translation>Dezember</translation>
    </message>
</context>
<context>
    <name>Vantix::ItemDelegate</name>
    <message>
        <source>Невозможно завершить редактирование.</source>
        <translation>Die Bearbeitung kann nicht abgeschlossen werden.</translation>
    </message>
</context>
</TS>
