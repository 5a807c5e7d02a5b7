"""Goes through the demos with a program that was built with the sanitizers: any finding, a leak too, ends it with an error."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)

# What a file may hold that no control can set.
SETTINGS = """[Setup]
DeAmp=1e308
DePhase=-1e308
db=1e308
Zoom=5
TypZoom=1
WF=3
bph=1
Offset0=1e308
Global=-1e308
FlipFreq=1e308
SMHold=1e308
Step0=99999999999
Width=99999999999
"""


class DemosTest(unittest.TestCase):
    def start(self, home, *arguments):
        environment = dict(os.environ, XDG_CONFIG_HOME=str(home), QT_QPA_PLATFORM="offscreen",
                           PULSE_SERVER="unix:/nonexistent/pulse", ASAN_OPTIONS="detect_leaks=1",
                           UBSAN_OPTIONS="print_stacktrace=1")
        return subprocess.Popen([PROGRAM, *arguments, "--start", "--quit-after", "6", "--screenshot",
                                 str(home / "picture.png")], env=environment, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, text=True)

    def test_every_demo_and_a_file_of_impossible_values_run_clean(self):
        with tempfile.TemporaryDirectory() as folder:
            runs = {}
            for name in ("iq", "k4", "k4d", "icom", "values"):
                home = Path(folder, name)
                (home / "spectrino").mkdir(parents=True)
                if name == "values":
                    (home / "spectrino" / "Spectrino.ini").write_text(SETTINGS)
                runs[name] = self.start(home, *([] if name == "values" else [f"--demo={name}"]))
            try:
                for name, run in runs.items():
                    with self.subTest(name):
                        errors = run.communicate(timeout=120)[1]
                        self.assertEqual(run.returncode, 0, errors)
                        self.assertNotIn("runtime error", errors)
                        self.assertTrue((Path(folder, name) / "picture.png").stat().st_size > 1000)
            finally:
                for run in runs.values():
                    run.kill()
                    run.wait()


if __name__ == "__main__":
    unittest.main()
