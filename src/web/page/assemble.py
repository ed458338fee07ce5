#!/usr/bin/env python3
"""assemble.py PAGE_DIR CORE_JS RESOURCES OUT: puts the page together into one file.

The page's markup (vornelt.html) names what goes into it: its style, the core (the
WebAssembly module with its loader, the module embedded), its script, and the pictures as
data addresses. Nothing of it is fetched when the page opens.
"""
import base64
import pathlib
import sys

page, core, resources, out = (pathlib.Path(a) for a in sys.argv[1:5])


def script(text):
    # A script's text must not end its element early.
    return text.replace("</script", "<\\/script")


def picture(name):
    data = base64.b64encode((resources / name).read_bytes()).decode("ascii")
    return "data:image/svg+xml;base64," + data


html = (page / "vornelt.html").read_text(encoding="utf-8")
parts = {
    "{{STYLE}}": (page / "page.css").read_text(encoding="utf-8"),
    "{{CORE}}": script(core.read_text(encoding="utf-8")),
    "{{SCRIPT}}": script((page / "page.js").read_text(encoding="utf-8")),
    "{{ICON}}": picture("images/vornelt.svg"),
    "{{WELCOME}}": picture("images/welcome.svg"),
    "{{SPLASH}}": picture("images/splash.svg"),
}
for key, value in parts.items():
    if key not in html:
        sys.exit(f"assemble.py: {key} is not in vornelt.html")
    html = html.replace(key, value)
out.write_text(html, encoding="utf-8")
