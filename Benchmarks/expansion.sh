#!/usr/bin/env bash
# Expands archives of 5,000 files with our ditto and with bsdtar, in turn, and prints the ratio of their best times.
#   Benchmarks/expansion.sh [BUILD_FOLDER]
set -euo pipefail
ditto=$(realpath "${1:-build/release}")/tools/ditto
rounds=7
work=$(mktemp -d "${VANT_BENCH_TMP:-/dev/shm}/vant-expansion.XXXXXX")
trap 'rm -rf "$work"' EXIT

python3 - "$work/source" <<'PYTHON'
import pathlib, random, sys
random.seed(5)
for i in range(5000):
    folder = pathlib.Path(sys.argv[1], f"Folder {i // 50}")
    folder.mkdir(parents=True, exist_ok=True)
    half = random.randbytes(random.randrange(0, 16_000))
    (folder / f"File {i}.dat").write_bytes(half + b"option = default\n" * (len(half) // 17))
PYTHON
(cd "$work/source" && zip -qr ../files.zip . && find . | cpio -o --quiet -H odc | gzip -1 > ../files.cpio.gz)

# seconds COMMAND...: the time that one expansion into an empty folder takes.
seconds() {
    rm -rf "$work/out" && mkdir "$work/out"
    local start=$EPOCHREALTIME
    "$@"
    awk -v a="$start" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.4f\n", b - a }'
}

for kind in zip cpio.gz; do
    option=-x
    [ "$kind" = zip ] && option=-xk
    : > "$work/ours" && : > "$work/theirs"
    for _ in $(seq "$rounds"); do
        seconds "$ditto" "$option" "$work/files.$kind" "$work/out/new" >> "$work/ours"
        [ "$(find "$work/out/new" -type f | wc -l)" = 5000 ]
        seconds bsdtar -x -f "$work/files.$kind" -C "$work/out" >> "$work/theirs"
    done
    ours=$(sort -n "$work/ours" | head -n 1)
    theirs=$(sort -n "$work/theirs" | head -n 1)
    awk -v kind="$kind" -v ours="$ours" -v theirs="$theirs" 'BEGIN {
        printf "expansion of 5,000 files, %-7s  ditto %.3f s  bsdtar %.3f s  ratio %.2f\n", kind, ours, theirs, ours / theirs }'
done
