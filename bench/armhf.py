#!/usr/bin/env python3
"""Compares two armhf builds of the library by the instructions of its own that they execute, message by message, as
qemu-arm traces them. Without a processor of the kind, this is what can be counted; it is the same in every run.

usage: armhf.py BUILD BUILD       e.g. build/armhf build/armhf-hardened
"""
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

top = pathlib.Path(__file__).resolve().parent.parent
work = pathlib.Path(tempfile.mkdtemp())


def compile_program(build):
    program = work / build.name
    subprocess.run(["arm-linux-gnueabihf-g++", "-Os", "-std=c++17", "-Wno-psabi", "-DTIXML_USE_STL",
                    f'-DNETPUBLIC_EXAMPLES_DIR="{top}/examples"',
                    *(f"-I{top / part}" for part in ("bench", "netpublic/include", "host")),
                    top / "bench/armhf.cpp", top / "bench/samples.cpp", "-o", program,
                    f"-L{build}", "-lnetpublic", build / "host/libnetpublic_host.a", "-ltinyxml", "-ldl",
                    f"-Wl,-rpath,{build}"], check=True)
    return program


def run(program, name, *options):
    return subprocess.run(["setarch", "-R", "qemu-arm", *options, program, name],
                          check=True, stdout=subprocess.PIPE, text=True).stdout.split()


def instructions(build, program, name):
    start = int(run(program, name)[0], 16)
    end = start + int(re.search(r" \.fini +PROGBITS +(\w+)", subprocess.run(
        ["readelf", "-SW", build / "libnetpublic.so"], check=True, stdout=subprocess.PIPE, text=True).stdout)[1], 16)
    log = work / "trace"
    run(program, name, "-d", "exec,nochain,in_asm", "-dfilter", f"{start:#x}..{end:#x}", "-D", log)
    count, sizes, block = 0, {}, None
    with open(log, errors="replace") as trace:
        for line in trace:
            if line.startswith("IN:"):
                block = None
            elif line.startswith("0x"):
                address = int(line.split(":")[0], 16)
                if block is None:
                    block = address
                    sizes[block] = 0
                sizes[block] += 1
            elif line.startswith("Trace "):
                count += sizes.get(int(re.search(r"/([0-9a-f]+)/", line)[1], 16), 0)
    return count


builds = [pathlib.Path(name).resolve() for name in sys.argv[1:]]
if len(builds) != 2:
    sys.exit(__doc__)
programs = [compile_program(build) for build in builds]
# What making the samples takes is the same for each message.
samples = [instructions(build, program, "-") for build, program in zip(builds, programs)]
ratios = []
for name in run(programs[0], "--list")[1:]:
    first, second = (instructions(build, program, name) - made for build, program, made in zip(builds, programs, samples))
    ratios.append(second / first)
    print(f"{name:28} {first:9} {second:9} {second / first:6.3f}", flush=True)
print(f"median {statistics.median(ratios):.3f}, from {min(ratios):.3f} to {max(ratios):.3f}")
