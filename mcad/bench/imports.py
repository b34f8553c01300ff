#!/usr/bin/env python3
"""Imports two large models and prints where the time of both processes goes.

usage: imports.py BIN DIR [--instances N] [--faces N]
  BIN  the directory with zeq, convexor and zeq_samples
  DIR  where the models go, and stay for the next time

The first model has many instances of 20 parts; the second many faces, 500 of each part. The host works while the
translator does, and waits for it else."""
import argparse, pathlib, re, resource, subprocess, sys

arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
arguments.add_argument("bin", type=pathlib.Path)
arguments.add_argument("dir", type=pathlib.Path)
arguments.add_argument("--instances", type=int, default=100_000)
arguments.add_argument("--faces", type=int, default=20_000)
arguments = arguments.parse_args()


def make(title, instances, *options):
    """The file of a model, which is made when it is not there."""
    directory = arguments.dir / title
    file = directory / f"lattice_{instances}.stp"
    if not file.exists():
        command = [arguments.bin / "zeq_samples", directory, "--instances", str(instances), *map(str, options)]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return file


def stages(text):
    return [(name, float(wall), float(cpu)) for name, wall, cpu in re.findall(r"(\S.*?) ([\d.]+) s \(CPU ([\d.]+) s\)(?:, )?", text)]


def measure(title, file):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    detail = ["--set", "general.log_event_level_type=verbose"]
    command = [arguments.bin / "zeq", "--verbose", "--no-progress", "import", *detail, file]
    run = subprocess.run(command, capture_output=True, text=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if run.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed:\n{run.stderr[-2000:]}")
    cpu = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    wall = float(re.search(r"^Time +([\d.]+) s$", run.stdout, re.M)[1])
    size = file.stat().st_size / 2**20
    print(f"\n{title}: {size:.0f} MiB, {wall:.2f} s, CPU {cpu:.2f} s, peak of the larger process so far {after.ru_maxrss / 1024:.0f} MiB")
    for process, pattern in (("translator", r"translator: Times: (.*)"), ("host", r"zeq: times: (.*)")):
        found = re.search(pattern, run.stderr)
        print(f"  {process:42} {'wall':>8} {'CPU':>8}")
        for name, wall, cpu in stages(found[1] if found else ""):
            print(f"    {name:40} {wall:8.2f} {cpu:8.2f}")


count = arguments.instances
measure(f"{count} instances", make("instances", count, "--parts", 20))
parts = max(1, arguments.faces // 500)
measure(f"{arguments.faces} faces", make("faces", parts, "--parts", parts, "--faces", 500))
