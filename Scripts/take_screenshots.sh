#!/usr/bin/env bash
# Starts the real program on a display of its own and photographs it.
#   Scripts/take_screenshots.sh [--build FOLDER]                 the manual's pictures, light and dark, into Documentation/Images
#   Scripts/take_screenshots.sh --all FOLDER [--build FOLDER]    every picture at 1x and 2x, light and dark, to look at
# The build folder is build/ where none is given. Needs Xvfb, openbox, xdotool and ImageMagick (Scripts/install_packages.sh).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build
all=
while [ $# -gt 0 ]; do
    case "$1" in
        --build) build=$(realpath "$2"); shift 2 ;;
        --all) mkdir -p "$2"; all=$(realpath "$2"); shift 2 ;;
        *) sed -n 3,4p "$0" >&2; exit 2 ;;
    esac
done
samples=$root/Documentation/Samples
colours=(+dither -colors 256)
[ -z "$all" ] || colours=()
width=1180 height=740 # of the main window at 1x

work=$(mktemp -d)
processes=()
finish() {
    # The youngest first: the display goes last.
    for ((i = ${#processes[@]} - 1; i >= 0; --i)); do kill "${processes[i]}" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

start_display() {
    mkfifo "$work/number"
    Xvfb -displayfd 3 -screen 0 2560x1700x24 -nolisten tcp 3>"$work/number" 2>"$work/xvfb.log" &
    processes+=($!)
    read -r number <"$work/number"
    export DISPLAY=:$number
    openbox --config-file /dev/null >/dev/null 2>&1 &
    processes+=($!)
}

# Qt's own support for one desktop's colour file serves to make a light and a dark desktop. `dark` or `light`.
write_colours() {
    local window=239,240,241 view=252,252,252 text=35,38,41 button=247,247,248
    [ "$1" = light ] || { window=49,54,59 view=35,38,41 text=239,240,241 button=66,72,79; }
    cat >"$profile/kdeglobals" <<END
[General]
widgetStyle=fusion
font=DejaVu Sans,9,-1,5,50,0,0,0,0,0
menuFont=DejaVu Sans,9,-1,5,50,0,0,0,0,0
toolBarFont=DejaVu Sans,9,-1,5,50,0,0,0,0,0
[KDE]
widgetStyle=fusion
[Toolbar style]
ToolButtonStyle=NoText
[MainToolbarIcons]
Size=24
[Colors:Window]
BackgroundNormal=$window
ForegroundNormal=$text
[Colors:View]
BackgroundNormal=$view
BackgroundAlternate=$window
ForegroundNormal=$text
ForegroundLink=76,153,230
[Colors:Button]
BackgroundNormal=$button
ForegroundNormal=$text
[Colors:Selection]
BackgroundNormal=47,134,216
ForegroundNormal=255,255,255
[Colors:Tooltip]
BackgroundNormal=$window
ForegroundNormal=$text
END
}

integers() { echo "<array>"; for number in "$@"; do echo "<integer>$number</integer>"; done; echo "</array>"; }

# Formats of the encode dialog's recent list, the last one being the newest: number of the format or of its word's lower half, upper
# half, API.
formats_moxtc=(2 0 2)
formats_etc=(22 0 2)
formats_bc=(7 0 4)
formats_astc=(27 0 2)
formats_pairs=(20 0 5)
formats_rgba=(1633838962 134744072 3)

# A profile that has seen some use. SPLASH (true or false), then the families of the recent formats, oldest first.
write_settings() {
    local splash=$1 low=() high=() api=() type=() space=() family
    shift
    for family in "$@"; do
        local -n row=formats_$family
        low+=("${row[0]}") high+=("${row[1]}") api+=("${row[2]}") type+=(0) space+=(0)
    done
    mkdir -p "$profile/Larkfield Systems"
    cat >"$profile/Larkfield Systems/Halvane.plist" <<END
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple Computer//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
<key>Halvane</key><dict><key>About</key><dict><key>ShowSplash</key><$splash/></dict></dict>
<key>Encoding</key><dict>
<key>RecentAPIs</key>$(integers "${api[@]}")
<key>RecentFormat</key><dict>
<key>PTHigh</key>$(integers "${high[@]}")
<key>PTLow</key>$(integers "${low[@]}")
<key>VarType</key>$(integers "${type[@]}")
<key>CSpace</key>$(integers "${space[@]}")
</dict></dict>
</dict>
</plist>
END
}

find_window() { timeout 20 xdotool search --sync --onlyvisible --name "$1" | tail -n 1; }

# start SPLASH "FAMILIES" [FILE...]
start() {
    local splash=$1 families=$2
    shift 2
    profile=$work/profile
    rm -rf "$profile" && mkdir -p "$profile" "$work/temporary" && chmod 700 "$work/temporary"
    write_colours "$theme"
    # shellcheck disable=SC2086 # several words
    write_settings "$splash" $families
    local words=()
    [ $# -eq 0 ] || words=(open "$@")
    env XDG_CONFIG_HOME="$profile" XDG_CONFIG_DIRS="$profile" TMPDIR="$work/temporary" XDG_RUNTIME_DIR="$work/temporary" \
        XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 QT_SCALE_FACTOR="$scale" LC_ALL=C.UTF-8 \
        "$build/bin/halvane" "${words[@]}" >"$work/program.log" 2>&1 &
    program=$!
    processes+=("$program")
    main=$(find_window '^Halvane$')
    xdotool windowsize --sync "$main" $((width * scale)) $((height * scale)) windowmove --sync "$main" 40 40 windowactivate --sync "$main"
    settle
}

stop() {
    kill "$program"
    wait "$program" 2>/dev/null || true
    unset "processes[-1]"
}

# Waits until the screen stays the same for three looks.
settle() {
    local last='' same=0 now tries=0
    while [ $same -lt 3 ] && [ $tries -lt 60 ]; do
        sleep 0.15
        now=$(import -silent -window root -depth 8 rgb:- | md5sum)
        if [ "$now" = "$last" ]; then same=$((same + 1)); else same=0; fi
        last=$now
        tries=$((tries + 1))
    done
}

# Points are those of the main window at 1x.
move() { xdotool mousemove --window "$main" $(($1 * scale)) $(($2 * scale)); }
# shellcheck disable=SC2086 # options and a button
click() { move "$1" "$2"; xdotool click ${3-1}; settle; }
press() { xdotool key --clearmodifiers "$@"; settle; }

# picture NAME [WINDOW]     the main window with what stands over it, or one window
picture() {
    local window=${2-$main} name=$1 target x y w h
    read -r x y w h < <(xwininfo -id "$window" | awk '/Absolute upper-left/ {print $NF} /^ *(Width|Height):/ {print $2}' | xargs)
    [ "$theme" = light ] || name=$name-dark
    target=$root/Documentation/Images/$name.png
    [ -z "$all" ] || target=$all/$name@${scale}x.png
    # The manual's are of 256 colours, which takes a third of the bytes.
    [ -n "$all" ] || target=PNG8:$target
    import -silent -window root -crop "${w}x$h+$x+$y" +repage -strip "${colours[@]}" -define png:compression-level=9 "$target"
}

view_mode() { # 0 single, 1 tiled, 2 cube; the active window maximised, so that there is something to see
    click 400 79 "--repeat 2 --delay 80 1"
    click 155 130
    press Home
    for ((i = 0; i < $1; ++i)); do press Down; done
    press Return
}

encode_page() { # NAME FILE FAMILIES
    start false "$3" "$2"
    press ctrl+e
    picture "$1" "$(find_window '^Encode Texture$')"
    stop
}

take_manual() {
    start false ""
    picture Empty
    stop

    start false "" "$samples/Sample.png"
    move 500 300
    settle
    picture Photo
    press ctrl+g
    xdotool click --repeat 3 --delay 150 4
    settle
    picture Grid
    stop

    start false "" "$samples/Sample.png"
    view_mode 1
    picture Tiled
    stop

    start false "" "$work/Cube.mox"
    view_mode 2
    picture Cube
    stop

    start false "" "$work/Levels.mox"
    click 13 150
    click 100 95
    press asterisk Down Down Down
    picture Surfaces
    click 13 275
    picture Information
    stop

    # Encoded with what stands first in the dialog, and both windows side by side.
    start false "bc" "$samples/Sample.png"
    press ctrl+e
    press Return
    find_window '^Halvane$' >/dev/null
    press alt+w t Return
    picture Encoded
    stop

    encode_page EncodeMOXTC "$samples/Sample.png" "bc etc astc moxtc"
    encode_page EncodeETC "$samples/Sample.png" "bc moxtc astc etc"
    start false "" "$samples/Sample.png"
    press ctrl+e
    dialog=$(find_window '^Encode Texture$')
    xdotool mousemove --window "$dialog" $((190 * scale)) $((54 * scale)) click 1
    settle
    press Home Down Down Down Down Down Return
    for row in 390 220; do
        xdotool mousemove --window "$dialog" $((100 * scale)) $((row * scale)) click 1
        settle
    done
    picture EncodeBC "$dialog"
    stop
}

# The pages and boxes that the manual does not show.
take_rest() {
    start false "" "$samples/Sample.png"
    press ctrl+g
    picture PhotoGrid
    stop
    start true ""
    picture About
    stop
    encode_page EncodeNone "$samples/Sample.png" ""
    encode_page EncodeETCWarning "$work/Odd.png" "etc"
    encode_page EncodeMOXTCWarning "$work/Wide.png" "moxtc"
    encode_page EncodeASTC "$samples/Sample.png" "astc"
    encode_page EncodePowerOfTwo "$work/Odd.png" "moxtc"
    encode_page EncodeSize "$work/Odd.png" "pairs"
    encode_page EncodeRGBA "$samples/Sample.png" "rgba"
}

mkdir -p "$root/Documentation/Images"
"$root/Scripts/make_sample_cube.py" "$work/Cube.mox"
"$build/bin/halvane-cli" convert "$samples/Sample.png" -o "$work/Levels.mox" --mips all --format bc1
convert "$samples/Sample.png" -crop 301x301+0+0 +repage "$work/Odd.png"
convert "$samples/Sample.png" -crop 512x256+0+0 +repage "$work/Wide.png"
start_display
for scale in 1 ${all:+2}; do
    for theme in light dark; do
        take_manual
        [ -z "$all" ] || take_rest
    done
done
