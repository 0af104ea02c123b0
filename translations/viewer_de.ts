<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>Info zu %1</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>Opens and follows text of any size.</source>
        <translation>Öffnet und verfolgt Texte jeder Größe.</translation>
    </message>
    <message>
        <source>The program and its table: MIT license, © the vantix authors</source>
        <translation>Das Programm und seine Tabelle: MIT-Lizenz, © the vantix authors</translation>
    </message>
    <message>
        <source>Qt %1: GNU Lesser General Public License 3</source>
        <translation>Qt %1: GNU Lesser General Public License 3</translation>
    </message>
    <message>
        <source>%1: BSD license</source>
        <translation>%1: BSD-Lizenz</translation>
    </message>
</context>
<context>
    <name>BookModel</name>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Letzter</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Tief</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
</context>
<context>
    <name>CaptureModel</name>
    <message>
        <source>This packet cannot be read: %1</source>
        <translation>Dieses Paket kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>%1, of which %L2 were captured</source>
        <translation>%1, davon %L2 aufgezeichnet</translation>
    </message>
    <message>
        <source>Packet %L1: %2, %3</source>
        <translation>Paket %L1: %2, %3</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>%L1 bytes</source>
        <translation>%L1 Bytes</translation>
    </message>
</context>
<context>
    <name>CaptureWindow</name>
    <message>
        <source>R&amp;eload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Wird geöffnet&#xa0;…</translation>
    </message>
    <message>
        <source>What the packets were captured from</source>
        <translation>Wovon die Pakete aufgezeichnet wurden</translation>
    </message>
    <message>
        <source>A temporary copy of this size is kept in %1, the index of packets in %2 of memory.</source>
        <translation>Eine vorläufige Kopie dieser Größe liegt in %1, der Index der Pakete in %2 Speicher.</translation>
    </message>
    <message>
        <source>The index of packets takes %1 of memory.</source>
        <translation>Der Index der Pakete belegt %1 Speicher.</translation>
    </message>
    <message>
        <source>The file was deleted; this is what it held</source>
        <translation>Die Datei wurde gelöscht; dies war ihr Inhalt</translation>
    </message>
    <message>
        <source>Indexing…</source>
        <translation>Wird indiziert&#xa0;…</translation>
    </message>
    <message>
        <source>The last packet is not complete yet</source>
        <translation>Das letzte Paket ist noch nicht vollständig</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Folgt</translation>
    </message>
    <message>
        <source>Indexed</source>
        <translation>Indiziert</translation>
    </message>
    <message>
        <source>The last packet is not complete</source>
        <translation>Das letzte Paket ist nicht vollständig</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Vollständig</translation>
    </message>
    <message>
        <source>Damaged at byte %L1; the packets before are shown</source>
        <translation>Beschädigt ab Byte %L1; die Pakete davor werden gezeigt</translation>
    </message>
    <message>
        <source>There are more packets; the first %L1 are shown</source>
        <translation>Es gibt mehr Pakete; die ersten %L1 werden gezeigt</translation>
    </message>
    <message>
        <source>%1
cannot be shown: %2</source>
        <translation>%1
kann nicht angezeigt werden: %2</translation>
    </message>
    <message>
        <source>The file was written anew.</source>
        <translation>Die Datei wurde neu geschrieben.</translation>
    </message>
</context>
<context>
    <name>ColorRulesDialog</name>
    <message>
        <source>Colours of Rows</source>
        <translation>Zeilenfarben</translation>
    </message>
    <message>
        <source>Rows with</source>
        <translation>Zeilen mit</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Groß-/Kleinschreibung</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>The first rule that a row fits gives it its colour.</source>
        <translation>Die erste Regel, die auf eine Zeile passt, bestimmt ihre Farbe.</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
</context>
<context>
    <name>ColumnMenu</name>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>There are no columns</source>
        <translation>Keine Spalten vorhanden</translation>
    </message>
    <message>
        <source>Fit &amp;All Columns</source>
        <translation>Breite a&amp;ller Spalten anpassen</translation>
    </message>
    <message>
        <source>&amp;Hide “%1”</source>
        <translation>„%1“ &amp;ausblenden</translation>
    </message>
    <message>
        <source>&amp;Fit “%1”</source>
        <translation>Breite von „%1“ an&amp;passen</translation>
    </message>
    <message>
        <source>Ali&amp;gn “%1”</source>
        <translation>„%1“ aus&amp;richten</translation>
    </message>
    <message>
        <source>As the &amp;File Wants</source>
        <translation>Wie in der &amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>&amp;Links</translation>
    </message>
    <message>
        <source>&amp;Centre</source>
        <translation>&amp;Zentriert</translation>
    </message>
    <message>
        <source>&amp;Right</source>
        <translation>&amp;Rechts</translation>
    </message>
    <message>
        <source>&amp;Sort by “%1”</source>
        <translation>Nach „%1“ &amp;sortieren</translation>
    </message>
    <message>
        <source>&amp;Keep Line Numbers in Sight</source>
        <translation>&amp;Zeilennummern im Blick behalten</translation>
    </message>
    <message>
        <source>Gr&amp;oup Digits of “%1”</source>
        <translation>Ziffern von „%1“ &amp;gruppieren</translation>
    </message>
