What is no photograph gets one line each, and the good one is exported:

  $ noise() { oiiotool --pattern noise:type=uniform:min=0:max=1 "$1" 3 -d uint8 -o "$2"; }
  $ noise 8x8 good.png
  $ mkdir bad && cd bad
  $ true > empty.jpg
  $ echo text | tee text.jpg text.jxl > text.txt
  $ mkdir folder.jpg
  $ mkfifo pipe.jpg
  $ ln -s /dev/zero device.jpg
  $ ln -s nowhere nothing.jpg
  $ ln -s itself.jpg itself.jpg
  $ printf '\0\0\2\0\0\0\0\0\0\0\0\0\377\377\377\377\30\0' > huge.tga
  $ printf 'P6\n-4 -5\n255\n' > negative.ppm
  $ for format in bmp exr gif hdr jp2 jpg png ppm tga tif webp; do
  >   noise 64x48 whole.$format
  >   head -c $(($(stat -c %s whole.$format) / 2)) whole.$format > half.$format
  > done
  $ rm whole.*
  $ imageutils-workbench --headless missing.jpg *.* text.jpg/below.jpg ../good.png -o ../out > ../table
  missing.jpg: no such file
  device.jpg: is not a regular file
  empty.jpg: is empty
  folder.jpg: the folder holds no photographs
  half.bmp: ?* (glob)
  half.exr: ?* (glob)
  half.gif: ?* (glob)
  half.hdr: ?* (glob)
  half.jp2: ?* (glob)
  half.jpg: ?* (glob)
  half.png: ?* (glob)
  half.ppm: ?* (glob)
  half.tga: ?* (glob)
  half.tif: ?* (glob)
  half.webp: ?* (glob)
  huge.tga: (65535 x 65535 pixels are more than --max-megapixels allows \(250\)|.*implausible.*) (re)
  itself.jpg: no such file
  negative.ppm: ?* (glob)
  nothing.jpg: no such file
  pipe.jpg: is not a regular file
  text.jpg: Could not get image size: * (glob)
  text.jxl: (is JPEG XL, for which OpenImageIO 2.* has no plug-in|.*JPEG XL signature.*) (re)
  text.txt: is not named as a photograph
  text.jpg/below.jpg: no such file
  [1]
  $ cd ..
  $ tail -n 1 table
  1 exported, 0 kept, 24 failed
  $ awk 'length > 80' table
  $ grep -c ' failed$' table
  25
  $ ls -A out
  good.tiff

A pipe that takes the name of a photograph again and again holds no batch up.

  $ mkfifo pipe && cp good.png swapped.png
  $ /usr/bin/python3 -c 'import ctypes
  > while True: ctypes.CDLL(None).renameat2(-100, b"pipe", -100, b"swapped.png", 2)' & swapper=$!
  $ for run in 1 2 3 4 5 6 7 8; do
  >   timeout 60 imageutils-workbench --headless swapped.png good.png -o swaps$run > table 2>&1; [ $? -lt 2 ] || echo hangs
  > done
  $ kill $swapper; ls swaps*/good.tiff | wc -l
  8

A name that is no text, in a folder and named by the user, where Qt's own lists would leave it out or name another file:

  $ mkdir names && cp good.png names/ && cp good.png names/"$(printf 'b\377.png')"
  $ imageutils-workbench --headless names -o texts > table
  names/b\xef\xbf\xbd.png: name is not valid UTF-8 (esc)
  [1]
  $ ls texts
  good.tiff
  $ imageutils-workbench --headless names/"$(printf 'b\377.png')" -o texts > table
  names/b\xef\xbf\xbd.png: name is not valid UTF-8 (esc)
  [1]

