#!/usr/bin/env python3
"""image_suite.py PACKAGES FOLDER: gathers images of independent suites from the packages that are
unpacked in the one folder, and says what they look like by Pillow, a decoder that the device's has
nothing in common with.

FOLDER gets a copy of each image, the pixels of each that Pillow reads (NAME.rgba: red, green, blue,
alpha, row by row from the top), and two lists. suite.txt has a line for each of those:

    name width height depth transparent tolerance

where depth is the image's expected bits per pixel (0: any), transparent the last index of its palette
without opacity (-1: none), tolerance by how much the components may differ on average: decoders of
JPEG round and widen colours as they like. hostile.txt has the names of those that Pillow does not
read, or that were made to break decoders."""

import random
import shutil
import struct
import sys
import warnings
from pathlib import Path

from PIL import Image, ImageFile

PACKAGES = Path(sys.argv[1])
GO = PACKAGES / "images-go/usr/share/go-1.19/src/image"
MORE = PACKAGES / "images-more/usr/share/gocode/src/golang.org/x/image/testdata"
PIXBUF = PACKAGES / "images-pixbuf/usr/libexec/installed-tests/gdk-pixbuf/test-images"
KINDS = {".png", ".gif", ".jpeg", ".jpg", ".bmp", ".tif", ".tiff", ".ico"}
LARGEST = 200 * 1000  # bytes of a file: tests decode each many times
SUITES = {
    "png": GO / "png/testdata/pngsuite",
    "go": GO / "png/testdata",
    "jpeg": GO / "testdata",
    "more": MORE,
    "gif": PIXBUF / "gif-test-suite",
    "ref": PIXBUF / "reftests",
}
HOSTILE = {
    "fail": PIXBUF / "fail",
    "modified": PIXBUF / "randomly-modified",
}


def images_in(folder):
    if not folder.is_dir():
        sys.exit(f"{folder} is not there; ./zemvolt setup unpacks it")
    found = sorted(path for path in folder.iterdir() if path.suffix in KINDS)
    return [path for path in found if path.stat().st_size <= LARGEST]


def png_depth(data):
    bits, color = data[24], data[25]
    if color == 3 or (color == 0 and bits < 16):
        return 4 if bits == 2 else bits
    return 24 if color == 2 and bits == 8 and b"tRNS" not in data else 32


def bmp_depth(data):
    bits = struct.unpack_from("<H", data, 28)[0]
    return 32 if bits == 16 else bits


def depth_of(image, data):
    if image.format == "PNG":
        return png_depth(data)
    if image.format == "BMP":
        return bmp_depth(data)
    if image.format == "GIF":
        return 8
    if image.format == "JPEG":
        return {"L": 8, "RGB": 24}.get(image.mode, 32)
    return 0


def transparent_index(image):
    transparency = image.info.get("transparency")
    if image.mode not in ("1", "L", "P") or transparency is None:
        return -1
    if isinstance(transparency, int):
        return transparency
    return max((i for i, alpha in enumerate(transparency) if alpha == 0), default=-1)


def jpeg_tolerance(path):
    return 3 if ".rgb." in path.name else 2  # greens are fewer than pixels there, too


def to_rgba(image):
    if image.mode.startswith("I"):  # 16 bits of grey: the higher 8
        image = image.convert("I").point(lambda value: value * (1 / 256)).convert("L")
    return image.convert("RGBA")


def describe(path):
    """The line of suite.txt and the pixels, or None when Pillow does not read the image."""
    data = path.read_bytes()
    try:
        with Image.open(path) as image:
            frame = image.tile[0][1] if image.format == "GIF" and image.tile else None
            depth = depth_of(image, data)
            image.load()
            transparent = transparent_index(image)
            pixels = to_rgba(image)
            tolerance = jpeg_tolerance(path) if image.format == "JPEG" else 0
    except Exception:  # pylint: disable=broad-except
        return None
    if frame:  # the device shows the first picture alone, not the screen that it stands on
        pixels = pixels.crop(frame)
    if 0 in pixels.size:
        return None
    return (*pixels.size, depth, transparent, tolerance), pixels.tobytes()


def write_made(folder):
    """Images of an independent encoder, for what the suites lack."""
    numbers = random.Random(11)
    colors = Image.frombytes("RGB", (37, 23), numbers.randbytes(37 * 23 * 3))
    forms = {"1": colors.convert("1"), "L": colors.convert("L"), "RGB": colors,
             "P": colors.quantize(200), "RGBA": colors.copy()}
    forms["RGBA"].putalpha(colors.convert("L"))
    for mode in ("1", "L", "P", "RGB"):
        forms[mode].save(folder / f"made-{mode}.bmp")
        for method in ("raw", "tiff_lzw", "packbits", "tiff_adobe_deflate"):
            forms[mode].save(folder / f"made-{mode}-{method}.tiff", compression=method)
    square = forms["RGBA"].resize((32, 32))
    square.save(folder / "made.ico", sizes=[(32, 32)], bitmap_format="bmp")
    square.save(folder / "made-packed.ico", sizes=[(32, 32)])


def main(target):
    warnings.simplefilter("ignore")
    ImageFile.LOAD_TRUNCATED_IMAGES = False
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    for suites in (SUITES, HOSTILE):
        for name, folder in suites.items():
            for path in images_in(folder):
                shutil.copy(path, target / f"{name}-{path.name}")
    write_made(target)
    hostile = []
    with open(target / "suite.txt", "w", encoding="ascii") as suite:
        for path in sorted(path for path in target.iterdir() if path.suffix in KINDS):
            described = describe(path)
            if not described or path.name.split("-")[0] in HOSTILE or "-invalid-" in path.name:
                hostile.append(path.name)
                continue
            line, pixels = described
            path.with_name(path.name + ".rgba").write_bytes(pixels)
            print(path.name, *line, file=suite)
    (target / "hostile.txt").write_text("".join(name + "\n" for name in hostile), encoding="ascii")


main(Path(sys.argv[2]))
