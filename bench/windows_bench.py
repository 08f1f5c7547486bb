"""Measures the program through its windows under Wine, for scripts/bench --windows, and prints one
table of medians. The Wine prefix and the display are those of the environment; the program, the
driver and windows_bench.exe are installed there, and drive M: is a library of SONGS songs:
windows_bench.py SONGS REPETITIONS
"""
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).parent.parent / "tests"
sys.path.append(str(TESTS / "end_to_end"))
from under_wine import PREFIX, WINE, driver

DATA = PREFIX / "drive_c" / "Tobbin" / "Grouping"
PROGRAM = r"C:\Tobbin\Tobbin.exe"
ARTISTS = 20_000


def crc32c(data):
    """The sum in the last line of a jukebox file."""
    total = 0xFFFFFFFF
    for byte in data:
        total ^= byte
        for _ in range(8):
            total = total >> 1 ^ 0x82F63B78 * (total & 1)
    return total ^ 0xFFFFFFFF


def bench(*words):
    """The fields of each line that windows_bench.exe prints. Into a file, not a pipe: a service
    that Wine starts on the way would keep a pipe open."""
    with tempfile.TemporaryFile() as output:
        subprocess.run([WINE, r"C:\driver\windows_bench.exe", *words], stdin=subprocess.DEVNULL,
                       stdout=output, stderr=None, cwd=PREFIX / "drive_c", timeout=1800, check=True)
        output.seek(0)
        return [line.split("\t") for line in output.read().decode("utf-8").splitlines()]


def start(*words):
    """Until the splash window, until the frame, longest gap, until the stop."""
    return [float(field) for field in bench("start", PROGRAM, *words)[0][:4]]


def close():
    driver("close", "frmMDIForm1")
    try:
        driver("gone", "frmMDIForm1", "3")
    except AssertionError:  # It asks whether to save.
        driver("press", "#32770", "No")
        driver("gone", "frmMDIForm1", "30")


def forget():
    shutil.rmtree(DATA, ignore_errors=True)


class Table:
    def __init__(self, repetitions):
        self.repetitions = repetitions
        print("| what | median | at most | longest gap |")
        print("|---|---:|---:|---:|")

    def row(self, what, times, limit="", gaps=()):
        gap = f"{max(gaps):.0f} ms" if gaps else ""
        unit = f"{limit} ms" if limit else ""
        print(f"| {what} | {statistics.median(times):,.0f} ms | {unit} | {gap} |", flush=True)

    def steps(self, *rows):
        """Each row: the step, what it is called, and the most that it may take; a step without a
        name is not shown."""
        runs = [bench("measure", *[step for step, _, _ in rows]) for _ in range(self.repetitions)]
        for i, (_, what, limit) in enumerate(rows):
            if what:
                self.row(what, [float(run[i][1]) for run in runs], limit,
                         [float(run[i][2]) for run in runs])


def write_artists(path):
    lines = ["Tobbin jukebox 1", "column\tName    --        (click to sort)", "column\tKey",
             "folder\t0\t1\t0\tArtist"]
    lines += [f"folder\t1\t1\t0\tArtist number {i:05}" for i in range(ARTISTS)]
    body = "".join(line + "\r\n" for line in lines).encode()
    path.write_bytes(body + f"end\t{len(lines)}\t{crc32c(body):08x}\r\n".encode())


def measure_search(table):
    runs = [bench("search", "C:\\", "M:\\") for _ in range(table.repetitions)]
    bare, own = ([float(run[i][0]) for run in runs] for i in (0, 1))
    table.row("bare listing by the same calls", bare)
    table.row("search of the hard drives", own, f"{1.5 * statistics.median(bare):,.0f}")


def measure_starts(table):
    forget()
    stops = [start("Found ")[3]]
    close()
    forget()
    _, frame, gap, _ = start()
    table.row("first start: search, tags, groups", [frame], "", [gap])
    table.row("its search, from Stop to its end", stops, 500)
    driver("command", "1005")
    driver("wait", "#32770", "*")
    driver("name", PROGRAM.replace("Tobbin.exe", r"Grouping\mix.juk"))
    driver("press", "#32770", "Save")
    driver("wait", "frmMain", "MIX")
    close()
    runs = []
    for i in range(table.repetitions):
        runs.append(start())
        if i + 1 < table.repetitions:
            close()
    table.row("a start with nothing changed, until the splash window answers", [r[0] for r in runs])
    table.row("the same, until the frame is painted and answers", [r[1] for r in runs], 1000,
              [r[2] for r in runs])


def measure_windows(table):
    table.steps(
        ("select:By Mood", "", 0), ("select:All Songs", "click on \"All Songs\"", 200),
        ("key:35", "jump to the last row", 200), ("key:36", "jump to the first row", 200),
        ("heading", "sort by name", 200), ("heading", "sort by name, downwards", 200),
        ("heading", "sort by rank", 200), ("heading", "", 0), ("openfind", "", 0),
        ("find:99999", "find a song", 200), ("notfound:no such song", "find none", 200),
        ("closefind", "", 0), ("select:By Mood", "", 0), ("select:All Songs", "", 0),
        ("mouse", "select all rows by Shift and click", 200),
        ("heading", "sort with all rows selected", 200), ("every:3", "", 0),
        ("heading", "sort with every third row selected", 200), ("allbut:100", "", 0),
        ("heading", "sort with all rows but every hundredth selected", 200),
        ("select:By Mood", "leave that folder", 200), ("command:1004", "save the jukebox", 0))
    table.steps(("command:1201", "look for new songs in the known folders", 0),
                ("command:1202", "look for new songs on the whole computer", 0),
                ("stop:1201:500", "the first of them, from Stop to its end", 500),
                ("stop:1202:500", "the second, from Stop to its end", 500))


def measure_tree(table):
    write_artists(DATA / "artists.juk")
    subprocess.run([WINE, PROGRAM, r"C:\Tobbin\Grouping\artists.juk"], cwd=PREFIX / "drive_c",
                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    driver("wait", "frmMain", "ARTISTS")
    table.steps(("command:1003", "", 0),
                ("command:1601", f"open a jukebox of {ARTISTS:,} artists", 300),
                ("toggle:Artist", f"open the tree of {ARTISTS:,} artists", 300))


def main():
    songs, repetitions = int(sys.argv[1]), int(sys.argv[2])
    print(f"{songs:,} songs. A gap is the time between two answers of the program's window to a "
          "question from outside.\n")
    table = Table(repetitions)
    measure_search(table)
    measure_starts(table)
    measure_windows(table)
    measure_tree(table)
    close()


main()
