# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes sounds and pictures with ffmpeg, each when it is first asked for."""
import colorsys
import subprocess
import threading
from pathlib import Path

SIDE = 400  # pixels
AMPLITUDE = .5
FADE = .02  # seconds; without it both ends click


class Media:
    def __init__(self, directory):
        self._directory = Path(directory)
        self._locks = {}
        self._guard = threading.Lock()

    def sound(self, song, quality):
        """Path of the song's tone: FLAC, or MP3 with the bit rate that the quality names."""
        name = f"{song.platform}-{song.number}-{quality}.{'flac' if quality == 'flac' else 'mp3'}"
        wave = f"{AMPLITUDE}*sin(2*PI*{song.frequency}*t)"
        source = f"aevalsrc={wave}|{wave}:s=44100:d={song.seconds}"
        fades = f"afade=t=in:d={FADE},afade=t=out:st={max(song.seconds - FADE, 0)}:d={FADE}"
        coding = ["-c:a", "flac", "-sample_fmt", "s16"] if quality == "flac" else ["-c:a", "libmp3lame", "-b:a", quality]
        return self._made(name, ["-f", "lavfi", "-i", source, "-af", fades, *coding])

    def picture(self, song, ending):
        """Path of the song's cover, four colours of its own that run into each other. ending is "jpg" or "png"."""
        hue = song.frequency / 2500
        corners = ((hue, .4, .98), (hue + .08, .55, .85), (hue + .16, .7, .6), (hue + .24, .8, .35))
        pixels = bytes(round(part * 255) for corner in corners for part in colorsys.hsv_to_rgb(*corner))
        return self._made(f"{song.platform}-{song.number}.{ending}",
                          ["-f", "rawvideo", "-pix_fmt", "rgb24", "-s", "2x2", "-i", "pipe:", "-vf",
                           f"scale={SIDE}:{SIDE}:flags=bilinear", "-frames:v", "1", "-pix_fmt",
                           "yuvj420p" if ending == "jpg" else "rgb24"], pixels)

    def _made(self, name, arguments, given=b""):
        path = self._directory / name
        with self._guard:
            lock = self._locks.setdefault(name, threading.Lock())
        with lock:
            if not path.exists():
                part = path.with_name("part-" + name)
                subprocess.run(["ffmpeg", "-hide_banner", "-loglevel", "error", "-y", *arguments, part],
                               input=given, check=True)
                part.rename(path)
        return path
