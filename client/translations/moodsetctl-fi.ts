<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fi">
<context>
    <name>Text</name>
    <message>
        <source>the daemon has not made it active</source>
        <translation>palvelu ei ottanut sitä käyttöön</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it</source>
        <translation>palvelu ei tehnyt siitä moodsetiä</translation>
    </message>
    <message>
        <source>%1; its log may give the reason: journalctl --user -u moodsetd</source>
        <translation>%1; syy voi olla sen lokissa: journalctl --user -u moodsetd</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 is active.</source>
        <translation>%1 on käytössä.</translation>
    </message>
    <message>
        <source>%1 has a moodset, number %2.</source>
        <translation>Kohteella %1 on moodset, numero %2.</translation>
    </message>
    <message>
        <source>the daemon has ended</source>
        <translation>palvelu on päättynyt</translation>
    </message>
    <message>
        <source>the time limit has passed; the daemon may still be downloading</source>
        <translation>siitä ei tullut mitään ajoissa; palvelu voi olla vielä lataamassa</translation>
    </message>
    <message>
        <source>The daemon was called. The command did not wait for the result.</source>
        <translation>Palvelua pyydettiin tekemään se. Tulosta ei odotettu.</translation>
    </message>
    <message>
        <source>%1 takes no option %2</source>
        <translation>komennolla %1 ei ole valitsinta %2</translation>
    </message>
    <message>
        <source>no such option: %1</source>
        <translation>ei sellaista valitsinta: %1</translation>
    </message>
    <message>
        <source>no such command: %1</source>
        <translation>ei sellaista komentoa: %1</translation>
    </message>
    <message>
        <source>one argument too many: %1</source>
        <translation>yksi argumentti liikaa: %1</translation>
    </message>
    <message>
        <source>the argument %1 is missing</source>
        <translation>argumentti %1 puuttuu</translation>
    </message>
    <message>
        <source>a command is missing; see moodsetctl --help</source>
        <translation>komento puuttuu; katso moodsetctl --help</translation>
    </message>
    <message>
        <source>A PICTURE is a path or a URL; set, create and preview also take an address on the network. A MOODSET is an id or a name from the table of moodsets. If a command takes both and a name is also the name of a file, it means the file.</source>
        <translation>PICTURE on polku tai URL; komennoissa set, create ja preview myös verkossa oleva. MOODSET on moodsetien taulukon numero tai nimi; missä kuvakin kelpaa, nimi, joka on myös tiedoston, tarkoittaa tiedostoa.</translation>
    </message>
    <message>
        <source>0: the command succeeded; 1: it failed; 2: the arguments are wrong; 3: the daemon does not run and cannot be started; 4: the time limit has passed. If the status is not 0, one line on the standard error gives the reason.</source>
        <translation>0: tehty; 1: epäonnistui; 2: argumenteissa ei ole järkeä; 3: palvelu ei ole käynnissä eikä sitä voi käynnistää; 4: se ei tapahtunut ajoissa. Muissa kuin 0:ssa yksi rivi virhetulosteessa kertoo syyn.</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Yleiskuva</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Kuvat</translation>
    </message>
    <message>
        <source>Moodsets</source>
        <translation>Moodsetit</translation>
    </message>
    <message>
        <source>Bundles</source>
        <translation>Paketit</translation>
    </message>
    <message>
        <source>The library and the daemon</source>
        <translation>Kirjasto ja palvelu</translation>
    </message>
    <message>
        <source>Help and the shell</source>
        <translation>Ohje ja komentotulkki</translation>
    </message>
    <message>
        <source>Usage: moodsetctl COMMAND</source>
        <translation>Käyttö: moodsetctl KOMENTO</translation>
    </message>
    <message>
        <source>Shows the pictures, the moodsets and the theme that moodsetd keeps, and changes them.</source>
        <translation>Näyttää moodsetd:n kuvat, moodsetit ja teeman sekä muuttaa niitä.</translation>
    </message>
    <message>
        <source>Options of all commands</source>
        <translation>Kaikkien komentojen valitsimet</translation>
    </message>
    <message>
        <source>To begin with</source>
        <translation>Aluksi</translation>
    </message>
    <message>
        <source>moodsetctl help COMMAND describes each of them.</source>
        <translation>moodsetctl help KOMENTO kertoo kustakin lisää.</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>Paluuarvo</translation>
    </message>
    <message>
        <source>Usage: moodsetctl %1</source>
        <translation>Käyttö: moodsetctl %1</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Valitsimet</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Esimerkkejä</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;?</source>
        <translation>; tarkoititko ”%1”?</translation>
    </message>
    <message>
        <source>; see %1</source>
        <translation>; katso %1</translation>
    </message>
    <message>
        <source>an argument is empty</source>
        <translation>argumentti on tyhjä</translation>
    </message>
    <message>
        <source>%1 is neither on nor off</source>
        <translation>%1 ei ole on eikä off</translation>
    </message>
    <message>
        <source>%1 is no number of seconds, 0 or more</source>
        <translation>%1 ei ole sekuntien määrä, 0 tai enemmän</translation>
    </message>
    <message>
        <source>%1 is no colour: write #rrggbb, #aarrggbb or an SVG name</source>
        <translation>%1 ei ole väri: kirjoita #rrggbb, #aarrggbb tai SVG-nimi</translation>
    </message>
    <message>
        <source>%1 is not of the form KEY=VALUE</source>
        <translation>%1 ei ole muotoa KEY=VALUE</translation>
    </message>
    <message>
        <source>the name has to end in .moodset or .index, in small letters</source>
        <translation>nimen on päätyttävä .moodset tai .index, pienin kirjaimin</translation>
    </message>
    <message>
        <source>error</source>
        <translation>virhe</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>varoitus</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>ei sellaista tiedostoa</translation>
    </message>
    <message>
        <source>the daemon overlooks files whose name begins with a dot</source>
        <translation>palvelu ohittaa tiedostot, joiden nimi alkaa pisteellä</translation>
    </message>
    <message>
        <source>the file cannot be opened: %1</source>
        <translation>tiedostoa ei voi avata: %1</translation>
    </message>
    <message>
        <source>no JSON: %1</source>
        <translation>ei JSONia: %1</translation>
    </message>
    <message>
        <source>the root has to be an object, in braces</source>
        <translation>juuren on oltava objekti aaltosulkeissa</translation>
    </message>
    <message>
        <source>a name with #, ? or %20 is cut or changed in places: %1</source>
        <translation>nimi, jossa on #, ? tai %20, katkeaa tai muuttuu paikoin: %1</translation>
    </message>
    <message>
        <source>unknown key %1, which is ignored</source>
        <translation>tuntematon avain %1, joka ohitetaan</translation>
    </message>
    <message>
        <source>&quot;wallpaper&quot; has to name a file in images/</source>
        <translation>kohdan ”wallpaper” on nimettävä tiedosto kansiossa images/</translation>
    </message>
    <message>
        <source>the wallpaper&apos;s name must have no &quot;/&quot;: %1</source>
        <translation>taustakuvan nimessä ei saa olla merkkiä ”/”: %1</translation>
    </message>
    <message>
        <source>there is no images/%1</source>
        <translation>tiedostoa images/%1 ei ole</translation>
    </message>
    <message>
        <source>images/%1 cannot become the wallpaper: %2</source>
        <translation>images/%1 ei kelpaa taustakuvaksi: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be a text, and counts as empty</source>
        <translation>kohdan ”%1” on oltava teksti, ja se katsotaan tyhjäksi</translation>
    </message>
    <message>
        <source>the moodset will have no name</source>
        <translation>moodset jää ilman nimeä</translation>
    </message>
    <message>
        <source>&quot;favorite&quot; has to be true or false, and counts as true</source>
        <translation>kohdan ”favorite” on oltava true tai false, ja se katsotaan arvoksi true</translation>
    </message>
    <message>
        <source>&quot;timestamp&quot; is no time in the form of ISO 8601</source>
        <translation>”timestamp” ei ole ISO 8601:n muotoinen aika</translation>
    </message>
    <message>
        <source>&quot;ringerVolume&quot; has to be a whole number, and counts as 80</source>
        <translation>kohdan ”ringerVolume” on oltava kokonaisluku, ja se katsotaan arvoksi 80</translation>
    </message>
    <message>
        <source>&quot;ringerVolume&quot; is not from 0 to 100, so the volume stays as it is</source>
        <translation>”ringerVolume” ei ole väliltä 0–100, joten voimakkuus pysyy ennallaan</translation>
    </message>
    <message>
        <source>without &quot;version&quot;: 2 the wallpaper is cut as that of an older bundle</source>
        <translation>ilman kohtaa ”version”: 2 taustakuva rajataan kuten vanhan paketin</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no colour, and is made from the wallpaper instead</source>
        <translation>”%1” ei ole väri, ja se tehdään taustakuvasta</translation>
    </message>
    <message>
        <source>&quot;secondaryColor&quot; and &quot;secondaryColors&quot; have to be the same: each is read in one place only</source>
        <translation>kohtien ”secondaryColor” ja ”secondaryColors” on oltava samat: kumpikin luetaan vain yhdessä paikassa</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object, and is left out</source>
        <translation>kohdan ”%1” on oltava objekti, ja se jätetään pois</translation>
    </message>
    <message>
        <source>&quot;enabled&quot; has to be a number, and counts as 1: write 0 to switch the tone off</source>
        <translation>kohdan ”enabled” on oltava luku, ja se katsotaan arvoksi 1: kirjoita 0, niin ääni on poissa</translation>
    </message>
    <message>
        <source>the tone&apos;s name must have no &quot;/&quot;: it has no file now</source>
        <translation>äänen nimessä ei saa olla merkkiä ”/”: nyt sillä ei ole tiedostoa</translation>
    </message>
    <message>
        <source>there is no sounds/%1</source>
        <translation>tiedostoa sounds/%1 ei ole</translation>
    </message>
    <message>
        <source>the folder %1 beside the index is missing</source>
        <translation>hakemiston viereltä puuttuu kansio %1</translation>
    </message>
    <message>
        <source>&quot;files&quot; has to be a list, in brackets</source>
        <translation>kohdan ”files” on oltava luettelo hakasulkeissa</translation>
    </message>
    <message>
        <source>the entry names no file</source>
        <translation>kohta ei nimeä tiedostoa</translation>
    </message>
    <message>
        <source>%1 is listed twice</source>
        <translation>%1 on luettelossa kahdesti</translation>
    </message>
    <message>
        <source>there is no %1/%2</source>
        <translation>tiedostoa %1/%2 ei ole</translation>
    </message>
    <message>
        <source>%1 wallpaper, %2, would be deleted.</source>
        <translation>%1 taustakuva, %2, poistettaisiin.</translation>
    </message>
    <message>
        <source>%1 wallpapers, %2, would be deleted.</source>
        <translation>%1 taustakuvaa, %2, poistettaisiin.</translation>
    </message>
    <message>
        <source>%1 wallpaper, %2, is deleted.</source>
        <translation>%1 taustakuva, %2, on poistettu.</translation>
    </message>
    <message>
        <source>%1 wallpapers, %2, are deleted.</source>
        <translation>%1 taustakuvaa, %2, on poistettu.</translation>
    </message>
    <message>
        <source>Primary colour</source>
        <translation>Ensisijainen väri</translation>
    </message>
    <message>
        <source>Secondary colour</source>
        <translation>Toissijainen väri</translation>
    </message>
    <message>
        <source>Highlight colour</source>
        <translation>Korostusväri</translation>
    </message>
    <message>
        <source>2nd highlight colour</source>
        <translation>2. korostusväri</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Väri</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Arvo</translation>
    </message>
    <message>
        <source>Contrast at home</source>
        <translation>Kontrasti kotona</translation>
    </message>
    <message>
        <source>in applications</source>
        <translation>sovelluksissa</translation>
    </message>
    <message>
        <source>download the picture first</source>
        <translation>lataa kuva ensin</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>ei voi lukea</translation>
    </message>
    <message>
        <source>%1 is none of bash, zsh and fish</source>
        <translation>%1 ei ole bash, zsh eikä fish</translation>
    </message>
    <message>
        <source>good</source>
        <translation>hyvä</translation>
    </message>
    <message>
        <source>advice</source>
        <translation>neuvo</translation>
    </message>
    <message>
        <source>PROBLEM</source>
        <translation>ONGELMA</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>tuntematon</translation>
    </message>
    <message>
        <source>mend it with: %1</source>
        <translation>korjaa näin: %1</translation>
    </message>
    <message>
        <source>%1 problem</source>
        <translation>%1 ongelma</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 ongelmaa</translation>
    </message>
    <message>
        <source>the moodset has gone</source>
        <translation>moodset on poissa</translation>
    </message>
    <message>
        <source>%1 is changed.</source>
        <translation>%1 on muutettu.</translation>
    </message>
    <message>
        <source>The theme follows with: moodsetctl set %1</source>
        <translation>Teema seuraa komennolla: moodsetctl set %1</translation>
    </message>
    <message>
        <source>not a file URL</source>
        <translation>ei tiedoston URL</translation>
    </message>
    <message>
        <source>cannot be read as a picture of type %1</source>
        <translation>ei voi lukea kuvana, jonka tyyppi on %1</translation>
    </message>
    <message>
        <source>cannot be read as a picture of type %1: %2</source>
        <translation>ei voi lukea kuvana, jonka tyyppi on %1: %2</translation>
    </message>
    <message>
        <source>not a picture, but %1</source>
        <translation>ei kuva, vaan %1</translation>
    </message>
    <message>
        <source>the daemon has not taken it in</source>
        <translation>palvelu ei ottanut sitä mukaan</translation>
    </message>
    <message>
        <source>Reading %1 of %2: %3</source>
        <translation>Luetaan %1/%2: %3</translation>
    </message>
    <message>
        <source>%1 picture is in the library.</source>
        <translation>%1 kuva on kirjastossa.</translation>
    </message>
    <message>
        <source>%1 pictures are in the library.</source>
        <translation>%1 kuvaa on kirjastossa.</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it: line %1, column %2: %3</source>
        <translation>palvelu ei tehnyt siitä moodsetiä: rivi %1, sarake %2: %3</translation>
    </message>
    <message>
        <source>the daemon has not made a moodset of it; its log tells why: journalctl --user -u moodsetd</source>
        <translation>palvelu ei tehnyt siitä moodsetiä; syy on sen lokissa: journalctl --user -u moodsetd</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>Luetaan %1</translation>
    </message>
    <message>
        <source>%1 moodset is installed.</source>
        <translation>%1 moodset on asennettu.</translation>
    </message>
    <message>
        <source>%1 moodsets are installed.</source>
        <translation>%1 moodsetiä on asennettu.</translation>
    </message>
    <message>
        <source>no such folder</source>
        <translation>ei sellaista kansiota</translation>
    </message>
    <message>
        <source>no file of a moodset and no index in it</source>
        <translation>siinä ei ole moodset-tiedostoa eikä hakemistoa</translation>
    </message>
    <message>
        <source>download the picture first, or create a moodset of it</source>
        <translation>lataa kuva ensin tai tee siitä moodset komennolla create</translation>
    </message>
    <message>
        <source>the daemon does not know this moodset; see install</source>
        <translation>palvelu ei tunne tätä moodsetiä; katso install</translation>
    </message>
    <message>
        <source>no moodset is active</source>
        <translation>mikään moodset ei ole käytössä</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>ei voi kirjoittaa</translation>
    </message>
    <message>
        <source>The preview is in %1.</source>
        <translation>Esikatselu on tiedostossa %1.</translation>
    </message>
    <message>
        <source>%1, %2 new, %3 gone.</source>
        <translation>%1, %2 uutta, %3 poissa.</translation>
    </message>
    <message>
        <source>%1 moodset</source>
        <translation>%1 moodset</translation>
    </message>
    <message>
        <source>%1 moodsets</source>
        <translation>%1 moodsetiä</translation>
    </message>
    <message>
        <source>the daemon has not removed it</source>
        <translation>palvelu ei poistanut sitä</translation>
    </message>
    <message>
        <source>%1 is removed.</source>
        <translation>%1 on poistettu.</translation>
    </message>
    <message>
        <source>stays as it is</source>
        <translation>pysyy ennallaan</translation>
    </message>
    <message>
        <source>off</source>
        <translation>pois</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>kyllä</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>Nro</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nimi</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Tiedosto</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Käytössä</translation>
    </message>
    <message>
        <source>Favourite</source>
        <translation>Suosikki</translation>
    </message>
    <message>
        <source>Home wallpaper</source>
        <translation>Kotitaustakuva</translation>
    </message>
    <message>
        <source>Application wallpaper</source>
        <translation>Sovellustaustakuva</translation>
    </message>
    <message>
        <source>Ringer volume</source>
        <translation>Soittoäänen voimakkuus</translation>
    </message>
    <message>
        <source>Partner space</source>
        <translation>Kumppanitila</translation>
    </message>
    <message>
        <source>Back cover</source>
        <translation>Takakuori</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versio</translation>
    </message>
    <message>
        <source>none</source>
        <translation>ei mitään</translation>
    </message>
    <message>
        <source>not running; it starts when it is needed</source>
        <translation>ei käynnissä; käynnistyy tarvittaessa</translation>
    </message>
    <message>
        <source>not running</source>
        <translation>ei käynnissä</translation>
    </message>
    <message>
        <source>of unknown version</source>
        <translation>versio tuntematon</translation>
    </message>
    <message>
        <source>running, %1, process %2</source>
        <translation>käynnissä, %1, prosessi %2</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>ei mikään</translation>
    </message>
    <message>
        <source>%1 picture</source>
        <translation>%1 kuva</translation>
    </message>
    <message>
        <source>%1 pictures</source>
        <translation>%1 kuvaa</translation>
    </message>
    <message>
        <source>%1 file of bundles</source>
        <translation>%1 pakettien tiedosto</translation>
    </message>
    <message>
        <source>%1 files of bundles</source>
        <translation>%1 pakettien tiedostoa</translation>
    </message>
    <message>
        <source>%1 folder</source>
        <translation>%1 kansio</translation>
    </message>
    <message>
        <source>%1 folders</source>
        <translation>%1 kansiota</translation>
    </message>
    <message>
        <source>%1 favourite</source>
        <translation>%1 suosikki</translation>
    </message>
    <message>
        <source>%1 favourites</source>
        <translation>%1 suosikkia</translation>
    </message>
    <message>
        <source>Daemon</source>
        <translation>Palvelu</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Kirjasto</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>ei vielä</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Odottaa</translation>
    </message>
    <message>
        <source>Database</source>
        <translation>Tietokanta</translation>
    </message>
    <message>
        <source>Followed folders</source>
        <translation>Seuratut kansiot</translation>
    </message>
    <message>
        <source>%1 of %2 that the system allows</source>
        <translation>%1/%2 järjestelmän sallimasta</translation>
    </message>
    <message>
        <source>nothing was active before</source>
        <translation>aiemmin ei ollut mitään käytössä</translation>
    </message>
    <message>
        <source>there is nothing to undo</source>
        <translation>ei ole mitään peruttavaa</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Kumottu: %1</translation>
    </message>
    <message>
        <source>%1 fault</source>
        <translation>%1 korjattava kohta</translation>
    </message>
    <message>
        <source>%1 faults</source>
        <translation>%1 korjattavaa kohtaa</translation>
    </message>
    <message>
        <source>%1 file without faults.</source>
        <translation>%1 tiedosto, ei korjattavaa.</translation>
    </message>
    <message>
        <source>%1 files without faults.</source>
        <translation>%1 tiedostoa, ei korjattavaa.</translation>
    </message>
    <message>
        <source>the session bus answers</source>
        <translation>istuntoväylä vastaa</translation>
    </message>
    <message>
        <source>the session bus cannot be reached</source>
        <translation>istuntoväylään ei saa yhteyttä</translation>
    </message>
    <message>
        <source>the session bus can start the daemon</source>
        <translation>istuntoväylä voi käynnistää palvelun</translation>
    </message>
    <message>
        <source>the session bus cannot start the daemon: its service file com.zavro.moodsetd.service is not where the bus looks</source>
        <translation>istuntoväylä ei voi käynnistää palvelua: sen tiedosto com.zavro.moodsetd.service ei ole siellä, mistä väylä etsii</translation>
    </message>
    <message>
        <source>the daemon is not running</source>
        <translation>palvelu ei ole käynnissä</translation>
    </message>
    <message>
        <source>the daemon still runs a program that has been replaced since</source>
        <translation>palvelu ajaa yhä ohjelmaa, joka on sittemmin korvattu</translation>
    </message>
    <message>
        <source>the daemon runs, version %1</source>
        <translation>palvelu on käynnissä, versio %1</translation>
    </message>
    <message>
        <source>no service manager of the user answers on the bus</source>
        <translation>käyttäjän palvelunhallinta ei vastaa väylällä</translation>
    </message>
    <message>
        <source>the unit moodsetd.service has failed</source>
        <translation>yksikkö moodsetd.service on epäonnistunut</translation>
    </message>
    <message>
        <source>there is no unit moodsetd.service</source>
        <translation>yksikköä moodsetd.service ei ole</translation>
    </message>
    <message>
        <source>the unit moodsetd.service is %1</source>
        <translation>yksikkö moodsetd.service on %1</translation>
    </message>
    <message>
        <source>the number of followed folders is not known</source>
        <translation>seurattujen kansioiden määrää ei saa selville</translation>
    </message>
    <message>
        <source>%1 folders are followed of %2 that the system allows</source>
        <translation>%1 kansiota seurataan, järjestelmä sallii %2</translation>
    </message>
    <message>
        <source>the limits of the daemon are not known</source>
        <translation>palvelun rajoja ei saa selville</translation>
    </message>
    <message>
        <source>the daemon has no limit of memory: a small file can claim a huge picture</source>
        <translation>palvelulla ei ole muistirajaa: pieni tiedosto voi väittää olevansa valtava kuva</translation>
    </message>
    <message>
        <source>the daemon may have %1 of memory, too little for the largest pictures</source>
        <translation>palvelu saa käyttää muistia %1, liian vähän suurimmille kuville</translation>
    </message>
    <message>
        <source>the daemon may have %1 of memory, and has had %2</source>
        <translation>palvelu saa käyttää muistia %1 ja on käyttänyt %2</translation>
    </message>
    <message>
        <source>the database is of version %1</source>
        <translation>tietokannan versio on %1</translation>
    </message>
    <message>
        <source>the database is of version %1, and not of %2</source>
        <translation>tietokannan versio on %1 eikä %2</translation>
    </message>
    <message>
        <source>the database is sound</source>
        <translation>tietokanta on ehjä</translation>
    </message>
    <message>
        <source>the database is damaged: %1</source>
        <translation>tietokanta on vaurioitunut: %1</translation>
    </message>
    <message>
        <source>the scan of %1 fails at every start, because %2 was already in the database when it was moved there</source>
        <translation>kansion %1 läpikäynti epäonnistuu joka käynnistyksessä: %2 tunnetaan erikseen ajalta ennen siirtoa</translation>
    </message>
    <message>
        <source>%1 is still in the database from before its parent folder was removed, so the daemon does not follow it when that folder comes back</source>
        <translation>%1 jäi jäljelle, kun sen ympärillä ollut kansio poistui, eikä sitä oteta mukaan, kun tämä palaa</translation>
    </message>
    <message>
        <source>all folders can be scanned</source>
        <translation>kaikki kansiot voi käydä läpi</translation>
    </message>
    <message>
        <source>no picture waits to be read</source>
        <translation>mikään kuva ei odota lukemista</translation>
    </message>
    <message>
        <source>%1 of %2 pictures wait to be read</source>
        <translation>%1/%2 kuvaa odottaa lukemista</translation>
    </message>
    <message>
        <source>cannot be renamed</source>
        <translation>ei voi nimetä uudelleen</translation>
    </message>
    <message>
        <source>the daemon cannot be stopped</source>
        <translation>palvelua ei voi pysäyttää</translation>
    </message>
    <message>
        <source>the daemon does not end</source>
        <translation>palvelu ei pääty</translation>
    </message>
    <message>
        <source>the session bus cannot start the daemon, so it is not stopped</source>
        <translation>istuntoväylä ei voi käynnistää palvelua, joten sitä ei pysäytetä</translation>
    </message>
    <message>
        <source>the library was rebuilt without the edits, which could not be read: %1; the old database is %2</source>
        <translation>kirjasto on rakennettu uudelleen ilman muokkauksia, joita ei voinut lukea: %1; vanha tietokanta on %2</translation>
    </message>
    <message>
        <source>; the edits are in %1, see moodsetctl restore</source>
        <translation>; muokkaukset ovat tiedostossa %1, katso moodsetctl restore</translation>
    </message>
    <message>
        <source>The library was rebuilt, and the edits are restored.</source>
        <translation>Kirjasto on rakennettu uudelleen, ja muokkaukset ovat palanneet.</translation>
    </message>
    <message>
        <source>The old database is %1, the saved edits are %2.</source>
        <translation>Vanha tietokanta on %1, tallennetut muokkaukset %2.</translation>
    </message>
    <message>
        <source>the key/value store can be written</source>
        <translation>avainvarastoon voi kirjoittaa</translation>
    </message>
    <message>
        <source>the key/value store cannot be written: its service is not installed</source>
        <translation>avainvarastoon ei voi kirjoittaa: sen palvelua ei ole asennettu</translation>
    </message>
    <message>
        <source>moodset files are known by their type</source>
        <translation>moodset-tiedostojen tyyppi tunnetaan</translation>
    </message>
    <message>
        <source>the types of moodset and index files are not known</source>
        <translation>moodset- ja hakemistotiedostojen tyyppejä ei tunneta</translation>
    </message>
    <message>
        <source>the theme names a file that is not there: %1</source>
        <translation>teema nimeää tiedoston, jota ei ole: %1</translation>
    </message>
    <message>
        <source>the files of the theme are there</source>
        <translation>teeman tiedostot ovat olemassa</translation>
    </message>
    <message>
        <source>all wallpapers are in use</source>
        <translation>kaikki taustakuvat ovat käytössä</translation>
    </message>
    <message>
        <source>%1 wallpaper is used by nothing and takes %2</source>
        <translation>%1 taustakuva on käyttämättä ja vie %2</translation>
    </message>
    <message>
        <source>%1 wallpapers are used by nothing and take %2</source>
        <translation>%1 taustakuvaa on käyttämättä ja vie %2</translation>
    </message>
    <message>
        <source>the library does not hold it</source>
        <translation>kirjastossa ei ole sitä</translation>
    </message>
    <message>
        <source>the daemon has not recorded where it came from</source>
        <translation>palvelu ei tallentanut, mistä se tuli</translation>
    </message>
    <message>
        <source>this is no backup by moodsetctl</source>
        <translation>tämä ei ole moodsetctl:n varmuuskopio</translation>
    </message>
    <message>
        <source>the backup is of a version that is not known</source>
        <translation>varmuuskopion versio on tuntematon</translation>
    </message>
    <message>
        <source>%1 in %2.</source>
        <translation>%1 tiedostossa %2.</translation>
    </message>
    <message>
        <source>%1 moodset is as it was.</source>
        <translation>%1 moodset on kuten ennen.</translation>
    </message>
    <message>
        <source>%1 moodsets are as they were.</source>
        <translation>%1 moodsetiä on kuten ennen.</translation>
    </message>
    <message>
        <source>not brought back: %1</source>
        <translation>ei palautettu: %1</translation>
    </message>
    <message>
        <source>the daemon has not read it in time</source>
        <translation>palvelu ei lukenut sitä ajoissa</translation>
    </message>
    <message>
        <source>cannot read %1</source>
        <translation>tiedostoa %1 ei voi lukea</translation>
    </message>
    <message>
        <source>Reading: %1 of %2 pictures, %3 folders</source>
        <translation>Luettu: %1 / %2 kuvaa, %3 kansiota</translation>
    </message>
    <message>
        <source>the daemon was not idle in time</source>
        <translation>palvelu ei tullut ajoissa valmiiksi</translation>
    </message>
    <message>
        <source>not a file</source>
        <translation>ei tiedosto</translation>
    </message>
    <message>
        <source>no right to read it</source>
        <translation>ei lukuoikeutta</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>tiedosto on tyhjä</translation>
    </message>
    <message>
        <source>it is no picture of a format that the daemon decodes</source>
        <translation>se ei ole kuva missään muodossa, jonka palvelu purkaa</translation>
    </message>
    <message>
        <source>the daemon does not decode pictures of the format %1</source>
        <translation>palvelu ei pura kuvia muodossa %1</translation>
    </message>
    <message>
        <source>the picture is damaged or cut off; its format is %1</source>
        <translation>kuva on vaurioitunut tai katkennut; sen muoto on %1</translation>
    </message>
    <message>
        <source>the picture is too large for the memory that the daemon may have: %1 x %2</source>
        <translation>kuva on liian suuri palvelun sallitulle muistille: %1 x %2</translation>
    </message>
    <message>
        <source>the address does not answer as it should: %1</source>
        <translation>osoite ei vastaa niin kuin pitäisi: %1</translation>
    </message>
    <message>
        <source>the address points to another one, which the daemon does not follow: %1</source>
        <translation>osoite viittaa toiseen, jota palvelu ei seuraa: %1</translation>
    </message>
    <message>
        <source>there is no picture at the address</source>
        <translation>osoitteessa ei ole kuvaa</translation>
    </message>
    <message>
        <source>there is no picture at the address, but %1</source>
        <translation>osoitteessa ei ole kuvaa, vaan %1</translation>
    </message>
    <message>
        <source>%1 is no volume from 0 to 100</source>
        <translation>%1 ei ole voimakkuus väliltä 0–100</translation>
    </message>
    <message>
        <source>%1: %2; write on, off, none or a file</source>
        <translation>%1: %2; kirjoita on, off, none tai tiedosto</translation>
    </message>
    <message>
        <source>%1 is not on this machine</source>
        <translation>%1 ei ole tällä laitteella</translation>
    </message>
    <message>
        <source>%1 is no sound, but %2</source>
        <translation>%1 ei ole ääni, vaan %2</translation>
    </message>
    <message>
        <source>a name cannot be empty</source>
        <translation>nimi ei voi olla tyhjä</translation>
    </message>
    <message>
        <source>a moodset has no %1</source>
        <translation>moodsetillä ei ole kohtaa %1</translation>
    </message>
    <message>
        <source>the daemon has not changed %1</source>
        <translation>palvelu ei muuttanut kohtaa %1</translation>
    </message>
    <message>
        <source>cannot read the moodsets: %1</source>
        <translation>moodsetejä ei voi lukea: %1</translation>
    </message>
    <message>
        <source>the session bus cannot be reached: run this in a session, where DBUS_SESSION_BUS_ADDRESS names it</source>
        <translation>istuntoväylään ei saa yhteyttä: aja tämä istunnossa, jossa DBUS_SESSION_BUS_ADDRESS nimeää sen</translation>
    </message>
    <message>
        <source>the daemon is not running, and the session bus cannot start it; start it with: systemctl --user start moodsetd, or run moodsetd</source>
        <translation>palvelu ei ole käynnissä, eikä istuntoväylä voi käynnistää sitä; käynnistä se: systemctl --user start moodsetd, tai aja moodsetd</translation>
    </message>
    <message>
        <source>the daemon cannot be started: %1; see: systemctl --user status moodsetd</source>
        <translation>palvelua ei voi käynnistää: %1; katso: systemctl --user status moodsetd</translation>
    </message>
    <message>
        <source>the daemon was started and does not answer</source>
        <translation>palvelu käynnistettiin, mutta se ei vastaa</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Värit</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>odottaa</translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation>lukukelvoton</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Koko</translation>
    </message>
    <message>
        <source>Taken</source>
        <translation>Otettu</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Suunta</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Tyyppi</translation>
    </message>
    <message>
        <source>%1 file</source>
        <translation>%1 tiedosto</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 tiedostoa</translation>
    </message>
    <message>
        <source>%1 unreadable</source>
        <translation>%1 lukukelvoton</translation>
    </message>
    <message>
        <source>added  </source>
        <translation>uusi    </translation>
    </message>
    <message>
        <source>changed</source>
        <translation>muuttui </translation>
    </message>
    <message>
        <source>removed</source>
        <translation>poistui </translation>
    </message>
    <message>
        <source>%1 moodsets have this name; give an id</source>
        <translation>%1 moodsetillä on tämä nimi; anna numero</translation>
    </message>
    <message>
        <source>no moodset has this id or name</source>
        <translation>millään moodsetillä ei ole tätä numeroa tai nimeä</translation>
    </message>
    <message>
        <source>not a URL</source>
        <translation>ei URL</translation>
    </message>
    <message>
        <source>not a file URL, nor one of the network</source>
        <translation>ei tiedoston eikä verkon URL</translation>
    </message>
    <message>
        <source>%1, and %2</source>
        <translation>%1, ja %2</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Avain</translation>
    </message>
    <message>
        <source>the former values cannot be stored for undo in %1: %2</source>
        <translation>korvattua ei voi säilyttää perumista varten tiedostossa %1: %2</translation>
    </message>
    <message>
        <source>print JSON, for programs</source>
        <translation>tulosta JSONia ohjelmille</translation>
    </message>
    <message>
        <source>print only errors</source>
        <translation>tulosta vain virheet</translation>
    </message>
    <message>
        <source>show this help</source>
        <translation>näytä tämä ohje</translation>
    </message>
    <message>
        <source>show the version</source>
        <translation>näytä versio</translation>
    </message>
    <message>
        <source>save the edits to a file</source>
        <translation>tallenna muokkaukset tiedostoon</translation>
    </message>
    <message>
        <source>Saves what only the database has: the moodsets with their edited names, favourites, colours, volumes and tones, and the addresses of downloaded pictures. It does not save pictures and bundles. The daemon need not run.</source>
        <translation>Tallentaa sen, mikä on vain tietokannassa: mitä moodsetejä on, niiden nimet, suosikit, värit, voimakkuudet ja äänet muokattuina, sekä mistä ladatut kuvat tulivat. Kuvat ja paketit eivät ole mukana. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>save the edits before the phone is reset</source>
        <translation>tallenna muokkaukset ennen puhelimen uutta käyttöönottoa</translation>
    </message>
    <message>
        <source>delete the wallpapers that nothing uses</source>
        <translation>poista käyttämättömät taustakuvat</translation>
    </message>
    <message>
        <source>Deletes the wallpapers that the daemon has made and that no moodset and no key of the theme uses. The daemon itself never deletes a wallpaper. The daemon need not run.</source>
        <translation>Poistaa palvelun tekemät taustakuvat, joihin mikään moodset tai teeman avain ei viittaa. Palvelu ei poista niitä koskaan. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>only print what would be deleted</source>
        <translation>kerro vain, mitkä poistettaisiin</translation>
    </message>
    <message>
        <source>see how much space this would free</source>
        <translation>katso, paljonko tilaa vapautuisi</translation>
    </message>
    <message>
        <source>show the colours that a moodset of a picture would have</source>
        <translation>näytä värit, jotka kuvan moodset saisi</translation>
    </message>
    <message>
        <source>Prints the colours that a moodset of a local picture would have, and the contrast of each: against the average of the home wallpaper, and against that of the application wallpaper as toolkits dim it, under 60 % of black. Text needs 4.5, large text 3. Nothing is stored, and the daemon need not run.</source>
        <translation>Tulostaa värit, jotka laitteella olevan kuvan moodset saisi, ja kunkin kontrastin: kotitaustakuvan keskiarvoa vasten ja sovellustaustakuvan keskiarvoa vasten niin kuin työkalut sitä tummentavat, 60 % mustan alla. Teksti tarvitsee 4,5, suuri teksti 3. Mitään ei tallenneta, eikä palvelun tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>check a picture before you apply it</source>
        <translation>arvioi kuva ennen sen käyttöönottoa</translation>
    </message>
    <message>
        <source>print the script for completion in a shell</source>
        <translation>tulosta skripti, jolla komentotulkki täydentää komentoja</translation>
    </message>
    <message>
        <source>Prints a script for bash, zsh or fish. With it, the shell completes commands, options, files and the names of moodsets. Packages install it. Without a package:
