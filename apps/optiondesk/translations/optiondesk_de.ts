<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_GB">
<context>
    <name>AxisModes</name>
    <message>
        <source>Pr&amp;ices</source>
        <translation>Pre&amp;ise</translation>
    </message>
    <message>
        <source>P&amp;oints from the quote</source>
        <translation>P&amp;unkte vom Kurs</translation>
    </message>
    <message>
        <source>Per&amp;cent of the quote</source>
        <translation>Pro&amp;zent vom Kurs</translation>
    </message>
    <message>
        <source>&amp;Deviations from the quote</source>
        <translation>&amp;Standardabweichungen vom Kurs</translation>
    </message>
    <message>
        <source>%1, points from the quote</source>
        <translation>%1, Punkte vom Kurs</translation>
    </message>
    <message>
        <source>%1, percent of the quote</source>
        <translation>%1, Prozent vom Kurs</translation>
    </message>
    <message>
        <source>%1, standard deviations from the quote</source>
        <translation>%1, Standardabweichungen vom Kurs</translation>
    </message>
</context>
<context>
    <name>ChainImporter</name>
    <message>
        <source>Importing %1</source>
        <translation>%1 wird importiert</translation>
    </message>
</context>
<context>
    <name>ChainTexts</name>
    <message>
        <source>more than %1 options</source>
        <translation>mehr als %1 Optionen</translation>
    </message>
    <message>
        <source>prices of %1 after prices of %2: a chain is of one day</source>
        <translation>Preise vom %1 nach Preisen vom %2: eine Optionskette gilt für einen Tag</translation>
    </message>
    <message>
        <source>the %1 of strike %2 has other values here than in line %3</source>
        <translation>der %1 mit Strike %2 hat hier andere Werte als in Zeile %3</translation>
    </message>
    <message>
        <source>call</source>
        <translation>Call</translation>
    </message>
    <message>
        <source>put</source>
        <translation>Put</translation>
    </message>
    <message>
        <source>no options below the header</source>
        <translation>unter der Kopfzeile stehen keine Optionen</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>A forward of %1 is not positive or too large.</source>
        <translation>Ein Forward von %1 ist nicht positiv oder zu groß.</translation>
    </message>
    <message>
        <source>The chain has no base code.</source>
        <translation>Die Optionskette hat keinen Basiswert.</translation>
    </message>
    <message>
        <source>The chain of %1 has no series.</source>
        <translation>Die Optionskette von %1 hat keine Serie.</translation>
    </message>
    <message>
        <source>The chain of %1 has no valid price step.</source>
        <translation>Die Optionskette von %1 hat keinen gültigen Preisschritt.</translation>
    </message>
    <message>
        <source>A series of %1 has no options.</source>
        <translation>Eine Serie von %1 hat keine Optionen.</translation>
    </message>
    <message>
        <source>There are no ids left in the table of securities.</source>
        <translation>In der Tabelle der Wertpapiere sind keine Nummern mehr frei.</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>is a folder</source>
        <translation>ist ein Ordner</translation>
    </message>
    <message>
        <source>is not an ordinary file</source>
        <translation>ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot be opened: %1</source>
        <translation>lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>the column &quot;%1&quot; occurs twice</source>
        <translation>die Spalte „%1“ kommt zweimal vor</translation>
    </message>
    <message>
        <source>a quote is not closed</source>
        <translation>ein Anführungszeichen ist nicht geschlossen</translation>
    </message>
    <message>
        <source>a strike (%1), the option&apos;s type (%2) or columns of calls and puts (call_..., put_...), and a price (%3; %4; %5) or an implied volatility (%6)</source>
        <translation>ein Strike (%1), die Art der Option (%2) oder Spalten für Calls und Puts (call_..., put_...), und ein Preis (%3; %4; %5) oder eine implizite Volatilität (%6)</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>no header of an option chain: looked for %1; found %2</source>
        <translation>keine Kopfzeile einer Optionskette: gesucht wurde %1; gefunden wurde %2</translation>
    </message>
    <message>
        <source>%1 cells instead of %2</source>
        <translation>%1 Zellen statt %2</translation>
    </message>
    <message>
        <source>is no date, or not in the order of day and month before it</source>
        <translation>ist kein Datum oder hat Tag und Monat in anderer Reihenfolge als die davor</translation>
    </message>
    <message>
        <source>is no option code</source>
        <translation>ist keine Kennung einer Option</translation>
    </message>
    <message>
        <source>is no option type, such as C, P, call or put</source>
        <translation>ist keine Art einer Option wie C, P, call oder put</translation>
    </message>
    <message>
        <source>is no positive strike</source>
        <translation>ist kein positiver Strike</translation>
    </message>
    <message>
        <source>is no number</source>
        <translation>ist keine Zahl</translation>
    </message>
    <message>
        <source>is negative</source>
        <translation>ist negativ</translation>
    </message>
    <message>
        <source>is no whole number</source>
        <translation>ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in column &quot;%2&quot; %3</source>
        <translation>„%1“ in Spalte „%2“ %3</translation>
    </message>
    <message>
        <source>The table &quot;%1&quot; has no column &quot;%2&quot;.</source>
        <translation>Die Tabelle „%1“ hat keine Spalte „%2“.</translation>
    </message>
    <message>
        <source>not a text file</source>
        <translation>keine Textdatei</translation>
    </message>
    <message>
        <source>not a text file but a compressed one</source>
        <translation>keine Textdatei, sondern eine gepackte</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>the line is longer than %1 characters</source>
        <translation>die Zeile ist länger als %1 Zeichen</translation>
    </message>
    <message>
        <source>the line is not UTF-8, which the file&apos;s first bytes announce</source>
        <translation>die Zeile ist kein UTF-8, wie es die ersten Bytes der Datei ankündigen</translation>
    </message>
</context>
<context>
    <name>CurveChoices</name>
    <message>
        <source>Colour of the curve %1</source>
        <translation>Farbe der Kurve %1</translation>
    </message>
</context>
<context>
    <name>DeskLegend</name>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
    <message>
        <source>Curve %1</source>
        <translation>Kurve %1</translation>
    </message>
    <message>
        <source>&amp;Only this curve</source>
        <translation>&amp;Nur diese Kurve</translation>
    </message>
    <message>
        <source>Hide all other curves</source>
        <translation>Alle anderen Kurven ausblenden</translation>
    </message>
    <message>
        <source>&amp;All curves</source>
        <translation>&amp;Alle Kurven</translation>
    </message>
    <message>
        <source>Show all curves</source>
        <translation>Alle Kurven zeigen</translation>
    </message>
    <message>
        <source>&amp;Colour...</source>
        <translation>&amp;Farbe...</translation>
    </message>
    <message>
        <source>Choose another colour for this curve</source>
        <translation>Eine andere Farbe für diese Kurve wählen</translation>
    </message>
    <message>
        <source>This curve always has this colour</source>
        <translation>Diese Kurve hat immer diese Farbe</translation>
    </message>
