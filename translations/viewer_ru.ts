<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>О программе %1</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>О &amp;Qt</translation>
    </message>
    <message>
        <source>Opens and follows text of any size.</source>
        <translation>Открывает тексты любого размера и следит за ними.</translation>
    </message>
    <message>
        <source>The program and its table: MIT license, © the vantix authors</source>
        <translation>Программа и её таблица: лицензия MIT, © the vantix authors</translation>
    </message>
    <message>
        <source>Qt %1: GNU Lesser General Public License 3</source>
        <translation>Qt %1: GNU Lesser General Public License 3</translation>
    </message>
    <message>
        <source>%1: BSD license</source>
        <translation>%1: лицензия BSD</translation>
    </message>
</context>
<context>
    <name>BookModel</name>
    <message>
        <source>Symbol</source>
        <translation>Инструмент</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Последняя</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Изменение</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Максимум</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Минимум</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Объём</translation>
    </message>
</context>
<context>
    <name>CaptureModel</name>
    <message>
        <source>This packet cannot be read: %1</source>
        <translation>Этот пакет прочитать нельзя: %1</translation>
    </message>
    <message>
        <source>%1, of which %L2 were captured</source>
        <translation>%1, из них записано %L2</translation>
    </message>
    <message>
        <source>Packet %L1: %2, %3</source>
        <translation>Пакет %L1: %2, %3</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Источник</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Получатель</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Протокол</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Длина</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Сведения</translation>
    </message>
    <message>
        <source>%L1 bytes</source>
        <translation>%L1 Б</translation>
    </message>
</context>
<context>
    <name>CaptureWindow</name>
    <message>
        <source>R&amp;eload</source>
        <translation>&amp;Перечитать</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Открытие…</translation>
    </message>
    <message>
        <source>What the packets were captured from</source>
        <translation>Откуда записаны пакеты</translation>
    </message>
    <message>
        <source>A temporary copy of this size is kept in %1, the index of packets in %2 of memory.</source>
        <translation>Временная копия такого размера хранится в %1, указатель пакетов занимает %2 памяти.</translation>
    </message>
    <message>
        <source>The index of packets takes %1 of memory.</source>
        <translation>Указатель пакетов занимает %1 памяти.</translation>
    </message>
    <message>
        <source>The file was deleted; this is what it held</source>
        <translation>Файл удалён; это его прежнее содержимое</translation>
    </message>
    <message>
        <source>Indexing…</source>
        <translation>Индексирование…</translation>
    </message>
    <message>
        <source>The last packet is not complete yet</source>
        <translation>Последний пакет ещё не полон</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Слежение</translation>
    </message>
    <message>
        <source>Indexed</source>
        <translation>Проиндексировано</translation>
    </message>
    <message>
        <source>The last packet is not complete</source>
        <translation>Последний пакет не полон</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Завершено</translation>
    </message>
    <message>
        <source>Damaged at byte %L1; the packets before are shown</source>
        <translation>Повреждено с байта %L1; показаны пакеты до него</translation>
    </message>
    <message>
        <source>There are more packets; the first %L1 are shown</source>
        <translation>Пакетов больше; показаны первые %L1</translation>
    </message>
    <message>
        <source>%1
cannot be shown: %2</source>
        <translation>%1
нельзя показать: %2</translation>
    </message>
    <message>
        <source>The file was written anew.</source>
        <translation>Файл записан заново.</translation>
    </message>
</context>
<context>
    <name>ColorRulesDialog</name>
    <message>
        <source>Colours of Rows</source>
        <translation>Цвета строк</translation>
    </message>
    <message>
        <source>Rows with</source>
        <translation>Строки с текстом</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Регулярное выражение</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Учитывать регистр</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Цвет</translation>
    </message>
    <message>
        <source>The first rule that a row fits gives it its colour.</source>
        <translation>Цвет строки задаёт первое подходящее правило.</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Добавить</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Удалить</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>&amp;Вверх</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>В&amp;низ</translation>
    </message>
