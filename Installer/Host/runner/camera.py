"""Takes pictures of the host's window, and presses keys."""
import subprocess


class Camera:
    """Pictures of the host's window as the screen shows it: frame included, and a prompt that lies above it."""

    def __init__(self, folder):
        """The folder is the run's; pictures go into it."""
        self.folder = folder
        self.taken = set()
        self.files = {}

    def take(self, name):
        """Takes each picture once, and not before there is a window."""
        if name not in self.taken and self.shoot(name):
            self.taken.add(name)

    def shoot(self, name):
        """Takes a picture in the place of an earlier one of that name. False when there is no window."""
        window = wizard_window()
        if window:
            if name not in self.files:
                self.files[name] = self.folder.claim(f"{name}.png")
            subprocess.run(["import", "-silent", "-window", "root", "-crop", frame(window), "+repage",
                            str(self.files[name])], check=False, stdin=subprocess.DEVNULL)
        return window is not None

    @staticmethod
    def is_ready(prompt=False):
        """Whether the window, or the prompt above it, is on the screen under its title and has the keyboard."""
        found = sorted(windows(), key=area)
        return len(found) == (2 if prompt else 1) and found[0] == active_window() and all(map(is_drawn_around, found))

    @staticmethod
    def press(keys):
        """Presses keys one after another, for whatever window has the keyboard."""
        output("xdotool", "key", "--delay", "100", *keys.split())


def windows():
    """The host's windows, a prompt among them."""
    listed = output("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2].replace(",", " ").split()
    return [window for window in listed if '"VantHost"' in output("xprop", "-id", window, "WM_CLASS")]


def wizard_window():
    """The host's largest window; a prompt is smaller than the wizard. None when there is none."""
    return max(windows(), key=area, default=None)


def active_window():
    """The window that has the keyboard, whosever it is."""
    return output("xprop", "-root", "_NET_ACTIVE_WINDOW").rpartition(" ")[2].strip()


def is_drawn_around(window):
    """Whether the window is on the screen, and the window manager shows the title that the window has now."""
    titles = dict(line.split(" = ", 1) for line in output("xprop", "-id", window, "_NET_WM_NAME",
                                                           "_NET_WM_VISIBLE_NAME").splitlines() if " = " in line)
    own, shown = (titles.get(name) for name in ("_NET_WM_NAME(UTF8_STRING)", "_NET_WM_VISIBLE_NAME(UTF8_STRING)"))
    return shown in (own, None) and "Map State: IsViewable" in output("xwininfo", "-id", window)


def area(window):
    geometry = output("xdotool", "getwindowgeometry", "--shell", window)
    values = dict(line.split("=", 1) for line in geometry.split() if "=" in line)
    return int(values.get("WIDTH", 0)) * int(values.get("HEIGHT", 0))


def frame(window):
    """Where the window lies on the screen, frame included, as ImageMagick writes it."""
    lines = output("xwininfo", "-id", window).splitlines()
    values = dict(line.strip().split(":", 1) for line in lines if ": " in line)
    width, height, x, y = (int(values[key]) for key in ("Width", "Height", "Absolute upper-left X", "Absolute upper-left Y"))
    extents = output("xprop", "-id", window, "_NET_FRAME_EXTENTS").partition("=")[2]
    left, right, top, bottom = map(int, extents.split(",")) if extents else (0, 0, 0, 0)
    return f"{width + left + right}x{height + top + bottom}{x - left:+d}{y - top:+d}"


def output(*command):
    return subprocess.run(command, check=False, capture_output=True, text=True, stdin=subprocess.DEVNULL).stdout
