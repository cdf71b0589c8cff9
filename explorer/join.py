#!/usr/bin/env python3
"""Joins the page, its sources and the module to one file.

    join.py MODULE_FOLDER OUTPUT VERSION
"""
import base64
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
PAGE = HERE / "page"
PICTURES = HERE.parent / "examples/pictures"
SHIPPED = ("woven.png", "printed.png", "brushed.png", "disturbed.png", "web.png", "disc.png")
IMPORT = re.compile(r'^import \{[^}]*\} from "\./([\w.]+)";\n', re.MULTILINE)


def joined(name, seen):
    """A source behind those that it imports, each once."""
    if name in seen:
        return ""
    seen.add(name)
    text = (PAGE / name).read_text(encoding="utf-8")
    needed = "".join(joined(other, seen) for other in IMPORT.findall(text))
    return needed + re.sub(r"^export ", "", IMPORT.sub("", text), flags=re.MULTILINE)


def require_single_names(text):
    """All sources share one scope."""
    names = re.findall(r"^(?:async )?(?:const|let|function|class) (\w+)", text, re.MULTILINE)
    twice = {name for name in names if names.count(name) > 1}
    if twice:
        sys.exit(f"join.py: declared twice: {', '.join(sorted(twice))}")
    return text


def base64_of(path):
    return base64.b64encode(path.read_bytes()).decode("ascii")


def inline(text):
    """A script within HTML ends at the first end tag."""
    return text.replace("</script", "<\\/script")


def main(module, output, version):
    module = pathlib.Path(module)
    glue = (module / "mvfreq_explorer.js").read_text(encoding="utf-8")
    pictures = "\n".join(f'<script type="text/plain" data-picture="{name}">{base64_of(PICTURES / name)}</script>'
                         for name in SHIPPED)
    parts = {
        "style": (PAGE / "style.css").read_text(encoding="utf-8"),
        "pictures": pictures,
        "module": base64_of(module / "mvfreq_explorer.wasm"),
        "worker": inline(glue + "\n(() => {\n" + require_single_names(joined("worker.js", set())) + "})();\n"),
        "script": inline(require_single_names(joined("main.js", set()))),
    }
    page = (PAGE / "index.html").read_text(encoding="utf-8").replace("<h1>mvfreq", f'<h1 title="mvfreq {version}">mvfreq')
    page = re.sub(r"@(\w+)@", lambda match: parts[match[1]], page)
    pathlib.Path(output).write_text(page, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
