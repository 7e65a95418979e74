"""The side of orvex_991.batch that plans, hands out photographs and writes down what became of them."""
# mypy: allow-untyped-calls, allow-any-generics
# Dask has few types.

from __future__ import annotations

import asyncio
import logging
import os
import queue
import shutil
import signal
import tempfile
import time
import uuid
from collections.abc import Callable, Iterable, Iterator
from contextlib import contextmanager, suppress
from typing import Any

from distributed import Client, Future, KilledWorker, LocalCluster

from . import _batch, _batch_tasks

#: Seconds that a cluster may be without workers, and a result without an owner.
PATIENCE = 300
#: Seconds for photographs under way to be finished when the batch is to end.
LAST_SECONDS = 30
#: A chunk of photographs takes some seconds, and the scheduler about a millisecond for it.
MOST_AT_ONCE = 16
#: Chunks for each thread of a worker: one to work on, and one to go on with.
CHUNKS_A_THREAD = 2


FAILED = 2
GONE = "the scheduler has gone"


class Signals:
    """Notes the first signal that asks for an end; the second one ends the program at once."""

    def __init__(self) -> None:
        self.first = 0
        self._all = [signal.SIGHUP, signal.SIGINT, signal.SIGTERM]
        for number in self._all:
            if signal.getsignal(number) != signal.SIG_IGN:
                signal.signal(number, self._note)

    def _note(self, number: int, _frame: object) -> None:
        self.first = number
        for each in self._all:
            signal.signal(each, signal.SIG_DFL)


def main(arguments: list[str]) -> int:
    """Runs the program. Returns its exit code; a signal that asked for the end ends the process."""
    options = _batch.Options([os.fsencode(argument) for argument in arguments])
    logging.disable(logging.CRITICAL)  # whatever is wrong is said in one line
    signals = Signals()
    try:
        with _connected(options) as client:
            code = _run(options, client, signals)
    except _batch.Failure as failure:
        _batch.complain(*failure.args)
        return FAILED
    except MemoryError:
        _batch.complain(b"", b"out of memory")
        return FAILED
    if signals.first:
        os.kill(os.getpid(), signals.first)
    return code


def _failure(about: str, reason: str) -> _batch.Failure:
    return _batch.Failure(os.fsencode(about), os.fsencode(reason))


@contextmanager
def _connected(options: _batch.Options) -> Iterator[Client]:
    if not options.scheduler:
        with tempfile.TemporaryDirectory(prefix="docprep-") as folder, _own_cluster(options.jobs, folder) as own:
            with Client(own) as client:
                yield client
        return
    address = os.fsdecode(options.scheduler)
    try:
        client = Client(address, timeout=10)
    except (OSError, TypeError, ValueError) as error:  # TypeError: TLS without certificates
        raise _failure(address, "no scheduler answers: " + (str(error) or type(error).__name__)) from error
    with client:
        yield client


def _own_cluster(workers: int, folder: str) -> LocalCluster:
    """Processes of one thread each. Their scheduler listens for this machine alone."""
    # Ctrl-C in a terminal is meant for the client, which tells its workers.
    before = signal.signal(signal.SIGINT, signal.SIG_IGN)
    try:
        return LocalCluster(
            n_workers=workers,
            threads_per_worker=1,
            host="127.0.0.1",
            dashboard_address=None,
            memory_limit=0,  # a photograph that needs more than it gets fails by itself
            local_directory=folder,
        )
    finally:
        signal.signal(signal.SIGINT, before)


