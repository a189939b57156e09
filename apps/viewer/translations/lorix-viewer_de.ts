<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CheckResults</name>
    <message>
        <source>The document only describes this file and does not hold its content, so there is nothing to check.</source>
        <translation>Das Dokument beschreibt diese Datei nur und enthält sie nicht; es gibt also nichts zu prüfen.</translation>
    </message>
    <message>
        <source>Not checked yet.</source>
        <translation>Noch nicht geprüft.</translation>
    </message>
    <message>
        <source>One of its files is damaged.</source>
        <translation>Eine seiner Dateien ist beschädigt.</translation>
    </message>
    <message>
        <source>%1 of its files are damaged.</source>
        <translation>%1 seiner Dateien sind beschädigt.</translation>
    </message>
    <message>
        <source>The content of these files is what was recorded for them.</source>
        <translation>Der Inhalt dieser Dateien ist so, wie er aufgezeichnet wurde.</translation>
    </message>
    <message>
        <source>valid</source>
        <translation>gültig</translation>
    </message>
    <message>
        <source>damaged</source>
        <translation>beschädigt</translation>
    </message>
    <message>
        <source>not checked</source>
        <translation>nicht geprüft</translation>
    </message>
</context>
<context>
    <name>Checker</name>
    <message>
        <source>the step before “%1” is not the one that was there when that step was added. A step may have been exchanged or taken out.</source>
        <translation>Der Schritt vor „%1“ ist nicht der, der dort stand, als dieser Schritt hinzukam. Vielleicht wurde ein Schritt ausgetauscht oder herausgenommen.</translation>
    </message>
    <message>
        <source>the history is broken off: an older step should come before “%1” but cannot be found.</source>
        <translation>Die Geschichte bricht ab: Vor „%1“ sollte ein älterer Schritt stehen, ist aber nicht zu finden.</translation>
    </message>
    <message>
        <source>the history leads back to itself at “%1”, so that older steps are out of reach.</source>
        <translation>Die Geschichte führt bei „%1“ auf sich selbst zurück, sodass ältere Schritte nicht erreichbar sind.</translation>
    </message>
    <message>
        <source>there are remains of a step that cannot be read any more.</source>
        <translation>Es gibt Überreste eines Schritts, der nicht mehr lesbar ist.</translation>
    </message>
    <message>
        <source>something was added behind the newest step. The steps are untouched, but no step says where that comes from.</source>
        <translation>Hinter dem neuesten Schritt wurde etwas angefügt. Die Schritte sind unverändert, aber keiner sagt, woher das kommt.</translation>
    </message>
    <message>
        <source>there are files that belong to no step.</source>
        <translation>Es gibt Dateien, die zu keinem Schritt gehören.</translation>
    </message>
    <message>
        <source>Part of this step is missing: the document is shorter than it was when the step was added. It may have been cut off on its way to you.</source>
        <translation>Ein Teil dieses Schritts fehlt: Das Dokument ist kürzer als zu der Zeit, als der Schritt hinzukam. Vielleicht wurde es auf dem Weg zu Ihnen abgeschnitten.</translation>
    </message>
    <message>
        <source>No fingerprint was recorded for this step, so nothing proves that it is unchanged.</source>
        <translation>Für diesen Schritt wurde kein Fingerabdruck aufgezeichnet; nichts beweist also, dass er unverändert ist.</translation>
    </message>
    <message>
        <source>Something in this step was changed after it was added: its bytes no longer have the fingerprint that was recorded.</source>
        <translation>In diesem Schritt wurde nachträglich etwas verändert: Seine Bytes haben nicht mehr den aufgezeichneten Fingerabdruck.</translation>
    </message>
    <message>
        <source>Part of this file is missing: the document ends before the file does. It may have been cut off on its way to you.</source>
        <translation>Ein Teil dieser Datei fehlt: Das Dokument endet vor der Datei. Vielleicht wurde es auf dem Weg zu Ihnen abgeschnitten.</translation>
    </message>
    <message>
        <source>This file is packed in a way that this program does not know.</source>
        <translation>Diese Datei ist auf eine Weise gepackt, die dieses Programm nicht kennt.</translation>
    </message>
    <message>
        <source>No fingerprint was recorded for this file, so nothing proves that it is unchanged.</source>
        <translation>Für diese Datei wurde kein Fingerabdruck aufgezeichnet; nichts beweist also, dass sie unverändert ist.</translation>
    </message>
    <message>
        <source>The content was changed after the file was added: it no longer has the fingerprint that was recorded.</source>
        <translation>Der Inhalt wurde verändert, nachdem die Datei hinzukam: Er hat nicht mehr den aufgezeichneten Fingerabdruck.</translation>
    </message>
    <message>
        <source>Unchanged since this step was added.</source>
        <translation>Unverändert, seit dieser Schritt hinzukam.</translation>
    </message>
    <message>
        <source>Unchanged since this file was added.</source>
        <translation>Unverändert, seit diese Datei hinzukam.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The history inside “%1” cannot be shown, and was not checked.</source>
        <translation>Die Geschichte in „%1“ kann nicht gezeigt werden und wurde nicht geprüft.</translation>
    </message>
