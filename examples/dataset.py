#!/usr/bin/python3
"""Turns a list of recipes into npy files, over a Dask cluster.

    dataset.py LIST FOLDER [-j N | --scheduler ADDRESS]

A line of LIST is a recipe and, where the bits of its PDSCHs and PUSCHs shall be drawn, a seed: 'cell.recipe 17'.
Empty lines and lines that begin with # do not count; a recipe's name is relative to the folder where this runs. Each
line is a task, and each worker process runs one at a time. Without --scheduler N worker processes of this machine do
the work; workers elsewhere need the recipes and FOLDER under the same names.

FOLDER gets an npy file of complex128 a line, and manifest.jsonl, an object a line in the order of LIST: recipe, seed,
file, sha512 (of the npy file), recipe_sha512, rate, samples, peak_dbfs, rms_dbfs, papr_db, corrections. A line that
fails is told, and the rest goes on. Another run does what is missing, or whose recipe has changed.
"""

import argparse
import hashlib
import json
import os
import pathlib
import random
import sys
import warnings

import numpy
from distributed import Client, LocalCluster, as_completed


def sha512(file):
    return hashlib.sha512(pathlib.Path(file).read_bytes()).hexdigest()


def draw_data(waveform, seed):
    """Gives each PDSCH and PUSCH bits of its own, which it repeats."""
    drawn = random.Random(seed)
    for carrier in range(waveform.count("carrier")):
        for channel in (f"carrier[{carrier}].dl_pdsch", f"carrier[{carrier}].ul_pusch"):
            for entry in range(waveform.count(channel)):
                waveform[f"{channel}[{entry}].data_source"] = "LIB_NR_USER_CFG"
                waveform[f"{channel}[{entry}].data_source_custom"] = format(drawn.getrandbits(1023), "01023b")


def generate(recipe, seed, folder, name):
    """A task: writes the npy file of a line and gives what its row of the manifest has behind recipe and seed."""
    import nrwave

    with warnings.catch_warnings(record=True) as corrections:
        warnings.simplefilter("always")
        try:
            waveform = nrwave.Waveform()
            waveform.recipe(recipe)
            if seed is not None:
                draw_data(waveform, seed)
            result = waveform.generate()
        except nrwave.Error as failure:
            return {"error": str(failure)}

    # Whole under its name or not there, also where the worker is killed, and where a task runs twice.
    part = pathlib.Path(folder, f".{name}.{os.getpid()}.part")
    try:
        with open(part, "wb") as file:
            numpy.save(file, result.samples)
        digest = sha512(part)
        part.replace(pathlib.Path(folder, name))
    except OSError as failure:
        part.unlink(missing_ok=True)
        return {"error": str(failure)}
    return {
        "file": name,
        "sha512": digest,
        "recipe_sha512": sha512(recipe),
        "rate": result.rate,
        "samples": result.samples.size,
        "peak_dbfs": result.peak_dbfs,
        "rms_dbfs": result.rms_dbfs,
        "papr_db": result.papr_db,
        "corrections": [str(line.message) for line in corrections],
    }


def read_list(file):
    """(line number, recipe, seed) of each line."""
    lines = []
    for number, line in enumerate(pathlib.Path(file).read_text().splitlines(), 1):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        words = line.rsplit(maxsplit=1)
        seed = int(words.pop()) if len(words) == 2 and words[1].isdecimal() else None
        lines.append((number, words[0] if seed is not None else line, seed))
    if not lines:
        raise OSError(f"{file} has no line to run")
    return lines


def name_of(recipe, seed):
    key = hashlib.sha512(f"{recipe}\n{seed}".encode()).hexdigest()[:12]
    return f"{pathlib.Path(recipe).stem}{'' if seed is None else f'-{seed}'}-{key}.npy"


def rows_of(manifest):
    """The rows of a manifest by file; a last one that was cut off does not count."""
    rows = {}
    for line in manifest.read_text().splitlines() if manifest.exists() else []:
        try:
            row = json.loads(line)
            rows[row["file"]] = row
        except (ValueError, KeyError):
            pass
    return rows


def is_done(row, recipe, folder):
    if row is None:
        return False
    try:
        return sha512(recipe) == row["recipe_sha512"] and sha512(folder / row["file"]) == row["sha512"]
    except OSError:
        return False


def run(lines, folder, client):
    """Does what is missing; gives the number of lines that failed."""
    folder.mkdir(parents=True, exist_ok=True)
    manifest = folder / "manifest.jsonl"
    rows = rows_of(manifest)
    names = {name_of(recipe, seed): (number, recipe, seed) for number, recipe, seed in reversed(lines)}
    missing = [name for name in reversed(names) if not is_done(rows.get(name), names[name][1], folder)]
    tasks = {}
    for name in missing:
        _, recipe, seed = names[name]
        task = client.submit(generate, os.path.abspath(recipe), seed, str(folder), name, key=f"{folder}/{name}")
        tasks[task] = name
    failed = 0
    with open(manifest, "a") as growing:
        for task in as_completed(tasks):
            name = tasks[task]
            try:
                row = task.result()  # a lost worker may have taken it along; then it is made again
            except Exception as failure:  # whatever a worker may raise is this line's failure alone
                row = {"error": str(failure)}
            number, recipe, seed = names[name]
            if "error" in row:
                failed += 1
                print(f"line {number}, {recipe}: {row['error']}", file=sys.stderr)
                continue
            rows[name] = {"recipe": recipe, "seed": seed, **row}
            print(json.dumps(rows[name]), file=growing, flush=True)

    ordered = manifest.with_suffix(".part")
    ordered.write_text("".join(json.dumps(rows[name]) + "\n" for name in reversed(names) if name in rows))
    ordered.replace(manifest)
    for part in folder.glob(".*.npy.*.part"):
        part.unlink()
    print(f"{len(missing) - failed} generated, {len(names) - len(missing)} there already, {failed} failed")
    return failed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("list")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("-j", type=int, default=os.cpu_count(), help="worker processes of this machine")
    parser.add_argument("--scheduler", help="of a cluster that runs, such as tcp://10.0.0.1:8786")
    asked = parser.parse_args()
    if asked.j < 1:
        parser.error("-j takes a number from 1")
    try:
        lines = read_list(asked.list)
        if asked.scheduler:
            cluster = asked.scheduler
        else:
            cluster = LocalCluster(n_workers=asked.j, threads_per_worker=1, host="127.0.0.1", dashboard_address=None)
        with Client(cluster) as client:
            return 1 if run(lines, asked.folder.absolute(), client) else 0
    except (OSError, ValueError) as failure:
        print(f"dataset.py: {failure}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
