  $ noise() { oiiotool --pattern noise:type=uniform:min=0:max=1 "$@"; }
  $ export_it() { imageutils-workbench --headless "$@" > table || cat table; }
  $ alike() { oiiotool "$1" "$2" --fail 1e-6 --hardfail 1e-6 --diff > said || cat said; }
  $ noise 60x40 3 -d uint8 -o photo.png

--help, the manual page and the completions name the same options.

  $ for page in --help --man '--completion bash' '--completion zsh' '--completion fish'; do
  >   imageutils-workbench $page | sed 's/\\f.//g; s/\\//g; s/ -l / --/' | grep -oE -- '--[a-z]+[a-z-]*' | sort -u | md5sum
  > done | uniq | wc -l
  1
  $ source <(imageutils-workbench --completion bash)
  $ complete_it() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _imageutils_workbench; echo "${COMPREPLY[@]}"; }
  $ complete_it imageutils-workbench --max
  --max-width --max-height --max-megapixels --max-memory
  $ complete_it imageutils-workbench --turn = ''
  0 90 180 270 horizontal vertical
  $ complete_it imageutils-workbench ph
  photo.png

Names: behind the photograph's, as a template says, in the folders of the sources; hidden ones, links and the folder of
the outputs are passed over, and what an earlier run left unfinished is removed. Lists come from the standard input.

  $ mkdir -p tree/one/two tree/.hidden && ln -s ../one tree/one/link
  $ for folder in tree/ tree/one tree/one/two tree/.hidden; do cp photo.png $folder; done
  $ mkdir -p tree/out/one && touch -d '2 days ago' tree/out/one/.imageutils-workbench-left.tiff
  $ for run in 1 2; do export_it -r tree -o tree/out --suffix _web; tail -n 1 table; done
  3 exported, 0 kept, 0 failed
  0 exported, 3 kept, 0 failed
  $ (cd tree/out && find . -type f | sort)
  ./one/photo_web.tiff
  ./one/two/photo_web.tiff
  ./photo_web.tiff
  $ cp photo.png 'a {number}.png'
  $ printf '%s\0' 'a {number}.png' tree/one/photo.png | export_it photo.png - --null -o list --name '{folder}_{number}{name}'
  $ ls list
  one_0003photo.tiff
  *_0001photo.tiff (glob)
  *_0002a {number}.tiff (glob)
  $ cp photo.png taken.png && exiftool -q -overwrite_original -DateTimeOriginal='2024:05:06 07:08:09' taken.png
  $ touch -d 2023-04-05 photo.png && export_it photo.png taken.png -o dates --name '{date} {name}' && ls dates
  2023-04-05 photo.tiff
  2024-05-06 taken.tiff
  $ printf 'photo.png\n\nmissing.png\n' | imageutils-workbench --quiet - -o list
  missing.png: no such file
  [1]

A dry run names what a run would write, and writes nothing.

  $ export_it tree tree/one missing.png -o dry --dry-run
  missing.png: no such file
  file * output (glob)
  photo.png * 60x40 *  photo.tiff (glob)
  photo.png * 60x40 *  photo-2.tiff (glob)
  missing.png * failed (glob)
  2 would be exported, 0 kept, 1 failed
  $ export_it photo.png -o dry --dry-run --format gif --fill 4000x4000; tail -n 1 table
  1 would be exported, 0 kept, 0 failed
  $ ls dry
  ls: cannot access 'dry': No such file or directory
  [2]