class Crew:
    """The workers of a cluster."""

    def __init__(self, client: Client, signals: Signals, tick: Callable[[], None]) -> None:
        self._client = client
        self._signals = signals
        self._tick = tick
        self._ended: queue.SimpleQueue[Future] = queue.SimpleQueue()
        self._threads = 0
        self._counted = float("-inf")  # when
        self._seen = time.monotonic()  # when there was a worker

    def threads(self) -> int:
        """Of all workers together, as they were a second ago."""
        now = time.monotonic()
        if now - self._counted >= 1:
            try:
                self._threads = sum(self._client.nthreads().values())
            except OSError as error:
                raise _failure("", GONE) from error
            self._counted = now
        if self._threads > 0:
            self._seen = now
        elif now - self._seen > PATIENCE:
            raise _failure("", f"no worker for {PATIENCE} seconds")
        return self._threads

    def wait(self) -> None:
        """Returns when there are workers, or a signal asks for the end."""
        while self.threads() == 0 and not self._signals.first:
            time.sleep(0.1)

    def look(self, batch: _batch_tasks.Batch, photos: list[tuple[bytes, int]]) -> None:
        """Raises Failure for workers that cannot do the work."""
        answers = self._client.run(_batch_tasks.look, batch, photos, on_error="return")
        for worker, answer in sorted(answers.items()):
            if answer is not None:
                raise _failure(worker, "the worker " + _reason(answer))

    def work(
        self, task: Callable[..., Any], batch: _batch_tasks.Batch, chunks: Iterable[list[Any]]
    ) -> Iterator[tuple[list[Any], Any]]:
        """Yields each chunk with what the task returned for it; with None where it ended its worker.

        No more chunks are taken than keep the workers busy. After a signal no more are taken at all, and those under
        way are waited for, but not for long.
        """
        waiting = iter(chunks)
        under_way: dict[Future, list[Any]] = {}
        more = True
        last = float("inf")
        while more or under_way:
            if self._signals.first:
                more = False
                last = min(last, time.monotonic() + LAST_SECONDS)
                if time.monotonic() > last:
                    yield from ((chunk, None) for chunk in under_way.values())
                    return
            while more and len(under_way) < CHUNKS_A_THREAD * self.threads():
                chunk = next(waiting, None)
                if chunk is None:
                    more = False
                else:
                    future = self._client.submit(task, batch, chunk, pure=False)
                    future.add_done_callback(self._ended.put)
                    under_way[future] = chunk
            for future, result in self._results():
                if future in under_way:  # and not of one that was waited for in vain
                    yield under_way.pop(future), result
            self._tick()

    def _results(self) -> list[tuple[Future, Any]]:
        """Of the chunks that have ended by now, or end within a moment."""
        ended: list[Future] = []
        with suppress(queue.Empty):
            ended.append(self._ended.get(timeout=0.1))
            while True:
                ended.append(self._ended.get_nowait())
        failed = [future for future in ended if future.status == "error"]
        for future in failed:
            self._look_at_error(future)
        # Also those whose results were lost meanwhile, with their worker: somebody makes them again.
        others = [future for future in ended if future not in failed]
        results: list[tuple[Future, Any]] = [(future, None) for future in failed]
        if others:
            results += zip(others, self._gathered(others))
        return results

    def _gathered(self, futures: list[Future]) -> list[Any]:
        try:
            gather = self._client.gather
            results: list[Any] = self._client.sync(
                lambda: gather(futures, asynchronous=True), callback_timeout=PATIENCE
            )
            return results
        except (KilledWorker, MemoryError, _batch_tasks.Misfit):  # of one that was made again
            return [None] * len(futures)
        except asyncio.TimeoutError as error:
            raise _failure("", "results were lost with their workers") from error
        except (asyncio.CancelledError, OSError) as error:
            raise _failure("", GONE) from error

    def _look_at_error(self, future: Future) -> None:
        """Raises Failure unless it is that of a chunk which ended its workers, or was too much for their memory."""
        error = future.exception()
        if not self._signals.first and not isinstance(error, (KilledWorker, MemoryError)):
            raise _failure("", "a worker " + _reason(error))


def _reason(error: BaseException) -> str:
    if isinstance(error, _batch_tasks.Misfit):
        return str(error)
    if isinstance(error, ImportError):
        return f"cannot load the module: {error}"
    return f"fails: {type(error).__name__}: {error}"


class Desk:
    """The folder that client and workers share while a batch is at work."""

    def __init__(self, options: _batch.Options) -> None:
        self._folder = os.path.join(options.output, _batch.DESK)
        if not options.resume:
            shutil.rmtree(self._folder, ignore_errors=True)
        token = os.path.join(self._folder, b"token-" + uuid.uuid4().hex.encode())
        self.batch = _batch_tasks.Batch(options.output, token, _batch.__version__, options.preparation)
        try:
            os.makedirs(self._folder, exist_ok=True)
            for name in os.listdir(self._folder):
                if name.startswith(b"token-"):  # of a client that was killed: its workers shall stop
                    os.unlink(os.path.join(self._folder, name))
            with open(token, "xb"):
                pass
        except OSError as error:
            raise _batch.Failure(self._folder, os.fsencode(error.strerror)) from error

    def stop(self) -> None:
        """Workers leave what they have not begun."""
        with suppress(FileNotFoundError):
            os.unlink(self.batch.token)

    def drop(self, receipts: list[bytes]) -> None:
        """What they say is written down."""
        for receipt in receipts:
            with suppress(FileNotFoundError):
                os.unlink(receipt)

    def leave(self) -> None:
        """Takes the folder away, unless there are receipts for a later batch."""
        self.stop()
        with suppress(OSError):
            os.rmdir(self._folder)

    def clear(self) -> None:
        """Takes the folder away."""
        shutil.rmtree(self._folder, ignore_errors=True)


