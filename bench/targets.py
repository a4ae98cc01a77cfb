# SPDX-License-Identifier: Apache-2.0
"""What is promised and aimed at, as ratios of the figures of one run."""
import collections

from figures import quotient

OURS = ["ours"]


class Promise(collections.namedtuple("Promise", "about words value limit most is_aim")):
    """`limit` is the most, or the least, that `value` may be; None where it was not measured."""

    def is_kept(self):
        return None if self.value is None else self.value <= self.limit if self.most else self.value >= self.limit


def at_most(about, words, limit, value, is_aim=False):
    return Promise(about, words, value, limit, True, is_aim)


def at_least(about, words, limit, value, is_aim=False):
    return Promise(about, words, value, limit, False, is_aim)


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
            yield at_most(about, "no longer than zimg on planes already apart", 1, zimg, True)
            if factor in ("to 0.5", "times 2"):
                yield at_most(about, "no longer than OpenCV's four taps", 1, ratio(OURS, ["OpenCV"]), True)
            if factor == "to 0.25":
                yield at_most(about, "48 megapixels take 4.3 times as long as 12", 4.3, quotient(
                    figures.seconds("resize to 0.25", OURS, size="48 MP", threads=threads),
                    figures.seconds("resize to 0.25", OURS, threads=threads)))

    work = "resize times 2, a second after the last"
    slowest = next((size for size in figures.sizes(work) if size.startswith("slowest")), None)
    yield at_most(work, "the slowest of 100 calls no longer than with memory page by page", 1, figures.ratio(
        work, OURS, ["memory"], size=slowest, memory="process"))


def pixels(figures):
    for work in ("splitChromaAlpha", "mergeChromaAlpha", "qimageToMat", "matToQImage"):
        yield at_most(work, "no longer than clone() of the larger side", 1, figures.ratio(work, OURS, ["clone()"]))
    for work in ("isMonochrome, grey float", "isMonochrome, grey 8 bit"):
        yield at_most(work, "1.3 times as long as reading the picture", 1.3, figures.ratio(work, OURS, ["reading"]))
    yield at_most("toMonochrome", "0.6 of the plain loop's time", 0.6, figures.ratio("toMonochrome", OURS, ["plain"]))
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
    kept = "imageSize, kept"
    yield at_most(kept, "1.1 times as long as QFileInfo::fileTime", 1.1, figures.ratio(kept, OURS, ["QFileInfo"]))
    yield at_most(kept, "1.5 times as long as stat", 1.5, figures.ratio(kept, OURS, ["stat"]), True)
    many = "imageSize, kept, 16,000 questions"
    yield at_most(many, "eight threads are done before one is", 1,
                  figures.ratio(many, ["ours, eight"], ["ours, one"]), True)


def processes(figures):
    def ratio(work, implementations, others):
        return figures.ratio(work, implementations, others, memory="process")

    yield at_most("start of a program", "no longer than with Qt and OpenCV's core alone, within a tenth", 1.1,
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


def promises(figures):
    return [promise for group in (resampling, pixels, values, sizes, processes) for promise in group(figures)]
