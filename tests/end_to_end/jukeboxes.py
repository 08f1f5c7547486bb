#!/usr/bin/env python3
"""Saves, opens and closes jukeboxes in the real program under Wine, through its real dialogs:
jukeboxes.py REPORT

Runs in a prefix in which the program has found its songs before (first_run.py).
"""
import pathlib
import shutil
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "readers"))
import data_files  # noqa: E402
from under_wine import PREFIX, WINE, Program, driver, report  # noqa: E402

GROUPING = PREFIX / "drive_c/Tobbin/Grouping"
SETTINGS = GROUPING / "System/TheOrganizer.ini"
JUKES = PREFIX / "drive_c/Jukes"
# Numbers of the frame's commands, from assets/resource.h.
NEW, OPEN, CLOSE, SAVE, SAVE_AS, NEW_SONGS, RECENT = 1001, 1002, 1003, 1004, 1005, 1201, 1600
FILE_DIALOG = "Juke Box Files*"
MIX, OTHER = "c:\\tobbin\\grouping\\mix.juk", "c:\\tobbin\\grouping\\other songs.juk"
KEPT, AB = "c:\\tobbin\\grouping\\kept.juk", "c:\\jukes\\a b.txt.juk"


class Run(Program):
    """The program, started with files to open. A test ends it itself."""

    def __init__(self, *files, boxes=()):
        super().__init__(*boxes)
        self.files = files

    def __enter__(self):
        self.process = start(*self.files)
        for words, button in self.boxes:
            answer(words, button)
        driver("wait", "frmMDIForm1", "*", "120")
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            driver("end", "frmMDIForm1")

    def end(self, *answers):
        driver("close", "frmMDIForm1")
        for words, button in answers:
            answer(words, button)
        self.process.wait(60)


def start(*files):
    return subprocess.Popen([WINE, r"C:\Tobbin\Tobbin.exe", *files], stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL, cwd=PREFIX / "drive_c")


def answer(words, button):
    driver("press", "#32770", button, words)


def command(number, name=None, button="Save"):
    """Gives the frame a command; with a name, types that into the file dialog that it opens."""
    driver("command", str(number))
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


def status():
    return driver("status")[0]


def recent():
    settings = data_files.settings(SETTINGS)
    return [settings[key] for key in ("LocOfLastSavedJukeBox", "LocSecToLastSavedJukeBox",
                                      "LocOfThirdToLastSaveJukeBox")]


def jukebox_files(folder):
    return sorted(path.name for path in folder.glob("*.[jJ][uU][kK]"))


def written(path):
    return path.stat().st_mtime_ns


