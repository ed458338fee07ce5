"""Vornelt: edit decision lists (CMX 3600 or GVG) converted as the Vornelt window saves them."""

import os
from typing import Dict, List, Literal, Optional, Union

__version__: str

class Result:
    """What a conversion gives: the saved list and what the window would have said."""

    @property
    def data(self) -> bytes:
        """The saved list: CR LF line ends, Mac OS Roman."""
    @property
    def text(self) -> str:
        """The saved list decoded from Mac OS Roman."""
    form: Literal["CMX", "GVG"]
    messages: List[str]
    report: List[Dict[str, Union[str, int, None]]]
    """What changed and what the check of the list found, one dict per item (docs/report-schema.md)."""
    counts: Dict[str, int]
    path: Optional[str]

def convert(
    data: Union[bytes, bytearray, memoryview, str, "os.PathLike[str]"],
    fps: Literal[24, 25, 30],
    *,
    mirror: bool = True,
    keys: bool = True,
    audio: bool = True,
    remove_freeze_frames: bool = True,
    remove_speed_changes: bool = True,
    wipes_to_dissolves: bool = True,
    keys_to_dissolves: bool = False,
    comments: bool = True,
    wipe_names: Literal["smpte", "fcp"] = "smpte",
    title: Optional[str] = None,
    movie: Optional[str] = None,
    reel: Optional[str] = None,
    name: str = "",
) -> Result: ...

def convert_file(
    src: Union[str, "os.PathLike[str]"],
    dst: Union[None, str, "os.PathLike[str]"] = None,
    *,
    fps: Literal[24, 25, 30],
    mirror: bool = True,
    keys: bool = True,
    audio: bool = True,
    remove_freeze_frames: bool = True,
    remove_speed_changes: bool = True,
    wipes_to_dissolves: bool = True,
    keys_to_dissolves: bool = False,
    comments: bool = True,
    wipe_names: Literal["smpte", "fcp"] = "smpte",
    title: Optional[str] = None,
    movie: Optional[str] = None,
    reel: Optional[str] = None,
) -> Result: ...
