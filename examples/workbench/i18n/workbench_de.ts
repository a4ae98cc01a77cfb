<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CropBar</name>
    <message>
        <source>Turn</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Turn in degrees</source>
        <translation>Drehung in Grad</translation>
    </message>
    <message>
        <source>Turn left by a quarter</source>
        <translation>Um ein Viertel nach links drehen</translation>
    </message>
    <message>
        <source>Turn right by a quarter</source>
        <translation>Um ein Viertel nach rechts drehen</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Mirror, left to right</source>
        <translation>Spiegeln, links und rechts</translation>
    </message>
    <message>
        <source>%1 × %2</source>
        <translation>%1 × %2</translation>
    </message>
    <message>
        <source>The crop keeps %1 × %2 pixels</source>
        <translation>Der Ausschnitt behält %1 × %2 Pixel</translation>
    </message>
</context>
<context>
    <name>CropFrame</name>
    <message>
        <source>Crop of %1 × %2 pixels at %3, %4, turned by %5 degrees</source>
        <translation>Ausschnitt von %1 × %2 Pixeln bei %3, %4, um %5 Grad gedreht</translation>
    </message>
    <message>
        <source>Arrow keys move it, with Shift they change its size.</source>
        <translation>Die Pfeiltasten verschieben ihn, mit der Umschalttaste ändern sie seine Größe.</translation>
    </message>
</context>
<context>
    <name>EmptyPage</name>
    <message>
        <source>Drop photographs or folders here</source>
        <translation>Fotos oder Ordner hier ablegen</translation>
    </message>
    <message>
        <source>See them before and after, choose size, format and colours, and export them. Nothing is written until you export.</source>
        <translation>Vorher und nachher ansehen, Größe, Format und Farben wählen und exportieren. Vor dem Export wird nichts geschrieben.</translation>
    </message>
    <message>
        <source>Open photographs …</source>
        <translation>Fotos öffnen …</translation>
    </message>
    <message>
        <source>Open a folder …</source>
        <translation>Ordner öffnen …</translation>
    </message>
    <message>
        <source>Recent folders</source>
        <translation>Zuletzt benutzte Ordner</translation>
    </message>
</context>
<context>
    <name>ExportBar</name>
    <message>
        <source>paused</source>
        <translation>angehalten</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1 s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1 min</translation>
    </message>
    <message>
        <source>%1 of %2 exported</source>
        <translation>%1 von %2 exportiert</translation>
    </message>
    <message>
        <source>Progress of the export</source>
        <translation>Fortschritt des Exports</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Photographs in work are finished; no further one is begun</source>
        <translation>Angefangene Fotos werden beendet, weitere nicht begonnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stops at once and leaves no unfinished file</source>
        <translation>Hört sofort auf und lässt keine unfertige Datei zurück</translation>
    </message>
