"""How well it can be seen where the keys go, told from two pictures: with the focus on a control, and elsewhere."""
import re
import subprocess

import contrast

LEAST = 3  # the contrast of a mark that says something


def marked_pixels(focused, elsewhere, area):
    """How many pixels of the area (left, top, right, bottom) stand out in one picture from what is there in the other."""
    pairs = zip(colours(focused, area), colours(elsewhere, area))
    return sum(1 for one, other in pairs if one != other and contrast.ratio(
        contrast.luminance(one), contrast.luminance(other)) >= LEAST)


def colours(picture, area):
    """The colours of the area's pixels, row by row."""
    left, top, right, bottom = area
    ended = subprocess.run(["convert", str(picture), "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage",
                            "-depth", "8", "txt:-"], check=True, capture_output=True, text=True, stdin=subprocess.DEVNULL)
    return re.findall(r"#([0-9A-F]{6})", ended.stdout)