What has the name of an output is replaced where the user says so, and never a photograph, whatever its name.

  $ mkdir over && cp photo.png over/ && ln over/photo.png over/photo-x.png && echo mine > over/photo.tiff
  $ ln -s ../photo.png over/photo-y.png
  $ for scale in 1 0.5 0.5; do export_it over/photo.png -o over --overwrite --scale $scale; tail -n 1 table; done
  1 exported, 0 kept, 0 failed
  1 exported, 0 kept, 0 failed
  0 exported, 1 kept, 0 failed
  $ exiftool -s3 -ImageSize over/photo.tiff
  30x20
  $ while read arguments; do imageutils-workbench --quiet $arguments -o over --overwrite; done << END
  > over/photo.png --format png
  > over/photo.png --format png --suffix -x
  > photo.png over/photo-x.png --format png --suffix -x
  > photo.png tree/photo.png
  > photo.png --format png --suffix -y
  > END
  over/photo.png: its output would replace the photograph over/photo.png
  over/photo.png: its output would replace it
  photo.png: its output would replace the photograph over/photo-x.png
  tree/photo.png: its output would replace that of photo.png
  photo.png: its output would replace the photograph over/photo-y.png
  [1]
  $ cmp photo.png over/photo.png && cmp photo.png tree/photo.png && ls over
  photo-x-x.png
  photo-x.png
  photo-y.png
  photo.png
  photo.tiff

Sizes. What fills a box is the middle of the picture, resampled.

  $ while read size options; do
  >   rm -rf out && export_it photo.png -o out $options && [ $(exiftool -s3 -ImageSize out/photo.tiff) = $size ] || echo $options
  > done << END
  > 30x20 --percent 50
  > 90x60 --long-edge 90
  > 60x90 --long-edge 90 --turn 90
  > 60x40 --long-edge 90 --no-enlarge
  > 45x30 --fit 500x30
  > 120x80 --fit 120x90
  > 60x40 --fit 120x90 --no-enlarge
  > 20x33 --fill 20x33
  > 500x3 --fill 500x3
  > 20x40 --fill 50x100 --no-enlarge
  > 1x1 --fill 1x1
  > END
  $ oiiotool photo.png --cut 40x40+10+0 -o middle.png
  $ export_it photo.png -o fill --fill 20x20 && export_it middle.png -o fill --scale 0.5
  $ alike fill/photo.tiff fill/middle.tiff

Sharpening adds A (Y - G(Y)) to each channel: in a point of light and beside it.

  $ oiiotool --create 41x41 3 --fill:color=0.5,0.25,0.25 41x41 --fill:color=0.75,0.5,0.5 1x1+20+20 -d float -o point.tif
  $ export_it point.tif -o sharp --sharpen 1.5,0.8
  $ oiiotool --dumpdata sharp/point.tiff | sed 's/[(),:]/ /g' | awk '
  >   BEGIN { for (k = -9; k <= 9; k++) sum += g[k] = exp(-k * k / 2 / 0.64) }
  >   $2 == 20 && ($3 == 20 || $3 == 21) {
  >     print ($4 - ($3 == 20 ? 0.75 : 0.5) - 1.5 * 0.25 * (($3 == 20) - g[0] * g[$3 - 20] / sum ^ 2)) ^ 2 < 1e-9,
  >       ($4 - $5 - 0.25) ^ 2 < 1e-9
  >   }'
  1 1
  1 1

