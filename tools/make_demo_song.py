#!/usr/bin/env python3
"""Write the demo song: "Auld Lang Syne" (traditional) in our own arrangement.

The song starts as a sparse waltz and grows into a 4/4 ballad that moves up a tone for its last
chorus, so one short file shows what real song files contain: time signature, tempo and key changes,
karaoke lyrics, markers, controllers, pitch bend and a System Exclusive message.

Usage: make_demo_song.py [OUTPUT]      (default: data/demo/demo.mid beside this folder)

The same script always writes the same bytes: all variation comes from seeded generators.
Melody and words are in the public domain; the arrangement is released under CC0.
"""

import itertools
import random
import struct
import sys
from dataclasses import dataclass
from pathlib import Path

DIVISION = 480  # ticks per quarter note, called "beat" throughout
COPYRIGHT = "Arrangement: Tracksmith project, public domain (CC0)"
GM_SYSTEM_ON = bytes([0xF0, 5, 0x7E, 0x7F, 0x09, 0x01, 0xF7])  # with the length the file needs
SETUP_TICK = 240  # leaves a sound module time to finish its reset

WALTZ_TEMPO = 116
BALLAD_TEMPO = 94

# ---------------------------------------------------------------------------------------------
# The score
# ---------------------------------------------------------------------------------------------

# One symbol per half measure in 4/4, per measure in 3/4; written in F.
VERSE_CHORDS = "F Dm7 Gm7 C7 F F7 Bb Gm7 F/A Dm Gm7 C7 Bb C7 F {turn}"
CHORUS_CHORDS = "F Dm7 Gm7 C7 Am7 F7 Bb Gm7 F/C Dm Gm7 C7 Bb C7 {close}"

# Bars of the tune; the first bar is the upbeat, rhythms follow from the number of notes.
VERSE_TUNE = (
    "C4 | F4 F4 F4 A4 | G4 F4 G4 A4 | F4 F4 A4 C5 | D5 D5"
    " | C5 A4 A4 F4 | G4 F4 G4 A4 | F4 D4 D4 C4 | F4"
)
SECOND_VERSE_TUNE = VERSE_TUNE.replace("D5 D5", "D5 D5 D5")
CHORUS_TUNE = (
    "D5 | C5 A4 A4 F4 | G4 F4 G4 D5 | C5 A4 A4 C5 | D5 D5"
    " | C5 A4 A4 F4 | G4 F4 G4 A4 | F4 D4 D4 C4 | F4"
)
FINAL_TUNE = CHORUS_TUNE + " A4 | F4 D4 D4 C4 | F4 G4 | A4"

# Beats of each note by the number of notes in a bar; a waltz bar of the tune is two measures.
BALLAD_RHYTHM = {1: [3], 2: [3, 1], 3: [3, 0.5, 0.5], 4: [1.5, 0.5, 1, 1]}
WALTZ_RHYTHM = {1: [5], 2: [5, 1], 4: [2, 1, 2, 1]}

# One word per note: "_" continues the syllable, "/" ends a line, "//" a paragraph.
VERSE_WORDS = (
    "Should auld ac- quain- tance be for- got,/ and nev- er brought to mind?/"
    " Should auld ac- quain- tance be for- got,/ and days of auld lang syne?//"
)
SECOND_VERSE_WORDS = (
    "And there's a hand, my trust- y fiere,/ and gie's a hand o' thine,/"
    " and we'll tak' a right gude wil- lie waught/ for auld _ lang _ syne.//"
)
CHORUS_WORDS = (
    "For auld _ lang _ syne, my dear,/ for auld _ lang _ syne,/"
    " we'll tak' a cup o' kind- ness yet/ for auld _ lang _ syne.//"
)
FINAL_WORDS = CHORUS_WORDS.replace("syne.//", "syne,/") + " for auld _ lang _ syne. _ _//"

# Counter-melodies as "note:beats"; R is a rest.
VERSE_COUNTER = (
    "A3:2 D4:1 C4:1 Bb3:2 C4:2 A3:2 Eb4:2 D4:1 F4:1 G4:1 F4:1"
    " C4:2 F4:2 D4:2 E4:2 D4:2 E4:1 Bb3:1 A3:1 C4:1 F4:1 G4:1"
)
CHORUS_COUNTER = (
    "R:1 F4:1 D4:1 F4:1 D4:1 F4:1 E4:2 E4:2 Eb4:2 D4:1 F4:1 G4:1 Bb4:1"
    " C5:1 A4:1 F4:2 Bb3:1 D4:1 E4:2 D4:2 E4:1 Bb3:1 A3:1 C4:1 F4:2"
)
INTERLUDE_COUNTER = "D4:1 F4:1 E4:1 G4:1 A4:2 F#4:1 A4:1"
ENDING_COUNTER = "D4:2 E4:1 Bb3:1 A3:1 C4:1 Db4:2 C4:6"
INTRO_TUNE = "A4:1 F4:2 D4:1 D4:2 C4:1 F4:5"