</context>
<context>
    <name>ColumnSort</name>
    <message>
        <source>&amp;Sort Upwards</source>
        <translation>Auf&amp;steigend sortieren</translation>
    </message>
    <message>
        <source>Sort &amp;Downwards</source>
        <translation>A&amp;bsteigend sortieren</translation>
    </message>
    <message>
        <source>&amp;Not Sorted</source>
        <translation>&amp;Nicht sortiert</translation>
    </message>
    <message>
        <source>Sorting… %1 %</source>
        <translation>Sortiere … %1 %</translation>
    </message>
    <message>
        <source>Sorted by “%1”</source>
        <translation>Sortiert nach „%1“</translation>
    </message>
    <message>
        <source>The order of the rows takes %1.</source>
        <translation>Die Reihenfolge der Zeilen belegt %1.</translation>
    </message>
</context>
<context>
    <name>DataCell</name>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%L1 bytes</source>
        <translation>%L1 Bytes</translation>
    </message>
</context>
<context>
    <name>DataConnection</name>
    <message>
        <source>Qt&apos;s driver for SQLite is not installed (Debian: libqt6sql6-sqlite).</source>
        <translation>Qts Treiber für SQLite ist nicht installiert (Debian: libqt6sql6-sqlite).</translation>
    </message>
    <message>
        <source>Qt&apos;s driver for PostgreSQL is not installed (Debian: libqt6sql6-psql).</source>
        <translation>Qts Treiber für PostgreSQL ist nicht installiert (Debian: libqt6sql6-psql).</translation>
    </message>
    <message>
        <source>The database gave no reason.</source>
        <translation>Die Datenbank nannte keinen Grund.</translation>
    </message>
    <message>
        <source>The file is not there.</source>
        <translation>Die Datei gibt es nicht.</translation>
    </message>
    <message>
        <source>Qt&apos;s driver for ODBC is not installed (Debian: libqt6sql6-odbc).</source>
        <translation>Qts Treiber für ODBC ist nicht installiert (Debian: libqt6sql6-odbc).</translation>
    </message>
    <message>
        <source>Only queries are sent to this database.</source>
        <translation>An diese Datenbank werden nur Abfragen geschickt.</translation>
    </message>
</context>
<context>
    <name>DataModel</name>
    <message>
        <source>This is not one condition: a bracket or a quote is not closed, or there is a semicolon.</source>
        <translation>Das ist nicht eine Bedingung: Eine Klammer oder ein Anführungszeichen ist nicht geschlossen, oder es gibt ein Semikolon.</translation>
    </message>
    <message>
        <source>The database took more than %L1 s.</source>
        <translation>Die Datenbank brauchte mehr als %L1 s.</translation>
    </message>
    <message>
        <source>Whole words and regular expressions cannot be looked for in this database.</source>
        <translation>Ganze Wörter und reguläre Ausdrücke können in dieser Datenbank nicht gesucht werden.</translation>
    </message>
</context>
<context>
    <name>DataRows</name>
    <message>
        <source>about %L1 rows</source>
        <translation>etwa %L1 Zeilen</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>%L1 Zeilen</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>%1 with %2</source>
        <translation>%1 mit %2</translation>
    </message>
</context>
<context>
    <name>DataSource</name>
    <message>
        <source>There are no tables in the database.</source>
        <translation>In der Datenbank gibt es keine Tabellen.</translation>
    </message>
    <message>
        <source>Query</source>
        <translation>Abfrage</translation>
    </message>
    <message>
        <source>There is no table “%1”.</source>
        <translation>Es gibt keine Tabelle „%1“.</translation>
    </message>
    <message>
        <source>This is no address of a database: %1</source>
        <translation>Das ist keine Adresse einer Datenbank: %1</translation>
    </message>
    <message>
        <source>A password does not belong into an address: leave it out, and it is read from ~/.pgpass or asked for.</source>
        <translation>Ein Passwort gehört nicht in eine Adresse: Ohne es wird es aus ~/.pgpass gelesen oder erfragt.</translation>
    </message>
    <message>
        <source>The database does not find rows by the values that it gives of them.</source>
        <translation>Die Datenbank findet Zeilen nicht nach den Werten, die sie von ihnen angibt.</translation>
    </message>
    <message>
        <source>This is no connection string of ODBC, such as DSN=prices.</source>
        <translation>Das ist keine Verbindungszeichenfolge von ODBC, wie DSN=preise eine ist.</translation>
    </message>
    <message>
        <source>A password does not belong into an address: leave it out, and it is asked for.</source>
        <translation>Ein Passwort gehört nicht in eine Adresse: ohne eines wird danach gefragt.</translation>
    </message>
