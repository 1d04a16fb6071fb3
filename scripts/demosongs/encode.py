# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes tagged files out of samples: ffmpeg encodes, the tags come from ffmpeg or from tags.py."""
import os
import subprocess
import tempfile

from . import covers, synth, tags
from .catalogue import PIECES

# Extension: what ffmpeg is to write, and the writer of the tags that it cannot write itself.
FORMATS = {
    "mp3": (["-c:a", "libmp3lame", "-q:a", "4", "-id3v2_version", "0", "-f", "mp3"], tags.mp3),
    "flac": (["-c:a", "flac", "-sample_fmt", "s16", "-f", "flac"], tags.flac),
    "m4a": (["-c:a", "aac", "-b:a", "160k", "-movflags", "+faststart", "-f", "ipod"], None),
    "ogg": (["-c:a", "libvorbis", "-q:a", "5", "-f", "ogg"], None),
    "opus": (["-c:a", "libopus", "-b:a", "112k", "-ar", "48000", "-f", "ogg"], None),
    "wav": (["-c:a", "pcm_s16le", "-f", "wav"], tags.wav),
    "aiff": (["-c:a", "pcm_s16be", "-f", "aiff"], tags.aiff),
    "wv": (["-c:a", "wavpack", "-sample_fmt", "s16p", "-f", "wv"], tags.ape),
}
QUIET = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-nostdin", "-y"]
PLAIN = ["-map_metadata", "-1", "-fflags", "+bitexact", "-flags:a", "+bitexact"]


def write_whole(path, data):
    """Puts the file in place by renaming, so that a player that watches the folder never reads half of it."""
    part = os.path.join(os.path.dirname(path), "." + os.path.basename(path) + ".part")
    with open(part, "wb") as file:
        file.write(data)
    os.replace(part, path)


def _lyrics(piece, layout):
    lines = [f"[ti:{piece.title}]", f"[ar:{piece.artist}]"]
    for time, text in zip(layout.verse_times(len(piece.verse)), piece.verse):
        hundredths = round(time * 100)
        lines.append(f"[{hundredths // 6000:02d}:{hundredths // 100 % 60:02d}.{hundredths % 100:02d}]{text}")
    return "\n".join(lines)


def _ffmpeg_fields(piece, tag):
    if piece.extension == "m4a":
        return {"title": tag["title"], "artist": tag["artist"], "album": tag["album"], "date": tag["date"],
                "genre": tag["genre"], "track": f"{tag['track']}/{tag['tracks']}", "lyrics": tag["lyrics"]}
    return tags.vorbis_fields(tag) | {"METADATA_BLOCK_PICTURE": tags.picture_field(tag["cover"])}


def make_song(piece, directory, cover):
    """Makes one song of the catalogue in directory and gives its path."""
    samples, layout = synth.render(piece)
    tag = {"title": piece.title, "artist": piece.artist, "album": piece.album.title, "date": piece.album.year,
           "genre": piece.album.genre, "track": piece.track, "cover": cover, "lyrics": _lyrics(piece, layout),
           "tracks": sum(p.album == piece.album for p in PIECES)}
    options, writer = FORMATS[piece.extension]
    with tempfile.TemporaryDirectory() as work:
        sound, picture, made = (os.path.join(work, name) for name in ("sound", "cover.jpg", "made"))
        with open(sound, "wb") as file:
            file.write(samples)
        # A short room, and both ends faded.
        room = (f"aecho=0.85:0.9:43|97|173|251:0.30|0.22|0.15|0.10,afade=t=in:d=0.4,"
                f"afade=t=out:st={layout.seconds - 3.2:.2f}:d=3.2,aresample=44100")
        command = QUIET + ["-f", "f32le", "-ar", str(synth.RATE), "-ac", "2", "-i", sound]
        fields = []
        if writer is None:
            for name, value in _ffmpeg_fields(piece, tag).items():
                fields += ["-metadata:s:a" if options[-1] == "ogg" else "-metadata", f"{name}={value}"]
            if piece.extension == "m4a":
                with open(picture, "wb") as file:
                    file.write(cover)
                command += ["-i", picture, "-map", "0:a", "-map", "1:v", "-c:v", "copy", "-disposition:v:0", "attached_pic"]
        subprocess.run(command + PLAIN + ["-af", room] + fields + options + [made], check=True)
        with open(made, "rb") as file:
            data = file.read()
    path = os.path.join(directory, piece.file_name)
    write_whole(path, writer(data, tag) if writer else data)
    return path


def album_covers():
    return {name: covers.album_cover(name) for name in {piece.album.cover for piece in PIECES}}
