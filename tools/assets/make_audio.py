#!/usr/bin/python3
"""Synthesises the game's sounds and writes them to assets/audio/ as Ogg
Vorbis: five short effects and bgm_calm.ogg, a calm looping track.

Usage: tools/assets/make_audio.py [--keep-wav DIR]

Everything is made here from sine partials, plucked strings and a little
noise (numpy), given room with sox's reverb and encoded with oggenc, so the
sounds are our own work. Needs python3-numpy, python3-scipy, sox and vorbis-tools. The
output is the same on every run (fixed random seeds and Ogg serial numbers)."""

import argparse
import os
import subprocess
import tempfile
import wave

import numpy as np
from scipy.signal import lfilter

import check_assets
from common import ASSETS, need_tools, run

RATE = 44100


def seconds(n):
    return int(round(n * RATE))


def note_hz(name):
    """'A4' -> 440.0; sharps as 'C#4'."""
    steps = {"C": -9, "D": -7, "E": -5, "F": -4, "G": -2, "A": 0, "B": 2}
    base, octave = name[:-1], int(name[-1])
    semis = steps[base[0]] + (1 if base.endswith("#") else 0) + 12 * (octave - 4)
    return 440.0 * 2 ** (semis / 12)


def envelope(n, attack, release, decay=None):
    """Linear attack, then either an exponential decay with time constant
    `decay` or a plateau, and a linear release at the end; all in seconds."""
    t = np.arange(n) / RATE
    env = np.minimum(1.0, t / max(attack, 1e-4))
    if decay is not None:
        env *= np.exp(-np.maximum(t - attack, 0) / decay)
    rel = seconds(release)
    if rel > 0:
        env[-rel:] *= np.linspace(1.0, 0.0, rel)
    return env


def partials(freq, n, amps, detune_cents=0.0, phase=0.0):
    """A tone of harmonic partials; amps[k] is the level of partial k+1."""
    t = np.arange(n) / RATE
    f = freq * 2 ** (detune_cents / 1200)
    out = np.zeros(n)
    for k, a in enumerate(amps, start=1):
        if f * k < RATE / 2.2:
            out += a * np.sin(2 * np.pi * f * k * t + phase * k)
    return out


def pluck(freq, length, brightness=0.5, seed=1):
    """A plucked string (Karplus-Strong): a burst of noise in a delay line
    whose averaging filter takes the highs away as it rings."""
    rng = np.random.default_rng(seed)
    period = int(round(RATE / freq))
    line = rng.uniform(-1, 1, period)
    # A softer pluck starts from smoothed noise.
    for _ in range(int((1 - brightness) * 6)):
        line = 0.5 * (line + np.roll(line, 1))
    n = seconds(length)
    out = np.empty(n)
    buf = line.copy()
    idx = 0
    for i in range(n):
        out[i] = buf[idx]
        nxt = (idx + 1) % period
        buf[idx] = 0.996 * 0.5 * (buf[idx] + buf[nxt])
        idx = nxt
    return out / max(1e-9, np.abs(out).max())


def lowpass(x, cutoff):
    """One-pole low-pass, run along the first axis."""
    a = np.exp(-2 * np.pi * cutoff / RATE)
    return lfilter([1 - a], [1, -a], x, axis=0)


def noise(n, seed):
    return np.random.default_rng(seed).uniform(-1, 1, n)


def stereo(mono, pan=0.0):
    """pan -1 left .. +1 right, constant power."""
    angle = (pan + 1) * np.pi / 4
    return np.stack([mono * np.cos(angle), mono * np.sin(angle)], axis=1)


def add_at(track, part, start):
    end = min(len(track), start + len(part))
    track[start:end] += part[:end - start]


def write_wav(path, samples):
    data = np.clip(samples, -1, 1)
    pcm = (data * 32767).astype("<i2")
    with wave.open(path, "wb") as w:
        w.setnchannels(2)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(pcm.tobytes())


def normalise(x, peak_db):
    return x * (10 ** (peak_db / 20) / max(1e-9, np.abs(x).max()))


