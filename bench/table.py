#!/usr/bin/env python3
"""Runs every benchmark case in a process of its own and prints ratios and peak memory.

Usage: table.py BUILD_FOLDER [FILTER]. A case is JOB/WHO; WHO is carnetel, sqlite or plain. The
ratios are carnetel's time over the other's, from the same run; MB is the peak of the work itself,
above what the benchmark held before it.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

WHO = ("carnetel", "sqlite", "plain")


def run(command, **kwargs):
    """Runs a command; returns (standard output, standard error, status)."""
    done = subprocess.run(command, capture_output=True, check=False, **kwargs)
    return done.stdout, done.stderr, done.returncode


def case_names(binary, wanted):
    listed = subprocess.run([binary, "--benchmark_list_tests"], check=True, capture_output=True, text=True)
    names = ["/".join(line.split("/")[:2]) for line in listed.stdout.split()]
    return [name for name in dict.fromkeys(names) if wanted in name]


def measure(binary, name):
    output, _, status = run([binary, f"--benchmark_filter=^{name}/", "--benchmark_format=json"])
    if status != 0:
        sys.exit(f"{name}: the benchmark ended with status {status}")
    result = json.loads(output)["benchmarks"][0]
    if result.get("error_occurred"):
        sys.exit(f"{name}: {result['error_message']}")
    return result["real_time"], result["peak_mb"], result.get("items_per_second")


def print_jobs(binaries, wanted):
    results = {name: measure(binary, name) for binary in binaries for name in case_names(binary, wanted)}
    jobs = dict.fromkeys(name.split("/")[0] for name in results)
    print("| job | carnetel ms | sqlite ms | plain ms | against sqlite | against plain | carnetel MB | sqlite MB "
          "| cards/s |")
    print("|---|---:|---:|---:|---:|---:|---:|---:|---:|")
    for job in jobs:
        row = {who: results.get(f"{job}/{who}") for who in WHO}
        if row["carnetel"] is None:
            continue
        times = [f"{row[who][0]:.2f}" if row[who] else "" for who in WHO]
        ratios = [f"{row['carnetel'][0] / row[who][0]:.2f}" if row[who] else "" for who in WHO[1:]]
        memory = [f"{row[who][1]:.0f}" if row[who] else "" for who in WHO[:2]]
        speed = f"{row['carnetel'][2]:,.0f}" if row["carnetel"][2] else ""
        print("| " + " | ".join([job, *times, *ratios, *memory, speed]) + " |")


def make_import_files(folder):
    """32767 lines in four files, from the sample's lines with a number each."""
    source = pathlib.Path("samples/correspondants.csv").read_bytes().split(b"\r\n")
    lines = [line for line in source if line]
    files = []
    for start in range(0, 32767, 10000):
        count = min(10000, 32767 - start)
        path = folder / f"import{start}.csv"
        path.write_bytes(b"".join(lines[i % len(lines)] + b"\r\n" for i in range(start, start + count)))
        files.append(str(path))
    return files


def peak_megabytes(peak_of, command, **kwargs):
    """Peak memory of a command and its status."""
    _, errors, status = run([peak_of, *command], **kwargs)
    return int(errors.split()[-1]) / 1024, status


def print_tool_memory(peak_of, tool, window):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        files = make_import_files(folder)
        environment = dict(os.environ, CARNETEL_HOME=name, CARNETEL_PROFILE=str(folder / "profile.ini"))
        base = [tool, "--quiet", "--yes", "-d", str(folder / "GROS")]
        commands = [["create"]]
        commands += [["import", path, "--charset", "ansi"] for path in files]
        commands += [["info"], ["check"], ["list"], ["--json", "list"], ["find", "Ville=a", "--all"], ["show", "1"],
                     ["delete", "7"], ["add", "Ste1=Mesure"], ["edit", "5", "Tel1=01"], ["mark", "--all"],
                     ["export", str(folder / "out.csv")]]
        print("\n| command | peak MB | status |")
        print("|---|---:|---:|")
        for command in commands:
            memory, status = peak_megabytes(peak_of, base + command, env=environment)
            shown = " ".join(word.replace(name + "/", "") for word in command)
            print(f"| {shown} | {memory:.1f} | {status} |")
        environment["QT_QPA_PLATFORM"] = "offscreen"
        memory, status = peak_megabytes(
            peak_of, [window, str(folder / "GROS"), str(folder / "window.png")], env=environment)
        print(f"| the main window, off screen | {memory:.1f} | {status} |")


def main():
    build = pathlib.Path(sys.argv[1])
    wanted = sys.argv[2] if len(sys.argv) > 2 else ""
    print_jobs([str(build / "bench" / name) for name in ("carnetel_bench", "carnetel_list_bench")], wanted)
    tool = build / "src" / "cli" / "carnetel-cli"
    if not wanted:
        print_tool_memory(str(build / "bench" / "carnetel_peak_of"), str(tool), str(build / "src" / "desktop" / "carnetel-render"))


if __name__ == "__main__":
    main()
