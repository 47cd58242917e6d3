<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Text</name>
    <message>
        <source>the daemon has not made it active</source>
        <translation>der Dienst hat es nicht aktiv gemacht</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it</source>
        <translation>der Dienst hat kein Moodset daraus gemacht</translation>
    </message>
    <message>
        <source>%1; its log may give the reason: journalctl --user -u moodsetd</source>
        <translation>%1; vielleicht sagt sein Protokoll, warum: journalctl --user -u moodsetd</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 is active.</source>
        <translation>%1 ist aktiv.</translation>
    </message>
    <message>
        <source>%1 has a moodset, number %2.</source>
        <translation>%1 hat ein Moodset, Nummer %2.</translation>
    </message>
    <message>
        <source>the daemon has ended</source>
        <translation>der Dienst hat sich beendet</translation>
    </message>
    <message>
        <source>the time limit has passed; the daemon may still be downloading</source>
        <translation>es ist nicht rechtzeitig etwas daraus geworden; vielleicht lädt der Dienst noch herunter</translation>
    </message>
    <message>
        <source>The daemon was called. The command did not wait for the result.</source>
        <translation>Der Dienst wurde darum gebeten. Auf das Ergebnis wurde nicht gewartet.</translation>
    </message>
    <message>
        <source>%1 takes no option %2</source>
        <translation>%1 hat keine Option %2</translation>
    </message>
    <message>
        <source>no such option: %1</source>
        <translation>keine solche Option: %1</translation>
    </message>
    <message>
        <source>no such command: %1</source>
        <translation>kein solcher Befehl: %1</translation>
    </message>
    <message>
        <source>one argument too many: %1</source>
        <translation>ein Argument zu viel: %1</translation>
    </message>
    <message>
        <source>the argument %1 is missing</source>
        <translation>das Argument %1 fehlt</translation>
    </message>
    <message>
        <source>a command is missing; see moodsetctl --help</source>
        <translation>ein Befehl fehlt; siehe moodsetctl --help</translation>
    </message>
    <message>
        <source>A PICTURE is a path or a URL; set, create and preview also take an address on the network. A MOODSET is an id or a name from the table of moodsets. If a command takes both and a name is also the name of a file, it means the file.</source>
        <translation>Ein PICTURE ist ein Pfad oder eine URL; bei set, create und preview auch eine im Netz. Ein MOODSET ist die Nummer oder der Name aus der Tabelle der Moodsets; wo auch ein Bild stehen kann, meint ein Name, den auch eine Datei trägt, die Datei.</translation>
    </message>
    <message>
        <source>0: the command succeeded; 1: it failed; 2: the arguments are wrong; 3: the daemon does not run and cannot be started; 4: the time limit has passed. If the status is not 0, one line on the standard error gives the reason.</source>
        <translation>0: getan; 1: gescheitert; 2: die Argumente ergeben keinen Sinn; 3: der Dienst läuft nicht und kann nicht gestartet werden; 4: es ist nicht rechtzeitig geschehen. Außer bei 0 sagt eine Zeile auf der Standardfehlerausgabe, warum.</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Überblick</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Moodsets</source>
        <translation>Moodsets</translation>
    </message>
    <message>
        <source>Bundles</source>
        <translation>Bündel</translation>
    </message>
    <message>
        <source>The library and the daemon</source>
        <translation>Die Bibliothek und der Dienst</translation>
    </message>
    <message>
        <source>Help and the shell</source>
        <translation>Hilfe und die Shell</translation>
    </message>
    <message>
        <source>Usage: moodsetctl COMMAND</source>
        <translation>Aufruf: moodsetctl BEFEHL</translation>
    </message>
    <message>
        <source>Shows the pictures, the moodsets and the theme that moodsetd keeps, and changes them.</source>
        <translation>Zeigt die Bilder, die Moodsets und das Thema, die moodsetd führt, und ändert sie.</translation>
    </message>
    <message>
        <source>Options of all commands</source>
        <translation>Optionen aller Befehle</translation>
    </message>
    <message>
        <source>To begin with</source>
        <translation>Für den Anfang</translation>
    </message>
    <message>
        <source>moodsetctl help COMMAND describes each of them.</source>
        <translation>moodsetctl help BEFEHL sagt mehr zu jedem.</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>Exit-Status</translation>
    </message>
    <message>
        <source>Usage: moodsetctl %1</source>
        <translation>Aufruf: moodsetctl %1</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;?</source>
        <translation>; meinten Sie „%1“?</translation>
    </message>
    <message>
        <source>; see %1</source>
        <translation>; siehe %1</translation>
    </message>
    <message>
        <source>an argument is empty</source>
        <translation>ein Argument ist leer</translation>
    </message>
    <message>
        <source>%1 is neither on nor off</source>
        <translation>%1 ist weder on noch off</translation>
    </message>
    <message>
        <source>%1 is no number of seconds, 0 or more</source>
        <translation>%1 ist keine Zahl von Sekunden, 0 oder mehr</translation>
    </message>
    <message>
        <source>%1 is no colour: write #rrggbb, #aarrggbb or an SVG name</source>
        <translation>%1 ist keine Farbe: schreiben Sie #rrggbb, #aarrggbb oder einen SVG-Namen</translation>
    </message>
    <message>
        <source>%1 is not of the form KEY=VALUE</source>
        <translation>%1 hat nicht die Form KEY=VALUE</translation>
    </message>
    <message>
        <source>the name has to end in .moodset or .index, in small letters</source>
        <translation>der Name muss auf .moodset oder .index enden, in Kleinbuchstaben</translation>
    </message>
    <message>
        <source>error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>keine solche Datei</translation>
    </message>
    <message>
        <source>the daemon overlooks files whose name begins with a dot</source>
        <translation>der Dienst übergeht Dateien, deren Name mit einem Punkt beginnt</translation>
    </message>
    <message>
        <source>the file cannot be opened: %1</source>
        <translation>die Datei lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>no JSON: %1</source>
        <translation>kein JSON: %1</translation>
    </message>
    <message>
        <source>the root has to be an object, in braces</source>
        <translation>die Wurzel muss ein Objekt sein, in geschweiften Klammern</translation>
    </message>
    <message>
        <source>a name with #, ? or %20 is cut or changed in places: %1</source>
        <translation>ein Name mit #, ? oder %20 wird an manchen Stellen abgeschnitten oder verändert: %1</translation>
    </message>
    <message>
        <source>unknown key %1, which is ignored</source>
        <translation>unbekannter Schlüssel %1, der übergangen wird</translation>
    </message>
    <message>
        <source>&quot;wallpaper&quot; has to name a file in images/</source>
        <translation>„wallpaper“ muss eine Datei in images/ nennen</translation>
    </message>
    <message>
        <source>the wallpaper&apos;s name must have no &quot;/&quot;: %1</source>
        <translation>der Name des Hintergrundbilds darf kein „/“ haben: %1</translation>
    </message>
    <message>
        <source>there is no images/%1</source>
        <translation>es gibt kein images/%1</translation>
    </message>
    <message>
        <source>images/%1 cannot become the wallpaper: %2</source>
        <translation>images/%1 kann kein Hintergrundbild werden: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be a text, and counts as empty</source>
        <translation>„%1“ muss ein Text sein und zählt als leer</translation>
    </message>
    <message>
        <source>the moodset will have no name</source>
        <translation>das Moodset wird keinen Namen haben</translation>
    </message>
    <message>
        <source>&quot;favorite&quot; has to be true or false, and counts as true</source>
        <translation>„favorite“ muss true oder false sein und zählt als true</translation>
    </message>
    <message>
        <source>&quot;timestamp&quot; is no time in the form of ISO 8601</source>
        <translation>„timestamp“ ist keine Zeit in der Form von ISO 8601</translation>
    </message>
    <message>
        <source>&quot;ringerVolume&quot; has to be a whole number, and counts as 80</source>
        <translation>„ringerVolume“ muss eine ganze Zahl sein und zählt als 80</translation>
    </message>
    <message>
        <source>&quot;ringerVolume&quot; is not from 0 to 100, so the volume stays as it is</source>
        <translation>„ringerVolume“ ist nicht zwischen 0 und 100, daher bleibt die Lautstärke, wie sie ist</translation>
    </message>
    <message>
        <source>without &quot;version&quot;: 2 the wallpaper is cut as that of an older bundle</source>
        <translation>ohne „version“: 2 wird das Hintergrundbild wie das eines älteren Bündels geschnitten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no colour, and is made from the wallpaper instead</source>
        <translation>„%1“ ist keine Farbe und wird stattdessen aus dem Hintergrundbild gemacht</translation>
    </message>
    <message>
        <source>&quot;secondaryColor&quot; and &quot;secondaryColors&quot; have to be the same: each is read in one place only</source>
        <translation>„secondaryColor“ und „secondaryColors“ müssen gleich sein: jedes wird nur an einer Stelle gelesen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object, and is left out</source>
        <translation>„%1“ muss ein Objekt sein und wird weggelassen</translation>
    </message>
    <message>
        <source>&quot;enabled&quot; has to be a number, and counts as 1: write 0 to switch the tone off</source>
        <translation>„enabled“ muss eine Zahl sein und zählt als 1: schreiben Sie 0, um den Ton abzuschalten</translation>
    </message>
    <message>
        <source>the tone&apos;s name must have no &quot;/&quot;: it has no file now</source>
        <translation>der Name des Tons darf kein „/“ haben: jetzt hat er keine Datei</translation>
    </message>
    <message>
        <source>there is no sounds/%1</source>
        <translation>es gibt kein sounds/%1</translation>
    </message>
    <message>
        <source>the folder %1 beside the index is missing</source>
        <translation>der Ordner %1 neben dem Index fehlt</translation>
    </message>
    <message>
        <source>&quot;files&quot; has to be a list, in brackets</source>
        <translation>„files“ muss eine Liste sein, in eckigen Klammern</translation>
    </message>
    <message>
        <source>the entry names no file</source>
        <translation>der Eintrag nennt keine Datei</translation>
    </message>
    <message>
        <source>%1 is listed twice</source>
        <translation>%1 steht zweimal da</translation>
    </message>
    <message>
        <source>there is no %1/%2</source>
        <translation>es gibt kein %1/%2</translation>
    </message>
    <message>
        <source>%1 wallpaper, %2, would be deleted.</source>
        <translation>%1 Hintergrundbild, %2, würde gelöscht.</translation>
    </message>
    <message>
        <source>%1 wallpapers, %2, would be deleted.</source>
        <translation>%1 Hintergrundbilder, %2, würden gelöscht.</translation>
    </message>
    <message>
        <source>%1 wallpaper, %2, is deleted.</source>
        <translation>%1 Hintergrundbild, %2, ist gelöscht.</translation>
    </message>
    <message>
        <source>%1 wallpapers, %2, are deleted.</source>
        <translation>%1 Hintergrundbilder, %2, sind gelöscht.</translation>
    </message>
    <message>
        <source>Primary colour</source>
        <translation>Erste Farbe</translation>
    </message>
    <message>
        <source>Secondary colour</source>
        <translation>Zweite Farbe</translation>
    </message>
    <message>
        <source>Highlight colour</source>
        <translation>Hervorhebungsfarbe</translation>
    </message>
    <message>
        <source>2nd highlight colour</source>
        <translation>2. Hervorhebungsfarbe</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Contrast at home</source>
        <translation>Kontrast daheim</translation>
    </message>
    <message>
        <source>in applications</source>
        <translation>in Anwendungen</translation>
    </message>
    <message>
        <source>download the picture first</source>
        <translation>laden Sie das Bild erst herunter</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>%1 is none of bash, zsh and fish</source>
        <translation>%1 ist weder bash noch zsh noch fish</translation>
    </message>
    <message>
        <source>good</source>
        <translation>gut</translation>
    </message>
    <message>
        <source>advice</source>
        <translation>Rat</translation>
    </message>
    <message>
        <source>PROBLEM</source>
        <translation>PROBLEM</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>mend it with: %1</source>
        <translation>beheben mit: %1</translation>
    </message>
    <message>
        <source>%1 problem</source>
        <translation>%1 Problem</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 Probleme</translation>
    </message>
    <message>
        <source>the moodset has gone</source>
        <translation>das Moodset ist fort</translation>
    </message>
    <message>
        <source>%1 is changed.</source>
        <translation>%1 ist geändert.</translation>
    </message>
    <message>
        <source>The theme follows with: moodsetctl set %1</source>
        <translation>Das Thema folgt mit: moodsetctl set %1</translation>
    </message>
    <message>
        <source>not a file URL</source>
        <translation>keine Datei-URL</translation>
    </message>
    <message>
        <source>cannot be read as a picture of type %1</source>
        <translation>lässt sich nicht als Bild vom Typ %1 lesen</translation>
    </message>
    <message>
        <source>cannot be read as a picture of type %1: %2</source>
        <translation>lässt sich nicht als Bild vom Typ %1 lesen: %2</translation>
    </message>
    <message>
        <source>not a picture, but %1</source>
        <translation>kein Bild, sondern %1</translation>
    </message>
    <message>
        <source>the daemon has not taken it in</source>
        <translation>der Dienst hat es nicht aufgenommen</translation>
    </message>
    <message>
        <source>Reading %1 of %2: %3</source>
        <translation>Lese %1 von %2: %3</translation>
    </message>
    <message>
        <source>%1 picture is in the library.</source>
        <translation>%1 Bild ist in der Bibliothek.</translation>
    </message>
    <message>
        <source>%1 pictures are in the library.</source>
        <translation>%1 Bilder sind in der Bibliothek.</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it: line %1, column %2: %3</source>
        <translation>der Dienst hat kein Moodset daraus gemacht: Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it; its log tells why: journalctl --user -u moodsetd</source>
        <translation>der Dienst hat kein Moodset daraus gemacht; sein Protokoll sagt, warum: journalctl --user -u moodsetd</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>Lese %1</translation>
    </message>
    <message>
        <source>%1 moodset is installed.</source>
        <translation>%1 Moodset ist installiert.</translation>
    </message>
    <message>
        <source>%1 moodsets are installed.</source>
        <translation>%1 Moodsets sind installiert.</translation>
    </message>
    <message>
        <source>no such folder</source>
        <translation>kein solcher Ordner</translation>
    </message>
    <message>
        <source>no file of a moodset and no index in it</source>
        <translation>keine Moodset-Datei und kein Index darin</translation>
    </message>
    <message>
        <source>download the picture first, or create a moodset of it</source>
        <translation>laden Sie das Bild erst herunter oder machen Sie mit create ein Moodset daraus</translation>
    </message>
    <message>
        <source>the daemon does not know this moodset; see install</source>
        <translation>der Dienst kennt dieses Moodset nicht; siehe install</translation>
    </message>
    <message>
        <source>no moodset is active</source>
        <translation>kein Moodset ist aktiv</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>The preview is in %1.</source>
        <translation>Die Vorschau ist in %1.</translation>
    </message>
    <message>
        <source>%1, %2 new, %3 gone.</source>
        <translation>%1, %2 neu, %3 fort.</translation>
    </message>
    <message>
        <source>%1 moodset</source>
        <translation>%1 Moodset</translation>
    </message>
    <message>
        <source>%1 moodsets</source>
        <translation>%1 Moodsets</translation>
    </message>
    <message>
        <source>the daemon has not removed it</source>
        <translation>der Dienst hat es nicht entfernt</translation>
    </message>
    <message>
        <source>%1 is removed.</source>
        <translation>%1 ist entfernt.</translation>
    </message>
    <message>
        <source>stays as it is</source>
        <translation>bleibt, wie er ist</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Favourite</source>
        <translation>Favorit</translation>
    </message>
    <message>
        <source>Home wallpaper</source>
        <translation>Startbild</translation>
    </message>
    <message>
        <source>Application wallpaper</source>
        <translation>Anwendungsbild</translation>
    </message>
    <message>
        <source>Ringer volume</source>
        <translation>Klingellautstärke</translation>
    </message>
    <message>
        <source>Partner space</source>
        <translation>Partnerbereich</translation>
    </message>
    <message>
        <source>Back cover</source>
        <translation>Rückschale</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keins</translation>
    </message>
    <message>
        <source>not running; it starts when it is needed</source>
        <translation>läuft nicht; er startet, wenn er gebraucht wird</translation>
    </message>
    <message>
        <source>not running</source>
        <translation>läuft nicht</translation>
    </message>
    <message>
        <source>of unknown version</source>
        <translation>von unbekannter Version</translation>
    </message>
    <message>
        <source>running, %1, process %2</source>
        <translation>läuft, %1, Prozess %2</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>%1 picture</source>
        <translation>%1 Bild</translation>
    </message>
    <message>
        <source>%1 pictures</source>
        <translation>%1 Bilder</translation>
    </message>
    <message>
        <source>%1 file of bundles</source>
        <translation>%1 Bündeldatei</translation>
    </message>
    <message>
        <source>%1 files of bundles</source>
        <translation>%1 Bündeldateien</translation>
    </message>
    <message>
        <source>%1 folder</source>
        <translation>%1 Ordner</translation>
    </message>
    <message>
        <source>%1 folders</source>
        <translation>%1 Ordner</translation>
    </message>
    <message>
        <source>%1 favourite</source>
        <translation>%1 Favorit</translation>
    </message>
    <message>
        <source>%1 favourites</source>
        <translation>%1 Favoriten</translation>
    </message>
    <message>
        <source>Daemon</source>
        <translation>Dienst</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keine</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Es wartet</translation>
    </message>
    <message>
        <source>Database</source>
        <translation>Datenbank</translation>
    </message>
    <message>
        <source>Followed folders</source>
        <translation>Verfolgte Ordner</translation>
    </message>
    <message>
        <source>%1 of %2 that the system allows</source>
        <translation>%1 von %2, die das System erlaubt</translation>
    </message>
    <message>
        <source>nothing was active before</source>
        <translation>vorher war nichts aktiv</translation>
    </message>
    <message>
        <source>there is nothing to undo</source>
        <translation>es gibt nichts zurückzunehmen</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>%1 fault</source>
        <translation>%1 Mangel</translation>
    </message>
    <message>
        <source>%1 faults</source>
        <translation>%1 Mängel</translation>
    </message>
    <message>
        <source>%1 file without faults.</source>
        <translation>%1 Datei, keine Mängel.</translation>
    </message>
    <message>
        <source>%1 files without faults.</source>
        <translation>%1 Dateien, keine Mängel.</translation>
    </message>
    <message>
        <source>the session bus answers</source>
        <translation>der Sitzungsbus antwortet</translation>
    </message>
    <message>
        <source>the session bus cannot be reached</source>
        <translation>der Sitzungsbus ist nicht erreichbar</translation>
    </message>
    <message>
        <source>the session bus can start the daemon</source>
        <translation>der Sitzungsbus kann den Dienst starten</translation>
    </message>
    <message>
        <source>the session bus cannot start the daemon: its service file com.zavro.moodsetd.service is not where the bus looks</source>
        <translation>der Sitzungsbus kann den Dienst nicht starten: seine Datei com.zavro.moodsetd.service ist nicht, wo der Bus sucht</translation>
    </message>
    <message>
        <source>the daemon is not running</source>
        <translation>der Dienst läuft nicht</translation>
    </message>
    <message>
        <source>the daemon still runs a program that has been replaced since</source>
        <translation>der Dienst führt noch ein Programm aus, das seither ersetzt wurde</translation>
    </message>
    <message>
        <source>the daemon runs, version %1</source>
        <translation>der Dienst läuft, Version %1</translation>
    </message>
    <message>
        <source>no service manager of the user answers on the bus</source>
        <translation>auf dem Bus antwortet keine Dienstverwaltung des Benutzers</translation>
    </message>
    <message>
        <source>the unit moodsetd.service has failed</source>
        <translation>die Unit moodsetd.service ist gescheitert</translation>
    </message>
    <message>
        <source>there is no unit moodsetd.service</source>
        <translation>es gibt keine Unit moodsetd.service</translation>
    </message>
    <message>
        <source>the unit moodsetd.service is %1</source>
        <translation>die Unit moodsetd.service ist %1</translation>
    </message>
    <message>
        <source>the number of followed folders is not known</source>
        <translation>wie viele Ordner verfolgt werden, ist nicht zu ermitteln</translation>
    </message>
    <message>
        <source>%1 folders are followed of %2 that the system allows</source>
        <translation>%1 Ordner werden verfolgt von %2, die das System erlaubt</translation>
    </message>
    <message>
        <source>the limits of the daemon are not known</source>
        <translation>die Grenzen des Dienstes sind nicht zu ermitteln</translation>
    </message>
    <message>
        <source>the daemon has no limit of memory: a small file can claim a huge picture</source>
        <translation>der Dienst hat keine Speichergrenze: eine kleine Datei kann ein riesiges Bild vorgeben</translation>
    </message>
    <message>
        <source>the daemon may have %1 of memory, too little for the largest pictures</source>
        <translation>der Dienst darf %1 Speicher haben, zu wenig für die größten Bilder</translation>
    </message>
    <message>
        <source>the daemon may have %1 of memory, and has had %2</source>
        <translation>der Dienst darf %1 Speicher haben und hatte %2</translation>
    </message>
    <message>
        <source>the database is of version %1</source>
        <translation>die Datenbank hat die Version %1</translation>
    </message>
    <message>
        <source>the database is of version %1, and not of %2</source>
        <translation>die Datenbank hat die Version %1 und nicht %2</translation>
    </message>
    <message>
        <source>the database is sound</source>
        <translation>die Datenbank ist heil</translation>
    </message>
    <message>
        <source>the database is damaged: %1</source>
        <translation>die Datenbank ist beschädigt: %1</translation>
    </message>
    <message>
        <source>the scan of %1 fails at every start, because %2 was already in the database when it was moved there</source>
        <translation>das Durchsuchen von %1 scheitert bei jedem Start: %2 ist für sich bekannt, aus der Zeit, bevor es dorthin kam</translation>
    </message>
    <message>
        <source>%1 is still in the database from before its parent folder was removed, so the daemon does not follow it when that folder comes back</source>
        <translation>%1 blieb übrig, als der Ordner darum verschwand, und wird nicht aufgenommen, wenn der wiederkommt</translation>
    </message>
    <message>
        <source>all folders can be scanned</source>
        <translation>alle Ordner lassen sich durchsuchen</translation>
    </message>
    <message>
        <source>no picture waits to be read</source>
        <translation>kein Bild wartet darauf, gelesen zu werden</translation>
    </message>
    <message>
        <source>%1 of %2 pictures wait to be read</source>
        <translation>%1 von %2 Bildern warten darauf, gelesen zu werden</translation>
    </message>
    <message>
        <source>cannot be renamed</source>
        <translation>kann nicht umbenannt werden</translation>
    </message>
    <message>
        <source>the daemon cannot be stopped</source>
        <translation>der Dienst lässt sich nicht anhalten</translation>
    </message>
    <message>
        <source>the daemon does not end</source>
        <translation>der Dienst beendet sich nicht</translation>
    </message>
    <message>
        <source>the session bus cannot start the daemon, so it is not stopped</source>
        <translation>der Sitzungsbus kann den Dienst nicht starten, daher wird er nicht angehalten</translation>
    </message>
    <message>
        <source>the library was rebuilt without the edits, which could not be read: %1; the old database is %2</source>
        <translation>die Bibliothek ist neu aufgebaut, ohne die Änderungen, die nicht gelesen werden konnten: %1; die alte Datenbank ist %2</translation>
    </message>
    <message>
        <source>; the edits are in %1, see moodsetctl restore</source>
        <translation>; die Änderungen sind in %1, siehe moodsetctl restore</translation>
    </message>
    <message>
        <source>The library was rebuilt, and the edits are restored.</source>
        <translation>Die Bibliothek ist neu aufgebaut, und die Änderungen sind wieder da.</translation>
    </message>
    <message>
        <source>The old database is %1, the saved edits are %2.</source>
        <translation>Die alte Datenbank ist %1, die gesicherten Änderungen sind %2.</translation>
    </message>
    <message>
        <source>the key/value store can be written</source>
        <translation>der Schlüsselspeicher kann geschrieben werden</translation>
    </message>
    <message>
        <source>the key/value store cannot be written: its service is not installed</source>
        <translation>der Schlüsselspeicher kann nicht geschrieben werden: sein Dienst ist nicht installiert</translation>
    </message>
    <message>
        <source>moodset files are known by their type</source>
        <translation>Moodset-Dateien sind an ihrem Typ bekannt</translation>
    </message>
    <message>
        <source>the types of moodset and index files are not known</source>
        <translation>die Typen von Moodset- und Index-Dateien sind nicht bekannt</translation>
    </message>
    <message>
        <source>the theme names a file that is not there: %1</source>
        <translation>das Thema nennt eine Datei, die nicht da ist: %1</translation>
    </message>
    <message>
        <source>the files of the theme are there</source>
        <translation>die Dateien des Themas sind da</translation>
    </message>
    <message>
        <source>all wallpapers are in use</source>
        <translation>alle Hintergrundbilder werden gebraucht</translation>
    </message>
    <message>
        <source>%1 wallpaper is used by nothing and takes %2</source>
        <translation>%1 Hintergrundbild wird von nichts gebraucht und belegt %2</translation>
    </message>
    <message>
        <source>%1 wallpapers are used by nothing and take %2</source>
        <translation>%1 Hintergrundbilder werden von nichts gebraucht und belegen %2</translation>
    </message>
    <message>
        <source>the library does not hold it</source>
        <translation>die Bibliothek hat es nicht</translation>
    </message>
    <message>
        <source>the daemon has not recorded where it came from</source>
        <translation>der Dienst hat nicht festgehalten, woher es kam</translation>
    </message>
    <message>
        <source>this is no backup by moodsetctl</source>
        <translation>das ist keine Sicherung von moodsetctl</translation>
    </message>
    <message>
        <source>the backup is of a version that is not known</source>
        <translation>die Sicherung hat eine unbekannte Version</translation>
    </message>
    <message>
        <source>%1 in %2.</source>
        <translation>%1 in %2.</translation>
    </message>
    <message>
        <source>%1 moodset is as it was.</source>
        <translation>%1 Moodset ist, wie es war.</translation>
    </message>
    <message>
        <source>%1 moodsets are as they were.</source>
        <translation>%1 Moodsets sind, wie sie waren.</translation>
    </message>
    <message>
        <source>not brought back: %1</source>
        <translation>nicht zurückgebracht: %1</translation>
    </message>
    <message>
        <source>the daemon has not read it in time</source>
        <translation>der Dienst hat es nicht rechtzeitig gelesen</translation>
    </message>
    <message>
        <source>cannot read %1</source>
        <translation>%1 lässt sich nicht lesen</translation>
    </message>
    <message>
        <source>Reading: %1 of %2 pictures, %3 folders</source>
        <translation>Gelesen: %1 von %2 Bildern, %3 Ordner</translation>
    </message>
    <message>
        <source>the daemon was not idle in time</source>
        <translation>der Dienst kam nicht rechtzeitig zur Ruhe</translation>
    </message>
    <message>
        <source>not a file</source>
        <translation>keine Datei</translation>
    </message>
    <message>
        <source>no right to read it</source>
        <translation>kein Recht, es zu lesen</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>it is no picture of a format that the daemon decodes</source>
        <translation>es ist kein Bild in einem Format, das der Dienst dekodiert</translation>
    </message>
    <message>
        <source>the daemon does not decode pictures of the format %1</source>
        <translation>der Dienst dekodiert keine Bilder im Format %1</translation>
    </message>
    <message>
        <source>the picture is damaged or cut off; its format is %1</source>
        <translation>das Bild ist beschädigt oder abgeschnitten; sein Format ist %1</translation>
    </message>
    <message>
        <source>the picture is too large for the memory that the daemon may have: %1 x %2</source>
        <translation>das Bild ist zu groß für den Speicher, den der Dienst haben darf: %1 x %2</translation>
    </message>
    <message>
        <source>the address does not answer as it should: %1</source>
        <translation>die Adresse antwortet nicht, wie sie soll: %1</translation>
    </message>
    <message>
        <source>the address points to another one, which the daemon does not follow: %1</source>
        <translation>die Adresse verweist auf eine andere, der der Dienst nicht folgt: %1</translation>
    </message>
    <message>
        <source>there is no picture at the address</source>
        <translation>an der Adresse ist kein Bild</translation>
    </message>
    <message>
        <source>there is no picture at the address, but %1</source>
        <translation>an der Adresse ist kein Bild, sondern %1</translation>
    </message>
    <message>
        <source>%1 is no volume from 0 to 100</source>
        <translation>%1 ist keine Lautstärke von 0 bis 100</translation>
    </message>
    <message>
        <source>%1: %2; write on, off, none or a file</source>
        <translation>%1: %2; schreiben Sie on, off, none oder eine Datei</translation>
    </message>
    <message>
        <source>%1 is not on this machine</source>
        <translation>%1 ist nicht auf diesem Gerät</translation>
    </message>
    <message>
        <source>%1 is no sound, but %2</source>
        <translation>%1 ist kein Klang, sondern %2</translation>
    </message>
    <message>
        <source>a name cannot be empty</source>
        <translation>ein Name darf nicht leer sein</translation>
    </message>
    <message>
        <source>a moodset has no %1</source>
        <translation>ein Moodset hat kein %1</translation>
    </message>
    <message>
        <source>the daemon has not changed %1</source>
        <translation>der Dienst hat %1 nicht geändert</translation>
    </message>
    <message>
        <source>cannot read the moodsets: %1</source>
        <translation>die Moodsets lassen sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>the session bus cannot be reached: run this in a session, where DBUS_SESSION_BUS_ADDRESS names it</source>
        <translation>der Sitzungsbus ist nicht erreichbar: führen Sie dies in einer Sitzung aus, in der DBUS_SESSION_BUS_ADDRESS ihn nennt</translation>
    </message>
    <message>
        <source>the daemon is not running, and the session bus cannot start it; start it with: systemctl --user start moodsetd, or run moodsetd</source>
        <translation>der Dienst läuft nicht, und der Sitzungsbus kann ihn nicht starten; starten Sie ihn mit: systemctl --user start moodsetd, oder führen Sie moodsetd aus</translation>
    </message>
    <message>
        <source>the daemon cannot be started: %1; see: systemctl --user status moodsetd</source>
        <translation>der Dienst lässt sich nicht starten: %1; siehe: systemctl --user status moodsetd</translation>
    </message>
    <message>
        <source>the daemon was started and does not answer</source>
        <translation>der Dienst wurde gestartet und antwortet nicht</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation>unlesbar</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Taken</source>
        <translation>Aufgenommen</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>%1 file</source>
        <translation>%1 Datei</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 Dateien</translation>
    </message>
    <message>
        <source>%1 unreadable</source>
        <translation>%1 unlesbar</translation>
    </message>
    <message>
        <source>added  </source>
        <translation>neu     </translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>%1 moodsets have this name; give an id</source>
        <translation>%1 Moodsets haben diesen Namen; geben Sie eine Nummer an</translation>
    </message>
    <message>
        <source>no moodset has this id or name</source>
        <translation>kein Moodset hat diese Nummer oder diesen Namen</translation>
    </message>
    <message>
        <source>not a URL</source>
        <translation>keine URL</translation>
    </message>
    <message>
        <source>not a file URL, nor one of the network</source>
        <translation>keine Datei-URL und keine im Netz</translation>
    </message>
    <message>
        <source>%1, and %2</source>
        <translation>%1, und %2</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>the former values cannot be stored for undo in %1: %2</source>
        <translation>was ersetzt wurde, lässt sich nicht zum Zurücknehmen in %1 aufheben: %2</translation>
    </message>
    <message>
        <source>print JSON, for programs</source>
        <translation>JSON ausgeben, für Programme</translation>
    </message>
    <message>
        <source>print only errors</source>
        <translation>nichts als Fehler ausgeben</translation>
    </message>
    <message>
        <source>show this help</source>
        <translation>diese Hilfe zeigen</translation>
    </message>
    <message>
        <source>show the version</source>
        <translation>die Version zeigen</translation>
    </message>
    <message>
        <source>save the edits to a file</source>
        <translation>sichern, was geändert wurde</translation>
    </message>
    <message>
        <source>Saves what only the database has: the moodsets with their edited names, favourites, colours, volumes and tones, and the addresses of downloaded pictures. It does not save pictures and bundles. The daemon need not run.</source>
        <translation>Sichert, was nur in der Datenbank steht: welche Moodsets es gibt, ihre Namen, Favoriten, Farben, Lautstärken und Töne, wie sie geändert wurden, und woher heruntergeladene Bilder kamen. Bilder und Bündel sind nicht darin. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>save the edits before the phone is reset</source>
        <translation>die Änderungen sichern, bevor das Telefon neu eingerichtet wird</translation>
    </message>
    <message>
        <source>delete the wallpapers that nothing uses</source>
        <translation>die Hintergrundbilder löschen, die nichts braucht</translation>
    </message>
    <message>
        <source>Deletes the wallpapers that the daemon has made and that no moodset and no key of the theme uses. The daemon itself never deletes a wallpaper. The daemon need not run.</source>
        <translation>Löscht die Hintergrundbilder, die der Dienst gemacht hat und auf die kein Moodset und kein Schlüssel des Themas verweist. Der Dienst löscht nie eines. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>only print what would be deleted</source>
        <translation>nur sagen, welche gelöscht würden</translation>
    </message>
    <message>
        <source>see how much space this would free</source>
        <translation>sehen, wie viel Platz zu gewinnen ist</translation>
    </message>
    <message>
        <source>show the colours that a moodset of a picture would have</source>
        <translation>die Farben zeigen, die ein Moodset eines Bildes hätte</translation>
    </message>
    <message>
        <source>Prints the colours that a moodset of a local picture would have, and the contrast of each: against the average of the home wallpaper, and against that of the application wallpaper as toolkits dim it, under 60 % of black. Text needs 4.5, large text 3. Nothing is stored, and the daemon need not run.</source>
        <translation>Gibt die Farben aus, die ein Moodset eines Bildes auf diesem Gerät hätte, und den Kontrast von jeder: gegen den Durchschnitt des Startbilds und gegen den des Anwendungsbilds, wie Toolkits es abdunkeln, unter 60 % Schwarz. Text braucht 4,5, großer Text 3. Nichts wird gespeichert, und der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>check a picture before you apply it</source>
        <translation>ein Bild beurteilen, bevor es gesetzt wird</translation>
    </message>
    <message>
        <source>print the script for completion in a shell</source>
        <translation>das Skript ausgeben, mit dem eine Shell Befehlszeilen ergänzt</translation>
    </message>
    <message>
        <source>Prints a script for bash, zsh or fish. With it, the shell completes commands, options, files and the names of moodsets. Packages install it. Without a package:
