"""What the terminal says of a run that has ended."""

PIPE_END = ("The pane's outcome PIPE END says that an installer's output has ended, as it does for good packages and bad "
            "ones; whether a package is installed is told by its installer's exit status.")


def write(ended, out, err):
    """Each package and what became of it, what else is missing, and how the run ended."""
    summary = ended.summary
    for package in summary.get("packages", []):
        print(f"  {state(package):<14} {package['name']} ({package['component']}){detail(package)}", file=out)
    for failure in summary.get("notExpanded", []):
        print(f"  {'not expanded':<14} {failure['archive']}: {failure['words']}", file=out)
    for name in summary.get("setAside", []):
        print(f"  {'set aside':<14} {name}: in the folder Desktop/QuorvelPrinter of the run's home", file=out)
    if summary:
        print(f"{summary['installedFiles']} files installed in {summary['seconds']:.1f} s; see {ended.places.out}", file=out)
    if any(state(package) == "failed" and package["outcome"] == "PIPE END" for package in summary.get("packages", [])):
        print(PIPE_END, file=out)
    for line in complaints(ended):
        print(f"run: {line}", file=err)


def state(package):
    if package["installed"]:
        return "installed"
    return "failed" if package["outcome"] or package["exitStatus"] else "not installed"


def detail(package):
    if package["installed"]:
        return f", {package['installedFiles']} files"
    return f": {cause(package)}" if state(package) == "failed" else ""


def cause(package):
    """Why a package failed: its installer's own words, or else how that ended."""
    if package["messages"]:
        return "; ".join(package["messages"])
    status = package["exitStatus"]
    if status is not None and status > 128:
        return f"its installer died of signal {status - 128}"
    return f"its installer ended with status {status}" if status else f"the pane's outcome is {package['outcome']}"


def complaints(ended):
    """One line for a run that is not whole; none for one that is."""
    if ended.status == 0:
        return []
    summary = ended.summary
    if ended.status == 3:
        names = [package["name"] for package in summary["packages"] if not package["installed"]]
        names += [failure["archive"] for failure in summary["notExpanded"]] + summary["setAside"]
        return [f"the pane went on, but not everything is installed: {', '.join(names)}"]
    last = f'; the last status was "{summary["status"]}"' if summary.get("status") else ""
    return [f"{ended.reason}{last}; see {ended.places.out / 'host.log'}"]


def problem(error):
    """An error of the system, in one line."""
    place = f"{error.filename}: " if error.filename else ""
    return f"{place}{error.strerror or error}"