</context>
<context>
    <name>DeskPlot</name>
    <message>
        <source>Volatility</source>
        <translation>Volatilität</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Profit and loss</source>
        <translation>Gewinn/Verlust</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>The curves; F2 goes to the nearest point, the arrows then from point to point</source>
        <translation>Die Kurven; F2 geht zum nächsten Punkt, die Pfeiltasten dann von Punkt zu Punkt</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>Preis</translation>
    </message>
    <message>
        <source>Strike</source>
        <translation>Strike</translation>
    </message>
</context>
<context>
    <name>DeskTexts</name>
    <message>
        <source>the replay had %1 quotes of %2 unknown instruments: %3</source>
        <translation>die Aufzeichnung hatte %1 Kurse von %2 unbekannten Instrumenten: %3</translation>
    </message>
    <message>
        <source>the replay has ended: %1</source>
        <translation>die Wiedergabe ist zu Ende: %1</translation>
    </message>
    <message>
        <source>%1: the settings could not be written</source>
        <translation>%1: die Einstellungen ließen sich nicht schreiben</translation>
    </message>
    <message>
        <source>Option desk</source>
        <translation>Optionstisch</translation>
    </message>
    <message>
        <source>there is no display; --picture and --export write files without one</source>
        <translation>es gibt keine Anzeige; --picture und --export schreiben Dateien auch ohne</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;</source>
        <translation>unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>a file name is needed</source>
        <translation>es fehlt ein Dateiname</translation>
    </message>
    <message>
        <source>a price from 0.00001 to 1e9 is needed</source>
        <translation>es fehlt ein Preis von 0.00001 bis 1e9</translation>
    </message>
    <message>
        <source>a date of the calendar is needed, YYYY-MM-DD or YYYYMMDD</source>
        <translation>es fehlt ein Datum des Kalenders, YYYY-MM-DD oder YYYYMMDD</translation>
    </message>
    <message>
        <source>volatility, value or position is needed</source>
        <translation>es fehlt volatility, value oder position</translation>
    </message>
    <message>
        <source>%1 is needed</source>
        <translation>es fehlt %1</translation>
    </message>
    <message>
        <source>the suffix is none of %1</source>
        <translation>die Endung ist keine von %1</translation>
    </message>
    <message>
        <source>a whole number from 1 to 4 is needed</source>
        <translation>es fehlt eine ganze Zahl von 1 bis 4</translation>
    </message>
    <message>
        <source>a file to --export is needed</source>
        <translation>es fehlt eine Datei für --export</translation>
    </message>
    <message>
        <source>a size from 200x150 to 10000x10000 is needed, as 1000x640</source>
        <translation>es fehlt eine Größe von 200x150 bis 10000x10000, wie 1000x640</translation>
    </message>
    <message>
        <source>a window is needed, no file as of --%1</source>
        <translation>es braucht ein Fenster, keine Datei wie von --%1</translation>
    </message>
    <message>
        <source>a recording to --replay is needed</source>
        <translation>es fehlt eine Aufzeichnung für --replay</translation>
    </message>
    <message>
        <source>1, 10 or max is needed</source>
        <translation>es fehlt 1, 10 oder max</translation>
    </message>
    <message>
        <source>contradicts --%1</source>
        <translation>widerspricht --%1</translation>
    </message>
    <message>
        <source>a date after that of --asof is needed</source>
        <translation>es fehlt ein Datum nach dem von --asof</translation>
    </message>
    <message>
        <source>Draws the volatility smile of an option chain.</source>
        <translation>Zeichnet den Volatilitäts-Smile einer Optionskette.</translation>
    </message>
    <message>
        <source>The same as --chain &lt;file&gt;.</source>
        <translation>Dasselbe wie --chain &lt;file&gt;.</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>Import the option chain of a CSV &lt;file&gt; and show it.</source>
        <translation>Die Optionskette aus einer CSV-Datei &lt;file&gt; importieren und zeigen.</translation>
    </message>
    <message>
        <source>The forward &lt;price&gt; of the series shown; otherwise the file&apos;s, otherwise that of put-call parity.</source>
        <translation>Der Forward &lt;price&gt; der gezeigten Serie; sonst der aus der Datei, sonst der aus der Put-Call-Parität.</translation>
    </message>
    <message>
        <source>The &lt;date&gt; of the prices, YYYY-MM-DD or YYYYMMDD.</source>
        <translation>Das Datum &lt;date&gt; der Preise, YYYY-MM-DD oder YYYYMMDD.</translation>
    </message>
    <message>
        <source>Show the series that expires on this &lt;date&gt;; the expiry of a chain that states none.</source>
        <translation>Die Serie zeigen, die an diesem Tag &lt;date&gt; verfällt; der Verfall einer Optionskette, die keinen nennt.</translation>
    </message>
    <message>
        <source>What to draw, volatility, value or position.</source>
        <translation>Was zu zeichnen ist, volatility, value oder position.</translation>
    </message>
    <message>
        <source>What the strikes are shown as, %1.</source>
        <translation>Wie die Strikes gezeigt werden, %1.</translation>
    </message>
    <message>
        <source>How the smile is fitted, %1.</source>
        <translation>Wie der Smile angepasst wird, %1.</translation>
    </message>
    <message>
        <source>Save a picture of the window in this &lt;file&gt;, in the format of its suffix (PNG without one), print its path and quit.</source>
        <translation>Ein Bild des Fensters in dieser Datei &lt;file&gt; speichern, im Format ihrer Endung (ohne Endung PNG), den Pfad ausgeben und enden.</translation>
    </message>
    <message>
        <source>Write the plot into this &lt;file&gt;, a picture (png), a drawing (svg), a page (pdf) or the curves&apos; samples (csv) by its suffix, print its path and quit; also several times.</source>
        <translation>Das Diagramm in diese Datei &lt;file&gt; schreiben, je nach Endung als Bild (png), Zeichnung (svg), Seite (pdf) oder Werte der Kurven (csv), den Pfad ausgeben und enden; auch mehrmals.</translation>
    </message>
    <message>
        <source>How many times larger an exported png is than its size, 1 to 4.</source>
        <translation>Wievielmal größer als seine Größe ein exportiertes png ist, 1 bis 4.</translation>
    </message>
    <message>
        <source>The &lt;size&gt; of window, picture or exported plot in pixels, 200x150 to 10000x10000.</source>
        <translation>Die Größe &lt;size&gt; von Fenster, Bild oder exportiertem Diagramm in Pixeln, 200x150 bis 10000x10000.</translation>
    </message>
    <message>
        <source>Replay the recorded quotes of a CSV &lt;file&gt; (time, instrument, bid, ask, last) into the window.</source>
        <translation>Die aufgezeichneten Kurse einer CSV-Datei &lt;file&gt; (time, instrument, bid, ask, last) im Fenster wiedergeben.</translation>
    </message>
    <message>
        <source>How fast to replay, 1, 10 or max.</source>
        <translation>Wie schnell die Wiedergabe ist, 1, 10 oder max.</translation>
    </message>
    <message>
        <source>Keep the choices made in the window in this &lt;file&gt; instead of the user&apos;s.</source>
        <translation>Was im Fenster gewählt wird, in dieser Datei &lt;file&gt; behalten statt in der des Benutzers.</translation>
    </message>
    <message>
        <source>Keep the positions in this &lt;file&gt; instead of the user&apos;s.</source>
        <translation>Die Positionen in dieser Datei &lt;file&gt; behalten statt in der des Benutzers.</translation>
    </message>
    <message>
        <source>Neither use nor keep choices made in the window, nor positions without --positions.</source>
        <translation>Weder benutzen noch behalten, was im Fenster gewählt wird, auch keine Positionen ohne --positions.</translation>
    </message>
    <message>
        <source>Smile</source>
        <translation>Smile</translation>
    </message>
    <message>
        <source>Stated volatility</source>
        <translation>Angegebene Volatilität</translation>
    </message>
    <message>
        <source>Bid volatility</source>
        <translation>Geld-Volatilität</translation>
    </message>
    <message>
        <source>Ask volatility</source>
        <translation>Brief-Volatilität</translation>
    </message>
    <message>
        <source>Bid-ask band</source>
        <translation>Geld-Brief-Band</translation>
    </message>
    <message>
        <source>Implied volatility</source>
        <translation>Implizite Volatilität</translation>
    </message>
    <message>
        <source>Call value</source>
        <translation>Wert des Calls</translation>
    </message>
    <message>
        <source>Put value</source>
        <translation>Wert des Puts</translation>
    </message>
    <message>
        <source>Market price</source>
        <translation>Marktpreis</translation>
    </message>
    <message>
        <source>Profit at expiry</source>
        <translation>Gewinn bei Verfall</translation>
    </message>
    <message>
        <source>Profit today</source>
        <translation>Gewinn heute</translation>
    </message>
    <message>
        <source>Break-even</source>
        <translation>Gewinnschwelle</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Forward</translation>
    </message>
    <message>
        <source>%1: no series expires on %2; the expiries are %3</source>
        <translation>%1: keine Serie verfällt am %2; Verfallstage sind %3</translation>
    </message>
    <message>
        <source>%1: the expiry %2 is not after the date of the prices, %3</source>
        <translation>%1: der Verfall %2 liegt nicht nach dem Tag der Preise, %3</translation>
    </message>
    <message>
        <source>%1: there are no options</source>
        <translation>%1: es gibt keine Optionen</translation>
    </message>
    <message>
        <source>no stored series has a forward or the prices to take it from</source>
        <translation>keine gespeicherte Serie hat einen Forward oder die Preise, aus denen er folgt</translation>
    </message>
    <message>
        <source>the series is not stored any more</source>
        <translation>die Serie ist nicht mehr gespeichert</translation>
    </message>
    <message>
        <source>%1: this is no settings file; it is kept as %2, and the settings begin anew</source>
        <translation>%1: das ist keine Datei mit Einstellungen; sie bleibt als %2 erhalten, die Einstellungen beginnen neu</translation>
    </message>
    <message>
        <source>%1: this is no settings file; it is left as it is, and nothing is kept</source>
        <translation>%1: das ist keine Datei mit Einstellungen; sie bleibt, wie sie ist, und nichts wird behalten</translation>
    </message>
    <message>
        <source>%1: no forward is stated, and no strike has the prices of a call and a put to take it from; --forward gives one</source>
        <translation>%1: kein Forward ist angegeben, und kein Strike hat die Preise von Call und Put, aus denen er folgt; --forward gibt einen an</translation>
    </message>
    <message>
        <source>&amp;Smoothing spline</source>
        <translation>&amp;Glättender Spline</translation>
    </message>
    <message>
        <source>S&amp;VI</source>
        <translation>S&amp;VI</translation>
    </message>
    <message>
        <source>S&amp;ABR</source>
        <translation>S&amp;ABR</translation>
    </message>
    <message>
        <source>spline</source>
        <translation>Spline</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 Tag</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n Tag</numerusform>
            <numerusform>%n Tage</numerusform>
        </translation>
    </message>
    <message>
        <source>invalid</source>
        <translation>ungültig</translation>
    </message>
    <message>
        <source>without price</source>
        <translation>ohne Preis</translation>
    </message>
    <message>
        <source>at zero</source>
        <translation>zu null</translation>
    </message>
    <message>
        <source>below intrinsic</source>
        <translation>unter innerem Wert</translation>
    </message>
    <message>
        <source>above any value</source>
        <translation>über jedem Wert</translation>
    </message>
    <message>
        <source>unsolved</source>
        <translation>ungelöst</translation>
    </message>
    <message>
        <source>none left out</source>
        <translation>nichts ausgelassen</translation>
    </message>
    <message>
        <source>%1 left out: %2</source>
        <translation>%1 ausgelassen: %2</translation>
    </message>
    <message>
        <source>smile</source>
        <translation>Smile</translation>
    </message>
    <message>
        <source>%1 smile</source>
        <translation>%1-Smile</translation>
    </message>
    <message>
        <source>no %1 smile fits, spline</source>
        <translation>kein %1-Smile passt, Spline</translation>
    </message>
    <message>
        <source>%1 error below %2 vol points</source>
        <translation>%1-Fehler unter %2 Vola-Punkten</translation>
    </message>
    <message>
        <source>%1 error %2 vol points</source>
        <translation>%1-Fehler %2 Vola-Punkte</translation>
    </message>
    <message>
        <source>Forward %1 (as given)</source>
        <translation>Forward %1 (wie angegeben)</translation>
    </message>
    <message>
        <source>Forward %1</source>
        <translation>Forward %1</translation>
    </message>
    <message>
        <source>Forward %1 (parity)</source>
        <translation>Forward %1 (Parität)</translation>
    </message>
    <message>
        <source>no expiry</source>
        <translation>kein Verfall</translation>
    </message>
    <message>
        <source>%1, expiry %2</source>
        <translation>%1, Verfall %2</translation>
    </message>
    <message>
        <source>expiry %1</source>
        <translation>Verfall %1</translation>
    </message>
    <message>
        <source>%1 (inferred)</source>
        <translation>%1 (erschlossen)</translation>
    </message>
    <message>
        <source>%1 (assumed)</source>
        <translation>%1 (angenommen)</translation>
    </message>
    <message>
        <source>1 point</source>
        <translation>1 Punkt</translation>
    </message>
    <message numerus="yes">
        <source>%n points</source>
        <translation>
            <numerusform>%n Punkt</numerusform>
            <numerusform>%n Punkte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>the dates of %1 do not tell the time to expiry: %n days are assumed</source>
        <translation>
            <numerusform>die Daten von %1 sagen nicht, wie lange es bis zum Verfall ist: %n Tag ist angenommen</numerusform>
            <numerusform>die Daten von %1 sagen nicht, wie lange es bis zum Verfall ist: %n Tage sind angenommen</numerusform>
        </translation>
    </message>
    <message>
        <source>The language of the window, %1; otherwise that of the locale.</source>
        <translation>Die Sprache des Fensters, %1; sonst die der Systemeinstellung.</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>%1: changes could not be stored; they will be when the desk is started with this database again</source>
        <translation>%1: Änderungen konnten nicht gespeichert werden; das geschieht, wenn der Desk wieder mit dieser Datenbank gestartet wird</translation>
    </message>
    <message>
        <source>Import an option chain</source>
        <translation>Eine Optionskette importieren</translation>
    </message>
    <message>
        <source>Option chains (*.csv *.txt *.tsv);;All files (*)</source>
        <translation>Optionsketten (*.csv *.txt *.tsv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Keep the chains in this SQLite &lt;file&gt;, or share them with other desks in a PostgreSQL database, postgresql://user@host:port/name; otherwise the files they came from are read again at the next start.</source>
        <translation>Die Optionsketten in dieser SQLite-Datei &lt;file&gt; behalten oder sie mit anderen Desks in einer PostgreSQL-Datenbank teilen, postgresql://user@host:port/name; sonst werden beim nächsten Start die Dateien wieder gelesen, aus denen sie kamen.</translation>
    </message>
    <message>
        <source>discount factor %1</source>
        <translation>Diskontfaktor %1</translation>
    </message>
    <message>
        <source>rate %1 %</source>
        <translation>Zins %1 %</translation>
    </message>
    <message>
        <source>Forward %1 (as given), %2 (parity)</source>
        <translation>Forward %1 (wie angegeben), %2 (Parität)</translation>
    </message>
    <message>
        <source>Forward %1 (stated), %2 (parity)</source>
        <translation>Forward %1 (aus den Daten), %2 (Parität)</translation>
    </message>
    <message>
        <source>Forward %1, %2 (parity)</source>
        <translation>Forward %1, %2 (Parität)</translation>
    </message>
    <message>
        <source>%1: the settings cannot be read or written now; nothing is kept</source>
        <translation>%1: die Einstellungen können jetzt nicht gelesen oder geschrieben werden; nichts wird behalten</translation>
    </message>
</context>
<context>
    <name>DeskWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Leave the option desk</source>
        <translation>Den Optionstisch verlassen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Volatilit&amp;y</source>
        <translation>V&amp;olatilität</translation>
    </message>
    <message>
        <source>Show the volatility over the strikes</source>
        <translation>Die Volatilität über den Strikes zeigen</translation>
    </message>
    <message>
        <source>&amp;Value</source>
        <translation>&amp;Wert</translation>
    </message>
    <message>
        <source>Show the options&apos; value over the strikes</source>
        <translation>Den Wert der Optionen über den Strikes zeigen</translation>
    </message>
    <message>
        <source>&amp;Position</source>
        <translation>&amp;Position</translation>
    </message>
    <message>
        <source>Show profit and loss of the position over the price</source>
        <translation>Gewinn und Verlust der Position über dem Preis zeigen</translation>
    </message>
    <message>
        <source>Label the price axis so: %1</source>
        <translation>Die Preisachse so beschriften: %1</translation>
    </message>
    <message>
        <source>Strike</source>
        <translation>Strike</translation>
    </message>
    <message>
        <source>S&amp;mile</source>
        <translation>S&amp;mile</translation>
    </message>
    <message>
        <source>Fit the smile so: %1</source>
        <translation>Den Smile so anpassen: %1</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <translation>&amp;Gitter</translation>
    </message>
    <message>
        <source>Show or hide the grid behind the curves</source>
        <translation>Das Gitter hinter den Kurven zeigen oder ausblenden</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>Serie</translation>
    </message>
    <message>
        <source>%1 - Option desk</source>
        <translation>%1 - Optionstisch</translation>
    </message>
</context>
<context>
    <name>ExportActions</name>
    <message>
        <source>Pictures (*.png)</source>
        <translation>Bilder (*.png)</translation>
    </message>
    <message>
        <source>Drawings (*.svg)</source>
        <translation>Zeichnungen (*.svg)</translation>
    </message>
    <message>
        <source>Pages (*.pdf)</source>
        <translation>Seiten (*.pdf)</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Export the plot</source>
        <translation>Das Diagramm exportieren</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>Print the plot on one page</source>
        <translation>Das Diagramm auf eine Seite drucken</translation>
    </message>
    <message>
        <source>&amp;PNG picture...</source>
        <translation>&amp;PNG-Bild...</translation>
    </message>
    <message>
        <source>Save the plot as a picture of pixels</source>
        <translation>Das Diagramm als Bild aus Pixeln speichern</translation>
    </message>
    <message>
        <source>&amp;SVG drawing...</source>
        <translation>&amp;SVG-Zeichnung...</translation>
    </message>
    <message>
        <source>Save the plot as a drawing that is sharp at any size</source>
        <translation>Das Diagramm als Zeichnung speichern, die in jeder Größe scharf ist</translation>
    </message>
    <message>
        <source>P&amp;DF page...</source>
        <translation>P&amp;DF-Seite...</translation>
    </message>
    <message>
        <source>Save the plot as a page for documents</source>
        <translation>Das Diagramm als Seite für Dokumente speichern</translation>
    </message>
    <message>
        <source>&amp;CSV table...</source>
        <translation>&amp;CSV-Tabelle...</translation>
    </message>
    <message>
        <source>Save the samples of the visible curves for a spreadsheet</source>
        <translation>Die Werte der sichtbaren Kurven für eine Tabellenkalkulation speichern</translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation>&amp;Bild</translation>
    </message>
    <message>
        <source>Copy the plot to the clipboard as a picture of pixels</source>
        <translation>Das Diagramm als Bild aus Pixeln in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>&amp;SVG drawing</source>
        <translation>&amp;SVG-Zeichnung</translation>
    </message>
    <message>
        <source>Copy the plot to the clipboard as an SVG drawing</source>
        <translation>Das Diagramm als SVG-Zeichnung in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>P&amp;DF page</source>
        <translation>P&amp;DF-Seite</translation>
    </message>
    <message>
        <source>Copy the plot to the clipboard as a PDF page</source>
        <translation>Das Diagramm als PDF-Seite in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>&amp;CSV table</source>
        <translation>&amp;CSV-Tabelle</translation>
    </message>
    <message>
        <source>Copy the samples of the visible curves to the clipboard as text</source>
        <translation>Die Werte der sichtbaren Kurven als Text in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Si&amp;ze of PNG pictures</source>
        <translation>&amp;Größe von PNG-Bildern</translation>
    </message>
    <message>
        <source>&amp;%1×</source>
        <translation>&amp;%1×</translation>
    </message>
    <message>
        <source>Save and copy PNG pictures at %1 times the size of the plot on the screen</source>
        <translation>PNG-Bilder %1-mal so groß wie das Diagramm auf dem Bildschirm speichern und kopieren</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copied to the clipboard</source>
        <translation>In die Zwischenablage kopiert</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Printed</source>
        <translation>Gedruckt</translation>
    </message>
</context>
<context>
    <name>FilterActions</name>
    <message>
        <source>Fi&amp;lter</source>
        <translation>&amp;Filter</translation>
    </message>
    <message>
        <source>&amp;Out of the money only</source>
        <translation>&amp;Nur aus dem Geld</translation>
    </message>
    <message>
        <source>Show puts below the forward and calls from it upwards alone; the smile stays fitted to all of these whatever is shown</source>
        <translation>Nur Puts unter dem Forward und Calls ab dem Forward zeigen; der Smile bleibt an sie alle angepasst, was auch gezeigt wird</translation>
    </message>
    <message>
        <source>OTM</source>
        <translation>OTM</translation>
    </message>
    <message>
        <source>Calls &amp;and puts</source>
        <translation>Calls &amp;und Puts</translation>
    </message>
    <message>
        <source>Show the points, bands and quotes of calls and puts</source>
        <translation>Punkte, Bänder und Quotierungen von Calls und Puts zeigen</translation>
    </message>
    <message>
        <source>&amp;Calls only</source>
        <translation>Nur &amp;Calls</translation>
    </message>
    <message>
        <source>Show the points, bands and quotes of calls alone</source>
        <translation>Punkte, Bänder und Quotierungen nur von Calls zeigen</translation>
    </message>
    <message>
        <source>&amp;Puts only</source>
        <translation>Nur &amp;Puts</translation>
    </message>
    <message>
        <source>Show the points, bands and quotes of puts alone</source>
        <translation>Punkte, Bänder und Quotierungen nur von Puts zeigen</translation>
    </message>
    <message>
        <source>All &amp;strikes</source>
        <translation>Alle &amp;Strikes</translation>
    </message>
    <message>
        <source>Show the points, bands and quotes of all strikes</source>
        <translation>Punkte, Bänder und Quotierungen aller Strikes zeigen</translation>
    </message>
    <message>
        <source>Within &amp;1 deviation</source>
        <translation>Innerhalb von &amp;1 Abweichung</translation>
    </message>
    <message>
        <source>Within &amp;%1 deviations</source>
        <translation>Innerhalb von &amp;%1 Abweichungen</translation>
    </message>
    <message>
        <source>Show strikes of which the logarithm is within so many standard deviations of the forward&apos;s, by the volatility at the forward: %1</source>
        <translation>Strikes zeigen, deren Logarithmus so viele Standardabweichungen um den des Forwards liegt, mit der Volatilität am Forward: %1</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Calls or puts</source>
        <translation>Calls oder Puts</translation>
    </message>
    <message>
        <source>Show calls, puts or both</source>
        <translation>Calls, Puts oder beide zeigen</translation>
    </message>
    <message>
        <source>Strikes</source>
        <translation>Strikes</translation>
    </message>
    <message>
        <source>Show strikes within so many standard deviations of the forward</source>
        <translation>Strikes so viele Standardabweichungen um den Forward zeigen</translation>
    </message>
</context>
<context>
    <name>ImportActions</name>
    <message>
        <source>&amp;Import...</source>
        <translation>&amp;Importieren...</translation>
    </message>
    <message>
        <source>Import an option chain from a file</source>
        <translation>Eine Optionskette aus einer Datei importieren</translation>
    </message>
    <message>
        <source>Ca&amp;ncel</source>
        <translation>Abbre&amp;chen</translation>
    </message>
    <message>
        <source>Stop the import or the fit that is going on (Escape does, too)</source>
        <translation>Den laufenden Import oder die laufende Anpassung anhalten (auch mit Escape)</translation>
    </message>
    <message>
        <source>%1 is being imported; import %2 when that is done</source>
        <translation>%1 wird noch importiert; %2 danach importieren</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>The import of %1 was cancelled; nothing has changed</source>
        <translation>Der Import von %1 wurde abgebrochen; nichts hat sich geändert</translation>
    </message>
    <message>
        <source>%1 is imported</source>
        <translation>%1 ist importiert</translation>
    </message>
</context>
<context>
    <name>LegTexts</name>
    <message>
        <source>Future</source>
        <translation>Future</translation>
    </message>
    <message>
        <source>Call</source>
        <translation>Call</translation>
    </message>
    <message>
        <source>Put</source>
        <translation>Put</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>The code of this language, whose names of months dates have</extracomment>
        <translation>de</translation>
    </message>
    <message>
        <source>d MMM yyyy</source>
        <extracomment>The form of a date, as QLocale::toString() takes it</extracomment>
        <translation>dd.MM.yyyy</translation>
    </message>
    <message>
        <source>above %1</source>
        <translation>über %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>Profit now %1</source>
        <translation>Gewinn jetzt %1</translation>
    </message>
    <message>
        <source>no break-even</source>
        <translation>keine Gewinnschwelle</translation>
    </message>
    <message>
        <source>break-even %1</source>
        <translation>Gewinnschwelle %1</translation>
    </message>
    <message>
        <source>delta %1</source>
        <translation>Delta %1</translation>
    </message>
    <message>
        <source>gamma %1</source>
        <translation>Gamma %1</translation>
    </message>
    <message>
        <source>vega %1 a point</source>
        <translation>Vega %1 je Punkt</translation>
    </message>
    <message>
        <source>theta %1 a day</source>
        <translation>Theta %1 je Tag</translation>
    </message>
    <message>
        <source>no volatility to value the options with</source>
        <translation>keine Volatilität, um die Optionen zu bewerten</translation>
    </message>
    <message>
        <source>1 leg left out: its series is not there or has no forward</source>
        <translation>1 Leg ausgelassen: seine Serie fehlt oder hat keinen Forward</translation>
    </message>
    <message numerus="yes">
        <source>%n legs left out: their series are not there or have no forward</source>
        <translation>
            <numerusform>%n Leg ausgelassen: seine Serie fehlt oder hat keinen Forward</numerusform>
            <numerusform>%n Legs ausgelassen: ihre Serien fehlen oder haben keinen Forward</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2; positions are not kept</source>
        <translation>%1: %2; Positionen werden nicht behalten</translation>
    </message>
    <message>
        <source>%1: this is no file of positions; it is kept as %2</source>
        <translation>%1: das ist keine Datei mit Positionen; sie bleibt als %2 erhalten</translation>
    </message>
    <message>
        <source>%1: this is no file of positions; it is left as it is, and positions are not kept</source>
        <translation>%1: das ist keine Datei mit Positionen; sie bleibt, wie sie ist, und Positionen werden nicht behalten</translation>
    </message>
</context>
<context>
    <name>OutputTexts</name>
    <message>
        <source>the plot could not be drawn</source>
        <translation>das Diagramm ließ sich nicht zeichnen</translation>
    </message>
    <message>
        <source>the picture could not be written</source>
        <translation>das Bild ließ sich nicht schreiben</translation>
    </message>
    <message>
        <source>a picture of %1 by %2 pixels is too large, at most %3 a side can be drawn</source>
        <translation>ein Bild von %1 mal %2 Pixeln ist zu groß, höchstens %3 je Seite lassen sich zeichnen</translation>
    </message>
    <message>
        <source>there is no memory for a picture of %1 by %2 pixels</source>
        <translation>für ein Bild von %1 mal %2 Pixeln reicht der Speicher nicht</translation>
    </message>
    <message>
        <source>the printer cannot be used</source>
        <translation>der Drucker ist nicht zu benutzen</translation>
    </message>
    <message>
        <source>the printer has failed</source>
        <translation>der Drucker hat versagt</translation>
    </message>
    <message>
        <source>%1: it is no file</source>
        <translation>%1: das ist keine Datei</translation>
    </message>
</context>
<context>
    <name>Position::LegModel</name>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Call, put or future</source>
        <translation>Call, Put oder Future</translation>
    </message>
    <message>
        <source>Expiry</source>
        <translation>Verfall</translation>
    </message>
    <message>
        <source>The series that the leg belongs to</source>
        <translation>Die Serie, zu der das Leg gehört</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>How many are bought; negative for sold</source>
        <translation>Wie viele gekauft sind; negativ für verkaufte</translation>
    </message>
    <message>
        <source>Strike</source>
        <translation>Strike</translation>
    </message>
    <message>
        <source>Of an option</source>
        <translation>Einer Option</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>Preis</translation>
    </message>
    <message>
        <source>What was paid or got for one; clear it to take the market&apos;s</source>
        <translation>Was für eines bezahlt oder erhalten wurde; leer gilt der Preis des Marktes</translation>
    </message>
    <message>
        <source>Value now</source>
        <translation>Wert jetzt</translation>
    </message>
    <message>
        <source>What one is worth by the fitted smile</source>
        <translation>Was eines nach dem angepassten Smile wert ist</translation>
    </message>
    <message>
        <source>Profit now</source>
        <translation>Gewinn</translation>
    </message>
    <message>
        <source>Of the whole leg</source>
        <translation>Des ganzen Legs</translation>
    </message>
    <message>
        <source>Delta</source>
        <translation>Delta</translation>
    </message>
    <message>
        <source>Of the whole leg, in futures of the series shown</source>
        <translation>Des ganzen Legs, in Futures der gezeigten Serie</translation>
    </message>
    <message>
        <source>Quantity: a whole number other than 0 is needed, negative for sold</source>
        <translation>Anzahl: eine ganze Zahl außer 0 wird gebraucht, negativ für verkaufte</translation>
    </message>
    <message>
        <source>Strike: a positive number is needed</source>
        <translation>Strike: eine positive Zahl wird gebraucht</translation>
    </message>
    <message>
        <source>Price: the market has none for this leg</source>
        <translation>Preis: der Markt hat keinen für dieses Leg</translation>
    </message>
    <message>
        <source>Price: a number is needed, or nothing for the market&apos;s</source>
        <translation>Preis: eine Zahl wird gebraucht, oder nichts für den des Marktes</translation>
    </message>
    <message>
        <source>Price: an option&apos;s cannot be negative; sold legs have a negative quantity</source>
        <translation>Preis: der einer Option kann nicht negativ sein; verkaufte Legs haben eine negative Anzahl</translation>
    </message>
    <message>
        <source>Kind: call, put or future is needed</source>
        <translation>Art: Call, Put oder Future wird gebraucht</translation>
    </message>
    <message>
        <source>Kind: there is no strike for an option</source>
        <translation>Art: für eine Option fehlt der Strike</translation>
    </message>
</context>
<context>
    <name>Position::PositionPanel</name>
    <message>
        <source>Worth of the position</source>
        <translation>Wert der Position</translation>
    </message>
    <message>
        <source>Legs of the position</source>
        <translation>Legs der Position</translation>
    </message>
</context>
<context>
    <name>PositionDesk</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>&amp;Add leg</source>
        <translation>Leg &amp;hinzufügen</translation>
    </message>
    <message>
        <source>Add a call at the money to the position</source>
        <translation>Der Position einen Call am Geld hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove leg</source>
        <translation>Leg &amp;entfernen</translation>
    </message>
    <message>
        <source>Remove the chosen leg from the position</source>
        <translation>Das gewählte Leg aus der Position entfernen</translation>
    </message>
    <message>
        <source>Remove a&amp;ll</source>
        <translation>A&amp;lle entfernen</translation>
    </message>
    <message>
        <source>Remove all legs of the position</source>
        <translation>Alle Legs der Position entfernen</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>Show or hide the table of the position</source>
        <translation>Die Tabelle der Position zeigen oder ausblenden</translation>
    </message>
    <message>
        <source>&amp;Edit the table</source>
        <translation>Tabelle &amp;bearbeiten</translation>
    </message>
    <message>
        <source>Take the keyboard to the table of the position</source>
        <translation>Mit der Tastatur in die Tabelle der Position gehen</translation>
    </message>
    <message>
        <source>The position could not be written to its file</source>
        <translation>Die Position ließ sich nicht in ihre Datei schreiben</translation>
    </message>
</context>
<context>
    <name>PositionMarks</name>
    <message>
        <source>There is no position yet.
Press Insert to add a leg,
and edit it in the table below.</source>
        <translation>Es gibt noch keine Position.
Einfg fügt ein Leg hinzu,
das sich in der Tabelle unten bearbeiten lässt.</translation>
    </message>
    <message>
        <source>The legs of this position cannot be valued:
their series are not there.</source>
        <translation>Die Legs dieser Position sind nicht zu bewerten:
ihre Serien fehlen.</translation>
    </message>
    <message>
        <source>The position cannot be valued:
there are no prices to take a volatility from.</source>
        <translation>Die Position ist nicht zu bewerten:
es fehlen Preise, aus denen eine Volatilität folgt.</translation>
    </message>
</context>
<context>
    <name>QuotesDock</name>
    <message>
        <source>Quotes</source>
        <translation>Quotierungen</translation>
    </message>
    <message>
        <source>&amp;Quotes</source>
        <translation>&amp;Quotierungen</translation>
    </message>
    <message>
        <source>Show or hide the table of the chosen expiry&apos;s quotes by strike</source>
        <translation>Die Tabelle der Quotierungen des gewählten Verfalls nach Strikes zeigen oder ausblenden</translation>
    </message>
</context>
<context>
    <name>QuotesModel</name>
    <message>
        <source>Strike</source>
        <translation>Strike</translation>
    </message>
    <message>
        <source>The strike of the row</source>
        <translation>Der Strike der Zeile</translation>
    </message>
    <message>
        <source>Implied
vol.</source>
        <translation>Impl.
Vola</translation>
    </message>
    <message>
        <source>The implied volatility of the point on the plot</source>
        <translation>Die implizite Volatilität des Punkts im Diagramm</translation>
    </message>
    <message>
        <source>Delta</source>
        <translation>Delta</translation>
    </message>
    <message>
        <source>The change of the option&apos;s value with the forward, of the option whose volatility is shown</source>
        <translation>Wie sich der Wert der Option, deren Volatilität gezeigt ist, mit dem Forward ändert</translation>
    </message>
    <message>
        <source>Call
bid</source>
        <translation>Call
Geld</translation>
    </message>
    <message>
        <source>The call&apos;s best bid</source>
        <translation>Der beste Geldkurs des Calls</translation>
    </message>
    <message>
        <source>Call
ask</source>
        <translation>Call
Brief</translation>
    </message>
    <message>
        <source>The call&apos;s best ask</source>
        <translation>Der beste Briefkurs des Calls</translation>
    </message>
    <message>
        <source>Call
middle</source>
        <translation>Call
Mitte</translation>
    </message>
    <message>
        <source>The middle of the call&apos;s bid and ask</source>
        <translation>Die Mitte von Geld und Brief des Calls</translation>
    </message>
    <message>
        <source>Call
settle</source>
        <translation>Call
Abr.</translation>
    </message>
    <message>
        <source>The call&apos;s settlement price</source>
        <translation>Der Abrechnungspreis des Calls</translation>
    </message>
    <message>
        <source>Put
bid</source>
        <translation>Put
Geld</translation>
    </message>
    <message>
        <source>The put&apos;s best bid</source>
        <translation>Der beste Geldkurs des Puts</translation>
    </message>
    <message>
        <source>Put
ask</source>
        <translation>Put
Brief</translation>
    </message>
    <message>
        <source>The put&apos;s best ask</source>
        <translation>Der beste Briefkurs des Puts</translation>
    </message>
    <message>
        <source>Put
middle</source>
        <translation>Put
Mitte</translation>
    </message>
    <message>
        <source>The middle of the put&apos;s bid and ask</source>
        <translation>Die Mitte von Geld und Brief des Puts</translation>
    </message>
    <message>
        <source>Put
settle</source>
        <translation>Put
Abr.</translation>
    </message>
    <message>
        <source>The put&apos;s settlement price</source>
        <translation>Der Abrechnungspreis des Puts</translation>
    </message>
    <message>
        <source>At the money: the strike nearest to the forward</source>
        <translation>Am Geld: der Strike, der dem Forward am nächsten ist</translation>
    </message>
</context>
<context>
    <name>QuotesView</name>
    <message>
        <source>Quotes</source>
        <translation>Quotierungen</translation>
    </message>
    <message>
        <source>The options of the chosen expiry by strike</source>
        <translation>Die Optionen des gewählten Verfalls nach Strikes</translation>
    </message>
</context>
<context>
    <name>ReadOut</name>
    <message>
        <source>%1
Strike %2, %3 from the quote
%4</source>
        <translation>%1
Strike %2, %3 vom Kurs
%4</translation>
    </message>
    <message>
        <source>%1
Price %2, %3 from the quote
%4</source>
        <translation>%1
Preis %2, %3 vom Kurs
%4</translation>
    </message>
</context>
<context>
    <name>ReplayTexts</name>
    <message>
        <source>The column &quot;%1&quot; of the table &quot;%2&quot; holds no prices.</source>
        <translation>Die Spalte „%1“ der Tabelle „%2“ enthält keine Preise.</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>is not an ordinary file</source>
        <translation>ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot be opened: %1</source>
        <translation>lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>there are two columns %1</source>
        <translation>es gibt zwei Spalten %1</translation>
    </message>
    <message>
        <source>no header of recorded quotes: looked for time, instrument and one of bid, ask and last; found %1</source>
        <translation>keine Kopfzeile aufgezeichneter Kurse: gesucht wurden time, instrument und eines von bid, ask und last; gefunden wurde %1</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>there are no quotes</source>
        <translation>es gibt keine Kurse</translation>
    </message>
    <message>
        <source>%1 cells instead of %2</source>
        <translation>%1 Zellen statt %2</translation>
    </message>
    <message>
        <source>is no time (milliseconds, HH:MM:SS.zzz or an ISO date and time)</source>
        <translation>ist keine Zeit (Millisekunden, HH:MM:SS.zzz oder Datum und Zeit nach ISO)</translation>
    </message>
    <message>
        <source>is a time of another form than those before</source>
        <translation>ist eine Zeit in anderer Form als die davor</translation>
    </message>
    <message>
        <source>is before the time of the row before</source>
        <translation>liegt vor der Zeit der Zeile davor</translation>
    </message>
    <message>
        <source>names no instrument</source>
        <translation>nennt kein Instrument</translation>
    </message>
    <message>
        <source>there are more than %1 instruments</source>
        <translation>es gibt mehr als %1 Instrumente</translation>
    </message>
    <message>
        <source>is no price</source>
        <translation>ist kein Preis</translation>
    </message>
    <message>
        <source>is negative</source>
        <translation>ist negativ</translation>
    </message>
    <message>
        <source>%1 in column %2 %3</source>
        <translation>%1 in Spalte %2 %3</translation>
    </message>
</context>
<context>
    <name>SeriesDock</name>
    <message>
        <source>Series</source>
        <translation>Serien</translation>
    </message>
    <message>
        <source>Show or hide the tree of underlyings and expiries</source>
        <translation>Den Baum der Basiswerte und Verfallstage zeigen oder ausblenden</translation>
    </message>
    <message>
        <source>E&amp;xpiries</source>
        <translation>V&amp;erfallstage</translation>
    </message>
</context>
<context>
    <name>SeriesOverlays</name>
    <message>
        <source>Fitting smiles</source>
        <translation>Smiles werden angepasst</translation>
    </message>
</context>
<context>
    <name>SeriesSelector</name>
    <message>
        <source>The underlying</source>
        <translation>Der Basiswert</translation>
    </message>
    <message>
        <source>The expiry of the options</source>
        <translation>Der Verfall der Optionen</translation>
    </message>
</context>
<context>
    <name>SeriesTreeModel</name>
    <message>
        <source>The box checks or unchecks all expiries of %1</source>
        <translation>Das Kästchen wählt alle Verfallstage von %1 oder keinen</translation>
    </message>
    <message>
        <source>%1, chosen</source>
        <translation>%1, gewählt</translation>
    </message>
    <message>
        <source>The chosen expiry: all its curves are shown</source>
        <translation>Der gewählte Verfall: alle seine Kurven sind zu sehen</translation>
    </message>
    <message>
        <source>Click or press Enter to show all curves of this expiry; the box shows its smile beside those of the chosen one</source>
        <translation>Ein Klick oder die Eingabetaste zeigt alle Kurven dieses Verfalls; das Kästchen zeigt seinen Smile neben denen des gewählten</translation>
    </message>
</context>
<context>
    <name>SeriesTreeView</name>
    <message>
        <source>Series</source>
        <translation>Serien</translation>
    </message>
    <message>
        <source>Underlyings and their expiries</source>
        <translation>Basiswerte und ihre Verfallstage</translation>
    </message>
</context>
<context>
    <name>SharingStatus</name>
    <message>
        <source>Shared database</source>
        <translation>Geteilte Datenbank</translation>
    </message>
    <message>
        <source>No connection to %1</source>
        <translation>Keine Verbindung zu %1</translation>
    </message>
    <message>
        <source>1 change waits</source>
        <translation>1 Änderung wartet</translation>
    </message>
    <message>
        <source>The chains are shared with the other desks on %1.</source>
        <translation>Die Optionsketten werden mit den anderen Desks auf %1 geteilt.</translation>
    </message>
    <message numerus="yes">
        <source>%n changes wait</source>
        <translation>
            <numerusform>%n Änderung wartet</numerusform>
            <numerusform>%n Änderungen warten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ViewActions</name>
    <message>
        <source>&amp;Auto-scale</source>
        <translation>&amp;Automatische Skala</translation>
    </message>
    <message>
        <source>Keep the vertical axis at the visible curves</source>
        <translation>Die senkrechte Achse den sichtbaren Kurven folgen lassen</translation>
    </message>
    <message>
        <source>&amp;Fit all</source>
        <translation>Al&amp;les zeigen</translation>
    </message>
    <message>
        <source>Show all data of the visible curves</source>
        <translation>Alle Daten der sichtbaren Kurven zeigen</translation>
    </message>
    <message>
        <source>&amp;Reset view</source>
        <translation>Ansicht zu&amp;rücksetzen</translation>
    </message>
    <message>
        <source>Show the first range of strikes again</source>
        <translation>Wieder den ersten Bereich der Strikes zeigen</translation>
    </message>
    <message>
        <source>&amp;Zoom in</source>
        <translation>Vergrößer&amp;n</translation>
    </message>
    <message>
        <source>Show a tenth less about the middle, with auto-scale on of the strikes alone</source>
        <translation>Um die Mitte ein Zehntel weniger zeigen, bei automatischer Skala nur von den Strikes</translation>
    </message>
    <message>
        <source>Zoom ou&amp;t</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Show a tenth more, up to all data, with auto-scale on of the strikes alone</source>
        <translation>Ein Zehntel mehr zeigen, bis zu allen Daten, bei automatischer Skala nur von den Strikes</translation>
    </message>
    <message>
        <source>&amp;Undo zoom or pan</source>
        <translation>Zoomen oder Verschieben rü&amp;ckgängig</translation>
    </message>
    <message>
        <source>Undo the last zoom, pan or fit</source>
        <translation>Das letzte Zoomen, Verschieben oder Einpassen rückgängig machen</translation>
    </message>
    <message>
        <source>R&amp;edo zoom or pan</source>
        <translation>Zoomen oder Verschieben wieder&amp;holen</translation>
    </message>
    <message>
        <source>Redo the zoom, pan or fit undone last</source>
        <translation>Das zuletzt rückgängig gemachte Zoomen, Verschieben oder Einpassen wiederholen</translation>
    </message>
    <message>
        <source>Pa&amp;n</source>
        <translation>&amp;Verschieben</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>Nach &amp;links</translation>
    </message>
    <message>
        <source>Go to lower strikes, up to the end of the data</source>
        <translation>Zu niedrigeren Strikes gehen, bis zum Ende der Daten</translation>
    </message>
    <message>
        <source>&amp;Right</source>
        <translation>Nach &amp;rechts</translation>
    </message>
    <message>
        <source>Go to higher strikes, up to the end of the data</source>
        <translation>Zu höheren Strikes gehen, bis zum Ende der Daten</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Go to higher values, up to the end of the data</source>
        <translation>Zu höheren Werten gehen, bis zum Ende der Daten</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Go to lower values, up to the end of the data</source>
        <translation>Zu niedrigeren Werten gehen, bis zum Ende der Daten</translation>
    </message>
    <message>
        <source>&amp;Walk the points</source>
        <translation>Punkte a&amp;bgehen</translation>
    </message>
    <message>
        <source>Mark the nearest point; the arrows then go from point to point</source>
        <translation>Den nächsten Punkt markieren; die Pfeiltasten gehen dann von Punkt zu Punkt</translation>
    </message>
    <message>
        <source>Leave t&amp;he points</source>
        <translation>Punk&amp;te verlassen</translation>
    </message>
    <message>
        <source>Let the arrows pan again</source>
        <translation>Die Pfeiltasten wieder verschieben lassen</translation>
    </message>
</context>
<context>
    <name>WorkBar</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop what is going on</source>
        <translation>Anhalten, was gerade läuft</translation>
    </message>
</context>
</TS>
