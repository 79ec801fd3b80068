"""desktop_test.py EDITOR ENGINE SHARE LOG [TEST...]: works the editor as a user at a real desktop
does, by keys and the window manager, and looks at what comes of it: files, pages, places, colors.
"""

import sys
import unittest
from pathlib import Path

from session import TITLE, Desktop, Editor, program_directory, wait_for

EDITOR = ENGINE = SHARE = LOG = None
AREA = (588, 390)  # below the menu bar, in pixels at scale factor 1

SHIPPED_LEVELS = [("100", "#00ff00"), ("90", "#d0d000"), ("75", "#d07000"), ("50", "#804020")]


class DesktopTest(unittest.TestCase):
    """An X server for the tests of a class; each has its own program directory and settings."""

    maxDiff = 20000

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop((2000, 1400))

    @classmethod
    def tearDownClass(cls):
        cls.desktop.close()

    def setUp(self):
        root = self.desktop.home / self.id()
        self.directory = program_directory(root, EDITOR, ENGINE, SHARE, LOG)
        self.configuration = root / "configuration"

    def open(self, **environment):
        editor = Editor(self.desktop, self.directory,
                        {"XDG_CONFIG_HOME": str(self.configuration)} | environment)
        self.addCleanup(editor.process.kill)
        return editor

    def leave(self, editor, keys="alt+x"):
        self.desktop.keys(keys)
        self.assertEqual(editor.wait_for_end(), 0)

    def config(self):
        return (self.directory / "morvane.cfg").read_text("utf-8")

    def wait_for_config(self, expected):
        """Waits for the settings file to hold just this text."""
        try:
            wait_for(lambda: self.config() == expected, "the saved settings")
        finally:
            self.assertEqual(self.config(), expected)

    def answer(self, question, answer):
        """Presses keys that open a dialog, and then a key that closes it."""
        self.desktop.keys(*question.split())
        self.desktop.wait_for_dialog()
        self.desktop.keys(answer)
        self.desktop.wait_for_window(TITLE)

    def choose_color(self, html):
        """Answers the color dialog, which is about to open."""
        self.desktop.wait_for_dialog()
        self.desktop.keys("alt+h")
        self.desktop.over(html)
        self.desktop.keys("Return")
        self.desktop.wait_for_window(TITLE)


