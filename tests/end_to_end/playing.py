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

from under_wine import (CATALOGUE, GROUPING, PLAYER, PLAYER_LOG, PREFIX, WINE, Case, Program, answer,
                        behave, command, data_files, driver, report, status)

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


class Playing(Case):
    def test_1_plays_exactly_the_selected_songs(self):
        behave()
        with Program() as program:
            command(NEXT_TRACK)
            answer("First Play a Song", "OK")
            names = program.rows("All Songs")
            greek = next(row for row, name in enumerate(names) if re.search("[\u0391-\u03c9]", name))
            files = select(7, 1, 4, greek)
            command(PLAY_SELECTED)
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            lines = log()
            self.assertEqual(lines[:7], ["started", "window", "1024 0 0", "1024 128 122", "1024 0 123",
                                         "273 40047 0", "1024 0 101"])
            self.assertEqual(lines[8], "273 40045 0")
            paths = [added(line) for line in (lines[7], *lines[9:])]
            # A name beyond the code page plays by its short path.
            at = next(i for i, file in enumerate(files) if file.endswith(names[greek]))
            self.assertRegex(paths.pop(at), rb"^M:\\.*~.*\.MP3$")
            del files[at]
            self.assertEqual(paths, [file.encode("cp1252") for file in files])

            # Enter in the list, with the panel open: the new songs replace the old ones.
            behave()
            driver("activate", "frmMain")
            files = select(0, 2)
            driver("enter")
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.until_logged(lambda lines: len(lines) >= 5)
            lines = log()
            self.assertEqual([lines[0], lines[1], lines[3]], ["273 40047 0", "1024 0 101", "273 40045 0"])
            self.assertEqual([added(lines[2]), added(lines[4])], [file.encode("cp1252") for file in files])

            behave()
            command(STOP)
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()
            self.until_logged(lambda lines: len(lines) >= 5)
            self.assertEqual(log(), ["273 40047 0", "273 40047 0", "1024 0 101", "273 40001 0", "closed"])

    def test_2_a_player_that_misbehaves_leaves_the_frame_alive(self):
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
                    command(PLAY_SELECTED)
                    print(lines, "longest wait", *driver("answers", "frmMDIForm1", "4"), "ms")
                    driver("wait", "frmMainWinamp", text, "30")
                    close_panel()
                    driver("end", "Winamp v1.x")

    def test_3_without_a_window_it_gives_its_advice(self):
        behave("open_never=1")
        with Program():
            select(0)
            command(PLAY_ALL)
            driver("answers", "frmMDIForm1", "3")
            answer("*can't seem to find WinAmp*", "OK")
            driver("close", "frmMainWinamp")
            answer("First Play a Song", "OK")
            driver("gone", "frmMainWinamp", "10")

    def test_4_without_a_player_it_offers_to_install_one(self):
        behave()
        away = PREFIX / "drive_c/player.away"
        # A tree deeper than the system's old limit for paths stands in the way of the search.
        (PREFIX / "drive_c" / "/".join(["a" * 100] * 4)).mkdir(parents=True)
        installer = PREFIX / "drive_c/Tobbin/winamp265_lite.exe"
        shutil.move(PLAYER / "winamp.exe", away)
        try:
            with Program():
                select(0)
                for there in (False, True):
                    command(PLAY_ALL)
                    answer("*not installed on your system*", "Yes")
                    if there:
                        shutil.copy(away, installer)  # any program will do
                        shutil.move(away, PLAYER / "winamp.exe")  # what it would do
                        # Started beforehand, as the window may not be there for long.
                        freeze = subprocess.Popen(
                            [WINE, r"C:\driver\tobbin_driver.exe", "freeze", "frmSearching",
                             "Searching *", "60"], stdout=subprocess.DEVNULL)
                    answer("*will now be installed*", "OK")
                    if not there:
                        answer("*C:\\Tobbin\\winamp265_lite.exe*", "OK")
                        driver("gone", "#32770", "10")
                self.assertEqual(freeze.wait(90), 0)
                try:
                    driver("thaw", "frmSearching")
                except AssertionError:
                    pass  # seen, but it ended before it was held
                driver("gone", "frmSearching", "60")
                driver("end", "Winamp v1.x")  # what ran as the installer
                behave()
                command(PLAY_ALL)
                driver("wait", "frmMainWinamp", "PLAYING", "30")
                close_panel()
        finally:
            installer.unlink(missing_ok=True)
            shutil.rmtree(PREFIX / "drive_c" / ("a" * 100))
            if away.exists():
                shutil.move(away, PLAYER / "winamp.exe")

    def test_5_many_songs_in_one_folder_can_be_stopped(self):
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
                command(WHOLE_COMPUTER)
                self.says(f"{many:,} new songs were found.")
                driver("open", "All Songs")
                began = time.monotonic()
                command(PLAY_ALL)
                driver("wait", "frmMainWinamp", f"Song *of {many // 1000},0*", "60")
                print("playing and adding after", round(time.monotonic() - began, 2), "s")
                print("longest wait while adding", *driver("answers", "frmMDIForm1", "1"), "ms")
                self.says("Esc stops it.")
                driver("key", "27")
                driver("wait", "frmMainWinamp", "PLAYING", "20")
                self.assertEqual(status(), "")
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

    def test_6_a_thousand_random_messages_do_no_harm(self):
        behave("pester=1000")
        with Program():
            select(0, 1, 2)
            command(PLAY_ALL)
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            before = {path: path.read_bytes() for path in GROUPING.rglob("*") if path.is_file()}
            driver("activate", "frmMain")
            tree = driver("tree")
            command(STOP_AFTER_TRACK)
            print("longest wait meanwhile", *driver("answers", "frmMDIForm1", "4"), "ms")
            self.until_logged(lambda lines: any(line.startswith("pestered") for line in lines))
            print(log()[-1])
            self.assertIn("1000 messages, 0 unanswered", log()[-1])
            self.assertEqual({path: path.read_bytes() for path in before}, before)
            driver("activate", "frmMain")
            self.assertEqual(driver("tree"), tree)
            command(STOP)
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()

    def test_7_commands_to_a_hung_player_do_not_pile_up(self):
        behave("hang_at=15", "hang_for=6000")
        with Program():
            select(0, 1, 2)
            command(PLAY_ALL)
            driver("wait", "frmMainWinamp", "The player doesn't answer", "30")
            driver("command", str(NEXT_TRACK), "200")
            print("longest wait meanwhile", *driver("answers", "frmMDIForm1", "4"), "ms")
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.assertLessEqual(log().count("273 40048 0"), 1)
            command(NEXT_TRACK)
            self.until_logged(lambda lines: "273 40048 0" in lines)
            close_panel()

    def until_logged(self, condition):
        self.until(lambda: condition(log()), True)


if __name__ == "__main__":
    sys.exit(report(Playing, sys.argv[1]))
