"""Runs the program as a shell would: options, exit states, files it writes, recordings it refuses."""
import json
import os
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)


def wav(rate=48000, channels=2, bits=16, frames=48000, cut=0):
    block = channels * bits // 8
    data = b"".join(struct.pack("<hh", 1000, -1000) for _ in range(frames))[: frames * block].ljust(frames * block, b"\0")
    head = b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVE"
    fmt = b"fmt " + struct.pack("<IHHIIHH", 16, 1, channels, rate, rate * block, block, bits)
    whole = head + fmt + b"data" + struct.pack("<I", len(data)) + data
    return whole[: len(whole) - cut]


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.home = Path(self.folder.name)

    def tearDown(self):
        self.folder.cleanup()

    def run_program(self, *arguments, config=None):
        environment = dict(os.environ, XDG_CONFIG_HOME=str(config or self.home / "config"))
        return subprocess.run([PROGRAM, *map(str, arguments)], env=environment, capture_output=True, text=True,
                              timeout=40, check=False)

    def test_demo_reaches_its_frame_rate_and_leaves_what_was_asked_for(self):
        picture, stats = self.home / "s.png", self.home / "s.json"
        run = self.run_program("--demo=iq", "--start", "--quit-after", 4, "--screenshot", picture, "--stats", stats)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(struct.unpack(">II", picture.read_bytes()[16:24]), (727, 345))
        figures = json.loads(stats.read_text())
        # 44100 Hz in blocks of 2048 frames is 21.5 a second; a busy machine may lose a few.
        self.assertGreater(figures["framesPerSecond"], 17)
        self.assertLess(figures["framesPerSecond"], 22.5)
        self.assertEqual(set(figures["stages"]), {"capture", "transform", "levels", "history", "draw", "latency"})
        self.assertGreater(figures["stages"]["draw"]["p99Ms"], 0)
        self.assertFalse((self.home / "config").exists(), "a demo writes no settings")

    def test_the_end_of_a_session_saves_as_closing_does(self):
        environment = dict(os.environ, XDG_CONFIG_HOME=str(self.home / "config"))
        stats = self.home / "s.json"
        program = subprocess.Popen([PROGRAM, "--start", "--stats", stats], env=environment, stderr=subprocess.PIPE)
        try:
            time.sleep(3)
            program.terminate()
            self.assertEqual(program.wait(timeout=10), 0)
        finally:
            program.kill()
            program.communicate()
        self.assertIn("Width=10905", (self.home / "config/spectrino/Spectrino.ini").read_text())
        self.assertGreater(json.loads(stats.read_text())["frames"], 10)

    def test_what_cannot_be_written_ends_with_its_own_status(self):
        pipe = self.home / "pipe"
        os.mkfifo(pipe)
        for option, path in (("--stats", "/dev/full"), ("--stats", pipe), ("--screenshot", "/dev/full"),
                             ("--screenshot", self.home / "none/s.png")):
            with self.subTest(f"{option} {path}"):
                run = self.run_program("--demo", "--quit-after", 0.2, option, path)
                self.assertEqual(run.returncode, 1, run.stderr)
                self.assertIn(f"cannot write {path}", run.stderr)

    def test_demos_leave_no_folders_and_other_runs_make_none(self):
        place = self.home / "tmp"
        place.mkdir()
        environment = dict(os.environ, XDG_CONFIG_HOME=str(self.home / "config"), TMPDIR=str(place))
        killed = subprocess.Popen([PROGRAM, "--demo"], env=environment, stderr=subprocess.DEVNULL)
        try:
            time.sleep(2)
        finally:
            killed.kill()
            killed.wait()
        left = list(place.glob("spectrino-*"))
        self.assertEqual(len(left), 1)
        os.utime(left[0], (1, 1))
        for arguments in (["--demo"], []):
            program = subprocess.run([PROGRAM, *arguments, "--quit-after", "0.2"], env=environment, capture_output=True,
                                     timeout=40, check=False)
            self.assertEqual(program.returncode, 0)
            self.assertEqual(list(place.glob("spectrino-*")), [])

    def test_a_hangup_that_was_ignored_stays_so(self):
        environment = dict(os.environ, XDG_CONFIG_HOME=str(self.home / "config"))
        program = subprocess.Popen(["nohup", PROGRAM, "--demo", "--quit-after", "4"], env=environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            time.sleep(2)
            program.send_signal(signal.SIGHUP)
            time.sleep(0.5)
            self.assertIsNone(program.poll())
            self.assertEqual(program.wait(timeout=20), 0)
        finally:
            program.kill()
            program.wait()

    def test_a_recording_sets_the_rate_of_its_run(self):
        recording, stats = self.home / "band.wav", self.home / "s.json"
        recording.write_bytes(wav(rate=96000, frames=96000))
        run = self.run_program("--iq-file", recording, "--demo", "--start", "--quit-after", 2, "--stats", stats)
        self.assertEqual(run.returncode, 0, run.stderr)
        # 96000 Hz in blocks of 2048 frames.
        self.assertGreater(json.loads(stats.read_text())["framesPerSecond"], 35)

    def test_unusable_recordings_are_refused_by_name(self):
        bad = {"mono.wav": wav(channels=1), "deep.wav": wav(bits=24), "rate.wav": wav(rate=32000),
               "cut.wav": wav(frames=10, cut=60), "text.wav": b"not a recording", "empty.wav": b""}
        for name, content in bad.items():
            with self.subTest(name):
                (self.home / name).write_bytes(content)
                run = self.run_program("--iq-file", self.home / name, "--start", "--quit-after", 1)
                self.assertEqual(run.returncode, 2, run.stderr)
                self.assertIn(name, run.stderr)
        run = self.run_program("--iq-file", self.home / "none.wav", "--start", "--quit-after", 1)
        self.assertEqual(run.returncode, 2)
        self.assertIn("none.wav", run.stderr)

    def test_wrong_options_say_so(self):
        for arguments in (["--strat"], ["--quit-after"], ["--quit-after", "soon"], ["--demo=flex"], ["--start=1"],
                          ["--iq-file", ""], ["file.wav"]):
            with self.subTest(arguments):
                run = self.run_program(*arguments)
                self.assertEqual(run.returncode, 2)
                self.assertIn("spectrino: ", run.stderr)

    def test_lists_and_versions(self):
        names = self.run_program("--list-devices").stdout.splitlines()
        first = names.index("Demo signal (no hardware)")
        self.assertEqual(names[first + 1:first + 4], ["ICOM", "K4", "K4D"])
        self.assertRegex(self.run_program("--version").stdout, r"^spectrino \d+\.\d+\.\d+\n$")
        self.assertIn("--iq-file", self.run_program("--help").stdout)

    def test_a_missing_input_is_told_and_ends_with_its_own_status(self):
        settings = self.home / "config" / "spectrino" / "Spectrino.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Setup]\nDeviceId=pulse:gone\nNDevice=Gone\nSRate=6\nOptFreq=7\n")
        run = self.run_program("--start", "--quit-after", 1)
        self.assertEqual(run.returncode, 3)
        self.assertIn("Wave input device didn't open at 192000!", run.stderr)

    def test_a_missing_serial_port_ends_with_its_own_status(self):
        settings = self.home / "config" / "spectrino" / "Spectrino.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Setup]\nICOM=1\nOptFreq=7\nPort=31\nICADDR=94\n")
        run = self.run_program("--start", "--quit-after", 2)
        self.assertEqual(run.returncode, 3, run.stderr)

    def test_settings_that_cannot_be_kept_are_told_with_their_path(self):
        blocked = self.home / "blocked"
        blocked.write_text("a file where the folder should be")
        run = self.run_program("--start", "--quit-after", 2, config=blocked)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn(str(blocked), run.stderr)
        self.assertEqual(run.stderr.count("Spectrino: Settings could not be saved"), 1, "said once")

    def test_settings_that_are_no_text_are_set_aside(self):
        settings = self.home / "config" / "spectrino" / "Spectrino.ini"
        settings.parent.mkdir(parents=True)
        settings.write_bytes(b"[Setup]\nBits=\xff\xfe\0\0garbage" * 50)
        run = self.run_program("--start", "--quit-after", 2)
        self.assertEqual(run.returncode, 0, run.stderr)
        kept = list(settings.parent.glob("Spectrino.ini.corrupt-*"))
        self.assertEqual(len(kept), 1)
        self.assertIn(kept[0].name, run.stderr)


if __name__ == "__main__":
    unittest.main()
