#!/usr/bin/env python3
"""Write the seed corpus of the fuzz targets: small MIDI files, each with one option byte in front,
for the preparing of songs with two or three.

Usage: make_fuzz_corpus.py [FOLDER]      (default: fuzz/corpus beside this folder)

The same script always writes the same bytes. Inputs that once broke a target are kept beside the
seeds under names of their own; this script does not touch them.
"""

import sys
from pathlib import Path

SPLIT, IGNORE, KEEP_STATUS, GERMAN, RUNNING, OMIT_PORTS, FORMAT0 = (1 << bit for bit in range(7))
END = bytes([0, 0xFF, 0x2F, 0])


def quantity(value):
    out = [value & 0x7F]
    while value := value >> 7:
        out.insert(0, 0x80 | value & 0x7F)
    return bytes(out)


def event(delta, *data):
    return quantity(delta) + bytes(data)


def meta(delta, kind, payload=b""):
    return event(delta, 0xFF, kind) + quantity(len(payload)) + payload


def sysex(delta, payload):
    return event(delta, 0xF0) + quantity(len(payload)) + payload


def tempo(delta, microseconds):
    return meta(delta, 0x51, microseconds.to_bytes(3, "big"))


def time_signature(delta, numerator, exponent):
    return meta(delta, 0x58, bytes([numerator, exponent, 24, 8]))


def chunk(*events, length=None):
    data = b"".join(events)
    return b"MTrk" + (len(data) if length is None else length).to_bytes(4, "big") + data


def midi_file(*chunks, kind=1, division=480, tracks=None):
    count = len(chunks) if tracks is None else tracks
    head = b"MThd" + bytes([0, 0, 0, 6]) + b"".join(
        number.to_bytes(2, "big") for number in (kind, count, division))
    return head + b"".join(chunks)


NOTE = event(0, 0x90, 60, 100) + event(480, 0x80, 60, 64)
CHORD = event(0, 0x90, 60, 99) + event(0, 64, 99) + event(240, 60, 0) + event(0, 64, 0)
EMPTY = chunk(END)


