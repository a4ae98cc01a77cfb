# SPDX-License-Identifier: Apache-2.0
"""A plot of one run: a row for each workload, a mark for each implementation, at its time as a multiple of ours."""
import math
from xml.sax.saxutils import escape

LEFT, RIGHT, TOP, ROW, WIDTH = 250, 130, 96, 24, 1000
LEAST, MOST = 0.1, 100
TICKS = (0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100)
# By the beginning of the implementation's name: what the legend says, colour, and shape.
KINDS = [
    (("scalar", "OpenCV's calls"), "scalar loops", "#111111", "square"),
    (("OpenCV", "cv::"), "OpenCV", "#0072b2", "circle"),
    (("OpenImageIO", "oiiotool"), "OpenImageIO", "#d55e00", "circle"),
    (("libvips", "vips"), "libvips", "#009e73", "circle"),
    (("zimg, planes",), "zimg, separate planes", "#cc79a7", "circle"),
    (("zimg, with",), "zimg, with copies", "#cc79a7", "ring"),
    (("stb",), "stb_image_resize", "#e69f00", "circle"),
    (("QImageReader", "QByteArray"), "Qt", "#56b4e9", "circle"),
    (("modp", "libheif", "ImageMagick"), "modp, libheif, ImageMagick", "#8b5a2b", "circle"),
    (("OpenSSL",), "OpenSSL", "#7f3fbf", "circle"),
    (("",), "other work (copying, reading …)", "#888888", "bar"),
]


def kind_of(line):
    name = "" if line.role == "yardstick" else line.implementation
    return next(kind for kind in KINDS if name.startswith(kind[0]))


def x_of(ratio):
    share = math.log(min(max(ratio, LEAST), MOST) / LEAST) / math.log(MOST / LEAST)
    return LEFT + share * (WIDTH - LEFT - RIGHT)


def text(x, y, words, extra=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" {extra}>{escape(words)}</text>'


def mark(x, y, kind, title):
    _, _, colour, shape = kind
    shapes = {
        "circle": f'<circle cx="{x:.1f}" cy="{y}" r="5" fill="{colour}" fill-opacity="0.85"',
        "ring": f'<circle cx="{x:.1f}" cy="{y}" r="4.5" fill="none" stroke="{colour}" stroke-width="2"',
        "square": f'<rect x="{x - 4.5:.1f}" y="{y - 4.5}" width="9" height="9" fill="none" stroke="{colour}" '
                  'stroke-width="1.6"',
        "bar": f'<rect x="{x - 1.5:.1f}" y="{y - 8}" width="3" height="16" fill="{colour}"',
    }
    return f'{shapes[shape]}><title>{escape(title)}</title></{"circle" if shape in ("circle", "ring") else "rect"}>'


def legend():
    parts = []
    for number, kind in enumerate(KINDS):
        x, y = 20 + number % 5 * 195, 40 + number // 5 * 16
        parts += [mark(x, y, kind, kind[1]), text(x + 10, y + 4, kind[1])]
    return parts


def axis(bottom):
    parts = []
    for tick in TICKS:
        x = x_of(tick)
        colour, width = ("#c00000", 1.5) if tick == 1 else ("#dddddd", 1)
        parts += [f'<line x1="{x:.1f}" y1="{TOP}" x2="{x:.1f}" y2="{bottom}" stroke="{colour}" '
                  f'stroke-width="{width}"/>', text(x, bottom + 16, f"{tick:g}", 'text-anchor="middle"')]
    return parts


def row(y, workload, lines):
    """The marks of one workload; those beyond the edges are named at the right, by least and most."""
    ours = next(line.least for line in lines if line.role == "ours")
    parts = [text(LEFT - 12, y + 4, workload, 'text-anchor="end"')]
    beyond = []
    for line in lines:
        if line.role in ("ours", "part"):
            continue
        ratio = line.least / ours
        if not LEAST <= ratio <= MOST:
            beyond.append(ratio)
        parts.append(mark(x_of(ratio), y, kind_of(line), f"{line.implementation}: {ratio:.3g} times as long as ours"))
    if beyond:
        numbers = " … ".join(f"{ratio:,.0f}" if ratio > 1 else f"{ratio:.1g}"
                             for ratio in sorted({min(beyond), max(beyond)}))
        parts.append(text(WIDTH - RIGHT + 10, y + 4, "× " + numbers))
    return parts


def drawn(lines):
    """The SVG: of each workload the first circumstances that were measured."""
    rows = {}
    for line in lines:
        place = rows.setdefault(line.workload, (line[1:4], []))
        if place[0] == line[1:4]:
            place[1].append(line)
    bottom = TOP + ROW * len(rows)
    height = bottom + 44
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" '
             f'height="{height}" font-family="sans-serif" font-size="12">',
             f'<rect width="{WIDTH}" height="{height}" fill="white"/>',
             text(20, 22, "How many times as long as ours the others take, one thread, fresh memory: right of the red "
                          "line ours is faster", 'font-size="14"'),
             *legend(), *axis(bottom)]
    for number, (workload, (_, of_workload)) in enumerate(rows.items()):
        parts += row(TOP + ROW * number + ROW // 2, workload, of_workload)
    parts += [text(x_of(1), height - 8, "times as long as ours (logarithmic)", 'text-anchor="middle"'), "</svg>"]
    return "\n".join(parts) + "\n"
