  $ noise() { oiiotool --pattern noise:type=uniform:min=0:max=1 "$@"; }
  $ export_it() { imageutils-workbench --headless "$@" > table || cat table; }
  $ alike() { # MOST ARGUMENT…: two pictures that differ by no more
  >   oiiotool "${@:2}" --fail $1 --hardfail $1 --diff > said || cat said
  > }
  $ same() { # FILE FILE: with colours as they are stored
  >   alike 1e-6 --iconfig oiio:UnassociatedAlpha 1 "$1" --iconfig oiio:UnassociatedAlpha 1 "$2"
  > }

Samples, channels and the camera's data come over as they are, where the format can hold them.

  $ while read source channels names type format; do
  >   exif="--attrib FNumber 2.8" && [ $source = png ] && exif= # OpenImageIO writes it there from 2.5 on
  >   noise 37x33 $channels --chnames $names -d $type --attrib oiio:UnassociatedAlpha 1 --attrib Make Maker \
  >     $exif -o photo.$source
  >   rm -rf out && export_it photo.$source -o out --format $format
  >   result=$(ls out/* | grep -v workbench)
  >   oiiotool --info $result | tr -s ' '
  >   same photo.$source $result
  >   exiftool -S -Make -FNumber $result 2> said
  > done << END
  > png 4 R,G,B,A uint16 tiff
  > png 4 R,G,B,A uint16 PRESERVE
  > png 4 R,G,B,A uint8 tga
  > png 2 Y,A uint16 tiff
  > png 2 Y,A uint16 png
  > jpg 1 Y uint8 tiff
  > jpg 3 R,G,B uint8 png
  > jpg 3 R,G,B uint8 jp2
  > ppm 3 R,G,B uint8 sgi
  > tif 3 R,G,B uint16 tiff
  > tif 4 R,G,B,A uint8 png
  > END
  out/photo.tiff : 37 x 33, 4 channel, uint16 tiff
  Make: Maker
  out/photo.png : 37 x 33, 4 channel, uint16 png
  Make: Maker
  out/photo.tga : 37 x 33, 4 channel, uint8 targa
  out/photo.tiff : 37 x 33, 2 channel, uint16 tiff
  Make: Maker
  out/photo.png : 37 x 33, 2 channel, uint16 png
  Make: Maker
  out/photo.tiff : 37 x 33, 1 channel, uint8 tiff
  Make: Maker
  FNumber: 2.8
  out/photo.png : 37 x 33, 3 channel, uint8 png
  Make: Maker
  FNumber: 2.8
  out/photo.jp2 : 37 x 33, 3 channel, uint8 jpeg2000
  Make: Maker
  FNumber: 2.8
  out/photo.sgi : 37 x 33, 3 channel, uint8 sgi
  out/photo.tiff : 37 x 33, 3 channel, uint16 tiff
  Make: Maker
  FNumber: 2.8
  out/photo.png : 37 x 33, 4 channel, uint8 png
  Make: Maker
  FNumber: 2.8

Each format that the completion offers can be written.

  $ source <(imageutils-workbench --completion bash)
  $ COMP_WORDS=(imageutils-workbench --format = '') COMP_CWORD=3; _imageutils_workbench || true
  $ for format in "${COMPREPLY[@]}"; do
  >   export_it photo.tif -o all --format $format && oiiotool --info all/photo.${format/preserve/tif} > said || echo $format
  > done

OpenEXR holds linear light, multiplied by alpha; what comes from there gets the curve of sRGB.

  $ noise 37x33 4 -d uint16 -o alpha.png
  $ export_it alpha.png -o out --format exr
  $ alike 2e-3 --iconfig oiio:UnassociatedAlpha 1 alpha.png --colorconvert sRGB linear --premult out/alpha.exr
  $ noise 37x33 3 --colorconvert sRGB linear -d float -o light.exr
  $ for format in tiff png; do
  >   export_it light.exr -o out --format $format
  >   alike 1e-3 light.exr --colorconvert linear sRGB out/light.$format
  > done

The primaries that an EXR file names count, here those of Adobe RGB. The values are worked out on paper.

  $ oiiotool --pattern constant:color=0.2,0.6,0.3 8x8 3 -d half --attrib:type='float[8]' chromaticities \
  >   0.64,0.33,0.21,0.71,0.15,0.06,0.3127,0.329 -o primaries.exr
  $ export_it primaries.exr -o out --bit-depth 8
  $ /usr/bin/python3 -c 'from PIL import Image; print(Image.open("out/primaries.tiff").getpixel((3, 3)))'
  (57, 203, 146)

Formats that carry no profile get sRGB, also from WebP and HEIF, whose profiles OpenImageIO does not read; the others
keep it. So does Adobe RGB that only Exif names. The orientation in the Exif block of a HEIF file has no effect. PSNR in
tens of decibels, the name of the profile, and what Exif says.

  $ icc=/usr/share/color/icc/ghostscript
  $ psnr() { compare -metric PSNR "$1" "$2" null: 2>&1 | cut -c 1; }
  $ oiiotool --pattern fill:topleft=0,0,.5:topright=1,0,.5:bottomleft=0,1,.5:bottomright=1,1,.2 64x48 3 -d uint8 \
  >   --iccread $icc/a98.icc -o adobe.png
  $ convert adobe.png -intent relative -profile $icc/srgb.icc srgb.png
  $ heif-enc -q 100 -p chroma=444 adobe.png -o adobe-heif.heic > said 2>&1
  $ exiftool -q -overwrite_original -n -IFD0:Orientation=6 adobe-heif.heic
  $ convert adobe.png -define webp:lossless=true adobe-webp.webp
  $ convert adobe.png +profile icc -quality 100 adobe-exif.jpg
  $ exiftool -q -overwrite_original -ColorSpace#=65535 -InteropIndex='R03 - DCF option file (Adobe RGB)' adobe-exif.jpg
  $ for pair in adobe.png,{webp,bmp,jp2,heic,avif,gif,png} adobe-{heif.heic,webp.webp},{ppm,png} adobe-exif.jpg,{ppm,png,webp}; do
  >   output=out/$(basename ${pair%.*}).${pair#*,} && rm -f $output
  >   export_it ${pair%,*} -o out --format ${pair#*,} && heif-convert $output seen.png > said 2>&1 || cp $output seen.png
  >   echo "$pair $(psnr srgb.png seen.png) $(exiftool -s3 -ProfileDescription -ColorSpace $output | paste -sd ,)"
  > done
  adobe.png,webp 4 (sRGB)? (re)
  adobe.png,bmp 5 
  adobe.png,jp2 5 sRGB
  adobe.png,heic 3 (sRGB)? (re)
  adobe.png,avif 3 (sRGB)? (re)
  adobe.png,gif 3 
  adobe.png,png 2 Artifex Software A98 ICC Profile(,Uncalibrated)? (re)
  adobe-heif.heic,ppm 4 
  adobe-heif.heic,png 2 Artifex Software A98 ICC Profile* (glob)
  adobe-webp.webp,ppm 5 
  adobe-webp.webp,png 2 Artifex Software A98 ICC Profile* (glob)
  adobe-exif.jpg,ppm 4 
  adobe-exif.jpg,png 2 Compatible with Adobe RGB (1998),Uncalibrated
  adobe-exif.jpg,webp 4 sRGB
  $ rm $TMPDIR/VOLK*
  $ export_it adobe.png -o srgb --profile srgb && psnr srgb.png srgb/adobe.tiff && exiftool -s3 -ProfileDescription srgb/adobe.tiff
  5
  sRGB
  $ export_it srgb.png -o file --profile $icc/a98.icc && exiftool -s3 -ProfileDescription file/srgb.tiff
  Artifex Software A98 ICC Profile
  $ convert file/srgb.tiff -intent relative -profile $icc/srgb.icc back.png && psnr srgb.png back.png
  4

Infinite samples and those that are no numbers stay where they are.

  $ oiiotool light.exr --mulc inf light.exr --mulc nan light.exr --mosaic 3x1 -o inf.exr
  $ export_it inf.exr -o out --format exr
  $ cmp <(oiiotool --dumpdata inf.exr | tail -n +2) <(oiiotool --dumpdata out/inf.exr | tail -n +2)

The camera's data, the profile and the turn as other programs read them.

  $ /usr/bin/python3 -c 'from PIL.ImageCms import *
  > open("rgb.icc", "wb").write(ImageCmsProfile(createProfile("sRGB")).tobytes())'
  $ noise 32x16 3 -d uint8 --iccread rgb.icc --orientation 6 --attrib Make Maker --attrib FNumber 2.8 \
  >   --attrib Exif:PhotographicSensitivity 400 --attrib Exif:DateTimeOriginal '2024:05:06 07:08:09' -o photo.jpg
  $ for format in tiff jpg png; do
  >   export_it photo.jpg -o data --format $format
  >   exiftool -S -Warning -Orientation -ImageSize -Make -FNumber -ISO -RecommendedExposureIndex -DateTimeOriginal \
  >     data/photo.$format
  >   exiftool -b -ICC_Profile data/photo.$format | cmp - rgb.icc
  > done
  Orientation: Horizontal (normal)
  ImageSize: 16x32
  Make: Maker
  FNumber: 2.8
  ISO: 400
  DateTimeOriginal: 2024:05:06 07:08:09
  Orientation: Horizontal (normal)
  ImageSize: 16x32
  Make: Maker
  FNumber: 2.8
  ISO: 400
  DateTimeOriginal: 2024:05:06 07:08:09
  Orientation: Horizontal (normal)
  ImageSize: 16x32
  Make: Maker
  FNumber: 2.8
  ISO: 400
  DateTimeOriginal: 2024:05:06 07:08:09

All that exiftool finds in the source goes where the format has a place for it, but for maker notes; what is missing is
named. Not so the place, or all of it, where the user says so.

  $ noise 32x32 3 -d uint8 -o full.jpg && exiftool -q -overwrite_original -Make=Maker -ExposureTime=1/250 -UserComment='hällo' \
  >   -OffsetTimeOriginal=+02:00 -GPSLatitude=48.2 -GPSLatitudeRef=N -GPSAltitude=512 -XMP-dc:Title='Ünïcode' \
  >   -XMP-dc:Subject=a -XMP-dc:Subject=b -XMP-exif:GPSLatitude=48.2 -codedcharacterset=utf8 \
  >   -IPTC:Caption-Abstract='Größe' -OwnerName=x full.jpg && LC_ALL=C sed -i 's/\x30\xA4\x02\x00/\x7C\x92\x07\x00/' full.jpg
  $ tags() {
  >   exiftool -G1 -s -IFD0:all -ExifIFD:all -GPS:all -XMP:all -IPTC:all --ColorSpace --YCbCrPositioning --Software --OriginatingProgram $1 | sort
  > }
  $ for format in jpg tiff png jp2 webp heic; do
  >   export_it full.jpg -o full --format $format
  >   echo $format: $(tags full.jpg | comm -23 - <(tags full/full.$format) | sed 's/.*\] *//; s/ *:.*//')
  > done
  jpg: MakerNoteUnknownText
  tiff: MakerNoteUnknownText
  png: MakerNoteUnknownText
  jp2: MakerNoteUnknownText
  webp: MakerNoteUnknownText ApplicationRecordVersion Caption-Abstract CodedCharacterSet EnvelopeRecordVersion
  heic: MakerNoteUnknownText ApplicationRecordVersion Caption-Abstract CodedCharacterSet EnvelopeRecordVersion
  $ for format in png jp2 heic; do
  >   export_it full/full.$format -o again && comm -23 <(tags full/full.$format) <(tags again/full.tiff) | cut -c 1-40 && rm again/*
  > done
  $ for choice in no-gps none; do
  >   export_it full.jpg -o $choice --format jpg --metadata $choice
  >   exiftool -S -Make -Title '-*GPSL*' $choice/full.jpg
  > done
  Make: Maker
  Title: Ünïcode

CMYK comes out as sRGB through its profile, and without it. One that cannot be used is replaced, and a warning says by
which. The intent counts: by the relative one, blacks are not fitted to each other.

  $ { head -c 16 /dev/zero; printf CMYK; head -c 16 /dev/zero; printf acsp; head -c 92 /dev/zero; } > cmyk.icc
  $ noise 16x16 3 -d uint8 -o rgb.tif
  $ oiiotool rgb.tif --iccread cmyk.icc --attrib tiff:ColorSpace CMYK -o cmyk.tif
  $ export_it cmyk.tif -o out
  cmyk.tif: CMYK without a usable profile: Artifex CMYK SWOP Profile is taken
  $ exiftool -S -q -SamplesPerPixel -ICC_Profile cmyk.tif out/cmyk.tiff
  SamplesPerPixel: 4
  ICC_Profile: (Binary data 132 bytes, use -b option to extract)
  SamplesPerPixel: 3
  $ convert cmyk.tif +profile icc cmyk.jpg && convert cmyk.jpg cmyk-jpg.tif
  $ export_it cmyk.jpg -o out --format png
  cmyk.jpg: CMYK without a usable profile: Artifex CMYK SWOP Profile is taken
  $ export_it cmyk.jpg -o relative --format png --intent relative 2> said
  $ convert cmyk.tif +profile icc -profile $icc/ps_cmyk.icc own.tif && export_it own.tif -o out
  $ while read source output profile; do
  >   convert $source +profile icc -profile $icc/${profile}_cmyk.icc -profile $icc/srgb.icc expected.png && psnr expected.png $output
  > done << END
  > cmyk.tif out/cmyk.tiff default
  > cmyk.jpg out/cmyk.png default
  > cmyk.jpg relative/cmyk.png default
  > own.tif out/own.tiff ps
  > END
  3
  3
  4
  3

Every orientation comes out upright; the ninth is none.

  $ mkdir turned
  $ noise 17x9 3 -d uint8 -o stored.png
  $ oiiotool stored.png $(for turn in 1 2 3 4 5 6 7 8 9; do echo --attrib Orientation $turn -o turned/$turn.tif; done)
  $ export_it turned -o upright
  $ /usr/bin/python3 -c 'from PIL import Image, ImageOps
  > for turn in range(1, 10):
  >   picture = Image.open("stored.png")
  >   picture.getexif()[0x112] = turn
  >   shown, upright = ImageOps.exif_transpose(picture), Image.open(f"upright/{turn}.tiff")
  >   print(turn, upright.size, shown.tobytes() == upright.tobytes())'
  1 (17, 9) True
  2 (17, 9) True
  3 (17, 9) True
  4 (17, 9) True
  5 (9, 17) True
  6 (9, 17) True
  7 (9, 17) True
  8 (9, 17) True
  9 (17, 9) True
  $ exiftool -q -if '$Orientation# != 1' -FileName upright
  [2]

So does one that is stored as a signed number of 32 bits. A comment of a GIF file that is one NUL does no harm.

  $ oiiotool stored.png --attrib Orientation 6 -o signed.jpg && oiiotool stored.png -o comment.gif
  $ LC_ALL=C sed -i 's/\x12\x01\x03\x00\x01\x00\x00\x00\x06/\x12\x01\x09\x00\x01\x00\x00\x00\x06/' signed.jpg
  $ LC_ALL=C sed -i 's/\x21\xF9\x04/\x21\xFE\x01\x00\x00&/' comment.gif
  $ export_it signed.jpg comment.gif -o upright && exiftool -s3 -ImageSize upright/signed.tiff upright/comment.tiff
  ======== upright/signed.tiff
  9x17
  ======== upright/comment.tiff
  17x9
      2 image files read

Turns and mirrors move every pixel and change none; a crop reaches the edges. WebP's orientation counts as well. Of
several pages one is taken.

  $ noise 16x16 3 -d uint8 -o half.png && noise 60x40 3 -d uint8 -o half2.png
  $ while read options as; do
  >   rm -rf out && export_it half2.png -o out --format png $options && oiiotool half2.png $as -o expected.png &&
  >     same expected.png out/half2.png
  > done << END
  > --turn=90 --rotate90
  > --turn=180 --rotate180
  > --turn=270 --rotate270
  > --turn=horizontal --flop
  > --turn=vertical --flip
  > --rotate=-90 --rotate270
  > --crop=20x10+5+7 --cut 20x10+5+7
  > END
  $ imageutils-workbench --headless half2.png -o out --crop 50x10+20+0 2>&1 | grep -o 'has 60x40.*+20+0'
  has 60x40 pixels, which do not hold the crop 50x10+20+0
  $ noise 900x600 3 -d uint8 -o wide.png && export_it wide.png -o out --rotate 0.5 && exiftool -s3 -ImageSize out/wide.tiff
  888x592
  $ convert half2.png -define webp:lossless=true turned.webp && exiftool -q -overwrite_original -n -Orientation=6 turned.webp
  $ export_it turned.webp -o out --format png && oiiotool half2.png --rotate90 -o expected.png && same expected.png out/turned.png
  $ imageutils-workbench --headless turned.webp -o out --format png | grep -o '40x60 .*kept'
  40x60 *kept (glob)
  $ oiiotool half2.png half.png --siappend -o pages.tif
  $ for page in 1 2 3; do export_it pages.tif -o page$page --page $page; done
  pages.tif: has 2 pages, of which the first is taken (--page)
  pages.tif: has no page 3
  file *output (glob)
  pages.tif *failed (glob)
  0 exported, 0 kept, 1 failed
  $ same half2.png page1/pages.tiff && same half.png page2/pages.tiff

What a format without alpha cannot hold stands on white.

  $ noise 16x16 4 -d uint16 -o glass.png
  $ export_it glass.png -o out --format ppm
  $ alike 0.00197 --iconfig oiio:UnassociatedAlpha 1 glass.png --premult --pattern constant:color=1,1,1,1 16x16 4 --over --ch R,G,B out/glass.ppm

The picture fits whole: a ramp from corner to corner is the ramp made as large as what comes out, whose last sample lies
inside.

  $ ramp='--pattern fill:topleft=0,0,.5:topright=1,0,.5:bottomleft=0,1,.5:bottomright=1,1,.5'
  $ oiiotool $ramp 301x201 3 -d float -o ramp.tif
  $ while read size rows options; do
  >   rm -rf out && export_it ramp.tif -o out $options
  >   exiftool -S -ImageSize out/ramp.tiff
  >   alike $(echo "1.6 $rows" | awk '{ print $1 / $2 }') $ramp $size 3 out/ramp.tiff
  > done << END
  > 100x67 67 --max-width 100
  > 150x100 100 --max-height 100
  > 30x20 20 --max-width 30 --max-height 150
  > 30x20 20 --scale 0.1 --max-width 100
  > 301x201 201 --max-width 5000
  > 903x603 201 --scale 3
  > 400x267 201 --scale 3 --max-width 400
  > 1x1 1 --max-width 1
  > 151x101 101 --scale 0.5 --filter 0,0.5
  > END
  ImageSize: 100x67
  ImageSize: 150x100
  ImageSize: 30x20
  ImageSize: 30x20
  ImageSize: 301x201
  ImageSize: 903x603
  ImageSize: 400x267
  ImageSize: 1x1
  ImageSize: 151x101

A picture that is made in bands while it is decoded is the one that is made as a whole, as it is beside a bitmap: with
factors at which no output row lies on a source row, a last band that is short, and bands whose rows are turned or converted.

  $ noise 1600x1501 4 -d uint16 --iccread $icc/a98.icc --attrib oiio:UnassociatedAlpha 1 -o deep.png
  $ oiiotool deep.png --ch R,G,B -d uint8 --attrib Orientation 6 -o turned.jpg
  $ oiiotool deep.png --ch R -d uint16 -o single.tif && oiiotool deep.png --ch R,G,B --tile 64 64 -d float -o tiles.tif
  $ while read file options; do
  >   rm -rf bands whole && export_it $file -o bands $options && export_it $file -o whole --bitmap $options
  >   alike 1e-3 bands/${file%.*}.tiff whole/${file%.*}.tiff
  > done << END
  > deep.png --scale 0.37 --bit-depth 32
  > deep.png --max-width 1133 --turn 90
  > deep.png --filter 0.3,0.4 --turn vertical --profile srgb
  > turned.jpg --percent 71 --bit-depth 32
  > turned.jpg --max-height 799 --turn 270 --bit-depth 16
  > single.tif --scale 0.5
  > single.tif --long-edge 1599 --profile srgb
  > tiles.tif --scale 0.9 --profile srgb
  > tiles.tif --scale 1.01
  > END

Between profiles of curves and a matrix, LittleCMS is not asked for each pixel. The largest difference from what it makes is
below a step of 12 bits, also of colours that the target cannot hold.

  $ export_it deep.png -o tables --profile $icc/srgb.icc && convert tables/deep.tiff -alpha off tables.tif 2> said
  $ convert deep.png -alpha off -intent perceptual -profile $icc/srgb.icc expected.tif
  $ compare -metric PAE expected.tif tables.tif null: 2>&1 | sed 's/.*(//; s/)//' | awk '{ print ($1 < 1 / 4096) ? "close" : $1 }'
  close

Red, beside green that nothing shows: what is half transparent between them is red.

  $ oiiotool --pattern constant:color=0,1,0,0 64x64 4 --fill:color=1,0,0,1 31x64 --attrib oiio:UnassociatedAlpha 1 \
  >   -d uint8 -o edge.png
  $ export_it edge.png -o out --scale 0.25
  $ oiiotool --dumpdata out/edge.tiff | sed -n 's/.*, 8): \(.*\) (.*/\1/p' | uniq -c
        7 255 0 0 255
        1 240 0 0 240
        1 49 0 0 49
        7 0 0 0 0

A bitmap beside it.

  $ noise 31x8 3 -d uint8 -o small.png
  $ export_it small.png -o bitmap --bitmap
  $ same small.png bitmap/small.bmp
  $ export_it small.png -o bitmap --bitmap
  $ tail -n 1 table
  0 exported, 1 kept, 0 failed

As JSON, whatever the name.

  $ noise 20x10 1 -d uint8 -o grey.png
  $ mv grey.png "$(printf 'gr\303\244y "1"\n.png')"
  $ imageutils-workbench --headless gr* missing.jpg -o out --json > lines
  missing.jpg: no such file
  1 exported, 0 kept, 1 failed
  [1]
  $ /usr/bin/python3 -c 'import json, os
  > for facts in map(json.loads, open("lines")):
  >   print(*[ascii(facts.get(name)) for name in ("file", "grey", "stored", "error")])
  >   print(os.path.isfile(facts.get("output", "")), "decode" in facts.get("milliseconds", ""))'
  'gr\xe4y "1"\n.png' True [20, 10] None
  True True
  'missing.jpg' None None 'no such file'
  False False

Dark above and bright below, turned clockwise: the left is bright, and the right dark. Named as a format whose pictures
always get a thumbnail, which nobody else may read and which is made anew when it is older than its picture, and only then.

  $ oiiotool --pattern constant:color=1,1,1 200x100 3 --fill:color=0,0,0 200x50 -d uint8 -o photo.jpg
  $ mv photo.jpg photo.heic; rm -f $TMPDIR/VOLK*
  $ turn() {
  >   imageutils-workbench --headless photo.heic -o turn --rotate 10 --json |
  >     grep -oE '"(kept|output)":[^,]*|VOLK_Thumbnail_[0-9]*.jpeg'
  > }
  $ umask 0; turn
  "kept":false
  "output":"turn/photo.tiff"
  VOLK_Thumbnail_*.jpeg (glob)
  $ umask 22; stat -c %a $TMPDIR/VOLK*
  600
  $ /usr/bin/python3 -c 'from PIL import Image
  > picture = Image.open("turn/photo.tiff")
  > right, bottom = picture.size
  > print(right / bottom, *[picture.getpixel((x, bottom // 2))[0] // 26 for x in (2, right - 3)])'
  2.0 9 0
  $ oiiotool --info $TMPDIR/VOLK* | tr -s ' ' | sed 's/.*: //'
  200 x 100, 3 channel, uint8 jpeg
  $ turn
  "kept":true
  "output":"turn/photo.tiff"
  $ touch -d '3 days ago' $TMPDIR/VOLK*
  $ turn
  "kept":false
  "output":"turn/photo.tiff"
  VOLK_Thumbnail_*.jpeg (glob)
  $ find $TMPDIR -name 'VOLK*' -mtime -1 | wc -l
  1
  $ ls turn
  photo.tiff

The orientation counts in a directory that is cut off, which OpenImageIO does not read.

  $ /usr/bin/python3 -c 'import struct
  > exif = b"Exif\0\0II*\0\10\0\0\0" + struct.pack("<HHHII", 1, 0x112, 3, 1, 6)
  > jpeg = open("photo.heic", "rb").read()
  > open("damaged.jpg", "wb").write(jpeg[:2] + b"\xff\xe1" + struct.pack(">H", len(exif) + 2) + exif + jpeg[2:])'
  $ imageutils-workbench --headless damaged.jpg -o turn > table
  $ exiftool -s3 -ImageSize turn/damaged.tiff
  100x200

The machine, in words and as JSON, without a window or a photograph.

  $ imageutils-workbench --headless --machine > words
  $ imageutils-workbench --headless --machine --json > line
  $ /usr/bin/python3 -c 'import json
  > facts = json.load(open("line"))
  > words = open("words").readlines()
  > print(0 < facts["availableGiB"] <= facts["memoryGiB"], facts["processor"] == words[1].strip()[12:])
  > print(len([line for line in words if line.startswith("graphics ")]) == max(1, len(facts["graphics"])))'
  True True
  True
