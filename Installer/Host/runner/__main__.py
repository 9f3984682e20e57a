"""The inner part of ./run: everything is built, a display is up, and the arguments have been looked at."""
import argparse
import pathlib
import signal
import subprocess
import sys

import flow
import follow
import gallery
import report

# The sample site is no faster than a good line, so that there is something to see of a download.
SITE_RATE = "4m"
FOR_EVER = 10 ** 9  # seconds


def arguments():
    parser = argparse.ArgumentParser(prog="./run", add_help=False)
    parser.add_argument("flow", choices=["media", "web", "gallery"])
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--language", default="EN")
    parser.add_argument("--authorize", default="grant")
    parser.add_argument("--debug", action="store_true")
    parser.add_argument("--media", type=pathlib.Path)
    parser.add_argument("--site")
    parser.add_argument("--offline", action="store_true")
    parser.add_argument("--timeout", type=float, default=600)
    parser.add_argument("--show", action="store_true")
    return parser.parse_args()


def options_for(asked):
    samples = asked.build / "samples"
    options = flow.Options(
        flow=asked.flow, out=asked.out, build=asked.build, media=asked.media or samples / "media", site=asked.site,
        site_folder=samples / "site", offline=asked.offline, language=asked.language, authorize=asked.authorize,
        debug=asked.debug, timeout=asked.timeout)
    if asked.show and asked.flow != "gallery":
        options.stay, options.linger = True, FOR_EVER
    if asked.flow == "web" and not asked.offline:
        options.pictures, options.rate = flow.WEB_PICTURES, SITE_RATE
    return options


def run(options):
    if options.flow == "gallery":
        print(f"The sheet is {gallery.make(options, print)}")
        return 0
    ended = flow.run(options, follow.Progress())
    report.write(ended, sys.stdout, sys.stderr)
    return ended.status


def main():
    try:
        return run(options_for(arguments()))
    except flow.RunError as error:
        print(f"run: {error}", file=sys.stderr)
    except OSError as error:
        print(f"run: {report.problem(error)}", file=sys.stderr)
    except subprocess.CalledProcessError as error:
        print(f"run: {error.cmd[0]} ended with status {error.returncode}", file=sys.stderr)
    return 1


def stop(number, _frame):
    """An end from outside becomes an exception, so that whatever was started is stopped."""
    sys.exit(128 + number)


if __name__ == "__main__":
    for signal_number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(signal_number, stop)
    sys.exit(main())
