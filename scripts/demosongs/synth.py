# SPDX-License-Identifier: GPL-3.0-or-later
"""A small synthesiser: turns a piece into interleaved stereo samples, with the standard library alone.

Speed comes from notes that are made once and mixed many times, and from mixing by map(), which loops in C.
"""
import math
from array import array
from functools import lru_cache
from operator import add

RATE = 32000
TABLE = 4096
INTRO_BARS = 1
OUTRO_BARS = 1
PEAK = .8


def _table(partials):
    wave = [sum(g * math.sin(2 * math.pi * h * i / TABLE) for h, g in partials) for i in range(TABLE)]
    peak = max(map(abs, wave))
    return [x / peak for x in wave]


# Each voice: what remains of the tone, what sparkles at its start, attack, decay of both (seconds).
VOICES = {
    "pluck": (_table(((1, 1), (2, .35), (3, .12))), _table(((4, .6), (6, .3), (9, .15))), .004, .55, .12),
    "lead": (_table(((1, 1), (2, .22), (3, .18), (5, .05))), _table(((3, .5), (7, .2))), .018, 1.1, .18),
    "bass": (_table(((1, 1), (2, .18))), _table(((2, .5), (3, .2))), .012, .9, .15),
}
PAD = _table(((1, 1), (2, .3), (3, .14), (4, .05)))


@lru_cache(maxsize=None)
def _envelopes(voice, length):
    _, _, attack, decay, sparkle = VOICES[voice]
    rise, release = int(attack * RATE), min(length, int(.06 * RATE))
    body = [math.exp(-i / (decay * RATE)) for i in range(length)]
    shine = [.35 * math.exp(-i / (sparkle * RATE)) for i in range(length)]
    for curve in (body, shine):
        for i in range(min(rise, length)):
            curve[i] *= i / rise
        for i in range(release):
            curve[length - 1 - i] *= i / release
    return body, shine


@lru_cache(maxsize=None)
def _phases(midi, cents, length):
    step = 440 * 2 ** ((midi - 69 + cents / 100) / 12) * TABLE / RATE
    return [int(i * step) % TABLE for i in range(length)]


@lru_cache(maxsize=None)
def _note(voice, midi, length, gain):
    body, shine = VOICES[voice][:2]
    slow, fast = _envelopes(voice, length)
    return [gain * (body[k] * x + shine[k] * y) for k, x, y in zip(_phases(midi, 0, length), slow, fast)]


@lru_cache(maxsize=None)
def _pad(chord, length, cents, gain):
    rise, fall = int(.5 * RATE), int(.7 * RATE)
    swell = [gain * min(1, i / rise, (length - i) / fall) for i in range(length)]
    total = [0.0] * length
    for midi in chord:
        total = list(map(add, total, [PAD[k] for k in _phases(midi, cents, length)]))
    return [a * b for a, b in zip(total, swell)]


def _degree(piece, degree, octave=0):
    step = degree - 1
    return piece.key + piece.scale[step % 7] + 12 * (step // 7 + octave)


def _melody(piece):
    """Yields (start, length, MIDI number) in eighth notes from the first sung bar."""
    notes = []
    for position, token in enumerate(piece.melody.split()):
        if token == "-":
            if notes and notes[-1][0] + notes[-1][1] == position:
                notes[-1][1] += 1
        elif token != "0":
            octave = token.count("'") - token.count(",")
            notes.append([position, 1, _degree(piece, int(token[0]), octave)])
    return notes


class Layout:
    """Where the bars of a piece lie, in seconds; the verse takes its time tags from here."""

    def __init__(self, piece):
        self.eighth = 30 / piece.tempo
        self.bar = self.eighth * piece.eighths
        self.sung_bars = math.ceil(len(piece.melody.split()) / piece.eighths)
        self.bars = INTRO_BARS + self.sung_bars + OUTRO_BARS
        self.seconds = self.bars * self.bar + 1.2

    def verse_times(self, lines):
        return [(INTRO_BARS + i * self.sung_bars / lines) * self.bar for i in range(lines)]


def render(piece):
    """The piece as 32-bit floats, left and right in turn, at RATE."""
    layout = Layout(piece)
    count = int(layout.seconds * RATE)
    left, right = [0.0] * count, [0.0] * count

    def mix(target, at, note):
        start = int(at * RATE)
        stop = min(count, start + len(note))
        target[start:stop] = map(add, target[start:stop], note[:stop - start])

    roots = [int(d) for d in piece.chords.split()]
    pattern = [int(i) for i in piece.arpeggio.split()]
    for bar in range(layout.bars):
        root = roots[(bar - INTRO_BARS) % len(roots)] if bar < layout.bars - 1 else 1
        chord = tuple(_degree(piece, root + step) for step in (0, 2, 4))
        # Keep the harmony in one register, whatever its root.
        chord = tuple(sorted(midi - 12 if midi > piece.key + 9 else midi for midi in chord))
        at = bar * layout.bar
        length = int((layout.bar + .7) * RATE)
        mix(left, at, _pad(chord, length, -4, .10))
        mix(right, at, _pad(chord, length, 4, .10))
        if piece.bass and bar >= INTRO_BARS:
            note = _note("bass", chord[0] - 12, int(layout.bar * .9 * RATE), .30)
            mix(left, at, note)
            mix(right, at, note)
        if bar == layout.bars - 1:
            continue
        tones = chord + (chord[0] + 12,)
        for i, tone in enumerate(pattern):
            loud = .22 if i == 0 else .16
            # The arpeggio walks from one side to the other.
            near, far = (left, right) if i % 2 == 0 else (right, left)
            mix(near, at + i * layout.eighth, _note("pluck", tones[tone] + 12, int(1.2 * RATE), loud))
            mix(far, at + i * layout.eighth + .011, _note("pluck", tones[tone] + 12, int(1.2 * RATE), loud / 2))
    for start, eighths, midi in _melody(piece):
        at = INTRO_BARS * layout.bar + start * layout.eighth
        note = _note("lead", midi + 12, int((eighths * layout.eighth + .25) * RATE), .34)
        mix(left, at, note)
        mix(right, at, note)

    peak = max(max(map(abs, left)), max(map(abs, right)))
    samples = array("f", bytes(8 * count))
    samples[0::2] = array("f", [x * PEAK / peak for x in left])
    samples[1::2] = array("f", [x * PEAK / peak for x in right])
    return samples.tobytes(), layout