</context>
<context>
    <name>DataWindow</name>
    <message>
        <source>Tables and views of the database</source>
        <translation>Tabellen und Sichten der Datenbank</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>Bedingung</translation>
    </message>
    <message>
        <source>A condition in the language of the database, such as: price &gt; 100 AND symbol LIKE &apos;A%&apos;</source>
        <translation>Eine Bedingung in der Sprache der Datenbank, etwa: price &gt; 100 AND symbol LIKE &apos;A%&apos;</translation>
    </message>
    <message>
        <source>Con&amp;dition…</source>
        <translation>Be&amp;dingung…</translation>
    </message>
    <message>
        <source>Show only the rows that meet a condition (Ctrl+Shift+W)</source>
        <translation>Nur die Zeilen zeigen, die eine Bedingung erfüllen (Strg+Umschalt+W)</translation>
    </message>
    <message>
        <source>Memory that the rows take that are kept</source>
        <translation>Speicher der Zeilen, die behalten werden</translation>
    </message>
    <message>
        <source>Adding up…</source>
        <translation>Wird summiert…</translation>
    </message>
    <message>
        <source>Only Rows &amp;Where</source>
        <translation>Nur Zeilen &amp;mit</translation>
    </message>
    <message>
        <source>&amp;Add Up “%1”</source>
        <translation>„%1“ &amp;summieren</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <translation>%1 — %2</translation>
    </message>
    <message>
        <source>%1 cannot be shown.

%2</source>
        <translation>%1 kann nicht gezeigt werden.

%2</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Wird geöffnet…</translation>
    </message>
    <message>
        <source>Not connected, tried again: %1</source>
        <translation>Nicht verbunden, wird wieder versucht: %1</translation>
    </message>
    <message>
        <source>Without a key: is read into a temporary file…</source>
        <translation>Ohne Schlüssel: wird in eine temporäre Datei gelesen…</translation>
    </message>
    <message>
        <source>Without a key: shows a temporary copy</source>
        <translation>Ohne Schlüssel: zeigt eine temporäre Kopie</translation>
    </message>
    <message>
        <source>Counting…</source>
        <translation>Wird gezählt…</translation>
    </message>
    <message>
        <source>There are no numbers in “%1”.</source>
        <translation>In „%1“ gibt es keine Zahlen.</translation>
    </message>
    <message>
        <source>%1: Count %L2   Sum %3   Min %4   Max %5</source>
        <translation>%1: Anzahl %L2   Summe %3   Min. %4   Max. %5</translation>
    </message>
    <message>
        <source>too long</source>
        <translation>zu lang</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Password for %1:</source>
        <translation>Passwort für %1:</translation>
    </message>
</context>
<context>
    <name>Decompressor</name>
    <message>
        <source>It is damaged or cut off.</source>
        <translation>Sie ist beschädigt oder unvollständig.</translation>
    </message>
    <message>
        <source>It is damaged or cut off: %1</source>
        <translation>Sie ist beschädigt oder unvollständig: %1</translation>
    </message>
    <message>
        <source>It is compressed, and this program was built without libarchive.</source>
        <translation>Sie ist komprimiert, und dieses Programm wurde ohne libarchive erstellt.</translation>
    </message>
</context>
<context>
    <name>DetailPane</name>
    <message>
        <source>Row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>&amp;Row</source>
        <translation>&amp;Zeile</translation>
    </message>
    <message>
        <source>No row is chosen.</source>
        <translation>Keine Zeile ausgewählt.</translation>
    </message>
