"""Compares a picture of the window with the kept one, and draws what differs."""
import dataclasses
import pathlib
import subprocess

# Levels of red, green and blue in a kept picture: few enough to make the file small.
LEVELS = "24"
# A pixel differs when its colour is farther off than the levels are apart. An empty bar on white is twice as far.
COLOUR = "4%"
# That many pixels may differ: the edges of a letter or two. The shortest text and the smallest control have more.
PIXELS = 30


@dataclasses.dataclass(frozen=True)
class Comparison:
    """How far two pictures are apart; `why` is empty when they are the same for a person."""
    pixels: int
    why: str


def cover(picture, areas):
    """Paints over what moves: rectangles (left, top, right, bottom), in place, in the white of the table."""
    rectangles = " ".join(f"rectangle {left},{top} {right},{bottom}" for left, top, right, bottom in areas)
    ended = magick("mogrify", "-fill", "white", "-draw", rectangles, str(picture))
    if ended.returncode != 0:
        raise RuntimeError(ended.stderr)


def compare(taken, kept, difference):
    """Compares two picture files. What differs is written to the file `difference`, which is removed when nothing does."""
    difference = pathlib.Path(difference)
    difference.unlink(missing_ok=True)
    if size(taken) != size(kept):
        return Comparison(0, f"{taken} is {size(taken)}, the kept picture {size(kept)}")
    pixels = differing_pixels(taken, kept)
    if pixels <= PIXELS:
        return Comparison(pixels, "")
    draw(taken, kept, difference)
    return Comparison(pixels, f"{pixels} pixels differ, see {difference}")


def differing_pixels(taken, kept):
    ended = magick("compare", "-metric", "AE", "-fuzz", COLOUR, str(taken), str(kept), "null:")
    if ended.returncode > 1:
        raise RuntimeError(ended.stderr)
    return round(float(ended.stderr.split()[0]))


def draw(taken, kept, difference):
    """Side by side: the kept picture, the one taken, and the one taken with what differs in red."""
    marked = difference.with_suffix(".marked.png")
    magick("compare", "-fuzz", COLOUR, "-highlight-color", "#e00000", "-lowlight-color", "#ffffffc0", str(taken), str(kept),
           str(marked))
    ended = magick("convert", str(kept), str(taken), str(marked), "-bordercolor", "#808080", "-border", "2", "+append",
                   str(difference))
    marked.unlink(missing_ok=True)
    if ended.returncode != 0:
        raise RuntimeError(ended.stderr)


def size(picture):
    return magick("identify", "-format", "%wx%h", str(picture)).stdout


def keep(taken, kept):
    """Stores a picture small: fewer colours, and nothing but the picture."""
    ended = magick("convert", str(taken), "-strip", "-posterize", LEVELS, "-define", "png:compression-level=9", str(kept))
    if ended.returncode != 0:
        raise RuntimeError(ended.stderr)


def magick(*command):
    return subprocess.run(command, check=False, capture_output=True, text=True, stdin=subprocess.DEVNULL)