# --- effects --------------------------------------------------------------------

def sfx_click():
    """A soft wooden tick of about 45 ms: a damped 1.6 kHz body and a
    lower knock, with a hint of filtered noise as the attack."""
    n = seconds(0.045)
    body = partials(1600, n, [1.0, 0.15]) * envelope(n, 0.001, 0.005, decay=0.008)
    knock = partials(620, n, [1.0]) * envelope(n, 0.001, 0.005, decay=0.012)
    hiss = lowpass(noise(n, 11), 5000) * envelope(n, 0.0005, 0.002, decay=0.002)
    return stereo(normalise(0.6 * body + 0.5 * knock + 0.4 * hiss, -9))


def sfx_pickup():
    """Lifting a piece: a short upward glide, like a soft 'bloop'."""
    n = seconds(0.16)
    t = np.arange(n) / RATE
    freq = 480 + 380 * (t / t[-1]) ** 0.7
    phase = 2 * np.pi * np.cumsum(freq) / RATE
    tone = np.sin(phase) + 0.2 * np.sin(2 * phase)
    return stereo(normalise(tone * envelope(n, 0.012, 0.05, decay=0.09), -10))


def sfx_drop():
    """Putting a piece down: a falling glide over a low, soft thump."""
    n = seconds(0.2)
    t = np.arange(n) / RATE
    freq = 760 - 380 * (t / t[-1]) ** 0.6
    phase = 2 * np.pi * np.cumsum(freq) / RATE
    tone = (np.sin(phase) + 0.15 * np.sin(2 * phase)) * envelope(n, 0.006, 0.05, decay=0.07)
    thump = partials(140, n, [1.0, 0.3]) * envelope(n, 0.002, 0.05, decay=0.05)
    return stereo(normalise(tone + 0.8 * thump, -10))


def sfx_snap():
    """A piece snapping home: a crisp tick, then a warm plucked note."""
    n = seconds(0.5)
    tick_n = seconds(0.012)
    tick = lowpass(noise(tick_n, 7), 6000) * envelope(tick_n, 0.0005, 0.004, decay=0.003)
    tick += partials(3200, tick_n, [1.0]) * envelope(tick_n, 0.0005, 0.004, decay=0.004)
    string = pluck(note_hz("E5"), 0.48, brightness=0.45, seed=5) * envelope(seconds(0.48), 0.002, 0.12)
    out = np.zeros(n)
    add_at(out, 0.7 * tick, 0)
    add_at(out, string, seconds(0.012))
    return stereo(normalise(out, -8))


def bell(freq, length, decay):
    n = seconds(length)
    tone = partials(freq, n, [1.0, 0.35, 0.12, 0.05])
    shimmer = partials(freq * 2.76, n, [0.08]) * envelope(n, 0.001, 0.01, decay=decay * 0.25)
    return (tone * envelope(n, 0.004, 0.3, decay=decay)) + shimmer


def sfx_success():
    """Solving: a rising arpeggio of bell tones, C E G C E, ending on the
    whole chord and fading within two and a half seconds."""
    notes = ["C5", "E5", "G5", "C6", "E6"]
    n = seconds(2.5)
    out = np.zeros((n, 2))
    for i, name in enumerate(notes):
        tone = bell(note_hz(name), 2.5 - i * 0.13, decay=0.9)
        add_at(out, stereo(tone, pan=-0.4 + 0.2 * i), seconds(i * 0.13))
    # Soft low C under the last note gives the chord a floor.
    add_at(out, stereo(bell(note_hz("C4"), 1.9, decay=0.8) * 0.5), seconds(0.55))
    out *= envelope(n, 0.0, 0.5)[:, None]
    return normalise(out, -6)


# --- music ------------------------------------------------------------------------

