What is up to date is kept, its record in the file (TIFF) or beside it (BMP); a file of the user's own is not written
over, other settings or a source that has changed get a file of their own.

  $ oiiotool --pattern noise:type=uniform:min=0:max=1 32x32 3 -d uint8 -o photo.png
  $ export_it() { imageutils-workbench --headless photo.png -o "$@" | sed -n '2s/.* //p; $p'; }
  $ for format in tiff bmp; do
  >   mkdir $format && echo mine > $format/photo.$format && touch photo.png
  >   export_it $format --format $format
  >   export_it $format --format $format
  >   export_it $format --format $format --scale 0.5
  >   export_it $format --format $format
  >   touch -d '3 days ago' photo.png
  >   export_it $format --format $format
  >   cat $format/photo.$format
  > done
  photo-2.tiff
  1 exported, 0 kept, 0 failed
  photo-2.tiff
  0 exported, 1 kept, 0 failed
  photo-3.tiff
  1 exported, 0 kept, 0 failed
  photo-2.tiff
  0 exported, 1 kept, 0 failed
  photo-4.tiff
  1 exported, 0 kept, 0 failed
  mine
  photo-2.bmp
  1 exported, 0 kept, 0 failed
  photo-2.bmp
  0 exported, 1 kept, 0 failed
  photo-3.bmp
  1 exported, 0 kept, 0 failed
  photo-2.bmp
  0 exported, 1 kept, 0 failed
  photo-4.bmp
  1 exported, 0 kept, 0 failed
  mine

Neither "%2" in a name nor a link that leads nowhere makes a new copy at every run.

  $ mkdir odd && cp photo.png 'odd/%2 %1.png' && cp photo.png odd/link.png
  $ mkdir names && ln -s nowhere names/link.tiff && ln -s nowhere names/link-2.tiff && touch 'names/%2 %1.tiff'
  $ imageutils-workbench --headless odd -o names > table
  $ imageutils-workbench --headless odd -o names > table
  $ ls names
  %2 %1-2.tiff
  %2 %1.tiff
  link-2.tiff
  link-3.tiff
  link.tiff

The folder of the source does not grow from run to run.

  $ mkdir grow && cp photo.png grow/
  $ for format in tiff tiff webp webp; do imageutils-workbench --headless grow -o grow --format $format > table; done
  $ ls grow | grep -v '[.]webp[.]workbench$'
  photo.png
  photo.tiff
  photo.webp
