#!/usr/bin/env python3
"""Keeps the fuzzers' stored inputs in one file, which has the same bytes whoever packs the same inputs.

    corpus.py pack FOLDER          all anew: a folder for each target, its inputs in it
    corpus.py add TARGET FILE...   the same and some more
"""

import hashlib
import io
import lzma
import pathlib
import sys
import tarfile

ARCHIVE = pathlib.Path(__file__).resolve().parent / "corpus.tar.xz"


def stored():
    with tarfile.open(ARCHIVE) as archive:
        return {member.name: archive.extractfile(member).read() for member in archive}


def pack(inputs):
    # Neither times nor owners: no field but name, length and mode.
    with lzma.open(ARCHIVE, "wb", preset=9 | lzma.PRESET_EXTREME) as packed, tarfile.open(
            fileobj=packed, mode="w", format=tarfile.USTAR_FORMAT) as archive:
        for name, content in sorted(inputs.items()):
            member = tarfile.TarInfo(name)
            member.size = len(content)
            archive.addfile(member, io.BytesIO(content))


def named(target, paths):
    """By what is in them, as the fuzzers name theirs: what is there already is there once."""
    contents = [path.read_bytes() for path in paths]
    return {f"{target}/{hashlib.sha1(content).hexdigest()}": content for content in contents}


def main():
    match sys.argv[1:]:
        case ["pack", folder]:
            inputs = {}
            for target in pathlib.Path(folder).iterdir():
                inputs |= named(target.name, target.iterdir())
            pack(inputs)
        case ["add", target, *files] if files:
            inputs = stored()
            if target not in {name.split("/")[0] for name in inputs}:
                sys.exit(f"no fuzzer {target}")
            pack(inputs | named(target, map(pathlib.Path, files)))
        case _:
            sys.exit(__doc__)


main()