def seeds():
    """Name, options and bytes of every seed."""
    yield "one_note", 0, midi_file(chunk(NOTE, END))
    yield "format0_split", SPLIT | FORMAT0, midi_file(
        chunk(tempo(0, 400_000), NOTE, event(0, 0x95, 1, 2), sysex(5, b"\x7e\xf7"), END), kind=0)
    yield "format0_two_chunks_split", SPLIT, midi_file(
        chunk(NOTE, NOTE, END), chunk(event(7, 0x91, 61, 1), NOTE, END), kind=0)
    yield "format2", GERMAN, midi_file(chunk(NOTE, END), chunk(CHORD, END), kind=2)
    yield "running_status", RUNNING, midi_file(chunk(CHORD, event(0, 0xC1, 5), event(9, 6), END))
    yield "running_status_kept", KEEP_STATUS | RUNNING, midi_file(
        chunk(CHORD, meta(0, 1, b"x"), event(3, 62, 9), sysex(0, b"\xf7"), event(0, 62, 0), END))
    yield "tempo_time_signature", 0, midi_file(
        chunk(tempo(0, 500_000), time_signature(0, 6, 3), tempo(700, 333_333), time_signature(20, 2, 1),
              time_signature(400, 3, 4), END), chunk(NOTE, event(5000, 0x90, 1, 1), END))
    yield "tempo_in_other_track", 0, midi_file(
        chunk(tempo(480, 400_000), END), chunk(tempo(0, 0), time_signature(960, 3, 2), NOTE, NOTE, END))
    yield "tempo_behind_the_end", FORMAT0, midi_file(
        chunk(NOTE, tempo(90_000, 1), time_signature(0, 7, 3), END), EMPTY)
    yield "many_tempos", 0, midi_file(
        chunk(*(tempo(11, 200_000 + 7919 * i) for i in range(60)), END), chunk(NOTE, END))
    yield "flooded_tick", 0, midi_file(
        chunk(*(tempo(0, 300_000 + i) + time_signature(0, 1 + i % 9, 2) for i in range(200)), END),
        *(chunk(NOTE, NOTE, END) for _ in range(3)))
    yield "short_meta_payloads", 0, midi_file(
        chunk(meta(0, 0x51, b"\x07"), meta(0, 0x58, b"\x03"), meta(0, 0x59), NOTE, END))
    yield "odd_time_signatures", 0, midi_file(
        chunk(time_signature(0, 0, 2), time_signature(100, 200, 1), time_signature(100, 1, 7), time_signature(100, 1, 255), NOTE, END))
    yield "names", IGNORE, midi_file(
        chunk(meta(0, 3, b"Song"), meta(1, 3, b"later"), END),
        chunk(meta(0, 3, b"a zel_ignore b"), NOTE, END))
    yield "all_metas", OMIT_PORTS, midi_file(
        chunk(*(meta(1, kind, b"ab") for kind in range(0x80) if kind != 0x2F), END), EMPTY)
    yield "system_messages", 0, midi_file(
        chunk(*(event(1, status) for status in range(0xF8, 0xFD)), event(0, 0xF7, 1, 9), NOTE, END))
    yield "sysex_long", 0, midi_file(chunk(sysex(0, b"\x43" * 300 + b"\xf7"), sysex(4, b""), END))
    yield "lyrics", RUNNING | FORMAT0, midi_file(
        chunk(*(meta(48, 5, word) for word in (b"la", b"\xfc", b"\r", b"")), END), chunk(CHORD, END))
    yield "second_byte_over_127", 0, midi_file(chunk(event(0, 0xB0, 7, 200), END))
    yield "no_end_of_track", 0, midi_file(chunk(NOTE), chunk(CHORD))
    yield "bytes_behind_end", 0, midi_file(chunk(NOTE, END, b"\xfe\xfe"), chunk(CHORD, END), EMPTY)
    yield "division0", 0, midi_file(chunk(time_signature(0, 6, 3), NOTE, END), EMPTY, division=0)
    yield "smpte_division", 0, midi_file(chunk(NOTE, END), EMPTY, division=0xE728)
    yield "latest_tick", 0, midi_file(
        chunk(tempo(0, 0xFFFFFF), event(0x7FFEFFF0, 0x90, 60, 1), END), division=1)
    yield "padded_quantity", 0, midi_file(chunk(b"\x80\x80\x80\x05\x90\x3c\x01", END))
    yield "two_ports", OMIT_PORTS | FORMAT0, midi_file(
        chunk(meta(0, 0x21, b"\x01"), NOTE, END), chunk(meta(0, 0x20, b"\x05"), CHORD, END))
    yield "fault_header", GERMAN, midi_file(chunk(NOTE, END))[1:]
    yield "fault_promise", GERMAN, midi_file(chunk(NOTE, END), tracks=65_535)
    yield "fault_no_tracks", 0, midi_file(tracks=0) + bytes(12)
    yield "fault_no_status", GERMAN, midi_file(chunk(event(0, 60, 60), END))
    yield "fault_data", GERMAN, midi_file(chunk(event(0, 0x90, 200, 1), END), EMPTY)
    yield "fault_command", 0, midi_file(chunk(event(0, 0xF1), END))
    yield "fault_end_of_track", 0, midi_file(chunk(meta(0, 0x2F, b"x")))
    yield "fault_sysex_length", 0, midi_file(chunk(event(0, 0xF0, 0x87, 0xFF, 0xFF, 0x7F)))
    yield "fault_chunk_length", 0, midi_file(chunk(NOTE, length=0xFFFFFFFF))


GM_ON = b"\x7e\x7f\x09\x01\xf7"
GS_RESET = b"\x41\x10\x42\x12\x40\x00\x7f\x00\x41\xf7"
XG_ON = b"\x43\x10\x4c\x00\x00\x7e\x00\xf7"
XG_REVERB = b"\x43\x10\x4c\x02\x01\x00\x01\x10\xf7"
GS_CHORUS = b"\x41\x10\x42\x12\x40\x01\x38\x02\x05\xf7"


def voice(channel, msb, lsb, program, volume=100):
    """What a song sets up on a channel before its first note."""
    setting = ((0, msb), (32, lsb))
    after = ((7, volume), (10, 64), (11, 127), (91, 40), (93, 10))
    return (b"".join(event(0, 0xB0 | channel, number, value) for number, value in setting)
            + event(0, 0xC0 | channel, program)
            + b"".join(event(1, 0xB0 | channel, number, value) for number, value in after))


def tune(channel, keys, length=240, first=0):
    out = b""
    for place, key in enumerate(keys):
        out += event(first if place == 0 else 0, 0x90 | channel, key, 90)
        out += event(length, 0x80 | channel, key, 64)
    return out


def bar_of_drums():
    hits = b"".join(event(0, 0x99, key, 100) + event(60, 0x99, key, 0)
                    for key in (36, 42, 38, 42, 36, 42, 38, 46))
    return voice(9, 0, 0, 0) + hits


