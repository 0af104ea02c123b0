# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
"""How the bindings are built: against the library that pkg-config finds."""

import os
import shutil
import subprocess

import PyQt6
from pyqtbuild import PyQtProject
from sipbuild import Installable, UserException

HERE = os.path.dirname(os.path.abspath(__file__))


def pkg_config(*arguments):
    """What pkg-config says about the library, as a list of words."""
    try:
        said = subprocess.run(
            ["pkg-config", *arguments, "vantix"], check=True, capture_output=True, text=True
        )
    except FileNotFoundError:
        raise UserException("pkg-config is not installed")
    except subprocess.CalledProcessError as error:
        raise UserException("The library vantix is not installed", detail=error.stderr)
    return said.stdout.split()


def without_prefix(flag, words):
    """The words that begin with flag, without it."""
    return [word[len(flag):] for word in words if word.startswith(flag)]


class VantixProject(PyQtProject):
    """The package vantix: the module _vantix, and what is written in Python."""

    def get_metadata_overrides(self):
        return {"version": pkg_config("--modversion")[0]}

    def apply_user_defaults(self, tool):
        # Where Qt 5 is installed too, qmake may be its own.
        if self.builder.qmake is None:
            self.builder.qmake = shutil.which("qmake6")
        super().apply_user_defaults(tool)

    def update(self, tool):
        super().update(tool)
        bindings = self.bindings["_vantix"]
        self.sip_include_dirs.append(os.path.join(os.path.dirname(PyQt6.__file__), "bindings"))
        bindings.include_dirs.append(os.path.join(HERE, "decimal"))
        bindings.include_dirs.extend(without_prefix("-I", pkg_config("--cflags-only-I")))
        bindings.libraries.extend(["vantix"])
        library_dirs = without_prefix("-L", pkg_config("--libs-only-L"))
        bindings.library_dirs.extend(library_dirs)
        # A library outside of the linker's own directories is found where it is now.
        self.builder.qmake_settings.extend("QMAKE_RPATHDIR += " + path for path in library_dirs)
        python_files = Installable("python_files", target_subdir="vantix")
        for name in ("__init__.py", "decimals.py", "py.typed"):
            python_files.files.append(os.path.join(HERE, "package", name))
        self.installables.append(python_files)