Volumes, whose slices would be written behind the pixels, and a header that claims too many channels:

  $ /usr/bin/python3 -c 'import struct
  > fits = "".join(("%-8s= %20s" % card).ljust(80) for card in (("SIMPLE", "T"), ("BITPIX", 8), ("NAXIS", 3),
  >   ("NAXIS1", 64), ("NAXIS2", 64), ("NAXIS3", 4096))) + "END"
  > open("cube.fits", "wb").write(fits.ljust(2880).encode() + bytes(64 * 64 * 4096))
  > dds = struct.pack("<7I44x", 124, 0x80100f, 64, 64, 256, 4096, 0) + struct.pack("<8I", 32, 0x41, 0, 32,
  >   0xff0000, 0xff00, 0xff, 0xff000000) + struct.pack("<5I", 0x1008, 0x200000, 0, 0, 0)
  > open("volume.dds", "wb").write(b"DDS " + dds + bytes(64 * 64 * 4096 * 4))'
  $ oiiotool --create 512x512 65 -d uint8 -o many.tif
  $ imageutils-workbench --headless cube.fits volume.dds many.tif -o volumes --max-megapixels 1 > table
  cube.fits: is a volume of 4096 slices and no photograph
  volume.dds: is a volume of 4096 slices and no photograph
  many.tif: claims 65 channels* (glob)
  [1]

A format that cannot be written, and icons, which OpenImageIO 2.4 crashes on:

  $ cp good.png good.psd
  $ /usr/bin/python3 -c 'from PIL import Image; Image.new("RGB", (16, 16)).save("icon.ico")'
  $ imageutils-workbench --headless good.psd -o none --format preserve > table
  good.psd: *cannot be written* (glob)
  [1]
  $ imageutils-workbench --headless icon.ico -o none > table
  icon.ico: ?* (glob)
  [1]
  $ ls none
  ls: cannot access 'none': No such file or directory
  [2]

A caption of 70 KB, which would end libjpeg's process, is left out; sides that a format does not have, a file of 1 KB that
claims 4 gigapixels, and one that needs more memory than the user allows cost one photograph each:

  $ /usr/bin/python3 << 'END'
  > from PIL import Image, PngImagePlugin
  > from struct import pack
  > from zlib import compress, crc32
  > caption = PngImagePlugin.PngInfo()
  > caption.add_text("Description", "x" * 70000)
  > Image.open("good.png").save("caption.png", pnginfo=caption)
  > Image.new("L", (66000, 8)).save("wide.png")
  > marker = lambda kind, data: bytes([255, kind]) + pack(">H", len(data) + 2) + data
  > open("claim.jpg", "wb").write(
  >     b"\xff\xd8" + marker(0xDB, b"\0" + bytes([1] * 64))
  >     + marker(0xC2, pack(">BHHB", 8, 64250, 64250, 3) + b"\1\x22\0\2\x11\0\3\x11\0")
  >     + marker(0xC4, b"\0\0\1" + bytes(15)) + marker(0xDA, b"\3\1\0\2\0\3\0\0\0\0") + bytes(600) + b"\xff\xd9")
  > chunk = lambda name, data: pack(">I", len(data)) + name + data + pack(">I", crc32(name + data))
  > open("needs.png", "wb").write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", pack(">IIBBBBB", 60000, 60000, 8, 6, 0, 0, 0))
  >     + chunk(b"IDAT", compress(bytes(240001 * 64))))
  > END
  $ imageutils-workbench --headless caption.png wide.png claim.jpg needs.png good.png -o one --format jpg --jobs 1 \
  >   --max-memory 1000 --max-megapixels 9999 > table
  caption.png: its Exif is left out, as JPEG has 64 KB for it
  wide.png: 66000 x 8 pixels are too many for JPEG, whose sides have at most 65500
  claim.jpg: is cut off: * bytes are too few for 64250 x 64250 pixels (glob)
  needs.png: (needs more memory than --max-memory allows or there is|.*claims a 13732 MB image.*) (re)
  [1]
  $ ls -A one
  caption.jpg
  caption.jpg.workbench
  good.jpg
  $ imageutils-workbench --headless good.png -o one --format jp2 > table
  good.png: 8 x 8 pixels are too few for JPEG 2000, whose sides have at least 32
  [1]

