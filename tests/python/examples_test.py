"""The Python examples as their users run them. Arguments: the source folder. Status 77: a package is missing."""

import hashlib
import importlib.util
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

for package in ("matplotlib", "distributed"):
    if importlib.util.find_spec(package) is None:
        print(f"skipped: python3-{package} is missing (scripts/setup test)")
        sys.exit(77)

import numpy

import nrwave

EXAMPLES = pathlib.Path(sys.argv.pop(1)).absolute() / "examples"
sys.path.insert(0, str(EXAMPLES))
SMALL = ("carrier[0].channel_bandwidth=20M\ncarrier[0].dl_pdsch[0].symbol_num=9\n"
         "carrier[0].dl_pdsch[0].enable=true\n")


class examples(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)
        (self.folder / "small.recipe").write_text(SMALL)
        (self.folder / "conflict.recipe").write_text(SMALL + "copy carrier[0].dl_pdsch[0]\n")

    def start(self, *words):
        process = subprocess.Popen([sys.executable, *map(str, words)], cwd=self.folder, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        return process

    def end_of(self, *words):
        process = self.start(*words)
        return (*process.communicate(timeout=120), process.returncode)

    def rows_of(self, folder):
        return [json.loads(line) for line in (self.folder / folder / "manifest.jsonl").read_text().splitlines()]

    def test_a_constellation_is_received_and_drawn(self):
        import constellation

        waveform = nrwave.Waveform()
        waveform.recipe(self.folder / "small.recipe")
        received, owners = constellation.cells(waveform)
        powers = numpy.abs(received[owners == nrwave.OWNERS.index("PDSCH")]) ** 2
        powers /= powers.mean()
        self.assertLess(numpy.abs(powers - 1).max(), 0.02, "QPSK lies on a circle")
        self.assertLess(numpy.abs(received[owners == 0]).max() ** 2, 1e-3 * numpy.abs(received).max() ** 2)

        out, err, status = self.end_of(EXAMPLES / "constellation.py", "small.recipe", "a.png")
        reference = (owners == nrwave.OWNERS.index("PDSCH DMRS")).sum()
        self.assertEqual((out, err, status), (f"PDSCH {powers.size}\nPDSCH DMRS {reference}\n", "", 0))
        self.assertTrue((self.folder / "a.png").read_bytes().startswith(b"\x89PNG"))

    def test_a_data_set_survives_a_killed_worker_and_is_made_once(self):
        lines = [f"small.recipe {seed}" for seed in range(16)]
        (self.folder / "all.txt").write_text("\n".join(["small.recipe", "conflict.recipe", "none.recipe", *lines]))
        cluster = self.folder / "cluster.json"
        self.start("-m", "distributed.cli.dask_scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard",
                   "--scheduler-file", cluster)
        workers = [self.start("-m", "distributed.cli.dask_worker", "--scheduler-file", cluster, "--nthreads", "1",
                              "--no-nanny", "--no-dashboard", "--host", "127.0.0.1") for _ in range(2)]
        while not cluster.exists() or not cluster.read_text().endswith("}"):
            time.sleep(0.02)
        address = json.loads(cluster.read_text())["address"]
        running = self.start(EXAMPLES / "dataset.py", "all.txt", "data", "--scheduler", address)
        while len(list(self.folder.glob("data/*.npy"))) < 3:
            time.sleep(0.02)
        os.kill(workers[0].pid, signal.SIGKILL)
        out, err = running.communicate(timeout=120)
        self.assertEqual((out, running.returncode), ("17 generated, 0 there already, 2 failed\n", 1), err)
        self.assertIn("line 2, conflict.recipe: resource conflict: ", err)
        self.assertIn("line 3, none.recipe: cannot read ", err)

        rows = self.rows_of("data")
        self.assertEqual(len({row["sha512"] for row in rows}), 17, "each seed has data of its own")
        waveform = nrwave.Waveform()
        waveform.recipe(self.folder / "small.recipe")
        result = waveform.generate()
        numpy.testing.assert_array_equal(numpy.load(self.folder / "data" / rows[0]["file"]), result.samples)

        # A local run of a part gives the same bytes; what was lost or cut is made anew, the rest is left alone.
        (self.folder / "part.txt").write_text("\n".join(lines[:3]))
        out, err, status = self.end_of(EXAMPLES / "dataset.py", "part.txt", "local", "-j1")
        self.assertEqual((out, status), ("3 generated, 0 there already, 0 failed\n", 0), err)
        self.assertEqual(self.rows_of("local"), rows[1:4])
        files = [self.folder / "local" / row["file"] for row in rows[1:4]]
        files[0].unlink()
        files[1].write_bytes(files[1].read_bytes()[:-1])
        out, err, status = self.end_of(EXAMPLES / "dataset.py", "part.txt", "local", "-j1")
        self.assertEqual((out, status), ("2 generated, 1 there already, 0 failed\n", 0), err)
        self.assertEqual([hashlib.sha512(file.read_bytes()).hexdigest() for file in files],
                         [row["sha512"] for row in rows[1:4]])

    def test_a_list_that_is_none_is_one_line(self):
        (self.folder / "empty").write_text("# nothing\n")
        for name in ("none", ".", "empty"):
            out, err, status = self.end_of(EXAMPLES / "dataset.py", name, "x")
            self.assertEqual((out, err.count("\n"), status, (self.folder / "x").exists()), ("", 1, 1, False))


unittest.main()