</context>
<context>
    <name>Comparison</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>By whom</source>
        <translation>Von wem</translation>
    </message>
    <message>
        <source>On which computer</source>
        <translation>Auf welchem Rechner</translation>
    </message>
    <message>
        <source>With which tool</source>
        <translation>Mit welchem Werkzeug</translation>
    </message>
    <message>
        <source>Tool&apos;s place</source>
        <translation>Ort des Werkzeugs</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Anmerkung</translation>
    </message>
    <message>
        <source>Recorded by</source>
        <translation>Aufgezeichnet von</translation>
    </message>
    <message>
        <source>Original document</source>
        <translation>Ursprüngliches Dokument</translation>
    </message>
    <message>
        <source>PDF title</source>
        <translation>PDF-Titel</translation>
    </message>
    <message>
        <source>PDF author</source>
        <translation>PDF-Verfasser</translation>
    </message>
    <message>
        <source>PDF subject</source>
        <translation>PDF-Thema</translation>
    </message>
    <message>
        <source>PDF keywords</source>
        <translation>PDF-Stichwörter</translation>
    </message>
    <message>
        <source>PDF producer</source>
        <translation>PDF erzeugt von</translation>
    </message>
    <message>
        <source>PDF creator</source>
        <translation>PDF erstellt mit</translation>
    </message>
    <message>
        <source>%1 “%2”</source>
        <translation>%1 „%2“</translation>
    </message>
    <message>
        <source>Attribute “%1”</source>
        <translation>Merkmal „%1“</translation>
    </message>
    <message>
        <source>only on the left</source>
        <translation>nur links</translation>
    </message>
    <message>
        <source>only on the right</source>
        <translation>nur rechts</translation>
    </message>
    <message>
        <source>moved to another place in the history</source>
        <translation>an andere Stelle der Geschichte gerückt</translation>
    </message>
    <message>
        <source>differs in: %1</source>
        <translation>verschieden in: %1</translation>
    </message>
    <message>
        <source>same</source>
        <translation>gleich</translation>
    </message>
