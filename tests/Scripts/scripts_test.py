# SPDX-License-Identifier: GPL-3.0-or-later
"""The scripts that make songs, and the shell parts that scripts/run is made of."""
import json
import os
import select
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPTS = ROOT / "scripts"


def probe(path):
    """Duration, all tags in lower case, and the size of the cover when there is one."""
    out = subprocess.run(["ffprobe", "-v", "error", "-show_format", "-show_streams", "-of", "json", path],
                         stdout=subprocess.PIPE, check=True).stdout
    found = json.loads(out)
    tags, cover = {}, None
    for part in [found["format"], *found["streams"]]:
        tags |= {key.lower(): value for key, value in part.get("tags", {}).items()}
        if part.get("codec_type") == "video":
            cover = (part["width"], part["height"])
    return float(found["format"]["duration"]), tags, cover


class DemoSongs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.TemporaryDirectory()
        cls.songs = Path(cls.work.name) / "歌 曲"
        subprocess.run([SCRIPTS / "demo-songs", cls.songs], stdout=subprocess.DEVNULL, check=True)

    @classmethod
    def tearDownClass(cls):
        cls.work.cleanup()

    def test_eight_songs_in_eight_formats(self):
        names = sorted(path.name for path in self.songs.iterdir())
        self.assertEqual(len(names), 8)
        self.assertEqual({Path(name).suffix for name in names},
                         {".mp3", ".flac", ".m4a", ".ogg", ".opus", ".wav", ".aiff", ".wv"})

    def test_each_has_tags_a_cover_and_timed_lyrics(self):
        albums = set()
        for path in self.songs.iterdir():
            with self.subTest(path.name):
                duration, tags, cover = probe(path)
                self.assertTrue(20 <= duration <= 40, duration)
                self.assertEqual(cover, (600, 600))
                self.assertEqual(path.stem, f"{int(tags['track'].split('/')[0]):02d} {tags['title']}")
                self.assertTrue(tags["artist"])
                albums.add(tags["album"])
                lyrics = next(value for key, value in tags.items() if key.startswith("lyrics"))
                self.assertRegex(lyrics, r"(?m)^\[\d\d:\d\d\.\d\d\]\S")
        self.assertEqual(len(albums), 2)

    def test_each_can_be_heard_and_none_clips(self):
        for path in self.songs.iterdir():
            with self.subTest(path.name):
                report = subprocess.run(["ffmpeg", "-nostdin", "-hide_banner", "-i", path, "-map", "0:a", "-af",
                                         "volumedetect", "-f", "null", "-"], stderr=subprocess.PIPE, check=True).stderr
                peak = float(report.decode(errors="replace").split("max_volume:")[1].split("dB")[0])
                self.assertTrue(-12 < peak < -0.5, peak)


class ManyFiles(unittest.TestCase):
    def make(self, directory):
        subprocess.run([SCRIPTS / "demo-songs", "--count", "72", directory], stdout=subprocess.DEVNULL, check=True)
        return {path.relative_to(directory): path.read_bytes() for path in Path(directory).rglob("*") if path.is_file()}

    def test_shares_of_formats_and_covers(self):
        with tempfile.TemporaryDirectory() as work:
            files = self.make(work)
            self.assertEqual(len(files), 72)
            self.assertEqual(len({path.name for path in files}), 72)
            self.assertEqual(sum(path.suffix == ".mp3" for path in files), 48)
            self.assertEqual(sum(path.suffix == ".flac" for path in files), 24)
            probed = [probe(Path(work) / path) for path in files]
            self.assertEqual(sum(cover is not None for _, _, cover in probed), 24)
            for duration, tags, _ in probed:
                self.assertAlmostEqual(duration, 2.5, delta=.1)
                self.assertTrue(tags["title"] and tags["artist"] and tags["album"])

    def test_the_same_count_gives_the_same_files(self):
        with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as other:
            self.assertEqual(self.make(one), self.make(other))


class ShellParts(unittest.TestCase):
    """A script like scripts/run, with a program of ours in the player's place."""

    def start(self, program, before=""):
        script = f"""
            set -euo pipefail
            . '{SCRIPTS}/lib/virtual-display.sh'; . '{SCRIPTS}/lib/throw-away-home.sh'; . '{SCRIPTS}/lib/child.sh'
            trap 'stop_virtual_display; remove_throw_away_home' EXIT
            make_throw_away_home
            start_virtual_display 390x844
            {before}
            run_child bash -c '{program}'"""
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY")}
        process = subprocess.Popen(["bash", "-c", script], stdout=subprocess.PIPE, text=True, env=environment)
        self.addCleanup(process.stdout.close)
        self.addCleanup(self.end, process)
        return process

    def end(self, process):
        # Asked first, so that it takes its display along.
        process.terminate()
        try:
            process.wait(20)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def line(self, process):
        self.assertTrue(select.select([process.stdout], [], [], 60)[0], "nothing was printed")
        return process.stdout.readline().strip()

    def test_exit_status_is_passed_on_and_nothing_stays(self):
        process = self.start('echo "$HOME $DISPLAY $(dirname "$XAUTHORITY")"; xdpyinfo | grep -c "dimensions: *390x844"; exit 7')
        home, display, keys = self.line(process).split()
        self.assertEqual(self.line(process), "1")
        self.assertEqual(process.wait(60), 7)
        self.assertFalse(os.path.exists(home))
        self.assertFalse(os.path.exists(keys))
        self.assertFalse(os.path.exists(f"/tmp/.X11-unix/X{display[1:]}"))

    def test_the_display_is_closed_to_others(self):
        process = self.start('XAUTHORITY=/dev/null xdpyinfo >/dev/null 2>&1 || echo closed')
        self.assertEqual(self.line(process), "closed")
        self.assertEqual(process.wait(60), 0)

    def test_term_and_int_end_the_program_and_not_its_script(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            with self.subTest(number):
                process = self.start('trap "exit 9" TERM; echo "$HOME"; while :; do sleep 0.05; done')
                home = self.line(process)
                process.send_signal(number)
                self.assertEqual(process.wait(60), 9)
                self.assertFalse(os.path.exists(home))

    def test_a_program_can_be_ended_as_soon_as_it_has_spoken(self):
        # Every command of the script takes its time, so that the signal comes while the program is being started.
        process = self.start('trap "exit 9" TERM; echo "$HOME"; while :; do sleep 0.05; done',
                             before='set -o functrace; trap "sleep 0.3" DEBUG')
        home = self.line(process)
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(60), 9)
        self.assertFalse(os.path.exists(home))

    def test_a_program_may_take_its_time_to_end(self):
        process = self.start('trap "asked=1" TERM; echo ready; until [ -n "${asked:-}" ]; do sleep 0.05; done; '
                             'echo asked; read -r _ < <(sleep 0.5; echo) || true; exit 3')
        self.assertEqual(self.line(process), "ready")
        start = time.monotonic()
        process.send_signal(signal.SIGTERM)
        self.assertEqual(self.line(process), "asked")
        self.assertEqual(process.wait(60), 3)
        self.assertGreater(time.monotonic() - start, .4)


if __name__ == "__main__":
    unittest.main()
