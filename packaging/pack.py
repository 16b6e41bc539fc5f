"""Packs files into an archive of one date, so that the same files make the same bytes.

    pack.py ARCHIVE YYYY-MM-DD FOLDER [FILE...]

The files, all that the folder has where none is named, have the folder's name in front in the archive.
"""

import os
import pathlib
import sys
import zipfile


def main(archive, date, folder, *files):
    moment = (*map(int, date.split("-")), 0, 0, 0)
    if not files:
        files = [path.relative_to(folder).as_posix() for path in pathlib.Path(folder).rglob("*") if path.is_file()]
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as packed:
        for name in sorted(files):
            entry = zipfile.ZipInfo(f"{os.path.basename(folder)}/{name}", moment)
            entry.external_attr = 0o644 << 16
            entry.create_system = 3  # what the attributes mean, on whatever system they are written
            entry.compress_type = zipfile.ZIP_DEFLATED
            with open(os.path.join(folder, name), "rb") as source:
                packed.writestr(entry, source.read())


main(*sys.argv[1:])
