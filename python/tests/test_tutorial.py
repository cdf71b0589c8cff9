"""The tutorial runs and makes its pictures."""

import subprocess
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).parents[2]


def test_the_tutorial_makes_its_pictures(tmp_path):
    image = pytest.importorskip("PIL.Image")
    subprocess.run([sys.executable, ROOT / "python/examples/tutorial.py", tmp_path], check=True)
    pictures = sorted(path.name for path in tmp_path.iterdir())
    assert pictures == [
        "1-before-and-after.png",
        "2-spectrum.png",
        "3-directions.png",
        "4-sharpened.png",
        "5-smaller.png",
    ]
    for name in pictures:
        low, high = image.open(tmp_path / name).convert("L").getextrema()
        assert high - low > 100
