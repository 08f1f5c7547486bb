"""The program under Wine, as the end-to-end tests use it: from outside, through its windows. The
Wine prefix and the display are those of the environment; program and driver are installed there.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "readers"))
import data_files  # noqa: E402, for the suites

PREFIX = pathlib.Path(os.environ["WINEPREFIX"])
GROUPING = PREFIX / "drive_c/Tobbin/Grouping"
CATALOGUE = GROUPING / "FileLocNames.lmz"
SETTINGS = GROUPING / "System/TheOrganizer.ini"
PLAYER = PREFIX / "drive_c/Program Files/Winamp"
PLAYER_LOG = PLAYER / "winamp.log"
WINE = os.environ.get("WINE", "wine")


# The driver's commands that must not be given twice.
ONCE = ("press", "close", "command", "crash", "freeze", "thaw")


def run_driver(words):
    """Its exit code, its answer and what it told on the error output, line by line."""
    # Into files, not pipes: a service that Wine starts on the way would keep a pipe open.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        code = subprocess.run([WINE, r"C:\driver\tobbin_driver.exe", "-v", *words],
                              stdin=subprocess.DEVNULL, stdout=output, stderr=errors, timeout=150,
                              check=False).returncode
        for file in (output, errors):
            file.seek(0)
        return code, *(file.read().decode("utf-8", "replace").replace("\r", "").split("\n")[:-1]
                       for file in (output, errors))


def driver(*words):
    """What the driver answers, line by line.

    On a busy machine about one of a thousand runs under Wine ends without a word. Such a one is
    printed, and made again unless that might give a command twice."""
    for _ in range(3):
        code, output, told = run_driver(words)
        if code == 0 or told[-1:] == ["done"]:
            return output
        if any(line.startswith("tobbin_driver:") for line in told):
            break  # what it was asked for is not so
        print("driver", words, "ended with", code, told)
        if words[0] in ONCE and "begun" in told:
            break
    raise AssertionError(f"driver {words}: {code} {told}")


def mouse(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def keys(*names):
    mouse("key", "--delay", 40, *names)


def status():
    return driver("status")[0]


def command(number):
    """Gives the frame a command by its number in src/ui/Commands.h."""
    driver("command", str(number))


def answer(words, button):
    """Presses a button of the box with these words."""
    driver("press", "#32770", button, words)


def start(*words, folder=PREFIX / "drive_c"):
    return subprocess.Popen([WINE, r"C:\Tobbin\Tobbin.exe", *words], cwd=folder,
                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)


def behave(*lines):
    """How the player's stand-in behaves from its next start on, with a new log."""
    (PLAYER / "winamp.ini").write_text("\n".join(("[behave]", *lines)))
    PLAYER_LOG.unlink(missing_ok=True)


class Program:
    """The running program, started with files to open, from its start to its end.

    `boxes` are the texts of the boxes that the start must bring, each with its button; `question`
    is the one about saving that its end must bring, if any; it is answered with No. A test may end
    the program itself."""

    def __init__(self, *boxes, files=(), question="*initial Jukebox*"):
        self.boxes = boxes
        self.files = files
        self.question = question

    def __enter__(self):
        boxes = self.begin()
        end = time.monotonic() + 120
        while True:
            try:
                while boxes:
                    answer(*boxes[0])
                    del boxes[0]
                driver("wait", "frmMDIForm1", "*", "10")
                return self
            except AssertionError:
                if time.monotonic() > end:
                    raise
            if self.process.poll() is not None:
                # As the driver, it may end before it began, when Wine itself has just started. A
                # crash of its own leaves a dump.
                print("the program ended with", self.process.returncode)
                assert not list((PREFIX / "drive_c/users").rglob("Tobbin.dmp")), "it crashed"
                boxes = self.begin()

    def begin(self):
        self.process = start(*self.files)
        return list(self.boxes)

    def __exit__(self, failure, *_):
        if self.process.poll() is not None:
            return
        if failure:
            driver("end", "frmMDIForm1")
        else:
            self.end(*([(self.question, "No")] if self.question else []))

    def kill(self):
        driver("end", "frmMDIForm1")
        self.process.wait(60)

    def end(self, *answers):
        driver("close", "frmMDIForm1")
        for words, button in answers:
            answer(words, button)
        self.process.wait(60)

    def rows(self, *folder):
        driver("open", *folder)
        return [line.split("\t")[2] for line in driver("rows", "1000")[1:]]

    def contents(self):
        """The active jukebox: for each folder's path, the file name and the key of each of its
        songs in order; a missing song has no key."""
        folders, path = {}, ()
        for line in driver("contents"):
            fields = line.split("\t")
            if fields[0]:
                path = path[:int(fields[0])] + (fields[1],)
                folders[path] = []
            else:
                folders[path].append((fields[3], fields[4]))
        return folders

    def tree(self):
        return [(int(line.split("\t")[0]), line.split("\t")[1]) for line in driver("tree")]


class Case(unittest.TestCase):
    maxDiff = None

    def until(self, ask, expected):
        end = time.monotonic() + 30
        while (found := ask()) != expected and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(found, expected)

    def says(self, words):
        """Waits until the line at the foot of the frame has these words."""
        self.until(lambda: words if words in (line := status()) else line, words)


def report(cases, path):
    """Runs the cases and writes the counts to a file; returns the exit code."""
    result = unittest.TextTestRunner(verbosity=2).run(
        unittest.defaultTestLoader.loadTestsFromTestCase(cases))
    bad = len(result.failures) + len(result.errors)
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"tests": result.testsRun, "failures": bad, "errors": 0, "testsuites": []}, file)
    return int(bad != 0)
