#!/usr/bin/env python3
"""Shows background pictures in the real program under Wine, through its real dialogs, and looks at
the screen: pictures.py REPORT

Runs in a prefix in which the program has found its songs before (first_run.py).
"""
import shutil
import subprocess
import sys

from jukeboxes import SAVE, command
from under_wine import GROUPING, PREFIX, SETTINGS, Case, Program, answer, driver, report

PICTURES = PREFIX / "drive_c/pics"
POC = GROUPING / "pics.poc"
# Numbers of the frame's commands, from src/ui/Commands.h.
CHANGE, SHOW, TILE, NEXT, PREVIOUS = 1301, 1302, 1303, 1304, 1305
FILE_DIALOG = "*JPEG (?.jpg)*"
NONE = (255, 255, 255)


def make(name, *words):
    subprocess.run(["convert", "-size", "600x400", *words, str(PICTURES / name)], check=True)


def pixel(x, y):
    """The color of a place on the screen."""
    return subprocess.run(["import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "rgb:-"],
                          check=True, capture_output=True).stdout


class Pictures(Case):
    @classmethod
    def setUpClass(cls):
        cls.settings = SETTINGS.read_bytes()
        PICTURES.mkdir()
        for name, color in (("a.jpg", "red"), ("B.JPG", "lime"), ("c.jpg", "blue")):
            make(name, "xc:" + color)

    @classmethod
    def tearDownClass(cls):
        for path in GROUPING.glob("pics.*"):
            path.unlink()
        shutil.rmtree(PICTURES, ignore_errors=True)
        SETTINGS.write_bytes(cls.settings)

    def shows(self, color):
        """Waits for the color behind the rows, which is lightened by the veil."""
        x, y = map(int, driver("where", "heading", "1")[0].split("\t"))
        self.until(lambda: tuple(255 if part > 230 else 0 for part in pixel(x - 15, y + 30)), color)

    def choose(self, path, button="OK"):
        driver("press", "frmPicture", "Browse...")
        driver("wait", "#32770", FILE_DIALOG, "30")
        driver("name", path)
        driver("press", "#32770", "Open", FILE_DIALOG)
        driver("wait", "frmPicture", path, "30")
        driver("press", "frmPicture", button)
        driver("gone", "frmPicture", "30")

    def test_1_chooses_steps_and_finds_the_picture_again(self):
        with Program() as program:
            command(SAVE, "Pics")
            command(NEXT)
            answer("You first need to pick a picture.*cycle through*", "OK")
            self.choose("C:\\pics\\a.jpg", "Cancel")
            self.shows(NONE)
            self.assertEqual(POC.read_bytes(), b"\r\n 0 \r\n 0 \r\n")
            command(CHANGE)
            self.choose("C:\\pics\\b.jpg")
            self.shows((0, 255, 0))
            self.assertEqual(POC.read_bytes(), b"C:\\pics\\b.jpg\r\n 0 \r\n 1 \r\n")
            self.assertTrue(SETTINGS.read_bytes().endswith(b"True\r\nFalse\r\nC:\\pics\\b.jpg\r\n"))
            for number, color in ((NEXT, (0, 0, 255)), (NEXT, (255, 0, 0)), (TILE, (255, 0, 0)),
                                   (PREVIOUS, (0, 0, 255)), (SHOW, NONE), (NEXT, NONE),
                                   (SHOW, (255, 0, 0))):
                command(number)
                self.shows(color)
            command(SAVE)
            program.end()
        self.assertEqual(POC.read_bytes(), b"C:\\pics\\a.jpg\r\n-1 \r\n-1 \r\n")
        (PICTURES / "c.jpg").write_bytes((PICTURES / "c.jpg").read_bytes()[:300])
        with Program() as program:
            self.shows((255, 0, 0))
            command(PREVIOUS)
            self.says("The picture \"C:\\pics\\c.jpg\" can't be shown: the file is damaged")
            program.end()


if __name__ == "__main__":
    sys.exit(report(Pictures, sys.argv[1]))
