<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fi" sourcelanguage="en">
<context>
    <name>AddPage</name>
    <message>
        <source>Add a moodset</source>
        <translation>Lisää moodset</translation>
    </message>
    <message>
        <source>From a picture</source>
        <translation>Kuvasta</translation>
    </message>
    <message>
        <source>Drop a file on the window, or choose one. Any of your pictures will do, too.</source>
        <translation>Pudota tiedosto ikkunaan tai valitse sellainen. Mikä tahansa kuvistasi käy myös.</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Valitse kuva</translation>
    </message>
    <message>
        <source>From an address</source>
        <translation>Osoitteesta</translation>
    </message>
    <message>
        <source>Address of a picture</source>
        <translation>Kuvan osoite</translation>
    </message>
    <message>
        <source>Look at it</source>
        <translation>Katso</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Liitä</translation>
    </message>
    <message>
        <source>From a bundle</source>
        <translation>Paketista</translation>
    </message>
    <message>
        <source>A bundle is a folder with a moodset file, its pictures and tones.</source>
        <translation>Paketti on kansio, jossa on moodset-tiedosto sekä sen kuvat ja äänet.</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Valitse kansio</translation>
    </message>
    <message>
        <source>Look for new bundles</source>
        <translation>Etsi uusia paketteja</translation>
    </message>
</context>
<context>
    <name>BridgeStatus</name>
    <message>
        <source>GNOME and Phosh</source>
        <translation>GNOME ja Phosh</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Sovellukset</translation>
    </message>
    <message>
        <source>Sounds of the phone</source>
        <translation>Puhelimen äänet</translation>
    </message>
    <message>
        <source>Your own files</source>
        <translation>Omat tiedostosi</translation>
    </message>
    <message>
        <source>colours and wallpaper by templates</source>
        <translation>värit ja taustakuva mallien mukaan</translation>
    </message>
    <message>
        <source>tones</source>
        <translation>äänet</translation>
    </message>
    <message>
        <source>accent colour</source>
        <translation>korostusväri</translation>
    </message>
    <message>
        <source>wallpaper</source>
        <translation>taustakuva</translation>
    </message>
    <message>
        <source>Nothing so far</source>
        <translation>Ei vielä mitään</translation>
    </message>
</context>
<context>
    <name>BundlePage</name>
    <message>
        <source>Install a bundle</source>
        <translation>Asenna paketti</translation>
    </message>
    <message>
        <source>Installing …</source>
        <translation>Asennetaan …</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Asenna</translation>
    </message>
</context>
<context>
    <name>ColorEditor</name>
    <message>
        <source>Colours that go with the picture</source>
        <translation>Kuvaan sopivat värit</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Väri %1</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Sävy</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Kylläisyys</translation>
    </message>
    <message>
        <source>Lightness</source>
        <translation>Vaaleus</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Peittävyys</translation>
    </message>
</context>
<context>
    <name>ColorRow</name>
    <message>
        <source>Change the colour: %1</source>
        <translation>Vaihda väri: %1</translation>
    </message>
    <message>
        <source>Contrast %1 : 1</source>
        <translation>Kontrasti %1 : 1</translation>
    </message>
    <message>
        <source>Contrast %1 : 1, hard to read</source>
        <translation>Kontrasti %1 : 1, vaikea lukea</translation>
    </message>
    <message>
        <source>Mend</source>
        <translation>Korjaa</translation>
    </message>
    <message>
        <source>Mend the contrast: %1</source>
        <translation>Korjaa kontrasti: %1</translation>
    </message>
</context>
<context>
    <name>ColorSection</name>
    <message>
        <source>Highlight</source>
        <translation>Korostus</translation>
    </message>
    <message>
        <source>Second highlight</source>
        <translation>Toinen korostus</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Teksti</translation>
    </message>
    <message>
        <source>Second text</source>
        <translation>Toinen teksti</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Värit</translation>
    </message>
</context>
<context>
    <name>DropHint</name>
    <message>
        <source>Drop a picture, an address or the folder of a bundle</source>
        <translation>Pudota kuva, osoite tai paketin kansio</translation>
    </message>
