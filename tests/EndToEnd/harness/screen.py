"""One look at the console: what is seen of the tree."""


class Screen:
    """What was there at one moment. root: the application's node."""

    def __init__(self, root, without=()):
        """without: nodes that are left out as if they were not there."""
        self.root = root
        self._without = [id(node) for node in without]
        self.window = next((node for node in root.walk() if node.role == "window"), None)

    def seen(self):
        """Everything that lies in the window and is shown, in the program's order."""
        if self.window is None:
            return []
        return [node for node in self.window.walk()
                if node is not self.window and node.showing and self._inside(node)
                and id(node) not in self._without]

    def present(self):
        """Everything that is shown, also what must be scrolled to."""
        return [] if self.window is None else [
            node for node in self.window.walk()
            if node.width > 0 and node.height > 0 and id(node) not in self._without]

    def all(self, role, name=None):
        return [node for node in self.seen()
                if node.role == role and name in (None, node.name)]

    def first(self, role, name=None):
        """None when there is none."""
        return next(iter(self.all(role, name)), None)

    def has(self, role, name):
        return self.first(role, name) is not None

    def texts(self):
        """Every seen text that is no control, in reading order."""
        found = [node for node in self.seen() if node.role in ("label", "heading", "alert")]
        return [node.name for node in sorted(found, key=reading_order)]

    def shows(self, text):
        return text in self.texts()

    def loading(self):
        return self.has("progress bar", "Loading")

    def lines(self):
        """The whole tree, for a person and for comparing two looks."""
        return list(self.root.lines())

    def _inside(self, node):
        return (node.x < self.window.right and node.right > self.window.x
                and node.y < self.window.bottom and node.bottom > self.window.y)


def reading_order(node):
    return (node.y, node.x)
