"""What a worker does for orvex_991.batch. Workers import it by its name; nothing here needs Dask.

Beside the results lies a folder that both sides see while a batch is at work: in it a token, which says that the
batch goes on, and receipts, which say what is done of what the client has not written down yet.
"""

from __future__ import annotations

import ast
import fcntl
import hashlib
import os
import time
from functools import lru_cache
from typing import Any, BinaryIO, NamedTuple

from . import _batch

Photo = tuple[Any, ...]  # as _batch.Ledger.item() has it: its name, and its row
Row = tuple[Any, ...]  # as _batch.Ledger.known() has it
_FOLDER, _FILES = 1, 8  # in a row


class Batch(NamedTuple):
    """What all photographs of a batch have in common."""

    output: bytes
    token: bytes  # its path
    version: str
    preparation: list[bytes]


class Finished(NamedTuple):
    """What came of one photograph."""

    number: int
    row: Row
    warnings: list[bytes]


class Misfit(Exception):
    """This worker cannot work for the batch."""


def look(batch: Batch, inputs: list[tuple[bytes, int]]) -> None:
    """Raises Misfit unless this worker has the client's version and sees its files.

    `inputs` are paths and sizes of some photographs, with the size -1 where the client found no file.
    """
    if batch.version != _batch.__version__:
        raise Misfit(f"has orvex_991 {_batch.__version__}, and the client {batch.version}")
    if not os.path.exists(batch.token):
        raise Misfit(f"does not see the output folder {os.fsdecode(batch.output)}")
    for path, size in inputs:
        if size_of(path) != size:
            raise Misfit(f"does not see the photograph {os.fsdecode(path)}")


def size_of(path: bytes) -> int:
    """-1 where there is no file."""
    try:
        return os.stat(path).st_size if os.path.isfile(path) else -1
    except OSError:
        return -1


def check(batch: Batch, photos: list[tuple[int, Photo, Row]]) -> list[tuple[int, bool]]:
    """Of each photograph, whether what an earlier batch has noted of it still holds."""
    look(batch, [])
    preparation = _batch.Preparation(batch.preparation)
    return [
        (number, os.path.exists(batch.token) and _batch.holds(batch.output, preparation, photo, row))
        for number, photo, row in photos
    ]


def prepare(batch: Batch, photos: list[tuple[int, Photo]]) -> list[Finished]:
    """Prepares them, each once however often it is asked for. When the token goes, the rest is left out."""
    look(batch, [])
    _prepare_heap()
    preparation = _batch.Preparation(batch.preparation)
    finished = []
    for number, photo in photos:
        if not os.path.exists(batch.token):
            break
        finished.append(Finished(number, *_prepared_once(batch, preparation, photo)))
    return finished


@lru_cache(maxsize=None)
def _prepare_heap() -> None:
    """Once a process: pictures that come and go take a tenth less time then."""
    _batch.prepare_heap()


def with_receipt(batch: Batch, photos: list[tuple[int, Photo]]) -> list[Finished]:
    """Those of the photographs that are done, but whose worker did not live to say so."""
    preparation = _batch.Preparation(batch.preparation)
    finished = []
    for number, photo in photos:
        try:
            with open(receipt_of(batch, photo), "rb") as receipt:
                row = _row_in(receipt.read(), batch.output)
        except OSError:
            continue
        if row is not None and _batch.holds(batch.output, preparation, photo, row):
            finished.append(Finished(number, row, []))
    return finished


def receipt_of(batch: Batch, photo: Photo) -> bytes:
    """The path of a photograph's receipt: the same in all batches into a folder."""
    name = hashlib.sha256(photo[1][0]).hexdigest()
    return os.path.join(os.path.dirname(batch.token), name.encode())


def _prepared_once(batch: Batch, preparation: _batch.Preparation, photo: Photo) -> tuple[Row, list[bytes]]:
    with open(receipt_of(batch, photo), "a+b") as receipt:
        _lock(receipt)
        receipt.seek(0)
        row = _row_in(receipt.read(), batch.output)
        if row is not None and _batch.holds(batch.output, preparation, photo, row):
            return row, []
        receipt.truncate(0)
        row, warnings = _batch.prepare(batch.output, preparation, photo)
        if row[_FILES]:  # which those that are not done have not
            receipt.write(repr((row, _sizes(batch.output, row))).encode())
        return row, warnings


def _lock(receipt: BinaryIO) -> None:
    """Waits for a worker that was given up, but is still at the same photograph.

    Not for ever: then one of them finds the other in the photograph's folder, and fails.
    """
    give_up = time.monotonic() + 60
    while time.monotonic() < give_up:
        try:
            fcntl.flock(receipt, fcntl.LOCK_EX | fcntl.LOCK_NB)
            return
        except BlockingIOError:
            time.sleep(0.05)
        except OSError:  # a file system without locks
            return


def _row_in(receipt: bytes, output: bytes) -> Row | None:
    """None unless the receipt is whole, and all files are there with their sizes, which an end of the machine may cut."""
    try:
        row, sizes = ast.literal_eval(receipt.decode())
        return row if sizes == _sizes(output, row) else None
    except (ValueError, SyntaxError, TypeError, IndexError):
        return None


def _sizes(output: bytes, row: Row) -> list[int]:
    return [size_of(os.path.join(output, row[_FOLDER], name)) for name in row[_FILES]]
