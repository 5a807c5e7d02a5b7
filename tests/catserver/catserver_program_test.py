"""The whole program over simulated radios, used by Hamlib's own client and by clients that misbehave."""
import os
import re
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import xmlrpc.client
from pathlib import Path

ICSIM, K4SIM, PROGRAM = sys.argv.pop(), sys.argv.pop(), sys.argv.pop()
MARGIN = 20.0  # seconds that anything may take


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Client:
    """A client that sends and hears bytes."""

    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout=MARGIN)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)

    def ask(self, request, lines=1):
        self.socket.sendall(request.encode())
        text = b""
        while text.count(b"\n") < lines:
            heard = self.socket.recv(65536)
            if not heard:
                raise EOFError(text)
            text += heard
        return text.decode()


class CatServerTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.home = Path(self.folder.name)
        self.programs = []
        self.addCleanup(self.end)
        self.port = free_port()

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

    def k4(self):
        self.radio = self.start([K4SIM, "--cat-port", "0", "--pan-port", "0"], stdout=subprocess.PIPE, text=True)
        self.cat, pan = map(int, re.findall(r"\d+", self.radio.stdout.readline())[-2:])
        return f"K4=1\nOptFreq=7\nK4TCP=127.0.0.1\nK4CATPORT={self.cat}\nK4PANPORT={pan}\n"

    def icom(self):
        link = self.home / "radio"
        self.radio = self.start([ICSIM, "--model", "ic7300", "--link", str(link)], stdout=subprocess.DEVNULL)
        self.wait(link.is_symlink, "no simulated Icom")
        return f"ICOM=1\nOptFreq=7\nPort=1\nICADDR=94\n[Ports]\n1={link}\n"

    def serve(self, radio, ptt=0, wait=True):
        settings = self.home / "spectrino"
        settings.mkdir(mode=0o700, exist_ok=True)
        (settings / "Spectrino.ini").write_text(
            f"[Setup]\nCatServer=1\nCatServerPort={self.port}\nCatServerTerminal=1\nCatServerPtt={ptt}\n{radio}")
        environment = dict(os.environ, XDG_CONFIG_HOME=str(self.home), XDG_RUNTIME_DIR=str(self.home))
        self.program = self.start([PROGRAM, "--start"], env=environment, stderr=subprocess.DEVNULL)
        self.terminal = settings / "cat"
        if wait:
            self.wait(self.answers, "no radio is served")

    def wait(self, done, why):
        end = time.monotonic() + MARGIN
        while not done():
            self.assertLess(time.monotonic(), end, why)
            time.sleep(0.05)

    def answers(self):
        try:
            return not Client(self.port).ask("f\n").startswith("RPRT")
        except OSError:
            return False

    def room(self):
        """Whether half of all places are free at once."""
        few = []
        try:
            for _ in range(8):
                few.append(Client(self.port))
                few[-1].ask("f\n")
            return True
        except (OSError, EOFError):
            return False
        finally:
            for one in few:
                one.socket.close()

    def rigctl(self, model, device, *words):
        run = subprocess.run(["rigctl", "-m", str(model), "-r", str(device), *words], capture_output=True, text=True,
                             timeout=MARGIN)
        return run.stdout.split(), run.stderr

    def net(self, *words):
        return self.rigctl(2, f"127.0.0.1:{self.port}", *words)[0]

    def serial(self, *words):
        return self.rigctl(2014, self.terminal, *words)[0]

    def test_hamlib_reads_and_sets_a_k4_by_port_and_terminal(self):
        self.serve(self.k4(), ptt=1)
        for sets, reads, answer in [("F 14076000", "f", ["14076000"]), ("M CW 400", "m", ["CW", "400"]),
                                    ("M PKTUSB 2400", "m", ["PKTUSB", "2400"]), ("S 1 VFOB", "s", ["1", "VFOB"]),
                                    ("S 0 VFOA", "s", ["0", "VFOA"]), ("T 1", "t", ["1"]), ("T 0", "t", ["0"])]:
            with self.subTest(sets):
                self.assertEqual(self.net(*sets.split(), reads), answer)
                # The next client finds it so; but whoever made the radio transmit and left does so no more.
                self.assertEqual(self.net(reads), ["0"] if sets == "T 1" else answer)
        self.assertEqual(self.net("V", "VFOB", "F", "14090000", "V", "VFOB", "f"), ["14090000"])
        self.assertEqual(self.net("M", "?"), "AM CW USB LSB RTTY FM CWR RTTYR PKTLSB PKTUSB".split())
        self.assertEqual(self.net("u", "MN"), ["0"])
        self.assertRegex(self.net("l", "STRENGTH")[0], r"^-?\d+$")
        for sets, reads, answer in [("F 7030000", "f", ["7030000"]), ("M LSB 0", "m", ["LSB", "1500"]),
                                    ("S 1 VFOB", "s", ["1", "VFOB"]), ("T 1", "t", ["1"]), ("T 0", "t", ["0"])]:
            with self.subTest("terminal " + sets):
                self.assertEqual(self.serial(*sets.split(), reads)[:2], answer)
        self.assertEqual(self.net("f"), ["7030000"])

    def test_hamlib_reads_and_sets_an_icom_which_has_one_vfo_here(self):
        self.serve(self.icom(), ptt=1)
        self.assertEqual(self.net("F", "7040000", "f"), ["7040000"])
        self.assertEqual(self.net("M", "LSB", "-1", "m")[0], "LSB")
        self.assertEqual(self.net("M", "RTTY", "-1", "m")[0], "RTTY")
        self.assertEqual(self.net("T", "1", "t"), ["1"])
        self.assertEqual(self.net("T", "0", "t"), ["0"])
        self.assertEqual(Client(self.port).ask("\\get_vfo_list\nS 1 VFOB\nM PKTUSB 0\n", 3), "VFOA \nRPRT -11\nRPRT -11\n")
        self.assertEqual(self.serial("F", "14035000", "f"), ["14035000"])
        self.assertEqual(Client(self.port).ask("f\n"), "14035000\n")

    def test_a_radio_behind_another_rigctld_is_passed_on(self):
        behind = free_port()
        self.radio = self.start(["rigctld", "-m", "1", "-T", "127.0.0.1", "-t", str(behind)],
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait(lambda: self.rigctl(2, f"127.0.0.1:{behind}", "f")[0], "no rigctld")
        self.serve(f"OptFreq=0\nHostEndpoint=127.0.0.1:{behind}\n")
        for sets, reads, answer in [("F 14076000", "f", "14076000"), ("M PKTUSB 0", "m", "PKTUSB"),
                                    ("M RTTY 0", "m", "RTTY"), ("S 1 VFOB", "s", "1"), ("S 0 VFOA", "s", "0")]:
            with self.subTest(sets):
                self.assertEqual(self.net(*sets.split(), reads)[0], answer)
                self.assertEqual(self.rigctl(2, f"127.0.0.1:{behind}", reads)[0][0], answer, "the radio itself")

    def test_the_radio_receives_again_when_whoever_made_it_transmit_is_gone(self):
        self.serve(self.k4(), ptt=1)
        radio = Client(self.cat)

        def transmits():
            radio.socket.sendall(b"TQ;")
            heard = b""
            while not (told := re.findall(rb"TQ(\d)", heard)):
                heard += radio.socket.recv(4096)
            return told[-1] == b"1"

        self.assertEqual(self.serial("T", "1", "t"), ["1"])
        self.wait(lambda: not transmits(), "the terminal's program left")
        radio.socket.sendall(b"TX;")  # the operator's hand, which no program's leaving takes off
        self.wait(lambda: self.net("t") == ["1"], "not told")
        self.assertTrue(transmits())
        radio.socket.sendall(b"RX;")
        self.wait(lambda: self.net("t") == ["0"], "not told")
        self.assertEqual(Client(self.port).ask("T 0\n"), "RPRT 0\n")
        stays = Client(self.port)
        self.assertEqual(stays.ask("T 1\n"), "RPRT 0\n")
        self.assertTrue(transmits())
        self.program.terminate()
        self.wait(lambda: not transmits(), "the run ended")

    @unittest.skipUnless(shutil.which("fldigi") and shutil.which("Xvfb"), "no fldigi")
    def test_fldigi_follows_and_tunes(self):
        self.serve(self.k4())
        home = self.home / "fldigi"
        home.mkdir()
        keys = {"MYCALL": "N0CALL", "CHKUSEHAMLIBIS": 1, "HAMRIGMODEL": 2, "HAMRIGNAME": "Hamlib NET rigctl",
                "HAMRIGDEVICE": f"127.0.0.1:{self.port}", "CONFIRMEXIT": 0, "AUDIOIO": 3}
        (home / "fldigi_def.xml").write_text(
            "<FLDIGI_DEFS>\n" + "".join(f"<{key}>{value}</{key}>\n" for key, value in keys.items()) + "</FLDIGI_DEFS>\n")
        screen = self.start(["Xvfb", "-displayfd", "1", "-screen", "0", "1000x600x24", "-nolisten", "tcp"],
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        environment = dict(os.environ, HOME=str(home), DISPLAY=":" + screen.stdout.readline().strip())
        rpc = free_port()
        self.start(["fldigi", "--config-dir", f"{home}/", "--home-dir", f"{home}/", "--xmlrpc-server-port", str(rpc),
                    "--arq-server-port", str(free_port())], env=environment, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
        fldigi = xmlrpc.client.ServerProxy(f"http://127.0.0.1:{rpc}")

        def told(ask, answer):
            try:
                return ask() == answer
            except OSError:  # it has not started yet
                return False

        for hz in (14076000, 7035000):
            self.net("F", str(hz))
            self.wait(lambda: told(fldigi.main.get_frequency, float(hz)), "fldigi does not follow")
        fldigi.main.set_frequency(14070000.0)
        fldigi.rig.set_mode("LSB")
        self.wait(lambda: self.net("f", "m")[:2] == ["14070000", "LSB"], "fldigi does not tune")

    def test_transmitting_is_refused_and_misbehaviour_harms_nobody(self):
        self.serve(self.k4())
        good = Client(self.port)
        self.assertEqual(good.ask("T 1\nt\n", 2), "RPRT -9\n0\n")
        crowd = [Client(self.port) for _ in range(99)]
        served = 0
        for one in crowd:
            try:
                served += one.ask("f\n").strip().isdigit()
            except OSError:
                pass
            except EOFError:
                pass
        self.assertEqual(served, 15)
        for one in crowd:  # some say good-bye, some leave with a reset
            if crowd.index(one) % 2:
                one.socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            one.socket.close()
        self.wait(self.room, "no room after the crowd left")
        half = Client(self.port)
        half.socket.sendall(b"f\nm\n")
        half.socket.shutdown(socket.SHUT_WR)
        heard = b""
        while part := half.socket.recv(4096):
            heard += part
        self.assertRegex(heard.decode(), r"^\d+\nUSB\n2700\n$")
        for flood in (b"x" * 1000, b"\\dump_state\n" * 80):  # no newline; and answers that nobody reads
            bad = Client(self.port)
            bad.socket.settimeout(1)
            with self.assertRaises((ConnectionError, TimeoutError)):
                for _ in range(20000):
                    bad.socket.sendall(flood)
            began = time.monotonic()
            self.assertTrue(good.ask("f\n").strip().isdigit())
            self.assertLess(time.monotonic() - began, 1.0)
            bad.socket.close()
        self.radio.kill()
        self.wait(lambda: good.ask("f\n") == "RPRT -5\n", "a radio that is gone still tells a frequency")

    def test_the_demo_band_is_turned_once_a_taken_port_is_free(self):
        with socket.create_server(("127.0.0.1", self.port)):
            self.serve("", wait=False)
            self.wait(self.terminal.is_symlink, "no terminal")  # made just before the port is tried
        self.wait(self.answers, "the port is not tried again")
        self.assertEqual(self.net("F", "14080000", "f", "M", "RTTY", "0", "m")[:2], ["14080000", "RTTY"])
        self.assertEqual(self.serial("F", "7030000", "f"), ["7030000"])
        self.assertEqual(Client(self.port).ask("T 1\nS 1 VFOB\nf\n", 3), "RPRT -9\nRPRT -11\n7030000\n")


if __name__ == "__main__":
    unittest.main(warnings="ignore")