BEAT = 60 / 64          # 64 beats a minute
CHORD_LEN = 8 * BEAT    # two bars of four
# Three sections (A, B, A'), twenty chords, 150 s; the last chord leads back
# to the first, so the track loops.
PROGRESSION = [
    ("C3", ["E3", "G3", "B3", "D4"]), ("A2", ["E3", "G3", "C4", "E4"]),
    ("F2", ["E3", "A3", "C4", "E4"]), ("G2", ["D3", "G3", "C4", "D4"]),
    ("C3", ["E3", "G3", "B3", "E4"]), ("A2", ["E3", "G3", "C4", "E4"]),
    ("D3", ["F3", "A3", "C4", "E4"]), ("G2", ["D3", "F3", "B3", "D4"]),
    ("F2", ["A3", "C4", "E4", "G4"]), ("E2", ["G3", "B3", "D4", "E4"]),
    ("A2", ["G3", "C4", "E4", "A4"]), ("C3", ["G3", "B3", "E4", "G4"]),
    ("F2", ["A3", "C4", "E4", "G4"]), ("E2", ["G3", "B3", "D4", "G4"]),
    ("D3", ["F3", "A3", "C4", "E4"]), ("G2", ["D3", "G3", "C4", "D4"]),
    ("C3", ["E3", "G3", "B3", "D4"]), ("A2", ["E3", "G3", "C4", "E4"]),
    ("F2", ["E3", "A3", "C4", "E4"]), ("G2", ["D3", "G3", "B3", "D4"]),
]
LOOP = len(PROGRESSION) * CHORD_LEN
MUSIC_TITLE = "Moss Garden"
PENTATONIC = ["C5", "D5", "E5", "G5", "A5", "C6", "D6", "E6"]


def pad_chord(notes, length, seed):
    """Warm, slowly breathing pad: each note two slightly detuned voices
    with soft harmonics, long fade in and out so chords overlap."""
    n = seconds(length)
    rng = np.random.default_rng(seed)
    out = np.zeros((n, 2))
    for i, name in enumerate(notes):
        f = note_hz(name)
        for cents, pan in ((-5, -0.6), (5, 0.6)):
            voice = partials(f, n, [1.0, 0.32, 0.14, 0.06, 0.03], cents, rng.uniform(0, 2 * np.pi))
            add_at(out, stereo(voice, pan * (1 if i % 2 else -1)), 0)
    t = np.arange(n) / RATE
    breath = 1 + 0.08 * np.sin(2 * np.pi * 0.11 * t + seed)
    return lowpass(out * (envelope(n, 2.2, 2.5) * breath)[:, None], 1800) / (2 * len(notes))


def bass_note(root, length):
    n = seconds(length)
    tone = partials(note_hz(root), n, [1.0, 0.25, 0.06])
    return stereo(tone * envelope(n, 0.04, 0.6, decay=2.5))


def melody_note(name, length):
    """A soft electric-piano-like tone."""
    n = seconds(length)
    f = note_hz(name)
    tone = partials(f, n, [1.0, 0.28, 0.08]) + 0.05 * partials(f * 4.0, n, [1.0]) * envelope(n, 0.002, 0.01, 0.15)
    return tone * envelope(n, 0.006, 0.4, decay=0.9)


def melody_events(seed=3):
    """Sparse phrases: about every other chord gets two to four notes on
    the beat grid, chosen near the previous note from the pentatonic scale
    and kept to chord tones on strong beats."""
    rng = np.random.default_rng(seed)
    events = []
    pos = 3
    for c, (_, chord) in enumerate(PROGRESSION):
        if c % 4 == 3 or rng.random() < 0.35:
            continue  # rests let the pad breathe
        beats = sorted(rng.choice([0, 1.5, 2, 3, 4, 5, 5.5, 6], size=rng.integers(2, 5), replace=False))
        chord_pcs = {n[:-1] for n in chord}
        for b in beats:
            pos = int(np.clip(pos + rng.integers(-2, 3), 0, len(PENTATONIC) - 1))
            if b in (0, 4) and PENTATONIC[pos][:-1] not in chord_pcs:
                for step in (1, -1, 2, -2):
                    k = int(np.clip(pos + step, 0, len(PENTATONIC) - 1))
                    if PENTATONIC[k][:-1] in chord_pcs:
                        pos = k
                        break
            events.append((c * CHORD_LEN + b * BEAT, PENTATONIC[pos]))
    return events


