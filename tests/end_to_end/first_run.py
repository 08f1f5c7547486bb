#!/usr/bin/env python3
"""Starts the real program under Wine as a person does, from the first start on, and looks at its
windows and at the files that it leaves: first_run.py REPORT

The Wine prefix and the display are those of the environment. The program is installed there, and
drive M: is a library that make_music made.
"""
import json
import pathlib
import sys

from under_wine import CATALOGUE, GROUPING, PREFIX, SETTINGS, Case, Program, data_files, driver, report

FOLDERS = GROUPING / "System/LocOfMainTargetFiles.lmz"

DRIVE = (PREFIX / "dosdevices/m:").resolve()
SONGS = {("M:" + song["folder"], song["name"]): song
         for song in json.loads(pathlib.Path(f"{DRIVE}.json").read_text("utf-8"))["files"]}


def rows():
    """The catalogue's present songs as the list pane shows them."""
    return [(record["name"], record["number"]) for record in data_files.catalogue(CATALOGUE)
            if record["present"] == "1"]


def tagged(field, value):
    """The catalogue's rows whose songs have a text in this field of their tags that begins so."""
    return [(record["name"], record["number"]) for record in data_files.catalogue(CATALOGUE)
            if (song := SONGS[record["folder"], record["name"]])["tagged"]
            and song[field].lower().startswith(value.lower())]


class FirstRun(Case):
    def test_1_the_first_start_files_every_song(self):
        with Program() as program:
            shown = program.contents()
            self.assertEqual([path[0] for path in shown if len(path) == 1],
                             ["All Songs", "Artist", "Year", "Genre", "New", "Decades", "By Mood",
                              "My Favorite Play Lists", "Dad's", "Seasonal",
                              "My Sweetie's favorites", "Best friend's favorites"])
            self.assertEqual([path[1] for path in shown if path[0] == "By Mood" and path[1:]],
                             ["Happy", "Sad", "Smokey", "Romantic", "New Age/ Spiritual",
                              "Powerful", "Soothing", "Up Lifting"])
            self.assertEqual(shown["All Songs",], rows())
            self.assertEqual(shown["New",], rows())
            for path, field in ((("Artist", "Abba"), "artist"), (("Year", "1976"), "year"),
                                (("Genre", "Jazz"), "genre")):
                self.assertTrue(tagged(field, path[1]))
                self.assertEqual(shown[path], tagged(field, path[1]))
            self.assertEqual(driver("rows")[0], "Name    --        (click to sort)\tKey")

    def test_2_the_files_hold_what_the_drive_holds(self):
        records = data_files.catalogue(CATALOGUE)
        # Of files of one name, case counting, one is kept.
        self.assertEqual(sorted(record["name"] for record in records),
                         sorted({name for (_, name), song in SONGS.items() if song["found"]}))
        for number, record in enumerate(records, 1):
            self.assertTrue(SONGS[record["folder"], record["name"]]["found"], record)
            self.assertEqual((record["number"], record["present"], record["rank"], record["spares"]),
                             (str(number), "1", "2", [""] * 7))
        self.assertEqual(data_files.lines(SETTINGS)[2:4],
                         [f" {len(records)} ", "c:\\program files\\winamp\\winamp.exe"])
        self.assertEqual(data_files.lines(FOLDERS),
                         sorted({record["folder"] for record in records}, key=str.lower))


if __name__ == "__main__":
    sys.exit(report(FirstRun, sys.argv[1]))