bash: source &lt;(moodsetctl completion bash)
zsh: source &lt;(moodsetctl completion zsh)
fish: moodsetctl completion fish | source</source>
        <translation>Tulostaa skriptin, jolla komentotulkki bash, zsh tai fish täydentää komennot, valitsimet, tiedostot ja moodsetien nimet. Paketit asentavat sen; käsin:
bash: source &lt;(moodsetctl completion bash)
zsh: source &lt;(moodsetctl completion zsh)
fish: moodsetctl completion fish | source</translation>
    </message>
    <message>
        <source>print the possible values of the last word, for these scripts</source>
        <translation>tulosta näille skripteille, mikä sanoista viimeinen voi olla</translation>
    </message>
    <message>
        <source>print the script for bash</source>
        <translation>tulosta bashin skripti</translation>
    </message>
    <message>
        <source>make a moodset from a picture, but do not apply it</source>
        <translation>tee kuvasta moodset ja jätä käytössä oleva ennalleen</translation>
    </message>
    <message>
        <source>Makes a moodset from a picture, and does not apply it. If the picture is on the network, the command waits until the daemon has downloaded it.</source>
        <translation>Tekee kuvasta moodsetin ja jättää käytössä olevan ennalleen. Verkossa olevan kuvan palvelu lataa, ja sitä odotetaan.</translation>
    </message>
    <message>
        <source>make a moodset that you apply or edit later</source>
        <translation>tee moodset myöhempää käyttöä tai muokkausta varten</translation>
    </message>
    <message>
        <source>find problems, and show how to repair them</source>
        <translation>etsi viat ja kerro, miten ne korjataan</translation>
    </message>
    <message>
        <source>build a new database, and keep the edits</source>
        <translation>rakennuta uusi tietokanta ja pidä muokkaukset</translation>
    </message>
    <message>
        <source>find out why something does not work</source>
        <translation>selvitä, miksi jokin ei toimi</translation>
    </message>
    <message>
        <source>repair a library that does not find its pictures</source>
        <translation>korjaa kirjasto, joka ei näe kuviaan</translation>
    </message>
    <message>
        <source>change a moodset&apos;s name, colours, volume and tones</source>
        <translation>muuta moodsetin nimeä, värejä, voimakkuutta ja ääniä</translation>
    </message>
    <message>
        <source>Changes a moodset, and also the theme if the moodset is active. All values are checked before the first one is sent. The keys are:
