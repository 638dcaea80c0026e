#!/usr/bin/env python3
"""Drives the live pages in headless Chromium and compares what they show with values worked out here.

Usage: live_test.py (--test | --pictures) BUILD

BUILD holds the folder `pages`. Screenshots go into BUILD/screenshots. --pictures renews those of docs/live/pictures that are
screenshots of the panels; the ray tracer's own picture is drawn by `raytracer bunny.obj --size 480x300`.
"""

import base64
import contextlib
import functools
import http.server
import itertools
import math
import pathlib
import re
import struct
import sys
import tempfile
import threading
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select, WebDriverWait

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
PICTURES = TREE / "docs" / "live" / "pictures"
sys.path[:0] = [str(TREE / "tests" / "maths" / "values"), str(TREE / "tests" / "raytracer")]
import png  # noqa: E402

with contextlib.redirect_stdout(None):  # it writes what it is asked for elsewhere
    import noise_values  # the noise in a second, slow and literal way

SECTIONS = ("matrix", "frustum", "noise", "comparison", "raytracer", "digest")
PATIENCE = 240  # seconds for the longest computation on a busy machine
BUILD = pathlib.Path()


def start_browser(width, height):
    options = Options()
    options.binary_location = "/usr/bin/chromium"
    profile = tempfile.mkdtemp(prefix="live test ")
    for switch in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                   "--disable-background-networking", "--disable-component-update", "--disable-sync",
                   "--disable-dev-shm-usage", "--hide-scrollbars", f"--user-data-dir={profile}"):
        options.add_argument(switch)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                            {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600})
    return browser


def save_picture(browser, selector, path):
    """A picture of a part of the page, as far as it reaches."""
    left, top, width, height = browser.execute_script(
        "const box = document.querySelector(arguments[0]).getBoundingClientRect();"
        "return [box.left + window.scrollX, box.top + window.scrollY, box.width, box.height]", selector)
    clip = {"x": left, "y": top, "width": width, "height": height, "scale": 1}
    shot = browser.execute_cdp_cmd("Page.captureScreenshot",
                                   {"format": "png", "captureBeyondViewport": True, "clip": clip})
    path.write_bytes(base64.b64decode(shot["data"]))


def single(value):
    return struct.unpack("<f", struct.pack("<f", value))[0]


def multiply(a, b):
    return [[sum(a[r][k] * b[k][c] for k in range(4)) for c in range(4)] for r in range(4)]


def rotate(axis, degrees):
    """A rotation about x, y or z, by the rule of the right hand."""
    cosine, sine = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    matrix = [[float(r == c) for c in range(4)] for r in range(4)]
    first, second = ((1, 2), (2, 0), (0, 1))[axis]
    matrix[first][first] = matrix[second][second] = cosine
    matrix[first][second], matrix[second][first] = -sine, sine
    return matrix


def translate(x, y, z):
    return [[1, 0, 0, x], [0, 1, 0, y], [0, 0, 1, z], [0, 0, 0, 1]]


def scale(x, y, z):
    return [[x, 0, 0, 0], [0, y, 0, 0], [0, 0, z, 0], [0, 0, 0, 1]]


def number(text):
    """A number that the page shows, with its own minus."""
    return float(text.replace("\u2212", "-").replace("\u221e", "inf").replace(",", ""))


def numbers(text):
    return [number(part) for part in text.strip("()").split(", ")]


def ordinal(value, kind):
    """The place of a number among all of its precision; both zeros have the same."""
    size, form = {"float": (32, "<fi"), "double": (64, "<dq")}[kind]
    pattern = struct.unpack(form[0] + form[2], struct.pack(form[:2], value))[0]
    return pattern if pattern >= 0 else -(2 ** (size - 1)) - pattern


