"""The page against the acceptance cases and the desktop's rules, in a real browser."""
import json
import os
import pathlib
import subprocess

import pytest
from conftest import CONVERTER, SHARED
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select

ACCEPTANCE = SHARED / "acceptance"
DROP_FRAME_LIST = pathlib.Path(__file__).resolve().parents[1] / "data" / "rates_2997df.edl"


def cases():
    """(id, list, rate, options) of every case that expects a list."""
    table = ACCEPTANCE / "cases.tsv"
    if not table.exists():
        return []
    out = []
    for line in table.read_text(encoding="utf-8").splitlines():
        fields = line.split("\t")
        if not line or not (ACCEPTANCE / "expected" / (fields[0] + ".edl")).exists():
            continue
        args = fields[2:]
        fps = args[args.index("--fps") + 1]
        out.append((fields[0], (ACCEPTANCE / fields[1]).resolve(), fps, args))
    return out


def wanted(options, args):
    """The value of every option control under the converter's flags: switches by their on
    and off flags, the choice by its name, the texts as given (None: not given)."""
    switches = {n: o["default"] == "1" for n, o in options.items() if o["kind"] == "switch"}
    choices = {n: int(o["default"]) for n, o in options.items() if o["kind"] == "choice"}
    texts = {n: None for n, o in options.items() if o["kind"] == "text"}
    off = {o["off"]: n for n, o in options.items() if o["off"]}
    i = 0
    while i < len(args):
        flag = args[i][2:]
        if flag in switches:
            switches[flag] = True
        elif flag in off:
            switches[off[flag]] = False
        elif flag in choices:
            i += 1
            choices[flag] = options[flag]["choices"].split().index(args[i])
        elif flag in texts:
            i += 1
            texts[flag] = args[i]
        i += 1
    return switches, choices, texts


def set_switches(page, switches):
    """Clicks every box that is not as wanted and can be clicked; true when all are as wanted."""
    now = page.options()
    for name, value in switches.items():
        if now[name]["checked"] != value and now[name]["enabled"]:
            page.press(page.option(name))
            page.idle()
            now = page.options()
    return all(now[n]["checked"] == v for n, v in switches.items())


def convert(list_path, args, out):
    subprocess.run([CONVERTER, str(list_path), *args, "-o", str(out)], check=True, capture_output=True)
    return out.read_bytes()


@pytest.mark.skipif(not cases(), reason="../shared/acceptance is absent")
def test_every_acceptance_case_by_clicks_and_typing(page):
    """Each list under each option set: the options set as a user sets them, saved, byte for
    byte. The boxes are set before the load, so that the load runs every switch as the
    converter's does; a box that stays disabled until a list is in (keys to dissolves with the
    key track off) is checked after it, and the list opened once more. Each list starts on a
    fresh page: the window keeps the speeds of the motion lines of the first list it loaded, as
    the desktop window does, so a later list's motion lines are judged by those (the report
    says so), where the converter starts afresh for every list."""
    differ = []
    typed = {}  # what the cases before typed into the fields, which keep it across loads
    options = page.options()
    last_list = None
    for case_id, list_path, fps, args in sorted(cases(), key=lambda c: str(c[1])):
        if last_list is not None and list_path != last_list:
            page.open_page()
            typed = {}
        last_list = list_path
        switches, choices, texts = wanted(options, args)
        if not set_switches(page, switches):
            page.open_list(list_path, fps)
            set_switches(page, switches)
        page.open_list(list_path, fps)
        assert set_switches(page, switches), case_id
        now = page.options()
        for name, row in choices.items():
            if now[name]["row"] != row:
                Select(page.option(name)).select_by_index(row)
                page.idle()
        for name, value in texts.items():
            shown = now[name]["value"]
            if value is not None:
                page.type_into(name, value)
                typed[name] = value.upper()
                if page.all("#dialogs .message"):  # a reserved reel name, taken all the same
                    page.button("Use " + value.upper()).click()
                    page.idle()
            elif shown and shown == typed.get(name):
                page.type_into(name, "")
        name, data = page.save()
        if data != (ACCEPTANCE / "expected" / (case_id + ".edl")).read_bytes():
            differ.append(case_id)
    assert not differ, f"{len(differ)} cases differ: {differ[:10]}"


@pytest.mark.parametrize("answer", ["Save", "Don't Save", "Cancel"])
def test_opening_over_unsaved_changes_asks_first(page, tmp_path, answer):
    first = tmp_path / "first.edl"
    first.write_bytes(b"TITLE: FIRST\r\n001  AX V C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\r\n")
    page.open_list(first, 25)
    assert page.find("#Title").text == "first.edl"
    page.find("#BtnOpenEDL").click()
    assert 'Do you want to save the changes to "first.edl"?' in page.dialog_text()
    assert "If you don't save, your changes will be lost." in page.dialog_text()
    before = set(os.listdir(page.downloads))
    page.button(answer).click()
    if answer == "Save":
        assert page.find("#dialogs input[name=name]").get_attribute("value") == "first VORNELT.edl"
        page.button("Save").click()
        name, data = page.downloaded(before)
        assert name == "first VORNELT.edl" and data.endswith(b"\r\n")
    page.idle()
    asked = bool(page.all("#FrameRateWindow"))
    assert asked == (answer != "Cancel")
    if asked:
        page.find("#FrameRateWindow .close").click()
        page.idle()
    assert page.find("#Title").text == ("first VORNELT.edl" if answer == "Save" else "first.edl")


