"""Shared by the package tests: running programs, a private display, waiting for windows."""

import contextlib
import os
import select
import subprocess
import time


def run(*command, check=True, **options):
    """Runs a program, which must succeed unless `check` is off, and returns the result."""
    result = subprocess.run(command, text=True, capture_output=True, timeout=300, **options)
    if check and result.returncode != 0:
        raise AssertionError(f"{command} failed:\n{result.stdout}{result.stderr}")
    return result


@contextlib.contextmanager
def display():
    """Starts a private display and returns its name."""
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
    """Waits until a window with that name is visible."""
    for _ in range(300):
        found = run("xdotool", "search", "--onlyvisible", "--name", name, check=False,
                    env=environment)
        if found.stdout.strip():
            return
        if program.poll() is not None:
            raise AssertionError(f"{program.args[-1]} ended with {program.returncode}.")
        time.sleep(0.1)
    raise AssertionError(f"No window named {name} within 30 seconds.")