</context>
<context>
    <name>FaultGuide</name>
    <message>
        <source>Next &amp;Malformed Record</source>
        <translation>Nächster fehlerhafter &amp;Datensatz</translation>
    </message>
    <message>
        <source>Pre&amp;vious Malformed Record</source>
        <translation>Vor&amp;heriger fehlerhafter Datensatz</translation>
    </message>
    <message>
        <source>Malformed: %L1</source>
        <translation>Fehlerhaft: %L1</translation>
    </message>
    <message>
        <source>Quotes that nothing closes: %L1</source>
        <translation>Anführungszeichen ohne Ende: %L1</translation>
    </message>
    <message>
        <source>Text after a closing quote: %L1</source>
        <translation>Text nach schließendem Anführungszeichen: %L1</translation>
    </message>
    <message>
        <source>Fewer fields than the header: %L1</source>
        <translation>Weniger Felder als die Kopfzeile: %L1</translation>
    </message>
    <message>
        <source>More fields than the header: %L1</source>
        <translation>Mehr Felder als die Kopfzeile: %L1</translation>
    </message>
    <message>
        <source>A click, or F8, goes to the next one.</source>
        <translation>Ein Klick oder F8 führt zum nächsten.</translation>
    </message>
    <message>
        <source>There is no other malformed record.</source>
        <translation>Es gibt keinen weiteren fehlerhaften Datensatz.</translation>
    </message>
</context>
<context>
    <name>FeedModel</name>
    <message>
        <source>Buy</source>
        <translation>Kauf</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>Verkauf</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Time (UTC)</source>
        <translation>Zeit (UTC)</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>Kurs</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Menge</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Venue</source>
        <translation>Handelsplatz</translation>
    </message>
</context>
<context>
    <name>FeedWindow</name>
    <message>
        <source>Simulated data</source>
        <translation>Simulierte Daten</translation>
    </message>
    <message>
        <source>These trades never happened: they are computed.</source>
        <translation>Diese Geschäfte gab es nie, sie sind berechnet.</translation>
    </message>
    <message>
        <source>Simulated market feed</source>
        <translation>Simulierter Marktdatenstrom</translation>
    </message>
    <message>
        <source>%L1 rows/s</source>
        <translation>%L1 Zeilen/s</translation>
    </message>
    <message>
        <source>New rows at the top</source>
        <translation>Neue Zeilen oben</translation>
    </message>
    <message>
        <source>New rows at the end</source>
        <translation>Neue Zeilen unten</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pause</translation>
    </message>
    <message>
        <source>Scroll away from the new rows: the rows you look at stay.</source>
        <translation>Blättern Sie von den neuen Zeilen weg: Was Sie ansehen, bleibt stehen.</translation>
    </message>
    <message>
        <source>%1, no more will come</source>
        <translation>%1, mehr kommen nicht</translation>
    </message>
</context>
<context>
    <name>FileFollower</name>
    <message>
        <source>It cannot be read.</source>
        <translation>Sie ist nicht lesbar.</translation>
    </message>
</context>
<context>
    <name>FileWindow</name>
    <message>
        <source>Standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <translation>%1 — %2</translation>
    </message>
    <message>
        <source>R&amp;eload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>%1 — newest of %2</source>
        <translation>%1 — neueste von %2</translation>
    </message>
    <message>
        <source>%1 is newer, and is shown now.</source>
        <translation>%1 ist neuer und wird jetzt angezeigt.</translation>
    </message>
    <message>
        <source>&amp;Stop Indexing</source>
        <translation>Indizierung &amp;anhalten</translation>
    </message>
    <message>
        <source>Encoding and columns</source>
        <translation>Kodierung und Spalten</translation>
    </message>
    <message>
        <source>Opening…</source>
        <translation>Wird geöffnet&#xa0;…</translation>
    </message>
    <message>
        <source>Resume &amp;Indexing</source>
        <translation>Indizierung f&amp;ortsetzen</translation>
    </message>
    <message>
        <source>The file was deleted; this is what it held</source>
        <translation>Die Datei wurde gelöscht; dies war ihr Inhalt</translation>
    </message>
    <message>
        <source>There are more lines; the first %L1 are shown</source>
        <translation>Es gibt mehr Zeilen; angezeigt werden die ersten %L1</translation>
    </message>
    <message>
        <source>Decompressing…</source>
        <translation>Wird entpackt&#xa0;…</translation>
    </message>
    <message>
        <source>Indexing…</source>
        <translation>Wird indiziert&#xa0;…</translation>
    </message>
    <message>
        <source>Waiting for more</source>
        <translation>Wartet auf mehr</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Folgt</translation>
    </message>
    <message>
        <source>Indexed</source>
        <translation>Indiziert</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Vollständig</translation>
    </message>
    <message>
        <source>The input has ended</source>
        <translation>Die Eingabe ist zu Ende</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>%1
cannot be shown: %2</source>
        <translation>%1
