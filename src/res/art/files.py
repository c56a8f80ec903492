"""The bytes of bitmap, PNG and icon files."""

import struct
import zlib


def bmp(rows, palette):
    """A bitmap of 24 bits a pixel: an image list keeps the depth of its bitmap, and only so all colours."""
    width, height = len(rows[0]), len(rows)
    padding = bytes(-3 * width % 4)
    lines = (b"".join(bytes(reversed(palette[letter])) for letter in row) for row in reversed(rows))
    pixels = b"".join(line + padding for line in lines)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 3780, 3780, 0, 0)
    offset = 14 + len(header)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + header + pixels


def png(pixels):
    """pixels: rows of (red, green, blue, alpha), 0 to 255, colours not multiplied by alpha."""

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", len(pixels[0]), len(pixels), 8, 6, 0, 0, 0)
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in pixels)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) +
            chunk(b"IEND", b""))


def icon_bitmap(pixels):
    """One picture of an icon file, as a bitmap with alpha and the mask that older programs look at."""
    size = len(pixels)
    colours = mask = b""
    for row in reversed(pixels):
        colours += b"".join(bytes((blue, green, red, alpha)) for red, green, blue, alpha in row)
        bits = "".join("1" if pixel[3] < 128 else "0" for pixel in row).ljust(-(-size // 32) * 32, "0")
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(colours) + len(mask), 0, 0, 0, 0)
    return header + colours + mask


def ico(pictures):
    """pictures: square pixel arrays, one a size. The largest is kept as PNG, as the system expects it."""
    blobs = [png(pixels) if len(pixels) >= 256 else icon_bitmap(pixels) for pixels in pictures]
    offset = 6 + 16 * len(blobs)
    entries = b""
    for pixels, blob in zip(pictures, blobs):
        size = len(pixels) % 256
        entries += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(blob), offset)
        offset += len(blob)
    return struct.pack("<HHH", 0, 1, len(blobs)) + entries + b"".join(blobs)
