"""5G NR baseband waveforms: the library and the paths, values and steps of the tool nrwave.

    import nrwave
    w = nrwave.Waveform()
    w["carrier[0].dl_ssb.enable"] = True
    r = w.generate()
    r.samples, r.rate

The tool's manual tells of paths, values and steps; docs/python.md of this module.
"""

import logging
import numbers
import operator
import os
import warnings

import numpy

from . import _nrwave

__all__ = ["Correction", "Error", "OWNERS", "Result", "Waveform"]

#: The names of the numbers in a map.
OWNERS = _nrwave.OWNERS

_logger = logging.getLogger("nrwave")

# Figures that list several things, or bits, stay text also where a number could be read.
_LISTS = ("_list", "_for_ui", "_bitmap", "_vct", "_str", "_info", "_range", "_feedback")


class Error(Exception):
    """What cannot be done, in the tool's one line."""


class Correction(UserWarning):
    """The tool's line on a value that the library corrected, or on a channel that is not sent or not all of it."""


def _told(answer):
    """The result of an operation of the compiled half, and what it has to say on the way."""
    found, failure, corrections, printed = answer
    for line in printed.splitlines():
        _logger.debug("%s", line)
    for line in corrections:
        warnings.warn(line, Correction, stacklevel=3)
    if failure is not None:
        raise Error(failure)
    return found


def _path(path, what="path"):
    if not isinstance(path, str):
        raise TypeError(f"a {what} is a str, not {type(path).__name__}")
    return _bytes(path)


def _bytes(text):
    """Also those that are no UTF-8, as os.fsdecode and the compiled half give them."""
    return text.encode("utf-8", "surrogateescape")


def _file(file):
    name = os.fsencode(file)
    if b"\0" in name:
        raise ValueError("a NUL in the name of a file")
    return name


def _text(value, separator=","):
    """A value as the tool takes it: lists with commas, pairs in a list with a colon."""
    if isinstance(value, str):
        return value
    if isinstance(value, (bool, numpy.bool_)):
        return "true" if value else "false"
    if isinstance(value, numbers.Integral):
        return str(int(value))
    if isinstance(value, numbers.Real):
        return repr(float(value))
    if isinstance(value, (list, tuple, range)) or (isinstance(value, numpy.ndarray) and value.ndim > 0):
        return separator.join(_text(item, ":") for item in value)
    raise TypeError(f"no setting takes a {type(value).__name__}")


def _figure(name, text):
    """A figure that follows from settings: a number where it is one."""
    if not name.endswith(_LISTS):
        for number in (int, float):
            try:
                return number(text)
            except ValueError:
                pass
    return text


_VALUES = {"boolean": lambda text: text == "true", "whole": int, "real": float, "text": str}


class Result:
    """A finished run. It stays as it is, whatever becomes of the waveform.

    samples     complex128, read-only, not copied: they live as long as anyone holds them
    rate        hertz
    peak_dbfs, rms_dbfs, papr_db    as the tool's summary tells them, of these samples; None in silence
    """

    def __init__(self, result):
        self._result = result
        self.samples = result.samples
        self.rate = result.rate
        self.peak_dbfs = result.peak_dbfs
        self.rms_dbfs = result.rms_dbfs
        self.papr_db = result.papr_db

    def map(self, carrier=0, numerology=0, frame=0):
        """The owners of a frame's cells, uint8, symbols by subcarriers: OWNERS names them, 0 is empty. Of a PRACH carrier
        those that a burst touches."""
        return _told(self._result.map(*(_index(index) for index in (carrier, numerology, frame))))


def _index(number):
    number = operator.index(number)
    if not 0 <= number < 2**32:
        raise Error(f"there is nothing at the place {number}")
    return number


class Waveform:
    """A configuration, changed by paths, values and steps as the tool takes them."""

    def __init__(self):
        self._waveform = _nrwave.Waveform()

    def __setitem__(self, path, value):
        """Sets a value: a bool, a number, a text, or a list of them."""
        _told(self._waveform.set(_path(path), _bytes(_text(value))))

    def __getitem__(self, path):
        """A setting or figure, as bool, int, float or text; all values of a setting that has several as a list."""
        kind, texts, is_list = _told(self._waveform.get(_path(path)))
        if kind == "figure":
            return _figure(path, texts[0])
        values = [_VALUES[kind](text) for text in texts]
        return values if is_list else values[0]

    def step(self, text):
        """A step such as 'add carrier'; files that it names are relative to the current folder."""
        _told(self._waveform.step(_path(text, "step")))

    def recipe(self, file):
        """The steps of a recipe."""
        _told(self._waveform.recipe(_file(file)))

    def load(self, file):
        """Recalls a settings file."""
        _told(self._waveform.load(_file(file)))

    def save(self, file):
        """Writes a settings file, whole or not at all."""
        _told(self._waveform.save(_file(file)))

    def steps(self, path=""):
        """The settings at a path, or all, as steps that bring a fresh waveform to the same state."""
        return _told(self._waveform.steps(_path(path)))

    def offers(self, path):
        """The texts that a setting may be given as things stand; [] where that is no list."""
        return _told(self._waveform.offers(_path(path)))

    def figures(self, path=""):
        """What follows from the settings at a path such as 'carrier[0]', by name."""
        return {name: _figure(name, text) for name, text in _told(self._waveform.figures(_path(path))).items()}

    def count(self, path):
        """The number of entries of a list such as 'carrier'."""
        return _told(self._waveform.count(_path(path)))

    def generate(self):
        """Runs the engine, without Python's lock. Runs wait for each other: there is one engine at a time."""
        return Result(_told(self._waveform.generate()))
