#!/usr/bin/env python3
"""Starts the real program under Wine as a person does, from the first start on, and looks at its
windows and at the files that it leaves: first_run.py REPORT

The Wine prefix and the display are those of the environment. The program is installed there, and
drive M: is a library that make_music made.
"""
import json
import pathlib
import shutil
import sys

from under_wine import (CATALOGUE, GROUPING, PREFIX, SETTINGS, Case, Program, answer, command, data_files,
                        driver, report)

SAVE_AS = 1005  # the frame's command, of src/ui/Commands.h
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
            driver("open", "Artist", "Abba")
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
        self.assertEqual(data_files.settings(SETTINGS), {
            "FileContainingTargetDirectories": "C:\\Tobbin\\Grouping\\System\\LocOfMainTargetFiles.lmz",
            "LocOfGroupingDir": "C:\\Tobbin\\Grouping\\", "NumerOfRecordsInTheMain": f" {len(records)} ",
            "LocOfWinAmpExe": "c:\\program files\\winamp\\winamp.exe",
            "LocOfLastSavedJukeBox": "", "LocSecToLastSavedJukeBox": "",
            "LocOfThirdToLastSaveJukeBox": "", "IsThereAPicture": "False", "IsItTiled": "False",
            "PictureLocation": ""})
        self.assertEqual(data_files.lines(FOLDERS),
                         sorted({record["folder"] for record in records}, key=str.lower))

    def test_3_a_second_start_adds_nothing(self):
        before = [path.read_bytes() for path in (CATALOGUE, SETTINGS, FOLDERS)]
        with Program() as program:
            driver("wait", "frmMDIForm1", "*- ?Jukebox One*", "20")  # still maximized
            self.assertEqual(program.contents()["All Songs",], rows())
        self.assertEqual([path.read_bytes() for path in (CATALOGUE, SETTINGS, FOLDERS)], before)

    def test_4_a_saved_jukebox_gets_the_new_song_and_misses_the_deleted_one(self):
        with Program() as program:
            command(SAVE_AS)
            driver("wait", "#32770", "Juke Box Files*", "30")
            driver("name", "mine")
            answer("Juke Box Files*", "Save")
            self.until(lambda: driver("titles"), ["MINE"])
            program.end()
        before = data_files.catalogue(CATALOGUE)
        gone = next(record for record in before if record["name"] == "Carrier.mp3")
        (DRIVE / "Music/Decades/Nineties/Carrier.mp3").unlink()
        known = DRIVE / "Music/Abba/Arrival"
        shutil.copy(known / "Abba - Evening Train.mp3", known / "Zebra Crossing.mp3")
        with Program(question="Do you want to save changes to MINE*") as program:
            shown = program.contents()
        new = {"folder": "M:\\Music\\Abba\\Arrival\\", "name": "Zebra Crossing.mp3", "present": "1",
               "number": str(len(before) + 1), "rank": "2", "spares": [""] * 7}
        cleared = [record if record is not gone else dict(record, folder="0", name="0", present="0")
                   for record in before]
        self.assertEqual(data_files.catalogue(CATALOGUE), cleared + [new])
        self.assertEqual(data_files.catalogue(GROUPING / "FileLocNames.bak"), before)
        added = [(new["name"], new["number"])]
        self.assertEqual(shown["New",][-1:], added)
        self.assertEqual(sorted(shown["All Songs",]),
                         sorted([(record["name"], "" if record is gone else record["number"])
                                 for record in before] + added))
        self.assertEqual(shown["Artist", "Abba"][-1:], added)

    def test_5_damaged_files_lose_no_record(self):
        # The saved jukebox is gone, and line 5 empty, so that the sample comes: to later suites, too.
        (GROUPING / "mine.juk").unlink()
        (GROUPING / "mine.poc").unlink()
        settings = SETTINGS.read_bytes().split(b"\r\n")
        settings[2], settings[4] = b"many", b""
        settings = b"\r\n".join(settings)
        SETTINGS.write_bytes(settings)
        with Program(("*TheOrganizer.ini*", "OK")) as program:
            self.assertEqual(program.contents()["All Songs",], rows())
        self.assertEqual((SETTINGS.parent / "TheOrganizer.bad").read_bytes(), settings)

        whole, records = CATALOGUE.read_bytes(), data_files.catalogue(CATALOGUE)
        CATALOGUE.write_bytes(whole[:-7])
        with Program(("*FileLocNames.lmz*", "No")):
            pass
        self.assertEqual((GROUPING / "FileLocNames.bad").read_bytes(), whole[:-7])
        self.assertEqual(data_files.catalogue(CATALOGUE), records)  # the cut one was found again


if __name__ == "__main__":
    sys.exit(report(FirstRun, sys.argv[1]))
