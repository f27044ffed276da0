#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes a small seed corpus for the fuzz targets: tiny MP4, M4V, MOV and 3GP
# files carrying every kind of metadata the movie reader knows and the
# layouts the rewriter meets (movie box before or after the media, audio
# beside video, 64-bit chunk offsets, fragments), tagged audio files and
# tagged photos, written by ffmpeg and exiftool.
# Usage: make_seed_corpus.sh <output folder>
set -eu
out=${1:?usage: make_seed_corpus.sh <output folder>}
mkdir -p "$out"
[ "$out/.made" -nt "$0" ] && exit 0  # already made by this version of the script

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

# Layouts: audio and video, 64-bit chunk offsets, a fragmented movie (refused).
ffmpeg -v error -y -f lavfi -i testsrc=size=32x24:rate=5:duration=0.2 \
   -f lavfi -i sine=frequency=440:sample_rate=8000:duration=0.2 -c:v libx264 -pix_fmt yuv420p \
   -c:a aac -b:a 16k -shortest -metadata title=Both "$out/audio_video.mp4"
ff -movflags +faststart -write_tmcd 0 "$out/faststart.mov"
ff -movflags use_metadata_tags+frag_keyframe+empty_moov "$out/fragmented.mp4"
ff -f mp4 -movflags +faststart "$out/co64.mp4" && \
  python3 - "$out/co64.mp4" <<'PY' || rm -f "$out/co64.mp4"
import struct, sys
# Widen the chunk offset tables (stco to co64) in place of a fast-start file.
path = sys.argv[1]
data = bytearray(open(path, "rb").read())
pos = data.find(b"stco")
if pos > 0:
    size = struct.unpack(">I", data[pos - 4:pos])[0]
    count = struct.unpack(">I", data[pos + 8:pos + 12])[0]
    offsets = struct.unpack(">%dI" % count, data[pos + 12:pos + 12 + 4 * count])
    grow = 4 * count
    table = struct.pack(">I4sII", size + grow, b"co64", 0, count)
    table += b"".join(struct.pack(">Q", o + grow) for o in offsets)
    data[pos - 4:pos - 4 + size] = table
    # Every box that holds the table grows with it (moov, trak, mdia, minf, stbl).
    for name in (b"moov", b"trak", b"mdia", b"minf", b"stbl"):
        at = data.find(name)
        if 4 <= at < pos:
            struct.pack_into(">I", data, at - 4, struct.unpack(">I", data[at - 4:at])[0] + grow)
    open(path, "wb").write(bytes(data))
PY

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
# Audio: ID3v2.3 and v2.4 tags with a picture and an ID3v1 tag, RIFF INFO,
# Vorbis comments, an AIFF ID3 chunk, a CAF info chunk.
tone="-f lavfi -i sine=duration=0.05:sample_rate=8000"
ffmpeg -v error -y -f lavfi -i color=red:size=4x4 -frames:v 1 "$out/.pic.png"
for v in 3 4; do
  ffmpeg -v error -y $tone -i "$out/.pic.png" -map 0 -map 1 -c:v copy -disposition:v attached_pic \
    -c:a libmp3lame -b:a 8k -id3v2_version $v -write_id3v1 1 -metadata title=T -metadata TRDA=2019 \
    -metadata comment=C "$out/id3v2$v.mp3"
done
ffmpeg -v error -y $tone -metadata title=T -metadata track=1 -metadata date=2019 "$out/info.wav"
ffmpeg -v error -y $tone -i "$out/.pic.png" -map 0 -map 1 -c:v copy -disposition:v attached_pic \
  -metadata title=T "$out/vorbis.flac"
ffmpeg -v error -y $tone -write_id3v2 1 -id3v2_version 3 -metadata title=T "$out/id3.aiff"
ffmpeg -v error -y $tone -c:a pcm_s16le -metadata title=T -metadata artist=A "$out/info.caf"
# HEIF photos: a HEIC with a thumbnail and an Exif item, an AVIF.
if command -v heif-enc >/dev/null; then
  ffmpeg -v error -y -f lavfi -i testsrc=size=32x24 -frames:v 1 "$out/.heif.png"
  heif-enc -q 50 -t 16 -o "$out/thumb.heic" "$out/.heif.png" >/dev/null
  exiftool -q -overwrite_original -Make=Make -GPSLatitude=1 "$out/thumb.heic" || true
  heif-enc -A -q 50 -o "$out/plain.avif" "$out/.heif.png" >/dev/null
  rm -f "$out/.heif.png"
fi
rm -f "$out/.pic.png"
# Photos: JPEG, PNG, TIFF and WebP with Exif, GPS and XMP (IPTC where the
# type holds it).
still="-f lavfi -i testsrc=size=16x12 -frames:v 1"
ffmpeg -v error -y $still "$out/photo.jpg"
ffmpeg -v error -y $still "$out/photo.png"
ffmpeg -v error -y $still "$out/photo.webp"
ffmpeg -v error -y $still "$out/photo.tif"
ffmpeg -v error -y -f lavfi -i testsrc=size=16x12:rate=4 -frames:v 2 -loop 0 "$out/photo.gif"
if command -v exiftool >/dev/null 2>&1; then
  for f in photo.jpg photo.png photo.webp photo.tif; do
    exiftool -q -q -overwrite_original -Artist=Artist -Make=Make -Model=Model \
      "-DateTimeOriginal=2020:01:02 03:04:05" -GPSLatitude=33.5 -GPSLatitudeRef=S \
      -GPSLongitude=70.25 -GPSLongitudeRef=W -GPSAltitude=12 -GPSAltitudeRef#=1 \
      -IPTC:ObjectName=Title -IPTC:Keywords=a -IPTC:Keywords=b -XMP-dc:Title=Title \
      -Photoshop:URL=u -LensModel=Lens -SerialNumber=1 -XMP-aux:Firmware=1 "$out/$f"
  done
fi
touch "$out/.made"