kann nicht angezeigt werden: %2</translation>
    </message>
    <message>
        <source>It is shown as soon as it can be.</source>
        <translation>Die Anzeige folgt, sobald es geht.</translation>
    </message>
    <message>
        <source>The file was shortened, and is shown from its beginning.</source>
        <translation>Die Datei wurde gekürzt und wird von Anfang an angezeigt.</translation>
    </message>
    <message>
        <source>The file was written anew.</source>
        <translation>Die Datei wurde neu geschrieben.</translation>
    </message>
    <message>
        <source>Another file has taken its name, and is shown now.</source>
        <translation>Eine andere Datei trägt jetzt den Namen und wird angezeigt.</translation>
    </message>
    <message>
        <source>With Rotate&amp;d Files</source>
        <translation>Mit rotierten &amp;Dateien</translation>
    </message>
    <message>
        <source>Shows the files that were rotated away before this one, as one table</source>
        <translation>Zeigt die zuvor wegrotierten Dateien mit dieser als eine Tabelle</translation>
    </message>
    <message>
        <source>Could not be read to the end:</source>
        <translation>Nicht bis zum Ende lesbar:</translation>
    </message>
    <message>
        <source>%1, with rotated files</source>
        <translation>%1, mit rotierten Dateien</translation>
    </message>
    <message>
        <source>Not all files could be read</source>
        <translation>Nicht alle Dateien sind lesbar</translation>
    </message>
    <message>
        <source>A temporary copy of this size is kept in %1, the index of lines in %2 of memory.</source>
        <translation>Eine temporäre Kopie dieser Größe liegt in %1, der Zeilenindex belegt %2 Speicher.</translation>
    </message>
    <message>
        <source>The index of lines takes %1 of memory.</source>
        <translation>Der Zeilenindex belegt %1 Speicher.</translation>
    </message>
    <message>
        <source>Journal of the system</source>
        <translation>Journal des Systems</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Show All Rows</source>
        <translation>Alle Zeilen anzeigen</translation>
    </message>
    <message>
        <source>Remove the filter (Esc)</source>
        <translation>Filter entfernen (Esc)</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows have “%3”</source>
        <translation>%L1 von %L2 Zeilen enthalten „%3“</translation>
    </message>
    <message>
        <source>Filtering… %1 %</source>
        <translation>Wird gefiltert&#xa0;… %1&#xa0;%</translation>
    </message>
    <message>
        <source>Remove Span</source>
        <translation>Bereich aufheben</translation>
    </message>
    <message>
        <source>Show rows before and after the span, too</source>
        <translation>Auch Zeilen vor und nach dem Bereich anzeigen</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows</source>
        <translation>%L1 von %L2 Zeilen</translation>
    </message>
</context>
<context>
    <name>FindPanel</name>
    <message>
        <source>Whole words</source>
        <translation>Ganze Wörter</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Columns that are looked at</source>
        <translation>Spalten, in denen gesucht wird</translation>
    </message>
    <message>
        <source>Show only the rows that have the text</source>
        <translation>Nur die Zeilen mit dem Text anzeigen</translation>
    </message>
</context>
<context>
    <name>FontMenu</name>
    <message>
        <source>Text Fo&amp;nt</source>
        <translation>Schriftar&amp;t</translation>
    </message>
    <message>
        <source>&amp;System&apos;s Fixed-Width Font</source>
        <translation>&amp;Feste Schrift des Systems</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>&amp;Auswählen …</translation>
    </message>
</context>
<context>
    <name>FormatMenu</name>
    <message>
        <source>For&amp;mat</source>
        <translation>F&amp;ormat</translation>
    </message>
    <message>
        <source>&amp;Encoding</source>
        <translation>&amp;Kodierung</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>&amp;First Line</source>
        <translation>&amp;Erste Zeile</translation>
    </message>
    <message>
        <source>Names the Columns</source>
        <translation>Benennt die Spalten</translation>
    </message>
    <message>
        <source>Is a Row</source>
        <translation>Ist eine Datenzeile</translation>
    </message>
    <message>
        <source>&amp;Recognised</source>
        <translation>&amp;Automatisch erkannt</translation>
    </message>
    <message>
        <source>no columns</source>
        <translation>keine Spalten</translation>
    </message>
    <message>
        <source>comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>semicolon</source>
        <translation>Semikolon</translation>
    </message>
    <message>
        <source>tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>pipe</source>
        <translation>senkrechter Strich</translation>
    </message>
    <message>
        <source>space</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>JSON lines</source>
        <translation>JSON-Zeilen</translation>
    </message>
    <message>
        <source>logfmt</source>
        <translation>logfmt</translation>
    </message>
    <message>
        <source>access log</source>
        <translation>Zugriffsprotokoll</translation>
    </message>
    <message>
        <source>syslog</source>
        <translation>syslog</translation>
    </message>
    <message>
        <source>journal</source>
        <translation>Journal</translation>
    </message>
