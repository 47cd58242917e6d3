<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AddPage</name>
    <message>
        <source>Add a moodset</source>
        <translation>Moodset hinzufügen</translation>
    </message>
    <message>
        <source>From a picture</source>
        <translation>Aus einem Bild</translation>
    </message>
    <message>
        <source>Drop a file on the window, or choose one. Any of your pictures will do, too.</source>
        <translation>Eine Datei auf das Fenster ziehen oder eine wählen. Jedes deiner Bilder geht auch.</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Bild wählen</translation>
    </message>
    <message>
        <source>From an address</source>
        <translation>Von einer Adresse</translation>
    </message>
    <message>
        <source>Address of a picture</source>
        <translation>Adresse eines Bildes</translation>
    </message>
    <message>
        <source>Look at it</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>From a bundle</source>
        <translation>Aus einem Paket</translation>
    </message>
    <message>
        <source>A bundle is a folder with a moodset file, its pictures and tones.</source>
        <translation>Ein Paket ist ein Ordner mit einer Moodset-Datei, ihren Bildern und Tönen.</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Look for new bundles</source>
        <translation>Nach neuen Paketen suchen</translation>
    </message>
</context>
<context>
    <name>BridgeStatus</name>
    <message>
        <source>GNOME and Phosh</source>
        <translation>GNOME und Phosh</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Anwendungen</translation>
    </message>
    <message>
        <source>Sounds of the phone</source>
        <translation>Töne des Telefons</translation>
    </message>
    <message>
        <source>Your own files</source>
        <translation>Eigene Dateien</translation>
    </message>
    <message>
        <source>colours and wallpaper by templates</source>
        <translation>Farben und Hintergrundbild nach Vorlagen</translation>
    </message>
    <message>
        <source>tones</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>accent colour</source>
        <translation>Akzentfarbe</translation>
    </message>
    <message>
        <source>wallpaper</source>
        <translation>Hintergrundbild</translation>
    </message>
    <message>
        <source>Nothing so far</source>
        <translation>Bisher nichts</translation>
    </message>
</context>
<context>
    <name>BundlePage</name>
    <message>
        <source>Install a bundle</source>
        <translation>Paket installieren</translation>
    </message>
    <message>
        <source>Installing …</source>
        <translation>Wird installiert …</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>ColorEditor</name>
    <message>
        <source>Colours that go with the picture</source>
        <translation>Farben, die zum Bild passen</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Farbe %1</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>Lightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
</context>
<context>
    <name>ColorRow</name>
    <message>
        <source>Change the colour: %1</source>
        <translation>Farbe ändern: %1</translation>
    </message>
    <message>
        <source>Contrast %1 : 1</source>
        <translation>Kontrast %1 : 1</translation>
    </message>
    <message>
        <source>Contrast %1 : 1, hard to read</source>
        <translation>Kontrast %1 : 1, schwer zu lesen</translation>
    </message>
    <message>
        <source>Mend</source>
        <translation>Bessern</translation>
    </message>
    <message>
        <source>Mend the contrast: %1</source>
        <translation>Kontrast verbessern: %1</translation>
    </message>
</context>
<context>
    <name>ColorSection</name>
    <message>
        <source>Highlight</source>
        <translation>Hervorhebung</translation>
    </message>
    <message>
        <source>Second highlight</source>
        <translation>Zweite Hervorhebung</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Second text</source>
        <translation>Zweiter Text</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
</context>
<context>
    <name>DropHint</name>
    <message>
        <source>Drop a picture, an address or the folder of a bundle</source>
        <translation>Ein Bild, eine Adresse oder den Ordner eines Pakets ablegen</translation>
    </message>
</context>
<context>
    <name>FolderPage</name>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Bild wählen</translation>
    </message>
    <message>
        <source>The folder above</source>
        <translation>Der Ordner darüber</translation>
    </message>
    <message>
        <source>Folders and pictures</source>
        <translation>Ordner und Bilder</translation>
    </message>
    <message>
        <source>Nothing to choose here</source>
        <translation>Hier gibt es nichts zu wählen</translation>
    </message>
    <message>
        <source>Choose this folder</source>
        <translation>Diesen Ordner wählen</translation>
    </message>
