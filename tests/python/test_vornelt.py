"""The Python module against the converter: the same bytes, threads, and the right errors."""
import concurrent.futures
import errno
import os
import pathlib
import subprocess

import pytest
import vornelt

CONVERTER = os.environ["VORNELT_CONVERTER"]
CORPUS = pathlib.Path(os.environ.get("VORNELT_SHARED_DIR", "/nonexistent")) / "corpus"
LIST = (b"TITLE: Caf\xe9\r\nFCM: NON-DROP FRAME\r\n\r\n"
        b"001  AX V C        01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n"
        b"002  BX V W001 025 01:00:05:00 01:00:09:00 00:00:15:00 00:00:19:00\r\n")

# (keyword options, the converter's own flags)
OPTION_SETS = [
    ({}, []),
    ({"mirror": False, "wipe_names": "fcp", "wipes_to_dissolves": False}, ["--no-mirror", "--wipe-names", "fcp", "--keep-wipes"]),
    ({"audio": False, "keys_to_dissolves": True, "remove_freeze_frames": False}, ["--no-audio", "--keys-to-dissolves", "--keep-freeze-frames"]),
    ({"title": "Reel 1 - Grade", "movie": "final cut.mov", "reel": "MAST01", "comments": False},
     ["--title", "Reel 1 - Grade", "--movie", "final cut.mov", "--reel", "MAST01", "--no-comments"]),
]


def converted(path, fps, flags):
    return subprocess.run([CONVERTER, str(path), "--fps", str(fps), "-o", "-", *flags],
                          check=True, capture_output=True).stdout


def lists():
    found = sorted(CORPUS.glob("*.edl")) if CORPUS.is_dir() else []
    return found or pytest.skip("no corpus")


@pytest.mark.parametrize("options,flags", OPTION_SETS)
def test_the_bytes_of_the_converter(tmp_path, options, flags):
    for path in lists():
        for fps in ((24, 25, 30) if not options else (25,)):
            assert vornelt.convert(path.read_bytes(), fps, **options).data == converted(path, fps, flags), path
    mine = tmp_path / "mine.edl"
    mine.write_bytes(LIST)
    result = vornelt.convert(mine, 25, **options)  # a path is read
    assert result.data == converted(mine, 25, flags)
    assert result.text == result.data.decode("mac_roman").replace("\u00a4", "\u20ac")
    assert result.form == "CMX" and result.path is None


@pytest.mark.parametrize("given", [
    bytearray(LIST),
    memoryview(LIST),
    memoryview(LIST + LIST)[::2],  # not one run of memory: its bytes in order
    memoryview(bytearray(LIST)).cast("B", (len(LIST),)),
])
def test_every_form_of_bytes_gives_the_list_of_bytes(given):
    alone = vornelt.convert(bytes(given), 25)
    result = vornelt.convert(given, 25)
    assert result.text == alone.text  # the text first, from the library's bytes
    assert result.data == alone.data and result.text is result.text
    assert repr(result) == f"<vornelt.Result CMX, {len(alone.data)} bytes>"


def test_threads_give_the_bytes_of_one_thread():
    jobs = [(path.read_bytes(), fps, options) for path in lists() for fps in (24, 30) for options, _ in OPTION_SETS]
    alone = [vornelt.convert(data, fps, **options).data for data, fps, options in jobs]
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        together = list(pool.map(lambda job: vornelt.convert(job[0], job[1], **job[2]).data, jobs * 3))
    assert together == alone * 3


DROP_FRAME_LIST = pathlib.Path(__file__).resolve().parents[1] / "data" / "rates_2997df.edl"


@pytest.mark.parametrize("fps,name,fcm", [
    (29.97, "29.97", b"FCM: NON-DROP FRAME"),  # a number names a non-drop rate
    ("29.97df", "29.97df", b"FCM: DROP FRAME"),
    ("59.94DF", "59.94df", b"FCM: DROP FRAME"),
    (23.976, "23.976", b"FCM: NON-DROP FRAME"),
    (50, "50", b"FCM: NON-DROP FRAME"),
])
def test_rates_by_number_and_by_name_as_the_converter(fps, name, fcm):
    data = vornelt.convert(DROP_FRAME_LIST, fps, mirror=False).data
    assert data == converted(DROP_FRAME_LIST, name, ["--no-mirror"])
    assert data.split(b"\r\n")[1] == fcm


def test_convert_file_saves_as_the_converter(tmp_path):
    src = tmp_path / "reel1.v2.edl"
    src.write_bytes(LIST)
    assert vornelt.convert_file(src, fps=25).path == str(tmp_path / "reel1 VORNELT.edl")
    (tmp_path / "out").mkdir()
    assert vornelt.convert_file(src, tmp_path / "out", fps=25).path == str(tmp_path / "out" / "reel1 VORNELT.edl")
    named = vornelt.convert_file(str(src), str(tmp_path / "x.edl"), fps=25, reel="BL")
    assert (tmp_path / "x.edl").read_bytes() == converted(src, 25, ["--reel", "BL"])
    assert named.messages == ["BL is a reserved Reel-Name!"]
    assert named.counts["master-reel-applied"] == 1
    assert [i for i in named.report if i["kind"] == "title-applied"][0]["line_written"] == 1


@pytest.mark.parametrize("options,error", [
    ({"fps": 26}, ValueError),
    ({"fps": 29.976}, ValueError),
    ({"fps": "29.97 df"}, ValueError),
    ({"fps": 25, "reel": "A-1"}, ValueError),
    ({"fps": 25, "reel": "ABCDEFGHI"}, ValueError),
    ({"fps": 25, "title": "T\r\n099 EVIL"}, ValueError),
    ({"fps": 25, "wipe_names": "other"}, ValueError),
])
def test_bad_options_raise(options, error):
    with pytest.raises(error):
        vornelt.convert(LIST, **options)


def test_files_that_cannot_be_read_or_saved_raise_with_errno(tmp_path):
    with pytest.raises(OSError) as missing:
        vornelt.convert(tmp_path / "none.edl", 25)
    assert missing.value.errno == errno.ENOENT
    gvg = tmp_path / "g.edl"
    gvg.write_bytes(b"LIST\r\n0001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n")
    with pytest.raises(ValueError):
        vornelt.convert(gvg, 25, reel="MASTER1")  # six characters in a GVG list
    with pytest.raises(OSError) as unsaved:
        vornelt.convert_file(gvg, tmp_path / "no" / "such.edl", fps=25)
    assert unsaved.value.errno == errno.ENOENT
    with pytest.raises(OSError):
        vornelt.convert_file(gvg, str(tmp_path / "new") + "/", fps=25)