</context>
<context>
    <name>Facts</name>
    <message>
        <source>%1 × %2 pixels (%3 megapixels)</source>
        <translation>%1 × %2 Pixel (%3 Megapixel)</translation>
    </message>
    <message>
        <source>1/%1 s</source>
        <translation>1/%1 s</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>f/%1</source>
        <translation>f/%1</translation>
    </message>
    <message>
        <source>ISO %1</source>
        <translation>ISO %1</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>%1° %2, %3° %4</source>
        <translation>%1° %2, %3° %4</translation>
    </message>
    <message>
        <source>S</source>
        <translation>S</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>E</source>
        <translation>O</translation>
    </message>
    <message>
        <source>black and white</source>
        <translation>schwarzweiß</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Lens</source>
        <translation>Objektiv</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
    <message>
        <source>Taken</source>
        <translation>Aufgenommen</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Exported</source>
        <translation>Exportiert</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 kB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>The folder for exported photographs is gone. Export again to make it anew, or choose another folder.</source>
        <translation>Der Ordner für exportierte Fotos ist nicht mehr da. Exportieren Sie noch einmal, um ihn neu anzulegen, oder wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>The file is gone. Bring it back and try again, or remove it from the list.</source>
        <translation>Die Datei ist nicht mehr da. Stellen Sie sie wieder her und versuchen Sie es erneut, oder entfernen Sie sie aus der Liste.</translation>
    </message>
    <message>
        <source>This is a folder. Open it to list the photographs in it.</source>
        <translation>Dies ist ein Ordner. Öffnen Sie ihn, um seine Fotos aufzulisten.</translation>
    </message>
    <message>
        <source>This is no ordinary file, so it is not opened.</source>
        <translation>Dies ist keine gewöhnliche Datei und wird nicht geöffnet.</translation>
    </message>
    <message>
        <source>The file is empty. Copy it from the camera or card again.</source>
        <translation>Die Datei ist leer. Kopieren Sie sie noch einmal von Kamera oder Karte.</translation>
    </message>
    <message>
        <source>The folder holds no photographs. Choose another one.</source>
        <translation>Der Ordner enthält keine Fotos. Wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>The name does not end as that of a photograph. Rename the file if it is one.</source>
        <translation>Der Name endet nicht wie der eines Fotos. Benennen Sie die Datei um, falls sie eines ist.</translation>
    </message>
    <message>
        <source>There is not enough memory for it. Close other programs, or export it alone.</source>
        <translation>Dafür reicht der Speicher nicht. Schließen Sie andere Programme, oder exportieren Sie das Foto allein.</translation>
    </message>
    <message>
        <source>The picture is too large. Choose a smaller size, or start the program with --max-megapixels.</source>
        <translation>Das Bild ist zu groß. Wählen Sie eine kleinere Größe, oder starten Sie das Programm mit --max-megapixels.</translation>
    </message>
    <message>
        <source>Choose another format.</source>
        <translation>Wählen Sie ein anderes Format.</translation>
    </message>
    <message>
        <source>The disk is full. Make room, or choose another folder.</source>
        <translation>Der Datenträger ist voll. Schaffen Sie Platz, oder wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>You may not read the file or write into the folder. Choose another folder.</source>
        <translation>Sie dürfen die Datei nicht lesen oder nicht in den Ordner schreiben. Wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The picture is too small to be turned by that much.</source>
        <translation>Das Bild ist zu klein, um so weit gedreht zu werden.</translation>
    </message>
    <message>
        <source>The file seems to be damaged. Open it in the program that wrote it, or copy it again.</source>
        <translation>Die Datei scheint beschädigt zu sein. Öffnen Sie sie in dem Programm, das sie geschrieben hat, oder kopieren Sie sie noch einmal.</translation>
    </message>
    <message>
        <source>The folder cannot be made. Choose another folder.</source>
        <translation>Der Ordner lässt sich nicht anlegen. Wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The crop reaches beyond the picture. Crop it anew.</source>
        <translation>Der Ausschnitt reicht über das Bild hinaus. Wählen Sie ihn neu.</translation>
    </message>
</context>
<context>
    <name>FilterPlot</name>
    <message>
        <source>Shape of the filter</source>
        <translation>Form des Filters</translation>
    </message>
</context>
<context>
    <name>Histogram</name>
    <message>
        <source>Histogram of the exported picture</source>
        <translation>Histogramm des exportierten Bildes</translation>
    </message>
</context>
<context>
    <name>KeyList</name>
    <message>
        <source>Delete</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Pfeiltasten</translation>
    </message>
    <message>
        <source>Open photographs</source>
        <translation>Fotos öffnen</translation>
    </message>
    <message>
        <source>Open a folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Paste photographs from the clipboard</source>
        <translation>Fotos aus der Zwischenablage einfügen</translation>
    </message>
    <message>
        <source>Remove the photograph from the list</source>
        <translation>Foto aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Filter the list</source>
        <translation>Liste filtern</translation>
    </message>
    <message>
        <source>Export the photograph</source>
        <translation>Foto exportieren</translation>
    </message>
    <message>
        <source>Export all photographs</source>
        <translation>Alle Fotos exportieren</translation>
    </message>
    <message>
        <source>Pause or continue the export</source>
        <translation>Export anhalten oder fortsetzen</translation>
    </message>
    <message>
        <source>Cancel the export</source>
        <translation>Export abbrechen</translation>
    </message>
    <message>
        <source>Show the exported file in the file manager</source>
        <translation>Exportierte Datei in der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Divider, side by side, blinking, before, after</source>
        <translation>Trennlinie, nebeneinander, wechselnd, vorher, nachher</translation>
    </message>
    <message>
        <source>Fit in, 100 %</source>
        <translation>Einpassen, 100 %</translation>
    </message>
    <message>
        <source>Zoom in, zoom out</source>
        <translation>Vergrößern, verkleinern</translation>
    </message>
    <message>
        <source>Choose in the list; move the picture when it has the focus</source>
        <translation>In der Liste wählen; das Bild verschieben, wenn es den Fokus hat</translation>
    </message>
    <message>
        <source>Turn left, turn right</source>
        <translation>Nach links, nach rechts drehen</translation>
    </message>
    <message>
        <source>Show or hide the settings</source>
        <translation>Einstellungen zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>This list</source>
        <translation>Diese Liste</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Crop and straighten; arrow keys move the frame, with Shift they resize it</source>
        <translation>Zuschneiden und gerade richten; die Pfeiltasten verschieben den Rahmen, mit Umschalt ändern sie seine Größe</translation>
    </message>
