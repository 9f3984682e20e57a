"""A contact sheet of every state of the pane in every language, for a person to look at."""
import dataclasses
import plistlib
import shutil
import subprocess

import flow
import languages
import run_folder
from flow import Moments

LANGUAGES = {each.code: each.name for each in languages.read()}


def second_slide(moments, event):
    return moments.settled(event, seconds=1.6)


def with_unfetchable_archive(places):
    """The first component's address is of a kind that no download understands, so that the run gets stuck."""
    selection = plistlib.loads(places.web_selection.read_bytes())
    selection[0]["LOCATION"]["text"] = "gopher://download.quorvel.invalid/Fax.zip"
    places.web_selection.write_bytes(plistlib.dumps(selection))


NOTICE_LOOK = 1.5  # seconds after the end within which the host's words are pictured
# One run each: what differs from an ordinary run, and the pictures that it is made for.
RUNS = [
    ({"flow": "media", "next_slide": 1.0},
     {"media 1 waiting": Moments.settled, "media 2 second page": second_slide, "media 3 installing": Moments.installing,
      "media 4 complete": Moments.end}),
    ({"flow": "web", "rate": "4m"},
     {"web 1 downloading": Moments.downloading, "web 2 installing": Moments.installing, "web 3 complete": Moments.end}),
    ({"flow": "web", "offline": True},
     {"fall-back 1 installing": Moments.installing, "fall-back 2 complete": Moments.end}),
    ({"flow": "web", "selection": "SelectedInput-setaside.plist", "look_after": NOTICE_LOOK}, {"set aside": Moments.noticed}),
    ({"flow": "web", "prepared": with_unfetchable_archive, "look_after": NOTICE_LOOK}, {"stuck": Moments.noticed}),
    ({"flow": "media", "authorize": "ask", "press": "Escape"}, {"prompt": Moments.prompting}),
    ({"flow": "media", "authorize": "cancel", "look_after": NOTICE_LOOK}, {"refused": Moments.noticed}),
    ({"flow": "media", "authorize": "grant-expires:1,ask", "press": "Escape"}, {"second prompt": Moments.asking_again}),
]
STATES = [name for _, pictures in RUNS for name in pictures]
TILE_HEIGHT = 400


def make(options, say):
    """Pictures every state in every language below the output folder, and puts them on one sheet. Gives its path."""
    with run_folder.opened(options.out) as folder:
        pictures = folder.claim("pictures")
        pictures.mkdir()
        run = folder.claim("run")
        folder.begun()
        for code in LANGUAGES:
            for changes, moments in RUNS:
                say(f"{LANGUAGES[code]}: {', '.join(moments)}")
                picture_run(dataclasses.replace(options, language=code, out=run, pictures=moments, **changes), code,
                            pictures)
        shutil.rmtree(run)
        return sheet(pictures, folder.claim("gallery.png"))


def picture_run(options, code, pictures):
    flow.run(options)
    for name in options.pictures:
        taken = options.out / f"{name}.png"
        if taken.exists():
            shutil.move(taken, pictures / f"{code} {name}.png")


def sheet(pictures, target):
    """A row a language, a column a state; what could not be pictured leaves an empty place."""
    command = ["montage", "-background", "#eef1f5", "-font", typeface(), "-pointsize", "20"]
    for code, language in LANGUAGES.items():
        for state in STATES:
            picture = pictures / f"{code} {state}.png"
            command += ["-label", f"{language}: {state}", str(picture) if picture.exists() else "null:"]
    command += ["-tile", f"{len(STATES)}x", "-geometry", f"x{TILE_HEIGHT}+14+14", str(target)]
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL)
    return target


def typeface():
    """A font file that has the letters of all the languages."""
    return subprocess.run(["fc-match", "-f", "%{file}", "Noto Sans CJK SC"], check=True, capture_output=True,
                          text=True).stdout


__all__ = ["make"]
