"""The program under Wine, as the end-to-end tests use it: from outside, through its windows. The
Wine prefix and the display are those of the environment; program and driver are installed there.
"""
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PREFIX = pathlib.Path(os.environ["WINEPREFIX"])
WINE = os.environ.get("WINE", "wine")


def driver(*words):
    # Into files, not pipes: a service that Wine starts on the way would keep a pipe open.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        code = subprocess.run([WINE, r"C:\driver\tobbin_driver.exe", *words], stdin=subprocess.DEVNULL,
                              stdout=output, stderr=errors, timeout=150, check=False).returncode
        output.seek(0)
        errors.seek(0)
        if code != 0:
            raise AssertionError(f"driver {words}: {errors.read().decode('utf-8', 'replace')}")
        return output.read().decode("utf-8").replace("\r", "").split("\n")[:-1]


class Program:
    """The running program, from its start to its end."""

    def __init__(self, *boxes):
        self.boxes = boxes  # texts of the boxes that the start must bring, each with its button

    def __enter__(self):
        self.process = subprocess.Popen([WINE, r"C:\Tobbin\Tobbin.exe"], stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        for words, button in self.boxes:
            driver("wait", "#32770", words, "60")
            driver("press", "#32770", button, words)
        driver("wait", "frmMDIForm1", "*", "120")
        return self

    def __exit__(self, *_):
        driver("close", "frmMDIForm1")
        driver("wait", "#32770", "*initial Jukebox*", "30")
        driver("press", "#32770", "No", "*initial Jukebox*")
        driver("gone", "frmMDIForm1", "30")
        self.process.wait(30)

    def rows(self, *folder):
        driver("open", *folder)
        return [line.split("\t")[2] for line in driver("rows", "1000")[1:]]

    def tree(self):
        return [(int(line.split("\t")[0]), line.split("\t")[1]) for line in driver("tree")]


def report(cases, path):
    """Runs the cases and writes the counts to a file; returns the exit code."""
    result = unittest.TextTestRunner(verbosity=2).run(
        unittest.defaultTestLoader.loadTestsFromTestCase(cases))
    bad = len(result.failures) + len(result.errors)
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"tests": result.testsRun, "failures": bad, "errors": 0, "testsuites": []}, file)
    return int(bad != 0)
