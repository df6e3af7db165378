<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>Ui</name>
    <message>
        <source>background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>pattern</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>emphasis 1</source>
        <translation>Betonung 1</translation>
    </message>
    <message>
        <source>emphasis 2</source>
        <translation>Betonung 2</translation>
    </message>
    <message>
        <source>black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>dark grey</source>
        <translation>Dunkelgrau</translation>
    </message>
    <message>
        <source>grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>light grey</source>
        <translation>Hellgrau</translation>
    </message>
    <message>
        <source>white</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>dark red</source>
        <translation>Dunkelrot</translation>
    </message>
    <message>
        <source>light red</source>
        <translation>Hellrot</translation>
    </message>
    <message>
        <source>orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>brown</source>
        <translation>Braun</translation>
    </message>
    <message>
        <source>light orange</source>
        <translation>Hellorange</translation>
    </message>
    <message>
        <source>yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>dark yellow</source>
        <translation>Dunkelgelb</translation>
    </message>
    <message>
        <source>light yellow</source>
        <translation>Hellgelb</translation>
    </message>
    <message>
        <source>green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>dark green</source>
        <translation>Dunkelgrün</translation>
    </message>
    <message>
        <source>light green</source>
        <translation>Hellgrün</translation>
    </message>
    <message>
        <source>cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>dark cyan</source>
        <translation>Dunkelcyan</translation>
    </message>
    <message>
        <source>light cyan</source>
        <translation>Hellcyan</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>dark blue</source>
        <translation>Dunkelblau</translation>
    </message>
    <message>
        <source>light blue</source>
        <translation>Hellblau</translation>
    </message>
    <message>
        <source>purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>dark purple</source>
        <translation>Dunkelviolett</translation>
    </message>
    <message>
        <source>light purple</source>
        <translation>Hellviolett</translation>
    </message>
    <message>
        <source>magenta</source>
        <translation>Magenta</translation>
    </message>
    <message>
        <source>dark magenta</source>
        <translation>Dunkelmagenta</translation>
    </message>
    <message>
        <source>light magenta</source>
        <translation>Hellmagenta</translation>
    </message>
    <message>
        <source>unknown option %1; see quillmark --help</source>
        <translation>unbekannte Option %1; siehe quillmark --help</translation>
    </message>
    <message>
        <source>only one file can be opened, not %1</source>
        <translation>nur eine Datei kann geöffnet werden, nicht %1</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>%1 is a folder, not a SUP file</source>
        <translation>%1 ist ein Ordner, keine SUP-Datei</translation>
    </message>
    <message>
        <source>%1 is no file that can be opened</source>
        <translation>%1 ist keine Datei, die geöffnet werden kann</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>es gibt keine Datei %1</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>cannot be shown</source>
        <translation>nicht darstellbar</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Opacities</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Forced</source>
        <translation>Erzwungen</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>&amp;Only differences</source>
        <translation>&amp;Nur Unterschiede</translation>
    </message>
    <message>
        <source>Leave out the subtitles that are the same in both files</source>
        <translation>Untertitel weglassen, die in beiden Dateien gleich sind</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>Unterschiede</translation>
    </message>
    <message>
        <source># here</source>
        <translation># hier</translation>
    </message>
    <message>
        <source># there</source>
        <translation># dort</translation>
    </message>
    <message>
        <source>Picture here</source>
        <translation>Bild hier</translation>
    </message>
    <message>
        <source>Picture in the other file</source>
        <translation>Bild in der anderen Datei</translation>
    </message>
    <message>
        <source>Compared with %1</source>
        <translation>Verglichen mit %1</translation>
    </message>
    <message>
        <source>Here</source>
        <translation>Hier</translation>
    </message>
    <message>
        <source>subtitle %1</source>
        <translation>Untertitel %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>%1 missing</source>
        <translation>%1 fehlen</translation>
    </message>
    <message>
        <source>%1 added</source>
        <translation>%1 zusätzlich</translation>
    </message>
    <message>
        <source>%1 where only one of the two can be shown</source>
        <translation>%1, bei denen nur einer der beiden darstellbar ist</translation>
    </message>
    <message>
        <source>%1 moved in time</source>
        <translation>%1 zeitlich verschoben</translation>
    </message>
    <message>
        <source>%1 with other duration</source>
        <translation>%1 mit anderer Dauer</translation>
    </message>
    <message>
        <source>%1 moved in place</source>
        <translation>%1 an anderer Stelle</translation>
    </message>
    <message>
        <source>%1 with other size</source>
        <translation>%1 mit anderer Größe</translation>
    </message>
    <message>
        <source>%1 with other colours</source>
        <translation>%1 mit anderen Farben</translation>
    </message>
    <message>
        <source>%1 with other opacities</source>
        <translation>%1 mit anderer Deckkraft</translation>
    </message>
    <message>
        <source>%1 with other forced flag</source>
        <translation>%1 anders erzwungen</translation>
    </message>
    <message>
        <source>%1 with other pixels</source>
        <translation>%1 mit anderen Pixeln</translation>
    </message>
    <message>
        <source>%1 the same, otherwise written</source>
        <translation>%1 gleich, aber anders geschrieben</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle the same</source>
        <comment>%n subtitles the same</comment>
        <translation>
            <numerusform>%n Untertitel gleich</numerusform>
            <numerusform>%n Untertitel gleich</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 different (%2)</source>
        <translation>%1 verschieden (%2)</translation>
    </message>
    <message>
        <source>other bytes after the last subtitle</source>
        <translation>andere Bytes nach dem letzten Untertitel</translation>
    </message>
    <message>
        <source>en_US</source>
        <extracomment>The language of the catalogue, and the country whose way of writing numbers it keeps.</extracomment>
        <translation>de_DE</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle</source>
        <comment>%n subtitles</comment>
        <translation>
            <numerusform>%n Untertitel</numerusform>
            <numerusform>%n Untertitel</numerusform>
        </translation>
    </message>
    <message>
        <source>the same</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>subtitle %1 here</source>
        <translation>Untertitel %1 hier</translation>
    </message>
    <message>
        <source>none here</source>
        <translation>keiner hier</translation>
    </message>
    <message>
        <source>subtitle %1 in the other file</source>
        <translation>Untertitel %1 in der anderen Datei</translation>
    </message>
    <message>
        <source>none in the other file</source>
        <translation>keiner in der anderen Datei</translation>
    </message>
    <message>
        <source>Number here</source>
        <translation>Nummer hier</translation>
    </message>
    <message>
        <source>Number in the other file</source>
        <translation>Nummer in der anderen Datei</translation>
    </message>
    <message>
        <source>Start here or, where it is added, in the other file</source>
        <translation>Start hier oder, wenn er zusätzlich ist, in der anderen Datei</translation>
    </message>
    <message>
        <source>What differs</source>
        <translation>Was sich unterscheidet</translation>
    </message>
    <message>
        <source>Set for actual</source>
        <translation>Für aktuellen setzen</translation>
    </message>
    <message>
        <source>Set for all</source>
        <translation>Für alle setzen</translation>
    </message>
    <message>
        <source>Set for selected</source>
        <translation>Für ausgewählte setzen</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>&amp;What</source>
        <translation>&amp;Was</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;All %1</source>
        <translation>&amp;Alle %1</translation>
    </message>
    <message>
        <source>Those &amp;selected in the list: %1</source>
        <translation>In der Li&amp;ste ausgewählte: %1</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>D&amp;urchsuchen...</translation>
    </message>
    <message>
        <source>What players call the subtitles; the subtitles are not changed</source>
        <translation>Wie Player die Untertitel nennen; die Untertitel werden nicht geändert</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Writes %1</source>
        <translation>Schreibt %1</translation>
    </message>
    <message>
        <source>There already: %1</source>
        <translation>Schon vorhanden: %1</translation>
    </message>
    <message>
        <source>There already: %1.<byte value="xd"/>
Replace what is there?</source>
        <translation>Schon vorhanden: %1.<byte value="xd"/>
Vorhandenes ersetzen?</translation>
    </message>
    <message>
        <source>SUP stream</source>
        <translation>SUP-Datenstrom</translation>
    </message>
    <message>
        <source>SUP Files (*.SUP)</source>
        <translation>SUP-Dateien (*.SUP)</translation>
    </message>
    <message>
        <source>VobSub pair</source>
        <translation>VobSub-Paar</translation>
    </message>
    <message>
        <source>VobSub Files (*.IDX)</source>
        <translation>VobSub-Dateien (*.IDX)</translation>
    </message>
    <message>
        <source>Authoring project</source>
        <translation>Authoring-Projekt</translation>
    </message>
    <message>
        <source>Authoring lists (*.XML)</source>
        <translation>Authoring-Listen (*.XML)</translation>
    </message>
    <message>
        <source>Contact sheet</source>
        <translation>Kontaktbogen</translation>
    </message>
    <message>
        <source>Pictures (*.PNG)</source>
        <translation>Bilder (*.PNG)</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>action safe 90 %</source>
        <translation>aktionssicher 90 %</translation>
    </message>
    <message>
        <source>title safe 80 %</source>
        <translation>titelsicher 80 %</translation>
    </message>
    <message>
        <source>Wide screen (16:9): all of the frame</source>
        <translation>Breitbild (16:9): die ganze Bildfläche</translation>
    </message>
    <message>
        <source>Letterbox (4:3): the film in lines %1, the subtitle as stored</source>
        <translation>Letterbox (4:3): der Film in den Zeilen %1, der Untertitel wie gespeichert</translation>
    </message>
    <message>
        <source>Pan and scan (4:3): the film&apos;s columns %1, the subtitle as stored</source>
        <translation>Pan and Scan (4:3): die Spalten %1 des Films, der Untertitel wie gespeichert</translation>
    </message>
    <message>
        <source>Subtitle frame</source>
        <translation>Bildfläche des Untertitels</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>GDIP Error in: %1<byte value="xd"/>
Error Number: %2<byte value="xd"/>
Error Description: %3</source>
        <translation>GDIP-Fehler in: %1<byte value="xd"/>
Fehlernummer: %2<byte value="xd"/>
Fehlerbeschreibung: %3</translation>
    </message>
    <message>
        <source>Nothing was done: the file dialogs take no path of more than %1 characters: %2</source>
        <translation>Nichts wurde getan: die Dateidialoge nehmen keinen Pfad von mehr als %1 Zeichen an: %2</translation>
    </message>
    <message>
        <source>This information will be lost,</source>
        <translation>Diese Angaben gehen verloren,</translation>
    </message>
    <message>
        <source>if the Set All option is used!</source>
        <translation>wenn Sie „Für alle setzen“ verwenden!</translation>
    </message>
    <message>
        <source>Continue?</source>
        <translation>Fortfahren?</translation>
    </message>
    <message>
        <source>The subtitles use different colors.</source>
        <translation>Die Untertitel verwenden verschiedene Farben.</translation>
    </message>
    <message>
        <source>The subtitles use different opacities.</source>
        <translation>Die Untertitel verwenden verschiedene Deckkraft.</translation>
    </message>
    <message>
        <source>IFO Files (*.IFO;*.BUP)</source>
        <translation>IFO-Dateien (*.IFO;*.BUP)</translation>
    </message>
    <message>
        <source>Palette of %1</source>
        <translation>Palette von %1</translation>
    </message>
    <message>
        <source>The comparison is closed: %1</source>
        <translation>Der Vergleich ist geschlossen: %1</translation>
    </message>
    <message>
        <source>Cannot compare with %1: %2</source>
        <translation>Vergleich mit %1 nicht möglich: %2</translation>
    </message>
    <message>
        <source>Error: Cannot open Spufile %1 !</source>
        <translation>Fehler: Spu-Datei %1 kann nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>Select a valid graphics file first</source>
        <translation>Wählen Sie zuerst eine gültige Grafikdatei aus</translation>
    </message>
    <message>
        <source>Graphic Files (*.BMP;*.GIF;*.JPG;*.PNG)</source>
        <translation>Grafikdateien (*.BMP;*.GIF;*.JPG;*.PNG)</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Cannot export %1: %2</source>
        <translation>%1 kann nicht exportiert werden: %2</translation>
    </message>
    <message>
        <source>The export was cancelled; nothing was written</source>
        <translation>Der Export wurde abgebrochen; nichts wurde geschrieben</translation>
    </message>
    <message numerus="yes">
        <source>Exported %1, %n subtitle</source>
        <comment>Exported %1, %n subtitles</comment>
        <translation>
            <numerusform>%1 exportiert, %n Untertitel</numerusform>
            <numerusform>%1 exportiert, %n Untertitel</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 was written, with remarks:</source>
        <translation>%1 wurde geschrieben, mit Anmerkungen:</translation>
    </message>
    <message>
        <source>Background colour</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Views and edits DVD subtitle streams, and hands them to authoring tools.<byte value="xd"/>
MIT licence.</source>
        <translation>Zeigt und bearbeitet DVD-Untertitel und gibt sie an Authoring-Werkzeuge weiter.<byte value="xd"/>
MIT-Lizenz.</translation>
    </message>
    <message>
        <source>Imported %1</source>
        <translation>%1 importiert</translation>
    </message>
    <message>
        <source>track %1 of %2</source>
        <translation>Spur %1 von %2</translation>
    </message>
    <message>
        <source>%1, with its palette</source>
        <translation>%1, mit eigener Palette</translation>
    </message>
    <message>
        <source>%1; it has no palette of its own: the present one stays</source>
        <translation>%1; ohne eigene Palette: die jetzige bleibt</translation>
    </message>
    <message>
        <source>Files with subtitles (%1)</source>
        <translation>Dateien mit Untertiteln (%1)</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>The import was cancelled; nothing has changed</source>
        <translation>Der Import wurde abgebrochen; nichts hat sich geändert</translation>
    </message>
    <message>
        <source>There is no further problem in the list</source>
        <translation>In der Liste gibt es kein weiteres Problem</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle, %1 with problems</source>
        <comment>%n subtitles, %1 with problems</comment>
        <translation>
            <numerusform>%n Untertitel, %1 mit Problemen</numerusform>
            <numerusform>%n Untertitel, %1 mit Problemen</numerusform>
        </translation>
    </message>
    <message>
        <source>Error: No SUP signature found</source>
        <translation>Fehler: Keine SUP-Signatur gefunden</translation>
    </message>
    <message>
        <source>Error converting subtitle!</source>
        <translation>Fehler beim Umwandeln des Untertitels!</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>Zuletzt &amp;geöffnet</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Subtitle</source>
        <translation>&amp;Untertitel</translation>
    </message>
    <message>
        <source>&amp;Colours</source>
        <translation>&amp;Farben</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Display &amp;aspect</source>
        <translation>A&amp;nzeigeformat</translation>
    </message>
    <message>
        <source>&amp;Display mode</source>
        <translation>Anzeige&amp;modus</translation>
    </message>
    <message>
        <source>G&amp;uides</source>
        <translation>Hi&amp;lfslinien</translation>
    </message>
    <message>
        <source>&amp;Background colour</source>
        <translation>&amp;Hintergrundfarbe</translation>
    </message>
    <message>
        <source>List colu&amp;mns</source>
        <translation>Listen&amp;spalten</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>No stream is open. %1 can be opened again, with all that was set in it.</source>
        <translation>Kein Datenstrom ist geöffnet. %1 kann wieder geöffnet werden, mit allem, was darin gesetzt war.</translation>
    </message>
    <message>
        <source>subtitle %1 of the second stream cannot be merged: %2</source>
        <translation>Untertitel %1 des zweiten Datenstroms kann nicht zusammengeführt werden: %2</translation>
    </message>
    <message>
        <source>subtitle %1 cannot be merged: %2</source>
        <translation>Untertitel %1 kann nicht zusammengeführt werden: %2</translation>
    </message>
    <message>
        <source>Error: No primary sup file loaded</source>
        <translation>Fehler: Keine erste SUP-Datei geladen</translation>
    </message>
    <message>
        <source>Error: Primary sup file uses multiple colors or multiple transparancies<byte value="xd"/>
Loading secondary stream not possible.<byte value="xd"/>
Remove the multiple colors and/or multiple transparancies in the primary sup file and retry</source>
        <translation>Fehler: Die erste SUP-Datei verwendet mehrere Farben oder mehrere Transparenzen<byte value="xd"/>
