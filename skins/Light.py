#!/usr/bin/env python3
"""Draws the images of the skin "Light" into skins/Light, beside its document skin.xml.

The images are kept with the sources, and the build only packs them. To draw them anew, from the project's folder:

    sudo apt-get install python3-cairo fonts-inter fonts-jetbrains-mono
    python3 skins/Light.py

Then build, and take Thumbnail.png and Background.png from a picture of the new skin:

    build/release/tools/host/quilvane-host screenshot light.png --skin Light
    python3 skins/Light.py --preview light.png

All is drawn at its own size from shapes, so every edge is as sharp as the grid lets it be. Measures are pixels; a
hairline lies in the middle of a pixel.
"""

import argparse
import math
import pathlib

import cairo

FOLDER = pathlib.Path(__file__).parent / "Light"

# The grid: four columns between two margins. skin.xml has the same numbers.
WIDTH, HEIGHT = 720, 320
MARGIN = 20
COLUMN, GUTTER = 152, 24
COLUMNS = [MARGIN + i * (COLUMN + GUTTER) for i in range(4)]
CELL = 104  # where the second knob of a column begins
TITLE, LINE, ROW, LABELS = 146, 162, 172, 280
KNOB = 48
FADER = 96
TILE = 16  # so high that all waves have room below their box
RULER = 98  # the line of the centre frequency

PAPER = 0xF7F6F2
WHITE = 0xFFFFFF
INK = 0x2A2E35
GREY = 0x666B73
TRACK = 0xC6C4BC
HAIR = 0xDAD8D1
WASH = 0xEAE8E2
TEAL = 0x1A7A87
CORAL = 0xC2553A

CAP_HEIGHT = {"Inter": 0.727, "JetBrains Mono": 0.73}


# Shapes ---------------------------------------------------------------------------------------------------------------


def colour(ctx, rgb, alpha=1.0):
    ctx.set_source_rgba((rgb >> 16 & 255) / 255, (rgb >> 8 & 255) / 255, (rgb & 255) / 255, alpha)


def rounded(ctx, x, y, w, h, r):
    ctx.new_sub_path()
    ctx.arc(x + w - r, y + r, r, -math.pi / 2, 0)
    ctx.arc(x + w - r, y + h - r, r, 0, math.pi / 2)
    ctx.arc(x + r, y + h - r, r, math.pi / 2, math.pi)
    ctx.arc(x + r, y + r, r, math.pi, 3 * math.pi / 2)
    ctx.close_path()


def box(ctx, x, y, w, h, fill=WHITE, edge=TRACK, r=3):
    """A field with a hairline around it, within the given pixels."""
    rounded(ctx, x + 0.5, y + 0.5, w - 1, h - 1, r)
    colour(ctx, fill)
    ctx.fill_preserve()
    colour(ctx, edge)
    ctx.set_line_width(1)
    ctx.stroke()


def rect(ctx, x, y, w, h, rgb):
    colour(ctx, rgb)
    ctx.rectangle(x, y, w, h)
    ctx.fill()


def disc(ctx, x, y, r, rgb):
    colour(ctx, rgb)
    ctx.arc(x, y, r, 0, 2 * math.pi)
    ctx.fill()


def polyline(ctx, points, rgb, width=1.5):
    ctx.move_to(*points[0])
    for point in points[1:]:
        ctx.line_to(*point)
    colour(ctx, rgb)
    ctx.set_line_width(width)
    ctx.set_line_cap(cairo.LINE_CAP_ROUND)
    ctx.set_line_join(cairo.LINE_JOIN_ROUND)
    ctx.stroke()
    ctx.set_line_cap(cairo.LINE_CAP_BUTT)


def text(ctx, string, x, y, size=11, rgb=INK, align=0.0, tracking=0.0, family="Inter", face="Inter Medium"):
    """Text whose capitals are centred on y. Align is 0 for the left end at x, 0.5 for the middle, 1 for the right."""
    ctx.select_font_face(face, cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_NORMAL)
    ctx.set_font_size(size)
    options = cairo.FontOptions()
    options.set_hint_style(cairo.HINT_STYLE_NONE)
    options.set_hint_metrics(cairo.HINT_METRICS_OFF)
    ctx.set_font_options(options)
    advances = [ctx.text_extents(c).x_advance + tracking for c in string]
    left = x - align * (sum(advances) - tracking)
    baseline = round(y + CAP_HEIGHT[family] * size / 2)
    colour(ctx, rgb)
    for character, advance in zip(string, advances):
        ctx.move_to(left, baseline)
        ctx.text_path(character)
        ctx.fill()
        left += advance
    return left - tracking


