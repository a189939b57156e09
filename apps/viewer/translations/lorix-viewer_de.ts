<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CheckResults</name>
    <message>
        <source>The document only describes this file and does not hold its content, so there is nothing to check.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not checked yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One of its files is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of its files are damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The content of these files is what was recorded for them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>valid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not checked</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Checker</name>
    <message>
        <source>the step before “%1” is not the one that was there when that step was added. A step may have been exchanged or taken out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the history is broken off: an older step should come before “%1” but cannot be found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the history leads back to itself at “%1”, so that older steps are out of reach.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are remains of a step that cannot be read any more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>something was added behind the newest step. The steps are untouched, but no step says where that comes from.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are files that belong to no step.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of this step is missing: the document is shorter than it was when the step was added. It may have been cut off on its way to you.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No fingerprint was recorded for this step, so nothing proves that it is unchanged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Something in this step was changed after it was added: its bytes no longer have the fingerprint that was recorded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of this file is missing: the document ends before the file does. It may have been cut off on its way to you.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file is packed in a way that this program does not know.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No fingerprint was recorded for this file, so nothing proves that it is unchanged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The content was changed after the file was added: it no longer has the fingerprint that was recorded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unchanged since this step was added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unchanged since this file was added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The history inside “%1” cannot be shown, and was not checked.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Comparison</name>
    <message>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>When</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By whom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On which computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>With which tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tool&apos;s place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorded by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Original document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF subject</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF keywords</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF producer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF creator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 “%2”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Attribute “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>only on the left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>only on the right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>moved to another place in the history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>differs in: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>same</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Details</name>
    <message>
        <source>… %1 characters in all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Attributes given by the author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not embedded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>has a history of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>… and %1 more; the outline lists them all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These files are in the document, but no step says where they come from.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>When</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By whom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On which computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>With which tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tool&apos;s place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorded by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Original document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF subject</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF keywords</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF producer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF creator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kept in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inputs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Outputs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Other files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>preview picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>thumbnail</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What it is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The description of its step, for programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size in the document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>packed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Was kept in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used as</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fingerprint (MD5)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fingerprint when packed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file has a history of its own:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>go to its newest step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files inside</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Documents inside</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is prepared for a history, but no step has been recorded yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a step or a file to see what is known about it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>There is no such file. It may have been moved, renamed or deleted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is a folder. Open one of the documents in it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no ordinary file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It cannot be read (%1). Ask its owner for the right to read it, or copy it to a folder of your own.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is larger than 2 GiB; documents with a history never are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It carries no history. It may be an ordinary document, or a program that does not know about histories has saved it anew and dropped what stood at its end. Ask the sender for the original file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files that belong to no step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step without a title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File without a name</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QueryWords</name>
    <message>
        <source>“%1” cannot be understood. A text stands in quotes, as in s:tool == &apos;python&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot stand here: a text, an attribute such as s:tool or an opening bracket is expected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is one closing bracket too many.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The query is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The query is not complete: something must follow “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no attribute “%1”. Ctrl+Space shows which there are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” stands between two conditions, such as s:tool == &apos;python&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” stands between two texts, as in s:title %contains &apos;report&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” stands between two numbers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” compares two numbers, or two dates.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” stands before a condition, such as s:tool == &apos;python&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no condition. Say what must hold, as in s:tool == &apos;python&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The query is too complicated. Use fewer “&amp;&amp;” within “||”.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StepItem</name>
    <message>
        <source>  (has a history)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>match: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TargetWords</name>
    <message>
        <source>the target folder is a file. Choose a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a folder on the way is a link that may lead elsewhere; nothing is written through links. Choose another folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a file where a folder is needed. Choose another folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a folder of that name. Choose another folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a file of that name has come up in the meantime; it was left alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the folder cannot be made (%1). Choose another one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a folder for it cannot be made (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it cannot be written (%1). Make room, or choose a folder that you may write to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it cannot be given its name (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>Input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2 bytes)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::BusyBar</name>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop the work that is going on</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::ComparePage</name>
    <message>
        <source>Choose the other document …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Better match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next best match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only differences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Other document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps of both documents</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fields of the selected steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be compared. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Result of the comparison</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another way to pair the steps, the next in how well it fits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose another document to see which steps both have in common, and where they differ.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading “%1” …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparing …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The documents differ so much that there may be a better match.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no other match.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Best match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Match number %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 steps are the same, %2 differ, %3 have moved, %4 are only on the left, %5 only on the right.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>both documents have the same history (%1 steps).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>differs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>same</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::DetailsPanel</name>
    <message>
        <source>Extract this file …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details of the selected step or file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::ExtractDialog</name>
    <message>
        <source>Browse …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also the files inside the documents that are inside</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder to write to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Keep both</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Skip these</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Replace them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 files, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The content of what you have selected is not in the document, so there is nothing to extract.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the folder that the files shall go to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 files are in this folder already. What shall be done with them?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::Extractor</name>
    <message>
        <source>its content is larger than what was recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is not wholly in the document, which may have been cut off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is packed in a way that this program does not know</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>its content in the document is damaged, so that it cannot be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the document was cut short while it was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it was written, but is not what was recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 files were extracted to %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 were skipped because they are there already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 are missing because the work was stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>… and %1 more with a problem</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::FindPanel</name>
    <message>
        <source>found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Examples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About the query</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the query has found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Anything in which a word occurs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps that were done with a tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files with a certain ending</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Large results</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps of one person</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whatever has an attribute of this name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps, each with one of its inputs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Return finds, Ctrl+Space completes. A plain word is looked for everywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing in this history matches.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first %1 matches; there are more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One match.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 matches.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1.  %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(the step itself)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::LogPane</name>
    <message>
        <source>Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the program does is noted here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forget all messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning: </source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::MainWindow</name>
    <message>
        <source>Outline of the history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Outline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Comparison</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 steps so far</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are new warnings or errors among the messages.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lorix viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 – lorix viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 steps, %3 embedded files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be opened. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped; nothing was opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About lorix viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a document and look at its history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a&amp;gain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the document anew</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check that every step and every file is unchanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;mpare with …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare the history with that of another document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Extract …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the selected files, or all files of the selected step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract e&amp;verything …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask for steps and files by what is known about them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare with another document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Documents with a history (*.pdf *.lorix);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About lorix viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows how a document came about, whether it is untouched, and gets the files out.

%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file is too large to be dragged away; use “Extract” instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing %1 …</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::OutlineModel</name>
    <message>
        <source>Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Description of the step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not embedded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step or file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What it is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::PictureView</name>
    <message>
        <source>Picture of the history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A box for each step, the newest on top. The outline shows the same as a list.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>inside %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::PreviewPane</name>
    <message>
        <source>Preview of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preview of the file as a picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document only describes this file, so there is nothing to preview.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file is too large for a preview. Extract it to look at it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The content cannot be read: this part of the document is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document was changed on disk since it was opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no preview for this kind of file. Extract it and open it with the program that it belongs to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Making a preview …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[… only the beginning is shown]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::QueryEdit</name>
    <message>
        <source>A word to look for, or a query such as  s:tool == &apos;python&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Query</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::VerdictBar</name>
    <message>
        <source>Show the damage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whether the document is untouched</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not checked yet. “Check” finds out whether the document and the files in it are unchanged since they were recorded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking … %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Damaged: %1 of %2 parts are not as they were recorded. The marks show which, and their pages say why.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Damaged: the history does not hold together.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped after %1 parts, all valid. The rest is not checked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is nothing to check: no step has been recorded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Valid: all %1 parts, steps and files, are unchanged since they were recorded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document was changed on disk since it was opened. Open it again to see what it holds now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is not where it was any more: it was moved, renamed or deleted. What is shown here was read before.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lorix::viewer::WelcomePage</name>
    <message>
        <source>Opened lately</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>See how a document came about</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some documents, PDF files mostly, carry their own history: the steps in which they were made, and the files that went into each step. Open one here to look at its history, to check that nobody has changed it, and to get the files out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a document …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>… or drop one onto this window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Problem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Documents opened lately</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Shows the history that a document carries.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document to open.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