The longest side of each format is exported, and one pixel more is refused before any work. Of GIF, the encoder may take
fewer than 17 megapixels.

  $ while read format side rows; do
  >   for width in $side $((side + 1)); do oiiotool --create ${width}x${rows:-2} 3 -d uint8 -o $width.tif; done
  >   imageutils-workbench --headless $side.tif $((side + 1)).tif -o sides --format $format > table 2> said
  >   [ "$(ls sides | grep -v workbench)" = $side.$format ] && grep -q "at most $side" said || cat said
  >   rm -r sides
  > done << END
  > avif 32767
  > bmp 32767
  > gif $(oiiotool --version | grep -q ^3 && echo 32768 || echo 65535)
  > heic 32767 32
  > jpg 65500
  > png $(oiiotool --version | grep -q '^2[.]5' && echo 65535 || echo 1000000)
  > rla 16383
  > sgi 65534
  > tga 65535
  > webp 16383
  > END
  $ oiiotool --create 4200x4100 3 -d uint8 -o many.png
  $ imageutils-workbench --headless many.png -o sides --format gif 2>&1 > table | grep -v 'too many for the GIF encoder'
  [1]
  $ oiiotool --info sides/many.gif 2>&1 | grep -o '4200 x 4100\|does not exist'
  (4200 x 4100|does not exist) (re)

A standard output that takes nothing, one that takes a line, as `head` does, and one that nobody reads any more:

  $ imageutils-workbench --headless good.png -o lines > /dev/full
  imageutils-workbench: standard output: No space left on device
  [1]
  $ imageutils-workbench --headless wide.png wide.png wide.png wide.png -o lines | head -n 1 > table
  $ ls -A lines | grep '^\.'
  [1]
  $ exec 3> >(true); wait $!; imageutils-workbench --help >&3

Folders that cannot be written:

  $ for folder in good.png/out /proc/out /proc; do timeout 60 imageutils-workbench --headless good.png -o $folder > table || echo $?; done
  imageutils-workbench: cannot make the folder good.png/out: Not a directory
  2
  imageutils-workbench: cannot make the folder /proc/out: No such file or directory
  2
  imageutils-workbench: cannot write in /proc: (Permission denied|No such file or directory) (re)
  2

A full disk, for writers that fail at once, in the middle, and with the last bytes only: nothing is left of the picture, and
the reason is the system's.

  $ noise 256x256 large.png && cp large.png before.png
  $ for options in "8 tiff" "8 png" "8 jpg" "8 exr" "8 sgi" "8 webp" "8 webp --lossless" "8 avif" "8 bmp" "1 tiff" "8 jpg --bitmap"; do
  >   set -- $options
  >   (ulimit -f $1; imageutils-workbench --headless large.png good.png -o full --format $2 $3 2>&1 > table)
  >   echo "$options: $?, left: $(find full \( -name 'large*' -o -name '.?*' \))"
  > done | grep -v '^good.png'
  large.png: cannot be written: File too large
  8 tiff: 1, left: 
  large.png: cannot be written: File too large
  8 png: 1, left: 
  large.png: cannot be written: File too large
  8 jpg: 1, left: 
  large.png: cannot be written: File too large
  8 exr: 1, left: 
  large.png: cannot be written: File too large
  8 sgi: 1, left: 
  large.png: cannot be written: File too large
  8 webp: 1, left: 
  large.png: cannot be written: File too large
  8 webp --lossless: 1, left: 
  large.png: cannot be written: File too large
  8 avif: 1, left: 
  large.png: cannot be written: File too large
  8 bmp: 1, left: 
  large.png: cannot be written: File too large
  1 tiff: 1, left: 
  large.png: cannot be written: File too large
  8 jpg --bitmap: 1, left: 
  $ cmp large.png before.png

