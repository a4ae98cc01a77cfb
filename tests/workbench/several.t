Several photographs in work at once, in one process and in two: pictures of several formats, orientations and sizes, two
folders with the same names, two files that are none, and two named twice.

  $ noise() { oiiotool --pattern noise:type=uniform:min=0:max=1 "$1" $2 -d uint8 --attrib Orientation $3 -o "$4"; }
  $ mkdir a b
  $ while read i channels format; do
  >   noise $((300 + 100 * i))x200 $channels $i a/$i.$format
  >   noise $((310 + 100 * i))x200 $channels $i b/$i.$format
  > done << END
  > 0 3 jpg
  > 1 4 png
  > 2 3 jpg
  > 3 4 tif
  > 4 3 jpg
  > 5 4 png
  > 6 3 jpg
  > 7 4 tif
  > 8 3 jpg
  > END
  $ head -c 3000 a/0.jpg > half.jpg

The thread sanitizer cannot follow OpenCV's pool, which has no threads on one processor; the photographs' own threads are
there all the same.

  $ cpu=$(taskset -cp $$ | sed 's/.*: //; s/[-,].*//')
  $ [ -z "$TSAN_OPTIONS" ] || taskset -cp $cpu $$ > pinned

As many as there are processors, all at once, or in little memory: they give what one after the other gives.

  $ export_to() {
  >   imageutils-workbench --headless --json --scale 0.5 --format png -o "$@" \
  >     a/0.jpg a/1.png missing.jpg b/* half.jpg a/* a/0.jpg a/1.png > $1.json 2> $1.said
  >   echo $?
  >   sed -E -i 's/"milliseconds":\{[^}]*\}//; s/"output":"[^"]*\//"output":"/' $1.json
  > }
  $ export_to one --jobs 1
  1
  $ ls one | wc -l
  18
  $ wc -l < one.json
  24
  $ cat one.said
  missing.jpg: no such file
  half.jpg: ?* (glob)
  18 exported, 4 kept, 2 failed
  $ export_to several
  1
  $ export_to all --jobs 99
  1
  $ export_to little --jobs 8 --max-memory 9
  1
  $ for other in several all little; do
  >   diff -r one $other && diff one.json $other.json && diff one.said $other.said
  > done

Where each process can have few threads or none, photographs fail, but the program comes to its end and writes no other
picture.

  $ for threads in 99 16 8 2 0; do
  >   THREADS=$threads LD_PRELOAD=$NO_THREADS timeout 100 imageutils-workbench --headless a half.jpg -o threads$threads > table 2>&1; echo $?
  > done | uniq
  1
  $ ls threads99 | wc -l
  9
  $ for picture in threads*/*; do oiiotool $picture threads99/${picture##*/} --diff > differences || echo $picture; done

Two processes share a folder.

  $ imageutils-workbench --headless a -o shared --jobs 4 > a.table & imageutils-workbench --headless b -o shared --jobs 4 > b.table
  $ wait $!
  $ ls -A shared | wc -l
  18

Two that are asked for the same give one file of each picture.

  $ imageutils-workbench --headless a -o same > a.table & imageutils-workbench --headless a -o same > b.table
  $ wait $!
  $ ls -A same | wc -l
  9

A worker process that dies costs its photograph; the program that dies takes its workers and their unfinished files with
it; ended in the middle, also by two signals or because nobody
reads what it says, it leaves whole pictures alone and ends by the signal, as a shell wants to know.

  $ mkdir large
  $ noise 1200x900 3 1 large/0.png
  $ for i in $(seq 59); do ln -s 0.png large/$i.png; done
  $ workers() { ps -o pid= --ppid $program; }
  $ start() { # FOLDER FILE…: until the first picture is there
  >   imageutils-workbench --headless "${@:2}" -o $1 > table 2> said & program=$!
  >   until [ "$(ls $1 2>&-)" ]; do sleep 0.05; done
  >   started=$(workers)
  > }
  $ start hit large/1*
  $ until [ -s said ]; do kill -KILL $(workers | head -n 1) 2>&-; sleep 0.5; done
  $ wait $program
  [1]
  $ sed 's/.*[0-9].png: the .*\(was killed\)/\1/' said | sort -u
  was killed, perhaps for want of memory
  $ start gone large
  $ kill -KILL $program; wait $program 2> killed
  [137]
  $ for worker in $started; do while kill -0 $worker 2>&-; do sleep 0.05; done; done
  $ start ended large
  $ kill $program; kill $program
  $ wait $program
  [143]
  $ for worker in $started; do while kill -0 $worker 2>&-; do sleep 0.05; done; done
  $ tail -n 1 table
  * exported, 0 kept, * (glob)
  $ imageutils-workbench --headless large -o piped | head -n 1 > table; echo ${PIPESTATUS[0]}
  1
  $ [ $(ls -A ended | wc -l) -lt 60 ]
  $ ls -A hit gone ended piped | grep '^\.'
  [1]
  $ for picture in {hit,gone,ended,piped}/*; do oiiotool $picture large/0.png --diff > differences || echo $picture; done

A terminal sees what is done and what is in work.

  $ TERM=xterm script -qec 'imageutils-workbench --headless -o progress a' /dev/null < /dev/null > terminal
  $ grep -q '[1-9] of 9 done, [a-z]* [0-9]\.' terminal