</context>
<context>
    <name>ColumnMenu</name>
    <message>
        <source>&amp;Columns</source>
        <translation>С&amp;толбцы</translation>
    </message>
    <message>
        <source>There are no columns</source>
        <translation>Столбцов нет</translation>
    </message>
    <message>
        <source>Fit &amp;All Columns</source>
        <translation>Подогнать &amp;все столбцы</translation>
    </message>
    <message>
        <source>&amp;Hide “%1”</source>
        <translation>&amp;Скрыть «%1»</translation>
    </message>
    <message>
        <source>&amp;Fit “%1”</source>
        <translation>&amp;Подогнать «%1»</translation>
    </message>
    <message>
        <source>Ali&amp;gn “%1”</source>
        <translation>В&amp;ыровнять «%1»</translation>
    </message>
    <message>
        <source>As the &amp;File Wants</source>
        <translation>Как в &amp;файле</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>По &amp;левому краю</translation>
    </message>
    <message>
        <source>&amp;Centre</source>
        <translation>По &amp;центру</translation>
    </message>
    <message>
        <source>&amp;Right</source>
        <translation>По &amp;правому краю</translation>
    </message>
    <message>
        <source>&amp;Sort by “%1”</source>
        <translation>Сор&amp;тировать по «%1»</translation>
    </message>
    <message>
        <source>&amp;Keep Line Numbers in Sight</source>
        <translation>&amp;Номера строк всегда видны</translation>
    </message>
    <message>
        <source>Gr&amp;oup Digits of “%1”</source>
        <translation>&amp;Разделять разряды в «%1»</translation>
    </message>
</context>
<context>
    <name>ColumnSort</name>
    <message>
        <source>&amp;Sort Upwards</source>
        <translation>По &amp;возрастанию</translation>
    </message>
    <message>
        <source>Sort &amp;Downwards</source>
        <translation>По &amp;убыванию</translation>
    </message>
    <message>
        <source>&amp;Not Sorted</source>
        <translation>&amp;Не сортировать</translation>
    </message>
    <message>
        <source>Sorting… %1 %</source>
        <translation>Сортировка… %1 %</translation>
    </message>
    <message>
        <source>Sorted by “%1”</source>
        <translation>Сортировка по «%1»</translation>
    </message>
    <message>
        <source>The order of the rows takes %1.</source>
        <translation>Порядок строк занимает %1.</translation>
    </message>
</context>
<context>
    <name>DataCell</name>
    <message>
        <source>1 byte</source>
        <translation>1 байт</translation>
    </message>
    <message>
        <source>%L1 bytes</source>
        <translation>Байт: %L1</translation>
    </message>
</context>
<context>
    <name>DataConnection</name>
    <message>
        <source>Qt&apos;s driver for SQLite is not installed (Debian: libqt6sql6-sqlite).</source>
        <translation>Драйвер Qt для SQLite не установлен (Debian: libqt6sql6-sqlite).</translation>
    </message>
    <message>
        <source>Qt&apos;s driver for PostgreSQL is not installed (Debian: libqt6sql6-psql).</source>
        <translation>Драйвер Qt для PostgreSQL не установлен (Debian: libqt6sql6-psql).</translation>
    </message>
    <message>
        <source>The database gave no reason.</source>
        <translation>База данных не назвала причины.</translation>
    </message>
    <message>
        <source>The file is not there.</source>
        <translation>Такого файла нет.</translation>
    </message>
    <message>
        <source>Qt&apos;s driver for ODBC is not installed (Debian: libqt6sql6-odbc).</source>
        <translation>Драйвер Qt для ODBC не установлен (Debian: libqt6sql6-odbc).</translation>
    </message>
    <message>
        <source>Only queries are sent to this database.</source>
        <translation>Этой базе данных отправляются только запросы.</translation>
    </message>
</context>
<context>
    <name>DataModel</name>
    <message>
        <source>This is not one condition: a bracket or a quote is not closed, or there is a semicolon.</source>
        <translation>Это не одно условие: не закрыта скобка или кавычка, или есть точка с запятой.</translation>
    </message>
    <message>
        <source>The database took more than %L1 s.</source>
        <translation>Базе данных не хватило %L1 с.</translation>
    </message>
    <message>
        <source>Whole words and regular expressions cannot be looked for in this database.</source>
        <translation>В этой базе данных нельзя искать слова целиком и регулярные выражения.</translation>
    </message>
</context>
<context>
    <name>DataRows</name>
    <message>
        <source>about %L1 rows</source>
        <translation>Строк: около %L1</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 строка</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>Строк: %L1</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>«%1»</translation>
    </message>
    <message>
        <source>%1 with %2</source>
        <translation>%1, где %2</translation>
    </message>
