#!/usr/bin/env python3
"""Plays songs from the real program under Wine and reads what reached the stand-in for the player:
playing.py REPORT

Runs in a prefix in which the program has found its songs and the player before (first_run.py).
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
import unittest

from under_wine import (CATALOGUE, GROUPING, PLAYER, PLAYER_LOG, PREFIX, WINE, Program, behave,
                        data_files, driver, report)

# Numbers of the frame's commands, from assets/resource.h.
WHOLE_COMPUTER, PLAY_SELECTED, PLAY_ALL, NEXT_TRACK, STOP, STOP_AFTER_TRACK = (
    1202, 1203, 1204, 1205, 1209, 1210)
QUERIES = ("1024 0 105", "1024 1 105", "1024 0 104")


def log():
    """The messages to the stand-in but for what the panel's timer asks."""
    lines = PLAYER_LOG.read_text().splitlines() if PLAYER_LOG.exists() else []
    return [line for line in lines if line not in QUERIES and line != "started again"]


def added(log_line):
    kind, _, identifier, count, data = log_line.split(" ")
    data = bytes.fromhex(data)
    assert (kind, identifier, int(count), data[-1]) == ("74", "100", len(data), 0), log_line
    return data[:-1]


def close_panel():
    driver("close", "frmMainWinamp")
    driver("gone", "frmMainWinamp", "10")


def select(*rows):
    """Selects rows of "All Songs"; returns their files in the list's order."""
    driver("open", "All Songs")
    driver("select", *map(str, rows))
    listed = [line.split("\t") for line in driver("rows", "1000")[1:]]
    records = data_files.catalogue(CATALOGUE)
    chosen = [records[int(cells[3]) - 1] for cells in listed if cells[1] == "x"]
    assert len(chosen) == len(rows)
    return [record["folder"] + record["name"] for record in chosen]


