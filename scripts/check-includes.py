#!/usr/bin/env python3
"""Checks who includes whom in src: no file includes one of a room above its own, and no circle of files grows.

A file and its header count as one. Exits with 1 and a line for each fault.
"""

import pathlib
import re
import sys

# From the ground up; rooms of one line stand side by side and don't include each other.
FLOORS = [
    ["support"],
    ["parameters", "dsp"],
    ["content"],
    ["core"],
    ["widgets"],
    ["skin", "browser"],
    ["editor"],
    ["effect"],
    ["dsp/phaser"],
    ["product"],
]

# Files that still need each other, by room. A number may only fall.
CIRCLES = {"core": 2, "editor": 2, "effect": 2, "product": 2, "skin": 32}

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "src"


def room_of(path):
    rooms = [room for floor in FLOORS for room in floor if path.startswith(room + "/")]
    return max(rooms, key=len, default=None)


def floor_of(room):
    return next(index for index, floor in enumerate(FLOORS) if room in floor)


def read_includes():
    """Returns for each file of src the files of src that it includes."""
    includes = {}

    for file in sorted(SOURCES.rglob("*")):
        if file.suffix in (".h", ".cpp"):
            named = re.findall(r'^#include "([^"]+)"', file.read_text(), re.MULTILINE)
            includes[str(file.relative_to(SOURCES))] = [name for name in named if (SOURCES / name).exists()]

    return includes


def find_wrong_directions(includes):
    for path, targets in includes.items():
        room = room_of(path)

        if room is None:
            yield f"src/{path}: lies in no room that is known"
            continue

        for target in targets:
            other = room_of(target)
            is_beside = other != room and floor_of(other) == floor_of(room)

            if floor_of(other) > floor_of(room) or is_beside:
                yield f"src/{path}: includes {target}, which isn't below it"


def find_circles(includes):
    """Returns the sets of units that reach each other, by Tarjan's algorithm."""
    units = {}

    for path, targets in includes.items():
        unit = path.rsplit(".", 1)[0]
        units.setdefault(unit, set()).update(target.rsplit(".", 1)[0] for target in targets)
        units[unit].discard(unit)

    index, low, stack, circles = {}, {}, [], []

    def visit(unit):
        index[unit] = low[unit] = len(index)
        stack.append(unit)

        for target in units[unit]:
            if target not in index:
                visit(target)
                low[unit] = min(low[unit], low[target])
            elif target in stack:
                low[unit] = min(low[unit], index[target])

        if low[unit] == index[unit]:
            circle = set()

            while unit not in circle:
                circle.add(stack.pop())

            if len(circle) > 1:
                circles.append(circle)

    for unit in units:
        if unit not in index:
            visit(unit)

    return circles


def find_new_circles(includes):
    for circle in find_circles(includes):
        room = room_of(min(circle) + "/")

        if len(circle) > CIRCLES.get(room, 0):
            yield f"src/{room}: {len(circle)} files include each other in a circle: {', '.join(sorted(circle))}"


def main():
    sys.setrecursionlimit(10000)
    includes = read_includes()
    faults = [*find_wrong_directions(includes), *find_new_circles(includes)]
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
