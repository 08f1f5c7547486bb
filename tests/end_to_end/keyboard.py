#!/usr/bin/env python3
"""Walks through the whole program under Wine with no mouse, by real key strokes: keyboard.py REPORT

Runs in a prefix in which the program has found its songs before (first_run.py). One walk, in the
steps of a person who meets the program; each goes on where the one before it ended.
"""
import sys

from editing import boxes, chosen, heading, rows, typed
from under_wine import (GROUPING, PLAYER_LOG, Case, Program, answer, behave, driver, keys, report,
                        status)


def enter(text):
    typed(text)
    keys("Return")


class Keyboard(Case):
    def test_the_whole_program_without_a_mouse(self):
        behave()
        self.program = Program().__enter__()
        for step in (self.menus_dialogs_and_tips, self.a_folder_gets_its_name_and_keeps_its_keys,
                     self.songs_are_copied_sorted_ranked_cut_and_brought_back,
                     self.a_song_is_found_and_a_folder_deleted_and_brought_back,
                     self.songs_are_played_and_the_panel_left_and_closed,
                     self.jukeboxes_are_saved_arranged_closed_and_the_program_left):
            step()

    def last_folder(self):
        return self.program.tree()[-1]

    def names(self):
        return [row[2] for row in rows()]

    def through(self, window, opening, *closing):
        """A dialog that keys open and close again."""
        keys(*opening)
        driver("wait", *window, "20")
        keys(*closing)
        driver("gone", window[0], "20") if window[0] != "#32770" else self.until(boxes, [])

    def menus_dialogs_and_tips(self):
        self.through(("frmTip", "*"), ("alt+h", "t"), "alt+n", "Return")
        keys("alt+p", "c")
        driver("wait", "frmPicture", "*", "20")
        # Enter is the key of the button that a dialog begins with.
        self.through(("#32770", "*JPEG*"), ("Return",), "Escape")
        self.through(("frmPicture", "*"), ("alt+t", "Tab"), "Escape")
        self.through(("#32770", "About*"), ("alt+h", "a"), "Return")
        self.through(("frmFind", "*"), ("ctrl+f",), "alt+c")

    def a_folder_gets_its_name_and_keeps_its_keys(self):
        keys("alt+e", "a")
        driver("wait", "Edit", "New Folder", "20")
        enter("Road trip")
        self.until(self.last_folder, (0, "Road trip"))
        keys("F2")
        driver("wait", "Edit", "Road trip", "20")
        # The name's own, not the folder's.
        keys("ctrl+a", "ctrl+x", "ctrl+v", "ctrl+v", "Home", "Delete", "Return")
        self.until(self.last_folder, (0, "oad tripRoad trip"))
        keys("F2")
        driver("wait", "Edit", "oad tripRoad trip", "20")
        enter("Long drive")
        self.until(self.last_folder, (0, "Long drive"))

    def songs_are_copied_sorted_ranked_cut_and_brought_back(self):
        keys("Home", "F6", "Home", "shift+Down", "shift+Down", "ctrl+c")
        self.until(lambda: len(chosen()), 3)
        songs = chosen()
        keys("F6", "End", "ctrl+v")
        self.until(self.names, songs)
        keys("ctrl+h", "ctrl+h")
        self.until(self.names, sorted(songs, key=str.lower, reverse=True))
        keys("ctrl+h")
        self.until(heading, "By Rank -- best to worst")
        keys("Tab", "End", "ctrl+1")
        self.until(lambda: rows()[2][0], "7")
        ranked = self.names()[2]
        keys("ctrl+h", "ctrl+h")
        keys("Home", "ctrl+x")
        self.until(lambda: len(rows()), 2)
        keys("alt+BackSpace")
        self.until(lambda: len(rows()), 3)
        self.assertIn(ranked, self.names())

    def a_song_is_found_and_a_folder_deleted_and_brought_back(self):
        name = self.names()[2]
        keys("ctrl+f")
        driver("wait", "frmFind", "*", "20")
        enter(name)
        self.until(chosen, [name])
        keys("Escape")
        driver("gone", "frmFind")
        keys("F3")
        self.until(lambda: (chosen(), status()[:4]), ([name], "Hit "))
        keys("F6", "shift+F6", "F6", "End")
        self.through(("#32770", "Are you sure*"), ("Delete",), "Escape")
        self.assertEqual(self.last_folder(), (0, "Long drive"))
        self.through(("#32770", "Are you sure*"), ("Delete",), "alt+y")
        self.until(self.last_folder, (0, "Best friend's favorites"))
        keys("alt+e", "Up", "Up", "Return")  # the menu's last but one: undo
        self.until(self.last_folder, (0, "Long drive"))

    def songs_are_played_and_the_panel_left_and_closed(self):
        keys("Home", "F6", "Home", "Return")
        driver("wait", "frmMainWinamp", "PLAYING", "30")
        driver("wait", "frmMainWinamp", "WinAMP Version# 2.01", "30")
        keys("F6")  # from the songs, where the focus has stayed
        for strokes, sent in ((("alt+v", "End"), "1024 255 122"), (("alt+b", "Left"), "1024 247 123"),
                              (("alt+p",), "273 40046 0"), (("alt+o", "End"), "1024 600000 106")):
            keys(*strokes)
            self.until(lambda: sent in PLAYER_LOG.read_text().splitlines(), True)
        driver("wait", "frmMainWinamp", "PAUSED", "30")
        keys("F6", "End")  # from the panel on to the folders
        self.until(lambda: len(rows()), 3)
        keys("shift+F6", "ctrl+F4")
        driver("gone", "frmMainWinamp", "20")

    def jukeboxes_are_saved_arranged_closed_and_the_program_left(self):
        keys("ctrl+s")
        driver("wait", "#32770", "Juke Box Files*", "30")
        enter("walk")
        self.until(lambda: driver("titles"), ["WALK"])
        self.assertTrue((GROUPING / "walk.juk").exists())
        keys("ctrl+n")
        self.until(lambda: driver("titles"), ["JukeBox2", "WALK"])
        keys("shift+F5", "ctrl+F6")
        self.until(lambda: driver("titles"), ["WALK", "JukeBox2"])
        keys("alt+F4")
        driver("wait", "#32770", "*JukeBox2*", "30")
        keys("alt+n")
        driver("gone", "frmMDIForm1", "30")
        self.program.process.wait(30)


if __name__ == "__main__":
    sys.exit(report(Keyboard, sys.argv[1]))
