#!/usr/bin/env python3
"""Checks that the folders of mcad/src include only what mcad/src/CMakeLists.txt lets them depend on.

A folder belongs to the subsystem whose SOURCES and HEADERS stand in it. DEPENDS may name only subsystems that
are declared earlier, so the architecture has no cycles. The umbrella header includes every public one.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent / "mcad" / "src"
KEYWORDS = {"SOURCES", "HEADERS", "DEPENDS", "LINK"}


def declared_subsystems():
    """The zeq_subsystem() calls: name -> (folders, depends, public headers), in the order of the file."""
    text = re.sub(r"#.*", "", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))
    subsystems = {}
    for call in re.findall(r"zeq_subsystem\(([^)]*)\)", text):
        name, *words = call.split()
        lists = {keyword: [] for keyword in KEYWORDS}
        for word in words:
            if word in KEYWORDS:
                current = lists[word]
            else:
                current.append(word)
        folders = {str(pathlib.PurePath(file).parent) for file in lists["SOURCES"] + lists["HEADERS"]}
        subsystems[name] = (folders, lists["DEPENDS"], lists["HEADERS"])
    return subsystems


def main():
    subsystems = declared_subsystems()
    owner = {}
    problems = []
    for name, (folders, depends, _) in subsystems.items():
        problems += [f"mcad/src/CMakeLists.txt: {name} depends on {other}, which is not declared before it"
                     for other in depends if other not in owner.values()]
        owner.update({folder: name for folder in folders})

    for file in sorted(ROOT.rglob("*.h")) + sorted(ROOT.rglob("*.cpp")):
        here = owner.get(str(file.parent.relative_to(ROOT)))
        if here is None:
            if file.name != "zeq_api.h":  # the umbrella includes everything
                problems.append(f"{file}: its folder belongs to no subsystem")
            continue
        allowed = {here, *subsystems[here][1]}
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            include = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
            if not include:
                continue
            used = owner.get(str(pathlib.PurePath(include[1]).parent))
            if used not in allowed:
                problems.append(f'{file}:{number}: {here} must not include "{include[1]}" ({used or "unknown folder"})')

    headers = {header for _, _, headers in subsystems.values() for header in headers}
    umbrella = set(re.findall(r'#include "([^"]+)"', (ROOT / "zeq_api" / "zeq_api.h").read_text(encoding="utf-8")))
    for header in sorted(headers - umbrella):
        # What another header stands for, as the kernel's do behind acis.h, need not be named again.
        if not header.startswith("platform/acis/"):
            problems.append(f"zeq_api.h does not include the public header {header}")

    print(*problems, sep="\n", end="\n" if problems else "", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
