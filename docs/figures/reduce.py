#!/usr/bin/env python3
"""Makes a large picture small enough to be shown.

    reduce.py PICTURE SMALL FACTOR mean|max     max keeps bright spots as bright as they are
"""
import sys

import numpy as np
from PIL import Image


def main(picture, small, factor, how):
    factor = int(factor)
    image = Image.open(picture)
    size = image.width // factor, image.height // factor
    if how == "max":
        pels = np.asarray(image)[: size[1] * factor, : size[0] * factor]
        reduced = pels.reshape(size[1], factor, size[0], factor).max(axis=(1, 3))
        image = Image.fromarray(reduced)
    else:
        image = image.resize(size, Image.Resampling.LANCZOS)
    if image.mode == "RGB":
        image = image.quantize(96, Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE)
    image.save(small, optimize=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
