"""Filters a picture that is larger than memory, on several processes or machines.

    python3 larger_than_memory.py PICTURE.npy RESULT.npy

Dask cuts the picture into blocks, brings each to a worker with a margin of its neighbours, and lays
down what comes back. The pels are those of mvfreq.filter_image, bit by bit.
"""

import sys

import dask
import dask.array as da
import distributed
import mvfreq
import numpy as np


class NpyFile:
    """A picture in a .npy file. Its name travels, not its pels: workers open the part they need."""

    def __init__(self, path):
        picture = np.load(path, mmap_mode="r")
        self.path, self.shape, self.ndim, self.dtype = str(path), picture.shape, 2, picture.dtype

    def __getitem__(self, place):
        return np.array(np.load(self.path, mmap_mode="r")[place])

    def __setitem__(self, place, pels):
        np.load(self.path, mmap_mode="r+")[place] = pels


PLANES = 4  # that a block has along an axis: fewer blocks leave Dask less to do


def core(side, reach):
    """How many pels along an axis a plane gives beside its two margins."""
    return side - 2 * min(reach, side // 4)


def cut(length, side, reach):
    """How filter_image cuts an axis: the margin, what is padded before and behind, the blocks."""
    step = core(side, reach)
    margin = (side - step) // 2
    if length + 2 * margin <= side:
        return 0, (0, 0), (length,)
    planes = -(-length // step)
    behind = planes * step - length + margin
    if behind > length:
        raise ValueError("The picture is hardly larger than a plane: filter_image takes it at once.")
    blocks = [step * min(PLANES, planes - first) for first in range(0, planes, PLANES)]
    blocks[0] += margin
    blocks[-1] += margin
    return margin, (margin, behind), tuple(blocks)


def filter_block(block, filter, margins, out):
    """The planes of a block, one by one. What a plane needs around its core is in the block."""
    (rows, columns), (down, right) = mvfreq.filter_plane(filter)[::-1], margins
    result = np.empty(block.shape, out)
    for y in range(0, block.shape[0] - 2 * down, rows - 2 * down):
        for x in range(0, block.shape[1] - 2 * right, columns - 2 * right):
            plane = mvfreq.filter_image(
                block[y : y + rows, x : x + columns], filter, out, margin=0
            )
            inner = plane[down : rows - down, right : columns - right]
            result[y + down : y + rows - down, x + right : x + columns - right] = inner
    return result


def filtered(picture, filter, out=np.uint8):
    """The dask array of what mvfreq.filter_image(picture, filter, out) gives."""
    plane, reach = mvfreq.filter_plane(filter)[::-1], mvfreq.filter_reach(filter)[::-1]
    margins, padding, blocks = zip(*map(cut, picture.shape, plane, reach))
    padded = da.pad(picture, padding, mode="symmetric").rechunk(blocks)
    result = da.map_overlap(
        filter_block, padded, depth=margins, boundary="none", dtype=out,
        meta=np.empty((0, 0), out), filter=dask.delayed(filter), margins=margins, out=out,
    )
    return result[tuple(slice(m, m + n) for m, n in zip(margins, picture.shape))]


def filter_file(source, target, filter):
    """Filters one file into another; each worker reads and writes the blocks that it works on."""
    cores = map(core, mvfreq.filter_plane(filter), mvfreq.filter_reach(filter))
    picture = da.from_array(NpyFile(source), chunks=[PLANES * side for side in cores][::-1])
    np.lib.format.open_memmap(target, "w+", np.uint8, picture.shape)
    da.store(filtered(picture, filter), NpyFile(target), lock=False)


if __name__ == "__main__":
    ring = mvfreq.FrequencyFilterBandPass(
        sigma=0.012, plateau=0.0, frequency=0.03, size=(1024, 1024), dc_removal_radius=1
    )
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1) as cluster:
        with distributed.Client(cluster):
            filter_file(sys.argv[1], sys.argv[2], ring)
