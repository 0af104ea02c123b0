<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AbstractFindToolBar</name>
    <message>
        <source>Not found</source>
        <translation>Not found</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Find</translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation>Find previous</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Find next</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Filter strings by value</source>
        <translation>Filter strings by value</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Close search panel</source>
        <translation>Close search panel</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Match case</translation>
    </message>
    <message>
        <source>Tell upper and lower case apart</source>
        <translation>Tell upper and lower case apart</translation>
    </message>
    <message>
        <source>Search panel</source>
        <translation>Search panel</translation>
    </message>
    <message>
        <source>Search is running</source>
        <translation>Search is running</translation>
    </message>
</context>
<context>
    <name>FilterLineEdit</name>
    <message>
        <source>Find</source>
        <translation>Find</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1st week</source>
        <translation>%1st week</translation>
    </message>
    <message>
        <source>%1nd week</source>
        <translation>%1nd week</translation>
    </message>
    <message>
        <source>%1rd week</source>
        <translation>%1rd week</translation>
    </message>
    <message>
        <source>%1th week</source>
        <translation>%1th week</translation>
    </message>
</context>
<context>
    <name>QProgressIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Busy</translation>
    </message>
</context>
<context>
    <name>QTableFastView</name>
    <message>
        <source>Select</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
</context>
<context>
    <name>StyledItemDelegate</name>
    <message>
        <source>нулябрь</source>
        <translation>nullember</translation>
    </message>
    <message>
        <source>январь</source>
        <translation>January</translation>
    </message>
    <message>
        <source>февраль</source>
        <translation>February</translation>
    </message>
    <message>
        <source>март</source>
        <translation>March</translation>
    </message>
    <message>
        <source>апрель</source>
        <translation>April</translation>
    </message>
    <message>
        <source>май</source>
        <translation>May</translation>
    </message>
    <message>
        <source>июнь</source>
        <translation>June</translation>
    </message>
    <message>
        <source>июль</source>
        <translation>July</translation>
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
        <translation>October</translation>
    </message>
    <message>
        <source>ноябрь</source>
        <translation>November</translation>
    </message>
    <message>
        <source>декабрь</source>
        <translation>December</translation>
    </message>
</context>
<context>
    <name>Vantix::ItemDelegate</name>
    <message>
        <source>Невозможно завершить редактирование.</source>
        <translation>The edit cannot be completed.</translation>
    </message>
</context>
</TS>