</context>
<context>
    <name>DataSource</name>
    <message>
        <source>There are no tables in the database.</source>
        <translation>В базе данных нет таблиц.</translation>
    </message>
    <message>
        <source>Query</source>
        <translation>Запрос</translation>
    </message>
    <message>
        <source>There is no table “%1”.</source>
        <translation>Таблицы «%1» нет.</translation>
    </message>
    <message>
        <source>This is no address of a database: %1</source>
        <translation>Это не адрес базы данных: %1</translation>
    </message>
    <message>
        <source>A password does not belong into an address: leave it out, and it is read from ~/.pgpass or asked for.</source>
        <translation>Паролю не место в адресе: без него он будет прочитан из ~/.pgpass или запрошен.</translation>
    </message>
    <message>
        <source>The database does not find rows by the values that it gives of them.</source>
        <translation>База данных не находит строки по тем значениям, которые сама о них сообщает.</translation>
    </message>
    <message>
        <source>This is no connection string of ODBC, such as DSN=prices.</source>
        <translation>Это не строка подключения ODBC, как, например, DSN=prices.</translation>
    </message>
    <message>
        <source>A password does not belong into an address: leave it out, and it is asked for.</source>
        <translation>Паролю не место в адресе: не указывайте его, и он будет запрошен.</translation>
    </message>
</context>
<context>
    <name>DataWindow</name>
    <message>
        <source>Tables and views of the database</source>
        <translation>Таблицы и представления базы данных</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>Условие</translation>
    </message>
    <message>
        <source>A condition in the language of the database, such as: price &gt; 100 AND symbol LIKE &apos;A%&apos;</source>
        <translation>Условие на языке базы данных, например: price &gt; 100 AND symbol LIKE &apos;A%&apos;</translation>
    </message>
    <message>
        <source>Con&amp;dition…</source>
        <translation>Усло&amp;вие…</translation>
    </message>
    <message>
        <source>Show only the rows that meet a condition (Ctrl+Shift+W)</source>
        <translation>Показать только строки, отвечающие условию (Ctrl+Shift+W)</translation>
    </message>
    <message>
        <source>Memory that the rows take that are kept</source>
        <translation>Память, занятая хранимыми строками</translation>
    </message>
    <message>
        <source>Adding up…</source>
        <translation>Суммирование…</translation>
    </message>
    <message>
        <source>Only Rows &amp;Where</source>
        <translation>Только строки, &amp;где</translation>
    </message>
    <message>
        <source>&amp;Add Up “%1”</source>
        <translation>&amp;Сложить «%1»</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <translation>%1 — %2</translation>
    </message>
    <message>
        <source>%1 cannot be shown.

%2</source>
        <translation>%1 показать нельзя.

%2</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Открытие…</translation>
    </message>
    <message>
        <source>Not connected, tried again: %1</source>
        <translation>Нет соединения, попытка повторится: %1</translation>
    </message>
    <message>
        <source>Without a key: is read into a temporary file…</source>
        <translation>Без ключа: читается во временный файл…</translation>
    </message>
    <message>
        <source>Without a key: shows a temporary copy</source>
        <translation>Без ключа: показана временная копия</translation>
    </message>
    <message>
        <source>Counting…</source>
        <translation>Подсчёт…</translation>
    </message>
    <message>
        <source>There are no numbers in “%1”.</source>
        <translation>В «%1» нет чисел.</translation>
    </message>
    <message>
        <source>%1: Count %L2   Sum %3   Min %4   Max %5</source>
        <translation>%1: Количество %L2   Сумма %3   Мин. %4   Макс. %5</translation>
    </message>
    <message>
        <source>too long</source>
        <translation>слишком длинная</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>Password for %1:</source>
        <translation>Пароль для %1:</translation>
    </message>
</context>
<context>
    <name>Decompressor</name>
    <message>
        <source>It is damaged or cut off.</source>
        <translation>Файл повреждён или обрезан.</translation>
    </message>
    <message>
        <source>It is damaged or cut off: %1</source>
        <translation>Файл повреждён или обрезан: %1</translation>
    </message>
    <message>
        <source>It is compressed, and this program was built without libarchive.</source>
        <translation>Файл сжат, а эта программа собрана без libarchive.</translation>
    </message>
</context>
<context>
    <name>DetailPane</name>
    <message>
        <source>Row</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>&amp;Row</source>
        <translation>Стро&amp;ка</translation>
    </message>
    <message>
        <source>No row is chosen.</source>
        <translation>Строка не выбрана.</translation>
    </message>
</context>
<context>
    <name>FaultGuide</name>
    <message>
        <source>Next &amp;Malformed Record</source>
        <translation>&amp;Следующая ошибочная запись</translation>
    </message>
    <message>
        <source>Pre&amp;vious Malformed Record</source>
        <translation>Предыдущая ош&amp;ибочная запись</translation>
    </message>
    <message>
        <source>Malformed: %L1</source>
        <translation>Ошибочных: %L1</translation>
    </message>
    <message>
        <source>Quotes that nothing closes: %L1</source>
        <translation>Незакрытых кавычек: %L1</translation>
    </message>
    <message>
        <source>Text after a closing quote: %L1</source>
        <translation>Текст после закрывающей кавычки: %L1</translation>
    </message>
    <message>
        <source>Fewer fields than the header: %L1</source>
        <translation>Полей меньше, чем в заголовке: %L1</translation>
    </message>
    <message>
        <source>More fields than the header: %L1</source>
        <translation>Полей больше, чем в заголовке: %L1</translation>
    </message>
    <message>
        <source>A click, or F8, goes to the next one.</source>
        <translation>Щелчок или F8 ведёт к следующей записи.</translation>
    </message>
    <message>
        <source>There is no other malformed record.</source>
        <translation>Других ошибочных записей нет.</translation>
    </message>