</context>
<context>
    <name>GoToTime</name>
    <message>
        <source>Go to &amp;Time…</source>
        <translation>Gehe zu Zei&amp;tpunkt&#xa0;…</translation>
    </message>
    <message>
        <source>Go to Time</source>
        <translation>Gehe zu Zeitpunkt</translation>
    </message>
    <message>
        <source>Time, or date and time, as in the file:</source>
        <translation>Uhrzeit oder Datum und Uhrzeit wie in der Datei:</translation>
    </message>
    <message>
        <source>“%1” is no time.</source>
        <translation>„%1“ ist keine Zeitangabe.</translation>
    </message>
    <message>
        <source>Looking for that time…</source>
        <translation>Zeitpunkt wird gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>No row is at that time or after it.</source>
        <translation>Zu diesem Zeitpunkt oder danach gibt es keine Zeile.</translation>
    </message>
</context>
<context>
    <name>Histogram</name>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
</context>
<context>
    <name>HistogramColumns</name>
    <message>
        <source>Rows %1 to %2</source>
        <translation>Zeilen %1 bis %2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>%L1 Zeilen</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 Fehler</translation>
    </message>
    <message>
        <source>%L1 errors</source>
        <translation>%L1 Fehler</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 Warnung</translation>
    </message>
    <message>
        <source>%L1 warnings</source>
        <translation>%L1 Warnungen</translation>
    </message>
</context>
<context>
    <name>JournalStream</name>
    <message>
        <source>It is a journal, and this program was built without libsystemd.</source>
        <translation>Es ist ein Journal, und dieses Programm wurde ohne libsystemd gebaut.</translation>
    </message>
</context>
<context>
    <name>LogFormat</name>
    <message>
        <source>Host</source>
        <translation>Host</translation>
    </message>
    <message>
        <source>Identity</source>
        <translation>Identität</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Request</source>
        <translation>Anfrage</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Referrer</source>
        <translation>Referrer</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Client</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Weiteres</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Prozess</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
</context>
<context>
    <name>MarketPane</name>
    <message>
        <source>Market</source>
        <translation>Markt</translation>
    </message>
</context>
<context>
    <name>MarksDialog</name>
    <message>
        <source>Marks</source>
        <translation>Markierungen</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>&amp;Go There</source>
        <translation>&amp;Gehe dorthin</translation>
    </message>
</context>
<context>
    <name>MarksMenu</name>
    <message>
        <source>&amp;Marks</source>
        <translation>&amp;Markierungen</translation>
    </message>
    <message>
        <source>&amp;Mark or Unmark Row</source>
        <translation>Zeilenmarkierung &amp;umschalten</translation>
    </message>
    <message>
        <source>&amp;Next Mark</source>
        <translation>&amp;Nächste Markierung</translation>
    </message>
    <message>
        <source>&amp;Previous Mark</source>
        <translation>&amp;Vorherige Markierung</translation>
    </message>
    <message>
        <source>&amp;List of Marks…</source>
        <translation>&amp;Liste der Markierungen&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Remove All Marks</source>
        <translation>Alle Markierungen &amp;entfernen</translation>
    </message>
    <message>
        <source>Choose a row to mark.</source>
        <translation>Wählen Sie eine Zeile zum Markieren.</translation>
    </message>
    <message>
        <source>There is no other mark.</source>
        <translation>Es gibt keine weitere Markierung.</translation>
    </message>
    <message>
        <source>Went on with the first mark</source>
        <translation>Weiter bei der ersten Markierung</translation>
    </message>
    <message>
        <source>Went on with the last mark</source>
        <translation>Weiter bei der letzten Markierung</translation>
    </message>
</context>
<context>
    <name>Overview</name>
    <message>
        <source>&amp;Overview Strip</source>
        <translation>Übe&amp;rsichtsleiste</translation>
    </message>
    <message>
        <source>&amp;Histogram</source>
        <translation>&amp;Histogramm</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows match</source>
        <translation>%L1 von %L2 Zeilen passen</translation>
    </message>
    <message>
        <source>%L1+ of %L2 rows match</source>
        <translation>%L1+ von %L2 Zeilen passen</translation>
    </message>
