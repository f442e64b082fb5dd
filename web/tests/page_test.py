#!/usr/bin/env python3
"""Tests the page in headless Chromium, from a file and from a server, as a user: by drop, mouse, keyboard and touch.
Usage: web/tests/page_test.py PAGE.html [--screenshots DIR] [--frame FILE NAME WIDTHxHEIGHT]
--frame drops one more frame, and balances white by a click left of its middle."""

import argparse
import contextlib
import functools
import http.server
import io
import sys
import tempfile
import threading
import unittest
from pathlib import Path

import numpy as np
from PIL import Image
from selenium import webdriver
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.support.ui import Select, WebDriverWait

import frames

OPTIONS = None  # of the command line
WAIT = 60  # seconds, for slow machines


def start_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--window-size=1400,1200"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


@contextlib.contextmanager
def served(folder):
    handler = functools.partial(QuietHandler, directory=folder)
    with http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler) as server:
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        try:
            yield f"http://127.0.0.1:{server.server_port}"
        finally:
            server.shutdown()
            thread.join()


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = start_browser()
        cls.folder = tempfile.TemporaryDirectory()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.folder.cleanup()

    def setUp(self):
        self.load(OPTIONS.page.resolve().as_uri())

    def tearDown(self):
        self.assertEqual([entry["message"] for entry in self.browser.get_log("browser") if entry["level"] == "SEVERE"], [])

    def find(self, name):
        return self.browser.find_element(By.ID, name)

    def value(self, name):
        return self.find(name).get_property("value")

    def status(self, has):
        """Waits until the status has a text, or is an error."""
        def found(_):
            status = self.find("status")
            return has in status.text or "error" in status.get_attribute("class")
        WebDriverWait(self.browser, WAIT).until(found)
        self.assertIn(has, self.find("status").text)

    def load(self, address):
        self.browser.get(address)
        self.status("Ready")

    def write(self, name, data):
        path = Path(self.folder.name) / name
        path.write_bytes(data)
        return path

    def drop(self, path):
        for kind in ("dragEnter", "dragOver", "drop"):
            self.browser.execute_cdp_cmd("Input.dispatchDragEvent", {
                "type": kind, "x": 300, "y": 300, "data": {"items": [], "files": [str(path)], "dragOperationsMask": 1}})
        self.status(f"{path.name}: ")

    def open(self, path):
        self.find("open").send_keys(str(path))
        self.status(f"{path.name}: ")

    def shown(self):
        return Select(self.find("format")).first_selected_option.text, f"{self.value('width')}x{self.value('height')}"

    def gains(self):
        return [float(self.value(f"gain-{color}")) for color in ("red", "green", "blue")]

    def pixel(self, x, y):
        return self.browser.execute_script(
            "return [...document.getElementById('picture').getContext('2d').getImageData(...arguments, 1, 1).data]", x, y)

    def click(self, x, y, width):
        picture = self.find("picture")
        scale, box = picture.size["width"] / width, picture.size
        ActionChains(self.browser).move_to_element_with_offset(
            picture, round((x + 0.5) * scale - box["width"] / 2), round((y + 0.5) * scale - box["height"] / 2)).click().perform()

    def screenshot(self, name):
        if OPTIONS.screenshots:
            OPTIONS.screenshots.mkdir(parents=True, exist_ok=True)
            self.browser.save_screenshot(str(OPTIONS.screenshots / f"{name}.png"))

    def photo(self, name, width=640, height=480):
        return np.asarray(Image.open(f"{frames.PHOTOS}/{name}").convert("RGB").resize((width, height)))

    def raw_photo(self):
        samples = frames.counts(frames.mosaic(frames.linear(self.photo("astronaut.png")) * frames.CAST, "RGGB"), 12)
        return samples, self.write("photo.raw", frames.stream(samples, 12))

    def test_guesses_photographs(self):
        """Red and blue may be exchanged, as the bytes do not say which is which; all else is right."""
        same = {"RG": "BG", "BG": "RG", "GR": "GB", "GB": "GR"}
        for name, data in frames.of_photo(self.photo("chelsea.png")).items():
            with self.subTest(name):
                self.load(OPTIONS.page.resolve().as_uri())
                self.open(self.write(f"{name}.raw", data))
                either = [name] + ([f"Bayer{same[name[5:7]]}{name[7:]}"] if name.startswith("Bayer") else [])
                guesses = [guess.text.split(". ", 1)[1] for guess in self.browser.find_elements(By.CSS_SELECTOR, ".guess")]
                self.assertIn(guesses[0], [f"{one}\n640 × 480" for one in either])
                self.assertIn(f"{name}\n640 × 480", guesses[:2])

    def test_balances_white_where_clicked(self):
        gray = np.full((480, 640, 3), 0.4) * frames.CAST
        gray[100:300, 20:200] *= (0.2, 0.9, 0.5)
        gray[300:, ::7] *= 0.7  # columns that show the width
        samples = frames.counts(frames.mosaic(gray, "RGGB"), 12)
        self.drop(self.write("gray card.raw", frames.stream(samples, 12)))
        self.assertEqual(self.shown(), ("BayerRG12p", "640x480"))
        self.click(250, 60, 640)
        for gain, expected in zip(self.gains(), (1 / 0.55, 1, 1 / 0.72)):
            self.assertAlmostEqual(gain, expected, delta=0.02)
        red, green, blue, _ = self.pixel(250, 60)
        self.assertLess(max(red, green, blue) - min(red, green, blue), 6)
        x, y = map(int, self.find("pixel").text[1:].split(")")[0].split(", "))
        self.assertIn(str(samples[y, x]), self.find("pixel").text)
        self.assertIn("'gray card.raw' picture.png --from BayerRG12p --size 640x480 --demosaic adaptive --gain 1.8",
                      self.find("recipe-shell").text)
        self.assertIn("gains=(1.8", self.find("recipe-python").text)
        self.assertIn("settings.method = ConversionFlags::kAdaptive;", self.find("recipe-cpp").text)
        self.find("reset").click()
        self.assertEqual(self.gains(), [1, 1, 1])

    def test_keys_move_the_cursor_and_balance(self):
        samples, path = self.raw_photo()
        self.open(path)
        picture = self.find("picture")
        picture.send_keys(Keys.ARROW_RIGHT, Keys.ARROW_DOWN, Keys.SHIFT, Keys.ARROW_LEFT)
        self.assertIn("(311, 241)", self.find("pixel").text)
        self.assertIn(str(samples[241, 311]), self.find("pixel").text)
        picture.send_keys(Keys.ENTER)
        self.assertNotEqual(self.gains(), [1, 1, 1])
        picture.send_keys("r")
        self.assertEqual(self.gains(), [1, 1, 1])
        picture.send_keys("1")
        self.assertEqual(self.find("picture").size["width"], 640)

    def test_controls_change_the_picture(self):
        _, path = self.raw_photo()
        self.open(path)
        before = self.pixel(320, 100)
        for name, change in (("tone", "sRGB"), ("tone", "linear"), ("method", "half the size")):
            Select(self.find(name)).select_by_visible_text(change)
            WebDriverWait(self.browser, WAIT).until(
                lambda _: (self.pixel(320, 100) == before) == (change == "linear") or change.startswith("half"))
        WebDriverWait(self.browser, WAIT).until(lambda _: self.find("picture").get_property("width") == 320)
        self.find("black").send_keys(Keys.ARROW_RIGHT * 5)
        self.assertIn("5 counts", self.find("black-value").text)
        self.assertIn("--black 5", self.find("recipe-shell").text)
        self.find("balance-auto").click()
        self.assertAlmostEqual(min(self.gains()), 1, delta=0.01)
        self.assertGreater(max(self.gains()), 1.3)
        Select(self.find("format")).select_by_visible_text("Mono12p")
        self.status("Mono12p")
        self.assertIn("p0 7-0", self.find("bits").text)
        self.find("height").send_keys("0")
        self.status("source.size is 460800")

    def test_reads_pictures(self):
        photo = self.photo("coffee.png")
        gray = frames.counts(frames.mosaic(frames.linear(photo) * frames.CAST, "GRBG"), 12).astype(np.uint16)
        for name, image, formats in (("gray.png", Image.fromarray(gray.astype(np.int32)).convert("I;16"), ("BayerGR12", "BayerGB12")),
                                     ("color.png", Image.fromarray(photo), ("RGB8",)),
                                     ("palette.png", Image.fromarray(photo).quantize(64), ("RGB8",))):
            data = io.BytesIO()
            image.save(data, "PNG")
            self.load(OPTIONS.page.resolve().as_uri())
            self.drop(self.write(name, data.getvalue()))
            self.assertIn(self.shown()[0], formats)
            self.assertEqual(self.shown()[1], "640x480")
        self.assertEqual(self.pixel(5, 7)[:3], list(Image.open(data).convert("RGB").getpixel((5, 7))))

    def test_says_why_there_is_no_picture(self):
        for name, data, says in (("empty.raw", b"", "is empty"), ("prime.raw", bytes(10007), "no common size fits 10007 bytes")):
            self.open_with_error(name, data, says)

    def open_with_error(self, name, data, says):
        self.find("open").send_keys(str(self.write(name, data)))
        self.status(says)

    def test_works_from_a_server_on_a_phone_in_the_dark(self):
        with served(OPTIONS.page.resolve().parent) as address:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [{"name": "prefers-color-scheme", "value": "dark"}]})
            self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {"width": 390, "height": 800, "deviceScaleFactor": 2, "mobile": True})
            self.browser.execute_cdp_cmd("Emulation.setTouchEmulationEnabled", {"enabled": True})
            try:
                self.load(f"{address}/{OPTIONS.page.name}")
                self.find("example").click()
                self.status("BayerRG12p, 1280 × 960")
                self.assertLessEqual(self.browser.execute_script("return document.documentElement.scrollWidth"), 390)
                box = self.find("picture").rect
                point = {"x": box["x"] + box["width"] / 2, "y": box["y"] + box["height"] * 0.1}
                for kind, points in (("touchStart", [point]), ("touchEnd", [])):
                    self.browser.execute_cdp_cmd("Input.dispatchTouchEvent", {"type": kind, "touchPoints": points})
                WebDriverWait(self.browser, WAIT).until(lambda _: self.find("pixel").text.startswith("("))
                self.screenshot("phone")
            finally:
                for command in ("Emulation.clearDeviceMetricsOverride", "Emulation.setTouchEmulationEnabled", "Emulation.setEmulatedMedia"):
                    self.browser.execute_cdp_cmd(command, {"enabled": False} if "Touch" in command else {})

    def test_opens_the_frame_of_the_command_line(self):
        if not OPTIONS.frame:
            self.skipTest("no --frame")
        path, name, size = OPTIONS.frame
        self.drop(Path(path))
        self.screenshot("before")
        self.assertEqual(self.shown(), (name, size))
        width, height = map(int, size.split("x"))
        self.click(width // 6, height * 5 // 8, width)
        print("gains", self.gains())
        self.screenshot("after")


def main():
    global OPTIONS
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("page", type=Path)
    parser.add_argument("--screenshots", type=Path)
    parser.add_argument("--frame", nargs=3, metavar=("FILE", "NAME", "SIZE"))
    OPTIONS, rest = parser.parse_known_args()
    unittest.main(argv=sys.argv[:1] + rest)


if __name__ == "__main__":
    main()