</context>
<context>
    <name>FeedModel</name>
    <message>
        <source>Buy</source>
        <translation>Покупка</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>Продажа</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>№</translation>
    </message>
    <message>
        <source>Time (UTC)</source>
        <translation>Время (UTC)</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Инструмент</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>Сторона</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>Цена</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Количество</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Сумма</translation>
    </message>
    <message>
        <source>Venue</source>
        <translation>Площадка</translation>
    </message>
</context>
<context>
    <name>FeedWindow</name>
    <message>
        <source>Simulated data</source>
        <translation>Имитация данных</translation>
    </message>
    <message>
        <source>These trades never happened: they are computed.</source>
        <translation>Этих сделок никогда не было: они вычислены.</translation>
    </message>
    <message>
        <source>Simulated market feed</source>
        <translation>Имитация биржевого потока</translation>
    </message>
    <message>
        <source>%L1 rows/s</source>
        <translation>%L1 строк/с</translation>
    </message>
    <message>
        <source>New rows at the top</source>
        <translation>Новые строки сверху</translation>
    </message>
    <message>
        <source>New rows at the end</source>
        <translation>Новые строки снизу</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>Пау&amp;за</translation>
    </message>
    <message>
        <source>Scroll away from the new rows: the rows you look at stay.</source>
        <translation>Прокрутите прочь от новых строк: те, на которые вы смотрите, останутся.</translation>
    </message>
    <message>
        <source>%1, no more will come</source>
        <translation>%1, больше не будет</translation>
    </message>
</context>
<context>
    <name>FileFollower</name>
    <message>
        <source>It cannot be read.</source>
        <translation>Его нельзя прочитать.</translation>
    </message>
</context>
<context>
    <name>FileWindow</name>
    <message>
        <source>Standard input</source>
        <translation>Стандартный ввод</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <translation>%1 — %2</translation>
    </message>
    <message>
        <source>R&amp;eload</source>
        <translation>&amp;Перечитать</translation>
    </message>
    <message>
        <source>%1 — newest of %2</source>
        <translation>%1 — новейший из %2</translation>
    </message>
    <message>
        <source>%1 is newer, and is shown now.</source>
        <translation>%1 новее, теперь показан этот файл.</translation>
    </message>
    <message>
        <source>&amp;Stop Indexing</source>
        <translation>О&amp;становить индексирование</translation>
    </message>
    <message>
        <source>Encoding and columns</source>
        <translation>Кодировка и столбцы</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Открытие…</translation>
    </message>
    <message>
        <source>Resume &amp;Indexing</source>
        <translation>Продол&amp;жить индексирование</translation>
    </message>
    <message>
        <source>The file was deleted; this is what it held</source>
        <translation>Файл удалён; это его прежнее содержимое</translation>
    </message>
    <message>
        <source>There are more lines; the first %L1 are shown</source>
        <translation>Строк больше; показаны первые: %L1</translation>
    </message>
    <message>
        <source>Decompressing…</source>
        <translation>Распаковка…</translation>
    </message>
    <message>
        <source>Indexing…</source>
        <translation>Индексирование…</translation>
    </message>
    <message>
        <source>Waiting for more</source>
        <translation>Ожидание данных</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Слежение</translation>
    </message>
    <message>
        <source>Indexed</source>
        <translation>Проиндексировано</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Завершено</translation>
    </message>
    <message>
        <source>The input has ended</source>
        <translation>Ввод закончился</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Приостановлено</translation>
    </message>
    <message>
        <source>%1
cannot be shown: %2</source>
        <translation>%1
