"""Runs commands one after the other, each within limits, and tells what they took.

A process of its own because a command that is started from a large process inherits that one's
peak memory; this one stays small. Reads a JSON object from each line of standard input and answers
with one; see limited_processes.py, which starts it.
"""

import json
import os
import resource
import select
import signal
import sys
import time


def _limit(request):
    for name, limit in request["limits"].items():
        number = getattr(resource, name)
        resource.setrlimit(number, tuple(limit))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def _become(request):
    """The child's side: never returns."""
    try:
        os.setsid()
        for target, name in ((1, "stdout"), (2, "stderr")):
            os.dup2(os.open(request[name], os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600), target)
        os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
        os.chdir(request["folder"])
        _limit(request)
        os.execve(request["command"][0], request["command"], request["environment"])
    except OSError as error:
        os.write(2, f"cannot be started: {error}".encode())
    finally:
        os._exit(126)


def run(request):
    """What became of one command: its wait status, seconds, and peak memory in KiB."""
    begin = time.monotonic()
    child = os.fork()
    if child == 0:
        _become(request)
    waiting = os.pidfd_open(child)
    ended, _, _ = select.select([waiting], [], [], request["wall_seconds"])
    os.close(waiting)
    if not ended:
        os.killpg(child, signal.SIGKILL)
    _, status, usage = os.wait4(child, 0)
    return {"status": status, "hung": not ended, "wall": time.monotonic() - begin,
            "cpu": usage.ru_utime + usage.ru_stime, "memory": usage.ru_maxrss}


def main():
    for line in sys.stdin:
        print(json.dumps(run(json.loads(line))), flush=True)


if __name__ == "__main__":
    main()
