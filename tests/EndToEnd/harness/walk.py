"""Whether a person who can't see the screen is told everything that stands on it."""

from .checks import check
from .screen import Screen

# What only groups other things need no words of its own.
CONTAINERS = {"window", "panel", "filler", "list", "list item", "page tab list", "scroll area",
              "section"}
OPERATED_BY = {"button": {"Press"}, "page tab": {"Press"}, "link": {"Press"},
               "check box": {"Toggle"}, "toggle button": {"Toggle"},
               "text": {"SetFocus"}}
SPOKEN = set(OPERATED_BY) | {"label", "heading", "alert", "progress bar", "image",
                             "notification"}
# Brighter than every ground, outline and separator; text is brighter at its core.
BRIGHT = 0x60
# Rounded corners and letters may reach a little out of what they belong to.
MARGIN = 2
# The dots of timelines and answers say nothing that is not also said in words.
DOT = 10
# How far a rounded outline reaches into what it surrounds.
CORNER = 14


def problems(console, screen, picture):
    """Sentences about what is wrong; empty when nothing is."""
    found = []
    for node in screen.seen():
        found += _problems_of(node, console.actions(node))
    return [*found, *_unspoken_marks(screen, picture)]


def check_walk(what, console):
    """Looks at the screen as it is and checks all of it."""
    picture = console.picture_at_rest()
    screen = console.look_at_rest()
    found = problems(console, screen, picture)
    if found:
        # Something may have changed between the picture and the look.
        found = problems(console, screen := console.look_at_rest(), console.picture_at_rest())
    operable = [node for node in screen.seen() if node.role in OPERATED_BY]
    spoken = [node for node in screen.seen() if node.role in SPOKEN and node.name]
    check(f"{what}: {len(spoken)} things are spoken, {len(operable)} of them can be operated, "
          "and nothing else is drawn", operable and spoken and not found, "\n".join(found))


def check_walk_notices(console):
    """The walk itself: text that is drawn and not spoken does not get past it."""
    picture = console.picture_at_rest()
    screen = console.look_at_rest()
    label = screen.all("label")[0]
    found = problems(console, Screen(screen.root, without=[label]), picture)
    check(f"without {label.name!r} on the accessibility bus the walk would complain", found)


def _problems_of(node, actions):
    where = f"{node.role} {node.name!r} at ({node.x}, {node.y}, {node.width} x {node.height})"
    wanted = OPERATED_BY.get(node.role, set())
    if not wanted and {"Press", "Toggle"} & set(actions):
        yield f"{where} can be pressed, but its role does not say so"
    if node.role in CONTAINERS:
        return
    if node.role not in SPOKEN:
        yield f"{where} has a role that is not expected here"
    if not node.name.strip():
        yield f"{where} has no name"
    if not wanted <= set(actions):
        yield f"{where} lacks the action {'/'.join(wanted)}, it has {actions}"


def _unspoken_marks(screen, picture):
    """Bright marks that lie in nothing that is spoken: drawn text that nobody is told of."""
    width, height = picture.width, picture.height
    bright = bytearray(1 if value >= BRIGHT else 0 for value in picture.brightness())
    for node in screen.seen():
        if node.role in SPOKEN and node.name.strip():
            left, right = max(0, node.x - MARGIN), min(width, node.right + MARGIN)
            for y in range(max(0, node.y - MARGIN), min(height, node.bottom + MARGIN)):
                bright[y * width + left:y * width + right] = bytes(max(0, right - left))
    for blob in _blobs(bright, width):
        if not blob.decorates():
            yield (f"something is drawn at ({blob.left}, {blob.top}, {blob.width} x "
                   f"{blob.height}) that has no accessible name")


class _Blob:
    """Marks that touch or nearly touch, as (x, y)."""

    def __init__(self, marks):
        self._marks = marks
        columns, rows = zip(*marks)
        self.left, self.top = min(columns), min(rows)
        self.width, self.height = max(columns) + 1 - self.left, max(rows) + 1 - self.top

    def decorates(self):
        """A line, a dot or a rounded outline, which stand for no words."""
        smaller, larger = sorted((self.width, self.height))
        return (smaller <= 2 or (larger <= DOT and larger - smaller <= 1) or self._outlines()
                or self._is_edge())

    def _is_edge(self):
        """One edge of an outline, with the beginnings of its round corners."""
        rows = {y for x, y in self._marks
                if self.left + CORNER <= x < self.left + self.width - CORNER}
        columns = {x for x, y in self._marks
                   if self.top + CORNER <= y < self.top + self.height - CORNER}
        return (self.height <= CORNER and bool(rows) and max(rows) - min(rows) < 2
                or self.width <= CORNER and bool(columns) and max(columns) - min(columns) < 2)

    def _outlines(self):
        inside_x = range(self.left + CORNER, self.left + self.width - CORNER)
        inside_y = range(self.top + CORNER, self.top + self.height - CORNER)
        return bool(inside_x and inside_y) and not any(
            x in inside_x and y in inside_y for x, y in self._marks)


def _blobs(bright, width):
    """Every blob of the picture. Empties bright."""
    reach = [row * width + column for row in (-1, 0, 1) for column in (-2, -1, 0, 1, 2)]
    start = bright.find(1)
    while start >= 0:
        bright[start] = 0
        pending, marks = [start], []
        while pending:
            at = pending.pop()
            marks.append((at % width, at // width))
            for other in (at + step for step in reach):
                if 0 <= other < len(bright) and bright[other]:
                    bright[other] = 0
                    pending.append(other)
        yield _Blob(marks)
        start = bright.find(1, start)
