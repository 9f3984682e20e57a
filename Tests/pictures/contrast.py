"""How well what a picture shows stands out from its ground, as a ratio of luminances from 1 to 21."""
import collections
import re
import subprocess


def contrast(picture, area):
    """The highest ratio between the ground of an area (left, top, right, bottom), its commonest colour, and any other."""
    left, top, right, bottom = area
    ended = subprocess.run(["convert", str(picture), "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage",
                            "-depth", "8", "txt:-"], check=True, capture_output=True, text=True, stdin=subprocess.DEVNULL)
    colours = collections.Counter(re.findall(r"#([0-9A-F]{6})", ended.stdout))
    ground = luminance(colours.most_common(1)[0][0])
    return max(ratio(ground, luminance(colour)) for colour in colours)


def luminance(colour):
    """Relative luminance of a colour written as six hexadecimal digits."""
    shares = [int(colour[at:at + 2], 16) / 255 for at in (0, 2, 4)]
    red, green, blue = (share / 12.92 if share <= 0.03928 else ((share + 0.055) / 1.055) ** 2.4 for share in shares)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def ratio(one, other):
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)
