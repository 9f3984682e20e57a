"""A web run of ten archives, against the sum of its downloads, expansions, installations and its delay."""
import shutil
import subprocess

from . import bench as tools
from . import nginx
from .figures import Figure, middle

ROUNDS = 5
DELAY = 3.0
PACK_ZIP = 'cd "$1" && zip -qr "$3.zip" "$2"'
PACK_CPIO = 'cd "$1" && find "$2" | cpio -o --quiet -H odc | gzip -1 >"$3.cpio.gz"'
DOWNLOAD = """
cd "$1" && shift
curl --silent --fail --no-progress-meter --parallel --parallel-immediate --remote-name-all "$@"
"""
EXPAND = """
for archive in "$2"/*; do
    option=-x
    [[ $archive = *.zip ]] && option=-xk
    sh -c "'$1' $option '$archive' '${archive%.*}'"
done
"""
INSTALL = """
while read -r package; do
    "$1" -verboseR -pkg "$package" -target / </dev/null | cat >/dev/null
done <"$2"
"""


def measure(bench):
    source = bench.folder()
    source.chmod(0o755)
    pack(bench, source)
    # By name, so that small archives overtake large ones on the way, as they do for a user.
    archives = sorted((source / "site").iterdir())
    with nginx.serve_site(source / "site", source / "nginx") as address:
        runs = [one_round(bench, source, [f"{address}/{path.name}" for path in archives]) for _ in range(ROUNDS)]
    pairs = [(run["pane"], run["downloads"] + run["expansions"] + run["installations"] + DELAY) for run in runs]
    shown = runs[pairs.index(middle(pairs))]
    yield Figure("web", f"{len(archives)} archives", "the sum of its parts", pairs, choose=middle, notes={
        **{name: shown[name] for name in ["downloads", "expansions", "installations", "packages"]},
        "fewest packages of a round": min(run["packages"] for run in runs),
        "most": max(run["packages"] for run in runs)})


def pack(bench, source):
    """Every other item as a zip, the others as a cpio; the uninstaller comes from the media."""
    subprocess.run([bench.build / "Benchmarks/WebSample", source / "packages"], check=True)
    (source / "site").mkdir()
    items = sorted(path.name for path in (source / "packages").iterdir() if path.name != "Uninstaller.pkg")
    for number, name in enumerate(items):
        script = PACK_CPIO if number % 2 else PACK_ZIP
        tools.shell(script, source / "packages", name, source / "site" / name.replace(" ", ""))


def one_round(bench, source, addresses):
    bench.fresh(installer="tools/installer")
    run = bench.measured("web", " ".join(addresses), program=host(bench, source))
    files = installed_files(bench)
    downloads = bench.jail / "tmp/Vantrel/Download"
    for folder in [bench.jail / "root", downloads]:
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    parts = {
        "downloads": tools.shell(DOWNLOAD, downloads, *addresses),
        "expansions": tools.shell(EXPAND, bench.build / "tools/ditto", downloads),
        "installations": tools.shell(INSTALL, bench.installer, bench.jail / "tmp/installed",
                                     env={"PATH": "/usr/bin:/bin", "VANT_INSTALL_ROOT": str(bench.jail / "root")})}
    if files == 0 or files != installed_files(bench):
        raise SystemExit(f"run: the pane installed {files} files, the loop {installed_files(bench)}")
    return {"pane": run["seconds"], "packages": run["packages"], **parts}


def host(bench, source):
    """The measured program as an application that carries the uninstaller."""
    application = bench.jail / "host.app"
    (application / "Resources").mkdir(parents=True)
    subprocess.run(["cp", "-R", source / "packages/Uninstaller.pkg", application / "Resources"], check=True)
    return shutil.copy(bench.build / "Benchmarks/PaneBench", application / "PaneBench")


def installed_files(bench):
    return sum(1 for path in (bench.jail / "root").rglob("*") if path.is_file())
