#!/usr/bin/python3
"""web_screenshots.py PAGE OUT_DIR: the pictures of the page for the README.

Opens the demo list of the tests in the page (headless Chromium), then What Changed with the
first item of the first kind selected.
"""
import pathlib
import sys
import tempfile

root = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(root / "tests" / "web"))
import conftest  # noqa: E402

conftest.PAGE = pathlib.Path(sys.argv[1]).resolve()
out = pathlib.Path(sys.argv[2])
driver = conftest.launch(pathlib.Path(tempfile.mkdtemp(prefix="vornelt-shots-")))
driver.set_window_size(1280, 800)
page = conftest.Page(driver, None)
page.open_page()
page.open_list(root / "tests" / "data" / "writer_demo_cmx.edl", 25)
page.type_into("movie", "final cut.mov")
driver.save_screenshot(str(out / "web-page.png"))
page.find("#BtnWhatChanged").click()
page.find("#WhatChangedItems .item-row.group").click()
rows = page.all("#WhatChangedItems .item-row:not(.group)")
rows[0].click()
driver.save_screenshot(str(out / "web-what-changed.png"))
driver.quit()
