#!/usr/bin/env python3
"""screenshots.py [BUILD]: makes the pictures of docs/screenshots from the programs of a build
directory (build/release): the window on an X server of its own, and pages in headless Chromium.
Takes what scripts/setup.sh desktop browser installs."""

import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/desktop"))
sys.dont_write_bytecode = True

from session import Desktop, Editor, program_directory, wait_for  # noqa: E402

PICTURES = ROOT / "docs/screenshots"
TABS = {"about": "alt+a", "main": "alt+m", "html": "alt+l", "templates": "alt+t"}
PAGES = {"page-stats": ("stats.html", 720), "page-player": ("player_*.html", 720)}
COLORS = 200  # enough for the gradients, and half the bytes of all


def save(picture, name):
    """Puts a picture into docs/screenshots, as small as it can be without looking it."""
    file = PICTURES / f"{name}.png"
    subprocess.run(["convert", str(picture), "-strip", "+dither", "-colors", str(COLORS),
                    "-define", "png:compression-level=9", f"PNG8:{file}"], check=True)
    print(f"{file.relative_to(ROOT)}: {file.stat().st_size} bytes")


def take_window(desktop, directory, scratch):
    editor = Editor(desktop, directory)
    for name, keys in TABS.items():
        desktop.keys(keys)
        wait_for_quiet(desktop, editor, scratch)
        save(scratch, name)
    desktop.keys("F5")
    wait_for((directory / "output/stats.json").exists, "the pages")
    editor.wait_for_engine()
    desktop.keys("alt+x")
    editor.wait_for_end()


def wait_for_quiet(desktop, editor, scratch):
    """Waits until two pictures of the window in a row are the same."""
    seen = []

    def same():
        desktop.run("import", "-frame", "-window", editor.window, str(scratch))
        seen.append(desktop.output("convert", str(scratch), "-format", "%#", "info:"))
        return len(seen) > 2 and seen[-1] == seen[-2]

    wait_for(same, "a window that is drawn")


def take_pages(desktop, output, scratch):
    for name, (pattern, height) in PAGES.items():
        page = max(output.glob(pattern), key=lambda file: file.stat().st_size)
        desktop.run("chromium", "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                    f"--screenshot={scratch}", f"--window-size=1000,{height}", page.as_uri(),
                    stderr=subprocess.DEVNULL)
        save(scratch, name)


def main():
    build = Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release").resolve()
    PICTURES.mkdir(exist_ok=True)
    with Desktop() as desktop:
        directory = program_directory(desktop.home, build / "app/vantrel3",
                                      build / "morvane/morvane.exe", ROOT / "share",
                                      build / "share/games.log")
        scratch = desktop.home / "picture.png"
        take_window(desktop, directory, scratch)
        take_pages(desktop, directory / "output", scratch)


if __name__ == "__main__":
    main()