# Drum notes of the General MIDI percussion key map.
KICK, STICK, SNARE, HAT, PEDAL, OPEN = 36, 37, 38, 42, 44, 46
CRASH, RIDE, TAMBOURINE = 49, 51, 54
LOW_TOM, MID_TOM, HIGH_TOM = 45, 47, 50

# One character per sixteenth: "." is silent, a digit the loudness.
WALTZ_GROOVE = {KICK: "5...........", STICK: "....3...3...", RIDE: "4.....2.3..."}
WALTZ_FILL = {KICK: "5...........", SNARE: "....2.3.4.56", RIDE: "4..........."}
VERSE_GROOVE = {KICK: "8.....5.7.......", SNARE: "....7..1.1..7...", HAT: "6.3.5.3.6.3.5.3."}
VERSE_SHORT_FILL = {KICK: "8.....5.7.......", SNARE: "....7.......6.56", HAT: "6.3.5.3.6.3....."}
CHORUS_GROOVE = {
    KICK: "8.....6.7.6.....",
    SNARE: "....8..2.2..8..1",
    RIDE: "6.4.5.4.6.4.5.4.",
    PEDAL: "....4.......4...",
    TAMBOURINE: "..3.5.3...3.5.3.",
}
CHORUS_SHORT_FILL = {
    KICK: "8.....6.7.....6.",
    SNARE: "....8.....5.7...",
    HIGH_TOM: "............66..",
    MID_TOM: "..............7.",
    RIDE: "6.4.5.4.6.4.....",
}
LONG_FILL = {
    KICK: "8.....6.8...7...",
    SNARE: "....8...56......",
    HAT: "6.3.5.3.........",
    HIGH_TOM: "..........66....",
    MID_TOM: "............66..",
    LOW_TOM: "..............77",
}
BUILD_UP = {KICK: "7...7...7...7...", SNARE: "2.3.3.4.44556678", OPEN: "..............6."}

# ---------------------------------------------------------------------------------------------
# Harmony
# ---------------------------------------------------------------------------------------------

LETTERS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
QUALITIES = {
    "": (0, 4, 7),
    "m": (0, 3, 7),
    "7": (0, 4, 7, 10),
    "m7": (0, 3, 7, 10),
    "m6": (0, 3, 7, 9),
    "7sus4": (0, 5, 7, 10),
}


def pitch_class(name):
    """Return 0 (C) to 11 (B) for a letter with an optional "#" or "b"."""
    return (LETTERS[name[0]] + name.count("#") - name[1:].count("b")) % 12


def pitch(name):
    """Return the MIDI note number of a name such as "Bb3"; C4 is 60."""
    accidental = name.count("#") - name[1:].count("b")
    return 12 * (int(name[-1]) + 1) + LETTERS[name[0]] + accidental


@dataclass(frozen=True)
class Chord:
    """The pitch classes of a chord, root first, and the pitch class of its bass note."""

    tones: tuple
    bass: int

    @staticmethod
    def parse(symbol, shift=0):
        """Read a symbol such as "Bbm6/F" and move it by `shift` semitones."""
        upper, _, slash = symbol.partition("/")
        length = 2 if upper[1:2] in ("#", "b") else 1
        root = pitch_class(upper[:length])
        tones = tuple((root + step + shift) % 12 for step in QUALITIES[upper[length:]])
        bass = (pitch_class(slash) + shift) % 12 if slash else tones[0]
        return Chord(tones, bass)


def close_voicings(chord, voices, low, high):
    """Yield every close position of the chord with that many voices inside the range."""
    # Without room for all tones the fifth is the one nobody misses.
    tones = chord.tones if voices >= len(chord.tones) else chord.tones[:2] + chord.tones[3:]
    ladder = [note for note in range(low, high + 1) if note % 12 in tones]
    for first in range(len(ladder) - voices + 1):
        yield tuple(ladder[first : first + voices])


def lead_voices(chords, voices, low, high):
    """Return one voicing per chord, each as near as possible to the one before."""
    centre = (low + high) / 2
    previous = None
    result = []
    for chord in chords:

        def cost(voicing, before=previous):
            drift = abs(sum(voicing) / voices - centre)
            if before is None:
                return drift
            return sum(abs(a - b) for a, b in zip(voicing, before)) + 0.4 * drift

        previous = min(close_voicings(chord, voices, low, high), key=cost)
        result.append(previous)
    return result


# ---------------------------------------------------------------------------------------------
# Form
# ---------------------------------------------------------------------------------------------


def ticks(beats):
    """Convert quarter notes to ticks."""
    return int(round(beats * DIVISION))


@dataclass(frozen=True)
class Slot:
    """A stretch of time with one chord; `index` counts from the start of the section."""

    index: int
    start: int
    beats: int
    chord: Chord
    following: Chord


