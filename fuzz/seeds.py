#!/usr/bin/env python3
"""fuzz/seeds.py OUT PAGE.json...: one small page per block of each example page (same
resolution and page keys, the one block alone), so the page fuzzer mutates pages it reads in
about a millisecond rather than whole example pages."""
import json
import os
import sys

out = sys.argv[1]
os.makedirs(out, exist_ok=True)
for path in sys.argv[2:]:
    spec = json.load(open(path, encoding="utf-8"))
    page = spec.get("page", {})
    base = os.path.splitext(os.path.basename(path))[0]
    for i, blk in enumerate(page.get("blocks", [])):
        one = dict(spec, page=dict(page, blocks=[blk]))
        with open(os.path.join(out, f"{base}_{i}.json"), "w", encoding="utf-8") as f:
            json.dump(one, f, ensure_ascii=False, separators=(",", ":"))