# Where the first pass begins in the rendered mix: room for the pad that
# fades in ahead of the first chord.
LEAD_IN = 2.0


def music_dry(loops):
    """The dry mix played `loops` times in a row, after LEAD_IN seconds."""
    n = seconds(LEAD_IN + LOOP * loops + 6)
    out = np.zeros((n, 2))
    melody = melody_events()
    for k in range(loops):
        base = LEAD_IN + k * LOOP
        for c, (root, chord) in enumerate(PROGRESSION):
            start = base + c * CHORD_LEN
            add_at(out, 0.9 * pad_chord(chord, CHORD_LEN + 3.0, seed=c), seconds(start - 1.0))
            for bar in range(2):
                add_at(out, 0.22 * bass_note(root, 4 * BEAT + 0.5), seconds(start + bar * 4 * BEAT))
        for when, name in melody:
            add_at(out, stereo(0.16 * melody_note(name, 2.2), 0.25), seconds(base + when))
    return out


# --- output ---------------------------------------------------------------------

def add_room(wav, reverb):
    # sox dithers when it writes 16-bit samples; -R seeds that noise the same
    # way on every run.
    out = wav + ".room.wav"
    run(["sox", "-R", wav, out, "reverb", *reverb.split()])
    return out


def encode(wav, ogg, title, quality=4):
    # A fixed serial number keeps the files identical from run to run.
    run(["oggenc", "-Q", "-q", str(quality), "--serial", "1", "-t", title, "-a", "Quillmoss's Puzzle", "-o", ogg,
         wav])


def make_music(tmp):
    """Three passes through the loop get their room together, and the middle
    one is cut out: it begins with the reverb tail and the held notes of the
    pass before and ends with the pad already fading in for the pass after,
    so the file runs on into its own beginning without a seam."""
    wav = os.path.join(tmp, "music_dry.wav")
    write_wav(wav, normalise(music_dry(3), -6))
    wet = add_room(wav, "55 40 100 80 20 -4")
    cut = os.path.join(tmp, "bgm_calm.wav")
    run(["sox", "-R", wet, cut, "trim", f"{seconds(LEAD_IN + LOOP)}s", f"{seconds(LOOP)}s", "gain", "-n", "-3"])
    return cut


EFFECTS = [
    ("sfx_click", sfx_click, None),
    ("sfx_pickup", sfx_pickup, None),
    ("sfx_drop", sfx_drop, None),
    ("sfx_snap", sfx_snap, "25 50 40 60 0 -8"),
    ("sfx_success", sfx_success, "45 50 70 80 10 -6"),
]


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("--keep-wav", help="also leave the final WAV files in this folder")
    args = ap.parse_args()
    need_tools("sox", "oggenc")
    out_dir = os.path.join(ASSETS, "audio")
    os.makedirs(out_dir, exist_ok=True)
    if args.keep_wav:
        os.makedirs(args.keep_wav, exist_ok=True)
    with tempfile.TemporaryDirectory() as tmp:
        made = []
        for name, make, reverb in EFFECTS:
            wav = os.path.join(tmp, name + ".wav")
            write_wav(wav, make())
            made.append((name, add_room(wav, reverb) if reverb else wav, 4))
        made.append(("bgm_calm", make_music(tmp), 3))
        for name, wav, quality in made:
            encode(wav, os.path.join(out_dir, name + ".ogg"), MUSIC_TITLE if name == "bgm_calm" else name, quality)
            if args.keep_wav:
                run(["cp", wav, os.path.join(args.keep_wav, name + ".wav")])
    for f in sorted(os.listdir(out_dir)):
        length = subprocess.run(["soxi", "-D", os.path.join(out_dir, f)], capture_output=True, text=True).stdout
        print(f"{f:18} {float(length):7.3f} s")
    check_assets.main(["audio"])


if __name__ == "__main__":
    main()