</context>
<context>
    <name>Details</name>
    <message>
        <source>… %1 characters in all</source>
        <translation>… insgesamt %1 Zeichen</translation>
    </message>
    <message>
        <source>there are more</source>
        <translation>es gibt weitere</translation>
    </message>
    <message>
        <source>Attributes given by the author</source>
        <translation>Merkmale, die der Verfasser angab</translation>
    </message>
    <message>
        <source>not embedded</source>
        <translation>nicht eingebettet</translation>
    </message>
    <message>
        <source>has a history of its own</source>
        <translation>hat eine eigene Geschichte</translation>
    </message>
    <message>
        <source>… and %1 more; the outline lists them all</source>
        <translation>… und %1 weitere; die Gliederung führt alle auf</translation>
    </message>
    <message>
        <source>These files are in the document, but no step says where they come from.</source>
        <translation>Diese Dateien stehen im Dokument, aber kein Schritt sagt, woher sie kommen.</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>By whom</source>
        <translation>Von wem</translation>
    </message>
    <message>
        <source>On which computer</source>
        <translation>Auf welchem Rechner</translation>
    </message>
    <message>
        <source>With which tool</source>
        <translation>Mit welchem Werkzeug</translation>
    </message>
    <message>
        <source>Tool&apos;s place</source>
        <translation>Ort des Werkzeugs</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Anmerkung</translation>
    </message>
    <message>
        <source>Recorded by</source>
        <translation>Aufgezeichnet von</translation>
    </message>
    <message>
        <source>Original document</source>
        <translation>Ursprüngliches Dokument</translation>
    </message>
    <message>
        <source>PDF title</source>
        <translation>PDF-Titel</translation>
    </message>
    <message>
        <source>PDF author</source>
        <translation>PDF-Verfasser</translation>
    </message>
    <message>
        <source>PDF subject</source>
        <translation>PDF-Thema</translation>
    </message>
    <message>
        <source>PDF keywords</source>
        <translation>PDF-Stichwörter</translation>
    </message>
    <message>
        <source>PDF producer</source>
        <translation>PDF erzeugt von</translation>
    </message>
    <message>
        <source>PDF creator</source>
        <translation>PDF erstellt mit</translation>
    </message>
    <message>
        <source>Kept in</source>
        <translation>Enthalten in</translation>
    </message>
    <message>
        <source>Inputs</source>
        <translation>Eingaben</translation>
    </message>
    <message>
        <source>Outputs</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Other files</source>
        <translation>Andere Dateien</translation>
    </message>
    <message>
        <source>preview picture</source>
        <translation>Vorschaubild</translation>
    </message>
    <message>
        <source>thumbnail</source>
        <translation>Miniaturbild</translation>
    </message>
    <message>
        <source>What it is</source>
        <translation>Was es ist</translation>
    </message>
    <message>
        <source>The description of its step, for programs</source>
        <translation>Die Beschreibung des Schritts, für Programme</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Size in the document</source>
        <translation>Größe im Dokument</translation>
    </message>
    <message>
        <source>packed</source>
        <translation>gepackt</translation>
    </message>
    <message>
        <source>Last changed</source>
        <translation>Zuletzt geändert</translation>
    </message>
    <message>
        <source>Was kept in</source>
        <translation>Lag in</translation>
    </message>
    <message>
        <source>Used as</source>
        <translation>Verwendet als</translation>
    </message>
    <message>
        <source>Fingerprint (MD5)</source>
        <translation>Fingerabdruck (MD5)</translation>
    </message>
    <message>
        <source>Fingerprint when packed</source>
        <translation>Fingerabdruck gepackt</translation>
    </message>
    <message>
        <source>This file has a history of its own:</source>
        <translation>Diese Datei hat eine eigene Geschichte:</translation>
    </message>
    <message>
        <source>go to its newest step</source>
        <translation>zum neuesten Schritt</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Files inside</source>
        <translation>Dateien darin</translation>
    </message>
    <message>
        <source>Documents inside</source>
        <translation>Dokumente darin</translation>
    </message>
    <message>
        <source>The document is prepared for a history, but no step has been recorded yet.</source>
        <translation>Das Dokument ist für eine Geschichte vorbereitet, aber es wurde noch kein Schritt aufgezeichnet.</translation>
    </message>
    <message>
        <source>Choose a step or a file to see what is known about it.</source>
        <translation>Wählen Sie einen Schritt oder eine Datei, um zu sehen, was darüber bekannt ist.</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>There is no such file. It may have been moved, renamed or deleted.</source>
        <translation>Diese Datei gibt es nicht. Vielleicht wurde sie verschoben, umbenannt oder gelöscht.</translation>
    </message>
    <message>
        <source>This is a folder. Open one of the documents in it.</source>
        <translation>Das ist ein Ordner. Öffnen Sie eines der Dokumente darin.</translation>
    </message>
    <message>
        <source>This is no ordinary file.</source>
        <translation>Das ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>It cannot be read (%1). Ask its owner for the right to read it, or copy it to a folder of your own.</source>
        <translation>Es kann nicht gelesen werden (%1). Bitten Sie den Besitzer um das Leserecht, oder kopieren Sie es in einen eigenen Ordner.</translation>
    </message>
    <message>
        <source>It is larger than 2 GiB; documents with a history never are.</source>
        <translation>Es ist größer als 2 GiB; das sind Dokumente mit einer Geschichte nie.</translation>
    </message>
    <message>
        <source>It carries no history. It may be an ordinary document, or a program that does not know about histories has saved it anew and dropped what stood at its end. Ask the sender for the original file.</source>
        <translation>Es trägt keine Geschichte. Es kann ein gewöhnliches Dokument sein, oder ein Programm, das nichts von Geschichten weiß, hat es neu gespeichert und weggelassen, was am Ende stand. Bitten Sie den Absender um die ursprüngliche Datei.</translation>
    </message>
    <message>
        <source>Files that belong to no step</source>
        <translation>Dateien, die zu keinem Schritt gehören</translation>
    </message>
    <message>
        <source>Step without a title</source>
        <translation>Schritt ohne Titel</translation>
    </message>
    <message>
        <source>File without a name</source>
        <translation>Datei ohne Namen</translation>
    </message>
