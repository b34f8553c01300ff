#!/usr/bin/env python3
"""Checks that the key of every row of a form is the name of the member that it is bound to.

No round trip tells a key on the wrong member of the same type: what is written wrong is read wrong. Where a key
differs from its member by intent, form_names.txt lists it, and a test sets the member and looks for the key.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FORM = re.compile(r"struct ([\w:]+?)(?:<[^>]*>)?::JsonForm \{")
ROW = re.compile(r'json::\w+(?:<[^;()]*?>)?\(\s*L"(\w+)",\s*&([\w:]+)::(\w+)')


def words(name):
    return re.findall(r"[A-Z]*[a-z0-9]+|[A-Z]+", re.sub(r"^m_", "", name).replace("_", " "))


def names(key, member):
    """Whether the key has words of the member's name in their order, some left out, some cut short."""
    if key.replace("_", "") == re.sub("^m_", "", member).lower():
        return True
    left = iter(word.lower() for word in words(member))
    return all(any(word.startswith(part) for word in left) for part in key.lower().split("_"))


def main():
    exceptions = {tuple(line.split()) for line in
                  (ROOT / "scripts" / "form_names.txt").read_text(encoding="utf-8").splitlines()
                  if line and not line.startswith("#")}
    unused = set(exceptions)
    problems, rows, bound = [], 0, set()
    for file in sorted((ROOT / "mcad" / "src").rglob("*.cpp")):
        form = None
        text = file.read_text(encoding="utf-8")
        for match in re.finditer(f"{FORM.pattern}|{ROW.pattern}", text):
            if match[1]:
                form = match[1]
                continue
            key, member = match[2], match[4]
            rows += 1
            line = text.count("\n", 0, match.start()) + 1
            if (file, form, match[3], member) in bound:
                problems.append(f"{file}:{line}: {form} binds {member} twice")
            bound.add((file, form, match[3], member))
            if (form, key, member) in exceptions:
                unused.discard((form, key, member))
            elif not names(key, member):
                problems.append(f'{file}:{line}: {form} binds "{key}" to {member}')
    problems += [f"scripts/form_names.txt: nothing needs {' '.join(row)}" for row in sorted(unused)]
    if rows < 200:
        problems.append(f"only {rows} rows were found: the pattern no longer fits")
    print(*problems, sep="\n", end="\n" if problems else "", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
