"""Pictures of several kinds, and a disk with little room."""

import io
import os

import numpy as np
from PIL import Image


def texture(width, height, seed):
    """Waves, noise and a spot, as doubles of 0 to 255."""
    y, x = np.mgrid[:height, :width]
    noise = np.random.default_rng(seed).normal(0, 6, (height, width))
    spot = 60 * np.exp(-((x - width / 3) ** 2 + (y - height / 2) ** 2) / 18)
    waves = 40 * np.sin(0.5 * x + 0.3 * seed) + 20 * np.cos(0.2 * x - 0.7 * y)
    return np.clip(128 + waves + spot + noise, 0, 255)


def _encoded(pels, kind):
    file = io.BytesIO()
    Image.fromarray(pels).save(file, kind)
    return file.getvalue()


def files():
    """Names and contents: pictures that every machine-vision folder has."""
    bytes_of = {}
    for seed, (width, height) in enumerate([(40, 30), (257, 120), (640, 480), (1100, 900)]):
        pels = texture(width, height, seed)
        grey = pels.astype(np.uint8)
        colour = np.stack([grey, grey[::-1], 255 - grey], axis=2)
        bytes_of[f"grey{width}.png"] = _encoded(grey, "PNG")
        bytes_of[f"deep{width}.png"] = _encoded((pels * 257).astype(np.uint16), "PNG")
        bytes_of[f"colour{width}.png"] = _encoded(colour, "PNG")
        bytes_of[f"colour{width}.jpg"] = _encoded(colour, "JPEG")
        bytes_of[f"grey{width}.tif"] = _encoded(grey, "TIFF")
        bytes_of[f"grey{width}.bmp"] = _encoded(grey, "BMP")
        bytes_of[f"grey{width}.pgm"] = _encoded(grey, "PPM")
    return bytes_of


def is_whole(content):
    """Whether a decoder of another maker finds nothing missing."""
    try:
        with Image.open(io.BytesIO(content)) as picture:
            picture.load()
        return True
    except Exception:  # Pillow raises all kinds
        return False


class SmallDisk:
    """A disk that others fill: only some of its bytes are left."""

    def __init__(self, folder):
        self.folder = folder

    def leave(self, room, name):
        """Fills the disk by a file of that name so that about `room` bytes are left."""
        state = os.statvfs(self.folder)
        free = state.f_bavail * state.f_frsize
        try:
            with open(os.path.join(self.folder, name), "wb", buffering=0) as file:
                os.posix_fallocate(file.fileno(), 0, max(1, free - room))
        except OSError:
            pass  # another has taken the room: it is full
