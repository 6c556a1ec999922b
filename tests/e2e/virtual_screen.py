"""A screen without a display: Xvfb, real key presses through xdotool, and pictures of what it shows.

Pictures are read from the server's own frame buffer, so that nothing but Xvfb and xdotool is
needed.
"""

import os
import struct
import subprocess
import threading
import zlib

PAUSE = threading.Event()
STEP_SECONDS = 0.05
PATIENCE_SECONDS = 20


def wait_until(condition, what):
    """Looks again and again until `condition` gives something true, and returns it."""
    for _ in range(int(PATIENCE_SECONDS / STEP_SECONDS)):
        result = condition()
        if result:
            return result
        PAUSE.wait(STEP_SECONDS)
    raise AssertionError(f"in vain: {what}")


class VirtualScreen:
    def __init__(self, folder, width, height):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24",
             "-fbdir", folder, "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            number = numbers.readline().strip()
        assert number, "Xvfb does not start"
        self.display = ":" + number
        # A French keyboard, so that accents are keys and digits need Shift. It comes with Xvfb.
        subprocess.run(["setxkbmap", "-display", self.display, "fr"], check=True)
        self.frame_buffer = os.path.join(folder, "Xvfb_screen0")

    def close(self):
        self.server.terminate()
        self.server.wait()

    def xdotool(self, *arguments):
        run = subprocess.run(["xdotool", *arguments], env={**os.environ, "DISPLAY": self.display},
                             capture_output=True, text=True, check=False)
        return run.stdout.split()

    def window(self, title):
        """Waits for a visible window of that title, gives it the keyboard and returns its id."""
        found = wait_until(
            lambda: self.xdotool("search", "--onlyvisible", "--name", title), f"window {title}")
        self.xdotool("windowfocus", "--sync", found[-1])
        return found[-1]

    def wait_gone(self, title):
        wait_until(lambda: not self.xdotool("search", "--onlyvisible", "--name", title),
                   f"end of window {title}")

    def press(self, *keys):
        self.xdotool("key", "--delay", "20", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "30", text)

    def pixels(self):
        """Width, height and rows of red, green and blue of what is on the screen."""
        with open(self.frame_buffer, "rb") as file:
            data = file.read()
        header = struct.unpack(">25I", data[:100])
        width, height, line, colours = header[4], header[5], header[12], header[19]
        start = header[0] + colours * 12
        rows = []
        for y in range(height):
            row = data[start + y * line:start + y * line + width * 4]
            rgb = bytearray(width * 3)
            rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
            rows.append(bytes(rgb))
        return width, height, rows

    def settled(self):
        """The screen as it is once it has stopped changing."""
        last = []

        def same():
            last.append(self.pixels())
            return len(last) > 3 and last[-1] == last[-2] == last[-3]

        wait_until(same, "a screen that stands still")
        return last[-1]

    def picture(self, path):
        width, height, rows = self.settled()

        def chunk(kind, body):
            check = zlib.crc32(kind + body)
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", check)

        body = zlib.compress(b"".join(b"\0" + row for row in rows), 6)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
            file.write(chunk(b"IDAT", body) + chunk(b"IEND", b""))
