"""orvex_991.batch on clusters of this machine: the same results as docprep batch, whoever dies meanwhile.

usage: batch_test.py DOCPREP SAMPLES
"""
import contextlib
import json
import os
import signal
import socket
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from PIL import Image

from orvex_991 import _batch, _batch_tasks

DOCPREP, SAMPLES = sys.argv.pop(1), Path(sys.argv.pop(1))
PHOTOS, BROKEN = 200, 6
PATTERN = "photos/**/*.jpg"


def wait_for(what, condition):
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"in vain: {what}")
        time.sleep(0.02)


def ended(process):
    if process.poll() is None:
        process.kill()
    process.communicate()


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()

    def fill(self, count, broken=0):
        """Parts of the sample page; some of them in a folder below, some cut short."""
        page = Image.open(SAMPLES / "page.jpg")
        (self.folder / "photos" / "more").mkdir(parents=True)
        for k in range(count):
            left, top = 16 * (k % 50), 80 * (k // 50)
            place = self.folder / "photos" / ("more" if k % 3 == 0 else "") / f"{k:03}.jpg"
            page.crop((left, top, left + 480, top + 640)).save(place, quality=90)
            if k < broken:
                place.write_bytes(place.read_bytes()[:3000 * (k % 2)])

    def start(self, *arguments, program=("-m", "orvex_991.batch"), environment=None, folder=None):
        command = [sys.executable, *program, *map(str, arguments)]
        process = subprocess.Popen(command, cwd=folder or self.folder, env={**os.environ, **(environment or {})},
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.addCleanup(ended, process)
        return process

    def run_batch(self, *arguments, **more):
        process = self.start(*arguments, **more)
        out, err = process.communicate(timeout=40)
        return process.returncode, out, err

    def assert_fails(self, reason, *arguments, code=2, **more):
        status, out, err = self.run_batch(*arguments, **more)
        self.assertEqual((status, out), (code, ""), err)
        self.assertRegex(err, rf"\Adocprep: [^\n]*{reason}[^\n]*\n\Z")

    def docprep(self, *arguments):
        return subprocess.run([DOCPREP, "batch", *arguments], cwd=self.folder, capture_output=True, text=True,
                              check=False)

    def rows(self, output="out"):
        """Everything in the state but the times, by input."""
        with contextlib.closing(sqlite3.connect(self.folder / output / "docprep.sqlite")) as state:
            state.row_factory = sqlite3.Row
            rows = [dict(row) for row in state.execute("SELECT * FROM photographs")]
        for row in rows:
            del row["milliseconds"], row["finished_at"]
        return {row["input"]: row for row in rows}

    def done(self):
        return {name: row for name, row in self.rows().items() if row["status"] == "done"}

    def tree(self, output):
        """What is in a folder but for the state: content by path, None for folders."""
        top = self.folder / output
        return {str(path.relative_to(top)): path.read_bytes() if path.is_file() else None
                for path in top.rglob("*") if path.name != "docprep.sqlite"}

    def finished(self):
        return sum(1 for _ in (self.folder / "out").rglob("result.json"))


class ClusterCase(Case):
    def setUp(self):
        super().setUp()
        self.file = self.folder / "scheduler.json"

    def scheduler(self, allowed_failures=3):
        """Its address. It cannot load the package: that is for workers alone."""
        environment = {"DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES": str(allowed_failures), "PYTHONPATH": ""}
        self.start("--host", "127.0.0.1", "--port", "0", "--no-dashboard", "--scheduler-file", self.file,
                   program=("-m", "distributed.cli.dask_scheduler"), environment=environment)
        wait_for("a scheduler", lambda: self.file.exists() and self.file.read_text())
        return json.loads(self.file.read_text())["address"]

    def worker(self, preload=None):
        """One that works in a folder of its own; `preload` is Python that it runs first, on the tasks' module."""
        place = Path(tempfile.mkdtemp(dir=self.folder))
        more = []
        if preload:
            (place / "preload.py").write_text(f"from orvex_991 import _batch_tasks as tasks\n{preload}\n")
            more = ["--preload", place / "preload.py"]
        return self.start("--scheduler-file", self.file, "--host", "127.0.0.1", "--nthreads", "1", "--no-nanny",
                          "--no-dashboard", "--local-directory", place, *more,
                          program=("-m", "distributed.cli.dask_worker"), folder=place)


class Cluster(ClusterCase):
    def test_dead_workers_and_clients_leave_what_an_undisturbed_batch_leaves(self):
        self.fill(PHOTOS, BROKEN)
        address = self.scheduler()
        workers = [self.worker(), self.worker()]
        alone = self.docprep("-q", "-j", "1", PATTERN, "-o", "alone")
        self.assertEqual(alone.returncode, 2, alone.stderr)
        arguments = ("-q", PATTERN, "-o", "out", "--scheduler", address, "--chunk", "4")

        client = self.start(*arguments)
        wait_for("a quarter of the results", lambda: self.finished() >= PHOTOS // 4)
        workers[0].kill()
        wait_for("some more", lambda: self.finished() >= PHOTOS // 4 + 20)
        client.send_signal(signal.SIGINT)
        _, err = client.communicate(timeout=60)
        self.assertEqual(client.returncode, -signal.SIGINT, err)
        self.assertRegex(err, r"docprep: SIGINT: \d+ photographs are done; --resume goes on\n\Z")
        first = self.done()
        self.assertEqual(len(first), self.finished())
        self.assertLess(len(first), PHOTOS - BROKEN)
        self.assertFalse((self.folder / "out" / ".docprep-batch").exists())

        when = self.times(first)
        client = self.start(*arguments, "--resume")
        wait_for("more results", lambda: self.finished() >= len(first) + 20)
        client.kill()
        client.communicate()
        self.assertEqual(self.times(first), when)

        self.worker()
        status, out, err = self.run_batch(*arguments, "--resume")
        self.assertEqual((status, out), (2, ""), err)
        self.assertEqual(len(err.splitlines()), BROKEN, err)
        self.assertEqual(self.times(first), when)
        self.assertEqual(self.rows(), self.rows("alone"))
        self.assertEqual(self.tree("out"), self.tree("alone"))
        self.assertEqual(sorted(err.splitlines()), sorted(alone.stderr.splitlines()))

    def times(self, rows):
        return {name: (self.folder / "out" / row["folder"] / "result.json").stat().st_mtime_ns
                for name, row in rows.items()}

    def test_a_photograph_that_ends_workers_fails_alone(self):
        self.fill(8)
        address = self.scheduler(allowed_failures=0)
        deadly = "from orvex_991 import _batch as batch\n" \
                 "class Deadly:\n" \
                 "    def __getattr__(self, name): return getattr(batch, name)\n" \
                 "    def prepare(self, output, preparation, photo):\n" \
                 "        if photo[0].endswith(b'004.jpg'): tasks.os._exit(1)\n" \
                 "        return batch.prepare(output, preparation, photo)\n" \
                 "tasks._batch = Deadly()"
        for _ in range(3):
            self.worker(deadly)
        status, _, err = self.run_batch("-q", PATTERN, "-o", "out", "--scheduler", address, "--chunk", "8")
        self.assertEqual(status, 2, err)
        self.assertEqual(err, "docprep: photos/004.jpg: ended the worker\n")
        self.assertEqual(len(self.done()), 7)
        self.assertEqual(self.rows()[str(self.folder / "photos" / "004.jpg")]["error"], "ended the worker")

    def test_workers_that_cannot_do_it_are_refused(self):
        self.fill(2)
        address = self.scheduler()
        blind = "from types import SimpleNamespace as Names\n" \
                "tasks.os = Names(path=Names(exists=lambda path: False), fsdecode=tasks.os.fsdecode)"
        for preload, reason in [
            ("tasks._batch = type('Other', (), {'__version__': '0.0.1'})", r"tcp://.*: the worker has orvex_991 0\.0\.1,"),
            (blind, r"tcp://.*: the worker does not see the output folder .*/out"),
            ("tasks.size_of = lambda path: -1", r"tcp://.*: the worker does not see the photograph .*jpg"),
        ]:
            with self.subTest(reason=reason):
                worker = self.worker(preload)
                try:
                    self.assert_fails(reason, "-q", PATTERN, "-o", "out", "--scheduler", address)
                finally:
                    ended(worker)
                self.assertFalse((self.folder / "out" / ".docprep-batch").exists())


class Alone(Case):
    def test_without_a_cluster_it_starts_its_own(self):
        self.fill(12)
        self.docprep("-q", PATTERN, "-o", "alone", "--page", "binary", "--crop")
        options = ("-q", PATTERN, "-o", "out", "--page", "binary", "--crop", "-j", "2")
        self.assertEqual(self.run_batch(*options), (0, "", ""))
        self.assertEqual(self.rows(), self.rows("alone"))
        self.assertEqual(self.tree("out"), self.tree("alone"))
        status, out, err = self.run_batch(*options[1:], "--resume")
        self.assertEqual((status, err), (0, ""))
        self.assertRegex(out, r"skipped +12\n")

    def test_a_batch_that_cannot_begin_is_one_line(self):
        self.fill(1)
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = free.getsockname()[1]
        batch = (PATTERN, "-o", "out")
        self.assert_fails("no scheduler answers", *batch, "--scheduler", f"tcp://127.0.0.1:{port}")
        for address in ("nonsense://x", "tcp://127.0.0.1", "tls://127.0.0.1:1"):
            self.assert_fails("no scheduler answers", *batch, "--scheduler", address)
        self.assertFalse((self.folder / "out").exists())
        self.assert_fails("is empty", *batch, "--scheduler", "", code=64)
        self.assert_fails("is not an option", *batch, "--schedular", "x", code=64)
        self.assert_fails("--scheduler excludes --jobs", *batch, "--scheduler", "x", "-j", "2", code=64)
        (self.folder / "distributed.py").write_text("raise ImportError('no distributed here')")
        path = f"{self.folder}:{os.environ['PYTHONPATH']}"
        self.assert_fails("no distributed here; it needs .* Dask", *batch, environment={"PYTHONPATH": path})


class Receipts(Case):
    """What lets a task that is run again find what it has done."""

    def setUp(self):
        super().setUp()
        self.fill(2)
        options = _batch.Options([os.fsencode(self.folder / "photos"), b"--recursive", b"-q", b"-o", self.output])
        ledger = _batch.Ledger(options)
        (self.folder / "desk").mkdir()
        self.token = self.folder / "desk" / "token"
        self.token.touch()
        self.batch = _batch_tasks.Batch(self.output, os.fsencode(self.token), _batch.__version__, [])
        self.photos = [(number, ledger.item(number)) for number in range(2)]
        self.first = _batch_tasks.prepare(self.batch, self.photos)

    @property
    def output(self):
        return os.fsencode(self.folder / "out")

    def receipt(self):
        return Path(os.fsdecode(_batch_tasks.receipt_of(self.batch, self.photos[0][1])))

    def assert_anew(self, anew):
        again = _batch_tasks.prepare(self.batch, self.photos)
        self.assertEqual([row.row[10] != before.row[10] for row, before in zip(again, self.first)], [anew, False])
        without_times = [[(each.number, each.row[:10]) for each in all_of_them] for all_of_them in (again, self.first)]
        self.assertEqual(*without_times)

    def test_what_is_done_is_not_done_again(self):
        self.assert_anew(False)

    def test_another_content_is_prepared(self):
        photo = self.folder / "photos" / "001.jpg"
        (self.folder / "photos" / "more" / "000.jpg").replace(photo)
        again = _batch_tasks.prepare(self.batch, self.photos)
        self.assertEqual(sum(1 for each, before in zip(again, self.first) if each.row[5] != before.row[5]), 2)

    def test_a_receipt_that_is_torn_counts_for_nothing(self):
        whole = self.receipt().read_bytes()
        for torn in (b"", whole[:-1], whole[:40], b"()", b"\0" * 60, b"__import__('os')", b"\xff", whole + b"x"):
            with self.subTest(torn=torn[:20]):
                self.receipt().write_bytes(torn)
                self.assert_anew(True)
                self.first = _batch_tasks.prepare(self.batch, self.photos)

    def test_files_that_are_not_what_they_were_are_made_anew(self):
        page = next((self.folder / "out").rglob("page.png")).parent
        page = self.folder / "out" / os.fsdecode(self.first[0].row[1]) / "page.png"
        content = page.read_bytes()
        page.write_bytes(content[:10])
        self.assert_anew(True)
        self.assertEqual(page.read_bytes(), content)

    def test_without_the_token_nothing_is_begun(self):
        self.token.unlink()
        with self.assertRaisesRegex(_batch_tasks.Misfit, "does not see the output folder"):
            _batch_tasks.prepare(self.batch, self.photos)


if __name__ == "__main__":
    unittest.main()
