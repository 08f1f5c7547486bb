#!/usr/bin/env python3
"""Saves, opens and closes jukeboxes in the real program under Wine, through its real dialogs:
jukeboxes.py REPORT

Runs in a prefix in which the program has found its songs before (first_run.py).
"""
import shutil
import subprocess
import sys

import under_wine
from under_wine import (GROUPING, PREFIX, SETTINGS, WINE, Case, Program, answer, data_files, driver,
                        report, start)

JUKES = PREFIX / "drive_c/Jukes"
# Numbers of the frame's commands, from assets/resource.h.
NEW, OPEN, CLOSE, SAVE, SAVE_AS, NEW_SONGS, RECENT = 1001, 1002, 1003, 1004, 1005, 1201, 1600
FILE_DIALOG = "Juke Box Files*"
MIX, OTHER = "c:\\tobbin\\grouping\\mix.juk", "c:\\tobbin\\grouping\\other songs.juk"
KEPT, AB = "c:\\tobbin\\grouping\\kept.juk", "c:\\jukes\\a b.txt.juk"


def command(number, name=None, button="Save"):
    """Gives the frame a command; with a name, types that into the file dialog that it opens."""
    under_wine.command(number)
    if name is not None:
        answer_with(name, button)


def answer_with(name, button="Save"):
    """Types a name into the file dialog."""
    driver("wait", "#32770", FILE_DIALOG, "30")
    driver("name", name)
    driver("press", "#32770", button, FILE_DIALOG)


def open_file(name):
    command(OPEN, name, "Open")


def titles():
    return driver("titles")


def recent():
    settings = data_files.settings(SETTINGS)
    return [settings[key] for key in ("LocOfLastSavedJukeBox", "LocSecToLastSavedJukeBox",
                                      "LocOfThirdToLastSaveJukeBox")]


def jukebox_files(folder):
    return sorted(path.name for path in folder.glob("*.[jJ][uU][kK]"))


def written(path):
    return path.stat().st_mtime_ns


