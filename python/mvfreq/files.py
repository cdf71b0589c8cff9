"""Archives in files."""

from __future__ import annotations

import contextlib
import os
import secrets
import shutil
from pathlib import Path
from typing import Union

from . import _core
from .errors import Errors

Storable = Union[_core.FrequencyBuffer, _core.FrequencyFilter, Errors]


def save(path: str | os.PathLike[str], obj: Storable) -> None:
    """Writes the archive of a frequency buffer, a filter or an error to a file.

    A file of that name is replaced when the new one is complete: a full disk or an interruption
    leaves the old one as it was. The program mvfreq applies saved filters.
    """
    data = _core.dumps(obj)
    target = Path(os.path.realpath(path))
    if target.exists() and not target.is_file():
        target.write_bytes(data)  # a device or a pipe takes the bytes as they come
        return
    try:
        _replace(target, data)
    except OSError as error:
        # Of the file beside it the caller knows nothing.
        error.filename, error.filename2 = os.fspath(path), None
        raise


def _replace(target: Path, data: bytes) -> None:
    # In the same folder, since only there a file takes another's place at once.
    beside = target.with_name(f".mvfreq-{secrets.token_hex(8)}.tmp")
    try:
        with open(beside, "xb") as file:
            file.write(data)
        with contextlib.suppress(FileNotFoundError):
            shutil.copymode(target, beside)
        os.replace(beside, target)
    except BaseException:
        with contextlib.suppress(OSError):
            beside.unlink()
        raise


def load(path: str | os.PathLike[str]) -> _core.FrequencyFilter | Errors | None:
    """The filter or the error in a file; raises what loads() raises, and OSError.

    A file with a frequency buffer is for load_buffer().
    """
    return _core.loads(Path(path).read_bytes())


def load_buffer(path: str | os.PathLike[str]) -> _core.FrequencyBuffer:
    """The frequency buffer in a file; raises what loads_buffer() raises, and OSError."""
    return _core.loads_buffer(Path(path).read_bytes())
