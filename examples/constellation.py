#!/usr/bin/python3
"""Draws the constellations of a waveform's channels, received from its samples.

    constellation.py RECIPE PICTURE.png

Takes the first frame of the first carrier and numerology, which should be alone at the waveform's centre.
"""

import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy

import nrwave


def cells(waveform):
    """The received cells of the frame, symbols by subcarriers, and who owns them."""
    waveform["phase_compensation"] = False  # so that each symbol stands upright
    result = waveform.generate()
    owners = result.map(0, 0, 0)
    symbols, subcarriers = owners.shape
    spacing = 1000 * int(waveform["carrier[0].numerology[0].scs"].split("_")[-1][:-1])
    fft_length = result.rate // spacing
    half_ms = result.rate // 2000
    per_half_ms = symbols // 20
    # TS 38.211 clause 5.3.1: what the symbols leave over of half a millisecond lengthens the prefix of the first.
    extended = per_half_ms % 7 != 0
    prefix = fft_length * (512 if extended else 144) // 2048
    first = half_ms - per_half_ms * (prefix + fft_length)
    begins = first + prefix + (prefix + fft_length) * numpy.arange(per_half_ms)
    begins = (half_ms * numpy.arange(20)[:, None] + begins).ravel()
    useful = result.samples[begins[:, None] + numpy.arange(fft_length)]
    spectrum = numpy.fft.fft(useful, axis=1)
    return spectrum[:, (numpy.arange(subcarriers) - subcarriers // 2) % fft_length], owners


def main(recipe, picture):
    waveform = nrwave.Waveform()
    waveform.recipe(recipe)
    received, owners = cells(waveform)
    present = [owner for owner in range(1, len(nrwave.OWNERS)) if (owners == owner).any()]
    figure, panes = plt.subplots(1, len(present), figsize=(4 * len(present), 4), squeeze=False)
    for pane, owner in zip(panes[0], present):
        points = received[owners == owner]
        points = points / numpy.sqrt(numpy.mean(numpy.abs(points) ** 2))
        pane.plot(points.real, points.imag, ".", markersize=1)
        pane.set_title(f"{nrwave.OWNERS[owner]}, {points.size} cells")
        pane.set_aspect("equal")
        print(nrwave.OWNERS[owner], points.size)
    figure.savefig(picture)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except (nrwave.Error, OSError) as failure:
        sys.exit(f"constellation.py: {failure}")