bash: source &lt;(moodsetctl completion bash)
zsh: source &lt;(moodsetctl completion zsh)
fish: moodsetctl completion fish | source</source>
        <translation>Gibt das Skript aus, mit dem eine Shell, bash, zsh oder fish, Befehle, Optionen, Dateien und die Namen von Moodsets ergänzt. Pakete installieren es; von Hand:
bash: source &lt;(moodsetctl completion bash)
zsh: source &lt;(moodsetctl completion zsh)
fish: moodsetctl completion fish | source</translation>
    </message>
    <message>
        <source>print the possible values of the last word, for these scripts</source>
        <translation>für diese Skripte ausgeben, was das letzte einiger Wörter sein kann</translation>
    </message>
    <message>
        <source>print the script for bash</source>
        <translation>das Skript für bash ausgeben</translation>
    </message>
    <message>
        <source>make a moodset from a picture, but do not apply it</source>
        <translation>aus einem Bild ein Moodset machen und das aktive lassen</translation>
    </message>
    <message>
        <source>Makes a moodset from a picture, and does not apply it. If the picture is on the network, the command waits until the daemon has downloaded it.</source>
        <translation>Macht aus einem Bild ein Moodset und lässt das aktive, wie es ist. Ein Bild im Netz lädt der Dienst herunter; darauf wird gewartet.</translation>
    </message>
    <message>
        <source>make a moodset that you apply or edit later</source>
        <translation>ein Moodset machen, um es später zu setzen oder zu ändern</translation>
    </message>
    <message>
        <source>find problems, and show how to repair them</source>
        <translation>suchen, was nicht stimmt, und sagen, wie es zu beheben ist</translation>
    </message>
    <message>
        <source>build a new database, and keep the edits</source>
        <translation>eine neue Datenbank aufbauen lassen und die Änderungen behalten</translation>
    </message>
    <message>
        <source>find out why something does not work</source>
        <translation>herausfinden, warum etwas nicht geht</translation>
    </message>
    <message>
        <source>repair a library that does not find its pictures</source>
        <translation>eine Bibliothek heilen, die ihre Bilder nicht sieht</translation>
    </message>
    <message>
        <source>change a moodset&apos;s name, colours, volume and tones</source>
        <translation>Name, Farben, Lautstärke und Töne eines Moodsets ändern</translation>
    </message>
    <message>
        <source>Changes a moodset, and also the theme if the moodset is active. All values are checked before the first one is sent. The keys are:
