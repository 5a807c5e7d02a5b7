#!/usr/bin/env python3
"""spectrino-icsim as other programs see it: Hamlib's IC-7300 back-end, and a bare terminal."""

import os
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))


class Simulator:
    def __init__(self, *options):
        self.folder = tempfile.TemporaryDirectory()
        self.link = os.path.join(self.folder.name, "radio")
        self.process = subprocess.Popen(
            [PROGRAM, "--model", "ic7300", "--link", self.link, *options], stdout=subprocess.PIPE, text=True)
        assert self.process.stdout.readline() == "READY\n"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGTERM)
        self.status = self.process.wait(timeout=10)
        self.process.stdout.close()
        self.left = os.path.lexists(self.link)
        self.folder.cleanup()

    def rigctl(self, *commands):
        result = subprocess.run(["rigctl", "-m", "3073", "-r", self.link, "-s", "115200", "-"],
                                input="\n".join(commands) + "\n", capture_output=True, text=True, timeout=30)
        return result.returncode, result.stdout


def ask(port, command, seconds=2.0):
    """What a frame is answered with, up to FD; as much as there is when the time is over."""
    os.write(port, bytes.fromhex("FEFE94E0" + command + "FD"))
    heard = b""
    end = time.monotonic() + seconds
    while not heard.endswith(b"\xfd") and time.monotonic() < end:
        if select.select([port], [], [], 0.05)[0]:
            heard += os.read(port, 1)
    return heard.hex().upper()


def has_terminals():
    try:
        for end in os.openpty():
            os.close(end)
    except OSError:
        return False
    return True


@unittest.skipUnless(has_terminals(), "no pseudo-terminals here: /dev/pts is not mounted")
class IcomSimTest(unittest.TestCase):
    def test_reads_and_sets(self):
        for options in ((), ("--echo",)):
            with self.subTest(options=options), Simulator(*options) as radio:
                status, text = radio.rigctl("F 7012000", "M CW 500", "S 1 VFOB")
                self.assertEqual(status, 0, text)
                status, text = radio.rigctl("f", "m", "s", "L AF 0.2", "l AF", "U NB 1", "u NB", "l STRENGTH")
                self.assertEqual(status, 0, text)
                values = [line for line in text.split("\n") if line]
                self.assertEqual(int(values[0].split()[-1]), 7012000)
                self.assertIn("CW", text)
                self.assertIn("500", values)
                self.assertIn("VFOB", values)
                self.assertIn("0.2", text.split("l AF")[1][:8])
            self.assertEqual((radio.status, radio.left), (0, False))


    def test_next_client_starts_afresh(self):
        with Simulator() as radio:
            port = os.open(radio.link, os.O_RDWR | os.O_NOCTTY)
            for command in ("271001", "271101"):
                self.assertEqual(ask(port, command), "FEFEE094FBFD")
            time.sleep(0.3)  # nobody reads the scope
            os.write(port, bytes.fromhex("FEFE94E0271100FD"))
            time.sleep(0.1)
            os.close(port)
            time.sleep(0.1)
            port = os.open(radio.link, os.O_RDWR | os.O_NOCTTY)
            self.assertEqual(ask(port, "1900"), "FEFEE094190094FD")
            os.close(port)

    def test_faults_come_and_go_at_their_time(self):
        identity = "FEFEE094190077FD"
        options = ["--identity", "77"]
        for fault in ("refuse=0.5 heal=1 off=1.5 on=2 baud=2.5 heal=3 silence=3.5 unplug=4 replug=4.5").split():
            options += ["--fault", fault]
        with Simulator(*options) as radio:
            started = time.monotonic()

            def at(seconds):
                time.sleep(max(0, started + seconds - time.monotonic()))

            port = os.open(radio.link, os.O_RDWR | os.O_NOCTTY)
            for when, answer in ((0.2, identity), (0.7, "FEFEE094FAFD"), (1.2, identity), (1.7, ""), (2.2, identity),
                                 (2.7, ""), (3.2, identity), (3.7, "")):
                at(when)
                self.assertEqual(ask(port, "1900", 0.2), answer, when)
            at(4.2)
            self.assertFalse(os.path.lexists(radio.link))
            with self.assertRaises(OSError):
                os.write(port, b"\xfe")
            os.close(port)
            at(4.8)
            os.close(os.open(radio.link, os.O_RDWR | os.O_NOCTTY))

    def test_the_link_belongs_to_who_made_it_last(self):
        with Simulator() as first:
            second = subprocess.Popen([PROGRAM, "--model", "ic705", "--link", first.link], stdout=subprocess.PIPE)
            try:
                self.assertEqual(second.stdout.readline(), b"READY\n")
                target = os.readlink(first.link)
                first.process.terminate()
                first.process.wait(timeout=10)
                self.assertEqual(os.readlink(first.link), target)
            finally:
                second.terminate()
                second.wait(timeout=10)
                second.stdout.close()
            self.assertFalse(os.path.lexists(first.link))

    def test_refuses_what_it_cannot_do(self):
        with tempfile.TemporaryDirectory() as folder:
            taken = os.path.join(folder, "file")
            with open(taken, "w") as file:
                file.write("kept")
            for status, options in ((2, ["--model", "ic9999", "--link", "x"]), (2, ["--model", "ic705"]),
                                    (2, ["--link", "x", "--fault", "noise=0"]), (2, ["--link", "x", "--divisions", "16"]),
                                    (3, ["--link", taken])):
                result = subprocess.run([PROGRAM, *options], cwd=folder, capture_output=True, timeout=10)
                self.assertEqual(result.returncode, status, options)
            with open(taken) as file:
                self.assertEqual(file.read(), "kept")


if __name__ == "__main__":
    unittest.main()
