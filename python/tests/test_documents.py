"""What is written about the module: docstrings, examples, stubs, the page."""

import ast
import doctest
import inspect
import re
import shutil
from pathlib import Path

import mvfreq
import mvfreq._core
import numpy as np
import pytest

ROOT = Path(__file__).parents[2]
PACKAGE = Path(mvfreq.__file__).parent
PUBLIC = {name: getattr(mvfreq, name) for name in mvfreq.__all__}


def members(kind):
    return {
        name: member
        for name, member in vars(kind).items()
        if not name.startswith("_") or name == "__init__"
    }


def documented():
    """All public names with what stands in their docstrings."""
    for name, value in PUBLIC.items():
        yield name, value.__doc__
        if not inspect.isclass(value):
            continue
        for member, inner in members(value).items():
            if isinstance(inner, int):  # error numbers, values of enumerations
                continue
            yield f"{name}.{member}", inner.__doc__


def without_signatures(text):
    return [
        line for line in (text or "").splitlines()
        if line.strip() and not re.match(r"\w+\(.*\)$", line)
    ]


@pytest.mark.parametrize("name, text", list(documented()))
def test_every_public_name_has_a_docstring(name, text):
    assert without_signatures(text)


def test_all_public_names_are_offered():
    compiled = {name for name in vars(mvfreq._core) if not name.startswith("_")}
    assert compiled - {"cancel_function"} <= set(PUBLIC)
    offered = {name for name, value in vars(mvfreq).items()
               if not name.startswith("_") and not inspect.ismodule(value)}
    assert offered == set(PUBLIC)


def examples():
    parser = doctest.DocTestParser()
    texts = {"mvfreq": mvfreq.__doc__, **dict(documented())}
    texts["docs/python.md"] = (ROOT / "docs/python.md").read_text()
    for name, text in texts.items():
        test = parser.get_doctest(text or "", dict(vars(mvfreq)), name, name, 0)
        if test.examples:
            yield pytest.param(test, id=name)


@pytest.mark.parametrize("example", examples())
def test_examples_tell_the_truth(example):
    output = []
    doctest.DocTestRunner(optionflags=doctest.IGNORE_EXCEPTION_DETAIL).run(example, output.append)
    assert not output, "".join(output)


def test_the_examples_of_the_page_run(monkeypatch, tmp_path):
    pillow = pytest.importorskip("PIL.Image")
    page = (ROOT / "docs/python.md").read_text()
    for name in ("woven.png", "woven16.png"):
        shutil.copy(ROOT / "examples/pictures" / name, tmp_path)
    pillow.new("RGB", (4, 3)).save(tmp_path / "colour.png")
    monkeypatch.chdir(tmp_path)
    made = {}
    for code in re.findall(r"```python\n(.*?)```", page, re.DOTALL):
        exec(code, made)
    assert np.asarray(pillow.open(tmp_path / "defects.png")).any()
    mvfreq.forward_fft(made["deep"])
    mvfreq.forward_fft(made["grey"])


STUB = ast.parse((PACKAGE / "_core.pyi").read_text())


def stub_names(body):
    """Names of a stub with the parameters of each overload; None for what is no function."""
    names = {}
    for node in body:
        if isinstance(node, ast.FunctionDef):
            parameters = node.args.posonlyargs + node.args.args + node.args.kwonlyargs
            is_property = any(getattr(d, "id", "") == "property" for d in node.decorator_list)
            signature = tuple(p.arg for p in parameters)
            names.setdefault(node.name, set()).add(None if is_property else signature)
        elif isinstance(node, ast.ClassDef):
            names[node.name] = {None}
        elif isinstance(node, ast.AnnAssign):
            names[node.target.id] = {None}
    return names


def signatures(function):
    """The parameters of each overload."""
    if hasattr(function, "overloads"):
        return {tuple(overload.parameters) for overload in function.overloads}
    return {None}


CLASSES = {node.name: node for node in STUB.body if isinstance(node, ast.ClassDef)}


def test_the_stub_has_the_names_of_the_module():
    stub = {name for name in stub_names(STUB.body) if not name.startswith("_")}
    assert stub == {name for name in vars(mvfreq._core) if not name.startswith("_")}


@pytest.mark.parametrize(
    "name", [node.name for node in STUB.body if isinstance(node, ast.FunctionDef)]
)
def test_the_stub_has_the_parameters_of_functions(name):
    actual = signatures(getattr(mvfreq._core, name))
    stub = stub_names(STUB.body)[name]
    # One function may take several kinds of argument where the stub tells them apart.
    assert stub == actual


@pytest.mark.parametrize("name", CLASSES)
def test_the_stub_has_the_members_of_classes(name):
    kind = getattr(mvfreq._core, name)
    stub = stub_names(CLASSES[name].body)
    actual = members(kind)
    assert {n for n in stub if not n.startswith("_")} == {n for n in actual if n != "__init__"}
    for member in stub:
        assert hasattr(kind, member)
    for member, value in actual.items():
        if inspect.isroutine(value) and member in stub:
            assert stub[member] == signatures(value), member


def test_the_module_says_that_it_is_typed():
    assert (PACKAGE / "py.typed").exists()


def test_the_versions_agree():
    project = (ROOT / "CMakeLists.txt").read_text()
    assert re.search(r"project\(mvfreq VERSION (\S+)", project).group(1) == mvfreq.__version__