class KeyboardAlone(DesktopTest):
    def test_from_the_start_to_the_finished_page(self):
        desktop = self.desktop
        (self.directory / "games.log").rename(self.directory / "friday.log")
        before = self.config()
        editor = self.open()

        desktop.keys("alt+m", "Tab")
        desktop.over("%H:%M")
        desktop.keys("Tab", "space", "Tab", "Tab", "Tab")  # Limit Overall Kill Tables
        desktop.over("1")  # Min. Play Time
        desktop.keys("Tab", "Tab", "Tab")
        desktop.over("1")  # Min. Games
        desktop.keys("Tab", "Tab", "Tab")
        desktop.over("1")  # Min. Kills
        desktop.keys("Tab", "Tab", "space")  # Use Database

        desktop.keys("alt+q")
        desktop.type("friday.log")
        desktop.keys("Tab", "Tab", "space", "Tab", "End", "Tab", "space")  # Add, Remove

        desktop.keys("alt+g", "space", "Tab")
        desktop.over("4")  # Last Place

        desktop.keys("alt+l")
        desktop.over(".htm")
        desktop.keys("Tab", "Tab", "Tab", "Right", "Right", "space")  # past the preview: Link Color
        self.choose_color("#123456")

        desktop.keys("alt+k")
        desktop.type("25")
        desktop.keys("Tab", "space")
        self.choose_color("#654321")

        desktop.keys("alt+t", "Tab", "Tab", "Tab", "End", "Tab", "space")  # the last main template

        desktop.keys("alt+u")
        desktop.type("title")
        desktop.keys("Tab")
        desktop.type("Friday Night Frags")
        desktop.keys("Tab", "space")

        desktop.keys("alt+a", "ctrl+s")
        expected = before
        levels = before[before.index("hilite_level0"):before.index("column0")]
        for old, new in (
                ("limit_overall_killtables=1", "limit_overall_killtables=0"),
                ("players_min_time=900", "players_min_time=1"),
                ("players_min_games=2", "players_min_games=1"),
                ("players_min_kills=2", "players_min_kills=1"),
                ("time_format=%X %x", "time_format=%H:%M"),
                ("use_db=0", "use_db=1"),
                ("logpath0=games.log", "logpath0=friday.log"),
                ("game_complete=0", "game_complete=1"),
                ("game_last_placed=3", "game_last_placed=4"),
                ("link_color=#0000FF", "link_color=#123456"),
                ("file_ext=.html", "file_ext=.htm"),
                ("hilite_levels=4", "hilite_levels=5"),
                (levels, "".join(f"hilite_level{index}={level}\nhilite_color{index}={color}\n"
                                 for index, (level, color) in enumerate(
                                     [("25", "#654321")] + SHIPPED_LEVELS))),
                ("main_templates_number=13", "main_templates_number=12"),
                ("main_template12=playerrank\n", ""),
        ):
            self.assertEqual(expected.count(old), 1, old)
            expected = expected.replace(old, new)
        self.wait_for_config(expected + "title=Friday Night Frags\n")

        desktop.keys("F5")
        page = self.directory / "output/stats.htm"
        wait_for(page.exists, "the page")
        editor.wait_for_engine()
        self.leave(editor)
        text = page.read_text("utf-8")
        self.assertIn("Friday Night Frags", text)
        self.assertIn('href="player_', text)

    def test_access_keys_shortcuts_and_menus(self):
        desktop = self.desktop
        shipped = self.config()
        changed = shipped.replace("min_kills=10", "min_kills=12345")
        (self.directory / "morvane.cfg").write_text(changed, "utf-8")
        tools = self.configuration.parent / "tools"
        tools.mkdir()
        (tools / "lp").write_text(f'#!/bin/sh\necho "$*" >"{tools}/printed"\n')
        (tools / "lp").chmod(0o755)
        editor = self.open(PATH=f"{tools}:{desktop.environment['PATH']}")

        # No keeps everything; Yes brings the defaults, which are what is shipped.
        self.answer("ctrl+r", "Escape")
        self.answer("alt+d", "alt+n")
        desktop.keys("alt+g", "Tab", "space", "alt+s")
        self.wait_for_config(changed.replace("game_complete=0", "game_complete=1"))
        self.answer("alt+d", "Return")
        desktop.keys("ctrl+s")
        self.wait_for_config(shipped)
        # View, Main; File, Save; Help, About.
        desktop.keys("alt+v", "m")
        desktop.over("%c")
        desktop.keys("alt+f", "s")
        self.wait_for_config(shipped.replace("%X %x", "%c"))
        self.answer("alt+h Up Return", "Return")

        desktop.keys("ctrl+p")
        wait_for((tools / "printed").exists, "printing")
        desktop.keys("alt+c")
        wait_for((self.directory / "output/stats.html").exists, "the page")
        editor.wait_for_engine()
        self.leave(editor, "ctrl+q")


class OtherPrograms(DesktopTest):
    def test_exchange_of_texts_by_the_clipboard(self):
        desktop = self.desktop
        text = "Größe – 名前 \U0001f3af ;[x]"
        shipped = self.config()
        desktop.put_on_clipboard(text)
        editor = self.open()
        desktop.keys("alt+u", "Tab", "alt+e", "Up", "Up", "Return")  # Edit, Paste
        desktop.keys("Tab", "ctrl+v", "Tab", "space", "ctrl+s")
        self.wait_for_config(shipped + f"{text}={text}\n")
        desktop.keys("alt+l", "ctrl+a", "alt+e", "Down", "Return")  # Edit, Copy
        wait_for(lambda: desktop.clipboard() == ".html", "a text on the clipboard")
        self.leave(editor)