Der zweite Datenstrom kann nicht geladen werden.<byte value="xd"/>
Entfernen Sie die mehreren Farben und/oder Transparenzen in der ersten SUP-Datei und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>Colours that are set here count once the stream is saved and loaded again: use Set for all, save the stream, and load the saved one.</source>
        <translation>Hier gesetzte Farben gelten, sobald der Datenstrom gespeichert und wieder geladen ist: Verwenden Sie „Für alle setzen“, speichern Sie den Datenstrom und laden Sie den gespeicherten.</translation>
    </message>
    <message>
        <source>Set Offset</source>
        <translation>Versatz setzen</translation>
    </message>
    <message>
        <source>Y-Offset for secondary stream</source>
        <translation>Y-Versatz des zweiten Datenstroms</translation>
    </message>
    <message>
        <source>The offset %1 is not between -32768 and 32767; it stays %2</source>
        <translation>Der Versatz %1 liegt nicht zwischen -32768 und 32767; er bleibt %2</translation>
    </message>
    <message>
        <source>Error: No secondary sup file loaded</source>
        <translation>Fehler: Keine zweite SUP-Datei geladen</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>%1 kann nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>  working on subtitle # %1</source>
        <translation>  Untertitel # %1 in Arbeit</translation>
    </message>
    <message>
        <source>%1 is not complete: %2</source>
        <translation>%1 ist nicht vollständig: %2</translation>
    </message>
    <message>
        <source>Jump to subtitle</source>
        <translation>Zu Untertitel springen</translation>
    </message>
    <message>
        <source>Jump to subtitle Nr. (1..%1):</source>
        <translation>Zu Untertitel Nr. springen (1..%1):</translation>
    </message>
    <message>
        <source>Illegal number!</source>
        <translation>Ungültige Nummer!</translation>
    </message>
    <message>
        <source>IFO + Palette Files (*.IFO;*.PAL;*.RGB)</source>
        <translation>IFO- und Palettendateien (*.IFO;*.PAL;*.RGB)</translation>
    </message>
    <message>
        <source>Illegal file</source>
        <translation>Ungültige Datei</translation>
    </message>
    <message>
        <source>Load Palette</source>
        <translation>Palette laden</translation>
    </message>
    <message>
        <source>Palette Files (*.PAL;*.RGB)</source>
        <translation>Palettendateien (*.PAL;*.RGB)</translation>
    </message>
    <message>
        <source>Cannot open file</source>
        <translation>Datei kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Palette colour %1</source>
        <translation>Palettenfarbe %1</translation>
    </message>
    <message>
        <source>As a player shows it: %1</source>
        <translation>Wie ein Player es zeigt: %1</translation>
    </message>
    <message>
        <source>%1 pixels covered, %2 clipped</source>
        <translation>%1 Pixel verdeckt, %2 abgeschnitten</translation>
    </message>
    <message>
        <source>Looking for the best offset</source>
        <translation>Der beste Versatz wird gesucht</translation>
    </message>
    <message>
        <source>There is not enough memory to look for an offset</source>
        <translation>Der Speicher reicht nicht, um einen Versatz zu suchen</translation>
    </message>
    <message>
        <source>The offset stays %1</source>
        <translation>Der Versatz bleibt %1</translation>
    </message>
    <message>
        <source>No offset is better than %1: %2</source>
        <translation>Kein Versatz ist besser als %1: %2</translation>
    </message>
    <message>
        <source>Offset %1: %2; at %3 %4</source>
        <translation>Versatz %1: %2; bei %3 %4</translation>
    </message>
    <message>
        <source>A SUP file holds no palette: Save Palette keeps this one</source>
        <translation>Eine SUP-Datei enthält keine Palette: „Palette speichern“ bewahrt diese auf</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>Saved %1, %n subtitle, %2</source>
        <comment>Saved %1, %n subtitles, %2</comment>
        <translation>
            <numerusform>%1 gespeichert, %n Untertitel, %2</numerusform>
            <numerusform>%1 gespeichert, %n Untertitel, %2</numerusform>
        </translation>
    </message>
    <message>
        <source>Saved %1, %2</source>
        <translation>%1 gespeichert, %2</translation>
    </message>
    <message>
        <source>%1; %2 of the longer old file still follow</source>
        <translation>%1; %2 der längeren alten Datei folgen noch</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle %1</source>
        <comment>%n subtitles %1</comment>
        <translation>
            <numerusform>%n Untertitel %1</numerusform>
            <numerusform>%n Untertitel %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 left as they are</source>
        <translation>%1 unverändert gelassen</translation>
    </message>
    <message>
        <source>Assign</source>
        <translation>Zuweisen</translation>
    </message>
    <message>
        <source>Recipes (*.JSON)</source>
        <translation>Rezepte (*.JSON)</translation>
    </message>
    <message numerus="yes">
        <source>Saved %1, %n step</source>
        <comment>Saved %1, %n steps</comment>
        <translation>
            <numerusform>%1 gespeichert, %n Schritt</numerusform>
            <numerusform>%1 gespeichert, %n Schritte</numerusform>
        </translation>
    </message>
    <message>
        <source>not in it: %1 of the palette or restored ones</source>
        <translation>nicht darin: %1 der Palette oder wiederhergestellte</translation>
    </message>
    <message numerus="yes">
        <source>Ran %1, %n step</source>
        <comment>Ran %1, %n steps</comment>
        <translation>
            <numerusform>%1 ausgeführt, %n Schritt</numerusform>
            <numerusform>%1 ausgeführt, %n Schritte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle left as they were</source>
        <comment>%n subtitles left as they were</comment>
        <translation>
            <numerusform>%n Untertitel unverändert gelassen</numerusform>
            <numerusform>%n Untertitel unverändert gelassen</numerusform>
        </translation>
    </message>
    <message>
        <source>Zoom to fit</source>
        <translation>Zoom: eingepasst</translation>
    </message>
    <message>
        <source>Zoom %1 %</source>
        <translation>Zoom %1 %</translation>
    </message>
    <message>
        <source>&amp;Load SUP...</source>
        <translation>SUP &amp;laden...</translation>
    </message>
    <message>
        <source>&amp;Import subtitles...</source>
        <translation>Untertitel &amp;importieren...</translation>
    </message>
    <message>
        <source>&amp;Save SUP...</source>
        <translation>SUP &amp;speichern...</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>Load &amp;Palette...</source>
        <translation>&amp;Palette laden...</translation>
    </message>
    <message>
        <source>Save P&amp;alette...</source>
        <translation>P&amp;alette speichern...</translation>
    </message>
    <message>
        <source>Palettes of a &amp;title...</source>
        <translation>Paletten eines &amp;Titels...</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>Zurück&amp;setzen</translation>
    </message>
    <message>
        <source>&amp;Prev</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>&amp;GoTo...</source>
        <translation>&amp;Gehe zu...</translation>
    </message>
    <message>
        <source>Set for a&amp;ctual</source>
        <translation>Für a&amp;ktuellen setzen</translation>
    </message>
    <message>
        <source>Set for &amp;selected</source>
        <translation>Für aus&amp;gewählte setzen</translation>
    </message>
    <message>
        <source>Set for &amp;all</source>
        <translation>Für &amp;alle setzen</translation>
    </message>
    <message>
        <source>&amp;Load/Merge secondary SUP...</source>
        <translation>Zweite SUP &amp;laden/zusammenführen...</translation>
    </message>
    <message>
        <source>&amp;Save merged (prim. + sec.) SUP...</source>
        <translation>&amp;Zusammengeführte SUP (1. + 2.) speichern...</translation>
    </message>
    <message>
        <source>&amp;Load Background graphic form file...</source>
        <translation>Hintergrundb&amp;ild aus Datei laden...</translation>
    </message>
    <message>
        <source>Next pro&amp;blem</source>
        <translation>&amp;Nächstes Problem</translation>
    </message>
    <message>
        <source>Prev proble&amp;m</source>
        <translation>&amp;Voriges Problem</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Subtitle list</source>
        <translation>&amp;Untertitelliste</translation>
    </message>
    <message>
        <source>Open last stream a&amp;gain</source>
        <translation>Letzten Datenstrom &amp;wieder öffnen</translation>
    </message>
    <message>
        <source>&amp;Forget these files</source>
        <translation>Diese Dateien &amp;vergessen</translation>
    </message>
    <message>
        <source>Revert &amp;preview</source>
        <translation>&amp;Vorschau verwerfen</translation>
    </message>
    <message>
        <source>Re&amp;store unsaved edits</source>
        <translation>Ungespeicherte Änderungen wieder&amp;herstellen</translation>
    </message>
    <message>
        <source>&amp;Discard unsaved edits</source>
        <translation>Ungespeicherte Änderungen verwer&amp;fen</translation>
    </message>
    <message>
        <source>&amp;Checker</source>
        <translation>S&amp;chachbrett</translation>
    </message>
    <message>
        <source>&amp;Graph. File</source>
        <translation>&amp;Grafikdatei</translation>
    </message>
    <message>
        <source>As a player s&amp;hows it</source>
        <translation>Wie ein Player es &amp;zeigt</translation>
    </message>
    <message>
        <source>Pla&amp;y or pause</source>
        <translation>Abspielen &amp;oder anhalten</translation>
    </message>
    <message>
        <source>&amp;Picture behind...</source>
        <translation>&amp;Bild dahinter...</translation>
    </message>
    <message>
        <source>Colou&amp;r</source>
        <translation>Fa&amp;rbe</translation>
    </message>
    <message>
        <source>&amp;Black</source>
        <translation>&amp;Schwarz</translation>
    </message>
    <message>
        <source>&amp;White</source>
        <translation>&amp;Weiß</translation>
    </message>
    <message>
        <source>&amp;Grey</source>
        <translation>&amp;Grau</translation>
    </message>
    <message>
        <source>&amp;Pick...</source>
        <translation>&amp;Auswählen...</translation>
    </message>
    <message>
        <source>&amp;Safe areas</source>
        <translation>&amp;Sichere Bereiche</translation>
    </message>
    <message>
        <source>Subtitle&apos;s &amp;area</source>
        <translation>&amp;Bereich des Untertitels</translation>
    </message>
    <message>
        <source>&amp;Rulers</source>
        <translation>&amp;Lineale</translation>
    </message>
    <message>
        <source>Loup&amp;e</source>
        <translation>Lup&amp;e</translation>
    </message>
    <message>
        <source>&amp;Off</source>
        <translation>&amp;Aus</translation>
    </message>
    <message>
        <source>&amp;Wide</source>
        <translation>&amp;Breitbild</translation>
    </message>
    <message>
        <source>&amp;Letterbox</source>
        <translation>&amp;Letterbox</translation>
    </message>
    <message>
        <source>&amp;Pan and scan</source>
        <translation>&amp;Pan and Scan</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>&amp;Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Zoom &amp;100 %</source>
        <translation>Zoom &amp;100 %</translation>
    </message>
    <message>
        <source>Zoom to fi&amp;t</source>
        <translation>Ein&amp;passen</translation>
    </message>
    <message>
        <source>S&amp;quare pixels</source>
        <translation>&amp;Quadratische Pixel</translation>
    </message>
    <message>
        <source>&amp;Offset...</source>
        <translation>&amp;Versatz...</translation>
    </message>
    <message>
        <source>Merge &amp;review</source>
        <translation>Zusammenführung &amp;prüfen</translation>
    </message>
    <message>
        <source>Su&amp;ggest offset</source>
        <translation>Versatz vor&amp;schlagen</translation>
    </message>
    <message>
        <source>Leave &amp;merge mode</source>
        <translation>Zusammenführung &amp;beenden</translation>
    </message>
    <message>
        <source>&amp;Retime...</source>
        <translation>&amp;Zeiten ändern...</translation>
    </message>
    <message>
        <source>&amp;Move...</source>
        <translation>&amp;Verschieben...</translation>
    </message>
    <message>
        <source>&amp;Force...</source>
        <translation>E&amp;rzwingen...</translation>
    </message>
    <message>
        <source>&amp;Ends...</source>
        <translation>&amp;Enden...</translation>
    </message>
    <message>
        <source>&amp;Cut...</source>
        <translation>&amp;Herausnehmen...</translation>
    </message>
    <message>
        <source>&amp;Keep...</source>
        <translation>&amp;Behalten...</translation>
    </message>
    <message>
        <source>&amp;Sort...</source>
        <translation>&amp;Sortieren...</translation>
    </message>
    <message>
        <source>&amp;Join...</source>
        <translation>&amp;Anfügen...</translation>
    </message>
    <message>
        <source>F&amp;ix...</source>
        <translation>Re&amp;parieren...</translation>
    </message>
    <message>
        <source>Sal&amp;vage...</source>
        <translation>Re&amp;tten...</translation>
    </message>
    <message>
        <source>Save steps as reci&amp;pe...</source>
        <translation>S&amp;chritte als Rezept speichern...</translation>
    </message>
    <message>
        <source>R&amp;un recipe...</source>
        <translation>Rezept a&amp;usführen...</translation>
    </message>
    <message>
        <source>Compare &amp;with file...</source>
        <translation>&amp;Mit Datei vergleichen...</translation>
    </message>
    <message>
        <source>&amp;Report again</source>
        <translation>&amp;Bericht erneut</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
    <message>
        <source>&amp;About Quillmark</source>
        <translation>Über &amp;Quillmark</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Üb&amp;er Qt</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Subtitle picture</source>
        <translation>Bild des Untertitels</translation>
    </message>
    <message>
        <source>Open a SUP file with Ctrl+O, import others with Ctrl+I, or drop one here</source>
        <translation>Öffnen Sie eine SUP-Datei mit Strg+O, importieren Sie andere mit Strg+I oder ziehen Sie eine hierher</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Make the edits of this stream again that were not saved</source>
        <translation>Die Änderungen dieses Datenstroms wieder vornehmen, die nicht gespeichert wurden</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Forget the edits that were not saved</source>
        <translation>Die Änderungen vergessen, die nicht gespeichert wurden</translation>
    </message>
    <message>
        <source>Open it again</source>
        <translation>Wieder öffnen</translation>
    </message>
    <message>
        <source>Go on with the stream that was open, as it was left</source>
        <translation>Mit dem zuvor geöffneten Datenstrom weitermachen, so wie er war</translation>
    </message>
    <message>
        <source>Pixel</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Place, pixel code, palette entry and opacity under the pointer</source>
        <translation>Lage, Pixelcode, Paletteneintrag und Deckkraft unter dem Mauszeiger</translation>
    </message>
    <message>
        <source>2nd</source>
        <translation>Zweiter</translation>
    </message>
    <message>
        <source>code %1 (%2), entry %3, opacity %4</source>
        <translation>Code %1 (%2), Eintrag %3, Deckkraft %4</translation>
    </message>
    <message>
        <source>No subtitle is shown</source>
        <translation>Kein Untertitel wird gezeigt</translation>
    </message>
    <message>
        <source>The subtitle cannot be shown</source>
        <translation>Der Untertitel kann nicht gezeigt werden</translation>
    </message>
    <message>
        <source>Subtitle %1, start %2, duration %3 seconds</source>
        <translation>Untertitel %1, Start %2, Dauer %3 Sekunden</translation>
    </message>
    <message>
        <source>SUP file</source>
        <translation>SUP-Datei</translation>
    </message>
    <message>
        <source>Path of the loaded subtitle stream</source>
        <translation>Pfad des geladenen Untertitel-Datenstroms</translation>
    </message>
    <message>
        <source>Load SUP</source>
        <translation>SUP laden</translation>
    </message>
    <message>
        <source>Load a subtitle stream, or drop one on the window (Ctrl+O)</source>
        <translation>Einen Untertitel-Datenstrom laden, oder ziehen Sie einen auf das Fenster (Strg+O)</translation>
    </message>
    <message>
        <source>Save SUP</source>
        <translation>SUP speichern</translation>
    </message>
    <message>
        <source>Save the stream with the colours and opacities set (Ctrl+S)</source>
        <translation>Den Datenstrom mit den gesetzten Farben und der gesetzten Deckkraft speichern (Strg+S)</translation>
    </message>
    <message>
        <source>Read the palette from an IFO, PAL or RGB file</source>
        <translation>Die Palette aus einer IFO-, PAL- oder RGB-Datei lesen</translation>
    </message>
    <message>
        <source>Save Palette</source>
        <translation>Palette speichern</translation>
    </message>
    <message>
        <source>Write the palette as a PAL or RGB file</source>
        <translation>Die Palette als PAL- oder RGB-Datei schreiben</translation>
    </message>
    <message>
        <source>Sup File:</source>
        <translation>SUP-Datei:</translation>
    </message>
    <message>
        <source>Subtitle number</source>
        <translation>Nummer des Untertitels</translation>
    </message>
    <message>
        <source>Number of the subtitle shown; 0: none, ?: it cannot be shown</source>
        <translation>Nummer des gezeigten Untertitels; 0: keiner, ?: er kann nicht gezeigt werden</translation>
    </message>
    <message>
        <source>Prev</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Previous subtitle (PageUp, Alt+Left)</source>
        <translation>Voriger Untertitel (Bild auf, Alt+Links)</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Next subtitle (PageDown, Alt+Right)</source>
        <translation>Nächster Untertitel (Bild ab, Alt+Rechts)</translation>
    </message>
    <message>
        <source>GoTo</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>Jump to a subtitle by its number (Ctrl+G)</source>
        <translation>Zu einem Untertitel mit seiner Nummer springen (Strg+G)</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Show the subtitle as the stream has it again (F5)</source>
        <translation>Den Untertitel wieder so zeigen, wie er im Datenstrom steht (F5)</translation>
    </message>
    <message>
        <source>SavePics</source>
        <translation>Bilder sichern</translation>
    </message>
    <message>
        <source>Write every subtitle shown as a PNG picture, with a line in the list for authoring</source>
        <translation>Jeden gezeigten Untertitel als PNG-Bild schreiben, mit einer Zeile in der Liste für das Authoring</translation>
    </message>
    <message>
        <source>Start time</source>
        <translation>Startzeit</translation>
    </message>
    <message>
        <source>Start as hours:minutes:seconds.hundredths</source>
        <translation>Start als Stunden:Minuten:Sekunden.Hundertstel</translation>
    </message>
    <message>
        <source>Duration in seconds</source>
        <translation>Dauer in Sekunden</translation>
    </message>
    <message>
        <source>Duration in seconds; ??? when the subtitle has no end</source>
        <translation>Dauer in Sekunden; ??? wenn der Untertitel kein Ende hat</translation>
    </message>
    <message>
        <source>X position</source>
        <translation>X-Position</translation>
    </message>
    <message>
        <source>Left edge in pixels</source>
        <translation>Linke Kante in Pixeln</translation>
    </message>
    <message>
        <source>Y position</source>
        <translation>Y-Position</translation>
    </message>
    <message>
        <source>Top edge in pixels</source>
        <translation>Obere Kante in Pixeln</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Width in pixels</source>
        <translation>Breite in Pixeln</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Height in pixels</source>
        <translation>Höhe in Pixeln</translation>
    </message>
    <message>
        <source>SubTitle #</source>
        <translation>Untertitel #</translation>
    </message>
    <message>
        <source>StartTime</source>
        <translation>Startzeit</translation>
    </message>
    <message>
        <source>Duration (sec)</source>
        <translation>Dauer (Sek.)</translation>
    </message>
    <message>
        <source>Position (X,Y)</source>
        <translation>Position (X,Y)</translation>
    </message>
    <message>
        <source>Size (W,H)</source>
        <translation>Größe (B,H)</translation>
    </message>
    <message>
        <source>Colour of the %1</source>
        <translation>Farbe: %1</translation>
    </message>
    <message>
        <source>Palette entry of the %1 (pixel code %2)</source>
        <translation>Paletteneintrag: %1 (Pixelcode %2)</translation>
    </message>
    <message>
        <source>Opacity of the %1</source>
        <translation>Deckkraft: %1</translation>
    </message>
    <message>
        <source>Opacity of the %1 (pixel code %2): 0 invisible, F opaque</source>
        <translation>Deckkraft: %1 (Pixelcode %2): 0 unsichtbar, F deckend</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>Click color to edit</source>
        <translation>Zum Bearbeiten auf die Farbe klicken</translation>
    </message>
    <message>
        <source>Write the chosen colours and opacities into this subtitle</source>
        <translation>Die gewählten Farben und die gewählte Deckkraft in diesen Untertitel schreiben</translation>
    </message>
    <message>
        <source>Write the chosen colours and opacities into the subtitles selected in the list</source>
        <translation>Die gewählten Farben und die gewählte Deckkraft in die in der Liste ausgewählten Untertitel schreiben</translation>
    </message>
    <message>
        <source>Write the chosen colours and opacities into every subtitle</source>
        <translation>Die gewählten Farben und die gewählte Deckkraft in jeden Untertitel schreiben</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Checker</source>
        <translation>Schachbrett</translation>
    </message>
    <message>
        <source>Show subtitles over grey squares</source>
        <translation>Untertitel über grauen Quadraten zeigen</translation>
    </message>
    <message>
        <source>Graph. File</source>
        <translation>Grafikdatei</translation>
    </message>
    <message>
        <source>Show subtitles over the picture file named here</source>
        <translation>Untertitel über der hier genannten Bilddatei zeigen</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Show subtitles over one colour, that of the square</source>
        <translation>Untertitel über einer Farbe zeigen, der des Quadrats</translation>
    </message>
    <message>
        <source>Click to pick the background colour</source>
        <translation>Klicken, um die Hintergrundfarbe auszuwählen</translation>
    </message>
    <message>
        <source>Background picture file</source>
        <translation>Bilddatei des Hintergrunds</translation>
    </message>
    <message>
        <source>Path of the background picture (BMP, GIF, JPEG or PNG)</source>
        <translation>Pfad des Hintergrundbilds (BMP, GIF, JPEG oder PNG)</translation>
    </message>
    <message>
        <source>Load Background graphic form file</source>
        <translation>Hintergrundbild aus Datei laden</translation>
    </message>
    <message>
        <source>Choose the background picture file</source>
        <translation>Die Bilddatei des Hintergrunds auswählen</translation>
    </message>
    <message>
        <source>Frame of 525-line (NTSC) discs</source>
        <translation>Bildfläche von Discs mit 525 Zeilen (NTSC)</translation>
    </message>
    <message>
        <source>Frame of 625-line (PAL) discs</source>
        <translation>Bildfläche von Discs mit 625 Zeilen (PAL)</translation>
    </message>
    <message>
        <source>Load/Merge secondary SUP</source>
        <translation>2. SUP laden/zusammenführen</translation>
    </message>
    <message>
        <source>Load a second stream and lay it over the first</source>
        <translation>Einen zweiten Datenstrom laden und über den ersten legen</translation>
    </message>
    <message>
        <source>Save merged (prim. + sec.) SUP</source>
        <translation>SUP (1. + 2.) speichern</translation>
    </message>
    <message>
        <source>Write both streams as one, encoded anew</source>
        <translation>Beide Datenströme als einen schreiben, neu kodiert</translation>
    </message>
    <message>
        <source>List or merge review</source>
        <translation>Liste oder Prüfung der Zusammenführung</translation>
    </message>
    <message>
        <source>Merge review</source>
        <translation>Zusammenführung</translation>
    </message>
    <message>
        <source>Loupe</source>
        <translation>Lupe</translation>
    </message>
    <message>
        <source>no display to open a window on; start it in a desktop session, or set DISPLAY</source>
        <translation>keine Anzeige, auf der ein Fenster geöffnet werden kann; starten Sie es in einer Desktop-Sitzung, oder setzen Sie DISPLAY</translation>
    </message>
    <message>
        <source>Usage: quillmark [FILE]
Opens a window to view and edit the DVD subtitles of FILE: a SUP stream, a VobSub pair, a Matroska file,
a program stream or an authoring list. See also quillmark-cli --help.</source>
        <translation>Aufruf: quillmark [DATEI]
