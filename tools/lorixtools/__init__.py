# SPDX-License-Identifier: BSD-3-Clause
"""What lorixadd and lorixdel share. Python 3.9 or later, standard library only."""

VERSION = "1.83.0"
