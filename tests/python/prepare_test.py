"""prepare() gives what the program docprep gives for the same pixels: pictures, result.json, refusals, printed lines.

usage: prepare_test.py DOCPREP SAMPLES
"""
import gzip
import json
import os
import re
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

import numpy as np
from PIL import Image

import orvex_991 as orvex

DOCPREP, SAMPLES = (Path(sys.argv.pop(1)).resolve() for _ in range(2))
PAGE = np.asarray(Image.open(SAMPLES / "page.jpg").convert("RGB"))[..., ::-1]  # B, G, R
CORNER = PAGE[40:440, 60:660]
BLANK = np.full((240, 320), 200, np.uint8)
FLAGS = {"require_text": "--require-text", "crop": "--crop", "keep_skew": "--no-deskew"}


def askew(array, degrees):
    return np.asarray(Image.fromarray(array).rotate(degrees, Image.Resampling.BILINEAR, True, (128, 128, 128)))


def store(array, path, orientation=1):
    """Writes pixels without loss. Returns docprep's name of the format."""
    picture = Image.fromarray(array if array.ndim == 2 else np.ascontiguousarray(array[..., ::-1]))
    exif = picture.getexif()
    exif[0x112] = orientation
    if orientation != 1:
        picture.save(path, "PNG", exif=exif)
        return "PNG"
    picture.save(path, "PPM")
    return "PNM"


def arguments(options):
    """Options of prepare() as docprep's."""
    for name, value in options.items():
        if name in FLAGS:
            yield FLAGS[name]
        elif name == "stages":
            yield f"--stages={','.join(value)}"
        elif name not in ("orientation", "pictures"):
            yield f"--{name.replace('_', '-')}={value}"


