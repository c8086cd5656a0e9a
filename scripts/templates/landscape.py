"""The picture of the wall calendar: an orrery in the evening sky above a mountain lake.

It is drawn only from the numbers below, so that every run gives the same bytes.
"""

import io
import math
import random

from PIL import Image, ImageChops, ImageDraw, ImageFilter

WIDTH, HEIGHT = 1920, 1180
OVERSAMPLING = 2  # drawn larger and scaled down: smooth edges without any drawing library
HORIZON = 0.735  # of the height; below it lies the lake
SUN = (0.635, 0.640)  # of width and height: in the gap between the mountains

SKY = [  # height as a fraction of the sky, colour
    (0.00, (13, 22, 48)),
    (0.30, (30, 44, 84)),
    (0.55, (84, 74, 118)),
    (0.74, (176, 112, 124)),
    (0.88, (232, 158, 124)),
    (1.00, (250, 208, 152)),
]

RANGES = [  # base and swing as fractions of the height, colour, seed; the farthest first
    (0.600, 0.150, (150, 108, 132), 11),
    (0.655, 0.115, (112, 86, 122), 23),
    (0.700, 0.085, (72, 64, 104), 5),
    (0.735, 0.050, (42, 46, 82), 42),
]

ORBITS = [  # half width of the orbit, planet's angle in degrees, planet's radius, its colour
    (0.095, 205, 0.0052, (206, 190, 170)),
    (0.145, 318, 0.0082, (238, 204, 150)),
    (0.205, 232, 0.0090, (122, 170, 206)),
    (0.265, 292, 0.0070, (206, 112, 84)),
    (0.365, 216, 0.0200, (222, 178, 138)),
    (0.470, 258, 0.0165, (232, 206, 156)),
    (0.580, 305, 0.0120, (150, 196, 204)),
]
ORBIT_FLATTENING = 0.62
RING_COLOUR = (255, 226, 178)


def draw_landscape():
    """The finished picture as the bytes of a JPEG file."""
    size = (WIDTH * OVERSAMPLING, HEIGHT * OVERSAMPLING)
    image = _sky(size)
    _stars(image)
    image = _glow(image)
    image = _orrery(image)
    _mountains(image)
    _lake(image)
    _shore(image)
    image = image.resize((WIDTH, HEIGHT), Image.LANCZOS)
    data = io.BytesIO()
    image.save(data, "JPEG", quality=86, subsampling=0, optimize=True, dpi=(250, 250))
    return data.getvalue()


def _mix(low, high, share):
    return tuple(round(a + (b - a) * share) for a, b in zip(low, high))


def _gradient(stops, at):
    for (low, low_colour), (high, high_colour) in zip(stops, stops[1:]):
        if at <= high:
            return _mix(low_colour, high_colour, (at - low) / (high - low))
    return stops[-1][1]


def _sky(size):
    width, height = size
    strip = Image.new("RGB", (16, height))
    draw = ImageDraw.Draw(strip)
    for y in range(height):
        draw.line([(0, y), (16, y)], fill=_gradient(SKY, min(1.0, y / (height * HORIZON))))
    strip = strip.filter(ImageFilter.BoxBlur(height * 0.05))  # no kink where two stops meet
    return strip.resize(size)


def _stars(image):
    width, height = image.size
    draw = ImageDraw.Draw(image)
    chance = random.Random(1781)
    for _ in range(330):
        x = chance.random() * width
        y = chance.random() ** 1.7 * height * 0.46
        brightness = (1 - y / (height * 0.50)) * (0.35 + 0.65 * chance.random() ** 2)
        radius = OVERSAMPLING * (0.5 + 1.15 * chance.random() ** 3)
        below = image.getpixel((int(x), int(y)))
        _disc(draw, x, y, radius, _mix(below, (255, 248, 232), brightness))


def _disc(draw, x, y, radius, fill):
    draw.ellipse([x - radius, y - radius, x + radius, y + radius], fill=fill)


