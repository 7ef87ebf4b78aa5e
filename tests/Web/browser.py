"""A phone's browser, in a process of its own that is driven through Playwright."""

import json
import struct
import subprocess
import zlib
from pathlib import Path

TOOLS = Path(__file__).resolve().parent / "tools"


class BrowserError(Exception):
    """The browser could not do it."""


class Browser:
    """home: a folder whose certificate store names whom the browser trusts."""

    def __init__(self, modules, home, log):
        # Modules are looked for above the script, so it stands beside them.
        script = Path(modules) / "bridge.mjs"
        script.write_bytes((TOOLS / "bridge.mjs").read_bytes())
        self._home = home
        with open(log, "ab") as output:
            self._bridge = subprocess.Popen(["node", str(script)], stdin=subprocess.PIPE,
                                            stdout=subprocess.PIPE, stderr=output, text=True)

    def start(self, width, height, scale=1, **more):
        return self.call("start", browser="/usr/bin/chromium", home=str(self._home),
                         profile=str(self._home / "profile"), width=width, height=height,
                         scale=scale, **more)

    def call(self, name, **given):
        """Raises BrowserError when it goes wrong."""
        self._bridge.stdin.write(json.dumps({"do": name, **given}) + "\n")
        self._bridge.stdin.flush()
        line = self._bridge.stdout.readline()
        if not line:
            raise BrowserError(f"the browser ended during {name}")
        answer = json.loads(line)
        if "error" in answer:
            raise BrowserError(f"{name}: {answer['error']}")
        return answer["ok"]

    def holds(self, code, where="evaluate"):
        """Whether the code gives true; not while the page or the worker that it is for just changes."""
        try:
            return self.call(where, code=code) is True
        except BrowserError:
            return False

    def stop(self):
        if self._bridge.poll() is None:
            try:
                self.call("stop")
            except BrowserError:
                pass
            self._bridge.stdin.close()
            self._bridge.wait(20)


def trust(home, authority):
    """Makes browsers with this home folder trust the authority."""
    store = home / ".pki" / "nssdb"
    store.mkdir(parents=True)
    for words in (("-N", "--empty-password"), ("-A", "-t", "C,,", "-n", "practice", "-i", authority)):
        subprocess.run(["certutil", *words[:1], "-d", f"sql:{store}", *map(str, words[1:])], check=True)


class PagePicture:
    """What a picture of the page shows: the pixels of a PNG file, three or four bytes each."""

    def __init__(self, path):
        content = Path(path).read_bytes()
        self.width, self.height, depth, kind = struct.unpack(">IIBB", content[16:26])
        if depth != 8 or kind not in (2, 6):
            raise RuntimeError("the picture is not as expected")
        self._size = 3 if kind == 2 else 4
        data, at = b"", 8
        while at < len(content):
            length, = struct.unpack(">I", content[at:at + 4])
            if content[at + 4:at + 8] == b"IDAT":
                data += content[at + 8:at + 8 + length]
            at += length + 12
        self.pixels = bytes(self._unfiltered(zlib.decompress(data)))

    def brightness(self):
        size = self._size
        return bytes(map(max, self.pixels[0::size], self.pixels[1::size], self.pixels[2::size]))

    def _unfiltered(self, data):
        size, row = self._size, self.width * self._size
        result, before = bytearray(), bytearray(row)
        for y in range(self.height):
            start = y * (row + 1)
            kind, line = data[start], bytearray(data[start + 1:start + 1 + row])
            if kind == 1:
                for x in range(size, row):
                    line[x] = (line[x] + line[x - size]) & 255
            elif kind == 2:
                line = bytearray((one + above) & 255 for one, above in zip(line, before))
            elif kind == 3:
                for x in range(row):
                    left = line[x - size] if x >= size else 0
                    line[x] = (line[x] + (left + before[x]) // 2) & 255
            elif kind == 4:
                for x in range(row):
                    left = line[x - size] if x >= size else 0
                    line[x] = (line[x] + _paeth(left, before[x],
                                                before[x - size] if x >= size else 0)) & 255
            result += line
            before = line
        return result


def _paeth(left, above, corner):
    guess = left + above - corner
    return min((left, above, corner), key=lambda one: abs(guess - one))