Encoders do what is wanted. Each change of a setting makes an output of its own, and the same settings keep it, with what
is known of the photograph.

  $ facts() { sed -E 's/.*("grey":[^,]*).*("lumaNoise":[^,]*).*("stored":[^]]*\]).*/\1 \2 \3/' line; }
  $ export_twice() { # OPTION…
  >   imageutils-workbench photo.png -o encoded --json "$@" > line && facts > first
  >   grep -o '"kept":false' line > kept && output=$(sed 's/.*"output":"\([^"]*\)".*/\1/' line)
  >   imageutils-workbench photo.png -o encoded --json "$@" > line && facts | diff first - && grep -q '"kept":true' line || echo lost
  > }
  $ while read options; do
  >   export_twice $options && identify -format "$options: %z %[jpeg:sampling-factor] %C %[interlace]\n" $output 2> said
  > done << END
  > --format jpg
  > --format jpg --progressive
  > --format jpg --subsampling 4:2:2
  > --format jpg --subsampling 4:2:0 --quality 50
  > --format webp --lossless
  > --format webp --quality 50
  > --compression none
  > --compression lzw
  > --compression packbits
  > --bit-depth 16
  > --bit-depth 32
  > --format png --bit-depth 16
  > --sharpen 1
  > --sharpen 1,0.6
  > --fit 30x20
  > --fill 30x20
  > --fill 30x20 --no-enlarge
  > --long-edge 30
  > END
  --format jpg: 8 1x1,1x1,1x1 JPEG None
  --format jpg --progressive: 8 1x1,1x1,1x1 JPEG JPEG
  --format jpg --subsampling 4:2:2: 8 2x1,1x1,1x1 JPEG None
  --format jpg --subsampling 4:2:0 --quality 50: 8 2x2,1x1,1x1 JPEG None
  --format webp --lossless: 8  Undefined None
  --format webp --quality 50: 8  Undefined None
  --compression none: 8  None None
  --compression lzw: 8  LZW None
  --compression packbits: 8  RLE None
  --bit-depth 16: 16  Zip None
  --bit-depth 32: 32  Zip None
  --format png --bit-depth 16: 16  Zip None
  --sharpen 1: 8  Zip None
  --sharpen 1,0.6: 8  Zip None
  --fit 30x20: 8  Zip None
  --fill 30x20: 8  Zip None
  --fill 30x20 --no-enlarge: 8  Zip None
  --long-edge 30: 8  Zip None
  $ cat first
  "grey":false "lumaNoise":false "stored":[60,40]
  $ alike photo.png encoded/photo.webp
  $ for format in jpg webp heic avif; do
  >   export_it photo.png -o fine --format $format && export_it photo.png -o coarse --format $format --quality 20
  >   [ $(stat -c %s fine/photo.$format) -gt $(($(stat -c %s coarse/photo.$format) * 3 / 2)) ] || echo $format
  > done
  $ while IFS=, read first second; do
  >   export_it photo.png -o idle $first && export_it photo.png -o idle $second; tail -n 1 table
  > done << END
  > --format png,--format png --quality 50
  > --format tif,--format tif --compression zip
  > --format webp --lossless,--format webp --lossless --quality 3
  > --format jpg,--format jpg --subsampling 4:4:4 --percent 100
  > END
  0 exported, 1 kept, 0 failed
  0 exported, 1 kept, 0 failed
  0 exported, 1 kept, 0 failed
  0 exported, 1 kept, 0 failed

JSON has a word for the kind of failure, and the step.

  $ true > empty.png && echo text > text.png
  $ imageutils-workbench --json missing.png empty.png text.png table photo.png -o codes --max-megapixels 1 \
  >   --scale 30 --format preserve 2> said | sed -E 's/.*"code":"([^"]*)".*"step":"([^"]*)".*/\1 \2/'
  missing header
  empty header
  unreadable header
  not-a-photograph header
  too-large header

Quality counts for formats that have one, and no other is exported again for it.

  $ for format in bmp dpx exr hdr jp2 ppm rla sgi tga; do
  >   export_it photo.png -o lossless --format $format && export_it photo.png -o lossless --format $format --quality 50
  >   tail -n 1 table
  > done | uniq
  0 exported, 1 kept, 0 failed

Without a display that can be reached, or threads, the program goes on without a window.

  $ DISPLAY=:4711 WAYLAND_DISPLAY= QT_QPA_PLATFORM= timeout 60 imageutils-workbench photo.png -o display | tail -n 1
  1 exported, 0 kept, 0 failed
  $ export DISPLAY=:4711 QT_QPA_PLATFORM= THREADS=0
  $ LD_PRELOAD=$NO_THREADS timeout 60 imageutils-workbench missing.png -o display 2> said | tail -n 1
  0 exported, 0 kept, 1 failed