name=TEXT, favorite=on|off, volume=0...100;
highlight, secondaryHighlight, primary, secondary, each with a colour as #rrggbb, #aarrggbb or an SVG name;
ringerTone, messageTone, mailTone, internetCallTone, chatTone, calendarTone, clockAlarmTone, each with on, off, none or a sound file.
undo restores the former values.</source>
        <translation>Muuttaa moodsetiä ja teemaa sen mukana, jos se on käytössä. Jokainen arvo tarkastetaan ennen kuin yhtään lähetetään. Avaimet ovat:
name=TEKSTI, favorite=on|off, volume=0...100;
highlight, secondaryHighlight, primary, secondary, kukin väri muodossa #rrggbb, #aarrggbb tai SVG-nimi;
ringerTone, messageTone, mailTone, internetCallTone, chatTone, calendarTone, clockAlarmTone, kukin on, off, none tai äänitiedosto.
undo palauttaa entiset arvot.</translation>
    </message>
    <message>
        <source>change a colour and the ringer volume</source>
        <translation>muuta väriä ja soittoäänen voimakkuutta</translation>
    </message>
    <message>
        <source>change the name and two tones of the moodset with this id</source>
        <translation>muuta numeron moodsetin nimi ja kaksi ääntä</translation>
    </message>
    <message>
        <source>make a moodset a favourite, or end that</source>
        <translation>tee moodsetistä suosikki tai lopeta se</translation>
    </message>
    <message>
        <source>Makes a moodset a favourite, or ends that. Favourites are listed before the others.</source>
        <translation>Tekee moodsetistä suosikin, joka on luettelossa ennen muita, tai lopettaa sen.</translation>
    </message>
    <message>
        <source>list it first</source>
        <translation>näytä se ensimmäisenä</translation>
    </message>
    <message>
        <source>show all commands, or how to use one</source>
        <translation>näytä komennot tai yhden käyttö</translation>
    </message>
    <message>
        <source>Shows all commands, or how to use one of them, with examples.</source>
        <translation>Näyttää kaikki komennot tai yhden käytön esimerkkeineen.</translation>
    </message>
    <message>
        <source>print the manual page instead</source>
        <translation>tulosta sen sijaan ohjesivu</translation>
    </message>
    <message>
        <source>see how to use set</source>
        <translation>katso, miten set toimii</translation>
    </message>
    <message>
        <source>add pictures to the library</source>
        <translation>ota kuvia mukaan</translation>
    </message>
    <message>
        <source>Adds pictures to the library, and waits until the daemon has read them. It is an error if a file is not a picture or cannot be read. The pictures after it are then not added.</source>
        <translation>Ottaa kuvia mukaan ja odottaa, kunnes niiden tiedot on luettu. On virhe, jos tiedosto ei ole kuva tai sitä ei voi lukea; silloin sen jälkeisiä ei oteta mukaan.</translation>
    </message>
    <message>
        <source>how long to wait for each picture; 60 if not given</source>
        <translation>odota kutakin kuvaa näin kauan; oletus 60</translation>
    </message>
    <message>
        <source>add a picture from another folder</source>
        <translation>ota mukaan kuva muualta</translation>
    </message>
    <message>
        <source>install the bundle in a folder</source>
        <translation>ota kansion paketti mukaan</translation>
    </message>
    <message>
        <source>Makes the daemon read the moodset files and index files in a folder, even if it has read them before, and waits until it has. It is an error if there are none, or if one does not become a moodset.</source>
        <translation>Ottaa kansion moodset- ja hakemistotiedostot mukaan, vaikka ne olisi jo otettu, ja odottaa, kunnes se on tehty. On virhe, jos niitä ei ole tai jostakin ei tule moodsetiä.</translation>
    </message>
    <message>
        <source>how long to wait for each file; 60 if not given</source>
        <translation>odota kutakin tiedostoa näin kauan; oletus 60</translation>
    </message>
    <message>
        <source>try your own bundle</source>
        <translation>kokeile omaa pakettia</translation>
    </message>
    <message>
        <source>show a table of all moodsets</source>
        <translation>näytä kaikkien moodsetien taulukko</translation>
    </message>
    <message>
        <source>Prints a table of all moodsets, favourites first, and their number. The colours are the primary, the secondary, the highlight and the secondary highlight colour. A terminal shows them as fields without transparency; otherwise they are written as #aarrggbb. The daemon need not run.</source>
        <translation>Tulostaa kaikkien moodsetien taulukon, suosikit ensin, ja niiden määrän. Värit ovat ensisijainen, toissijainen, korostusväri ja toinen korostusväri: päätteessä kenttinä ilman läpinäkyvyyttä, muualla #aarrggbb. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>print only favourites</source>
        <translation>vain suosikit</translation>
    </message>
    <message>
        <source>print only names, one in each line</source>
        <translation>vain nimet, yksi rivillä</translation>
    </message>
    <message>
        <source>find a moodset</source>
        <translation>etsi moodset</translation>
    </message>
    <message>
        <source>the same for programs</source>
        <translation>sama ohjelmille</translation>
    </message>
    <message>
        <source>wait for a picture on the network for so long; 60 if not given</source>
        <translation>odota verkossa olevaa kuvaa näin kauan; oletus 60</translation>
    </message>
    <message>
        <source>do not wait for a picture on the network</source>
        <translation>älä odota verkossa olevaa kuvaa</translation>
    </message>
    <message>
        <source>show a table of all pictures</source>
        <translation>näytä kaikkien kuvien taulukko</translation>
    </message>
    <message>
        <source>Prints a table of all pictures, and below it the number of files, pictures and folders in the database. The daemon need not run, unless --watch is given.</source>
        <translation>Tulostaa kaikkien kuvien taulukon ja sen alle, montako tiedostoa, kuvaa ja kansiota tietokannassa on. Palvelun ei tarvitse olla käynnissä, paitsi valitsimella --watch.</translation>
    </message>
    <message>
        <source>show paths relative to DIR; relative to the user&apos;s pictures folder if not given</source>
        <translation>näytä polut suhteessa kansioon DIR; oletus käyttäjän kuvakansio</translation>
    </message>
    <message>
        <source>then show changes, as watch does</source>
        <translation>näytä sitten muutokset kuten watch</translation>
    </message>
    <message>
        <source>see which pictures the library holds</source>
        <translation>katso, mitä kuvia kirjastossa on</translation>
    </message>
    <message>
        <source>show this colour instead</source>
        <translation>näytä sen sijaan tämä väri</translation>
    </message>
    <message>
        <source>paint what a moodset or a picture would look like</source>
        <translation>maalaa, miltä moodset tai kuva näyttäisi</translation>
    </message>
    <message>
        <source>Writes a PNG picture of two phones with a moodset, or with the moodset that a picture would give. The colours can be replaced by others. Nothing is stored. Without a SOURCE, the phones show the present theme. The daemon need not run.</source>
        <translation>Kirjoittaa PNG-kuvan kahdesta puhelimesta, jotka seuraavat moodsetiä tai sitä, mikä kuvan moodset olisi, myös harkittavilla väreillä. Mitään ei tallenneta. Ilman SOURCE-argumenttia nykyinen teema. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>the file to write; preview.png if not given</source>
        <translation>kirjoitettava tiedosto; oletus preview.png</translation>
    </message>
    <message>
        <source>see a moodset before you apply it</source>
        <translation>katso moodset ennen sen käyttöönottoa</translation>
    </message>
    <message>
        <source>see the moodset of a picture with another colour</source>
        <translation>katso, mitä kuvasta tulisi toisella värillä</translation>
    </message>
    <message>
        <source>look for new, changed and removed bundles</source>
        <translation>käy läpi asennettujen pakettien kansiot</translation>
    </message>
    <message>
        <source>Makes the daemon look for new, changed and removed bundles in /usr/share/moodset and /usr/share/sounds, and waits until it has.</source>
        <translation>Käy läpi kansiot /usr/share/moodset ja /usr/share/sounds uusien, muuttuneiden ja poistuneiden pakettien varalta ja odottaa, kunnes se on tehty.</translation>
    </message>
    <message>
        <source>how long to wait; without a limit if not given</source>
        <translation>odota näin kauan; oletuksena rajatta</translation>
    </message>
    <message>
        <source>do not wait</source>
        <translation>älä odota</translation>
    </message>
    <message>
        <source>see new bundles at once</source>
        <translation>näe uudet paketit heti</translation>
    </message>
    <message>
        <source>remove a moodset from the library, but not its file</source>
        <translation>poista moodset kirjastosta, mutta ei sen tiedostoa</translation>
    </message>
    <message>
        <source>Removes a moodset from the library, with its edits. Its file stays, and when the file changes, the moodset comes back. The moodset of a picture can be made again with create. The theme stays as it is.</source>
        <translation>Poistaa moodsetin kirjastosta muokkauksineen. Sen tiedosto jää ja tuo sen takaisin muuttuessaan; kuvasta create tekee sen uudelleen. Teema pysyy ennallaan.</translation>
    </message>
    <message>
        <source>remove it from the table</source>
        <translation>ota se pois taulukosta</translation>
    </message>
    <message>
        <source>restore the edits that backup has saved</source>
        <translation>palauta, mitä backup tallensi</translation>
    </message>
    <message>
        <source>restore the edits</source>
        <translation>saa muokkaukset takaisin</translation>
    </message>
    <message>
        <source>apply a moodset, or make one from a picture and apply it</source>
        <translation>ota moodset käyttöön; kuvasta tehdään ensin sellainen</translation>
    </message>
    <message>
        <source>Applies a moodset to the system: its wallpapers, colours, ringer volume and tones. From a picture, the daemon first makes a moodset. If the picture is on the network, the command waits until the daemon has downloaded it. undo applies the former moodset again.</source>
        <translation>Tekee moodsetistä järjestelmän ulkoasun: sen taustakuvat, värit, soittoäänen voimakkuus ja äänet. Kuvasta tehdään ensin moodset. Verkossa olevan kuvan palvelu lataa, ja sitä odotetaan. undo palauttaa aiemmin käytössä olleen.</translation>
    </message>
    <message>
        <source>apply the moodset with this name</source>
        <translation>ota tämänniminen moodset käyttöön</translation>
    </message>
    <message>
        <source>make a moodset from a picture, and apply it</source>
        <translation>tee kuvasta järjestelmän ulkoasu</translation>
    </message>
    <message>
        <source>the same with a picture on the network, for 20 seconds at most</source>
        <translation>sama verkossa olevalla kuvalla, enintään 20 sekuntia</translation>
    </message>
    <message>
        <source>show all data of a moodset</source>
        <translation>näytä kaikki, mistä moodset koostuu</translation>
    </message>
    <message>
        <source>Prints all data of a moodset, with its tones and files. The daemon need not run.</source>
        <translation>Tulostaa kaiken, mistä moodset koostuu, äänet ja tiedostot mukaan lukien. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>see its colours, wallpapers and tones</source>
        <translation>katso sen värit, taustakuvat ja äänet</translation>
    </message>
    <message>
        <source>show the active moodset, the daemon and the library at a glance</source>
        <translation>näytä käytössä oleva moodset, palvelu ja kirjasto yhdellä silmäyksellä</translation>
    </message>
    <message>
        <source>Prints the active moodset with its colours, the daemon and its version, the number of records in the library, the files that wait to be read, the size of the database, and how many folders the daemon follows and may follow. The daemon need not run.</source>
        <translation>Tulostaa käytössä olevan moodsetin väreineen, palvelun ja sen version, kirjaston sisällön määrän, mikä odottaa lukemista, tietokannan koon ja montako kansiota palvelu seuraa järjestelmän sallimista. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>see the present state</source>
        <translation>katso tilanne</translation>
    </message>
    <message>
        <source>show the keys of the theme, which shells and toolkits follow</source>
        <translation>näytä teeman avaimet, joita työpöydät ja työkalut seuraavat</translation>
    </message>
    <message>
        <source>Prints the keys of the key/value store that shells and toolkits follow, with the wallpapers and the colours. The daemon need not run.</source>
        <translation>Tulostaa avainvaraston avaimet, joita työpöydät ja työkalut seuraavat, taustakuvineen ja väreineen. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>see what shells read</source>
        <translation>katso, mitä työpöydät näkevät</translation>
    </message>
    <message>
        <source>undo the last set, edit or favorite</source>
        <translation>palauta, mitä viimeinen set tai edit korvasi</translation>
    </message>
    <message>
        <source>Restores what the last set, edit or favorite of this tool has replaced. A second undo reverses the first one.</source>
        <translation>Palauttaa, mitä tämän työkalun viimeinen set, edit tai favorite korvasi. Toinen undo peruu ensimmäisen.</translation>
    </message>
    <message>
        <source>restore the former moodset or the former values</source>
        <translation>palauta edellinen ulkoasu tai edelliset arvot</translation>
    </message>
    <message>
        <source>check bundles before they are installed</source>
        <translation>tarkasta paketit ennen asennusta</translation>
    </message>
    <message>
        <source>Reports, with line and column, why the daemon would reject a moodset file or an index file, or why the moodset would differ from what the file seems to say. In a folder, it checks all such files. The exit status is 1 if there is a fault. The daemon need not run.</source>
        <translation>Kertoo rivin ja sarakkeen kanssa, miksi palvelu hylkäisi moodset- tai hakemistotiedoston tai miksi siitä ei tule, mitä tiedosto näyttää sanovan. Kansio käydään läpi. Paluuarvo on 1, jos on korjattavaa. Palvelun ei tarvitse olla käynnissä.</translation>
    </message>
    <message>
        <source>check all files of a bundle</source>
        <translation>tarkasta paketin kaikki tiedostot</translation>
    </message>
    <message>
        <source>wait until the daemon has indexed everything</source>
        <translation>odota, kunnes palvelu on lukenut kaiken tuntemansa</translation>
    </message>
    <message>
        <source>Waits until the daemon has indexed everything. Without --log, the daemon counts as idle if it has written nothing for a second while it replied to calls. On a terminal, progress is shown.</source>
        <translation>Odottaa, kunnes palvelu on lukenut kaiken tuntemansa. Ilman valitsinta --log merkkinä on, ettei se kirjoittanut sekuntiin mitään vastatessaan kutsuihin. Päätteessä näytetään edistyminen.</translation>
    </message>
    <message>
        <source>read the daemon&apos;s log with debug messages from this file, to know exactly when it is idle for the first time</source>
        <translation>lue palvelun loki vianetsintäviesteineen tästä tiedostosta ja tiedä tarkasti, milloin se on ensi kerran valmis</translation>
    </message>
    <message>
        <source>wait for a minute at most</source>
        <translation>odota enintään minuutti</translation>
    </message>
    <message>
        <source>show pictures as they are added, changed and removed</source>
        <translation>näytä kuvat sitä mukaa kuin niitä tulee, muuttuu ja poistuu</translation>
    </message>
    <message>
        <source>Prints each picture that is added, changed or removed, one in each line, until the daemon ends. With --json, each line is an object.</source>
        <translation>Tulostaa jokaisen lisätyn, muuttuneen tai poistuneen kuvan, yhden rivillä, kunnes palvelu päättyy. Valitsimella --json jokainen rivi on objekti.</translation>
    </message>
    <message>
        <source>follow the library from a program</source>
        <translation>seuraa kirjastoa ohjelmasta</translation>
    </message>
    <message>
        <source>the option %1 takes no value</source>
        <translation>valitsin %1 ei ota arvoa</translation>
    </message>
    <message>
        <source>the option %1 needs a value</source>
        <translation>valitsin %1 tarvitsee arvon</translation>
    </message>
    <message>
        <source>the output cannot be written: %1</source>
        <translation>tulostetta ei voi kirjoittaa: %1</translation>
    </message>
    <message>
        <source>the file is larger than %1, and the daemon does not read it</source>
        <translation>tiedosto on suurempi kuin %1, eikä palvelu lue sitä</translation>
    </message>
    <message>
        <source>Checks the bus, the daemon, its unit and limits, the database, the folders that it cannot follow any more, the key/value store and its defaults, the theme and the wallpapers. For each, it shows what is wrong and which command repairs it. The exit status is 1 if there is a problem.
