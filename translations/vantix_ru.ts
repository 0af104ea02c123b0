<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>AbstractFindToolBar</name>
    <message>
        <source>Not found</source>
        <translation>Не найдено</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Найти</translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation>Найти предыдущее</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Найти следующее</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Фильтровать</translation>
    </message>
    <message>
        <source>Filter strings by value</source>
        <translation>Отфильтровать строки по значению</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Готово</translation>
    </message>
    <message>
        <source>Close search panel</source>
        <translation>Закрыть панель поиска</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Учитывать регистр</translation>
    </message>
    <message>
        <source>Tell upper and lower case apart</source>
        <translation>Различать прописные и строчные буквы</translation>
    </message>
    <message>
        <source>Search panel</source>
        <translation>Панель поиска</translation>
    </message>
    <message>
        <source>Search is running</source>
        <translation>Идёт поиск</translation>
    </message>
</context>
<context>
    <name>FilterLineEdit</name>
    <message>
        <source>Find</source>
        <translation>Найти</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Очистить</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1st week</source>
        <translation>%1-я неделя</translation>
    </message>
    <message>
        <source>%1nd week</source>
        <translation>%1-я неделя</translation>
    </message>
    <message>
        <source>%1rd week</source>
        <translation>%1-я неделя</translation>
    </message>
    <message>
        <source>%1th week</source>
        <translation>%1-я неделя</translation>
    </message>
</context>
<context>
    <name>QProgressIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Занято</translation>
    </message>
</context>
<context>
    <name>QTableFastView</name>
    <message>
        <source>Select</source>
        <translation>Выбрать</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Изменить</translation>
    </message>
</context>
<context>
    <name>StyledItemDelegate</name>
    <message>
        <source>нулябрь</source>
        <translation>нулябрь</translation>
    </message>
    <message>
        <source>январь</source>
        <translation>январь</translation>
    </message>
    <message>
        <source>февраль</source>
        <translation>февраль</translation>
    </message>
    <message>
        <source>март</source>
        <translation>март</translation>
    </message>
    <message>
        <source>апрель</source>
        <translation>апрель</translation>
    </message>
    <message>
        <source>май</source>
        <translation>май</translation>
    </message>
    <message>
        <source>июнь</source>
        <translation>июнь</translation>
    </message>
    <message>
        <source>июль</source>
        <translation>июль</translation>
    </message>
    <message>
        <source>август</source>
        <translation>август</translation>
    </message>
    <message>
        <source>сентябрь</source>
        <translation>сентябрь</translation>
    </message>
    <message>
        <source>октябрь</source>
        <translation>октябрь</translation>
    </message>
    <message>
        <source>ноябрь</source>
        <translation>ноябрь</translation>
    </message>
    <message>
        <source>декабрь</source>
        <translation>декабрь</translation>
    </message>
</context>
<context>
    <name>Vantix::ItemDelegate</name>
    <message>
        <source>Невозможно завершить редактирование.</source>
        <translation>Невозможно завершить редактирование.</translation>
    </message>
</context>
</TS>