@dataclass(frozen=True)
class Section:
    """A part of the song: its place in ticks, its time signature and its harmony."""

    name: str
    start: int
    beats_per_measure: int
    measures: int
    symbols: tuple
    shift: int

    @property
    def end(self):
        """First tick after the section."""
        return self.measure(self.measures)

    def measure(self, number):
        """Tick of the measure with that number, counted from 0."""
        return self.start + ticks(number * self.beats_per_measure)

    def slots(self, first=0, last=None):
        """Return the chord slots from measure `first` up to, not including, `last`."""
        beats = 3 if self.beats_per_measure == 3 else 2
        chords = [Chord.parse(symbol, self.shift) for symbol in self.symbols]
        stop = self.end if last is None else self.measure(last)
        pairs = zip(chords, chords[1:] + chords[-1:])
        every = [
            Slot(i, self.start + ticks(i * beats), beats, chord, following)
            for i, (chord, following) in enumerate(pairs)
        ]
        return [slot for slot in every if self.measure(first) <= slot.start < stop]


FORM = (
    ("Intro", 3, 5, "F Bb C7 F C7sus4", 0),
    ("Verse 1", 3, 16, VERSE_CHORDS.format(turn="C7sus4"), 0),
    ("Verse 2", 4, 8, VERSE_CHORDS.format(turn="C7sus4"), 0),
    ("Chorus", 4, 8, CHORUS_CHORDS.format(close="F F7"), 0),
    ("Interlude", 4, 2, "Bb Am7 D7sus4 D7", 0),
    ("Final Chorus", 4, 8, CHORUS_CHORDS.format(close="Dm7 Bb"), 2),
    ("Ending", 4, 4, "Gm7 C7 F Bbm6/F F F F F", 2),
)


def build_form():
    """Lay the sections out in time; returns them by name, in playing order."""
    sections = {}
    position = 0
    for name, per_measure, measures, symbols, shift in FORM:
        section = Section(name, position, per_measure, measures, tuple(symbols.split()), shift)
        if len(section.symbols) != measures * (1 if per_measure == 3 else 2):
            raise ValueError(f"chords do not fill {name}")
        sections[name] = section
        position = section.end
    return sections


# ---------------------------------------------------------------------------------------------
# Tracks and the file
# ---------------------------------------------------------------------------------------------


def variable_length(value):
    """Encode a variable-length quantity (Standard MIDI Files 1.0)."""
    encoded = bytes([value & 0x7F])
    while value := value >> 7:
        encoded = bytes([value & 0x7F | 0x80]) + encoded
    return encoded


