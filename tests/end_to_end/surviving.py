#!/usr/bin/env python3
"""The real program under Wine among hostile neighbors: surviving.py REPORT

Runs in a prefix in which the program has found its songs and the player before (first_run.py).
"""
import os
import shutil
import subprocess
import sys
import time

from under_wine import (CATALOGUE, GROUPING, PREFIX, WINE, Case, Program, command, data_files, driver,
                        report, start)

DRIVE_C = PREFIX / "drive_c"
OPEN = 1002  # of src/ui/Commands.h


def data():
    return {path: path.read_bytes() for path in GROUPING.rglob("*")
            if path.is_file() and path.name != "InUse.lock"}


class Surviving(Case):
    def test_1_of_ten_starts_at_once_one_is_left(self):
        before = data()
        starts = [start() for _ in range(10)]
        try:
            driver("wait", "frmMDIForm1", "*", "120")
            end = time.monotonic() + 120
            while sum(one.poll() is None for one in starts) > 1:
                self.assertLess(time.monotonic(), end, "more than one goes on")
                time.sleep(0.05)
            frames = [line for line in driver("windows") if line.startswith("frmMDIForm1\t")]
            self.assertEqual(len(frames), 1)
            self.assertEqual([one.returncode for one in starts if one.returncode is not None], [0] * 9)
            self.assertEqual(data(), before)

            # Killed, it leaves the way free.
            driver("end", "frmMDIForm1")
            starts.append(start())
            driver("wait", "frmMDIForm1", "*", "60")
        finally:
            driver("end", "frmMDIForm1")
            for one in starts:
                one.wait(60)

    def test_2_planted_dlls_are_not_loaded(self):
        # None of them is among those that Windows takes from its own folder alone. Left out are
        # "version", "uxtheme" and "msimg32": Wine's own DLLs load them, past what the program asks.
        names = ("oleacc", "dwmapi", "windowscodecs", "propsys", "winmm", "cryptbase",
                 "profapi", "wtsapi32", "textshaping", "winspool.drv")
        places = [DRIVE_C / "work", DRIVE_C / "Tobbin"]
        places[0].mkdir(exist_ok=True)
        planted = DRIVE_C / "driver/planted.dll"
        plants = [place / (name if "." in name else name + ".dll") for place in places for name in names]
        control = DRIVE_C / "planted"
        control.mkdir(exist_ok=True)
        shutil.copy(DRIVE_C / "driver/tobbin_driver.exe", control)
        own = os.environ.get("WINEDLLOVERRIDES", "")
        try:
            # The plant bites: a program that asks for such a DLL by name gets this one.
            shutil.copy(planted, control / "shlwapi.dll")
            os.environ["WINEDLLOVERRIDES"] = f"{own};shlwapi=n,b"
            subprocess.run([WINE, r"C:\planted\tobbin_driver.exe", "windows"], check=False, timeout=60,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.assertTrue((control / "shlwapi.dll.ran").exists())

            # Wine's own desktop program runs beforehand, or it would be started in that folder.
            os.environ["WINEDLLOVERRIDES"] = own
            waiting = subprocess.Popen([WINE, r"C:\driver\tobbin_driver.exe", "wait", "frmMDIForm1", "*", "120"],
                                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
            driver("windows")
            for plant in plants:
                shutil.copy(planted, plant)
            os.environ["WINEDLLOVERRIDES"] = f"{own};{','.join(names)}=n,b"
            process = start(folder=places[0])
            os.environ["WINEDLLOVERRIDES"] = own
            self.assertEqual(waiting.wait(130), 0)
            command(OPEN)
            driver("press", "#32770", "Cancel")
            driver("end", "frmMDIForm1")
            process.wait(30)
            self.assertEqual([ran for place in places for ran in place.glob("*.ran")], [])
        finally:
            os.environ["WINEDLLOVERRIDES"] = own
            shutil.rmtree(control)
            for plant in plants:
                plant.unlink(missing_ok=True)

    def test_3_a_drive_that_is_unplugged_between_two_starts_and_a_crash(self):
        rank = b"\x01\x00%d" + bytes(14)
        CATALOGUE.write_bytes(CATALOGUE.read_bytes().replace(rank % 2, rank % 7))
        before = data()
        link = PREFIX / "dosdevices/m:"
        drive = os.readlink(link)
        link.unlink()
        try:
            link.symlink_to("/nowhere")
            with Program():
                self.assertEqual(driver("status"), [""])
            self.assertEqual(data(), before)
        finally:
            link.unlink()
            link.symlink_to(drive)
        with Program() as program:
            rows = program.rows("All Songs")
            driver("crash", "frmMDIForm1")
            self.assertNotEqual(program.process.wait(60), 0)
        self.assertEqual(data(), before)
        with Program():
            self.says("this PC only")
        dump, = (PREFIX / "drive_c/users").rglob("Tobbin (last crash).dmp")
        self.assertEqual(dump.read_bytes()[:4], b"MDMP")
        songs = [record for record in data_files.catalogue(CATALOGUE) if record["present"] == "1"]
        self.assertEqual({record["rank"] for record in songs}, {"7"})
        self.assertEqual(sorted(rows), sorted(record["name"] for record in songs))


if __name__ == "__main__":
    sys.exit(report(Surviving, sys.argv[1]))
