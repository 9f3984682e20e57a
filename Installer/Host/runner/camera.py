"""Takes pictures of the host's window, and presses keys."""
import subprocess


class Camera:
    """Pictures of the host's window as the screen shows it: frame included, and a prompt that lies above it."""

    def __init__(self, folder):
        """The folder is the run's; pictures go into it."""
        self.folder = folder
        self.taken = set()

    def take(self, name):
        """Takes each picture once, and not before there is a window."""
        window = None if name in self.taken else wizard_window()
        if window:
            self.taken.add(name)
            subprocess.run(["import", "-silent", "-window", "root", "-crop", frame(window), "+repage",
                            str(self.folder.claim(f"{name}.png"))], check=False, stdin=subprocess.DEVNULL)

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
