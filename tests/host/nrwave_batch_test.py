"""nrwave batch as its users meet it. Arguments: the tool."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

NRWAVE = os.path.abspath(sys.argv.pop(1))
SMALL = "--set carrier[0].channel_bandwidth=20M --set carrier[0].dl_ssb.enable=1"


class nrwave_batch(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def start(self, lines, *words):
        (self.folder / "many.list").write_text(lines)
        return subprocess.Popen([NRWAVE, "batch", *words], cwd=self.folder, text=True, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE)

    def files(self):
        return {file.name for file in self.folder.iterdir()} - {"many.list", "fifo"}

    def waiting(self, lines, children):
        """A batch whose last processes read a FIFO that nobody writes."""
        os.mkfifo(self.folder / "fifo")
        batch, pids = self.start(lines, "many.list", "-j2", "--json"), []
        while len(pids) != children or any(b"fifo" not in pathlib.Path(f"/proc/{pid}/cmdline").read_bytes()
                                           for pid in pids):
            pids = [int(pid) for pid in pathlib.Path(f"/proc/{batch.pid}/task/{batch.pid}/children").read_text().split()]
        return batch, pids

    def test_lines_that_fail_are_told_and_the_others_give_the_bytes_of_single_runs(self):
        batch = self.start(f"# comment\n{SMALL} --format cf32 -o 'out/a b' --quiet\n\n--set no.such=1 -o b\n"
                           f"{SMALL} --set carrier[0].power_boosting=99 -o c\n{SMALL} -o c\n{SMALL} -o -\n'open -o d\n",
                           "many.list", "-j2", "--json")
        out, err = batch.communicate()
        rows = json.loads(out)
        self.assertEqual([row["line"] for row in rows], [2, 4, 5, 6, 7, 8])
        self.assertEqual((rows[0]["status"], rows[0]["error"], rows[0]["peak_dbfs"]), (0, None, 0.0))
        self.assertEqual((rows[1]["status"], rows[1]["rms_dbfs"], rows[1]["error"][:20]), (1, None, "unknown path no.such"))
        self.assertIn("is that of line", rows[2]["error"] or rows[3]["error"])
        self.assertEqual(rows[5]["error"], "no ' ends what one begins")
        self.assertIn("many.list:5: carrier[0].power_boosting: asked 99, stored 40\n", err)
        alone = subprocess.run([NRWAVE, "generate", *SMALL.split(), "--format", "cf32", "-o-"], stdout=subprocess.PIPE)
        self.assertEqual((self.folder / "out/a b.cf32").read_bytes(), alone.stdout)

    def test_a_list_that_is_none_is_one_line_and_leaves_nothing(self):
        for words in (["none"], ["many.list"], ["."], [""], [], ["many.list", "-j0"], ["many.list", "-jnan"]):
            batch = self.start("\n# nothing\n", *words)
            out, err = batch.communicate()
            self.assertEqual((batch.returncode == 0, out, err.count("\n")), (False, "", 1), words)
        self.assertEqual(self.start("--recipe many.list -o x\n", "many.list").wait(), 1)
        self.assertEqual(self.files(), set())

    def test_a_killed_process_loses_its_own_line(self):
        batch, pids = self.waiting(f"--recipe fifo -o x\n{SMALL} -o y\n", 1)
        os.kill(pids[0], signal.SIGKILL)
        self.assertEqual([row["status"] for row in json.loads(batch.communicate()[0])], [137, 0])
        self.assertEqual(self.files(), {"y.sigmf-data", "y.sigmf-meta"})

    def test_the_end_of_the_batch_ends_its_processes(self):
        for ending in (signal.SIGINT, signal.SIGKILL):
            batch, pids = self.waiting("--recipe fifo -o x\n" * 4, 2)
            batch.send_signal(ending)
            self.assertEqual((batch.communicate()[0], batch.returncode), ("", -ending))
            while any(os.path.exists(f"/proc/{pid}/exe") for pid in pids):
                time.sleep(0.02)
            self.assertEqual(self.files(), set())
            (self.folder / "fifo").unlink()


unittest.main()