class Pages:
    """What both widths share; the pages stand in a folder, or on a server."""

    WIDTH, HEIGHT = 1280, 900
    SCHEME = "light"

    @classmethod
    def setUpClass(cls):
        cls.browser = start_browser(cls.WIDTH, cls.HEIGHT)
        cls.addClassCleanup(cls.browser.quit)
        cls.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": cls.SCHEME}]})
        cls.address = cls.find_address()

    @classmethod
    def find_address(cls):
        return (BUILD / "pages" / "index.html").as_uri()

    def setUp(self):
        self.browser.get(self.address)
        self.wait(lambda: self.browser.execute_script("return document.documentElement.dataset.live") == "ready")

    def tearDown(self):
        log = self.browser.get_log("browser")
        self.assertEqual([entry["message"] for entry in log if entry["level"] == "SEVERE"], [])

    def wait(self, condition, seconds=PATIENCE):
        WebDriverWait(self.browser, seconds, 0.1).until(lambda _: condition())

    def get(self, identifier):
        return self.browser.find_element(By.ID, identifier)

    def text(self, identifier):
        return self.browser.execute_script("return document.getElementById(arguments[0]).textContent", identifier)

    def click(self, identifier):
        element = self.get(identifier)
        self.browser.execute_script("arguments[0].scrollIntoView({block: 'center'})", element)
        element.click()

    def choose(self, identifier, value):
        Select(self.get(identifier)).select_by_value(value)

    def type(self, identifier, text):
        element = self.get(identifier)
        element.clear()
        element.send_keys(text, Keys.TAB)

    def slide(self, identifier, value):
        self.browser.execute_script(
            "const slider = document.getElementById(arguments[0]);"
            "slider.value = arguments[1];"
            "slider.dispatchEvent(new Event('input', {bubbles: true}));", identifier, str(value))

    def rows(self, identifier):
        return self.browser.execute_script(
            "return [...document.getElementById(arguments[0]).rows].map(row => [...row.cells].map(cell => cell.textContent))",
            identifier)

    def pixels(self, identifier):
        """The pixels of a canvas, each (red, green, blue), in rows."""
        width, data = self.browser.execute_script(
            "const canvas = document.getElementById(arguments[0]);"
            "const image = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);"
            "return [canvas.width, [...image.data]]", identifier)
        colours = [tuple(data[at:at + 3]) for at in range(0, len(data), 4)]
        return [colours[at:at + width] for at in range(0, len(colours), width)]

    def save_screenshot(self, name, section=None):
        path = BUILD / "screenshots" / f"{name}-{self.WIDTH}-{self.SCHEME}.png"
        save_picture(self.browser, f"#{section or name}", path)

    def assert_nothing_is_cut_off(self, identifier):
        left, top, right, bottom, part = self.browser.execute_script(
            "const svg = document.getElementById(arguments[0]);"
            "const box = svg.getBBox();"
            "return [box.x, box.y, box.x + box.width, box.y + box.height, svg.getAttribute('viewBox')]", identifier)
        x, y, width, height = map(float, part.split())
        self.assertLess(x, left, identifier)
        self.assertLess(y, top, identifier)
        self.assertGreater(x + width, right, identifier)
        self.assertGreater(y + height, bottom, identifier)

    # The matrix

    def elements(self):
        values = self.browser.execute_script(
            "return [...document.querySelectorAll('#matrix-elements input')].map(input => input.valueAsNumber)")
        return [values[at:at + 4] for at in range(0, 16, 4)]

    def assert_elements(self, expected):
        for row, expected_row in zip(self.elements(), expected):
            for shown, value in zip(row, expected_row):
                self.assertAlmostEqual(shown, value, delta=1e-5)

    def assert_corners(self, matrix):
        rows = self.rows("matrix-corners")
        self.assertEqual(len(rows), 8)
        for row, corner in zip(rows, itertools.product((-0.5, 0.5), repeat=3)):
            x, y, z = reversed(corner)  # x changes first
            self.assertEqual(numbers(row[0]), [x, y, z])
            point = [sum(matrix[r][c] * (x, y, z, 1)[c] for c in range(4)) for r in range(3)]
            for shown, value in zip(numbers(row[1]), point):
                self.assertAlmostEqual(shown, value, delta=1e-5)

    def operate(self, side, name, *values):
        self.choose("matrix-operation", name)
        fields = ["matrix-angle"] if name.startswith("rotate") else ["matrix-x", "matrix-y", "matrix-z"]
        for field, value in zip(fields, values):
            self.type(field, str(value))
        self.click(f"matrix-{side}")

    def test_a_matrix_is_built_by_operations(self):
        self.assert_elements(scale(1, 1, 1))
        self.assertEqual((self.text("matrix-state"), self.text("matrix-determinant")), ("IDENTITY", "1"))
        self.operate("right", "rotate-z", 90)
        self.assertEqual(self.text("matrix-state"), "ORTHONORMAL")
        expected = rotate(2, 90)
        self.assert_elements(expected)
        self.operate("left", "translate", 1, 0.5, 2)
        self.assertEqual(self.text("matrix-state"), "GENERAL")
        expected = multiply(translate(1, 0.5, 2), expected)
        self.operate("right", "scale", 2, 1, 0.5)
        expected = multiply(expected, scale(2, 1, 0.5))
        self.operate("left", "rotate-x", 40)
        expected = multiply(rotate(0, 40), expected)
        self.operate("right", "rotate-y", -25)
        expected = multiply(expected, rotate(1, -25))
        self.assert_elements(expected)
        self.assert_corners(expected)
        self.assertEqual((self.text("matrix-state"), self.text("matrix-determinant")), ("GENERAL", "1"))
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#matrix-drawing .after")), 12)
        self.assert_nothing_is_cut_off("matrix-drawing")
        self.save_screenshot("matrix")

        before = self.elements()
        self.click("matrix-invert")
        self.assert_elements_multiply_to_the_identity(before, self.elements())
        self.click("matrix-transpose")
        self.click("matrix-reset")
        self.assert_elements(scale(1, 1, 1))
        self.operate("right", "translate", 3, 4, 5)
        self.click("matrix-transpose")
        self.assertEqual(self.elements()[3], [3, 4, 5, 1])

    def assert_elements_multiply_to_the_identity(self, a, b):
        for r, row in enumerate(multiply(a, b)):
            for c, value in enumerate(row):
                self.assertAlmostEqual(value, float(r == c), delta=1e-4)

    def test_a_written_element_makes_the_state_stale(self):
        self.type("matrix-element-11", "2")
        self.assertEqual(self.text("matrix-state"), "IDENTITY")
        self.assertIn("Classified anew, the matrix is DIAGONAL", self.text("matrix-stale"))
        self.assert_corners(scale(1, 1, 1))  # the stale identity moves nothing
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#matrix-drawing .stale")), 12)
        self.save_screenshot("matrix-stale", "matrix")
        self.click("matrix-classify")
        self.assertEqual((self.text("matrix-state"), self.text("matrix-stale")), ("DIAGONAL", ""))
        self.assert_corners(scale(2, 1, 1))
        self.assertEqual(self.text("matrix-determinant"), "2")

        self.click("matrix-reset")
        self.operate("right", "rotate-z", 30)
        self.type("matrix-element-13", "0.25")
        self.assertEqual(self.text("matrix-state"), "ORTHONORMAL")
        self.assertIn("GENERAL", self.text("matrix-stale"))

    def test_what_cannot_be_done_is_said(self):
        self.operate("right", "scale", 1, 0, 1)
        self.click("matrix-invert")
        self.assertIn("singular matrix", self.text("matrix-failure"))
        self.assert_elements(scale(1, 0, 1))
        self.click("matrix-reset")
        self.assertEqual(self.text("matrix-failure"), "")
        self.type("matrix-element-23", "")
        self.assertEqual(self.text("matrix-failure"), "Row 2, column 3 is not a number.")
        self.assertEqual(self.get("matrix-element-23").get_attribute("aria-invalid"), "true")
        self.click("matrix-reset")
        self.choose("matrix-operation", "rotate-x")
        self.type("matrix-angle", "")
        self.click("matrix-left")
        self.assertIn("needs a number", self.text("matrix-failure"))
        self.assert_elements(scale(1, 1, 1))

    # The frustum

    DEFAULTS = {"fieldOfView": 50, "turn": 0, "near": 1, "far": 12, "x": 3, "y": 0, "z": -6, "size": 2}

    @staticmethod
    def planes_of(camera):
        """Normals and offsets of the six planes, from the angles at the eye."""
        upright = math.tan(math.radians(camera["fieldOfView"] / 2))
        a, b = math.atan(upright * 4 / 3), math.atan(upright)
        turn = math.radians(camera["turn"])
        planes = {"left": (math.cos(a), 0, -math.sin(a), 0), "right": (-math.cos(a), 0, -math.sin(a), 0),
                  "bottom": (0, math.cos(b), -math.sin(b), 0), "top": (0, -math.cos(b), -math.sin(b), 0),
                  "near": (0, 0, -1, -camera["near"]), "far": (0, 0, 1, camera["far"])}
        return {name: (x * math.cos(turn) - z * math.sin(turn), y, x * math.sin(turn) + z * math.cos(turn), offset)
                for name, (x, y, z, offset) in planes.items()}

    def assert_classified(self, expected_result=None, **changes):
        values = self.DEFAULTS | changes
        for name, value in values.items():
            self.slide(f"frustum-sliders-{name}", value)
        rows = {row[0]: row[1:] for row in self.rows("frustum-planes")}
        middle, half = [values[axis] for axis in "xyz"], values["size"] / 2
        verdicts = []
        for name, (x, y, z, offset) in self.planes_of(values).items():
            distances = [sum(n * (m + s * half) for n, m, s in zip((x, y, z), middle, signs)) + offset
                         for signs in itertools.product((-1, 1), repeat=3)]
            verdict = "outside" if max(distances) < 0 else "straddling" if min(distances) < 0 else "inside"
            verdicts.append(verdict)
            shown_verdict, highest, lowest, normal, shown_offset = rows[name]
            for shown, value in zip([*numbers(normal), number(shown_offset), number(highest), number(lowest)],
                                    [x, y, z, offset, max(distances), min(distances)]):
                self.assertAlmostEqual(shown, value, delta=2e-4, msg=f"{name} of {values}")
            self.assertEqual(shown_verdict, verdict)
        result = ("OUTSIDE" if "outside" in verdicts else "INTERSECTING" if "straddling" in verdicts else "INSIDE")
        self.assertEqual(self.text("frustum-result"), result)
        if expected_result:
            self.assertEqual(result, expected_result)
        rejecting = self.browser.find_elements(By.CSS_SELECTOR, "#frustum-top .rejects")
        self.assertEqual(len(rejecting), verdicts.count("outside"))
        for view in ("frustum-top", "frustum-side"):
            self.assert_nothing_is_cut_off(view)

    def test_boxes_are_classified(self):
        self.assert_classified("INTERSECTING")
        self.save_screenshot("frustum")
        self.assert_classified("INSIDE", x=0.5)
        self.assert_classified("OUTSIDE", x=-7.3, z=-4)
        self.assert_classified("OUTSIDE", z=2.5)
        self.save_screenshot("frustum-outside", "frustum")
        self.assert_classified("INTERSECTING", x=0, z=-12.1)
        self.assert_classified("OUTSIDE", x=0, y=4.9, z=-5)
        self.assert_classified(turn=35, x=4.1, z=-5.3, fieldOfView=63, size=1.3)
        self.assert_classified(turn=-60, near=2.7, far=7.4, y=-1.2, size=5.9)
        self.assert_classified("OUTSIDE", turn=60, x=-3, fieldOfView=20)
        self.assert_classified("OUTSIDE", turn=-60, fieldOfView=90, far=15, z=3, y=-5, size=6)

    def test_sliders_obey_the_keyboard(self):
        slider = self.get("frustum-sliders-turn")
        slider.send_keys(Keys.ARROW_RIGHT)
        self.assertEqual(slider.get_attribute("value"), "1")
        near = [row for row in self.rows("frustum-planes") if row[0] == "near"][0]
        self.assertAlmostEqual(numbers(near[4])[0], math.sin(math.radians(1)), delta=1e-5)

    # Noise

    def assert_swatch(self, octaves, cells, depth):
        for name, value in (("octaves", octaves), ("cells", cells), ("depth", depth)):
            self.slide(f"noise-sliders-{name}", value)
        middle = noise_values.turbulence(noise_values.noise3, [cells / 2, cells / 2, single(depth)], octaves)
        self.assertAlmostEqual(number(self.text("noise-value")), middle, delta=1e-6)
        rows = self.pixels("noise-swatch")
        self.assertEqual((len(rows), len(rows[0])), (256, 256))
        for y, x in itertools.product(range(3, 256, 37), repeat=2):
            point = [(x + 0.5) * cells / 256, (y + 0.5) * cells / 256, single(depth)]
            value = noise_values.turbulence(noise_values.noise3, point, octaves)
            self.assertEqual(rows[y][x], (math.floor(min(max(value, 0), 1) * 255 + 0.5),) * 3)

    def test_noise_is_that_of_the_reference(self):
        self.assert_swatch(5, 8, 0.5)
        self.save_screenshot("noise")
        self.assert_swatch(1, 8, 0)
        self.assertEqual(self.text("noise-value"), "0.5")
        self.assert_swatch(10, 3, 3.21)
        self.assert_swatch(2, 32, 0.07)
        grey = self.pixels("noise-swatch")
        self.choose("noise-shades", "stripes")
        self.assertNotEqual(self.pixels("noise-swatch"), grey)
        self.assertRegex(self.text("noise-time"), r"^\d+\.\d ms$")

    # Comparison

    def assert_compared(self, kind, a, b, *, equal=None):
        self.click(f"comparison-{kind}")
        self.type("comparison-a", repr(a))
        self.type("comparison-b", repr(b))
        rounded = single if kind == "float" else float
        a, b = rounded(a), rounded(b)
        steps = abs(ordinal(a, kind) - ordinal(b, kind))
        tolerance = 10 * 2.0 ** (-23 if kind == "float" else -52)
        is_close = abs(rounded(a - b)) < tolerance
        size = 4 if kind == "float" else 8
        for name, value in (("a", a), ("b", b)):
            pattern = struct.pack({4: ">f", 8: ">d"}[size], value).hex().upper()
            self.assertEqual(self.text(f"comparison-{name}-bits"), f"0x{pattern}")
        self.assertEqual(self.text("comparison-steps"), f"{steps:,}")
        self.assertEqual(self.text("comparison-few-steps"), "yes" if steps <= 50 else "no")
        self.assertEqual(self.text("comparison-small-distance"), "yes" if is_close else "no")
        self.assertEqual(self.text("comparison-result"), "true" if steps <= 50 or is_close else "false")
        self.assertEqual(float(self.text("comparison-tolerance")), tolerance)
        if equal is not None:
            self.assertEqual(self.text("comparison-result"), "true" if equal else "false")

    def test_two_numbers_are_compared(self):
        self.assert_compared("float", 1.0, 1 + 50 * 2.0**-23, equal=True)
        self.assert_compared("float", 1.0, 1 + 51 * 2.0**-23, equal=False)
        self.assert_compared("float", 0.0, 1e-6, equal=True)
        self.assert_compared("float", 0.0, 1.2e-6, equal=False)
        self.assert_compared("float", 0.0, -0.0, equal=True)
        self.assert_compared("float", 2.0, -2.0, equal=False)
        self.assert_compared("float", 1e-7, -1e-7, equal=True)
        self.assert_compared("float", 16777216, 16777300, equal=True)
        self.assert_compared("double", 16777216, 16777300, equal=False)
        self.assert_compared("double", 0.1, 0.30000000000000004, equal=False)
        self.assert_compared("double", 0.30000000000000004, 0.3, equal=True)
        self.assert_compared("double", -1e300, 1e300, equal=False)
        self.save_screenshot("comparison")

    def test_numbers_are_stepped_through(self):
        self.click("comparison-float")
        self.type("comparison-a", "1")
        self.click("comparison-same")
        self.click("comparison-up-50")
        self.assertEqual((self.text("comparison-steps"), self.text("comparison-result")), ("50", "true"))
        self.click("comparison-up")
        self.assertEqual((self.text("comparison-steps"), self.text("comparison-result")), ("51", "false"))
        self.click("comparison-down")
        self.assertEqual((self.text("comparison-steps"), self.text("comparison-result")), ("50", "true"))
        self.assertEqual(single(float(self.get("comparison-b").get_attribute("value"))), 1 + 50 * 2.0**-23)
        self.click("comparison-double")
        self.type("comparison-a", "inf")
        self.click("comparison-same")
        self.click("comparison-down")
        self.assertEqual(float(self.get("comparison-b").get_attribute("value")), sys.float_info.max)
        self.assertEqual((self.text("comparison-steps"), self.text("comparison-result")), ("1", "true"))

    def test_what_is_no_number_is_said(self):
        self.type("comparison-a", "one")
        self.assertEqual(self.text("comparison-failure"), "a: not a number. Write it like 0.1, 1e-3, inf or nan.")
        self.assertEqual(self.get("comparison-a").get_attribute("aria-invalid"), "true")
        self.type("comparison-a", "nan")
        self.assertEqual(self.text("comparison-failure"), "")
        self.assertEqual(self.text("comparison-result"), "false")

    # The ray tracer

    def draw(self, **choices):
        for name, value in choices.items():
            Select(self.get(f"raytracer-{name.replace('_', '-')}")).select_by_visible_text(value)
        self.click("raytracer-start")
        self.wait(lambda: self.text("raytracer-status") != "Drawing…")
        self.assertEqual(self.text("raytracer-status"), "The picture is drawn.")
        self.assertEqual(self.browser.execute_script("return document.getElementById('raytracer-progress').value"), 1)
        self.assertRegex(self.text("raytracer-figures"), r"^(\d+) of \1 tiles, [\d,]+ rays in [\d.]+ s: [\d,]+ rays per second$")
        return self.pixels("raytracer-picture")

    def test_the_picture_is_that_of_the_program(self):
        picture = png.Picture(self.draw())
        print(f"\n{self.WIDTH}: {self.text('raytracer-figures')}")
        self.save_screenshot("raytracer")
        # What goes through the C library's pow and tan may differ by one step of 255.
        differences = picture.differences(png.read(PICTURES / "raytracer.png"))
        print(f"{len(differences)} of {picture.width * picture.height} pixels differ from the program's")
        self.assertLessEqual(len(differences), picture.width * picture.height // 1000)

    def test_packets_do_not_change_the_picture(self):
        scene = {"mesh": "teapot", "material": "marble", "floor": "checker", "spheres": "5", "size": "160 × 100",
                 "samples": "1", "sky_rays": "4"}
        four = self.draw(packet="four", **scene)
        self.assertEqual((len(four), len(four[0])), (100, 160))
        self.assertGreater(len(set(itertools.chain(*four))), 1000)
        self.assertEqual(self.draw(packet="one"), four)
        self.assertNotEqual(self.draw(material="mirror"), four)
        self.save_screenshot("raytracer-teapot", "raytracer")

    def test_drawing_is_stopped(self):
        Select(self.get("raytracer-size")).select_by_visible_text("960 × 600")
        Select(self.get("raytracer-samples")).select_by_visible_text("9")
        self.click("raytracer-start")
        self.wait(lambda: self.text("raytracer-figures") != "")
        self.click("raytracer-stop")
        self.assertEqual(self.text("raytracer-status"), "Stopped.")
        done, of = map(int, re.match(r"(\d+) of (\d+) tiles", self.text("raytracer-figures")).groups())
        progress = self.browser.execute_script("return document.getElementById('raytracer-progress').value")
        self.assertAlmostEqual(progress, done / of, places=5)
        self.assertLess(done, of)
        # As many tiles are in the picture, the first ones in the middle, and nothing is elsewhere.
        tiles = {(x // 16, y // 16) for y, row in enumerate(self.pixels("raytracer-picture"))
                 for x, pixel in enumerate(row) if pixel != (0, 0, 0)}
        self.assertEqual(len(tiles), done)
        self.assertLessEqual(abs(sum(x for x, _ in tiles) / done - 30), 3)
        self.assertTrue(self.get("raytracer-start").is_enabled())
        self.assertFalse(self.get("raytracer-stop").is_enabled())

    # The digest

    def test_the_digest_is_the_one_on_record(self):
        with open(TREE / "tests" / "digest" / "record.txt", encoding="utf-8") as file:
            record = [line.split() for line in file if not line.startswith("#")]
        self.click("digest-start")
        self.wait(lambda: "topics are the same" in self.text("digest-status"))
        print(f"\n{self.WIDTH}: {self.text('digest-status')}")
        rows = self.rows("digest-topics")
        self.assertEqual([[row[0], row[2]] for row in rows], record)
        for topic, same, recorded, here in rows:
            if not topic.startswith("machine-dependent."):
                self.assertEqual((here, same), (recorded, "yes"), topic)
            else:
                self.assertEqual(same, "yes" if here == recorded else "no, may differ")
        same = sum(row[1] == "yes" for row in rows)
        self.assertEqual(self.text("digest-status"), f"{same} of {len(record)} topics are the same, "
                         f"{len(record) - same} that may differ do, 0 are wrong.")
        edge, end = self.browser.execute_script(
            "const cell = document.getElementById('digest-topics').rows[0].cells[1];"
            "const table = cell.closest('.scroll');"
            "return [table.getBoundingClientRect().right, cell.getBoundingClientRect().right]")
        self.assertLess(end, edge)  # the answers are in sight, also on a phone
        self.save_screenshot("digest")

    # The page

    def test_pictures_give_way_to_panels(self):
        for section in SECTIONS:
            self.assertTrue(self.browser.find_element(By.CSS_SELECTOR, f"#{section} .panel").is_displayed())
            self.assertFalse(self.browser.find_element(By.CSS_SELECTOR, f"#{section} .instead").is_displayed())

    def test_every_control_has_a_name_and_the_keyboard_reaches_it(self):
        nameless = self.browser.execute_script(
            "return [...document.querySelectorAll('input, select, button, progress, canvas, svg, [role=region]')]"
            ".filter(element => !(element.labels?.length || element.ariaLabel || element.textContent.trim()))"
            ".map(element => element.id)")
        self.assertEqual(nameless, [])
        wanted = set(self.browser.execute_script(
            "return [...document.querySelectorAll('input, select, button')]"
            ".filter(element => !element.disabled && element.offsetParent && (element.type !== 'radio' || element.checked))"
            ".map(element => element.id)"))
        self.assertGreater(len(wanted), 40)
        reached = set()
        for _ in range(len(wanted) + 40):
            ActionChains(self.browser).send_keys(Keys.TAB).perform()
            reached.add(self.browser.switch_to.active_element.get_attribute("id"))
        self.assertEqual(wanted - reached, set())

    def test_nothing_is_wider_than_the_page(self):
        content, page, window = self.browser.execute_script(
            "const page = document.documentElement; return [page.scrollWidth, page.clientWidth, window.innerWidth]")
        self.assertEqual((content, window), (page, self.WIDTH))
        background = self.browser.execute_script("return getComputedStyle(document.body).backgroundColor")
        self.assertEqual(background, {"light": "rgb(255, 255, 255)", "dark": "rgb(20, 24, 31)"}[self.SCHEME])


class Desk(Pages, unittest.TestCase):
    """On a desk, from the folder."""


class Phone(Pages, unittest.TestCase):
    """On a phone in the dark, from a server."""

    WIDTH, HEIGHT = 390, 844
    SCHEME = "dark"

    class Quiet(http.server.SimpleHTTPRequestHandler):
        def log_message(self, *_):
            pass

    @classmethod
    def find_address(cls):
        server = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(cls.Quiet, directory=str(BUILD / "pages")))
        threading.Thread(target=server.serve_forever, daemon=True).start()
        cls.addClassCleanup(server.server_close)
        cls.addClassCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}/index.html"