def test_the_question_offers_every_rate_and_a_drop_frame_list_saves_as_the_converter(page, tmp_path):
    """The rows of the rate table, the three of old first, the question on PAL; a drop-frame
    list answered 29.97 drop frame is saved as the converter writes it at 29.97df, on a fresh
    page: the fields keep what the tests before typed."""
    page.open_page()
    page.press("#BtnOpenEDL")
    if page.all("#dialogs .message"):
        page.press(page.button("Don't Save"))
    window = page.wait_for("#FrameRateWindow")
    labels, row = page.d.execute_script(
        "const s = arguments[0].querySelector('select'); return [[...s.options].map(o => o.text), s.selectedIndex]",
        window)
    assert labels[:3] == ["30 fps Non-Drop Frame - NTSC", "25 fps Non-Drop Frame - PAL", "24 fps Non-Drop Frame - FILM"]
    assert {"29.97 fps Drop Frame - NTSC", "59.94 fps Drop Frame - HD", "50 fps Non-Drop Frame - PAL HD"} <= set(labels)
    assert row == 1 and "Sorry" not in window.text
    page.find("#FrameRateWindow .close").click()
    page.idle()
    page.open_list(DROP_FRAME_LIST, "29.97 fps Drop Frame - NTSC")
    assert page.find("#ST_FCM").text == "Drop Frame"
    name, data = page.save()
    assert data.split(b"\r\n")[1] == b"FCM: DROP FRAME"
    if os.path.exists(CONVERTER):
        assert data == convert(DROP_FRAME_LIST, ["--fps", "29.97df"], tmp_path / "out.edl")


def test_reel_name_field_folds_filters_and_questions_reserved_names(page, tmp_path):
    listing = tmp_path / "reel.edl"
    listing.write_bytes(b"TITLE: REEL\r\n001  AX V C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\r\n")
    page.open_list(listing, 25)
    reel = page.option("reel")
    reel.click()
    reel.send_keys(Keys.CONTROL, "a")
    reel.send_keys("a-b 1_")
    page.idle()
    assert reel.get_attribute("value") == "AB1"  # capitals; blank, "-" and "_" never reach the field
    page.type_into("reel", "bl")
    assert "Name Conflict! Choose an other Reel-Name." in page.dialog_text()
    assert "BL is a reserved Reel-Name!" in page.dialog_text()
    page.button("Use BL")
    page.button("Choose an other Reel-Name").click()
    page.idle()
    assert page.option("reel").get_attribute("value") == "NEW"
    page.type_into("reel", "aux")
    page.button("Use AUX").click()
    page.idle()
    assert page.option("reel").get_attribute("value") == "AUX"
    # Pasted text loses its control characters and comes in capitals.
    title = page.option("title")
    title.click()
    page.d.execute_script(
        "const t = new DataTransfer(); t.setData('text/plain', 'new\\ttitle\\r\\nb');"
        "arguments[0].select(); arguments[0].dispatchEvent(new ClipboardEvent('paste', {clipboardData: t}));", title)
    page.idle()
    assert title.get_attribute("value") == "NEWTITLEB"
    page.type_into("reel", "")


def test_a_list_of_100000_events_loads_and_follows_a_click(page, big_lists, tmp_path):
    listing = big_lists / "cmx_100k.edl"
    page.d.execute_script(
        "window.sawProgress = false; new MutationObserver(() => { if (document.getElementById('ProgressBarWindow'))"
        " window.sawProgress = true; }).observe(document.getElementById('dialogs'), {childList: true});")
    page.open_list(listing, 25)
    assert page.d.execute_script("return window.sawProgress"), "no progress while the list loaded"
    first = page.lines()
    assert first[0].startswith("TITLE:")
    audio = page.option("audio")
    audio.click()
    page.idle()
    assert audio.is_selected() is False
    audio.click()
    page.idle()
    assert page.lines() == first
    name, data = page.save()
    if os.path.exists(CONVERTER):
        assert data == convert(listing, ["--fps", "25"], tmp_path / "out.edl")


def test_no_request_leaves_the_page(page):
    """Everything the page needs is inside it: the browser's log of the session has no
    request but the page's own, its pictures (data:) and its downloads (blob:)."""
    requests = []
    for entry in page.d.get_log("performance"):
        message = json.loads(entry["message"])["message"]
        if message["method"] == "Network.requestWillBeSent":
            requests.append(message["params"]["request"]["url"])
    resources = page.d.execute_script("return performance.getEntriesByType('resource').map(e => e.name)")
    page_url = page.d.current_url
    outside = [u for u in requests + resources if u != page_url and not u.startswith(("data:", "blob:"))]
    assert not outside