нельзя показать: %2</translation>
    </message>
    <message>
        <source>It is shown as soon as it can be.</source>
        <translation>Файл будет показан, как только это станет возможно.</translation>
    </message>
    <message>
        <source>The file was shortened, and is shown from its beginning.</source>
        <translation>Файл укорочен и показан с начала.</translation>
    </message>
    <message>
        <source>The file was written anew.</source>
        <translation>Файл записан заново.</translation>
    </message>
    <message>
        <source>Another file has taken its name, and is shown now.</source>
        <translation>Теперь это имя у другого файла, показан он.</translation>
    </message>
    <message>
        <source>With Rotate&amp;d Files</source>
        <translation>&amp;Вместе с прежними файлами</translation>
    </message>
    <message>
        <source>Shows the files that were rotated away before this one, as one table</source>
        <translation>Показывает отложенные при ротации файлы и этот как одну таблицу</translation>
    </message>
    <message>
        <source>Could not be read to the end:</source>
        <translation>Не удалось дочитать до конца:</translation>
    </message>
    <message>
        <source>%1, with rotated files</source>
        <translation>%1, вместе с прежними файлами</translation>
    </message>
    <message>
        <source>Not all files could be read</source>
        <translation>Прочитаны не все файлы</translation>
    </message>
    <message>
        <source>A temporary copy of this size is kept in %1, the index of lines in %2 of memory.</source>
        <translation>Временная копия такого размера хранится в %1, индекс строк занимает %2 памяти.</translation>
    </message>
    <message>
        <source>The index of lines takes %1 of memory.</source>
        <translation>Индекс строк занимает %1 памяти.</translation>
    </message>
    <message>
        <source>Journal of the system</source>
        <translation>Журнал системы</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Show All Rows</source>
        <translation>Показать все строки</translation>
    </message>
    <message>
        <source>Remove the filter (Esc)</source>
        <translation>Снять фильтр (Esc)</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows have “%3”</source>
        <translation>Строк с «%3»: %L1 из %L2</translation>
    </message>
    <message>
        <source>Filtering… %1 %</source>
        <translation>Фильтрация… %1&#xa0;%</translation>
    </message>
    <message>
        <source>Remove Span</source>
        <translation>Снять интервал</translation>
    </message>
    <message>
        <source>Show rows before and after the span, too</source>
        <translation>Показать и строки до и после интервала</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows</source>
        <translation>Строк: %L1 из %L2</translation>
    </message>
</context>
<context>
    <name>FindPanel</name>
    <message>
        <source>Whole words</source>
        <translation>Слова целиком</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Регулярное выражение</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Столбцы</translation>
    </message>
    <message>
        <source>Columns that are looked at</source>
        <translation>Столбцы, в которых идёт поиск</translation>
    </message>
    <message>
        <source>Show only the rows that have the text</source>
        <translation>Показать только строки с этим текстом</translation>
    </message>
</context>
<context>
    <name>FontMenu</name>
    <message>
        <source>Text Fo&amp;nt</source>
        <translation>&amp;Шрифт</translation>
    </message>
    <message>
        <source>&amp;System&apos;s Fixed-Width Font</source>
        <translation>&amp;Системный моноширинный</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>&amp;Выбрать…</translation>
    </message>
</context>
<context>
    <name>FormatMenu</name>
    <message>
        <source>For&amp;mat</source>
        <translation>&amp;Формат</translation>
    </message>
    <message>
        <source>&amp;Encoding</source>
        <translation>&amp;Кодировка</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Столбцы</translation>
    </message>
    <message>
        <source>&amp;First Line</source>
        <translation>&amp;Первая строка</translation>
    </message>
    <message>
        <source>Names the Columns</source>
        <translation>Содержит имена столбцов</translation>
    </message>
    <message>
        <source>Is a Row</source>
        <translation>Содержит данные</translation>
    </message>
    <message>
        <source>&amp;Recognised</source>
        <translation>&amp;Определять автоматически</translation>
    </message>
    <message>
        <source>no columns</source>
        <translation>без столбцов</translation>
    </message>
    <message>
        <source>comma</source>
        <translation>запятая</translation>
    </message>
    <message>
        <source>semicolon</source>
        <translation>точка с запятой</translation>
    </message>
    <message>
        <source>tab</source>
        <translation>табуляция</translation>
    </message>
    <message>
        <source>pipe</source>
        <translation>вертикальная черта</translation>
    </message>
    <message>
        <source>space</source>
        <translation>пробел</translation>
    </message>
    <message>
        <source>JSON lines</source>
        <translation>строки JSON</translation>
    </message>
    <message>
        <source>logfmt</source>
        <translation>logfmt</translation>
    </message>
    <message>
        <source>access log</source>
        <translation>журнал доступа</translation>
    </message>
    <message>
        <source>syslog</source>
        <translation>syslog</translation>
    </message>
    <message>
        <source>journal</source>
        <translation>журнал</translation>
    </message>
