#!/usr/bin/python3
"""web_bench.py PAGE LISTS: the page's figures in headless Chromium.

For the lists of 10,000 and 100,000 events of ../shared/bench: from the answer of the
frame-rate question (OK) until the new list stands in the text area, and from a click on an
option until the list rebuilt is shown (both until the browser's next frame). Medians of a few
runs, timed by the page's own clock; and the size of the page.
"""
import os
import pathlib
import statistics
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "web"))
import conftest  # noqa: E402

page_file, lists = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
RUNS = 3

# Runs in the page: `act` is done, then the clock runs until the page has no work left and the
# browser has drawn a frame.
TIMED = """
const [act, done] = [arguments[0], arguments[arguments.length - 1]];
const t0 = performance.now();
new Function(act)();
(function wait() {
  if (document.body.dataset.busy === '0') requestAnimationFrame(() => done(performance.now() - t0));
  else requestAnimationFrame(wait);
})();
"""


def main():
    conftest.PAGE = page_file
    downloads = pathlib.Path(tempfile.mkdtemp(prefix="vornelt-bench-"))
    driver = conftest.launch(downloads)
    driver.set_script_timeout(120)
    page = conftest.Page(driver, downloads)
    page.open_page()
    # A switch that changes every list: the first of the table.
    switch = page.d.execute_script("return document.querySelector('[data-option][type=checkbox]').dataset.option")
    for n in ("10k", "100k"):
        listing = lists / f"cmx_{n}.edl"
        shown, clicks = [], []
        for _ in range(RUNS):
            # The file is dropped, so that it is in hand when the question is answered.
            page.find("#open-file").send_keys(str(listing))
            page.d.execute_script(
                "const t = new DataTransfer(); t.items.add(document.getElementById('open-file').files[0]);"
                "document.getElementById('EditField1').dispatchEvent(new DragEvent('drop', {dataTransfer: t}));")
            page.wait_for("#dialogs .message, #FrameRateWindowIfDroped")
            if page.all("#dialogs .message"):
                page.press(page.button("Don't Save"))
            page.wait_for("#FrameRateWindowIfDroped [name=PushButton1]")
            shown.append(driver.execute_async_script(
                TIMED, "document.querySelector('#FrameRateWindowIfDroped [name=PushButton1]').click()"))
            for _ in range(2):
                clicks.append(driver.execute_async_script(
                    TIMED, f"document.querySelector('[data-option={switch}]').click()"))
        events = {"10k": "10,000", "100k": "100,000"}[n]
        print(f"cmx_{n}.edl ({events} events): shown {statistics.median(shown) / 1000:.2f} s after the frame-rate"
              f" answer; a click on '{switch}' shown in {statistics.median(clicks):.0f} ms"
              f" (medians of {RUNS} and {2 * RUNS})")
    driver.quit()
    size = os.path.getsize(page_file)
    print(f"vornelt.html: {size} bytes ({size / 1e6:.2f} MB), everything inside it")


main()
