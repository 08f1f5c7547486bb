# Shared by the scripts of this folder; sourced, not run.
#
# The caller has set -euo pipefail and stands anywhere. Everything built or made lies under build/.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive WINEDEBUG=${WINEDEBUG:--all}
# Wine's own installers for .NET and HTML are not wanted, and no menu entries on this desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"

native_packages=(g++ cmake ninja-build python3 googletest libbenchmark-dev)
sanitizer_packages=(clang libclang-rt-14-dev libmpg123-0)
windows_packages=(g++-mingw-w64-x86-64-posix)
music_packages=(lame ffmpeg id3v2 python3-mutagen)
tag_packages=(eyed3 kid3-cli "${music_packages[@]}")
wine_packages=(wine wine64 xvfb fonts-wine xdotool imagemagick)
sound_packages=(pulseaudio pulseaudio-utils)
package_packages=(zip nsis binutils-mingw-w64-x86-64)

say() { printf '\n== %s\n' "$*"; }
fail() { printf '%s: %s\n' "${0##*/}" "$*" >&2; exit 1; }

# Installs what is missing of the Debian packages named. Asks before it calls sudo, where there is
# somebody to be asked.
need() {
    local missing=() package answer
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if [ -t 0 ] && [ -t 2 ]; then
            read -r -p "Install ${missing[*]} with sudo? [y/N] " answer
            [[ $answer == [yY]* ]] || fail "missing: ${missing[*]}"
        fi
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    (cd "$root" && cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" "${targets[@]}")
}

# Makes the small library of real songs in build/music, with build/music.json, unless it is there.
sample_music() {
    [ "$root/build/music.json" -nt "$root/scripts/make_music" ] && return
    need "${music_packages[@]}"
    say "Making a library of songs"
    "$root/scripts/make_music" "$root/build/music"
}

# Calls a command until it succeeds: wait_for SECONDS COMMAND...
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.05
    done
}

has_ended() { ! kill -0 "$1" 2>/dev/null; }

# The 64-bit Wine itself, without the launcher that advises to install the 32-bit one.
wine=/usr/lib/wine/wine64

# Makes a Wine prefix and uses it from now on: without a drive Z: and without links out of its
# users' folders, so that a search of the drives stays inside it.
use_prefix() {
    export WINEPREFIX=$1
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        say "Making a Wine prefix"
        mkdir -p "$WINEPREFIX"
        "$wine" wineboot --init >/dev/null 2>&1
        wineserver -w
    fi
    rm -f "$WINEPREFIX/dosdevices/z:" "$WINEPREFIX/dosdevices/z::"
    local link
    while IFS= read -r link; do
        rm "$link" && mkdir "$link"
    done < <(find "$WINEPREFIX/drive_c/users" -type l)
}

# Opens a virtual display, unless one is there already or the first word is "own".
use_display() {
    [ "${1:-}" != own ] && [ -n "${DISPLAY:-}" ] && return
    mkdir -p "$root/build"
    local answer=$root/build/display-number.$BASHPID
    rm -f "$answer"
    Xvfb -displayfd 3 -screen 0 1280x960x24 -nolisten tcp -noreset 3>"$answer" >/dev/null 2>&1 &
    display_process=$!
    wait_for 20 test -s "$answer" || fail "the virtual display did not open"
    DISPLAY=:$(cat "$answer")
    export DISPLAY
    rm "$answer"
}

# Ends what use_prefix and use_display started. For a trap on EXIT.
clean_up() {
    [ -z "${WINEPREFIX:-}" ] || timeout 20 wineserver -k || true
    [ -z "${display_process:-}" ] || kill "$display_process" 2>/dev/null || true
}

# Puts together the application folder: what a person gets. The program must be built.
make_application_folder() {
    mkdir -p "$1"
    cp "$root/build/windows-release/Tobbin.exe" "$1/"
    "$root/scripts/build_mpg123"
    mkdir -p "$1/Player"
    cp "$root/build/windows-release/TobbinPlayer.exe" "$root/build/mpg123/libmpg123-0.dll" "$1/Player/"
    cp "$root/build/mpg123/COPYING.txt" "$1/Player/libmpg123-license.txt"
    local text
    for text in assets/TIPOFDAY.TXT assets/readme.txt LICENSE; do
        sed 's/$/\r/' "$root/$text" >"$1/$(basename "$text")"  # as Windows' own editor wants it
    done
    mv "$1/LICENSE" "$1/LICENSE.txt"
    rm -rf "$1/Help"
    cp -r "$root/assets/help" "$1/Help"
}

# Installs the program in the prefix in use, as the installer does.
install_program() {
    make_application_folder "$WINEPREFIX/drive_c/Tobbin"
    set_option "Runtime Library Check" 0
    set_option "Keep Songs Of One Name" No  # otherwise the first search asks
}

# Puts the stand-in for the external player where a player would be.
install_stand_in() {
    local player="$WINEPREFIX/drive_c/Program Files/Winamp"
    mkdir -p "$player"
    cp "$root/build/windows-release/tests/winamp.exe" "$player/"
}

# Stores one of the program's per-user settings.
set_option() {
    "$wine" reg add 'HKCU\Software\Tobbin\Options' /v "$1" /d "$2" /f >/dev/null 2>&1
}

# Lets Wine draw the windows' frames and captions, where no window manager does.
draw_own_frames() {
    "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
}

# Makes a folder a hard drive of the prefix in use: use_drive LETTER FOLDER
use_drive() {
    ln -sfn "$2" "$WINEPREFIX/dosdevices/$1:"
    "$wine" reg add 'HKLM\Software\Wine\Drives' /v "$1:" /d hd /f >/dev/null 2>&1
    wineserver -w  # the drives are looked at when Wine starts
}

# The program that uses Tobbin from outside (see tests/driver/), and how to call it.
install_driver() {
    mkdir -p "$WINEPREFIX/drive_c/driver"
    cp "$root"/build/windows-release/tests/{tobbin_driver.exe,planted.dll} "$WINEPREFIX/drive_c/driver/"
}
driver() {
    # Into a file, not a pipe: a service that Wine starts on the way would keep a pipe open.
    local answer=$root/build/driver-answer code=0
    "$wine" 'C:\driver\tobbin_driver.exe' "$@" >"$answer" || code=$?
    tr -d '\r' <"$answer"
    return "$code"
}

# Takes a picture of the whole display once it no longer changes.
picture() {
    local last=$root/build/last-picture.png end=$((SECONDS + 15))
    import -window root "$1"
    while [ "$SECONDS" -lt "$end" ]; do
        mv "$1" "$last"
        sleep 0.3
        import -window root "$1"
        [ "$(compare -metric AE "$last" "$1" null: 2>&1)" != 0 ] || break
    done
    rm -f "$last"
}
