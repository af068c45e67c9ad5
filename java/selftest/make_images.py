#!/usr/bin/env python3
"""Makes the image files that the self-test decodes, in the folder images."""

import pathlib

from PIL import Image

FOLDER = pathlib.Path(__file__).parent / "images"
SIZE = WIDTH, HEIGHT = 16, 12


def colored(mode, components):
    image = Image.new(mode, SIZE)
    image.putdata([(x * 16, y * 20, (x ^ y) * 16, (x + y) * 9)[:components]
                   for y in range(HEIGHT) for x in range(WIDTH)])
    return image


def indexed(colors):
    image = Image.new("P", SIZE)
    image.putpalette([value for i in range(colors)
                      for value in (i * 255 // (colors - 1), 255 - i * 200 // colors, i * 7 % 256)])
    image.putdata([(x + y * 3) * 5 % colors for y in range(HEIGHT) for x in range(WIDTH)])
    return image


def main():
    colored("RGB", 3).save(FOLDER / "bmp-24.bmp")
    colored("RGB", 3).convert("1", dither=Image.Dither.NONE).save(FOLDER / "bmp-1.bmp")
    indexed(200).save(FOLDER / "bmp-8.bmp")
    for bits, colors in ((1, 2), (2, 4), (4, 16), (8, 200)):
        indexed(colors).save(FOLDER / ("png-%d.png" % bits), bits=bits)
    colored("RGB", 3).save(FOLDER / "png-24.png")
    colored("RGBA", 4).save(FOLDER / "png-32.png")
    colored("RGB", 3).convert("L").save(FOLDER / "png-grey.png")
    indexed(200).save(FOLDER / "gif-8.gif")
    indexed(200).save(FOLDER / "gif-transparent.gif", transparency=5)
    colored("RGB", 3).resize((24, 24), Image.Resampling.BILINEAR).save(FOLDER / "jpeg.jpg", quality=90)


main()
