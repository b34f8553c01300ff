#!/usr/bin/env python3
"""Imports large models and prints where the time of both processes goes, and how much memory they take at most.

usage: imports.py BIN DIR [--instances N] [--faces N] [--parts N] [--uses N...]
  BIN  the directory with zeq, convexor and zeq_samples
  DIR  where the models go, and stay for the next time

The first model has many instances of 20 parts; the second many faces, 500 of each part; the third many parts of 12
faces each. The host works while the translator does, and waits for it else. Then one part is used more and more often:
the CPU time of both processes for each use must not grow."""
import argparse, pathlib, re, resource, subprocess, sys, threading

arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
arguments.add_argument("bin", type=pathlib.Path)
arguments.add_argument("dir", type=pathlib.Path)
arguments.add_argument("--instances", type=int, default=100_000)
arguments.add_argument("--faces", type=int, default=20_000)
arguments.add_argument("--parts", type=int, default=1_000)
arguments.add_argument("--uses", type=int, nargs="*", default=[1_000, 10_000, 100_000])
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


def peak(process):
    """The most memory of a process so far, in MiB; nothing when it has ended."""
    try:
        found = re.search(r"VmHWM:\s+(\d+) kB", pathlib.Path(f"/proc/{process}/status").read_text())
        return int(found[1]) / 1024 if found else 0
    except OSError:
        return 0


def watch(host, ended, peaks):
    """Keeps the peaks of the host and of its translator, the one child that it has."""
    while not ended.wait(0.01):
        peaks["host"] = max(peaks["host"], peak(host))
        try:
            for child in pathlib.Path(f"/proc/{host}/task/{host}/children").read_text().split():
                peaks["translator"] = max(peaks["translator"], peak(child))
        except OSError:
            pass


def run(file):
    """Imports a file. What the host wrote to its two outputs, CPU seconds, and peaks of memory by process."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    detail = ["--set", "general.log_event_level_type=verbose"]
    command = [arguments.bin / "zeq", "--verbose", "--no-progress", "import", *detail, file]
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True) as host:
        peaks, ended = {"host": 0, "translator": 0}, threading.Event()
        watcher = threading.Thread(target=watch, args=(host.pid, ended, peaks))
        watcher.start()
        output, errors = host.communicate()
        ended.set()
        watcher.join()
    if host.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed:\n{errors[-2000:]}")
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return output, errors, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, peaks


def measure(title, file):
    output, errors, cpu, peaks = run(file)
    wall = float(re.search(r"^Time +([\d.]+) s$", output, re.M)[1])
    print(f"\n{title}: {file.stat().st_size / 2**20:.0f} MiB, {wall:.2f} s, CPU {cpu:.2f} s")
    for process, pattern in (("translator", r"translator: Times: (.*)"), ("host", r"zeq: times: (.*)")):
        found = re.search(pattern, errors)
        print(f"  {f'{process}, at most {peaks[process]:.0f} MiB':42} {'wall':>8} {'CPU':>8}")
        for name, wall, cpu in stages(found[1] if found else ""):
            print(f"    {name:40} {wall:8.2f} {cpu:8.2f}")


count = arguments.instances
measure(f"{count} instances", make("instances", count, "--parts", 20))
parts = max(1, arguments.faces // 500)
measure(f"{arguments.faces} faces", make("faces", parts, "--parts", parts, "--faces", 500))
parts = arguments.parts
measure(f"{parts} parts", make("parts", parts, "--parts", parts, "--faces", 12))
print("\nuses of one part")
for uses in arguments.uses:
    cpu = min(run(make("uses", uses, "--parts", 1))[2] for _ in range(3))
    print(f"  {uses:8} {cpu:8.2f} s of CPU, a use {1e6 * cpu / uses:7.1f} us")
