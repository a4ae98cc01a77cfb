# SPDX-License-Identifier: Apache-2.0
"""The performance targets, as ratios of the figures of one run: those that must hold, and goals beyond them."""
import collections

from figures import quotient

OURS = ["ours"]


class Target(collections.namedtuple("Target", "about words value limit most is_goal")):
    """`limit` is the largest (`most`) or smallest allowed `value`. A value that was not measured is None."""

    def is_met(self):
        return None if self.value is None else self.value <= self.limit if self.most else self.value >= self.limit


def at_most(about, words, limit, value, is_goal=False):
    return Target(about, words, value, limit, True, is_goal)


def at_least(about, words, limit, value, is_goal=False):
    return Target(about, words, value, limit, False, is_goal)


def resampling(figures):
    for factor in ("to 0.25", "to 0.37", "to 0.5", "times 2"):
        for threads in (1, 2):
            def ratio(implementations, others):
                return figures.ratio("resize " + factor, implementations, others, threads=threads)

            about = f"resize {factor}, {threads} thread" + "s" * (threads > 1)
            interleaved = ratio(["stb_image_resize", "libvips"], OURS)
            zimg = ratio(OURS, ["zimg, planes"])
            yield at_least(about, "the best library for interleaved floats takes 3 times as long", 3, interleaved)
            yield at_least(about, "… 5 times as long", 5, interleaved, True)
            yield at_least(about, "OpenImageIO takes 15 times as long", 15, ratio(["OpenImageIO"], OURS))
            yield at_most(about, "no longer than zimg on separate planes", 1, zimg, True)
            if factor in ("to 0.5", "times 2"):
                yield at_most(about, "no longer than OpenCV's four taps", 1, ratio(OURS, ["OpenCV"]), True)
            if factor == "to 0.25":
                yield at_most(about, "48 megapixels take 4.3 times as long as 12", 4.3, quotient(
                    figures.seconds("resize to 0.25", OURS, size="48 MP", threads=threads),
                    figures.seconds("resize to 0.25", OURS, threads=threads)))

    work = "resize times 2, a second after the last"
    slowest = next((size for size in figures.sizes(work) if size.startswith("slowest")), None)
    yield at_most(work, "the slowest of 100 calls takes no longer than without prefaulting", 1, figures.ratio(
        work, OURS, ["without"], size=slowest, memory="process"))


def pixels(figures):
    for work in ("splitChromaAlpha", "mergeChromaAlpha", "qimageToMat", "matToQImage"):
        yield at_most(work, "no longer than clone() of the larger side", 1, figures.ratio(work, OURS, ["clone()"]))
    for work in ("isMonochrome, grey float", "isMonochrome, grey 8 bit"):
        yield at_most(work, "1.3 times as long as reading the picture", 1.3, figures.ratio(work, OURS, ["reading"]))
    yield at_most("toMonochrome", "0.6 of the scalar loop's time", 0.6, figures.ratio("toMonochrome", OURS, ["scalar"]))
    for work, limit in (("isLumaNoise, float", 0.2), ("isLumaNoise, 8 bit", 0.4)):
        yield at_most(work, f"{limit} of OpenCV's calls on the whole picture", limit,
                      figures.ratio(work, OURS, ["OpenCV's calls"]))
    work = "convert, 8 bit to float"
    yield at_most(work, "as long as convertTo, within a tenth", 1.1, figures.ratio(work, OURS, ["cv::Mat::convertTo"]))


def values(figures):
    for work in ("base64Encode", "base64Decode"):
        yield at_most(work, "1.4 times as long as memcpy of the text", 1.4, figures.ratio(work, OURS, ["memcpy"]))
        yield at_most(work, "no longer than any other library", 1,
                      figures.ratio(work, OURS, ["modp", "OpenSSL", "QByteArray"]))
    for work in ("serializeMat, whole", "serializeMat, view"):
        yield at_most(work, "1.1 times as long as memcpy", 1.1, figures.ratio(work, OURS, ["memcpy"]))
    yield at_least("hashParams", "QDataStream and a hash take 3 times as long", 3,
                   figures.ratio("hashParams", ["QDataStream"], OURS))


def sizes(figures):
    for work in ("imageSize, JPEG in one scan", "imageSize, JPEG in several scans"):
        yield at_most(work, "3 times as long as QImageReader", 3, figures.ratio(work, OURS, ["QImageReader"]))
    for work in ("imageSize, HEIC", "imageSize, AVIF", "imageSize, JPEG 2000"):
        yield at_least(work, "OpenImageIO takes 200 times as long", 200, figures.ratio(work, ["OpenImageIO"], OURS))
    cached = "imageSize, cached"
    yield at_most(cached, "1.1 times as long as QFileInfo::fileTime", 1.1, figures.ratio(cached, OURS, ["QFileInfo"]))
    yield at_most(cached, "1.5 times as long as stat", 1.5, figures.ratio(cached, OURS, ["stat"]), True)
    many = "imageSize, cached, 16,000 calls"
    yield at_most(many, "eight threads take no longer than one", 1,
                  figures.ratio(many, ["ours, eight"], ["ours, one"]), True)


def processes(figures):
    def ratio(work, implementations, others):
        return figures.ratio(work, implementations, others, memory="process")

    yield at_most("start of a program", "1.5 times as long as with Qt and OpenCV's core alone", 1.5,
                  ratio("start of a program", OURS, ["Qt and"]))
    job = "main job"
    batch = next(iter(figures.sizes(job)), None)
    parts = figures.lines(job, ["ours: decode", "ours: encode"], size=batch)
    alone = sum(part.least for part in parts) / parts[0].threads if parts else None
    yield at_most(job, "no longer than vips resize", 1, ratio(job, OURS, ["vips resize"]))
    yield at_least(job, "oiiotool takes 4 times as long", 4, ratio(job, ["oiiotool"], OURS))
    yield at_most(job, "less memory at its peak than oiiotool", 1,
                  quotient(figures.peak(job, "ours", batch), figures.peak(job, "oiiotool", batch)))
    yield at_most(job, "1.15 times as long as its decoding and encoding, shared by the cores", 1.15,
                  quotient(figures.seconds(job, OURS, memory="process"), alone), True)


def targets(figures):
    return [target for group in (resampling, pixels, values, sizes, processes) for target in group(figures)]
