#!/usr/bin/env python3
"""Plays songs from the real program under Wine and reads what reached the stand-in for the player:
playing.py REPORT

Runs in a prefix in which the program has found its songs and the player before (first_run.py).
"""
import re
import sys

from under_wine import (CATALOGUE, PLAYER_LOG, SETTINGS, Case, Program, answer, behave, command,
                        data_files, driver, report)

# Numbers of the frame's commands, from src/ui/Commands.h.
PLAY_SELECTED, NEXT_TRACK, STOP = 1203, 1205, 1209
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

            behave()
            command(STOP)
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()
            self.until(log, ["273 40047 0", "273 40047 0", "1024 0 101", "273 40001 0", "closed"])

    def test_2_a_player_that_misbehaves_leaves_the_frame_alive(self):
        with Program():
            for lines, text in ((("hang_at=6",), "The player doesn't answer"),
                                (("hang_at=9", "hang_for=4000"), "PLAYING"),
                                (("vanish_at=8",), "STOPPED")):
                with self.subTest(lines):
                    behave(*lines)
                    select(0, 1, 2)
                    command(PLAY_SELECTED)
                    print(lines, "longest wait", *driver("answers", "frmMDIForm1", "4"), "ms")
                    driver("wait", "frmMainWinamp", text, "30")
                    close_panel()
                    driver("end", "Winamp v1.x")

    def test_3_our_own_player_takes_over_and_may_misbehave_too(self):
        behave()
        with Program():
            select(0, 1, 2)
            command(PLAY_SELECTED)
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            driver("press", "frmMainWinamp", "Own Player")
            driver("wait", "frmMainWinamp", "* of 3*", "30")
            self.assertEqual(log()[-2:], ["273 40001 0", "closed"])
            driver("freeze", "Winamp v1.x", "Tobbin Player")
            command(NEXT_TRACK)
            driver("wait", "frmMainWinamp", "The player doesn't answer", "10")
            print("longest wait", *driver("answers", "frmMDIForm1", "4"), "ms")
            driver("thaw", "Winamp v1.x")
            driver("wait", "frmMainWinamp", "* of 3*", "30")
            driver("end", "Winamp v1.x")
            driver("wait", "frmMainWinamp", "STOPPED", "10")
            close_panel()
            self.assertIn("tobbinplayer.exe", SETTINGS.read_text("cp1252"))


if __name__ == "__main__":
    sys.exit(report(Playing, sys.argv[1]))
