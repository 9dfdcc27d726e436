#!/usr/bin/python3
"""Python's configparser on the work of bench_settings, on this machine, for comparison.

  /usr/bin/python3 bench/anchor_settings.py [KEYS]

ini_roundtrip  write an INI file of KEYS keys (default 330, the count bench_settings reports) in
               groups of 15, as the window's settings hold them (booleans, small integers, colour
               names, column names, splitter states as escaped bytes), to a file and read it back
               into a new parser, every value fetched once.
Prints the best and median of the repeats in milliseconds, of wall time and of CPU time (the
machine is shared: compare CPU with the benchmark's CPU column).
"""
import configparser
import os
import sys
import tempfile

from anchor_timing import report

keys = int(sys.argv[1]) if len(sys.argv) > 1 else 330
samples = ["true", "false", "2", "#0000FF", "Measured Depth", "---", "1",
           "@ByteArray(\\0\\0\\0\\xff\\0\\0\\0\\x1\\0\\0\\0\\x2\\0\\0\\x1\\x90\\0\\0\\0\\xe6)"]
values = {}
for k in range(keys):
    values.setdefault(f"attribute_analyser/defaultSettingsGroup/panel_{k // 15}", {})[f"key_{k}"] = samples[k % len(samples)]
path = os.path.join(tempfile.mkdtemp(), "settings.ini")


def roundtrip():
    out = configparser.ConfigParser(interpolation=None)
    out.read_dict(values)
    with open(path, "w") as f:
        out.write(f)
    back = configparser.ConfigParser(interpolation=None)
    back.read(path)
    return sum(len(back[s][k]) for s in back.sections() for k in back[s])


report(f"ini_roundtrip ({keys} keys)", roundtrip, repeats=50)