class Jukeboxes(unittest.TestCase):
    maxDiff = None

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

    def eventually(self, ask, expected):
        for _ in range(60):
            found = ask()
            if found == expected:
                return
        self.assertEqual(found, expected)

    def says(self, words):
        for _ in range(60):
            if words in (line := status()):
                return
        self.assertIn(words, line)

    def test_1_saves_under_the_name_that_is_typed(self):
        JUKES.mkdir()
        with Run() as program:
            command(SAVE, "Mix")  # The sample asks for a name of its own.
            self.eventually(titles, ["MIX"])
            self.assertEqual(recent(), [MIX, "", ""])
            self.assertEqual((GROUPING / "mix.poc").read_bytes(), b"\r\n 0 \r\n 0 \r\n")
            first = (GROUPING / "mix.juk").read_bytes()
            command(SAVE)  # asks for nothing
            for name, button in (("mix.juk", "No"), ("MIX.JUK", "Cancel"), ("mix.juk.juk", "Yes"),
                                 ("mix.juk.juk.juk", "Yes")):
                command(SAVE_AS, name)
                answer("File already exists, do you wish to replace this file?", button)
            command(SAVE_AS, "Other Songs")
            self.eventually(titles, ["OTHER SONGS"])
            self.assertEqual((GROUPING / "mix.juk").read_bytes(), first)
            self.assertEqual(jukebox_files(GROUPING),
                             sorted([*self.others, "mix.juk", "other songs.juk"]))
            self.assertEqual(recent(), [OTHER, MIX, ""])
            command(SAVE_AS, "Mix")
            answer("File already exists*", "Yes")
            self.eventually(titles, ["MIX"])
            self.assertEqual(recent(), [MIX, OTHER, MIX])
            command(SAVE_AS, "no", "Cancel")
            driver("gone", "#32770")
            command(SAVE_AS, "C:\\Jukes\\A B.Txt")
            self.eventually(titles, ["A B.TXT"])
            self.assertEqual(jukebox_files(JUKES), ["a b.txt.juk"])
            self.assertEqual(recent(), [AB, MIX, OTHER])
            program.end()  # without a question: nothing has changed since

    def test_2_opens_each_title_once(self):
        shutil.copy(GROUPING / "mix.juk", JUKES / "MIX.juk")
        with Run() as program:
            self.assertEqual(titles(), ["A B.TXT"])  # the last one saved
            songs = program.rows("All Songs")
            self.assertGreater(len(songs), 50)
            open_file("mix.juk")
            self.eventually(titles, ["MIX", "A B.TXT"])
            self.assertEqual(program.rows("All Songs"), songs)
            self.assertEqual(recent(), ["C:\\Tobbin\\Grouping\\mix.juk", AB, MIX])
            for name in ("Mix.juk", "C:\\Jukes\\MIX.juk"):
                open_file(name)
                answer("This file is already open", "OK")
            command(RECENT + 3)
            answer("This file is already open", "OK")
            command(NEW)
            self.eventually(titles, ["JukeBox3", "MIX", "A B.TXT"])
            command(SAVE, "MIX")
            answer("MIX is already open.  Close the file then you can save this Juke box with that "
                   "file name.", "OK")
            command(CLOSE)
            answer("Do you want to save changes to JukeBox3", "No")
            command(CLOSE)  # opened and not changed
            self.eventually(titles, ["A B.TXT"])
            command(CLOSE)  # opened at the start, when its groups were built
            answer("Do you want to save changes to A B.TXT", "No")
            self.eventually(titles, [])
            (JUKES / "a b.txt.juk").unlink()
            settings = SETTINGS.read_bytes()
            command(RECENT + 2)
            self.says("The jukebox \"c:\\jukes\\a b.txt.juk\" was not opened: ")
            self.assertEqual((titles(), SETTINGS.read_bytes()), ([], settings))
            program.end()

    def test_3_refuses_what_is_no_whole_jukebox(self):
        whole = (GROUPING / "mix.juk").read_bytes()
        (JUKES / "cut.juk").write_bytes(whole[:-30])
        (JUKES / "altered.juk").write_bytes(whole.replace(b"Encore", b"Encode", 1))
        (JUKES / "newer.juk").write_bytes(whole.replace(b"jukebox 1", b"jukebox 2", 1))
        (JUKES / "foreign.juk").write_bytes(b"RIFF\x24\x00\x00\x00WAVE")
        with Run() as program:
            before = (titles(), program.tree(), SETTINGS.read_bytes())
            for name, reason in (("cut", "cut"), ("altered", "altered"), ("newer", "newer"),
                                 ("foreign", "not the first line of a jukebox")):
                open_file(f"C:\\Jukes\\{name}.juk")
                self.says(f"{name}.juk\"")
                self.assertIn(reason, status())
                self.assertEqual((titles(), program.tree(), SETTINGS.read_bytes()), before)
            program.end(("Do you want to save changes to MIX", "No"))

    def test_4_asks_before_a_window_or_the_frame_closes(self):
        saved = written(GROUPING / "mix.juk")
        with Run() as program:
            command(CLOSE)
            answer("Do you want to save changes to MIX", "No")
            self.eventually(titles, [])
            self.assertEqual(written(GROUPING / "mix.juk"), saved)
            command(NEW)  # copies the sample, which is built first
            self.eventually(lambda: len(titles()), 2)
            command(CLOSE)
            answer("Do you want to save changes to JukeBox3", "Yes")
            answer_with("Kept")
            self.eventually(lambda: len(titles()), 1)
            self.assertEqual(recent()[0], KEPT)
            open_file("kept.juk")
            self.eventually(lambda: titles()[:1], ["KEPT"])
            command(NEW_SONGS)
            self.says("No new songs were found.")
            saved = written(GROUPING / "kept.juk")
            program.end(("Do you want to save changes to KEPT", "Yes"), ("*initial Jukebox*", "No"))
        self.assertNotEqual(written(GROUPING / "kept.juk"), saved)

    def test_5_puts_aside_what_can_not_be_saved(self):
        with Run() as program:
            songs = program.rows("All Songs")
            command(SAVE_AS, "C:\\Jukes\\Gone.juk")
            self.eventually(titles, ["GONE"])
            shutil.rmtree(JUKES)
            command(SAVE)
            self.says("The jukebox was not saved to \"c:\\jukes\\gone.juk\": ")
            self.assertEqual(titles(), ["GONE"])
            command(NEW_SONGS)
            self.says("No new songs were found.")
            program.end(("Do you want to save changes to GONE", "Yes"))
        self.assertEqual(jukebox_files(GROUPING / "Recovered"), ["gone.juk"])
        with Run(boxes=[("*could not save*gone.juk*", "Yes")]) as program:
            self.eventually(lambda: titles()[:1], ["GONE"])
            self.assertEqual(program.rows("All Songs"), songs)
            self.assertEqual(jukebox_files(GROUPING / "Recovered"), [])
            command(SAVE, "Found again")
            self.eventually(lambda: titles()[:1], ["FOUND AGAIN"])
            program.end(("*initial Jukebox*", "No"))

    def test_6_opens_files_from_outside(self):
        JUKES.mkdir()
        for name in ("one", "two", "three", "four"):
            shutil.copy(GROUPING / "kept.juk", JUKES / f"{name}.juk")
        with Run("C:\\Jukes\\one.juk") as program:
            self.eventually(titles, ["ONE", "FOUND AGAIN"])
            self.assertEqual(start("C:\\Jukes\\two.juk", "jukes\\THREE.juk").wait(60), 0)
            self.eventually(titles, ["THREE", "TWO", "ONE", "FOUND AGAIN"])
            driver("drop", "C:\\Jukes\\one.juk", "C:\\Jukes\\four.juk")
            self.eventually(titles, ["FOUR", "ONE", "THREE", "TWO", "FOUND AGAIN"])
            # While a dialog waits, what comes from outside waits as well.
            command(OPEN)
            driver("wait", "#32770", FILE_DIALOG, "30")
            self.assertEqual(start("C:\\Jukes\\two.juk").wait(60), 0)
            self.assertEqual(titles()[0], "FOUR")
            driver("press", "#32770", "Cancel", FILE_DIALOG)
            self.eventually(lambda: titles()[0], "TWO")
            program.end(("Do you want to save changes to FOUND AGAIN", "No"))

    def test_7_the_frame_comes_back_where_it_was_or_can_be_seen(self):
        with Run() as program:
            driver("move", "120", "90", "700", "500")
            self.eventually(place, [120, 90, 700, 500])
            program.end(("Do you want to save changes*", "No"))
        with Run() as program:
            self.assertEqual(place(), [120, 90, 700, 500])
            driver("move", "5000", "90", "700", "500")
            program.end(("Do you want to save changes*", "No"))
        with Run() as program:
            left, top, width, height = place()
            self.assertEqual((width, height), (700, 500))
            self.assertTrue(0 <= left <= 1280 - width and 0 <= top <= 960 - height, place())
            program.end(("Do you want to save changes*", "No"))

    def test_8_asks_when_the_session_ends(self):
        saved = written(JUKES / "four.juk")
        for button, kept in (("No", True), ("Yes", False)):
            with Run() as program:
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
