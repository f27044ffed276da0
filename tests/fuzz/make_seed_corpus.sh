#!/bin/sh
# Makes a small seed corpus for the movie metadata reader: tiny MP4, M4V,
# MOV and 3GP files carrying every kind of metadata the reader knows, written
# by ffmpeg and exiftool. Usage: make_seed_corpus.sh <output folder>
set -eu
out=${1:?usage: make_seed_corpus.sh <output folder>}
mkdir -p "$out"
[ -n "$(ls -A "$out" 2>/dev/null)" ] && exit 0  # already made

clip="-f lavfi -i testsrc=size=32x24:rate=5:duration=0.2 -c:v libx264 -pix_fmt yuv420p"
ff() { ffmpeg -v error -y $clip "$@"; }

ff -metadata title="Title" -metadata artist=Artist -metadata album=Album \
   -movflags +faststart "$out/itunes.mp4"
ff -movflags use_metadata_tags -metadata com.apple.quicktime.make=Make \
   -metadata "com.apple.quicktime.location.ISO6709=+48.8566+002.3522+035.000/" "$out/keys.mov"
ff -metadata title=Plain -metadata artist=Artist "$out/udta.mov"
ffmpeg -v error -y -f lavfi -i testsrc=size=176x144:rate=5:duration=0.2 -c:v libx264 \
   -metadata title=Title -metadata author=Author -metadata album=Album \
   -metadata "location=-33.8688+151.2093+012.000/" "$out/iso.3gp"

if command -v exiftool >/dev/null 2>&1; then
  ffmpeg -v error -y -f lavfi -i color=red:size=8x8 -frames:v 1 "$out/.cover.png"
  cp "$out/itunes.mp4" "$out/cover.m4v"
  exiftool -q -overwrite_original "-ItemList:CoverArt<=$out/.cover.png" \
    -ItemList:Director=Director "$out/cover.m4v"
  cp "$out/keys.mov" "$out/keys_edited.mov"
  exiftool -q -overwrite_original -Keys:Keywords=a,b "-Keys:CreationDate=2020:01:02 03:04:05" \
    -UserData:Description=Description "$out/keys_edited.mov"
  rm -f "$out/.cover.png"
fi
