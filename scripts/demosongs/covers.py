# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws album covers: skies, a disc and rows of hills.

A picture is kept column by column, since every shape here is then one run of pixels in each column; ffmpeg turns
it round, halves it (which smooths the edges) and makes the JPEG.
"""
import math
import subprocess

SIDE = 1200


def _gradient(stops):
    """A column of SIDE pixels through evenly spaced colours."""
    pixels = bytearray()
    for y in range(SIDE):
        place = y / (SIDE - 1) * (len(stops) - 1)
        i = min(int(place), len(stops) - 2)
        for a, b in zip(stops[i], stops[i + 1]):
            pixels.append(round(a + (b - a) * (place - i)))
    return pixels


def _rgb(text):
    return tuple(bytes.fromhex(text))


def _fade(base, colour, strength):
    """The base column with colour laid over it."""
    return bytearray(round(p + (colour[i % 3] - p) * strength) for i, p in enumerate(base))


class _Scene:
    def __init__(self, sky):
        self.sky = _gradient([_rgb(c) for c in sky])
        self.columns = [bytearray(self.sky) for _ in range(SIDE)]

    def disc(self, cx, cy, radius, column):
        for x in range(max(0, cx - radius), min(SIDE, cx + radius + 1)):
            half = int(math.sqrt(radius * radius - (x - cx) ** 2))
            a, b = 3 * max(0, cy - half), 3 * min(SIDE, cy + half)
            self.columns[x][a:b] = column[a:b]

    def glow(self, cx, cy, radius, colour, steps=5, strength=.1):
        for i in range(steps):
            self.disc(cx, cy, radius + (steps - i) * radius // 4, _fade(self.sky, colour, strength * (i + 1) / 2))

    def hills(self, level, waves, stops):
        fill = _gradient([_rgb(c) for c in stops])
        for x, column in enumerate(self.columns):
            top = level + sum(a * math.sin(2 * math.pi * f * x / SIDE + p) for a, f, p in waves)
            start = 3 * max(0, int(top))
            column[start:] = fill[start:]

    def bar(self, cx, y, width, height, column):
        for x in range(max(0, cx - width // 2), min(SIDE, cx + width // 2)):
            self.columns[x][3 * y:3 * (y + height)] = column[3 * y:3 * (y + height)]


def _dusk():
    scene = _Scene(("2b3a67", "8e5572", "f2a65a", "ffd9a0"))
    scene.glow(800, 600, 170, _rgb("ffe8b8"))
    scene.disc(800, 600, 170, _gradient([_rgb("fff3cf"), _rgb("ffe0a3"), _rgb("ffc27a")]))
    scene.hills(760, ((40, 1.3, .4), (18, 3.1, 1.2)), ("7d4a6e", "7d4a6e", "a2567a"))
    scene.hills(880, ((46, .9, 2.4), (16, 2.7, .3)), ("4b3a66", "4b3a66", "6a4678"))
    # A paper boat's wake: light on the water.
    scene.hills(1000, ((10, 2.2, .9),), ("26305a", "26305a", "33406e"))
    for i, width in enumerate((320, 220, 260, 140)):
        scene.bar(800 + (i % 2) * 26 - 13, 1030 + 38 * i, width, 9, _gradient([_rgb("f6c98f"), _rgb("f6c98f")]))
    return scene


def _moon():
    scene = _Scene(("071526", "0f2f4a", "1f5d6e", "7fb7a8"))
    for i in range(70):
        x, y = (i * 467 + 131) % SIDE, (i * i * 61 + i * 149) % 620
        scene.disc(x, y, 2 + i % 3, _gradient([_rgb("dcefff"), _rgb("b7d8e6")]))
    scene.glow(400, 400, 200, _rgb("cfe6e0"), strength=.07)
    scene.disc(400, 400, 200, _gradient([_rgb("f7f3df"), _rgb("e9e6cf"), _rgb("d7dcc8")]))
    scene.disc(330, 350, 34, _gradient([_rgb("e2dfc6"), _rgb("dcdcc4")]))
    scene.disc(460, 470, 50, _gradient([_rgb("e2dfc6"), _rgb("dadcc6")]))
    scene.hills(820, ((60, 1.1, 1.0), (22, 3.4, .2)), ("1a4a5a", "1a4a5a", "17414f"))
    scene.hills(930, ((38, 1.7, 3.0), (14, 4.2, 1.1)), ("10303f", "10303f", "0d2733"))
    scene.hills(1040, ((24, 1.2, .6),), ("081a26", "081a26", "06131c"))
    return scene


def _plain(number):
    """One of many simple covers, told apart by hue and by the height of its hills."""
    def tint(lightness, turn):
        angle = 2 * math.pi * (number * .137 + turn)
        return "%02x%02x%02x" % tuple(
            max(0, min(255, round(lightness + 58 * math.cos(angle + k * 2 * math.pi / 3)))) for k in range(3))
    scene = _Scene((tint(70, 0), tint(140, .1), tint(200, .2)))
    scene.disc(300 + number * 97 % 600, 380, 150, _gradient([_rgb(tint(225, .25)), _rgb(tint(200, .2))]))
    scene.hills(700, ((60, 1 + number % 3, number),), (tint(110, .3), tint(110, .3)))
    scene.hills(900, ((40, 1.5 + number % 2, number * 2),), (tint(60, .4), tint(60, .4)))
    return scene


def _jpeg(scene, side, quality):
    command = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-f", "rawvideo", "-pix_fmt", "rgb24",
               "-s", f"{SIDE}x{SIDE}", "-i", "pipe:0", "-vf", f"transpose=cclock_flip,scale={side}:{side}:flags=area",
               "-frames:v", "1", "-c:v", "mjpeg", "-pix_fmt", "yuvj444p", "-q:v", str(quality),
               "-f", "image2pipe", "pipe:1"]
    return subprocess.run(command, input=b"".join(scene.columns), stdout=subprocess.PIPE, check=True).stdout


def album_cover(name):
    """A cover of 600 by 600 as JPEG bytes."""
    return _jpeg({"dusk": _dusk, "moon": _moon}[name](), 600, 3)


def small_cover(number, size):
    """A cover of 300 by 300, brought to exactly size bytes by a comment segment, so that figures compare."""
    data = _jpeg(_plain(number), 300, 4)
    spare = size - len(data) - 4
    if not 0 <= spare <= 65533:
        raise ValueError(f"a cover of {len(data)} bytes cannot be brought to {size}")
    return data[:2] + b"\xff\xfe" + (spare + 2).to_bytes(2, "big") + bytes(spare) + data[2:]