</context>
<context>
    <name>Incoming</name>
    <message>
        <source>There is no such file or folder.</source>
        <translation>Es gibt keine solche Datei und keinen solchen Ordner.</translation>
    </message>
    <message>
        <source>This is neither a file nor a folder.</source>
        <translation>Das ist weder eine Datei noch ein Ordner.</translation>
    </message>
    <message>
        <source>You have no right to read this file.</source>
        <translation>Du darfst diese Datei nicht lesen.</translation>
    </message>
    <message>
        <source>There is nothing to paste. Copy an address or a picture&apos;s file first.</source>
        <translation>Es gibt nichts einzufügen. Kopiere zuerst eine Adresse oder die Datei eines Bildes.</translation>
    </message>
    <message>
        <source>This is no address of a picture. It should begin with https://.</source>
        <translation>Das ist keine Adresse eines Bildes. Sie sollte mit https:// beginnen.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>There is no moodset file in this folder.</source>
        <translation>In diesem Ordner ist keine Moodset-Datei.</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Moodset Picker</source>
        <translation>Moodset-Auswahl</translation>
    </message>
</context>
<context>
    <name>MoodsetHead</name>
    <message>
        <source>Applying …</source>
        <translation>Wird angewendet …</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Take from the favourites</source>
        <translation>Aus den Favoriten nehmen</translation>
    </message>
    <message>
        <source>Make a favourite</source>
        <translation>Zum Favoriten machen</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>MoodsetPage</name>
    <message>
        <source>Moodset</source>
        <translation>Moodset</translation>
    </message>
    <message>
        <source>This moodset is not there any more</source>
        <translation>Dieses Moodset gibt es nicht mehr</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>MoodsetTile</name>
    <message>
        <source>%1, active</source>
        <translation>%1, aktiv</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>%1 is active</source>
        <translation>%1 ist aktiv</translation>
    </message>
    <message>
        <source>Apply %1</source>
        <translation>%1 anwenden</translation>
    </message>
</context>
<context>
    <name>MoodsetsPage</name>
    <message>
        <source>Moodsets</source>
        <translation>Moodsets</translation>
    </message>
    <message>
        <source>Add a moodset</source>
        <translation>Moodset hinzufügen</translation>
    </message>
</context>
<context>
    <name>MoodsetsState</name>
    <message>
        <source>Looking for your moodsets …</source>
        <translation>Deine Moodsets werden gesucht …</translation>
    </message>
    <message>
        <source>No moodsets yet</source>
        <translation>Noch keine Moodsets</translation>
    </message>
    <message>
        <source>Make one of any picture: its colours become those of your phone.</source>
        <translation>Mache eines aus irgendeinem Bild: Seine Farben werden die deines Telefons.</translation>
    </message>
    <message>
        <source>Add a moodset</source>
        <translation>Moodset hinzufügen</translation>
    </message>
    <message>
        <source>Your moodsets cannot be read</source>
        <translation>Deine Moodsets können nicht gelesen werden</translation>
    </message>
    <message>
        <source>The library of the theme service is missing or damaged.</source>
        <translation>Die Bibliothek des Dienstes fehlt oder ist beschädigt.</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Noch einmal versuchen</translation>
    </message>
</context>
<context>
    <name>NavigationBar</name>
    <message>
        <source>Moodsets</source>
        <translation>Moodsets</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Moodset Picker</source>
        <translation>Moodset-Auswahl</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig machen</translation>
    </message>
    <message>
        <source>Close this message</source>
        <translation>Diese Meldung schließen</translation>
    </message>
