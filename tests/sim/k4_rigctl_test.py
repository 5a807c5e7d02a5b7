"""An independent client reads and sets the simulated K4: Hamlib's rigctl with its own back-end for the radio."""
import subprocess
import sys
import unittest

SIMULATOR = sys.argv.pop(1)


class RigctlTest(unittest.TestCase):
    def setUp(self):
        self.radio = subprocess.Popen([SIMULATOR, "--cat-port", "0", "--pan-port", "0"], stdout=subprocess.PIPE, text=True)
        word, cat_port, _ = self.radio.stdout.readline().split()
        self.assertEqual(word, "READY")
        self.port = cat_port

    def tearDown(self):
        self.radio.terminate()
        self.assertIn(self.radio.wait(timeout=10), (0, -15))
        self.radio.stdout.close()

    def rigctl(self, *commands):
        run = subprocess.run(["rigctl", "-m", "2047", "-r", f"127.0.0.1:{self.port}", *commands],
                             capture_output=True, text=True, timeout=30, check=True)
        return run.stdout.split()

    def test_reads_and_sets_frequency_mode_width_and_split(self):
        self.assertEqual(self.rigctl("f", "m"), ["14074000", "USB", "2700"])
        self.rigctl("F", "14025500", "M", "CW", "500")
        self.assertEqual(self.rigctl("f", "m"), ["14025500", "CW", "500"])
        self.rigctl("S", "1", "VFOB")
        self.assertEqual(self.rigctl("s")[0], "1")
        self.rigctl("M", "LSB", "2400", "S", "0", "VFOA")
        self.assertEqual(self.rigctl("m", "s")[:3], ["LSB", "2400", "0"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
