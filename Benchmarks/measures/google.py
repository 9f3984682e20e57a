"""Runs of programs that measure themselves with Google Benchmark."""
import json
import subprocess


def runs(bench, program):
    """The program's measurements, each as its report has it."""
    report = bench.folder() / "report.json"
    subprocess.run([bench.build / "Benchmarks" / program, f"--benchmark_out={report}", "--benchmark_out_format=json"],
                   check=True, stdout=subprocess.DEVNULL)
    return json.loads(report.read_text())["benchmarks"]
