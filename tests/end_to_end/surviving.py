#!/usr/bin/env python3
"""The real program under Wine among hostile neighbours: surviving.py REPORT

Runs in a prefix in which the program has found its songs and the player before (first_run.py).
"""
import shutil
import subprocess
import sys
import time
import unittest

from under_wine import PREFIX, WINE, Program, driver, report

TOBBIN = r"C:\Tobbin\Tobbin.exe"
DRIVE_C = PREFIX / "drive_c"
GROUPING = DRIVE_C / "Tobbin/Grouping"
PLAY_ALL = 1204  # of assets/resource.h


def start(*words, folder=None):
    return subprocess.Popen([WINE, TOBBIN, *words], stdin=subprocess.DEVNULL, cwd=folder,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def data():
    return {path: path.read_bytes() for path in GROUPING.rglob("*") if path.is_file()}


class Surviving(unittest.TestCase):
    def test_1_of_fifty_starts_at_once_one_is_left(self):
        before = data()
        starts = [start() for _ in range(50)]
        try:
            driver("wait", "frmMDIForm1", "*", "120")
            end = time.monotonic() + 120
            while sum(one.poll() is None for one in starts) > 1:
                self.assertLess(time.monotonic(), end, "more than one goes on")
                time.sleep(0.05)
            frames = [line for line in driver("windows") if line.startswith("frmMDIForm1\t")]
            self.assertEqual(len(frames), 1)
            self.assertEqual([one.returncode for one in starts if one.returncode is not None], [0] * 49)
            self.assertEqual(data(), before)

            # Killed, it leaves the way free.
            driver("end", "frmMDIForm1")
            begin = time.monotonic()
            starts.append(start())
            driver("wait", "frmMDIForm1", "*", "60")
            print(f"after a kill the next start showed its frame within {time.monotonic() - begin:.1f} s")
        finally:
            driver("end", "frmMDIForm1")
            for one in starts:
                one.wait(60)

    def test_2_what_killed_saves_left_is_cleared(self):
        for name in ("FileLocNames.lmz.new", "mine.juk.new", "System/TheOrganizer.ini.new"):
            (GROUPING / name).write_bytes(b"half of it")
        with Program():
            pass
        self.assertEqual([path.name for path in GROUPING.rglob("*.new")], [])

    def test_3_planted_programs_are_not_started(self):
        stand_in = DRIVE_C / "Program Files/Winamp/winamp.exe"
        planted = [DRIVE_C / "Program.exe", DRIVE_C / "work/winamp.exe", DRIVE_C / "Tobbin/winamp.exe"]
        (DRIVE_C / "work").mkdir(exist_ok=True)
        for path in planted:
            shutil.copy(stand_in, path)
        (stand_in.parent / "winamp.ini").write_text("[behave]\n")
        logs = [path.with_suffix(".log") for path in (*planted, stand_in)]
        for log in logs:
            log.unlink(missing_ok=True)
        process = start(folder=DRIVE_C / "work")
        try:
            driver("wait", "frmMDIForm1", "*", "120")
            driver("open", "All Songs")
            driver("command", str(PLAY_ALL))
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.assertEqual([log for log in logs if log.exists()], [logs[-1]])
        finally:
            driver("end", "Winamp v1.x")
            driver("end", "frmMDIForm1")
            process.wait(30)
            for path in planted:
                path.unlink()


if __name__ == "__main__":
    sys.exit(report(Surviving, sys.argv[1]))
