# SPDX-License-Identifier: BSD-3-Clause
"""From a tool's failure to its message and exit code."""

import signal
import sys
import traceback

from .report import FAILED, INTERRUPTED, Report, ToolError, reason


def _stop(*_):
    """Ends the run in the way of ctrl-C, so that everything half done is cleaned away."""
    raise KeyboardInterrupt


def run(work):
    """Calls work(arguments, report) and returns the exit code."""
    for name in ("SIGTERM", "SIGHUP"):
        if hasattr(signal, name):
            signal.signal(getattr(signal, name), _stop)
    report = Report()
    arguments = sys.argv[1:]
    try:
        work(arguments, report)
        return 0
    except KeyboardInterrupt:
        report.error("interrupted")
        return INTERRUPTED
    except ToolError as error:
        _trace(arguments, report)
        report.error(error)
        return error.code
    except OSError as error:
        _trace(arguments, report)
        report.error(("%s: " % error.filename if error.filename else "") + reason(error))
        return FAILED
    except Exception as error:
        _trace(arguments, report)
        report.error("unexpected failure, please report it: %s: %s"
                     % (type(error).__name__, error))
        return FAILED


def _trace(arguments, report):
    if "--debug" in arguments:
        for line in traceback.format_exc().splitlines():
            report.info(line)
