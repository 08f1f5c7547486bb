#!/usr/bin/env python3
"""Edits a jukebox in the real program under Wine by real key strokes and mouse moves:
editing.py REPORT

Runs in a prefix in which the program has found its songs before (first_run.py).
"""
import sys

from under_wine import (CATALOGUE, GROUPING, SETTINGS, Case, Program, answer, command, data_files,
                        driver, keys, mouse, report, status)

# The number of the frame's command, from src/ui/Commands.h.
SAVE_AS = 1005


def typed(text):
    mouse("type", "--delay", 40, text)


def where(*words):
    return tuple(driver("where", *map(str, words))[0].split("\t"))


def click(*words, button=1):
    mouse("mousemove", *where(*words), "click", button)


def boxes():
    return [line for line in driver("windows") if line.startswith("#32770") and line.endswith("\tvisible")]


def rows():
    return [line.split("\t") for line in driver("rows", "1000")[1:]]


def heading():
    return driver("rows", "0")[0].split("\t")[0]


def chosen():
    return [row[2] for row in rows() if row[1] == "x"]


def ranks():
    return [record["rank"] for record in data_files.catalogue(CATALOGUE)]


class Editing(Case):
    @classmethod
    def setUpClass(cls):
        cls.kept = [(path, path.read_bytes()) for path in (CATALOGUE, SETTINGS)]

    @classmethod
    def tearDownClass(cls):
        """Leaves the ranks and the recent jukeboxes as they were."""
        for path in (*GROUPING.glob("*.juk"), *GROUPING.glob("*.poc")):
            path.unlink()
        for path, content in cls.kept:
            path.write_bytes(content)

    def save(self, name):
        command(SAVE_AS)
        driver("wait", "#32770", "Juke Box Files*", "30")
        driver("name", name)
        answer("Juke Box Files*", "Save")
        self.until(lambda: driver("titles"), [name.upper()])

    def undo(self, *steps, line="Undone: {}."):
        keys(*["alt+BackSpace"] * len(steps))
        self.until(status, f"{line.format(steps[-1])} Alt+Shift+Backspace redoes it.")

    def delete_marked(self, name):
        answer("Are you sure you want to delete*", "Yes")
        self.says(f'Deleted "{name}" (0 songs). Alt+Backspace brings it back.')
        self.undo(name, line='"{}" (0 songs) put back.')

    def drag(self, start, to, *held):
        """Drags over a folder, with keys held, until it is marked."""
        # Shift would select by the press.
        down = [word for key in held for word in ("keydown", key)] + ["mousedown", 1]
        mouse("mousemove", *start, *(down[-2:] + down[:-2] if "shift" in held else down))

        def over():
            # A drag begins in the pane itself; moves that come too fast reach it as one.
            if not driver("marked"):
                mouse("mousemove", *start, "mousemove_relative", "--", 6, 6)
                driver("marked")
            mouse("mousemove", *where(*to), "mousemove_relative", "--", 1, 0)
            return driver("marked")

        self.until(over, [to[-1]])

    def release(self, *held):
        mouse("mouseup", 1, *[word for key in held for word in ("keyup", key)])

    def test_1_ranks_at_once_and_takes_back(self):
        with Program() as self.program:
            driver("open", "New")
            before = CATALOGUE.read_bytes()
            numbers = [int(row[3]) for row in rows()]
            click("row", 1)
            mouse("keydown", "ctrl", "mousemove", *where("row", 4), "click", 1, "keyup", "ctrl")
            mouse("keydown", "shift")
            keys("Down")
            mouse("keyup", "shift")
            self.until(lambda: [row[1] for row in rows()[:7]], ["", "", "", "", "x", "x", ""])
            # The entry's place in the menu: the separators are passed over.
            for downs, written, shown in ((7, "7", "7"), (9, "5", "5"), (12, "3", "2"), (11, "3", "3")):
                keys("Menu", *["Down"] * downs, "Return")
                self.until(lambda: [row[0] for row in rows()[4:6]], [shown] * 2)
                self.assertEqual([ranks()[numbers[row] - 1] for row in (3, 4, 5, 6)],
                                 ["2", written, written, "2"])
            keys(*["alt+BackSpace"] * 3, "Up")  # which is the list's, not a menu's
            self.until(chosen, [rows()[4][2]])
            keys("alt+BackSpace")
            self.until(CATALOGUE.read_bytes, before)
            mouse("mousemove", *where("row", 4), "click", "--repeat", 2, "--delay", 60, 1)
            driver("wait", "frmMainWinamp", "*", "60")
            keys("shift+Up")  # the list's, not the panel's that has opened
            self.until(lambda: len(chosen()), 2)

    def test_2_drags_songs_and_folders(self):
        with Program(question=None) as self.program:  # saved at its end
            self.save("dragged")
            driver("open", "New")
            songs = [row[2] for row in rows()]
            click("row", 0)
            mouse("keydown", "shift", "mousemove", *where("row", 1), "click", 1, "keyup", "shift")
            paths = [record["folder"] + record["name"] for record in data_files.catalogue(CATALOGUE)
                     if record["name"] in songs[:2]]
            keys("ctrl+c")
            self.until(lambda: driver("clipboard"), paths + ["files"] + paths)
            self.drag(where("row", 0), ("folder", "Dad's"))
            mouse("mousemove", *where("row", 4), "mousemove_relative", "--", 0, -6)  # before it
            self.until(lambda: driver("marked"), [])
            self.release()
            self.says("Moved 2 songs. Alt+Backspace takes it back.")
            keys("alt+Down")
            self.until(lambda: [row[2] for row in rows()[:5]], songs[2:5] + songs[:2])
            self.undo("Move Songs", "Move Songs")
            self.drag(where("row", 0), ("folder", "Dad's"), "shift")  # or it would copy
            self.release("shift")
            self.until(status, 'Moved 2 songs to "Dad\'s". Alt+Backspace takes it back.')
            self.assertEqual([row[2] for row in rows()], songs[2:])
            self.assertEqual(chosen(), [])
            self.assertEqual(self.program.rows("Dad's"), songs[:2])
            self.drag(where("folder", "Seasonal", "Halloween"), ("folder", "Best friend's favorites"))
            mouse("mousemove_relative", "--", 0, 40)  # the free space below the last folder
            self.until(lambda: driver("marked"), [])
            self.release()
            self.says('Moved "Halloween" (0 songs) to the top level. Alt+Backspace takes it back.')
            driver("open", "New")
            # Two songs, though Ctrl is held already when one of them is pressed.
            click("row", 1)
            mouse("keydown", "ctrl", "mousemove", *where("row", 0), "click", 1, "keyup", "ctrl")
            self.drag(where("row", 1), ("folder", "Seasonal"), "ctrl")
            self.release("ctrl")
            self.until(status, 'Copied 2 songs to "Seasonal". Alt+Backspace takes it back.')
            # What the program fills is copied without a key. Beside its label is a folder, too.
            self.drag(where("folder", "Artist"), ("folder", "My Sweetie's favorites"))
            mouse("mousemove_relative", "--", 60, 0)
            self.until(lambda: driver("marked"), ["My Sweetie's favorites"])
            self.release()
            self.until(lambda: any(path[:2] == ("My Sweetie's favorites", "Artist")
                                   for path in self.program.contents()), True)
            self.drag(where("folder", "Dad's"), ("folder", "By Mood", "Sad"))
            self.release()
            self.until(lambda: self.program.contents().get(("By Mood", "Sad", "Dad's")),
                       [(songs[0], "1"), (songs[1], "2")])

            # What is marked is what a command acts on: beside a label, and after a branch was closed
            # over the selected folder.
            click("folder", "Year")
            mouse("mousemove", *where("folder", "Best friend's favorites"),
                  "mousemove_relative", "--", 80, 0, "click", 3)
            keys("d")
            self.delete_marked("Best friend's favorites")
            sign = int(where("folder", "New")[0]) - 38  # of every folder at the top level
            click("folder", "My Favorite Play Lists", "Super Hits 1")
            mouse("mousemove", sign, where("folder", "My Favorite Play Lists")[1], "click", 1)
            keys("Delete")
            self.delete_marked("My Favorite Play Lists")

            self.save("edited")
            self.undo(*["Move Folder", "Copy Folder", "Copy Songs", "Move Folder", "Move Songs"])
            self.save("back")
            self.assertEqual((GROUPING / "back.juk").read_bytes(), (GROUPING / "dragged.juk").read_bytes())
            keys(*["alt+shift+BackSpace"] * 5)
            self.until(status, "Redone: Move Folder. Alt+Backspace takes it back.")
            self.save("again")
            self.assertEqual((GROUPING / "again.juk").read_bytes(), (GROUPING / "edited.juk").read_bytes())


if __name__ == "__main__":
    sys.exit(report(Editing, sys.argv[1]))