</context>
<context>
    <name>OverviewStrip</name>
    <message>
        <source>Overview strip</source>
        <translation>Übersichtsleiste</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 Treffer</translation>
    </message>
    <message>
        <source>%L1 matches</source>
        <translation>%L1 Treffer</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 Fehler</translation>
    </message>
    <message>
        <source>%L1 errors</source>
        <translation>%L1 Fehler</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 Warnung</translation>
    </message>
    <message>
        <source>%L1 warnings</source>
        <translation>%L1 Warnungen</translation>
    </message>
    <message>
        <source>1 mark</source>
        <translation>1 Markierung</translation>
    </message>
    <message>
        <source>%L1 marks</source>
        <translation>%L1 Markierungen</translation>
    </message>
    <message>
        <source>Row %L1</source>
        <translation>Zeile %L1</translation>
    </message>
    <message>
        <source>Rows %L1 to %L2</source>
        <translation>Zeilen %L1 bis %L2</translation>
    </message>
</context>
<context>
    <name>RowExport</name>
    <message>
        <source>The rows changed while they were being saved.</source>
        <translation>Die Zeilen haben sich während des Speicherns geändert.</translation>
    </message>
    <message>
        <source>Row %L1 is too long: it has more than %L2 bytes.</source>
        <translation>Zeile %L1 ist zu lang: Sie hat mehr als %L2 Bytes.</translation>
    </message>
    <message>
        <source>Row %L1 could not be read.</source>
        <translation>Zeile %L1 konnte nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>RowExportDialog</name>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>Save Rows</source>
        <translation>Zeilen speichern</translation>
    </message>
    <message>
        <source>Saving %L1 rows…</source>
        <translation>%L1 Zeilen werden gespeichert&#xa0;…</translation>
    </message>
    <message>
        <source>Saved %L1 rows.</source>
        <translation>%L1 Zeilen gespeichert.</translation>
    </message>
    <message>
        <source>The rows could not be saved.</source>
        <translation>Die Zeilen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Fields between commas, CSV (*.csv)</source>
        <translation>Felder zwischen Kommas, CSV (*.csv)</translation>
    </message>
    <message>
        <source>Text between tabs (*.txt *.tsv)</source>
        <translation>Text zwischen Tabulatoren (*.txt *.tsv)</translation>
    </message>
    <message>
        <source>Save Rows As</source>
        <translation>Zeilen speichern unter</translation>
    </message>
</context>
<context>
    <name>RowSpan</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>Rows %1 to %2</source>
        <translation>Zeilen %1 bis %2</translation>
    </message>
</context>
<context>
    <name>SelectionSums</name>
    <message>
        <source>Adding up… %1 %</source>
        <translation>Wird summiert&#xa0;… %1&#xa0;%</translation>
    </message>
    <message>
        <source>more than 63 digits</source>
        <translation>mehr als 63 Stellen</translation>
    </message>
    <message>
        <source>Count %L1</source>
        <translation>Anzahl %L1</translation>
    </message>
    <message>
        <source>Sum %1   Min %2   Max %3   Mean %4</source>
        <translation>Summe %1   Min %2   Max %3   Mittel %4</translation>
    </message>
    <message>
        <source>%L1 without a number</source>
        <translation>%L1 ohne Zahl</translation>
    </message>
</context>
<context>
    <name>StatisticsDialog</name>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Rows:</source>
        <translation>Zeilen:</translation>
    </message>
    <message>
        <source>Frames a second:</source>
        <translation>Bilder pro Sekunde:</translation>
    </message>
    <message>
        <source>Half of the frames took at most:</source>
        <translation>Die Hälfte der Bilder brauchte höchstens:</translation>
    </message>
    <message>
        <source>99 of 100 frames took at most:</source>
        <translation>99 von 100 Bildern brauchten höchstens:</translation>
    </message>
    <message>
        <source>Memory, at most so far:</source>
        <translation>Speicher, bisher höchstens:</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
</context>
<context>
    <name>TabWindow</name>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close &amp;Others</source>
        <translation>&amp;Andere schließen</translation>
    </message>
</context>
<context>
    <name>TabWindows</name>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>Move Tab to &amp;New Window</source>
        <translation>Tab in &amp;neues Fenster verschieben</translation>
    </message>
    <message>
        <source>&amp;Join the Other Window</source>
        <translation>In das &amp;andere Fenster verschieben</translation>
    </message>
</context>
<context>
    <name>TextFile</name>
    <message>
        <source>It is a directory.</source>
        <translation>Das ist ein Ordner.</translation>
    </message>
    <message>
        <source>It is a device, not a file.</source>
        <translation>Das ist ein Gerät, keine Datei.</translation>
    </message>
    <message>
        <source>There is no room for a temporary copy: %1</source>
        <translation>Kein Platz für eine temporäre Kopie: %1</translation>
    </message>
    <message>
        <source>The temporary copy cannot be written: %1</source>
        <translation>Die temporäre Kopie kann nicht geschrieben werden: %1</translation>
    </message>