name=TEXT, favorite=on|off, volume=0...100;
highlight, secondaryHighlight, primary, secondary, each with a colour as #rrggbb, #aarrggbb or an SVG name;
ringerTone, messageTone, mailTone, internetCallTone, chatTone, calendarTone, clockAlarmTone, each with on, off, none or a sound file.
undo restores the former values.</source>
        <translation>Ändert ein Moodset und mit ihm das Thema, wenn es aktiv ist. Jeder Wert wird geprüft, bevor einer gesendet wird. Die Schlüssel sind:
name=TEXT, favorite=on|off, volume=0...100;
highlight, secondaryHighlight, primary, secondary, jeder mit einer Farbe als #rrggbb, #aarrggbb oder SVG-Name;
ringerTone, messageTone, mailTone, internetCallTone, chatTone, calendarTone, clockAlarmTone, jeder mit on, off, none oder einer Klangdatei.
undo bringt zurück, was vorher da war.</translation>
    </message>
    <message>
        <source>change a colour and the ringer volume</source>
        <translation>eine Farbe und die Klingellautstärke ändern</translation>
    </message>
    <message>
        <source>change the name and two tones of the moodset with this id</source>
        <translation>den Namen und zwei Töne des Moodsets einer Nummer ändern</translation>
    </message>
    <message>
        <source>make a moodset a favourite, or end that</source>
        <translation>ein Moodset zum Favoriten machen oder nicht länger</translation>
    </message>
    <message>
        <source>Makes a moodset a favourite, or ends that. Favourites are listed before the others.</source>
        <translation>Macht ein Moodset zum Favoriten, der vor den anderen steht, oder nicht länger.</translation>
    </message>
    <message>
        <source>list it first</source>
        <translation>es zuerst auflisten</translation>
    </message>
    <message>
        <source>show all commands, or how to use one</source>
        <translation>zeigen, was es gibt, oder wie ein Befehl gebraucht wird</translation>
    </message>
    <message>
        <source>Shows all commands, or how to use one of them, with examples.</source>
        <translation>Zeigt alle Befehle oder wie einer gebraucht wird, mit Beispielen.</translation>
    </message>
    <message>
        <source>print the manual page instead</source>
        <translation>stattdessen die Handbuchseite ausgeben</translation>
    </message>
    <message>
        <source>see how to use set</source>
        <translation>sehen, wie set gebraucht wird</translation>
    </message>
    <message>
        <source>add pictures to the library</source>
        <translation>Bilder aufnehmen lassen</translation>
    </message>
    <message>
        <source>Adds pictures to the library, and waits until the daemon has read them. It is an error if a file is not a picture or cannot be read. The pictures after it are then not added.</source>
        <translation>Lässt Bilder aufnehmen und wartet, bis ihre Daten da sind. Es ist ein Fehler, wenn eine Datei kein Bild ist oder eines, das nicht gelesen werden kann; die danach werden dann nicht aufgenommen.</translation>
    </message>
    <message>
        <source>how long to wait for each picture; 60 if not given</source>
        <translation>auf jedes Bild so lange warten; 60, wenn nicht angegeben</translation>
    </message>
    <message>
        <source>add a picture from another folder</source>
        <translation>ein Bild von anderswo aufnehmen</translation>
    </message>
    <message>
        <source>install the bundle in a folder</source>
        <translation>das Bündel in einem Ordner aufnehmen lassen</translation>
    </message>
    <message>
        <source>Makes the daemon read the moodset files and index files in a folder, even if it has read them before, and waits until it has. It is an error if there are none, or if one does not become a moodset.</source>
        <translation>Lässt die Moodset- und Index-Dateien in einem Ordner aufnehmen, auch wenn sie es schon waren, und wartet, bis sie es sind. Es ist ein Fehler, wenn es keine gibt oder wenn aus einer kein Moodset wird.</translation>
    </message>
    <message>
        <source>how long to wait for each file; 60 if not given</source>
        <translation>auf jede Datei so lange warten; 60, wenn nicht angegeben</translation>
    </message>
    <message>
        <source>try your own bundle</source>
        <translation>ein eigenes Bündel ausprobieren</translation>
    </message>
    <message>
        <source>show a table of all moodsets</source>
        <translation>eine Tabelle aller Moodsets zeigen</translation>
    </message>
    <message>
        <source>Prints a table of all moodsets, favourites first, and their number. The colours are the primary, the secondary, the highlight and the secondary highlight colour. A terminal shows them as fields without transparency; otherwise they are written as #aarrggbb. The daemon need not run.</source>
        <translation>Gibt eine Tabelle aller Moodsets aus, Favoriten zuerst, und ihre Zahl. Die Farben sind die erste, die zweite, die Hervorhebungsfarbe und die zweite Hervorhebungsfarbe: Felder auf einem Terminal, ohne ihre Durchsichtigkeit, sonst #aarrggbb. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>print only favourites</source>
        <translation>nur Favoriten</translation>
    </message>
    <message>
        <source>print only names, one in each line</source>
        <translation>nur Namen, einen je Zeile</translation>
    </message>
    <message>
        <source>find a moodset</source>
        <translation>ein Moodset finden</translation>
    </message>
    <message>
        <source>the same for programs</source>
        <translation>dasselbe für Programme</translation>
    </message>
    <message>
        <source>wait for a picture on the network for so long; 60 if not given</source>
        <translation>auf ein Bild im Netz so lange warten; 60, wenn nicht angegeben</translation>
    </message>
    <message>
        <source>do not wait for a picture on the network</source>
        <translation>nicht auf ein Bild im Netz warten</translation>
    </message>
    <message>
        <source>show a table of all pictures</source>
        <translation>eine Tabelle aller Bilder zeigen</translation>
    </message>
    <message>
        <source>Prints a table of all pictures, and below it the number of files, pictures and folders in the database. The daemon need not run, unless --watch is given.</source>
        <translation>Gibt eine Tabelle aller Bilder aus und darunter, wie viele Dateien, Bilder und Ordner die Datenbank hat. Der Dienst muss nicht laufen, außer mit --watch.</translation>
    </message>
    <message>
        <source>show paths relative to DIR; relative to the user&apos;s pictures folder if not given</source>
        <translation>Pfade relativ zu DIR zeigen; wenn nicht angegeben, zum Bilderordner des Benutzers</translation>
    </message>
    <message>
        <source>then show changes, as watch does</source>
        <translation>dann zeigen, was sich ändert, wie watch</translation>
    </message>
    <message>
        <source>see which pictures the library holds</source>
        <translation>sehen, welche Bilder die Bibliothek hat</translation>
    </message>
    <message>
        <source>show this colour instead</source>
        <translation>stattdessen diese Farbe zeigen</translation>
    </message>
    <message>
        <source>paint what a moodset or a picture would look like</source>
        <translation>malen, wie ein Moodset oder ein Bild aussähe</translation>
    </message>
    <message>
        <source>Writes a PNG picture of two phones with a moodset, or with the moodset that a picture would give. The colours can be replaced by others. Nothing is stored. Without a SOURCE, the phones show the present theme. The daemon need not run.</source>
        <translation>Schreibt ein PNG-Bild von zwei Telefonen, die einem Moodset folgen, oder dem, was ein Moodset eines Bildes wäre, auch in Farben, die nur erwogen werden. Nichts wird gespeichert. Ohne SOURCE das Thema, wie es ist. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>the file to write; preview.png if not given</source>
        <translation>die zu schreibende Datei; preview.png, wenn nicht angegeben</translation>
    </message>
    <message>
        <source>see a moodset before you apply it</source>
        <translation>ein Moodset sehen, bevor es gesetzt wird</translation>
    </message>
    <message>
        <source>see the moodset of a picture with another colour</source>
        <translation>sehen, was ein Bild mit einer anderen Farbe ergäbe</translation>
    </message>
    <message>
        <source>look for new, changed and removed bundles</source>
        <translation>die Ordner installierter Bündel durchsehen lassen</translation>
    </message>
    <message>
        <source>Makes the daemon look for new, changed and removed bundles in /usr/share/moodset and /usr/share/sounds, and waits until it has.</source>
        <translation>Lässt /usr/share/moodset und /usr/share/sounds nach Bündeln durchsehen, die gekommen, geändert oder fort sind, und wartet, bis das getan ist.</translation>
    </message>
    <message>
        <source>how long to wait; without a limit if not given</source>
        <translation>so lange warten; beliebig lange, wenn nicht angegeben</translation>
    </message>
    <message>
        <source>do not wait</source>
        <translation>nicht warten</translation>
    </message>
    <message>
        <source>see new bundles at once</source>
        <translation>neue Bündel sofort sehen</translation>
    </message>
    <message>
        <source>remove a moodset from the library, but not its file</source>
        <translation>ein Moodset aus der Bibliothek entfernen, aber nicht seine Datei</translation>
    </message>
    <message>
        <source>Removes a moodset from the library, with its edits. Its file stays, and when the file changes, the moodset comes back. The moodset of a picture can be made again with create. The theme stays as it is.</source>
        <translation>Entfernt ein Moodset aus der Bibliothek, mit dem, was geändert wurde. Seine Datei bleibt und bringt es zurück, wenn sie sich ändert; aus einem Bild macht create es wieder. Das Thema bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>remove it from the table</source>
        <translation>es aus der Tabelle nehmen</translation>
    </message>
    <message>
        <source>restore the edits that backup has saved</source>
        <translation>zurückbringen, was backup gesichert hat</translation>
    </message>
    <message>
        <source>restore the edits</source>
        <translation>die Änderungen wiederhaben</translation>
    </message>
    <message>
        <source>apply a moodset, or make one from a picture and apply it</source>
        <translation>ein Moodset aktiv machen; aus einem Bild wird erst eines gemacht</translation>
    </message>
    <message>
        <source>Applies a moodset to the system: its wallpapers, colours, ringer volume and tones. From a picture, the daemon first makes a moodset. If the picture is on the network, the command waits until the daemon has downloaded it. undo applies the former moodset again.</source>
        <translation>Macht ein Moodset zum Aussehen des Systems: seine Hintergrundbilder, Farben, Klingellautstärke und Töne. Aus einem Bild wird erst ein Moodset gemacht. Ein Bild im Netz lädt der Dienst herunter; darauf wird gewartet. undo bringt zurück, was vorher aktiv war.</translation>
    </message>
    <message>
        <source>apply the moodset with this name</source>
        <translation>das Moodset dieses Namens aktiv machen</translation>
    </message>
    <message>
        <source>make a moodset from a picture, and apply it</source>
        <translation>ein Bild zum Aussehen des Systems machen</translation>
    </message>
    <message>
        <source>the same with a picture on the network, for 20 seconds at most</source>
        <translation>dasselbe mit einem Bild im Netz, höchstens 20 Sekunden lang</translation>
    </message>
    <message>
        <source>show all data of a moodset</source>
        <translation>alles zeigen, woraus ein Moodset besteht</translation>
    </message>
    <message>
        <source>Prints all data of a moodset, with its tones and files. The daemon need not run.</source>
        <translation>Gibt alles aus, woraus ein Moodset besteht, mit Tönen und Dateien. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>see its colours, wallpapers and tones</source>
        <translation>seine Farben, Hintergrundbilder und Töne sehen</translation>
    </message>
    <message>
        <source>show the active moodset, the daemon and the library at a glance</source>
        <translation>das aktive Moodset, den Dienst und die Bibliothek auf einen Blick zeigen</translation>
    </message>
    <message>
        <source>Prints the active moodset with its colours, the daemon and its version, the number of records in the library, the files that wait to be read, the size of the database, and how many folders the daemon follows and may follow. The daemon need not run.</source>
        <translation>Gibt das aktive Moodset mit seinen Farben aus, den Dienst und seine Version, wie viel in der Bibliothek ist, was darauf wartet, gelesen zu werden, wie groß die Datenbank ist und wie viele Ordner der Dienst von denen verfolgt, die das System erlaubt. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>see the present state</source>
        <translation>sehen, wie es steht</translation>
    </message>
    <message>
        <source>show the keys of the theme, which shells and toolkits follow</source>
        <translation>die Schlüssel des Themas zeigen, denen Shells und Toolkits folgen</translation>
    </message>
    <message>
        <source>Prints the keys of the key/value store that shells and toolkits follow, with the wallpapers and the colours. The daemon need not run.</source>
        <translation>Gibt die Schlüssel des Schlüsselspeichers aus, denen Shells und Toolkits folgen, mit den Hintergrundbildern und den Farben. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>see what shells read</source>
        <translation>sehen, was Shells sehen</translation>
    </message>
    <message>
        <source>undo the last set, edit or favorite</source>
        <translation>zurückbringen, was das letzte set oder edit ersetzt hat</translation>
    </message>
    <message>
        <source>Restores what the last set, edit or favorite of this tool has replaced. A second undo reverses the first one.</source>
        <translation>Bringt zurück, was das letzte set, edit oder favorite dieses Werkzeugs ersetzt hat. Ein zweites undo nimmt das erste zurück.</translation>
    </message>
    <message>
        <source>restore the former moodset or the former values</source>
        <translation>das letzte Aussehen oder die letzten Werte zurückbringen</translation>
    </message>
    <message>
        <source>check bundles before they are installed</source>
        <translation>Bündel prüfen, bevor sie installiert werden</translation>
    </message>
    <message>
        <source>Reports, with line and column, why the daemon would reject a moodset file or an index file, or why the moodset would differ from what the file seems to say. In a folder, it checks all such files. The exit status is 1 if there is a fault. The daemon need not run.</source>
        <translation>Sagt mit Zeile und Spalte, warum der Dienst eine Moodset- oder Index-Datei ablehnte oder warum nicht daraus wird, was die Datei zu sagen scheint. Ein Ordner wird durchgegangen. Der Exit-Status ist 1, wenn es Mängel gibt. Der Dienst muss nicht laufen.</translation>
    </message>
    <message>
        <source>check all files of a bundle</source>
        <translation>alle Dateien eines Bündels prüfen</translation>
    </message>
    <message>
        <source>wait until the daemon has indexed everything</source>
        <translation>warten, bis der Dienst alles erfasst hat, was er kennt</translation>
    </message>
    <message>
        <source>Waits until the daemon has indexed everything. Without --log, the daemon counts as idle if it has written nothing for a second while it replied to calls. On a terminal, progress is shown.</source>
        <translation>Wartet, bis der Dienst alles erfasst hat, was er kennt. Ohne --log gilt als Zeichen, dass er eine Sekunde lang nichts schrieb, während er Aufrufe beantwortete. Auf einem Terminal wird der Fortschritt gezeigt.</translation>
    </message>
    <message>
        <source>read the daemon&apos;s log with debug messages from this file, to know exactly when it is idle for the first time</source>
        <translation>das Protokoll des Dienstes mit Debug-Meldungen aus dieser Datei lesen und genau wissen, wann er zum ersten Mal ruht</translation>
    </message>
    <message>
        <source>wait for a minute at most</source>
        <translation>höchstens eine Minute warten</translation>
    </message>
    <message>
        <source>show pictures as they are added, changed and removed</source>
        <translation>Bilder zeigen, wie sie hinzukommen, sich ändern und verschwinden</translation>
    </message>
    <message>
        <source>Prints each picture that is added, changed or removed, one in each line, until the daemon ends. With --json, each line is an object.</source>
        <translation>Gibt jedes Bild aus, das hinzukommt, sich ändert oder verschwindet, eines je Zeile, bis der Dienst sich beendet. Mit --json ist jede Zeile ein Objekt.</translation>
    </message>
    <message>
        <source>follow the library from a program</source>
        <translation>der Bibliothek aus einem Programm folgen</translation>
    </message>
    <message>
        <source>the option %1 takes no value</source>
        <translation>die Option %1 nimmt keinen Wert</translation>
    </message>
    <message>
        <source>the option %1 needs a value</source>
        <translation>die Option %1 braucht einen Wert</translation>
    </message>
    <message>
        <source>the output cannot be written: %1</source>
        <translation>die Ausgabe kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the file is larger than %1, and the daemon does not read it</source>
        <translation>die Datei ist größer als %1, und der Dienst liest sie nicht</translation>
    </message>
    <message>
        <source>Checks the bus, the daemon, its unit and limits, the database, the folders that it cannot follow any more, the key/value store and its defaults, the theme and the wallpapers. For each, it shows what is wrong and which command repairs it. The exit status is 1 if there is a problem.