Öffnet ein Fenster, um die DVD-Untertitel von DATEI anzusehen und zu bearbeiten: eines SUP-Datenstroms, eines
VobSub-Paars, einer Matroska-Datei, eines Programmstroms oder einer Authoring-Liste. Siehe auch quillmark-cli --help.</translation>
    </message>
    <message>
        <source>as 1st</source>
        <translation>wie 1.</translation>
    </message>
    <message>
        <source>As the first stream has it</source>
        <translation>Wie im ersten Datenstrom</translation>
    </message>
    <message>
        <source>Code that the second stream&apos;s %1 becomes</source>
        <translation>Code, zu dem im zweiten Datenstrom wird: %1</translation>
    </message>
    <message>
        <source>Palette entry of the result&apos;s %1</source>
        <translation>Paletteneintrag im Ergebnis: %1</translation>
    </message>
    <message>
        <source>Opacity of the result&apos;s %1</source>
        <translation>Deckkraft im Ergebnis: %1</translation>
    </message>
    <message>
        <source>2nd becomes</source>
        <translation>2. wird zu</translation>
    </message>
    <message>
        <source>De&amp;fault</source>
        <translation>&amp;Standard</translation>
    </message>
    <message>
        <source>The second stream&apos;s codes stay, in the colours and opacities of the first stream</source>
        <translation>Die Codes des zweiten Datenstroms bleiben, in den Farben und der Deckkraft des ersten Datenstroms</translation>
    </message>
    <message>
        <source>And %1 more</source>
        <translation>Und %1 weitere</translation>
    </message>
    <message>
        <source>Number of the first stream&apos;s subtitle</source>
        <translation>Nummer des Untertitels im ersten Datenstrom</translation>
    </message>
    <message>
        <source>2nd #</source>
        <translation>2. #</translation>
    </message>
    <message>
        <source>Number of the second stream&apos;s subtitle</source>
        <translation>Nummer des Untertitels im zweiten Datenstrom</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>The merged picture</source>
        <translation>Das zusammengeführte Bild</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>Milliseconds that both are shown together</source>
        <translation>Millisekunden, die beide gleichzeitig gezeigt werden</translation>
    </message>
    <message>
        <source>What there is to know</source>
        <translation>Was dazu zu sagen ist</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Length of the unit</source>
        <translation>Länge der Einheit</translation>
    </message>
    <message>
        <source>Covered</source>
        <translation>Verdeckt</translation>
    </message>
    <message>
        <source>Pixels of the second picture that cover the first one</source>
        <translation>Pixel des zweiten Bilds, die das erste verdecken</translation>
    </message>
    <message>
        <source>Clipped</source>
        <translation>Abgeschnitten</translation>
    </message>
    <message>
        <source>Pixels of both pictures that are lost</source>
        <translation>Pixel beider Bilder, die verloren gehen</translation>
    </message>
    <message>
        <source>Recoloured</source>
        <translation>Umgefärbt</translation>
    </message>
    <message>
        <source>Pixels that get another colour</source>
        <translation>Pixel, die eine andere Farbe bekommen</translation>
    </message>
    <message>
        <source>When the packet is shown</source>
        <translation>Wann das Paket gezeigt wird</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>How long the packet is shown, in seconds</source>
        <translation>Wie lange das Paket gezeigt wird, in Sekunden</translation>
    </message>
    <message>
        <source>Subtitles %1 and %2, %3 ms together</source>
        <translation>Untertitel %1 und %2, %3 ms gleichzeitig</translation>
    </message>
    <message>
        <source>Subtitle %1 of the first stream alone, %2 s</source>
        <translation>Untertitel %1 des ersten Datenstroms allein, %2 s</translation>
    </message>
    <message>
        <source>Subtitle %1 of the second stream alone, %2 s</source>
        <translation>Untertitel %1 des zweiten Datenstroms allein, %2 s</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>no problems</source>
        <translation>keine Probleme</translation>
    </message>
    <message>
        <source>Palette entry %1</source>
        <translation>Paletteneintrag %1</translation>
    </message>
    <message>
        <source>%1 / %2 s</source>
        <translation>%1 / %2 s</translation>
    </message>
    <message>
        <source>As a player shows it</source>
        <translation>Wie ein Player es zeigt</translation>
    </message>
    <message>
        <source>Time after the subtitle&apos;s start in milliseconds</source>
        <translation>Zeit nach dem Start des Untertitels in Millisekunden</translation>
    </message>
    <message>
        <source>When after the subtitle&apos;s start the picture is shown; Space plays</source>
        <translation>Wann nach dem Start des Untertitels das Bild gezeigt wird; die Leertaste spielt ab</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Not of a merged subtitle: it is one picture from its start to its stop, the one shown</source>
        <translation>Nicht bei einem zusammengeführten Untertitel: er ist vom Start bis zum Ende ein Bild, das gezeigte</translation>
    </message>
    <message>
        <source>Carry out all control sequences at their times: fades, moves, changes of colour</source>
        <translation>Alle Steuersequenzen zu ihren Zeiten ausführen: Blenden, Bewegungen, Farbwechsel</translation>
    </message>
    <message>
        <source>Stop at this moment (Ctrl+P)</source>
        <translation>In diesem Augenblick anhalten (Strg+P)</translation>
    </message>
    <message>
        <source>Show the subtitle in its own time, as a player does (Ctrl+P)</source>
        <translation>Den Untertitel in seiner eigenen Zeit zeigen, wie ein Player es tut (Strg+P)</translation>
    </message>
    <message>
        <source>Chain</source>
        <translation>Kette</translation>
    </message>
    <message>
        <source>What it is</source>
        <translation>Was sie ist</translation>
    </message>
    <message>
        <source>Programs</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Cells</source>
        <translation>Zellen</translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>%1, no picture</source>
        <translation>%1, kein Bild</translation>
    </message>
    <message>
        <source>Palettes of a title</source>
        <translation>Paletten eines Titels</translation>
    </message>
    <message>
        <source>Program &amp;chains of %1</source>
        <translation>&amp;Programmketten von %1</translation>
    </message>
    <message>
        <source>The current subtitle in the palette of the chosen chain</source>
        <translation>Der aktuelle Untertitel in der Palette der gewählten Kette</translation>
    </message>
    <message>
        <source>&amp;Use this palette</source>
        <translation>Diese Palette &amp;verwenden</translation>
    </message>
    <message>
        <source>Program chains of %1</source>
        <translation>Programmketten von %1</translation>
    </message>
    <message>
        <source>A journal of unsaved edits of this stream is damaged and was put aside: %1</source>
        <translation>Ein Journal ungespeicherter Änderungen dieses Datenstroms ist beschädigt und wurde beiseitegelegt: %1</translation>
    </message>
    <message>
        <source>Unsaved edits cannot be kept for the case of a crash: %1</source>
        <translation>Ungespeicherte Änderungen können für den Fall eines Absturzes nicht aufbewahrt werden: %1</translation>
    </message>
    <message>
        <source>Undo what you changed since then to restore them.</source>
        <translation>Machen Sie rückgängig, was Sie seitdem geändert haben, um sie wiederherzustellen.</translation>
    </message>
    <message>
        <source>The unsaved edits cannot be restored (%1) and were put aside: %2</source>
        <translation>Die ungespeicherten Änderungen können nicht wiederhergestellt werden (%1) und wurden beiseitegelegt: %2</translation>
    </message>
    <message>
        <source>%1 and more</source>
        <translation>%1 und weitere</translation>
    </message>
    <message>
        <source>%1 packets</source>
        <translation>%1 Pakete</translation>
    </message>
    <message>
        <source>No second stream is loaded</source>
        <translation>Kein zweiter Datenstrom ist geladen</translation>
    </message>
    <message>
        <source>%1, offset %2, split: %3</source>
        <translation>%1, Versatz %2, geteilt: %3</translation>
    </message>
    <message>
        <source>%1, offset %2: %3</source>
        <translation>%1, Versatz %2: %3</translation>
    </message>
    <message>
        <source>Looking through the merge...</source>
        <translation>Die Zusammenführung wird durchgesehen...</translation>
    </message>
    <message>
        <source>Left out: none</source>
        <translation>Weggelassen: keine</translation>
    </message>
    <message numerus="yes">
        <source>Left out: %1 (%n subtitle that no packet shows)</source>
        <comment>Left out: %1 (%n subtitles that no packet shows)</comment>
        <translation>
            <numerusform>Weggelassen: %1 (%n Untertitel, den kein Paket zeigt)</numerusform>
            <numerusform>Weggelassen: %1 (%n Untertitel, die kein Paket zeigt)</numerusform>
        </translation>
    </message>
    <message>
        <source>Reading the times</source>
        <translation>Zeiten werden gelesen</translation>
    </message>
    <message>
        <source>Looked at %1 of %2</source>
        <translation>%1 von %2 angesehen</translation>
    </message>
    <message>
        <source>No problems</source>
        <translation>Keine Probleme</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenführung</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Weggelassen</translation>
    </message>
    <message>
        <source>Offset of the second stream in lines</source>
        <translation>Versatz des zweiten Datenstroms in Zeilen</translation>
    </message>
    <message>
        <source>Lines that the second stream&apos;s subtitles are moved down; less than 0: up</source>
        <translation>Zeilen, um die die Untertitel des zweiten Datenstroms nach unten verschoben werden; unter 0: nach oben</translation>
    </message>
    <message>
        <source>Move the second stream&apos;s subtitles up and down</source>
        <translation>Die Untertitel des zweiten Datenstroms nach oben und unten verschieben</translation>
    </message>
    <message>
        <source>Su&amp;ggest</source>
        <translation>Vorschla&amp;gen</translation>
    </message>
    <message>
        <source>Find the offset at which the fewest pixels of the whole merge are covered or clipped, and take it</source>
        <translation>Den Versatz finden und nehmen, bei dem in der ganzen Zusammenführung die wenigsten Pixel verdeckt oder abgeschnitten werden</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
    <message>
        <source>Give the second stream&apos;s pixel codes others, and the result its own colours</source>
        <translation>Den Pixelcodes des zweiten Datenstroms andere geben und dem Ergebnis eigene Farben</translation>
    </message>
    <message>
        <source>Codes and colours of the result</source>
        <translation>Codes und Farben des Ergebnisses</translation>
    </message>
    <message>
        <source>Offset</source>
        <translation>Versatz</translation>
    </message>
    <message>
        <source>Pairs</source>
        <translation>Paare</translation>
    </message>
    <message>
        <source>A packet for each of the first stream&apos;s subtitles, with the second stream&apos;s one over it that is shown longest at the same time</source>
        <translation>Ein Paket für jeden Untertitel des ersten Datenstroms, darüber der des zweiten, der am längsten gleichzeitig gezeigt wird</translation>
    </message>
    <message>
        <source>Spl&amp;it</source>
        <translation>Ge&amp;teilt</translation>
    </message>
    <message>
        <source>Packets for whatever is shown at a time: the first stream&apos;s subtitle alone, both, or the second stream&apos;s alone, each until its own end</source>
        <translation>Pakete für das, was jeweils gezeigt wird: der Untertitel des ersten Datenstroms allein, beide oder der des zweiten allein, jeder bis zu seinem eigenen Ende</translation>
    </message>
    <message>
        <source>Gaps to close in milliseconds</source>
        <translation>Zu schließende Lücken in Millisekunden</translation>
    </message>
    <message>
        <source>Where a split merge shows nothing for less than this, the packet before is shown longer</source>
        <translation>Wo eine geteilte Zusammenführung kürzer als dies nichts zeigt, wird das Paket davor länger gezeigt</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source>Close gaps &amp;under</source>
        <translation>Lücken schließen u&amp;nter</translation>
    </message>
    <message>
        <source>Filter of the review</source>
        <translation>Filter der Prüfung</translation>
    </message>
    <message>
        <source>Filter: 12, 100-200, 1:02, words</source>
        <translation>Filter: 12, 100-200, 1:02, Wörter</translation>
    </message>
    <message>
        <source>Show the first stream&apos;s subtitles of these numbers (12, 100-200), the one shown at a time (1:02), or those with a problem in these words</source>
        <translation>Die Untertitel des ersten Datenstroms mit diesen Nummern (12, 100-200), den zu einer Zeit gezeigten (1:02) oder die mit einem Problem in diesen Wörtern zeigen</translation>
    </message>
    <message>
        <source>Kind of problem</source>
        <translation>Art des Problems</translation>
    </message>
    <message>
        <source>Show what has this problem alone</source>
        <translation>Nur zeigen, was dieses Problem hat</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>With problems</source>
        <translation>Mit Problemen</translation>
    </message>
    <message>
        <source>Merged subtitles</source>
        <translation>Zusammengeführte Untertitel</translation>
    </message>
    <message>
        <source>What there is to know of the merged subtitle</source>
        <translation>Was zum zusammengeführten Untertitel zu sagen ist</translation>
    </message>
    <message>
        <source>What there is to know of the current row</source>
        <translation>Was zur aktuellen Zeile zu sagen ist</translation>
    </message>
    <message>
        <source>S&amp;ort by</source>
        <translation>S&amp;ortieren nach</translation>
    </message>
    <message>
        <source>not coded</source>
        <translation>nicht kodiert</translation>
    </message>
    <message>
        <source>Preview, not set</source>
        <translation>Vorschau, nicht gesetzt</translation>
    </message>
    <message>
        <source>Animated</source>
        <translation>Animiert</translation>
    </message>
    <message>
        <source>moved in time, 000 other pixels</source>
        <translation>zeitlich verschoben, 000 andere Pixel</translation>
    </message>
    <message>
        <source>still shown when the next starts</source>
        <translation>noch gezeigt, wenn der nächste beginnt</translation>
    </message>
    <message>
        <source>Invalid</source>
        <translation>Ungültige</translation>
    </message>
    <message>
        <source>Without end</source>
        <translation>Ohne Ende</translation>
    </message>
    <message>
        <source>Overlapping</source>
        <translation>Überlappende</translation>
    </message>
    <message>
        <source>Other colours than the first</source>
        <translation>Andere Farben als der erste</translation>
    </message>
    <message>
        <source>Selected</source>
        <translation>Ausgewählte</translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation>&amp;Nummer</translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation>&amp;Bild</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>&amp;End</source>
        <translation>&amp;Ende</translation>
    </message>
    <message>
        <source>&amp;Duration</source>
        <translation>&amp;Dauer</translation>
    </message>
    <message>
        <source>P&amp;lace</source>
        <translation>&amp;Lage</translation>
    </message>
    <message>
        <source>S&amp;ize</source>
        <translation>&amp;Größe</translation>
    </message>
    <message>
        <source>&amp;Forced</source>
        <translation>Er&amp;zwungen</translation>
    </message>
    <message>
        <source>&amp;Animated</source>
        <translation>&amp;Animiert</translation>
    </message>
    <message>
        <source>P&amp;roblems</source>
        <translation>P&amp;robleme</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Show the subtitles of these numbers (12, 100-200), the one shown at a time (1:02), or those with a problem in these words</source>
        <translation>Die Untertitel mit diesen Nummern (12, 100-200), den zu einer Zeit gezeigten (1:02) oder die mit einem Problem in diesen Wörtern zeigen</translation>
    </message>
    <message>
        <source>Kind of subtitles</source>
        <translation>Art der Untertitel</translation>
    </message>
    <message>
        <source>Show the subtitles of this kind alone</source>
        <translation>Nur die Untertitel dieser Art zeigen</translation>
    </message>
    <message>
        <source>Problems of the subtitle</source>
        <translation>Probleme des Untertitels</translation>
    </message>
    <message>
        <source>What is wrong with the current subtitle, and at which byte of the file</source>
        <translation>Was am aktuellen Untertitel falsch ist, und bei welchem Byte der Datei</translation>
    </message>
    <message>
        <source>Looking for problems...</source>
        <translation>Probleme werden gesucht...</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>Compared</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Place: left and top edge in pixels</source>
        <translation>Lage: linke und obere Kante in Pixeln</translation>
    </message>
    <message>
        <source>Size: width and height in pixels</source>
        <translation>Größe: Breite und Höhe in Pixeln</translation>
    </message>
    <message>
        <source>Colours and opacities of background, pattern, emphasis 1 and 2</source>
        <translation>Farben und Deckkraft von Hintergrund, Muster, Betonung 1 und 2</translation>
    </message>
    <message>
        <source>Forced: shown even where subtitles are off</source>
        <translation>Erzwungen: auch gezeigt, wenn Untertitel ausgeschaltet sind</translation>
    </message>
    <message>
        <source>Animated: fades, moves or changes its colours on a player</source>
        <translation>Animiert: blendet, bewegt sich oder wechselt die Farben auf einem Player</translation>
    </message>
    <message>
        <source>What differs from the file compared with</source>
        <translation>Was sich von der verglichenen Datei unterscheidet</translation>
    </message>
    <message>
        <source>forced</source>
        <translation>erzwungen</translation>
    </message>
    <message>
        <source>animated</source>
        <translation>animiert</translation>
    </message>
    <message>
        <source>damage</source>
        <translation>Schaden</translation>
    </message>
    <message>
        <source>%1, compared: %2</source>
        <translation>%1, verglichen: %2</translation>
    </message>
    <message>
        <source>%1: %2, %3, opacity %4</source>
        <translation>%1: %2, %3, Deckkraft %4</translation>
    </message>
    <message numerus="yes">
        <source>%1 second</source>
        <comment>%1 seconds</comment>
        <translation>
            <numerusform>%1 Sekunde</numerusform>
            <numerusform>%1 Sekunden</numerusform>
        </translation>
    </message>
    <message>
        <source>one problem</source>
        <translation>ein Problem</translation>
    </message>
    <message>
        <source>two problems</source>
        <translation>zwei Probleme</translation>
    </message>
    <message>
        <source>three problems</source>
        <translation>drei Probleme</translation>
    </message>
    <message>
        <source>four problems</source>
        <translation>vier Probleme</translation>
    </message>
    <message>
        <source>five problems</source>
        <translation>fünf Probleme</translation>
    </message>
    <message>
        <source>six problems</source>
        <translation>sechs Probleme</translation>
    </message>
    <message>
        <source>seven problems</source>
        <translation>sieben Probleme</translation>
    </message>
    <message>
        <source>eight problems</source>
        <translation>acht Probleme</translation>
    </message>
    <message>
        <source>nine problems</source>
        <translation>neun Probleme</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 Probleme</translation>
    </message>
    <message>
        <source>Subtitle %1</source>
        <translation>Untertitel %1</translation>
    </message>
    <message>
        <source>under subtitle %1 of the second stream</source>
        <translation>unter Untertitel %1 des zweiten Datenstroms</translation>
    </message>
    <message>
        <source>Between subtitles %1 and %2</source>
        <translation>Zwischen den Untertiteln %1 und %2</translation>
    </message>
    <message>
        <source>Without a subtitle</source>
        <translation>Ohne Untertitel</translation>
    </message>
    <message>
        <source>Before subtitle 1</source>
        <translation>Vor Untertitel 1</translation>
    </message>
    <message>
        <source>After subtitle %1</source>
        <translation>Nach Untertitel %1</translation>
    </message>
    <message>
        <source>Time of the film</source>
        <translation>Zeit des Films</translation>
    </message>
    <message>
        <source>Second stream, subtitle %1</source>
        <translation>Zweiter Datenstrom, Untertitel %1</translation>
    </message>
    <message>
        <source>overlaps the next one</source>
        <translation>überlappt den nächsten</translation>
    </message>
    <message>
        <source>has a problem</source>
        <translation>hat ein Problem</translation>
    </message>
    <message>
        <source>No subtitles</source>
        <translation>Keine Untertitel</translation>
    </message>
    <message>
        <source>%1 overlapping</source>
        <translation>%1 überlappende</translation>
    </message>
    <message>
        <source>%1 with problems</source>
        <translation>%1 mit Problemen</translation>
    </message>
    <message>
        <source>subtitle %1 at %2</source>
        <translation>Untertitel %1 bei %2</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle would be %1</source>
        <comment>%n subtitles would be %1</comment>
        <translation>
            <numerusform>%n Untertitel würde %1</numerusform>
            <numerusform>%n Untertitel würden %1</numerusform>
        </translation>
    </message>
    <message>
        <source>No subtitle would be left</source>
        <translation>Kein Untertitel bliebe übrig</translation>
    </message>
    <message numerus="yes">
        <source>%n has to be left</source>
        <comment>%n have to be left</comment>
        <translation>
            <numerusform>%n muss unverändert bleiben</numerusform>
            <numerusform>%n müssen unverändert bleiben</numerusform>
        </translation>
    </message>
    <message>
        <source>Subtitle %1 %2</source>
        <translation>Untertitel %1 %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>&amp;How</source>
        <translation>&amp;Wie</translation>
    </message>
    <message numerus="yes">
        <source>&amp;All %n subtitle</source>
        <comment>&amp;All %n subtitles</comment>
        <translation>
            <numerusform>&amp;Alle (%n Untertitel)</numerusform>
            <numerusform>&amp;Alle %n Untertitel</numerusform>
        </translation>
    </message>
    <message>
        <source>Those s&amp;elected in the list: %1</source>
        <translation>In der &amp;Liste ausgewählte: %1</translation>
    </message>
    <message>
        <source>Th&amp;ese:</source>
        <translation>&amp;Diese:</translation>
    </message>
    <message>
        <source>Numbers of the subtitles</source>
        <translation>Nummern der Untertitel</translation>
    </message>
    <message>
        <source>Numbers and ranges: 3,7-9,20-</source>
        <translation>Nummern und Bereiche: 3,7-9,20-</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Then</source>
        <translation>Dann</translation>
    </message>
    <message>
        <source>%1 now</source>
        <translation>%1 jetzt</translation>
    </message>
    <message>
        <source>%1 then</source>
        <translation>%1 dann</translation>
    </message>
    <message>
        <source>The subtitle in the frame</source>
        <translation>Der Untertitel in der Bildfläche</translation>
    </message>
    <message>
        <source>Subtitles that have to be left, and why</source>
        <translation>Untertitel, die unverändert bleiben müssen, und warum</translation>
    </message>
    <message>
        <source>23.976, film on NTSC</source>
        <translation>23,976, Film auf NTSC</translation>
    </message>
    <message>
        <source>24, film</source>
        <translation>24, Film</translation>
    </message>
    <message>
        <source>25, PAL</source>
        <translation>25, PAL</translation>
    </message>
    <message>
        <source>29.97, NTSC</source>
        <translation>29,97, NTSC</translation>
    </message>
    <message>
        <source>ms, later; a negative number is earlier</source>
        <translation>ms später; eine negative Zahl ist früher</translation>
    </message>
    <message>
        <source>Retime</source>
        <translation>Zeiten ändern</translation>
    </message>
    <message>
        <source>Moves or stretches the start times, and the delays with them.</source>
        <translation>Verschiebt oder streckt die Startzeiten und mit ihnen die Dauern.</translation>
    </message>
    <message>
        <source>Ti&amp;med for</source>
        <translation>&amp;Zeiten für</translation>
    </message>
    <message>
        <source>&amp;Wanted for</source>
        <translation>&amp;Gewünscht für</translation>
    </message>
    <message>
        <source>Sca&amp;le</source>
        <translation>Fa&amp;ktor</translation>
    </message>
    <message>
        <source>times, such as 25/24</source>
        <translation>mal, etwa 25/24</translation>
    </message>
    <message>
        <source>&amp;Shift</source>
        <translation>&amp;Versatz</translation>
    </message>
    <message>
        <source>Two &amp;points</source>
        <translation>Zwei &amp;Punkte</translation>
    </message>
    <message>
        <source>number=start time, twice</source>
        <translation>Nummer=Startzeit, zweimal</translation>
    </message>
    <message>
        <source>By a shift</source>
        <translation>Um einen Versatz</translation>
    </message>
    <message>
        <source>From one speed to another</source>
        <translation>Von einer Geschwindigkeit zu einer anderen</translation>
    </message>
    <message>
        <source>By a ratio</source>
        <translation>Um einen Faktor</translation>
    </message>
    <message>
        <source>By the starts of two subtitles</source>
        <translation>Nach den Starts zweier Untertitel</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Moves the pictures within the frame. They are not encoded anew.</source>
        <translation>Verschiebt die Bilder innerhalb der Bildfläche. Sie werden nicht neu kodiert.</translation>
    </message>
    <message>
        <source>&amp;X</source>
        <translation>&amp;X</translation>
    </message>
    <message>
        <source>pixels to the right; negative: to the left</source>
        <translation>Pixel nach rechts; negativ: nach links</translation>
    </message>
    <message>
        <source>&amp;Y</source>
        <translation>&amp;Y</translation>
    </message>
    <message>
        <source>lines down; negative: up</source>
        <translation>Zeilen nach unten; negativ: nach oben</translation>
    </message>
    <message>
        <source>To &amp;line</source>
        <translation>Zur Z&amp;eile</translation>
    </message>
    <message>
        <source>of the bottom edge, from 0</source>
        <translation>der unteren Kante, ab 0</translation>
    </message>
    <message>
        <source>&amp;Frame</source>
        <translation>&amp;Bildfläche</translation>
    </message>
    <message>
        <source>&amp;Clamp: move what would leave the frame as far as it goes</source>
        <translation>Be&amp;grenzen: was die Bildfläche verließe, so weit wie möglich verschieben</translation>
    </message>
    <message>
        <source>By a distance</source>
        <translation>Um eine Strecke</translation>
    </message>
    <message>
        <source>To a line of the frame</source>
        <translation>Zu einer Zeile der Bildfläche</translation>
    </message>
    <message>
        <source>Force</source>
        <translation>Erzwingen</translation>
    </message>
    <message>
        <source>Forced subtitles are shown even while subtitles are switched off.</source>
        <translation>Erzwungene Untertitel werden auch gezeigt, wenn Untertitel ausgeschaltet sind.</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Enden</translation>
    </message>
    <message>
        <source>Gives subtitles ends, and mends those that overlap or come too early.</source>
        <translation>Gibt Untertiteln Enden und berichtigt solche, die überlappen oder zu früh kommen.</translation>
    </message>
    <message>
        <source>&amp;Fill: the next start where there is no end</source>
        <translation>Au&amp;ffüllen: der nächste Start, wo ein Ende fehlt</translation>
    </message>
    <message>
        <source>&amp;No overlap: no end after the next start</source>
        <translation>&amp;Nicht überlappen: kein Ende nach dem nächsten Start</translation>
    </message>
    <message>
        <source>&amp;Gap</source>
        <translation>A&amp;bstand</translation>
    </message>
    <message>
        <source>ms before the next start</source>
        <translation>ms vor dem nächsten Start</translation>
    </message>
    <message>
        <source>&amp;Longest</source>
        <translation>&amp;Höchstens</translation>
    </message>
    <message>
        <source>ms that are filled at most</source>
        <translation>ms, die höchstens aufgefüllt werden</translation>
    </message>
    <message>
        <source>&amp;Shortest</source>
        <translation>&amp;Mindestens</translation>
    </message>
    <message>
        <source>ms for every subtitle</source>
        <translation>ms für jeden Untertitel</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Herausnehmen</translation>
    </message>
    <message>
        <source>Takes the subtitles out of the stream.</source>
        <translation>Nimmt die Untertitel aus dem Datenstrom heraus.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Takes all other subtitles out of the stream.</source>
        <translation>Nimmt alle anderen Untertitel aus dem Datenstrom heraus.</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
    <message>
        <source>Puts the subtitles in the order of their starts.</source>
        <translation>Bringt die Untertitel in die Reihenfolge ihrer Starts.</translation>
    </message>
    <message>
        <source>Join</source>
        <translation>Anfügen</translation>
    </message>
    <message>
        <source>Adds the subtitles of another stream after the last one.</source>
        <translation>Fügt die Untertitel eines anderen Datenstroms nach dem letzten an.</translation>
    </message>
    <message>
        <source>&amp;With</source>
        <translation>&amp;Mit</translation>
    </message>
    <message>
        <source>ms after the last end</source>
        <translation>ms nach dem letzten Ende</translation>
    </message>
    <message>
        <source>&amp;At</source>
        <translation>Z&amp;eitpunkt</translation>
    </message>
    <message>
        <source>its start, such as 1:02:03.5</source>
        <translation>sein Start, etwa 1:02:03.5</translation>
    </message>
    <message>
        <source>After the last end</source>
        <translation>Nach dem letzten Ende</translation>
    </message>
    <message>
        <source>At a time</source>
        <translation>Zu einem Zeitpunkt</translation>
    </message>
    <message>
        <source>Fix</source>
        <translation>Reparieren</translation>
    </message>
    <message>
        <source>Mends what can be mended without encoding a picture again.</source>
        <translation>Behebt, was sich beheben lässt, ohne ein Bild neu zu kodieren.</translation>
    </message>
    <message>
        <source>&amp;Profile</source>
        <translation>&amp;Profil</translation>
    </message>
    <message>
        <source>what this program tells as a problem</source>
        <translation>was dieses Programm als Problem meldet</translation>
    </message>
    <message>
        <source>also what players show wrongly</source>
        <translation>auch, was Player falsch zeigen</translation>
    </message>
    <message>
        <source>Salvage</source>
        <translation>Retten</translation>
    </message>
    <message>
        <source>Keeps the good packets, and drops the damaged ones and what is between.</source>
        <translation>Behält die guten Pakete und verwirft die beschädigten und was dazwischen steht.</translation>
    </message>
    <message>
        <source>Import subtitles</source>
        <translation>Untertitel importieren</translation>
    </message>
    <message>
        <source>&amp;Tracks of %1</source>
        <translation>&amp;Spuren von %1</translation>
    </message>
    <message>
        <source>What was noted in reading</source>
        <translation>Was beim Lesen bemerkt wurde</translation>
    </message>
    <message>
        <source>As Load/Merge secondary SUP does with a file</source>
        <translation>Wie „2. SUP laden/zusammenführen“ es mit einer Datei tut</translation>
    </message>
    <message>
        <source>&amp;Merge with</source>
        <translation>&amp;Zusammenführen mit</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Tracks of %1</source>
        <translation>Spuren von %1</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Spur</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Erster</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Letzter</translation>
    </message>
    <message>
        <source>First picture</source>
        <translation>Erstes Bild</translation>
    </message>
    <message>
        <source>In the file: %1</source>
        <translation>In der Datei: %1</translation>
    </message>
    <message>
        <source>The present palette would stay</source>
        <translation>Die jetzige Palette bliebe</translation>
    </message>
    <message>
        <source>its first picture</source>
        <translation>sein erstes Bild</translation>
    </message>
    <message>
        <source>no other track</source>
        <translation>keine andere Spur</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>Abkhazian</source>
        <translation>Abchasisch</translation>
    </message>
    <message>
        <source>Afar</source>
        <translation>Afar</translation>
    </message>
    <message>
        <source>Afrikaans</source>
        <translation>Afrikaans</translation>
    </message>
    <message>
        <source>Akan</source>
        <translation>Akan</translation>
    </message>
    <message>
        <source>Albanian</source>
        <translation>Albanisch</translation>
    </message>
    <message>
        <source>Amharic</source>
        <translation>Amharisch</translation>
    </message>
    <message>
        <source>Arabic</source>
        <translation>Arabisch</translation>
    </message>
    <message>
        <source>Aragonese</source>
        <translation>Aragonesisch</translation>
    </message>
    <message>
        <source>Armenian</source>
        <translation>Armenisch</translation>
    </message>
    <message>
        <source>Assamese</source>
        <translation>Assamesisch</translation>
    </message>
    <message>
        <source>Avaric</source>
        <translation>Awarisch</translation>
    </message>
    <message>
        <source>Avestan</source>
        <translation>Avestisch</translation>
    </message>
    <message>
        <source>Aymara</source>
        <translation>Aymara</translation>
    </message>
    <message>
        <source>Azerbaijani</source>
        <translation>Aserbaidschanisch</translation>
    </message>
    <message>
        <source>Bambara</source>
        <translation>Bambara</translation>
    </message>
    <message>
        <source>Bangla</source>
        <translation>Bengalisch</translation>
    </message>
    <message>
        <source>Bashkir</source>
        <translation>Baschkirisch</translation>
    </message>
    <message>
        <source>Basque</source>
        <translation>Baskisch</translation>
    </message>
    <message>
        <source>Belarusian</source>
        <translation>Belarussisch</translation>
    </message>
    <message>
        <source>Bislama</source>
        <translation>Bislama</translation>
    </message>
    <message>
        <source>Bosnian</source>
        <translation>Bosnisch</translation>
    </message>
    <message>
        <source>Breton</source>
        <translation>Bretonisch</translation>
    </message>
    <message>
        <source>Bulgarian</source>
        <translation>Bulgarisch</translation>
    </message>
    <message>
        <source>Burmese</source>
        <translation>Birmanisch</translation>
    </message>
    <message>
        <source>Catalan</source>
        <translation>Katalanisch</translation>
    </message>
    <message>
        <source>Chamorro</source>
        <translation>Chamorro</translation>
    </message>
    <message>
        <source>Chechen</source>
        <translation>Tschetschenisch</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>Chinesisch</translation>
    </message>
    <message>
        <source>Church</source>
        <translation>Kirchenslawisch</translation>
    </message>
    <message>
        <source>Chuvash</source>
        <translation>Tschuwaschisch</translation>
    </message>
    <message>
        <source>Cornish</source>
        <translation>Kornisch</translation>
    </message>
    <message>
        <source>Corsican</source>
        <translation>Korsisch</translation>
    </message>
    <message>
        <source>Cree</source>
        <translation>Cree</translation>
    </message>
    <message>
        <source>Croatian</source>
        <translation>Kroatisch</translation>
    </message>
    <message>
        <source>Czech</source>
        <translation>Tschechisch</translation>
    </message>
    <message>
        <source>Danish</source>
        <translation>Dänisch</translation>
    </message>
    <message>
        <source>Divehi</source>
        <translation>Dhivehi</translation>
    </message>
    <message>
        <source>Dutch</source>
        <translation>Niederländisch</translation>
    </message>
    <message>
        <source>Dzongkha</source>
        <translation>Dzongkha</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Englisch</translation>
    </message>
    <message>
        <source>Esperanto</source>
        <translation>Esperanto</translation>
    </message>
    <message>
        <source>Estonian</source>
        <translation>Estnisch</translation>
    </message>
    <message>
        <source>Ewe</source>
        <translation>Ewe</translation>
    </message>
    <message>
        <source>Faroese</source>
        <translation>Färöisch</translation>
    </message>
    <message>
        <source>Fijian</source>
        <translation>Fidschi</translation>
    </message>
    <message>
        <source>Finnish</source>
        <translation>Finnisch</translation>
    </message>
    <message>
        <source>French</source>
        <translation>Französisch</translation>
    </message>
    <message>
        <source>Fulah</source>
        <translation>Ful</translation>
    </message>
    <message>
        <source>Gaelic</source>
        <translation>Gälisch (Schottland)</translation>
    </message>
    <message>
        <source>Galician</source>
        <translation>Galicisch</translation>
    </message>
    <message>
        <source>Ganda</source>
        <translation>Ganda</translation>
    </message>
    <message>
        <source>Georgian</source>
        <translation>Georgisch</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Deutsch</translation>
    </message>
    <message>
        <source>Greek</source>
        <translation>Griechisch</translation>
    </message>
    <message>
        <source>Guarani</source>
        <translation>Guaraní</translation>
    </message>
    <message>
        <source>Gujarati</source>
        <translation>Gujarati</translation>
    </message>
    <message>
        <source>Haitian</source>
        <translation>Haiti-Kreolisch</translation>
    </message>
    <message>
        <source>Hausa</source>
        <translation>Hausa</translation>
    </message>
    <message>
        <source>Hebrew</source>
        <translation>Hebräisch</translation>
    </message>
    <message>
        <source>Herero</source>
        <translation>Herero</translation>
    </message>
    <message>
        <source>Hindi</source>
        <translation>Hindi</translation>
    </message>
    <message>
        <source>Hiri Motu</source>
        <translation>Hiri-Motu</translation>
    </message>
    <message>
        <source>Hungarian</source>
        <translation>Ungarisch</translation>
    </message>
    <message>
        <source>Icelandic</source>
        <translation>Isländisch</translation>
    </message>
    <message>
        <source>Ido</source>
        <translation>Ido</translation>
    </message>
    <message>
        <source>Igbo</source>
        <translation>Igbo</translation>
    </message>
    <message>
        <source>Indonesian</source>
        <translation>Indonesisch</translation>
    </message>
    <message>
        <source>Interlingua</source>
        <translation>Interlingua</translation>
    </message>
    <message>
        <source>Interlingue</source>
        <translation>Interlingue</translation>
    </message>
    <message>
        <source>Inuktitut</source>
        <translation>Inuktitut</translation>
    </message>
    <message>
        <source>Inupiaq</source>
        <translation>Inupiak</translation>
    </message>
    <message>
        <source>Irish</source>
        <translation>Irisch</translation>
    </message>
    <message>
        <source>Italian</source>
        <translation>Italienisch</translation>
    </message>
    <message>
        <source>Japanese</source>
        <translation>Japanisch</translation>
    </message>
    <message>
        <source>Javanese</source>
        <translation>Javanisch</translation>
    </message>
    <message>
        <source>Kalaallisut</source>
        <translation>Grönländisch</translation>
    </message>
    <message>
        <source>Kannada</source>
        <translation>Kannada</translation>
    </message>
    <message>
        <source>Kanuri</source>
        <translation>Kanuri</translation>
    </message>
    <message>
        <source>Kashmiri</source>
        <translation>Kaschmiri</translation>
    </message>
    <message>
        <source>Kazakh</source>
        <translation>Kasachisch</translation>
    </message>
    <message>
        <source>Khmer</source>
        <translation>Khmer</translation>
    </message>
    <message>
        <source>Kikuyu</source>
        <translation>Kikuyu</translation>
    </message>
    <message>
        <source>Kinyarwanda</source>
        <translation>Kinyarwanda</translation>
    </message>
    <message>
        <source>Komi</source>
        <translation>Komi</translation>
    </message>
    <message>
        <source>Kongo</source>
        <translation>Kongo</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>Koreanisch</translation>
    </message>
    <message>
        <source>Kuanyama</source>
        <translation>Kwanyama</translation>
    </message>
    <message>
        <source>Kurdish</source>
        <translation>Kurdisch</translation>
    </message>
    <message>
        <source>Kyrgyz</source>
        <translation>Kirgisisch</translation>
    </message>
    <message>
        <source>Lao</source>
        <translation>Laotisch</translation>
    </message>
    <message>
        <source>Latin</source>
        <translation>Latein</translation>
    </message>
    <message>
        <source>Latvian</source>
        <translation>Lettisch</translation>
    </message>
    <message>
        <source>Limburgish</source>
        <translation>Limburgisch</translation>
    </message>
    <message>
        <source>Lingala</source>
        <translation>Lingala</translation>
    </message>
    <message>
        <source>Lithuanian</source>
        <translation>Litauisch</translation>
    </message>
    <message>
        <source>Luba Katanga</source>
        <translation>Luba-Katanga</translation>
    </message>
    <message>
        <source>Luxembourgish</source>
        <translation>Luxemburgisch</translation>
    </message>
    <message>
        <source>Macedonian</source>
        <translation>Mazedonisch</translation>
    </message>
    <message>
        <source>Malagasy</source>
        <translation>Malagassisch</translation>
    </message>
    <message>
        <source>Malayalam</source>
        <translation>Malayalam</translation>
    </message>
    <message>
        <source>Malay</source>
        <translation>Malaiisch</translation>
    </message>
    <message>
        <source>Maltese</source>
        <translation>Maltesisch</translation>
    </message>
    <message>
        <source>Manx</source>
        <translation>Manx</translation>
    </message>
    <message>
        <source>Maori</source>
        <translation>Maori</translation>
    </message>
    <message>
        <source>Marathi</source>
        <translation>Marathi</translation>
    </message>
    <message>
        <source>Marshallese</source>
        <translation>Marschallesisch</translation>
    </message>
    <message>
        <source>Mongolian</source>
        <translation>Mongolisch</translation>
    </message>
    <message>
        <source>Nauru</source>
        <translation>Nauruisch</translation>
    </message>
    <message>
        <source>Navajo</source>
        <translation>Navajo</translation>
    </message>
    <message>
        <source>Ndonga</source>
        <translation>Ndonga</translation>
    </message>
    <message>
        <source>Nepali</source>
        <translation>Nepalesisch</translation>
    </message>
    <message>
        <source>Northern Sami</source>
        <translation>Nordsamisch</translation>
    </message>
    <message>
        <source>North Ndebele</source>
        <translation>Nord-Ndebele</translation>
    </message>
    <message>
        <source>Norwegian Bokmal</source>
        <translation>Norwegisch (Bokmål)</translation>
    </message>
    <message>
        <source>Norwegian Nynorsk</source>
        <translation>Norwegisch (Nynorsk)</translation>
    </message>
    <message>
        <source>Nyanja</source>
        <translation>Nyanja</translation>
    </message>
    <message>
        <source>Occitan</source>
        <translation>Okzitanisch</translation>
    </message>
    <message>
        <source>Odia</source>
        <translation>Oriya</translation>
    </message>
    <message>
        <source>Ojibwa</source>
        <translation>Ojibwa</translation>
    </message>
    <message>
        <source>Oromo</source>
        <translation>Oromo</translation>
    </message>
    <message>
        <source>Ossetic</source>
        <translation>Ossetisch</translation>
    </message>
    <message>
        <source>Pali</source>
        <translation>Pali</translation>
    </message>
    <message>
        <source>Pashto</source>
        <translation>Paschtu</translation>
    </message>
    <message>
        <source>Persian</source>
        <translation>Persisch</translation>
    </message>
    <message>
        <source>Polish</source>
        <translation>Polnisch</translation>
    </message>
    <message>
        <source>Portuguese</source>
        <translation>Portugiesisch</translation>
    </message>
    <message>
        <source>Punjabi</source>
        <translation>Punjabi</translation>
    </message>
    <message>
        <source>Quechua</source>
        <translation>Quechua</translation>
    </message>
    <message>
        <source>Romanian</source>
        <translation>Rumänisch</translation>
    </message>
    <message>
        <source>Romansh</source>
        <translation>Rätoromanisch</translation>
    </message>
    <message>
        <source>Rundi</source>
        <translation>Rundi</translation>
    </message>
    <message>
        <source>Russian</source>
        <translation>Russisch</translation>
    </message>
    <message>
        <source>Samoan</source>
        <translation>Samoanisch</translation>
    </message>
    <message>
        <source>Sango</source>
        <translation>Sango</translation>
    </message>
    <message>
        <source>Sanskrit</source>
        <translation>Sanskrit</translation>
    </message>
    <message>
        <source>Sardinian</source>
        <translation>Sardisch</translation>
    </message>
    <message>
        <source>Serbian</source>
        <translation>Serbisch</translation>
    </message>
    <message>
        <source>Shona</source>
        <translation>Shona</translation>
    </message>
    <message>
        <source>Sichuan Yi</source>
        <translation>Yi</translation>
    </message>
    <message>
        <source>Sindhi</source>
        <translation>Sindhi</translation>
    </message>
    <message>
        <source>Sinhala</source>
        <translation>Singhalesisch</translation>
    </message>
    <message>
        <source>Slovak</source>
        <translation>Slowakisch</translation>
    </message>
    <message>
        <source>Slovenian</source>
        <translation>Slowenisch</translation>
    </message>
    <message>
        <source>Somali</source>
        <translation>Somali</translation>
    </message>
    <message>
        <source>Southern Sotho</source>
        <translation>Süd-Sotho</translation>
    </message>
    <message>
        <source>South Ndebele</source>
        <translation>Süd-Ndebele</translation>
    </message>
    <message>
        <source>Spanish</source>
        <translation>Spanisch</translation>
    </message>
    <message>
        <source>Sundanese</source>
        <translation>Sundanesisch</translation>
    </message>
    <message>
        <source>Swahili</source>
        <translation>Suaheli</translation>
    </message>
    <message>
        <source>Swati</source>
        <translation>Swazi</translation>
    </message>
    <message>
        <source>Swedish</source>
        <translation>Schwedisch</translation>
    </message>
    <message>
        <source>Tahitian</source>
        <translation>Tahitisch</translation>
    </message>
    <message>
        <source>Tajik</source>
        <translation>Tadschikisch</translation>
    </message>
    <message>
        <source>Tamil</source>
        <translation>Tamil</translation>
    </message>
    <message>
        <source>Tatar</source>
        <translation>Tatarisch</translation>
    </message>
    <message>
        <source>Telugu</source>
        <translation>Telugu</translation>
    </message>
    <message>
        <source>Thai</source>
        <translation>Thailändisch</translation>
    </message>
    <message>
        <source>Tibetan</source>
        <translation>Tibetisch</translation>
    </message>
    <message>
        <source>Tigrinya</source>
        <translation>Tigrinya</translation>
    </message>
    <message>
        <source>Tongan</source>
        <translation>Tongaisch</translation>
    </message>
    <message>
        <source>Tsonga</source>
        <translation>Tsonga</translation>
    </message>
    <message>
        <source>Tswana</source>
        <translation>Tswana</translation>
    </message>
    <message>
        <source>Turkish</source>
        <translation>Türkisch</translation>
    </message>
    <message>
        <source>Turkmen</source>
        <translation>Turkmenisch</translation>
    </message>
    <message>
        <source>Ukrainian</source>
        <translation>Ukrainisch</translation>
    </message>
    <message>
        <source>Urdu</source>
        <translation>Urdu</translation>
    </message>
    <message>
        <source>Uyghur</source>
        <translation>Uigurisch</translation>
    </message>
    <message>
        <source>Uzbek</source>
        <translation>Usbekisch</translation>
    </message>
    <message>
        <source>Venda</source>
        <translation>Venda</translation>
    </message>
    <message>
        <source>Vietnamese</source>
        <translation>Vietnamesisch</translation>
    </message>
    <message>
        <source>Volapuk</source>
        <translation>Volapük</translation>
    </message>
    <message>
        <source>Walloon</source>
        <translation>Wallonisch</translation>
    </message>
    <message>
        <source>Welsh</source>
        <translation>Walisisch</translation>
    </message>
    <message>
        <source>Western Frisian</source>
        <translation>Westfriesisch</translation>
    </message>
    <message>
        <source>Wolof</source>
        <translation>Wolof</translation>
    </message>
    <message>
        <source>Xhosa</source>
        <translation>Xhosa</translation>
    </message>
    <message>
        <source>Yiddish</source>
        <translation>Jiddisch</translation>
    </message>
    <message>
        <source>Yoruba</source>
        <translation>Yoruba</translation>
    </message>
    <message>
        <source>Zhuang</source>
        <translation>Zhuang</translation>
    </message>
    <message>
        <source>Zulu</source>
        <translation>Zulu</translation>
    </message>
    <message numerus="yes">
        <source>One edit of this stream was not saved (%2).</source>
        <comment>%1 edits of this stream were not saved (%2).</comment>
        <translation>
            <numerusform>Eine Änderung dieses Datenstroms wurde nicht gespeichert (%2).</numerusform>
            <numerusform>%1 Änderungen dieses Datenstroms wurden nicht gespeichert (%2).</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 hour</source>
        <comment>%1 hours</comment>
        <translation>
            <numerusform>%1 Stunde</numerusform>
            <numerusform>%1 Stunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 minute</source>
        <comment>%1 minutes</comment>
        <translation>
            <numerusform>%1 Minute</numerusform>
            <numerusform>%1 Minuten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 subtitle from %2 to %3</source>
        <comment>%1 subtitles from %2 to %3</comment>
        <translation>
            <numerusform>%1 Untertitel von %2 bis %3</numerusform>
            <numerusform>%1 Untertitel von %2 bis %3</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 subtitle in the second stream</source>
        <comment>%1 subtitles in the second stream</comment>
        <translation>
            <numerusform>%1 Untertitel im zweiten Datenstrom</numerusform>
            <numerusform>%1 Untertitel im zweiten Datenstrom</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>lost signature</source>
        <translation>Signatur verloren</translation>
    </message>
    <message>
        <source>trailing bytes</source>
        <translation>überzählige Bytes am Ende</translation>
    </message>
    <message>
        <source>cut off by the end of the file</source>
        <translation>vom Dateiende abgeschnitten</translation>
    </message>
    <message>
        <source>unit too large</source>
        <translation>Einheit zu groß</translation>
    </message>
    <message>
        <source>unit too small</source>
        <translation>Einheit zu klein</translation>
    </message>
    <message>
        <source>no control sequences</source>
        <translation>keine Steuersequenzen</translation>
    </message>
    <message>
        <source>control sequences outside the unit</source>
        <translation>Steuersequenzen außerhalb der Einheit</translation>
    </message>
    <message>
        <source>control sequences without an end</source>
        <translation>Steuersequenzen ohne Ende</translation>
    </message>
    <message>
        <source>gap between control sequences</source>
        <translation>Lücke zwischen Steuersequenzen</translation>
    </message>
    <message>
        <source>many control sequences</source>
        <translation>viele Steuersequenzen</translation>
    </message>
    <message>
        <source>unknown command</source>
        <translation>unbekannter Befehl</translation>
    </message>
    <message>
        <source>no colours</source>
        <translation>keine Farben</translation>
    </message>
    <message>
        <source>no contrasts</source>
        <translation>keine Kontraste</translation>
    </message>
    <message>
        <source>no display area</source>
        <translation>kein Anzeigebereich</translation>
    </message>
    <message>
        <source>no fields</source>
        <translation>keine Halbbilder</translation>
    </message>
    <message>
        <source>field outside the unit</source>
        <translation>Halbbild außerhalb der Einheit</translation>
    </message>
    <message>
        <source>reversed area</source>
        <translation>umgekehrter Bereich</translation>
    </message>
    <message>
        <source>area outside the frame</source>
        <translation>Bereich außerhalb der Bildfläche</translation>
    </message>
    <message>
        <source>odd height</source>
        <translation>ungerade Höhe</translation>
    </message>
    <message>
        <source>no end of its own</source>
        <translation>kein eigenes Ende</translation>
    </message>
    <message>
        <source>ends before it starts</source>
        <translation>endet vor dem Start</translation>
    </message>
    <message>
        <source>negative time</source>
        <translation>negative Zeit</translation>
    </message>
    <message>
        <source>starts before the one before it</source>
        <translation>startet vor dem vorigen</translation>
    </message>
    <message>
        <source>overlaps the next one</source>
        <translation>überlappt den nächsten</translation>
    </message>
    <message>
        <source>unit too large for players</source>
        <translation>Einheit zu groß für Player</translation>
    </message>
    <message>
        <source>too long control for players</source>
        <translation>Steuerung zu lang für Player</translation>
    </message>
    <message>
        <source>odd unit size</source>
        <translation>ungerade Einheitsgröße</translation>
    </message>
    <message>
        <source>no start command</source>
        <translation>kein Startbefehl</translation>
    </message>
    <message>
        <source>no stop command</source>
        <translation>kein Stoppbefehl</translation>
    </message>
    <message>
        <source>command after the first sequence</source>
        <translation>Befehl nach der ersten Sequenz</translation>
    </message>
    <message>
        <source>delays out of order</source>
        <translation>Verzögerungen nicht in Reihenfolge</translation>
    </message>
    <message>
        <source>outside the safe lines</source>
        <translation>außerhalb der sicheren Zeilen</translation>
    </message>
    <message>
        <source>odd first line</source>
        <translation>ungerade erste Zeile</translation>
    </message>
    <message>
        <source>line of too many bits</source>
        <translation>Zeile mit zu vielen Bits</translation>
    </message>
    <message>
        <source>run past the line&apos;s end</source>
        <translation>Lauf über das Zeilenende</translation>
    </message>
    <message>
        <source>other palette entries</source>
        <translation>andere Paletteneinträge</translation>
    </message>
    <message>
        <source>longer than a delay can say</source>
        <translation>länger als eine Verzögerung angibt</translation>
    </message>
    <message>
        <source>too close to the next for players</source>
        <translation>zu nah am nächsten für Player</translation>
    </message>
    <message>
        <source>the control sequence runs to the end of the unit without its end mark 0xFF</source>
        <translation>die Steuersequenz läuft ohne ihre Endmarke 0xFF bis zum Ende der Einheit</translation>
    </message>
    <message>
        <source>the control sequence points to 0 for the next one; the last one points to itself</source>
        <translation>die Steuersequenz verweist für die nächste auf 0; die letzte verweist auf sich selbst</translation>
    </message>
    <message>
        <source>the control sequence points backwards for the next one</source>
        <translation>die Steuersequenz verweist für die nächste rückwärts</translation>
    </message>
    <message>
        <source>the control sequence lies outside the unit, or points there for the next one</source>
        <translation>die Steuersequenz liegt außerhalb der Einheit oder verweist für die nächste dorthin</translation>
    </message>
    <message>
        <source>the control sequences do not come to an end within %1 commands</source>
        <translation>die Steuersequenzen enden nicht innerhalb von %1 Befehlen</translation>
    </message>
    <message>
        <source>the control sequences do not come to an end</source>
        <translation>die Steuersequenzen enden nicht</translation>
    </message>
    <message>
        <source>unknown command %1, and %2 more in the unit; its arguments, if it has any, are read as commands</source>
        <translation>unbekannter Befehl %1, und %2 weitere in der Einheit; seine Argumente, falls er welche hat, werden als Befehle gelesen</translation>
    </message>
    <message>
        <source>unknown command %1; its arguments, if it has any, are read as commands</source>
        <translation>unbekannter Befehl %1; seine Argumente, falls er welche hat, werden als Befehle gelesen</translation>
    </message>
    <message>
        <source>the display area, x %1 to %2 and y %3 to %4, ends before it starts</source>
        <translation>der Anzeigebereich, x %1 bis %2 und y %3 bis %4, endet vor seinem Anfang</translation>
    </message>
    <message>
        <source>the display area, x %1 to %2 and y %3 to %4, leaves the frame of 720x%5</source>
        <translation>der Anzeigebereich, x %1 bis %2 und y %3 bis %4, verlässt die Bildfläche von 720x%5</translation>
    </message>
    <message>
        <source>players, who count a delay in 1024 ticks, show it %1 ticks of 90 kHz into the next subtitle</source>
        <translation>Player, die eine Verzögerung in 1024 Takten zählen, zeigen ihn %1 Takte zu 90 kHz in den nächsten Untertitel hinein</translation>
    </message>
    <message>
        <source>players, who count a delay in 1024 ticks, end it %1 ticks of 90 kHz before the next subtitle; %2, a millisecond, are the least</source>
        <translation>Player, die eine Verzögerung in 1024 Takten zählen, beenden ihn %1 Takte zu 90 kHz vor dem nächsten Untertitel; %2, eine Millisekunde, sind das Mindeste</translation>
    </message>
    <message>
        <source>no &quot;SP&quot; where a packet should start; the next packet was found at offset %1</source>
        <translation>kein „SP“, wo ein Paket beginnen sollte; das nächste Paket wurde bei Offset %1 gefunden</translation>
    </message>
    <message>
        <source>no &quot;SP&quot; where a packet should start; no further packet was found</source>
        <translation>kein „SP“, wo ein Paket beginnen sollte; kein weiteres Paket wurde gefunden</translation>
    </message>
    <message>
        <source>%1 bytes at the end of the file are too few for a packet</source>
        <translation>%1 Bytes am Ende der Datei sind zu wenige für ein Paket</translation>
    </message>
    <message>
        <source>the packet runs %1 bytes past the end of the file</source>
        <translation>das Paket läuft %1 Bytes über das Ende der Datei hinaus</translation>
    </message>
    <message>
        <source>the unit&apos;s size is %1, and 32768 or more reads as negative</source>
        <translation>die Größe der Einheit ist %1, und 32768 oder mehr wird als negativ gelesen</translation>
    </message>
    <message>
        <source>the unit&apos;s size is %1, less than its header</source>
        <translation>die Größe der Einheit ist %1, weniger als ihr Kopf</translation>
    </message>
    <message>
        <source>the control offset is 0, so no control sequence is read</source>
        <translation>der Steueroffset ist 0, deshalb wird keine Steuersequenz gelesen</translation>
    </message>
    <message>
        <source>the control offset %1 leads out of the unit of %2 bytes</source>
        <translation>der Steueroffset %1 führt aus der Einheit von %2 Bytes hinaus</translation>
    </message>
    <message>
        <source>this control sequence does not stand right after the one before it</source>
        <translation>diese Steuersequenz steht nicht direkt nach der vorigen</translation>
    </message>
    <message>
        <source>the unit has %1 control sequences; the last one&apos;s delay counts as the end</source>
        <translation>die Einheit hat %1 Steuersequenzen; die Verzögerung der letzten gilt als Ende</translation>
    </message>
    <message>
        <source>the unit has no command for its colours (0x03)</source>
        <translation>die Einheit hat keinen Befehl für ihre Farben (0x03)</translation>
    </message>
    <message>
        <source>the unit has no command for its contrasts (0x04)</source>
        <translation>die Einheit hat keinen Befehl für ihre Kontraste (0x04)</translation>
    </message>
    <message>
        <source>the unit has no command for its display area (0x05)</source>
        <translation>die Einheit hat keinen Befehl für ihren Anzeigebereich (0x05)</translation>
    </message>
    <message>
        <source>the unit has no command for its fields&apos; places (0x06)</source>
        <translation>die Einheit hat keinen Befehl für die Orte ihrer Halbbilder (0x06)</translation>
    </message>
    <message>
        <source>the bottom field&apos;s offset %1 leads out of the unit of %2 bytes</source>
        <translation>der Offset %1 des unteren Halbbilds führt aus der Einheit von %2 Bytes hinaus</translation>
    </message>
    <message>
        <source>the height %1 is odd, so the last line is not shown</source>
        <translation>die Höhe %1 ist ungerade, deshalb wird die letzte Zeile nicht gezeigt</translation>
    </message>
    <message>
        <source>the subtitle has no end of its own</source>
        <translation>der Untertitel hat kein eigenes Ende</translation>
    </message>
    <message>
        <source>the delay 0x8000 or more reads as negative: the subtitle ends before it starts</source>
        <translation>die Verzögerung von 0x8000 oder mehr wird als negativ gelesen: der Untertitel endet vor seinem Start</translation>
    </message>
    <message>
        <source>the start time is negative</source>
        <translation>die Startzeit ist negativ</translation>
    </message>
    <message>
        <source>it starts at %1, before the subtitle before it at %2</source>
        <translation>er startet bei %1, vor dem vorigen Untertitel bei %2</translation>
    </message>
    <message>
        <source>it is shown until %1, but the next subtitle starts at %2</source>
        <translation>er wird bis %1 gezeigt, aber der nächste Untertitel startet bei %2</translation>
    </message>
    <message>
        <source>the unit&apos;s size is %1; players take up to %2</source>
        <translation>die Größe der Einheit ist %1; Player nehmen bis zu %2 an</translation>
    </message>
    <message>
        <source>the control sequences take %1 bytes; players take up to %2</source>
        <translation>die Steuersequenzen brauchen %1 Bytes; Player nehmen bis zu %2 an</translation>
    </message>
    <message>
        <source>the unit&apos;s size %1 is odd; players expect whole pairs of bytes</source>
        <translation>die Größe %1 der Einheit ist ungerade; Player erwarten ganze Bytepaare</translation>
    </message>
    <message>
        <source>no command starts the display, so players show nothing</source>
        <translation>kein Befehl startet die Anzeige, deshalb zeigen Player nichts</translation>
    </message>
    <message>
        <source>no command stops the display, so players show it until the next subtitle</source>
        <translation>kein Befehl beendet die Anzeige, deshalb zeigen Player ihn bis zum nächsten Untertitel</translation>
    </message>
    <message>
        <source>command %1 stands in a later control sequence alone; players expect it in the first</source>
        <translation>Befehl %1 steht nur in einer späteren Steuersequenz; Player erwarten ihn in der ersten</translation>
    </message>
    <message>
        <source>the delay %1 is less than that of the sequence before it, %2; delays count from the subtitle&apos;s start</source>
        <translation>die Verzögerung %1 ist kleiner als die der vorigen Sequenz, %2; Verzögerungen zählen vom Start des Untertitels an</translation>
    </message>
    <message>
        <source>it covers lines %1 to %2 of the frame; players show lines %3 to %4</source>
        <translation>er bedeckt die Zeilen %1 bis %2 der Bildfläche; Player zeigen die Zeilen %3 bis %4</translation>
    </message>
    <message>
        <source>it starts on the odd line %1 of the frame, so its fields change places on an interlaced screen</source>
        <translation>er beginnt auf der ungeraden Zeile %1 der Bildfläche, deshalb tauschen seine Halbbilder auf einem Bildschirm mit Zeilensprung die Plätze</translation>
    </message>
    <message>
        <source>line %1 of the picture takes %2 bits; players take up to %3</source>
        <translation>Zeile %1 des Bilds braucht %2 Bits; Player nehmen bis zu %3 an</translation>
    </message>
    <message>
        <source>a run passes the end of line %1 of the picture; this program cuts it, players refuse the picture</source>
        <translation>ein Lauf geht über das Ende der Zeile %1 des Bilds hinaus; dieses Programm schneidet ihn ab, Player lehnen das Bild ab</translation>
    </message>
    <message>
        <source>its codes 0 to 3 are the palette entries %1, those of the subtitle before it %2</source>
        <translation>seine Codes 0 bis 3 sind die Paletteneinträge %1, die des vorigen Untertitels %2</translation>
    </message>
    <message>
        <source>it has no end, and the next subtitle starts %1 s later; a player&apos;s delay can say 745</source>
        <translation>er hat kein Ende, und der nächste Untertitel startet %1 s später; die Verzögerung eines Players reicht bis 745</translation>
    </message>
    <message>
        <source>Offset %1: %2</source>
        <translation>Offset %1: %2</translation>
    </message>
    <message>
        <source>first subtitle damaged</source>
        <translation>erster Untertitel beschädigt</translation>
    </message>
    <message>
        <source>second subtitle damaged</source>
        <translation>zweiter Untertitel beschädigt</translation>
    </message>
    <message>
        <source>unit too large to be written</source>
        <translation>Einheit zu groß zum Schreiben</translation>
    </message>
    <message>
        <source>field cut short</source>
        <translation>Halbbild abgeschnitten</translation>
    </message>
    <message>
        <source>unit too long to be read</source>
        <translation>Einheit zu lang zum Lesen</translation>
    </message>
    <message>
        <source>first picture cut short</source>
        <translation>erstes Bild endet zu früh</translation>
    </message>
    <message>
        <source>second picture cut short</source>
        <translation>zweites Bild endet zu früh</translation>
    </message>
    <message>
        <source>not shown together</source>
        <translation>nicht gleichzeitig gezeigt</translation>
    </message>
    <message>
        <source>second subtitle shown before</source>
        <translation>zweiter Untertitel schon gezeigt</translation>
    </message>
    <message>
        <source>first picture clipped</source>
        <translation>erstes Bild abgeschnitten</translation>
    </message>
    <message>
        <source>second picture clipped</source>
        <translation>zweites Bild abgeschnitten</translation>
    </message>
    <message>
        <source>pictures over each other</source>
        <translation>Bilder übereinander</translation>
    </message>
    <message>
        <source>other colours</source>
        <translation>andere Farben</translation>
    </message>
    <message numerus="yes">
        <source>%n pixel outside the frame</source>
        <comment>%n pixels outside the frame</comment>
        <translation>
            <numerusform>%n Pixel außerhalb der Bildfläche</numerusform>
            <numerusform>%n Pixel außerhalb der Bildfläche</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n pixel in the frame&apos;s rows 0, 1 or last, which merged units do not have</source>
        <comment>%n pixels in the frame&apos;s rows 0, 1 or last, which merged units do not have</comment>
        <translation>
            <numerusform>%n Pixel in den Reihen 0, 1 oder der letzten der Bildfläche, die zusammengeführte Einheiten nicht haben</numerusform>
            <numerusform>%n Pixel in den Reihen 0, 1 oder der letzten der Bildfläche, die zusammengeführte Einheiten nicht haben</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 and %n pixel in its rows 0, 1 or last, which merged units do not have</source>
        <comment>%1 and %n pixels in its rows 0, 1 or last, which merged units do not have</comment>
        <translation>
            <numerusform>%1 und %n Pixel in ihren Reihen 0, 1 oder der letzten, die zusammengeführte Einheiten nicht haben</numerusform>
            <numerusform>%1 und %n Pixel in ihren Reihen 0, 1 oder der letzten, die zusammengeführte Einheiten nicht haben</numerusform>
        </translation>
    </message>
    <message>
        <source>subtitle %1 of the first stream is damaged: %2</source>
        <translation>Untertitel %1 des ersten Datenstroms ist beschädigt: %2</translation>
    </message>
    <message>
        <source>subtitle %1 of the second stream is damaged: %2</source>
        <translation>Untertitel %1 des zweiten Datenstroms ist beschädigt: %2</translation>
    </message>
    <message>
        <source>the unit would have %1 bytes; its size field holds 65535</source>
        <translation>die Einheit hätte %1 Bytes; ihr Größenfeld fasst 65535</translation>
    </message>
    <message>
        <source>a field of the unit ends before the picture does</source>
        <translation>ein Halbbild der Einheit endet vor dem Bild</translation>
    </message>
    <message>
        <source>the unit has %1 bytes; programs, this one included, read %2</source>
        <translation>die Einheit hat %1 Bytes; Programme, auch dieses, lesen %2</translation>
    </message>
    <message>
        <source>the unit has %1 bytes; players take %2, and spumux writes no more</source>
        <translation>die Einheit hat %1 Bytes; Player nehmen %2 an, und spumux schreibt nicht mehr</translation>
    </message>
    <message>
        <source>a line of the unit has %1 bytes; players take %2, and spumux writes no more</source>
        <translation>eine Zeile der Einheit hat %1 Bytes; Player nehmen %2 an, und spumux schreibt nicht mehr</translation>
    </message>
    <message>
        <source>the fields of the first picture end before its last line</source>
        <translation>die Halbbilder des ersten Bilds enden vor seiner letzten Zeile</translation>
    </message>
    <message>
        <source>the fields of the second picture end before its last line</source>
        <translation>die Halbbilder des zweiten Bilds enden vor seiner letzten Zeile</translation>
    </message>
    <message>
        <source>no subtitle of the second stream is shown at its time: the first one is taken</source>
        <translation>kein Untertitel des zweiten Datenstroms wird zu seiner Zeit gezeigt: der erste wird genommen</translation>
    </message>
    <message>
        <source>the second stream&apos;s subtitle %1 is not shown at its time</source>
        <translation>der Untertitel %1 des zweiten Datenstroms wird nicht zu seiner Zeit gezeigt</translation>
    </message>
    <message>
        <source>an earlier packet shows subtitle %1 of the second stream, too</source>
        <translation>schon ein früheres Paket zeigt Untertitel %1 des zweiten Datenstroms</translation>
    </message>
    <message numerus="yes">
        <source>the first picture loses %1, in %n row of it</source>
        <comment>the first picture loses %1, in %n rows of it</comment>
        <translation>
            <numerusform>das erste Bild verliert %1, in %n Reihe</numerusform>
            <numerusform>das erste Bild verliert %1, in %n Reihen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>the second picture loses %1, in %n row of it</source>
        <comment>the second picture loses %1, in %n rows of it</comment>
        <translation>
            <numerusform>das zweite Bild verliert %1, in %n Reihe</numerusform>
            <numerusform>das zweite Bild verliert %1, in %n Reihen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n pixel of the second picture covers the first one</source>
        <comment>%n pixels of the second picture cover the first one</comment>
        <translation>
            <numerusform>%n Pixel des zweiten Bilds verdeckt das erste</numerusform>
            <numerusform>%n Pixel des zweiten Bilds verdecken das erste</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n pixel gets another colour, at the most by %1 of 255, that of code %2</source>
        <comment>%n pixels get another colour, at the most by %1 of 255, that of code %2</comment>
        <translation>
            <numerusform>%n Pixel bekommt eine andere Farbe, höchstens um %1 von 255, die von Code %2</numerusform>
            <numerusform>%n Pixel bekommen eine andere Farbe, höchstens um %1 von 255, die von Code %2</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n packet, none with problems</source>
        <comment>%n packets, none with problems</comment>
        <translation>
            <numerusform>%n Paket, keines mit Problemen</numerusform>
            <numerusform>%n Pakete, keines mit Problemen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n packet, %1 with problems</source>
        <comment>%n packets, %1 with problems</comment>
        <translation>
            <numerusform>%n Paket, %1 mit Problemen</numerusform>
            <numerusform>%n Pakete, %1 mit Problemen</numerusform>
        </translation>
    </message>
    <message>
        <source>missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>added</source>
        <translation>zusätzlich</translation>
    </message>
    <message>
        <source>only one of the two can be shown</source>
        <translation>nur einer der beiden ist darstellbar</translation>
    </message>
    <message>
        <source>moved in time</source>
        <translation>zeitlich verschoben</translation>
    </message>
    <message>
        <source>other duration</source>
        <translation>andere Dauer</translation>
    </message>
    <message>
        <source>moved in place</source>
        <translation>an anderer Stelle</translation>
    </message>
    <message>
        <source>other size</source>
        <translation>andere Größe</translation>
    </message>
    <message>
        <source>other opacities</source>
        <translation>andere Deckkraft</translation>
    </message>
    <message>
        <source>other forced flag</source>
        <translation>anders erzwungen</translation>
    </message>
    <message>
        <source>other pixels</source>
        <translation>andere Pixel</translation>
    </message>
    <message>
        <source>the same, otherwise written</source>
        <translation>gleich, aber anders geschrieben</translation>
    </message>
    <message numerus="yes">
        <source>%n other pixel</source>
        <comment>%n other pixels</comment>
        <translation>
            <numerusform>%n anderes Pixel</numerusform>
            <numerusform>%n andere Pixel</numerusform>
        </translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>no subtitle would be left</source>
        <translation>kein Untertitel bliebe übrig</translation>
    </message>
    <message>
        <source>of the chosen subtitles, %1</source>
        <translation>von den gewählten Untertiteln: %1</translation>
    </message>
    <message>
        <source>there is not enough memory for it</source>
        <translation>der Speicher reicht dafür nicht</translation>
    </message>
    <message>
        <source>No SUP signature found</source>
        <translation>Keine SUP-Signatur gefunden</translation>
    </message>
    <message>
        <source>track %1 is left out: %2</source>
        <translation>Spur %1 wird weggelassen: %2</translation>
    </message>
    <message>
        <source>The folder %1 cannot be made</source>
        <translation>Der Ordner %1 kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>the top field&apos;s offset %1 leads out of the unit of %2 bytes</source>
        <translation>der Offset %1 des oberen Halbbilds führt aus der Einheit von %2 Bytes hinaus</translation>
    </message>
    <message>
        <source>Subtitles A to B, counted from 1; also A alone, A- for all from A on, and lists of these</source>
        <translation>Untertitel A bis B, ab 1 gezählt; auch A allein, A- für alle ab A, und Listen davon</translation>
    </message>
    <message>
        <source>Milliseconds, with or without decimals, that are added to start times</source>
        <translation>Millisekunden, mit oder ohne Nachkommastellen, die zu den Startzeiten addiert werden</translation>
    </message>
    <message>
        <source>What start times and delays are multiplied by, before --shift is added</source>
        <translation>Womit Startzeiten und Verzögerungen multipliziert werden, bevor --shift addiert wird</translation>
    </message>
    <message>
        <source>The speed that the times were made for: 23.976, 24, 25 or 29.97</source>
        <translation>Die Geschwindigkeit, für die die Zeiten gemacht wurden: 23.976, 24, 25 oder 29.97</translation>
    </message>
    <message>
        <source>The speed that they are to be for, in place of --scale</source>
        <translation>Die Geschwindigkeit, für die sie sein sollen, anstelle von --scale</translation>
    </message>
    <message>
        <source>Subtitle A starts at TIME, [[h:]m:]s, and B at TIME; the straight line through both for all</source>
        <translation>Untertitel A startet bei TIME, [[h:]m:]s, und B bei TIME; die Gerade durch beide für alle</translation>
    </message>
    <message>
        <source>Move to the right; to the left where negative</source>
        <translation>Nach rechts verschieben; bei negativem Wert nach links</translation>
    </message>
    <message>
        <source>Move down; up where negative</source>
        <translation>Nach unten verschieben; bei negativem Wert nach oben</translation>
    </message>
    <message>
        <source>Move so that the bottom edge comes to this line of the frame, from 0</source>
        <translation>So verschieben, dass die untere Kante auf diese Zeile der Bildfläche kommt, ab 0</translation>
    </message>
    <message>
        <source>Lines of the frame; 576 where it is not given</source>
        <translation>Zeilen der Bildfläche; ohne Angabe 576</translation>
    </message>
    <message>
        <source>Move what would leave the frame as far as it goes</source>
        <translation>Was die Bildfläche verließe, so weit wie möglich verschieben</translation>
    </message>
    <message>
        <source>Whether subtitles are shown also while they are switched off</source>
        <translation>Ob Untertitel auch gezeigt werden, wenn sie ausgeschaltet sind</translation>
    </message>
    <message>
        <source>Give subtitles without an end one: the next start</source>
        <translation>Untertiteln ohne Ende eines geben: den nächsten Start</translation>
    </message>
    <message>
        <source>Cut an end after the next start to it</source>
        <translation>Ein Ende nach dem nächsten Start auf diesen kürzen</translation>
    </message>
    <message>
        <source>How long before the next start these ends are</source>
        <translation>Wie lange vor dem nächsten Start diese Enden liegen</translation>
    </message>
    <message>
        <source>How long --fill shows a subtitle at most</source>
        <translation>Wie lange --fill einen Untertitel höchstens zeigt</translation>
    </message>
    <message>
        <source>Show a subtitle at least so long</source>
        <translation>Einen Untertitel mindestens so lange zeigen</translation>
    </message>
    <message>
        <source>Stream that is added</source>
        <translation>Datenstrom, der angefügt wird</translation>
    </message>
    <message>
        <source>How long after the last end the added stream starts</source>
        <translation>Wie lange nach dem letzten Ende der angefügte Datenstrom beginnt</translation>
    </message>
    <message>
        <source>When it starts, [[h:]m:]s, in place of --gap</source>
        <translation>Wann er beginnt, [[h:]m:]s, anstelle von --gap</translation>
    </message>
    <message>
        <source>Rules for everybody, or those for players too</source>
        <translation>Regeln für alle, oder auch die für Player</translation>
    </message>
    <message>
        <source>Palette entries, a hexadecimal digit for each pixel code: 0 background, 1 pattern, 2 emphasis 1, 3 emphasis 2; a dot leaves a code as it is</source>
        <translation>Paletteneinträge, eine hexadezimale Ziffer für jeden Pixelcode: 0 Hintergrund, 1 Muster, 2 Betonung 1, 3 Betonung 2; ein Punkt lässt einen Code, wie er ist</translation>
    </message>
    <message>
        <source>Opacities in the same way, 0 invisible to F opaque</source>
        <translation>Deckkraft auf dieselbe Weise, 0 unsichtbar bis F deckend</translation>
    </message>
    <message>
        <source>Write other colours, opacities or both into the stream</source>
        <translation>Andere Farben, andere Deckkraft oder beides in den Datenstrom schreiben</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>Move or stretch start times, and delays with them</source>
        <translation>Startzeiten verschieben oder strecken, und mit ihnen die Verzögerungen</translation>
    </message>
    <message>
        <source>retimed</source>
        <translation>zeitlich geändert</translation>
    </message>
    <message>
        <source>Move subtitles within the frame</source>
        <translation>Untertitel innerhalb der Bildfläche verschieben</translation>
    </message>
    <message>
        <source>moved</source>
        <translation>verschoben</translation>
    </message>
    <message>
        <source>Have subtitles shown also while they are switched off, or no longer</source>
        <translation>Untertitel auch zeigen lassen, wenn sie ausgeschaltet sind, oder nicht mehr</translation>
    </message>
    <message>
        <source>Give subtitles ends, and mend those that overlap or come too early</source>
        <translation>Untertiteln Enden geben und die berichtigen, die überlappen oder zu früh kommen</translation>
    </message>
    <message>
        <source>given another end</source>
        <translation>mit anderem Ende versehen</translation>
    </message>
    <message>
        <source>Take subtitles out of the stream</source>
        <translation>Untertitel aus dem Datenstrom herausnehmen</translation>
    </message>
    <message>
        <source>taken out</source>
        <translation>herausgenommen</translation>
    </message>
    <message>
        <source>Take all other subtitles out of the stream</source>
        <translation>Alle anderen Untertitel aus dem Datenstrom herausnehmen</translation>
    </message>
    <message>
        <source>Put subtitles in the order of their start times</source>
        <translation>Untertitel in die Reihenfolge ihrer Startzeiten bringen</translation>
    </message>
    <message>
        <source>Add another stream behind the first</source>
        <translation>Einen anderen Datenstrom hinter dem ersten anfügen</translation>
    </message>
    <message>
        <source>Mend what can be mended without coding pictures again</source>
        <translation>Beheben, was sich beheben lässt, ohne Bilder neu zu kodieren</translation>
    </message>
    <message>
        <source>mended</source>
        <translation>repariert</translation>
    </message>
    <message>
        <source>Keep the good packets of a damaged stream</source>
        <translation>Die guten Pakete eines beschädigten Datenstroms behalten</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>it is a device or a pipe, not a file</source>
        <translation>es ist ein Gerät oder eine Pipe, keine Datei</translation>
    </message>
    <message>
        <source>it cannot be opened</source>
        <translation>sie kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Illegal file: no title set&apos;s IFO file with a palette</source>
        <translation>Ungültige Datei: keine IFO-Datei eines Titelsatzes mit einer Palette</translation>
    </message>
    <message>
        <source>Illegal file: not exactly 16 lines with a colour</source>
        <translation>Ungültige Datei: nicht genau 16 Zeilen mit einer Farbe</translation>
    </message>
    <message>
        <source>Illegal file: an IFO file has at most 1,048,576 bytes</source>
        <translation>Ungültige Datei: eine IFO-Datei hat höchstens 1.048.576 Bytes</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>sie kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>not the name of a palette file: it must end in .ifo, .pal or .rgb</source>
        <translation>kein Name einer Palettendatei: er muss auf .ifo, .pal oder .rgb enden</translation>
    </message>
    <message>
        <source>changes of colours within the picture are damaged and cut off at byte %1 of the unit</source>
        <translation>Farbwechsel innerhalb des Bilds sind beschädigt und werden bei Byte %1 der Einheit abgeschnitten</translation>
    </message>
    <message>
        <source>the control sequence at byte %1 of the unit runs to the end of the unit without its end mark 0xFF</source>
        <translation>die Steuersequenz bei Byte %1 der Einheit läuft ohne ihre Endmarke 0xFF bis zum Ende der Einheit</translation>
    </message>
    <message>
        <source>the control sequence at byte %1 of the unit points to 0 for the next one</source>
        <translation>die Steuersequenz bei Byte %1 der Einheit verweist für die nächste auf 0</translation>
    </message>
    <message>
        <source>the control sequence at byte %1 of the unit points backwards for the next one, which is not followed</source>
        <translation>die Steuersequenz bei Byte %1 der Einheit verweist für die nächste rückwärts, dem wird nicht gefolgt</translation>
    </message>
    <message>
        <source>the control sequence at byte %1 of the unit lies outside the unit, or points there for the next one</source>
        <translation>die Steuersequenz bei Byte %1 der Einheit liegt außerhalb der Einheit oder verweist für die nächste dorthin</translation>
    </message>
    <message>
        <source>it is damaged at byte %1</source>
        <translation>es ist bei Byte %1 beschädigt</translation>
    </message>
    <message>
        <source>the record at byte %1 makes no sense</source>
        <translation>der Eintrag bei Byte %1 ergibt keinen Sinn</translation>
    </message>
    <message>
        <source>together they are too long: a stream may have %1 bytes</source>
        <translation>zusammen sind sie zu lang: ein Datenstrom darf %1 Bytes haben</translation>
    </message>
    <message>
        <source>subtitle %1 of what is added would start before 0; nothing is written</source>
        <translation>Untertitel %1 des Angefügten würde vor 0 starten; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>subtitle %1 of what is added would start after the last time that there is; nothing is written</source>
        <translation>Untertitel %1 des Angefügten würde nach der letzten möglichen Zeit starten; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>%1 bytes at offset %2 are no packet and were left out</source>
        <translation>%1 Bytes bei Offset %2 sind kein Paket und wurden weggelassen</translation>
    </message>
    <message>
        <source>the unit&apos;s size is %1, not %2</source>
        <translation>die Größe der Einheit ist %1, nicht %2</translation>
    </message>
    <message>
        <source>a control sequence got its end mark 0xFF</source>
        <translation>eine Steuersequenz bekam ihre Endmarke 0xFF</translation>
    </message>
    <message>
        <source>the last control sequence points to itself now, not to %1</source>
        <translation>die letzte Steuersequenz verweist jetzt auf sich selbst, nicht auf %1</translation>
    </message>
    <message>
        <source>the unit of %1 bytes got one more</source>
        <translation>die Einheit von %1 Bytes bekam eines mehr</translation>
    </message>
    <message>
        <source>it was put in the order of starts; it was packet %1</source>
        <translation>es wurde in die Reihenfolge der Starts gebracht; es war Paket %1</translation>
    </message>
    <message>
        <source>it got an end, a delay of %1</source>
        <translation>er bekam ein Ende, eine Verzögerung von %1</translation>
    </message>
    <message>
        <source>its end came after the next start; its delay is %1, not %2</source>
        <translation>sein Ende kam nach dem nächsten Start; seine Verzögerung ist %1, nicht %2</translation>
    </message>
    <message>
        <source>its display area was moved into the frame, %1 pixels to the right and %2 lines down</source>
        <translation>sein Anzeigebereich wurde in die Bildfläche verschoben, %1 Pixel nach rechts und %2 Zeilen nach unten</translation>
    </message>
    <message>
        <source>there is no subtitle %1: it has %2</source>
        <translation>es gibt keinen Untertitel %1: es sind %2</translation>
    </message>
    <message>
        <source>subtitle %1 and subtitle %2 start at the same time, so that no line leads through both</source>
        <translation>Untertitel %1 und Untertitel %2 starten zur selben Zeit, sodass keine Gerade durch beide führt</translation>
    </message>
    <message>
        <source>subtitle %1 and subtitle %2 start too far from each other</source>
        <translation>Untertitel %1 und Untertitel %2 starten zu weit voneinander</translation>
    </message>
    <message>
        <source>subtitle %1 starts after subtitle %2, and has to do so afterwards</source>
        <translation>Untertitel %1 startet nach Untertitel %2 und muss das auch danach</translation>
    </message>
    <message>
        <source>subtitle %1 would start before 0; nothing is written</source>
        <translation>Untertitel %1 würde vor 0 starten; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>subtitle %1 would start after the last time that there is; nothing is written</source>
        <translation>Untertitel %1 würde nach der letzten möglichen Zeit starten; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>a whole packet</source>
        <translation>ein ganzes Paket</translation>
    </message>
    <message>
        <source>too short for a packet</source>
        <translation>zu kurz für ein Paket</translation>
    </message>
    <message>
        <source>no &quot;SP&quot; where a packet should start</source>
        <translation>kein „SP“, wo ein Paket beginnen sollte</translation>
    </message>
    <message>
        <source>the unit&apos;s size leaves no room for control sequences</source>
        <translation>die Größe der Einheit lässt keinen Platz für Steuersequenzen</translation>
    </message>
    <message>
        <source>the unit&apos;s size is 0x8000 or more</source>
        <translation>die Größe der Einheit ist 0x8000 oder mehr</translation>
    </message>
    <message>
        <source>the packet runs past the end of the file</source>
        <translation>das Paket läuft über das Ende der Datei hinaus</translation>
    </message>
    <message>
        <source>the control offset leads out of the unit</source>
        <translation>der Steueroffset führt aus der Einheit hinaus</translation>
    </message>
    <message>
        <source>the control sequences do not come to an end in the unit</source>
        <translation>die Steuersequenzen enden nicht innerhalb der Einheit</translation>
    </message>
    <message>
        <source>another packet starts inside the packet, and none after it</source>
        <translation>ein anderes Paket beginnt innerhalb des Pakets, und keines danach</translation>
    </message>
    <message>
        <source>the change does not fit the stream</source>
        <translation>die Änderung passt nicht zum Datenstrom</translation>
    </message>
    <message>
        <source>there is not enough memory for the change</source>
        <translation>der Speicher reicht für die Änderung nicht</translation>
    </message>
    <message>
        <source>there is not enough memory for its index</source>
        <translation>der Speicher reicht für ihr Verzeichnis nicht</translation>
    </message>
    <message>
        <source>it is too large: a stream may have %1 bytes</source>
        <translation>sie ist zu groß: ein Datenstrom darf %1 Bytes haben</translation>
    </message>
    <message>
        <source>no &quot;SP&quot; stands where a packet should start</source>
        <translation>kein „SP“ steht, wo ein Paket beginnen sollte</translation>
    </message>
    <message>
        <source>Parse errors: %1</source>
        <translation>Fehler beim Lesen: %1</translation>
    </message>
    <message>
        <source>Max subtitle width: %1 (%2 to %3)</source>
        <translation>Größte Untertitelbreite: %1 (%2 bis %3)</translation>
    </message>
    <message>
        <source>Max subtitle height: %1 (%2 to %3)</source>
        <translation>Größte Untertitelhöhe: %1 (%2 bis %3)</translation>
    </message>
    <message>
        <source>Max size (kb): %1</source>
        <translation>Größter Umfang (kB): %1</translation>
    </message>
    <message>
        <source>First timecode: %1</source>
        <translation>Erster Timecode: %1</translation>
    </message>
    <message>
        <source>Last timecode: %1</source>
        <translation>Letzter Timecode: %1</translation>
    </message>
    <message>
        <source>Max duration (seconds): %1</source>
        <translation>Längste Dauer (Sekunden): %1</translation>
    </message>
    <message>
        <source>Subtitles without duration : Yes</source>
        <translation>Untertitel ohne Dauer: Ja</translation>
    </message>
    <message>
        <source>Subtitles without duration : No</source>
        <translation>Untertitel ohne Dauer: Nein</translation>
    </message>
    <message>
        <source>Color %1 uses palette color: %2  and opacity: %3</source>
        <translation>Farbe %1 verwendet Palettenfarbe: %2  und Deckkraft: %3</translation>
    </message>
    <message>
        <source>Found Subtitles: %1</source>
        <translation>Gefundene Untertitel: %1</translation>
    </message>
    <message>
        <source>Found secondary Subtitles: %1</source>
        <translation>Gefundene zweite Untertitel: %1</translation>
    </message>
    <message>
        <source>Warning: Secondary subtitles have multiple colors or multiple transparancies<byte value="xd"/>
