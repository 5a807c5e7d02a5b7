"""spectrino-bridge in front of an XML-RPC server that answers as flrig does, and of a rigctld, judged by gdbus."""

import fcntl
import os
import re
import socket
import subprocess
import sys
import tempfile
import threading
import time
from socketserver import ThreadingMixIn
from xmlrpc.server import SimpleXMLRPCServer

NAME, PATH = "org.spectrino.Bridge", "/org/spectrino/Bridge"


class Server(ThreadingMixIn, SimpleXMLRPCServer):
    daemon_threads = True


class Radio:
    def __init__(self):
        self.a, self.b, self.mode = 14074000, 14080500, "CW-R"
        self.tells_split = threading.Event()
        self.server = None

    def split(self):
        self.tells_split.wait(30)
        return 1

    def serve(self, port=0):
        server = self.server = Server(("127.0.0.1", port), allow_none=True, logRequests=False)
        server.register_function(lambda: str(self.a), "rig.get_vfoA")
        server.register_function(lambda: str(self.b), "rig.get_vfoB")
        server.register_function(lambda: self.mode, "rig.get_mode")
        server.register_function(lambda: ["2400", "lower"], "rig.get_bw")
        server.register_function(self.split, "rig.get_split")
        server.register_function(lambda hz: setattr(self, "a", int(hz)), "rig.set_vfoA")
        server.register_function(lambda hz: setattr(self, "b", int(hz)), "rig.set_vfoB")
        threading.Thread(target=server.serve_forever, daemon=True).start()
        return server.server_address[1]

    def vanish(self):
        self.server.shutdown()
        self.server.server_close()


def gdbus(*arguments):
    return subprocess.run(["gdbus", *arguments], capture_output=True, text=True, timeout=10, check=True).stdout


def item(name):
    return re.search(r"<'(.*)'>", gdbus("call", "--session", "-d", NAME, "-o", PATH, "-m",
                                        "org.freedesktop.DBus.Properties.Get", "org.spectrino.Bridge1", name)).group(1)


def command(text):
    gdbus("call", "--session", "-d", NAME, "-o", PATH, "-m", "org.spectrino.Bridge1.Command", text)


def wait_for(what, is_so):
    end = time.monotonic() + 10
    while not is_so():
        assert time.monotonic() < end, "not within 10 s: " + what
        time.sleep(0.02)


def follow_rigctld():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    rigctld = ["rigctld", "-m", "1", "-T", "127.0.0.1", "-t", str(port)]
    server = subprocess.Popen(rigctld)
    with tempfile.TemporaryDirectory() as folder:
        bridge = subprocess.Popen([sys.argv[1], "--rigctld", f"127.0.0.1:{port}"], stdout=subprocess.PIPE, text=True,
                                  env={**os.environ, "XDG_CONFIG_HOME": folder})
        rigctl = ["rigctl", "-m", "2", "-r", f"127.0.0.1:{port}"]
        try:
            assert bridge.stdout.readline() == "READY\n"
            wait_for("the radio's own frequency", lambda: item("VfoAHz") == "145000000")
            subprocess.run([*rigctl, "F", "14074000"], check=True, timeout=10)
            wait_for("the radio turned", lambda: item("VfoAHz") == "14074000")
            command("FA00007030000;")
            wait_for("the bridge turned", lambda: subprocess.run([*rigctl, "f"], capture_output=True, text=True, timeout=10,
                                                                 check=True).stdout.strip() == "7030000")
            server.terminate()
            server.wait(10)
            wait_for("that the rigctld is gone", lambda: item("Trouble") ==
                     f"the rigctld at 127.0.0.1:{port} is gone: is it running?")
            server = subprocess.Popen(rigctld)
            wait_for("the rigctld again", lambda: (item("Trouble"), item("VfoAHz")) == ("", "145000000"))
        finally:
            for process in (bridge, server):
                process.terminate()
                process.wait(10)


def follow_flrig():
    radio = Radio()
    port = radio.serve()
    with tempfile.TemporaryDirectory() as folder:
        bridge = subprocess.Popen([sys.argv[1], "--flrig", f"127.0.0.1:{port}"], stdout=subprocess.PIPE, text=True,
                                  env={**os.environ, "XDG_CONFIG_HOME": folder})
        try:
            assert bridge.stdout.readline() == "READY\n"
            wait_for("what the radio tells", lambda: item("VfoAHz") == "14074000" and item("Bandwidth") == "2400")
            wait_for("VFO B", lambda: item("VfoBHz") == "14080500")
            radio.tells_split.set()  # nothing waits for what comes late
            pan = os.path.join(folder, "spectrino", "LP-Bridge.ini")
            wait_for("mode and split as settings", lambda: os.path.exists(pan))
            wait_for("both of them", lambda: {"MD=7", "FT=1"} <= set(open(pan, encoding="utf-8").read().split("\n")))
            with open(pan + ".lock", "w", encoding="utf-8") as lock:
                fcntl.flock(lock, fcntl.LOCK_EX)  # another program is writing the settings
                started, radio.b = time.monotonic(), 14080600
                for _ in range(3):
                    radio.a += 500
                    wait_for("the dial", lambda: item("VfoAHz") == str(radio.a))
                assert time.monotonic() - started < 4, "the bus waited for the file"
            watch = subprocess.Popen(["gdbus", "monitor", "--session", "-d", NAME], stdout=subprocess.PIPE, text=True)
            try:
                while "is owned by" not in watch.stdout.readline():
                    pass
                command("FA00014025500;nonsense;FA-5;FB00007030000;FA0001")  # the last one is cut
                wait_for("both VFOs", lambda: (radio.a, radio.b) == (14025500, 7030000))
                command("BN03;")
                wait_for("the band's first frequency", lambda: radio.a == 7074000)
                wait_for("its item", lambda: item("VfoAHz") == "7074000")
                command("BN05;BN99;")
                wait_for("where the radio was on that band", lambda: radio.a == 14025500)
                told = ""
                while "VfoAHz': <'7074000'>" not in told:
                    told = watch.stdout.readline()
                    assert told, "the change was not told"
            finally:
                watch.terminate()
                watch.wait(10)
            assert item("Trouble") == ""
            radio.vanish()
            wait_for("that flrig is gone", lambda: item("Trouble") == f"the flrig at 127.0.0.1:{port} does not answer: "
                     "is it running, with its server on?")
            radio.a = 3573000
            radio.serve(port)
            wait_for("flrig again", lambda: (item("Trouble"), item("VfoAHz")) == ("", "3573000"))
            second = subprocess.run([sys.argv[1]], capture_output=True, text=True, timeout=10, check=False)
            assert second.returncode == 1 and "another bridge" in second.stderr, second
        finally:
            bridge.terminate()
            bridge.wait(10)


follow_flrig()
follow_rigctld()