class Playing(unittest.TestCase):
    maxDiff = None

    def test_1_plays_exactly_the_selected_songs(self):
        behave()
        with Program():
            driver("command", str(NEXT_TRACK))
            driver("wait", "#32770", "First Play a Song", "10")
            driver("press", "#32770", "OK", "First Play a Song")
            files = select(7, 1, 4)
            driver("command", str(PLAY_SELECTED))
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            expected = [file.encode("cp1252") for file in files]
            lines = log()
            self.assertEqual(lines[:7], ["started", "window", "1024 0 0", "1024 128 122", "1024 0 123",
                                         "273 40047 0", "1024 0 101"])
            self.assertEqual(lines[8], "273 40045 0")
            self.assertEqual([added(line) for line in (lines[7], *lines[9:])], expected)

            # Enter in the list, with the panel open: the new songs replace the old ones.
            behave()
            driver("activate", "frmMain")
            files = select(0, 2)
            driver("enter")
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.wait_for_log(5)
            lines = log()
            self.assertEqual([lines[0], lines[1], lines[3]], ["273 40047 0", "1024 0 101", "273 40045 0"])
            self.assertEqual([added(lines[2]), added(lines[4])], [file.encode("cp1252") for file in files])

            behave()
            driver("command", str(STOP))
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()
            self.wait_for_log(5)
            self.assertEqual(log(), ["273 40047 0", "273 40047 0", "1024 0 101", "273 40001 0", "closed"])

    def test_2_a_name_beyond_the_code_page_plays_by_its_short_path(self):
        behave()
        with Program():
            driver("open", "All Songs")
            rows = [line.split("\t")[2] for line in driver("rows", "1000")[1:]]
            greek = next(row for row, name in enumerate(rows) if re.search("[\u0391-\u03c9]", name))
            select(greek)
            driver("command", str(PLAY_SELECTED))
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            path = added(log()[7]).decode("ascii")
            self.assertRegex(path, r"^M:\\.*~.*\.MP3$")
            close_panel()

    def test_3_a_player_that_misbehaves_leaves_the_frame_alive(self):
        with Program():
            for lines, text in ((("hang_at=1",), "The player doesn't answer"),
                                (("hang_at=6",), "The player doesn't answer"),
                                (("hang_at=9", "hang_for=4000"), "PLAYING"),
                                (("slow=200",), "PLAYING"),
                                (("open_after=3000",), "PLAYING"),
                                (("vanish_at=8",), "STOPPED"),
                                (("version=5", "status=7"), "STOPPED"),
                                (("knows_nothing=1", "unknown=1"), "PLAYING")):
                with self.subTest(lines):
                    behave(*lines)
                    select(0, 1, 2)
                    driver("command", str(PLAY_SELECTED))
                    print(lines, "longest wait", *driver("answers", "frmMDIForm1", "4"), "ms")
                    driver("wait", "frmMainWinamp", text, "30")
                    close_panel()
                    driver("end", "Winamp v1.x")

    def test_4_without_a_window_it_gives_its_advice(self):
        behave("open_never=1")
        with Program():
            select(0)
            driver("command", str(PLAY_ALL))
            driver("answers", "frmMDIForm1", "3")
            driver("wait", "#32770", "*can't seem to find WinAmp*", "20")
            driver("press", "#32770", "OK", "*can't seem to find WinAmp*")
            driver("close", "frmMainWinamp")
            driver("wait", "#32770", "First Play a Song", "10")
            driver("press", "#32770", "OK", "First Play a Song")
            driver("gone", "frmMainWinamp", "10")

    def test_5_without_a_player_it_offers_to_install_one(self):
        behave()
        away = PREFIX / "drive_c/player.away"
        installer = PREFIX / "drive_c/Tobbin/winamp265_lite.exe"
        shutil.move(PLAYER / "winamp.exe", away)
        try:
            with Program():
                select(0)
                for there in (False, True):
                    driver("command", str(PLAY_ALL))
                    driver("press", "#32770", "Yes", "*not installed on your system*")
                    if there:
                        shutil.copy(away, installer)  # any program will do
                        shutil.move(away, PLAYER / "winamp.exe")  # what it would do
                        # Started beforehand, as the window may not be there for long.
                        freeze = subprocess.Popen(
                            [WINE, r"C:\driver\tobbin_driver.exe", "freeze", "frmSearching",
                             "Searching *", "60"], stdout=subprocess.DEVNULL)
                    driver("press", "#32770", "OK", "*will now be installed*")
                    if not there:
                        driver("press", "#32770", "OK", "*C:\\Tobbin\\winamp265_lite.exe*")
                        driver("gone", "#32770", "10")
                self.assertEqual(freeze.wait(90), 0)
                try:
                    driver("thaw", "frmSearching")
                except AssertionError:
                    pass  # seen, but it ended before it was held
                driver("gone", "frmSearching", "60")
                driver("end", "Winamp v1.x")  # what ran as the installer
                behave()
                driver("command", str(PLAY_ALL))
                driver("wait", "frmMainWinamp", "PLAYING", "30")
                close_panel()
        finally:
            installer.unlink(missing_ok=True)
            if away.exists():
                shutil.move(away, PLAYER / "winamp.exe")

    def test_6_many_songs_in_one_folder_can_be_stopped(self):
        many = int(os.environ.get("TOBBIN_SONGS", "10000"))
        behave()
        folder = pathlib.Path(os.path.realpath(PREFIX / "dosdevices/m:")) / "Music/Many"
        folder.mkdir()
        song = next(folder.parent.glob("**/*.mp3"))
        copies = [folder / f"{copy}.bin" for copy in range(many // 30_000 + 1)]  # a file's most links
        for copy in copies:
            shutil.copy(song, copy)
        for number in range(many):
            os.link(copies[number // 30_000], folder / f"many {number:06}.mp3")
        kept = shutil.copytree(GROUPING, PREFIX / "drive_c/kept")
        try:
            with Program():
                driver("command", str(WHOLE_COMPUTER))
                self.says(f"{many:,} new songs were found.")
                driver("open", "All Songs")
                began = time.monotonic()
                driver("command", str(PLAY_ALL))
                driver("wait", "frmMainWinamp", f"Song *of {many // 1000},0*", "60")
                print("playing and adding after", round(time.monotonic() - began, 2), "s")
                print("longest wait while adding", *driver("answers", "frmMDIForm1", "1"), "ms")
                self.says("Esc stops it.")
                driver("key", "27")
                driver("wait", "frmMainWinamp", "PLAYING", "20")
                self.assertEqual(driver("status"), [""])
                sent = sum(line.startswith("74 ") for line in log())
                self.assertGreater(sent, 10)
                self.assertLess(sent, many - 1_000)
                driver("answers", "frmMDIForm1", "1")
                self.assertEqual(sum(line.startswith("74 ") for line in log()), sent)
                close_panel()
        finally:
            shutil.rmtree(folder)
            shutil.rmtree(GROUPING)
            shutil.move(kept, GROUPING)

    def test_7_a_thousand_random_messages_do_no_harm(self):
        behave("pester=1000")
        with Program():
            select(0, 1, 2)
            driver("command", str(PLAY_ALL))
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            before = {path: path.read_bytes() for path in GROUPING.rglob("*") if path.is_file()}
            driver("activate", "frmMain")
            tree = driver("tree")
            driver("command", str(STOP_AFTER_TRACK))
            print("longest wait meanwhile", *driver("answers", "frmMDIForm1", "4"), "ms")
            for _ in range(200):
                if told := [line for line in log() if line.startswith("pestered")]:
                    break
                driver("answers", "frmMDIForm1", "1")
            print(*told)
            self.assertRegex(told[0], r"1000 messages, 0 unanswered")
            self.assertEqual({path: path.read_bytes() for path in before}, before)
            driver("activate", "frmMain")
            self.assertEqual(driver("tree"), tree)
            driver("command", str(STOP))
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()

    def test_8_commands_to_a_hung_player_do_not_pile_up(self):
        behave("hang_at=15", "hang_for=6000")
        with Program():
            select(0, 1, 2)
            driver("command", str(PLAY_ALL))
            driver("wait", "frmMainWinamp", "The player doesn't answer", "30")
            driver("command", str(NEXT_TRACK), "200")
            print("longest wait meanwhile", *driver("answers", "frmMDIForm1", "4"), "ms")
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.assertLessEqual(log().count("273 40048 0"), 1)
            driver("command", str(NEXT_TRACK))
            self.wait_for("273 40048 0")
            close_panel()

    def wait_for(self, line):
        for _ in range(20):
            if line in log():
                return
            driver("answers", "frmMDIForm1", "1")
        self.fail(f"{line} did not come")

    def says(self, words):
        for _ in range(200):
            if words in (line := driver("status")[0]):
                return
        self.assertIn(words, line)

    def wait_for_log(self, lines):
        for _ in range(20):
            if len(log()) >= lines:
                return
            driver("answers", "frmMDIForm1", "1")
        self.fail(f"only {log()} came")


if __name__ == "__main__":
    sys.exit(report(Playing, sys.argv[1]))
