"""compose schema against a real validator: the schema is valid draft 2020-12, every
example page validates, and typical mistakes are rejected inside the block they are in.

Run by CTest with Debian's python3 and its python3-jsonschema; a missing module fails."""
import argparse
import copy
import glob
import json
import os
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    sys.exit("schema_check: the python3 module jsonschema is missing (Debian: apt-get install python3-jsonschema)")

ap = argparse.ArgumentParser()
ap.add_argument("--exe", required=True)
ap.add_argument("--source", required=True)
a = ap.parse_args()

out = subprocess.run([a.exe, "schema"], capture_output=True, text=True, check=True).stdout
schema = json.loads(out)
V = jsonschema.Draft202012Validator
V.check_schema(schema)
v = V(schema)
failures = []

examples = sorted(glob.glob(os.path.join(a.source, "examples", "*.json")))
if not examples:
    failures.append("no example pages found")
for path in examples:
    with open(path, encoding="utf-8") as f:
        spec = json.load(f)
    for e in v.iter_errors(spec):
        failures.append(f"{os.path.basename(path)}: {list(e.absolute_path)}: {e.message}")

base = {"resolution": {"width": 480, "height": "272"},
        "page": {"title": "t", "blocks": [
            {"type": "card", "title": "c", "blocks": [{"type": "slider_row", "label": "l", "progress": "60"}]},
            {"type": "list_item", "items": ["a", {"title": "b", "value": 2}], "rows": 3},
            {"type": "toggle_row", "label": "w", "on": 0, "_note": "comments are ignored"},
            {"type": "tabs", "items": ["a", "b"], "selected": " 1 "}],
                 "footer": {"primary": "ok"}},
        "$schema": "./spec.schema.json", "_note": "generated"}
for e in v.iter_errors(base):
    failures.append(f"base page: {list(e.absolute_path)}: {e.message}")


def mutated(change):
    s = copy.deepcopy(base)
    change(s)
    return s


def put(path, value):
    def change(s):
        *head, last = path
        node = s
        for p in head:
            node = node[p]
        node[last] = value
    return change


slider = ["page", "blocks", 0, "blocks", 0]
toggle, tabs = ["page", "blocks", 2], ["page", "blocks", 3]
mistakes = [  # what, change, where the best error must lie
    ("unknown block type", put(["page", "blocks", 1, "type"], "carousel"), ["page", "blocks", 1, "type"]),
    ("progress as a list", put(slider + ["progress"], [60]), slider + ["progress"]),
    ("progress beyond 100", put(slider + ["progress"], 101), slider + ["progress"]),
    ("items as a number", put(["page", "blocks", 1, "items"], 3), ["page", "blocks", 1, "items"]),
    ("misspelt key", put(slider + ["lable"], "x"), slider),
    ("page-only block in a card", put(slider, {"type": "tabs", "items": ["a", "b"]}), slider + ["type"]),
    ("footer with an unknown key", put(["page", "footer", "primay"], "x"), ["page", "footer"]),
    ("missing resolution height", lambda s: s["resolution"].pop("height"), ["resolution"]),
    ("screen side as text out of range", put(["resolution", "height"], "9000"), ["resolution", "height"]),
    ("flag written as text", put(toggle + ["on"], "false"), toggle + ["on"]),
    ("name that is no identifier", put(slider + ["name"], "oven-mode"), slider + ["name"]),
    ("forbidden character in a label", put(slider + ["label"], "a…"), slider + ["label"]),
    ("icon name holding a path", put(toggle + ["icon"], "a/b"), toggle + ["icon"]),
    ("index past its list", put(tabs + ["selected"], 2), tabs + ["selected"]),
    ("unknown top-level key", put(["pages"], {}), []),
    ("no bottom bar", lambda s: s["page"].pop("footer"), ["page"]),
]
for what, change, where in mistakes:
    errors = list(v.iter_errors(mutated(change)))
    if not errors:
        failures.append(f"not rejected: {what}")
        continue
    best = jsonschema.exceptions.best_match(errors)
    if list(best.absolute_path) != where:
        failures.append(f"{what}: reported at {list(best.absolute_path)} ({best.message}), expected {where}")

# compose itself ignores the $schema key an editor needs.
with tempfile.TemporaryDirectory() as tmp:
    spec_path = os.path.join(tmp, "spec.json")
    with open(spec_path, "w", encoding="utf-8") as f:
        json.dump(base, f, ensure_ascii=False)
    r = subprocess.run([a.exe, spec_path, "--project", os.path.join(tmp, "p"), "--json-only"],
                       capture_output=True, text=True)
    if r.returncode != 0:
        failures.append(f"compose refused a page with $schema: {r.stderr.strip()}")

for f in failures:
    print("FAIL", f)
print(f"{len(examples)} example pages, {len(mistakes)} mistakes checked")
sys.exit(1 if failures else 0)
