<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ActivityView</name>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Also show the program&apos;s diagnostic lines</source>
        <translation>Auch die Diagnosezeilen des Programms anzeigen</translation>
    </message>
    <message>
        <source>What the program did with your files</source>
        <translation>Was das Programm mit Ihren Dateien getan hat</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>&amp;Batch</source>
        <translation>&amp;Stapelverarbeitung</translation>
    </message>
    <message>
        <source>Rename Files...</source>
        <translation>Dateien umbenennen...</translation>
    </message>
    <message>
        <source>Undo Rename</source>
        <translation>Umbenennen rückgängig machen</translation>
    </message>
    <message>
        <source>Change Dates...</source>
        <translation>Datumsangaben ändern...</translation>
    </message>
    <message>
        <source>Copy Recorded Date to File Dates</source>
        <translation>Aufnahmedatum in die Dateidaten kopieren</translation>
    </message>
    <message>
        <source>Copy Created Date to Recorded Date</source>
        <translation>Erstellungsdatum ins Aufnahmedatum kopieren</translation>
    </message>
    <message>
        <source>Copy Created Date to Modified Date</source>
        <translation>Erstellungsdatum ins Änderungsdatum kopieren</translation>
    </message>
    <message>
        <source>Copy File Name to Comments</source>
        <translation>Dateinamen in die Kommentare kopieren</translation>
    </message>
    <message>
        <source>Copy Modified Date to Created Date</source>
        <translation>Änderungsdatum ins Erstellungsdatum kopieren</translation>
    </message>
    <message>
        <source>Export TIFF to Plist</source>
        <translation>TIFF als Plist exportieren</translation>
    </message>
    <message>
        <source>Export Exif to Plist</source>
        <translation>Exif als Plist exportieren</translation>
    </message>
    <message>
        <source>Export Exif and TIFF to Plist</source>
        <translation>Exif und TIFF als Plist exportieren</translation>
    </message>
    <message>
        <source>Export Exif and GPS to Plist</source>
        <translation>Exif und GPS als Plist exportieren</translation>
    </message>
    <message>
        <source>Export All Photo Metadata to Plist</source>
        <translation>Alle Fotometadaten als Plist exportieren</translation>
    </message>
    <message>
        <source>Exporting...</source>
        <translation>Exportieren...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Export Template</source>
        <translation>Vorlage exportieren</translation>
    </message>
    <message>
        <source>Export Metadata</source>
        <translation>Metadaten exportieren</translation>
    </message>
    <message>
        <source>Export Artwork</source>
        <translation>Cover exportieren</translation>
    </message>
    <message>
        <source>Property lists (*.plist);;All files (*)</source>
        <translation>Eigenschaftslisten (*.plist);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Importing...</source>
        <translation>Importieren...</translation>
    </message>
    <message>
        <source>Import TIFF from Plist</source>
        <translation>TIFF aus Plist importieren</translation>
    </message>
    <message>
        <source>Import Exif from Plist</source>
        <translation>Exif aus Plist importieren</translation>
    </message>
    <message>
        <source>Import Exif and TIFF from Plist</source>
        <translation>Exif und TIFF aus Plist importieren</translation>
    </message>
    <message>
        <source>Import Exif and GPS from Plist</source>
        <translation>Exif und GPS aus Plist importieren</translation>
    </message>
    <message>
        <source>Import All Photo Metadata from Plist</source>
        <translation>Alle Fotometadaten aus Plist importieren</translation>
    </message>
    <message>
        <source>Please select plist to import.</source>
        <translation>Bitte wählen Sie die zu importierende Plist-Datei.</translation>
    </message>
    <message>
        <source>Import Template</source>
        <translation>Vorlage importieren</translation>
    </message>
    <message>
        <source>Reload Metadata</source>
        <translation>Metadaten neu laden</translation>
    </message>
    <message>
        <source>Please select extracted metadata plist to reload.</source>
        <translation>Bitte wählen Sie die exportierte Metadaten-Plist, die neu geladen werden soll.</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Rename media(s) by replacing filenames with custom text:</source>
        <translation>Medien umbenennen, Dateinamen durch eigenen Text ersetzen:</translation>
    </message>
    <message>
        <source>Rename media(s) with media metadata tag(s):</source>
        <translation>Medien nach Metadaten-Tags umbenennen:</translation>
    </message>
    <message>
        <source>Start number at: 1</source>
        <translation>Nummerierung beginnt bei: 1</translation>
    </message>
    <message>
        <source>Insert media metadata tag(s)</source>
        <translation>Metadaten-Tag einfügen</translation>
    </message>
    <message>
        <source>the end of filename</source>
        <translation>am Ende des Dateinamens</translation>
    </message>
    <message>
        <source>the beginning of filename</source>
        <translation>am Anfang des Dateinamens</translation>
    </message>
    <message>
        <source>Please Choose Date format</source>
        <translation>Bitte Datumsformat wählen</translation>
    </message>
    <message>
        <source>Replace invalid characters with _</source>
        <translation>Ungültige Zeichen durch _ ersetzen</translation>
    </message>
    <message>
        <source>Characters that removable drives and network shares refuse (\ / : * ? &quot; &lt; &gt; | and control characters) become _. A / is always left out.</source>
        <translation>Zeichen, die Wechseldatenträger und Netzwerkfreigaben ablehnen (\ / : * ? &quot; &lt; &gt; | und Steuerzeichen), werden zu _. Ein / wird immer weggelassen.</translation>
    </message>
    <message>
        <source>Add sequence number</source>
        <translation>Laufende Nummer anhängen</translation>
    </message>
    <message>
        <source>Template names end with a blank and a six-digit running number.</source>
        <translation>Namen aus Vorlagen enden mit einem Leerzeichen und einer sechsstelligen laufenden Nummer.</translation>
    </message>
    <message>
        <source>Suffix after every name</source>
        <translation>Zusatz hinter jedem Namen</translation>
    </message>
    <message>
        <source>{Camera Date}:</source>
        <translation>{Camera Date}:</translation>
    </message>
    <message>
        <source>Suffix:</source>
        <translation>Zusatz:</translation>
    </message>
    <message>
        <source>New names (a name that is taken gets a number; a file whose second name is taken too keeps its name):</source>
        <translation>Neue Namen (ein vergebener Name erhält eine Nummer; ist auch der zweite Name vergeben, behält die Datei ihren Namen):</translation>
    </message>
    <message>
        <source>Renaming...</source>
        <translation>Umbenennen...</translation>
    </message>
    <message>
        <source>%1 of %2 files renamed</source>
        <translation>%1 von %2 Dateien umbenannt</translation>
    </message>
    <message>
        <source>Change Dates</source>
        <translation>Datumsangaben ändern</translation>
    </message>
    <message>
        <source>Leave empty to shift each file&apos;s own date instead.</source>
        <translation>Leer lassen, um stattdessen das eigene Datum jeder Datei zu verschieben.</translation>
    </message>
    <message>
        <source>Step the date from file to file by</source>
        <translation>Datum von Datei zu Datei weiterzählen um</translation>
    </message>
    <message>
        <source>Add Time</source>
        <translation>Zeit addieren</translation>
    </message>
    <message>
        <source>Subtract Time</source>
        <translation>Zeit abziehen</translation>
    </message>
    <message>
        <source>Years</source>
        <translation>Jahre</translation>
    </message>
    <message>
        <source>Months</source>
        <translation>Monate</translation>
    </message>
    <message>
        <source>Days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>Hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>Minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Change the file creation date of copies instead</source>
        <translation>Stattdessen das Erstellungsdatum der Kopien ändern</translation>
    </message>
    <message>
        <source>Linux cannot set a creation date: it becomes the modification date.</source>
        <translation>Linux kann kein Erstellungsdatum setzen: Es wird zum Änderungsdatum.</translation>
    </message>
    <message>
        <source>Date (yyyy:MM:dd HH:mm:ss):</source>
        <translation>Datum (JJJJ:MM:TT hh:mm:ss):</translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation>Einheit:</translation>
    </message>
    <message>
        <source>Invalid date format</source>
        <translation>Ungültiges Datumsformat</translation>
    </message>
    <message>
        <source> Ok </source>
        <translation> OK </translation>
    </message>
    <message>
        <source>Changing dates...</source>
        <translation>Datumsangaben werden geändert...</translation>
    </message>
    <message>
        <source>Remove IPTC Data</source>
        <translation>IPTC-Daten entfernen</translation>
    </message>
    <message>
        <source>Remove EXIF Data</source>
        <translation>EXIF-Daten entfernen</translation>
    </message>
    <message>
        <source>Remove GPS Data</source>
        <translation>GPS-Daten entfernen</translation>
    </message>
    <message>
        <source>Remove EXIF and GPS Data</source>
        <translation>EXIF- und GPS-Daten entfernen</translation>
    </message>
    <message>
        <source>Remove All Photo Metadata</source>
        <translation>Alle Fotometadaten entfernen</translation>
    </message>
    <message>
        <source>Please select photos to import.</source>
        <translation>Bitte wählen Sie die zu importierenden Fotos.</translation>
    </message>
    <message>
        <source>Photos (%1)</source>
        <translation>Fotos (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Vaule Error</source>
        <translation>Wertfehler</translation>
    </message>
    <message>
        <source>Each value cannot be empty.</source>
        <translation>Kein Wert darf leer sein.</translation>
    </message>
    <message>
        <source>Input the valid date format: YYYY:MM:DD HH:MM:SS or YYYY-MM-DD HH:MM:SS</source>
        <translation>Geben Sie ein gültiges Datum ein: JJJJ:MM:TT hh:mm:ss oder JJJJ-MM-TT hh:mm:ss</translation>
    </message>
    <message>
        <source>No GPS Data</source>
        <translation>Keine GPS-Daten</translation>
    </message>
    <message>
        <source>The selected photo does not contain GPS information.</source>
        <translation>Das ausgewählte Foto enthält keine GPS-Angaben.</translation>
    </message>
    <message>
        <source>This photo does not contain GPS information.</source>
        <translation>Dieses Foto enthält keine GPS-Angaben.</translation>
    </message>
    <message>
        <source>Choose the storage folder</source>
        <translation>Speicherordner wählen</translation>
    </message>
    <message>
        <source>Stamp Font</source>
        <translation>Schrift des Datumsstempels</translation>
    </message>
    <message>
        <source>Do you want to save the changes you made to &quot;%1&quot;?</source>
        <translation>Möchten Sie die Änderungen an „%1“ speichern?</translation>
    </message>
    <message>
        <source>Your changes will be lost if you don&apos;t save them.</source>
        <translation>Ihre Änderungen gehen verloren, wenn Sie sie nicht speichern.</translation>
    </message>
    <message>
        <source> Save </source>
        <translation> Speichern </translation>
    </message>
    <message>
        <source> Discard </source>
        <translation> Verwerfen </translation>
    </message>
    <message>
        <source>Files are still being imported or written.</source>
        <translation>Es werden noch Dateien importiert oder geschrieben.</translation>
    </message>
    <message>
        <source>Exiting stops the imports and the video tools, whose unfinished files are removed; other files being written are finished first.</source>
        <translation>Beenden stoppt die Importe und die Videowerkzeuge, deren unfertige Dateien entfernt werden; andere Dateien werden zuvor fertig geschrieben.</translation>
    </message>
    <message>
        <source>Exiting stops the imports; files being written are finished first.</source>
        <translation>Beenden stoppt die Importe; Dateien, die gerade geschrieben werden, werden zuvor fertiggestellt.</translation>
    </message>
    <message>
        <source> Exit </source>
        <translation> Beenden </translation>
    </message>
    <message>
        <source>Videos and audio files of the list</source>
        <translation>Videos und Audiodateien der Liste</translation>
    </message>
    <message>
        <source>Photos of the list</source>
        <translation>Fotos der Liste</translation>
    </message>
    <message>
        <source>Photos of a connected camera</source>
        <translation>Fotos einer angeschlossenen Kamera</translation>
    </message>
    <message>
        <source>&amp;Tagsmith</source>
        <translation>&amp;Tagsmith</translation>
    </message>
    <message>
        <source>About Tagsmith</source>
        <translation>Über Tagsmith</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen...</translation>
    </message>
    <message>
        <source>Quit Tagsmith</source>
        <translation>Tagsmith beenden</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Add Files or Folders...</source>
        <translation>Dateien oder Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>Add Files Quickly...</source>
        <translation>Dateien schnell hinzufügen...</translation>
    </message>
    <message>
        <source>Remove from List</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Remove Metadata</source>
        <translation>Metadaten entfernen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Videos and Audio</source>
        <translation>Videos und Audio</translation>
    </message>
    <message>
        <source>Photos</source>
        <translation>Fotos</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>User Guide</source>
        <translation>Benutzerhandbuch</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Unterstützung</translation>
    </message>
    <message>
        <source>Edits the metadata of videos, audio files and photos.</source>
        <translation>Bearbeitet die Metadaten von Videos, Audiodateien und Fotos.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Are you sure you want to Exit ?</source>
        <translation>Möchten Sie das Programm wirklich beenden?</translation>
    </message>
    <message>
        <source>%1: %2 (%3 of %4) %5%</source>
        <translation>%1: %2 (%3 von %4) %5 %</translation>
    </message>
    <message>
        <source>No Item has been selected</source>
        <translation>Es wurde nichts ausgewählt</translation>
    </message>
    <message>
        <source>Please select at least one item to process.</source>
        <translation>Bitte wählen Sie mindestens ein Element zur Bearbeitung aus.</translation>
    </message>
    <message>
        <source>Copy Title to File Name</source>
        <translation>Titel in den Dateinamen kopieren</translation>
    </message>
    <message>
        <source>Copy File Name to Title</source>
        <translation>Dateinamen in den Titel kopieren</translation>
    </message>
    <message>
        <source>Copy Recorded Date to File Date</source>
        <translation>Aufnahmedatum ins Dateidatum kopieren</translation>
    </message>
    <message>
        <source>Set Recorded Date from File Name</source>
        <translation>Aufnahmedatum aus dem Dateinamen setzen</translation>
    </message>
    <message>
        <source>Remove All Metadata</source>
        <translation>Alle Metadaten entfernen</translation>
    </message>
    <message>
        <source>Remove Location</source>
        <translation>Ort entfernen</translation>
    </message>
    <message>
        <source>the panel&apos;s edits are for audio files</source>
        <translation>die Änderungen im Bereich gelten für Audiodateien</translation>
    </message>
    <message>
        <source>Second</source>
        <translation>Sekunde</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>Minute</translation>
    </message>
    <message>
        <source>Hour</source>
        <translation>Stunde</translation>
    </message>
    <message>
        <source>Please select videos or auidos to import.</source>
        <translation>Bitte wählen Sie die zu importierenden Videos oder Audiodateien.</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Medien</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computer</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Video Tools</source>
        <translation>Videowerkzeuge</translation>
    </message>
    <message>
        <source>Import/Export</source>
        <translation>Import/Export</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Auslesen</translation>
    </message>
    <message>
        <source>Import Photos</source>
        <translation>Fotos importieren</translation>
    </message>
    <message>
        <source>Open Device</source>
        <translation>Gerät öffnen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Import to Edit</source>
        <translation>Zum Bearbeiten importieren</translation>
    </message>
    <message>
        <source>Edit EXIF</source>
        <translation>EXIF bearbeiten</translation>
    </message>
    <message>
        <source>Remove EXIF</source>
        <translation>EXIF entfernen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Template</source>
        <translation>Vorlage</translation>
    </message>
    <message>
        <source>Dates</source>
        <translation>Datumsangaben</translation>
    </message>
    <message>
        <source>Write XMP</source>
        <translation>XMP schreiben</translation>
    </message>
    <message>
        <source>Cancel XMP</source>
        <translation>XMP abbrechen</translation>
    </message>
    <message>
        <source>Apply Changes</source>
        <translation>Änderungen anwenden</translation>
    </message>
    <message>
        <source>Edit GPS...</source>
        <translation>GPS bearbeiten...</translation>
    </message>
    <message>
        <source>Add GPS...</source>
        <translation>GPS hinzufügen...</translation>
    </message>
    <message>
        <source>Show on Map...</source>
        <translation>Auf der Karte zeigen...</translation>
    </message>
    <message>
        <source>Remove Metadata of Selected Files</source>
        <translation>Metadaten der ausgewählten Dateien entfernen</translation>
    </message>
    <message>
        <source>Remove Metadata of All Files</source>
        <translation>Metadaten aller Dateien entfernen</translation>
    </message>
    <message>
        <source>Import Folder</source>
        <translation>Ordner importieren</translation>
    </message>
    <message>
        <source>Extract Metadata</source>
        <translation>Metadaten auslesen</translation>
    </message>
    <message>
        <source>Convert</source>
        <translation>Umwandeln</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>Komprimieren</translation>
    </message>
    <message>
        <source>Make GIF</source>
        <translation>GIF erstellen</translation>
    </message>
    <message>
        <source>Change Speed</source>
        <translation>Geschwindigkeit ändern</translation>
    </message>
    <message>
        <source>Extract Frames</source>
        <translation>Einzelbilder exportieren</translation>
    </message>
    <message>
        <source>Extract Audio</source>
        <translation>Tonspur exportieren</translation>
    </message>
    <message>
        <source>Remove Audio</source>
        <translation>Tonspur entfernen</translation>
    </message>
    <message>
        <source>Import Metadata</source>
        <translation>Metadaten importieren</translation>
    </message>
    <message>
        <source>Change Date...</source>
        <translation>Datum ändern...</translation>
    </message>
    <message>
        <source>Slow Motion</source>
        <translation>Zeitlupe</translation>
    </message>
    <message>
        <source>the panel&apos;s edits are for videos</source>
        <translation>die Änderungen im Bereich gelten für Videos</translation>
    </message>
    <message>
        <source>removing all metadata is available for movies only</source>
        <translation>alle Metadaten entfernen geht nur bei Filmen</translation>
    </message>
    <message>
        <source>removing the location is available for movies only</source>
        <translation>den Ort entfernen geht nur bei Filmen</translation>
    </message>
    <message>
        <source>the video tools work on videos only</source>
        <translation>die Videowerkzeuge arbeiten nur mit Videos</translation>
    </message>
    <message>
        <source>Write XMP Sidecars to Videos...</source>
        <translation>XMP-Begleitdateien in Videos schreiben...</translation>
    </message>
    <message>
        <source>Writes the title, position and date of XMP sidecars into the videos beside them, replacing the videos</source>
        <translation>Schreibt Titel, Position und Datum der XMP-Begleitdateien in die Videos daneben und ersetzt diese Videos</translation>
    </message>
    <message>
        <source>Every new name is this text and a number</source>
        <translation>Jeder neue Name besteht aus diesem Text und einer Nummer</translation>
    </message>
    <message>
        <source>New names are made from the template below</source>
        <translation>Neue Namen werden aus der Vorlage unten gebildet</translation>
    </message>
    <message>
        <source>The text of the new names</source>
        <translation>Der Text der neuen Namen</translation>
    </message>
    <message>
        <source>The first file is numbered 1 as well</source>
        <translation>Auch die erste Datei erhält die Nummer 1</translation>
    </message>
    <message>
        <source>The template: tags in braces are replaced by each file&apos;s values</source>
        <translation>Die Vorlage: Tags in geschweiften Klammern werden durch die Werte jeder Datei ersetzt</translation>
    </message>
    <message>
        <source>Insert a metadata tag into the template</source>
        <translation>Ein Metadaten-Tag in die Vorlage einfügen</translation>
    </message>
    <message>
        <source>Where an inserted tag goes in the template</source>
        <translation>Wohin ein eingefügtes Tag in der Vorlage kommt</translation>
    </message>
    <message>
        <source>How {Camera Date} is written</source>
        <translation>Wie {Camera Date} geschrieben wird</translation>
    </message>
    <message>
        <source>Text added after every new name</source>
        <translation>Text, der an jeden neuen Namen angehängt wird</translation>
    </message>
    <message>
        <source>The new names</source>
        <translation>Die neuen Namen</translation>
    </message>
    <message>
        <source>Rename the files</source>
        <translation>Dateien umbenennen</translation>
    </message>
    <message>
        <source>Close without renaming</source>
        <translation>Schließen, ohne umzubenennen</translation>
    </message>
    <message>
        <source>Each file&apos;s date is later than the one before by this much</source>
        <translation>Das Datum jeder Datei liegt um so viel nach dem der vorigen</translation>
    </message>
    <message>
        <source>The step between two files&apos; dates</source>
        <translation>Der Abstand zwischen den Daten zweier Dateien</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>The unit of the step</source>
        <translation>Die Einheit des Schritts</translation>
    </message>
    <message>
        <source>Shift each file&apos;s own date later</source>
        <translation>Das eigene Datum jeder Datei nach hinten verschieben</translation>
    </message>
    <message>
        <source>Shift each file&apos;s own date earlier</source>
        <translation>Das eigene Datum jeder Datei nach vorne verschieben</translation>
    </message>
    <message>
        <source>Change the dates</source>
        <translation>Datumsangaben ändern</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Schließen, ohne zu ändern</translation>
    </message>
    <message>
        <source>%1 to add or subtract</source>
        <translation>%1 zum Addieren oder Abziehen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Find in the List</source>
        <translation>In der Liste suchen</translation>
    </message>
    <message>
        <source>Stop this job; its unfinished files are removed</source>
        <translation>Diesen Auftrag anhalten; seine unfertigen Dateien werden entfernt</translation>
    </message>
    <message>
        <source>%1 was not found.</source>
        <translation>%1 wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Write XMP sidecars to videos</source>
        <translation>XMP-Begleitdateien in Videos schreiben</translation>
    </message>
    <message>
        <source>Sidecars without a video beside them are skipped</source>
        <translation>Begleitdateien ohne Video daneben werden übersprungen</translation>
    </message>
    <message>
        <source>Choose a folder of XMP sidecars. The title, position and date of each sidecar are written into the video of the same name beside it (.mov or .mp4), which is replaced by its new copy.</source>
        <translation>Wählen Sie einen Ordner mit XMP-Begleitdateien. Titel, Position und Datum jeder Begleitdatei werden in das gleichnamige Video daneben (.mov oder .mp4) geschrieben, das durch seine neue Kopie ersetzt wird.</translation>
    </message>
    <message>
        <source>What writing XMP does</source>
        <translation>Was das Schreiben von XMP bewirkt</translation>
    </message>
    <message>
        <source>Only .xmp and .XMP files are read, in the folder and its sub-folders</source>
        <translation>Nur .xmp- und .XMP-Dateien werden gelesen, im Ordner und seinen Unterordnern</translation>
    </message>
    <message>
        <source>XMP sidecars being applied</source>
        <translation>XMP-Begleitdateien werden angewendet</translation>
    </message>
    <message>
        <source>The sidecars are being applied; the sheet closes when all are done.</source>
        <translation>Die Begleitdateien werden angewendet; das Fenster schließt sich, wenn alle fertig sind.</translation>
    </message>
    <message>
        <source>Choose the folder of sidecars to apply</source>
        <translation>Den Ordner mit den anzuwendenden Begleitdateien wählen</translation>
    </message>
    <message>
        <source>Close without writing anything</source>
        <translation>Schließen, ohne etwas zu schreiben</translation>
    </message>
    <message>
        <source>Choose a xmp folder to open.</source>
        <translation>Wählen Sie einen XMP-Ordner zum Öffnen.</translation>
    </message>
    <message>
        <source>Add Date to Photos</source>
        <translation>Datum in Fotos einfügen</translation>
    </message>
    <message>
        <source>Write copies of the selected photos with the date they were taken drawn in (font, colour, corner and layout from the preferences)</source>
        <translation>Kopien der ausgewählten Fotos mit eingezeichnetem Aufnahmedatum schreiben (Schrift, Farbe, Ecke und Layout aus den Einstellungen)</translation>
    </message>
    <message>
        <source>%1 was not deleted from the camera: %2</source>
        <translation>%1 wurde nicht von der Kamera gelöscht: %2</translation>
    </message>
    <message>
        <source>Show the photos and movies of the connected camera</source>
        <translation>Die Fotos und Filme der angeschlossenen Kamera anzeigen</translation>
    </message>
    <message>
        <source>Download the selected items into the storage folder</source>
        <translation>Die ausgewählten Objekte in den Speicherordner laden</translation>
    </message>
    <message>
        <source>Download the selected items and add them to the list</source>
        <translation>Die ausgewählten Objekte herunterladen und der Liste hinzufügen</translation>
    </message>
    <message>
        <source>Delete the selected items from the camera</source>
        <translation>Die ausgewählten Objekte von der Kamera löschen</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>%1 konnte nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>%1 was not downloaded: %2</source>
        <translation>%1 wurde nicht heruntergeladen: %2</translation>
    </message>
    <message>
        <source>Downloaded %1</source>
        <translation>%1 heruntergeladen</translation>
    </message>
    <message>
        <source>Are you sure you want to delete the selected photo ?</source>
        <translation>Möchten Sie das ausgewählte Foto wirklich löschen ?</translation>
    </message>
    <message>
        <source> Delete </source>
        <translation> Löschen </translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>Ask the maker&apos;s server whether a newer version is published</source>
        <translation>Beim Server des Herstellers nachfragen, ob eine neuere Version erschienen ist</translation>
    </message>
    <message>
        <source>The photo&apos;s original date as it is</source>
        <translation>Das Aufnahmedatum des Fotos, wie es ist</translation>
    </message>
    <message>
        <source>The photo&apos;s digitized date as it is</source>
        <translation>Das Digitalisierungsdatum des Fotos, wie es ist</translation>
    </message>
    <message>
        <source>Edit the original date: every file&apos;s creation date moves by the same interval</source>
        <translation>Aufnahmedatum bearbeiten: das Erstellungsdatum jeder Datei verschiebt sich um denselben Abstand</translation>
    </message>
    <message>
        <source>Original date after</source>
        <translation>Aufnahmedatum danach</translation>
    </message>
    <message>
        <source>The digitized date moves by the same interval</source>
        <translation>Das Digitalisierungsdatum verschiebt sich um denselben Abstand</translation>
    </message>
    <message>
        <source>Digitized date after</source>
        <translation>Digitalisierungsdatum danach</translation>
    </message>
    <message>
        <source>Original date:</source>
        <translation>Aufnahmedatum:</translation>
    </message>
    <message>
        <source>Digitized date:</source>
        <translation>Digitalisierungsdatum:</translation>
    </message>
    <message>
        <source>Original date after:</source>
        <translation>Aufnahmedatum danach:</translation>
    </message>
    <message>
        <source>Digitized date after:</source>
        <translation>Digitalisierungsdatum danach:</translation>
    </message>
</context>
<context>
    <name>AudioPanel</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Album Artist / Track</source>
        <translation>Albuminterpret / Titelnummer</translation>
    </message>
    <message>
        <source>Composer</source>
        <translation>Komponist</translation>
    </message>
    <message>
        <source>Record Date</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>Release Year</source>
        <translation>Erscheinungsjahr</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>Publisher</source>
        <translation>Verlag</translation>
    </message>
    <message>
        <source>Band</source>
        <translation>Band</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Kommentare</translation>
    </message>
    <message>
        <source>Lyricist</source>
        <translation>Texter</translation>
    </message>
    <message>
        <source>Created Date</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Artwork…</source>
        <translation>Cover…</translation>
    </message>
    <message>
        <source>Choose a new picture for the artwork</source>
        <translation>Ein neues Bild als Cover wählen</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Dates, Rights and Notes</source>
        <translation>Daten, Rechte und Notizen</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>The album artist and the track number are kept as one value</source>
        <translation>Albuminterpret und Titelnummer werden als ein Wert gespeichert</translation>
    </message>
    <message>
        <source>Save Changes</source>
        <translation>Änderungen speichern</translation>
    </message>
    <message>
        <source>All Tags</source>
        <translation>Alle Tags</translation>
    </message>
    <message>
        <source>This file has no metadata items.</source>
        <translation>Diese Datei hat keine Metadaten.</translation>
    </message>
    <message>
        <source>Choose a picture for the artwork</source>
        <translation>Ein Bild als Cover wählen</translation>
    </message>
    <message>
        <source>Pictures (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)</source>
        <translation>Bilder (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play or pause the audio file</source>
        <translation>Audiodatei abspielen oder anhalten</translation>
    </message>
    <message>
        <source>Position in the audio file</source>
        <translation>Position in der Audiodatei</translation>
    </message>
    <message>
        <source>%1: edit, then Save Changes</source>
        <translation>%1: bearbeiten, dann „Änderungen speichern“</translation>
    </message>
    <message>
        <source>Write the edited fields into a copy of the selected audio files (Ctrl+S)</source>
        <translation>Die bearbeiteten Felder in eine Kopie der ausgewählten Audiodateien schreiben (Strg+S)</translation>
    </message>
</context>
<context>
    <name>BatchTools</name>
    <message>
        <source>Linux cannot set a file&apos;s creation date: this tool is not available.</source>
        <translation>Linux kann das Erstellungsdatum einer Datei nicht setzen: Dieses Werkzeug steht nicht zur Verfügung.</translation>
    </message>
</context>
<context>
    <name>ColorWell</name>
    <message>
        <source>Stamp Colour</source>
        <translation>Farbe des Datumsstempels</translation>
    </message>
    <message>
        <source>The colour of the date stamp</source>
        <translation>Die Farbe des Datumsstempels</translation>
    </message>
</context>
<context>
    <name>GpsWindow</name>
    <message>
        <source>Edit GPS</source>
        <translation>GPS bearbeiten</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breitengrad</translation>
    </message>
    <message>
        <source>Decimal degrees; south of the equator negative</source>
        <translation>Dezimalgrad; südlich des Äquators negativ</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Längengrad</translation>
    </message>
    <message>
        <source>Decimal degrees; west of Greenwich negative</source>
        <translation>Dezimalgrad; westlich von Greenwich negativ</translation>
    </message>
    <message>
        <source>Altitude (m)</source>
        <translation>Höhe (m)</translation>
    </message>
    <message>
        <source>Metres; below sea level negative</source>
        <translation>Meter; unter dem Meeresspiegel negativ</translation>
    </message>
    <message>
        <source>GPS date</source>
        <translation>GPS-Datum</translation>
    </message>
    <message>
        <source>YYYY:MM:DD</source>
        <translation>JJJJ:MM:TT</translation>
    </message>
    <message>
        <source>GPS time</source>
        <translation>GPS-Uhrzeit</translation>
    </message>
    <message>
        <source>HH:MM:SS</source>
        <translation>hh:mm:ss</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Show the position on the map</source>
        <translation>Die Position auf der Karte zeigen</translation>
    </message>
    <message>
        <source>Close without changing the position</source>
        <translation>Schließen, ohne die Position zu ändern</translation>
    </message>
    <message>
        <source>Write the position into a copy of the selected photos</source>
        <translation>Die Position in eine Kopie der ausgewählten Fotos schreiben</translation>
    </message>
</context>
<context>
    <name>InfoBlock</name>
    <message>
        <source>Record Date:         </source>
        <translation>Aufnahmedatum:       </translation>
    </message>
    <message>
        <source>Record Date:   </source>
        <translation>Aufnahmedatum: </translation>
    </message>
    <message>
        <source>Resolution:           </source>
        <translation>Auflösung:            </translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>Auflösung:</translation>
    </message>
    <message>
        <source>Video Format:        </source>
        <translation>Videoformat:         </translation>
    </message>
    <message>
        <source>Video Format:</source>
        <translation>Videoformat:</translation>
    </message>
    <message>
        <source>Created Date:        </source>
        <translation>Erstellt:            </translation>
    </message>
    <message>
        <source>Created Date:</source>
        <translation>Erstellt:</translation>
    </message>
    <message>
        <source>Duration: </source>
        <translation>Dauer: </translation>
    </message>
    <message>
        <source>File Name:</source>
        <translation>Dateiname:</translation>
    </message>
    <message>
        <source>Modified Date:</source>
        <translation>Geändert:</translation>
    </message>
    <message>
        <source>File Size:</source>
        <translation>Dateigröße:</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>Kind:</source>
        <translation>Art:</translation>
    </message>
    <message>
        <source>Channels:</source>
        <translation>Kanäle:</translation>
    </message>
    <message>
        <source>Duration:</source>
        <translation>Dauer:</translation>
    </message>
    <message>
        <source>Bitrate:</source>
        <translation>Bitrate:</translation>
    </message>
    <message>
        <source>Sample Rate:</source>
        <translation>Abtastrate:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Drop videos, audio files or folders here
or press Add to choose them</source>
        <translation>Videos, Audiodateien oder Ordner hierher ziehen
oder mit „Hinzufügen“ auswählen</translation>
    </message>
    <message>
        <source>Connect a camera or phone to see its photos</source>
        <translation>Schließen Sie eine Kamera oder ein Telefon an, um die Fotos zu sehen</translation>
    </message>
    <message>
        <source>Drop photos or folders of photos here
or press Add to choose them</source>
        <translation>Fotos oder Fotoordner hierher ziehen
oder mit „Hinzufügen“ auswählen</translation>
    </message>
    <message>
        <source>Select a file to see its details</source>
        <translation>Wählen Sie eine Datei aus, um ihre Details zu sehen</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 Datei</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 Dateien</translation>
    </message>
    <message>
        <source>Find in the list</source>
        <translation>In der Liste suchen</translation>
    </message>
    <message>
        <source>Shows only the files whose name, type, artist or album contains this text (Ctrl+F; Escape clears it)</source>
        <translation>Zeigt nur die Dateien, deren Name, Art, Künstler oder Album diesen Text enthält (Strg+F; Escape leert das Feld)</translation>
    </message>
    <message>
        <source>The videos and audio files of the list: Enter edits the selected file, Delete takes rows off the list (the files stay)</source>
        <translation>Die Videos und Audiodateien der Liste: Eingabe bearbeitet die ausgewählte Datei, Entf nimmt Zeilen aus der Liste (die Dateien bleiben erhalten)</translation>
    </message>
    <message>
        <source>Videos and audio files</source>
        <translation>Videos und Audiodateien</translation>
    </message>
    <message>
        <source>The photos of the list: Enter edits the selected photo, Delete takes photos off the list (the files stay)</source>
        <translation>Die Fotos der Liste: Eingabe bearbeitet das ausgewählte Foto, Entf nimmt Fotos aus der Liste (die Dateien bleiben erhalten)</translation>
    </message>
    <message>
        <source>Photos</source>
        <translation>Fotos</translation>
    </message>
    <message>
        <source>Show the written file in the file manager</source>
        <translation>Die geschriebene Datei in der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Camera name</source>
        <translation>Kameraname</translation>
    </message>
    <message>
        <source>The camera or phone whose photos and movies are shown</source>
        <translation>Die Kamera oder das Telefon, dessen Fotos und Filme angezeigt werden</translation>
    </message>
    <message>
        <source>Camera photos and movies</source>
        <translation>Fotos und Filme der Kamera</translation>
    </message>
    <message>
        <source>Select photos and movies to download or delete</source>
        <translation>Fotos und Filme zum Herunterladen oder Löschen auswählen</translation>
    </message>
</context>
<context>
    <name>MediaImporter</name>
    <message>
        <source>The file cannot be opened (%1).</source>
        <translation>Die Datei kann nicht geöffnet werden (%1).</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>The file is damaged or is not an audio file that Tagsmith can read.</source>
        <translation>Die Datei ist beschädigt oder keine Audiodatei, die Tagsmith lesen kann.</translation>
    </message>
    <message>
        <source>The file is damaged or is not a movie that Tagsmith can read.</source>
        <translation>Die Datei ist beschädigt oder kein Film, den Tagsmith lesen kann.</translation>
    </message>
    <message>
        <source>%1 could not be read: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>MediaOpenDialog</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
<context>
    <name>MediaTableModel</name>
    <message>
        <source>Media Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Media Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Media Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Media Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Media Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Media Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Media Created Date</source>
        <translation>Erstellungsdatum</translation>
    </message>
</context>
<context>
    <name>MetadataTable</name>
    <message>
        <source>Key Space</source>
        <translation>Schlüsselraum</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Every metadata item of the file, as stored</source>
        <translation>Alle Metadaten der Datei, wie gespeichert</translation>
    </message>
    <message>
        <source>All Tags</source>
        <translation>Alle Tags</translation>
    </message>
</context>
<context>
    <name>PRUpdateController</name>
    <message>
        <source>Brimlark Photo Stampel %1 is available.</source>
        <translation>Brimlark Photo Stampel %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>You are using %1 version. Would you like to download it now?</source>
        <translation>Sie verwenden Version %1. Möchten Sie die neue Version jetzt herunterladen?</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Softwareaktualisierung</translation>
    </message>
    <message>
        <source>Software update</source>
        <translation>Softwareaktualisierung</translation>
    </message>
    <message>
        <source>New version</source>
        <translation>Neue Version</translation>
    </message>
    <message>
        <source>Version in use</source>
        <translation>Verwendete Version</translation>
    </message>
    <message>
        <source>What is new in this version</source>
        <translation>Neuerungen dieser Version</translation>
    </message>
    <message>
        <source>Release notes</source>
        <translation>Versionshinweise</translation>
    </message>
    <message>
        <source>Tagsmith</source>
        <translation>Tagsmith</translation>
    </message>
    <message>
        <source> Not Now </source>
        <translation> Nicht jetzt </translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Dieses Fenster schließen</translation>
    </message>
    <message>
        <source> Download </source>
        <translation> Herunterladen </translation>
    </message>
    <message>
        <source>Open the download page in the browser</source>
        <translation>Die Download-Seite im Browser öffnen</translation>
    </message>
    <message>
        <source>No update</source>
        <translation>Keine Aktualisierung</translation>
    </message>
    <message>
        <source>You are using the latest version of Tagsmith.</source>
        <translation>Sie verwenden die neueste Version von Tagsmith.</translation>
    </message>
    <message>
        <source> Ok </source>
        <translation> OK </translation>
    </message>
</context>
<context>
    <name>PhotoDateWindow</name>
    <message>
        <source>Change Photo Date</source>
        <translation>Fotodatum ändern</translation>
    </message>
    <message>
        <source>YYYY:MM:DD HH:MM:SS</source>
        <translation>JJJJ:MM:TT hh:mm:ss</translation>
    </message>
    <message>
        <source>File date</source>
        <translation>Dateidatum</translation>
    </message>
    <message>
        <source>Date taken</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Write the dates into a copy of the selected photos</source>
        <translation>Die Daten in eine Kopie der ausgewählten Fotos schreiben</translation>
    </message>
    <message>
        <source>Close without changing a date</source>
        <translation>Schließen, ohne ein Datum zu ändern</translation>
    </message>
</context>
<context>
    <name>PhotoMapWindow</name>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
</context>
<context>
    <name>PhotoPanel</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Stichwörter</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Kommentare</translation>
    </message>
    <message>
        <source>Make</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Date Taken</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breitengrad</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Längengrad</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>GPS Date</source>
        <translation>GPS-Datum</translation>
    </message>
    <message>
        <source>GPS Time</source>
        <translation>GPS-Uhrzeit</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation>Abmessungen</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Digitized</source>
        <translation>Digitalisiert</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Separate keywords with commas</source>
        <translation>Stichwörter durch Kommas trennen</translation>
    </message>
    <message>
        <source>YYYY:MM:DD HH:MM:SS</source>
        <translation>JJJJ:MM:TT hh:mm:ss</translation>
    </message>
    <message>
        <source>Edit GPS…</source>
        <translation>GPS bearbeiten…</translation>
    </message>
    <message>
        <source>Change Date…</source>
        <translation>Datum ändern…</translation>
    </message>
    <message>
        <source>Apply Changes</source>
        <translation>Änderungen anwenden</translation>
    </message>
    <message>
        <source>All Properties</source>
        <translation>Alle Eigenschaften</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Eigenschaft</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>(%1 bytes)</source>
        <translation>(%1 Bytes)</translation>
    </message>
    <message>
        <source>%1: edit, then Apply Changes</source>
        <translation>%1: bearbeiten, dann „Änderungen anwenden“</translation>
    </message>
    <message>
        <source>Edit the position of the selected photos</source>
        <translation>Die Position der ausgewählten Fotos bearbeiten</translation>
    </message>
    <message>
        <source>Change the dates of the selected photos</source>
        <translation>Die Daten der ausgewählten Fotos ändern</translation>
    </message>
    <message>
        <source>Write the edited fields into a copy of the selected photos (Ctrl+S)</source>
        <translation>Die bearbeiteten Felder in eine Kopie der ausgewählten Fotos schreiben (Strg+S)</translation>
    </message>
    <message>
        <source>Every property of the photo, by group</source>
        <translation>Alle Eigenschaften des Fotos, nach Gruppen</translation>
    </message>
</context>
<context>
    <name>PhotoProperties</name>
    <message>
        <source>The file is not a photo this program can read.</source>
        <translation>Die Datei ist kein Foto, das dieses Programm lesen kann.</translation>
    </message>
    <message>
        <source>The photo is damaged or incomplete.</source>
        <translation>Das Foto ist beschädigt oder unvollständig.</translation>
    </message>
    <message>
        <source>The file does not exist or is not a regular file.</source>
        <translation>Die Datei existiert nicht oder ist keine normale Datei.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
</context>
<context>
    <name>PhotoWriter</name>
    <message>
        <source>Input the valid date format: YYYY:MM:DD HH:MM:SS or YYYY-MM-DD HH:MM:SS</source>
        <translation>Geben Sie ein gültiges Datum ein: JJJJ:MM:TT hh:mm:ss oder JJJJ-MM-TT hh:mm:ss</translation>
    </message>
    <message>
        <source>The camera raw picture could not be decoded.</source>
        <translation>Das Kamera-Rohbild konnte nicht dekodiert werden.</translation>
    </message>
    <message>
        <source>The picture could not be written as TIFF data.</source>
        <translation>Das Bild konnte nicht als TIFF geschrieben werden.</translation>
    </message>
    <message>
        <source>This kind of photo cannot be written.</source>
        <translation>Diese Art von Foto kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The photo&apos;s pages could not all be kept, so it was not written.</source>
        <translation>Nicht alle Seiten des Fotos konnten erhalten werden, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo is damaged or cannot be written.</source>
        <translation>Das Foto ist beschädigt oder kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The copy could not be written: %1</source>
        <translation>Die Kopie konnte nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>The photo cannot be read: %1</source>
        <translation>Das Foto kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>The photo is too large to be written.</source>
        <translation>Das Foto ist zu groß zum Schreiben.</translation>
    </message>
    <message>
        <source>The photo is empty.</source>
        <translation>Das Foto ist leer.</translation>
    </message>
    <message>
        <source>The photo&apos;s item list is damaged, so it was not written.</source>
        <translation>Die Objektliste des Fotos ist beschädigt, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo lists its items in a form this program cannot write, so it was not written.</source>
        <translation>Das Foto führt seine Objekte in einer Form, die dieses Programm nicht schreiben kann, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo stores its items in a way this program does not know, so it was not written.</source>
        <translation>Das Foto speichert seine Objekte auf eine Weise, die dieses Programm nicht kennt, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo keeps some of its data in a way this program cannot move, so it was not written.</source>
        <translation>Das Foto hält einen Teil seiner Daten so, dass dieses Programm sie nicht verschieben kann, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo is cut short: some of its data is missing, so it was not written.</source>
        <translation>Das Foto ist abgeschnitten: Ein Teil seiner Daten fehlt, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo names no main picture, so it was not written.</source>
        <translation>Das Foto nennt kein Hauptbild, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>This kind of HEIF file (a sequence, or several sets of items) cannot be written.</source>
        <translation>Diese Art HEIF-Datei (eine Bildfolge oder mehrere Objektgruppen) kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The file is not a HEIF photo this program can write.</source>
        <translation>Die Datei ist kein HEIF-Foto, das dieses Programm schreiben kann.</translation>
    </message>
    <message>
        <source>The photo holds several sets of the same metadata, so it was not written.</source>
        <translation>Das Foto enthält dieselben Metadaten mehrfach, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The photo has too many items to add one.</source>
        <translation>Das Foto hat zu viele Objekte, um eines hinzuzufügen.</translation>
    </message>
    <message>
        <source>The photo&apos;s Exif could not be kept whole, so it was not written.</source>
        <translation>Die Exif-Daten des Fotos konnten nicht vollständig erhalten werden, daher wurde es nicht geschrieben.</translation>
    </message>
    <message>
        <source>The stamped picture could not be read back.</source>
        <translation>Das gestempelte Bild konnte nicht wieder gelesen werden.</translation>
    </message>
    <message>
        <source>The stamped picture could not be encoded as JPEG.</source>
        <translation>Das gestempelte Bild konnte nicht als JPEG kodiert werden.</translation>
    </message>
    <message>
        <source>The photo&apos;s picture cannot be decoded.</source>
        <translation>Das Bild des Fotos kann nicht dekodiert werden.</translation>
    </message>
    <message>
        <source>The stamped picture could not be written.</source>
        <translation>Das gestempelte Bild konnte nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Storage Location</source>
        <translation>Speicherordner</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Ändern...</translation>
    </message>
    <message>
        <source>Date Stamp</source>
        <translation>Datumsstempel</translation>
    </message>
    <message>
        <source>Font...</source>
        <translation>Schrift...</translation>
    </message>
    <message>
        <source>Font:</source>
        <translation>Schrift:</translation>
    </message>
    <message>
        <source>Colour:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Position:</source>
        <translation>Position:</translation>
    </message>
    <message>
        <source>Date format:</source>
        <translation>Datumsformat:</translation>
    </message>
    <message>
        <source>Behaviour</source>
        <translation>Verhalten</translation>
    </message>
    <message>
        <source>Classic behaviour</source>
        <translation>Klassisches Verhalten</translation>
    </message>
    <message>
        <source>When on, the list behaves as it always did:
- After a column sort, commands (save, removal, the tools) take the selected row
  numbers in the order the files were imported, so they may act on other files
  than the highlighted ones.
- The Size column sorts by the number in its text before the unit&apos;s last letter
  (12.00 KB counts as 12, 512 bytes as 512 TB), not by the byte count.</source>
        <translation>Wenn eingeschaltet, verhält sich die Liste wie früher:
- Nach dem Sortieren einer Spalte nehmen Befehle (Speichern, Entfernen, die Werkzeuge)
  die Nummern der ausgewählten Zeilen in Importreihenfolge, wirken also unter Umständen
  auf andere Dateien als die markierten.
- Die Spalte Größe sortiert nach der Zahl in ihrem Text vor dem letzten Buchstaben der Einheit
  (12.00 KB zählt als 12, 512 bytes als 512 TB), nicht nach der Anzahl der Bytes.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source> OK </source>
        <translation> OK </translation>
    </message>
    <message>
        <source>Upper left corner</source>
        <translation>Ecke oben links</translation>
    </message>
    <message>
        <source>Upper right corner</source>
        <translation>Ecke oben rechts</translation>
    </message>
    <message>
        <source>Lower left corner</source>
        <translation>Ecke unten links</translation>
    </message>
    <message>
        <source>Lower right corner</source>
        <translation>Ecke unten rechts</translation>
    </message>
    <message>
        <source>The folder the edited copies are written to</source>
        <translation>Der Ordner, in den die bearbeiteten Kopien geschrieben werden</translation>
    </message>
    <message>
        <source>Choose another folder for the edited copies</source>
        <translation>Einen anderen Ordner für die bearbeiteten Kopien wählen</translation>
    </message>
    <message>
        <source>Choose the font of the date stamp</source>
        <translation>Die Schrift des Datumsstempels wählen</translation>
    </message>
    <message>
        <source>The corner of the picture the date stamp goes in</source>
        <translation>Die Bildecke, in die der Datumsstempel kommt</translation>
    </message>
    <message>
        <source>How the date stamp writes the date</source>
        <translation>Wie der Datumsstempel das Datum schreibt</translation>
    </message>
    <message>
        <source>Close without keeping the changes</source>
        <translation>Schließen, ohne die Änderungen zu behalten</translation>
    </message>
    <message>
        <source>Keep the changes</source>
        <translation>Die Änderungen übernehmen</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1, as %2</source>
        <translation>%1, als %2</translation>
    </message>
</context>
<context>
    <name>VideoMetaView</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Director</source>
        <translation>Regie</translation>
    </message>
    <message>
        <source>Performer</source>
        <translation>Darsteller</translation>
    </message>
    <message>
        <source>Producer</source>
        <translation>Produzent</translation>
    </message>
    <message>
        <source>Publisher</source>
        <translation>Verlag</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Stichwörter</translation>
    </message>
    <message>
        <source>Record Date</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>Created Date</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breitengrad</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Längengrad</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Artwork…</source>
        <translation>Cover…</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Save Changes</source>
        <translation>Änderungen speichern</translation>
    </message>
    <message>
        <source>All Tags</source>
        <translation>Alle Tags</translation>
    </message>
    <message>
        <source>This file has no metadata items.</source>
        <translation>Diese Datei hat keine Metadaten.</translation>
    </message>
    <message>
        <source>Choose a picture for the artwork</source>
        <translation>Ein Bild als Cover wählen</translation>
    </message>
    <message>
        <source>Pictures (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)</source>
        <translation>Bilder (*.jpg *.jpeg *.png *.tif *.tiff *.bmp *.webp)</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play or pause the movie</source>
        <translation>Film abspielen oder anhalten</translation>
    </message>
    <message>
        <source>Position in the movie</source>
        <translation>Position im Film</translation>
    </message>
    <message>
        <source>Choose a new picture for the artwork</source>
        <translation>Ein neues Bild als Cover wählen</translation>
    </message>
    <message>
        <source>Write the edited fields into a copy of the selected videos (Ctrl+S)</source>
        <translation>Die bearbeiteten Felder in eine Kopie der ausgewählten Videos schreiben (Strg+S)</translation>
    </message>
    <message>
        <source>%1: edit, then Save Changes</source>
        <translation>%1: bearbeiten, dann „Änderungen speichern“</translation>
    </message>
</context>
<context>
    <name>VideoTools</name>
    <message>
        <source>5 pics per second</source>
        <translation>5 Bilder pro Sekunde</translation>
    </message>
    <message>
        <source>1 picture per second</source>
        <translation>1 Bild pro Sekunde</translation>
    </message>
    <message>
        <source>1 picture every 5 seconds</source>
        <translation>1 Bild alle 5 Sekunden</translation>
    </message>
    <message>
        <source>1 picture every 10 seconds</source>
        <translation>1 Bild alle 10 Sekunden</translation>
    </message>
    <message>
        <source>1 picture every 30 seconds</source>
        <translation>1 Bild alle 30 Sekunden</translation>
    </message>
    <message>
        <source>Convert to MP4</source>
        <translation>In MP4 umwandeln</translation>
    </message>
    <message>
        <source>Convert to MOV</source>
        <translation>In MOV umwandeln</translation>
    </message>
    <message>
        <source>Convert to M4V</source>
        <translation>In M4V umwandeln</translation>
    </message>
    <message>
        <source>High video quality</source>
        <translation>Hohe Videoqualität</translation>
    </message>
    <message>
        <source>Medium video quality</source>
        <translation>Mittlere Videoqualität</translation>
    </message>
    <message>
        <source>Low video quality</source>
        <translation>Niedrige Videoqualität</translation>
    </message>
</context>
<context>
    <name>WriteResult</name>
    <message>
        <source>Saved %1 as %2</source>
        <translation>%1 gespeichert als %2</translation>
    </message>
    <message>
        <source>%1 was skipped: %2</source>
        <translation>%1 wurde übersprungen: %2</translation>
    </message>
    <message>
        <source>Saving %1 was cancelled</source>
        <translation>Speichern von %1 wurde abgebrochen</translation>
    </message>
    <message>
        <source>%1 could not be saved: %2</source>
        <translation>%1 konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>; an unchanged copy was saved as %1</source>
        <translation>; eine unveränderte Kopie wurde als %1 gespeichert</translation>
    </message>
    <message>
        <source>the storage folder cannot be written</source>
        <translation>in den Speicherordner kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>die Datei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the copy cannot be written: %1</source>
        <translation>die Kopie kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the copy could not be written: %1</source>
        <translation>die Kopie konnte nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the file could not be read to its end: %1</source>
        <translation>die Datei konnte nicht bis zum Ende gelesen werden: %1</translation>
    </message>
    <message>
        <source>unknown codec</source>
        <translation>unbekannter Codec</translation>
    </message>
    <message>
        <source>the file is not audio that can be read</source>
        <translation>die Datei enthält kein lesbares Audio</translation>
    </message>
    <message>
        <source>the file holds no audio</source>
        <translation>die Datei enthält kein Audio</translation>
    </message>
    <message>
        <source>the audio could not be re-packed</source>
        <translation>das Audio konnte nicht neu verpackt werden</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>not an audio file</source>
        <translation>keine Audiodatei</translation>
    </message>
    <message>
        <source>the file is a damaged or unknown CAF file</source>
        <translation>die Datei ist eine beschädigte oder unbekannte CAF-Datei</translation>
    </message>
    <message>
        <source>a CAF file has no place for the %1</source>
        <translation>eine CAF-Datei bietet keinen Platz für: %1</translation>
    </message>
    <message>
        <source>the tags could not be written: %1</source>
        <translation>die Tags konnten nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the tags could not be written</source>
        <translation>die Tags konnten nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the file is not a WAV file</source>
        <translation>die Datei ist keine WAV-Datei</translation>
    </message>
    <message>
        <source>the WAV file cannot be read</source>
        <translation>die WAV-Datei kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>the tags could not be written into the copy</source>
        <translation>die Tags konnten nicht in die Kopie geschrieben werden</translation>
    </message>
    <message>
        <source>the file is not a readable FLAC file</source>
        <translation>die Datei ist keine lesbare FLAC-Datei</translation>
    </message>
    <message>
        <source>the new picture could not be prepared</source>
        <translation>das neue Bild konnte nicht vorbereitet werden</translation>
    </message>
    <message>
        <source>the new name would be empty</source>
        <translation>der neue Name wäre leer</translation>
    </message>
    <message>
        <source>%1 is no longer there</source>
        <translation>%1 ist nicht mehr vorhanden</translation>
    </message>
    <message>
        <source>not a media file</source>
        <translation>keine Mediendatei</translation>
    </message>
    <message>
        <source>the property list could not be made</source>
        <translation>die Eigenschaftsliste konnte nicht erstellt werden</translation>
    </message>
    <message>
        <source>not a photo</source>
        <translation>kein Foto</translation>
    </message>
    <message>
        <source>the file is not a property list</source>
        <translation>die Datei ist keine Eigenschaftsliste</translation>
    </message>
    <message>
        <source>the file is too large for a property list</source>
        <translation>die Datei ist zu groß für eine Eigenschaftsliste</translation>
    </message>
    <message>
        <source>the storage folder cannot be written: %1</source>
        <translation>in den Speicherordner kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the new file could not be put in place: %1</source>
        <translation>die neue Datei konnte nicht an ihren Platz gebracht werden: %1</translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the file or folder no longer exists</source>
        <translation>die Datei oder der Ordner existiert nicht mehr</translation>
    </message>
    <message>
        <source>the disk reported a read or write error</source>
        <translation>der Datenträger meldete einen Lese- oder Schreibfehler</translation>
    </message>
    <message>
        <source>the file is too large for the disk&apos;s file system</source>
        <translation>die Datei ist zu groß für das Dateisystem des Datenträgers</translation>
    </message>
    <message>
        <source>the file name is too long</source>
        <translation>der Dateiname ist zu lang</translation>
    </message>
    <message>
        <source>the network disk is not reachable</source>
        <translation>das Netzlaufwerk ist nicht erreichbar</translation>
    </message>
    <message>
        <source>another file of this batch was already saved as %1</source>
        <translation>eine andere Datei dieses Durchgangs wurde bereits als %1 gespeichert</translation>
    </message>
    <message>
        <source>%1 in the storage folder is the file being saved itself</source>
        <translation>%1 im Speicherordner ist die zu speichernde Datei selbst</translation>
    </message>
    <message>
        <source>a file named %1 that Tagsmith did not write is already there</source>
        <translation>dort liegt bereits eine Datei %1, die nicht von Tagsmith stammt</translation>
    </message>
    <message>
        <source>, so the new file was saved as %1</source>
        <translation>, daher wurde die neue Datei als %1 gespeichert</translation>
    </message>
    <message>
        <source>no free name was found for %1 in the storage folder</source>
        <translation>im Speicherordner wurde kein freier Name für %1 gefunden</translation>
    </message>
    <message>
        <source>the new file could not be written: %1</source>
        <translation>die neue Datei konnte nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>the file cannot be read as a movie</source>
        <translation>die Datei kann nicht als Film gelesen werden</translation>
    </message>
    <message>
        <source>the output file type is not available</source>
        <translation>der Ausgabedateityp ist nicht verfügbar</translation>
    </message>
    <message>
        <source>the file has no video</source>
        <translation>die Datei hat kein Video</translation>
    </message>
    <message>
        <source>the file has no sound</source>
        <translation>die Datei hat keinen Ton</translation>
    </message>
    <message>
        <source>the file has no media</source>
        <translation>die Datei enthält keine Medien</translation>
    </message>
    <message>
        <source>the new file cannot be created</source>
        <translation>die neue Datei kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>nicht genügend Arbeitsspeicher</translation>
    </message>
    <message>
        <source>the picture or sound could not be converted</source>
        <translation>Bild oder Ton konnten nicht umgewandelt werden</translation>
    </message>
    <message>
        <source>the H.264 encoder is not installed</source>
        <translation>der H.264-Encoder ist nicht installiert</translation>
    </message>
    <message>
        <source>the video could not be encoded</source>
        <translation>das Video konnte nicht kodiert werden</translation>
    </message>
    <message>
        <source>the AAC encoder is not installed</source>
        <translation>der AAC-Encoder ist nicht installiert</translation>
    </message>
    <message>
        <source>the sound could not be encoded</source>
        <translation>der Ton konnte nicht kodiert werden</translation>
    </message>
    <message>
        <source>the movie could not be encoded</source>
        <translation>der Film konnte nicht kodiert werden</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>the file is not a video</source>
        <translation>die Datei ist kein Video</translation>
    </message>
    <message>
        <source>the file has no duration</source>
        <translation>die Datei hat keine Dauer</translation>
    </message>
    <message>
        <source>no picture could be taken from the file</source>
        <translation>aus der Datei konnte kein Bild entnommen werden</translation>
    </message>
    <message>
        <source>the write ended in an unknown state</source>
        <translation>das Schreiben endete in einem unbekannten Zustand</translation>
    </message>
    <message>
        <source>the write did not start</source>
        <translation>das Schreiben hat nicht begonnen</translation>
    </message>
    <message>
        <source>%1 audio (%2) cannot be stored in an MPEG-4 audio file</source>
        <translation>%1-Audio (%2) kann nicht in einer MPEG-4-Audiodatei gespeichert werden</translation>
    </message>
    <message>
        <source>%1 audio (%2) cannot be stored in a CAF file</source>
        <translation>%1-Audio (%2) kann nicht in einer CAF-Datei gespeichert werden</translation>
    </message>
    <message>
        <source>this file type cannot hold %1 video</source>
        <translation>dieser Dateityp kann kein %1-Video aufnehmen</translation>
    </message>
    <message>
        <source>this file type cannot hold %1 sound</source>
        <translation>dieser Dateityp kann keinen %1-Ton aufnehmen</translation>
    </message>
    <message>
        <source>its video cannot be decoded</source>
        <translation>ihr Video kann nicht dekodiert werden</translation>
    </message>
    <message>
        <source>its sound cannot be decoded</source>
        <translation>ihr Ton kann nicht dekodiert werden</translation>
    </message>
    <message>
        <source>the property list holds no dictionary of entries</source>
        <translation>die Eigenschaftsliste enthält kein Verzeichnis von Einträgen</translation>
    </message>
    <message>
        <source>the property list does not have the shape of %1</source>
        <translation>die Eigenschaftsliste hat nicht den Aufbau von %1</translation>
    </message>
    <message>
        <source>the property list is not a template</source>
        <translation>die Eigenschaftsliste ist keine Vorlage</translation>
    </message>
    <message>
        <source>the property list is not a metadata.plist</source>
        <translation>die Eigenschaftsliste ist keine metadata.plist</translation>
    </message>
    <message>
        <source>no entry named %1 in the list</source>
        <translation>kein Eintrag namens %1 in der Liste</translation>
    </message>
    <message>
        <source>neither a video nor an audio file</source>
        <translation>weder ein Video noch eine Audiodatei</translation>
    </message>
    <message>
        <source>photo dates are changed in the photo date window</source>
        <translation>Fotodaten werden im Fenster „Fotodatum ändern“ geändert</translation>
    </message>
    <message>
        <source>the shifted date is not a calendar date</source>
        <translation>das verschobene Datum ist kein Kalenderdatum</translation>
    </message>
    <message>
        <source>name taken</source>
        <translation>Name vergeben</translation>
    </message>
    <message>
        <source>%1 exists already</source>
        <translation>%1 existiert bereits</translation>
    </message>
    <message>
        <source>the file&apos;s dates cannot be read</source>
        <translation>die Daten der Datei können nicht gelesen werden</translation>
    </message>
    <message>
        <source>the file has no recorded date</source>
        <translation>die Datei hat kein Aufnahmedatum</translation>
    </message>
    <message>
        <source>Linux cannot set a file&apos;s creation date</source>
        <translation>Linux kann das Erstellungsdatum einer Datei nicht setzen</translation>
    </message>
    <message>
        <source>the file has no artwork</source>
        <translation>die Datei hat kein Cover</translation>
    </message>
    <message>
        <source>the new file could not be written</source>
        <translation>die neue Datei konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the file has no title to name the copy after</source>
        <translation>die Datei hat keinen Titel, nach dem die Kopie benannt werden könnte</translation>
    </message>
    <message>
        <source>the file has no video; the batch ends here</source>
        <translation>die Datei hat kein Video; der Durchgang endet hier</translation>
    </message>
    <message>
        <source>the file is damaged or incomplete, so it cannot be rewritten safely</source>
        <translation>die Datei ist beschädigt oder unvollständig und kann daher nicht sicher neu geschrieben werden</translation>
    </message>
    <message>
        <source>the file is a fragmented movie, which cannot be rewritten safely</source>
        <translation>die Datei ist ein fragmentierter Film, der nicht sicher neu geschrieben werden kann</translation>
    </message>
    <message>
        <source>the file&apos;s movie header is compressed, which cannot be rewritten safely</source>
        <translation>der Filmkopf der Datei ist komprimiert und kann nicht sicher neu geschrieben werden</translation>
    </message>
    <message>
        <source>the file refers to media stored in other files, which cannot be rewritten safely</source>
        <translation>die Datei verweist auf Medien in anderen Dateien und kann nicht sicher neu geschrieben werden</translation>
    </message>
    <message>
        <source>a .%1 file cannot be compressed (only MP4, MOV and M4V files can)</source>
        <translation>eine .%1-Datei kann nicht komprimiert werden (nur MP4-, MOV- und M4V-Dateien)</translation>
    </message>
    <message>
        <source>the picture could not be written</source>
        <translation>das Bild konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the file could not be replaced: %1</source>
        <translation>die Datei konnte nicht ersetzt werden: %1</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Edits the metadata of videos, audio files and photos.</source>
        <translation>Bearbeitet die Metadaten von Videos, Audiodateien und Fotos.</translation>
    </message>
    <message>
        <source>Files and folders to add to the list.</source>
        <translation>Dateien und Ordner, die der Liste hinzugefügt werden.</translation>
    </message>
</context>
</TS>
