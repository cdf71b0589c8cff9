"""How values become grey levels."""

from enum import IntEnum


class FrequencyMapping(IntEnum):
    """How frequency_map_image turns floats into bytes.

    CLIP clips to 0 .. 255; AUTO_SCALE is linear by the image's own range, RANGE by the caller's;
    LOG is logarithmic by the image's own range; ANGLE is radians times 255 / (2 pi).
    """

    CLIP = 0
    AUTO_SCALE = 1
    RANGE = 2
    LOG = 3
    ANGLE = 4
