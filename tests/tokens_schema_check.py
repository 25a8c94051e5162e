"""compose schema --tokens against a real validator, and compose --tokens against the same
mistakes: the schema is valid draft 2020-12, the library's _tokens.json and the example
theme validate, and each typical mistake of a theme is rejected by the validator and by
compose at the same place.

Run by CTest with Debian's python3 and its python3-jsonschema; a missing module fails."""
import argparse
import json
import os
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    sys.exit("tokens_schema_check: the python3 module jsonschema is missing (Debian: apt-get install python3-jsonschema)")

ap = argparse.ArgumentParser()
ap.add_argument("--exe", required=True)
ap.add_argument("--source", required=True)
a = ap.parse_args()

schema = json.loads(subprocess.run([a.exe, "schema", "--tokens"], capture_output=True, text=True, check=True).stdout)
V = jsonschema.Draft202012Validator
V.check_schema(schema)
v = V(schema)
failures = []

library = os.path.join(a.source, "templates", "ui_blocks", "blocks", "_tokens.json")
dark = os.path.join(a.source, "examples", "themes", "dark.json")
for path in (library, dark):
    with open(path, encoding="utf-8") as f:
        for e in v.iter_errors(json.load(f)):
            failures.append(f"{path}: {list(e.absolute_path)}: {e.message}")


def where_text(path):
    out = ""
    for p in path:
        out += f"[{p}]" if isinstance(p, int) else ("." if out else "") + p
    return out


mistakes = [  # what, theme, where the validator's best error lies, where compose names it
    ("a colour name", {"color": {"fg1": "red"}}, ["color", "fg1"], ["color", "fg1"]),
    ("a colour of five digits", {"color": {"page": "#12345"}}, ["color", "page"], ["color", "page"]),
    ("a colour as a number", {"color": {"page": 0}}, ["color", "page"], ["color", "page"]),
    ("a misspelt colour", {"color": {"surfce": "#000000"}}, ["color"], ["color"]),
    ("a misspelt group", {"colour": {}}, [], []),
    ("a group as a value", {"size": 3}, ["size"], ["size"]),
    ("a ratio as text", {"size": {"row_h_of_h": "0.1"}}, ["size", "row_h_of_h"], ["size", "row_h_of_h"]),
    ("a negative ratio", {"size": {"row_h_of_h": -1}}, ["size", "row_h_of_h"], ["size", "row_h_of_h"]),
    ("pixels with a fraction", {"size": {"row_gap_px": 4.5}}, ["size", "row_gap_px"], ["size", "row_gap_px"]),
    ("a design height of 0", {"base_screen": {"height": 0}}, ["base_screen", "height"], ["base_screen", "height"]),
    ("an unknown spacer", {"size": {"pad_l_wide": "spacer9"}}, ["size", "pad_l_wide"], ["size", "pad_l_wide"]),
    ("an empty ladder", {"ladder": []}, ["ladder"], ["ladder"]),
    ("a ladder size of 0", {"ladder": [12, 0]}, ["ladder", 1], ["ladder", 1]),
    ("a font role's misspelt key", {"font": {"h1": {"bass": 20}}}, ["font", "h1"], ["font", "h1"]),
    ("a list for a mapping", [], [], []),
]
valid = [{}, {"$schema": "./tokens.schema.json"}, {"color": {"fg1": "#0a0b0c80"}}, {"size": {"row_gap_px": 4.0}}]

spec = os.path.join(a.source, "examples", "status_320x240.json")
with tempfile.TemporaryDirectory() as tmp:
    theme = os.path.join(tmp, "theme.json")

    def run(doc):
        with open(theme, "w", encoding="utf-8") as f:
            json.dump(doc, f)
        return subprocess.run([a.exe, spec, "--project", os.path.join(tmp, "p"), "--json-only", "--tokens", theme],
                              capture_output=True, text=True)

    for doc in valid:
        for e in v.iter_errors(doc):
            failures.append(f"schema refused a good theme {doc}: {e.message}")
        r = run(doc)
        if r.returncode != 0:
            failures.append(f"compose refused a good theme {doc}: {r.stderr.strip()}")
    for what, doc, where, place in mistakes:
        errors = list(v.iter_errors(doc))
        if not errors:
            failures.append(f"schema: not rejected: {what}")
        else:
            best = jsonschema.exceptions.best_match(errors)
            if list(best.absolute_path) != where:
                failures.append(f"schema: {what}: reported at {list(best.absolute_path)} ({best.message}), expected {where}")
        if os.path.exists(os.path.join(tmp, "p", "ui", "main.json")):
            os.remove(os.path.join(tmp, "p", "ui", "main.json"))
        r = run(doc)
        head = f"compose: error: {theme}: " + (where_text(place) + ": " if place else "")
        if r.returncode != 1 or not r.stderr.startswith(head):
            failures.append(f"compose: {what}: exit {r.returncode}, {r.stderr.strip()!r}; expected {head!r}")
        if os.path.exists(os.path.join(tmp, "p", "ui", "main.json")):
            failures.append(f"compose: {what}: a layout was written")

for f in failures:
    print("FAIL", f)
print(f"{len(mistakes)} mistakes, {len(valid)} good themes checked")
sys.exit(1 if failures else 0)