Overlaying may not work properly</source>
        <translation>Warnung: Die zweiten Untertitel haben mehrere Farben oder mehrere Transparenzen<byte value="xd"/>
Das Überlagern funktioniert möglicherweise nicht richtig</translation>
    </message>
    <message>
        <source>is damaged (%1); it is left as it is</source>
        <translation>ist beschädigt (%1); er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has no colour command; it is left as it is</source>
        <translation>hat keinen Farbbefehl; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has no contrast command; it is left as it is</source>
        <translation>hat keinen Kontrastbefehl; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has neither a colour nor a contrast command; it is left as it is</source>
        <translation>hat weder einen Farb- noch einen Kontrastbefehl; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has no start command; it is left as it is</source>
        <translation>hat keinen Startbefehl; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has no display area; it is left as it is</source>
        <translation>hat keinen Anzeigebereich; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>would leave the frame; it is left as it is</source>
        <translation>würde die Bildfläche verlassen; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has a damaged change of colours within the picture; it is left as it is</source>
        <translation>hat einen beschädigten Farbwechsel innerhalb des Bilds; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>is the last one, so that no next start says when it ends; it is left as it is</source>
        <translation>ist der letzte, sodass kein nächster Start sagt, wann er endet; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>cannot end before the next one starts; it is left as it is</source>
        <translation>kann nicht enden, bevor der nächste startet; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>is shown as long as the next one&apos;s start allows, which is shorter than asked for</source>
        <translation>wird gezeigt, solange der Start des nächsten es erlaubt, kürzer als verlangt</translation>
    </message>
    <message>
        <source>has an end that is not read from its stop command; it is left as it is</source>
        <translation>hat ein Ende, das nicht aus seinem Stoppbefehl gelesen wird; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has no room for a stop command within %1 bytes; it is left as it is</source>
        <translation>hat innerhalb von %1 Bytes keinen Platz für einen Stoppbefehl; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>has a problem that cannot be mended</source>
        <translation>hat ein Problem, das sich nicht beheben lässt</translation>
    </message>
    <message>
        <source>has picture data behind its control sequences; it is left as it is</source>
        <translation>hat Bilddaten hinter seinen Steuersequenzen; er bleibt, wie er ist</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is %3</source>
        <translation>%1: „%2“ ist %3</translation>
    </message>
    <message>
        <source>no whole number from %1 to %2</source>
        <translation>keine ganze Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>no number of milliseconds</source>
        <translation>keine Anzahl von Millisekunden</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is not from 0 to %3 milliseconds</source>
        <translation>%1: „%2“ liegt nicht zwischen 0 und %3 Millisekunden</translation>
    </message>
    <message>
        <source>unknown field &apos;%1&apos;</source>
        <translation>unbekanntes Feld „%1“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is neither true nor false</source>
        <translation>„%1“ ist weder true noch false</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is neither a text nor a number</source>
        <translation>„%1“ ist weder ein Text noch eine Zahl</translation>
    </message>
    <message>
        <source>it is no object with the name of a &apos;tool&apos;</source>
        <translation>es ist kein Objekt mit dem Namen eines „tool“</translation>
    </message>
    <message>
        <source>there is no tool &apos;%1&apos;</source>
        <translation>es gibt kein Werkzeug „%1“</translation>
    </message>
    <message>
        <source>it is no JSON object</source>
        <translation>es ist kein JSON-Objekt</translation>
    </message>
    <message>
        <source>it has no &apos;version&apos;, which is %1</source>
        <translation>es fehlt „version“, die %1 ist</translation>
    </message>
    <message>
        <source>its version is %1; this program knows version %2 alone</source>
        <translation>die Version ist %1; dieses Programm kennt nur Version %2</translation>
    </message>
    <message>
        <source>it has no list of &apos;steps&apos;</source>
        <translation>es fehlt die Liste „steps“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; stands twice in one object</source>
        <translation>„%1“ steht zweimal in einem Objekt</translation>
    </message>
    <message>
        <source>an object of it has more than %1 fields</source>
        <translation>ein Objekt darin hat mehr als %1 Felder</translation>
    </message>
    <message>
        <source>it is no JSON: byte %1 does not fit</source>
        <translation>es ist kein JSON: Byte %1 passt nicht</translation>
    </message>
    <message>
        <source>it has a number that is too large</source>
        <translation>eine Zahl darin ist zu groß</translation>
    </message>
    <message>
        <source>step %1</source>
        <translation>Schritt %1</translation>
    </message>
    <message>
        <source>step %1 (%2)</source>
        <translation>Schritt %1 (%2)</translation>
    </message>
    <message>
        <source>no ratio such as 25/24</source>
        <translation>kein Verhältnis wie 25/24</translation>
    </message>
    <message>
        <source>none of the speeds 24000/1001 (23.976), 24, 25 and 30000/1001 (29.97)</source>
        <translation>keine der Geschwindigkeiten 24000/1001 (23.976), 24, 25 und 30000/1001 (29.97)</translation>
    </message>
    <message>
        <source>not of the form A=TIME,B=TIME</source>
        <translation>nicht von der Form A=TIME,B=TIME</translation>
    </message>
    <message>
        <source>%1 and %2 belong together</source>
        <translation>%1 und %2 gehören zusammen</translation>
    </message>
    <message>
        <source>%1 and %2 stand in place of %3</source>
        <translation>%1 und %2 stehen anstelle von %3</translation>
    </message>
    <message>
        <source>%1 stands alone</source>
        <translation>%1 steht allein</translation>
    </message>
    <message>
        <source>retime needs %1, %2, %3 and %4, or %5</source>
        <translation>retime braucht %1, %2, %3 und %4, oder %5</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is neither 480 nor 576</source>
        <translation>%1: „%2“ ist weder 480 noch 576</translation>
    </message>
    <message>
        <source>%1 stands in place of %2</source>
        <translation>%1 steht anstelle von %2</translation>
    </message>
    <message>
        <source>move needs %1, %2 or %3</source>
        <translation>move braucht %1, %2 oder %3</translation>
    </message>
    <message>
        <source>force needs &apos;on&apos; or &apos;off&apos;</source>
        <translation>force braucht „on“ oder „off“</translation>
    </message>
    <message>
        <source>state: &apos;%1&apos; is neither &apos;on&apos; nor &apos;off&apos;</source>
        <translation>state: „%1“ ist weder „on“ noch „off“</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is shorter than a delay can say, which counts units of 1000 ticks</source>
        <translation>%1: „%2“ ist kürzer, als eine Verzögerung angeben kann, die in Einheiten von 1000 Takten zählt</translation>
    </message>
    <message>
        <source>%1 belongs to %2</source>
        <translation>%1 gehört zu %2</translation>
    </message>
    <message>
        <source>%1 belongs to %2 and %3</source>
        <translation>%1 gehört zu %2 und %3</translation>
    </message>
    <message>
        <source>ends needs %1, %2 or %3</source>
        <translation>ends braucht %1, %2 oder %3</translation>
    </message>
    <message>
        <source>%1 needs %2</source>
        <translation>%1 braucht %2</translation>
    </message>
    <message>
        <source>join needs %1</source>
        <translation>join braucht %1</translation>
    </message>
    <message>
        <source>%1: &apos;&apos; names no file</source>
        <translation>%1: „“ nennt keine Datei</translation>
    </message>
    <message>
        <source>no time such as 1:02:03.5</source>
        <translation>keine Zeit wie 1:02:03.5</translation>
    </message>
    <message>
        <source>not four hexadecimal digits or dots</source>
        <translation>nicht vier hexadezimale Ziffern oder Punkte</translation>
    </message>
    <message>
        <source>assign needs %1, %2 or both</source>
        <translation>assign braucht %1, %2 oder beides</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is neither spec nor player</source>
        <translation>%1: „%2“ ist weder spec noch player</translation>
    </message>
    <message>
        <source>%1 takes no &apos;%2&apos;</source>
        <translation>%1 kennt kein „%2“</translation>
    </message>
    <message>
        <source>%1 is given twice</source>
        <translation>%1 ist zweimal angegeben</translation>
    </message>
    <message>
        <source>no range such as 3-7, 3 or 3-</source>
        <translation>kein Bereich wie 3-7, 3 oder 3-</translation>
    </message>
    <message>
        <source>Generic Error</source>
        <translation>Allgemeiner Fehler</translation>
    </message>
    <message>
        <source>Invalid Parameter</source>
        <translation>Ungültiger Parameter</translation>
    </message>
    <message>
        <source>Out Of Memory</source>
        <translation>Zu wenig Speicher</translation>
    </message>
    <message>
        <source>Object Busy</source>
        <translation>Objekt belegt</translation>
    </message>
    <message>
        <source>Insufficient Buffer</source>
        <translation>Puffer zu klein</translation>
    </message>
    <message>
        <source>Not Implemented</source>
        <translation>Nicht implementiert</translation>
    </message>
    <message>
        <source>Win32 Error</source>
        <translation>Win32-Fehler</translation>
    </message>
    <message>
        <source>Wrong State</source>
        <translation>Falscher Zustand</translation>
    </message>
    <message>
        <source>Aborted</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>File Not Found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>Value Overflow</source>
        <translation>Werteüberlauf</translation>
    </message>
    <message>
        <source>Access Denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>Unknown Image Format</source>
        <translation>Unbekanntes Bildformat</translation>
    </message>
    <message>
        <source>FontFamily Not Found</source>
        <translation>Schriftfamilie nicht gefunden</translation>
    </message>
    <message>
        <source>FontStyle Not Found</source>
        <translation>Schriftstil nicht gefunden</translation>
    </message>
    <message>
        <source>Not TrueType Font</source>
        <translation>Keine TrueType-Schrift</translation>
    </message>
    <message>
        <source>Unsupported Gdiplus Version</source>
        <translation>Nicht unterstützte Gdiplus-Version</translation>
    </message>
    <message>
        <source>Gdiplus Not Initialized</source>
        <translation>Gdiplus nicht initialisiert</translation>
    </message>
    <message>
        <source>Property Not Found</source>
        <translation>Eigenschaft nicht gefunden</translation>
    </message>
    <message>
        <source>Property Not Supported</source>
        <translation>Eigenschaft nicht unterstützt</translation>
    </message>
    <message>
        <source>Unknown GDI+ Error</source>
        <translation>Unbekannter GDI+-Fehler</translation>
    </message>
    <message>
        <source>It is larger than 2 GiB</source>
        <translation>Sie ist größer als 2 GiB</translation>
    </message>
    <message>
        <source>It does not fit into memory</source>
        <translation>Sie passt nicht in den Speicher</translation>
    </message>
    <message>
        <source>It would become larger than 2 GiB</source>
        <translation>Sie würde größer als 2 GiB</translation>
    </message>
    <message>
        <source>It cannot be locked</source>
        <translation>Sie kann nicht gesperrt werden</translation>
    </message>
    <message>
        <source>%1. The file could only be written in place and is now damaged: it holds the first %2 of %3 new bytes, and after them what was there before.</source>
        <translation>%1. Die Datei konnte nur an Ort und Stelle geschrieben werden und ist jetzt beschädigt: sie enthält die ersten %2 von %3 neuen Bytes und danach, was vorher dort war.</translation>
    </message>
    <message>
        <source>it is there already</source>
        <translation>es ist schon vorhanden</translation>
    </message>
    <message>
        <source>it is no folder</source>
        <translation>es ist kein Ordner</translation>
    </message>
    <message>
        <source>already there: %1</source>
        <translation>schon vorhanden: %1</translation>
    </message>
    <message>
        <source>The file from before now has the name %1</source>
        <translation>Die Datei von vorher heißt jetzt %1</translation>
    </message>
    <message>
        <source>It is a folder</source>
        <translation>Es ist ein Ordner</translation>
    </message>
    <message>
        <source>It is a pipe, not a file</source>
        <translation>Es ist eine Pipe, keine Datei</translation>
    </message>
    <message>
        <source>It is a socket, not a file</source>
        <translation>Es ist ein Socket, keine Datei</translation>
    </message>
    <message>
        <source>The name is empty</source>
        <translation>Der Name ist leer</translation>
    </message>
    <message>
        <source>The file is not writable</source>
        <translation>Die Datei ist schreibgeschützt</translation>
    </message>
    <message>
        <source>it is too long for a list of pictures</source>
        <translation>sie ist zu lang für eine Liste von Bildern</translation>
    </message>
    <message>
        <source>its buttons are left out</source>
        <translation>seine Schaltflächen werden weggelassen</translation>
    </message>
    <message>
        <source>it names no picture and is left out</source>
        <translation>er nennt kein Bild und wird weggelassen</translation>
    </message>
    <message>
        <source>its colours were taken together to four; the largest error is %1 of 255</source>
        <translation>seine Farben wurden zu vier zusammengefasst; der größte Fehler ist %1 von 255</translation>
    </message>
    <message>
        <source>with it the list has %1 colours, of which a palette has 16</source>
        <translation>damit hat die Liste %1 Farben, eine Palette aber 16</translation>
    </message>
    <message>
        <source>the list has more than 16 colours, which were taken together; the largest error is %1 of 255</source>
        <translation>die Liste hat mehr als 16 Farben, die zusammengefasst wurden; der größte Fehler ist %1 von 255</translation>
    </message>
    <message>
        <source>%1 is no palette of 16 colours and was not used</source>
        <translation>%1 ist keine Palette von 16 Farben und wurde nicht verwendet</translation>
    </message>
    <message>
        <source>%1 does not have all colours of the pictures; some of its others gave way</source>
        <translation>%1 hat nicht alle Farben der Bilder; einige ihrer anderen machten Platz</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>it ends past 4095 pixels</source>
        <translation>es endet jenseits von 4095 Pixeln</translation>
    </message>
    <message>
        <source>%1 is left out: its unit would have more than 32,767 bytes</source>
        <translation>%1 wird weggelassen: seine Einheit hätte mehr als 32.767 Bytes</translation>
    </message>
    <message>
        <source>%1 has four visible colours and an odd height; its last line is not shown here</source>
        <translation>%1 hat vier sichtbare Farben und eine ungerade Höhe; die letzte Zeile wird hier nicht gezeigt</translation>
    </message>
    <message>
        <source>it is shown for 745 seconds, the longest that there is</source>
        <translation>er wird 745 Sekunden lang gezeigt, die längste mögliche Dauer</translation>
    </message>
    <message>
        <source>a second stream, of which a list has one</source>
        <translation>ein zweiter Datenstrom, wo eine Liste nur einen hat</translation>
    </message>
    <message>
        <source>its subtitles are text, not pictures</source>
        <translation>ihre Untertitel sind Text, keine Bilder</translation>
    </message>
    <message>
        <source>it describes a disc; its subtitles stand in another list</source>
        <translation>sie beschreibt eine Disc; deren Untertitel stehen in einer anderen Liste</translation>
    </message>
    <message>
        <source>unknown element &quot;%1&quot;</source>
        <translation>unbekanntes Element „%1“</translation>
    </message>
    <message>
        <source>an element has more than %1 bytes</source>
        <translation>ein Element hat mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>unknown attribute &quot;%1&quot;</source>
        <translation>unbekanntes Attribut „%1“</translation>
    </message>
    <message>
        <source>an spu in another</source>
        <translation>ein spu in einem anderen</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no time of up to 26 hours</source>
        <translation>%1 „%2“ ist keine Zeit bis 26 Stunden</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no number from 0 to 4095</source>
        <translation>%1 „%2“ ist keine Zahl von 0 bis 4095</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no yes or no</source>
        <translation>%1 „%2“ ist kein yes oder no</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no colour</source>
        <translation>%1 „%2“ ist keine Farbe</translation>
    </message>
    <message>
        <source>line %1 is left out: %2</source>
        <translation>Zeile %1 wird weggelassen: %2</translation>
    </message>
    <message>
        <source>it ends before it starts</source>
        <translation>sie endet vor ihrem Start</translation>
    </message>
    <message>
        <source>the next one starts before it, or with it</source>
        <translation>die nächste startet vorher oder gleichzeitig</translation>
    </message>
    <message>
        <source>it starts as %1 do</source>
        <translation>sie beginnt wie %1</translation>
    </message>
    <message>
        <source>SUP streams</source>
        <translation>SUP-Datenströme</translation>
    </message>
    <message>
        <source>VobSub pairs</source>
        <translation>VobSub-Paare</translation>
    </message>
    <message>
        <source>Matroska files</source>
        <translation>Matroska-Dateien</translation>
    </message>
    <message>
        <source>Program streams</source>
        <translation>Programmströme</translation>
    </message>
    <message>
        <source>Authoring lists</source>
        <translation>Authoring-Listen</translation>
    </message>
    <message>
        <source>it holds no DVD subtitles</source>
        <translation>sie enthält keine DVD-Untertitel</translation>
    </message>
    <message>
        <source>it has several tracks: %1</source>
        <translation>sie hat mehrere Spuren: %1</translation>
    </message>
    <message>
        <source>several tracks are in %1: %2</source>
        <translation>mehrere Spuren sind in %1: %2</translation>
    </message>
    <message>
        <source>there is no track %1; it has %2</source>
        <translation>es gibt keine Spur %1; vorhanden sind %2</translation>
    </message>
    <message>
        <source>it has no program chains</source>
        <translation>sie hat keine Programmketten</translation>
    </message>
    <message>
        <source>its table of title chains stands outside the file</source>
        <translation>ihre Tabelle der Titelketten steht außerhalb der Datei</translation>
    </message>
    <message>
        <source>its table of menu languages stands outside the file</source>
        <translation>ihre Tabelle der Menüsprachen steht außerhalb der Datei</translation>
    </message>
    <message numerus="yes">
        <source>%n table of menu chains outside the file left out</source>
        <comment>%n tables of menu chains outside the file left out</comment>
        <translation>
            <numerusform>%n Tabelle mit Menüketten außerhalb der Datei weggelassen</numerusform>
            <numerusform>%n Tabellen mit Menüketten außerhalb der Datei weggelassen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n program chain outside the file or its table left out</source>
        <comment>%n program chains outside the file or its table left out</comment>
        <translation>
            <numerusform>%n Programmkette außerhalb der Datei oder ihrer Tabelle weggelassen</numerusform>
            <numerusform>%n Programmketten außerhalb der Datei oder ihrer Tabelle weggelassen</numerusform>
        </translation>
    </message>
    <message>
        <source>its tables overlap; what follows the first of them is left out</source>
        <translation>ihre Tabellen überlappen; was der ersten folgt, wird weggelassen</translation>
    </message>
    <message>
        <source>title menu</source>
        <translation>Titelmenü</translation>
    </message>
    <message>
        <source>root menu</source>
        <translation>Hauptmenü</translation>
    </message>
    <message>
        <source>subpicture menu</source>
        <translation>Untertitelmenü</translation>
    </message>
    <message>
        <source>audio menu</source>
        <translation>Tonmenü</translation>
    </message>
    <message>
        <source>angle menu</source>
        <translation>Blickwinkelmenü</translation>
    </message>
    <message>
        <source>chapter menu</source>
        <translation>Kapitelmenü</translation>
    </message>
    <message>
        <source>menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>large letters</source>
        <translation>große Schrift</translation>
    </message>
    <message>
        <source>for children</source>
        <translation>für Kinder</translation>
    </message>
    <message>
        <source>captions</source>
        <translation>für Hörgeschädigte</translation>
    </message>
    <message>
        <source>captions, large letters</source>
        <translation>für Hörgeschädigte, große Schrift</translation>
    </message>
    <message>
        <source>captions for children</source>
        <translation>für hörgeschädigte Kinder</translation>
    </message>
    <message>
        <source>forced</source>
        <translation>erzwungen</translation>
    </message>
    <message>
        <source>director&apos;s comments</source>
        <translation>Kommentare der Regie</translation>
    </message>
    <message>
        <source>director&apos;s comments, large letters</source>
        <translation>Kommentare der Regie, große Schrift</translation>
    </message>
    <message>
        <source>director&apos;s comments for children</source>
        <translation>Kommentare der Regie für Kinder</translation>
    </message>
    <message>
        <source>letterbox</source>
        <translation>Letterbox</translation>
    </message>
    <message>
        <source>pan and scan</source>
        <translation>Pan and Scan</translation>
    </message>
    <message>
        <source>it is too long: an IFO file has at most 1,048,576 bytes</source>
        <translation>sie ist zu lang: eine IFO-Datei hat höchstens 1.048.576 Bytes</translation>
    </message>
    <message>
        <source>it is no IFO file: it starts with neither DVDVIDEO-VTS nor DVDVIDEO-VMG</source>
        <translation>sie ist keine IFO-Datei: sie beginnt weder mit DVDVIDEO-VTS noch mit DVDVIDEO-VMG</translation>
    </message>
    <message>
        <source>it is cut short: of its first 2,048 bytes there are %1</source>
        <translation>sie ist abgeschnitten: von ihren ersten 2.048 Bytes sind %1 vorhanden</translation>
    </message>
    <message>
        <source>first play</source>
        <translation>erste Wiedergabe</translation>
    </message>
    <message>
        <source>title %1</source>
        <translation>Titel %1</translation>
    </message>
    <message>
        <source>title %1, goes on</source>
        <translation>Titel %1, Fortsetzung</translation>
    </message>
    <message>
        <source>it is no PNG file</source>
        <translation>es ist keine PNG-Datei</translation>
    </message>
    <message>
        <source>it has %1x%2 pixels, more than 720x576</source>
        <translation>es hat %1x%2 Pixel, mehr als 720x576</translation>
    </message>
    <message>
        <source>it cannot be decoded: %1</source>
        <translation>es kann nicht dekodiert werden: %1</translation>
    </message>
    <message>
        <source>it has %1 colours, of which a subtitle has at most four</source>
        <translation>es hat %1 Farben, ein Untertitel aber höchstens vier</translation>
    </message>
    <message>
        <source>it has no list of tracks</source>
        <translation>sie hat keine Liste der Spuren</translation>
    </message>
    <message>
        <source>its unit of time, %1 ns, is none that a film has</source>
        <translation>ihre Zeiteinheit, %1 ns, ist keine, die ein Film hat</translation>
    </message>
    <message>
        <source>its list of tracks at byte %1 is too long</source>
        <translation>ihre Liste der Spuren bei Byte %1 ist zu lang</translation>
    </message>
    <message>
        <source>it is damaged at byte %1; what stands there is left out</source>
        <translation>sie ist bei Byte %1 beschädigt; was dort steht, wird weggelassen</translation>
    </message>
    <message>
        <source>it is damaged at byte %1 and %2 more; what stands there is left out</source>
        <translation>sie ist bei Byte %1 und %2 weiteren beschädigt; was dort steht, wird weggelassen</translation>
    </message>
    <message>
        <source>it is cut short at byte %1</source>
        <translation>sie ist bei Byte %1 abgeschnitten</translation>
    </message>
    <message>
        <source>it is no Matroska file: it does not start with an EBML header</source>
        <translation>sie ist keine Matroska-Datei: sie beginnt nicht mit einem EBML-Kopf</translation>
    </message>
    <message>
        <source>its header is damaged</source>
        <translation>ihr Kopf ist beschädigt</translation>
    </message>
    <message>
        <source>its settings cannot be uncompressed, so that it has no palette</source>
        <translation>ihre Einstellungen können nicht entpackt werden, sodass sie keine Palette hat</translation>
    </message>
    <message>
        <source>it has custom colours on; the subtitles keep their own</source>
        <translation>eigene Farben sind eingeschaltet; die Untertitel behalten ihre</translation>
    </message>
    <message>
        <source>track %1 is of another kind (%2)</source>
        <translation>Spur %1 ist von anderer Art (%2)</translation>
    </message>
    <message>
        <source>track %1 %2</source>
        <translation>Spur %1 %2</translation>
    </message>
    <message>
        <source>track %1 has no subtitles</source>
        <translation>Spur %1 hat keine Untertitel</translation>
    </message>
    <message>
        <source>track %1</source>
        <translation>Spur %1</translation>
    </message>
    <message numerus="yes">
        <source>%n block left out, laced (several units in one), at byte %1</source>
        <comment>%n blocks left out, laced (several units in one), the first at byte %1</comment>
        <translation>
            <numerusform>%n Block weggelassen, verschränkt (mehrere Einheiten in einem), bei Byte %1</numerusform>
            <numerusform>%n Blöcke weggelassen, verschränkt (mehrere Einheiten in einem), der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block left out, longer than a unit can be, at byte %1</source>
        <comment>%n blocks left out, longer than a unit can be, the first at byte %1</comment>
        <translation>
            <numerusform>%n Block weggelassen, länger als eine Einheit sein kann, bei Byte %1</numerusform>
            <numerusform>%n Blöcke weggelassen, länger als eine Einheit sein kann, der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block left out, compressed in a way that it cannot be undone, at byte %1</source>
        <comment>%n blocks left out, compressed in a way that it cannot be undone, the first at byte %1</comment>
        <translation>
            <numerusform>%n Block weggelassen, so gepackt, dass er nicht entpackt werden kann, bei Byte %1</numerusform>
            <numerusform>%n Blöcke weggelassen, so gepackt, dass sie nicht entpackt werden können, der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block left out, without a unit, at byte %1</source>
        <comment>%n blocks left out, without a unit, the first at byte %1</comment>
        <translation>
            <numerusform>%n Block weggelassen, ohne Einheit, bei Byte %1</numerusform>
            <numerusform>%n Blöcke weggelassen, ohne Einheit, der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block left out, the unit cut short, at byte %1</source>
        <comment>%n blocks left out, the unit cut short, the first at byte %1</comment>
        <translation>
            <numerusform>%n Block weggelassen, die Einheit abgeschnitten, bei Byte %1</numerusform>
            <numerusform>%n Blöcke weggelassen, die Einheit abgeschnitten, der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block with bytes behind the unit, which are left out, at byte %1</source>
        <comment>%n blocks with bytes behind the unit, which are left out, the first at byte %1</comment>
        <translation>
            <numerusform>%n Block mit Bytes hinter der Einheit, die weggelassen werden, bei Byte %1</numerusform>
            <numerusform>%n Blöcke mit Bytes hinter der Einheit, die weggelassen werden, der erste bei Byte %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle has no end but in the file&apos;s own durations, which are not kept</source>
        <comment>%n subtitles have no end but in the file&apos;s own durations, which are not kept</comment>
        <translation>
            <numerusform>%n Untertitel hat ein Ende nur in den Dauern der Datei, die nicht erhalten bleiben</numerusform>
            <numerusform>%n Untertitel haben ein Ende nur in den Dauern der Datei, die nicht erhalten bleiben</numerusform>
        </translation>
    </message>
    <message>
        <source>is compressed with bzlib, which is not read</source>
        <translation>ist mit bzlib gepackt, das nicht gelesen wird</translation>
    </message>
    <message>
        <source>is compressed with lzo1x, which is not read</source>
        <translation>ist mit lzo1x gepackt, das nicht gelesen wird</translation>
    </message>
    <message>
        <source>is compressed in a way that is not known</source>
        <translation>ist auf unbekannte Weise gepackt</translation>
    </message>
    <message>
        <source>is encrypted</source>
        <translation>ist verschlüsselt</translation>
    </message>
    <message>
        <source>is packed more often than any program does</source>
        <translation>ist öfter gepackt, als ein Programm es tut</translation>
    </message>
    <message>
        <source>zlib cannot be started</source>
        <translation>zlib kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>more bytes come out than a unit has</source>
        <translation>es kommen mehr Bytes heraus, als eine Einheit hat</translation>
    </message>
    <message>
        <source>they are no zlib data, or too many</source>
        <translation>es sind keine zlib-Daten, oder zu viele</translation>
    </message>
    <message>
        <source>they are too many</source>
        <translation>es sind zu viele</translation>
    </message>
    <message>
        <source>%1 was read as well, the next part of the title</source>
        <translation>%1 wurde ebenfalls gelesen, der nächste Teil des Titels</translation>
    </message>
    <message>
        <source>%1 to %2 were read as well, the further parts of the title</source>
        <translation>%1 bis %2 wurden ebenfalls gelesen, die weiteren Teile des Titels</translation>
    </message>
    <message>
        <source>%1 has no palette for it: %2</source>
        <translation>%1 hat dafür keine Palette: %2</translation>
    </message>
    <message>
        <source>%1 has no palette for it</source>
        <translation>%1 hat dafür keine Palette</translation>
    </message>
    <message>
        <source>the clock restarts at %1; times go on</source>
        <translation>die Uhr beginnt bei %1 neu; die Zeiten laufen weiter</translation>
    </message>
    <message>
        <source>the clock restarts %1 times, first at %2; times go on</source>
        <translation>die Uhr beginnt %1-mal neu, zuerst bei %2; die Zeiten laufen weiter</translation>
    </message>
    <message>
        <source>its subtitles take more than 2 GiB</source>
        <translation>ihre Untertitel brauchen mehr als 2 GiB</translation>
    </message>
    <message>
        <source>no pack header of a program stream is in it</source>
        <translation>kein Pack-Kopf eines Programmstroms ist darin</translation>
    </message>
    <message>
        <source>the file is encrypted</source>
        <translation>die Datei ist verschlüsselt</translation>
    </message>
    <message numerus="yes">
        <source>%n packet is encrypted (at byte %1); its subtitle is left out</source>
        <comment>%n packets are encrypted (the first at byte %1); their subtitles are left out</comment>
        <translation>
            <numerusform>%n Paket ist verschlüsselt (bei Byte %1); sein Untertitel wird weggelassen</numerusform>
            <numerusform>%n Pakete sind verschlüsselt (das erste bei Byte %1); ihre Untertitel werden weggelassen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle is cut short and left out (at byte %1)</source>
        <comment>%n subtitles are cut short and left out (the first at byte %1)</comment>
        <translation>
            <numerusform>%n Untertitel ist abgeschnitten und wird weggelassen (bei Byte %1)</numerusform>
            <numerusform>%n Untertitel sind abgeschnitten und werden weggelassen (der erste bei Byte %1)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle had a wrong size (at byte %1), which was mended</source>
        <comment>%n subtitles had a wrong size (the first at byte %1), which was mended</comment>
        <translation>
            <numerusform>%n Untertitel hatte eine falsche Größe (bei Byte %1), die berichtigt wurde</numerusform>
            <numerusform>%n Untertitel hatten eine falsche Größe (der erste bei Byte %1), die berichtigt wurde</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle has no time of its own (at byte %1); the clock of the stream tells about when it starts</source>
        <comment>%n subtitles have no time of their own (the first at byte %1); the clock of the stream tells about when it starts</comment>
        <translation>
            <numerusform>%n Untertitel hat keine eigene Zeit (bei Byte %1); die Uhr des Datenstroms sagt ungefähr, wann er startet</numerusform>
            <numerusform>%n Untertitel haben keine eigene Zeit (der erste bei Byte %1); die Uhr des Datenstroms sagt ungefähr, wann sie starten</numerusform>
        </translation>
    </message>
    <message>
        <source>the lines are not in the order of time; they were sorted</source>
        <translation>die Zeilen sind nicht nach der Zeit geordnet; sie wurden sortiert</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle starts before 0</source>
        <comment>%n subtitles start before 0</comment>
        <translation>
            <numerusform>%n Untertitel startet vor 0</numerusform>
            <numerusform>%n Untertitel starten vor 0</numerusform>
        </translation>
    </message>
    <message>
        <source>the index names the same subtitles over and over: %1 bytes of them out of a .sub of %2 bytes</source>
        <translation>der Index nennt dieselben Untertitel immer wieder: %1 Bytes davon aus einer .sub von %2 Bytes</translation>
    </message>
    <message>
        <source>the index has custom colours on; the subtitles keep their own</source>
        <translation>der Index hat eigene Farben eingeschaltet; die Untertitel behalten ihre</translation>
    </message>
    <message>
        <source>the index shows forced subtitles alone; all are read</source>
        <translation>der Index zeigt nur erzwungene Untertitel; alle werden gelesen</translation>
    </message>
    <message>
        <source>the index has a time offset of %1 ms, which is not applied</source>
        <translation>der Index hat einen Zeitversatz von %1 ms, der nicht angewandt wird</translation>
    </message>
    <message>
        <source>it is too long for an index</source>
        <translation>sie ist zu lang für einen Index</translation>
    </message>
    <message>
        <source>the .sub is none of a VobSub pair: %1</source>
        <translation>die .sub gehört zu keinem VobSub-Paar: %1</translation>
    </message>
    <message>
        <source>there is no .idx beside it: times are those of the .sub, languages are unknown</source>
        <translation>daneben steht keine .idx: die Zeiten sind die der .sub, die Sprachen sind unbekannt</translation>
    </message>
    <message>
        <source>its .idx cannot be read: %1</source>
        <translation>ihre .idx kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the .idx beside it is no VobSub index</source>
        <translation>die .idx daneben ist kein VobSub-Index</translation>
    </message>
    <message>
        <source>it is no VobSub index</source>
        <translation>sie ist kein VobSub-Index</translation>
    </message>
    <message>
        <source>there is no %1 beside it</source>
        <translation>daneben steht keine %1</translation>
    </message>
    <message>
        <source>the .idx names no subtitle: the .sub is read by itself</source>
        <translation>die .idx nennt keinen Untertitel: die .sub wird allein gelesen</translation>
    </message>
    <message>
        <source>its .sub: %1</source>
        <translation>ihre .sub: %1</translation>
    </message>
    <message>
        <source>its .sub cannot be read: %1</source>
        <translation>ihre .sub kann nicht gelesen werden: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n line is no time and position (the first is line %1)</source>
        <comment>%n lines are no time and position (the first is line %1)</comment>
        <translation>
            <numerusform>%n Zeile ist keine Zeit und Position (die erste ist Zeile %1)</numerusform>
            <numerusform>%n Zeilen sind keine Zeit und Position (die erste ist Zeile %1)</numerusform>
        </translation>
    </message>
    <message>
        <source>there is more in the index that cannot be read</source>
        <translation>der Index enthält noch mehr, das nicht gelesen werden kann</translation>
    </message>
    <message>
        <source>line %1 has no palette that can be read</source>
        <translation>Zeile %1 hat keine lesbare Palette</translation>
    </message>
    <message>
        <source>line %1: the palette has %2 of 16 colours; the others are black</source>
        <translation>Zeile %1: die Palette hat %2 von 16 Farben; die anderen sind schwarz</translation>
    </message>
    <message>
        <source>line %1: more than %2 languages are not read</source>
        <translation>Zeile %1: mehr als %2 Sprachen werden nicht gelesen</translation>
    </message>
    <message>
        <source>line %1 is no delay</source>
        <translation>Zeile %1 ist keine Verzögerung</translation>
    </message>
    <message>
        <source>%1; the same of %2 more</source>
        <translation>%1; dasselbe bei %2 weiteren</translation>
    </message>
    <message>
        <source>position %1 is outside the .sub, which has %2 bytes</source>
        <translation>Position %1 liegt außerhalb der .sub, die %2 Bytes hat</translation>
    </message>
    <message>
        <source>no whole subtitle stands at position %1</source>
        <translation>an Position %1 steht kein ganzer Untertitel</translation>
    </message>
    <message>
        <source>no subtitle starts at position %1, but at %2 in decimal</source>
        <translation>an Position %1 beginnt kein Untertitel, aber an %2 dezimal</translation>
    </message>
    <message>
        <source>%1; the subtitle of its time was taken</source>
        <translation>%1; der Untertitel ihrer Zeit wurde genommen</translation>
    </message>
    <message>
        <source>no subtitle starts at position %1; the one of its time was taken</source>
        <translation>an Position %1 beginnt kein Untertitel; der ihrer Zeit wurde genommen</translation>
    </message>
    <message>
        <source>the subtitle at position %1 is of another time; the one of its time was taken</source>
        <translation>der Untertitel an Position %1 ist von anderer Zeit; der ihrer Zeit wurde genommen</translation>
    </message>
    <message>
        <source>no subtitle starts at position %1; the next one was taken</source>
        <translation>an Position %1 beginnt kein Untertitel; der nächste wurde genommen</translation>
    </message>
    <message>
        <source>the subtitle has the time stamp %1, which is not the line&apos;s; the line&apos;s time was taken</source>
        <translation>der Untertitel hat den Zeitstempel %1, der nicht der der Zeile ist; die Zeit der Zeile wurde genommen</translation>
    </message>
    <message>
        <source>the subtitle belongs to substream %1, not %2</source>
        <translation>der Untertitel gehört zum Teilstrom %1, nicht %2</translation>
    </message>
    <message>
        <source>stream %1, subtitle %2</source>
        <translation>Datenstrom %1, Untertitel %2</translation>
    </message>
    <message>
        <source>subtitle %1</source>
        <translation>Untertitel %1</translation>
    </message>
    <message>
        <source>no signature stands at %1</source>
        <translation>keine Signatur steht bei %1</translation>
    </message>
    <message>
        <source>%1 starts before 0, which no .sub can say</source>
        <translation>%1 startet vor 0, was keine .sub angeben kann</translation>
    </message>
    <message>
        <source>%1 starts after 26:30:43, which no .sub can say</source>
        <translation>%1 startet nach 26:30:43, was keine .sub angeben kann</translation>
    </message>
    <message>
        <source>%1 has no unit: its size field is %2</source>
        <translation>%1 hat keine Einheit: das Größenfeld ist %2</translation>
    </message>
    <message>
        <source>a VobSub pair has 1 to %1 languages</source>
        <translation>ein VobSub-Paar hat 1 bis %1 Sprachen</translation>
    </message>
    <message>
        <source>subtitle %1 is cut short; %2 bytes were filled with zeros</source>
        <translation>Untertitel %1 ist abgeschnitten; %2 Bytes wurden mit Nullen aufgefüllt</translation>
    </message>
    <message>
        <source>the subtitles are not in the order of time; they were sorted</source>
        <translation>die Untertitel sind nicht nach der Zeit geordnet; sie wurden sortiert</translation>
    </message>
    <message>
        <source>%1 bytes after the last subtitle were left out</source>
        <translation>%1 Bytes nach dem letzten Untertitel wurden weggelassen</translation>
    </message>
    <message>
        <source>subtitle %1 cannot be converted and is left out</source>
        <translation>Untertitel %1 kann nicht umgewandelt werden und wird weggelassen</translation>
    </message>
    <message>
        <source>subtitle %1 has an area without pixels and is left out</source>
        <translation>Untertitel %1 hat einen Bereich ohne Pixel und wird weggelassen</translation>
    </message>
    <message>
        <source>subtitle %1 is larger than 720x576, which spumux does not take, and is left out</source>
        <translation>Untertitel %1 ist größer als 720x576, was spumux nicht annimmt, und wird weggelassen</translation>
    </message>
    <message>
        <source>subtitle %1 starts outside of the 13 hours that spumux can tell and is left out</source>
        <translation>Untertitel %1 startet außerhalb der 13 Stunden, die spumux angeben kann, und wird weggelassen</translation>
    </message>
    <message>
        <source>subtitle %1 has four visible colours and an odd size: a line or column at its edge stands twice, since spumux has no fifth colour for a transparent one</source>
        <translation>Untertitel %1 hat vier sichtbare Farben und eine ungerade Größe: eine Zeile oder Spalte am Rand steht doppelt, weil spumux keine fünfte Farbe für eine durchsichtige hat</translation>
    </message>
    <message>
        <source>subtitle %1 has a line of %2 bits, at which spumux may end its run</source>
        <translation>Untertitel %1 hat eine Zeile von %2 Bits, bei der spumux abbrechen kann</translation>
    </message>
    <message>
        <source>subtitle %1 starts where subtitle %2 does, which spumux will leave out</source>
        <translation>Untertitel %1 startet mit Untertitel %2, den spumux weglassen wird</translation>
    </message>
    <message>
        <source>cannot be converted</source>
        <translation>kann nicht umgewandelt werden</translation>
    </message>
    <message>
        <source>text cannot be drawn without a display</source>
        <translation>ohne Anzeige kann kein Text gezeichnet werden</translation>
    </message>
    <message>
        <source>the subtitle&apos;s area is reversed, so that it has no picture</source>
        <translation>der Bereich des Untertitels ist umgekehrt, sodass er kein Bild hat</translation>
    </message>
    <message>
        <source>its control data is not complete</source>
        <translation>seine Steuerdaten sind nicht vollständig</translation>
    </message>
    <message>
        <source>the control data of the second stream&apos;s subtitle is not complete</source>
        <translation>die Steuerdaten des Untertitels des zweiten Datenstroms sind nicht vollständig</translation>
    </message>
    <message>
        <source>the merged picture does not fit a unit of 65535 bytes</source>
        <translation>das zusammengeführte Bild passt nicht in eine Einheit von 65535 Bytes</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message numerus="yes">
        <source>subtitle %1 is longer than %2 bytes; programs, this one included, cannot read it</source>
        <comment>subtitles %1 are longer than %2 bytes; programs, this one included, cannot read them</comment>
        <translation>
            <numerusform>Untertitel %1 ist länger als %2 Bytes; Programme, auch dieses, können ihn nicht lesen</numerusform>
            <numerusform>die Untertitel %1 sind länger als %2 Bytes; Programme, auch dieses, können sie nicht lesen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 pictures could not be written; this is the first one</source>
        <translation>%1 Bilder konnten nicht geschrieben werden; dies ist das erste</translation>
    </message>
    <message>
        <source>both streams end with bytes that are no whole packet, which nothing can follow; salvage drops them</source>
        <translation>beide Datenströme enden mit Bytes, die kein ganzes Paket sind, denen nichts folgen kann; salvage verwirft sie</translation>
    </message>
    <message>
        <source>%1 exists; --force writes over it</source>
        <translation>%1 ist schon vorhanden; --force überschreibt es</translation>
    </message>
    <message>
        <source>%1; nothing is written</source>
        <translation>%1; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>unterbrochen</translation>
    </message>
    <message>
        <source>no steps</source>
        <translation>keine Schritte</translation>
    </message>
    <message>
        <source>written to %1</source>
        <translation>geschrieben nach %1</translation>
    </message>
    <message>
        <source>%1 and %2 would both be written to %3</source>
        <translation>%1 und %2 würden beide nach %3 geschrieben</translation>
    </message>
    <message>
        <source>the folder cannot be created: %1</source>
        <translation>der Ordner kann nicht angelegt werden: %1</translation>
    </message>
    <message>
        <source>%1 of %2 files could not be done</source>
        <translation>%1 von %2 Dateien konnten nicht bearbeitet werden</translation>
    </message>
    <message>
        <source>%1 of %2 files have subtitles that are left as they are</source>
        <translation>%1 von %2 Dateien haben Untertitel, die bleiben, wie sie sind</translation>
    </message>
    <message>
        <source>no problem found</source>
        <translation>kein Problem gefunden</translation>
    </message>
    <message>
        <source>Print the version and exit</source>
        <translation>Die Version ausgeben und beenden</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Print this help message and exit</source>
        <translation>Diese Hilfe ausgeben und beenden</translation>
    </message>
    <message>
        <source>a command</source>
        <translation>ein Befehl</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Report on a stream, as the window does</source>
        <translation>Über einen Datenstrom berichten, wie das Fenster es tut</translation>
    </message>
    <message>
        <source>Write one JSON object</source>
        <translation>Ein JSON-Objekt schreiben</translation>
    </message>
    <message>
        <source>List the subtitles, one a line</source>
        <translation>Die Untertitel auflisten, einen je Zeile</translation>
    </message>
    <message>
        <source>Write a JSON array of objects</source>
        <translation>Eine JSON-Liste von Objekten schreiben</translation>
    </message>
    <message>
        <source>Tell every problem of a stream; exit code 1 if there is one</source>
        <translation>Jedes Problem eines Datenstroms melden; Exit-Code 1, wenn es eines gibt</translation>
    </message>
    <message>
        <source>Tell what two streams differ in; exit code 1 if they do</source>
        <translation>Melden, worin sich zwei Datenströme unterscheiden; Exit-Code 1, wenn sie es tun</translation>
    </message>
    <message>
        <source>Stream to compare it with</source>
        <translation>Datenstrom, mit dem verglichen wird</translation>
    </message>
    <message>
        <source>A&apos;s track, by its number or its language</source>
        <translation>Die Spur von A, nach Nummer oder Sprache</translation>
    </message>
    <message>
        <source>The same of B</source>
        <translation>Dasselbe von B</translation>
    </message>
    <message>
        <source>List the subtitle streams that a file of any kind holds</source>
        <translation>Die Untertitel-Datenströme einer Datei beliebiger Art auflisten</translation>
    </message>
    <message>
        <source>is neither spec nor player</source>
        <translation>ist weder spec noch player</translation>
    </message>
    <message>
        <source>Lines of the frame that the stream is for</source>
        <translation>Zeilen der Bildfläche, für die der Datenstrom ist</translation>
    </message>
    <message>
        <source>List the program chains of an IFO file with their palettes</source>
        <translation>Die Programmketten einer IFO-Datei mit ihren Paletten auflisten</translation>
    </message>
    <message>
        <source>Information file of a disc (.ifo)</source>
        <translation>Informationsdatei einer Disc (.ifo)</translation>
    </message>
    <message>
        <source>Milliseconds, with or without decimals, after the subtitle&apos;s start; 0 where --player is alone</source>
        <translation>Millisekunden, mit oder ohne Nachkommastellen, nach dem Start des Untertitels; 0, wenn --player allein steht</translation>
    </message>
    <message>
        <source>is no number of milliseconds from 0 on</source>
        <translation>ist keine Anzahl von Millisekunden ab 0</translation>
    </message>
    <message>
        <source>Save one subtitle&apos;s picture as PNG</source>
        <translation>Das Bild eines Untertitels als PNG speichern</translation>
    </message>
    <message>
        <source>Number of the subtitle, from 1</source>
        <translation>Nummer des Untertitels, ab 1</translation>
    </message>
    <message>
        <source>does not end in .png</source>
        <translation>endet nicht auf .png</translation>
    </message>
    <message>
        <source>Show the whole frame of 720x480 or 720x576 pixels</source>
        <translation>Die ganze Bildfläche von 720x480 oder 720x576 Pixeln zeigen</translation>
    </message>
    <message>
        <source>What the frame is filled with; none without --frame: the subtitle&apos;s own picture</source>
        <translation>Womit die Bildfläche gefüllt wird; none ohne --frame: das Bild des Untertitels selbst</translation>
    </message>
    <message>
        <source>As a player shows it, with all control sequences at their times</source>
        <translation>Wie ein Player es zeigt, mit allen Steuersequenzen zu ihren Zeiten</translation>
    </message>
    <message>
        <source>Save all pictures and their list for authoring</source>
        <translation>Alle Bilder und ihre Liste für das Authoring speichern</translation>
    </message>
    <message>
        <source>Write BASE_SubPng/ and BASE_spu.xml; else FILE without its last four characters</source>
        <translation>BASE_SubPng/ und BASE_spu.xml schreiben; sonst FILE ohne die letzten vier Zeichen</translation>
    </message>
    <message>
        <source>Put streams one behind another</source>
        <translation>Datenströme aneinanderhängen</translation>
    </message>
    <message>
        <source>Streams, at least two</source>
        <translation>Datenströme, mindestens zwei</translation>
    </message>
    <message>
        <source>How long after a stream&apos;s last end the next one starts</source>
        <translation>Wie lange nach dem letzten Ende eines Datenstroms der nächste beginnt</translation>
    </message>
    <message>
        <source>When each stream but the first starts, [[h:]m:]s, in place of --gap</source>
        <translation>Wann jeder Datenstrom außer dem ersten beginnt, [[h:]m:]s, anstelle von --gap</translation>
    </message>
    <message>
        <source>Of each file that has several: number or language</source>
        <translation>Von jeder Datei, die mehrere hat: Nummer oder Sprache</translation>
    </message>
    <message>
        <source>Run the steps of a recipe on any number of streams</source>
        <translation>Die Schritte eines Rezepts auf beliebig viele Datenströme anwenden</translation>
    </message>
    <message>
        <source>Folder for the new files, made where it is missing</source>
        <translation>Ordner für die neuen Dateien, angelegt, wo er fehlt</translation>
    </message>
    <message>
        <source>Write over files that exist</source>
        <translation>Vorhandene Dateien überschreiben</translation>
    </message>
    <message>
        <source>Say what would change and write nothing</source>
        <translation>Sagen, was sich ändern würde, und nichts schreiben</translation>
    </message>
    <message>
        <source>Write a JSON array of objects, one a file</source>
        <translation>Eine JSON-Liste von Objekten schreiben, eines je Datei</translation>
    </message>
    <message>
        <source>Say what would change and write nothing; needs no -o</source>
        <translation>Sagen, was sich ändern würde, und nichts schreiben; braucht kein -o</translation>
    </message>
    <message>
        <source>Convert a palette file</source>
        <translation>Eine Palettendatei umwandeln</translation>
    </message>
    <message>
        <source>Palette file: .ifo, .pal or .rgb</source>
        <translation>Palettendatei: .ifo, .pal oder .rgb</translation>
    </message>
    <message>
        <source>does not end in .pal or .rgb</source>
        <translation>endet nicht auf .pal oder .rgb</translation>
    </message>
    <message>
        <source>Program chain of an IFO file, as &apos;palettes&apos; numbers it</source>
        <translation>Programmkette einer IFO-Datei, wie „palettes“ sie nummeriert</translation>
    </message>
    <message>
        <source>Save the good packets of a damaged stream</source>
        <translation>Die guten Pakete eines beschädigten Datenstroms sichern</translation>
    </message>
    <message>
        <source>Lay a second stream over the first</source>
        <translation>Einen zweiten Datenstrom über den ersten legen</translation>
    </message>
    <message>
        <source>Stream to lay over it</source>
        <translation>Datenstrom, der darübergelegt wird</translation>
    </message>
    <message>
        <source>PRIMARY&apos;s track, by its number or its language</source>
        <translation>Die Spur von PRIMARY, nach Nummer oder Sprache</translation>
    </message>
    <message>
        <source>The same of SECONDARY</source>
        <translation>Dasselbe von SECONDARY</translation>
    </message>
    <message>
        <source>Lines of the frame</source>
        <translation>Zeilen der Bildfläche</translation>
    </message>
    <message>
        <source>Which code, 0 to 3, each pixel code of SECONDARY becomes: a digit for each, code 0 first; a dot leaves a code as it is</source>
        <translation>Zu welchem Code, 0 bis 3, jeder Pixelcode von SECONDARY wird: eine Ziffer für jeden, Code 0 zuerst; ein Punkt lässt einen Code, wie er ist</translation>
    </message>
    <message>
        <source>digits 0 to 3</source>
        <translation>Ziffern von 0 bis 3</translation>
    </message>
    <message>
        <source>Palette entries of the new stream&apos;s codes in the same way, in hexadecimal digits; else PRIMARY&apos;s</source>
        <translation>Paletteneinträge der Codes des neuen Datenstroms auf dieselbe Weise, in hexadezimalen Ziffern; sonst die von PRIMARY</translation>
    </message>
    <message>
        <source>hexadecimal digits</source>
        <translation>hexadezimale Ziffern</translation>
    </message>
    <message>
        <source>Tell what each packet would lose or show otherwise, and write nothing; needs no -o</source>
        <translation>Melden, was jedes Paket verlöre oder anders zeigte, und nichts schreiben; braucht kein -o</translation>
    </message>
    <message>
        <source>Write one JSON object, with --dry-run</source>
        <translation>Ein JSON-Objekt schreiben, mit --dry-run</translation>
    </message>
    <message>
        <source>pairs: a packet for each subtitle of PRIMARY; split: packets for whatever is shown at a time, PRIMARY&apos;s alone, both, SECONDARY&apos;s alone</source>
        <translation>pairs: ein Paket für jeden Untertitel von PRIMARY; split: Pakete für das, was jeweils gezeigt wird, der von PRIMARY allein, beide, der von SECONDARY allein</translation>
    </message>
    <message>
        <source>is neither pairs nor split</source>
        <translation>ist weder pairs noch split</translation>
    </message>
    <message>
        <source>With --mode split: close gaps of less than these milliseconds, with or without decimals</source>
        <translation>Mit --mode split: Lücken unter so vielen Millisekunden schließen, mit oder ohne Nachkommastellen</translation>
    </message>
    <message>
        <source>is no number of milliseconds from 0 to 3600000</source>
        <translation>ist keine Anzahl von Millisekunden von 0 bis 3600000</translation>
    </message>
    <message>
        <source>Lines that SECONDARY&apos;s pictures are moved down; auto: so that the fewest pixels are covered or clipped</source>
        <translation>Zeilen, um die die Bilder von SECONDARY nach unten verschoben werden; auto: so, dass die wenigsten Pixel verdeckt oder abgeschnitten werden</translation>
    </message>
    <message>
        <source>Write streams as another kind of file</source>
        <translation>Datenströme als andere Art von Datei schreiben</translation>
    </message>
    <message>
        <source>is no name that ends in .sup, .idx or .xml</source>
        <translation>ist kein Name, der auf .sup, .idx oder .xml endet</translation>
    </message>
    <message>
        <source>One of a file&apos;s tracks, by its number or its language</source>
        <translation>Eine der Spuren einer Datei, nach Nummer oder Sprache</translation>
    </message>
    <message>
        <source>Languages of the tracks, of two letters, in their order; else those that they have</source>
        <translation>Sprachen der Spuren, aus zwei Buchstaben, in ihrer Reihenfolge; sonst die, die sie haben</translation>
    </message>
    <message>
        <source>is no language such as de, ger or pt-BR</source>
        <translation>ist keine Sprache wie de, ger oder pt-BR</translation>
    </message>
    <message>
        <source>Take colours of a list&apos;s pictures together where there are too many</source>
        <translation>Farben der Bilder einer Liste zusammenfassen, wo es zu viele sind</translation>
    </message>
    <message>
        <source>Lines of the frame; else those that FILES name, or 576</source>
        <translation>Zeilen der Bildfläche; sonst die, die FILES nennen, oder 576</translation>
    </message>
    <message>
        <source>Print this help, or the help of a command</source>
        <translation>Diese Hilfe oder die Hilfe zu einem Befehl ausgeben</translation>
    </message>
    <message>
        <source>Command to tell of</source>
        <translation>Befehl, um den es geht</translation>
    </message>
    <message>
        <source>Try &apos;%1&apos;.</source>
        <translation>Versuchen Sie „%1“.</translation>
    </message>
    <message>
        <source>View and edit DVD subtitle streams without a window</source>
        <translation>DVD-Untertitel-Datenströme ohne Fenster ansehen und bearbeiten</translation>
    </message>
    <message>
        <source>%1 is required%2</source>
        <translation>%1 fehlt%2</translation>
    </message>
    <message>
        <source>%1 requires %2</source>
        <translation>%1 verlangt %2</translation>
    </message>
    <message>
        <source>%1 excludes %2</source>
        <translation>%1 schließt %2 aus</translation>
    </message>
    <message>
        <source>%1 required but received %2</source>
        <translation>%1 verlangt, aber erhalten: %2</translation>
    </message>
    <message>
        <source>%1 required %2</source>
        <translation>%1 verlangt %2</translation>
    </message>
    <message>
        <source>standard output cannot be written</source>
        <translation>die Standardausgabe kann nicht geschrieben werden</translation>
    </message>
    <message numerus="yes">
        <source>there are %1 languages for %n track</source>
        <comment>there are %1 languages for %n tracks</comment>
        <translation>
            <numerusform>es gibt %1 Sprachen für %n Spur</numerusform>
            <numerusform>es gibt %1 Sprachen für %n Spuren</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>wrote %n subtitle to %1</source>
        <comment>wrote %n subtitles to %1</comment>
        <translation>
            <numerusform>%n Untertitel nach %1 geschrieben</numerusform>
            <numerusform>%n Untertitel nach %1 geschrieben</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>a SUP file names no language</source>
        <translation>eine SUP-Datei nennt keine Sprache</translation>
    </message>
    <message>
        <source>a SUP file holds no palette</source>
        <translation>eine SUP-Datei enthält keine Palette</translation>
    </message>
    <message>
        <source>it holds no subtitle</source>
        <translation>sie enthält keinen Untertitel</translation>
    </message>
    <message>
        <source>it takes one track, and there are %1; --track names one of a file</source>
        <translation>sie nimmt eine Spur auf, und es sind %1; --track nennt eine einer Datei</translation>
    </message>
    <message>
        <source>from %1 to %2</source>
        <translation>von %1 nach %2</translation>
    </message>
    <message>
        <source>%1 the same, %2 different, %3 missing, %4 added</source>
        <translation>%1 gleich, %2 verschieden, %3 fehlen, %4 zusätzlich</translation>
    </message>
    <message>
        <source>other bytes after the last subtitle</source>
        <translation>andere Bytes nach dem letzten Untertitel</translation>
    </message>
    <message>
        <source>subtitle %1 cannot be converted</source>
        <translation>Untertitel %1 kann nicht umgewandelt werden</translation>
    </message>
    <message>
        <source>subtitle %1 has an area without pixels</source>
        <translation>Untertitel %1 hat einen Bereich ohne Pixel</translation>
    </message>
    <message>
        <source>%1 (%2 pictures could not be written; this is the first one)</source>
        <translation>%1 (%2 Bilder konnten nicht geschrieben werden; dies ist das erste)</translation>
    </message>
    <message>
        <source>%1 of %2 subtitles cannot be converted</source>
        <translation>%1 von %2 Untertiteln können nicht umgewandelt werden</translation>
    </message>
    <message>
        <source>%1 of %2 subtitles have an area without pixels</source>
        <translation>%1 von %2 Untertiteln haben einen Bereich ohne Pixel</translation>
    </message>
    <message>
        <source>wrote %1 pictures to %2, their list to %3</source>
        <translation>%1 Bilder nach %2 geschrieben, ihre Liste nach %3</translation>
    </message>
    <message>
        <source>mended: packet %1: %2</source>
        <translation>repariert: Paket %1: %2</translation>
    </message>
    <message>
        <source>mended: %1</source>
        <translation>repariert: %1</translation>
    </message>
    <message>
        <source>left: %1</source>
        <translation>geblieben: %1</translation>
    </message>
    <message>
        <source>nothing to mend</source>
        <translation>nichts zu reparieren</translation>
    </message>
    <message>
        <source>no packet was found; nothing is written</source>
        <translation>kein Paket wurde gefunden; nichts wird geschrieben</translation>
    </message>
    <message numerus="yes">
        <source>%n problem is left</source>
        <comment>%n problems are left</comment>
        <translation>
            <numerusform>%n Problem bleibt</numerusform>
            <numerusform>%n Probleme bleiben</numerusform>
        </translation>
    </message>
    <message>
        <source>[OPTIONS]</source>
        <translation>[OPTIONEN]</translation>
    </message>
    <message>
        <source>Usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message>
        <source>COMMAND</source>
        <translation>BEFEHL</translation>
    </message>
    <message>
        <source>No SUP signature found; &apos;quillmark-cli check&apos; tells where</source>
        <translation>Keine SUP-Signatur gefunden; „quillmark-cli check“ sagt, wo</translation>
    </message>
    <message>
        <source>%1; --track names one</source>
        <translation>%1; --track nennt eine</translation>
    </message>
    <message>
        <source>the name is not in UTF-8</source>
        <translation>der Name ist nicht in UTF-8</translation>
    </message>
    <message>
        <source>cannot be shown, packet at %1</source>
        <translation>nicht darstellbar, Paket bei %1</translation>
    </message>
    <message>
        <source>%1 s  %2x%3 at (%4,%5)  colours %6  opacities %7</source>
        <translation>%1 s  %2x%3 bei (%4,%5)  Farben %6  Deckkraft %7</translation>
    </message>
    <message>
        <source>Error: Primary sup file uses multiple colors or multiple transparancies
