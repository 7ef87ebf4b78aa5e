"""Reads what is longer than the screen, by scrolling through it."""

from collections import Counter
from dataclasses import dataclass

from .checks import CheckFailed

# How much of the region stays in view from one look to the next.
OVERLAP = 180
# What may look moved though it is not, in pixels.
ROUNDING = 2
# A busy console may take a whole pull for a tap; that many in vain, and the content has ended.
PULLS = 4
# What is pulled and has not moved for so many seconds has done with the pull: a busy console takes
# it up only after the first looks.
REST = 0.25
# At most this many looks, whatever the content does.
MOST_LOOKS = 300


@dataclass(frozen=True)
class Region:
    """The part of the window in which the scrolled content is seen."""

    top: int
    bottom: int

    def holds(self, node):
        return node.bottom > self.top and node.y < self.bottom


@dataclass(frozen=True)
class Piece:
    """Something that was read; y counts from where the reading began."""

    role: str
    name: str
    x: int
    y: int
    width: int
    height: int


def read_scrolled(console, region, roles, enough):
    """Everything of the roles from here to the content's end, in reading order.

    enough(pieces): whether all that is expected was read; then only a last pull is made, to see
    what may follow. Where the content ends earlier, the reading ends too.
    """
    found, offset = _Found(), 0
    screen = console.look_at_rest()
    complete = False
    for _ in range(MOST_LOOKS):
        for node in screen.seen():
            if node.role in roles and region.holds(node):
                found.add(node, offset)
        if complete:
            return found.pieces()
        complete = enough(found.pieces())
        after = _pull(console, region, screen, expects_more=not complete)
        if after is None:
            return found.pieces()
        offset += _shift(screen, after, region)
        screen = after
    raise CheckFailed("the content does not end")


def scroll_home(console, region, role, name):
    """Scrolls back until what has the role and name, at the content's beginning, is seen."""
    for _ in range(MOST_LOOKS):
        if console.look().first(role, name):
            console.look_at_rest()
            return
        console.wheel_up((region.top + region.bottom) // 2)
    raise CheckFailed(f"scrolling back does not lead to the {role} {name!r}")


class _Found:
    """What was read so far. What is seen again in the same place is the same thing."""

    def __init__(self):
        self._places = {}

    def add(self, node, offset):
        y = node.y + offset
        same = self._places.setdefault(_likeness(node), [])
        # Places come rounded to whole pixels.
        if all(abs(piece.y - y) > ROUNDING for piece in same):
            same.append(Piece(node.role, node.name, node.x, y, node.width, node.height))

    def pieces(self):
        return in_reading_order(piece for same in self._places.values() for piece in same)


def scroll_to(console, region, role, name):
    """Scrolls on until what has the role and name lies whole in the region; gives its node."""
    screen = console.look_at_rest()
    for _ in range(MOST_LOOKS):
        for node in screen.all(role, name):
            if node.y >= region.top and node.bottom <= region.bottom:
                return node
        screen = _pull(console, region, screen, expects_more=True)
        if screen is None:
            break
    raise CheckFailed(f"scrolling does not lead to the {role} {name!r}\n"
                      + "\n".join(console.look().lines()))


def in_reading_order(pieces):
    """Line by line, each from left to right. Things stand in one line when their middles do."""
    lines = []
    for piece in sorted(pieces, key=lambda piece: (piece.y, piece.x)):
        middle = piece.y + piece.height / 2
        if lines:
            first = lines[-1][0]
            if middle < first.y + first.height and first.y + first.height / 2 > piece.y:
                lines[-1].append(piece)
                continue
        lines.append([piece])
    return [piece for line in lines for piece in sorted(line, key=lambda piece: piece.x)]


def names(pieces):
    return [piece.name for piece in pieces]


def _pull(console, region, before, expects_more):
    """Pulls the content up with a finger; gives the screen at rest, or None without movement."""
    for _ in range(PULLS if expects_more else 1):
        console.drag_up(region.bottom - 20, region.top + OVERLAP - 20)
        after = console.look_at_rest(REST)
        if _shift(before, after, region):
            return after
    return None


def _shift(before, after, region):
    """How far the content moved up between two looks: what most of the common things say. It never
    moves down."""
    old, new = _places(before, region), _places(after, region)
    common = [likeness for likeness in old if likeness in new]
    # Equal texts, like the labels of cards, say too many things at once.
    telling = [likeness for likeness in common
               if len(old[likeness]) == len(new[likeness]) == 1] or common
    votes = Counter(y - moved_y for likeness in telling
                    for y in old[likeness] for moved_y in new[likeness] if moved_y <= y)
    return max(votes, key=votes.get) if votes else 0


def _places(screen, region):
    places = {}
    for node in screen.seen():
        if region.holds(node):
            places.setdefault(_likeness(node), []).append(node.y)
    return places


def _likeness(node):
    return (node.role, node.name, node.x, node.width)
