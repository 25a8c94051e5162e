"""The data header on a real page: a washer page with a list of six programs and a wheel
picker of three columns is composed; src/logic/washerData.h is compiled, in two translation
units, with the system C++ compiler and a stand-in for the framework's list item, and the
program walks every list row and wheel value. Every row and value of the page must come out,
in order and byte for byte.

Run by CTest; exit 77 (skipped) when no C++ compiler is found."""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile

ap = argparse.ArgumentParser()
ap.add_argument("--exe", required=True)
ap.add_argument("--source", required=True)
a = ap.parse_args()

cxx = os.environ.get("CXX") or shutil.which("c++") or shutil.which("g++")
if not cxx:
    print("no C++ compiler found: skipped")
    sys.exit(77)

PROGRAMS = [
    {"icon": "wash", "title": "标准洗", "value": "45 分钟"},
    {"icon": "water", "title": "快洗", "value": "15 分钟"},
    {"icon": "temperature", "title": "棉麻 \"60°C\"", "value": "1:30"},
    {"icon": "leaf", "title": "羊毛", "value": "40 分钟"},
    {"icon": "fan", "title": "烘干", "value": "2 小时"},
    {"icon": "power", "title": "筒自洁 C:\\drum", "value": "??="},
]
HOURS = list(range(0, 13))
MINUTES = [f"{m:02d}" for m in range(0, 60, 5)]
MODES = ["轻柔", "tab\there", "line\nbreak", "标准"]

spec = {
    "resolution": {"width": 800, "height": 480},
    "page": {
        "title": "洗衣机",
        "blocks": [
            {"type": "list_item", "name": "Programs", "label": "程序", "rows": 5, "items": PROGRAMS},
            {"type": "wheel_picker", "name": "Timer", "label": "预约", "columns": [HOURS, MINUTES, MODES]},
            {"type": "list_item", "name": "Recent", "rows": 2},
        ],
        "footer": {"primary": "启动"},
    },
}

MAIN = r"""
#include <cstdio>
#include <string>
#include "washerData.h"

// Stand-in for the framework's list item: the members the fill functions set.
struct Item {
    std::string title, value, icon;
    bool chevron = false;
};

int other_count();

template <typename Fill>
static void column(const char *name, int n, Fill fill) {
    for (int i = 0; i < n; ++i) {
        Item item;
        fill(item, i);
        std::printf("%s\x1f%s\x1e", name, item.title.c_str());
    }
}

int main() {
    for (int i = 0; i < washerData::ListProgramsCount(); ++i) {
        Item item;
        washerData::fillListProgramsItem(item, i);
        std::printf("Programs\x1f%s\x1f%s\x1f%s\x1f%d\x1e", item.title.c_str(), item.value.c_str(),
                    item.icon.c_str(), item.chevron ? 1 : 0);
    }
    column("Col1", washerData::ListTimerCol1Count(), [](Item &it, int i) { washerData::fillListTimerCol1Item(it, i); });
    column("Col2", washerData::ListTimerCol2Count(), [](Item &it, int i) { washerData::fillListTimerCol2Item(it, i); });
    column("Col3", washerData::ListTimerCol3Count(), [](Item &it, int i) { washerData::fillListTimerCol3Item(it, i); });
    // Out of range and an empty list: an empty row, no crash.
    Item none;
    none.title = "x";
    washerData::fillListProgramsItem(none, 6);
    washerData::fillListRecentItem(none, 0);
    std::printf("edge\x1f%d\x1f%s\x1f%s\x1f%d\x1f%d\x1e", washerData::ListRecentCount(), none.title.c_str(),
                washerData::ListTimerCol3Value(-1), other_count(), washerData::ListProgramsRow(-1).chevron ? 1 : 0);
    return 0;
}
"""

OTHER = r"""
#include "washerData.h"
// A second translation unit: the header defines nothing twice.
int other_count() { return washerData::ListProgramsCount() + washerData::ListTimerCol1Count(); }
"""