</context>
<context>
    <name>Notices</name>
    <message>
        <source>“%1” is active.</source>
        <translation>„%1“ ist aktiv.</translation>
    </message>
    <message>
        <source>“%1” is one of your moodsets now.</source>
        <translation>„%1“ ist jetzt eines deiner Moodsets.</translation>
    </message>
    <message>
        <source>“%1” has been removed.</source>
        <translation>„%1“ wurde entfernt.</translation>
    </message>
    <message>
        <source>“%1” has been changed.</source>
        <translation>„%1“ wurde geändert.</translation>
    </message>
    <message>
        <source>The theme service does not answer. Nothing has been changed.</source>
        <translation>Der Dienst antwortet nicht. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>This moodset does not exist any more.</source>
        <translation>Dieses Moodset gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>The picture has not come within the time. It may still come later.</source>
        <translation>Das Bild ist nicht rechtzeitig gekommen. Vielleicht kommt es noch.</translation>
    </message>
    <message>
        <source>This did not work: %1</source>
        <translation>Das hat nicht geklappt: %1</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>PhonePreview</name>
    <message>
        <source>Preview of the home screen and of an application</source>
        <translation>Vorschau des Startbildschirms und einer Anwendung</translation>
    </message>
</context>
<context>
    <name>PhotoRows</name>
    <message>
        <source>Without a date</source>
        <translation>Ohne Datum</translation>
    </message>
</context>
<context>
    <name>PicturePage</name>
    <message>
        <source>New moodset</source>
        <translation>Neues Moodset</translation>
    </message>
    <message>
        <source>No moodset can be made of this</source>
        <translation>Daraus kann kein Moodset werden</translation>
    </message>
    <message>
        <source>Looking at the picture …</source>
        <translation>Das Bild wird angesehen …</translation>
    </message>
    <message>
        <source>The picture is on the network. It is downloaded into your pictures folder when the moodset is made.</source>
        <translation>Das Bild liegt im Netz. Es wird in deinen Bilderordner geladen, wenn das Moodset gemacht wird.</translation>
    </message>
    <message>
        <source>Please wait …</source>
        <translation>Bitte warten …</translation>
    </message>
    <message>
        <source>Make it and apply it</source>
        <translation>Machen und anwenden</translation>
    </message>
    <message>
        <source>Make it only</source>
        <translation>Nur machen</translation>
    </message>
</context>
<context>
    <name>PicturePreview</name>
    <message>
        <source>the picture cannot be read</source>
        <translation>das Bild kann nicht gelesen werden</translation>
    </message>
</context>
<context>
    <name>PicturesPage</name>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Search by folder, name or date</source>
        <translation>Nach Ordner, Name oder Datum suchen</translation>
    </message>
    <message>
        <source>Folder, name or date such as 2024-03</source>
        <translation>Ordner, Name oder Datum wie 2024-03</translation>
    </message>
    <message>
        <source>Looking for your pictures …</source>
        <translation>Deine Bilder werden gesucht …</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>No pictures yet</source>
        <translation>Noch keine Bilder</translation>
    </message>
    <message>
        <source>No picture has these words in its folder, name or date.</source>
        <translation>Kein Bild hat diese Wörter in Ordner, Name oder Datum.</translation>
    </message>
    <message>
        <source>Pictures in your pictures folder show up here by themselves.</source>
        <translation>Bilder in deinem Bilderordner erscheinen hier von selbst.</translation>
    </message>
    <message>
        <source>Show all pictures</source>
        <translation>Alle Bilder zeigen</translation>
    </message>
    <message>
        <source>Your pictures cannot be read</source>
        <translation>Deine Bilder können nicht gelesen werden</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Noch einmal versuchen</translation>
    </message>
    <message>
        <source>The library of the theme service is missing or damaged.</source>
        <translation>Die Bibliothek des Dienstes fehlt oder ist beschädigt.</translation>
    </message>
</context>
<context>
    <name>PlayButton</name>
    <message>
        <source>Stop: %1</source>
        <translation>Anhalten: %1</translation>
    </message>
    <message>
        <source>Play: %1</source>
        <translation>Abspielen: %1</translation>
    </message>
    <message>
        <source>Tones cannot be played: Qt&apos;s multimedia module is missing.</source>
        <translation>Töne können nicht abgespielt werden: Qts Multimedia-Modul fehlt.</translation>
    </message>