</context>
<context>
    <name>QueryWords</name>
    <message>
        <source>“%1” cannot be understood. A text stands in quotes, as in s:tool == &apos;python&apos;.</source>
        <translation>„%1“ ist nicht verständlich. Ein Text steht in Anführungszeichen, wie in s:tool == &apos;python&apos;.</translation>
    </message>
    <message>
        <source>“%1” cannot stand here: a text, an attribute such as s:tool or an opening bracket is expected.</source>
        <translation>„%1“ kann hier nicht stehen: Erwartet wird ein Text, ein Merkmal wie s:tool oder eine öffnende Klammer.</translation>
    </message>
    <message>
        <source>There is one closing bracket too many.</source>
        <translation>Es gibt eine schließende Klammer zu viel.</translation>
    </message>
    <message>
        <source>The query is empty.</source>
        <translation>Die Anfrage ist leer.</translation>
    </message>
    <message>
        <source>The query is not complete: something must follow “%1”.</source>
        <translation>Die Anfrage ist nicht vollständig: Auf „%1“ muss etwas folgen.</translation>
    </message>
    <message>
        <source>There is no attribute “%1”. Ctrl+Space shows which there are.</source>
        <translation>Ein Merkmal „%1“ gibt es nicht. Strg+Leertaste zeigt, welche es gibt.</translation>
    </message>
    <message>
        <source>“%1” stands between two conditions, such as s:tool == &apos;python&apos;.</source>
        <translation>„%1“ steht zwischen zwei Bedingungen wie s:tool == &apos;python&apos;.</translation>
    </message>
    <message>
        <source>“%1” stands between two texts, as in s:title %contains &apos;report&apos;.</source>
        <translation>„%1“ steht zwischen zwei Texten, wie in s:title %contains &apos;report&apos;.</translation>
    </message>
    <message>
        <source>“%1” stands between two numbers.</source>
        <translation>„%1“ steht zwischen zwei Zahlen.</translation>
    </message>
    <message>
        <source>“%1” compares two numbers, or two dates.</source>
        <translation>„%1“ vergleicht zwei Zahlen oder zwei Zeitpunkte.</translation>
    </message>
    <message>
        <source>“%1” stands before a condition, such as s:tool == &apos;python&apos;.</source>
        <translation>„%1“ steht vor einer Bedingung wie s:tool == &apos;python&apos;.</translation>
    </message>
    <message>
        <source>This is no condition. Say what must hold, as in s:tool == &apos;python&apos;.</source>
        <translation>Das ist keine Bedingung. Sagen Sie, was gelten muss, wie in s:tool == &apos;python&apos;.</translation>
    </message>
    <message>
        <source>The query is too complicated. Use fewer “&amp;&amp;” within “||”.</source>
        <translation>Die Anfrage ist zu verwickelt. Verwenden Sie weniger „&amp;&amp;“ innerhalb von „||“.</translation>
    </message>
</context>
<context>
    <name>StepItem</name>
    <message>
        <source>  (has a history)</source>
        <translation>  (mit Geschichte)</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… und %1 weitere</translation>
    </message>
    <message>
        <source>match: %1</source>
        <translation>Treffer: %1</translation>
    </message>
