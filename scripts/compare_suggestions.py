#!/usr/bin/env python3
"""Compares the proposals with an exhaustive search, over all textures; prints the table and makes
the pictures of docs/suggest.md.

    compare_suggestions.py [PICTURE.png]

Needs numpy, the built module mvfreq and, for the picture, Pillow. Takes minutes.
"""
import sys
import warnings

import mvfreq
import numpy as np

import make_textures
import suggestion_search

SHOWN = 64  # pels of a thumbnail


def contrast(measure, ring, radius):
    return measure.answer(ring, radius) / measure.background(ring)


def thumbnail(pels):
    step = pels.shape[0] // SHOWN
    return pels[:SHOWN * step, :SHOWN * step].reshape(SHOWN, step, SHOWN, step).mean((1, 3))


def result(bad, ring):
    """What the proposal leaves of the picture, its brightest thousandth white."""
    found = mvfreq.filter_image(bad, ring, out=float)
    return np.clip(found / np.quantile(found, 0.999) * 255, 0, 255)


def rows():
    for name, radius, planted, good, bad in make_textures.textures():
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            proposal = mvfreq.suggest(good, radii=[radius])[0]
        measure = suggestion_search.Measure(good)
        best, ring = suggestion_search.search(good, [radius])[radius]
        share = contrast(measure, proposal.filter, radius) / best
        is_one = "then" not in proposal.arguments
        options = " ".join(proposal.arguments[1:] if is_one else proposal.arguments)
        print(f"| {name.replace('_', ' ')} | {radius} | {proposal.levels:.3g} | {planted} | "
              f"`{options}` | {share:.2f} |", flush=True)
        yield np.vstack([thumbnail(bad), thumbnail(result(bad, proposal.filter))])


def main():
    print("| surface | radius | grey levels | planted | proposed | of the best ring |\n"
          "|---|---|---|---|---|---|")
    pictures = list(rows())
    if len(sys.argv) > 1:
        from PIL import Image

        half = (len(pictures) + 1) // 2
        lines = [np.hstack(pictures[:half]), np.hstack(pictures[half:])]
        Image.fromarray(np.vstack(lines).astype(np.uint8)).quantize(32).save(sys.argv[1], optimize=True)


if __name__ == "__main__":
    main()
