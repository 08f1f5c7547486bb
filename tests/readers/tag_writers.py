"""Holds the program's reader of ID3v2 tags against the tags of other programs: each of them writes
songs, and what the reader finds in them must be what mutagen finds.

usage: tag_writers.py READER FOLDER     (the program read_tags, and a folder to work in)
"""
import itertools
import pathlib
import shutil
import subprocess
import sys

from mutagen.id3 import APIC, ID3, TALB, TCON, TDRC, TIT2, TPE1

READER, FOLDER = sys.argv[1], pathlib.Path(sys.argv[2])
SOUND, COVER, SMALL_COVER = FOLDER / "sound.mp3", FOLDER / "cover.jpg", FOLDER / "small.jpg"

# artist, album, title, year, genre
SONGS = [("Abba", "Arrival Hall", "Evening Train", "1976", "Pop"),
         ("Björn Sätt", "Été", "Åska över sjön", "1974", "Folk"),
         ("Ελένη Βάση", "Θάλασσα", "夜の電車 桜", "2021", "Hip-Hop"),
         ("AC/DC?", "A" * 200, "(What) \U0001F600 ÿÿ", "2005", "Shoegaze Dub"),
         ("A name that goes on behind thirty letters", "B", "C", "1905", "17")]
LATIN = SONGS[:2] + SONGS[4:]


def run(*words):
    subprocess.run([str(word) for word in words], check=True, stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def by_mutagen(path, song, picture, version, encoding):
    artist, album, title, year, genre = song
    tag = ID3()
    for frame, text in ((TPE1, [artist, "Guest"] if version == 4 else artist), (TALB, album),
                        (TIT2, title), (TDRC, year), (TCON, [genre, "Ska"])):
        tag.add(frame(encoding=encoding, text=text))
    if picture:
        tag.add(APIC(mime="image/jpeg", data=COVER.read_bytes()))
    tag.save(path, v1=0, v2_version=version)


def by_eyed3(path, song, picture, version, encoding):
    artist, album, title, year, genre = song
    run("eyeD3", f"--to-v2.{version}", "--encoding", encoding, "-a", artist, "-A", album, "-t",
        title, "--recording-date", year, "-G", genre,
        *(["--add-image", f"{COVER}:FRONT_COVER"] if picture else []), path)


def by_id3v2(path, song, picture):
    artist, album, title, year, genre = song
    run("id3v2", "--id3v2-only", "-a", artist, "-A", album, "-t", title, "-y", year, "-g", genre, path)


def by_ffmpeg(path, song, picture, version):
    words = ["ffmpeg", "-v", "error", "-y", "-i", SOUND]
    words += ["-i", COVER, "-map", "0", "-map", "1"] if picture else []
    for name, text in zip(("artist", "album", "title", "date", "genre"), song):
        words += ["-metadata", f"{name}={text}"]
    run(*words, "-c", "copy", "-id3v2_version", version, path)


def by_kid3(path, song, picture, version):
    words = ["kid3-cli"]
    for name, text in zip(("artist", "album", "title", "date", "genre"), song):
        words += ["-c", f"set {name} '{text}' 2"]
    words += ["-c", f"set picture:'{COVER}' '' 2"] if picture else []
    run(*words, "-c", f"to2{version}", "-c", "save", path)


def by_lame(path, song, picture, *options):
    words = ["lame", "--quiet", "--id3v2-only", *options]
    for option, text in zip(("--ta", "--tl", "--tt", "--ty", "--tg"), song):
        words += [option, text]
    words += ["--ti", SMALL_COVER] if picture else []  # it takes none over 128 KB
    run(*words, FOLDER / "sound.wav", path)


WRITERS = [*((by_mutagen, LATIN if e == 0 else SONGS, True, v, e) for v in (3, 4)
             for e in ((0, 1) if v == 3 else (0, 1, 2, 3))),
           *((by_eyed3, LATIN if e == "latin1" else SONGS, True, v, e) for v in (3, 4)
             for e in (("latin1", "utf16") if v == 3 else ("latin1", "utf8", "utf16"))),
           (by_id3v2, LATIN[:1] + LATIN[2:], False),
           *((by_ffmpeg, SONGS, True, v) for v in (3, 4)),
           *((by_kid3, SONGS, True, v) for v in (3, 4)),
           (by_lame, LATIN, True, "--id3v2-latin1"), (by_lame, SONGS, True, "--id3v2-utf16")]


def make():
    """The files, by the program that wrote them."""
    made = {}
    for number, (write, songs, pictures, *how) in enumerate(WRITERS):
        files = made.setdefault(write.__name__[3:], [])
        for i, (song, picture) in enumerate(itertools.product(songs, (False, True) if pictures else (False,))):
            path = FOLDER / f"{number}-{i}.mp3"
            if write not in (by_ffmpeg, by_lame):
                shutil.copy(SOUND, path)
            write(path, song, picture, *how)
            files.append(path)
    return made


def expected(path):
    tag = ID3(path)
    def first(name):
        return str(tag[name].text[0]) if name in tag else ""
    genre = tag["TCON"].genres[0] if "TCON" in tag else ""
    return [first("TPE1").strip(" "), first("TALB"), first("TIT2"), first("TDRC")[:4],
            {"Hip-Hop": "Hip Hop"}.get(genre, genre)]


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    FOLDER.mkdir(parents=True)
    run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=d=1", FOLDER / "sound.wav")
    run("lame", "--quiet", FOLDER / "sound.wav", SOUND)
    for cover, size in ((COVER, 300_000), (SMALL_COVER, 100_000)):
        run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=red:s=64x64", "-frames:v", "1", cover)
        cover.write_bytes(cover.read_bytes().ljust(size, b"\xfe"))
    bad = total = most = 0
    counts = []
    for writer, files in make().items():
        output = subprocess.run([READER, *map(str, files)], check=True, capture_output=True).stdout
        for path, line in zip(files, output.decode().split("\n"), strict=False):
            *found, reads = line.split("\t")
            most = max(most, int(reads))
            if found != expected(path) or not found[0]:
                bad += 1
                print(f"FAILED: {writer}, {path.name}: {found}, not {expected(path)}")
        counts.append(f"{writer} {len(files)}")
        total += len(files)
    print(f"{total} tags read as mutagen reads them, but for {bad}: {', '.join(counts)};"
          f" at most {most} reads each")
    sys.exit(bad > 0 or total == 0)


main()
