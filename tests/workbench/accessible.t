A screen reader finds every control of the window by its role and name, and Tab goes through all of them and back. At a pixel
ratio of 2 the window still fits on the screen.

  $ convert -size 400x300 gradient:red-blue photo.png
  $ QT_SCALE_FACTOR=2 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 imageutils-workbench photo.png > said 2>&1 &
  $ accessible-walk imageutils-workbench
  list: Photographs
  image: Photograph before and after export, at 100 %
  slider: Divider between before and after
  text: Name of the preset
  button: Reset Size
  combo box: Kind of size
  button: Reset Filter
  text: Filter parameter B
  text: Filter parameter C
  button: Reset Format
  combo box: Format
  button: Reset Bits per channel
  combo box: Bits per channel
  button: Reset Compression
  combo box: Compression
  button: Reset Colours
  combo box: Colour profile
  button: Reset Rendering intent
  combo box: Rendering intent
  button: Reset Metadata
  combo box: Metadata
  button: Reset Name
  text: Name of exported photographs
  text: Folder for exported photographs
  button: Choose …
  button: Open
  combo box: How before and after are compared
  button: Fit
  button: 100 %
  check box: Crop
  button: Export all
  button: Export
  check box: Settings
  button: More
  text: Filter by name
  combo box: Which photographs are listed
  combo box: Order of the photographs
  $ xdotool search --onlyvisible --name Workbench getwindowgeometry --shell |
  >   awk -F = '/^WIDTH/ { print "width", $2 <= 2304 } /^HEIGHT/ { print "height", $2 <= 800 }'
  width 1
  height 1
  $ kill %1; wait; sed /^AtSpiAdaptor/d said