</context>
<context>
    <name>FolderPage</name>
    <message>
        <source>Choose a folder</source>
        <translation>Valitse kansio</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Valitse kuva</translation>
    </message>
    <message>
        <source>The folder above</source>
        <translation>Yläkansio</translation>
    </message>
    <message>
        <source>Folders and pictures</source>
        <translation>Kansiot ja kuvat</translation>
    </message>
    <message>
        <source>Nothing to choose here</source>
        <translation>Täällä ei ole valittavaa</translation>
    </message>
    <message>
        <source>Choose this folder</source>
        <translation>Valitse tämä kansio</translation>
    </message>
</context>
<context>
    <name>Incoming</name>
    <message>
        <source>There is no such file or folder.</source>
        <translation>Tällaista tiedostoa tai kansiota ei ole.</translation>
    </message>
    <message>
        <source>This is neither a file nor a folder.</source>
        <translation>Tämä ei ole tiedosto eikä kansio.</translation>
    </message>
    <message>
        <source>You have no right to read this file.</source>
        <translation>Sinulla ei ole oikeutta lukea tätä tiedostoa.</translation>
    </message>
    <message>
        <source>There is nothing to paste. Copy an address or a picture&apos;s file first.</source>
        <translation>Liitettävää ei ole. Kopioi ensin osoite tai kuvatiedosto.</translation>
    </message>
    <message>
        <source>This is no address of a picture. It should begin with https://.</source>
        <translation>Tämä ei ole kuvan osoite. Sen pitäisi alkaa https://.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>There is no moodset file in this folder.</source>
        <translation>Tässä kansiossa ei ole moodset-tiedostoa.</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Moodset Picker</source>
        <translation>Moodset-valitsin</translation>
    </message>
</context>
<context>
    <name>MoodsetHead</name>
    <message>
        <source>Applying …</source>
        <translation>Otetaan käyttöön …</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Käytössä</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Ota käyttöön</translation>
    </message>
    <message>
        <source>Take from the favourites</source>
        <translation>Poista suosikeista</translation>
    </message>
    <message>
        <source>Make a favourite</source>
        <translation>Lisää suosikiksi</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nimi</translation>
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
        <translation>Tätä moodsetia ei enää ole</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Takaisin</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Poista</translation>
    </message>
</context>
<context>
    <name>MoodsetTile</name>
    <message>
        <source>%1, active</source>
        <translation>%1, käytössä</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Käytössä</translation>
    </message>
    <message>
        <source>%1 is active</source>
        <translation>%1 on käytössä</translation>
    </message>
    <message>
        <source>Apply %1</source>
        <translation>Ota käyttöön %1</translation>
    </message>
</context>
<context>
    <name>MoodsetsPage</name>
    <message>
        <source>Moodsets</source>
        <translation>Moodsetit</translation>
    </message>
    <message>
        <source>Add a moodset</source>
        <translation>Lisää moodset</translation>
    </message>
</context>
<context>
    <name>MoodsetsState</name>
    <message>
        <source>Looking for your moodsets …</source>
        <translation>Etsitään moodsetejasi …</translation>
    </message>
    <message>
        <source>No moodsets yet</source>
        <translation>Ei vielä moodseteja</translation>
    </message>
    <message>
        <source>Make one of any picture: its colours become those of your phone.</source>
        <translation>Tee sellainen mistä tahansa kuvasta: sen väreistä tulee puhelimesi värit.</translation>
    </message>
    <message>
        <source>Add a moodset</source>
        <translation>Lisää moodset</translation>
    </message>
    <message>
        <source>Your moodsets cannot be read</source>
        <translation>Moodsetejasi ei voi lukea</translation>
    </message>
    <message>
        <source>The library of the theme service is missing or damaged.</source>
        <translation>Palvelun kirjasto puuttuu tai on vioittunut.</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Yritä uudelleen</translation>
    </message>
</context>
<context>
    <name>NavigationBar</name>
    <message>
        <source>Moodsets</source>
        <translation>Moodsetit</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Kuvat</translation>
    </message>
    <message>
        <source>Moodset Picker</source>
        <translation>Moodset-valitsin</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Undo</source>
        <translation>Kumoa</translation>
    </message>
    <message>
        <source>Close this message</source>
        <translation>Sulje tämä viesti</translation>
    </message>