def caps(ctx, string, x, y, rgb=GREY, align=0.0, size=11):
    return text(ctx, string, x, y, size, rgb, align, tracking=0.6)


# Files ----------------------------------------------------------------------------------------------------------------


def strip(name, width, height, frames, draw):
    """Writes frames below each other; draw gets each with its own origin, and can't paint outside it."""
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width, height * frames)
    ctx = cairo.Context(surface)
    ctx.set_antialias(cairo.ANTIALIAS_BEST)
    for i in range(frames):
        ctx.save()
        ctx.translate(0, i * height)
        ctx.rectangle(0, 0, width, height)
        ctx.clip()
        draw(ctx, i)
        ctx.restore()
    surface.write_to_png(str(FOLDER / name))


# Knobs, faders, lights ------------------------------------------------------------------------------------------------

TURN = 1.5 * math.pi
START = 0.75 * math.pi


def knob(name, rgb, frames, ticks=0):
    middle, radius = KNOB / 2, 22.25

    def draw(ctx, i):
        angle = START + TURN * i / (frames - 1)
        for tick in range(ticks):
            a = START + TURN * tick / (ticks - 1)
            disc(ctx, middle + radius * math.cos(a), middle + radius * math.sin(a), 1.25, TRACK)
        if not ticks:
            ctx.arc(middle, middle, radius, START, START + TURN)
            colour(ctx, TRACK)
            ctx.set_line_width(1)
            ctx.stroke()
        ctx.arc(middle, middle, radius, START, angle)
        colour(ctx, rgb)
        ctx.set_line_width(3)
        ctx.stroke()
        ctx.arc(middle, middle, 16, 0, 2 * math.pi)
        colour(ctx, WHITE)
        ctx.fill_preserve()
        colour(ctx, TRACK)
        ctx.set_line_width(1)
        ctx.stroke()
        x, y = math.cos(angle), math.sin(angle)
        polyline(ctx, [(middle + 7 * x, middle + 7 * y), (middle + 13 * x, middle + 13 * y)], rgb, 2.5)

    strip(name, KNOB, KNOB, frames, draw)


def handle(ctx, x, y, w, h):
    rounded(ctx, x - w / 2, y - h / 2, w, h, 2)
    colour(ctx, INK)
    ctx.fill()


def fader(name):
    """A channel of the mixer, which goes over the whole height."""
    width = 48

    def draw(ctx, i):
        y = min(max(FADER - i, 2), FADER - 2)
        rect(ctx, 9.5, 0, 1, FADER, TRACK)
        rect(ctx, 8.5, y, 3, FADER - y, INK)
        handle(ctx, 10, y, 20, 4)

    strip(name, width, FADER, FADER + 1, draw)


