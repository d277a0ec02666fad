# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Installs LuxCore's Python package into a folder of its own.

    install_renderer.py FOLDER REQUIREMENTS
    install_renderer.py FOLDER --text "REQUIREMENTS' TEXT"

pip fetches the wheel and compares it with the hashes of the requirements; what rendering needs is
unpacked beside FOLDER and renamed to it, so that FOLDER is whole or not there. The package's tests
and the libraries of a compiler for graphics cards, which no processor needs, stay out. A FOLDER
that is there already is left as it is.
"""

import os
import subprocess
import sys
import tempfile
import zipfile

# What is unpacked: the module, its libraries, and the denoiser, which is a program.
WANTED = ("pyluxcore/", "pyluxcore.libs/", "pyluxcore.oidn/")
LICENSES = ".dist-info/"


def fail(message):
    print(f"install_renderer: {message}", file=sys.stderr)
    sys.exit(1)


def fetch(requirements, folder):
    command = [sys.executable, "-m", "pip", "download", "--quiet", "--no-deps",
               "--only-binary", ":all:", "--require-hashes", "--disable-pip-version-check",
               "--dest", folder, "--requirement", requirements]
    result = subprocess.run(command, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE,
                            stdout=subprocess.DEVNULL, text=True, check=False)
    if result.returncode != 0:
        lines = [line for line in result.stderr.splitlines() if line.strip()]
        fail("the package could not be fetched: " + (lines[-1] if lines else "pip failed"))
    return os.path.join(folder, os.listdir(folder)[0])


def unpack(wheel, folder):
    with zipfile.ZipFile(wheel) as archive:
        for member in archive.infolist():
            if member.filename.startswith(WANTED) or LICENSES in member.filename:
                path = archive.extract(member, folder)
                # Programs stay programs.
                if member.external_attr >> 16 & 0o111:
                    os.chmod(path, 0o755)


def main(arguments):
    is_text = len(arguments) == 3 and arguments[1] == "--text"
    if len(arguments) != 2 and not is_text:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    folder, requirements = os.path.abspath(arguments[0]), arguments[-1]
    if os.path.isdir(os.path.join(folder, "pyluxcore")):
        return 0
    parent = os.path.dirname(folder)
    try:
        os.makedirs(parent, exist_ok=True)
        with tempfile.TemporaryDirectory(dir=parent, prefix="renderer-") as work:
            print("fetching the renderer (95 MB)", file=sys.stderr, flush=True)
            if is_text:
                requirements = os.path.join(work, "requirements.txt")
                with open(requirements, "w", encoding="utf-8") as file:
                    file.write(arguments[-1])
            download = os.path.join(work, "download")
            os.mkdir(download)
            wheel = fetch(requirements, download)
            print("unpacking it (145 MB)", file=sys.stderr, flush=True)
            unpacked = os.path.join(work, "unpacked")
            unpack(wheel, unpacked)
            os.rename(unpacked, folder)
    except (OSError, zipfile.BadZipFile) as error:
        fail(str(error))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
