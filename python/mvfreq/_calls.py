"""Functions of the compiled part as Python knows its own: signatures that can be asked for, and
errors that say which argument is wrong."""

import ast
import functools
import inspect
import operator
import re

_REFUSED = re.compile(r"incompatible (function|constructor) arguments")


def _is_number(value):
    return isinstance(value, (int, float)) or hasattr(value, "__float__") or _is_whole(value)


def _is_complex(value):
    return isinstance(value, complex) or hasattr(value, "__complex__") or _is_number(value)


def _is_whole(value):
    try:
        operator.index(value)
    except TypeError:
        return False
    return True


def _are_two(is_one):
    def check(value):
        try:
            return len(value) == 2 and all(is_one(each) for each in value)
        except TypeError:
            return False

    return check


# What the compiled part says of an argument: what it must be, in words, and whether a value is that.
_KINDS = {
    "float": ("a number", _is_number),
    "complex": ("a number", _is_complex),
    "int": ("a whole number", _is_whole),
    "bool": ("True or False", lambda value: value is None or hasattr(value, "__bool__")),
    "str": ("a text", lambda value: isinstance(value, str)),
    "bytes": ("bytes", lambda value: isinstance(value, bytes)),
    "Tuple[float, float]": ("two numbers", _are_two(_is_number)),
    "Tuple[int, int]": ("two whole numbers", _are_two(_is_whole)),
    "List[List[float[2]][2]]": ("two rows of two numbers", _are_two(_are_two(_is_number))),
}


def _kind(text):
    """The row of _KINDS for an annotation; None where anything goes."""
    if text in _KINDS:
        return _KINDS[text]
    if match := re.fullmatch(r"Optional\[(.*)\]", text):
        words, check = _kind(match[1]) or (None, None)
        return words and (f"{words} or None", lambda value: value is None or check(value))
    if match := re.fullmatch(r"mvfreq\._core\.(\w+)", text):
        name = match[1]
        article = "an" if name[0] in "AEIOUX" else "a"
        return f"{article} {name}", lambda value: any(k.__name__ == name for k in type(value).__mro__)
    return None


def _parts(text):
    """The text of a list cut at its own commas, not at those within brackets."""
    depth, begin = 0, 0
    for at, letter in enumerate(text):
        depth += (letter in "([") - (letter in ")]")
        if letter == "," and depth == 0:
            yield text[begin:at].strip()
            begin = at + 1
    if text[begin:].strip():
        yield text[begin:].strip()


def _signature(text):
    """The signature that 'name: annotation = default, *, ...' stands for."""
    parameters, kind = [], inspect.Parameter.POSITIONAL_OR_KEYWORD
    for part in _parts(text):
        if part == "*":
            kind = inspect.Parameter.KEYWORD_ONLY
            continue
        name, annotation, default = re.fullmatch(r"(\w+)(?:: (.*?))?(?: = (.*))?", part).groups()
        default = inspect.Parameter.empty if default is None else ast.literal_eval(default)
        parameters.append(inspect.Parameter(name, kind, default=default, annotation=annotation))
    return inspect.Signature(parameters)


def _described(function):
    """The overloads that the docstring of a compiled function lists, each with its own text."""
    overloads = []
    for line in (function.__doc__ or "").splitlines():
        if match := re.match(r"(?:\d+\. )?\w+\((.*)\) -> ", line):
            overloads.append((_signature(match[1]), []))
        elif overloads:
            overloads[-1][1].append(line)
    return [(signature, "\n".join(lines).strip()) for signature, lines in overloads]


def _plain(signature):
    """Names and defaults alone."""
    empty = inspect.Parameter.empty
    return signature.replace(
        parameters=[each.replace(annotation=empty) for each in signature.parameters.values()]
    )


def _bad_argument(signature, args, kwargs):
    """What is wrong with the arguments; None when nothing is found."""
    try:
        bound = signature.bind(*args, **kwargs)
    except TypeError as error:
        return str(error)
    for name, value in bound.arguments.items():
        kind = _kind(signature.parameters[name].annotation or "")
        if kind and not kind[1](value):
            return f"{name} must be {kind[0]}, not {type(value).__name__}"
    return None


def _complaint(name, signatures, args, kwargs):
    """About the overload that the call seems to have meant: one that has room for its arguments, or
    one that asks for more."""
    faults = [_bad_argument(signature, args, kwargs) for signature in signatures]
    if not all(faults):
        return None
    of_a_kind = [fault for kind in (" must be ", "missing") for fault in faults if kind in fault]
    return f"{name}: {(of_a_kind or faults)[0]}"


def named(function, name, qualname, shown):
    """A compiled function under its name, which names its arguments; `shown` of its overloads is
    the one whose signature is its own."""
    overloads = _described(function)
    if not overloads:
        return function
    signatures = [signature for signature, _ in overloads]

    @functools.wraps(function, assigned=())
    def call(*args, **kwargs):
        try:
            return function(*args, **kwargs)
        except TypeError as error:
            if not _REFUSED.search(str(error)):
                raise
            complaint = _complaint(name, signatures, args, kwargs)
            if complaint is None:
                raise
        raise TypeError(complaint)

    del call.__wrapped__
    call.__name__, call.__qualname__, call.__module__ = qualname.split(".")[-1], qualname, "mvfreq"
    call.overloads = [_plain(signature) for signature in signatures]
    call.__signature__ = shown(call.overloads)
    call.__doc__ = overloads[0][1]
    if len(overloads) > 1:
        call.__doc__ = "\n\n".join(
            f"{name}{_without_self(plain)}\n{text}".strip()
            for plain, (_, text) in zip(call.overloads, overloads)
        )
    return call


def _without_self(signature):
    return signature.replace(
        parameters=[each for each in signature.parameters.values() if each.name != "self"]
    )


def _first_with_arguments(overloads):
    return next((each for each in overloads if set(each.parameters) - {"self"}), overloads[0])


def _improve_class(kind):
    for name, member in list(vars(kind).items()):
        if isinstance(member, property) and member.fset is not None:
            setter = _setter(member.fset, name)
            setattr(kind, name, property(member.fget, setter, doc=member.__doc__))
        elif callable(member) and (name == "__init__" or not name.startswith("_")):
            shown = kind.__name__ if name == "__init__" else name
            qualname = f"{kind.__qualname__}.{name}"
            setattr(kind, name, named(member, shown, qualname, _first_with_arguments))


def _setter(function, name):
    def call(self, value):
        try:
            function(self, value)
            return
        except TypeError as error:
            if not _REFUSED.search(str(error)):
                raise
            match = re.search(r"arg1: (.*?)\) -> None", str(error))
            kind = _kind(match[1]) if match else None
            if kind is None:
                raise
        raise TypeError(f"{name} must be {kind[0]}, not {type(value).__name__}")

    return call


def improve(module):
    """Puts functions and methods that name their arguments in the place of the compiled ones."""
    for name, member in list(vars(module).items()):
        if isinstance(member, type):
            _improve_class(member)
        elif inspect.isbuiltin(member):
            setattr(module, name, named(member, name, name, _first_with_arguments))
