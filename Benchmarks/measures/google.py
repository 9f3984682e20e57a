"""Runs of programs that measure themselves with Google Benchmark."""
import json
import subprocess


def runs(bench, program):
    """The program's measurements, each as its report has it."""
    report = bench.folder() / "report.json"
    ended = subprocess.run([bench.build / "Benchmarks" / program, f"--benchmark_out={report}", "--benchmark_out_format=json"],
                           check=False, capture_output=True, text=True)
    if ended.returncode != 0:
        raise SystemExit(f"run: {program} ended with status {ended.returncode}:\n{ended.stderr}")
    return json.loads(report.read_text())["benchmarks"]
