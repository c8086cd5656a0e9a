"""Listens like LibreOffice, but never answers: never_answers.py --accept=pipe,name=NAME;..."""

import os
import re
import socket
import sys
import time

name = re.search("name=([^;]+)", sys.argv[1]).group(1)
listener = socket.socket(socket.AF_UNIX)
listener.bind(f"/tmp/OSL_PIPE_{os.getuid()}_{name}")
listener.listen()
with listener.accept()[0]:
    os.unlink(listener.getsockname())
    time.sleep(100)
