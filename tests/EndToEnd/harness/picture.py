"""The display's pixels, read from the file in which Xvfb keeps them."""

import struct
import zlib


class Picture:
    """Pixels as blue, green, red and an unused byte each, row by row."""

    def __init__(self, framebuffer):
        dump = framebuffer.read_bytes()
        # The X window dump format: a header of big-endian 32-bit numbers, then the colour map.
        header = struct.unpack(">25I", dump[:100])
        (self.width, self.height), row, colours = header[4:6], header[12], header[19]
        if header[11] != 32 or row != self.width * 4:
            raise RuntimeError("the display's pixels are not as expected")
        start = header[0] + colours * 12
        self.pixels = dump[start:start + row * self.height]

    def brightness(self):
        """The largest of the three colours of each pixel, row by row."""
        return bytes(map(max, self.pixels[0::4], self.pixels[1::4], self.pixels[2::4]))

    def save(self, path):
        """Writes a PNG file."""
        rows = bytearray()
        for y in range(self.height):
            line = self.pixels[y * self.width * 4:(y + 1) * self.width * 4]
            coloured = bytearray(self.width * 3)
            coloured[0::3], coloured[1::3], coloured[2::3] = line[2::4], line[1::4], line[0::4]
            rows += b"\0" + coloured
        parts = [(b"IHDR", struct.pack(">2I5B", self.width, self.height, 8, 2, 0, 0, 0)),
                 (b"IDAT", zlib.compress(bytes(rows))), (b"IEND", b"")]
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            for kind, data in parts:
                file.write(struct.pack(">I", len(data)) + kind + data
                           + struct.pack(">I", zlib.crc32(kind + data)))