</context>
<context>
    <name>MachinePanel</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>This machine</source>
        <translation>Dieser Rechner</translation>
    </message>
    <message>
        <source>Processor</source>
        <translation>Prozessor</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Graphics</source>
        <translation>Grafik</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>%1 GiB</source>
        <translation>%1 GiB</translation>
    </message>
    <message>
        <source>none that can compute</source>
        <translation>keine, die rechnen kann</translation>
    </message>
    <message>
        <source>has no colour profile; pictures are shown as sRGB</source>
        <translation>hat kein Farbprofil; Bilder werden als sRGB gezeigt</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Device of the estimate</source>
        <translation>Gerät der Schätzung</translation>
    </message>
    <message>
        <source>A restoration by a neural network would take about %1 for this photograph on this device. This program does not restore; its exports take seconds.</source>
        <translation>Eine Restaurierung durch ein neuronales Netz würde für dieses Foto auf diesem Gerät etwa %1 dauern. Dieses Programm restauriert nicht; seine Exporte dauern Sekunden.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>The clipboard holds no photograph.</source>
        <translation>Die Zwischenablage enthält kein Foto.</translation>
    </message>
    <message>
        <source>This photograph has not been exported yet.</source>
        <translation>Dieses Foto wurde noch nicht exportiert.</translation>
    </message>
    <message>
        <source>There is no %1 any more.</source>
        <translation>%1 gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>No file manager was found. The file is %1</source>
        <translation>Keine Dateiverwaltung gefunden. Die Datei ist %1</translation>
    </message>
    <message>
        <source>1 photograph was added.</source>
        <translation>1 Foto wurde hinzugefügt.</translation>
    </message>
    <message>
        <source>%1 photographs were added.</source>
        <translation>%1 Fotos wurden hinzugefügt.</translation>
    </message>
    <message>
        <source>%1 exported, %2 failed. The list shows why at each of them.</source>
        <translation>%1 exportiert, %2 fehlgeschlagen. Die Liste zeigt bei jedem den Grund.</translation>
    </message>
    <message>
        <source>1 photograph was exported to %1</source>
        <translation>1 Foto wurde exportiert nach %1</translation>
    </message>
    <message>
        <source>%1 photographs were exported to %2</source>
        <translation>%1 Fotos wurden exportiert nach %2</translation>
    </message>
    <message>
        <source>Open photographs</source>
        <translation>Fotos öffnen</translation>
    </message>
    <message>
        <source>Open a folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Show in file manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Open a folder with its subfolders</source>
        <translation>Ordner mit Unterordnern öffnen</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>PhotographList</name>
    <message>
        <source>Filter by name</source>
        <translation>Nach Namen filtern</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>To export</source>
        <translation>Offen</translation>
    </message>
    <message>
        <source>Exported</source>
        <translation>Exportiert</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Which photographs are listed</source>
        <translation>Welche Fotos aufgelistet sind</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Eingang</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Order of the photographs</source>
        <translation>Reihenfolge der Fotos</translation>
    </message>
    <message>
        <source>Photographs</source>
        <translation>Fotos</translation>
    </message>
    <message>
        <source>Reading folders …</source>
        <translation>Ordner werden gelesen …</translation>
    </message>
    <message>
        <source>1 photograph</source>
        <translation>1 Foto</translation>
    </message>
    <message>
        <source>%1 photographs</source>
        <translation>%1 Fotos</translation>
    </message>
    <message>
        <source>%1 exported</source>
        <translation>%1 exportiert</translation>
    </message>
    <message>
        <source>%1 failed</source>
        <translation>%1 fehlgeschlagen</translation>
    </message>
    <message>
        <source>Try all again</source>
        <translation>Alle wiederholen</translation>
    </message>
    <message>
        <source>Exports every photograph that failed once more</source>
        <translation>Exportiert alle fehlgeschlagenen Fotos noch einmal</translation>
    </message>
    <message>
        <source>Try all that failed again</source>
        <translation>Alle fehlgeschlagenen wiederholen</translation>
    </message>
