#!/usr/bin/env python3
"""Writes the program's bitmaps, its icon and its companion's into a folder: make_art.py FOLDER.

The same drawings always give the same bytes. Nothing but the standard library is used.
"""

import pathlib
import sys

from addrbook_icon import draw_address_book
from files import bmp, ico
from grid import read_palette, strip
from icon import ICON_SIZES, draw_icon

# What the names of a bitmap's other sizes end in, and how many quarters of the first they have.
SIZES = {"": 4, "_125": 5, "_150": 6, "_2x": 8, "_250": 10, "_300": 12}

# Bitmap: size of its images in pixels at 96 dpi, and the images in the order of their indexes.
STRIPS = {
    "editor_bar": (12, ["edit_categories", "assign_categories", "assign_contacts", "timer", "time_stamp",
                        "edit_entry", "zoom", "priority_low", "priority_normal", "priority_high",
                        "sensitivity_normal", "sensitivity_personal", "sensitivity_private",
                        "sensitivity_confidential", "journal", "save"]),
    "list_images": (12, ["priority_low", "priority_normal", "priority_high", "blank"]),
    "header_images": (12, ["blank", "sort_ascending", "sort_descending", "header_priority",
                           "header_priority_sorted"]),
    "bands": (16, ["journal", "edit_entry"]),
    "filter": (16, ["filter"]),
    "new_entry": (16, ["new_entry"]),
    "edit_entry": (16, ["edit_entry"]),
    "standard": (16, ["cut", "copy", "paste", "delete", "find"]),  # the system's take their place at 96 dpi, but for delete
}


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    palette = read_palette()
    for bitmap, (size, names) in STRIPS.items():
        for ending, quarters in SIZES.items():
            (folder / f"{bitmap}{ending}.bmp").write_bytes(bmp(strip(names, size * quarters // 4), palette))
    (folder / "addrbook.ico").write_bytes(ico([draw_address_book(size) for size in ICON_SIZES]))
    (folder / "journal.ico").write_bytes(ico([draw_icon(size) for size in ICON_SIZES]))


if __name__ == "__main__":
    main()
