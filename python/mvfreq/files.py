"""Archives in files."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Union

from . import _core
from .errors import Errors

Storable = Union[_core.FrequencyBuffer, _core.FrequencyFilter, Errors]


def save(path: str | os.PathLike[str], obj: Storable) -> None:
    """Writes the archive of a frequency buffer, a filter or an error to a file.

    The program mvfreq applies saved filters.
    """
    Path(path).write_bytes(_core.dumps(obj))


def load(path: str | os.PathLike[str]) -> _core.FrequencyFilter | Errors | None:
    """The filter or the error in a file; raises what loads() raises, and OSError.

    A file with a frequency buffer is for load_buffer().
    """
    return _core.loads(Path(path).read_bytes())


def load_buffer(path: str | os.PathLike[str]) -> _core.FrequencyBuffer:
    """The frequency buffer in a file; raises what loads_buffer() raises, and OSError."""
    return _core.loads_buffer(Path(path).read_bytes())