</context>
<context>
    <name>TargetWords</name>
    <message>
        <source>the target folder is a file. Choose a folder</source>
        <translation>das Ziel ist eine Datei. Wählen Sie einen Ordner</translation>
    </message>
    <message>
        <source>a folder on the way is a link that may lead elsewhere; nothing is written through links. Choose another folder</source>
        <translation>ein Ordner auf dem Weg ist eine Verknüpfung, die anderswohin führen kann; durch solche wird nichts geschrieben. Wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>there is a file where a folder is needed. Choose another folder</source>
        <translation>wo ein Ordner nötig ist, steht eine Datei. Wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>there is a folder of that name. Choose another folder</source>
        <translation>es gibt einen Ordner dieses Namens. Wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>a file of that name has come up in the meantime; it was left alone</source>
        <translation>inzwischen ist eine Datei dieses Namens entstanden; sie blieb, wie sie ist</translation>
    </message>
    <message>
        <source>the folder cannot be made (%1). Choose another one</source>
        <translation>der Ordner kann nicht angelegt werden (%1). Wählen Sie einen anderen</translation>
    </message>
    <message>
        <source>a folder for it cannot be made (%1)</source>
        <translation>ein Ordner dafür kann nicht angelegt werden (%1)</translation>
    </message>
    <message>
        <source>it cannot be written (%1). Make room, or choose a folder that you may write to</source>
        <translation>sie kann nicht geschrieben werden (%1). Schaffen Sie Platz, oder wählen Sie einen Ordner, in den Sie schreiben dürfen</translation>
    </message>
    <message>
        <source>it cannot be given its name (%1)</source>
        <translation>sie kann ihren Namen nicht bekommen (%1)</translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>Input</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>in</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>out</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>file</source>
        <translation>dat</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>%1 (%2 bytes)</source>
        <translation>%1 (%2 Bytes)</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::BusyBar</name>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Stop the work that is going on</source>
        <translation>Die laufende Arbeit anhalten</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::ComparePage</name>
    <message>
        <source>Choose the other document …</source>
        <translation>Anderes Dokument wählen …</translation>
    </message>
    <message>
        <source>Better match</source>
        <translation>Bessere Zuordnung</translation>
    </message>
    <message>
        <source>Next best match</source>
        <translation>Nächstbeste Zuordnung</translation>
    </message>
    <message>
        <source>Only differences</source>
        <translation>Nur Unterschiede</translation>
    </message>
    <message>
        <source>This document</source>
        <translation>Dieses Dokument</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Other document</source>
        <translation>Anderes Dokument</translation>
    </message>
    <message>
        <source>Steps of both documents</source>
        <translation>Schritte beider Dokumente</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Fields of the selected steps</source>
        <translation>Felder der gewählten Schritte</translation>
    </message>
    <message>
        <source>“%1” cannot be compared. %2</source>
        <translation>„%1“ kann nicht verglichen werden. %2</translation>
    </message>
    <message>
        <source>Result of the comparison</source>
        <translation>Ergebnis des Vergleichs</translation>
    </message>
    <message>
        <source>Another way to pair the steps, the next in how well it fits</source>
        <translation>Eine andere Zuordnung der Schritte, die nächste danach, wie gut sie passt</translation>
    </message>
    <message>
        <source>Choose another document to see which steps both have in common, and where they differ.</source>
        <translation>Wählen Sie ein anderes Dokument, um zu sehen, welche Schritte beide gemeinsam haben und worin sie sich unterscheiden.</translation>
    </message>
    <message>
        <source>Reading “%1” …</source>
        <translation>„%1“ wird gelesen …</translation>
    </message>
    <message>
        <source>Comparing …</source>
        <translation>Wird verglichen …</translation>
    </message>
    <message>
        <source>The documents differ so much that there may be a better match.</source>
        <translation>Die Dokumente sind so verschieden, dass es eine bessere Zuordnung geben kann.</translation>
    </message>
    <message>
        <source>There is no other match.</source>
        <translation>Es gibt keine andere Zuordnung.</translation>
    </message>
    <message>
        <source>Best match</source>
        <translation>Beste Zuordnung</translation>
    </message>
    <message>
        <source>Match number %1</source>
        <translation>Zuordnung Nummer %1</translation>
    </message>
    <message>
        <source>%1 steps are the same, %2 differ, %3 have moved, %4 are only on the left, %5 only on the right.</source>
        <translation>%1 Schritte sind gleich, %2 verschieden, %3 verrückt, %4 stehen nur links, %5 nur rechts.</translation>
    </message>
    <message>
        <source>both documents have the same history (%1 steps).</source>
        <translation>Beide Dokumente haben dieselbe Geschichte (%1 Schritte).</translation>
    </message>
    <message>
        <source>differs</source>
        <translation>verschieden</translation>
    </message>
    <message>
        <source>same</source>
        <translation>gleich</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::DetailsPanel</name>
    <message>
        <source>Extract this file …</source>
        <translation>Diese Datei entnehmen …</translation>
    </message>
    <message>
        <source>Details of the selected step or file</source>
        <translation>Einzelheiten zum gewählten Schritt oder zur gewählten Datei</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::ExtractDialog</name>
    <message>
        <source>Browse …</source>
        <translation>Durchsuchen …</translation>
    </message>
    <message>
        <source>Also the files inside the documents that are inside</source>
        <translation>Auch die Dateien in den enthaltenen Dokumenten</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Entnehmen</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Ordner zeigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Extract files</source>
        <translation>Dateien entnehmen</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Folder to write to</source>
        <translation>Zielordner</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>&amp;Folder:</source>
        <translation>&amp;Ordner:</translation>
    </message>
    <message>
        <source>&amp;Keep both</source>
        <translation>&amp;Beide behalten</translation>
    </message>
    <message>
        <source>&amp;Skip these</source>
        <translation>Diese aus&amp;lassen</translation>
    </message>
    <message>
        <source>&amp;Replace them</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 files, %2</source>
        <translation>%1 Dateien, %2</translation>
    </message>
    <message>
        <source>The content of what you have selected is not in the document, so there is nothing to extract.</source>
        <translation>Was Sie gewählt haben, ist im Dokument nicht enthalten; es gibt also nichts zu entnehmen.</translation>
    </message>
    <message>
        <source>Extract to</source>
        <translation>Entnehmen nach</translation>
    </message>
    <message>
        <source>Choose the folder that the files shall go to.</source>
        <translation>Wählen Sie den Ordner, in den die Dateien sollen.</translation>
    </message>
    <message>
        <source>%1 of %2 files are in this folder already. What shall be done with them?</source>
        <translation>%1 von %2 Dateien sind schon in diesem Ordner. Was soll mit ihnen geschehen?</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>What has come of it</source>
        <translation>Was daraus geworden ist</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::Extractor</name>
    <message>
        <source>its content is larger than what was recorded</source>
        <translation>der Inhalt ist größer, als aufgezeichnet wurde</translation>
    </message>
    <message>
        <source>it is not wholly in the document, which may have been cut off</source>
        <translation>sie ist nicht ganz im Dokument, das vielleicht abgeschnitten wurde</translation>
    </message>
    <message>
        <source>it is packed in a way that this program does not know</source>
        <translation>sie ist auf eine Weise gepackt, die dieses Programm nicht kennt</translation>
    </message>
    <message>
        <source>its content in the document is damaged, so that it cannot be read</source>
        <translation>der Inhalt im Dokument ist beschädigt und nicht lesbar</translation>
    </message>
    <message>
        <source>the document was cut short while it was read</source>
        <translation>das Dokument wurde gekürzt, während es gelesen wurde</translation>
    </message>
    <message>
        <source>it was written, but is not what was recorded</source>
        <translation>geschrieben, entspricht aber nicht dem, was aufgezeichnet wurde</translation>
    </message>
    <message>
        <source>%1 of %2 files were extracted to %3</source>
        <translation>%1 von %2 Dateien wurden entnommen nach %3</translation>
    </message>
    <message>
        <source>%1 were skipped because they are there already.</source>
        <translation>%1 wurden ausgelassen, weil sie schon da sind.</translation>
    </message>
    <message>
        <source>%1 are missing because the work was stopped.</source>
        <translation>%1 fehlen, weil die Arbeit angehalten wurde.</translation>
    </message>
    <message>
        <source>… and %1 more with a problem</source>
        <translation>… und %1 weitere mit einem Problem</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::FindPanel</name>
    <message>
        <source>found</source>
        <translation>gefunden</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>About the query</source>
        <translation>Zur Anfrage</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>What the query has found</source>
        <translation>Was die Anfrage gefunden hat</translation>
    </message>
    <message>
        <source>Anything in which a word occurs</source>
        <translation>Alles, worin ein Wort vorkommt</translation>
    </message>
    <message>
        <source>Steps that were done with a tool</source>
        <translation>Schritte mit einem bestimmten Werkzeug</translation>
    </message>
    <message>
        <source>Files with a certain ending</source>
        <translation>Dateien mit einer bestimmten Endung</translation>
    </message>
    <message>
        <source>Large results</source>
        <translation>Große Ergebnisse</translation>
    </message>
    <message>
        <source>Steps of one person</source>
        <translation>Schritte einer Person</translation>
    </message>
    <message>
        <source>Whatever has an attribute of this name</source>
        <translation>Alles mit einem Merkmal dieses Namens</translation>
    </message>
    <message>
        <source>Steps, each with one of its inputs</source>
        <translation>Schritte, jeweils mit einer ihrer Eingaben</translation>
    </message>
    <message>
        <source>Return finds, Ctrl+Space completes. A plain word is looked for everywhere.</source>
        <translation>Die Eingabetaste sucht, Strg+Leertaste ergänzt. Ein einfaches Wort wird überall gesucht.</translation>
    </message>
    <message>
        <source>Looking …</source>
        <translation>Wird gesucht …</translation>
    </message>
    <message>
        <source>Nothing in this history matches.</source>
        <translation>Nichts in dieser Geschichte passt.</translation>
    </message>
    <message>
        <source>The first %1 matches; there are more.</source>
        <translation>Die ersten %1 Treffer; es gibt mehr.</translation>
    </message>
    <message>
        <source>One match.</source>
        <translation>Ein Treffer.</translation>
    </message>
    <message>
        <source>%1 matches.</source>
        <translation>%1 Treffer.</translation>
    </message>
    <message>
        <source>%1.  %2</source>
        <translation>%1.  %2</translation>
    </message>
    <message>
        <source>(the step itself)</source>
        <translation>(der Schritt selbst)</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::LogPane</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>What the program does is noted here.</source>
        <translation>Hier wird vermerkt, was das Programm tut.</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Forget all messages</source>
        <translation>Alle Meldungen vergessen</translation>
    </message>
    <message>
        <source>Error: </source>
        <translation>Fehler: </translation>
    </message>
    <message>
        <source>Warning: </source>
        <translation>Warnung: </translation>
    </message>
