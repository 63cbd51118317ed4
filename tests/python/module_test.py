"""The Python module beside the tool. Arguments: the tool, the source folder."""

import concurrent.futures
import csv
import pathlib
import re
import subprocess
import sys
import tempfile
import threading
import unittest
import warnings

import numpy

import nrwave

NRWAVE, SOURCE = sys.argv[1:3]
del sys.argv[1:3]
STEPS = [f"carrier[0].{step}" for step in ("dl_pdsch[0].rb_num=200", "channel_bandwidth=20M", "dl_pdsch[0].enable=true",
                                           "dl_pdsch[0].symbol_num=9", "power_boosting=99")]


def small(cell=0):
    waveform = nrwave.Waveform()
    for path, value in (("channel_bandwidth", "5M"), ("numerology", "15k"), ("dl_ssb.enable", True), ("ncell_id", cell)):
        waveform[f"carrier[0].{path}"] = value
    return waveform


class module(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def test_gives_the_bytes_lines_and_maps_of_the_tool(self):
        for words in (["map", "-o", "x.csv"], ["generate", "-o", "x", "--format", "cf64", "--quiet"]):
            words += [word for step in STEPS for word in ("--set", step)]
            tool = subprocess.run([NRWAVE, *words], cwd=self.folder, check=True, capture_output=True, text=True)
        with warnings.catch_warnings(record=True) as told:
            warnings.simplefilter("always")
            waveform = nrwave.Waveform()
            for step in STEPS:
                waveform.step(step)
            result = waveform.generate()
        self.assertEqual([str(line.message) for line in told], tool.stderr.splitlines())
        self.assertEqual((told[0].category, told[0].filename), (nrwave.Correction, __file__))
        self.assertEqual(result.samples.tobytes(), (self.folder / "x.cf64").read_bytes())
        self.assertEqual((result.samples.dtype, result.rate), (numpy.complex128, waveform["waveform_sample_rate"]))

        waveform["carrier[0].channel_bandwidth"] = "5M"  # the result stands for itself
        expected = numpy.zeros_like(result.map(), numpy.uint8)
        for row in csv.DictReader((self.folder / "x.csv").read_text().splitlines()):
            expected[int(row["symbol"]), int(row["subcarrier"])] = nrwave.OWNERS.index(row["owner"])
        self.assertEqual((result.map().dtype, result.map().tolist()), (numpy.uint8, expected.tolist()))
        for place in ((1, 0, 0), (0, 1, 0), (0, 0, 1), (-1, 0, 0), (0, 0, 2**40)):
            self.assertRaises(nrwave.Error, result.map, *place)

        waveform = nrwave.Waveform()
        waveform.recipe(pathlib.Path(SOURCE, "examples/prach_short.recipe"))
        bursts = waveform.generate().map() == nrwave.OWNERS.index("PRACH")
        for first, rb in ((254, 10), (260, 200)):  # slot 18, two symbols of a format A1 each, 139 subcarriers of 30 kHz
            self.assertTrue(bursts[first:first + 2, 12 * rb + 2:12 * rb + 141].all())
        self.assertEqual(bursts.sum(), 2 * 2 * 139)

    def test_values_have_types(self):
        waveform = nrwave.Waveform()
        for path, value, stored in (("radio_frequency", "3.5G", 3500000000), ("radio_frequency", 3.7e9, 3700000000),
                                    ("carrier[0].ncell_id", numpy.int16(7), 7), ("mirror_spectrum", numpy.True_, True),
                                    ("carrier[0].power_boosting", numpy.float32(1.5), 1.5),
                                    ("carrier[0].dl_ssb.active_idx", [0, 2], "0,2"),
                                    ("cfr_filter_mask_data_arr", [(-1.5e6, 0), (1.5e6, 1)], "-1500000:0,1500000:1"),
                                    ("carrier[0].channel_bandwidth", "20M", "LIB_NR_CHANNEL_FR1_20M")):
            waveform[path] = value
            self.assertEqual((waveform[path], type(waveform[path])), (stored, type(stored)), path)

    def test_what_cannot_be_done_is_an_exception_and_changes_nothing(self):
        waveform = nrwave.Waveform()
        before = waveform.steps()
        (self.folder / "bad.recipe").write_text("no.such=1\n")
        for path, value in (("no.such", 1), ("", 1), ("radio_frequency=1\n", 1), ("load x", 1), ("carrier[9].enable", 1),
                            ("carrier", 1), ("waveform_length", 1), ("radio_frequency", float("nan")),
                            ("radio_frequency", "nan"), ("radio_frequency", 0.5), ("radio_frequency", ""),
                            ("carrier[0].power_boosting", float("inf")), ("carrier[0].ncell_id", "1\n2"),
                            ("carrier[0].channel_bandwidth", "no"), ("mirror_spectrum", 2)):
            with self.assertRaisesRegex(nrwave.Error, "^.+$", msg=path):
                waveform[path] = value
        for path, value in ((5, 1), ("radio_frequency", None), ("radio_frequency", {}), ("radio_frequency", 1j)):
            self.assertRaises(TypeError, waveform.__setitem__, path, value)
        for _ in range(2):  # a file that breaks off leaves nothing of its reading
            for work, word in ((waveform.recipe, self.folder / "bad.recipe"), (waveform.recipe, self.folder),
                               (waveform.step, "nonsense"), (waveform.load, self.folder / "none.xml"),
                               (waveform.save, self.folder / "no\0name"), (waveform.save, self.folder)):
                self.assertRaises((nrwave.Error, ValueError), work, word)
        self.assertEqual(waveform.steps(), before)
        (self.folder / "bad.xml").write_text("<r ProtocolType='NR'><nrwave_steps><step>x=1</step></nrwave_steps></r>")
        self.assertRaises(nrwave.Error, waveform.load, self.folder / "bad.xml")
        waveform.save(self.folder / "a.xml")
        waveform.load(self.folder / "a.xml")
        waveform.save(self.folder / "a.xml")
        with self.assertRaisesRegex(nrwave.Error, "\udcff"):  # bytes that are no UTF-8
            waveform.recipe(b"no\xff.recipe")
        waveform["carrier[0].ul_pucch[0].name"] = "\udcff"
        self.assertEqual(waveform["carrier[0].ul_pucch[0].name"], "\udcff")

    def test_samples_are_read_only_live_on_and_a_thousand_runs_take_no_more_memory(self):
        samples = small().generate().samples[5:]
        expected = samples.tobytes()
        waveform, resident = small(5), []
        for _ in range(1020):
            waveform.generate()
            resident.append(int(re.search(r"VmRSS:\s+(\d+)", pathlib.Path("/proc/self/status").read_text())[1]))
        self.assertLess(resident[-1] - resident[20], 4000, "kB")
        self.assertEqual((samples.tobytes(), samples.flags.owndata), (expected, False))
        self.assertRaises(ValueError, samples.__setitem__, 0, 1)
        self.assertRaises(ValueError, samples.base.setflags, write=True)

    def test_threads_wait_for_the_engine_and_nothing_else(self):
        large = nrwave.Waveform()
        large.recipe(pathlib.Path(SOURCE, "examples/full_cell.recipe"))
        running = threading.Thread(target=large.generate)
        running.start()
        turns = 0
        while running.is_alive():
            turns += nrwave.Waveform()["carrier[0].enable"]
        self.assertGreater(turns, 20, "Python stood still beside a run")

        def run(cell):
            return small(cell).generate().samples.tobytes()

        cells = [0, 1, 2, 3] * 4
        with concurrent.futures.ThreadPoolExecutor(4) as threads:
            self.assertEqual(list(threads.map(run, cells)), list(map(run, cells)))

    def test_the_manual_runs_as_it_stands_and_the_library_prints_into_the_log_alone(self):
        with self.assertLogs("nrwave", "DEBUG"):
            small().generate()
        for page in ("docs/python.md", "README.md"):
            script = "".join(re.findall(r"```python\n(.*?)```", pathlib.Path(SOURCE, page).read_text(), re.DOTALL))
            done = subprocess.run([sys.executable, "-c", script], cwd=self.folder, capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stderr, done.stdout.count("\n")), (0, "", script.count("print(")))


unittest.main()
