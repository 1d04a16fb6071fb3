# SPDX-License-Identifier: GPL-3.0-or-later
"""The eight made songs: what they are called, what they sound like and what is sung.

Every artist, album, title and verse here is invented. Melodies are written as numbered notation: one token per
eighth note, a digit is a degree of the scale, ' raises it an octave, , lowers it, - holds and 0 rests.
"""
from dataclasses import dataclass

MAJOR = (0, 2, 4, 5, 7, 9, 11)
MINOR = (0, 2, 3, 5, 7, 8, 10)


@dataclass(frozen=True)
class Album:
    title: str
    artist: str
    year: str
    genre: str
    cover: str


@dataclass(frozen=True)
class Piece:
    title: str
    album: Album
    artist: str
    track: int
    extension: str
    key: int  # MIDI number of the first degree
    scale: tuple
    tempo: int  # quarter notes a minute
    eighths: int  # eighth notes in a bar
    chords: str  # one degree for each bar, repeated
    arpeggio: str  # chord tones by index, one per eighth note, repeated
    melody: str
    bass: bool
    verse: tuple

    @property
    def file_name(self):
        return f"{self.track:02d} {self.title}.{self.extension}"


PAPER_BOATS = Album("纸船与灯塔", "折纸半岛", "2024", "民谣", "dusk")
QUILLWATER = Album("The Quillwater Almanac", "Marlow & Quince", "2025", "Ambient", "moon")

PIECES = (
    Piece("纸船过桥", PAPER_BOATS, "折纸半岛", 1, "mp3", 60, MAJOR, 88, 8, "1 6 4 5", "0 1 2 3 2 1 2 1",
          "3 - 5 - 6 5 3 - 2 - 3 5 2 - - 0 1' - 6 - 5 6 3 - 2 3 5 - 1 - - 0 "
          "5 - 6 1' - 6 5 - 3 - 5 6 5 - - 0 6 - 5 3 - 2 1 - 2 3 2 1 1 - - -",
          True, ("折一只纸船 放进清晨的河", "桥上的风 替我数到第七个波", "它载着昨天 没寄出的信",
                 "慢慢地 慢慢地 漂过了你的影子")),
    Piece("灯塔值班员", PAPER_BOATS, "折纸半岛", 2, "flac", 57, MINOR, 76, 8, "1 6 3 7", "0 2 1 2 3 2 1 2",
          "1 - 3 - 5 - 4 3 3 - - 1 - - 2 - 5 - 7 - 5 - 3 - 4 - 2 - - - 0 0 "
          "1' - 7 5 - - 3 - 6 - 5 3 - - 1 - 3 - 2 - 5 - 4 3 2 - 1 - - - - -",
          True, ("海面把月亮 叠成了八份", "值班的人 在灯下补一张网", "他说迷路的船 其实只是想家",
                 "于是每一圈光 都转得很慢")),
    Piece("雨停在三点钟", PAPER_BOATS, "折纸半岛", 3, "m4a", 62, MAJOR, 96, 6, "1 4 6 5", "0 1 2 1 3 2",
          "5 - 3 5 6 - 5 - - 3 - 0 6 - 1' 6 5 - 3 - - - 0 0 2 - 3 5 - 6 3 - - 2 - 0 1 - 2 3 5 3 2 - - 1 - - "
          "5 - 6 1' - 6 5 - - 3 - 0 6 - 5 3 2 - 1 - - - - -",
          False, ("雨停在三点钟 茶还温着", "屋檐下 麻雀正商量晚饭", "你把伞收好 靠在门边",
                  "像一句 说完的话")),
    Piece("回南天的窗", PAPER_BOATS, "折纸半岛 / 阿箬", 4, "ogg", 55, MAJOR, 72, 8, "6 4 1 5", "0 2 3 2 1 2 3 2",
          "6 - - 1' 6 - 5 - 3 - 5 - 6 - - 0 5 - 3 - 2 - 3 5 2 - - - 1 - 0 0 "
          "3 - 5 6 - 1' 6 - 5 - 3 - 2 - - 0 1 - 2 3 5 - 3 2 1 - - - - - - -",
          True, ("窗上有水 写了又流走", "我画一座岛 给不出门的猫", "等到太阳 从云的口袋掉出来",
                 "把衣裳 和心事一起晾好")),
    Piece("Teacup Weather", QUILLWATER, "Marlow & Quince", 1, "opus", 64, MAJOR, 104, 8, "1 5 6 4", "0 2 1 3 2 3 1 2",
          "5 3 1 3 5 - 6 5 4 2 7, 2 4 - - 0 6 5 3 1 3 - 5 6 4 - 3 2 1 - - 0 "
          "1' - 7 5 - 6 5 - 4 - 2 4 - 5 2 - 3 5 6 - 5 3 1 - 2 - 1 7, 1 - - -",
          True, ("A storm the size of a teacup", "went round and round the spoon", "we waited at the window",
                 "for the thunder to cool")),
    Piece("A Jar of Northern Light", QUILLWATER, "Marlow & Quince", 2, "wav", 59, MINOR, 66, 8, "1 3 6 4", "0 1 2 3 2 3 2 1",
          "5 - - - 3 - 4 - 5 - 7 - - - 0 0 1' - - 7 5 - 3 - 4 - - - - - 0 0 "
          "3 - 4 - 5 - 1' - 7 - 5 - - - 3 - 6 - 5 - 3 - 4 2 1 - - - - - - -",
          False, ("I kept a jar of northern light", "behind the flour and the tea", "it hums a little every night",
                  "and leaves the lid ajar for me")),
    Piece("Ferry Lantern, 渡口灯", QUILLWATER, "Marlow & Quince", 3, "aiff", 65, MAJOR, 92, 6, "1 6 2 5", "0 2 3 1 3 2",
          "3 - 5 1' - 7 6 - - 5 - 0 4 - 6 2' - 1' 7 - - 5 - 0 3 - 2 1 - 3 6, - - 1 - 0 2 - 4 6 5 4 3 - - 2 - - "
          "5 - 3 1 - 3 5 - 6 7 - 0 1' - 6 4 - 2 1 - - - - -",
          True, ("The ferry keeps a lantern low", "渡口的灯 慢慢地走", "and every oar stroke writes your name",
                 "水记住了 又松开手")),
    Piece("Sleepers Between Two Harbours", QUILLWATER, "Marlow & Quince feat. 砚溪", 4, "wv", 60, MAJOR, 80, 8,
          "4 1 5 6", "3 2 1 2 0 2 1 2",
          "6 - 5 - 1' - - 6 5 - 3 - 2 - - 0 5 - 6 5 2 - 3 - 1 - - - - - 0 0 "
          "4 - 6 - 1' - 7 6 5 - 3 - 5 - - 0 2 - 5 - 7 - 6 5 1' - - - - - - -",
          True, ("Two harbours with one tide between", "the night train hums along the sand", "somebody folds a map of sleep",
                 "and leaves the sea in my hand")),
)

# Words of which the titles of many small files are made.
LATIN_WORDS = ("Amber", "Bramble", "Cinder", "Drift", "Ember", "Fallow", "Gossamer", "Hollow", "Inlet", "Juniper",
               "Kestrel", "Larch", "Mallow", "Nettle", "Orchard", "Pebble", "Quill", "Rushes", "Sable", "Thistle")
CHINESE_WORDS = ("山雾", "竹影", "晚潮", "旧巷", "青瓦", "长堤", "雪线", "麦浪", "石桥", "萤火",
                 "秋千", "渔灯", "茶烟", "风铃", "河灯", "草垛", "月台", "松针", "云梯", "纸鸢")
