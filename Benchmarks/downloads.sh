#!/usr/bin/env bash
# Compares downloads through the layer with `curl --parallel` on the same files from the same nginx on loopback.
# Usage: downloads.sh [BUILD]   BUILD is a release build folder, "build/release" unless told. Needs nginx and curl.
set -euo pipefail
cd "$(dirname "$0")/.."
bench=${1:-build/release}/Benchmarks/DownloadBench
rounds=${ROUNDS:-5}
port=${PORT:-8397}
# In memory where there is room, so that the disk is not what is measured.
work=$(mktemp -d "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")/downloads.XXXXXX")
mkdir "$work/site" "$work/ours" "$work/curl" "$work/nginx"
cat > "$work/nginx.conf" <<CONF
pid $work/nginx/pid;
error_log $work/nginx/errors;
worker_processes 1;
daemon on;
events { worker_connections 512; }
http {
  access_log off; sendfile on; tcp_nodelay on; default_type application/octet-stream;
  client_body_temp_path $work/nginx/b; proxy_temp_path $work/nginx/p; fastcgi_temp_path $work/nginx/f;
  uwsgi_temp_path $work/nginx/u; scgi_temp_path $work/nginx/s;
  server { listen 127.0.0.1:$port; root $work/site; }
}
CONF
trap 'nginx -c "$work/nginx.conf" -s stop 2>/dev/null || true; rm -rf "$work"' EXIT
chmod 755 "$work"
nginx -c "$work/nginx.conf" 2>/dev/null
for i in $(seq 8); do head -c 64M /dev/urandom > "$work/site/large$i"; done
for i in $(seq 100); do head -c 10K /dev/urandom > "$work/site/small$i"; done
chmod -R a+rX "$work/site"

TIMEFORMAT='%3R %3U %3S'
# Seconds, and the processor's seconds, of a whole command.
measure() { { time "$@" >/dev/null 2>&1; } 2>&1 | awk '{print $1, $2 + $3}'; }
best() { awk '{for (c = 1; c <= NF; c++) if (NR == 1 || $c < m[c]) m[c] = $c; n = NF} END {for (c = 1; c <= n; c++) printf "%s ", m[c]}'; }

compare() { # NAME FILE...
    local name=$1 file; shift
    local addresses=() arguments=()
    for file in "$@"; do
        addresses+=("http://127.0.0.1:$port/$file")
        arguments+=("http://127.0.0.1:$port/$file" -o "$work/curl/$file")
    done
    : > "$work/ours.times"; : > "$work/curl.times"
    for _ in $(seq "$rounds"); do
        "$bench" "$work/ours" "${addresses[@]}" >> "$work/ours.times"
        echo "$(measure curl --silent --parallel --parallel-immediate --parallel-max 100 "${arguments[@]}")" \
            "$(measure curl --version)" >> "$work/curl.times"
    done
    # Neither side's start counts: ours leaves it out itself, and curl's is what curl takes to tell its version.
    echo "$(best < "$work/ours.times") $(best < "$work/curl.times")" | awk -v name="$name" '{
        time = $4 - $6; cpu = $5 - $7
        printf "%-13s ours %.3f s, CPU %.3f s   curl %.3f s, CPU %.3f s   ratio %.2f in time, %.2f in CPU\n",
            name, $1, $2, time, cpu, $1 / time, $2 / cpu}'
}

compare "8 x 64 MiB" large{1..8}
compare "4 x 64 MiB" large{1..4}
compare "1 x 64 MiB" large1
rounds=$((4 * rounds))
compare "100 x 10 KiB" small{1..100}
rm "$work"/site/large* "$work"/ours/* "$work"/curl/*

head -c 1M /dev/urandom > "$work/site/one"
head -c 1G /dev/zero > "$work/site/thousand"
chmod a+r "$work"/site/*
one=$("$bench" "$work/ours" "http://127.0.0.1:$port/one" | cut -d' ' -f3)
rm "$work"/ours/*
thousand=$("$bench" "$work/ours" "http://127.0.0.1:$port/thousand" | cut -d' ' -f3)
echo "peak memory   1 MiB: $one KiB, 1 GiB: $thousand KiB, difference $((thousand - one)) KiB"
