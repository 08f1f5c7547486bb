#!/usr/bin/env python3
"""Installs the program under Wine, updates it and removes it, without a question: installing.py REPORT

C:\\setup.exe is the installer, C:\\driver the driver; the program is not installed yet.
"""
import subprocess
import sys
import time
import unittest

from under_wine import PREFIX, WINE, driver, report

USER = next(folder for folder in (PREFIX / "drive_c/users").iterdir() if folder.name != "Public")
PLACE = USER / "AppData/Local/Programs/Tobbin"
START_MENU = USER / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Tobbin.lnk"
DESKTOP = USER / "Desktop/Tobbin.lnk"
WINDOWS_PLACE = f"C:\\users\\{USER.name}\\AppData\\Local\\Programs\\Tobbin"
CLASSES = "HKCU\\Software\\Classes\\"
UNINSTALL = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tobbin"


def run(*words):
    return subprocess.run([WINE, *words], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, timeout=120, check=False).returncode


def value(key, name):
    """A text in the registry, or nothing."""
    file = PREFIX / "drive_c/exported.reg"
    file.unlink(missing_ok=True)
    if run("reg", "export", key, "C:\\exported.reg", "/y") != 0:
        return None
    wanted = f'"{name}"=' if name else "@="
    section = file.read_text("utf-16").split("\n\n")[1]
    for line in section.splitlines():
        if line.startswith(wanted):
            return line[len(wanted) + 1:-1].replace('\\"', '"').replace("\\\\", "\\")
    return None


def remove(*words):
    """The remover ends before its copy has done the work: waits until it has gone itself."""
    run(f"{WINDOWS_PLACE}\\Uninstall.exe", "/S", *words)
    end = time.monotonic() + 60
    while (PLACE / "Uninstall.exe").exists() or value(UNINSTALL, "DisplayName"):
        assert time.monotonic() < end, "the removal does not end"
    run("wineboot", "--end-session")


class Installing(unittest.TestCase):
    def test_1_installs_for_one_user(self):
        self.assertEqual(run("C:\\setup.exe", "/S"), 0)
        self.assertEqual({path.name for path in PLACE.iterdir()},
                         {"Tobbin.exe", "TIPOFDAY.TXT", "readme.txt", "LICENSE.txt", "Help", "Player",
                          "Uninstall.exe"})
        self.assertTrue(START_MENU.exists())
        self.assertFalse(DESKTOP.exists())
        for key, name, expected in (
                ("HKCU\\Software\\Tobbin\\Options", "Runtime Library Check", "0"),
                (CLASSES + ".juk", "", "Tobbin.Jukebox"),
                (CLASSES + "Tobbin.Jukebox\\DefaultIcon", "", WINDOWS_PLACE + "\\Tobbin.exe,1"),
                (CLASSES + "Tobbin.Jukebox\\shell\\open\\command", "",
                 f'"{WINDOWS_PLACE}\\Tobbin.exe" "%1"'),
                (UNINSTALL, "DisplayName", "Tobbin MP3 Organizer"),
                (UNINSTALL, "UninstallString", f'"{WINDOWS_PLACE}\\Uninstall.exe"')):
            self.assertEqual(value(key, name), expected)

    def test_2_an_update_keeps_what_is_the_users(self):
        program = (PLACE / "Tobbin.exe").read_bytes()
        (PLACE / "Tobbin.exe").write_bytes(b"an older one")
        (PLACE / "TIPOFDAY.TXT").write_bytes(b"my own tip")
        (PLACE / "Grouping/System").mkdir(parents=True)
        users = {PLACE / "TIPOFDAY.TXT": b"my own tip", PLACE / "Grouping/mine.juk": b"mine",
                 PLACE / "Grouping/System/TheOrganizer.ini": b"\r\n\r\nmany\r\n"}
        for path, content in users.items():
            path.write_bytes(content)
        self.assertEqual(run("C:\\setup.exe", "/S", "/DESKTOP"), 0)
        self.assertEqual((PLACE / "Tobbin.exe").read_bytes(), program)
        self.assertEqual({path: path.read_bytes() for path in users}, users)
        self.assertTrue(DESKTOP.exists())

    def test_3_a_program_that_runs_is_left_alone(self):
        process = subprocess.Popen([WINE, f"{WINDOWS_PLACE}\\Tobbin.exe"], stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        driver("wait", "#32770", "*TheOrganizer.ini*", "60")  # its third line is no count
        self.assertEqual(run("C:\\setup.exe", "/S"), 32)  # in use
        driver("end", "#32770")
        process.wait(30)

    def test_4_a_removal_keeps_the_data_unless_told(self):
        remove()
        self.assertEqual([path.name for path in PLACE.iterdir()], ["Grouping"])
        self.assertEqual((PLACE / "Grouping/mine.juk").read_bytes(), b"mine")
        for key in (CLASSES + ".juk", CLASSES + "Tobbin.Jukebox", UNINSTALL):
            self.assertNotEqual(run("reg", "query", key), 0)
        self.assertFalse(START_MENU.exists() or DESKTOP.exists())

        self.assertEqual(run("C:\\setup.exe", "/S"), 0)
        remove("/DATA")
        self.assertFalse(PLACE.exists())
        self.assertNotEqual(run("reg", "query", "HKCU\\Software\\Tobbin"), 0)


if __name__ == "__main__":
    sys.exit(report(Installing, sys.argv[1]))
