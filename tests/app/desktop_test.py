"""The program on a real X server: pointer and keys go through the server, the radio is asked by its own CAT port."""
import os
import re
import socket
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

K4SIM, PROGRAM = sys.argv.pop(), sys.argv.pop()
MARGIN = 10.0  # seconds that anything may take


class Radio:
    """An independent client on the simulated radio's CAT port."""

    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout=MARGIN)
        self.text = ""

    def hertz(self, vfo="FA"):
        self.socket.sendall(f"{vfo};".encode())
        end = time.monotonic() + MARGIN
        while time.monotonic() < end:
            found = re.search(vfo + r"(\d{11});", self.text)
            if found:
                self.text = ""
                return int(found[1])
            self.text += self.socket.recv(4096).decode(errors="replace")
        raise AssertionError(f"no answer to {vfo}")


class DesktopTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.programs = []
        self.addCleanup(self.end)
        reader, writer = os.pipe()
        self.start(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1000x600x24", "-nolisten", "tcp"],
                   pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as display:
            self.display = ":" + display.readline().strip()
        simulator = self.start([K4SIM, "--cat-port", "0", "--pan-port", "0"], stdout=subprocess.PIPE, text=True)
        ports = re.findall(r"\d+", simulator.stdout.readline())
        self.cat, self.pan = int(ports[-2]), int(ports[-1])

    def start(self, command, **options):
        self.programs.append(subprocess.Popen(command, **options))
        return self.programs[-1]

    def end(self):
        for program in reversed(self.programs):
            program.terminate()
            try:
                program.wait(timeout=MARGIN)
            except subprocess.TimeoutExpired:
                program.kill()
                program.wait()
            if program.stdout:
                program.stdout.close()
        self.folder.cleanup()

    def xdotool(self, *arguments):
        run = subprocess.run(["xdotool", *map(str, arguments)], env=dict(os.environ, DISPLAY=self.display),
                             capture_output=True, text=True, timeout=MARGIN, check=True)
        return run.stdout.split()

    def reaches(self, radio, goal, tolerance, vfo="FA"):
        end = time.monotonic() + MARGIN
        while time.monotonic() < end:
            heard = radio.hertz(vfo)
            if abs(heard - goal) <= tolerance:
                return True
            time.sleep(0.02)
        self.fail(f"{vfo} is {heard}, not {goal}")

    def test_pointer_wheel_and_keys_tune_the_radio(self):
        settings = Path(self.folder.name) / "spectrino"
        settings.mkdir()
        (settings / "Spectrino.ini").write_text(
            "[Setup]\nK4=1\nOptFreq=7\nK4TCP=127.0.0.1\nMP=0\nWidth=15000\nHeight=9000\n"
            f"K4CATPORT={self.cat}\nK4PANPORT={self.pan}\n")
        environment = dict(os.environ, DISPLAY=self.display, QT_QPA_PLATFORM="xcb", XDG_CONFIG_HOME=self.folder.name)
        self.start([PROGRAM, "--start"], env=environment, stderr=subprocess.DEVNULL)
        window = self.xdotool("search", "--sync", "--onlyvisible", "--name", "Spectrino V")[0]
        self.xdotool("windowmove", "--sync", window, 0, 0)
        radio = Radio(self.cat)
        self.addCleanup(radio.socket.close)
        time.sleep(4)  # the opening commands take two seconds
        before = radio.hertz()

        # Two clicks a known distance apart tell where the frequencies stand.
        self.xdotool("mousemove", 500, 120, "click", 1)
        time.sleep(1.5)
        right = radio.hertz()
        self.assertNotEqual(right, before)
        self.xdotool("mousemove", 500, 120, "click", 1)
        time.sleep(1.5)
        again = radio.hertz()
        self.assertAlmostEqual(again - right, right - before, delta=150)  # 500 px stay as far from the middle

        for _ in range(50):
            self.xdotool("click", 4)
        self.reaches(radio, (round(again / 25) + 50) * 25, 25)
        time.sleep(0.6)
        sub = radio.hertz("FB")
        self.xdotool("key", "b", "click", 5)
        self.reaches(radio, (round(sub / 25) - 1) * 25, 25, "FB")
        self.xdotool("type", "7.0301")
        self.xdotool("key", "Return")
        self.reaches(radio, 7030100, 0, "FB")  # the VFO that the wheel tunes


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
