# SPDX-License-Identifier: GPL-3.0-or-later
"""Answers requests as the online music API does.

  /api/?source=P&type=search&keyword=K&limit=N     songs of a platform
  /api/?type=aggregateSearch&keyword=K&limit=N     songs of all
  /api/?source=P&type=toplists                     charts
  /api/?source=P&id=I&type=toplist                 songs of a chart
  /api/?source=P&id=I&type=url&br=Q                leads to the sound; Q is one of catalogue.QUALITIES
  /api/?source=P&id=I&type=pic                     cover
  /api/?source=P&id=I&type=lrc                     lyrics
  /audio/P/NUMBER/QUALITY.ENDING, /pictures/P/NUMBER.ENDING   where the API leads
"""
import http.server
import json
import os
import re
import sys
import threading
from urllib.parse import parse_qs, urlsplit

from .catalogue import PLATFORMS

TYPES = {".mp3": "audio/mpeg", ".flac": "audio/flac", ".jpg": "image/jpeg", ".png": "image/png"}
JSON = "application/json; charset=utf-8"
TEXT = "text/plain; charset=utf-8"


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True
    request_queue_size = 64

    def __init__(self, port, catalogue, media):
        super().__init__(("127.0.0.1", port), Handler)
        self.catalogue, self.media = catalogue, media
        self._output = threading.Lock()

    def tell(self, line):
        """A whole line on standard output, at once."""
        with self._output:
            print(line, flush=True)

    def handle_error(self, request, client_address):
        # Players break connections off as they please.
        if not isinstance(sys.exc_info()[1], ConnectionError):
            super().handle_error(request, client_address)


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    server_version = "online-api"

    def log_message(self, *_):
        pass

    def do_HEAD(self):
        self.do_GET()

    def do_GET(self):
        self.server.tell(f"{self.command} {self.path}")
        parts = urlsplit(self.path)
        if parts.path in ("/api", "/api/"):
            # A "+" is no blank here: clients of this API send those as %20.
            query = parse_qs(parts.query.replace("+", "%2B"), keep_blank_values=True)
            self._api({name: values[-1] for name, values in query.items()})
        elif found := re.fullmatch(r"/audio/(\w+)/(\d+)/(\w+)\.(?:mp3|flac)", parts.path):
            self._media(found, lambda song: song.quality(found[3]) == found[3]
                        and self.server.media.sound(song, found[3]))
        elif found := re.fullmatch(r"/pictures/(\w+)/(\d+)\.(jpg|png)", parts.path):
            self._media(found, lambda song: self.server.media.picture(song, found[3]))
        else:
            self._refuse(404, "没有这个地址")

    def _api(self, query):
        kind, source, identity = (query.get(name, "") for name in ("type", "source", "id"))
        if kind == "aggregateSearch":
            self._search(query, PLATFORMS)
        elif source not in PLATFORMS:
            self._refuse(400, "没有这个平台")
        elif kind == "search":
            self._search(query, [source])
        elif kind == "toplists":
            charts = self.server.catalogue.top_lists[source].values()
            self._data({"list": [_without_none({"id": chart.id, "name": chart.name,
                                                "updateFrequency": chart.updateFrequency}) for chart in charts]})
        elif kind == "toplist":
            chart = self.server.catalogue.top_lists[source].get(identity)
            if chart is None:
                self._refuse(404, "没有这个排行榜")
            else:
                self._data({"list": [{"id": song.id, "name": song.name, "artist": song.artist,
                                      "types": song.qualities} for song in chart.songs], "source": source})
        elif kind in ("url", "pic", "lrc"):
            song = self.server.catalogue.song(source, identity)
            if song is None:
                self._refuse(404, "没有这首歌")
            else:
                {"url": self._url, "pic": self._picture, "lrc": self._lyrics}[kind](song, query)
        else:
            self._refuse(400, "没有这种请求")

    def _search(self, query, platforms):
        songs = self.server.catalogue.found(platforms, query.get("keyword", ""))
        limit = query.get("limit", "")
        shown = songs[:int(limit)] if limit.isascii() and limit.isdigit() else songs
        # The platform that was asked for is not told again.
        results = [_without_none({"id": song.id, "name": song.name, "artist": song.artist, "album": song.album,
                                  "url": f"{self._origin()}/api/?source={song.platform}&id={song.id}&type=url",
                                  "platform": song.platform if len(platforms) > 1 else None}) for song in shown]
        self._data({"keyword": query.get("keyword", ""), "total": len(songs), "results": results})

    def _url(self, song, query):
        quality = song.quality(query.get("br", ""))
        address = (f"{self._origin()}/audio/{song.platform}/{song.number}/{quality}"
                   f".{'flac' if quality == 'flac' else 'mp3'}")
        if song.address == "redirect":
            self._redirect(address)
        elif song.address == "json":
            self._send(200, JSON, json.dumps({"url": address, "br": quality}).encode())
        elif song.address == "text":
            self._send(200, TEXT, f"{address}\r\n".encode())
        elif song.address == "audio":
            self._file(self.server.media.sound(song, quality))
        else:
            self._refuse(200, "没有可以播放的地址")

    def _picture(self, song, _):
        if song.picture == "error":
            self._refuse(200, "没有封面")
        elif song.picture == "redirect":
            self._redirect(f"{self._origin()}/pictures/{song.platform}/{song.number}.jpg")
        else:
            self._file(self.server.media.picture(song, {"jpeg": "jpg", "png": "png"}[song.picture]))

    def _lyrics(self, song, _):
        text = {"lrc": song.lrc(), "plain": "\n".join(song.verse), "none": ""}[song.lyrics]
        self._send(200, TEXT, text.encode())

    def _media(self, found, make):
        songs = self.server.catalogue.songs.get(found[1], {})
        song = next((song for song in songs.values() if song.number == int(found[2])), None)
        path = make(song) if song else None
        if path:
            self._file(path)
        else:
            self._refuse(404, "没有这个地址")

    def _origin(self):
        return f"http://127.0.0.1:{self.server.server_port}"

    def _data(self, data):
        self._send(200, JSON, json.dumps({"code": 200, "message": "success", "data": data}, ensure_ascii=False).encode())

    def _refuse(self, status, message):
        code = 404 if status == 200 else status
        self._send(status, JSON, json.dumps({"code": code, "message": message}, ensure_ascii=False).encode())

    def _redirect(self, address):
        self._send(302, None, b"", {"Location": address})

    def _file(self, path):
        """The file, or the range of it that is asked for."""
        size = os.path.getsize(path)
        begin, end, status, headers = 0, size, 200, {"Accept-Ranges": "bytes"}
        asked = re.fullmatch(r"bytes=(\d*)-(\d*)", self.headers.get("Range", "").strip())
        if asked and (asked[1] or asked[2]):
            if asked[1]:
                begin = int(asked[1])
                end = min(size, int(asked[2]) + 1) if asked[2] else size
            else:
                begin = max(0, size - int(asked[2]))
            if begin >= end:
                self._send(416, None, b"", {"Content-Range": f"bytes */{size}"})
                return
            status = 206
            headers["Content-Range"] = f"bytes {begin}-{end - 1}/{size}"
        with open(path, "rb") as file:
            file.seek(begin)
            self._send(status, TYPES[path.suffix], file.read(end - begin), headers)

    def _send(self, status, media_type, body, headers=None):
        self.send_response(status)
        if media_type:
            self.send_header("Content-Type", media_type)
        self.send_header("Content-Length", str(len(body)))
        for name, value in (headers or {}).items():
            self.send_header(name, value)
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)


def _without_none(fields):
    return {name: value for name, value in fields.items() if value is not None}
