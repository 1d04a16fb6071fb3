# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes any number of small files: a handful is encoded, all the others differ in their tags alone."""
import os
import subprocess
import tempfile

from . import covers, tags
from .catalogue import CHINESE_WORDS, LATIN_WORDS
from .encode import FORMATS, PLAIN, QUIET, write_whole

SECONDS = 2.5
VARIANTS = 4
COVERS = 8
COVER_BYTES = 22_000
TRACKS_OF_AN_ALBUM = 12
ALBUMS_OF_AN_ARTIST = 3


def _clip(extension, variant):
    pitch = 220 * 2 ** (variant * 4 / 12)
    tone = (f"aevalsrc=exprs='0.3*sin(2*PI*{pitch:.3f}*t)*exp(-t)+0.2*sin(2*PI*{pitch * 1.5:.3f}*t)*exp(-2*t)'"
            f":s=44100:d={SECONDS},afade=t=out:st={SECONDS - 0.3}:d=0.3,aformat=channel_layouts=stereo")
    with tempfile.TemporaryDirectory() as work:
        # A file and not a pipe: the encoders go back to fill in the length.
        made = os.path.join(work, "made")
        subprocess.run(QUIET + ["-f", "lavfi", "-i", tone] + PLAIN + FORMATS[extension][0] + [made], check=True)
        with open(made, "rb") as file:
            return file.read()


def _pick(words, number):
    return words[number % len(words)]


def _name(number, step):
    """A name of two words, Chinese or Latin in turn."""
    if number % 2:
        return f"{_pick(CHINESE_WORDS, number * step)}{_pick(CHINESE_WORDS, number // 3 + step)}"
    return f"{_pick(LATIN_WORDS, number * step)} {_pick(LATIN_WORDS, number // 3 + step)}"


def make_many(count, directory):
    """Makes count files in directory/<artist>/<album>/: two thirds MP3, one third FLAC, one third with a cover.

    File names are unique in the whole tree. The same count gives the same files.
    """
    clips = {extension: [_clip(extension, v) for v in range(VARIANTS)] for extension in ("mp3", "flac")}
    pictures = [covers.small_cover(i, COVER_BYTES) for i in range(COVERS)]
    writers = {"mp3": tags.mp3, "flac": tags.flac}
    for number in range(count):
        album = number // TRACKS_OF_AN_ALBUM
        artist = album // ALBUMS_OF_AN_ARTIST
        extension = "flac" if number % 3 == 2 else "mp3"
        tag = {"title": f"{_name(number, 7)} {number + 1}", "artist": f"{_name(artist, 3)} {artist + 1}",
               "album": f"{_name(album, 11)} {album + 1}", "track": number % TRACKS_OF_AN_ALBUM + 1,
               "tracks": TRACKS_OF_AN_ALBUM, "date": str(1990 + album % 35), "genre": "Demo"}
        # Every third album has covers, so both formats get their share of them.
        if album % 3 == 0:
            tag["cover"] = pictures[album // 3 % COVERS]
        folder = os.path.join(directory, tag["artist"], tag["album"])
        os.makedirs(folder, exist_ok=True)
        name = f"{tag['track']:02d} {tag['title']}.{extension}"
        write_whole(os.path.join(folder, name), writers[extension](clips[extension][number % VARIANTS], tag))