</context>
<context>
    <name>GoToTime</name>
    <message>
        <source>Go to &amp;Time…</source>
        <translation>Перейти ко &amp;времени…</translation>
    </message>
    <message>
        <source>Go to Time</source>
        <translation>Перейти ко времени</translation>
    </message>
    <message>
        <source>Time, or date and time, as in the file:</source>
        <translation>Время или дата и время, как в файле:</translation>
    </message>
    <message>
        <source>“%1” is no time.</source>
        <translation>«%1» — не время.</translation>
    </message>
    <message>
        <source>Looking for that time…</source>
        <translation>Поиск времени…</translation>
    </message>
    <message>
        <source>No row is at that time or after it.</source>
        <translation>Строк с этим или более поздним временем нет.</translation>
    </message>
</context>
<context>
    <name>Histogram</name>
    <message>
        <source>Histogram</source>
        <translation>Гистограмма</translation>
    </message>
</context>
<context>
    <name>HistogramColumns</name>
    <message>
        <source>Rows %1 to %2</source>
        <translation>Строки с %1 по %2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>с %1 по %2</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 строка</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>строк: %L1</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 ошибка</translation>
    </message>
    <message>
        <source>%L1 errors</source>
        <translation>ошибок: %L1</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 предупреждение</translation>
    </message>
    <message>
        <source>%L1 warnings</source>
        <translation>предупреждений: %L1</translation>
    </message>
</context>
<context>
    <name>JournalStream</name>
    <message>
        <source>It is a journal, and this program was built without libsystemd.</source>
        <translation>Это журнал, а программа собрана без libsystemd.</translation>
    </message>
</context>
<context>
    <name>LogFormat</name>
    <message>
        <source>Host</source>
        <translation>Хост</translation>
    </message>
    <message>
        <source>Identity</source>
        <translation>Идентификатор</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Пользователь</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>Request</source>
        <translation>Запрос</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Статус</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Байты</translation>
    </message>
    <message>
        <source>Referrer</source>
        <translation>Источник</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Клиент</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Прочее</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Программа</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Процесс</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Сообщение</translation>
    </message>
</context>
<context>
    <name>MarketPane</name>
    <message>
        <source>Market</source>
        <translation>Рынок</translation>
    </message>
</context>
<context>
    <name>MarksDialog</name>
    <message>
        <source>Marks</source>
        <translation>Метки</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Текст</translation>
    </message>
    <message>
        <source>&amp;Go There</source>
        <translation>&amp;Перейти</translation>
    </message>
</context>
<context>
    <name>MarksMenu</name>
    <message>
        <source>&amp;Marks</source>
        <translation>&amp;Метки</translation>
    </message>
    <message>
        <source>&amp;Mark or Unmark Row</source>
        <translation>Поставить или снять &amp;метку</translation>
    </message>
    <message>
        <source>&amp;Next Mark</source>
        <translation>&amp;Следующая метка</translation>
    </message>
    <message>
        <source>&amp;Previous Mark</source>
        <translation>&amp;Предыдущая метка</translation>
    </message>
    <message>
        <source>&amp;List of Marks…</source>
        <translation>Сп&amp;исок меток…</translation>
    </message>
    <message>
        <source>&amp;Remove All Marks</source>
        <translation>&amp;Удалить все метки</translation>
    </message>
    <message>
        <source>Choose a row to mark.</source>
        <translation>Выберите строку для метки.</translation>
    </message>
    <message>
        <source>There is no other mark.</source>
        <translation>Других меток нет.</translation>
    </message>
    <message>
        <source>Went on with the first mark</source>
        <translation>Переход к первой метке</translation>
    </message>
    <message>
        <source>Went on with the last mark</source>
        <translation>Переход к последней метке</translation>
    </message>
</context>
<context>
    <name>Overview</name>
    <message>
        <source>&amp;Overview Strip</source>
        <translation>&amp;Обзорная полоса</translation>
    </message>
    <message>
        <source>&amp;Histogram</source>
        <translation>&amp;Гистограмма</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows match</source>
        <translation>Найдено строк: %L1 из %L2</translation>
    </message>
    <message>
        <source>%L1+ of %L2 rows match</source>
        <translation>Найдено строк: %L1+ из %L2</translation>
    </message>
</context>
<context>
    <name>OverviewStrip</name>
    <message>
        <source>Overview strip</source>
        <translation>Обзорная полоса</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 совпадение</translation>
    </message>
    <message>
        <source>%L1 matches</source>
        <translation>совпадений: %L1</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 ошибка</translation>
    </message>
    <message>
        <source>%L1 errors</source>
        <translation>ошибок: %L1</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 предупреждение</translation>
    </message>
    <message>
        <source>%L1 warnings</source>
        <translation>предупреждений: %L1</translation>
    </message>
    <message>
        <source>1 mark</source>
        <translation>1 метка</translation>
    </message>
    <message>
        <source>%L1 marks</source>
        <translation>меток: %L1</translation>
    </message>
    <message>
        <source>Row %L1</source>
        <translation>Строка %L1</translation>
    </message>
    <message>
        <source>Rows %L1 to %L2</source>
        <translation>Строки с %L1 по %L2</translation>
    </message>