class Prepare(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def docprep(self, *command):
        """Its standard error; fails when it ends otherwise than by a refusal."""
        done = subprocess.run([DOCPREP, *command], cwd=self.folder, capture_output=True, check=False)
        self.assertIn(done.returncode, (0, 1, 2), done.stderr)
        return done.stderr.decode("utf-8", "surrogateescape")

    def assert_as_docprep(self, prepared, out):
        result = (out / "result.json").read_bytes()
        files = json.loads(result)["files"]
        self.assertEqual(prepared.to_json(files), result)
        pictures = {name: array for name, array in vars(prepared.pictures).items() if array is not None}
        self.assertEqual({f"{name}.png" for name in pictures}, set(files))
        for name, array in pictures.items():
            written = np.asarray(Image.open(out / f"{name}.png").convert("L" if array.ndim == 2 else "RGB"))
            np.testing.assert_array_equal(array if array.ndim == 2 else array[..., ::-1], written, name)

    def compare(self, array, **options):
        format = store(array, self.folder / "photo", options.get("orientation", 1))
        out = self.folder / "out"
        pictures = "png" if options.get("pictures", True) else "none"
        said = self.docprep("photo", "-o", out, "--quiet", "--pictures", pictures, *arguments(options))
        self.assertEqual(said, "")
        prepared = orvex.prepare(array, file="photo", format=format, **options)
        self.assert_as_docprep(prepared, out)
        return prepared

    def test_everything_is_what_docprep_makes_of_the_same_pixels(self):
        prepared = self.compare(PAGE)
        self.assertEqual((prepared.input.file, prepared.input.format), ("photo", "PNM"))
        self.assertGreater(len(prepared.rows), 10)
        self.assertIsNotNone(prepared.pictures.seal)

    def test_other_photographs_too(self):
        askew_page = askew(CORNER, 7)
        for name, array in {"askew": askew_page, "lying": np.rot90(CORNER), "upside down": CORNER[::-1, ::-1],
                            "grey": PAGE[..., 1], "blank": BLANK, "one pixel": BLANK[:1, :1]}.items():
            with self.subTest(photo=name):
                self.compare(array)

    def test_every_option_is_docprep_s(self):
        cases = (
            (CORNER, {"stages": ["page"], "pictures": False}),
            (CORNER, {"stages": ("saliency", "components"), "turn": 180}),
            (CORNER, {"stages": {"rows"}, "turn": 0, "require_text": True}),
            (CORNER, {"stages": ["binarise"], "turn": 90}),
            (np.rot90(CORNER), {"turn": 270, "page": "gray"}),
            (np.rot90(CORNER), {"turn": "auto", "page": "soft"}),
            (askew(CORNER, 4), {"keep_skew": True, "binarise": "otsu"}),
            (PAGE, {"crop": True, "page": "binary", "binarise": "adaptive"}),
            (PAGE, {"min_sharpness": 110, "stages": ["seal"]}),
        )
        for array, options in cases:
            with self.subTest(options=options):
                self.compare(array, **options)

    def test_orientations_are_applied_as_docprep_does(self):
        for orientation in range(1, 9):
            with self.subTest(orientation=orientation):
                prepared = self.compare(CORNER[:, :, orientation % 3], stages=["page"], orientation=orientation)
                self.assertEqual(prepared.input.orientation, orientation)

    def test_a_camera_frame_is_one_call_more(self):
        frame = gzip.decompress((SAMPLES / "frame_1280x720.nv21.gz").read_bytes())
        (self.folder / "frame").write_bytes(frame)
        self.docprep("frame", "--nv21", "1280x720", "-o", "out", "--quiet", "--pictures", "png")
        photo = orvex.yuv2bgr(np.frombuffer(frame, np.uint8), 720, 1280)
        self.assert_as_docprep(orvex.prepare(photo, file="frame", format="NV21"), self.folder / "out")

    def test_names_need_not_be_utf_8(self):
        name = os.fsdecode(b"caf\xe9 \"1\"")
        store(BLANK, self.folder / name)
        self.docprep(name, "-o", "out", "--quiet", "--pictures", "png")
        for file in (name, Path(name), os.fsencode(name)):
            self.assert_as_docprep(orvex.prepare(BLANK, file=file, format="PNM"), self.folder / "out")

    def test_refusals_are_docprep_s(self):
        checkered = np.indices((6000, 6000), np.uint8).sum(0, np.uint8) % 2 * 255
        cases = (
            (PAGE, orvex.Refused, {"min_sharpness": 1000}),
            (BLANK, orvex.Refused, {"require_text": True, "stages": ["page"]}),
            (checkered, orvex.Failed, {}),
        )
        for array, kind, options in cases:
            store(array, self.folder / "photo")
            said = self.docprep("photo", "-o", self.folder / "refused", *arguments(options))
            self.assertFalse((self.folder / "refused").exists())
            with self.subTest(said=said), self.assertRaises(kind) as caught:
                orvex.prepare(array, file="photo", **options)
            self.assertEqual(type(caught.exception), kind)
            self.assertEqual(f"docprep: {caught.exception}\n", said)
            self.assertEqual(str(caught.exception), f"{caught.exception.file}: {caught.exception.reason}")
        self.assertTrue(issubclass(orvex.Refused, orvex.Failed))

    def test_lines_are_docprep_s_and_never_printed(self):
        store(CORNER, self.folder / "photo")
        self.docprep("photo", "-o", "out", "--quiet", "--log", "--pictures", "png")
        logged = (self.folder / "out" / "library.log").read_text(encoding="utf-8")
        with orvex.log() as lines:
            orvex.prepare(CORNER)
        self.assertGreater(len(lines), 100)
        milliseconds = re.compile(r"\d+\.\d+")
        self.assertEqual(milliseconds.sub("T", "\n".join(lines) + "\n"), milliseconds.sub("T", logged))
        with orvex.log() as lines, self.assertRaises(orvex.Refused):
            orvex.prepare(BLANK, require_text=True)
        self.assertGreater(len(lines), 10)
        program = "import numpy, orvex_991; orvex_991.prepare(numpy.full((50, 50), 9, numpy.uint8))"
        self.assertEqual(subprocess.run([sys.executable, "-c", program], check=True, capture_output=True).stdout, b"")

    def test_arrays_of_any_strides_are_read_and_never_written(self):
        dense = np.ascontiguousarray(CORNER)
        expected = orvex.prepare(dense).to_json()
        read_only = dense.copy()
        read_only.flags.writeable = False
        framed = np.pad(dense, [(1, 2), (3, 4), (0, 0)])[1:-2, 3:-4]
        for array in (read_only, framed, dense[::-1].copy()[::-1], np.asfortranarray(dense), CORNER):
            before = array.copy()
            self.assertEqual(orvex.prepare(array).to_json(), expected)
            np.testing.assert_array_equal(array, before)
        grey = dense[..., 0]
        self.assertEqual(orvex.prepare(grey).to_json(), orvex.prepare(grey[..., None]).to_json())
        turned = dense.copy()
        orvex.prepare(turned, orientation=6, turn=90)
        np.testing.assert_array_equal(turned, dense)

    def test_pictures_are_handed_over_without_a_copy(self):
        for picture in vars(orvex.prepare(PAGE).pictures).values():
            self.assertEqual(type(picture.base).__name__, "PyCapsule")
            self.assertTrue(picture.flags.c_contiguous and picture.flags.writeable)
            picture[...] = 0

    def test_wrong_arguments_are_named(self):
        wrong = (
            (ValueError, "image: has no pixels", {"image": np.zeros((0, 5), np.uint8)}),
            (ValueError, "image: 1 or 3 channels wanted, 4 given", {"image": np.zeros((5, 5, 4), np.uint8)}),
            (ValueError, "image: 2 or 3 dimensions wanted, 1 dimension", {"image": BLANK[0]}),
            (ValueError, r"image: 16385 x 16384 pixels are too many \(limit 256 Mi\)",
             {"image": np.empty((2**14, 2**14 + 1), np.uint8)}),
            (TypeError, "image: uint8 wanted, float64 given", {"image": np.zeros((5, 5))}),
            (TypeError, "image: a numpy array of uint8 wanted, str given", {"image": "photo.jpg"}),
            (ValueError, "stages: one of sharpness, .*, saliency wanted, 'pages' given", {"stages": ["page", "pages"]}),
            (TypeError, "stages: an iterable of names wanted, str given", {"stages": "page"}),
            (TypeError, "stages: one of .* wanted, int given", {"stages": [1]}),
            (ValueError, "turn: one of auto, 0, 90, 180, 270 wanted, 45 given", {"turn": 45}),
            (ValueError, "turn: one of .* wanted, 'left' given", {"turn": "left"}),
            (TypeError, "turn: an integer wanted, float given", {"turn": 90.0}),
            (ValueError, "min_sharpness: a finite number above 0 wanted, 0 given", {"min_sharpness": 0}),
            (ValueError, "min_sharpness: .* wanted, inf given", {"min_sharpness": float("inf")}),
            (ValueError, "min_sharpness: .* wanted, nan given", {"min_sharpness": float("nan")}),
            (TypeError, "min_sharpness: a number wanted, str given", {"min_sharpness": "110"}),
            (TypeError, "require_text: a bool wanted, int given", {"require_text": 1}),
            (ValueError, "binarise: one of otsu, adaptive wanted, 'Otsu' given", {"binarise": "Otsu"}),
            (ValueError, "page: one of soft, binary, gray wanted, 'grey' given", {"page": "grey"}),
            (TypeError, "page: one of soft, binary, gray wanted, NoneType given", {"page": None}),
            (TypeError, "crop: a bool wanted, str given", {"crop": "no"}),
            (TypeError, "keep_skew: a bool wanted, NoneType given", {"keep_skew": None}),
            (TypeError, "pictures: a bool wanted, str given", {"pictures": "none"}),
            (ValueError, "orientation: 1 .. 8 wanted, 9 given", {"orientation": 9}),
            (ValueError, "orientation: 1 .. 8 wanted, 0 given", {"orientation": 0}),
            (ValueError, "file: a path wanted, nothing given", {"file": ""}),
            (ValueError, "file: a path wanted, 'a.x00b' given", {"file": "a\0b"}),
            (TypeError, "file: a path wanted, int given", {"file": 3}),
            (ValueError, "format: text wanted, nothing given", {"format": ""}),
            (ValueError, "format: text wanted, '.udc80' given", {"format": "\udc80"}),
            (TypeError, "format: a string wanted, bytes given", {"format": b"PNG"}),
            (TypeError, "unexpected keyword argument 'deskew'", {"deskew": False}),
        )
        for kind, message, options in wrong:
            with self.subTest(message=message), self.assertRaisesRegex(kind, message):
                orvex.prepare(**{"image": BLANK, **options})
        self.assertEqual(orvex.prepare(BLANK, crop=np.bool_(True), turn=np.int64(90)).turn.degrees, 90)

    def test_an_error_of_the_caller_s_iterable_passes(self):
        def stages():
            yield "page"
            raise LookupError("mine")

        with self.assertRaisesRegex(LookupError, "mine"):
            orvex.prepare(BLANK, stages=stages())

    def test_memory_that_is_not_to_be_had_is_an_error(self):
        program = """
import resource, numpy, orvex_991
photo = numpy.random.default_rng(1).integers(0, 256, (2000, 2000, 3), numpy.uint8)
orvex_991.prepare(photo[:50, :50])
with open("/proc/self/statm") as file:
    used = int(file.read().split()[0]) * resource.getpagesize()
for room in (4, 16, 40):
    resource.setrlimit(resource.RLIMIT_AS, (used + (room << 20), resource.RLIM_INFINITY))
    try:
        orvex_991.prepare(photo)
    except orvex_991.Error as error:
        print(error.code in (2, 3))  # 2 where an operation reports every failure alike
    except MemoryError:
        print(True)
"""
        done = subprocess.run([sys.executable, "-c", program], check=True, capture_output=True, text=True)
        self.assertEqual(done.stdout, "True\n" * 3)


class Threads(unittest.TestCase):
    def test_four_at_once_give_what_each_gives_alone(self):
        photos = [CORNER, CORNER[::-1, ::-1], np.rot90(CORNER), askew(CORNER, 5)]
        expected = [orvex.prepare(photo).to_json() for photo in photos]
        found = [[] for _ in photos]
        lines = [[] for _ in photos]
        begin = threading.Barrier(len(photos))

        def work(number):
            begin.wait()
            for _ in range(3):
                with orvex.log() as mine:
                    found[number].append(orvex.prepare(photos[number]).to_json())
                lines[number].append(len(mine))

        threads = [threading.Thread(target=work, args=(number,)) for number in range(len(photos))]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(found, [[result] * 3 for result in expected])
        for counts in lines:
            self.assertGreater(counts[0], 100)
            self.assertEqual(counts, counts[:1] * 3)

    def test_another_thread_goes_on_meanwhile(self):
        # With an interval that never ends, a thread that waits gets the lock only from one that gives it up.
        interval = sys.getswitchinterval()
        self.addCleanup(sys.setswitchinterval, interval)
        working, steps = threading.Event(), []
        thread = threading.Thread(target=lambda: (working.wait(), steps.append(True)))
        thread.start()
        sys.setswitchinterval(1000)
        working.set()
        for _ in range(20):
            orvex.prepare(PAGE)
            if steps:
                break
        happened = bool(steps)
        sys.setswitchinterval(interval)
        thread.join()
        self.assertTrue(happened)


if __name__ == "__main__":
    unittest.main()