</context>
<context>
    <name>PreviewApplication</name>
    <message>
        <source>Sounds</source>
        <translation>Klänge</translation>
    </message>
    <message>
        <source>Ringer</source>
        <translation>Klingeln</translation>
    </message>
    <message>
        <source>Calls and alarms</source>
        <translation>Anrufe und Wecker</translation>
    </message>
    <message>
        <source>Vibration</source>
        <translation>Vibration</translation>
    </message>
    <message>
        <source>While the ringer is off</source>
        <translation>Wenn das Klingeln aus ist</translation>
    </message>
    <message>
        <source>Tones</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>Ringtone</source>
        <translation>Klingelton</translation>
    </message>
    <message>
        <source>Tide</source>
        <translation>Flut</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>Gull</source>
        <translation>Möwe</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Buoy</source>
        <translation>Boje</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
</context>
<context>
    <name>PreviewHome</name>
    <message>
        <source>Saturday, 21 November</source>
        <translation>Samstag, 21. November</translation>
    </message>
    <message>
        <source>Mia</source>
        <translation>Mia</translation>
    </message>
    <message>
        <source>See you at the pier?</source>
        <translation>Treffen wir uns am Steg?</translation>
    </message>
    <message>
        <source>Walk by the sea</source>
        <translation>Spaziergang am Meer</translation>
    </message>
    <message>
        <source>11:00, north beach</source>
        <translation>11:00, Nordstrand</translation>
    </message>
</context>
<context>
    <name>ShellSection</name>
    <message>
        <source>What reaches this session</source>
        <translation>Was in dieser Sitzung ankommt</translation>
    </message>
    <message>
        <source>No shell or service that the bridge serves is running.</source>
        <translation>Es läuft weder eine Oberfläche noch ein Dienst, an den die Brücke etwas weitergibt.</translation>
    </message>
    <message>
        <source>The bridge to shells does not run, so it hands nothing on.</source>
        <translation>Die Brücke zu den Oberflächen läuft nicht und gibt deshalb nichts weiter.</translation>
    </message>
</context>
<context>
    <name>SoundSection</name>
    <message>
        <source>Ringtone</source>
        <translation>Klingelton</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <source>Internet calls</source>
        <translation>Internet-Anrufe</translation>
    </message>
    <message>
        <source>Chats</source>
        <translation>Chats</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Alarm clock</source>
        <translation>Wecker</translation>
    </message>
    <message>
        <source>Volume and tones</source>
        <translation>Lautstärke und Töne</translation>
    </message>
    <message>
        <source>Volume of the ringer</source>
        <translation>Lautstärke des Klingelns</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
</context>
<context>
    <name>ToneChooser</name>
    <message>
        <source>Tones</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>As it is now</source>
        <translation>Wie es jetzt ist</translation>
    </message>
    <message>
        <source>The library has no other tones.</source>
        <translation>Die Bibliothek hat keine anderen Töne.</translation>
    </message>
</context>
<context>
    <name>TonePlayer</name>
    <message>
        <source>The tone cannot be played: %1</source>
        <translation>Der Ton kann nicht abgespielt werden: %1</translation>
    </message>
</context>
<context>
    <name>ToneRow</name>
    <message>
        <source>Choose the tone: %1</source>
        <translation>Ton wählen: %1</translation>
    </message>
    <message>
        <source>As it is now</source>
        <translation>Wie es jetzt ist</translation>
    </message>
    <message>
        <source>%1 is on</source>
        <translation>%1 ist an</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Shows, makes and applies moodsets.</source>
        <translation>Zeigt Moodsets, macht sie und wendet sie an.</translation>
    </message>
    <message>
        <source>Looks dark or light, whatever the desktop says.</source>
        <translation>Sieht dunkel oder hell aus, was auch der Desktop sagt.</translation>
    </message>
    <message>
        <source>A picture, its address, or the folder of a bundle.</source>
        <translation>Ein Bild, seine Adresse oder der Ordner eines Pakets.</translation>
    </message>
</context>
</TS>
