"""A walk through mvfreq with pictures: run it, or step through its cells in an editor.

    python3 tutorial.py FOLDER      writes the pictures into FOLDER
"""

# %% What is needed: numpy, and Pillow for files and for pictures.
import sys
from pathlib import Path

import mvfreq
import numpy as np
from PIL import Image, ImageDraw

folder = Path(sys.argv[1] if len(sys.argv) > 1 else "tutorial")
folder.mkdir(parents=True, exist_ok=True)
pictures = Path(__file__).resolve().parents[2] / "examples" / "pictures"


def show(name, **images):
    """Writes images side by side, each under its title."""
    height, width = next(iter(images.values())).shape
    sheet = Image.new("L", (len(images) * (width + 8), height + 16), 255)
    for column, (title, image) in enumerate(images.items()):
        sheet.paste(Image.fromarray(image), (column * (width + 8), 16))
        ImageDraw.Draw(sheet).text((column * (width + 8), 2), title.replace("_", " "), fill=0)
    sheet.save(folder / name)


def grey(image):
    """An image of any range over all grey levels."""
    return mvfreq.frequency_map_image(
        np.ascontiguousarray(image, np.float64) - image.min(), mvfreq.FrequencyMapping.AUTO_SCALE
    )


# %% 1. Find the defects of a cloth.
# Its weave and the uneven light are frequencies that a ring around 0.03 cycles per pixel leaves
# out; what is left are the slack thread, the stain and the rubbed spot.
# The cloth may have any size; what stands around it is its own mirror image.
cloth = np.asarray(Image.open(pictures / "woven.png").convert("L"))
ring = mvfreq.FrequencyFilterBandPass(
    sigma=0.012, plateau=0.0, frequency=0.03, size=(1024, 1024), dc_removal_radius=1
)
defects = mvfreq.filter_image(cloth, ring, rescale=True)
show("1-before-and-after.png", cloth=cloth, defects=defects)

# %% 2. Look at the spectrum.
# The view is the plane itself, no copy. numpy's order and numpy's functions fit.
spectrum = mvfreq.forward_fft(cloth)
view = spectrum.spectrum_view()
print("the mean grey level is", view[0, 0].real / cloth.size)
levels = np.fft.fftshift(np.log1p(np.abs(view)))
gains = mvfreq.FrequencyBuffer(*spectrum.size)
gains.spectrum_view()[:] = 1
ring.size = gains.size  # a filter is built for one padded size
ring.apply(gains)
show(
    "2-spectrum.png",
    spectrum_of_the_cloth=grey(levels),
    what_the_ring_keeps=grey(gains.get_magnitude_image(centred=True)),
)
# As long as a view exists, the buffer cannot be filled again.
try:
    mvfreq.forward_fft(cloth, dst=spectrum)
except BufferError as error:
    print("refused:", error)
del view

# %% 3. See directions.
# A Gabor filter keeps one lobe, so its result is complex: the magnitude shows how strong the
# pattern is at each place, the angle where in its period the place is.
rows, columns = np.mgrid[0:256, 0:256]
stripes = np.where(
    columns < 128, np.cos(2 * np.pi * columns / 16), np.cos(2 * np.pi * rows / 16)
)
found = {}
for title, angle in {"along_x": 0.0, "along_y": np.pi / 2}.items():
    spectrum = mvfreq.forward_fft(stripes)
    mvfreq.FrequencyFilterGabor(
        sigma=(0.01, 0.01), plateau=(0, 0), angle=angle, frequency=1 / 16,
        size=spectrum.size, dc_removal_radius=1,
    ).apply(spectrum)
    found[title] = grey(mvfreq.inverse_fft(spectrum))
show("3-directions.png", stripes=grey(stripes), **found)

# %% 4. Sharpen with a kernel of your own.
# An image filter multiplies by any spectrum: here that of a 3 x 3 kernel, its middle at (0, 0).
print_ = np.asarray(Image.open(pictures / "printed.png").convert("L"))
spectrum = mvfreq.forward_fft(print_)
kernel = np.zeros(spectrum.size[::-1])
kernel[0, 0] = 5
kernel[[0, 0, 1, -1], [1, -1, 0, 0]] = -1
mvfreq.FrequencyFilterImage(mvfreq.forward_fft(kernel)).apply(spectrum)
sharp = mvfreq.inverse_fft(spectrum, np.uint8)
show("4-sharpened.png", print=print_, sharpened=sharp)

# %% 5. Make an image smaller without false patterns.
# The reduced copy keeps the lowest frequencies; the magnitudes are those of the larger plane.
spectrum = mvfreq.forward_fft(print_)
width, height = spectrum.size
small = mvfreq.inverse_fft(mvfreq.FrequencyBuffer(spectrum, width // 2, height // 2)) / 4
framed = np.zeros_like(print_)
framed[: small.shape[0], : small.shape[1]] = np.clip(small, 0, 255)
show("5-smaller.png", print=print_, half_the_size=framed)

# %% 6. Keep a recipe, and stop what takes too long.
mvfreq.save(folder / "ring.mva", ring)
print("the recipe:", mvfreq.load(folder / "ring.mva"))
(folder / "ring.mva").unlink()
try:
    with mvfreq.cancel_when(lambda: True):
        mvfreq.forward_fft(cloth)
except mvfreq.mvStatusException as error:
    print("stopped:", error)
