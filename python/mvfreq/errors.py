"""The exceptions of the library: the class tree of C++ under the same names."""

from __future__ import annotations


class mvException(Exception):
    """The root of everything the library raises on its own account."""

    error_number = 0
    """The number of the error's class; 0 for a class that has none."""


class mvExceptionWithString(mvException):
    """An exception with a text, or without one."""

    @property
    def message(self) -> str | None:
        """The text, or None when there is none."""
        return self.args[0] if self.args else None


class mvStatusException(mvException):
    """A failing status of the attention signal, such as that of a cancel function."""

    def __init__(self, status: int) -> None:
        """Keeps the status."""
        super().__init__(status)
        self.status = status

    def __str__(self) -> str:
        return f"The operation failed with status {self.status}."


class Errors(mvExceptionWithString):
    """What every error of the frequency library is."""


class InvalidArgument(Errors, ValueError):
    """A parameter out of its range."""

    error_number = 0x10006300


class Uninitialized(Errors):
    """A buffer without data, or a filter without response."""

    error_number = 0x10006301


class InvalidSize(Errors, ValueError):
    """A size that is not supported, or sizes that do not match."""

    error_number = 0x10006302


class UnboundWindow(Errors):
    """A PelBuffer without pels; it has no message."""

    error_number = 0x10006303


class InvalidBuffer(Errors):
    """Frequency data asked of a buffer that an inverse transform has overwritten."""

    error_number = 0x10006304


class BadCoord(Errors, IndexError):
    """Coordinates outside the plane."""

    error_number = 0x10006305


class UnknownVersion(mvException):
    """An archive's record of a version that the library does not know."""

    def __init__(self, text: str | None, number: int) -> None:
        """Where the version was met, if that is known, and a line number or 0."""
        super().__init__(text, number)
        self.text = text
        self.number = number

    def __str__(self) -> str:
        place = "" if self.text is None else f" ({self.text}, {self.number})"
        return f"The archive holds a record of an unknown version{place}."


class Truncated(mvExceptionWithString, EOFError):
    """An archive that ends early."""


class BadValue(mvExceptionWithString, ValueError):
    """A value that an archive cannot hold, or bytes that stand for no value."""


class UnknownClass(mvExceptionWithString):
    """An archive's object of a class that is not registered."""


class WriteFailed(mvExceptionWithString):
    """An archive that could not be written."""
