"""What the tests of the packages share: running programs, a display of their own, waiting for windows."""

import contextlib
import os
import select
import subprocess
import time


def run(*command, check=True, **options):
    """The result of a program that has to succeed, unless the caller wants to know."""
    result = subprocess.run(command, text=True, capture_output=True, timeout=300, **options)
    if check and result.returncode != 0:
        raise AssertionError(f"{command} failed:\n{result.stdout}{result.stderr}")
    return result


@contextlib.contextmanager
def display():
    """A display of its own; gives its name."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x900x24",
                               "-nolisten", "tcp"], pass_fds=[write_end],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        os.close(write_end)
        if not select.select([read_end], [], [], 30)[0]:
            raise AssertionError("Xvfb did not come up within 30 seconds.")
        yield ":" + os.read(read_end, 16).decode().strip()
    finally:
        os.close(read_end)
        server.terminate()
        server.wait(30)


def wait_for_window(name, environment, program):
    """Returns when a window of that name is on show."""
    for _ in range(300):
        found = run("xdotool", "search", "--onlyvisible", "--name", name, check=False,
                    env=environment)
        if found.stdout.strip():
            return
        if program.poll() is not None:
            raise AssertionError(f"{program.args[-1]} ended with {program.returncode}.")
        time.sleep(0.1)
    raise AssertionError(f"No window named {name} within 30 seconds.")
