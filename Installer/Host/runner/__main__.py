"""The inner part of ./run: everything is built and a display is up."""
import argparse
import pathlib
import signal
import sys

import flow
import follow
import gallery
import languages

# The sample site is no faster than a good line, so that there is something to see of a download.
SITE_RATE = "4m"


def arguments():
    parser = argparse.ArgumentParser(prog="./run", description="Runs an installation by the reference host.")
    parser.add_argument("flow", nargs="?", default="media", choices=["media", "web", "gallery"],
                        help="install from the media, from a download site, or picture every state in every language")
    parser.add_argument("--out", type=pathlib.Path, metavar="DIR", help="where results go (default: out/<flow>)")
    spoken = {each.code: each.name for each in languages.read()}
    listed = ", ".join(f"{code} {name}" for code, name in spoken.items())
    parser.add_argument("--language", default="EN", choices=spoken, metavar="CODE",
                        help=f"the host's language (default: EN): {listed}")
    parser.add_argument("--authorize", default="grant", choices=["grant", "deny", "cancel", "ask"],
                        help="the answer to the administrator prompt; ask shows it (default: grant)")
    parser.add_argument("--debug", action="store_true", help="trace log on")
    parser.add_argument("--media", type=pathlib.Path, metavar="DIR", help="your own media instead of the sample")
    parser.add_argument("--site", metavar="URL", help="web: your own download site instead of the sample")
    parser.add_argument("--offline", action="store_true", help="web: the site cannot be reached")
    parser.add_argument("--timeout", type=float, default=600, metavar="SECONDS", help="longest run (default: 600)")
    parser.add_argument("--show", action="store_true", help="use the real display")
    parser.add_argument("--build", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    return parser.parse_args()


def stop(number, _frame):
    """An end from outside becomes an exception, so that whatever was started is stopped."""
    sys.exit(128 + number)


def main():
    asked = arguments()
    out = asked.out or pathlib.Path("out") / asked.flow
    samples = asked.build / "samples"
    options = flow.Options(
        flow=asked.flow, out=out, build=asked.build, media=asked.media or samples / "media", site=asked.site,
        site_folder=samples / "site", offline=asked.offline, language=asked.language, authorize=asked.authorize,
        debug=asked.debug, timeout=asked.timeout)
    if asked.flow == "web" and not asked.offline:
        options.pictures, options.rate = flow.WEB_PICTURES, SITE_RATE
    try:
        if asked.flow == "gallery":
            print(f"The sheet is {gallery.make(options, print)}")
            return 0
        ended = flow.run(options, follow.Progress())
    except flow.RunError as error:
        print(f"run: {error}", file=sys.stderr)
        return 1
    report(ended, out)
    return ended.status


def report(ended, out):
    for package in ended.summary.get("packages", []):
        print(f"  {package['outcome'] or 'not installed':<14} {package['name']}  ({package['component']})")
    if ended.summary:
        print(f"{ended.summary['installedFiles']} files installed in {ended.summary['seconds']:.1f} s; see {out}")
    if ended.status != 0:
        print(f"run: {ended.reason}", file=sys.stderr)


if __name__ == "__main__":
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, stop)
    sys.exit(main())
