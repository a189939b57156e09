# SPDX-License-Identifier: BSD-3-Clause
"""The summary of a step, "ws_summary.xml", the last embedded file of its section.

Texts are written with the five predefined entities of XML. Readers compare a
file's name, type, description and comment with those of its marker line as the
two stand, without undoing anything on either side. These four are therefore
written in the form that they have in the marker line (backslash escapes).
"""

import hashlib
import re

from .marker import carried, escape

NAME = "ws_summary.xml"

# What readers would take for the end or the beginning of something else.
_MISLEADING = re.compile("]]>|</?(?:loxchange|Workflowstep|InFile|OutFile|Filename|Filetype|"
                         "Description|Comment)>")

_ENTITIES = (("&", "&amp;"), ("<", "&lt;"), (">", "&gt;"), ('"', "&quot;"), ("'", "&apos;"))


def encode(text):
    for char, entity in _ENTITIES:
        text = text.replace(char, entity)
    return text


def element(name, text):
    return "<%s>%s</%s>" % (name, encode(carried(text)), name)


def _shared(name, text):
    """An element whose text also stands in the marker line."""
    stored = escape(carried(text))
    plain = element(name, stored)
    if encode(stored) == stored:
        return plain
    if _MISLEADING.search(stored):
        return plain
    # With entities the text would not equal the marker's. Readers of this
    # format skip from "<!" to the next "-->" and let a later element replace an
    # earlier one; for readers of XML all of it but the first element is a
    # character section and a comment. So each finds the text in its own form.
    return "%s<![CDATA[--><%s>%s</%s><!--]]><!-- -->" % (plain, name, stored, name)


def _attributes(pairs, units, indent):
    if not pairs:
        return []
    lines = [indent + "<UserAttributes>"]
    for key, value in pairs:
        unit = element("Unit", units[key]) if key in units else ""
        lines.append("%s  <Attribute>%s%s%s</Attribute>"
                     % (indent, element("Key", key), element("Value", value), unit))
    lines.append(indent + "</UserAttributes>")
    return lines


def _file(item):
    entry = item.entry
    flag = {name: "1" if value else "0" for name, value in entry.flags.items()}
    lines = ["    <%s>" % entry.purpose,
             "      " + _shared("Filename", entry.filename),
             "      " + element("Filepath", entry.filepath),
             "      " + _shared("Filetype", entry.attributes["filetype"]),
             "      " + _shared("Description", entry.attributes["description"]),
             "      " + _shared("Comment", entry.attributes["comment"]),
             "      " + element("LastModified", item.modified)]
    for name, value in (("GenerateMD5", flag["automd5"]), ("Embedded", flag["embed"]),
                        ("Preview", flag["preview"]), ("PreviewWS", flag["previewws"]),
                        ("Thumbnail", flag["thumbnail"]),
                        ("ThumbnailOnly", flag["thumbnailonly"]),
                        ("UncompressedSize", item.size), ("UncompressedMD5", item.md5),
                        ("CompressedMethod", item.method), ("CompressedSize", item.stored_size),
                        ("CompressedMD5", item.stored_md5)):
        lines.append("      " + element(name, str(value)))
    lines += _attributes(entry.user, entry.units, "      ")
    lines.append("    </%s>" % entry.purpose)
    return lines


def compose(invocation, root, timestamp, creator, items):
    """The summary's bytes. `items` are the step's files as they were written."""
    step, doc = invocation.step, invocation.doc
    lines = ["<Workflowstep>"]
    for name, text in (("LorixRootFile", root), ("Timestamp", timestamp),
                       ("Title", step["title"]), ("Description", step["description"]),
                       ("Comment", step["comment"]), ("Command", step["command"]),
                       ("Tool", step["tool"]), ("ToolPath", step["toolpath"]),
                       ("Host", step["host"]), ("User", step["user"]), ("Creator", creator),
                       ("PDFTitle", doc.get("title", "")), ("PDFAuthor", doc.get("author", "")),
                       ("PDFSubject", doc.get("subject", "")),
                       ("PDFKeywords", doc.get("keywords", "")),
                       ("PDFProducer", doc.get("producer", "")),
                       ("PDFCreator", doc.get("creator", ""))):
        lines.append("    " + element(name, text))
    for item in items:
        lines += _file(item)
    lines += _attributes(invocation.user, invocation.units, "    ")
    lines.append("  </Workflowstep>")
    body = "\n".join(lines)
    digest = hashlib.md5(body.encode("utf-8")).hexdigest()
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<loxchange>\n  %s\n'
            "  <MD5Signature>%s</MD5Signature>\n</loxchange>\n" % (body, digest)).encode("utf-8")