class Work:
    """A batch, from the plan to the index."""

    def __init__(self, options: _batch.Options, client: Client, signals: Signals) -> None:
        self._options = options
        self._signals = signals
        self._ledger = _batch.Ledger(options)
        self._desk = Desk(options)
        self._crew = Crew(client, signals, self._tick)
        self._noted: list[bytes] = []  # receipts of what is not written down yet
        self._stopped = False

    def run(self) -> int:
        """Returns the exit code. After a signal, what is finished is in the state."""
        try:
            for step in (self._wait, self._look, self._skip, self._ledger.begin, self._prepare):
                step()
                if self._signals.first:
                    self._ledger.complain(b"", self._interruption())
                    return FAILED
            self._commit()
            self._desk.clear()
            self._ledger.finish()
            return self._ledger.conclude()
        finally:
            self._commit()
            self._desk.leave()

    def _interruption(self) -> bytes:
        name = signal.Signals(self._signals.first).name
        return f"{name}: {self._ledger.done} photographs are done; --resume goes on".encode()

    def _wait(self) -> None:
        if self._crew.threads() == 0 and not self._options.quiet:
            self._ledger.complain(self._options.scheduler, b"has no workers yet")
        self._crew.wait()

    def _look(self) -> None:
        self._crew.look(self._desk.batch, self._some_photos())

    def _some_photos(self) -> list[tuple[bytes, int]]:
        """Some of them, with their sizes."""
        step = len(self._ledger) // 50 + 1
        paths = [self._ledger.item(number)[1][0] for number in range(0, len(self._ledger), step)]
        return [(path, _batch_tasks.size_of(path)) for path in paths]

    def _chunks(self, numbers: Iterable[int], count: int, of: Callable[[int], Any]) -> Iterator[list[Any]]:
        fair = count // (2 * CHUNKS_A_THREAD * max(1, self._crew.threads()))
        size = self._options.chunk or min(MOST_AT_ONCE, max(1, fair))
        chunk: list[Any] = []
        for number in numbers:
            chunk.append(of(number))
            if len(chunk) == size:
                yield chunk
                chunk = []
        if chunk:
            yield chunk

    def _skip(self) -> None:
        """Takes those that an earlier batch has done alike off the list."""
        ledger = self._ledger
        claimed = ledger.claimed()
        chunks = self._chunks(claimed, len(claimed), lambda k: (k, ledger.item(k), ledger.known(k)))
        for _, checked in self._crew.work(_batch_tasks.check, self._desk.batch, chunks):
            for number, holds in checked or []:  # one that ends workers will do so again, alone
                if holds:
                    ledger.skip(number)

    def _prepare(self) -> None:
        numbers = range(len(self._ledger))
        suspects: list[int] = []
        for chunk, finished in self._crew.work(
            _batch_tasks.prepare, self._desk.batch, self._chunks(numbers, len(numbers), self._begun)
        ):
            if finished is None and not self._signals.first:
                suspects += [number for number, _ in chunk]
            else:
                self._note(chunk, finished or [])
        # Dask blames all that a worker had, not only what it was at: here each has the cluster for itself.
        for number in suspects:
            alone = [(number, self._ledger.item(number))]
            results = list(self._crew.work(_batch_tasks.prepare, self._desk.batch, [alone]))
            finished = results[0][1] if results else None
            if finished is None and not self._signals.first:
                self._ledger.fail(number, b"ended the worker")
            else:
                self._note(alone, finished or [])

    def _begun(self, number: int) -> tuple[int, _batch_tasks.Photo]:
        self._ledger.running(number)
        return number, self._ledger.item(number)

    def _note(self, chunk: list[Any], finished: list[_batch_tasks.Finished]) -> None:
        photos = dict(chunk)
        left = photos.keys() - {number for number, _, _ in finished}
        if left and not self._signals.first:
            raise _failure(os.fsdecode(self._desk.batch.token), "has gone while the batch was at work")
        finished += _batch_tasks.with_receipt(self._desk.batch, [(number, photos[number]) for number in left])
        for number, row, warnings in finished:
            for warning in warnings:
                self._ledger.warn(number, warning)
            self._ledger.note(number, row)
            self._noted.append(_batch_tasks.receipt_of(self._desk.batch, photos[number]))

    def _tick(self) -> None:
        if self._ledger.tick():
            self._drop_receipts()
        if self._signals.first and not self._stopped:
            self._desk.stop()
            self._stopped = True

    def _commit(self) -> None:
        self._ledger.commit()
        self._drop_receipts()

    def _drop_receipts(self) -> None:
        self._desk.drop(self._noted)
        self._noted = []


def _run(options: _batch.Options, client: Client, signals: Signals) -> int:
    return Work(options, client, signals).run()