def ruler(name):
    thumb, height, step = 8, 28, 4
    travel = WIDTH - 2 * MARGIN

    def draw(ctx, i):
        x = thumb + i * step
        handle(ctx, x, height / 2, 4, 24)

    strip(name, travel + 2 * thumb, height, travel // step + 1, draw)


def orbit(name, rgb):
    """The line below an oscillator's title, and the dot that the oscillator moves along it."""
    travel = COLUMN - 8

    def draw(ctx, i):
        rect(ctx, 0, 4, COLUMN, 1, TRACK)
        disc(ctx, 4 + travel * i / 72, 4.5, 4, rgb)

    strip(name, COLUMN, 9, 73, draw)


def meter(name):
    width, frames = 12, 49
    zero = FADER * 6 / 30  # the meters go from -24 to +6 dB

    def draw(ctx, i):
        rect(ctx, 0, 0, width, FADER, WASH)
        top = FADER - FADER * i / (frames - 1)
        rect(ctx, 0, max(top, zero), width, FADER - max(top, zero), GREY)
        if top < zero:
            rect(ctx, 0, top, width, zero - top, CORAL)
        rect(ctx, 0, round(zero), width, 1, PAPER)

    strip(name, width, FADER, frames, draw)


def notches(name):
    """What the chain of stages does to a spectrum: one notch for two stages."""
    width, height = 48, 16

    def draw(ctx, i):
        count = i + 1
        points = []
        for step in range(4 * (width - 2) + 1):
            x = step / 4
            phase = x / (width - 2) * count
            points.append((1 + x, 3 + 10 * abs(math.sin(math.pi * phase)) ** 6))
        polyline(ctx, points, INK, 1.25)

    strip(name, width, height, 4, draw)


# Waves ----------------------------------------------------------------------------------------------------------------

WAVES = ["Sine", "Triangle", "Hyper Triangle", "Ramp Up", "Ramp Down", "Square", "Sample/Hold"]


def wave(ctx, i, x, y, w, h, rgb):
    """One period of a wave in the given box."""
    if i == 0:
        points = [(t / 40, 0.5 - 0.5 * math.sin(2 * math.pi * t / 40)) for t in range(41)]
    elif i == 1:
        points = [(0, 1), (0.5, 0), (1, 1)]
    elif i == 2:
        points = [(t / 40, 1 - abs(math.sin(2 * math.pi * t / 40))) for t in range(41)]
    elif i == 3:
        points = [(0, 1), (1, 0), (1, 1)]
    elif i == 4:
        points = [(0, 1), (0, 0), (1, 1)]
    elif i == 5:
        points = [(0, 1), (0, 0), (0.5, 0), (0.5, 1), (1, 1), (1, 0)]
    else:
        levels = [0.6, 0.15, 0.8, 0.35, 1.0, 0.0]
        points = [(edge / 6, level) for n, level in enumerate(levels) for edge in (n, n + 1)]
    polyline(ctx, [(x + px * w, y + py * h) for px, py in points], rgb)


def waveforms(number, rgb):
    """What a box of waves shows, with a corner as the sign that there are more, and the tiles that it opens."""

    def tile(ctx, i):
        rect(ctx, 0, 0, COLUMN, TILE, WHITE)
        wave(ctx, i, 11, 4, 22, 8, rgb)
        text(ctx, WAVES[i], 44, TILE / 2, 12)

    strip(f"wave-tiles-{number}.png", COLUMN, TILE, len(WAVES), tile)

    def chosen(ctx, i):
        box(ctx, 0, 0, COLUMN, 32)
        wave(ctx, i, 11, 10, 22, 12, rgb)
        text(ctx, WAVES[i], 44, 16, 12)
        ctx.move_to(COLUMN - 5, 21)
        ctx.rel_line_to(0, 6)
        ctx.rel_line_to(-6, 0)
        ctx.close_path()
        colour(ctx, GREY)
        ctx.fill()

    strip(f"wave-{number}.png", COLUMN, 32, len(WAVES), chosen)


# Buttons --------------------------------------------------------------------------------------------------------------


def face(ctx, w, h, pressed, on=False, accent=INK):
    if on:
        box(ctx, 0, 0, w, h, accent, accent)
    else:
        box(ctx, 0, 0, w, h, WASH if pressed else PAPER, GREY if pressed else TRACK)
    return PAPER if on else INK


def button(name, label, w, h=24, frames=2):
    def draw(ctx, i):
        caps(ctx, label, w / 2, h / 2, face(ctx, w, h, i == 1, i == 2), 0.5)

    strip(name, w, h, frames, draw)


def icon_button(name, icon, w=24, h=24):
    def draw(ctx, i):
        icon(ctx, face(ctx, w, h, i == 1))

    strip(name, w, h, 2, draw)


def toggle(name, label, accent, w=44, h=20):
    def draw(ctx, i):
        on, pressed = i >= 2, i % 2 == 1
        rgb = face(ctx, w, h, pressed, on, accent)
        if on and pressed:
            rounded(ctx, 1.5, 1.5, w - 3, h - 3, 2)
            colour(ctx, PAPER)
            ctx.set_line_width(1)
            ctx.stroke()
        caps(ctx, label, w / 2, h / 2, rgb, 0.5)

    strip(name, w, h, 4, draw)


def note(ctx, x, y, rgb, mark=""):
    """A quarter note, plain, dotted, or of a triplet."""
    x -= 3 if mark else 0
    ctx.save()
    ctx.translate(x - 0.75, y + 3)
    ctx.rotate(-0.35)
    ctx.scale(2.9, 2.1)
    disc(ctx, 0, 0, 1, rgb)
    ctx.restore()
    rect(ctx, x + 1, y - 5, 1, 7.5, rgb)
    if mark == ".":
        disc(ctx, x + 5, y + 3, 1.1, rgb)
    elif mark:
        text(ctx, mark, x + 4, y, 9, rgb)


def segments(name, labels, w, h, accent, vertical=False, size=11):
    """A row, or a column from the bottom up, of fields of which one is chosen."""
    count = len(labels)
    full_w, full_h = (w, h * count) if vertical else (w * count, h)

    def draw(ctx, chosen):
        box(ctx, 0, 0, full_w, full_h, PAPER)
        for i, label in enumerate(labels):
            x, y = (0, (count - 1 - i) * h) if vertical else (i * w, 0)
            if i == chosen:
                box(ctx, x, y, w, h, accent, accent)
            elif i and not vertical and i - 1 != chosen:
                rect(ctx, x, 6, 1, h - 12, HAIR)
            rgb = PAPER if i == chosen else INK
            if callable(label):
                label(ctx, x + w / 2, y + h / 2, rgb)
            else:
                text(ctx, label, x + w / 2, y + h / 2, size, rgb, 0.5)

    strip(name, full_w, full_h, count, draw)


def list_icon(ctx, rgb):
    for y in (8, 12, 16):
        rect(ctx, 7, y - 0.5, 1, 1, rgb)
        rect(ctx, 9.5, y - 0.5, 8, 1, rgb)


def sliders_icon(ctx, rgb):
    for y, x in ((9, 14), (15, 10)):
        rect(ctx, 6, y - 0.5, 12, 1, rgb)
        disc(ctx, x, y, 2.25, rgb)


def rocker(name):
    def draw(ctx, i):
        for side in (0, 1):
            ctx.save()
            ctx.translate(side * 24, 0)
            rgb = face(ctx, 24, 24, i == 2 * side)
            d = 2 if side else -2
            polyline(ctx, [(12 - d, 8), (12 + d, 12), (12 - d, 16)], rgb)
            ctx.restore()

    strip(name, 48, 24, 3, draw)


def wordmark(name):
    def draw(ctx, i):
        end = text(ctx, "QUILVANE", 0, 12, 12, INK, tracking=2.2, face="Inter Medium")
        text(ctx, "2", end + 7, 12, 12, INK if i else TEAL, face="Inter Medium")

    strip(name, 112, 24, 2, draw)


def light(name):
    def draw(ctx, i):
        if i:
            disc(ctx, 4, 4, 4, TEAL)
        else:
            ctx.arc(4, 4, 3.5, 0, 2 * math.pi)
            colour(ctx, TRACK)
            ctx.set_line_width(1)
            ctx.stroke()

    strip(name, 8, 8, 2, draw)


# Fonts of images ------------------------------------------------------------------------------------------------------


def glyphs(name, rgb, first=32, last=0xB0):
    """All characters from the blank to the degree sign, and again as they are under the caret."""
    width, height, size = 7, 14, 7 / 0.6
    count = last - first + 1

    def draw(ctx, i):
        if i >= count:
            rect(ctx, 0, 0, width, height, rgb)
        code = first + i % count
        if 127 <= code < 0xA1:
            return
        text(ctx, chr(code), 0, height / 2, size, PAPER if i >= count else rgb,
             family="JetBrains Mono", face="JetBrains Mono")

    strip(name, width, height, 2 * count, draw)


def digits(name):
    def draw(ctx, i):
        if i:
            text(ctx, str(i - 1), 8, 13, 24, INK, 0.5, face="Inter Light")
        else:
            rect(ctx, 5, 12, 6, 1, TRACK)

    strip(name, 16, 26, 11, draw)


# The ground -----------------------------------------------------------------------------------------------------------


def frequency_x(hertz):
    return MARGIN + (WIDTH - 2 * MARGIN) * math.log(hertz / 50) / math.log(12000 / 50)


def ground(ctx, _):
    rect(ctx, 0, 0, WIDTH, HEIGHT, PAPER)
    rect(ctx, MARGIN, 48, WIDTH - 2 * MARGIN, 1, HAIR)

    box(ctx, 192, 12, 180, 24)
    caps(ctx, "MIDI", 576, 24)

    text(ctx, "CENTER FREQUENCY", MARGIN, 76, 12, INK, tracking=0.8, face="Inter SemiBold")
    text(ctx, "Hz", WIDTH - MARGIN, 76, 13, GREY, 1)

    rect(ctx, MARGIN, RULER, WIDTH - 2 * MARGIN, 1, TRACK)
    for decade in (10, 100, 1000, 10000):
        for n in range(1, 10):
            if 50 <= decade * n <= 12000:
                x = round(frequency_x(decade * n) - 0.5)
                long = n in (1, 2, 5)
                rect(ctx, x, RULER - (5 if long else 2), 1, 11 if long else 5, TRACK)
    rect(ctx, WIDTH - MARGIN - 1, RULER - 5, 1, 11, TRACK)
    for hertz, label in ((50, "50"), (100, "100"), (200, "200"), (500, "500"), (1000, "1k"), (2000, "2k"),
                         (5000, "5k"), (12000, "12k")):
        align = 0 if hertz == 50 else 1 if hertz == 12000 else 0.5
        text(ctx, label, frequency_x(hertz), 117, 10, GREY, align)

    for x, title, rgb in zip(COLUMNS, ("LFO 1", "LFO 2", "PHASER", "OUTPUT"), (TEAL, CORAL, INK, INK)):
        text(ctx, title, x, TITLE, 12, rgb, tracking=0.8, face="Inter SemiBold")
    for x in COLUMNS[2:]:
        rect(ctx, x, LINE, COLUMN, 1, TRACK)

    for x, left, right in zip(COLUMNS, ("RATE", "RATE", "FEEDBACK"), ("DEPTH", "DEPTH", "STEREO")):
        caps(ctx, left, x, LABELS)
        caps(ctx, right, x + CELL, LABELS)

    x = COLUMNS[3]
    caps(ctx, "FX %", x, LABELS)
    caps(ctx, "VOLUME", x + 48, LABELS)
    caps(ctx, "L", x + 130, LABELS, align=0.5)
    caps(ctx, "R", x + 146, LABELS, align=0.5)
    for offset in (0, 48):
        for y in (ROW, ROW + FADER // 2, ROW + FADER - 1):
            rect(ctx, x + offset + 23, y, 4, 1, TRACK)
    for level in (6, 0, -12, -24):
        y = ROW + FADER * (6 - level) / 30
        y = min(max(y, ROW + 4), ROW + FADER - 4)
        text(ctx, f"{level:+d}".replace("-", "\u2212").replace("+0", "0"), x + 118, y, 9, GREY, 1)


# ----------------------------------------------------------------------------------------------------------------------


def draw_all():
    FOLDER.mkdir(exist_ok=True)
    strip("ground.png", WIDTH, HEIGHT, 1, ground)
    for number, rgb in ((1, TEAL), (2, CORAL)):
        knob(f"knob-{number}.png", rgb, 97)
        knob(f"note-{number}.png", rgb, 11, ticks=11)
        orbit(f"orbit-{number}.png", rgb)
        waveforms(number, rgb)
        toggle(f"sync-{number}.png", "SYNC", rgb)
        segments(f"scale-{number}.png", [lambda *a: note(*a, "3"), lambda *a: note(*a, "."), note], 28, 16, rgb, True)
    knob("knob.png", INK, 97)
    segments("stages.png", ["2", "4", "6", "8"], 38, 32, INK, size=12)
    toggle("quality.png", "HQ", INK)
    notches("notches.png")
    fader("fader.png")
    ruler("ruler.png")
    meter("meter.png")
    light("midi.png")
    wordmark("wordmark.png")
    rocker("rocker.png")
    icon_button("browse.png", list_icon)
    icon_button("options.png", sliders_icon)
    for label, width in (("SAVE", 48), ("INIT", 40), ("REVERT", 60)):
        button(f"{label.lower()}.png", label, width)
    button("learn.png", "LEARN", 56, frames=3)
    glyphs("glyphs.png", INK)
    digits("digits.png")


def preview(picture):
    whole = cairo.ImageSurface.create_from_png(picture)
    for name, width in (("Background.png", WIDTH), ("Thumbnail.png", 200)):
        scale = width / WIDTH
        surface = cairo.ImageSurface(cairo.FORMAT_RGB24, width, round(HEIGHT * scale))
        ctx = cairo.Context(surface)
        ctx.scale(scale, scale)
        ctx.set_source_surface(whole)
        ctx.get_source().set_filter(cairo.FILTER_BEST)
        ctx.paint()
        surface.write_to_png(str(FOLDER / name))


if __name__ == "__main__":
    arguments = argparse.ArgumentParser(description="Draws the images of the skin Light.")
    arguments.add_argument("--preview", metavar="PICTURE", help="makes the previews of a picture of the editor instead")
    picture = arguments.parse_args().preview
    if picture:
        preview(picture)
    else:
        draw_all()