</context>
<context>
    <name>Notices</name>
    <message>
        <source>“%1” is active.</source>
        <translation>”%1” on käytössä.</translation>
    </message>
    <message>
        <source>“%1” is one of your moodsets now.</source>
        <translation>”%1” on nyt yksi moodseteistasi.</translation>
    </message>
    <message>
        <source>“%1” has been removed.</source>
        <translation>”%1” on poistettu.</translation>
    </message>
    <message>
        <source>“%1” has been changed.</source>
        <translation>”%1” on muutettu.</translation>
    </message>
    <message>
        <source>The theme service does not answer. Nothing has been changed.</source>
        <translation>Palvelu ei vastaa. Mitään ei muutettu.</translation>
    </message>
    <message>
        <source>This moodset does not exist any more.</source>
        <translation>Tätä moodsetia ei enää ole.</translation>
    </message>
    <message>
        <source>The picture has not come within the time. It may still come later.</source>
        <translation>Kuva ei tullut ajoissa. Se voi vielä tulla.</translation>
    </message>
    <message>
        <source>This did not work: %1</source>
        <translation>Tämä ei onnistunut: %1</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Takaisin</translation>
    </message>
</context>
<context>
    <name>PhonePreview</name>
    <message>
        <source>Preview of the home screen and of an application</source>
        <translation>Kotinäytön ja sovelluksen esikatselu</translation>
    </message>
</context>
<context>
    <name>PhotoRows</name>
    <message>
        <source>Without a date</source>
        <translation>Ilman päivämäärää</translation>
    </message>
</context>
<context>
    <name>PicturePage</name>
    <message>
        <source>New moodset</source>
        <translation>Uusi moodset</translation>
    </message>
    <message>
        <source>No moodset can be made of this</source>
        <translation>Tästä ei voi tehdä moodsetia</translation>
    </message>
    <message>
        <source>Looking at the picture …</source>
        <translation>Tutkitaan kuvaa …</translation>
    </message>
    <message>
        <source>The picture is on the network. It is downloaded into your pictures folder when the moodset is made.</source>
        <translation>Kuva on verkossa. Se ladataan kuvakansioosi, kun moodset tehdään.</translation>
    </message>
    <message>
        <source>Please wait …</source>
        <translation>Odota …</translation>
    </message>
    <message>
        <source>Make it and apply it</source>
        <translation>Tee ja ota käyttöön</translation>
    </message>
    <message>
        <source>Make it only</source>
        <translation>Tee vain</translation>
    </message>
</context>
<context>
    <name>PicturePreview</name>
    <message>
        <source>the picture cannot be read</source>
        <translation>kuvaa ei voi lukea</translation>
    </message>
</context>
<context>
    <name>PicturesPage</name>
    <message>
        <source>Pictures</source>
        <translation>Kuvat</translation>
    </message>
    <message>
        <source>Search by folder, name or date</source>
        <translation>Etsi kansion, nimen tai päivämäärän mukaan</translation>
    </message>
    <message>
        <source>Folder, name or date such as 2024-03</source>
        <translation>Kansio, nimi tai päivämäärä kuten 2024-03</translation>
    </message>
    <message>
        <source>Looking for your pictures …</source>
        <translation>Etsitään kuviasi …</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Mitään ei löytynyt</translation>
    </message>
    <message>
        <source>No pictures yet</source>
        <translation>Ei vielä kuvia</translation>
    </message>
    <message>
        <source>No picture has these words in its folder, name or date.</source>
        <translation>Missään kuvassa ei ole näitä sanoja kansiossa, nimessä tai päivämäärässä.</translation>
    </message>
    <message>
        <source>Pictures in your pictures folder show up here by themselves.</source>
        <translation>Kuvakansiosi kuvat ilmestyvät tänne itsestään.</translation>
    </message>
    <message>
        <source>Show all pictures</source>
        <translation>Näytä kaikki kuvat</translation>
    </message>
    <message>
        <source>Your pictures cannot be read</source>
        <translation>Kuviasi ei voi lukea</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Yritä uudelleen</translation>
    </message>
    <message>
        <source>The library of the theme service is missing or damaged.</source>
        <translation>Palvelun kirjasto puuttuu tai on vioittunut.</translation>
    </message>
</context>
<context>
    <name>PlayButton</name>
    <message>
        <source>Stop: %1</source>
        <translation>Pysäytä: %1</translation>
    </message>
    <message>
        <source>Play: %1</source>
        <translation>Soita: %1</translation>
    </message>
    <message>
        <source>Tones cannot be played: Qt&apos;s multimedia module is missing.</source>
        <translation>Ääniä ei voi soittaa: Qt:n multimediamoduuli puuttuu.</translation>
    </message>
