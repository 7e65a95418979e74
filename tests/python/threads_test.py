"""Calls run without the interpreter's lock, and several at once give what each gives alone."""
import sys
import threading
import unittest

import numpy as np

import orvex_991 as orvex

PHOTO = np.random.default_rng(5).integers(0, 256, (300, 400, 3), np.uint8)
GREY = PHOTO[..., 0].copy()


def one_round(seed):
    turned = np.roll(PHOTO, seed, axis=1)
    grey = orvex.bgr2gray(turned)
    level, binary = orvex.threshold(grey)
    grown = orvex.dilateBinary(binary, (3, 3))
    try:
        orvex.otsu(turned)
    except orvex.Error as error:
        code = error.code
    return level, code, int(grown.sum()), orvex.connectdComponent(binary)[:20].tolist(), orvex.hist(grey).tolist()


class Threads(unittest.TestCase):
    def test_four_threads_at_once_give_what_one_gives(self):
        expected = [one_round(seed) for seed in range(4)]
        found = [[] for _ in range(4)]
        begin = threading.Barrier(4)

        def work(seed):
            begin.wait()
            for _ in range(10):
                found[seed].append(one_round(seed))

        threads = [threading.Thread(target=work, args=(seed,)) for seed in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for seed in range(4):
            self.assertEqual(found[seed], [expected[seed]] * 10)

    def test_several_threads_may_read_one_array(self):
        expected = orvex.adaptiveThreshold(GREY, 31, 0.1)
        results = [None] * 4

        def work(number):
            results[number] = orvex.adaptiveThreshold(GREY, 31, 0.1)

        threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for result in results:
            np.testing.assert_array_equal(result, expected)

    def test_another_thread_goes_on_while_the_library_works(self):
        # With an interval that never ends, a thread that waits gets the lock only from one that gives it up.
        interval = sys.getswitchinterval()
        self.addCleanup(sys.setswitchinterval, interval)
        steps = []
        working, seen = threading.Event(), threading.Event()

        def count():
            working.wait()
            steps.append(True)
            seen.set()

        thread = threading.Thread(target=count)
        thread.start()
        sys.setswitchinterval(1000)
        large = np.random.default_rng(6).integers(0, 256, (3000, 4000), np.uint8)
        rounds = 0
        working.set()
        while not steps and rounds < 100:
            orvex.adaptiveThreshold(large, 101, 0.1)
            rounds += 1
        happened = bool(steps)
        sys.setswitchinterval(interval)
        thread.join()
        self.assertTrue(happened)


if __name__ == "__main__":
    unittest.main()
