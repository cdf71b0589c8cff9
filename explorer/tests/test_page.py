#!/usr/bin/env python3
"""The explorer in a browser, opened from the disk, beside the program.

    test_page.py PAGE PROGRAM [--pictures] [NAME OF A TEST]
"""
import base64
import io
import json
import math
import pathlib
import random
import shlex
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zlib

import numpy
import PIL.Image
from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PICTURES = ROOT / "examples/pictures"
PAGE = PROGRAM = None


def browser(downloads, width=1600, height=900):
    options = webdriver.ChromeOptions()
    for word in ("--headless=new", "--no-sandbox", "--disable-gpu", f"--window-size={width},{height}",
                 "--force-color-profile=srgb", "--js-flags=--expose-gc"):
        options.add_argument(word)
    options.add_experimental_option("prefs", {"download.default_directory": str(downloads)})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


# Pictures, written and read by this file alone: neither by the page's code nor by the program's.

def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png(width, height, rows, depth=8, colour=0, more=b""):
    header = struct.pack(">IIBBBBB", width, height, depth, colour, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + more
            + chunk(b"IDAT", zlib.compress(b"".join(b"\0" + row for row in rows), 1)) + chunk(b"IEND", b""))


def noise(width, height, depth=8, channels=1, seed=1):
    """Grey waves with noise, in any depth that PNG has."""
    source = random.Random(seed)
    size = max(depth // 8, 1)
    line = source.randbytes(width * channels * size + height)
    return [line[y:y + math.ceil(width * channels * depth / 8)] for y in range(height)]


def waves(side):
    """A surface of two waves, which drown spots of a middle size."""
    y, x = numpy.mgrid[0:side, 0:side]
    levels = (128 + 30 * numpy.sin(2 * numpy.pi * (0.05 * x + 0.003 * y))
              + 24 * numpy.sin(2 * numpy.pi * (0.004 * x - 0.07 * y))
              + numpy.random.default_rng(1).normal(0, 3, (side, side)))
    pels = numpy.clip(levels, 0, 255).round().astype(numpy.uint8)
    return png(side, side, [row.tobytes() for row in pels])


def pels_of(data):
    """The samples of a grey PNG, in its byte order."""
    with PIL.Image.open(io.BytesIO(data)) as picture:
        assert picture.mode in ("L", "I", "I;16"), f"{picture.mode} is not grey"
        array = numpy.asarray(picture)
        return array.astype(numpy.uint8 if picture.mode == "L" else ">u2").tobytes()


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.path = pathlib.Path(cls.folder.name)
        cls.browser = browser(cls.path)
        cls.browser.get(PAGE.as_uri())
        cls.wait("explorer.state.shown > 0 && explorer.panes.spectrum.magnitudes")

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.folder.cleanup()

    def tearDown(self):
        self.assertEqual(self.browser.get_log("browser"), [], "messages in the console")

    @classmethod
    def run_script(cls, script, *arguments):
        return cls.browser.execute_script(script, *arguments)

    @classmethod
    def wait(cls, condition, seconds=60):
        end = time.monotonic() + seconds
        while not cls.run_script(f"return Boolean({condition})"):
            if time.monotonic() > end:
                raise AssertionError(f"{condition}: {cls.text('message')}")
            time.sleep(0.02)

    @classmethod
    def text(cls, name):
        return cls.browser.find_element(By.ID, name).get_attribute("textContent")

    def settle(self):
        self.wait("explorer.state.shown === explorer.state.number && !explorer.state.isPartial")

    def change(self, **settings):
        number = self.run_script("const n = explorer.state.number; explorer.change(arguments[0]); return n", settings)
        self.wait(f"explorer.state.shown > {number}")
        self.settle()

    def open(self, data, name="in.png", is_good=True):
        (self.path / name).write_bytes(data)
        number = self.run_script("return explorer.state.number")
        self.browser.find_element(By.ID, "file").send_keys(str(self.path / name))
        self.wait(f"explorer.state.shown > {number}" if is_good else "!document.getElementById('message').hidden")
        if is_good:
            self.settle()

    def shown(self):
        """The result's bytes as the page shows them, in the byte order of PNG."""
        encoded = self.run_script("""
            const { pels } = explorer.panes.result, bytes = new Uint8Array(pels.buffer.slice(0));
            if (pels.BYTES_PER_ELEMENT === 2) new DataView(bytes.buffer) && bytes.forEach((_, i) => {
                if (i % 2 === 0) [bytes[i], bytes[i + 1]] = [bytes[i + 1], bytes[i]]; });
            let text = "";
            for (let i = 0; i < bytes.length; i += 8192) text += String.fromCharCode(...bytes.subarray(i, i + 8192));
            return btoa(text)""")
        return base64.b64decode(encoded)

    def lines(self):
        return self.text("line").splitlines()

    def program(self, line):
        words = shlex.split(line)
        self.assertEqual(words[0], "mvfreq")
        subprocess.run([PROGRAM, *words[1:], "--force"], cwd=self.path, check=True, capture_output=True)
        return pels_of((self.path / "out.png").read_bytes())

    def assert_same_bytes(self, line, what):
        expected, seen = self.program(line), self.shown()
        self.assertEqual(len(seen), len(expected), what)
        differing = sum(a != b for a, b in zip(seen, expected)) if seen != expected else 0
        self.assertEqual(differing, 0, f"{what}: bytes that differ")

    def texts(self, selector):
        return [found.get_attribute("textContent") for found in self.browser.find_elements(By.CSS_SELECTOR, selector)]

    def click(self, selector):
        self.browser.find_element(By.CSS_SELECTOR, selector).click()
        self.settle()

    def downloaded(self, button, name):
        target = self.path / name
        target.unlink(missing_ok=True)
        self.browser.find_element(By.ID, button).click()
        end = time.monotonic() + 20
        while not target.exists() or target.stat().st_size == 0:
            self.assertLess(time.monotonic(), end, f"{name} was not downloaded")
            time.sleep(0.05)
        time.sleep(0.1)
        return target.read_bytes()


RING = {"kind": 0, "frequency": 0.03, "angle": 0, "sigma": 0.012, "sigmaAcross": 0.012, "plateau": 0,
        "plateauAcross": 0, "dcRadius": 1, "bothSides": False, "before": [], "border": "mirror", "rescale": 100,
        "signed": False}
LOBE = {"frequency": 0.143, "angle": 33, "sigma": 0.02, "sigmaAcross": 0.01, "plateauAcross": 0.004}
NOTCH = {"kind": 3, "frequency": 0.142, "angle": -0.7, "sigma": 0.01, "sigmaAcross": 0.012, "plateau": 0.005,
         "plateauAcross": 0.004, "dcRadius": 1, "bothSides": True}


class Bytes(PageTest):
    """The result is the program's, byte by byte, for the line that the page shows."""

    def compare(self, what, **settings):
        self.change(**{**RING, **settings})
        with self.subTest(what):
            self.assert_same_bytes(self.lines()[0], what)

    def compare_all(self, name):
        self.compare(f"{name}, ring", rescale=None)
        self.compare(f"{name}, ring, rescaled")
        self.compare(f"{name}, ring, 99.5 %", rescale=99.5)
        self.compare(f"{name}, ring, signed", rescale=None, signed=True)
        self.compare(f"{name}, ring, signed, spread", rescale=99, signed=True, border="zero")
        self.compare(f"{name}, rejected ring", kind=1, frequency=0.24, plateau=0.05, sigma=0.02, rescale=None, dcRadius=0)
        self.compare(f"{name}, lobe", kind=2, **LOBE)
        self.compare(f"{name}, rejected lobe", kind=3, rescale=None, **LOBE)
        self.compare(f"{name}, both sides of a wave", rescale=None, **NOTCH)
        self.compare(f"{name}, weights", kind=4, rescale=None)
        self.compare(f"{name}, ring behind two waves", before=[NOTCH, {**NOTCH, "angle": 90, "dcRadius": 0}])
        self.compare(f"{name}, weights behind a wave", before=[NOTCH], kind=4, rescale=None)

    def setUp(self):
        (self.path / "disc.png").write_bytes((PICTURES / "disc.png").read_bytes())

    def test_grey_picture(self):
        self.open((PICTURES / "woven.png").read_bytes())
        self.compare_all("woven")

    def test_16_bits(self):
        self.open((PICTURES / "woven16.png").read_bytes())
        self.compare_all("woven16")

    def test_tiles(self):
        for width, height, pieces in ((1500, 700, 1), (9500, 300, 11), (3100, 3100, 16)):
            self.open(png(width, height, noise(width, height)))
            self.change(**RING)
            self.assertEqual(self.run_script("return explorer.state.tiles"), pieces)
            self.compare_all(f"{width} x {height}")

    def test_tiles_of_16_bits(self):
        self.open(png(9500, 300, noise(9500, 300, 16), 16))
        self.compare("16 bits, tiles")
        self.compare("16 bits, tiles, signed", rescale=99.9, signed=True)
        self.compare("16 bits, tiles, grey levels", rescale=None)

    def test_colour_becomes_grey(self):
        self.open(png(300, 200, noise(300, 200, 8, 3), 8, 2))
        self.compare("colour")
        self.compare("colour, rejected", kind=1, rescale=None)
        self.open(png(90, 70, noise(90, 70, 16, 4), 16, 6))
        self.compare("colour of 16 bits with alpha")

    def test_kinds_of_png(self):
        palette = chunk(b"PLTE", bytes(random.Random(3).randbytes(48)))
        for depth in (1, 2, 4):
            self.open(png(101, 67, noise(101, 67, depth), depth))
            self.compare(f"{depth} bits")
            self.open(png(101, 67, noise(101, 67, depth), depth, 3, palette))
            self.compare(f"palette of {depth} bits")
        self.open(png(101, 67, noise(101, 67, 8, 2), 8, 4))
        self.compare("grey with alpha")

    def test_small_and_flat(self):
        for width, height in ((1, 1), (1, 9), (3, 1), (64, 64), (65, 63)):
            self.open(png(width, height, noise(width, height)))
            self.compare(f"{width} x {height}")
            self.compare(f"{width} x {height}, zero", border="zero", rescale=None)
        self.open(png(40, 30, [bytes([77] * 40)] * 30))
        self.compare("flat")


class Use(PageTest):
    def setUp(self):
        self.open((PICTURES / "woven.png").read_bytes(), "woven.png")
        self.change(**RING)

    def grip(self, name):
        return self.browser.find_element(By.CSS_SELECTOR, f".grip[data-field={name}]")

    def setting(self, name):
        return self.run_script("return explorer.state.settings[arguments[0]]", name)

    def drag(self, name, dx, dy):
        ActionChains(self.browser).click_and_hold(self.grip(name)).move_by_offset(dx // 2, dy // 2) \
            .move_by_offset(dx - dx // 2, dy - dy // 2).release().perform()
        self.settle()

    def test_ring_is_dragged(self):
        cycle = self.run_script("return explorer.panes.spectrum.placement().scale * explorer.panes.spectrum.width")
        self.drag("frequency", 60, 0)
        self.assertAlmostEqual(self.setting("frequency"), 0.03 + 60 / cycle, delta=0.003)
        former = self.setting("sigma")
        self.drag("sigma", 0, -20)
        self.assertAlmostEqual(self.setting("sigma"), former + 20 / cycle, delta=0.003)
        self.assert_same_bytes(self.lines()[0], "after dragging")

    def test_lobe_is_dragged(self):
        self.change(kind=2, frequency=0.15, angle=0, sigma=0.03, sigmaAcross=0.05, rescale=None)
        cycle = self.run_script("return explorer.panes.spectrum.placement().scale * explorer.panes.spectrum.width")
        self.drag("frequency", 0, round(0.15 * cycle))
        self.assertAlmostEqual(self.setting("angle"), 45, delta=2)
        self.assertAlmostEqual(self.setting("frequency"), 0.15 * math.sqrt(2), delta=0.01)
        self.drag("sigmaAcross", -15, 15)
        self.assertAlmostEqual(self.setting("sigmaAcross"), 0.05 + 15 * math.sqrt(2) / cycle, delta=0.01)
        self.drag("sigma", 12, 12)
        self.assertAlmostEqual(self.setting("sigma"), 0.03 + 12 * math.sqrt(2) / cycle, delta=0.01)
        self.assert_same_bytes(self.lines()[0], "after dragging")

    def test_fields_and_keys(self):
        field = self.browser.find_element(By.ID, "sigma")
        field.send_keys(Keys.CONTROL + "a")
        field.send_keys("0.02")
        self.wait("explorer.state.settings.sigma === 0.02")
        field.send_keys(Keys.ARROW_UP)
        self.wait("explorer.state.settings.sigma === 0.021")
        self.grip("frequency").send_keys(Keys.ARROW_RIGHT)
        self.wait("explorer.state.settings.frequency === 0.031")
        body = self.browser.find_element(By.ID, "picture")
        body.send_keys("3")
        self.wait("explorer.state.settings.kind === 2")
        body.send_keys("r")
        self.wait("explorer.state.settings.rescale === null")
        body.send_keys("+")
        self.assertAlmostEqual(self.run_script("return explorer.view.zoom"), 1.5)
        body.send_keys("f")
        self.assertEqual(self.run_script("return explorer.view.zoom"), 1)
        self.settle()

    def test_result_is_downloaded(self):
        self.assertEqual(pels_of(self.downloaded("savePng", "out.png")), self.shown())
        self.change(signed=True)
        self.assertEqual(pels_of(self.downloaded("savePng", "out.png")), self.shown())

    def test_filter_is_downloaded_and_applied(self):
        (self.path / "disc.png").write_bytes((PICTURES / "disc.png").read_bytes())
        for settings in ({}, {"rescale": 99.9}, {"kind": 1}, {"kind": 2, **LOBE}, {"kind": 3, **LOBE}, {"kind": 4},
                         {"signed": True, "rescale": None}, {"border": "zero"}, {**NOTCH, "rescale": None},
                         {"before": [NOTCH, {**NOTCH, "angle": 90}]}, {"before": [NOTCH], "kind": 4}):
            self.change(**{**RING, **settings})
            self.downloaded("saveFilter", "filter.mva")
            self.assert_same_bytes(self.lines()[1], f"applied, {settings}")

    def test_lines_in_step(self):
        self.change(kind=2, **LOBE)
        self.assertIn("--angle 33 --sigma 0.02 --sigma-across 0.01 --plateau-across 0.004", self.lines()[0])
        self.browser.find_element(By.ID, "tab-cpp").click()
        self.assertIn(".sigma = {0.02, 0.01}", self.text("line"))
        self.browser.find_element(By.ID, "tab-python").click()
        self.assertIn("sigma=(0.02, 0.01)", self.text("line"))
        self.change(border="zero")
        self.assertIn('border="zero"', self.text("line"))
        self.browser.find_element(By.ID, "tab-shell").click()

    def test_lines_of_several_filters(self):
        self.change(before=[NOTCH, {**NOTCH, "angle": 90}])
        self.assertIn("--dc-radius 1 --both-sides then gaborreject --frequency 0.142 --angle 90 ", self.lines()[0])
        self.assertIn(" --both-sides then bandpass --frequency 0.03 ", self.lines()[0])
        self.browser.find_element(By.ID, "tab-cpp").click()
        self.assertIn("{&wave1, &wave1Mirror, &wave2, &wave2Mirror, &filter}", self.text("line"))
        self.assertIn("mvRadian(179.3 * ", self.text("line"))
        self.browser.find_element(By.ID, "tab-python").click()
        self.assertIn("[wave1, wave1_mirror, wave2, wave2_mirror, filter]", self.text("line"))
        self.change(before=[], **{**NOTCH, "angle": 30})
        self.assertIn("[filter, filter_mirror]", self.text("line"))
        self.assertIn("dc_protection_radius=1", self.text("line"))
        self.browser.find_element(By.ID, "tab-shell").click()

    def test_both_sides_of_a_lobe(self):
        self.change(**{**NOTCH, "bothSides": False}, rescale=None)
        self.click("#bothSides")
        self.assertTrue(self.setting("bothSides"))
        self.assertIn("--both-sides", self.lines()[0])
        self.assert_same_bytes(self.lines()[0], "both sides")
        self.change(kind=2)
        self.assertFalse(self.browser.find_element(By.ID, "bothSides").is_displayed())
        self.assertNotIn("--both-sides", self.lines()[0])
        self.assert_same_bytes(self.lines()[0], "one side again")

    def test_filters_before_are_listed_drawn_and_removed(self):
        self.change(before=[NOTCH, {**NOTCH, "angle": 90, "bothSides": False}])
        self.assertEqual(self.texts("#beforeList span"), ["reject 7.04 px, −0.7°", "reject 7.04 px, 90°, one side"])
        self.assertEqual(len(self.texts("#spectrum ellipse.before")), 3)
        self.browser.find_element(By.CSS_SELECTOR, "#beforeList button").send_keys(Keys.ENTER)
        self.settle()
        self.assertEqual(self.texts("#beforeList span"), ["reject 7.04 px, 90°, one side"])
        self.assertEqual(self.run_script("return document.activeElement.parentElement.parentElement.id"), "beforeList")
        self.assertEqual(self.lines()[0].count("then"), 1)
        self.click("#beforeList button")
        self.assertFalse(self.browser.find_element(By.ID, "before").is_displayed())
        self.assertNotIn("then", self.lines()[0])

    def test_values_under_the_pointer(self):
        pane = self.browser.find_element(By.CSS_SELECTOR, "#picture canvas")
        ActionChains(self.browser).move_to_element_with_offset(pane, 10, 5).perform()
        values = [e.get_attribute("textContent") for e in self.browser.find_elements(By.CSS_SELECTOR, ".pane h2 output")]
        x, y = (int(number) for number in values[0].split(":")[0].split(","))
        pels = pels_of((PICTURES / "woven.png").read_bytes())
        self.assertEqual(int(values[0].split(":")[1]), pels[y * 640 + x])
        self.assertEqual(int(values[2].split(":")[1]), self.shown()[y * 640 + x])
        self.assertIn("|F|", values[1])

    def test_pasted_and_dropped(self):
        for event in ("paste", "drop"):
            number = self.run_script("return explorer.state.picture")
            self.run_script("""
                const bytes = Uint8Array.from(atob(arguments[0]), (c) => c.charCodeAt(0)), data = new DataTransfer();
                data.items.add(new File([bytes], arguments[1] + ".png", { type: "image/png" }));
                const more = { bubbles: true, cancelable: true };
                dispatchEvent(arguments[1] === "paste" ? new ClipboardEvent("paste", { ...more, clipboardData: data })
                                                       : new DragEvent("drop", { ...more, dataTransfer: data }))""",
                            base64.b64encode(png(50, 40, noise(50, 40))).decode(), event)
            self.wait(f"explorer.state.picture > {number} && explorer.state.name === '{event}.png'")
            self.settle()

    def test_presets(self):
        options = self.browser.find_elements(By.CSS_SELECTOR, "#preset option")[1:]
        self.assertGreaterEqual(len(options), 7)
        for at in range(len(options)):
            number = self.run_script("return explorer.state.number")
            self.run_script("const s = document.getElementById('preset'); s.value = arguments[0];"
                            "s.dispatchEvent(new Event('change'))", str(at))
            self.wait(f"explorer.state.number > {number}")
            self.settle()
            self.assertEqual(self.text("message"), "")


class Suggest(PageTest):
    def test_takes_suggestions_of_one_filter_and_of_several(self):
        self.open(waves(256), "waves.png")
        self.browser.find_element(By.ID, "suggest").click()
        self.change(**RING)  # the page goes on meanwhile
        self.wait("!document.getElementById('suggestions').hidden", 300)
        buttons = self.browser.find_elements(By.CSS_SELECTOR, "#suggested button")
        self.assertGreaterEqual(len(buttons), 5)
        chains = 0
        for button in buttons:
            line = button.get_attribute("title")
            button.click()
            self.settle()
            words = shlex.split(line)
            self.assertEqual(shlex.split(self.lines()[0])[:len(words)], words)
            self.assertEqual(len(self.texts("#beforeList li")), words.count("then"))
            self.assert_same_bytes(self.lines()[0], line)
            if chains == 0 and "then" in words:
                self.downloaded("saveFilter", "filter.mva")
                self.assert_same_bytes(self.lines()[1], f"applied, {line}")
            chains += "then" in words
        self.assertGreater(chains, 0)
        self.assertLess(chains, len(buttons))


class Waves(PageTest):
    def setUp(self):
        self.change(**RING)

    def find_waves(self):
        self.browser.find_element(By.ID, "findWaves").click()
        self.wait("!document.getElementById('waves').hidden")
        return self.browser.find_elements(By.CSS_SELECTOR, "#waveList input")

    def test_are_those_of_the_program_and_removed_before_the_filter(self):
        self.open(waves(256), "waves.png")
        boxes = self.find_waves()
        listed = json.loads(subprocess.run([PROGRAM, "peaks", "--json", self.path / "waves.png"], check=True,
                                           capture_output=True, text=True).stdout)
        self.assertEqual(len(boxes), len(listed))
        self.assertGreaterEqual(len(boxes), 2)
        for at, wave in enumerate(listed):
            boxes[at].click()
            self.settle()
            self.assertEqual(self.lines()[0].count(" then "), at + 1)
            self.assertIn(f"{' '.join(wave['arguments'])} then bandpass", self.lines()[0])
            self.assert_same_bytes(self.lines()[0], f"{at + 1} waves removed")
        self.downloaded("saveFilter", "filter.mva")
        self.assert_same_bytes(self.lines()[1], "waves removed, applied")
        boxes[0].click()
        self.settle()
        self.assertNotIn(" ".join(listed[0]["arguments"]), self.lines()[0])
        self.click("#beforeList button")
        self.assertFalse(boxes[1].is_selected())
        self.assertEqual(len(self.texts("#beforeList li")), len(listed) - 2)

    def test_leave_the_ring_where_it_is_on_the_spectrum(self):
        self.open((PICTURES / "woven.png").read_bytes(), "woven.png")
        self.find_waves()
        self.wait("""(() => {
            const pane = explorer.panes.spectrum, { x, y } = pane.placeOf(0.5, 0.5), ring = pane.svg.querySelector(".shape");
            return Math.abs(ring.getAttribute("cx") - x) < 1 && Math.abs(ring.getAttribute("cy") - y) < 1;
        })()""", 5)
        self.click("#closeWaves")

    def test_overtones_stand_below_their_wave(self):
        self.open((PICTURES / "woven.png").read_bytes(), "woven.png")
        self.find_waves()
        listed = json.loads(subprocess.run([PROGRAM, "peaks", "--json", PICTURES / "woven.png"], check=True,
                                           capture_output=True, text=True).stdout)
        self.assertEqual([f"overtone {wave['order']}" if wave["order"] > 1 else "" for wave in listed],
                         self.texts("#waveList span:last-child"))
        self.click("#closeWaves")
        self.assertFalse(self.browser.find_element(By.ID, "waves").is_displayed())

    def test_are_not_found_where_there_are_none(self):
        self.open(png(40, 30, [bytes([77] * 40)] * 30))
        self.assertEqual(self.find_waves(), [])
        self.assertTrue(self.browser.find_element(By.ID, "noWaves").is_displayed())


class WrongFiles(PageTest):
    def refused(self, data, name, word):
        self.run_script("document.getElementById('message').hidden = true")
        before = self.run_script("return explorer.state.name")
        self.open(data, name, is_good=False)
        self.assertIn(word, self.text("message"))
        self.assertIn(name, self.text("message"))
        self.assertEqual(self.run_script("return explorer.state.name"), before)

    def test_are_refused_with_a_sentence(self):
        whole = (PICTURES / "woven.png").read_bytes()
        broken = bytearray(whole)
        broken[5000] ^= 1
        self.refused(b"no picture", "text.txt.png", "no picture")
        self.refused(b"", "empty.png", "no picture")
        self.refused(whole[:60000], "truncated.png", "ends early")
        self.refused(whole[:30], "header.png", "ends early")
        self.refused(bytes(broken), "broken.png", "damaged")
        self.refused(png(60000, 60000, []), "promise.png", "too many")
        self.open(whole)

    def test_odd_sizes_are_taken(self):
        for width, height in ((1, 1), (20000, 20), (20, 20000)):
            self.open(png(width, height, noise(width, height)))
            self.change(**RING)
            self.assert_same_bytes(self.lines()[0], f"{width} x {height}")
            self.wait("explorer.panes.spectrum.magnitudes")


class Endurance(PageTest):
    def memory(self):
        self.browser.execute_cdp_cmd("HeapProfiler.collectGarbage", {})
        self.browser.execute_cdp_cmd("Performance.enable", {})
        metrics = self.browser.execute_cdp_cmd("Performance.getMetrics", {})["metrics"]
        heap = {metric["name"]: metric["value"] for metric in metrics}["JSHeapUsedSize"]
        module = self.browser.execute_async_script("""
            const done = arguments[0], channel = new MessageChannel();
            channel.port1.onmessage = ({ data }) => done(data);
            explorer.worker.postMessage({ type: "memory", port: channel.port2 }, [channel.port2])""")
        return heap / 2 ** 20, module / 2 ** 20

    def test_memory_is_flat(self):
        for at in range(20):
            self.change(frequency=0.03 + at / 1000)
        page, module = self.memory()
        for at in range(200):
            self.change(frequency=0.03 + at / 2000, kind=at % 4, signed=at % 3 == 0)
        self.change(**RING)
        page_after, module_after = self.memory()
        print(f"\nmemory over 200 changes: page {page:.1f} to {page_after:.1f} MiB, "
              f"module {module:.0f} to {module_after:.0f} MiB")
        self.assertLess(page_after, page + 4)
        self.assertLessEqual(module_after, module + 16)

    def timings(self, side):
        self.open(png(side, side, noise(side, side)))
        self.change(**RING)
        self.wait("explorer.panes.spectrum.magnitudes")
        for at in range(30):
            self.change(frequency=0.03 + at / 10000)
        timings = sorted(self.run_script("return explorer.state.timings.slice(-25)"))
        print(f"\n{side} x {side}: from a change to the drawn result {timings[12]:.0f} ms (median of 25), "
              f"{timings[0]:.0f} to {timings[-1]:.0f}")
        return timings[12]

    def test_result_is_there_soon(self):
        for side in (512, 1024, 2048):
            self.timings(side)

    def test_only_the_last_wish_counts(self):
        self.open(png(2048, 2048, noise(2048, 2048)))
        count = self.run_script("return explorer.state.timings.length")
        self.run_script("for (let i = 0; i < 50; ++i) setTimeout(() => explorer.change({ frequency: 0.05 + i / 1000 }), i * 4)")
        self.wait("explorer.state.settings.frequency === 0.099")
        self.settle()
        self.assertLess(self.run_script("return explorer.state.timings.length") - count, 40)
        self.assert_same_bytes(self.lines()[0], "the last of 50 wishes")


class Explore(PageTest):
    def test_opens_the_picture_that_the_program_gives(self):
        given = subprocess.run([PROGRAM, "explore", "--no-browser", "--page", PAGE, PICTURES / "brushed.png"],
                               check=True, capture_output=True, text=True).stdout.strip()
        self.browser.get(pathlib.Path(given).as_uri())
        self.wait("globalThis.explorer && explorer.state.shown > 0")
        self.assertEqual(self.run_script("return explorer.state.name"), "brushed.png")
        pathlib.Path(given).unlink()


def take_pictures(folder):
    """Light, dark and narrow, for the documents."""
    def shoot(name, width, height, theme, settings, before="", after=""):
        with tempfile.TemporaryDirectory() as downloads:
            page = browser(downloads, width, height)
            page.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                 {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
            page.get(PAGE.as_uri())
            time.sleep(1.5)
            page.execute_script(f"document.documentElement.dataset.theme = '{theme}'; {before}; explorer.change(arguments[0])", settings)
            time.sleep(4)
            page.execute_script(after)
            time.sleep(2)
            page.execute_script("document.activeElement.blur()")
            (folder / name).write_bytes(page.get_screenshot_as_png())
            page.quit()
        # The greys of the pictures need few levels here, the colours of the filter their own.
        with PIL.Image.open(folder / name) as picture:
            pels = numpy.asarray(picture.convert("RGB")).astype(int)
        is_grey = (abs(pels - pels.mean(axis=2, keepdims=True)) < 4).all(axis=2, keepdims=True)
        step = numpy.where(is_grey, 4, 8)
        few = numpy.minimum((pels + step // 2) // step * step, 255).astype(numpy.uint8)
        PIL.Image.fromarray(few).save(folder / name)
        subprocess.run(["optipng", "-quiet", "-o5", folder / name], check=True)

    near = "document.getElementById('together').click(); explorer.panes.spectrum.own.zoom = 5; window.dispatchEvent(new Event('resize'))"
    shoot("explorer.png", 1280, 640, "light", RING, near)
    removed = "for (const at of [0, 2]) document.querySelectorAll('#waveList input')[at].click()"
    shoot("explorer-dark.png", 1280, 760, "dark", RING,
          near.replace("= 5", "= 1.6") + "; document.getElementById('findWaves').click()", removed)
    shoot("explorer-narrow.png", 390, 1240, "light", RING)


if __name__ == "__main__":
    words = sys.argv[1:]
    pictures = "--pictures" in words
    words = [word for word in words if word != "--pictures"]
    PAGE, PROGRAM = (pathlib.Path(word).resolve() for word in words[:2])
    if pictures:
        take_pictures(ROOT / "docs/images")
    else:
        unittest.main(argv=["test_page.py", *words[2:]], verbosity=2)
