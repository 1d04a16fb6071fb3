# SPDX-License-Identifier: GPL-3.0-or-later
"""The songs and charts that the server knows, read from one JSON file for each platform.

A file holds "songs" and "toplists". Every title, artist and verse in them is invented. Fields of a song:

  id, name, artist, album   as the API tells them; an id is its own on one platform only
  frequency                 hertz of the tone that is heard
  seconds                   how long it is heard; 30
  qualities                 what it can be had in, the best last; all of QUALITIES
  address                   how type=url answers:
                              "redirect"  leads on to the sound (usual)
                              "json"      {"url": the sound's address}
                              "text"      the sound's address and a line break
                              "audio"     the sound itself
                              "none"      a message, and no address
  picture                   how type=pic answers: "jpeg" (usual), "png", "redirect", or "error", which is a
                            message in JSON with status 200
  lyrics                    how type=lrc answers: "lrc" (usual), "plain" or "none", which is an empty text
  verse                     the lines that are sung

Of a chart: id, name, updateFrequency (may be missing) and songs, a list of ids.
"""
import json
from dataclasses import dataclass, field
from pathlib import Path

PLATFORMS = ("netease", "kuwo", "qq")
QUALITIES = ("128k", "192k", "320k", "flac")
FORMS = {"address": ("redirect", "json", "text", "audio", "none"),
         "picture": ("jpeg", "png", "redirect", "error"),
         "lyrics": ("lrc", "plain", "none")}


@dataclass(frozen=True)
class Song:
    platform: str
    number: int  # place in the file: names the files that are made
    id: str
    name: str
    artist: str
    album: str
    frequency: int
    verse: tuple
    seconds: float = 30
    qualities: tuple = QUALITIES
    address: str = "redirect"
    picture: str = "jpeg"
    lyrics: str = "lrc"

    def __post_init__(self):
        for name, forms in FORMS.items():
            if getattr(self, name) not in forms:
                raise ValueError(f"song {self.id}: {name} is one of {', '.join(forms)}")
        if not self.qualities or not set(self.qualities) <= set(QUALITIES):
            raise ValueError(f"song {self.id}: qualities are of {', '.join(QUALITIES)}")

    def quality(self, wanted):
        """What is given to who wants this: the best there is where it is not to be had."""
        return wanted if wanted in self.qualities else self.qualities[-1]

    def lrc(self):
        """Tags of the song, and its lines spread evenly."""
        lines = [f"[ti:{self.name}]", f"[ar:{self.artist}]", f"[al:{self.album}]"]
        step = self.seconds / (len(self.verse) + 1)
        for count, words in enumerate(self.verse, 1):
            hundredths = round(count * step * 100)
            lines.append(f"[{hundredths // 6000:02d}:{hundredths // 100 % 60:02d}.{hundredths % 100:02d}]{words}")
        return "\n".join(lines) + "\n"


@dataclass(frozen=True)
class TopList:
    id: str
    name: str
    songs: list = field(default_factory=list)
    updateFrequency: str = None  # noqa: N815, the API's own name


class Catalogue:
    def __init__(self, directory, seconds=None):
        """Reads the files of a directory. With seconds, each song takes so long."""
        self.songs, self.top_lists = {}, {}
        for platform in PLATFORMS:
            path = Path(directory) / f"{platform}.json"
            with open(path, encoding="utf-8") as file:
                data = json.load(file)
            try:
                songs = [self._song(platform, number, entry, seconds) for number, entry in enumerate(data["songs"])]
                by_id = {song.id: song for song in songs}
                charts = [TopList(**entry | {"songs": [by_id[song] for song in entry["songs"]]})
                          for entry in data["toplists"]]
            except (KeyError, TypeError, ValueError) as error:
                raise ValueError(f"{path}: {error}") from error
            if len(by_id) != len(songs):
                raise ValueError(f"{path}: an id is there twice")
            self.songs[platform] = by_id
            self.top_lists[platform] = {chart.id: chart for chart in charts}

    @staticmethod
    def _song(platform, number, entry, seconds):
        values = entry | {"verse": tuple(entry["verse"])}
        if "qualities" in entry:
            values["qualities"] = tuple(entry["qualities"])
        if seconds is not None:
            values["seconds"] = seconds
        return Song(platform=platform, number=number, **values)

    def song(self, platform, song_id):
        return self.songs.get(platform, {}).get(song_id)

    def found(self, platforms, keyword):
        """Songs whose title, artist or album holds the keyword, in any case."""
        wanted = keyword.casefold()
        return [song for platform in platforms for song in self.songs.get(platform, {}).values()
                if wanted and any(wanted in text.casefold() for text in (song.name, song.artist, song.album))]
