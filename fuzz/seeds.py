#!/usr/bin/env python3
"""fuzz/seeds.py page|layout OUT FILE...: small seeds for the fuzz targets, so that they mutate
inputs read in about a millisecond rather than whole pages.
  page:   one page per block of each spec (same resolution and page keys, the block alone);
  layout: one layout per top-level control of each layout (the root's own keys, that control
          with at most two children at every level)."""
import json
import os
import sys

mode, out, files = sys.argv[1], sys.argv[2], sys.argv[3:]
os.makedirs(out, exist_ok=True)


def write(name, doc):
    with open(os.path.join(out, name), "w", encoding="utf-8") as f:
        json.dump(doc, f, ensure_ascii=False, separators=(",", ":"))


def pruned(ctl):
    """The control with at most two children at every level."""
    kids = [c for c in ctl if "__" in c][:2]
    return {c: (pruned(x) if c in kids else x) for c, x in ctl.items() if "__" not in c or c in kids}


for path in files:
    doc = json.load(open(path, encoding="utf-8"))
    base = os.path.splitext(os.path.basename(path))[0]
    if mode == "page":
        page = doc.get("page", {})
        for i, blk in enumerate(page.get("blocks", [])):
            write(f"{base}_{i}.json", dict(doc, page=dict(page, blocks=[blk])))
    else:
        own = {k: v for k, v in doc.items() if "__" not in k}
        for k, v in doc.items():
            if "__" in k:
                write(f"{base}_{k}.json", dict(own, **{k: pruned(v)}))