</context>
<context>
    <name>TextFileModel</name>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Nothing closes its quote.</source>
        <translation>Sein Anführungszeichen wird nicht geschlossen.</translation>
    </message>
    <message>
        <source>There is text after a closing quote.</source>
        <translation>Nach einem schließenden Anführungszeichen steht Text.</translation>
    </message>
    <message>
        <source>It has fewer fields than the header.</source>
        <translation>Er hat weniger Felder als die Kopfzeile.</translation>
    </message>
    <message>
        <source>It has more fields than the header.</source>
        <translation>Er hat mehr Felder als die Kopfzeile.</translation>
    </message>
    <message>
        <source>Malformed record: %1</source>
        <translation>Fehlerhafter Datensatz: %1</translation>
    </message>
</context>
<context>
    <name>TextMatcher</name>
    <message>
        <source>Character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
</context>
<context>
    <name>ViewerWindow</name>
    <message>
        <source>&amp;Follow</source>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>Keep to the newest rows (F6)</source>
        <translation>Bei den neuesten Zeilen bleiben (F6)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>&amp;Suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>&amp;Weitersuchen</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>&amp;Vorheriges suchen</translation>
    </message>
    <message>
        <source>Fi&amp;lter Rows</source>
        <translation>Zeilen &amp;filtern</translation>
    </message>
    <message>
        <source>&amp;Go to Line…</source>
        <translation>&amp;Gehe zu Zeile&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Save Rows &amp;As…</source>
        <translation>Zeilen s&amp;peichern unter&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Larger Text</source>
        <translation>Text &amp;vergrößern</translation>
    </message>
    <message>
        <source>&amp;Smaller Text</source>
        <translation>Text ver&amp;kleinern</translation>
    </message>
    <message>
        <source>&amp;Usual Text Size</source>
        <translation>Normale Te&amp;xtgröße</translation>
    </message>
    <message>
        <source>Colours of Ro&amp;ws…</source>
        <translation>Zeilenfar&amp;ben&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Statistics</source>
        <translation>&amp;Statistik</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Info</translation>
    </message>
    <message>
        <source>Main Tool Bar</source>
        <translation>Hauptwerkzeugleiste</translation>
    </message>
    <message>
        <source>Open Files</source>
        <translation>Dateien öffnen</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%L1 rows</source>
        <translation>%L1 Zeilen</translation>
    </message>
    <message>
        <source>%L1 of %L2 rows</source>
        <translation>%L1 von %L2 Zeilen</translation>
    </message>
    <message>
        <source>Only the first %L1 rows were copied.</source>
        <translation>Nur die ersten %L1 Zeilen wurden kopiert.</translation>
    </message>
    <message>
        <source>Go to Line</source>
        <translation>Gehe zu Zeile</translation>
    </message>
    <message>
        <source>Line:</source>
        <translation>Zeile:</translation>
    </message>
    <message>
        <source>Copy as C&amp;SV</source>
        <translation>Als &amp;CSV kopieren</translation>
    </message>
    <message>
        <source>Copy C&amp;ell</source>
        <translation>Z&amp;elle kopieren</translation>
    </message>
    <message>
        <source>Show Only &amp;Rows with “%1”</source>
        <translation>Nur Zeilen mit „%1“ &amp;anzeigen</translation>
    </message>
</context>
<context>
    <name>WelcomeWindow</name>
    <message>
        <source>Welcome — %1</source>
        <translation>Willkommen — %1</translation>
    </message>
    <message>
        <source>Opens text files of any size, compressed ones too, and follows them as they grow. Drop a file here, or choose one.</source>
        <translation>Öffnet Textdateien jeder Größe, auch komprimierte, und folgt ihnen, während sie wachsen. Legen Sie eine Datei hier ab oder wählen Sie eine.</translation>
    </message>
    <message>
        <source>&amp;Open Files…</source>
        <translation>Dateien ö&amp;ffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Logs, tables, any text</source>
        <translation>Protokolle, Tabellen, beliebiger Text</translation>
    </message>
    <message>
        <source>Show the &amp;Market</source>
        <translation>&amp;Markt anzeigen</translation>
    </message>
    <message>
        <source>A simulated feed of up to 50,000 rows a second</source>
        <translation>Ein simulierter Datenstrom mit bis zu 50.000 Zeilen pro Sekunde</translation>
    </message>
    <message>
        <source>Opened lately</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
</context>
</TS>
