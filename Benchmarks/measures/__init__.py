"""What Benchmarks/run measures: a module a benchmark, each with measure(bench), which gives its figures."""
