"""compose schema --project-file against a real validator, and compose build against the
same mistakes: the schema is valid draft 2020-12, a full project file validates and builds,
and each typical mistake is rejected by the validator and by compose build at the same place.

Run by CTest with Debian's python3 and its python3-jsonschema; a missing module fails."""
import argparse
import copy
import json
import os
import shutil
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    sys.exit("project_schema_check: the python3 module jsonschema is missing (Debian: apt-get install python3-jsonschema)")

ap = argparse.ArgumentParser()
ap.add_argument("--exe", required=True)
ap.add_argument("--source", required=True)
a = ap.parse_args()

out = subprocess.run([a.exe, "schema", "--project-file"], capture_output=True, text=True, check=True).stdout
schema = json.loads(out)
V = jsonschema.Draft202012Validator
V.check_schema(schema)
v = V(schema)
failures = []

base = {"$schema": "./project.schema.json",
        "pages": [{"spec": "pages/oven.json", "page": "oven", "sizes": ["480x272", "800x480"]},
                  {"spec": "pages/main.json"}],
        "theme": "theme/dark.json",
        "ui_layout": "auto"}


def where_text(path):
    out = ""
    for p in path:
        out += f"[{p}]" if isinstance(p, int) else ("." if out else "") + p
    return out


def put(path, value):
    def change(s):
        *head, last = path
        node = s
        for p in head:
            node = node[p]
        node[last] = value
    return change


def drop(path):
    def change(s):
        *head, last = path
        node = s
        for p in head:
            node = node[p]
        del node[last]
    return change


mistakes = [  # what, change, where the validator's best error and compose build's message lie
    # (compose may name a place inside it: a fourth item)
    ("no pages", drop(["pages"]), []),
    ("empty page list", put(["pages"], []), ["pages"]),
    ("a page without spec", drop(["pages", 1, "spec"]), ["pages", 1]),
    ("misspelt page key", put(["pages", 1, "size"], ["800x480"]), ["pages", 1]),
    ("a size without height", put(["pages", 0, "sizes", 1], "800"), ["pages", 0, "sizes", 1]),
    ("sizes as a text", put(["pages", 0, "sizes"], "480x272"), ["pages", 0, "sizes"]),
    ("a size given twice", put(["pages", 0, "sizes", 1], "480x272"), ["pages", 0, "sizes"], ["pages", 0, "sizes", 1]),
    ("theme as a number", put(["theme"], 3), ["theme"]),
    ("unknown layout", put(["ui_layout"], "tree"), ["ui_layout"]),
    ("unknown top-level key", put(["page"], []), []),
]

with tempfile.TemporaryDirectory() as tmp:
    os.makedirs(os.path.join(tmp, "pages"))
    os.makedirs(os.path.join(tmp, "theme"))
    shutil.copy(os.path.join(a.source, "examples", "settings_800x480.json"), os.path.join(tmp, "pages", "oven.json"))
    shutil.copy(os.path.join(a.source, "examples", "status_320x240.json"), os.path.join(tmp, "pages", "main.json"))
    with open(os.path.join(tmp, "theme", "dark.json"), "w") as f:
        f.write("{}")
    project_file = os.path.join(tmp, "compose.json")

    def build(doc):
        with open(project_file, "w", encoding="utf-8") as f:
            json.dump(doc, f, ensure_ascii=False)
        return subprocess.run([a.exe, "build", tmp, "--no-check"], capture_output=True, text=True)

    for e in v.iter_errors(base):
        failures.append(f"base file: {list(e.absolute_path)}: {e.message}")
    r = build(base)
    if r.returncode != 0:
        failures.append(f"compose build refused the base file: {r.stderr.strip()}")

    for what, change, where, *inner in mistakes:
        doc = copy.deepcopy(base)
        change(doc)
        errors = list(v.iter_errors(doc))
        if not errors:
            failures.append(f"schema: not rejected: {what}")
        else:
            best = jsonschema.exceptions.best_match(errors)
            if list(best.absolute_path) != where:
                failures.append(f"schema: {what}: reported at {list(best.absolute_path)} ({best.message}), expected {where}")
        r = build(doc)
        place = inner[0] if inner else where
        head = f"compose: error: {project_file}: " + (where_text(place) + ": " if place else "")
        if r.returncode != 1 or not r.stderr.startswith(head):
            failures.append(f"compose build: {what}: exit {r.returncode}, {r.stderr.strip()!r}; expected {head!r}")

for f in failures:
    print("FAIL", f)
print(f"{len(mistakes)} mistakes checked")
sys.exit(1 if failures else 0)
