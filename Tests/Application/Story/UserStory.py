#!/usr/bin/env python3
"""From an empty profile to a second start: the real program on a screen, used by keyboard and mouse.

    UserStory.py PROGRAM COMMAND_LINE_PROGRAM PICTURE

The picture is a PNG of 512 by 512. The command line program is the independent eye on what the window saved.
"""

import json
import subprocess
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from Desktop import Desktop, wait_for  # noqa: E402

PROGRAM, COMMAND_LINE, PICTURE = (Path(word).resolve() for word in sys.argv[1:4])


class UserStory(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(lambda: self.desktop.close(self.failed()))
        self.settings = self.desktop.folder / "config" / "Larkfield Systems" / "Halvane.plist"
        self.photo = self.desktop.folder / "a photo.png"
        self.photo.write_bytes(PICTURE.read_bytes())

    def failed(self):
        result = self._outcome.result
        return any(test is self for test, _ in result.failures + result.errors)

    def stored(self, text):
        """Whether the settings file holds the text by now."""
        wait_for(f'"{text}" among the settings', lambda: self.settings.exists() and text in self.settings.read_text())

    def start(self, *words, output=None):
        process = self.desktop.start(PROGRAM, *words, output=output)
        main = self.desktop.window("Halvane")
        return process, main

    def leave(self, process):
        self.desktop.window("Halvane")
        self.desktop.keys("alt+F4")
        self.assertEqual(0, process.wait(60))

    def choose(self, title, path):
        """Types a path into a file dialog."""
        self.desktop.window(title)
        self.desktop.keys("ctrl+a")
        self.desktop.type(str(path))
        self.desktop.keys("Return")
        self.desktop.gone(title)

    def greet(self, main):
        """Sends the splash of a first start away with a click beside it."""
        self.desktop.window("About")
        x, y, width, height = self.desktop.geometry(main)
        self.desktop.click(x + width // 2, y + height - 60)
        self.desktop.gone("About")

    def save_as(self, entry, path):
        """Saves the active texture by an entry of the File menu, which is told by its place from below: 6 Save As, 5 Save As Legacy."""
        self.desktop.window("Halvane")
        self.desktop.keys("alt+f", *["Up"] * entry, "Return")
        self.choose("Save Texture", path)

    def save_new(self, path):
        """Saves the active texture, which has no file yet, as soon as it has been encoded."""
        self.desktop.keys_for("Save Texture", "ctrl+s")
        self.choose("Save Texture", path)

    def info(self, path):
        output = subprocess.run([COMMAND_LINE, "info", "--json", path], capture_output=True, check=True).stdout
        return json.loads(output)

    def test_a_photo_becomes_a_texture_and_the_program_remembers(self):
        desktop = self.desktop
        process, main = self.start()
        x, y, width, height = desktop.geometry(main)
        self.greet(main)

        # A photo, by the menu's key.
        desktop.keys("ctrl+o")
        self.choose("Open Source File", self.photo)
        self.stored("a photo.png")

        # To the first format that the group DirectX 11 (9_3) offers, BC1, all by keyboard: from the box of groups, where
        # the focus stands as long as there is nothing to encode to, over the other filters and the reset button to the table.
        desktop.keys_for("Encode Texture", "ctrl+e")
        desktop.window("Encode Texture")
        desktop.type("DirectX")
        desktop.keys(*["Tab"] * 7, "Down", "Home", "Return")
        desktop.gone("Encode Texture")
        self.stored("RecentFormat")

        # The result is a document of its own, which has no file yet.
        texture = desktop.folder / "texture.mox"
        self.save_new(texture)
        wait_for("the saved texture", texture.exists)
        self.leave(process)
        header = self.info(texture)
        self.assertEqual("BC1", header["formatName"])
        self.assertEqual((512, 512, 10), (header["width"], header["height"], header["mipLevels"]))

        # Second start: where it stood, what it knew; the texture through the command line after a filler word.
        settings = self.settings.read_text()
        self.assertIn("<key>State</key>", settings)
        self.assertIn("<key>Geometry</key>", settings)
        process, main = self.start("open", texture)
        self.assertEqual((width, height), desktop.geometry(main)[2:])
        self.stored("texture.mox")
        text = self.settings.read_text()
        self.assertLess(text.index("texture.mox"), text.index("a photo.png"))

        # The encode dialog has last time's format in its first row, and its settings.
        self.greet(main)
        desktop.keys_for("Encode Texture", "ctrl+e")
        desktop.window("Encode Texture")
        desktop.keys("Return")
        desktop.gone("Encode Texture")
        again = desktop.folder / "again.mox"
        self.save_new(again)
        wait_for("the second texture", again.exists)
        self.assertEqual("BC1", self.info(again)["formatName"])

        # A launcher hands over another file, and one that is broken; the window stays.
        desktop.send(str(self.photo))
        wait_for("the photo at the head of the list", lambda: self.settings.read_text().index("a photo.png") <
                 self.settings.read_text().index("texture.mox"))
        broken = desktop.folder / "broken.mox"
        broken.write_bytes(b"MOX\x03" + b"\xff" * 60)
        desktop.send(str(broken))
        desktop.window("Could not load file")
        desktop.keys("Return")
        desktop.gone("Could not load file")

        # A second start hands nothing over: it shows a window of its own.
        second = desktop.start(PROGRAM)
        wait_for("a second main window", lambda: len(desktop.windows("Halvane")) == 2)
        second.terminate()
        second.wait(60)
        wait_for("one main window", lambda: len(desktop.windows("Halvane")) == 1)

        # An unsaved document asks; cancelled, the window stays; refused, it ends.
        desktop.keys_for("Encode Texture", "ctrl+e")
        desktop.window("Encode Texture")
        desktop.keys("Return")
        desktop.gone("Encode Texture")
        desktop.keys_for("Texture Modified", "alt+F4")
        desktop.window("Texture Modified")
        desktop.keys("Escape")
        desktop.gone("Texture Modified")
        self.assertIsNone(process.poll())
        desktop.keys_for("Texture Modified", "alt+F4")
        desktop.window("Texture Modified")
        desktop.keys("alt+n")
        self.assertEqual(0, process.wait(60))
        # Its temporary folder went with it; the socket's lock and the like are the toolkit's.
        self.assertEqual([], [path.name for path in (desktop.folder / "tmp").iterdir() if path.is_dir()])

    def test_a_photo_becomes_moxtcii_at_the_fastest_quality(self):
        desktop = self.desktop
        process, main = self.start("open", self.photo)
        self.greet(main)
        self.stored("a photo.png")

        # The second group below the recent formats, OpenGL ES 2; in the table seven rows down; in the box below it the first mode.
        desktop.keys_for("Encode Texture", "ctrl+e")
        desktop.window("Encode Texture")
        desktop.keys("Down", "Down", *["Tab"] * 7, "Down", "Home", *["Down"] * 6, "Tab", "Home", "Return")
        desktop.gone("Encode Texture")
        self.stored("MOXTCEncode")
        texture = desktop.folder / "photo of blocks.mox"
        self.save_new(texture)
        wait_for("the saved texture", texture.exists)
        self.leave(process)
        header = self.info(texture)
        self.assertEqual("MOXTCII 4bpp", header["formatName"])
        self.assertEqual((512, 512, 10), (header["width"], header["height"], header["mipLevels"]))

        # The same bytes as from the shell, and a second start opens them.
        size = header["dataSize"]
        shell = desktop.folder / "shell.mox"
        subprocess.run([COMMAND_LINE, "convert", self.photo, "-o", shell, "--mips", "all", "--format", "moxtcii-4bpp",
                        "--quality", "0"], check=True)
        self.assertEqual(shell.read_bytes()[-size:], texture.read_bytes()[-size:])
        process, main = self.start("open", texture)
        self.greet(main)
        self.stored(texture.name)
        again = desktop.folder / "again.mox"
        self.save_as(6, again)
        wait_for("the texture again", again.exists)
        self.assertEqual(texture.read_bytes(), again.read_bytes())
        self.leave(process)

    def encode(self, *keys):
        """From the encode dialog's box of groups, by keys."""
        self.desktop.keys_for("Encode Texture", "ctrl+e")
        self.desktop.window("Encode Texture")
        self.desktop.keys(*keys)
        self.desktop.gone("Encode Texture")

    def test_a_photo_becomes_etc2_in_a_ktx_file_and_punch_through_is_remarked_on(self):
        desktop = self.desktop
        remarks = desktop.folder / "remarks"
        process, main = self.start("open", self.photo, output=remarks)
        self.greet(main)
        self.stored("a photo.png")

        # The third group below the recent formats, OpenGL ES 3; in the table below twelve of MOXTC, one of ETC1 and two of ETC2 RGB
        # the first of ETC2 RGBA; in the box below it the first mode.
        group = ["Home", "Down", "Down", "Down"]
        self.encode(*group, *["Tab"] * 7, "Down", "Home", *["Down"] * 15, "Tab", "Home", "Return")
        self.stored("ETCEncode")
        texture = desktop.folder / "photo of blocks.ktx"
        self.save_new(texture)
        wait_for("the saved texture", texture.exists)
        header = self.info(texture)
        self.assertEqual("ETC2 RGBA", header["formatName"])
        self.assertEqual((512, 512, 10), (header["width"], header["height"], header["mipLevels"]))
        self.assertEqual(b"", remarks.read_bytes())

        # The same bytes as from the shell.
        shell = desktop.folder / "shell.ktx"
        subprocess.run([COMMAND_LINE, "convert", self.photo, "-o", shell, "--mips", "all", "--format", "etc2-rgba",
                        "--quality", "Fast"], check=True)
        self.assertEqual(shell.read_bytes(), texture.read_bytes())

        # Two rows further down, ETC2 RGB A1, which has no place for the photo's soft alpha and says so.
        self.encode("Tab", "Tab", *group, *["Tab"] * 7, "Down", "Home", *["Down"] * 17, "Return")
        wait_for("a remark", lambda: b"INVALID ALPHA DATA!!\n" in remarks.read_bytes())
        desktop.keys_for("Texture Modified", "alt+F4")
        desktop.window("Texture Modified")
        desktop.keys("alt+n")
        self.assertEqual(0, process.wait(60))

        # A second start opens the file and saves it as it was.
        process, main = self.start("open", texture)
        self.greet(main)
        self.stored(texture.name)
        again = desktop.folder / "again.ktx"
        self.save_as(6, again)
        wait_for("the texture again", again.exists)
        self.assertEqual(texture.read_bytes(), again.read_bytes())
        self.leave(process)

    def test_a_texture_goes_to_every_container_and_comes_back(self):
        desktop = self.desktop
        process, main = self.start("open", self.photo)
        self.greet(main)
        self.stored("a photo.png")
        files = {name: desktop.folder / name for name in ("new.mox", "khronos.ktx", "surface.dds", "old.mox")}
        for name, path in files.items():
            self.save_as(5 if name == "old.mox" else 6, path)
            wait_for(name, path.exists)
        # Each by its own first bytes; the two of its own by their versions.
        starts = {"new.mox": b"MOX\x03", "khronos.ktx": b"\xabKTX 11\xbb", "surface.dds": b"DDS |", "old.mox": b"\x34\0\0\0"}
        for name, start in starts.items():
            self.assertEqual(start, files[name].read_bytes()[:len(start)])
            header = self.info(files[name])
            self.assertEqual((512, 512, 1), (header["width"], header["height"], header["mipLevels"]), name)

        # The name that the document has now writes to the same place, without a question.
        files["old.mox"].unlink()
        desktop.window("Halvane")
        desktop.keys("ctrl+s")
        wait_for("the file again", files["old.mox"].exists)
        self.assertEqual(b"MOX\x03", files["old.mox"].read_bytes()[:4])
        self.save_as(5, desktop.folder / "older.mox")
        wait_for("older.mox", (desktop.folder / "older.mox").exists)
        files["old.mox"] = desktop.folder / "older.mox"
        self.leave(process)

        # Opened again, and saved in the one that keeps everything, each has the pixels of the photo.
        size = 512 * 512 * 4
        pixels = files["new.mox"].read_bytes()[-size:]
        process, main = self.start("open", files["khronos.ktx"])
        self.greet(main)
        for name in ("khronos.ktx", "surface.dds", "old.mox"):
            desktop.send(str(files[name]))
            self.stored(files[name].name)
            again = desktop.folder / f"again {name}.mox"
            self.save_as(6, again)
            wait_for(again.name, again.exists)
            self.assertEqual(pixels, again.read_bytes()[-size:], name)

        # What a container has no place for ends in a message, and the document keeps its name: version 2 for OpenGL and blocks.
        desktop.keys_for("Encode Texture", "ctrl+e")
        desktop.window("Encode Texture")
        desktop.type("DirectX")
        desktop.keys(*["Tab"] * 7, "Down", "Home", "Return")
        desktop.gone("Encode Texture")
        self.save_as(5, desktop.folder / "blocks.mox")
        desktop.window("An Error Has Occurred")
        desktop.keys("Return")
        desktop.gone("An Error Has Occurred")
        self.assertFalse((desktop.folder / "blocks.mox").exists())
        self.save_as(6, desktop.folder / "blocks.dds")
        wait_for("blocks.dds", (desktop.folder / "blocks.dds").exists)
        self.assertEqual("BC1", self.info(desktop.folder / "blocks.dds")["formatName"])
        self.leave(process)
        self.assertEqual([], [path.name for path in desktop.folder.glob(".halvane-*")])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
