"""What the benchmark scripts share: timing whole commands in alternation, and their peak memory."""
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = ROOT / "build/release/bin"


def seconds(command, **options):
    """The wall-clock time of one run, in seconds."""
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, **options)
    return time.perf_counter() - start


def best_in_alternation(commands, runs, **options):
    """The best time of each command over `runs` rounds, the commands taking turns."""
    rounds = [[seconds(command, **options) for command in commands] for _ in range(runs)]
    return [min(times) for times in zip(*rounds)]


def peak_megabytes(command, **options):
    """The peak memory of one run, measured in a child of its own so that earlier children do not count."""
    script = ("import resource, subprocess, sys; subprocess.run(sys.argv[1:], check=True, stdout=subprocess.DEVNULL); "
              "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")
    answer = subprocess.run([sys.executable, "-c", script, *map(str, command)], check=True, capture_output=True,
                            text=True, **options)
    return int(answer.stdout) / 1024


def make_manifest(shape, folder):
    """Writes the manifest of a SHAPE:N into `folder`; answers its size in bytes."""
    name, size = shape.split(":")
    subprocess.run([ROOT / "scripts/make-manifest", "--shape", name, "--statements", size, "build.ninja"], check=True,
                   cwd=folder)
    return (pathlib.Path(folder) / "build.ninja").stat().st_size
