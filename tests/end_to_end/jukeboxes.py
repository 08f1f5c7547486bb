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
RECOVERED = GROUPING / "Recovered"
# Numbers of the frame's commands, from src/ui/Commands.h.
NEW, OPEN, CLOSE, SAVE, SAVE_AS, ADD_FOLDER, RECENT = 1001, 1002, 1003, 1004, 1005, 1106, 1600
FILE_DIALOG = "Juke Box Files*"
MIX, AB = "c:\\tobbin\\grouping\\mix.juk", "c:\\jukes\\a b.txt.juk"


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
    return data_files.lines(SETTINGS)[4:7]


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

    def test_1_saves_under_the_name_that_is_typed(self):
        JUKES.mkdir()
        with Program() as program:
            command(SAVE, "Mix")  # The sample asks for a name of its own.
            self.until(titles, ["MIX"])
            for name, button in (("MIX.JUK", "Cancel"), ("mix.juk.juk", "Yes")):
                command(SAVE_AS, name)
                answer("File already exists, do you wish to replace this file?", button)
            command(SAVE_AS, "no", "Cancel")
            driver("gone", "#32770")
            command(SAVE_AS, "C:\\Jukes\\A B.Txt")
            self.until(titles, ["A B.TXT"])
            self.assertEqual(jukebox_files(GROUPING), sorted([*self.others, "mix.juk"]))
            self.assertEqual(jukebox_files(JUKES), ["a b.txt.juk"])
            program.end()  # without a question: nothing has changed since

    def test_2_opens_each_title_once_and_asks_before_it_closes(self):
        with Program() as program:
            self.assertEqual(titles(), ["A B.TXT"])  # the last one saved
            open_file("mix.juk")
            self.until(titles, ["MIX", "A B.TXT"])
            self.assertGreater(len(program.rows("All Songs")), 50)
            self.assertEqual(recent(), ["C:\\Tobbin\\Grouping\\mix.juk", AB, MIX])
            open_file("Mix.juk")
            answer("This file is already open", "OK")
            command(CLOSE)  # opened and not changed
            self.until(titles, ["A B.TXT"])
            command(CLOSE)  # opened at the start, when its groups were built: only looked at
            self.until(titles, [])
            (JUKES / "a b.txt.juk").unlink()
            command(RECENT + 2)
            self.says("The jukebox \"c:\\jukes\\a b.txt.juk\" was not opened: ")
            command(NEW)  # copies the sample, which is built first
            self.until(lambda: len(titles()), 2)
            command(CLOSE)
            answer("Do you want to save changes to JukeBox*", "Yes")
            answer_with("Kept")
            self.until(lambda: len(titles()), 1)
            self.assertTrue((GROUPING / "kept.juk").exists())
            program.end(("*initial Jukebox*", "No"))

    def test_3_opens_files_from_outside(self):
        for name in ("one", "two", "три"):
            shutil.copy(GROUPING / "kept.juk", JUKES / f"{name}.juk")
        with Program(files=["C:\\Jukes\\one.juk"]) as program:
            self.until(titles, ["ONE", "KEPT"])
            self.assertEqual(start("C:\\Jukes\\two.juk", "jukes\\ТРИ.juk").wait(60), 0)
            self.until(titles, ["ТРИ", "TWO", "ONE", "KEPT"])
            # While a dialog waits, what comes from outside waits as well.
            command(OPEN)
            driver("wait", "#32770", FILE_DIALOG, "30")
            self.assertEqual(start("C:\\Jukes\\one.juk").wait(60), 0)
            self.assertEqual(titles()[0], "ТРИ")
            driver("press", "#32770", "Cancel", FILE_DIALOG)
            self.until(lambda: titles()[0], "ONE")
            program.end()

    def test_4_the_end_of_the_session_asks_nothing_and_loses_nothing(self):
        saved = written(JUKES / "one.juk")
        with Program(files=["C:\\Jukes\\one.juk"]) as program:
            command(ADD_FOLDER)
            tree = program.tree()
            command(OPEN)  # whatever box is open
            driver("wait", "#32770", FILE_DIALOG, "30")
            subprocess.run([WINE, "wineboot", "--end-session"], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=False, timeout=60)
            program.process.wait(60)
            subprocess.run(["wineserver", "-k"], check=False)  # the desktop is gone
        self.assertEqual(written(JUKES / "one.juk"), saved)
        self.assertEqual(jukebox_files(RECOVERED), ["one (recovered).juk"])
        with Program(("*not saved*one (recovered).juk*", "Yes")) as program:
            self.until(titles, ["ONE (RECOVERED)", "ONE"])
            self.assertEqual(program.tree(), tree)
            command(SAVE, "C:\\Jukes\\One")
            answer("ONE is already open*", "OK")
            command(SAVE, "Found again")
            self.until(titles, ["FOUND AGAIN", "ONE"])
            program.end()
        self.assertEqual(jukebox_files(RECOVERED), [])
        self.assertEqual(written(JUKES / "one.juk"), saved)


if __name__ == "__main__":
    sys.exit(report(Jukeboxes, sys.argv[1]))
