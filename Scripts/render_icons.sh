#!/usr/bin/env bash
# Renders the drawings in Application/Resources/Sources to the PNGs beside them, at 1x and 2x; run it after a drawing was changed, and
# commit both. Needs rsvg-convert (Debian's librsvg2-bin).
#   Scripts/render_icons.sh [--sheet FILE]     --sheet: also all icons on light and dark ground in one picture, to look at (ImageMagick)
set -euo pipefail
cd "$(dirname "$0")/../Application/Resources"
command -v rsvg-convert >/dev/null || { echo "rsvg-convert is missing: apt-get install librsvg2-bin" >&2; exit 1; }

render() # SOURCE WIDTH HEIGHT TARGET
{
    mkdir -p "$(dirname "$4")"
    rsvg-convert -w "$2" -h "$3" "$1" -o "$4"
}

for source in Sources/{MainWindow,ToolBox}/*.svg Sources/CommonGUIElements/*.svg; do
    folder=$(basename "$(dirname "$source")")
    [ "$folder" = CommonGUIElements ] || folder=Icons/$folder
    name=$folder/$(basename "$source" .svg)_24
    render "$source" 24 24 "$name.png"
    render "$source" 48 48 "$name@2x.png"
done

# The small sizes have a drawing of their own, on their pixel grid.
for size in 16 32; do render Sources/AppIcons/HalvaneSmall.svg $size $size AppIcons/Halvane_$size.png; done
for size in 48 64 128 256; do render Sources/AppIcons/Halvane.svg $size $size AppIcons/Halvane_$size.png; done
render Sources/AppIcons/Halvane.svg 512 512 AppIcons/Halvane_256@2x.png

render Sources/SplashScreen/Halvane.svg 640 400 SplashScreen/Halvane.png
render Sources/SplashScreen/Halvane.svg 1280 800 SplashScreen/Halvane@2x.png

if [ "${1-}" = --sheet ]; then
    sheet=$(mktemp -d)
    trap 'rm -rf "$sheet"' EXIT
    for ground in white '#2b2b2b'; do
        montage {Icons/*,CommonGUIElements}/*_24.png -tile 12x -geometry 24x24+6+6 -background "$ground" "$sheet/$ground.1.png"
        montage {Icons/*,CommonGUIElements}/*@2x.png -tile 12x -geometry 48x48+12+12 -background "$ground" "$sheet/$ground.2.png"
        convert "$sheet/$ground.1.png" -filter point -resize 300% "$sheet/$ground.1.png"
        convert "$sheet/$ground.2.png" -filter point -resize 150% "$sheet/$ground.2.png"
    done
    cd - >/dev/null
    convert "$sheet"/*.png -append "$2"
fi
