"""The page in headless Chromium, driven as a user drives it: clicks, keys, the file dialog.

One browser and one page serve every test of the session (VORNELT_PAGE names the page).
Downloads go to a folder of the session's own; the file dialog is taken over so that a test
hands it the file as a user picks one.
"""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import pytest

webdriver = pytest.importorskip("selenium.webdriver", reason="python3-selenium is not installed")
from selenium.common.exceptions import TimeoutException  # noqa: E402
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402
from selenium.webdriver.support.ui import Select, WebDriverWait  # noqa: E402

CHROMIUM = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"
PAGE = pathlib.Path(os.environ.get("VORNELT_PAGE", "build/web/vornelt.html")).resolve()
SHARED = pathlib.Path(os.environ.get("VORNELT_SHARED_DIR", "../shared")).resolve()
CONVERTER = os.environ.get("VORNELT_CONVERTER", "build/release/bin/vornelt-convert")


def launch(downloads):
    """A fresh headless Chromium that makes no request of its own."""
    if not (os.path.exists(CHROMIUM) and os.path.exists(DRIVER)):
        pytest.skip("chromium and chromium-driver are not installed")
    options = webdriver.ChromeOptions()
    options.binary_location = CHROMIUM
    for arg in ("--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                "--disable-background-networking", "--disable-component-update", "--disable-sync",
                "--user-data-dir=" + tempfile.mkdtemp(prefix="vornelt-chromium-"), "--window-size=1400,900"):
        options.add_argument(arg)
    options.set_capability("goog:loggingPrefs", {"performance": "ALL", "browser": "ALL"})
    driver = webdriver.Chrome(service=Service(DRIVER), options=options)
    driver.execute_cdp_cmd("Page.setDownloadBehavior", {"behavior": "allow", "downloadPath": str(downloads)})
    driver.get_log("performance")  # the browser's own start, before the page
    return driver


class Page:
    """The page and what a user does on it."""

    def __init__(self, driver, downloads):
        self.d = driver
        self.downloads = downloads
        self._options = {}

    def open_page(self):
        self._options = {}  # the controls of a page opened anew are new
        self.d.get(PAGE.as_uri())
        self.d.execute_cdp_cmd("Page.setInterceptFileChooserDialog", {"enabled": True})
        self.idle()

    def idle(self, timeout=60):
        """Until the page has done its work, or a dialog of the work waits for the user."""
        WebDriverWait(self.d, timeout, poll_frequency=0.01).until(lambda d: d.execute_script(
            "return document.body.dataset.busy === '0' || document.body.dataset.asking === '1'"))

    def find(self, css):
        return self.d.find_element(By.CSS_SELECTOR, css)

    def all(self, css):
        return self.d.find_elements(By.CSS_SELECTOR, css)

    def wait_for(self, css, timeout=30):
        return WebDriverWait(self.d, timeout, poll_frequency=0.01).until(lambda d: self.all(css) and self.all(css)[0])

    def press(self, element):
        """A click on the element as the page gets it, without the driver's wait for the
        browser's next frame: for the many clicks of the acceptance cases."""
        if isinstance(element, str):
            element = self.find(element)
        self.d.execute_script("arguments[0].click()", element)

    def button(self, caption):
        """A button of the dialog in front, by its caption."""
        for b in self.all("#dialogs .dialog:last-child button"):
            if b.text == caption:
                return b
        raise AssertionError(f"no button {caption!r} in {self.dialog_text()!r}")

    def dialog_text(self):
        dialogs = self.all("#dialogs .dialog")
        return dialogs[-1].text if dialogs else ""

    def option(self, name):
        """An option's control, by the converter's name of the option (the page's controls stay)."""
        if name not in self._options:
            self._options[name] = self.find(f"[data-option='{name}']")
        return self._options[name]

    def options(self):
        """Every option's control as it stands: kind, value, whether it can be used, and what
        the page tells of the option (its default, its flag for off, its choices)."""
        return self.d.execute_script("""
            const out = {};
            for (const e of document.querySelectorAll('[data-option]'))
              out[e.dataset.option] = {kind: e.type === 'checkbox' ? 'switch' : e.tagName === 'SELECT' ? 'choice' : 'text',
                checked: e.checked, row: e.selectedIndex, value: e.value, enabled: !e.disabled,
                default: e.dataset.default, off: e.dataset.off, choices: e.dataset.choices};
            return out;""")

    def answer_frame_rate(self, fps, file):
        """The frame-rate question, then the file dialog when it comes."""
        window = self.wait_for("#FrameRateWindow, #FrameRateWindowIfDroped")
        labels, row = self.d.execute_script(
            "const s = arguments[0].querySelector('select'); return [[...s.options].map(o => o.text), s.selectedIndex]",
            window)
        # A rate by its row ("29.97 fps Drop Frame - NTSC"), or the first row of its number.
        wanted = next(i for i, label in enumerate(labels) if label == str(fps) or label.startswith(f"{fps} fps "))
        if row != wanted:
            Select(window.find_element(By.TAG_NAME, "select")).select_by_index(wanted)
            self.idle()
        self.press(window.find_element(By.NAME, "PushButton1"))
        self.find("#open-file").send_keys(str(file))

    def open_list(self, file, fps, answer="Don't Save"):
        """Open EDL..., the question on unsaved changes if it comes, the rate, the file."""
        self.press("#BtnOpenEDL")
        if self.all("#dialogs .message"):
            self.press(self.button(answer))
        self.answer_frame_rate(fps, file)
        self.idle()

    def save(self):
        """Save EDL... under the suggested name; the bytes downloaded."""
        before = set(os.listdir(self.downloads))
        self.press("#BtnSaveEDL")
        if self.all("#dialogs input[name=name]"):
            self.press(self.button("Save"))
        self.idle()
        return self.downloaded(before)

    def downloaded(self, before, timeout=30):
        end = time.time() + timeout
        while time.time() < end:
            new = [n for n in os.listdir(self.downloads) if n not in before and not n.endswith(".crdownload")]
            if new:
                path = self.downloads / new[0]
                data = path.read_bytes()
                path.unlink()
                return new[0], data
            time.sleep(0.01)
        raise TimeoutException("no download")

    def type_into(self, name, text):
        """Clicks into a field, replaces its text by typing, and leaves it with Tab."""
        field = self.option(name)
        field.click()
        field.send_keys(Keys.CONTROL, "a")
        field.send_keys(Keys.DELETE if not text else text)
        field.send_keys(Keys.TAB)
        self.idle()

    def lines(self):
        return self.find("#list-lines").text.split("\n")


@pytest.fixture(scope="session")
def page():
    if not PAGE.exists():
        pytest.skip(f"{PAGE} is not built (make web)")
    downloads = pathlib.Path(tempfile.mkdtemp(prefix="vornelt-downloads-"))
    driver = launch(downloads)
    p = Page(driver, downloads)
    p.open_page()
    yield p
    driver.quit()
    shutil.rmtree(downloads, ignore_errors=True)


@pytest.fixture(scope="session")
def big_lists():
    """The lists of ../shared/bench, generated once."""
    gen = SHARED / "bench" / "gen_big_edl.py"
    if not gen.exists():
        pytest.skip(f"{gen} is absent")
    folder = pathlib.Path(tempfile.mkdtemp(prefix="vornelt-lists-"))
    subprocess.run(["/usr/bin/python3", str(gen), "--all", str(folder)], check=True, capture_output=True)
    yield folder
    shutil.rmtree(folder, ignore_errors=True)
