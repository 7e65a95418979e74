"""Many photographs on many machines: ``python3 -m orvex_991.batch PHOTOGRAPH... -o FOLDER``.

Does what ``docprep batch`` does, with the same results, on the workers of a Dask cluster: by default on one that
it starts on this machine, with ``--scheduler ADDRESS`` on any that runs. docs/batch.md is its manual.
"""

from __future__ import annotations

import sys


def main() -> int:
    """Runs the program with the arguments of the command line. Returns its exit code."""
    try:
        from . import _batch_client
    except ImportError as error:
        needs = "it needs docprep's parts in this package, and Dask with distributed"
        print(f"docprep: {error}; {needs}", file=sys.stderr)
        return 2
    return _batch_client.main(sys.argv[1:])


if __name__ == "__main__":
    sys.exit(main())
