#!/usr/bin/env python3
"""Draws the logo at the head of the printed guest list, a 276 by 54 GIF, and writes its
bytes into printing/GuestLogo.cpp, so that the program carries it. Run from the repository's
root after changing the drawing; the output is fixed for a given drawing."""

import math

W, H = 276, 54
WHITE, GOLD, ROSE, PALE = 0, 1, 2, 3
PALETTE = [(255, 255, 255), (191, 150, 62), (142, 44, 72), (234, 214, 170)]

# 5 by 7 block letters for the name.
GLYPHS = {
    "V": ["10001", "10001", "10001", "10001", "10001", "01010", "00100"],
    "E": ["11111", "10000", "10000", "11110", "10000", "10000", "11111"],
    "L": ["10000", "10000", "10000", "10000", "10000", "10000", "11111"],
    "M": ["10001", "11011", "10101", "10101", "10001", "10001", "10001"],
    "O": ["01110", "10001", "10001", "10001", "10001", "10001", "01110"],
    "R": ["11110", "10001", "10001", "11110", "10100", "10010", "10001"],
    "A": ["01110", "10001", "10001", "11111", "10001", "10001", "10001"],
}


def draw():
    img = [[WHITE] * W for _ in range(H)]

    def put(x, y, c):
        if 0 <= x < W and 0 <= y < H:
            img[y][x] = c

    # Two rings, linked, at the right: where a Hebrew reader begins.
    for cx, c in ((226, GOLD), (246, ROSE)):
        for y in range(H):
            for x in range(W):
                d = math.hypot(x - cx, y - 27)
                if 15.5 <= d <= 19.5:
                    put(x, y, c)
    # The gold ring passes over the rose one at the top of their overlap.
    for y in range(8, 27):
        for x in range(226, 246):
            if 15.5 <= math.hypot(x - 226, y - 27) <= 19.5:
                put(x, y, GOLD)

    # The name in block letters, three pixels to a dot.
    text, scale, x0, y0 = "VELMORA", 3, 12, 10
    for i, ch in enumerate(text):
        for r, row in enumerate(GLYPHS[ch]):
            for k, bit in enumerate(row):
                if bit == "1":
                    for dy in range(scale):
                        for dx in range(scale):
                            put(x0 + i * 6 * scale + k * scale + dx, y0 + r * scale + dy, ROSE)
    # A pale underline with a gold dot at each end.
    for x in range(12, 198):
        put(x, 38, PALE)
        put(x, 39, PALE)
    for x0 in (12, 196):
        for dy in range(-2, 4):
            for dx in range(-2, 3):
                if dx * dx + (dy - 0.5) ** 2 <= 6:
                    put(x0 + dx, 38 + dy, GOLD)
    return img


def lzw(pixels, min_size):
    clear, end = 1 << min_size, (1 << min_size) + 1
    size, table, nxt = min_size + 1, {}, end + 1
    out, bits, nbits = bytearray(), 0, 0

    def emit(code):
        nonlocal bits, nbits
        bits |= code << nbits
        nbits += size
        while nbits >= 8:
            out.append(bits & 0xFF)
            bits >>= 8
            nbits -= 8

    emit(clear)
    prefix = pixels[0]
    for p in pixels[1:]:
        key = (prefix, p)
        if key in table:
            prefix = table[key]
            continue
        emit(prefix)
        if nxt < 4096:
            table[key] = nxt
            if nxt == (1 << size) and size < 12:
                size += 1
            nxt += 1
        else:
            emit(clear)
            table, size, nxt = {}, min_size + 1, end + 1
        prefix = p
    emit(prefix)
    emit(end)
    if nbits:
        out.append(bits & 0xFF)
    return bytes(out)


def gif(img):
    data = bytearray(b"GIF89a")
    data += W.to_bytes(2, "little") + H.to_bytes(2, "little")
    data += bytes([0xF1, 0, 0])  # global table of 4 colours
    for rgb in PALETTE:
        data += bytes(rgb)
    data += b"," + bytes(4) + W.to_bytes(2, "little") + H.to_bytes(2, "little") + b"\x00"
    data += b"\x02"
    stream = lzw([c for row in img for c in row], 2)
    for i in range(0, len(stream), 255):
        chunk = stream[i:i + 255]
        data += bytes([len(chunk)]) + chunk
    data += b"\x00;"
    return bytes(data)


def main():
    data = gif(draw())
    lines = []
    for i in range(0, len(data), 16):
        lines.append("    " + ", ".join("0x%02x" % b for b in data[i:i + 16]) + ",")
    with open("printing/GuestLogo.cpp", "w") as f:
        f.write("// Made by scripts/make-logo.py: the logo of the printed guest list, a GIF of 276 by 54.\n")
        f.write("namespace velmora::printing {\n\n")
        f.write("extern const unsigned char GuestLogoGif[];\nextern const unsigned int GuestLogoGifSize;\n\n")
        f.write("const unsigned char GuestLogoGif[] = {\n" + "\n".join(lines) + "\n};\n")
        f.write("const unsigned int GuestLogoGifSize = sizeof(GuestLogoGif);\n\n")
        f.write("} // namespace velmora::printing\n")


if __name__ == "__main__":
    main()