class Jukeboxes(Case):
    @classmethod
    def setUpClass(cls):
        cls.settings = SETTINGS.read_bytes()
        cls.others = jukebox_files(GROUPING)

    @classmethod
    def tearDownClass(cls):
        """Leaves no jukebox and no place behind for the next start."""
        for path in (*GROUPING.glob("*.juk"), *GROUPING.glob("*.poc")):
            if path.stem + ".juk" not in cls.others:
                path.unlink()
        shutil.rmtree(JUKES, ignore_errors=True)
        SETTINGS.write_bytes(cls.settings)
        subprocess.run([WINE, "reg", "delete", r"HKCU\Software\Tobbin\Options", "/v",
                        "Window frmMDIForm1", "/f"], stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)

    def test_1_saves_under_the_name_that_is_typed(self):
        JUKES.mkdir()
        with Program() as program:
            command(SAVE, "Mix")  # The sample asks for a name of its own.
            self.until(titles, ["MIX"])
            self.assertEqual(recent(), [MIX, "", ""])
            self.assertEqual((GROUPING / "mix.poc").read_bytes(), b"\r\n 0 \r\n 0 \r\n")
            first = (GROUPING / "mix.juk").read_bytes()
            command(SAVE)  # asks for nothing
            for name, button in (("mix.juk", "No"), ("MIX.JUK", "Cancel"), ("mix.juk.juk", "Yes"),
                                 ("mix.juk.juk.juk", "Yes")):
                command(SAVE_AS, name)
                answer("File already exists, do you wish to replace this file?", button)
            command(SAVE_AS, "Other Songs")
            self.until(titles, ["OTHER SONGS"])
            self.assertEqual((GROUPING / "mix.juk").read_bytes(), first)
            self.assertEqual(jukebox_files(GROUPING),
                             sorted([*self.others, "mix.juk", "other songs.juk"]))
            self.assertEqual(recent(), [OTHER, MIX, ""])
            command(SAVE_AS, "Mix")
            answer("File already exists*", "Yes")
            self.until(titles, ["MIX"])
            self.assertEqual(recent(), [MIX, OTHER, MIX])
            command(SAVE_AS, "no", "Cancel")
            driver("gone", "#32770")
            command(SAVE_AS, "C:\\Jukes\\A B.Txt")
            self.until(titles, ["A B.TXT"])
            self.assertEqual(jukebox_files(JUKES), ["a b.txt.juk"])
            self.assertEqual(recent(), [AB, MIX, OTHER])
            program.end()  # without a question: nothing has changed since

    def test_2_opens_each_title_once(self):
        shutil.copy(GROUPING / "mix.juk", JUKES / "MIX.juk")
        with Program() as program:
            self.assertEqual(titles(), ["A B.TXT"])  # the last one saved
            songs = program.rows("All Songs")
            self.assertGreater(len(songs), 50)
            open_file("mix.juk")
            self.until(titles, ["MIX", "A B.TXT"])
            self.assertEqual(program.rows("All Songs"), songs)
            self.assertEqual(recent(), ["C:\\Tobbin\\Grouping\\mix.juk", AB, MIX])
            for name in ("Mix.juk", "C:\\Jukes\\MIX.juk"):
                open_file(name)
                answer("This file is already open", "OK")
            command(RECENT + 3)
            answer("This file is already open", "OK")
            command(NEW)
            self.until(titles, ["JukeBox3", "MIX", "A B.TXT"])
            command(SAVE, "MIX")
            answer("MIX is already open.  Close the file then you can save this Juke box with that "
                   "file name.", "OK")
            command(CLOSE)
            answer("Do you want to save changes to JukeBox3", "No")
            command(CLOSE)  # opened and not changed
            self.until(titles, ["A B.TXT"])
            command(CLOSE)  # opened at the start, when its groups were built
            answer("Do you want to save changes to A B.TXT", "No")
            self.until(titles, [])
            (JUKES / "a b.txt.juk").unlink()
            settings = SETTINGS.read_bytes()
            command(RECENT + 2)
            self.says("The jukebox \"c:\\jukes\\a b.txt.juk\" was not opened: ")
            self.assertEqual((titles(), SETTINGS.read_bytes()), ([], settings))
            program.end()

    def test_3_refuses_what_is_no_whole_jukebox(self):
        whole = (GROUPING / "mix.juk").read_bytes()
        (JUKES / "cut.juk").write_bytes(whole[:-30])
        with Program() as program:
            before = (titles(), program.tree(), SETTINGS.read_bytes())
            open_file("C:\\Jukes\\cut.juk")
            self.says("cut.juk\"")
            self.assertEqual((titles(), program.tree(), SETTINGS.read_bytes()), before)
            program.end(("Do you want to save changes to MIX", "No"))

    def test_4_asks_before_a_window_or_the_frame_closes(self):
        saved = written(GROUPING / "mix.juk")
        with Program() as program:
            command(CLOSE)
            answer("Do you want to save changes to MIX", "No")
            self.until(titles, [])
            self.assertEqual(written(GROUPING / "mix.juk"), saved)
            command(NEW)  # copies the sample, which is built first
            self.until(lambda: len(titles()), 2)
            command(CLOSE)
            answer("Do you want to save changes to JukeBox3", "Yes")
            answer_with("Kept")
            self.until(lambda: len(titles()), 1)
            self.assertEqual(recent()[0], KEPT)
            open_file("kept.juk")
            self.until(lambda: titles()[:1], ["KEPT"])
            command(NEW_SONGS)
            self.says("No new songs were found.")
            saved = written(GROUPING / "kept.juk")
            program.end(("Do you want to save changes to KEPT", "Yes"), ("*initial Jukebox*", "No"))
        self.assertNotEqual(written(GROUPING / "kept.juk"), saved)

    def test_5_puts_aside_what_can_not_be_saved(self):
        with Program() as program:
            songs = program.rows("All Songs")
            command(SAVE_AS, "C:\\Jukes\\Gone.juk")
            self.until(titles, ["GONE"])
            shutil.rmtree(JUKES)
            command(SAVE)
            self.says("The jukebox was not saved to \"c:\\jukes\\gone.juk\": ")
            self.assertEqual(titles(), ["GONE"])
            command(NEW_SONGS)
            self.says("No new songs were found.")
            program.end(("Do you want to save changes to GONE", "Yes"))
        self.assertEqual(jukebox_files(GROUPING / "Recovered"), ["gone.juk"])
        with Program(("*could not save*gone.juk*", "Yes")) as program:
            self.until(lambda: titles()[:1], ["GONE"])
            self.assertEqual(program.rows("All Songs"), songs)
            self.assertEqual(jukebox_files(GROUPING / "Recovered"), [])
            command(SAVE, "Found again")
            self.until(lambda: titles()[:1], ["FOUND AGAIN"])
            program.end(("*initial Jukebox*", "No"))

    def test_6_opens_files_from_outside(self):
        JUKES.mkdir()
        for name in ("one", "two", "три", "four"):
            shutil.copy(GROUPING / "kept.juk", JUKES / f"{name}.juk")
        with Program(files=["C:\\Jukes\\one.juk"]) as program:
            self.until(titles, ["ONE", "FOUND AGAIN"])
            self.assertEqual(start("C:\\Jukes\\two.juk", "jukes\\ТРИ.juk").wait(60), 0)
            self.until(titles, ["ТРИ", "TWO", "ONE", "FOUND AGAIN"])
            driver("drop", "C:\\Jukes\\one.juk", "C:\\Jukes\\four.juk")
            self.until(titles, ["FOUR", "ONE", "ТРИ", "TWO", "FOUND AGAIN"])
            # While a dialog waits, what comes from outside waits as well.
            command(OPEN)
            driver("wait", "#32770", FILE_DIALOG, "30")
            self.assertEqual(start("C:\\Jukes\\two.juk").wait(60), 0)
            self.assertEqual(titles()[0], "FOUR")
            driver("press", "#32770", "Cancel", FILE_DIALOG)
            self.until(lambda: titles()[0], "TWO")
            program.end(("Do you want to save changes to FOUND AGAIN", "No"))

    def test_7_the_frame_comes_back_where_it_was_or_can_be_seen(self):
        with Program() as program:
            driver("move", "120", "90", "700", "500")
            self.until(place, [120, 90, 700, 500])
            program.end(("Do you want to save changes*", "No"))
        with Program() as program:
            self.assertEqual(place(), [120, 90, 700, 500])
            driver("move", "5000", "90", "700", "500")
            program.end(("Do you want to save changes*", "No"))
        with Program() as program:
            left, top, width, height = place()
            self.assertEqual((width, height), (700, 500))
            self.assertTrue(0 <= left <= 1280 - width and 0 <= top <= 960 - height, place())
            program.end(("Do you want to save changes*", "No"))

    def test_8_asks_when_the_session_ends(self):
        saved = written(JUKES / "four.juk")
        for button, kept in (("No", True), ("Yes", False)):
            with Program() as program:
                command(NEW_SONGS)
                self.says("No new songs were found.")
                session = subprocess.Popen([WINE, "wineboot", "--end-session"],
                                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                answer("Do you want to save changes to FOUR", button)
                program.process.wait(60)
                session.wait(60)
                subprocess.run(["wineserver", "-k"], check=False)  # the desktop is gone
            self.assertEqual(written(JUKES / "four.juk") == saved, kept)


def place():
    return [int(line) for line in driver("place")]


if __name__ == "__main__":
    sys.exit(report(Jukeboxes, sys.argv[1]))