</context>
<context>
    <name>lorix::viewer::MainWindow</name>
    <message>
        <source>Outline of the history</source>
        <translation>Gliederung der Geschichte</translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation>&amp;Bild</translation>
    </message>
    <message>
        <source>&amp;Outline</source>
        <translation>&amp;Gliederung</translation>
    </message>
    <message>
        <source>&amp;Comparison</source>
        <translation>&amp;Vergleich</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>%1 steps so far</source>
        <translation>bisher %1 Schritte</translation>
    </message>
    <message>
        <source>There are new warnings or errors among the messages.</source>
        <translation>Unter den Meldungen sind neue Warnungen oder Fehler.</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>lorix viewer</source>
        <translation>lorix-Betrachter</translation>
    </message>
    <message>
        <source>%1 – lorix viewer</source>
        <translation>%1 – lorix-Betrachter</translation>
    </message>
    <message>
        <source>%1: %2 steps, %3 embedded files</source>
        <translation>%1: %2 Schritte, %3 eingebettete Dateien</translation>
    </message>
    <message>
        <source>“%1” cannot be opened. %2</source>
        <translation>„%1“ kann nicht geöffnet werden. %2</translation>
    </message>
    <message>
        <source>Open a document</source>
        <translation>Ein Dokument öffnen</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Prüfung</translation>
    </message>
    <message>
        <source>Checking %1</source>
        <translation>%1 wird geprüft</translation>
    </message>
    <message>
        <source>Stopped; nothing was opened.</source>
        <translation>Angehalten; nichts wurde geöffnet.</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About lorix viewer</source>
        <translation>Ü&amp;ber den lorix-Betrachter</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open …</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open a document and look at its history</source>
        <translation>Ein Dokument öffnen und seine Geschichte ansehen</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Open a&amp;gain</source>
        <translation>E&amp;rneut öffnen</translation>
    </message>
    <message>
        <source>Read the document anew</source>
        <translation>Das Dokument neu lesen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Document</source>
        <translation>D&amp;okument</translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>Check that every step and every file is unchanged</source>
        <translation>Prüfen, ob jeder Schritt und jede Datei unverändert ist</translation>
    </message>
    <message>
        <source>Co&amp;mpare with …</source>
        <translation>&amp;Vergleichen mit …</translation>
    </message>
    <message>
        <source>Compare the history with that of another document</source>
        <translation>Die Geschichte mit der eines anderen Dokuments vergleichen</translation>
    </message>
    <message>
        <source>&amp;Extract …</source>
        <translation>&amp;Entnehmen …</translation>
    </message>
    <message>
        <source>Save the selected files, or all files of the selected step</source>
        <translation>Die gewählten Dateien oder alle Dateien des gewählten Schritts speichern</translation>
    </message>
    <message>
        <source>Extract e&amp;verything …</source>
        <translation>&amp;Alles entnehmen …</translation>
    </message>
    <message>
        <source>&amp;Find …</source>
        <translation>&amp;Suchen …</translation>
    </message>
    <message>
        <source>Ask for steps and files by what is known about them</source>
        <translation>Schritte und Dateien danach suchen, was über sie bekannt ist</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>Compare with another document</source>
        <translation>Mit einem anderen Dokument vergleichen</translation>
    </message>
    <message>
        <source>Documents with a history (*.pdf *.lorix);;All files (*)</source>
        <translation>Dokumente mit einer Geschichte (*.pdf *.lorix);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>About lorix viewer</source>
        <translation>Über den lorix-Betrachter</translation>
    </message>
    <message>
        <source>Shows how a document came about, whether it is untouched, and gets the files out.