With --rebuild, it saves the edits, ends the daemon, has a new database built, and restores the edits. The old database is kept. Favourites keep their order, but not their times. If a rebuild is interrupted, doctor shows how to restore the edits.</source>
        <translation>Sieht nach dem Bus, dem Dienst, seiner Unit und seinen Grenzen, der Datenbank, den Ordnern, an denen er hängt, dem Schlüsselspeicher und seinen Vorgaben, dem Thema und den Hintergrundbildern und sagt zu jedem, was nicht stimmt und welcher Befehl es behebt. Der Exit-Status ist 1, wenn es ein Problem gibt.
Mit --rebuild werden die Änderungen gesichert, der Dienst angehalten, eine neue Datenbank aufgebaut und die Änderungen zurückgebracht; die alte Datenbank bleibt erhalten. Favoriten kommen in ihrer Reihenfolge zurück, aber nicht, seit wann jeder einer ist. Wo dies abgebrochen wird, sagt doctor, wie man die Änderungen zurückbringt.</translation>
    </message>
    <message>
        <source>The saved edits are %1 now.</source>
        <translation>Die gesicherten Änderungen sind jetzt in %1.</translation>
    </message>
    <message>
        <source>Restores the edits that backup has saved. If a moodset is missing, it is made from its file again. Favourites keep their order, but not their times. The command reports what it cannot restore.</source>
        <translation>Bringt zurück, was backup gesichert hat. Ein Moodset, das fehlt, wird wieder aus seiner Datei gemacht. Favoriten kommen in ihrer Reihenfolge zurück, aber nicht, seit wann jeder einer ist. Was nicht zurückgebracht werden kann, wird gesagt.</translation>
    </message>
    <message>
        <source>the unit moodsetd.service is masked, and cannot start</source>
        <translation>die Unit moodsetd.service ist maskiert und kann nicht starten</translation>
    </message>
    <message>
        <source>the daemon may have %1 files open</source>
        <translation>der Dienst darf %1 Dateien offen haben</translation>
    </message>
    <message>
        <source>%1, which is too few for its work</source>
        <translation>%1, zu wenige für das, was er zu tun hat</translation>
    </message>
    <message>
        <source>a rebuild was interrupted, and its saved edits are not restored yet</source>
        <translation>ein Neuaufbau wurde abgebrochen; die Änderungen, die er gesichert hat, sind nicht zurück</translation>
    </message>
    <message>
        <source>a rebuild was interrupted; first restore its edits: moodsetctl restore %1</source>
        <translation>ein Neuaufbau wurde abgebrochen; bringen Sie zuerst seine Änderungen zurück: moodsetctl restore %1</translation>
    </message>
    <message>
        <source>The library was built; there was none before.</source>
        <translation>Die Bibliothek ist aufgebaut; es gab keine.</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are compiled into the key/value store</source>
        <translation>die Vorgaben für Lautstärke und Töne sind in den Schlüsselspeicher übersetzt</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are installed</source>
        <translation>die Vorgaben für Lautstärke und Töne sind installiert</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are not installed: no data folder has moodsetd/profile-defaults</source>
        <translation>die Vorgaben für Lautstärke und Töne sind nicht installiert: kein Datenordner hat moodsetd/profile-defaults</translation>
    </message>
    <message>
        <source>the order of the favourites</source>
        <translation>die Reihenfolge der Favoriten</translation>
    </message>
    <message>
        <source>the daemon has ended, and some edits are not restored</source>
        <translation>der Dienst hat sich beendet, und nicht alles ist zurückgebracht</translation>
    </message>
    <message>
        <source>cannot read the library: %1</source>
        <translation>die Bibliothek lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>there is no database at %1</source>
        <translation>es gibt keine Datenbank in %1</translation>
    </message>
    <message>
        <source>%1; to have the daemon make it: %2</source>
        <translation>%1; damit der Dienst sie anlegt: %2</translation>
    </message>
</context>
</TS>