class WithoutWebAssembly(unittest.TestCase):
    def test_pictures_stand_in(self):
        browser = start_browser(1280, 900)
        self.addCleanup(browser.quit)
        browser.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": "delete self.WebAssembly;"})
        browser.get((BUILD / "pages" / "index.html").as_uri())
        self.assertIn("no WebAssembly", browser.find_element(By.ID, "start-note").text)
        for section in SECTIONS:
            image = browser.find_element(By.CSS_SELECTOR, f"#{section} .instead img")
            self.assertTrue(image.is_displayed())
            self.assertFalse(browser.find_element(By.CSS_SELECTOR, f"#{section} .panel").is_displayed())
            natural, given = browser.execute_script(
                "const image = arguments[0];"
                "return [[image.naturalWidth, image.naturalHeight], ['width', 'height'].map(name => Number(image.getAttribute(name)))]",
                image)
            self.assertEqual(natural, given, section)
            self.assertGreater(len(image.get_attribute("alt")), 20)
        save_picture(browser, "body", BUILD / "screenshots" / "without-webassembly.png")


def renew_pictures():
    browser = start_browser(900, 900)
    try:
        browser.get((BUILD / "pages" / "index.html").as_uri())
        wait = WebDriverWait(browser, PATIENCE)
        wait.until(lambda _: browser.execute_script("return document.documentElement.dataset.live") == "ready")
        for identifier in ("matrix-right", "matrix-left"):
            browser.find_element(By.ID, identifier).click()
        Select(browser.find_element(By.ID, "matrix-operation")).select_by_value("translate")
        browser.find_element(By.ID, "matrix-left").click()
        browser.find_element(By.ID, "digest-start").click()
        wait.until(lambda _: "topics are the same" in browser.find_element(By.ID, "digest-status").text)
        for section in SECTIONS:
            if section != "raytracer":
                save_picture(browser, f"#{section} .panel", PICTURES / f"{section}.png")
    finally:
        browser.quit()


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[1] not in ("--test", "--pictures"):
        sys.exit(__doc__)
    BUILD = pathlib.Path(sys.argv[2]).resolve()
    if sys.argv[1] == "--pictures":
        renew_pictures()
    else:
        (BUILD / "screenshots").mkdir(exist_ok=True)
        unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
