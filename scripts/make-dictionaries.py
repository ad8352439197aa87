#!/usr/bin/env python3
"""Writes the default environment's S-57 object class, attribute and agency dictionaries
(Data/Dictionary/S57Objects.xml, S57Attributes.xml, Agencies.xml) from GDAL's public S-57
catalogue tables (Debian package gdal-data).

Usage: scripts/make-dictionaries.py [--gdal-data DIR] [--out DIR]
Defaults: DIR = /usr/share/gdal, out = Data/Dictionary beside this script's repository.
Standard library only; the output is deterministic, so re-running gives identical files.
"""

import argparse
import csv
import io
import os
import sys
from xml.sax.saxutils import escape, quoteattr

# GDAL's one-letter object class kinds and the names the object class dictionary uses.
FEATURE_TYPES = {"G": "Geo", "M": "Meta", "C": "Collection", "$": "Cartographic"}
ATTRIBUTE_TYPES = {"E", "L", "F", "I", "A", "S"}


def read_text(path):
    """GDAL's tables are mostly UTF-8, but some rows are Latin-1; accept both."""
    with open(path, "rb") as f:
        data = f.read()
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("cp1252")


def read_rows(path):
    return list(csv.DictReader(io.StringIO(read_text(path))))


def code_of(text):
    text = (text or "").strip()
    return int(text) if text.isdigit() else None


def write_xml(path, root, lines):
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.write('<?xml version="1.0" encoding="UTF-8"?>\n')
        f.write("<%s>\n" % root)
        for line in lines:
            f.write(line + "\n")
        f.write("</%s>\n" % root)


def make_objects(gdal):
    lines = []
    rows = [r for r in read_rows(os.path.join(gdal, "s57objectclasses.csv")) if code_of(r["Code"])]
    for row in sorted(rows, key=lambda r: code_of(r["Code"])):
        attrs = "Code=%s Acronym=%s" % (quoteattr(str(code_of(row["Code"]))),
                                        quoteattr(row["Acronym"].strip()))
        kind = FEATURE_TYPES.get(row["Class"].strip())
        if kind:
            attrs += " Type=%s" % quoteattr(kind)
        lines.append("  <ObjectClass %s>" % attrs)
        lines.append("    <Name>%s</Name>" % escape(row["ObjectClass"].strip()))
        lines.append("  </ObjectClass>")
    return len(rows), lines


def make_attributes(gdal):
    expected = {}
    for row in read_rows(os.path.join(gdal, "s57expectedinput.csv")):
        code, ident = code_of(row["Code"]), code_of(row["ID"])
        if code is None or ident is None:
            continue
        expected.setdefault(code, []).append((ident, " ".join(row["Meaning"].split())))
    lines = []
    rows = [r for r in read_rows(os.path.join(gdal, "s57attributes.csv")) if code_of(r["Code"])]
    for row in sorted(rows, key=lambda r: code_of(r["Code"])):
        code = code_of(row["Code"])
        attrs = "Code=%s Acronym=%s" % (quoteattr(str(code)), quoteattr(row["Acronym"].strip()))
        kind = row["Attributetype"].strip()
        if kind in ATTRIBUTE_TYPES:
            attrs += " Type=%s" % quoteattr(kind)
        lines.append("  <Attribute %s>" % attrs)
        lines.append("    <Name>%s</Name>" % escape(" ".join(row["Attribute"].split())))
        values = expected.get(code)
        if values:
            lines.append("    <ExpectedInputs>")
            for ident, meaning in values:
                lines.append("      <ExpectedValue ID=%s Meaning=%s/>"
                             % (quoteattr(str(ident)), quoteattr(meaning)))
            lines.append("    </ExpectedInputs>")
        lines.append("  </Attribute>")
    return len(rows), lines


def make_agencies(gdal):
    lines = []
    count = 0
    for line in read_text(os.path.join(gdal, "s57agencies.csv")).splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        # The name is the unquoted rest of the line and may itself hold commas.
        parts = line.split(",", 3)
        if len(parts) < 4 or code_of(parts[2]) is None:
            continue
        count += 1
        lines.append("  <Agency Token=%s Code=%s>"
                     % (quoteattr(parts[1].strip()), quoteattr(str(code_of(parts[2])))))
        lines.append("    <AgencyName>%s</AgencyName>" % escape(parts[3].strip()))
        lines.append("  </Agency>")
    return count, lines


def main():
    repo = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--gdal-data", default="/usr/share/gdal")
    parser.add_argument("--out", default=os.path.join(repo, "Data", "Dictionary"))
    args = parser.parse_args()
    for name in ("s57objectclasses.csv", "s57attributes.csv", "s57expectedinput.csv",
                 "s57agencies.csv"):
        if not os.path.isfile(os.path.join(args.gdal_data, name)):
            sys.exit("missing %s in %s (install the gdal-data package)" % (name, args.gdal_data))
    os.makedirs(args.out, exist_ok=True)
    for filename, root, make in (("S57Objects.xml", "ObjectClasses", make_objects),
                                 ("S57Attributes.xml", "Attributes", make_attributes),
                                 ("Agencies.xml", "Agencies", make_agencies)):
        count, lines = make(args.gdal_data)
        write_xml(os.path.join(args.out, filename), root, lines)
        print("%s: %d entries" % (filename, count))


if __name__ == "__main__":
    main()
