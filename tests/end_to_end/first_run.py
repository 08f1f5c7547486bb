#!/usr/bin/env python3
"""Starts the real program under Wine as a person does, from the first start on, and looks at its
windows and at the files that it leaves: first_run.py DRIVE EXPECTATIONS REPORT

DRIVE is the folder that the program sees as its drive M:, EXPECTATIONS what make_music wrote about
it. The Wine prefix and the display are those of the environment; the program is installed there.
"""
import json
import pathlib
import shutil
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "readers"))
import data_files  # noqa: E402
from under_wine import PREFIX, Program, driver, report  # noqa: E402

GROUPING = PREFIX / "drive_c/Tobbin/Grouping"
CATALOGUE = GROUPING / "FileLocNames.lmz"
SETTINGS = GROUPING / "System/TheOrganizer.ini"
FOLDERS = GROUPING / "System/LocOfMainTargetFiles.lmz"

DRIVE, EXPECTATIONS, REPORT = pathlib.Path(sys.argv[1]), json.load(open(sys.argv[2], encoding="utf-8")), sys.argv[3]
FOUND = EXPECTATIONS["found"]
TWINS = [song for song in FOUND if song["name"] == "same name.mp3"]
SONGS = len(FOUND) - 1  # of two files of one name, one is kept


def windows_path(song):
    return "M:\\" + song["folder"] + "\\"


def children(tree, parent):
    found, inside = [], False
    for depth, name in tree:
        if depth == 0:
            inside = name == parent
        elif inside and depth == 1:
            found.append(name)
    return found


def names(condition):
    return sorted(song["name"] for song in FOUND if song["tagged"] and condition(song))


class FirstRun(unittest.TestCase):
    maxDiff = None

    def test_1_the_first_start_finds_every_song(self):
        with Program() as program:
            tree = program.tree()
            self.assertEqual([name for depth, name in tree if depth == 0],
                             ["All Songs", "Artist", "Year", "Genre", "New", "Decades", "By Mood",
                              "My Favorite Play Lists", "Dad's", "Seasonal",
                              "My Sweetie's favorites", "Best friend's favorites"])
            self.assertEqual(len(program.rows("All Songs")), SONGS)
            self.assertEqual(len(program.rows("New")), SONGS)
            artists = children(tree, "Artist")
            self.assertIn("Live  Band", artists)
            self.assertIn("Quartet  Remastered", artists)
            self.assertIn("Andr\u00e9 C\u00f4t\u00e9", artists)
            self.assertEqual(len([a for a in artists if a.lower().startswith("abbey")]), 1)
            first_abbey = next(a for a in artists if a.lower().startswith("abbey"))
            self.assertEqual(sorted(program.rows("Artist", first_abbey)),
                             ["01 First Row.mp3", "01 Second Row.mp3", "01 Third Row.mp3"])
            years = {song["year"] for song in FOUND if song["year"] not in ("", "0")}
            self.assertEqual(set(children(tree, "Year")), years)
            self.assertEqual(sorted(program.rows("Decades", "00's")),
                             names(lambda s: s["year"][2:3] == "0" and s["year"] != "0"))
            self.assertEqual(sorted(program.rows("Decades", "90's")),
                             names(lambda s: s["year"][2:3] == "9"))
            decades = [name for decade in children(tree, "Decades")
                       for name in program.rows("Decades", decade)]
            self.assertNotIn("01 Trench Coat.mp3", decades)  # 1915
            self.assertEqual(sorted(program.rows("Genre", "Jazz")), names(lambda s: s["genre"] == 8))
            self.assertNotIn("None", children(tree, "Genre"))

    def test_2_the_files_hold_what_the_drive_holds(self):
        records = data_files.catalogue(CATALOGUE)
        paths = {(record["folder"], record["name"]) for record in records}
        expected = {(windows_path(song), song["name"]) for song in FOUND}
        twins = {(windows_path(song), song["name"]) for song in TWINS}
        self.assertEqual(len(records), SONGS)
        self.assertEqual(paths - twins, expected - twins)
        self.assertEqual(len(paths & twins), 1)
        for place, record in enumerate(records, 1):
            self.assertEqual((record["number"], record["present"], record["rank"], record["spares"]),
                             (str(place), "1", "2", [""] * 7))
        settings = data_files.settings(SETTINGS)
        self.assertEqual(settings, {
            "FileContainingTargetDirectories": "C:\\Tobbin\\Grouping\\System\\LocOfMainTargetFiles.lmz",
            "LocOfGroupingDir": "C:\\Tobbin\\Grouping\\", "NumerOfRecordsInTheMain": f" {SONGS} ",
            "LocOfWinAmpExe": "c:\\program files\\winamp\\winamp.exe",
            "LocOfLastSavedJukeBox": "", "LocSecToLastSavedJukeBox": "",
            "LocOfThirdToLastSaveJukeBox": "", "IsThereAPicture": "False", "IsItTiled": "False",
            "PictureLocation": ""})
        folders = data_files.lines(FOLDERS)
        self.assertEqual(folders, sorted({record["folder"] for record in records}, key=str.lower))

    def test_3_a_second_start_adds_nothing(self):
        before = [path.read_bytes() for path in (CATALOGUE, SETTINGS, FOLDERS)]
        with Program() as program:
            self.assertEqual(len(program.rows("All Songs")), SONGS)
        self.assertEqual([path.read_bytes() for path in (CATALOGUE, SETTINGS, FOLDERS)], before)

    def test_4_a_new_song_is_found_and_a_deleted_one_cleared(self):
        known = DRIVE / "Music/Dance/Volt"
        shutil.copy(known / "01 Mirror Ball.mp3", known / "03 Strobe.mp3")
        (known / "02 Platform Shoes.mp3").unlink()
        with Program() as program:
            self.assertIn("03 Strobe.mp3", program.rows("New"))
            songs = program.rows("All Songs")
            self.assertIn("03 Strobe.mp3", songs)
            self.assertNotIn("02 Platform Shoes.mp3", songs)
            self.assertEqual(len(songs), SONGS)
        records = data_files.catalogue(CATALOGUE)
        self.assertEqual(len(records), SONGS + 1)
        self.assertEqual((records[-1]["name"], records[-1]["number"]), ("03 Strobe.mp3", str(SONGS + 1)))
        cleared = [record for record in records if record["present"] == "0"]
        self.assertEqual([(record["folder"], record["name"]) for record in cleared], [("0", "0")])
        # The catalogue as it was before the song was cleared is still there.
        self.assertEqual(len(data_files.catalogue(GROUPING / "FileLocNames.bak")), SONGS)

    def test_5_damaged_files_lose_no_record(self):
        settings = SETTINGS.read_bytes().replace(b" %d \r\n" % (SONGS + 1), b"many\r\n")
        SETTINGS.write_bytes(settings)
        with Program(("*TheOrganizer.ini*", "OK")) as program:
            self.assertEqual(len(program.rows("All Songs")), SONGS)
        self.assertEqual((SETTINGS.parent / "TheOrganizer.bad").read_bytes(), settings)

        whole = CATALOGUE.read_bytes()
        CATALOGUE.write_bytes(whole[:-7])
        with Program(("*FileLocNames.lmz*", "No")) as program:
            self.assertEqual(len(program.rows("All Songs")), SONGS)  # the cut one is found again
        self.assertEqual((GROUPING / "FileLocNames.bad").read_bytes(), whole[:-7])
        self.assertEqual(len(data_files.catalogue(CATALOGUE)), SONGS + 1)


if __name__ == "__main__":
    sys.exit(report(FirstRun, REPORT))