</context>
<context>
    <name>RowExport</name>
    <message>
        <source>The rows changed while they were being saved.</source>
        <translation>Строки изменились во время сохранения.</translation>
    </message>
    <message>
        <source>Row %L1 is too long: it has more than %L2 bytes.</source>
        <translation>Строка %L1 слишком длинная: в ней больше %L2 байт.</translation>
    </message>
    <message>
        <source>Row %L1 could not be read.</source>
        <translation>Строку %L1 не удалось прочитать.</translation>
    </message>
</context>
<context>
    <name>RowExportDialog</name>
    <message>
        <source>&amp;Stop</source>
        <translation>О&amp;становить</translation>
    </message>
    <message>
        <source>Save Rows</source>
        <translation>Сохранение строк</translation>
    </message>
    <message>
        <source>Saving %L1 rows…</source>
        <translation>Сохранение строк: %L1…</translation>
    </message>
    <message>
        <source>Saved %L1 rows.</source>
        <translation>Сохранено строк: %L1.</translation>
    </message>
    <message>
        <source>The rows could not be saved.</source>
        <translation>Не удалось сохранить строки.</translation>
    </message>
    <message>
        <source>Fields between commas, CSV (*.csv)</source>
        <translation>Поля через запятую, CSV (*.csv)</translation>
    </message>
    <message>
        <source>Text between tabs (*.txt *.tsv)</source>
        <translation>Текст через табуляцию (*.txt *.tsv)</translation>
    </message>
    <message>
        <source>Save Rows As</source>
        <translation>Сохранить строки как</translation>
    </message>
</context>
<context>
    <name>RowSpan</name>
    <message>
        <source>%1 to %2</source>
        <translation>С %1 по %2</translation>
    </message>
    <message>
        <source>Rows %1 to %2</source>
        <translation>Строки с %1 по %2</translation>
    </message>
</context>
<context>
    <name>SelectionSums</name>
    <message>
        <source>Adding up… %1 %</source>
        <translation>Суммирование… %1&#xa0;%</translation>
    </message>
    <message>
        <source>more than 63 digits</source>
        <translation>больше 63 цифр</translation>
    </message>
    <message>
        <source>Count %L1</source>
        <translation>Количество %L1</translation>
    </message>
    <message>
        <source>Sum %1   Min %2   Max %3   Mean %4</source>
        <translation>Сумма %1   Мин. %2   Макс. %3   Среднее %4</translation>
    </message>
    <message>
        <source>%L1 without a number</source>
        <translation>Без числа: %L1</translation>
    </message>
</context>
<context>
    <name>StatisticsDialog</name>
    <message>
        <source>Statistics</source>
        <translation>Статистика</translation>
    </message>
    <message>
        <source>Rows:</source>
        <translation>Строк:</translation>
    </message>
    <message>
        <source>Frames a second:</source>
        <translation>Кадров в секунду:</translation>
    </message>
    <message>
        <source>Half of the frames took at most:</source>
        <translation>Половина кадров заняла не более:</translation>
    </message>
    <message>
        <source>99 of 100 frames took at most:</source>
        <translation>99 из 100 кадров заняли не более:</translation>
    </message>
    <message>
        <source>Memory, at most so far:</source>
        <translation>Память, наибольший объём:</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 мс</translation>
    </message>
</context>
<context>
    <name>TabWindow</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Закрыть</translation>
    </message>
    <message>
        <source>Close &amp;Others</source>
        <translation>Закрыть &amp;остальные</translation>
    </message>
</context>
<context>
    <name>TabWindows</name>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Окно</translation>
    </message>
    <message>
        <source>Move Tab to &amp;New Window</source>
        <translation>Перенести вкладку в &amp;новое окно</translation>
    </message>
    <message>
        <source>&amp;Join the Other Window</source>
        <translation>Перенести в &amp;другое окно</translation>
    </message>
</context>
<context>
    <name>TextFile</name>
    <message>
        <source>It is a directory.</source>
        <translation>Это папка.</translation>
    </message>
    <message>
        <source>It is a device, not a file.</source>
        <translation>Это устройство, а не файл.</translation>
    </message>
    <message>
        <source>There is no room for a temporary copy: %1</source>
        <translation>Нет места для временной копии: %1</translation>
    </message>
    <message>
        <source>The temporary copy cannot be written: %1</source>
        <translation>Нельзя записать временную копию: %1</translation>
    </message>