class Places(DesktopTest):
    """Sizes and places are pixels of the screen, read from the X server."""

    def check_size(self, editor, scale):
        _, _, width, height = self.desktop.place(editor.window)
        self.assertAlmostEqual(width, AREA[0] * scale, delta=1)
        self.assertGreater(height, (AREA[1] + 10) * scale)
        self.assertLess(height, (AREA[1] + 30) * scale)
        return width, height

    def move(self, editor, left, top):
        """Moves the window's frame, and so waits for what was asked of it before."""
        self.desktop.run("xdotool", "windowmove", editor.window, str(left), str(top))
        wait_for(lambda: self.frame(editor) == (left, top), f"the window at {left}, {top}")

    def frame(self, editor):
        """Left and top of the window's frame."""
        extents = self.desktop.output("xprop", "-id", editor.window, "_NET_FRAME_EXTENTS")
        left, _, top, _ = (int(part) for part in extents.split("=")[1].split(","))
        place = self.desktop.place(editor.window)
        return place[0] - left, place[1] - top

    def test_size_is_held_and_place_is_kept_at_every_scale_factor(self):
        for scale in (1, 1.25, 1.5, 2, 3):
            with self.subTest(scale=scale):
                environment = {"QT_SCALE_FACTOR": str(scale)}
                editor = self.open(**environment)
                size = self.check_size(editor, scale)
                for wish in ((1900, 1300), (100, 100)):
                    self.desktop.run("xdotool", "windowsize", editor.window, *map(str, wish))
                self.move(editor, 301, 203)
                self.assertEqual(self.desktop.place(editor.window)[2:], size)
                self.leave(editor)
                places = []
                for _ in range(2):
                    editor = self.open(**environment)
                    places.append(self.frame(editor))
                    self.assertEqual(self.desktop.place(editor.window)[2:], size)
                    self.leave(editor, "ctrl+q")
                self.assertAlmostEqual(places[0][0], 301, delta=scale)
                self.assertAlmostEqual(places[0][1], 203, delta=scale)
                self.assertEqual(places[0], places[1], "the window wanders")


    def test_two_monitors(self):
        monitors = {"left": (0, 0, 900, 1400), "primary": (900, 200, 1100, 1200)}
        with self.desktop.monitors(**monitors):
            editor = self.open()
            left, top, width, height = monitors["primary"]
            middle = (left + (width - 8940 / 15) / 2, top + (height - 6540 / 15) / 2)
            self.assertEqual(self.frame(editor), middle)
            for place in ((1300, 850), (60, 900)):
                self.move(editor, *place)
                self.leave(editor)
                editor = self.open()
                self.assertEqual(self.frame(editor), place)
            # What opens over the window opens on its monitor.
            self.desktop.keys("alt+d")
            box = self.desktop.place(self.desktop.wait_for_dialog())
            self.assertLess(box[0] + box[2], 900)
            self.desktop.keys("Escape")
            self.desktop.wait_for_window(TITLE)
            self.leave(editor)

    def test_two_monitors_of_different_scale_factors(self):
        with self.desktop.monitors(left=(0, 0, 700, 1400), primary=(700, 0, 1300, 1400)):
            environment = {"QT_SCREEN_SCALE_FACTORS": "left=1;primary=2"}
            editor = self.open(**environment)
            self.check_size(editor, 2)
            place = self.frame(editor)
            self.leave(editor)
            editor = self.open(**environment)
            self.assertEqual(self.frame(editor), place)
            self.move(editor, 20, 30)
            wait_for(lambda: self.desktop.place(editor.window)[2] == AREA[0], "the smaller window")
            self.check_size(editor, 1)
            self.leave(editor)
            editor = self.open(**environment)
            self.assertEqual(self.frame(editor), (20, 30))
            self.check_size(editor, 1)
            self.leave(editor)


class Colors(DesktopTest):
    """The desktop's color schemes, as its settings tell them to every program."""

    SCHEMES = {  # window, fields, texts, and half way between the first and the last: outlines
        "dark": ("#31363B", "#232629", "#EFF0F1", "#909396"),
        "high contrast": ("#000000", "#000000", "#FFFFFF", "#808080"),
    }

    def set_scheme(self, window, view, text):
        decimal = lambda color: ",".join(str(part) for part in bytes.fromhex(color[1:]))
        self.configuration.mkdir(exist_ok=True)
        (self.configuration / "kdeglobals").write_text("".join(
            f"[Colors:{name}]\n"
            f"BackgroundNormal={decimal(paper)}\nForegroundNormal={decimal(text)}\n"
            for name, paper in (("Window", window), ("Button", window), ("View", view))))

    def wait_for_colors(self, editor, *colors):
        """Waits until 40 pixels have each color, and of the last 3000."""
        def seen():
            counts = self.desktop.colors(editor.window)
            return all(counts.get(color, 0) > 40 for color in colors) and counts[colors[-1]] > 3000
        wait_for(seen, f"the colors {colors}")

    def test_schemes_are_taken_and_fields_stay_in_sight(self):
        for name, (window, view, text, outline) in self.SCHEMES.items():
            with self.subTest(scheme=name):
                self.set_scheme(window, view, text)
                editor = self.open(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
                self.desktop.keys("alt+m")
                self.wait_for_colors(editor, window, view, text, outline)
                self.leave(editor)
        editor = self.open()
        self.desktop.keys("alt+m")
        self.wait_for_colors(editor, "#FFFFFF", "#EFEDE8")  # the program's own
        self.leave(editor)


if __name__ == "__main__":
    EDITOR, ENGINE, SHARE, LOG = (Path(argument).resolve() for argument in sys.argv[1:5])
    unittest.main(argv=sys.argv[:1] + sys.argv[5:], verbosity=2)
