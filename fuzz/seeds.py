#!/usr/bin/env python3
"""fuzz/seeds.py page|layout|http OUT FILE...: small seeds for the fuzz targets, so that they mutate
inputs read in about a millisecond rather than whole pages.
  page:   one page per block of each spec (same resolution and page keys, the block alone);
  layout: one layout per top-level control of each layout (the root's own keys, that control
          with at most two children at every level);
  http:   the requests a browser sends to "compose serve", and a few near its bounds (no FILE)."""
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


HTTP_SEEDS = {
    "page": "GET / HTTP/1.1\r\nHost: 127.0.0.1:8765\r\nUser-Agent: Mozilla/5.0\r\n"
            "Accept: text/html\r\nAccept-Encoding: gzip, deflate\r\nConnection: keep-alive\r\n\r\n",
    "poll": "GET /state?after=12 HTTP/1.1\r\nHost: localhost:8765\r\nAccept: */*\r\n\r\n",
    "preview": "GET /preview/0.png?v=3 HTTP/1.1\r\nHost: [::1]:8765\r\n\r\n",
    "picture": "HEAD /images/ic_wifi_24.png HTTP/1.0\r\nConnection: keep-alive\r\n\r\n",
    "escaped": "GET /images/%2e%2E%2fsecret.png HTTP/1.1\nHost: 127.0.0.1:8765\n\n",
    "body": "POST /state HTTP/1.1\r\nHost: 127.0.0.1:8765\r\nContent-Length: 5\r\n\r\nhello",
    "chunked": "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
    "pipelined": "\r\nGET / HTTP/1.1\r\nHost: h\r\n\r\nGET /state HTTP/1.1\r\nHost: h\r\n\r\n",
}

if mode == "http":
    for name, text in HTTP_SEEDS.items():
        with open(os.path.join(out, name + ".txt"), "w", encoding="utf-8", newline="") as f:
            f.write(text)

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
