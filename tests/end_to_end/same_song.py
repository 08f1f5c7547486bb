#!/usr/bin/env python3
"""Moves folders and swaps drives between starts of the real program under Wine, and looks whether
each song stays the same one: same_song.py REPORT

Runs in a prefix in which the program has run before (first_run.py).
"""
import os
import shutil
import subprocess
import sys

from under_wine import (CATALOGUE, GROUPING, PREFIX, WINE, Case, Program, answer, command, data_files,
                        driver, report)

SAVE, WHOLE_COMPUTER = 1004, 1202  # of src/ui/Commands.h
DISKS = PREFIX / "same_song"
LIBRARY = PREFIX / "dosdevices/m:"
OPTIONS = r"HKCU\Software\Tobbin\Options"


def registry(*words):
    subprocess.run([WINE, "reg", *words, "/f"], check=False, stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60)


def map_drives(**folders):
    """Makes folders of DISKS drives, while no Wine runs."""
    subprocess.run(["wineserver", "-w"], check=True, timeout=60)
    for letter, folder in folders.items():
        link = PREFIX / f"dosdevices/{letter}:"
        link.unlink(missing_ok=True)
        link.symlink_to(DISKS / folder)


def song(path, size):
    (DISKS / path).parent.mkdir(parents=True, exist_ok=True)
    (DISKS / path).write_bytes(b"x" * size)


def records():
    return [(one["folder"] + one["name"], one["number"], one["rank"])
            for one in data_files.catalogue(CATALOGUE)]


class SameSong(Case):
    @classmethod
    def setUpClass(cls):
        cls.library = os.readlink(LIBRARY)
        LIBRARY.unlink()
        shutil.rmtree(GROUPING)
        registry("delete", OPTIONS, "/v", "Keep Songs Of One Name")
        for letter in "no":
            registry("add", r"HKLM\Software\Wine\Drives", "/v", letter + ":", "/d", "hd")
        song("one/Old/A/a.mp3", 100)
        song("one/Old/B/b.mp3", 200)
        song("two/Far/far.mp3", 300)
        map_drives(n="one", o="two")
        with Program(question=None) as program:
            command(SAVE)
            driver("wait", "#32770", "Juke Box Files*", "30")
            driver("name", "Mix")
            driver("press", "#32770", "Save", "Juke Box Files*")
            driver("wait", "frmMDIForm1", "*MIX*", "30")
            program.kill()
        rank = b"\x01\x00%d" + bytes(14)
        CATALOGUE.write_bytes(CATALOGUE.read_bytes().replace(rank % 2, rank % 7))

    @classmethod
    def tearDownClass(cls):
        for letter in "no":
            (PREFIX / f"dosdevices/{letter}:").unlink()
        LIBRARY.symlink_to(cls.library)
        shutil.rmtree(DISKS)
        registry("add", OPTIONS, "/v", "Keep Songs Of One Name", "/d", "No")

    def session(self, *paths, says=None, search=None, found=None, boxes=()):
        """A start, whose line says something, and a search with answers to its boxes that finds
        something. Afterwards the catalogue has these songs with their old numbers and ranks, and
        "All Songs" holds each once, and in its old place. Returns how many songs that holds."""
        with Program(*boxes, question=None) as program:
            if says:
                self.says(says)
            if search is not None:
                command(WHOLE_COMPUTER)
                for words, button in search:
                    answer(words, button)
                self.says(found)
            shown = program.contents()["All Songs",]
            command(SAVE)
            self.until(lambda: data_files.lines(GROUPING / "mix.juk") != [], True)
            program.kill()
        self.assertEqual(records()[:len(paths)],
                         [(path, str(number), "7") for number, path in enumerate(paths, 1)])
        self.assertEqual(shown[:len(paths)], [(path.rpartition("\\")[2], str(number))
                                              for number, path in enumerate(paths, 1)])
        self.assertEqual(len({key for _, key in shown}), len(shown))
        return len(shown)

    def test_1_gone_at_one_start_and_back_at_the_next(self):
        (DISKS / "one/Old/A").rename(DISKS / "one/Hidden")
        with Program(question=None) as program:
            self.says('1 song is not where it was.  "Bring In New Songs (Search my whole computer)"')
            program.kill()
        self.assertEqual(records()[0], ("00", "1", "7"))
        (DISKS / "one/Hidden").rename(DISKS / "one/Old/A")
        self.session(r"N:\Old\A\a.mp3", r"N:\Old\B\b.mp3", r"O:\Far\far.mp3")

    def test_2_a_folder_high_up_is_renamed(self):
        (DISKS / "one/Old").rename(DISKS / "one/New")
        songs = self.session(r"N:\New\A\a.mp3", r"N:\New\B\b.mp3", r"O:\Far\far.mp3", search=(),
                             found="No new songs found.  2 songs found again.")
        self.assertEqual(songs, 3)

    def test_3_two_drives_swap_their_letters_and_a_file_its_case(self):
        map_drives(n="two", o="one")
        self.session(r"O:\New\A\a.mp3", r"O:\New\B\b.mp3", r"N:\Far\far.mp3", search=(),
                     found="No new songs found.  3 songs found again.")
        (DISKS / "one/New/A/a.mp3").rename(DISKS / "one/New/A/A.MP3")
        songs = self.session(r"O:\New\A\A.MP3", r"O:\New\B\b.mp3", r"N:\Far\far.mp3")
        self.assertEqual(songs, 3)

    def test_4_different_songs_of_one_name(self):
        for album in range(4):
            song(f"two/Album {album}/01.mp3", 400 + album)
        places = (r"O:\New\A\A.MP3", r"O:\New\B\b.mp3", r"N:\Far\far.mp3")
        question = "3 files have the names of other songs*"
        self.session(*places, search=((question, "No"),),
                     found='1 new song found.  See the folder "New".  3 files were left out')
        self.assertEqual(self.session(*places, search=((question, "Yes"),),
                                      found='3 new songs found.  See the folder "New".'), 7)
        self.assertEqual([path for path, _, _ in records()[3:]],
                         [rf"N:\Album {album}\01.mp3" for album in range(4)])

    def test_5_the_catalogue_is_gone_and_its_copy_is_there(self):
        (DISKS / "one/New/A/A.MP3").rename(DISKS / "one/New/A/a.mp3")
        CATALOGUE.unlink()
        boxes = (("*FileLocNames.bak\" has taken its place*", "No"),)
        songs = self.session(r"O:\New\A\a.mp3", r"O:\New\B\b.mp3", r"N:\Far\far.mp3", boxes=boxes)
        self.assertEqual(songs, 7)


if __name__ == "__main__":
    sys.exit(report(SameSong, sys.argv[1]))