failures = []


def check(cond, what):
    if not cond:
        failures.append(what)


def compose(project, *extra):
    r = subprocess.run([a.exe, os.path.join(project, "washer.json"), "--project", project, "--page", "washer",
                        *extra], capture_output=True, text=True)
    if r.returncode != 0:
        sys.exit(f"compose failed ({r.returncode}):\n{r.stdout}\n{r.stderr}")
    return r.stdout


with tempfile.TemporaryDirectory() as tmp:
    project = os.path.join(tmp, "product")
    os.makedirs(project)
    with open(os.path.join(project, "washer.json"), "w", encoding="utf-8") as f:
        json.dump(spec, f, ensure_ascii=False)
    report = compose(project)
    header = os.path.join(project, "src", "logic", "washerData.h")
    check(f"  列表/滚轮数据 → {header}（2 个列表 6 行 + 3 个滚轮列 {len(HOURS) + len(MINUTES) + len(MODES)} 个值）"
          in report, f"the report names the header:\n{report}")

    build = os.path.join(tmp, "build")
    os.makedirs(build)
    for name, text in (("main.cc", MAIN), ("other.cc", OTHER)):
        with open(os.path.join(build, name), "w", encoding="utf-8") as f:
            f.write(text)
    exe = os.path.join(build, "walk")
    cc = subprocess.run([cxx, "-std=c++11", "-Wall", "-Wextra", "-Werror", "-I", os.path.dirname(header),
                         os.path.join(build, "main.cc"), os.path.join(build, "other.cc"), "-o", exe],
                        capture_output=True, text=True)
    if cc.returncode != 0:
        sys.exit(f"the header does not compile:\n{cc.stderr}")
    out = subprocess.run([exe], capture_output=True, check=True).stdout.decode("utf-8")
    records = [r.split("\x1f") for r in out.split("\x1e") if r]

    rows = [r for r in records if r[0] == "Programs"]
    check([(r[1], r[2]) for r in rows] == [(p["title"], p["value"]) for p in PROGRAMS],
          f"every program's title and value, in order: {rows}")
    check(all(r[4] == "1" for r in rows), "every row draws its chevron")
    images = os.path.join(project, "resources", "images")
    for p, r in zip(PROGRAMS, rows):
        check(r[3].startswith(f"ic_{p['icon']}_") and r[3].endswith(".png"), f"row {p['title']}: icon {r[3]}")
    check(os.path.isfile(os.path.join(images, rows[0][3])), "the template row's icon picture exists")
    for col, values in (("Col1", HOURS), ("Col2", MINUTES), ("Col3", MODES)):
        got = [r[1] for r in records if r[0] == col]
        check(got == [str(v) for v in values], f"wheel column {col}: {got}")
    check(records[-1] == ["edge", "0", "", "", str(len(PROGRAMS) + len(HOURS)), "0"], f"edges: {records[-1]}")

    # The skeleton is the skeleton: the data lives only in the header.
    logic = open(os.path.join(project, "src", "logic", "washerLogic.cc"), encoding="utf-8").read()
    check("标准洗" not in logic and "onButtonClick_" in logic, "no data in the skeleton")

    # --no-logic leaves the logic file alone but still writes the header; --json-only writes neither.
    os.remove(header)
    with open(os.path.join(project, "src", "logic", "washerLogic.cc"), "a", encoding="utf-8") as f:
        f.write("// mine\n")
    compose(project, "--no-logic")
    check(os.path.isfile(header), "--no-logic writes the header")
    check(open(os.path.join(project, "src", "logic", "washerLogic.cc"), encoding="utf-8").read().endswith("// mine\n"),
          "--no-logic leaves the logic file")
    os.remove(header)
    compose(project, "--json-only")
    check(not os.path.exists(header), "--json-only writes no header")

for f in failures:
    print("FAIL", f)
print(f"{len(failures)} failures")
sys.exit(1 if failures else 0)