def _glow(image):
    """The sun and the warm light around it."""
    width, height = image.size
    x, y = SUN[0] * width, SUN[1] * height
    small = Image.new("RGB", (width // 8, height // 8))
    draw = ImageDraw.Draw(small)
    for step in range(64, 0, -1):
        radius = step / 64 * width * 0.052
        light = (1 - step / 64) ** 2.1
        _disc(draw, x / 8, y / 8, radius, _mix((0, 0, 0), (150, 92, 44), light))
    light = small.filter(ImageFilter.GaussianBlur(10)).resize(image.size, Image.BICUBIC)
    image = ImageChops.screen(image, light)
    _disc(ImageDraw.Draw(image), x, y, width * 0.0235, (255, 240, 208))
    return image


def _orrery(image):
    """Planets on thin golden orbits around the setting sun."""
    width, height = image.size
    x, y = SUN[0] * width, SUN[1] * height
    for reach, angle, radius, colour in ORBITS:
        across, down = reach * width, reach * width * ORBIT_FLATTENING
        ring = Image.new("L", image.size)
        draw = ImageDraw.Draw(ring)
        draw.ellipse([x - across, y - down, x + across, y + down], outline=255,
                     width=round(1.5 * OVERSAMPLING))
        strength = 0.52 - 0.30 * reach / ORBITS[-1][0]
        ring = ring.point(lambda value, s=strength: round(value * s))
        image.paste(RING_COLOUR, mask=ring)
        turn = math.radians(angle)
        _planet(image, x + across * math.cos(turn), y + down * math.sin(turn),
                radius * width, colour, ringed=(reach == ORBITS[5][0]))
    return image


def _planet(image, x, y, radius, colour, ringed):
    """A planet lit from the sun's side; `ringed` gives it a ring of its own."""
    box = math.ceil(radius * 2.6)
    left, top = round(x) - box, round(y) - box
    tile = image.crop((left, top, left + 2 * box, top + 2 * box))
    draw = ImageDraw.Draw(tile)
    toward_x, toward_y = SUN[0] * image.width - x, SUN[1] * image.height - y
    length = math.hypot(toward_x, toward_y)
    dark = _mix(colour, (14, 20, 44), 0.80)
    if ringed:
        _planet_ring(tile, radius, 180, 360)
    for step in range(24):
        share = step / 23
        shift = radius * 0.42 * share
        _disc(draw, box + toward_x / length * shift, box + toward_y / length * shift,
              radius * (1 - 0.42 * share), _mix(dark, colour, share ** 0.8))
    if ringed:
        _planet_ring(tile, radius, 0, 180)
    image.paste(tile, (left, top))


def _planet_ring(tile, radius, start, end):
    middle = tile.width / 2
    layer = Image.new("L", tile.size)
    draw = ImageDraw.Draw(layer)
    for reach in (1.62, 1.92, 2.12):
        draw.arc([middle - radius * reach, middle - radius * reach * 0.26,
                  middle + radius * reach, middle + radius * reach * 0.26],
                 start, end, fill=190, width=round(radius * 0.10))
    tile.paste((238, 214, 172), mask=layer.rotate(-18, Image.BICUBIC))


def _gap(share, depth):
    """How far the mountains dip at this share of the width, to let the sun through."""
    return depth * math.exp(-(((share - SUN[0]) / 0.125) ** 2))


def _ridge(width, base, swing, seed):
    """The heights of a mountain range, one for every column: noise of halving swings."""
    chance = random.Random(seed)
    heights = [base] * width
    for octave in range(8):
        knots = 3 * 2 ** octave
        values = [chance.random() for _ in range(knots + 2)]
        scale = swing * 0.52 ** octave
        for x in range(width):
            position = x / width * knots
            knot = int(position)
            share = position - knot
            if octave < 2:
                share = share * share * (3 - 2 * share)
            heights[x] -= scale * (values[knot] * (1 - share) + values[knot + 1] * share - 0.5)
    return heights


def _mountains(image):
    width, height = image.size
    water = HORIZON * height
    for base, swing, colour, seed in RANGES:
        ridge = _ridge(width, base * height, swing * height, seed)
        ridge = [min(water, top + _gap(x / width, (0.735 - base) * 1.05 * height))
                 for x, top in enumerate(ridge)]
        mask = Image.new("L", image.size)
        ImageDraw.Draw(mask).polygon([(0, water), *enumerate(ridge), (width, water)], fill=255)
        shade = Image.new("RGB", image.size, colour)
        draw = ImageDraw.Draw(shade)
        top = min(ridge)
        mist = _mix(colour, (250, 190, 150), 0.34)
        for y in range(math.ceil(top), math.floor(water) + 1):
            share = (y - top) / (water - top)
            draw.line([(0, y), (width, y)], fill=_mix(colour, mist, share ** 1.6))
        image.paste(shade, mask=mask)


def _lake(image):
    """The reflection of the evening in the water, darker below and broken by ripples."""
    width, height = image.size
    water = round(HORIZON * height)
    depth = height - water
    mirror = image.crop((0, water - depth, width, water)).transpose(Image.FLIP_TOP_BOTTOM)
    mirror = mirror.filter(ImageFilter.GaussianBlur(3 * OVERSAMPLING))
    chance = random.Random(77)
    rippled = Image.new("RGB", (width, depth))
    shift = 0.0
    for y in range(depth):
        swing = (2 + 26 * y / depth) * OVERSAMPLING
        shift = 0.86 * shift + 0.14 * chance.uniform(-swing, swing) * 2.4
        rippled.paste(ImageChops.offset(mirror.crop((0, y, width, y + 1)), round(shift), 0),
                      (0, y))
    tint = Image.new("RGB", (1, depth))
    for y in range(depth):
        tint.putpixel((0, y), _mix((206, 196, 212), (74, 70, 116), (y / depth) ** 0.7))
    image.paste(ImageChops.multiply(rippled, tint.resize(rippled.size)), (0, water))
    _sparkle(image, water, depth)


def _sparkle(image, water, depth):
    """The sun's path on the water."""
    draw = ImageDraw.Draw(image)
    chance = random.Random(9)
    for _ in range(150):
        share = chance.random()
        y = water + share * depth
        spread = (0.012 + 0.040 * share) * image.width
        x = SUN[0] * image.width + chance.gauss(0, 0.55) * spread
        length = (0.004 + 0.010 * chance.random()) * image.width * (1.2 - 0.5 * share)
        below = image.getpixel((min(image.width - 1, max(0, int(x))), int(y)))
        thickness = OVERSAMPLING * (0.7 + 0.35 * share)
        draw.ellipse([x - length, y - thickness, x + length, y + thickness],
                     fill=_mix(below, (255, 214, 160), 0.62 * (1 - 0.75 * share)))


def _shore(image):
    """The dark bank in front, with firs at both sides."""
    width, height = image.size
    draw = ImageDraw.Draw(image)
    colour = (11, 17, 36)
    ridge = _ridge(width, 0.985 * height, 0.035 * height, 314)
    bank = []
    for x, top in enumerate(ridge):
        side = abs(x / width - 0.54) / 0.54
        bank.append((x, top - 0.085 * height * side ** 3))
    draw.polygon([(0, height), *bank, (width, height)], fill=colour)
    chance = random.Random(2027)
    for _ in range(76):
        side = chance.choice((0, 0, 1))
        reach = chance.random() ** 1.5 * 0.27
        x = min(width - 1, max(0, (reach if side == 0 else 1 - reach * 0.62) * width))
        size = (0.075 + 0.17 * (1 - reach / 0.27) * (0.55 + 0.45 * chance.random())) * height
        _fir(draw, x, bank[int(x)][1] + 0.012 * height, size, colour, chance)


def _fir(draw, x, foot, size, colour, chance):
    """A fir: boughs that widen from the tip down, each a little irregular."""
    boughs = 13
    left, right = [(x, foot - size)], []
    for bough in range(1, boughs + 1):
        y = foot - size * (1 - bough / boughs * 0.96)
        reach = size * 0.19 * (bough / boughs) ** 0.85 * (0.80 + 0.40 * chance.random())
        inner = reach * 0.42
        left += [(x - reach, y), (x - inner, y - size * 0.012)]
        right += [(x + reach * (0.85 + 0.3 * chance.random()), y), (x + inner, y - size * 0.012)]
    trunk = size * 0.012
    draw.polygon([*left, (x - trunk, foot), (x + trunk, foot), *reversed(right)], fill=colour)
