"""Stopping a running transform."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from contextlib import contextmanager

from ._core import cancel_function


@contextmanager
def cancel_when(asked: Callable[[], object]) -> Iterator[None]:
    """Asks a function at every attention poll of the transforms in a with block.

    A transform polls before every 16 rows and every 64 columns. None, False and 0 let it go on;
    another integer, or anything else that is true, stops it with mvStatusException, and an
    exception of the function leaves the transform as it is. The buffer must be filled again then.
    The function counts for the block's own thread, or task of asyncio; the function itself is not
    asked during transforms that it makes. Ctrl-C stops a transform also without it.

    >>> import numpy as np
    >>> with cancel_when(lambda: 7):
    ...     forward_fft(np.ones((64, 64)))
    Traceback (most recent call last):
    mvfreq.errors.mvStatusException: The operation failed with status 7.
    """
    token = cancel_function.set(asked)
    try:
        yield
    finally:
        cancel_function.reset(token)
