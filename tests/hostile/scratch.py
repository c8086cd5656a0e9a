"""A folder in which the program runs, and what it changes there."""

import hashlib
import os
import shutil
import stat

_HASHED = 1 << 20  # bytes; of longer files size and time are compared


class Scratch:
    """`root` holds a home, a folder for templates and one for outputs. All that the program could
    reach by its environment or its current folder lies inside."""

    def __init__(self, root):
        self.root = root
        for name in ("home", "config", "data", "cache", "tmp", "current", "template", "output",
                     "printed"):
            os.makedirs(os.path.join(root, name), exist_ok=True)

    def place(self, *names):
        return os.path.join(self.root, *names)

    @property
    def output(self):
        return self.place("output")

    def environment(self, **more):
        return {"PATH": os.environ.get("PATH", ""), "LC_ALL": "C.UTF-8", "TZ": "UTC",
                "HOME": self.place("home"), "XDG_CONFIG_HOME": self.place("config"),
                "XDG_DATA_HOME": self.place("data"), "XDG_CACHE_HOME": self.place("cache"),
                "TMPDIR": self.place("tmp"), **more}

    def clear(self):
        """Empties the folders of templates and outputs."""
        for name in ("template", "output"):
            shutil.rmtree(self.place(name))
            os.makedirs(self.place(name))

    def listing(self):
        """Everything outside the output folder and of what the program prints: path -> state."""
        found = {}
        for folder, folders, files in os.walk(self.root):
            if folder == self.root:
                folders[:] = [name for name in folders if name not in ("output", "printed")]
            for name in folders + files:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.root)] = _state(path)
        return found

    def made(self):
        """Paths below the output folder."""
        return sorted(os.path.relpath(os.path.join(folder, name), self.output)
                      for folder, folders, files in os.walk(self.output)
                      for name in folders + files)


def _state(path):
    status = os.lstat(path)
    if not stat.S_ISREG(status.st_mode):
        return status.st_mode, None, None, None
    return status.st_mode, status.st_size, status.st_mtime_ns, _hash(path, status.st_size)


def _hash(path, size):
    if size > _HASHED:
        return None
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


def changes(before, after):
    """Paths that came, went or changed."""
    return sorted(path for path in {*before, *after} if before.get(path) != after.get(path))
