#!/usr/bin/env python3
"""Reduces the three document types of HTML 4.01 to the fact table html401.tsv.

Usage: estrai_dtd.py strict.dtd loose.dtd frameset.dtd > html401.tsv
Debian's w3c-sgml-lib installs them under /usr/share/xml/w3c-sgml-lib/schema/dtd/REC-html401-19991224.

Lines: "elemento end|optional|empty NAMES" and "attributo NAME VALUES ELEMENTS", where VALUES is "-" for an open set.
The table is the union of the three.
"""
import re
import sys
from pathlib import Path

NAME = r"[A-Za-z][\w.-]*"


def expand(text, entities):
    while True:
        new = re.sub(rf"%({NAME});?", lambda m: entities.get(m[1], ""), text)
        if new == text:
            return text
        text = new


def resolve(text, folder, entities):
    """Text without comments and conditional sections, entities declared and expanded in their order."""
    out = []
    text = re.sub(r"<!--.*?-->", "", text, flags=re.S)
    while text:
        section = re.match(rf"\s*<!\[\s*%({NAME});?\s*\[", text)
        entity = re.match(rf"\s*<!ENTITY\s+%\s+({NAME})\s+(PUBLIC\s+)?(.*?)>", text, flags=re.S)
        reference = re.match(rf"\s*%({NAME});", text)
        if section:
            end = text.index("]]>")
            body = text[section.end():end] if entities.get(section[1]) == "INCLUDE" else ""
            text = body + text[end + 3:]
        elif entity:
            value = re.sub(r"--.*?--", "", entity[3], flags=re.S)
            strings = re.findall(r'"([^"]*)"', value)
            if entity[2] and "Transitional" in strings[0]:
                value = "\0loose.dtd"  # the frameset type includes it by its public name alone
            else:
                value = strings[0] if strings and not entity[2] else ""
            entities.setdefault(entity[1], value)
            text = text[entity.end():]
        elif reference:
            value = entities.get(reference[1], "")
            body = ""
            if value.startswith("\0"):
                body = re.sub(r"<!--.*?-->", "", (folder / value[1:]).read_text("latin-1"), flags=re.S)
            text = body + text[reference.end():]
        else:
            end = text.find(">")
            if end < 0:
                break
            out.append(expand(re.sub(r"--.*?--", "", text[:end], flags=re.S), entities))
            text = text[end + 1:]
    return out


def names(text):
    return [n.upper() for n in re.findall(NAME, text)]


def main():
    elements, attributes = {}, {}
    for argument in sys.argv[1:]:
        path = Path(argument)
        entities = {}
        for declaration in resolve(path.read_text("latin-1"), path.parent, entities):
            m = re.match(rf"\s*<!ELEMENT\s+(\([^)]*\)|{NAME})\s+([-O])\s+([-O])\s+(.*)", declaration, flags=re.S)
            if m:
                end = "empty" if m[4].strip() == "EMPTY" else "optional" if m[3] == "O" else "end"
                elements.update((n, end) for n in names(m[1]))
            m = re.match(rf"\s*<!ATTLIST\s+(\([^)]*\)|{NAME})\s(.*)", declaration, flags=re.S)
            if not m:
                continue
            body = re.findall(rf"({NAME})\s+(\([^)]*\)|{NAME})\s+(#\w+(?:\s+[\"'][^\"']*[\"'])?|\"[^\"]*\"|[\w.-]+)", m[2])
            for element in names(m[1]):
                for name, kind, _ in body:
                    values = set(re.findall(r"[\w.-]+", kind)) if kind.startswith("(") else {"-"}
                    attributes.setdefault((element, name.lower()), set()).update(values)
    table = {}
    for name, end in elements.items():
        table.setdefault(("elemento", end), []).append(name)
    for (element, name), values in attributes.items():
        kind = "-" if "-" in values else " ".join(sorted(values))
        table.setdefault(("attributo", name, kind), []).append(element)
    for key in sorted(table, key=lambda key: (-len(key[0]), key)):
        print(*key, " ".join(sorted(table[key])), sep="\t")


main()