With --rebuild, it saves the edits, ends the daemon, has a new database built, and restores the edits. The old database is kept. Favourites keep their order, but not their times. If a rebuild is interrupted, doctor shows how to restore the edits.</source>
        <translation>Tarkastaa väylän, palvelun, sen yksikön ja rajat, tietokannan, jumittuneet kansiot, avainvaraston ja sen oletukset, teeman ja taustakuvat sekä kertoo kustakin, mikä on vialla ja mikä komento sen korjaa. Paluuarvo on 1, jos jokin on vialla.
Valitsimella --rebuild muokkaukset tallennetaan, palvelu pysäytetään, uusi tietokanta rakennetaan ja muokkaukset palautetaan; vanha tietokanta säilyy. Suosikit palautetaan järjestyksessään, mutta ei sitä, mistä lähtien kukin on ollut suosikki. Jos tämä keskeytyy, doctor kertoo, miten muokkaukset palautetaan.</translation>
    </message>
    <message>
        <source>The saved edits are %1 now.</source>
        <translation>Tallennetut muokkaukset ovat nyt tiedostossa %1.</translation>
    </message>
    <message>
        <source>Restores the edits that backup has saved. If a moodset is missing, it is made from its file again. Favourites keep their order, but not their times. The command reports what it cannot restore.</source>
        <translation>Palauttaa, mitä backup tallensi. Puuttuva moodset tehdään uudelleen tiedostostaan. Suosikit palautetaan järjestyksessään, mutta ei sitä, mistä lähtien kukin on ollut suosikki. Mitä ei voi palauttaa, kerrotaan.</translation>
    </message>
    <message>
        <source>the unit moodsetd.service is masked, and cannot start</source>
        <translation>yksikkö moodsetd.service on estetty (masked), eikä se voi käynnistyä</translation>
    </message>
    <message>
        <source>the daemon may have %1 files open</source>
        <translation>palvelulla saa olla %1 tiedostoa auki</translation>
    </message>
    <message>
        <source>%1, which is too few for its work</source>
        <translation>%1, liian vähän sen työhön</translation>
    </message>
    <message>
        <source>a rebuild was interrupted, and its saved edits are not restored yet</source>
        <translation>uudelleenrakennus keskeytyi; sen tallentamia muokkauksia ei ole palautettu</translation>
    </message>
    <message>
        <source>a rebuild was interrupted; first restore its edits: moodsetctl restore %1</source>
        <translation>uudelleenrakennus keskeytyi; palauta ensin sen muokkaukset: moodsetctl restore %1</translation>
    </message>
    <message>
        <source>The library was built; there was none before.</source>
        <translation>Kirjasto on rakennettu; aiempaa ei ollut.</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are compiled into the key/value store</source>
        <translation>voimakkuuden ja äänien oletukset on käännetty avainvarastoon</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are installed</source>
        <translation>voimakkuuden ja äänien oletukset on asennettu</translation>
    </message>
    <message>
        <source>the defaults of volume and tones are not installed: no data folder has moodsetd/profile-defaults</source>
        <translation>voimakkuuden ja äänien oletuksia ei ole asennettu: missään datakansiossa ei ole tiedostoa moodsetd/profile-defaults</translation>
    </message>
    <message>
        <source>the order of the favourites</source>
        <translation>suosikkien järjestys</translation>
    </message>
    <message>
        <source>the daemon has ended, and some edits are not restored</source>
        <translation>palvelu on päättynyt, eikä kaikkea ole palautettu</translation>
    </message>
    <message>
        <source>cannot read the library: %1</source>
        <translation>kirjastoa ei voi lukea: %1</translation>
    </message>
    <message>
        <source>there is no database at %1</source>
        <translation>tietokantaa %1 ei ole</translation>
    </message>
    <message>
        <source>%1; to have the daemon make it: %2</source>
        <translation>%1; jotta palvelu luo sen: %2</translation>
    </message>
</context>
</TS>