class Track:
    """Collects the events of one track. Times are absolute ticks, channels count from 1."""

    # Order of events that share a tick: a note must end before its successor starts, and
    # controllers must be in force before the note they shape.
    META, NOTE_OFF, CONTROL, NOTE_ON = range(4)

    def __init__(self, name, channel=1, looseness=6):
        self.name = name
        self.channel = channel
        self._looseness = looseness
        self._events = []
        self._notes = []
        # Only random() is promised to give the same numbers in every Python version.
        self._random = random.Random(1788 + channel).random
        self.meta(0, 0x03, name)

    def _vary(self, spread):
        return int(round((self._random() * 2 - 1) * spread))

    def _add(self, tick, order, data):
        self._events.append((tick, order, len(self._events), bytes(data)))

    def _message(self, tick, order, status, *data):
        self._add(tick, order, (status | (self.channel - 1), *data))

    def meta(self, tick, kind, content):
        """Add a meta event with text or bytes."""
        data = content.encode("ascii") if isinstance(content, str) else bytes(content)
        self._add(tick, self.META, b"\xff" + bytes([kind]) + variable_length(len(data)) + data)

    def raw(self, tick, data):
        """Add an event that is already encoded for a file."""
        self._add(tick, self.META, data)

    def control(self, tick, number, value):
        """Add a control change."""
        self._message(tick, self.CONTROL, 0xB0, number, value)

    def program(self, tick, number):
        """Add a bank select (bank 0) and a program change, counted from 0."""
        self.control(tick, 0, 0)
        self.control(tick, 32, 0)
        self._message(tick, self.CONTROL, 0xC0, number)

    def bend(self, tick, value):
        """Add a pitch bend of -8192 to 8191; 0 is the centre."""
        raw = value + 8192
        self._message(tick, self.CONTROL, 0xE0, raw & 0x7F, raw >> 7)

    def sweep(self, number, start, end, first, last):
        """Move a controller evenly from one value to another, one event per new value."""
        steps = max(1, (end - start) // 60)
        previous = None
        for step in range(steps + 1):
            value = first + (last - first) * step // steps
            if value != previous:
                self.control(start + (end - start) * step // steps, number, value)
            previous = value

    def note(self, start, length, key, velocity):
        """Play a note with a player's small inaccuracy; returns its actual start."""
        actual = max(0, start + self._vary(self._looseness))
        loudness = min(127, max(1, velocity + self._vary(4)))
        self._notes.append((actual, actual + max(30, length), key, loudness))
        return actual

    def chord(self, start, length, keys, velocity, spread=0):
        """Play several notes, each `spread` ticks after the one before."""
        for number, key in enumerate(keys):
            self.note(start + number * spread, length - number * spread, key, velocity)

    def _place_notes(self):
        """Turn notes into events; a repeated key ends before it is struck again."""
        self._notes.sort(key=lambda note: (note[2], note[0]))
        for note, successor in zip(self._notes, self._notes[1:] + [None]):
            start, end, key, velocity = note
            if successor and successor[2] == key:
                end = max(start + 1, min(end, successor[0] - 1))
            self._message(start, self.NOTE_ON, 0x90, key, velocity)
            self._message(end, self.NOTE_OFF, 0x80, key, 64)
        self._notes.clear()

    def encode(self, end):
        """Return the track chunk; the track ends at tick `end` or with its last event."""
        self._place_notes()
        body = b""
        position = 0
        for tick, _, _, data in sorted(self._events):
            body += variable_length(tick - position) + data
            position = tick
        body += variable_length(max(0, end - position)) + b"\xff\x2f\x00"
        return b"MTrk" + struct.pack(">I", len(body)) + body


def encode_song(tracks, end):
    """Return a Standard MIDI File of format 1."""
    header = b"MThd" + struct.pack(">IHHH", 6, 1, len(tracks), DIVISION)
    return header + b"".join(track.encode(end) for track in tracks)


# ---------------------------------------------------------------------------------------------
# Conductor
# ---------------------------------------------------------------------------------------------


def set_tempo(track, tick, tempo):
    """Write a tempo in quarter notes per minute."""
    track.meta(tick, 0x51, round(60_000_000 / tempo).to_bytes(3, "big"))


def slow_down(track, start, tempos):
    """Write a ritardando: one tempo per beat."""
    for beat, tempo in enumerate(tempos):
        set_tempo(track, start + ticks(beat), tempo)


def write_tempos(track, form):
    """Write all tempo changes."""
    set_tempo(track, 0, WALTZ_TEMPO)
    slow_down(track, form["Verse 1"].measure(14), (112, 108, 104, 98, 92, 88))
    set_tempo(track, form["Verse 2"].start, BALLAD_TEMPO)
    slow_down(track, form["Final Chorus"].measure(7), (94, 92, 90, 86))
    slow_down(track, form["Ending"].start, (82, 78, 74, 68, 66, 63, 60, 55, 54))


def make_conductor(form):
    """Make the track of everything that belongs to no channel, except the lyrics."""
    track = Track("Auld Lang Syne")
    track.raw(0, GM_SYSTEM_ON)
    track.meta(0, 0x02, COPYRIGHT)
    track.meta(0, 0x01, "Traditional Scottish melody, words by Robert Burns (1788)")
    track.meta(0, 0x58, (3, 2, 24, 8))
    track.meta(form["Verse 2"].start, 0x58, (4, 2, 24, 8))
    track.meta(0, 0x59, (0xFF, 0))  # F major: one flat
    track.meta(form["Final Chorus"].start, 0x59, (1, 0))  # G major: one sharp
    write_tempos(track, form)
    for section in form.values():
        track.meta(section.start, 0x06, section.name)
    return track


# ---------------------------------------------------------------------------------------------
# Melody, lyrics and other lines
# ---------------------------------------------------------------------------------------------


@dataclass(frozen=True)
class LineNote:
    """A note of a melodic line, in ticks."""

    start: int
    length: int
    key: int


def read_tune(section, tune, rhythm, upbeat=1):
    """Place the bars of a tune in time; the upbeat sounds before the section starts."""
    bars = [bar.split() for bar in tune.split("|")]
    lengths = [[upbeat]] + [rhythm[len(bar)] for bar in bars[1:]]
    position = section.start - ticks(upbeat)
    notes = []
    for names, beats in zip(bars, lengths):
        for name, duration in zip(names, beats):
            notes.append(LineNote(position, ticks(duration), pitch(name) + section.shift))
            position += ticks(duration)
    return notes


def read_line(start, text, shift=0):
    """Place a line written as "note:beats" words in time."""
    notes = []
    for word in text.split():
        name, _, beats = word.partition(":")
        if name != "R":
            notes.append(LineNote(start, ticks(float(beats)), pitch(name) + shift))
        start += ticks(float(beats))
    return notes


def syllable_text(word):
    """Return the lyric text of a word: carriage return ends a line, line feed a paragraph."""
    if word.endswith("//"):
        return word[:-2] + "\n"
    if word.endswith("/"):
        return word[:-1] + "\r"
    return word if word.endswith("-") else word + " "


def split_words(words, notes):
    """Return the lyric text per note, None where a syllable goes on.

    A line end on a continued syllable belongs to the syllable itself.
    """
    parts = words.split()
    if len(parts) != len(notes):
        raise ValueError(f"{len(parts)} syllables for {len(notes)} notes")
    if parts[-1] == "_//":
        sung = max(i for i, part in enumerate(parts) if not part.startswith("_"))
        parts[sung] += "//"
    return [None if part.startswith("_") else syllable_text(part) for part in parts]


def sing(track, notes, words, velocity, octave=0):
    """Play the melody with phrasing and write its lyrics at the same ticks."""
    for note, text in zip(notes, split_words(words, notes)):
        accent = 6 if note.length >= ticks(1.5) else 0
        legato = note.length * 94 // 100
        start = track.note(note.start, legato, note.key + 12 * octave, velocity + accent)
        if text:
            track.meta(start, 0x05, text)
        if note.length >= ticks(2):
            add_vibrato(track, start, legato)


def add_vibrato(track, start, length):
    """Let a long note bloom: modulation rises late and is gone when the note ends."""
    track.sweep(1, start + length // 3, start + length * 3 // 4, 0, 56)
    track.control(start + length, 1, 0)


def add_scoops(track, notes):
    """Bend into the strong notes that start a phrase, as a saxophonist would."""
    for note in notes:
        if note.length == ticks(1.5) and note.key % 12 in (0, 2):
            for step, value in enumerate((-3400, -2400, -1500, -700, 0)):
                # The first value must be set before even an early note.
                track.bend(note.start - 10 + step * 24, value)


def play_line(track, notes, velocity, octave=0):
    """Play a line without lyrics, slightly detached."""
    for note in notes:
        track.note(note.start, note.length * 92 // 100, note.key + 12 * octave, velocity)


def swell(track, start, end, low, high):
    """Raise the expression to the middle of the stretch and let it fall again."""
    middle = (start + end) // 2
    track.sweep(11, start, middle, low, high)
    track.sweep(11, middle + 60, end - 20, high, (low + high) // 2)


# ---------------------------------------------------------------------------------------------
# Accompaniment
# ---------------------------------------------------------------------------------------------


def voiced(slots, voices, low, high):
    """Pair each slot with its voicing."""
    return list(zip(slots, lead_voices([slot.chord for slot in slots], voices, low, high)))


def sustain_chords(track, slots, voices, low, high, velocity):
    """Play long chords; tones common to successive chords are held, not repeated."""
    sounding = {}
    for slot, keys in voiced(slots, voices, low, high):
        for key in [key for key in sounding if key not in keys]:
            begin = sounding.pop(key)
            track.note(begin, slot.start - begin, key, velocity)
        for key in keys:
            sounding.setdefault(key, slot.start)
    end = slots[-1].start + ticks(slots[-1].beats)
    for key, begin in sounding.items():
        track.note(begin, end - begin - 20, key, velocity)


def press_pedal(track, slots):
    """Change the sustain pedal with every chord and release it after the last."""
    for slot in slots:
        track.control(max(0, slot.start - 12), 64, 0)
        track.control(slot.start + 50, 64, 127)
    track.control(slots[-1].start + ticks(slots[-1].beats) - 30, 64, 0)


def comp(track, slots, pattern, velocity, voices=4, low=55, high=76, spread=0):
    """Play chords in a rhythm of (beat, beats long, velocity change, first voice used)."""
    for slot, keys in voiced(slots, voices, low, high):
        for beat, length, change, first in pattern:
            start = slot.start + ticks(beat)
            track.chord(start, ticks(length), keys[first:], velocity + change, spread)


def pick(track, slots, order, velocity, low=52, high=72, voices=4):
    """Play broken chords in eighth notes; `order` names the voices."""
    for slot, keys in voiced(slots, voices, low, high):
        for step, voice in zip(range(slot.beats * 2), itertools.cycle(order)):
            accent = 8 if step == 0 else 0
            track.note(slot.start + ticks(step / 2), ticks(0.9), keys[voice], velocity + accent)


def strum(track, slots, velocity):
    """Strum down on the beat and up on the last eighth of each slot."""
    for slot, keys in voiced(slots, 4, 55, 74):
        for beat, length, change, keys_hit in (
            (0, 0.9, 0, keys),
            (1, 0.45, 5, keys),
            (1.5, 0.4, -12, keys[:0:-1]),
        ):
            track.chord(slot.start + ticks(beat), ticks(length), keys_hit, velocity + change, 11)


def bass_key(pitch_class_wanted):
    """Return the key of a bass note between E1 and Eb2."""
    return 28 + (pitch_class_wanted - 28) % 12


def approach(slot, shift):
    """Return a bass note that leads from this slot into the next."""
    here, there = bass_key(slot.chord.bass), bass_key(slot.following.bass)
    if abs(here - there) <= 2:
        return here + 7 if (here + 7) % 12 in slot.chord.tones else here
    scale = {(5 + shift + step) % 12 for step in (0, 2, 4, 5, 7, 9, 11)}
    direction = 1 if here > there else -1
    near = there + direction
    return near if near % 12 in scale else there + 2 * direction


def play_waltz_bass(track, slots, velocity):
    """Play the root on one; every other measure answers with the fifth on three."""
    for slot in slots:
        root = bass_key(slot.chord.bass)
        answers = slot.index % 2 == 1
        track.note(slot.start, ticks(1.9 if answers else 2.8), root, velocity)
        if answers:
            fifth = root + 7 if (root + 7) % 12 in slot.chord.tones else root + 12
            track.note(slot.start + ticks(2), ticks(0.9), fifth, velocity - 8)


def play_ballad_bass(track, slots, velocity, shift, busy):
    """Play roots on the strong beats and lead into the next chord on the last eighth."""
    for slot in slots:
        root = bass_key(slot.chord.bass)
        track.note(slot.start, ticks(0.95 if busy else 1.4), root, velocity)
        if busy:
            track.note(slot.start + ticks(1), ticks(0.45), root, velocity - 12)
        track.note(slot.start + ticks(1.5), ticks(0.45), approach(slot, shift), velocity - 8)


def glissando(track, start, beats, low, high, tonic, velocity):
    """Sweep up the major scale of `tonic`."""
    scale = {(tonic + step) % 12 for step in (0, 2, 4, 5, 7, 9, 11)}
    keys = [key for key in range(low, high + 1) if key % 12 in scale]
    step = ticks(beats) // len(keys)
    for number, key in enumerate(keys):
        track.note(start + number * step, ticks(0.6), key, velocity + number // 2)


def drum_measure(track, start, pattern):
    """Play one measure of a drum pattern."""
    for key, steps in pattern.items():
        for step, loudness in enumerate(steps):
            if loudness != ".":
                track.note(start + ticks(step / 4), 60, key, 10 + 12 * int(loudness))


def groove(track, section, first, last, beat, short_fill, long_fill):
    """Play a beat with a short fill every fourth and a long fill every eighth measure."""
    for number in range(first, last):
        pattern = {3: short_fill, 7: long_fill}.get(number % 8, beat)
        drum_measure(track, section.measure(number), pattern)


# ---------------------------------------------------------------------------------------------
# The players
# ---------------------------------------------------------------------------------------------


def set_up(track, program, volume, pan, reverb, chorus):
    """Write the channel's initial settings, staggered so that no cable is flooded."""
    tick = SETUP_TICK + 12 * track.channel
    track.program(tick, program)
    settings = ((7, volume), (10, pan), (11, 100), (91, reverb), (93, chorus), (64, 0), (1, 0))
    for number, value in settings:
        track.control(tick + 2, number, value)
    # Registered parameter 0: a bend range of two semitones; then no parameter stays selected.
    for number, value in ((101, 0), (100, 0), (6, 2), (38, 0), (101, 127), (100, 127)):
        track.control(tick + 4, number, value)
    track.bend(tick + 6, 0)


def make_piano(form):
    """Piano: opens the song, then comps."""
    track = Track("Piano", 1)
    set_up(track, 0, 102, 58, 45, 0)
    intro, ending = form["Intro"], form["Ending"]
    play_line(track, read_line(intro.measure(1) - ticks(1), INTRO_TUNE), 86)
    comp(track, intro.slots(1), ((0, 2.9, 0, 0), (1, 0.9, -8, 1), (2, 0.9, -12, 1)), 62, 3, 48, 64)
    press_pedal(track, intro.slots(1))
    waltz = form["Verse 1"].slots(8)
    comp(track, waltz, ((1, 0.8, 0, 0), (2, 0.7, -6, 0)), 50, 3, 53, 70)
    ballad = ((0, 1.4, 0, 0), (1, 0.5, -14, 2), (1.5, 0.5, -10, 0))
    comp(track, form["Verse 2"].slots(), ballad, 62)
    driving = ((0, 0.9, 4, 0), (0.5, 0.4, -14, 2), (1, 0.45, -4, 0), (1.5, 0.5, 0, 0))
    for name in ("Chorus", "Interlude", "Final Chorus"):
        comp(track, form[name].slots(), driving, 70)
    for name in ("Verse 2", "Chorus", "Interlude", "Final Chorus"):
        press_pedal(track, form[name].slots())
    comp(track, ending.slots(0, 2), ((0, 1.8, 0, 0), (1, 0.9, -12, 2)), 66)
    press_pedal(track, ending.slots(0, 2))
    play_final_chord(track, ending, (55, 62, 67, 71, 74), 66, 30)
    return track


def play_final_chord(track, ending, keys, velocity, spread):
    """Hold the last chord, rolled upwards, with the pedal down."""
    start = ending.measure(2)
    track.control(start + 20, 64, 127)
    track.chord(start, ticks(6.5), keys, velocity, spread)
    track.control(start + ticks(7), 64, 0)


def make_bass(form):
    """Bass: long notes in the waltz, roots with approach notes in the ballad."""
    track = Track("Bass", 2, looseness=4)
    set_up(track, 33, 108, 64, 15, 0)
    play_waltz_bass(track, form["Verse 1"].slots(), 82)
    for name, velocity, busy in (
        ("Verse 2", 84, False),
        ("Chorus", 92, True),
        ("Interlude", 92, False),
        ("Final Chorus", 96, True),
    ):
        play_ballad_bass(track, form[name].slots(), velocity, form[name].shift, busy)
    ending = form["Ending"]
    for slot in ending.slots(0, 2):
        track.note(slot.start, ticks(1.8), bass_key(slot.chord.bass), 82)
    track.note(ending.measure(2), ticks(6.5), bass_key(7), 84)
    return track


def make_guitar(form):
    """Guitar: picks the verses, strums the choruses."""
    track = Track("Guitar", 3, looseness=5)
    set_up(track, 25, 86, 88, 40, 20)
    pick(track, form["Verse 1"].slots(), (0, 1, 2, 3, 2, 1), 76)
    pick(track, form["Verse 2"].slots(), (0, 2, 3, 1), 60)
    for name, velocity in (("Chorus", 62), ("Interlude", 64), ("Final Chorus", 68)):
        strum(track, form[name].slots(), velocity)
    ending = form["Ending"]
    comp(track, ending.slots(0, 2), ((0, 1.9, 0, 0),), 60, 4, 55, 74, 24)
    play_final_chord(track, ending, (55, 59, 62, 67, 71), 60, 40)
    return track


def make_melody(form):
    """Melody: flute in the first verse, alto saxophone from the second on, with all lyrics."""
    track = Track("Melody", 4, looseness=7)
    set_up(track, 73, 100, 64, 55, 10)
    sing(track, read_tune(form["Verse 1"], VERSE_TUNE, WALTZ_RHYTHM), VERSE_WORDS, 88, octave=1)
    second = form["Verse 2"]
    # The new voice must be ready before the upbeat and after the flute's last note.
    track.program(second.start - ticks(1) - 60, 65)
    track.control(second.start - ticks(1) - 50, 7, 106)
    parts = (
        ("Verse 2", SECOND_VERSE_TUNE, SECOND_VERSE_WORDS, 82),
        ("Chorus", CHORUS_TUNE, CHORUS_WORDS, 90),
    )
    for name, tune, words, velocity in parts:
        notes = read_tune(form[name], tune, BALLAD_RHYTHM)
        sing(track, notes, words, velocity)
        add_scoops(track, notes)
    sing_final(track, form)
    return track


def sing_final(track, form):
    """Sing the last chorus, whose closing note lasts through the final chord."""
    notes = read_tune(form["Final Chorus"], FINAL_TUNE, BALLAD_RHYTHM)
    last = notes[-1]
    notes[-1] = LineNote(last.start, ticks(6), last.key)
    sing(track, notes, FINAL_WORDS, 96)
    add_scoops(track, notes[:-8])
    track.sweep(11, last.start + ticks(3), last.start + ticks(6), 100, 60)


def make_strings(form):
    """Strings: join half-way through each verse and carry the choruses."""
    track = Track("Strings", 5, looseness=8)
    set_up(track, 48, 58, 44, 70, 15)
    parts = (
        (form["Intro"], 3, None, 44, 50, 80),
        (form["Verse 1"], 8, None, 56, 62, 104),
        (form["Verse 2"], 4, None, 60, 64, 108),
        (form["Chorus"], 0, None, 58, 76, 104),
        (form["Interlude"], 0, None, 62, 76, 116),
        (form["Final Chorus"], 0, None, 62, 86, 112),
    )
    for section, first, last, velocity, low, high in parts:
        slots = section.slots(first, last)
        sustain_chords(track, slots, 4, 57, 79, velocity)
        swell(track, section.measure(first), section.end, low, high)
    play_string_ending(track, form["Ending"])
    return track


def play_string_ending(track, ending):
    """Play the slow cadence and fade the last chord with expression."""
    sustain_chords(track, ending.slots(0, 2), 4, 57, 79, 66)
    swell(track, ending.start, ending.measure(2), 90, 112)
    track.chord(ending.measure(2), ticks(7), (59, 62, 67, 74, 79), 66)
    track.sweep(11, ending.measure(2), ending.measure(2) + ticks(1), 84, 108)
    track.sweep(11, ending.measure(2) + ticks(2), ending.measure(2) + ticks(7), 108, 40)


def make_choir(form):
    """Choir pad: warms the choruses."""
    track = Track("Choir", 6, looseness=8)
    set_up(track, 52, 70, 76, 80, 25)
    for name, velocity in (("Chorus", 58), ("Interlude", 60), ("Final Chorus", 68)):
        section = form[name]
        sustain_chords(track, section.slots(), 3, 55, 72, velocity)
        swell(track, section.start, section.end, 70, 112)
    ending = form["Ending"]
    sustain_chords(track, ending.slots(0, 2), 3, 55, 72, 62)
    track.chord(ending.measure(2), ticks(6.5), (59, 62, 67), 60)
    track.sweep(11, ending.measure(2), ending.measure(2) + ticks(6.5), 104, 36)
    return track


def make_horn(form):
    """French horn: the counter-melody."""
    track = Track("French Horn", 7, looseness=7)
    set_up(track, 60, 80, 50, 60, 0)
    parts = (
        ("Verse 2", VERSE_COUNTER, 0, 62),
        ("Chorus", CHORUS_COUNTER, 0, 70),
        ("Interlude", INTERLUDE_COUNTER, 0, 78),
        ("Final Chorus", CHORUS_COUNTER.replace("A3:1 C4:1 F4:2", "A3:1 C4:1 D4:2"), 2, 76),
        ("Ending", ENDING_COUNTER, 2, 66),
    )
    for name, text, shift, velocity in parts:
        play_line(track, read_line(form[name].start, text, shift), velocity)
        for number in range(0, form[name].measures, 4):
            end = min(form[name].measure(number + 4), form[name].end)
            swell(track, form[name].measure(number), end, 78, 110)
    return track


def make_brass(form):
    """Brass: lifts the interlude and answers the melody in the last chorus."""
    track = Track("Brass", 8, looseness=5)
    set_up(track, 61, 92, 84, 50, 0)
    interlude, final = form["Interlude"], form["Final Chorus"]
    sustain_chords(track, interlude.slots(), 3, 58, 74, 70)
    track.sweep(11, interlude.start, interlude.end - 30, 60, 118)
    track.control(final.start - 14, 11, 104)
    hits = ((0, 0.45, 0, 0), (1.5, 0.4, -8, 0))
    for number in (0, 2):
        comp(track, final.slots(number, number + 1)[:1], hits, 84, 3, 60, 76)
    answer = ((0.5, 0.4, -4, 0), (1, 0.8, 2, 0))
    for number in (3, 7):
        comp(track, final.slots(number, number + 1), answer, 84, 3, 60, 76)
    sustain_chords(track, final.slots(4, 7), 3, 60, 76, 66)
    swell(track, final.measure(4), final.measure(7), 66, 114)
    ending = form["Ending"]
    track.chord(ending.measure(2), ticks(5), (62, 67, 71), 62)
    track.sweep(11, ending.measure(2), ending.measure(2) + ticks(5), 96, 30)
    return track


def make_harp(form):
    """Harp: broken chords in the intro and glissandi into new sections."""
    track = Track("Harp", 9, looseness=4)
    set_up(track, 46, 84, 34, 65, 10)
    pick(track, form["Intro"].slots(1), (0, 1, 2, 3, 4, 3), 66, 60, 84, 5)
    pick(track, form["Verse 1"].slots(4, 8), (0, 2, 4, 3, 2, 1), 44, 64, 86, 5)
    for name, tonic in (("Verse 2", 5), ("Chorus", 5), ("Final Chorus", 7)):
        glissando(track, form[name].start - ticks(1), 1, 60, 88, tonic, 48)
    ending = form["Ending"]
    glissando(track, ending.measure(2) - ticks(1), 1, 55, 79, 7, 40)
    play_final_chord(track, ending, (43, 50, 55, 59, 62, 67, 71, 74, 79, 83), 58, 70)
    return track


def make_drums(form):
    """Drums: enter softly in the waltz, carry the ballad, stop for the slow ending."""
    track = Track("Drums", 10, looseness=3)
    set_up(track, 0, 102, 64, 30, 0)
    first, second = form["Verse 1"], form["Verse 2"]
    groove(track, first, 8, 16, WALTZ_GROOVE, WALTZ_GROOVE, WALTZ_FILL)
    groove(track, second, 0, 8, VERSE_GROOVE, VERSE_SHORT_FILL, LONG_FILL)
    for name in ("Chorus", "Final Chorus"):
        groove(track, form[name], 0, 8, CHORUS_GROOVE, CHORUS_SHORT_FILL, LONG_FILL)
    drum_measure(track, form["Interlude"].start, CHORUS_GROOVE)
    drum_measure(track, form["Interlude"].measure(1), BUILD_UP)
    crashes = (("Verse 2", 76), ("Chorus", 96), ("Interlude", 88), ("Final Chorus", 104))
    for name, velocity in crashes:
        track.note(form[name].start, 60, CRASH, velocity)
    play_drum_ending(track, form["Ending"])
    return track


def play_drum_ending(track, ending):
    """Mark the two strong points of the slow cadence."""
    for measure, velocity in ((0, 84), (2, 80)):
        track.note(ending.measure(measure), 60, CRASH, velocity - 6)
        track.note(ending.measure(measure), 60, KICK, velocity)
    # A soft cymbal roll grows into the last chord.
    for step in range(12):
        track.note(ending.measure(2) - ticks(1.5) + ticks(step / 8), 40, RIDE, 28 + 4 * step)


def make_bells(form):
    """Glockenspiel: sparkles in the intro and doubles the last chorus."""
    track = Track("Glockenspiel", 11, looseness=4)
    set_up(track, 9, 104, 92, 60, 0)
    intro = form["Intro"]
    play_line(track, read_line(intro.measure(3), "C5:1 F5:1 A5:1 Bb5:1 G5:1"), 48)
    final = read_tune(form["Final Chorus"], CHORUS_TUNE, BALLAD_RHYTHM)
    play_line(track, final, 62, octave=1)
    play_line(track, read_line(form["Ending"].measure(2) + ticks(1), "G5:1 B5:1 D6:1 G6:3"), 50)
    return track


PLAYERS = (
    make_piano,
    make_bass,
    make_guitar,
    make_melody,
    make_strings,
    make_choir,
    make_horn,
    make_brass,
    make_harp,
    make_drums,
    make_bells,
)


def make_song():
    """Return the bytes of the complete song."""
    form = build_form()
    tracks = [make_conductor(form)] + [player(form) for player in PLAYERS]
    return encode_song(tracks, form["Ending"].end)


def main():
    """Write the song to the file named on the command line or to its place in the project."""
    default = Path(__file__).resolve().parent.parent / "data" / "demo" / "demo.mid"
    output = Path(sys.argv[1]) if len(sys.argv) > 1 else default
    output.parent.mkdir(parents=True, exist_ok=True)
    output.write_bytes(make_song())
    print(f"wrote {output}")


if __name__ == "__main__":
    main()