%1</source>
        <translation>Zeigt, wie ein Dokument entstand und ob es unverändert ist, und entnimmt die Dateien.

%1</translation>
    </message>
    <message>
        <source>This file is too large to be dragged away; use “Extract” instead.</source>
        <translation>Diese Datei ist zu groß zum Herausziehen; verwenden Sie „Entnehmen“.</translation>
    </message>
    <message>
        <source>Preparing %1 …</source>
        <translation>%1 wird vorbereitet …</translation>
    </message>
    <message>
        <source>Views of the document</source>
        <translation>Ansichten des Dokuments</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::OutlineModel</name>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Description of the step</source>
        <translation>Beschreibung des Schritts</translation>
    </message>
    <message>
        <source>not embedded</source>
        <translation>nicht eingebettet</translation>
    </message>
    <message>
        <source>%1, %2, %3</source>
        <translation>%1, %2, %3</translation>
    </message>
    <message>
        <source>Step or file</source>
        <translation>Schritt oder Datei</translation>
    </message>
    <message>
        <source>What it is</source>
        <translation>Was es ist</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::PictureView</name>
    <message>
        <source>Picture of the history</source>
        <translation>Bild der Geschichte</translation>
    </message>
    <message>
        <source>A box for each step, the newest on top. The outline shows the same as a list.</source>
        <translation>Ein Kasten für jeden Schritt, der neueste oben. Die Gliederung zeigt dasselbe als Liste.</translation>
    </message>
    <message>
        <source>inside %1</source>
        <translation>in %1</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::PreviewPane</name>
    <message>
        <source>Preview of the file</source>
        <translation>Vorschau der Datei</translation>
    </message>
    <message>
        <source>Preview of the file as a picture</source>
        <translation>Vorschau der Datei als Bild</translation>
    </message>
    <message>
        <source>The document only describes this file, so there is nothing to preview.</source>
        <translation>Das Dokument beschreibt diese Datei nur; es gibt keine Vorschau.</translation>
    </message>
    <message>
        <source>This file is too large for a preview. Extract it to look at it.</source>
        <translation>Diese Datei ist zu groß für eine Vorschau. Entnehmen Sie sie, um sie anzusehen.</translation>
    </message>
    <message>
        <source>The content cannot be read: this part of the document is damaged.</source>
        <translation>Der Inhalt ist nicht lesbar: Dieser Teil des Dokuments ist beschädigt.</translation>
    </message>
    <message>
        <source>The document was changed on disk since it was opened.</source>
        <translation>Das Dokument wurde auf der Platte verändert, seit es geöffnet wurde.</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file. Extract it and open it with the program that it belongs to.</source>
        <translation>Für diese Art von Datei gibt es keine Vorschau. Entnehmen Sie sie und öffnen Sie sie mit dem Programm, zu dem sie gehört.</translation>
    </message>
    <message>
        <source>Making a preview …</source>
        <translation>Die Vorschau entsteht …</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>[… only the beginning is shown]</source>
        <translation>[… nur der Anfang wird gezeigt]</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::QueryEdit</name>
    <message>
        <source>A word to look for, or a query such as  s:tool == &apos;python&apos;</source>
        <translation>Ein gesuchtes Wort oder eine Anfrage wie  s:tool == &apos;python&apos;</translation>
    </message>
    <message>
        <source>Query</source>
        <translation>Anfrage</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::VerdictBar</name>
    <message>
        <source>Show the damage</source>
        <translation>Schaden zeigen</translation>
    </message>
    <message>
        <source>Whether the document is untouched</source>
        <translation>Ob das Dokument unverändert ist</translation>
    </message>
    <message>
        <source>Open again</source>
        <translation>Erneut öffnen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Check again</source>
        <translation>Erneut prüfen</translation>
    </message>
    <message>
        <source>Not checked yet. “Check” finds out whether the document and the files in it are unchanged since they were recorded.</source>
        <translation>Noch nicht geprüft. „Prüfen“ stellt fest, ob das Dokument und die Dateien darin unverändert sind, seit sie aufgezeichnet wurden.</translation>
    </message>
    <message>
        <source>Checking … %1 %</source>
        <translation>Wird geprüft … %1 %</translation>
    </message>
    <message>
        <source>Damaged: %1 of %2 parts are not as they were recorded. The marks show which, and their pages say why.</source>
        <translation>Beschädigt: %1 von %2 Teilen sind nicht, wie sie aufgezeichnet wurden. Die Zeichen zeigen, welche, und ihre Seiten sagen, warum.</translation>
    </message>
    <message>
        <source>Damaged: the history does not hold together.</source>
        <translation>Beschädigt: Die Geschichte hängt nicht zusammen.</translation>
    </message>
    <message>
        <source>Stopped after %1 parts, all valid. The rest is not checked.</source>
        <translation>Nach %1 Teilen angehalten, alle gültig. Der Rest ist nicht geprüft.</translation>
    </message>
    <message>
        <source>There is nothing to check: no step has been recorded.</source>
        <translation>Es gibt nichts zu prüfen: Es wurde kein Schritt aufgezeichnet.</translation>
    </message>
    <message>
        <source>Valid: all %1 parts, steps and files, are unchanged since they were recorded.</source>
        <translation>Gültig: Alle %1 Teile, Schritte und Dateien, sind unverändert, seit sie aufgezeichnet wurden.</translation>
    </message>
    <message>
        <source>The document was changed on disk since it was opened. Open it again to see what it holds now.</source>
        <translation>Das Dokument wurde auf der Platte verändert, seit es geöffnet wurde. Öffnen Sie es erneut, um zu sehen, was es jetzt enthält.</translation>
    </message>
    <message>
        <source>The document is not where it was any more: it was moved, renamed or deleted. What is shown here was read before.</source>
        <translation>Das Dokument ist nicht mehr, wo es war: Es wurde verschoben, umbenannt oder gelöscht. Was hier steht, wurde vorher gelesen.</translation>
    </message>
