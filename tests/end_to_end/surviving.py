#!/usr/bin/env python3
"""The real program under Wine among hostile neighbors: surviving.py REPORT

Runs in a prefix in which the program has found its songs and the player before (first_run.py).
"""
import os
import pathlib
import shutil
import subprocess
import sys
import time

from under_wine import (CATALOGUE, GROUPING, PLAYER_LOG, PREFIX, WINE, Case, Program, behave, command,
                        data_files, driver, report, start)

DRIVE_C = PREFIX / "drive_c"
WINDOW_MANAGER = (r"HKCU\Software\Wine\X11 Driver", "/v", "Managed")
OPEN, WHOLE_COMPUTER, PLAY_SELECTED, PLAY_ALL = 1002, 1202, 1203, 1204  # of assets/resource.h


def data():
    return {path: path.read_bytes() for path in GROUPING.rglob("*") if path.is_file()}


class Surviving(Case):
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
            # Without a window manager Wine waits two seconds for one whenever a window is hidden.
            subprocess.run([WINE, "reg", "add", *WINDOW_MANAGER, "/d", "N", "/f"], check=True,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            begin = time.monotonic()
            driver("windows")
            any_program = time.monotonic() - begin
            starts.append(start())
            driver("wait", "frmMDIForm1", "*", "60")
            print(f"after a kill the next start showed its frame within "
                  f"{time.monotonic() - begin - any_program:.1f} s; {any_program:.1f} s takes any program")
        finally:
            driver("end", "frmMDIForm1")
            for one in starts:
                one.wait(60)
            subprocess.run([WINE, "reg", "delete", *WINDOW_MANAGER, "/f"], check=False,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

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
        behave()
        logs = [path.with_suffix(".log") for path in (*planted, stand_in)]
        for log in logs:
            log.unlink(missing_ok=True)
        process = start(folder=DRIVE_C / "work")
        try:
            driver("wait", "frmMDIForm1", "*", "120")
            driver("open", "All Songs")
            command(PLAY_ALL)
            driver("wait", "frmMainWinamp", "PLAYING", "30")
            self.assertEqual([log for log in logs if log.exists()], [logs[-1]])
        finally:
            driver("end", "Winamp v1.x")
            driver("end", "frmMDIForm1")
            process.wait(30)
            for path in planted:
                path.unlink()

    def test_4_planted_dlls_are_not_loaded(self):
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
            print(len(plants), "DLLs planted")
            self.assertEqual([ran for place in places for ran in place.glob("*.ran")], [])
        finally:
            os.environ["WINEDLLOVERRIDES"] = own
            shutil.rmtree(control)
            for plant in plants:
                plant.unlink(missing_ok=True)

    def test_5_a_drive_that_is_unplugged_between_two_starts(self):
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
        self.assertEqual(data(), before)
        songs = [record for record in data_files.catalogue(CATALOGUE) if record["present"] == "1"]
        self.assertEqual({record["rank"] for record in songs}, {"7"})
        self.assertEqual(sorted(rows), sorted(record["name"] for record in songs))
        print(len(songs), "songs and their ranks kept")

    def test_6_a_path_of_4000_characters(self):
        music = pathlib.Path(os.path.realpath(PREFIX / "dosdevices/m:")) / "Music"
        song = next(music.glob("**/*.mp3")).read_bytes()
        length, parts = len("M:\\Music\\" + "far away.mp3"), []
        while length < 4000:
            parts.append("d" * min(200, 4000 - length - 1))
            length += len(parts[-1]) + 1
        here = os.getcwd()
        os.chdir(music)
        try:
            for part in parts:
                os.mkdir(part)
                os.chdir(part)
            pathlib.Path("far away.mp3").write_bytes(song)
        finally:
            os.chdir(here)
        try:
            for again in (False, True):
                behave()
                with Program():
                    if not again:
                        command(WHOLE_COMPUTER)
                        self.says("1 new song was found.")
                    driver("open", "All Songs")
                    rows = [line.split("\t")[2] for line in driver("rows", "1000")[1:]]
                    self.assertEqual(rows.count("far away.mp3"), 1)
                    driver("select", str(rows.index("far away.mp3")))
                    command(PLAY_SELECTED)
                    driver("wait", "frmMainWinamp", "PLAYING", "30")
                    sent = [line.split(" ") for line in PLAYER_LOG.read_text().splitlines()
                            if line.startswith("74 ")]
                    print("sent to the player:", *[line[3] for line in sent], "bytes")
                    self.assertEqual(len(sent), 1)
                    driver("close", "frmMainWinamp")
                    driver("gone", "frmMainWinamp", "10")
                records = data_files.catalogue(GROUPING / "FileLocNames.lmz")
                far = [record for record in records if record["name"] == "far away.mp3"]
                self.assertEqual([(len(one["folder"] + one["name"]), one["present"]) for one in far],
                                 [(4000, "1")])
        finally:
            shutil.rmtree(music / parts[0])

    def test_7_beside_a_start_that_hangs_another_one_writes_nothing(self):
        if "TOBBIN_KILLS" not in os.environ:
            return  # it takes half a minute
        with Program():
            before = data()
            driver("freeze", "frmMDIForm1", "*")
            try:
                begin = time.monotonic()
                second = start()
                driver("press", "#32770", "OK", "*is running already, but doesn't answer*")
                print(f"it said so after {time.monotonic() - begin:.1f} s")
                self.assertEqual(second.wait(30), 1)
            finally:
                driver("thaw", "frmMDIForm1")
            print("longest wait afterwards", *driver("answers", "frmMDIForm1", "2"), "ms")
            self.assertEqual(data(), before)


if __name__ == "__main__":
    sys.exit(report(Surviving, sys.argv[1]))