</context>
<context>
    <name>PhotographRow</name>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>being exported</source>
        <translation>wird exportiert</translation>
    </message>
    <message>
        <source>exported</source>
        <translation>exportiert</translation>
    </message>
    <message>
        <source>was up to date</source>
        <translation>war aktuell</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>PictureView</name>
    <message>
        <source>Photograph before and after export, at %1 %</source>
        <translation>Foto vor und nach dem Export, bei %1 %</translation>
    </message>
    <message>
        <source>Divider between before and after</source>
        <translation>Trennlinie zwischen vorher und nachher</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>Reading the photograph …</source>
        <translation>Foto wird gelesen …</translation>
    </message>
    <message>
        <source>After, as its file will hold it</source>
        <translation>Nachher, wie die Datei es enthalten wird</translation>
    </message>
</context>
<context>
    <name>PresetBar</name>
    <message>
        <source>Preset</source>
        <translation>Vorgabe</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Keeps the settings under this name</source>
        <translation>Bewahrt die Einstellungen unter diesem Namen auf</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Forgets the preset of this name</source>
        <translation>Vergisst die Vorgabe dieses Namens</translation>
    </message>
    <message>
        <source>Name of the preset</source>
        <translation>Name der Vorgabe</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Reset %1</source>
        <translation>%1 zurücksetzen</translation>
    </message>
</context>
<context>
    <name>SettingsPanel</name>
    <message>
        <source>as the original</source>
        <translation>wie das Original</translation>
    </message>
    <message>
        <source>Choose a colour profile</source>
        <translation>Farbprofil wählen</translation>
    </message>
    <message>
        <source>Colour profiles (*.icc *.icm)</source>
        <translation>Farbprofile (*.icc *.icm)</translation>
    </message>
    <message>
        <source>Choose the folder for exported photographs</source>
        <translation>Ordner für exportierte Fotos wählen</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Vorgaben</translation>
    </message>
    <message>
        <source>Choose settings that you have kept, or keep these under a name.</source>
        <translation>Wählen Sie aufbewahrte Einstellungen, oder sichern Sie diese unter einem Namen.</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Photographs keep their shape. Limits in pixels never enlarge.</source>
        <translation>Fotos behalten ihre Form. Grenzen in Pixeln vergrößern nie.</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Long edge</source>
        <translation>Lange Seite</translation>
    </message>
    <message>
        <source>Fit into</source>
        <translation>Einpassen in</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Maßstab</translation>
    </message>
    <message>
        <source>Kind of size</source>
        <translation>Art der Größe</translation>
    </message>
    <message>
        <source>Long edge in pixels</source>
        <translation>Lange Seite in Pixeln</translation>
    </message>
    <message>
        <source>Width in pixels</source>
        <translation>Breite in Pixeln</translation>
    </message>
    <message>
        <source>Height in pixels</source>
        <translation>Höhe in Pixeln</translation>
    </message>
    <message>
        <source>Scale in per cent</source>
        <translation>Maßstab in Prozent</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>How pixels are mixed when the size changes: B blurs, C sharpens. ⅓ and ⅓ suit most photographs.</source>
        <translation>Wie Pixel gemischt werden, wenn sich die Größe ändert: B macht weich, C scharf. ⅓ und ⅓ passen zu den meisten Fotos.</translation>
    </message>
    <message>
        <source>Filter parameter B</source>
        <translation>Filterparameter B</translation>
    </message>
    <message>
        <source>Filter parameter C</source>
        <translation>Filterparameter C</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>TIFF and PNG lose nothing; JPEG opens everywhere.</source>
        <translation>TIFF und PNG verlieren nichts; JPEG öffnet sich überall.</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>From 1 to 100. Above 90 the difference is hard to see.</source>
        <translation>Von 1 bis 100. Über 90 ist der Unterschied kaum zu sehen.</translation>
    </message>
    <message>
        <source>This format loses nothing, so it has no quality.</source>
        <translation>Dieses Format verliert nichts und hat daher keine Qualität.</translation>
    </message>
    <message>
        <source>Quality in per cent</source>
        <translation>Qualität in Prozent</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Web pages and most programs expect sRGB.</source>
        <translation>Webseiten und die meisten Programme erwarten sRGB.</translation>
    </message>
    <message>
        <source>Profile from a file …</source>
        <translation>Profil aus einer Datei …</translation>
    </message>
    <message>
        <source>Colour profile</source>
        <translation>Farbprofil</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Metadaten</translation>
    </message>
    <message>
        <source>Camera, time and place, as the original has them.</source>
        <translation>Kamera, Zeit und Ort, wie das Original sie hat.</translation>
    </message>
    <message>
        <source>all</source>
        <translation>alle</translation>
    </message>
    <message>
        <source>all but the place</source>
        <translation>alle außer dem Ort</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>{name} is the name of the original, {folder} that of its folder, {number} its place in the list, {date} the day when it was taken.</source>
        <translation>{name} ist der Name des Originals, {folder} der seines Ordners, {number} sein Platz in der Liste, {date} der Tag der Aufnahme.</translation>
    </message>
    <message>
        <source>Name of exported photographs</source>
        <translation>Name exportierter Fotos</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>No file is overwritten: a name that is taken gets a number.</source>
        <translation>Keine Datei wird überschrieben: Ein vergebener Name bekommt eine Nummer.</translation>
    </message>
    <message>
        <source>Folder for exported photographs</source>
        <translation>Ordner für exportierte Fotos</translation>
    </message>
    <message>
        <source>Choose …</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Bits per channel</source>
        <translation>Bits je Kanal</translation>
    </message>
    <message>
        <source>More than 8 leave room for later changes. Floats have 32, in OpenEXR also 16.</source>
        <translation>Mehr als 8 lassen Spielraum für spätere Änderungen. Fließkommazahlen haben 32, in OpenEXR auch 16.</translation>
    </message>
    <message>
        <source>%1 bits</source>
        <translation>%1 Bits</translation>
    </message>
    <message>
        <source>Compression</source>
        <translation>Kompression</translation>
    </message>
    <message>
        <source>All of them lose nothing. ZIP is small, none is fast.</source>
        <translation>Keine verliert etwas. ZIP ist klein, ohne geht es schnell.</translation>
    </message>
    <message>
        <source>usual</source>
        <translation>die übliche</translation>
    </message>
    <message>
        <source>Rendering intent</source>
        <translation>Farbumwandlung</translation>
    </message>
    <message>
        <source>What becomes of colours that the profile cannot hold: all move together, or only they are clipped.</source>
        <translation>Was aus Farben wird, die das Profil nicht fasst: alle rücken zusammen, oder nur diese werden beschnitten.</translation>
    </message>
    <message>
        <source>perceptual</source>
        <translation>wahrnehmungsgetreu</translation>
    </message>
    <message>
        <source>relative</source>
        <translation>farbmetrisch</translation>
    </message>