</context>
<context>
    <name>lorix::viewer::WelcomePage</name>
    <message>
        <source>Opened lately</source>
        <translation>Kürzlich geöffnet</translation>
    </message>
    <message>
        <source>See how a document came about</source>
        <translation>Sehen, wie ein Dokument entstand</translation>
    </message>
    <message>
        <source>Some documents, PDF files mostly, carry their own history: the steps in which they were made, and the files that went into each step. Open one here to look at its history, to check that nobody has changed it, and to get the files out.</source>
        <translation>Manche Dokumente, meist PDF-Dateien, tragen ihre eigene Geschichte: die Schritte, in denen sie entstanden, und die Dateien, die in jeden Schritt eingingen. Öffnen Sie hier eines, um seine Geschichte anzusehen, zu prüfen, dass niemand es verändert hat, und die Dateien zu entnehmen.</translation>
    </message>
    <message>
        <source>Open a document …</source>
        <translation>Ein Dokument öffnen …</translation>
    </message>
    <message>
        <source>… or drop one onto this window.</source>
        <translation>… oder ziehen Sie eines auf dieses Fenster.</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Documents opened lately</source>
        <translation>Kürzlich geöffnete Dokumente</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Shows the history that a document carries.</source>
        <translation>Zeigt die Geschichte, die ein Dokument trägt.</translation>
    </message>
    <message>
        <source>The document to open.</source>
        <translation>Das Dokument, das geöffnet werden soll.</translation>
    </message>
</context>
</TS>