</context>
<context>
    <name>TextFileModel</name>
    <message>
        <source>Line</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Текст</translation>
    </message>
    <message>
        <source>Nothing closes its quote.</source>
        <translation>Кавычка не закрыта.</translation>
    </message>
    <message>
        <source>There is text after a closing quote.</source>
        <translation>После закрывающей кавычки стоит текст.</translation>
    </message>
    <message>
        <source>It has fewer fields than the header.</source>
        <translation>Полей меньше, чем в заголовке.</translation>
    </message>
    <message>
        <source>It has more fields than the header.</source>
        <translation>Полей больше, чем в заголовке.</translation>
    </message>
    <message>
        <source>Malformed record: %1</source>
        <translation>Ошибочная запись: %1</translation>
    </message>
</context>
<context>
    <name>TextMatcher</name>
    <message>
        <source>Character %1: %2</source>
        <translation>Символ %1: %2</translation>
    </message>
</context>
<context>
    <name>ViewerWindow</name>
    <message>
        <source>&amp;Follow</source>
        <translation>&amp;Следить</translation>
    </message>
    <message>
        <source>Keep to the newest rows (F6)</source>
        <translation>Держаться новейших строк (F6)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копировать</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>&amp;Найти…</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Найти</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>Найти &amp;далее</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>Найти &amp;предыдущее</translation>
    </message>
    <message>
        <source>Fi&amp;lter Rows</source>
        <translation>&amp;Фильтровать строки</translation>
    </message>
    <message>
        <source>&amp;Go to Line…</source>
        <translation>Перейти к стр&amp;оке…</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Файл</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Открыть…</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Открыть</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Недавние файлы</translation>
    </message>
    <message>
        <source>Save Rows &amp;As…</source>
        <translation>Сохранить строки &amp;как…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Закрыть</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>В&amp;ыход</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Правка</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Вид</translation>
    </message>
    <message>
        <source>&amp;Larger Text</source>
        <translation>&amp;Увеличить текст</translation>
    </message>
    <message>
        <source>&amp;Smaller Text</source>
        <translation>У&amp;меньшить текст</translation>
    </message>
    <message>
        <source>&amp;Usual Text Size</source>
        <translation>Обычный &amp;размер текста</translation>
    </message>
    <message>
        <source>Colours of Ro&amp;ws…</source>
        <translation>&amp;Цвета строк…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Справка</translation>
    </message>
    <message>
        <source>&amp;Statistics</source>
        <translation>&amp;Статистика</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;О программе</translation>
    </message>
    <message>
        <source>Main Tool Bar</source>
        <translation>Основная панель</translation>
    </message>
    <message>
        <source>Open Files</source>
        <translation>Открыть файлы</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>О&amp;чистить</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 строка</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>Строк: %L1</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows</source>
        <translation>Строк: %L1 из %L2</translation>
    </message>
    <message>
        <source>Only the first %L1 rows were copied.</source>
        <translation>Скопированы только первые строки: %L1.</translation>
    </message>
    <message>
        <source>Go to Line</source>
        <translation>Перейти к строке</translation>
    </message>
    <message>
        <source>Line:</source>
        <translation>Строка:</translation>
    </message>
    <message>
        <source>Copy as C&amp;SV</source>
        <translation>Копировать как &amp;CSV</translation>
    </message>
    <message>
        <source>Copy C&amp;ell</source>
        <translation>Копировать &amp;ячейку</translation>
    </message>
    <message>
        <source>Show Only &amp;Rows with “%1”</source>
        <translation>Показать &amp;только строки с «%1»</translation>
    </message>
</context>
<context>
    <name>WelcomeWindow</name>
    <message>
        <source>Welcome — %1</source>
        <translation>Добро пожаловать — %1</translation>
    </message>
    <message>
        <source>Opens text files of any size, compressed ones too, and follows them as they grow. Drop a file here, or choose one.</source>
        <translation>Открывает текстовые файлы любого размера, в том числе сжатые, и следит за их ростом. Перетащите файл сюда или выберите его.</translation>
    </message>
    <message>
        <source>&amp;Open Files…</source>
        <translation>&amp;Открыть файлы…</translation>
    </message>
    <message>
        <source>Logs, tables, any text</source>
        <translation>Журналы, таблицы, любой текст</translation>
    </message>
    <message>
        <source>Show the &amp;Market</source>
        <translation>Показать &amp;биржу</translation>
    </message>
    <message>
        <source>A simulated feed of up to 50,000 rows a second</source>
        <translation>Имитация потока до 50&#xa0;000 строк в секунду</translation>
    </message>
    <message>
        <source>Opened lately</source>
        <translation>Недавно открытые</translation>
    </message>
</context>
</TS>
