"""The Python module against the converter: the same bytes, threads, and the right errors."""
import concurrent.futures
import errno
import mmap
import os
import pathlib
import signal
import subprocess
import sys
import time

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


def test_convert_file_never_saves_over_the_list_it_reads(tmp_path):
    src = tmp_path / "a.edl"
    src.write_bytes(LIST)
    (tmp_path / "link.edl").symlink_to(src)
    for dst in (src, str(src), os.fsencode(src), tmp_path / "link.edl", tmp_path / "." / "a.edl"):
        with pytest.raises(OSError):
            vornelt.convert_file(src, dst, fps=25)
        assert src.read_bytes() == LIST
    assert sorted(p.name for p in tmp_path.iterdir()) == ["a.edl", "link.edl"]


@pytest.mark.parametrize("stdin", ["file", "pipe"])
def test_a_list_from_a_stream_needs_a_named_output(tmp_path, stdin):
    src = tmp_path / "a.edl"
    src.write_bytes(LIST)
    script = ("import vornelt\ntry:\n    vornelt.convert_file('/dev/stdin', fps=25)\n"
              "except ValueError as e:\n    print('refused', e)\n")
    made = pathlib.Path("/dev/stdin VORNELT.edl")
    try:
        with open(src, "rb") as given:
            run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True,
                                 stdin=given if stdin == "file" else None,
                                 input=None if stdin == "file" else LIST.decode("latin-1"))
        assert run.stdout.startswith("refused /dev/stdin: not a regular file"), run.stderr
        assert not made.exists()
    finally:
        if made.exists():
            made.unlink()


def test_paths_are_taken_as_open_takes_them(tmp_path):
    src = tmp_path / "a.edl"
    src.write_bytes(LIST)
    expected = converted(src, 25, [])
    assert vornelt.convert_file(os.fsencode(src), fps=25).data == expected  # the file, not five bytes
    assert (tmp_path / "a VORNELT.edl").read_bytes() == expected
    result = vornelt.convert_file(str(src).encode(), os.fsencode(tmp_path / "out.edl"), fps=25)
    assert result.path == str(tmp_path / "out.edl") and (tmp_path / "out.edl").read_bytes() == expected
    for src_given, dst_given in ((str(src) + "\0/../../x", None), (src, str(tmp_path / "x.edl") + "\0/../../x")):
        with pytest.raises(ValueError):
            vornelt.convert_file(src_given, dst_given, fps=25)
    with pytest.raises(TypeError):
        vornelt.convert_file(bytearray(os.fsencode(src)), fps=25)
    assert sorted(p.name for p in tmp_path.iterdir()) == ["a VORNELT.edl", "a.edl", "out.edl"]


def test_data_past_the_cap_is_refused_without_a_copy():
    with mmap.mmap(-1, (256 << 20) + 1) as large:
        with pytest.raises(ValueError, match="256 MiB"):
            vornelt.convert(memoryview(large), 25)


# A conversion of some seconds; Ctrl-C a moment after it starts.
INTERRUPTED = """
import os, sys, time, vornelt
def tc(f): return "%02d:%02d:%02d:%02d" % (f // 90000 % 24, f // 1500 % 60, f // 25 % 60, f % 25)
block = b"".join(b"%03d  R%05d V     C        %s %s %s %s\\r\\n" % (k % 1000, k, tc(k * 50).encode(),
                 tc(k * 50 + 50).encode(), tc(k * 50).encode(), tc(k * 50 + 50).encode()) for k in range(1000))
with open(sys.argv[1], "wb") as f:
    f.write(b"TITLE: LONG\\r\\n\\r\\n" + block * 1500)
print("ready", flush=True)
try:
    vornelt.convert_file(sys.argv[1], sys.argv[2], fps=25) if sys.argv[3] == "file" else vornelt.convert(sys.argv[1], 25)
    print("done", flush=True)
except KeyboardInterrupt:
    print("interrupted", flush=True)
"""


@pytest.mark.parametrize("call", ["convert", "file"])
def test_ctrl_c_stops_a_long_conversion_at_once(tmp_path, call):
    out = tmp_path / "out.edl"
    child = subprocess.Popen([sys.executable, "-c", INTERRUPTED, str(tmp_path / "long.edl"), str(out), call],
                             stdout=subprocess.PIPE, text=True)
    assert child.stdout.readline() == "ready\n"
    time.sleep(0.3)
    child.send_signal(signal.SIGINT)
    sent = time.monotonic()
    assert child.stdout.read() == "interrupted\n"
    child.wait()
    assert time.monotonic() - sent < 1.0
    assert not out.exists() and [p.name for p in tmp_path.iterdir()] == ["long.edl"]
