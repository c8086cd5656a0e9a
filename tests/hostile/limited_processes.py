"""Commands that are run within limits; see process_server.py."""

import json
import os
import resource
import signal
import subprocess
import sys
from dataclasses import dataclass

_SERVER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "process_server.py")
MEBIBYTE = 1 << 20


@dataclass
class Limits:
    """What ends a command. Machines are shared: its own time counts, and the time that passes only
    ends what hangs. Sanitizers reserve more addresses than any limit leaves them."""

    seconds: int = 5            # of processor time
    wall_seconds: int = 60
    addresses: int = 8 << 30    # bytes; 0 is without a limit
    file_bytes: int = 1 << 30   # of a file that is written

    def of_process(self):
        limits = {"RLIMIT_CPU": (self.seconds, self.seconds + 2),
                  "RLIMIT_FSIZE": (self.file_bytes, self.file_bytes)}
        if self.addresses:
            limits["RLIMIT_AS"] = (self.addresses, self.addresses)
        return limits


@dataclass
class Ended:
    """What became of a command."""

    code: object       # exit code; None where a signal ended it
    signal: str        # the signal's name, or ""
    hung: bool         # was ended after the time that may pass
    cpu: float         # seconds
    wall: float
    memory: float      # peak, MiB
    stdout: bytes
    stderr: bytes


class Processes:
    """Runs commands from a small process; `folder` takes what they print."""

    def __init__(self, folder):
        self._paths = {name: os.path.join(folder, name) for name in ("stdout", "stderr")}
        self._server = subprocess.Popen([sys.executable, "-IS", _SERVER], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)

    def close(self):
        self._server.stdin.close()
        self._server.wait()
        self._server.stdout.close()

    def run(self, command, folder, environment, limits):
        request = {"command": list(command), "folder": folder, "environment": environment,
                   "limits": limits.of_process(), "wall_seconds": limits.wall_seconds,
                   **self._paths}
        print(json.dumps(request), file=self._server.stdin, flush=True)
        answer = json.loads(self._server.stdout.readline())
        status = answer["status"]
        by_signal = os.WIFSIGNALED(status)
        return Ended(None if by_signal else os.WEXITSTATUS(status),
                     signal.Signals(os.WTERMSIG(status)).name if by_signal else "",
                     answer["hung"], answer["cpu"], answer["wall"], answer["memory"] / 1024,
                     *(self._read(name) for name in ("stdout", "stderr")))

    def _read(self, name):
        with open(self._paths[name], "rb") as file:
            return file.read(MEBIBYTE)


def limit_own_memory(limit=3 << 30):
    """For processes that read hostile files: what asks for more gets a MemoryError. Programs that
    they start may lift the limit."""
    resource.setrlimit(resource.RLIMIT_AS, (limit, resource.getrlimit(resource.RLIMIT_AS)[1]))
