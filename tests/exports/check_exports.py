#!/usr/bin/env python3
"""Checks a built library's export table against the lists of exported names in this folder.

Fails when a listed name is missing from the library, or when the library exports a symbol of ours
that no list names (an internal symbol leaking out). A list line is a free function's name or a class
name (which covers its members, vtable and typeinfo); "posix:" before a name limits it to the POSIX
build (the Win32 names the library provides there itself).
"""
import argparse
import pathlib
import re
import subprocess
import sys

IGNORED_PREFIXES = ("std::", "__gnu_cxx::", "__cxxabiv1::", "operator new", "operator delete")
IGNORED_NAMES = {"_init", "_fini", "__bss_start", "_edata", "_end"}
SPECIAL = re.compile(r"^(vtable for|typeinfo for|typeinfo name for|VTT for|construction vtable for|"
                     r"non-virtual thunk to|virtual thunk to|guard variable for) ")


def read_lists(folder, windows):
    names = set()
    for path in sorted(p for p in pathlib.Path(folder).glob("*.txt") if p.name != "CMakeLists.txt"):
        for line in path.read_text().splitlines():
            line = line.split("#", 1)[0].strip()
            if not line:
                continue
            if line.startswith("posix:"):
                if windows:
                    continue
                line = line[len("posix:"):].strip()
            names.add(line)
    return names


def exported_symbols(library, windows, tool):
    if windows:
        out = subprocess.run([tool, "-p", library], check=True, capture_output=True, text=True).stdout
        table = out.split("[Ordinal/Name Pointer] Table", 1)
        if len(table) < 2:
            return []
        symbols = re.findall(r"^\s*\[\s*\d+\]\s+(\S+)\s*$", table[1], re.M)
    else:
        out = subprocess.run([tool, "-D", "--defined-only", library], check=True, capture_output=True,
                             text=True).stdout
        symbols = [line.split()[-1] for line in out.splitlines() if len(line.split()) >= 3]
    demangled = subprocess.run(["c++filt"], input="\n".join(symbols), check=True, capture_output=True,
                               text=True).stdout.splitlines()
    return demangled


def strip_templates(text):
    out, depth = [], 0
    for ch in text:
        if ch == "<":
            depth += 1
        elif ch == ">":
            depth -= 1
        elif depth == 0:
            out.append(ch)
    return "".join(out)


def qualified_name(symbol):
    """The qualified name without parameters, templates or return type."""
    symbol = SPECIAL.sub("", symbol)
    depth, end = 0, len(symbol)
    for i, ch in enumerate(symbol):
        if ch in "<":
            depth += 1
        elif ch == ">":
            depth -= 1
        elif ch == "(" and depth == 0:
            end = i
            break
    name = strip_templates(symbol[:end]).strip()
    return name.split(" ")[-1] if " " in name and "operator" not in name else name


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("library")
    parser.add_argument("--lists", default=str(pathlib.Path(__file__).parent))
    parser.add_argument("--windows", action="store_true")
    parser.add_argument("--tool", default="nm")
    args = parser.parse_args()

    expected = read_lists(args.lists, args.windows)
    found_names = set()
    leaks = []
    for symbol in exported_symbols(args.library, args.windows, args.tool):
        name = qualified_name(symbol)
        if symbol in IGNORED_NAMES or name.startswith(IGNORED_PREFIXES) or \
           SPECIAL.sub("", symbol).startswith(IGNORED_PREFIXES):
            continue
        parts = name.split("::")
        owners = {"::".join(parts[:i]) for i in range(1, len(parts) + 1)}
        if owners & expected:
            found_names |= owners & expected
        else:
            leaks.append(symbol)

    missing = sorted(expected - found_names)
    for name in missing:
        print(f"missing export: {name}")
    for symbol in sorted(set(leaks)):
        print(f"unlisted export: {symbol}")
    print(f"{len(found_names)} listed names exported, {len(missing)} missing, {len(set(leaks))} unlisted")
    return 1 if missing or leaks else 0


if __name__ == "__main__":
    sys.exit(main())
