#!/usr/bin/env python3
"""Fails when a guide names a caption (in bold letters) that the program does not have, or when the two
guides differ in their structure: tools/check_guides.py"""

import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
GUIDES = [TOP / "docs" / name for name in ("user-guide.md", "benutzerhandbuch.md")]
# Keys have no caption in the sources.
KEY = re.compile(r"(Ctrl|Strg|Shift|Umschalt|Alt)\+.+|F\d+|[MS!×]|Alt|Enter|Eingabetaste|Space|"
                 r"Leertaste|Esc|Backspace|Rücktaste|Home|Pos1|End|Ende|PgUp|PgDn|Bild auf|Bild ab")


def captions():
    """Every text of the sources, without the marks of its key and what follows its name."""
    found = set()
    for source in [*TOP.glob("src/**/*.h"), *TOP.glob("src/**/*.cpp")]:
        text = re.sub(r'"\s*\n\s*"', "", source.read_text(encoding="utf-8"))
        for caption in re.findall(r'[{ ]"((?:[^"\\\n]|\\.)*)"[};]', text):
            found.add(plain(caption))
    return found


def plain(caption):
    return re.sub(r"(: %1| \(%1\)|…)$", "", caption.replace("&", "")).strip()


def main():
    known = captions()
    failed = False
    structures = []
    for guide in GUIDES:
        text = re.sub(r"^```.*?^```", "", guide.read_text(encoding="utf-8"), flags=re.S | re.M)
        structures.append([len(marks) for marks in re.findall(r"^(#+) ", text, flags=re.M)])
        for bold in re.findall(r"\*\*(.+?)\*\*", text, flags=re.S):
            for caption in re.sub(r"\s+", " ", bold).split(" > "):
                if plain(caption) not in known and not KEY.fullmatch(caption):
                    print(f"{guide.name}: the program has no {caption!r}", file=sys.stderr)
                    failed = True
    if structures[0] != structures[1]:
        print("the guides differ in their structure", file=sys.stderr)
        failed = True
    return 1 if failed or not known else 0


if __name__ == "__main__":
    sys.exit(main())