Wrong command lines, with one line each:

  $ while read -r arguments; do
  >   imageutils-workbench --headless $arguments good.png > table 2> said
  >   echo "$arguments: $?, lines: $(cat table said | wc -l), $(wc -l < said) of them errors"
  > done << END
  > --scale 0
  > --scale nan
  > --scale 1e999
  > --scale x
  > --max-width -1
  > --filter 1
  > --filter 1,2,3
  > --filter inf,0
  > --quality 0
  > --unknown
  > --format term
  > --format dds
  > --format x/../../y
  > --format ico
  > --format fits
  > --scale 1e9
  > --percent x
  > --fit 3
  > --fill 0x5
  > --sharpen 11
  > --scale 1 --long-edge 5
  > --format png --progressive
  > --subsampling 4:2:0
  > --format jpg --bit-depth 16
  > --format png --compression zip
  > --format gif --lossless
  > --name x
  > --name {name}/{number}
  > --overwrite --name {date}{name}
  > --suffix a/b
  > --null
  > --overwrite --bitmap --format bmp
  > --quiet --json
  > --long-edge 999999999
  > --fill 70000x9 --format jpg
  > --profile nowhere.icc
  > --profile good.png
  > -headless
  > -output x
  > -scale 0.5
  > END
  --scale 0: 2, lines: 1, 1 of them errors
  --scale nan: 2, lines: 1, 1 of them errors
  --scale 1e999: 2, lines: 1, 1 of them errors
  --scale x: 2, lines: 1, 1 of them errors
  --max-width -1: 2, lines: 1, 1 of them errors
  --filter 1: 2, lines: 1, 1 of them errors
  --filter 1,2,3: 2, lines: 1, 1 of them errors
  --filter inf,0: 2, lines: 1, 1 of them errors
  --quality 0: 2, lines: 1, 1 of them errors
  --unknown: 2, lines: 1, 1 of them errors
  --format term: 2, lines: 1, 1 of them errors
  --format dds: 2, lines: 1, 1 of them errors
  --format x/../../y: 2, lines: 1, 1 of them errors
  --format ico: 2, lines: 1, 1 of them errors
  --format fits: 2, lines: 1, 1 of them errors
  --scale 1e9: 2, lines: 1, 1 of them errors
  --percent x: 2, lines: 1, 1 of them errors
  --fit 3: 2, lines: 1, 1 of them errors
  --fill 0x5: 2, lines: 1, 1 of them errors
  --sharpen 11: 2, lines: 1, 1 of them errors
  --scale 1 --long-edge 5: 2, lines: 1, 1 of them errors
  --format png --progressive: 2, lines: 1, 1 of them errors
  --subsampling 4:2:0: 2, lines: 1, 1 of them errors
  --format jpg --bit-depth 16: 2, lines: 1, 1 of them errors
  --format png --compression zip: 2, lines: 1, 1 of them errors
  --format gif --lossless: 2, lines: 1, 1 of them errors
  --name x: 2, lines: 1, 1 of them errors
  --name {name}/{number}: 2, lines: 1, 1 of them errors
  --overwrite --name {date}{name}: 2, lines: 1, 1 of them errors
  --suffix a/b: 2, lines: 1, 1 of them errors
  --null: 2, lines: 1, 1 of them errors
  --overwrite --bitmap --format bmp: 2, lines: 1, 1 of them errors
  --quiet --json: 2, lines: 1, 1 of them errors
  --long-edge 999999999: 2, lines: 1, 1 of them errors
  --fill 70000x9 --format jpg: 2, lines: 1, 1 of them errors
  --profile nowhere.icc: 2, lines: 1, 1 of them errors
  --profile good.png: 2, lines: 1, 1 of them errors
  -headless: 2, lines: 1, 1 of them errors
  -output x: 2, lines: 1, 1 of them errors
  -scale 0.5: 2, lines: 1, 1 of them errors