def songs():
    """Name and bytes of songs as programs and instruments write them."""
    scale = (60, 62, 64, 65, 67, 69, 71, 72)
    words = b"".join(meta(240, 5, word) for word in (b"\\La ", b"la ", b"la-", b"li", b"/lo ", b"lu."))
    conductor = (meta(0, 3, b"Little Waltz"), meta(0, 2, b"(C) nobody"), tempo(0, 461_538),
                 time_signature(0, 3, 2), meta(0, 0x59, b"\x01\x00"), meta(0, 6, b"Intro"))
    yield "song_gm", midi_file(
        chunk(*conductor, sysex(0, GM_ON), tempo(1440, 500_000), meta(0, 6, b"Verse"), END),
        chunk(meta(0, 3, b"Piano"), voice(0, 0, 0, 0), tune(0, scale), END),
        chunk(meta(0, 3, b"Bass"), voice(1, 0, 0, 33), tune(1, (36, 43, 36), 640), END),
        chunk(meta(0, 3, b"Drums"), bar_of_drums(), END))
    yield "song_karaoke", midi_file(
        chunk(meta(0, 1, b"@KMIDI KARAOKE FILE"), meta(0, 1, b"@LENGL"), *conductor, words,
              sysex(0, GS_RESET), sysex(24, GS_CHORUS), voice(3, 8, 0, 24), tune(3, scale),
              bar_of_drums(), END), kind=0)
    yield "song_xg", midi_file(
        chunk(*conductor, sysex(0, XG_ON), sysex(120, XG_REVERB), END),
        chunk(event(240, 0xB0, 0, 64), voice(0, 0, 112, 0), tune(0, scale),
              *(event(10, 0xE0, bend, 64) for bend in (0, 32, 64)), END),
        chunk(event(0, 0xB9, 0, 127), bar_of_drums(), event(9, 0xD9, 80), END))
    yield "song_late_drums", midi_file(
        chunk(*conductor, END), chunk(voice(9, 127, 0, 8), tune(9, (36, 38), first=700), END))


def answers():
    """Name and bytes of what may come in when instruments are asked who they are."""
    roland = b"\xf0\x7e\x10\x06\x02\x41\x42\x00\x03\x00\x00\x01\x00\x00\xf7"
    yamaha = b"\xf0\x7e\x7f\x06\x02\x43\x00\x44\x1b\x17\x00\x00\x00\x01\xf7"
    access = b"\xf0\x7e\x00\x06\x02\x00\x20\x33\x01\x00\x00\x00\x00\x00\x00\x01\xf7"
    name = b"MU128         "
    body = b"\x00\x0e\x01\x00\x00" + name
    model = b"\xf0\x43\x00\x4c" + body + bytes([-sum(body) & 0x7F]) + b"\xf7"
    yield "roland", roland
    yield "two_devices", yamaha + b"\xfe\x90\x3c\x40" + access
    yield "real_time_inside", roland[:7] + b"\xf8\xfe" + roland[7:]
    yield "cut_off", yamaha[:9] + b"\x90\x3c\x40" + roland
    yield "short_version", access[:-3] + b"\xf7"
    yield "xg_model", yamaha + model
    yield "xg_wrong_sum", model[:-2] + b"\x00\xf7"
    yield "too_long", b"\xf0" + bytes(300) + b"\xf7" + roland


def main():
    here = Path(__file__).resolve().parent.parent / "fuzz" / "corpus"
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else here
    for target in ("reader", "load_save_load"):
        folder = root / target
        folder.mkdir(parents=True, exist_ok=True)
        for name, options, data in seeds():
            # A file that is refused teaches the second target nothing.
            if target == "reader" or not name.startswith("fault_"):
                (folder / f"{name}.bin").write_bytes(bytes([options]) + data)
        for name, data in songs():
            (folder / f"{name}.bin").write_bytes(bytes([0]) + data)
    (root / "keep_sound").mkdir(parents=True, exist_ok=True)
    for number, (name, data) in enumerate(songs()):
        # Instruments of several makers.
        (root / "sysex_check" / f"{name}.bin").write_bytes(bytes([0, 7 + 29 * number, 0]) + data)
        for instrument in (0, 16, 82):
            (root / "keep_sound" / f"{name}_{instrument}.bin").write_bytes(bytes([1, instrument]) + data)
    (root / "session").mkdir(parents=True, exist_ok=True)
    for number, (name, data) in enumerate(songs()):
        for count in (3, 11):
            commands = bytes((place * place * 29 + 41 * number + count) % 251 for place in range(10 * count))
            (root / "session" / f"{name}_{count}.bin").write_bytes(bytes([count]) + commands + data)
    (root / "identity").mkdir(parents=True, exist_ok=True)
    for number, (name, data) in enumerate(answers()):
        (root / "identity" / f"{name}.bin").write_bytes(bytes([number]) + data)


if __name__ == "__main__":
    main()
