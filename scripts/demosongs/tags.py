# SPDX-License-Identifier: GPL-3.0-or-later
"""Writers for the tags that ffmpeg cannot write, or cannot write fast enough for thousands of files.

A tag is a dict with the keys title, artist, album, track, tracks, date, genre, lyrics and cover; the last two may
be missing. Each writer takes the bytes of an untagged file and gives those of the tagged one.
"""
import base64


def _synchsafe(value):
    return bytes((value >> shift) & 0x7F for shift in (21, 14, 7, 0))


def id3(tag):
    """An ID3v2.4 tag, its texts in UTF-8."""
    def frame(name, body):
        return name + _synchsafe(len(body)) + b"\0\0" + body

    texts = {b"TIT2": tag["title"], b"TPE1": tag["artist"], b"TALB": tag["album"],
             b"TRCK": f"{tag['track']}/{tag['tracks']}", b"TDRC": tag["date"], b"TCON": tag["genre"]}
    frames = b"".join(frame(name, b"\x03" + text.encode()) for name, text in texts.items())
    if tag.get("lyrics"):
        frames += frame(b"USLT", b"\x03und\0" + tag["lyrics"].encode())
    if tag.get("cover"):
        frames += frame(b"APIC", b"\x03image/jpeg\0\x03\0" + tag["cover"])
    return b"ID3\x04\0\0" + _synchsafe(len(frames)) + frames


def mp3(audio, tag):
    return id3(tag) + audio


def _riff_like(audio, name, size_order, tag):
    body = id3(tag)
    chunk = name + len(body).to_bytes(4, size_order) + body + b"\0" * (len(body) % 2)
    audio += b"\0" * (len(audio) % 2)
    return audio[:4] + (len(audio) + len(chunk) - 8).to_bytes(4, size_order) + audio[8:] + chunk


def wav(audio, tag):
    return _riff_like(audio, b"id3 ", "little", tag)


def aiff(audio, tag):
    return _riff_like(audio, b"ID3 ", "big", tag)


def vorbis_fields(tag):
    fields = {"TITLE": tag["title"], "ARTIST": tag["artist"], "ALBUM": tag["album"], "TRACKNUMBER": str(tag["track"]),
              "TRACKTOTAL": str(tag["tracks"]), "DATE": tag["date"], "GENRE": tag["genre"]}
    if tag.get("lyrics"):
        fields["LYRICS"] = tag["lyrics"]
    return fields


def flac_picture(cover, side=0):
    """The picture block of FLAC: a front cover as JPEG."""
    mime = b"image/jpeg"
    depth = 24 if side else 0
    return b"".join((b"\0\0\0\x03", len(mime).to_bytes(4, "big"), mime, b"\0\0\0\0",
                     side.to_bytes(4, "big"), side.to_bytes(4, "big"), depth.to_bytes(4, "big"), b"\0\0\0\0",
                     len(cover).to_bytes(4, "big"), cover))


def picture_field(cover):
    """The same block as the value of an Ogg METADATA_BLOCK_PICTURE field."""
    return base64.b64encode(flac_picture(cover)).decode()


def flac(audio, tag):
    if audio[:4] != b"fLaC":
        raise ValueError("not a FLAC file")
    kept, at, last = [], 4, False
    while not last:
        last, kind = bool(audio[at] & 0x80), audio[at] & 0x7F
        end = at + 4 + int.from_bytes(audio[at + 1:at + 4], "big")
        if kind in (0, 3):  # stream information and seek table
            kept.append((kind, audio[at + 4:end]))
        at = end
    vendor = b"made song"
    entries = [f"{name}={value}".encode() for name, value in vorbis_fields(tag).items()]
    kept.append((4, len(vendor).to_bytes(4, "little") + vendor + len(entries).to_bytes(4, "little")
                 + b"".join(len(e).to_bytes(4, "little") + e for e in entries)))
    if tag.get("cover"):
        kept.append((6, flac_picture(tag["cover"])))
    out = [b"fLaC"]
    for i, (kind, body) in enumerate(kept):
        out += [bytes((kind | (0x80 if i == len(kept) - 1 else 0),)), len(body).to_bytes(3, "big"), body]
    return b"".join(out) + audio[at:]


def ape(audio, tag):
    """An APEv2 tag at the end, as WavPack files carry it."""
    items = [("Title", tag["title"]), ("Artist", tag["artist"]), ("Album", tag["album"]),
             ("Track", f"{tag['track']}/{tag['tracks']}"), ("Year", tag["date"]), ("Genre", tag["genre"])]
    if tag.get("lyrics"):
        items.append(("Lyrics", tag["lyrics"]))
    packed = [(key, value.encode(), 0) for key, value in items]
    if tag.get("cover"):
        packed.append(("Cover Art (Front)", b"Cover Art (Front).jpg\0" + tag["cover"], 2))
    body = b"".join(len(value).to_bytes(4, "little") + flags.to_bytes(4, "little") + key.encode() + b"\0" + value
                    for key, value, flags in packed)

    def edge(flags):
        return (b"APETAGEX" + (2000).to_bytes(4, "little") + (len(body) + 32).to_bytes(4, "little")
                + len(packed).to_bytes(4, "little") + flags.to_bytes(4, "little") + bytes(8))
    return audio + edge(0xA0000000) + body + edge(0x80000000)