</context>
<context>
    <name>TopBar</name>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open photographs or a folder, or paste</source>
        <translation>Fotos oder einen Ordner öffnen, oder einfügen</translation>
    </message>
    <message>
        <source>Photographs …</source>
        <translation>Fotos …</translation>
    </message>
    <message>
        <source>Folder …</source>
        <translation>Ordner …</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Remove all from the list</source>
        <translation>Alle aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Divider</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>Side by side</source>
        <translation>Nebeneinander</translation>
    </message>
    <message>
        <source>Blinking</source>
        <translation>Wechselnd</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>How before and after are compared</source>
        <translation>Wie vorher und nachher verglichen werden</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Show the whole picture</source>
        <translation>Das ganze Bild zeigen</translation>
    </message>
    <message>
        <source>100 %</source>
        <translation>100 %</translation>
    </message>
    <message>
        <source>One pixel of the exported picture for each of the screen</source>
        <translation>Ein Pixel des exportierten Bildes für jeden des Bildschirms</translation>
    </message>
    <message>
        <source>Export all</source>
        <translation>Alle exportieren</translation>
    </message>
    <message>
        <source>Export every photograph in the list</source>
        <translation>Jedes Foto der Liste exportieren</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Export this photograph</source>
        <translation>Dieses Foto exportieren</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Show or hide the settings of exports</source>
        <translation>Einstellungen des Exports zeigen oder verbergen</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>This machine</source>
        <translation>Dieser Rechner</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Folder with its subfolders …</source>
        <translation>Ordner mit Unterordnern …</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Crop and straighten the picture by hand</source>
        <translation>Das Bild von Hand zuschneiden und gerade richten</translation>
    </message>
</context>
</TS>