</context>
<context>
    <name>PreviewApplication</name>
    <message>
        <source>Sounds</source>
        <translation>Äänet</translation>
    </message>
    <message>
        <source>Ringer</source>
        <translation>Soitto</translation>
    </message>
    <message>
        <source>Calls and alarms</source>
        <translation>Puhelut ja herätykset</translation>
    </message>
    <message>
        <source>Vibration</source>
        <translation>Värinä</translation>
    </message>
    <message>
        <source>While the ringer is off</source>
        <translation>Kun soitto on pois</translation>
    </message>
    <message>
        <source>Tones</source>
        <translation>Äänet</translation>
    </message>
    <message>
        <source>Ringtone</source>
        <translation>Soittoääni</translation>
    </message>
    <message>
        <source>Tide</source>
        <translation>Vuorovesi</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Viestit</translation>
    </message>
    <message>
        <source>Gull</source>
        <translation>Lokki</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalenteri</translation>
    </message>
    <message>
        <source>Buoy</source>
        <translation>Poiju</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Tallenna</translation>
    </message>
</context>
<context>
    <name>PreviewHome</name>
    <message>
        <source>Saturday, 21 November</source>
        <translation>lauantai 21. marraskuuta</translation>
    </message>
    <message>
        <source>Mia</source>
        <translation>Mia</translation>
    </message>
    <message>
        <source>See you at the pier?</source>
        <translation>Nähdäänkö laiturilla?</translation>
    </message>
    <message>
        <source>Walk by the sea</source>
        <translation>Kävely meren rannalla</translation>
    </message>
    <message>
        <source>11:00, north beach</source>
        <translation>11.00, pohjoisranta</translation>
    </message>
</context>
<context>
    <name>ShellSection</name>
    <message>
        <source>What reaches this session</source>
        <translation>Mitä tähän istuntoon välittyy</translation>
    </message>
    <message>
        <source>No shell or service that the bridge serves is running.</source>
        <translation>Käynnissä ei ole työpöytää eikä palvelua, jolle silta välittäisi mitään.</translation>
    </message>
    <message>
        <source>The bridge to shells does not run, so it hands nothing on.</source>
        <translation>Silta työpöytiin ei ole käynnissä, joten se ei välitä mitään.</translation>
    </message>
</context>
<context>
    <name>SoundSection</name>
    <message>
        <source>Ringtone</source>
        <translation>Soittoääni</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Viestit</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Sähköposti</translation>
    </message>
    <message>
        <source>Internet calls</source>
        <translation>Internet-puhelut</translation>
    </message>
    <message>
        <source>Chats</source>
        <translation>Keskustelut</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalenteri</translation>
    </message>
    <message>
        <source>Alarm clock</source>
        <translation>Herätyskello</translation>
    </message>
    <message>
        <source>Volume and tones</source>
        <translation>Äänenvoimakkuus ja äänet</translation>
    </message>
    <message>
        <source>Volume of the ringer</source>
        <translation>Soiton äänenvoimakkuus</translation>
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
        <translation>Odota</translation>
    </message>
</context>
<context>
    <name>ToneChooser</name>
    <message>
        <source>Tones</source>
        <translation>Äänet</translation>
    </message>
    <message>
        <source>As it is now</source>
        <translation>Kuten nyt</translation>
    </message>
    <message>
        <source>The library has no other tones.</source>
        <translation>Kirjastossa ei ole muita ääniä.</translation>
    </message>
</context>
<context>
    <name>TonePlayer</name>
    <message>
        <source>The tone cannot be played: %1</source>
        <translation>Ääntä ei voi soittaa: %1</translation>
    </message>
</context>
<context>
    <name>ToneRow</name>
    <message>
        <source>Choose the tone: %1</source>
        <translation>Valitse ääni: %1</translation>
    </message>
    <message>
        <source>As it is now</source>
        <translation>Kuten nyt</translation>
    </message>
    <message>
        <source>%1 is on</source>
        <translation>%1 on päällä</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Shows, makes and applies moodsets.</source>
        <translation>Näyttää moodseteja, tekee niitä ja ottaa niitä käyttöön.</translation>
    </message>
    <message>
        <source>Looks dark or light, whatever the desktop says.</source>
        <translation>Näyttää tummalta tai vaalealta, mitä työpöytä sanookin.</translation>
    </message>
    <message>
        <source>A picture, its address, or the folder of a bundle.</source>
        <translation>Kuva, sen osoite tai paketin kansio.</translation>
    </message>
</context>
</TS>
