"""ComposePages in a firmware's own CMake/Ninja build: a temporary copy of tests/cmake_pages
is configured and built; a second build does nothing, touching one spec recomposes that page
only, touching a file of the block library recomposes both.

Run by CTest; exit 77 (skipped) when Ninja is missing."""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

ap = argparse.ArgumentParser()
ap.add_argument("--exe", required=True)
ap.add_argument("--source", required=True)
a = ap.parse_args()

if not shutil.which("ninja"):
    print("ninja not found: skipped")
    sys.exit(77)

failures = []


def check(cond, what):
    if not cond:
        failures.append(what)


with tempfile.TemporaryDirectory() as tmp:
    src = os.path.join(tmp, "src")
    build = os.path.join(tmp, "build")
    lib = os.path.join(tmp, "blocks")
    shutil.copytree(os.path.join(a.source, "tests", "cmake_pages"), src)
    # A library of its own, so that touching one of its files touches no other build.
    shutil.copytree(os.path.join(a.source, "templates", "ui_blocks", "blocks"), lib)
    env = dict(os.environ, TVUITOOL_BLOCKS=lib)

    def run(*args):
        r = subprocess.run(args, capture_output=True, text=True, env=env)
        if r.returncode != 0:
            sys.exit(f"{' '.join(args)} failed ({r.returncode}):\n{r.stdout}\n{r.stderr}")
        return r.stdout

    def build_pages():
        return sorted(re.findall(r"Composing page (\w+)", run("cmake", "--build", build)))

    def touch(path):  # newer than anything built so far, whatever the clock's resolution
        later = time.time_ns() + 2_000_000_000
        os.utime(path, ns=(later, later))

    run("cmake", "-S", src, "-B", build, "-G", "Ninja", f"-DCOMPOSE_MODULE_DIR={a.source}/cmake",
        f"-DCOMPOSE_EXECUTABLE={a.exe}")
    check(build_pages() == ["oven", "settings"], "the first build composes both pages")
    product = os.path.join(build, "product")
    layouts = {p: os.path.join(product, "ui", p) for p in
               ("480x272/oven.json", "800x480/oven.json", "480x272/settings.json")}
    for name, path in layouts.items():
        check(os.path.isfile(path), f"layout {name} written")
    check(os.path.isfile(os.path.join(product, "src", "logic", "ovenLogic.cc")), "logic skeleton written")
    check(os.path.isfile(os.path.join(product, "src", "logic", "ovenData.h")), "data header written")

    second = run("cmake", "--build", build)
    check("no work to do" in second, f"the second build does nothing:\n{second}")

    oven_mtime = os.stat(layouts["480x272/oven.json"]).st_mtime_ns
    touch(os.path.join(src, "pages", "settings.json"))
    check(build_pages() == ["settings"], "touching one spec recomposes that page only")
    check(os.stat(layouts["480x272/oven.json"]).st_mtime_ns == oven_mtime, "the other page's layout is untouched")

    touch(os.path.join(lib, "toggle_row.json"))
    check(build_pages() == ["oven", "settings"], "a block library file is an input of every page")
    check("no work to do" in run("cmake", "--build", build), "and then nothing is left to do")

    os.remove(os.path.join(product, "src", "logic", "ovenData.h"))
    check(build_pages() == ["oven"], "a missing data header recomposes its page")

for f in failures:
    print("FAIL", f)
print(f"{len(failures)} failures")
sys.exit(1 if failures else 0)