Loading secondary stream not possible.
Remove the multiple colors and/or multiple transparancies in the primary sup file and retry</source>
        <translation>Fehler: Die erste SUP-Datei verwendet mehrere Farben oder mehrere Transparenzen
Der zweite Datenstrom kann nicht geladen werden.
Entfernen Sie die mehreren Farben und/oder Transparenzen in der ersten SUP-Datei und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>Error converting subtitle!</source>
        <translation>Fehler beim Umwandeln des Untertitels!</translation>
    </message>
    <message>
        <source>Warning: Secondary subtitles have multiple colors or multiple transparancies
Overlaying may not work properly</source>
        <translation>Warnung: Die zweiten Untertitel haben mehrere Farben oder mehrere Transparenzen
Das Überlagern funktioniert möglicherweise nicht richtig</translation>
    </message>
    <message>
        <source>y-offset %1: %2 pixels covered, %3 clipped</source>
        <translation>Y-Versatz %1: %2 Pixel verdeckt, %3 abgeschnitten</translation>
    </message>
    <message>
        <source>--join requires --mode split</source>
        <translation>--join verlangt --mode split</translation>
    </message>
    <message>
        <source>alone</source>
        <translation>allein</translation>
    </message>
    <message>
        <source>%1 ms together</source>
        <translation>%1 ms gleichzeitig</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>y-offset %1, frame 720x%2</source>
        <translation>Y-Versatz %1, Bildfläche 720x%2</translation>
    </message>
    <message>
        <source>pixels: %1 covered, %2 clipped, %3 recoloured</source>
        <translation>Pixel: %1 verdeckt, %2 abgeschnitten, %3 umgefärbt</translation>
    </message>
    <message>
        <source>left out of %1: %2</source>
        <translation>weggelassen aus %1: %2</translation>
    </message>
    <message>
        <source>none</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>of the new stream, %1</source>
        <translation>vom neuen Datenstrom: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; %2</source>
        <translation>„%1“ %2</translation>
    </message>
    <message>
        <source>is neither 480 nor 576</source>
        <translation>ist weder 480 noch 576</translation>
    </message>
    <message>
        <source>names no file</source>
        <translation>nennt keine Datei</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no decimal number</source>
        <translation>„%1“ ist keine Dezimalzahl</translation>
    </message>
    <message>
        <source>Value %1 not in range %2 to %3</source>
        <translation>Wert %1 nicht im Bereich %2 bis %3</translation>
    </message>
    <message>
        <source>is not four %1 or dots</source>
        <translation>sind nicht vier %1 oder Punkte</translation>
    </message>
    <message>
        <source>SUP file, VobSub pair (.idx), Matroska file, program stream (.vob) or authoring list (.xml)</source>
        <translation>SUP-Datei, VobSub-Paar (.idx), Matroska-Datei, Programmstrom (.vob) oder Authoring-Liste (.xml)</translation>
    </message>
    <message>
        <source>Track of FILE, by its number or its language</source>
        <translation>Spur von FILE, nach Nummer oder Sprache</translation>
    </message>
    <message>
        <source>names no track</source>
        <translation>nennt keine Spur</translation>
    </message>
    <message>
        <source>File to write; takes the place of one that exists</source>
        <translation>Zu schreibende Datei; ersetzt eine vorhandene</translation>
    </message>
    <message>
        <source>Palette file: .ifo, .pal or .rgb; else the one that comes with FILE, or the start-up palette</source>
        <translation>Palettendatei: .ifo, .pal oder .rgb; sonst die, die mit FILE kommt, oder die Startpalette</translation>
    </message>
    <message>
        <source>is no range such as 3-7, 3 or 3-</source>
        <translation>ist kein Bereich wie 3-7, 3 oder 3-</translation>
    </message>
    <message numerus="yes">
        <source>%n program</source>
        <comment>%n programs</comment>
        <translation>
            <numerusform>%n Programm</numerusform>
            <numerusform>%n Programme</numerusform>
        </translation>
    </message>
    <message>
        <source>no picture</source>
        <translation>kein Bild</translation>
    </message>
    <message numerus="yes">
        <source>%n cell</source>
        <comment>%n cells</comment>
        <translation>
            <numerusform>%n Zelle</numerusform>
            <numerusform>%n Zellen</numerusform>
        </translation>
    </message>
    <message>
        <source>there is no program chain %1: it has %2</source>
        <translation>es gibt keine Programmkette %1: es sind %2</translation>
    </message>
    <message>
        <source>subtitle %1 cannot be played: %2</source>
        <translation>Untertitel %1 kann nicht abgespielt werden: %2</translation>
    </message>
    <message>
        <source>offset %1: packet %2: %3 [%4]</source>
        <translation>Offset %1: Paket %2: %3 [%4]</translation>
    </message>
    <message>
        <source>offset %1: %2 [%3]</source>
        <translation>Offset %1: %2 [%3]</translation>
    </message>
    <message>
        <source>kept %1 packets, %2 bytes</source>
        <translation>%1 Pakete behalten, %2 Bytes</translation>
    </message>
    <message>
        <source>left out %1 bytes at offset %2: %3</source>
        <translation>%1 Bytes bei Offset %2 weggelassen: %3</translation>
    </message>
    <message>
        <source>no good packet was found; nothing is written</source>
        <translation>kein gutes Paket wurde gefunden; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>%1 of %2 subtitles are left as they are</source>
        <translation>%1 von %2 Untertiteln bleiben, wie sie sind</translation>
    </message>
    <message>
        <source>%1 of %2 subtitles are left out</source>
        <translation>%1 von %2 Untertiteln wurden weggelassen</translation>
    </message>
    <message>
        <source>no subtitle would be in it: %1</source>
        <translation>kein Untertitel wäre darin: %1</translation>
    </message>
    <message>
        <source>%1 of %2 subtitles are not as asked for</source>
        <translation>%1 von %2 Untertiteln sind nicht wie verlangt</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle would be %1</source>
        <comment>%n subtitles would be %1</comment>
        <translation>
            <numerusform>%n Untertitel würde %1</numerusform>
            <numerusform>%n Untertitel würden %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle %1</source>
        <comment>%n subtitles %1</comment>
        <translation>
            <numerusform>%n Untertitel %1</numerusform>
            <numerusform>%n Untertitel %1</numerusform>
        </translation>
    </message>
    <message>
        <source>--at needs a time for each file but the first: %1 in place of %2</source>
        <translation>--at braucht eine Zeit für jede Datei außer der ersten: %1 statt %2</translation>
    </message>
    <message numerus="yes">
        <source>%n subtitle</source>
        <comment>%n subtitles</comment>
        <translation>
            <numerusform>%n Untertitel</numerusform>
            <numerusform>%n Untertitel</numerusform>
        </translation>
    </message>
    <message>
        <source>with a palette</source>
        <translation>mit Palette</translation>
    </message>
    <message>
        <source>without a palette</source>
        <translation>ohne Palette</translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation>unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>unknown option &apos;%1&apos;</source>
        <translation>unbekannte Option „%1“</translation>
    </message>
    <message>
        <source>unknown command &apos;%1&apos;</source>
        <translation>unbekannter Befehl „%1“</translation>
    </message>
    <message>
        <source>did you mean &apos;%1&apos;?</source>
        <translation>meinten Sie „%1“?</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Argumente</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>ERFORDERLICH</translation>
    </message>
    <message>
        <source>Needs</source>
        <translation>Braucht</translation>
    </message>
    <message>
        <source>Of a file that has several: number or language</source>
        <translation>Von einer Datei, die mehrere hat: Nummer oder Sprache</translation>
    </message>
    <message>
        <source>Recipe (JSON)</source>
        <translation>Rezept (JSON)</translation>
    </message>
</context>
</TS>
